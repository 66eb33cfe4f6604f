#pragma once
// The transaction lines under one row of the sales analysis: date, reference, the other side's
// code and name (the item under a customer, the customer under an item), the job, and the line's
// quantity, sales, discount, net, costs and sale price. Split by address, the lines group under
// each address, "Undefined" for none. A sub-report: the parent sets the state below before each
// row, and the rows are fetched by hand (unbound).

#include <memory>
#include <span>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

class ardsSalesAnalysisReportTransSub : public ActiveReport {
 public:
  ardsSalesAnalysisReportTransSub();

  // Set by the parent, once for the run.
  bool SplitByAddress = false;
  bool IncludeCosts = true;
  // The captions over the other side's code, name and the third text column ("Item", "Name",
  // "Job" under a customer).
  std::string CodeCaption = "Code";
  std::string NameCaption = "Name";
  std::string JobCaption = "Job";
  QueryLog Queries;
  // Set by the parent for each row: the row's lines and, split by address, the party whose
  // addresses head them.
  std::string SQL;
  std::string OtherPartyId;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

 protected:
  // A sub-report of the same run for the other side: its layout's name, the fields each line
  // copies from its query, and whether a line works its sale price.
  ardsSalesAnalysisReportTransSub(const std::string& name, std::span<const char* const> copied,
                                  bool sale_price)
      : ActiveReport(name), copied_(copied), sale_price_(sale_price) {}

 private:
  // The address heading a group of lines: "Undefined" for no address.
  [[nodiscard]] std::string AddressText(const Variant& address_id) const;

  std::span<const char* const> copied_;
  bool sale_price_ = true;
  std::shared_ptr<Recordset> rs_;
};

}  // namespace trellin
