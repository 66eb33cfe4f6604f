#pragma once
// What the GST and BAS returns and the tax detail report share: the facts of the period a return
// is for, the groups of branch and department a run prints a form for, and the ledger's lines of
// one side of a period as each form reads them.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/ActiveReport.h"
#include "core/host/Application.h"
#include "core/host/BusinessObjects.h"
#include "core/host/Database.h"
#include "core/host/Parameters.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Error.h"

namespace trellin {

class Rounder;

// The return a form computes: the New Zealand style GST 101 or the Australian activity
// statement. They read the ledger with the same queries but for their date limits and the
// category the cash basis filters on.
enum class TaxForm { GST101, BAS };
enum class TaxSide { Output, Input };

// The pick-list of filed periods, newest last.
inline constexpr const char* kTaxPeriodListSQL =
    "SELECT TaxPeriodId,DateFrom,DateTo,BasisOutput,BasisInput,Rate FROM TaxPeriod ORDER BY "
    "TaxPeriodId";

// Raised when no period is chosen and the company's tax settings keep no open period.
class NoOpenTaxPeriod : public Error {
 public:
  explicit NoOpenTaxPeriod(const std::string& message) : Error(ErrorKind::Input, message) {}
};

struct TaxPeriodFacts {
  std::optional<std::int64_t> TaxPeriodId;  // a filed period; none for the period now open
  double Rate = 0;                          // percent
  Date DateFrom;
  Date DateTo;
  std::string BasisOutput;  // "Invoice", "Payments" (or "Cash") or "Exempt"
  std::string BasisInput;
  int Months = 0;
};

// The period of `tax_period_id` from its TaxPeriod row, or, when the value is blank, the period
// now open from the company's tax settings (its last day the end of the month `PeriodMonths`
// after the start, less one day). nullopt for an id no row has. Throws NoOpenTaxPeriod when the
// value is blank and the settings name no start.
[[nodiscard]] std::optional<TaxPeriodFacts> ReadTaxPeriodFacts(Database& database, const Tax& tax,
                                                               const Variant& tax_period_id);

// (Rate + 100) / Rate, rounded to 4 decimals with the business layer's rounding: 7.6667 at 15%,
// 9 at 12.5%, 11 at 10%. REQUIRES: rate != 0.
[[nodiscard]] double TaxDivisor(double rate, Rounder& rounder);

// "Invoice Basis" when the bases agree, otherwise "Output X Basis" + `separator` + "Input Y
// Basis".
[[nodiscard]] std::string TaxBasisText(const TaxPeriodFacts& facts, const std::string& separator);

// Whether a side's basis is the cash one ("Payments" on the GST 101, "Cash" on the BAS; either
// name is taken on both forms).
[[nodiscard]] bool CashBasis(const std::string& basis);
[[nodiscard]] bool ExemptBasis(const std::string& basis);

// The query of one side: a line a row on the cash basis, a sum a category on the invoice basis;
// `group_filter` (may be empty) follows the period's condition.
[[nodiscard]] std::string TaxSideSQL(TaxForm form, TaxSide side, const TaxPeriodFacts& facts,
                                     const std::string& group_filter);

// One row of a side as the forms add it up: on the cash basis the line's cash category, cash tax
// and its value less that tax; on the invoice basis a category's sums.
struct TaxAmount {
  std::string Category;
  Currency Tax;
  Currency Value;
};

// The rows of one side, nothing when its basis is "Exempt". Output values are credits (negative).
[[nodiscard]] std::vector<TaxAmount> ReadTaxSide(Database& database, TaxForm form, TaxSide side,
                                                 const TaxPeriodFacts& facts,
                                                 const std::string& group_filter);

// The forms a run prints, one per branch or department group, from the run's `Groupings`,
// `Branches` and `Departments`. Each has its label a level (index 0 the innermost, level 1) and
// its filter; without groupings one group with no filter.
struct TaxGroup {
  std::vector<std::string> Labels;  // level 1 first
  std::string Filter;               // "" for the whole ledger
};

struct TaxGroups {
  std::string SQL;  // "" without groupings
  std::vector<TaxGroup> Groups;
  int Levels = 0;
};

[[nodiscard]] TaxGroups ReadTaxGroups(Database& database, const Parameters& parameters);

// A return's form, run once per group by the wrapper: `TaxPeriodId` (blank for the open period),
// `ShowTaxMethod` and the group's filter, `SQLWhere`. It prints one row, its Detail, and does all
// its work when that formats.
class TaxReturnForm : public ActiveReport {
 public:
  using ActiveReport::ActiveReport;

  Variant TaxPeriodId;
  bool ShowTaxMethod = false;
  std::string SQLWhere;

  void ActiveReport_ReportStart() override { printed_ = false; }
  void ActiveReport_FetchData(bool& eof) override {
    eof = printed_;
    printed_ = true;
  }

 private:
  bool printed_ = false;
};

// Shows `value` in the control `name` of `report`, when it has one; ShowTaxControls shows or hides.
void SetTaxControl(const ActiveReport& report, const std::string& name, const Variant& value);
void ShowTaxControls(const ActiveReport& report, const std::vector<std::string>& names,
                     bool visible);

// Declares the `TaxPeriod` pick shared by the returns and the tax detail report.
void AddTaxPeriodParameter(Parameters& parameters);

}  // namespace trellin
