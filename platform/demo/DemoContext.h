#pragma once
// What the parts of the generator share while one company is built: the connection, the
// calendar, the random stream, the ledger, and the master data chosen so far.

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/demo/DemoCalendar.h"
#include "platform/demo/DemoCompany.h"
#include "platform/demo/DemoLedger.h"
#include "platform/demo/DemoRandom.h"

namespace trellin::demo {

// The facts that differ between the two countries.
struct CountryFacts {
  const char* country;
  const char* company;
  const char* tax_number;
  double tax_rate;             // per cent
  const char* standard;        // the standard-rated tax category
  const char* zero;            // zero rated (exports)
  const char* exempt;          // exempt or input taxed (interest, bank fees)
  const char* branches[2][2];  // code, city
  const char* state;           // the state column of addresses ("" for NZ)
};

// How a customer pays: days after the due date, and how often it pays only part or nothing.
enum class Payer { kPrompt, kOnTime, kSlow, kPartial, kBad };

struct PartyInfo {
  std::string id;
  std::string name;
  bool customer = false;
  bool supplier = false;
  std::string location;
  std::string branch;
  std::string employee;
  int term = 0;  // index into the payment term table
  Payer payer = Payer::kOnTime;
  int weight = 1;  // how much business it does
  bool exporter = false;
  bool delivery_address = false;  // has a "Delivery" address beside its postal one
};

struct ItemInfo {
  std::string id;
  std::string description;
  int inventory = 0;  // 0 none, 1 plain, 2 serial, 3 batch
  std::string category;
  std::string sales_account;
  std::string dept;
  std::int64_t cost = 0;     // ten-thousandths, excluding tax
  std::int64_t price = 0;    // ten-thousandths, excluding tax
  std::size_t supplier = 0;  // index into DemoContext::suppliers
  double min_reorder = 0;
  double max_reorder = 0;
};

// Payment terms, in the order PartyInfo::term indexes them.
struct TermInfo {
  const char* id;
  const char* description;
  int days;              // days after the document date ...
  bool following_month;  // ... or, when set, that day of the month following
};
inline constexpr TermInfo kTerms[] = {
    {"20TH", "20th of the month following", 20, true},
    {"7DAYS", "7 days", 7, false},
    {"30DAYS", "30 days", 30, false},
    {"COD", "Cash on delivery", 0, false},
};

[[nodiscard]] Date DueDate(Date date, int term);

// Non-stock items that name what a line is where no stock moves: the overhead bills, credits,
// prompt payment discounts and journals. Written after the stock families with no random draw,
// and kept out of DemoContext::items, so sales never pick them.
struct LedgerItem {
  const char* id;
  const char* description;
};
namespace ledger_item {
inline constexpr const char* kRent = "RENT";
inline constexpr const char* kPower = "POWER";
inline constexpr const char* kPhone = "PHONE";
inline constexpr const char* kInsurance = "INSURE";
inline constexpr const char* kAccountancy = "ACCOUNTS";
inline constexpr const char* kAdvertising = "ADVERT";
inline constexpr const char* kFreight = "FREIGHT";
inline constexpr const char* kCleaning = "CLEANING";
inline constexpr const char* kRepairs = "REPAIRS";
inline constexpr const char* kVehicle = "VEHICLE";
inline constexpr const char* kTraining = "TRAINING";
inline constexpr const char* kConsumables = "CONSUME";
inline constexpr const char* kSubcontract = "SUBCON";
inline constexpr const char* kPriceAdjustment = "PRICEADJ";
inline constexpr const char* kReturned = "RETURNS";
inline constexpr const char* kDiscount = "PPDISC";
inline constexpr const char* kWriteOff = "WRITEOFF";
inline constexpr const char* kBillDifference = "BILLDIFF";
}  // namespace ledger_item
inline constexpr LedgerItem kLedgerItems[] = {
    {ledger_item::kRent, "Rent - premises"},
    {ledger_item::kPower, "Electricity"},
    {ledger_item::kPhone, "Phone and internet"},
    {ledger_item::kInsurance, "Insurance premium"},
    {ledger_item::kAccountancy, "Accounting services"},
    {ledger_item::kAdvertising, "Advertising"},
    {ledger_item::kFreight, "Freight"},
    {ledger_item::kCleaning, "Cleaning"},
    {ledger_item::kRepairs, "Repairs and maintenance"},
    {ledger_item::kVehicle, "Fuel and vehicle costs"},
    {ledger_item::kTraining, "Staff training"},
    {ledger_item::kConsumables, "Workshop consumables"},
    {ledger_item::kSubcontract, "Subcontract work"},
    {ledger_item::kPriceAdjustment, "Price adjustment"},
    {ledger_item::kReturned, "Goods returned"},
    {ledger_item::kDiscount, "Prompt payment discount"},
    {ledger_item::kWriteOff, "Bad debt written off"},
    {ledger_item::kBillDifference, "Difference on a bill"},
};

struct DemoContext {
  DemoContext(sqlite3* handle, const DemoOptions& opts);

  sqlite3* db;
  const DemoOptions& options;
  const CountryFacts& facts;
  DemoCalendar calendar;
  DemoRandom random;
  std::unique_ptr<DemoLedger> ledger;

  std::vector<std::string> branches;
  std::vector<std::string> departments;
  std::vector<std::string> locations;  // stock locations, LocationId
  std::vector<std::string> employees;
  std::vector<PartyInfo> parties;
  std::vector<std::size_t> customers;  // indexes into parties
  std::vector<std::size_t> suppliers;
  std::vector<ItemInfo> items;
  std::vector<std::string> jobs;

  std::int64_t next_transaction = 1;
  std::int64_t next_line = 1;
  DemoSummary summary;

  // Reports the fraction done to the caller's progress callback, if any.
  void Progress(double fraction) const {
    if (options.progress) options.progress(fraction);
  }
  // Whole cents from a number of dollars, for amounts written in the tables.
  [[nodiscard]] static constexpr std::int64_t Dollars(std::int64_t d) { return d * 10000; }
  // The tax on a net amount at the standard rate, rounded to the cent.
  [[nodiscard]] std::int64_t TaxOn(std::int64_t net) const;
};

[[nodiscard]] const CountryFacts& FactsOf(const std::string& country);
// A money amount rounded to whole cents.
[[nodiscard]] std::int64_t ToCents(double ten_thousandths);

// The parts of the build, in the order BuildDemoCompany runs them.
void WriteSettings(DemoContext& ctx);
void WriteCodeTables(DemoContext& ctx);
void WriteChart(DemoContext& ctx);
void WriteParties(DemoContext& ctx);
void WriteItems(DemoContext& ctx);
void WriteTrading(DemoContext& ctx);
void WriteAssets(DemoContext& ctx);
void WriteBudgets(DemoContext& ctx);
void WriteOpenWork(DemoContext& ctx);
void WriteLogs(DemoContext& ctx);
void WriteControlDifferences(DemoContext& ctx);
// What the imports, a batch commit and a purge test reported (DemoImports.cpp). No random draw.
void WriteImportMessages(DemoContext& ctx);
// One trade customer billed for yard work every working day of the last month, who pays each
// bill within the week less the prompt payment discount: the busiest account, whose statement
// runs to a second page. Draws from a copy of the random stream, so nothing else moves.
void WriteBusyAccount(DemoContext& ctx);
// DemoJobs.cpp: the job budgets and the job rows the trading does not make; runs last, with no
// draw on the random stream.
void WriteJobExtras(DemoContext& ctx);
// The cheques (DemoCheques.cpp): suppliers paid by cheque for 30 bills and for exactly 25, a
// cheque against ledger lines, a tax category on every bank line, transfers entered on both
// banks, a bank in use but inactive. Draws from a copy of the random stream, ids after the last.
void WriteChequeRuns(DemoContext& ctx);
// The stock oddities a real company has: tax-inclusive prices, an undated line, stock at the
// shop, ordered job quantities, an item with no supplier or no levels (DemoStock.cpp).
void WriteStockExtras(DemoContext& ctx);
// The tax lines every box of the returns needs: exempt interest and fees, unreported GST
// settlements, adjustments, a capital purchase, GST-free services, one wrong supplier GST
// (DemoTaxes.cpp). No random draw; runs after every other writer.
void WriteTaxExtras(DemoContext& ctx);
// The printed documents' demo rows: tax invoice wording, an inclusive category, hidden and comment
// lines, credits naming their invoice, a full purchase order, the branches' fax and web address
// (DemoDocuments.cpp). No random draw; runs after every other writer.
void WriteDocumentExtras(DemoContext& ctx);
// What the mailing labels need: an overseas customer whose postal address is longer and wider than
// a label, and a contact who works for no party (DemoLabels.cpp). Fixed rows; runs last.
void WriteLabelAddresses(DemoContext& ctx);

}  // namespace trellin::demo
