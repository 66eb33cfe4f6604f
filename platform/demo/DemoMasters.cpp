// The company's settings, its code tables and its chart of accounts.

#include <cmath>
#include <stdexcept>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoContext.h"

namespace trellin::demo {

namespace {

constexpr CountryFacts kFacts[] = {
    {"NZ",
     "Tui Bay Marine Ltd",
     "94-317-552",
     15,
     "S",
     "Z",
     "E",
     {{"AKL", "Auckland"}, {"TGA", "Tauranga"}},
     ""},
    {"AU",
     "Coral Bay Marine Pty Ltd",
     "51 824 753 556",
     10,
     "GST",
     "FRE",
     "INP",
     {{"SYD", "Sydney"}, {"BNE", "Brisbane"}},
     "NSW"},
};

struct Code {
  const char* id;
  const char* description;
};

void WriteCodes(sqlite3* db, const char* table, const char* id_column,
                std::initializer_list<Code> codes) {
  DemoTable rows(db, table, {id_column, "Description"});
  for (const Code& code : codes) rows.Insert({code.id, code.description});
}

}  // namespace

const CountryFacts& FactsOf(const std::string& country) {
  for (const auto& facts : kFacts) {
    if (country == facts.country) return facts;
  }
  throw std::invalid_argument("the demo company's country must be NZ or AU, not '" + country + "'");
}

std::int64_t ToCents(double ten_thousandths) {
  return static_cast<std::int64_t>(std::llround(ten_thousandths / 100.0)) * 100;
}

std::int64_t DemoContext::TaxOn(std::int64_t net) const {
  return ToCents(static_cast<double>(net) * facts.tax_rate / 100.0);
}

Date DueDate(Date date, int term) {
  const TermInfo& info = kTerms[term];
  if (!info.following_month) return date.AddDays(info.days);
  return date.FirstOfMonth().AddMonths(1).AddDays(info.days - 1);
}

void WriteSettings(DemoContext& ctx) {
  const CountryFacts& f = ctx.facts;
  const DemoCalendar& cal = ctx.calendar;
  const std::string present = cal.Present().ToIso();
  const std::string tax_start = cal.TaxPeriodOf(cal.Present()).from.ToIso();
  struct Setting {
    const char* section;
    const char* key;
    std::string value;
  };
  const Setting settings[] = {
      {"Company", "Name", f.company},
      {"Company", "ProductName", "Trellin"},
      {"Company", "Country", f.country},
      {"Company", "TaxNumber", f.tax_number},
      {"Defaults", "Branch", f.branches[0][0]},
      {"Tax", "Name", "GST"},
      {"Tax", "Rate", f.tax_rate == 15 ? "15" : "10"},
      {"Tax", "PeriodStart", tax_start},
      {"Tax", "PeriodMonths", std::to_string(cal.TaxMonths())},
      {"Tax", "BasisOutput", "Invoice"},
      {"Tax", "BasisInput", "Invoice"},
      {"Periods", "CurrentDateAR", present},
      {"Periods", "CurrentDateAP", present},
      {"Periods", "CurrentDateGL", present},
      {"Accounts", "RetainedEarnings", account::kRetainedEarnings},
      {"Accounts", "ReceivablesControl", account::kReceivables},
      {"Accounts", "PayablesControl", account::kPayables},
      {"Options", "ItemCodeSetting", "0"},
      {"Options", "SuburbInCityField", f.state[0] == 0 ? "True" : "False"},
      {"Options", "TemplateFolder", ""},
      {"Options", "JobActualCharges", "True"},
      {"Options", "QuantityDecimals", "2"},
      {"Options", "PriceDecimals", "2"},
      {"Options", "ValueDecimals", "2"},
      {"Options", "PromptPaymentDiscount", "True"},
      {"Options", "AvailableIncludesAllocated", "False"},
      {"Options", "OverdueFromDefault", "0"},
      {"Formats", "Date", "d/mm/yyyy"},
      {"Formats", "LongDate", "d mmmm yyyy"},
      {"Formats", "Currency", "#,##0.00;(#,##0.00)"},
      {"UserDefinedFields", "OtherParty.1.Name", "Boat Name"},
      {"UserDefinedFields", "OtherParty.1.Type", "1"},
      {"UserDefinedFields", "Item.1.Name", "Brand"},
      {"UserDefinedFields", "Item.1.Type", "5"},
      {"UserDefinedFields", "Job.1.Name", "Vessel"},
      {"UserDefinedFields", "Job.1.Type", "8"},
      {"UserDefinedFields", "Asset.1.Name", "Registration"},
      {"UserDefinedFields", "Asset.1.Type", "7"},
      {"UserDefinedFields", "Transactions.1.Name", "Query"},
      {"UserDefinedFields", "Transactions.1.Type", "0"},
  };
  DemoTable rows(ctx.db, "CompanySetting", {"Section", "Key", "Value"});
  for (const Setting& s : settings) rows.Insert({s.section, s.key, s.value});

  DemoTable years(ctx.db, "FinancialYear", {"FinancialYearId", "Name", "DateStart", "DateEnd"});
  int id = 1;
  for (const YearSpan& year : cal.Years()) years.Insert({id++, year.name, year.start, year.end});
  Execute(ctx.db, "INSERT INTO Configuration (ConfigurationId) VALUES (1)", "configuration");

  DemoTable periods(ctx.db, "TaxPeriod",
                    {"TaxPeriodId", "DateFrom", "DateTo", "BasisOutput", "BasisInput", "Rate"});
  for (const TaxPeriodSpan& p : cal.TaxPeriods()) {
    if (p.filed) periods.Insert({p.id, p.from, p.to, "Invoice", "Invoice", f.tax_rate});
  }
}

void WriteCodeTables(DemoContext& ctx) {
  sqlite3* db = ctx.db;
  const CountryFacts& f = ctx.facts;
  DemoTable branches(db, "Branch",
                     {"BranchId", "Name", "Description", "Address", "Phone", "Email", "Website",
                      "TaxFileNumber", "TaxNumber"});
  for (const auto& b : f.branches) {
    branches.Insert({b[0], std::string(f.company) + " " + b[1], std::string(b[1]) + " branch",
                     std::string("12 Wharf Road\n") + b[1], "0800 884 627",
                     std::string("accounts.") + b[0] + "@tuibay.example", "www.tuibay.example",
                     f.tax_number, f.tax_number});
    ctx.branches.emplace_back(b[0]);
  }
  WriteCodes(db, "Department", "DeptId",
             {{"RET", "Retail shop"},
              {"TRD", "Trade sales"},
              {"WSH", "Workshop"},
              {"ADM", "Administration"}});
  ctx.departments = {"RET", "TRD", "WSH", "ADM"};
  DemoTable locations(db, "Location", {"LocationId", "Description", "BranchId"});
  locations.Insert({"MAIN", "Main warehouse", f.branches[0][0]});
  locations.Insert({"SHOP", "Shop floor", f.branches[0][0]});
  locations.Insert({"BR2", std::string(f.branches[1][1]) + " store", f.branches[1][0]});
  ctx.locations = {"MAIN", "SHOP", "BR2"};

  DemoTable employees(
      db, "Employee",
      {"EmployeeId", "Name", "Title", "ContactMethod", "ContactDetail", "Active", "ReportsTo"});
  struct Person {
    const char* id;
    const char* name;
    const char* title;
    const char* reports_to;
    bool active;
  };
  constexpr Person kStaff[] = {
      {"MW", "Mere Walker", "Managing Director", nullptr, true},
      {"JS", "James Sutherland", "Sales Manager", "MW", true},
      {"AP", "Anna Petrovic", "Accounts", "MW", true},
      {"TK", "Tama Kereama", "Workshop Manager", "MW", true},
      {"LB", "Lucy Brennan", "Sales", "JS", true},
      {"RH", "Raj Hegde", "Sales", "JS", true},
      {"DO", "Dan O'Connor", "Technician", "TK", true},
      {"SF", "Sam Fale", "Storeman", "TK", false},
  };
  for (const Person& p : kStaff) {
    employees.Insert({p.id, p.name, p.title, "Mobile", "021 555 01" + std::string(p.id), p.active,
                      p.reports_to == nullptr ? Cell(Cell::Null{}) : Cell(p.reports_to)});
    if (p.active) ctx.employees.emplace_back(p.id);
  }
  DemoTable contacts(db, "Contact", {"ContactId", "LastName", "FirstName"});
  constexpr const char* kContactNames[][2] = {{"Harris", "Jo"},    {"Ngata", "Wiremu"},
                                              {"Chen", "Lily"},    {"Mason", "Pete"},
                                              {"Taylor", "Grace"}, {"Singh", "Arjun"}};
  int contact_id = 1;
  for (const auto& c : kContactNames) contacts.Insert({contact_id++, c[0], c[1]});

  WriteCodes(db, "CustomerCategory", "CustomerCategoryId",
             {{"RETAIL", "Retail customers"},
              {"TRADE", "Trade accounts"},
              {"MARINA", "Marinas and clubs"},
              {"EXPORT", "Export customers"}});
  WriteCodes(db, "CustomerType", "CustomerTypeId",
             {{"IND", "Individual"}, {"COMP", "Company"}, {"GOVT", "Government"}});
  WriteCodes(db, "SupplierCategory", "SupplierCategoryId",
             {{"STOCK", "Stock suppliers"}, {"SERV", "Services"}, {"UTIL", "Utilities"}});
  WriteCodes(db, "SupplierType", "SupplierTypeId",
             {{"LOCAL", "Local supplier"}, {"IMPORT", "Importer"}});
  DemoTable terms(db, "PaymentTerm", {"PaymentTermId", "Description"});
  for (const TermInfo& t : kTerms) terms.Insert({t.id, t.description});
  DemoTable penalties(db, "PenaltyInterest",
                      {"PenaltyInterestId", "Description", "Rate", "GraceDays", "MinimumCharge"});
  penalties.Insert({"NONE", "No penalty interest", 0.0, 0, std::int64_t{0}});
  penalties.Insert({"STD", "1.5% per month overdue", 18.0, 7, DemoContext::Dollars(5)});
  WriteCodes(db, "ItemCategory", "ItemCategoryId",
             {{"ENG", "Engines and parts"},
              {"SAFE", "Safety gear"},
              {"ELEC", "Marine electronics"},
              {"ROPE", "Rope and rigging"},
              {"PAINT", "Paint and antifoul"},
              {"SERV", "Workshop services"},
              {"OVHD", "Overheads and adjustments"}});
  WriteCodes(db, "ItemType", "ItemTypeId",
             {{"STOCK", "Stocked item"},
              {"SERIAL", "Serial numbered"},
              {"BATCH", "Batch tracked"},
              {"LABOUR", "Labour"},
              {"MISC", "Non-stock"}});
  DemoTable job_categories(db, "JobCategory",
                           {"JobCategoryId", "Description", "TransactionTypeId", "Message"});
  job_categories.Insert({"SERVICE", "Engine servicing", "JINV", "Thank you for your business"});
  job_categories.Insert({"REFIT", "Refits and repairs", "JINV", Cell::Null{}});
  job_categories.Insert({"INSTALL", "Electronics installation", "JINV", Cell::Null{}});

  DemoTable asset_categories(
      db, "AssetCategory",
      {"AssetCategoryId", "Description", "CalculationPeriod", "Revaluation", "DisposalType"});
  asset_categories.Insert({"PLANT", "Workshop machinery", "Monthly", "None", "Sale"});
  asset_categories.Insert({"TOOLS", "Tools", "Yearly", "None", "Scrap"});
  asset_categories.Insert({"OFFICE", "Office equipment", "Monthly", "None", "Sale"});
  asset_categories.Insert({"VEHICLE", "Motor vehicles", "Monthly", "Market", "Sale"});
  DemoTable sites(db, "AssetSite", {"AssetSiteId", "Description", "Active", "ParentAssetSiteId"});
  sites.Insert({"HQ", "Head office and workshop", true, Cell::Null{}});
  sites.Insert({"WSHOP", "Workshop floor", true, "HQ"});
  sites.Insert({"OFFICE", "Office", true, "HQ"});
  sites.Insert({"BR2", std::string(f.branches[1][1]) + " store", true, Cell::Null{}});
  sites.Insert({"OLDYARD", "Old boat yard", false, Cell::Null{}});
  DemoTable asset_types(db, "AssetType", {"AssetTypeId", "Description", "ParentAssetTypeId"});
  asset_types.Insert({"EQUIP", "Equipment", Cell::Null{}});
  asset_types.Insert({"LIFT", "Lifting equipment", "EQUIP"});
  asset_types.Insert({"MACH", "Machine tools", "EQUIP"});
  asset_types.Insert({"IT", "Computers", "EQUIP"});
  asset_types.Insert({"VEH", "Vehicles", Cell::Null{}});
  asset_types.Insert({"UTE", "Utility vehicles", "VEH"});

  WriteCodes(db, "glSource", "glSourceId",
             {{"AR", "Receivables"},
              {"AP", "Payables"},
              {"GL", "General journal"},
              {"CB", "Cash book"},
              {"SC", "Stock"},
              {"FA", "Fixed assets"},
              {"PR", "Payroll"}});
  DemoTable types(db, "TransactionType", {"TransactionTypeId", "Description", "Type", "Message"});
  struct TypeRow {
    const char* id;
    const char* description;
    int type;
  };
  constexpr TypeRow kTypes[] = {
      {"INV", "Invoice", 30},          {"CRN", "Credit Note", 31},
      {"DSC", "Discount", 32},         {"REC", "Receipt", 35},
      {"JINV", "Job Invoice", 30},     {"SINV", "Supplier Invoice", 20},
      {"SCRN", "Supplier Credit", 21}, {"PPD", "Prompt Payment Discount", 22},
      {"JNL", "Journal", 33},          {"SJNL", "Supplier Journal", 23},
      {"PAY", "Payment", 25},          {"PO", "Purchase Order", 80},
      {"SO", "Sales Order", 90},
  };
  for (const TypeRow& t : kTypes) {
    types.Insert(
        {t.id, t.description, t.type,
         t.type == 30 ? Cell("Payment is due by the date shown. Thank you.") : Cell(Cell::Null{})});
  }
  DemoTable tax(db, "TaxCategory", {"TaxCategoryId", "Description", "Rate", "Inclusive"});
  tax.Insert({f.standard, "Standard rated", f.tax_rate, false});
  tax.Insert({f.zero, f.tax_rate == 15 ? "Zero rated" : "GST free", 0.0, false});
  tax.Insert({f.exempt, f.tax_rate == 15 ? "Exempt" : "Input taxed", 0.0, false});
  tax.Insert({"*", "Not reported", 0.0, false});

  struct PostCode {
    const char* city;
    const char* state;
    const char* code;
  };
  constexpr PostCode kNz[] = {{"Auckland", "", "1010"},        {"Devonport", "", "0624"},
                              {"Hamilton", "", "3204"},        {"Tauranga", "", "3110"},
                              {"Mount Maunganui", "", "3116"}, {"Whangarei", "", "0110"},
                              {"Wellington", "", "6011"},      {"Nelson", "", "7010"},
                              {"Christchurch", "", "8011"},    {"Dunedin", "", "9016"}};
  constexpr PostCode kAu[] = {{"Sydney", "NSW", "2000"},     {"Manly", "NSW", "2095"},
                              {"Newcastle", "NSW", "2300"},  {"Brisbane", "QLD", "4000"},
                              {"Gold Coast", "QLD", "4217"}, {"Cairns", "QLD", "4870"},
                              {"Melbourne", "VIC", "3000"},  {"Hobart", "TAS", "7000"},
                              {"Adelaide", "SA", "5000"},    {"Fremantle", "WA", "6160"}};
  DemoTable codes(db, "PostCodes", {"City", "State", "Country", "Postcode", "Comments"});
  for (const PostCode& p :
       f.state[0] == 0 ? std::span<const PostCode>(kNz) : std::span<const PostCode>(kAu)) {
    codes.Insert({p.city, OrNull(p.state), f.country, p.code, Cell::Null{}});
  }
}

void WriteChart(DemoContext& ctx) {
  DemoTable rows(ctx.db, "Account",
                 {"AccountId", "Description", "Post", "Type", "ALevel", "DrCr", "Ratio"});
  std::vector<std::pair<std::string, int>> posting;
  for (const ChartRow& row : Chart()) {
    rows.Insert({row.id, row.description, row.post == nullptr ? Cell(Cell::Null{}) : Cell(row.post),
                 row.type, row.level, DrCrOf(row),
                 row.ratio == 0 ? Cell(Cell::Null{}) : Cell(row.ratio)});
    if (row.post == nullptr) posting.emplace_back(row.id, row.type);
  }
  DemoTable links(ctx.db, "AccountLink", {"AccountLinkId", "AccountId"});
  links.Insert({"AR", account::kReceivables});
  links.Insert({"AP", account::kPayables});
  links.Insert({"SC", account::kStock});
  DemoTable banks(ctx.db, "Bank",
                  {"BankId", "AccountName", "AccountNumber", "BankName", "BankNumber", "Branch",
                   "OverdraftLimit", "AssetAccountId", "FeesAccountId", "Active", "InUse"});
  banks.Insert({"CHQ", ctx.facts.company, "12-3108-0456123-00", "Harbour Bank", "12-3108",
                ctx.facts.branches[0][1], DemoContext::Dollars(50000), account::kBankCheque,
                account::kBankFees, true, true});
  banks.Insert({"SAVE", ctx.facts.company, "12-3108-0456123-50", "Harbour Bank", "12-3108",
                ctx.facts.branches[0][1], std::int64_t{0}, account::kBankSaver, account::kBankFees,
                true, true});
  banks.Insert({"OLD", "Former trading account", "06-0501-0777345-00", "Coastal Bank", "06-0501",
                "Queen Street", std::int64_t{0}, account::kBankCheque, account::kBankFees, false,
                false});
  ctx.ledger = std::make_unique<DemoLedger>(ctx.db, ctx.calendar, ctx.random, posting);
}

}  // namespace trellin::demo
