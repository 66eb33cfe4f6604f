#pragma once
// Two keys on one designer, each job the job filters keep on the contact it is charged to.
// "JobDetails": a card per job: its classification with the descriptions of its codes, dates,
// named fields and contacts (party, name, charged, phone and e-mail), then (each behind its
// option) the documents posted to it in the dates (the sub-report arJobDetailDocumentsSub), the
// open batch documents and outstanding purchase orders, and its notes.
// "JobSheets": a page per job to take to the boat: the job, the customer's name, address, phone
// and e-mail, ruled empty tables "Labour" and "Parts and materials", room for notes and lines to
// sign. A fixed layout on the list base; the sheets trade the card's layout for their own.

#include <memory>
#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class arJobDetailDocumentsSub;

class arJobDetail : public ListDesigner {
 public:
  arJobDetail();

  // The key's parameters; the sheets tick Open, Costing and Hold alone and add LabourLines and
  // PartsLines.
  void RefreshParameters(std::string& ReportName) override;
  // The sheets load their layout and rule their tables to the run's counts of lines.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Fills the card's or the sheet's texts from the job, its contacts, open work and notes.
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

 protected:
  // A block with nothing to say prints neither its caption nor its text; a sheet is not shaded.
  void Detail_Format() override;

 private:
  [[nodiscard]] bool Sheets() const;
  void FillCard(const std::string& job);
  void FillSheet(const std::string& job);
  // Rules a table of `rows` empty lines with its caption and headings from `top`; the bottom.
  float RuleTable(const char* name, const char* caption, float top,
                  std::initializer_list<std::pair<const char*, float>> columns, long rows);

  std::shared_ptr<arJobDetailDocumentsSub> documents_;
  bool show_open_ = false;
  bool show_notes_ = true;
};

// The documents posted to one job in the dates: date, type, reference, party, value.
class arJobDetailDocumentsSub : public Designer {
 public:
  arJobDetailDocumentsSub() : Designer("arJobDetailDocumentsSub") {}

  std::string JobId;
  Variant DateFrom;
  Variant DateTo;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  [[nodiscard]] std::string SQL() const;
};

[[nodiscard]] DesignerPtr CreatearJobDetail();

}  // namespace trellin
