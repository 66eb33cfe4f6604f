#pragma once
// The remittance advices to suppliers ("RemittanceAP"): one document for each payment (type 25)
// the parameters select, with the branch's letterhead (the branch of the supplier's own
// location), the supplier's "Postal" address, how the payment is made, its date and the amount
// paid, the documents it settled from the sub-report arcrRemittanceLines on srptLines, a message,
// and a stub on the advice's last page. Each advice starts a new page and numbers its pages from 1.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "core/host/BusinessObjects.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "reports/receivables/PartyDocument.h"
#include "reports/receivables/arcrRemittanceLines.h"

namespace trellin {

// The line of the heading that says how a payment is made, by its `PayType`: "Q" "Cheque
// attached " and the cheque's number (the payment's reference), "C" "Payment by Direct Credit",
// anything else "Payment by Other".
[[nodiscard]] std::string RemittancePaidBy(const std::string& pay_type,
                                           const std::string& reference);

class arcrRemittance : public Designer {
 public:
  arcrRemittance() : Designer("arcrRemittance") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The payments' query from the parameters of the host. Throws what the range builder throws
  // for a list it cannot read.
  [[nodiscard]] std::string GetSQL() const;
  [[nodiscard]] std::string GetSQLWhere() const;
  [[nodiscard]] std::string GetSQLOrderBy() const;
  // What a payment settled: the documents of its allocations, those with another payment left
  // out.
  [[nodiscard]] static std::string SettledSQL(std::int64_t payment);
  // The party's "Postal" address.
  [[nodiscard]] static std::string AddressSQL(const std::string& party);

  // The ids of the documents the present payment settled, as the fetch found them.
  [[nodiscard]] const std::vector<std::int64_t>& Settled() const { return settled_; }

  // The business objects the run reads suppliers and branches from; by default the business
  // layer's own. Set before the run.
  void UseObjects(std::unique_ptr<BusinessObjects> objects) { objects_ = std::move(objects); }
  // Every query the run sends, the sub-report's included; set before the run.
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 private:
  // What the fetch read of one payment, put on the page when its heading formats.
  struct Advice {
    std::string party;
    std::string tax_number;
    std::string branch;
    std::string reference;
    std::string pay_type;
    Variant date;
    Currency paid;
    std::string address;
  };

  [[nodiscard]] std::shared_ptr<Recordset> Run(const std::string& sql);
  [[nodiscard]] std::string AddressOf(const std::string& party);
  void SupplierHeader_Format();
  void PageFooter_Format();

  std::shared_ptr<Recordset> payments_;
  std::unique_ptr<BusinessObjects> objects_;
  std::shared_ptr<arcrRemittanceLines> lines_;
  std::vector<std::int64_t> settled_;
  Advice advice_;
  DocumentPages pages_;
  bool any_ = false;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreatearcrRemittance();

}  // namespace trellin
