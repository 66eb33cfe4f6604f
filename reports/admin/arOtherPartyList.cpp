// The keys of the party lists, their balances as at a date, and the per-row texts.

#include "reports/admin/arOtherPartyList.h"

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/admin/PartyParameters.h"
#include "reports/receivables/LedgerSide.h"

namespace trellin {

namespace {

constexpr auto kCustomerParameters = CustomerPartyParameters();
constexpr auto kSupplierParameters = SupplierPartyParameters();
constexpr auto kOtherPartyParameters = OtherPartyParameters();

// The party with its postal address. The SELECT list holds no subquery: the list base puts a
// group's field in front of the first FROM.
#define PARTY_SELECT                                                                              \
  "SELECT OtherParty.OtherPartyId,OtherParty.Name,OtherParty.XRefId,OtherPartyAddress.Address,"   \
  "OtherPartyAddress.City,OtherPartyAddress.State,OtherPartyAddress.Postcode,"                    \
  "OtherParty.LocationId,OtherParty.EmployeeId,OtherParty.Type,OtherParty.IsCustomer,"            \
  "OtherParty.IsSupplier,OtherParty.Status,OtherParty.CustomerCategoryId,"                        \
  "OtherParty.SupplierCategoryId,OtherParty.CustomerTypeId,OtherParty.SupplierTypeId,"            \
  "OtherParty.CustomerPayTermId,OtherParty.SupplierPayTermId,OtherParty.CustomerCreditLimit,"     \
  "OtherParty.CustomerStopCredit,OtherParty.CustomerActive,OtherParty.SupplierActive,"            \
  "OtherParty.TaxNumber,OtherParty.UserDefined1,OtherParty.UserDefined2,OtherParty.UserDefined3," \
  "OtherParty.UserDefined4,OtherParty.UserDefined5 FROM OtherParty LEFT JOIN OtherPartyAddress "  \
  "ON (OtherParty.OtherPartyId=OtherPartyAddress.OtherPartyId AND "                               \
  "OtherPartyAddress.AddressId='Postal')"

// clang-format off
constexpr ListColumn kCustomerColumns[] = {
    {"Code", "OtherPartyId", kColumnCode, "Code", "", 1100, false},
    {"Name", "Name", kColumnText, "Name", "", 2600, false},
    {"XRef", "XRefId", kColumnText, "X Ref", "", 1100, true},
    {"PostalAddress", "PostalAddress", kColumnText, "Postal Address", "", 2400, false},
    {"Phone", "Phone", kColumnText, "Phone", "", 1300, false},
    {"Email", "Email", kColumnText, "E-mail", "", 2300, false},
    {"Location", "LocationId", kColumnText, "Location", "", 900, true},
    {"Employee", "EmployeeId", kColumnText, "Employee", "", 900, true},
    {"Category", "CustomerCategoryId", kColumnText, "Category", "", 1000, false},
    {"Type", "CustomerTypeId", kColumnText, "Type", "", 700, false},
    {"Terms", "CustomerPayTermId", kColumnText, "Terms", "", 800, false},
    {"CreditLimit", "CustomerCreditLimit", kColumnMoney, "Credit Limit", "Limit", 1100, false},
    {"Status", "StatusName", kColumnText, "Status", "", 800, true},
    {"StopCredit", "CustomerStopCredit", kColumnBoolean, "Stop Credit", "Stop", 700, true},
    {"Active", "CustomerActive", kColumnBoolean, "Active", "", 700, true},
    {"TaxNo", "TaxNumber", kColumnText, "Tax No", "", 1200, true},
    {"Balance", "Balance", kColumnMoney, "Balance", "", 1300, true},
};
constexpr ListColumn kSupplierColumns[] = {
    {"Code", "OtherPartyId", kColumnCode, "Code", "", 1100, false},
    {"Name", "Name", kColumnText, "Name", "", 2600, false},
    {"XRef", "XRefId", kColumnText, "X Ref", "", 1100, true},
    {"PostalAddress", "PostalAddress", kColumnText, "Postal Address", "", 2400, false},
    {"Phone", "Phone", kColumnText, "Phone", "", 1300, false},
    {"Email", "Email", kColumnText, "E-mail", "", 2300, false},
    {"Location", "LocationId", kColumnText, "Location", "", 900, true},
    {"Employee", "EmployeeId", kColumnText, "Employee", "", 900, true},
    {"Category", "SupplierCategoryId", kColumnText, "Category", "", 1000, false},
    {"Type", "SupplierTypeId", kColumnText, "Type", "", 800, false},
    {"Terms", "SupplierPayTermId", kColumnText, "Terms", "", 800, false},
    {"Status", "StatusName", kColumnText, "Status", "", 800, true},
    {"Active", "SupplierActive", kColumnBoolean, "Active", "", 700, true},
    {"TaxNo", "TaxNumber", kColumnText, "Tax No", "", 1200, true},
    {"Balance", "Balance", kColumnMoney, "Balance", "", 1300, true},
};
constexpr ListColumn kOtherPartyColumns[] = {
    {"Code", "OtherPartyId", kColumnCode, "Code", "", 1100, false},
    {"Name", "Name", kColumnText, "Name", "", 2600, false},
    {"XRef", "XRefId", kColumnText, "X Ref", "", 1100, true},
    {"PostalAddress", "PostalAddress", kColumnText, "Postal Address", "", 2400, false},
    {"Phone", "Phone", kColumnText, "Phone", "", 1300, false},
    {"Email", "Email", kColumnText, "E-mail", "", 2300, false},
    {"Location", "LocationId", kColumnText, "Location", "", 900, true},
    {"Employee", "EmployeeId", kColumnText, "Employee", "", 900, true},
    {"Type", "Type", kColumnText, "Type", "", 900, false},
    {"Customer", "IsCustomer", kColumnBoolean, "Customer", "Cust.", 800, false},
    {"Supplier", "IsSupplier", kColumnBoolean, "Supplier", "Supp.", 800, false},
    {"Status", "StatusName", kColumnText, "Status", "", 800, true},
    {"TaxNo", "TaxNumber", kColumnText, "Tax No", "", 1200, true},
    {"Receivable", "BalanceAR", kColumnMoney, "Receivable", "", 1300, true},
    {"Payable", "BalanceAP", kColumnMoney, "Payable", "", 1300, true},
};

constexpr ListKey kPartyKeys[] = {
    {.key = "CustomerList", .base_sql = PARTY_SELECT, .base_where = "OtherParty.IsCustomer=True",
     .orders = kPartyOrders, .parameters = kCustomerParameters,
     .groupings = "Employee,Location,Customer,Customer Category,Customer Type,Customer Payment Term,Status",
     .grouping_table = "OtherParty", .columns = kCustomerColumns},
    {.key = "SupplierList", .base_sql = PARTY_SELECT, .base_where = "OtherParty.IsSupplier=True",
     .orders = kPartyOrders, .parameters = kSupplierParameters,
     .groupings = "Employee,Location,Supplier,Supplier Category,Supplier Type,Supplier Payment Term,Status",
     .grouping_table = "OtherParty", .columns = kSupplierColumns},
    {.key = "OtherPartyList", .base_sql = PARTY_SELECT, .orders = kPartyOrders,
     .parameters = kOtherPartyParameters, .groupings = "Employee,Location,Other Party Type,Status",
     .grouping_table = "OtherParty", .columns = kOtherPartyColumns},
};
// clang-format on
#undef PARTY_SELECT

constexpr const char* kStatusNames[] = {"None", "Good", "Caution", "Bad", "Adverse"};

// The side's current date, as DateAsAt defaults to it; other parties run to the present.
struct AsAtDefault {
  std::string_view key;
  std::string_view expression;
};
constexpr AsAtDefault kAsAtDefaults[] = {
    {"CustomerList", "ARCURRENT"}, {"SupplierList", "APCURRENT"}, {"OtherPartyList", "NOW"}};

std::string FieldText(const Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(name);
  return field == nullptr ? std::string() : field->Value().Text();
}

}  // namespace

std::string CreditStatusName(const Variant& status) {
  if (status.IsNull() || status.IsEmpty()) return {};
  const std::int64_t n = status.ToLong();
  return n >= 1 && n <= 5 ? kStatusNames[n - 1] : std::string();
}

arOtherPartyList::arOtherPartyList() : ListDesigner("arOtherPartyList", kPartyKeys) {}

DesignerPtr CreatearOtherPartyList() { return std::make_shared<arOtherPartyList>(); }

void arOtherPartyList::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  std::string expression = "NOW";
  for (const AsAtDefault& row : kAsAtDefaults) {
    if (row.key == Key().key) expression = std::string(row.expression);
  }
  TLReport()->Parameters().AddDate("DateAsAt", Variant(), true, "Date As At", expression, false,
                                   "Date As At");
}

void arOtherPartyList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  DataColumns& columns = TLReport()->DataColumns();
  columns.Item("PostalAddress").MultiLine = true;
  if (columns.Exists("CreditLimit")) columns.Item("CreditLimit").Totalled = false;
}

std::string arOtherPartyList::ExtraCondition() {
  const std::string picked = TLReport()->Parameters().Value("Addresses", Variant()).Text();
  if (picked.empty()) return {};
  std::string ignored;
  std::string condition;
  AppendListParameterCondition(condition, "A.AddressId", "Addresses", TLReport()->Parameters(),
                               ignored, kRangeText);
  return "OtherParty.OtherPartyId In (SELECT A.OtherPartyId FROM OtherPartyAddress AS A WHERE " +
         condition + ")";
}

arOtherPartyList::Balances arOtherPartyList::ReadBalances(bool receivables, const Date& as_at) {
  const LedgerSide& side =
      SideOf(receivables ? LedgerSideKind::Receivables : LedgerSideKind::Payables);
  const std::string sign(side.sign);
  // What is open today, less what moved after the date: the balance as it stood then.
  const std::string sql = "SELECT OtherPartyId,Sum(" + sign + "ValueRemaining)-Sum(IIf([Date]>" +
                          Database::SQLDate(as_at) + "," + sign +
                          "Value,0)) AS Balance FROM Transactions WHERE Type Between " +
                          std::string(side.range) + " GROUP BY OtherPartyId";
  Balances balances;
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(sql);
  for (; !rs->Eof(); rs->MoveNext()) {
    balances[UCase(rs->Value(0).Text())] = rs->Value(1).ToCurrency();
  }
  return balances;
}

void arOtherPartyList::ActiveReport_ReportStart() {
  DataColumns& columns = TLReport()->DataColumns();
  if (columns.Count() == 0) RefreshDataColumns();
  const Variant as_at = TLReport()->Parameters().Value("DateAsAt", Variant::Null());
  if (as_at.IsNull() || as_at.IsEmpty() || as_at.IsMissing())
    throw std::invalid_argument("Date As At: the list needs a date.");
  const Date date = as_at.ToDate();
  const std::string_view key = Key().key;
  receivable_.clear();
  payable_.clear();
  if (key != "SupplierList") receivable_ = ReadBalances(true, date);
  if (key != "CustomerList") payable_ = ReadBalances(false, date);
  methods_ = ReadMethods();
  ListDesigner::ActiveReport_ReportStart();
  if (Control* parameters = FindControl("txtParameters")) {
    std::string description = "Dated as at " + Format(Variant(date), "d mmmm yyyy");
    AppendDescription(description, parameters->Text());
    parameters->SetText(description);
  }
}

arOtherPartyList::Methods arOtherPartyList::ReadMethods() {
  Methods methods;
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(
      "SELECT OtherPartyId,Kind,Detail FROM OtherPartyContactMethod WHERE Kind In "
      "('Phone','Email') ORDER BY OtherPartyId,Sequence");
  for (; !rs->Eof(); rs->MoveNext()) {
    std::pair<std::string, std::string>& first = methods[UCase(rs->Value(0).Text())];
    std::string& detail =
        EqualsIgnoreCase(rs->Value(1).Text(), "Phone") ? first.first : first.second;
    if (detail.empty()) detail = rs->Value(2).Text();
  }
  return methods;
}

void arOtherPartyList::ActiveReport_DataInitialize() {
  for (const char* name :
       {"PostalAddress", "Phone", "Email", "StatusName", "Balance", "BalanceAR", "BalanceAP"}) {
    Fields().Add(name);
  }
}

void arOtherPartyList::ActiveReport_FetchData(bool&) {
  trellin::Fields& fields = Fields();
  const std::string code = UCase(FieldText(fields, "OtherPartyId"));
  if (code.empty()) return;
  std::string address = FieldText(fields, "Address");
  std::string place = FieldText(fields, "City");
  for (const char* part : {"State", "Postcode"}) {
    const std::string text = FieldText(fields, part);
    if (!text.empty()) place += (place.empty() ? "" : " ") + text;
  }
  if (!place.empty()) address += (address.empty() ? "" : "\r\n") + place;
  fields.Item("PostalAddress").SetValue(Variant(address));
  const auto method = methods_.find(code);
  fields.Item("Phone").SetValue(Variant(method == methods_.end() ? "" : method->second.first));
  fields.Item("Email").SetValue(Variant(method == methods_.end() ? "" : method->second.second));
  const ReportField* status = fields.Find("Status");
  fields.Item("StatusName")
      .SetValue(Variant(CreditStatusName(status ? status->Value() : Variant::Null())));
  auto balance_of = [&code](const Balances& balances) {
    auto found = balances.find(code);
    return found == balances.end() ? Variant(Currency()) : Variant(found->second);
  };
  fields.Item("BalanceAR").SetValue(balance_of(receivable_));
  fields.Item("BalanceAP").SetValue(balance_of(payable_));
  fields.Item("Balance").SetValue(Key().key == "SupplierList" ? balance_of(payable_)
                                                              : balance_of(receivable_));
}

}  // namespace trellin
