// The exception report's key, the findings' query (one SELECT a check, joined by UNION ALL and
// read as the table Finding), each finding's detail and the counts under the groups.

#include "reports/receivables/ardsExceptionReport.h"

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/Section.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr ListOrder kExceptionOrders[] = {
    {"Code", "OtherParty.OtherPartyId,Finding.Seq,Finding.Code"},
    {"Name", "OtherParty.Name,OtherParty.OtherPartyId,Finding.Seq,Finding.Code"},
    {"X Ref", "OtherParty.XRefId,OtherParty.OtherPartyId,Finding.Seq,Finding.Code"},
};

// The checks, in the order a party's findings print; each box is "Check" and the name.
constexpr ListChoice kChecks[] = {
    {"Codes"},           {"CreditLimit"}, {"Stopped"},   {"CreditBalance"},
    {"InactiveBalance"}, {"NoAddress"},   {"NoContact"}, {"Status"},
};

constexpr ListParameter kExceptionParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "OtherParty.OtherPartyId",
     .index = 24,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.LocationId", .index = 23},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.EmployeeId", .index = 15},
    {.kind = ListParameterKind::CheckBoxes,
     .name = "Check",
     .caption = "Checks",
     .field = "Finding.CheckName",
     .choices = kChecks},
};

// The exception's own name heads its group; employee and location are the party's own.
constexpr ListGrouping kExceptionGroupings[] = {
    {"Exception", "Finding.Exception", "", "Exception"},
    {"Employee", "OtherParty.EmployeeId", "SELECT EmployeeId,Name FROM Employee", "EmployeeId"},
    {"Location", "OtherParty.LocationId", "SELECT LocationId,Description FROM Location",
     "LocationId"},
};

constexpr ListColumn kExceptionColumns[] = {
    {"Code", "OtherPartyId", kColumnCode, "Code", "", 1300, false},
    {"Name", "Name", kColumnText, "Name", "", 2600, false},
    {"Side", "Side", kColumnText, "Side", "", 900, false},
    {"Exception", "Exception", kColumnText, "Exception", "", 2000, false},
    {"Detail", "Detail", kColumnText, "Detail", "", -1, false},
    {"Balance", "Balance", kColumnMoney, "Balance", "", 1500, false},
    {"XRef", "XRefId", kColumnText, "X Ref", "", 1200, true},
    {"Employee", "EmployeeId", kColumnCode, "Employee", "", 1000, true},
    {"Location", "LocationId", kColumnCode, "Location", "", 1000, true},
};

constexpr ListKey kExceptionKey = {
    .key = "OtherPartyExceptions",
    .orders = kExceptionOrders,
    .parameters = kExceptionParameters,
    .groupings = "Exception,Employee,Location",
    .own_groupings = kExceptionGroupings,
    .columns = kExceptionColumns,
};
constexpr ListKey kExceptionKeys[] = {kExceptionKey};

// A party's side of a finding about the party as a whole: a customer, else a supplier.
constexpr std::string_view kPartySide = "IIf(P.IsCustomer<>0,'Customer','Supplier')";

// The party's balance on a side processed before `before`, owed to the company positive on the
// customers' side and owed by it positive on the suppliers'.
std::string BalanceOf(std::string_view party, bool customers, const std::string& before) {
  return std::string("Nz((SELECT Sum(") + (customers ? "-" : "") +
         "T.Value) FROM Transactions AS T WHERE T.OtherPartyId=" + std::string(party) +
         " AND T.Type Between " + (customers ? "30 And 39" : "20 And 29") + " AND T.DateProcess<" +
         before + "),0)";
}

// One check's SELECT over the parties (alias P): its columns in the order every piece gives.
// The party's balance on the finding's side, as of the run's date, is reckoned here: the list
// base's SELECT list takes no subquery of its own.
std::string Piece(int seq, std::string_view check, std::string_view exception,
                  std::string_view side, std::string_view what, std::string_view code,
                  std::string_view amount, const std::string& balance, const std::string& where) {
  return "SELECT P.OtherPartyId AS PartyId," + std::to_string(seq) + " AS Seq,'" +
         std::string(check) + "' AS CheckName,'" + std::string(exception) + "' AS Exception," +
         std::string(side) + " AS Side,'" + std::string(what) + "' AS What," + std::string(code) +
         " AS Code," + std::string(amount) + " AS Amount," + balance +
         " AS Balance FROM OtherParty AS P WHERE " + where;
}

// A code of the party that its table does not hold.
std::string CodePiece(int seq, std::string_view flag, std::string_view side, std::string_view what,
                      std::string_view column, std::string_view table, std::string_view key,
                      const std::string& balance) {
  const std::string field = "P." + std::string(column);
  std::string where = flag.empty() ? std::string() : "P." + std::string(flag) + "<>0 AND ";
  where += "Not " + field + " Is Null AND Not Exists (SELECT * FROM " + std::string(table) +
           " AS C WHERE C." + std::string(key) + "=" + field + ")";
  return Piece(seq, "Codes", "Code not on file", side, what, field, "0", balance, where);
}

std::string FindingsSQL(const std::string& before) {
  const std::string customer = BalanceOf("P.OtherPartyId", true, before);
  const std::string supplier = BalanceOf("P.OtherPartyId", false, before);
  const std::string party = "IIf(P.IsCustomer<>0," + customer + "," + supplier + ")";
  const std::vector<std::string> pieces = {
      CodePiece(1, "IsCustomer", "'Customer'", "Customer category", "CustomerCategoryId",
                "CustomerCategory", "CustomerCategoryId", customer),
      CodePiece(2, "IsCustomer", "'Customer'", "Customer type", "CustomerTypeId", "CustomerType",
                "CustomerTypeId", customer),
      CodePiece(3, "IsCustomer", "'Customer'", "Customer payment term", "CustomerPayTermId",
                "PaymentTerm", "PaymentTermId", customer),
      CodePiece(4, "IsSupplier", "'Supplier'", "Supplier category", "SupplierCategoryId",
                "SupplierCategory", "SupplierCategoryId", supplier),
      CodePiece(5, "IsSupplier", "'Supplier'", "Supplier type", "SupplierTypeId", "SupplierType",
                "SupplierTypeId", supplier),
      CodePiece(6, "IsSupplier", "'Supplier'", "Supplier payment term", "SupplierPayTermId",
                "PaymentTerm", "PaymentTermId", supplier),
      CodePiece(7, "", kPartySide, "Location", "LocationId", "Location", "LocationId", party),
      CodePiece(8, "", kPartySide, "Employee", "EmployeeId", "Employee", "EmployeeId", party),
      Piece(
          9, "CreditLimit", "Over credit limit", "'Customer'", "", "''", "P.CustomerCreditLimit",
          customer,
          "P.IsCustomer<>0 AND P.CustomerCreditLimit>0 AND " + customer + ">P.CustomerCreditLimit"),
      Piece(10, "Stopped", "Credit stopped", "'Customer'", "", "''", "0", customer,
            "P.IsCustomer<>0 AND P.CustomerStopCredit<>0"),
      Piece(11, "CreditBalance", "Credit balance", "'Customer'", "", "''", "0", customer,
            "P.IsCustomer<>0 AND " + customer + "<0"),
      Piece(12, "CreditBalance", "Debit balance", "'Supplier'", "", "''", "0", supplier,
            "P.IsSupplier<>0 AND " + supplier + "<0"),
      Piece(13, "InactiveBalance", "Inactive with a balance", "'Customer'", "", "''", "0", customer,
            "P.IsCustomer<>0 AND P.CustomerActive=0 AND " + customer + "<>0"),
      Piece(14, "InactiveBalance", "Inactive with a balance", "'Supplier'", "", "''", "0", supplier,
            "P.IsSupplier<>0 AND P.SupplierActive=0 AND " + supplier + "<>0"),
      Piece(15, "NoAddress", "No postal address", kPartySide, "", "''", "0", party,
            "Not Exists (SELECT * FROM OtherPartyAddress AS A WHERE "
            "A.OtherPartyId=P.OtherPartyId AND A.AddressId='Postal')"),
      Piece(16, "NoContact", "No contact", kPartySide, "", "''", "0", party,
            "Not Exists (SELECT * FROM OtherPartyContactMethod AS M WHERE "
            "M.OtherPartyId=P.OtherPartyId AND Trim(Nz(M.Detail,''))<>'') AND Not Exists "
            "(SELECT * FROM Contact AS K WHERE K.OtherPartyId=P.OtherPartyId)"),
      Piece(17, "Status", "Credit status", kPartySide, "", "IIf(P.Status=4,'Bad','Adverse')", "0",
            party, "P.Status In (4,5)"),
  };
  return Join(pieces, " UNION ALL ");
}

}  // namespace

std::string ExceptionDetail(std::string_view check, std::string_view side, std::string_view what,
                            std::string_view code, const std::string& amount) {
  const bool customer = side == "Customer";
  if (check == "Codes") return std::string(what) + " " + std::string(code) + " not on file";
  if (check == "CreditLimit") return "Balance over the credit limit of " + amount;
  if (check == "Stopped") return "Credit stopped";
  if (check == "CreditBalance") {
    return customer ? "The customer is in credit" : "The supplier owes the company";
  }
  if (check == "InactiveBalance") {
    return customer ? "Inactive customer with a balance" : "Inactive supplier with a balance";
  }
  if (check == "NoAddress") return "No postal address";
  if (check == "NoContact") return "No phone, e-mail or contact person";
  if (check == "Status") return "Credit status " + std::string(code);
  return {};
}

std::string FindingsText(long count) {
  return std::to_string(count) + (count == 1 ? " finding" : " findings");
}

ardsExceptionReport::ardsExceptionReport()
    : ListDesigner("ardsExceptionReport", kExceptionKeys, "Exception Report") {}

DesignerPtr CreateardsExceptionReport() { return std::make_shared<ardsExceptionReport>(); }

void ardsExceptionReport::RefreshParameters(std::string& ReportName) {
  TLReport()
      ->Parameters()
      .AddDate("DateAsAt", Variant(), true, "Date As At", "NOW", false, "Date As At")
      ->Help = "Balances are those of the documents processed up to this day.";
  ListDesigner::RefreshParameters(ReportName);
}

void ardsExceptionReport::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  TLReport()->DataColumns().Item("Balance").Totalled = false;
}

Date ardsExceptionReport::AsAt() const {
  const Variant value = TLReport()->Parameters().Value("DateAsAt", Variant::Null());
  if (value.IsNull() || value.IsEmpty() || value.IsMissing() || value.Text().empty()) {
    throw std::invalid_argument("Date As At: the exception report needs a date for balances.");
  }
  return value.ToDate().DateOnly();
}

const ListKey& ardsExceptionReport::Key() const {
  const ListKey& row = ListDesigner::Key();
  const Variant value = TLReport()->Parameters().Value("DateAsAt", Variant::Null());
  // Declaring the parameters needs no query.
  if (value.IsNull() || value.IsEmpty() || value.IsMissing() || value.Text().empty()) return row;
  const std::string before = Database::SQLDate(AsAt().AddDays(1));
  findings_sql_ =
      "SELECT Finding.Seq,Finding.CheckName,Finding.Exception,Finding.Side,Finding.What,"
      "Finding.Code,Finding.Amount,Finding.Balance,OtherParty.OtherPartyId,OtherParty.Name,"
      "OtherParty.XRefId,OtherParty.EmployeeId,OtherParty.LocationId FROM (" +
      FindingsSQL(before) +
      ") AS Finding INNER JOIN OtherParty ON Finding.PartyId=OtherParty.OtherPartyId";
  key_ = row;
  key_.base_sql = findings_sql_;
  return key_;
}

void ardsExceptionReport::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  if (Control* parameters = FindControl("txtParameters")) {
    std::string description = Description();
    AppendDescription(description, "Balances as at " + Format(Variant(AsAt()), date_format));
    parameters->SetText(description);
  }
  for (Control& c : Sections()["Detail"].Controls()) {
    if (c.DataField() == "Detail") c.SetCanGrow(true);
  }
  group_fields_.clear();
  for (const ChosenGrouping& g : ListGroups(Key(), TLReport()->Parameters())) {
    group_fields_.push_back(g.key_field);
  }
  // The findings are few: counted in one pass over the list's own recordset, which then starts
  // again from its first row.
  counts_.clear();
  total_ = 0;
  if (const auto& rs = DataControl().Recordset(); rs && !rs->Eof()) {
    std::vector<int> columns;
    for (const std::string& name : group_fields_) columns.push_back(rs->FieldIndex(name));
    for (; !rs->Eof(); rs->MoveNext()) {
      ++total_;
      std::string key;
      for (std::size_t level = columns.size(); level >= 1; --level) {
        key += "\t" + rs->Value(columns[level - 1]).Text();
        ++counts_[std::to_string(level) + key];
      }
    }
    rs->MoveFirst();
  }
  if (Control* label = FindControl("rfLabel")) {
    label->SetVisible(true);
    label->SetCaption("Report Total: " + FindingsText(total_));
  }
}

std::string ardsExceptionReport::GroupKeyOf(int level) const {
  std::string key;
  for (std::size_t l = group_fields_.size(); l >= static_cast<std::size_t>(level); --l) {
    const ReportField* field = Fields().Find(group_fields_[l - 1]);
    key += "\t" + (field == nullptr ? std::string() : field->Value().Text());
  }
  return std::to_string(level) + key;
}

void ardsExceptionReport::ActiveReport_DataInitialize() { Fields().Add("Detail"); }

void ardsExceptionReport::ActiveReport_FetchData(bool&) {
  const auto text = [this](const char* name) {
    const ReportField* field = Fields().Find(name);
    if (field == nullptr || field->Value().IsNull() || field->Value().IsEmpty()) {
      return std::string();
    }
    return Trim(field->Value().Text());
  };
  const ReportField* amount = Fields().Find("Amount");
  const Currency limit =
      amount == nullptr || amount->Value().IsNull() ? Currency() : amount->Value().ToCurrency();
  Fields().Item("Detail").SetValue(
      Variant(ExceptionDetail(text("CheckName"), text("Side"), text("What"), text("Code"),
                              Format(Variant(limit), "#,##0.00"))));
}

void ardsExceptionReport::OnFormat(Section& section) {
  ListDesigner::OnFormat(section);
  if (section.Type() != SectionType::GroupFooter) return;
  const int level = GroupLevelOf(section, "GroupFooter");
  if (level < 1 || level > static_cast<int>(group_fields_.size())) return;
  Control* label = FindControl("gfLabel" + std::to_string(level));
  if (label == nullptr) return;
  const auto found = counts_.find(GroupKeyOf(level));
  label->SetText(label->Text() + ": " + FindingsText(found == counts_.end() ? 0 : found->second));
}

}  // namespace trellin
