#include "reports/ledger/ManagementFigures.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

using K = ManagementRowKind;

constexpr std::array<ManagementRow, kManagementRows> kRows = {{
    {1, "Sales", K::Money},
    {2, "Cost of Sales", K::Money},
    {3, "Gross Profit", K::Money},
    {4, "", K::Spacer},
    {5, "Expenses", K::Money},
    {6, "Net Profit", K::Money},
    {7, "", K::Spacer},
    {8, "Other Income", K::Money},
    {9, "Other Expenses", K::Money},
    {10, "Profit (after extras)", K::Money},
    {11, "", K::Spacer},
    {12, "Gross Profit Percent", K::Ratio},
    {13, "Net Profit Percent", K::Ratio},
    {14, "Return on Investment", K::Ratio},
    {15, "Return on Assets", K::Ratio},
    {16, "", K::Spacer},
    {17, "", K::Spacer},
    {18, "Quick Assets", K::Money},
    {19, "Average Receivables", K::Money},
    {20, "Average Stock", K::Money},
    {21, "Current Assets", K::Money},
    {22, "Total Assets", K::Money},
    {23, "", K::Spacer},
    {24, "Quick Liabilities", K::Money},
    {25, "Average Payables", K::Money},
    {26, "Current Liabilities", K::Money},
    {27, "Total Liabilities", K::Money},
    {28, "", K::Spacer},
    {29, "Working Capital", K::Money},
    {30, "Net Assets", K::Money},
    {31, "", K::Spacer},
    {32, "Appropriations", K::Money},
    {33, "Capital", K::Money},
    {34, "YTD Profit", K::Money},
    {35, "Net Capital", K::Money},
    {36, "", K::Spacer},
    {37, "Quick Ratio", K::Ratio},
    {38, "Current Ratio", K::Ratio},
    {39, "Asset Ratio", K::Ratio},
    {40, "Equity Ratio", K::Ratio},
    {41, "", K::Spacer},
    {42, "Credit Sales", K::Money},
    {43, "Credit Expenses", K::Money},
    {44, "", K::Spacer},
    {45, "Stock Turnover", K::Ratio},
    {46, "Receivables Turnover", K::Ratio},
    {47, "Receivables Collection", K::Ratio},
    {48, "Payables Turnover", K::Ratio},
    {49, "Payables Collection", K::Ratio},
    {50, "", K::Spacer},
}};

int MonthKey(const Date& d) { return d.Year() * 100 + d.Month(); }

// a / b, with 0 for a zero denominator.
double Quotient(Currency a, Currency b) {
  return b == Currency() ? 0.0 : a.ToDouble() / b.ToDouble();
}

Currency Money(double v) { return Currency::FromDouble(v); }

}  // namespace

const std::array<ManagementRow, kManagementRows>& ManagementRows() { return kRows; }

std::optional<int> ManagementStep(std::string_view frequency) {
  if (EqualsIgnoreCase(frequency, "Monthly")) return 1;
  if (EqualsIgnoreCase(frequency, "Quarterly")) return 3;
  if (EqualsIgnoreCase(frequency, "Yearly")) return 12;
  return std::nullopt;
}

ManagementPeriods MakeManagementPeriods(const Date& as_at, int step_months) {
  ManagementPeriods p;
  const Date last = as_at.DateOnly().LastOfMonth();
  for (int i = kManagementPeriods; i >= 0; --i) {
    p.end[i] = last.FirstOfMonth().AddMonths(-(kManagementPeriods - i) * step_months).LastOfMonth();
  }
  for (int i = 1; i <= kManagementPeriods; ++i) p.start[i] = p.end[i - 1].AddDays(1);
  p.start[0] = p.end[0].FirstOfMonth().AddMonths(1 - step_months);
  return p;
}

int ManagementPeriods::PeriodOfMonth(int yyyymm) const {
  if (yyyymm > MonthKey(end[kManagementPeriods])) return -1;
  for (int i = 1; i <= kManagementPeriods; ++i) {
    if (yyyymm <= MonthKey(end[i]) && yyyymm > MonthKey(end[i - 1])) return i;
  }
  return 0;
}

std::string ManagementLoadSQL(const ManagementPeriods& periods, const std::string& filter) {
  const std::string first = Database::SQLDate(periods.start[1]);
  const std::string after_last = Database::SQLDate(periods.end[kManagementPeriods].AddDays(1));
  return "SELECT Account.Type,Year([Date])*100+Month([Date]) AS [Month],Sum(glTransaction.Value) "
         "AS SumOfValue, Sum([Value]*[Ratio]/100) AS SumOfRatio"
         " FROM Account INNER JOIN glTransaction ON Account.AccountId = glTransaction.AccountId"
         " WHERE ((glTransaction.Type Is Null) Or (Account.Type>5 AND glTransaction.Type=1))"
         " AND ((Account.Type<6 AND glTransaction.Date>=" +
         first + " AND glTransaction.Date<" + after_last +
         ") OR (Account.Type>5 AND glTransaction.Date<" + after_last + "))" + filter +
         " GROUP BY glTransaction.AccountId, Account.Type, glTransaction.Type, "
         "Year([Date])*100+Month([Date])"
         " ORDER BY glTransaction.AccountId";
}

std::string ManagementControlSQL(const std::string& account_id, const ManagementPeriods& periods,
                                 const std::string& filter) {
  const std::string after_last = Database::SQLDate(periods.end[kManagementPeriods].AddDays(1));
  return "SELECT Year([Date])*100+Month([Date]) AS [Month],Sum(glTransaction.Value) AS SumOfValue"
         " FROM Account INNER JOIN glTransaction ON Account.AccountId = glTransaction.AccountId"
         " WHERE ((glTransaction.Type Is Null) Or (Account.Type>5 AND glTransaction.Type=1))"
         " AND Account.AccountId='" +
         Replace(account_id, "'", "''") + "' AND Date<" + after_last + filter +
         " GROUP BY Year([Date])*100+Month([Date])";
}

void LoadSums(const ManagementPeriods& periods, const std::vector<LoadedSum>& sums,
              ManagementValues& values) {
  for (const LoadedSum& s : sums) {
    const int period = periods.PeriodOfMonth(s.month);
    if (period < 0) continue;
    const bool carried = s.type > 5;
    for (int p = period; p <= (carried ? kManagementPeriods : period); ++p) {
      auto& row = values[p];
      switch (s.type) {
        case 1:
          row[1] -= s.value;
          row[42] -= s.ratio;
          break;
        case 2:
          row[2] += s.value;
          row[43] += s.ratio;
          break;
        case 3:
          row[5] += s.value;
          row[43] += s.ratio;
          break;
        case 4:
          row[8] -= s.value;
          break;
        case 5:
          row[9] += s.value;
          break;
        case 6:
          row[32] -= s.value;
          break;
        case 7:
          row[18] += s.ratio;
          row[21] += s.value;
          row[22] += s.value;
          break;
        case 8:
          row[22] += s.value;
          break;
        case 9:
          row[24] -= s.ratio;
          row[26] -= s.value;
          row[27] -= s.value;
          break;
        case 10:
          row[27] -= s.value;
          break;
        case 11:
          row[33] -= s.value;
          break;
        default:
          break;
      }
    }
  }
}

std::array<Currency, kManagementPeriods + 1> ControlBalances(
    const ManagementPeriods& periods, const std::vector<ControlMovement>& months) {
  std::array<Currency, kManagementPeriods + 1> balances{};
  for (const ControlMovement& m : months) {
    const int period = periods.PeriodOfMonth(m.month);
    if (period < 0) continue;
    for (int p = period; p <= kManagementPeriods; ++p) balances[p] += m.value;
  }
  return balances;
}

void ComputeRows(const ManagementPeriods& periods,
                 const std::array<Currency, kManagementPeriods + 1>& receivables,
                 const std::array<Currency, kManagementPeriods + 1>& stock,
                 const std::array<Currency, kManagementPeriods + 1>& payables,
                 ManagementValues& values) {
  values[0][19] = receivables[0];
  values[0][20] = stock[0];
  values[0][25] = -payables[0];
  for (int p = 1; p <= kManagementPeriods; ++p) {
    auto& v = values[p];
    v[3] = v[1] - v[2];
    v[6] = v[3] - v[5];
    v[10] = v[8] - v[9] + v[6];
    v[12] = Money(Quotient(v[3], v[1]) * 100);
    v[13] = Money(Quotient(v[6], v[1]) * 100);
    v[14] = Money(Quotient(v[6], v[33]) * 100);
    v[15] = Money(Quotient(v[6], v[22]) * 100);
    v[19] = Money((receivables[p] + receivables[p - 1]).ToDouble() / 2);
    v[20] = Money((stock[p] + stock[p - 1]).ToDouble() / 2);
    v[25] = Money(-(payables[p] + payables[p - 1]).ToDouble() / 2);
    v[29] = v[21] - v[26];
    v[30] = v[22] - v[27];
    v[34] = v[30] - v[33] - v[32];
    v[35] = v[34] + v[33];
    v[37] = Money(Quotient(v[18], v[24]) * 100);
    v[38] = Money(Quotient(v[21], v[26]) * 100);
    v[39] = Money(Quotient(v[22], v[27]) * 100);
    v[40] = Money(Quotient(v[33], v[22]) * 100);
    v[45] = Money(Quotient(v[2], v[20]));
    v[46] = Money(Quotient(v[42], v[19]));
    v[47] = Money(Quotient(v[19], v[42]) * periods.Days(p)).Round(2);
    v[48] = Money(Quotient(v[43], v[25]));
    v[49] = Money(Quotient(v[25], v[43]) * periods.Days(p)).Round(2);
  }
}

ManagementValues LoadManagementValues(Database& db, const ManagementPeriods& periods,
                                      const std::string& filter) {
  ManagementValues values{};
  std::vector<LoadedSum> sums;
  for (auto rs = db.Query(ManagementLoadSQL(periods, filter)); !rs->Eof(); rs->MoveNext()) {
    const Variant& type = rs->Value("Type");
    if (type.IsNull()) continue;
    sums.push_back(LoadedSum{
        static_cast<int>(type.ToLong()), static_cast<int>(rs->Value("Month").ToLong()),
        rs->Value("SumOfValue").IsNull() ? Currency() : rs->Value("SumOfValue").ToCurrency(),
        rs->Value("SumOfRatio").IsNull() ? Currency() : rs->Value("SumOfRatio").ToCurrency()});
  }
  LoadSums(periods, sums, values);
  std::array<std::array<Currency, kManagementPeriods + 1>, 3> controls{};
  const char* kLinks[] = {"AR", "SC", "AP"};
  for (int i = 0; i < 3; ++i) {
    auto link = db.Query(std::string("SELECT AccountId From AccountLink WHERE AccountLinkId='") +
                         kLinks[i] + "'");
    if (link->Eof() || link->Value(0).IsNull()) continue;
    std::vector<ControlMovement> months;
    for (auto rs = db.Query(ManagementControlSQL(link->Value(0).Text(), periods, filter));
         !rs->Eof(); rs->MoveNext()) {
      if (rs->Value("SumOfValue").IsNull()) continue;
      months.push_back(ControlMovement{static_cast<int>(rs->Value("Month").ToLong()),
                                       rs->Value("SumOfValue").ToCurrency()});
    }
    controls[i] = ControlBalances(periods, months);
  }
  ComputeRows(periods, controls[0], controls[1], controls[2], values);
  return values;
}

ManagementScale ScaleOf(const ManagementValues& values) {
  Currency greatest;
  for (int p = 1; p <= kManagementPeriods; ++p) {
    for (int r = 1; r <= kManagementRows; ++r) {
      const Currency v = values[p][r] < Currency() ? -values[p][r] : values[p][r];
      greatest = std::max(greatest, v);
    }
  }
  if (greatest < Currency::FromWhole(999999)) return {1, ""};
  if (greatest < Currency::FromWhole(999999999)) {
    return {1000, "Please note figures are printed in multiples of thousands."};
  }
  if (greatest < Currency::FromWhole(999999999999)) {
    return {1000000, "Please note figures are printed in multiples of millions."};
  }
  return {0, ""};
}

}  // namespace trellin
