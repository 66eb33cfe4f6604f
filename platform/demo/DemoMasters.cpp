// The company's settings, its code tables and its chart of accounts.

#include <algorithm>
#include <cctype>
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
     "S",
     "P",
     "E",
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

// Four roles, seven users (one gone), and what each role may do with the functions of eight
// areas: every role has a row for every function, a row of no ticks where it may do nothing.
// Four layout scripts, one of them switched off.
void WriteUsersAndScripts(sqlite3* db, Date present) {
  DemoTable roles(db, "UserRole", {"RoleId", "Description"});
  constexpr const char* kRoles[][2] = {{"ADMIN", "Administrator"},
                                       {"ACCOUNTS", "Accounts staff"},
                                       {"SALES", "Sales staff"},
                                       {"WORKSHOP", "Workshop staff"}};
  for (const auto& role : kRoles) roles.Insert({role[0], role[1]});
  DemoTable users(db, "UserAccount",
                  {"UserId", "Name", "RoleId", "EmployeeId", "Active", "LastLogin"});
  struct User {
    const char* id;
    const char* name;
    const char* role;
    const char* employee;
    bool active;
    int days_ago;
  };
  constexpr User kUsers[] = {
      {"mere", "Mere Walker", "ADMIN", "MW", true, 0},
      {"anna", "Anna Petrovic", "ACCOUNTS", "AP", true, 1},
      {"james", "James Sutherland", "SALES", "JS", true, 2},
      {"lucy", "Lucy Brennan", "SALES", "LB", true, 0},
      {"raj", "Raj Hegde", "SALES", "RH", true, 5},
      {"tama", "Tama Kereama", "WORKSHOP", "TK", true, 1},
      {"sam", "Sam Fale", "WORKSHOP", "SF", false, 240},
  };
  for (const User& u : kUsers) {
    users.Insert({u.id, u.name, u.role, u.employee, u.active, present.AddDays(-u.days_ago)});
  }
  struct Function {
    const char* area;
    const char* name;
  };
  constexpr Function kFunctions[] = {
      {"General Ledger", "Accounts"},
      {"General Ledger", "Journals"},
      {"General Ledger", "Budgets"},
      {"General Ledger", "Financial Reports"},
      {"Banking", "Bank Accounts"},
      {"Banking", "Bank Entries"},
      {"Banking", "Reconciliation"},
      {"Receivables", "Customers"},
      {"Receivables", "Invoices"},
      {"Receivables", "Receipts"},
      {"Receivables", "Statements"},
      {"Payables", "Suppliers"},
      {"Payables", "Bills"},
      {"Payables", "Payments"},
      {"Payables", "Purchase Orders"},
      {"Stock", "Items"},
      {"Stock", "Adjustments"},
      {"Stock", "Stocktakes"},
      {"Stock", "Price Changes"},
      {"Jobs", "Jobs"},
      {"Jobs", "Job Costs"},
      {"Jobs", "Job Invoicing"},
      {"Assets", "Assets"},
      {"Assets", "Depreciation"},
      {"Assets", "Disposals"},
      {"Administration", "Users and Roles"},
      {"Administration", "Company Settings"},
      {"Administration", "Scripts"},
      {"Administration", "Contacts"},
      {"Administration", "Period End"},
  };
  // A role's rights in an area as five ticks: view, add, edit, delete, print. An area the row
  // does not name is closed to the role.
  struct Grant {
    const char* role;
    const char* area;  // "*" every area
    bool ticks[5];
  };
  constexpr Grant kGrants[] = {
      {"ADMIN", "*", {true, true, true, true, true}},
      {"ACCOUNTS", "General Ledger", {true, true, true, false, true}},
      {"ACCOUNTS", "Banking", {true, true, true, false, true}},
      {"ACCOUNTS", "Receivables", {true, true, true, true, true}},
      {"ACCOUNTS", "Payables", {true, true, true, true, true}},
      {"ACCOUNTS", "Stock", {true, false, false, false, true}},
      {"ACCOUNTS", "Assets", {true, true, true, false, true}},
      {"SALES", "Receivables", {true, true, true, false, true}},
      {"SALES", "Stock", {true, false, false, false, true}},
      {"SALES", "Jobs", {true, false, false, false, false}},
      {"WORKSHOP", "Jobs", {true, true, true, false, true}},
      {"WORKSHOP", "Stock", {true, true, true, false, false}},
      {"WORKSHOP", "Assets", {true, false, false, false, false}},
  };
  DemoTable permissions(
      db, "UserRolePermission",
      {"RoleId", "Area", "FunctionName", "CanView", "CanAdd", "CanEdit", "CanDelete", "CanPrint"});
  for (const auto& role : kRoles) {
    for (const Function& f : kFunctions) {
      bool ticks[5] = {};
      for (const Grant& g : kGrants) {
        if (std::string_view(g.role) != role[0]) continue;
        if (std::string_view(g.area) != "*" && std::string_view(g.area) != f.area) continue;
        std::copy(std::begin(g.ticks), std::end(g.ticks), ticks);
      }
      permissions.Insert(
          {role[0], f.area, f.name, ticks[0], ticks[1], ticks[2], ticks[3], ticks[4]});
    }
  }
  DemoTable scripts(db, "Script",
                    {"ScriptId", "Description", "RunsOn", "Language", "Active", "Modified",
                     "ModifiedBy", "Body"});
  scripts.Insert({"OVERDUE", "Overdue stamp on statements", "StatementAR", "Lua", true,
                  present.AddDays(-40), "anna",
                  "-- Stamp a statement whose oldest balance is over 60 days.\n"
                  "if rpt.Fields.Over60 > 0 then\n"
                  "  rpt.Controls.lblStamp.Visible = true\n"
                  "end"});
  scripts.Insert({"PAYREF", "Payment reference on invoices", "InvoiceAR", "Lua", true,
                  present.AddDays(-120), "mere",
                  "-- Print the customer code as the payment reference.\n"
                  "rpt.Controls.txtPayRef.Text = rpt.Fields.OtherPartyId"});
  scripts.Insert({"SHADE", "Shade stock below reorder level", "StockReorder", "Lua", true,
                  present.AddDays(-15), "tama",
                  "-- Shade a line whose stock is under its reorder level.\n"
                  "local short = rpt.Fields.OnHand < rpt.Fields.ReorderLevel\n"
                  "rpt.Sections.Detail.BackStyle = short and 1 or 0"});
  scripts.Insert({"OLDLOGO", "Old logo on remittances", "RemittanceAP", "Lua", false,
                  present.AddDays(-700), "mere", "rpt.Controls.imgLogo.Visible = false"});
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
  // The people the company deals with at its trade parties; WriteParties ties each to its party.
  DemoTable contacts(
      db, "Contact",
      {"ContactId", "LastName", "FirstName", "Position", "Phone", "Mobile", "Email"});
  constexpr const char* kContacts[][3] = {{"Harris", "Jo", "Owner"},
                                          {"Ngata", "Wiremu", "Accounts Payable"},
                                          {"Chen", "Lily", "Purchasing"},
                                          {"Mason", "Pete", "Marina Manager"},
                                          {"Taylor", "Grace", "Office Manager"},
                                          {"Singh", "Arjun", "Sales Representative"}};
  int contact_id = 1;
  for (const auto& c : kContacts) {
    std::string mail = std::string(c[1]) + "." + c[0] + "@example.com";
    std::transform(mail.begin(), mail.end(), mail.begin(),
                   [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
    const std::string number = std::to_string(contact_id);
    contacts.Insert(
        {contact_id, c[0], c[1], c[2], "09 555 020" + number, "021 555 030" + number, mail});
    ++contact_id;
  }
  WriteUsersAndScripts(db, ctx.calendar.Present());

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
  DemoTable terms(db, "PaymentTerm", {"PaymentTermId", "Description", "Days", "FollowingMonth"});
  for (const TermInfo& t : kTerms) terms.Insert({t.id, t.description, t.days, t.following_month});
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
  tax.Insert({f.zero, f.tax_rate == 15 ? "Zero rated" : "Exports", 0.0, false});
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
