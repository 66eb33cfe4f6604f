#pragma once
// The trading years, day by day: sales and purchases with their lines and stock, what the
// parties pay and when, and the company's own cash movements.

#include <queue>
#include <string>
#include <vector>

#include "platform/demo/DemoContext.h"
#include "platform/demo/DemoStock.h"
#include "platform/demo/DemoTable.h"

namespace trellin::demo {

enum class Side { kReceivables, kPayables };

// A document line before it is written: signed as the receivables or payables side stores it.
struct DocLine {
  std::size_t item = SIZE_MAX;        // SIZE_MAX for a line with no stock item
  const char* ledger_item = nullptr;  // else a non-stock item of kLedgerItems, or none
  std::string description;
  std::string account;  // the income or expense account of the line
  std::string dept;
  std::string serial;
  std::string location;  // empty: the document's
  double quantity = 0;   // positive: what was sold or bought
  std::int64_t unit_price = 0;
  std::int64_t discount = 0;
  std::int64_t value = 0;  // net of discount, excluding tax
  std::int64_t tax = 0;
  std::int64_t cost = 0;  // cost of the stock moved, positive
  std::string tax_category;
};

// A settlement planned when a document is written, carried out on its day.
struct Settlement {
  Date date;
  std::int64_t order = 0;  // keeps equal dates in the order they were planned
  int type = 0;            // 35 receipt, 31 credit, 32 discount; 25, 21, 22 on payables
  std::size_t party = 0;
  std::int64_t document = 0;
  std::int64_t amount = 0;  // positive
  std::string location;
  bool operator>(const Settlement& other) const {
    return date != other.date ? date > other.date : order > other.order;
  }
};

struct JobPlan {
  std::string id;
  std::size_t customer = 0;
  Date opened;
  Date invoiced;
  std::string category;
};

class Trader {
 public:
  explicit Trader(DemoContext& ctx);
  void Run();
  // The busy account's month (see WriteBusyAccount).
  void BusyAccount();
  // The cheque runs and the cheque against ledger lines (see WriteChequeRuns).
  void ChequeRuns();

 private:
  // Documents.
  void SalesDay(Date day);
  void RestockWeek(Date day);
  void OverheadsMonth(Date month_start);
  void JobsDay(Date day);
  std::int64_t WriteDocument(Side side, int type, const char* type_id, std::size_t party, Date date,
                             std::vector<DocLine>& lines, const std::string& job,
                             const std::string& location);
  void PlanSettlements(Side side, std::size_t party, std::int64_t document, Date date,
                       std::int64_t gross, const std::string& location,
                       std::vector<Settlement>& plan);
  // Writes the receipt, payment, credit, discount or journal `s` and allocates it to its
  // document; a receipt given `shares` (document, amount) is allocated to each of them instead.
  void Settle(const Settlement& s,
              const std::vector<std::pair<std::int64_t, std::int64_t>>* shares = nullptr);
  void StockLines(std::vector<DocLine>& lines, std::size_t item, std::size_t location,
                  double quantity, std::int64_t unit_price, double discount_rate);
  // Cash and the year.
  void CashMonth(Date month_start);
  // Once the days are done: the bills of the suppliers lately left unpaid, money paid to
  // suppliers on account and credits they gave that no bill has taken up yet.
  void OpenSupplierItems();
  // Last month's payment run: direct credits each settling several bills and a credit, and one
  // the bank returned.
  void SupplierPaymentRun();
  void TaxReturns(Date day);
  // At a month's end, keeps the cheque account near its working balance against the saver.
  void SweepCash(Date day);
  void YearEnd(int year_index);
  void StocktakeAdjustments(Date day);
  void FinishStock();
  void WriteJobs();

  std::int64_t Gross(const std::vector<DocLine>& lines) const;
  // The own date of a receivables document processed on `day`: for one id in `every` processed
  // on a month's first working day, the last day of the month before (written then, processed
  // into the new month); for the others `day`.
  [[nodiscard]] Date MonthEndDate(Date day, std::int64_t id, int every) const;
  std::size_t LocationIndex(const std::string& location) const;

  DemoContext& ctx_;
  DemoRandom& r_;
  DemoStock stock_;
  std::priority_queue<Settlement, std::vector<Settlement>, std::greater<>> due_;
  std::int64_t order_ = 0;
  std::vector<JobPlan> jobs_;
  std::size_t next_job_ = 0;
  std::vector<std::int64_t> tax_by_period_;
  std::int64_t serial_counter_ = 1000;
  DemoTable transactions_;
  DemoTable lines_;
  DemoTable allocations_;
};

}  // namespace trellin::demo
