#pragma once
// "AssetDetails": a card per asset the family's filters keep: its classification with the
// descriptions of its codes, its dates, its depreciation methods on both books, its cost, book
// value and tax value at DateAsAt, its named fields, then (each behind its option) its components
// with their book values, its movements to DateAsAt with the book value they run to (the
// sub-report arfaAssetDetailTransSub) and its notes. A fixed layout on the list base.

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/ListDesigner.h"
#include "reports/assets/AssetLists.h"

namespace trellin {

class arfaAssetDetailTransSub;

class arfaAssetDetail : public ListDesigner {
 public:
  arfaAssetDetail();

  // The family's parameters, the options, the five status boxes, then DateAsAt.
  void RefreshParameters(std::string& ReportName) override;
  // Reads every asset's figures at DateAsAt once, and every component's.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Fills the card's texts from the asset's fields, figures, components and notes.
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

 protected:
  std::string ExtraCondition() override;
  // A block with nothing to say prints neither its caption nor its text.
  void Detail_Format() override;

 private:
  std::shared_ptr<arfaAssetDetailTransSub> transactions_;
  std::map<std::string, AssetFigures, std::less<>> figures_;  // the card's, by code upper-cased
  std::map<std::string, AssetFigures, std::less<>> own_;      // each asset's own
  // The components of each parent (upper-cased), code and description in code order.
  std::map<std::string, std::vector<std::pair<std::string, std::string>>, std::less<>> parts_;
  std::string status_phrase_;
  Date as_at_;
  bool combined_ = false;
  bool show_components_ = true;
  bool show_notes_ = true;
};

// The movements of one asset (and, combined, of its components) to `AsAt` in date order: date,
// kind, reference, comment, value, tax value and the book value they run to.
class arfaAssetDetailTransSub : public Designer {
 public:
  arfaAssetDetailTransSub() : Designer("arfaAssetDetailTransSub") {}

  std::vector<std::string> AssetIds;
  Date AsAt;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The row's kind, and the book value so far.
  void ActiveReport_FetchData(bool& eof) override;
  [[nodiscard]] std::string SQL() const;

 private:
  Currency running_;
};

[[nodiscard]] DesignerPtr CreatearfaAssetDetail();

}  // namespace trellin
