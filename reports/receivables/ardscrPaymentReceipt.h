#pragma once
// "PaymentReceipt": a page for each receipt from a customer (type 35, "Receipt") or payment to a
// supplier (type 25, "Payment") the parameters select, printed as the documents are, with the
// branch's letterhead in place of the standard heading: its number and date, the party and its
// postal address, the amount in figures and in words, how it was paid (the pay method's word),
// the drawer, bank and cheque or card number, the documents it was applied to (its allocations
// from both sides, signed as seen from it) and what is left on account (`ValueRemaining`).
// Amounts show as received or paid, positive. The rows are the applied lines, fetched by hand
// (unbound), grouped by the receipt's `TransactionId`, each receipt starting a page; its heading
// is the page header, so a receipt of many lines repeats it. A receipt applied to nothing has
// one row that prints nothing.

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "core/host/BusinessObjects.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

// The title of a receipt's page by its transaction's `Type`: 35 "Receipt", 25 "Payment".
[[nodiscard]] std::string ReceiptTitle(long type);

// The label of the number a receipt carries in `CardNumber`, by its pay method's letter: "Cheque
// No" for "Q", "Card No" for a card ("A", "D", "E", "M", "V"), else "Account No".
[[nodiscard]] std::string ReceiptNumberLabel(const std::string& pay_type);

class ardscrPaymentReceipt : public Designer {
 public:
  ardscrPaymentReceipt() : Designer("ardscrPaymentReceipt") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The receipts' query from the parameters of the host. Throws what the range builder throws.
  [[nodiscard]] std::string GetSQL() const;
  [[nodiscard]] std::string GetSQLWhere() const;

  // One applied line as printed: the document and what the receipt took of it, turned so that
  // what was received or paid shows positive.
  struct Applied {
    Variant date;
    std::string type;
    std::string reference;
    Currency amount;
  };
  // One receipt as the fetch read it.
  struct Receipt {
    std::int64_t id = 0;
    long type = 0;
    std::string party;
    std::string name;
    std::string address;
    std::string branch;
    std::string reference;
    Variant date;
    std::string pay_type;
    std::string drawer;
    std::string bank;
    std::string number;
    Currency amount;   // as received or paid: positive
    Currency left;     // left on account, on the same sign
    Currency applied;  // the applied lines' sum
    std::vector<Applied> lines;
  };
  // The receipts the run printed, in order, once it has run.
  [[nodiscard]] const std::vector<Receipt>& Receipts() const { return receipts_; }

  // The business objects the run reads branches from; by default the business layer's own.
  void UseObjects(std::unique_ptr<BusinessObjects> objects) { objects_ = std::move(objects); }
  // Every query the run sends; set before the run.
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 private:
  [[nodiscard]] std::shared_ptr<Recordset> Run(const std::string& sql);
  // Reads the receipt the recordset stands on, its address and its applied lines.
  [[nodiscard]] Receipt ReadReceipt(Recordset& rs);
  // Puts the receipt whose rows the page holds into the page header and its totals into the
  // footer.
  void PageHeader_Format();

  std::shared_ptr<Recordset> receipts_rs_;
  std::unique_ptr<BusinessObjects> objects_;
  std::vector<Receipt> receipts_;
  std::map<std::int64_t, std::size_t> index_;  // receipt id -> its place in receipts_
  std::size_t line_ = 0;                       // the next line of the last receipt read
  bool started_ = false;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardscrPaymentReceipt();

}  // namespace trellin
