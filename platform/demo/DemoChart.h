#pragma once
// The demo company's chart of accounts: the posting accounts and the rows that shape the
// statements, in the order the statements walk them (by code).

#include <span>

namespace trellin::demo {

struct ChartRow {
  const char* id;
  const char* description;
  const char* post;  // nullptr for a posting account, else "H", "G", "T", "C" or "P"
  int type;          // 1 sales ... 11 capital
  int level;         // ALevel, 1 to 5
  double ratio;      // per cent quick or on credit; 0 writes Null
};

[[nodiscard]] std::span<const ChartRow> Chart();
// "D" or "C": a credit class (1, 4, 6, 9, 10, 11) is a credit account, the accumulated
// depreciation accounts are credits in a debit class.
[[nodiscard]] const char* DrCrOf(const ChartRow& row);

// The accounts the generator posts to.
namespace account {
inline constexpr const char* kSalesShop = "1010";
inline constexpr const char* kSalesTrade = "1020";
inline constexpr const char* kSalesWorkshop = "1030";
inline constexpr const char* kSalesExport = "1040";
inline constexpr const char* kFreightRecovered = "1050";
inline constexpr const char* kCostOfGoods = "1110";
inline constexpr const char* kPurchases = "1120";
inline constexpr const char* kFreightInwards = "1130";
inline constexpr const char* kStockAdjustments = "1140";
inline constexpr const char* kSubcontractors = "1150";
inline constexpr const char* kRent = "1210";
inline constexpr const char* kPower = "1215";
inline constexpr const char* kCleaning = "1220";
inline constexpr const char* kRepairs = "1225";
inline constexpr const char* kWages = "1235";
inline constexpr const char* kSuperannuation = "1240";
inline constexpr const char* kTraining = "1245";
inline constexpr const char* kAdvertising = "1250";
inline constexpr const char* kBankFees = "1255";
inline constexpr const char* kDepreciation = "1260";
inline constexpr const char* kInsurance = "1265";
inline constexpr const char* kMotorVehicle = "1270";
inline constexpr const char* kTelephone = "1275";
inline constexpr const char* kAccountancy = "1280";
inline constexpr const char* kDiscountsAllowed = "1285";
inline constexpr const char* kBadDebts = "1290";
inline constexpr const char* kInterestReceived = "1310";
inline constexpr const char* kGainOnSale = "1320";
inline constexpr const char* kDiscountsReceived = "1330";
inline constexpr const char* kInterestPaid = "1410";
inline constexpr const char* kLossOnSale = "1420";
inline constexpr const char* kIncomeTax = "2010";
inline constexpr const char* kDividends = "2020";
inline constexpr const char* kBankCheque = "3010";
inline constexpr const char* kBankSaver = "3020";
inline constexpr const char* kPettyCash = "3030";
inline constexpr const char* kReceivables = "3100";
inline constexpr const char* kStock = "3110";
inline constexpr const char* kPrepayments = "3120";
inline constexpr const char* kGstPayable = "4020";
inline constexpr const char* kPayePayable = "4030";
inline constexpr const char* kIncomeTaxPayable = "4040";
inline constexpr const char* kCreditCard = "4050";
inline constexpr const char* kPayables = "4010";
inline constexpr const char* kBankLoan = "4110";
inline constexpr const char* kShareCapital = "4510";
inline constexpr const char* kRetainedEarnings = "4520";
}  // namespace account

}  // namespace trellin::demo
