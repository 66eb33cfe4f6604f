// The job cards' and job sheets' keys, the card's and the sheet's texts, the sheet's ruled
// tables, and the documents posted to a job.

#include "reports/jobs/arJobDetail.h"

#include <algorithm>
#include <array>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/Recordset.h"
#include "reports/CardText.h"
#include "reports/jobs/JobLists.h"

namespace trellin {

namespace {

constexpr ListOrder kDetailOrders[] = {
    {"Code", "Job.JobId"},
    {"Description", "Job.Description,Job.JobId"},
    {"Status", "Job.Status,Job.JobId"},
};

// The dates choose the posted documents a card shows; they filter no job.
constexpr ListParameter kCardOptions[] = {
    {.kind = ListParameterKind::DatePair, .name = "Dated", .caption = "Documents Dated"},
    {.kind = ListParameterKind::Option,
     .name = "ShowTransactions",
     .caption = "Show Transactions",
     .phrase = "With the posted documents",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "ShowOpen",
     .caption = "Show Open",
     .phrase = "With the open batches and orders"},
    {.kind = ListParameterKind::Option,
     .name = "ShowNotes",
     .caption = "Show Notes",
     .phrase = "With the notes",
     .checked = true},
};

constexpr auto kCardParameters = [] {
  std::array<ListParameter, std::size(kJobFilters) + std::size(kCardOptions)> all{};
  std::size_t n = 0;
  for (const ListParameter& p : kJobFilters) all[n++] = p;
  for (const ListParameter& p : kCardOptions) all[n++] = p;
  return all;
}();

// A job with the descriptions of its codes, on the contact it is charged to.
constexpr std::string_view kJobCardSql =
    "SELECT Job.JobId,Job.Description,Job.Status,Job.JobCategoryId,JobCategory.Description AS "
    "CategoryName,Job.LocationId,Location.Description AS LocationName,Job.EmployeeId,"
    "Employee.Name AS EmployeeName,Job.OrderNo,Job.DateOpened,Job.DateClosed,"
    "JobContact.OtherPartyId,Job.UserDefined1,Job.UserDefined2,Job.UserDefined3,"
    "Job.UserDefined4,Job.UserDefined5,Job.UserDefined6,Job.UserDefined7,Job.UserDefined8,"
    "Job.UserDefined9,Job.UserDefined10,Job.UserDefined11,Job.UserDefined12,Job.UserDefined13,"
    "Job.UserDefined14,Job.UserDefined15,Job.UserDefined16,Job.UserDefined17,"
    "Job.UserDefined18,Job.UserDefined19,Job.UserDefined20 FROM (((Job INNER JOIN JobContact ON "
    "Job.JobId=JobContact.JobId) LEFT JOIN JobCategory ON "
    "Job.JobCategoryId=JobCategory.JobCategoryId) LEFT JOIN Location ON "
    "Job.LocationId=Location.LocationId) LEFT JOIN Employee ON Job.EmployeeId=Employee.EmployeeId";

constexpr ListKey kDetailKeys[] = {
    {
        .key = "JobDetails",
        .base_sql = kJobCardSql,
        .base_where = kJobChargedContact,
        .orders = kDetailOrders,
        .parameters = kCardParameters,
    },
    {
        .key = "JobSheets",
        .base_sql = kJobCardSql,
        .base_where = kJobChargedContact,
        .orders = kDetailOrders,
        .parameters = kJobFilters,
    },
};

constexpr const char* kSheetLayout = "arJobSheet";
// A sheet is one page: each table holds from 0 to 12 lines.
constexpr long kDefaultLines = 10;
constexpr long kMostLines = 12;
constexpr float kRowHeight = 380;
constexpr float kHeadingHeight = 300;
constexpr float kCaptionHeight = 360;

// The card's blocks: the field each fills, and the caption printed beside it.
constexpr card::Block kJobBlocks[] = {
    {"ClassLines", "lblClass", "txtClass"},   {"DateLines", "lblDates", "txtDates"},
    {"FieldLines", "lblFields", "txtFields"}, {"ContactLines", "lblContacts", "txtContacts"},
    {"OpenLines", "lblOpen", "txtOpen"},      {"NoteLines", "lblNotes", "txtNotes"},
};

constexpr const char* kSheetFields[] = {"Facts", "CustomerName", "CustomerAddress",
                                        "CustomerContact"};

// A party's phone and e-mail: the first method of each kind, in the party's order.
std::pair<std::string, std::string> PhoneAndMail(Database& database, const std::string& party) {
  std::pair<std::string, std::string> found;
  auto rs = database.Query(PartyMethodsSql(party));
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::string kind = UCase(Trim(rs->Value(0).Text()));
    const std::string detail = Trim(rs->Value(1).Text());
    if (found.first.empty() && (kind == "PHONE" || kind == "MOBILE")) found.first = detail;
    if (found.second.empty() && kind == "EMAIL") found.second = detail;
  }
  return found;
}

long LineCount(const trellin::Parameters& p, const char* name) {
  const Variant lines = p.Value(name, Variant(kDefaultLines));
  return lines.IsNumber() ? std::clamp(lines.ToLong(), 0L, kMostLines) : kDefaultLines;
}

}  // namespace

arJobDetail::arJobDetail() : ListDesigner("arJobDetail", kDetailKeys) {}

DesignerPtr CreatearJobDetail() { return std::make_shared<arJobDetail>(); }

bool arJobDetail::Sheets() const { return TLReport() && TLReport()->ReportName() == "JobSheets"; }

void arJobDetail::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  if (!Sheets()) return;
  trellin::Parameters& p = TLReport()->Parameters();
  // The sheets go to the jobs still to be worked on.
  for (const char* status : {"StatusClosed", "StatusCompleted", "StatusTemplate"}) {
    Parameter& box = p.Item(status);
    box.Value = Variant(false);
    box.DefaultValue = Variant(false);
  }
  p.AddNumber("LabourLines", Variant(kDefaultLines), false, "", Variant(kDefaultLines), 0, false,
              "Labour Lines");
  p.AddNumber("PartsLines", Variant(kDefaultLines), false, "", Variant(kDefaultLines), 0, false,
              "Parts Lines");
}

void arJobDetail::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  if (Sheets() && !FindControl("txtCustomerName")) {
    Sections().Clear();
    if (auto provider = GetLayoutProvider()) provider->Load(kSheetLayout, *this);
  }
  ListDesigner::ActiveReport_ReportStart();
  if (Sheets()) {
    const Control& customer = Field("boxCustomer");
    const float labour_top = customer.Top() + customer.Height() + 160;
    float bottom = RuleTable("Labour", "Labour", labour_top,
                             {{"Date", 1100},
                              {"Technician", 1900},
                              {"Start", 900},
                              {"Finish", 900},
                              {"Hours", 800},
                              {"Work done", 0}},
                             LineCount(p, "LabourLines"));
    bottom = RuleTable("Parts", "Parts and materials", bottom + 200,
                       {{"Item", 1600}, {"Description", 0}, {"Qty", 1000}, {"Serial No", 2600}},
                       LineCount(p, "PartsLines"));
    Section& detail = Sections()["Detail"];
    Control& notes = Field("lblNotesBox");
    notes.SetTop(bottom + 200);
    Control& box = Field("boxNotes");
    box.SetTop(notes.Top() + kCaptionHeight - 60);
    for (const char* rule : {"linNotes1", "linNotes2"}) {
      Control& line = Field(rule);
      line.SetTop(box.Top() + (rule[8] == '1' ? 1 : 2) * box.Height() / 3);
    }
    const float signatures = box.Top() + box.Height() + 500;
    for (Control& c : detail.Controls()) {
      if (c.Tag() == "signature")
        c.SetTop(signatures + (c.Class() == ControlClass::Line ? 240 : 0));
    }
    detail.SetHeight(signatures + 400);
  } else {
    show_open_ = p.Value("ShowOpen", false).ToBool();
    show_notes_ = p.Value("ShowNotes", true).ToBool();
    documents_ = std::make_shared<arJobDetailDocumentsSub>();
    documents_->DateFrom = p.Value("DatedFrom", Variant::Null());
    documents_->DateTo = p.Value("DatedTo", Variant::Null());
    Control& documents = Field("srptDocuments");
    documents.SetObject(documents_);
    documents.SetVisible(p.Value("ShowTransactions", true).ToBool());
  }
}

float arJobDetail::RuleTable(const char* name, const char* caption, float top,
                             std::initializer_list<std::pair<const char*, float>> columns,
                             long rows) {
  Section& detail = Sections()["Detail"];
  const float width = PrintWidth();
  const std::string prefix(name);
  Control& title = detail.Controls().Add(ControlClass::Label, "lbl" + prefix);
  title.SetCaption(caption);
  title.SetLeft(0);
  title.SetTop(top);
  title.SetWidth(width);
  title.SetHeight(300);
  title.Font().Size = 11;
  title.Font().Bold = true;
  const float heading_top = top + kCaptionHeight;
  const float bottom = heading_top + kHeadingHeight + static_cast<float>(rows) * kRowHeight;
  float fixed = 0;
  for (const auto& column : columns) fixed += column.second;
  float left = 0;
  int n = 0;
  for (const auto& [heading, given] : columns) {
    const float column_width = given > 0 ? given : width - fixed;
    const std::string id = prefix + std::to_string(++n);
    Control& label = detail.Controls().Add(ControlClass::Label, "lbl" + id);
    label.SetCaption(heading);
    label.SetLeft(left + 60);
    label.SetTop(heading_top + 40);
    label.SetWidth(column_width - 120);
    label.SetHeight(220);
    label.Font().Size = 8;
    label.Font().Bold = true;
    if (left > 0) {
      Control& rule = detail.Controls().Add(ControlClass::Line, "lin" + id);
      rule.SetLeft(left);
      rule.SetTop(heading_top);
      rule.SetWidth(0);
      rule.SetHeight(bottom - heading_top);
    }
    left += column_width;
  }
  Control& box = detail.Controls().Add(ControlClass::Shape, "box" + prefix);
  box.SetLeft(0);
  box.SetTop(heading_top);
  box.SetWidth(width);
  box.SetHeight(bottom - heading_top);
  for (long r = 0; r < rows; ++r) {
    Control& rule =
        detail.Controls().Add(ControlClass::Line, "lin" + prefix + "Row" + std::to_string(r + 1));
    rule.SetLeft(0);
    rule.SetTop(heading_top + kHeadingHeight + static_cast<float>(r) * kRowHeight);
    rule.SetWidth(width);
    rule.SetHeight(0);
  }
  return bottom;
}

void arJobDetail::ActiveReport_DataInitialize() {
  for (const card::Block& block : kJobBlocks) Fields().Add(block.field);
  for (const char* name : kSheetFields) Fields().Add(name);
  Fields().Add("Identity");
}

void arJobDetail::ActiveReport_FetchData(bool&) {
  const std::string job = card::Text(Fields(), "JobId");
  if (job.empty()) return;
  if (Sheets()) {
    FillSheet(job);
  } else {
    FillCard(job);
  }
}

void arJobDetail::FillSheet(const std::string& job) {
  trellin::Fields& fields = Fields();
  auto text = [&fields](const char* name) { return card::Text(fields, name); };
  fields.Item("Facts").SetValue(Variant(card::Joined(
      {card::Part("Category", card::Named(text("JobCategoryId"), text("CategoryName"))),
       card::Part("Order No", text("OrderNo")),
       card::Part("Opened", card::DateText(card::Value(fields, "DateOpened"))),
       card::Part("Employee", card::Named(text("EmployeeId"), text("EmployeeName")))})));
  (void)job;
  Database& database = *TrellinReportGlobals::RequireDatabase();
  const std::string party = text("OtherPartyId");
  std::string name;
  auto rs = database.Query("SELECT Name FROM OtherParty WHERE OtherPartyId=" +
                           Database::SQLString(party));
  if (!rs->Eof()) name = Trim(rs->Value(0).Text());
  fields.Item("CustomerName").SetValue(Variant(card::Named(party, name)));
  std::string address;
  rs = database.Query(PartyAddressesSql(party));
  if (!rs->Eof()) {
    for (int n = 0; n < 5; ++n) {
      const std::string part = Trim(rs->Value(n).Text());
      if (!part.empty()) address += (address.empty() ? "" : ", ") + part;
    }
  }
  fields.Item("CustomerAddress").SetValue(Variant(address));
  const auto [phone, mail] = PhoneAndMail(database, party);
  fields.Item("CustomerContact")
      .SetValue(Variant(card::Joined({card::Part("Phone", phone), card::Part("E-mail", mail)})));
}

void arJobDetail::FillCard(const std::string& job) {
  trellin::Fields& fields = Fields();
  auto text = [&fields](const char* name) { return card::Text(fields, name); };
  Database& database = *TrellinReportGlobals::RequireDatabase();
  fields.Item("Identity").SetValue(Variant(card::Part("Status", text("Status"))));

  std::string lines;
  card::AddLine(
      lines, card::Joined(
                 {card::Part("Category", card::Named(text("JobCategoryId"), text("CategoryName"))),
                  card::Part("Location", card::Named(text("LocationId"), text("LocationName")))}));
  card::AddLine(
      lines,
      card::Joined({card::Part("Employee", card::Named(text("EmployeeId"), text("EmployeeName"))),
                    card::Part("Order No", text("OrderNo"))}));
  fields.Item("ClassLines").SetValue(Variant(lines));

  fields.Item("DateLines")
      .SetValue(Variant(
          card::Joined({card::Part("Opened", card::DateText(card::Value(fields, "DateOpened"))),
                        card::Part("Closed", card::DateText(card::Value(fields, "DateClosed")))})));

  lines.clear();
  const Options& options = TrellinReportGlobals::RequireApplication().Options();
  for (int n = 1; n <= 20; ++n) {
    const UserDefinedField field = options.UserDefinedFields(UserDefinedKind::Job, n);
    if (field.Name.empty()) continue;
    card::AddLine(lines, card::Part(field.Name, text(("UserDefined" + std::to_string(n)).c_str())));
  }
  fields.Item("FieldLines").SetValue(Variant(lines));

  lines.clear();
  auto rs = database.Query(JobContactsSql(job));
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::string party = Trim(rs->Value(0).Text());
    const auto [phone, mail] = PhoneAndMail(database, party);
    card::AddLine(lines, card::Joined({card::Named(party, Trim(rs->Value(1).Text())),
                                       rs->Value(2).ToBool() ? "(charged)" : "",
                                       card::Part("Phone", phone), card::Part("E-mail", mail)}));
  }
  fields.Item("ContactLines").SetValue(Variant(lines));

  lines.clear();
  if (show_open_) {
    rs = database.Query(JobOpenDocumentsSql(job));
    for (; !rs->Eof(); rs->MoveNext()) {
      card::AddLine(lines,
                    "Batch " + Trim(rs->Value(0).Text()) + ": " +
                        card::Joined({Trim(rs->Value(1).Text()), Trim(rs->Value(2).Text()),
                                      card::DateText(rs->Value(3)), Trim(rs->Value(4).Text()),
                                      card::MoneyText(rs->Value(5))}));
    }
    rs = database.Query(JobOutstandingOrdersSql(job));
    for (; !rs->Eof(); rs->MoveNext()) {
      card::AddLine(lines,
                    "Order " + rs->Value(0).Text() + ": " +
                        card::Joined({Trim(rs->Value(1).Text()), card::DateText(rs->Value(2)),
                                      Trim(rs->Value(3).Text()),
                                      card::MoneyText(rs->Value(5)) + " outstanding"}));
    }
    if (lines.empty()) lines = "Nothing open";
  }
  fields.Item("OpenLines").SetValue(Variant(lines));

  lines.clear();
  if (show_notes_) lines = card::NoteLines(database, JobNotesSql(job));
  fields.Item("NoteLines").SetValue(Variant(lines));
}

void arJobDetail::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail && documents_) {
    documents_->JobId = card::Text(Fields(), "JobId");
  }
  ListDesigner::OnFormat(section);
}

void arJobDetail::Detail_Format() {
  if (Sheets()) return;
  // The posted documents stand before the open work.
  card::StackBlocks(*this, kJobBlocks, "OpenLines", "srptDocuments");
}

void arJobDetailDocumentsSub::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

std::string arJobDetailDocumentsSub::SQL() const {
  std::string where = "Transactions.JobId=" + Database::SQLString(JobId);
  std::string ignored;
  AppendDateRangeCondition(where, "Transactions.Date", DateFrom, DateTo, "", ignored);
  // Receivables are kept with the company's sign; a customer's invoice reads as a charge.
  return "SELECT Transactions.Date,TransactionType.Description AS TypeName,"
         "Transactions.Reference,Transactions.OtherPartyId,"
         "IIf(Transactions.Type>=30,-Transactions.Value,Transactions.Value) AS [Value] FROM "
         "Transactions LEFT JOIN TransactionType ON "
         "Transactions.TransactionTypeId=TransactionType.TransactionTypeId WHERE " +
         where + " ORDER BY Transactions.Date,Transactions.TransactionId";
}

// A job with no documents in the dates says so.
void arJobDetailDocumentsSub::ActiveReport_ReportStart() {
  DataControl().SetSource(SQL());
  const auto& rs = DataControl().Recordset();
  const bool empty = !rs || rs->Eof();
  for (const char* caption : {"lblDate", "lblType", "lblReference", "lblParty", "lblValue"}) {
    Field(caption).SetVisible(!empty);
  }
  Field("lblNoDocuments").SetVisible(empty);
  Sections()["Detail"].SetVisible(!empty);
}

}  // namespace trellin
