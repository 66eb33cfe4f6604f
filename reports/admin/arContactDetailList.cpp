// The key of the contact cards, and the notes under each.

#include "reports/admin/arContactDetailList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"

namespace trellin {

namespace {

constexpr ListOrder kCardOrders[] = {
    {"Name", "Contact.LastName,Contact.FirstName,Contact.ContactId"},
    {"Party", "Contact.OtherPartyId,Contact.LastName,Contact.FirstName,Contact.ContactId"},
};

// The dates bound the notes, not which contacts print.
constexpr ListParameter kCardParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "Contact.ContactId",
     .index = 7,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Contact.OtherPartyId", .index = 24},
    {.kind = ListParameterKind::DatePair, .name = "Dated", .caption = "Notes dated"},
    {.kind = ListParameterKind::Option,
     .name = "ShowNotes",
     .caption = "Show Notes",
     .phrase = "With the notes",
     .checked = true},
};

constexpr ListKey kCardKeys[] = {{
    .key = "ContactDetailsList",
    .base_sql =
        "SELECT Contact.ContactId,Contact.LastName & IIf(Contact.FirstName Is Null,'',', ' & "
        "Contact.FirstName) AS ContactName,Contact.Position,Contact.Phone,Contact.Mobile,"
        "Contact.Email,Contact.OtherPartyId,OtherParty.Name AS PartyName,OtherPartyAddress.Address,"
        "OtherPartyAddress.City,OtherPartyAddress.State,OtherPartyAddress.Postcode FROM (Contact "
        "LEFT JOIN OtherParty ON Contact.OtherPartyId=OtherParty.OtherPartyId) LEFT JOIN "
        "OtherPartyAddress ON (Contact.OtherPartyId=OtherPartyAddress.OtherPartyId AND "
        "OtherPartyAddress.AddressId='Postal')",
    .orders = kCardOrders,
    .parameters = kCardParameters,
}};

std::string FieldText(const trellin::Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(name);
  return field == nullptr ? std::string() : field->Value().Text();
}

}  // namespace

arContactDetailList::arContactDetailList() : ListDesigner("arContactDetailList", kCardKeys) {}

DesignerPtr CreatearContactDetailList() { return std::make_shared<arContactDetailList>(); }

void arContactDetailList::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  const trellin::Parameters& p = TLReport()->Parameters();
  notes_ = std::make_shared<arContactDetailNotesSub>();
  notes_->DateFrom = p.Value("DatedFrom", Variant::Null());
  notes_->DateTo = p.Value("DatedTo", Variant::Null());
  Control& notes = Field("srptNotes");
  notes.SetObject(notes_);
  if (!p.Value("ShowNotes", true).ToBool()) {
    notes.SetVisible(false);
    Sections()["Detail"].SetHeight(notes.Top());
  }
}

void arContactDetailList::ActiveReport_DataInitialize() {
  Fields().Add("PartyLine");
  Fields().Add("PartyAddress");
  Fields().Add("PartyPhone");
}

// The party's line is its code and name; its address the postal lines, then the place.
void arContactDetailList::ActiveReport_FetchData(bool&) {
  trellin::Fields& fields = Fields();
  const std::string party = FieldText(fields, "OtherPartyId");
  const std::string name = FieldText(fields, "PartyName");
  fields.Item("PartyLine").SetValue(Variant(party.empty() ? "" : party + "  " + name));
  std::string address = FieldText(fields, "Address");
  std::string place = FieldText(fields, "City");
  for (const char* part : {"State", "Postcode"}) {
    const std::string text = FieldText(fields, part);
    if (!text.empty()) place += (place.empty() ? "" : " ") + text;
  }
  if (!place.empty()) address += (address.empty() ? "" : "\r\n") + place;
  fields.Item("PartyAddress").SetValue(Variant(address));
  std::string phone;
  if (!party.empty()) {
    Database& database = *TrellinReportGlobals::RequireDatabase();
    auto rs =
        database.Query("SELECT TOP 1 Detail FROM OtherPartyContactMethod WHERE OtherPartyId=" +
                       database.SQLString(party) + " AND Kind='Phone' ORDER BY Sequence");
    if (!rs->Eof()) phone = rs->Value(0).Text();
  }
  fields.Item("PartyPhone").SetValue(Variant(phone));
}

void arContactDetailList::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) {
    const ReportField* id = Fields().Find("ContactId");
    if (id != nullptr && notes_) notes_->ContactId = id->Value().ToLong();
  }
  ListDesigner::OnFormat(section);
}

void arContactDetailNotesSub::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

std::string arContactDetailNotesSub::SQL() const {
  std::string where = "OtherPartyLog.ContactId=" + std::to_string(ContactId);
  std::string ignored;
  AppendDateRangeCondition(where, "OtherPartyLog.Date", DateFrom, DateTo, "", ignored);
  return "SELECT OtherPartyLog.Date,OtherPartyLog.Subject,OtherPartyLog.Notes,"
         "OtherPartyLog.Document,Employee.Name AS EmployeeName FROM OtherPartyLog LEFT JOIN "
         "Employee ON OtherPartyLog.EmployeeId=Employee.EmployeeId WHERE " +
         where + " ORDER BY OtherPartyLog.Date DESC";
}

// A contact with no notes in the dates says so.
void arContactDetailNotesSub::ActiveReport_ReportStart() {
  DataControl().SetSource(SQL());
  const auto& rs = DataControl().Recordset();
  const bool empty = !rs || rs->Eof();
  Field("lblNoNotes").SetVisible(empty);
  Sections()["Detail"].SetVisible(!empty);
}

}  // namespace trellin
