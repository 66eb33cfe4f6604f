#pragma once
// The control report ("ControlReportAR", "ControlReportAP"): the month-end reconciliation of a
// sub-ledger to its control account on one page. Last month's closing balance, this month's
// documents by category, the month-end balance, the control account and the variance, the
// documents processed after the date, and on request the ageing of what is open and the month's
// and year's sales or purchases. The report has one detail row; Detail_Format does all the work.

#include <array>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "reports/receivables/LedgerSide.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

// The four categories a document of the month falls into, by its Transactions.Type.
enum class ControlCategory {
  Invoices = 0,
  CreditNotes = 1,
  PromptPaymentDiscounts = 2,
  Receipts = 3
};

// Credit notes are 21 and 31, prompt payment discounts 22 and 32, receipts and payments 25 and
// 35; every other type is an invoice.
[[nodiscard]] ControlCategory ControlCategoryOf(long type);

// What one category gathered from a block's rows: the stacked texts of its columns, one line a
// transaction type, and its sums.
struct ControlCategoryBlock {
  std::vector<std::string> labels;  // type id, a blank, the type's description
  std::vector<std::string> counts;
  std::vector<std::string> gross;
  std::vector<std::string> discount;
  std::vector<std::string> net;
  std::int64_t count = 0;
  Currency gross_sum;
  Currency discount_sum;
  Currency net_sum;
};

// A block of documents: this month's, or those processed after the date.
struct ControlBlock {
  std::array<ControlCategoryBlock, 4> categories;
  bool any = false;  // whether the values query gave a row
  [[nodiscard]] Currency Net() const;
  [[nodiscard]] std::int64_t Count() const;
  [[nodiscard]] Currency Gross() const;
  [[nodiscard]] Currency Discount() const;
};

// The five buckets of an ageing table, oldest first: "Outstanding 3 mths" to "Outstanding Future".
struct ControlAgeing {
  std::array<Currency, 5> buckets{};
  [[nodiscard]] Currency Total() const;
};

// The bucket of an ageing table that an amount due on `due` falls in, the report being as at a
// day of `month` (any day of it): 0 "3 mths" (before the month before), 1 "2 mths" (the month
// before), 2 "1 mths" (the month itself), 3 "Current" (the month after), 4 "Future" (later).
[[nodiscard]] int ControlAgeingBucket(Date due, Date month);

// The month's or year's sales or purchases: excl, discount and tax as summed; gross = excl +
// discount; incl = excl + tax.
struct ControlSales {
  Currency excl;
  Currency discount;
  Currency tax;
  [[nodiscard]] Currency Gross() const { return excl + discount; }
  [[nodiscard]] Currency Incl() const { return excl + tax; }
};

class ardscrControlReport : public Designer {
 public:
  ardscrControlReport() : Designer("ardscrControlReport") {}

  // Compares the key with both keys; any other key gets no date and no side's parameters.
  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

  // The set-up: reads the parameters, sets the side's captions, MonthStart and the filter, and
  // hides the tagged blocks not asked for. Needs a host with the parameters declared; throws
  // std::invalid_argument when Date As At is no date, and what the range builder throws.
  void SetUp();
  // Works every figure out and puts it on the page's controls. After SetUp; throws
  // DatabaseError for a query that fails.
  void Detail_Format();

  // After SetUp.
  [[nodiscard]] Date MonthStart() const { return month_start_; }
  [[nodiscard]] const std::string& Filter() const { return filter_; }
  [[nodiscard]] const std::string& Description() const { return description_; }
  // After Detail_Format.
  [[nodiscard]] Currency ClosingLastMonth() const { return closing_last_month_; }
  [[nodiscard]] const ControlBlock& Month() const { return month_; }
  [[nodiscard]] const ControlBlock& Future() const { return future_; }
  [[nodiscard]] Currency MonthEnd() const { return closing_last_month_ + month_.Net(); }
  [[nodiscard]] Currency ControlAccount() const { return control_account_; }
  [[nodiscard]] Currency Variance() const { return MonthEnd() - control_account_; }
  [[nodiscard]] Currency CurrentBalance() const { return MonthEnd() + future_.Net(); }
  [[nodiscard]] const ControlAgeing& AgeingNow() const { return ageing_now_; }
  [[nodiscard]] const ControlAgeing& AgeingMonthEnd() const { return ageing_month_end_; }
  [[nodiscard]] const ControlSales& SalesMonth() const { return sales_month_; }
  [[nodiscard]] const ControlSales& SalesYear() const { return sales_year_; }
  // Every query the run sends, as it sends it.
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 private:
  // --- the figures (ardscrControlReport_sql.cpp) ---
  [[nodiscard]] std::string Types() const;
  [[nodiscard]] std::string AndFilter() const;
  [[nodiscard]] std::shared_ptr<Recordset> Run(const std::string& sql);
  [[nodiscard]] Currency Scalar(const std::string& sql);
  void WorkOutClosing();
  // `range` is the WHERE's date part, on Transactions.DateProcess.
  void WorkOutBlock(const std::string& range, ControlBlock& block);
  void WorkOutControlAccount();
  void WorkOutAgeing(bool month_end, ControlAgeing& ageing);
  void RestoreAllocations(ControlAgeing& ageing);
  [[nodiscard]] ControlSales WorkOutSales(Date from);

  // --- the page (ardscrControlReport.cpp) ---
  void ShowBlock(const ControlBlock& block, const std::string& prefix);
  void ShowAgeing(const ControlAgeing& ageing, const std::string& prefix);
  void ShowSales(const ControlSales& sales, const std::string& prefix);
  void SetFigure(const std::string& control, Currency value);
  void SetText(const std::string& control, const std::string& text);
  void HideTagged(const std::string& tag);

  bool debtor_ = true;
  bool has_side_ = false;
  bool show_ageing_ = true;
  bool show_sales_ = true;
  bool fetched_ = false;
  Date as_at_;
  Date month_start_;
  std::string filter_;
  std::string description_;
  Currency closing_last_month_;
  ControlBlock month_;
  ControlBlock future_;
  Currency control_account_;
  ControlAgeing ageing_now_;
  ControlAgeing ageing_month_end_;
  ControlSales sales_month_;
  ControlSales sales_year_;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardscrControlReport();

}  // namespace trellin
