#include "platform/demo/DemoChart.h"

#include <cstring>

namespace trellin::demo {

namespace {

// Codes sort in statement order: the profit and loss first, then appropriations, then the
// balance sheet. Headings (H) print only above an account that prints; groups (G) print their own
// total line when the next row of their level or above comes, so they need no T row; the two T
// rows print the running totals of level 1 (gross and net profit); C clears a level's totals, P
// starts a page.
constexpr ChartRow kChart[] = {
    {"1000", "TRADING STATEMENT", "H", 1, 1, 0},
    {"1005", "Sales", "G", 1, 2, 0},
    {"1010", "Sales - Shop", nullptr, 1, 3, 0},
    {"1020", "Sales - Trade", nullptr, 1, 3, 100},
    {"1030", "Sales - Workshop", nullptr, 1, 3, 60},
    {"1040", "Sales - Export", nullptr, 1, 3, 100},
    {"1050", "Freight Recovered", nullptr, 1, 3, 0},
    {"1100", "Cost of Sales", "G", 2, 2, 0},
    {"1110", "Cost of Goods Sold", nullptr, 2, 3, 0},
    {"1120", "Purchases - Non-stock", nullptr, 2, 3, 100},
    {"1130", "Freight Inwards", nullptr, 2, 3, 100},
    {"1140", "Stock Adjustments", nullptr, 2, 3, 0},
    {"1150", "Subcontractors", nullptr, 2, 3, 100},
    {"1199", "GROSS PROFIT", "T", 2, 1, 0},
    {"1200", "Operating Expenses", "G", 3, 2, 0},
    {"1205", "Premises", "G", 3, 3, 0},
    {"1210", "Rent", nullptr, 3, 4, 100},
    {"1215", "Power and Gas", nullptr, 3, 4, 100},
    {"1220", "Cleaning", nullptr, 3, 4, 100},
    {"1225", "Repairs and Maintenance", nullptr, 3, 4, 80},
    {"1230", "Staff", "G", 3, 3, 0},
    {"1235", "Wages and Salaries", nullptr, 3, 4, 0},
    {"1240", "Employer Superannuation", nullptr, 3, 4, 0},
    {"1245", "Staff Training", nullptr, 3, 4, 100},
    {"1250", "Advertising", nullptr, 3, 3, 90},
    {"1255", "Bank Fees", nullptr, 3, 3, 0},
    {"1260", "Depreciation", nullptr, 3, 3, 0},
    {"1265", "Insurance", nullptr, 3, 3, 100},
    {"1270", "Motor Vehicle Expenses", nullptr, 3, 3, 70},
    {"1275", "Telephone and Internet", nullptr, 3, 3, 100},
    {"1280", "Accountancy Fees", nullptr, 3, 3, 100},
    {"1285", "Discounts Allowed", nullptr, 3, 3, 0},
    {"1290", "Bad Debts", nullptr, 3, 3, 0},
    {"1300", "Other Income", "G", 4, 2, 0},
    {"1310", "Interest Received", nullptr, 4, 3, 0},
    {"1320", "Gain on Sale of Assets", nullptr, 4, 3, 0},
    {"1330", "Discounts Received", nullptr, 4, 3, 0},
    {"1400", "Other Expenses", "G", 5, 2, 0},
    {"1410", "Interest Paid", nullptr, 5, 3, 0},
    {"1420", "Loss on Sale of Assets", nullptr, 5, 3, 0},
    {"1900", "NET PROFIT BEFORE TAX", "T", 5, 1, 0},
    {"1950", "Clear profit totals", "C", 5, 1, 0},
    {"2000", "APPROPRIATIONS", "H", 6, 1, 0},
    {"2010", "Income Tax Expense", nullptr, 6, 2, 0},
    {"2020", "Dividends Paid", nullptr, 6, 2, 0},
    {"2099", "Clear appropriation totals", "C", 6, 1, 0},
    {"2999", "Balance sheet on a new page", "P", 7, 1, 0},
    {"3000", "CURRENT ASSETS", "G", 7, 1, 0},
    {"3005", "Bank Accounts", "G", 7, 2, 0},
    {"3010", "Bank - Cheque Account", nullptr, 7, 3, 100},
    {"3020", "Bank - Online Saver", nullptr, 7, 3, 100},
    {"3030", "Petty Cash", nullptr, 7, 3, 100},
    {"3100", "Accounts Receivable", nullptr, 7, 2, 90},
    {"3110", "Stock on Hand", nullptr, 7, 2, 20},
    {"3120", "Prepayments", nullptr, 7, 2, 0},
    {"3300", "FIXED ASSETS", "G", 8, 1, 0},
    {"3305", "Plant and Equipment", "G", 8, 2, 0},
    {"3310", "Workshop", "G", 8, 3, 0},
    {"3315", "Workshop Machinery", "G", 8, 4, 0},
    {"3320", "Workshop Machinery at Cost", nullptr, 8, 5, 0},
    {"3325", "Workshop Machinery Accumulated Depreciation", nullptr, 8, 5, 0},
    {"3330", "Tools at Cost", nullptr, 8, 4, 0},
    {"3335", "Tools Accumulated Depreciation", nullptr, 8, 4, 0},
    {"3350", "Office Equipment at Cost", nullptr, 8, 3, 0},
    {"3355", "Office Equipment Accumulated Depreciation", nullptr, 8, 3, 0},
    {"3400", "Motor Vehicles at Cost", nullptr, 8, 2, 0},
    {"3405", "Motor Vehicles Accumulated Depreciation", nullptr, 8, 2, 0},
    {"4000", "CURRENT LIABILITIES", "G", 9, 1, 0},
    {"4010", "Accounts Payable", nullptr, 9, 2, 100},
    {"4020", "GST", nullptr, 9, 2, 100},
    {"4030", "PAYE Payable", nullptr, 9, 2, 100},
    {"4040", "Income Tax Payable", nullptr, 9, 2, 100},
    {"4050", "Credit Card", nullptr, 9, 2, 100},
    {"4100", "TERM LIABILITIES", "G", 10, 1, 0},
    {"4110", "Bank Loan", nullptr, 10, 2, 0},
    {"4500", "EQUITY", "G", 11, 1, 0},
    {"4510", "Share Capital", nullptr, 11, 2, 0},
    {"4520", "Retained Earnings", nullptr, 11, 2, 0},
};

constexpr const char* kContraAccounts[] = {"3325", "3335", "3355", "3405"};

}  // namespace

std::span<const ChartRow> Chart() { return kChart; }

const char* DrCrOf(const ChartRow& row) {
  for (const char* contra : kContraAccounts) {
    if (std::strcmp(row.id, contra) == 0) return "C";
  }
  switch (row.type) {
    case 1:
    case 4:
    case 6:
    case 9:
    case 10:
    case 11:
      return "C";
    default:
      return "D";
  }
}

}  // namespace trellin::demo
