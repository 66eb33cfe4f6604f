// The key of the party cards, the card's texts, and the party's documents.

#include "reports/admin/arOtherPartyDetail.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Format.h"
#include "reports/admin/arOtherPartyList.h"
#include "reports/receivables/LedgerSide.h"

namespace trellin {

namespace {

// The other parties' document set; the dates (the current month at first) bound the documents,
// not the parties.
constexpr ListParameter kCardParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "OtherParty.OtherPartyId",
     .index = 24,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.LocationId", .index = 23},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.EmployeeId", .index = 15},
    {.kind = ListParameterKind::Standard, .name = "Addresses", .caption = "Addresses", .index = 45},
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Documents dated",
     .from_default = "ARCURRENT-1E+1D",
     .to_default = "ARCURRENT"},
    {.kind = ListParameterKind::Option,
     .name = "ShowTransactions",
     .caption = "Show Transactions",
     .phrase = "With the documents",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "ShowContacts",
     .caption = "Show Contacts",
     .phrase = "With the contacts",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "NewPagePerParty",
     .caption = "New Page per Party",
     .phrase = "A page per party"},
};

constexpr ListKey kCardKeys[] = {{
    .key = "OtherPartyDetails",
    .base_sql = "SELECT OtherParty.OtherPartyId,OtherParty.Name,OtherParty.XRefId,OtherParty.Type,"
                "OtherParty.IsCustomer,OtherParty.IsSupplier,OtherParty.LocationId,"
                "OtherParty.EmployeeId,OtherParty.TaxNumber,OtherParty.Status,"
                "OtherParty.CustomerCategoryId,OtherParty.CustomerTypeId,"
                "OtherParty.CustomerPayTermId,OtherParty.CustomerCreditLimit,"
                "OtherParty.CustomerStopCredit,OtherParty.CustomerDiscRate,"
                "OtherParty.SupplierCategoryId,OtherParty.SupplierTypeId,"
                "OtherParty.SupplierPayTermId FROM OtherParty",
    .orders = kPartyOrders,
    .parameters = kCardParameters,
}};

constexpr const char* kCardFields[] = {"Identity",     "AddressLines", "MethodLines",
                                       "ContactLines", "CustomerLine", "SupplierLine",
                                       "BalanceLines"};

std::string CardText(const trellin::Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(name);
  return field == nullptr ? std::string() : field->Value().Text();
}

void AddCardLine(std::string& text, const std::string& line) {
  if (line.empty()) return;
  text += (text.empty() ? "" : "\r\n") + line;
}

// "Label: value" for a value that is not blank; "" otherwise.
std::string CardPart(const std::string& label, const std::string& value) {
  return value.empty() ? std::string() : label + ": " + value;
}

std::string CardJoined(std::initializer_list<std::string> parts) {
  std::string text;
  for (const std::string& part : parts) {
    if (!part.empty()) text += (text.empty() ? "" : "   ") + part;
  }
  return text;
}

}  // namespace

arOtherPartyDetail::arOtherPartyDetail() : ListDesigner("arOtherPartyDetail", kCardKeys) {}

DesignerPtr CreatearOtherPartyDetail() { return std::make_shared<arOtherPartyDetail>(); }

void arOtherPartyDetail::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  TLReport()->Parameters().AddDate("DateAsAt", Variant(), true, "Date As At", "NOW", false,
                                   "Date As At");
}

void arOtherPartyDetail::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  const trellin::Parameters& p = TLReport()->Parameters();
  as_at_ = p.Value("DateAsAt", Variant::Null());
  if (as_at_.IsNull() || as_at_.IsEmpty() || as_at_.IsMissing()) as_at_ = Variant(Now());
  transactions_ = std::make_shared<arOtherPartyDetailTransSub>();
  transactions_->DateFrom = p.Value("DatedFrom", Variant::Null());
  transactions_->DateTo = p.Value("DatedTo", Variant::Null());
  Control& documents = Field("srptTransactions");
  documents.SetObject(transactions_);
  if (!p.Value("ShowTransactions", true).ToBool()) documents.SetVisible(false);
  if (!p.Value("ShowContacts", true).ToBool()) {
    Field("lblContacts").SetVisible(false);
    Field("txtContacts").SetVisible(false);
  }
  if (p.Value("NewPagePerParty", false).ToBool()) {
    Sections()["Detail"].SetNewPage(NewPageMode::After);
  }
}

void arOtherPartyDetail::ActiveReport_DataInitialize() {
  for (const char* name : kCardFields) Fields().Add(name);
}

void arOtherPartyDetail::ActiveReport_FetchData(bool&) {
  trellin::Fields& fields = Fields();
  const std::string code = CardText(fields, "OtherPartyId");
  if (code.empty()) return;
  Database& database = *TrellinReportGlobals::RequireDatabase();
  const std::string party = database.SQLString(code);

  const bool customer = fields.Item("IsCustomer").Value().ToBool();
  const bool supplier = fields.Item("IsSupplier").Value().ToBool();
  std::string sides = customer && supplier ? "Customer and supplier"
                      : customer           ? "Customer"
                      : supplier           ? "Supplier"
                                           : "Neither customer nor supplier";
  fields.Item("Identity")
      .SetValue(Variant(CardJoined({sides, CardPart("Type", CardText(fields, "Type")),
                                    CardPart("X Ref", CardText(fields, "XRefId")),
                                    CardPart("Location", CardText(fields, "LocationId")),
                                    CardPart("Employee", CardText(fields, "EmployeeId")),
                                    CardPart("Tax No", CardText(fields, "TaxNumber"))})));

  std::string addresses;
  auto rs = database.Query(
      "SELECT AddressId,Address,City,State,Postcode,Country FROM OtherPartyAddress WHERE "
      "OtherPartyId=" +
      party + " ORDER BY AddressId");
  for (; !rs->Eof(); rs->MoveNext()) {
    std::string place;
    for (int i = 2; i <= 5; ++i) {
      const std::string text = rs->Value(i).Text();
      if (!text.empty()) place += (place.empty() ? "" : " ") + text;
    }
    std::string street = rs->Value(1).Text();
    for (std::size_t at; (at = street.find_first_of("\r\n")) != std::string::npos;) {
      street.replace(at, street.find_first_not_of("\r\n", at) - at, ", ");
    }
    AddCardLine(addresses,
                rs->Value(0).Text() + ": " + street + (place.empty() ? "" : ", " + place));
  }
  fields.Item("AddressLines").SetValue(Variant(addresses));

  std::string methods;
  rs =
      database.Query("SELECT Kind,Detail FROM OtherPartyContactMethod WHERE OtherPartyId=" + party +
                     " ORDER BY Sequence");
  for (; !rs->Eof(); rs->MoveNext())
    AddCardLine(methods, rs->Value(0).Text() + ": " + rs->Value(1).Text());
  fields.Item("MethodLines").SetValue(Variant(methods));

  std::string contacts;
  rs = database.Query(
      "SELECT LastName & IIf(FirstName Is Null,'',', ' & FirstName),Position,Phone,Mobile,Email "
      "FROM Contact WHERE OtherPartyId=" +
      party + " ORDER BY LastName,FirstName");
  for (; !rs->Eof(); rs->MoveNext()) {
    AddCardLine(contacts, CardJoined({rs->Value(0).Text(), rs->Value(1).Text(), rs->Value(2).Text(),
                                      rs->Value(3).Text(), rs->Value(4).Text()}));
  }
  fields.Item("ContactLines").SetValue(Variant(contacts.empty() ? "(none)" : contacts));

  const std::string status = CreditStatusName(fields.Item("Status").Value());
  const Variant& discount = fields.Item("CustomerDiscRate").Value();
  fields.Item("CustomerLine")
      .SetValue(Variant(
          !customer
              ? std::string()
              : CardJoined(
                    {CardPart("Category", CardText(fields, "CustomerCategoryId")),
                     CardPart("Type", CardText(fields, "CustomerTypeId")),
                     CardPart("Terms", CardText(fields, "CustomerPayTermId")),
                     CardPart("Credit limit",
                              Format(fields.Item("CustomerCreditLimit").Value(), "#,##0.00")),
                     CardPart("Status", status),
                     fields.Item("CustomerStopCredit").Value().ToBool() ? "Credit stopped" : "",
                     discount.IsNull() ? ""
                                       : CardPart("Discount", Format(discount, "0.0#") + "%")})));
  fields.Item("SupplierLine")
      .SetValue(Variant(
          !supplier ? std::string()
                    : CardJoined({CardPart("Category", CardText(fields, "SupplierCategoryId")),
                                  CardPart("Type", CardText(fields, "SupplierTypeId")),
                                  CardPart("Terms", CardText(fields, "SupplierPayTermId"))})));

  // On each side it trades on: what is open, what of it fell due before the date, the rest.
  std::string balances;
  for (const auto& [trades, kind, word] :
       {std::tuple{customer, LedgerSideKind::Receivables, "Owed to us"},
        std::tuple{supplier, LedgerSideKind::Payables, "Owed by us"}}) {
    if (!trades) continue;
    const LedgerSide& side = SideOf(kind);
    const std::string open =
        "(SELECT Sum(" + std::string(side.sign) +
        "ValueRemaining) FROM Transactions WHERE Transactions.OtherPartyId=" + party +
        " AND Transactions.Type Between " + std::string(side.range);
    rs = database.Query("SELECT " + open + ") AS Total," + open + " AND Transactions.Date<" +
                        Database::SQLDate(as_at_.ToDate()) +
                        ") AS Overdue FROM OtherParty WHERE "
                        "OtherPartyId=" +
                        party);
    // A party with no documents on the side sums to Null: nothing open.
    const auto money = [&rs](int column) {
      return rs->Eof() || rs->Value(column).IsNull() ? Currency() : rs->Value(column).ToCurrency();
    };
    const Currency total = money(0);
    const Currency overdue = money(1);
    AddCardLine(balances, std::string(word) + ": current " +
                              Format(Variant(total - overdue), "#,##0.00;(#,##0.00)") +
                              ", overdue " + Format(Variant(overdue), "#,##0.00;(#,##0.00)") +
                              ", total " + Format(Variant(total), "#,##0.00;(#,##0.00)"));
  }
  fields.Item("BalanceLines").SetValue(Variant(balances));
}

void arOtherPartyDetail::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail && transactions_) {
    transactions_->OtherPartyId = CardText(Fields(), "OtherPartyId");
  }
  ListDesigner::OnFormat(section);
}

void arOtherPartyDetail::Detail_Format() {
  const bool customer = !CardText(Fields(), "CustomerLine").empty();
  const bool supplier = !CardText(Fields(), "SupplierLine").empty();
  Field("lblCustomer").SetVisible(customer);
  Field("txtCustomer").SetVisible(customer);
  Field("lblSupplier").SetVisible(supplier);
  Field("txtSupplier").SetVisible(supplier);
}

void arOtherPartyDetailTransSub::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

std::string arOtherPartyDetailTransSub::SQL() const {
  std::string where = "Transactions.OtherPartyId=" + Database::SQLString(OtherPartyId) +
                      " AND (Transactions.Type Between 20 And 39)";
  std::string ignored;
  AppendDateRangeCondition(where, "Transactions.Date", DateFrom, DateTo, "", ignored);
  return "SELECT Transactions.Date,TransactionType.Description AS TypeName,"
         "Transactions.Reference,IIf(Transactions.Type>=30,-Transactions.Value,Transactions.Value) "
         "AS "
         "[Value],IIf(Transactions.Type>=30,-Transactions.ValueRemaining,"
         "Transactions.ValueRemaining) AS ValueRemaining FROM Transactions "
         "LEFT JOIN TransactionType ON Transactions.TransactionTypeId="
         "TransactionType.TransactionTypeId WHERE " +
         where + " ORDER BY Transactions.Date,Transactions.TransactionId";
}

// A party with no documents in the dates says so.
void arOtherPartyDetailTransSub::ActiveReport_ReportStart() {
  DataControl().SetSource(SQL());
  const auto& rs = DataControl().Recordset();
  const bool empty = !rs || rs->Eof();
  Field("lblNoDocuments").SetVisible(empty);
  Sections()["Detail"].SetVisible(!empty);
}

}  // namespace trellin
