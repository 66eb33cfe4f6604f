// The label keys, the sheets they print on, and the lines of a label.

#include "reports/admin/arLabels.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/admin/PartyParameters.h"

namespace trellin {

namespace {

// clang-format off
constexpr LabelSheet kSheets[] = {
    {"L7160", "A4", 11906, 16838, 3, 7, 3600, 2160, 859, 411, 142},
    {"L7163", "A4", 11906, 16838, 2, 7, 5618, 2160, 859, 264, 142},
    {"5160", "Letter", 12240, 15840, 3, 10, 3780, 1440, 720, 270, 180},
};
// clang-format on

// The text stands clear of the label's edge by this much; a line takes kLinePitch.
constexpr float kPadX = 150;
constexpr float kPadY = 100;
constexpr float kLinePitch = 220;
constexpr int kLineControls = 8;

#define PARTY_LABEL_SELECT                                                     \
  "SELECT OtherParty.OtherPartyId,OtherParty.Name,OtherPartyAddress.Address,"  \
  "OtherPartyAddress.City,OtherPartyAddress.State,OtherPartyAddress.Postcode," \
  "OtherPartyAddress.Country FROM OtherParty INNER JOIN OtherPartyAddress ON " \
  "OtherParty.OtherPartyId=OtherPartyAddress.OtherPartyId"

constexpr ListOrder kPartyLabelOrders[] = {
    {"Code", "OtherParty.OtherPartyId,OtherPartyAddress.AddressId"},
    {"Name", "OtherParty.Name,OtherParty.OtherPartyId,OtherPartyAddress.AddressId"},
    {"Postcode", "OtherPartyAddress.Postcode,OtherParty.OtherPartyId,OtherPartyAddress.AddressId"},
};
constexpr ListOrder kContactLabelOrders[] = {
    {"Code", "Contact.OtherPartyId,Contact.LastName,Contact.FirstName,Contact.ContactId"},
    {"Name", "Contact.LastName,Contact.FirstName,Contact.ContactId"},
    {"Postcode", "OtherPartyAddress.Postcode,Contact.LastName,Contact.FirstName,Contact.ContactId"},
};

// The side's party set, with Addresses starting at "Postal".
constexpr auto kCustomerLabelParameters = CustomerPartyParameters("Postal");
constexpr auto kSupplierLabelParameters = SupplierPartyParameters("Postal");
constexpr auto kOtherPartyLabelParameters = OtherPartyParameters("Postal");
constexpr ListParameter kContactLabelParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "Contact.ContactId",
     .index = 7,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Contact.OtherPartyId", .index = 24},
};

// clang-format off
constexpr ListKey kLabelKeys[] = {
    {.key = "LabelsAR", .base_sql = PARTY_LABEL_SELECT, .base_where = "OtherParty.IsCustomer=True",
     .orders = kPartyLabelOrders, .parameters = kCustomerLabelParameters},
    {.key = "LabelsAP", .base_sql = PARTY_LABEL_SELECT, .base_where = "OtherParty.IsSupplier=True",
     .orders = kPartyLabelOrders, .parameters = kSupplierLabelParameters},
    {.key = "OtherPartyLabels", .base_sql = PARTY_LABEL_SELECT, .orders = kPartyLabelOrders,
     .parameters = kOtherPartyLabelParameters},
    {.key = "ContactLabels",
     .base_sql = "SELECT Contact.ContactId,Contact.FirstName,Contact.LastName,OtherParty.Name AS "
                 "PartyName,OtherPartyAddress.Address,OtherPartyAddress.City,OtherPartyAddress.State,"
                 "OtherPartyAddress.Postcode,OtherPartyAddress.Country FROM (Contact LEFT JOIN "
                 "OtherParty ON Contact.OtherPartyId=OtherParty.OtherPartyId) LEFT JOIN "
                 "OtherPartyAddress ON (Contact.OtherPartyId=OtherPartyAddress.OtherPartyId AND "
                 "OtherPartyAddress.AddressId='Postal')",
     .orders = kContactLabelOrders, .parameters = kContactLabelParameters},
};
// clang-format on
#undef PARTY_LABEL_SELECT

std::string Text(const Recordset& rs, std::string_view field) {
  return rs.Value(std::string(field)).Text();
}

// The lines of a text, with blank ones left out.
std::vector<std::string> NonBlankLines(const std::string& text) {
  std::vector<std::string> out;
  std::string line;
  auto end_line = [&] {
    std::string trimmed = Trim(line);
    if (!trimmed.empty()) out.push_back(std::move(trimmed));
    line.clear();
  };
  for (char ch : text) {
    if (ch == '\r' || ch == '\n') {
      end_line();
    } else {
      line += ch;
    }
  }
  end_line();
  return out;
}

}  // namespace

std::span<const LabelSheet> LabelSheets() { return kSheets; }

const LabelSheet* FindLabelSheet(std::string_view name) {
  for (const LabelSheet& sheet : kSheets) {
    if (EqualsIgnoreCase(sheet.name, name)) return &sheet;
  }
  return nullptr;
}

std::vector<std::string> LabelLines(std::vector<std::string> heading,
                                    std::vector<std::string> street, std::vector<std::string> tail,
                                    int room) {
  const auto fixed = heading.size() + tail.size();
  const std::size_t limit = room > 0 ? static_cast<std::size_t>(room) : 0;
  if (fixed >= limit) {
    street.clear();
  } else if (fixed + street.size() > limit) {
    street.resize(limit - fixed);
  }
  std::vector<std::string> lines = std::move(heading);
  lines.insert(lines.end(), street.begin(), street.end());
  lines.insert(lines.end(), tail.begin(), tail.end());
  if (lines.size() > limit) lines.resize(limit);
  return lines;
}

arLabels::arLabels() : ListDesigner("arLabels", kLabelKeys) {}

DesignerPtr CreatearLabels() { return std::make_shared<arLabels>(); }

int arLabels::Room(const LabelSheet& sheet) {
  const int room = static_cast<int>(std::floor((sheet.height - 2 * kPadY) / kLinePitch));
  return std::clamp(room, 1, kLineControls);
}

void arLabels::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  trellin::Parameters& p = TLReport()->Parameters();
  std::string sheets;
  for (const LabelSheet& sheet : kSheets)
    sheets += (sheets.empty() ? "" : ",") + std::string(sheet.name);
  const std::string first(kSheets[0].name);
  p.AddList("Sheet", Variant(first), false, "", Variant(first), sheets, false, "Sheet");
  p.AddNumber("StartPosition", Variant(1), false, "", Variant(1), 1, false, "Start Position");
  p.AddNumber("Copies", Variant(1), false, "", Variant(1), 1, false, "Copies");
  p.AddBoolean("OutlineCells", false, false, "", false, false, "Outline Cells");
}

std::string arLabels::ExtraCondition() {
  if (contacts_) return {};
  std::string ignored;
  std::string condition;
  if (TLReport()->Parameters().Value("Addresses", Variant()).Text().empty()) {
    return "OtherPartyAddress.AddressId='Postal'";
  }
  AppendListParameterCondition(condition, "OtherPartyAddress.AddressId", "Addresses",
                               TLReport()->Parameters(), ignored, kRangeText);
  return condition;
}

void arLabels::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  contacts_ = EqualsIgnoreCase(TLReport()->ReportName(), "ContactLabels");
  const std::string sheet_name = p.Value("Sheet", Variant(std::string(kSheets[0].name))).Text();
  const LabelSheet* sheet = FindLabelSheet(sheet_name);
  if (sheet == nullptr) throw std::invalid_argument("There is no label sheet " + sheet_name + ".");
  const int cells = sheet->across * sheet->down;
  const long start = p.Value("StartPosition", Variant(1)).ToLong();
  if (start < 1 || start > cells) {
    throw std::invalid_argument("Start Position must be from 1 to " + std::to_string(cells) +
                                " on an " + std::string(sheet->name) + " sheet.");
  }
  const long copies = p.Value("Copies", Variant(1)).ToLong();
  if (copies < 1 || copies > 100) throw std::invalid_argument("Copies must be from 1 to 100.");
  copies_ = static_cast<int>(copies);

  // The sheet's geometry: its paper, the margins that put the first cell in place, and the cells
  // as the detail's columns. A sheet is all labels: nothing else prints on it.
  auto& page = PageSettings();
  page.PaperWidth = sheet->paper_width;
  page.PaperHeight = sheet->paper_height;
  page.Orientation = PageOrientation::Portrait;
  const float width = static_cast<float>(sheet->across) * sheet->width +
                      static_cast<float>(sheet->across - 1) * sheet->gap;
  SetPrintWidth(width);
  page.LeftMargin = sheet->left;
  page.RightMargin = std::max(0.0f, sheet->paper_width - sheet->left - width);
  page.TopMargin = sheet->top;
  page.BottomMargin = std::max(
      0.0f, sheet->paper_height - sheet->top - static_cast<float>(sheet->down) * sheet->height);
  Section& detail = Sections()["Detail"];
  detail.SetHeight(sheet->height);
  detail.SetColumns(DetailColumns{.Count = sheet->across,
                                  .Direction = ColumnDirection::AcrossDown,
                                  .Spacing = sheet->gap,
                                  .Skip = static_cast<int>(start - 1)});
  Control& cell = Field("shpCell");
  cell.SetLeft(0);
  cell.SetTop(0);
  cell.SetWidth(sheet->width);
  cell.SetHeight(sheet->height);
  cell.SetVisible(p.Value("OutlineCells", false).ToBool());
  const int room = Room(*sheet);
  for (int i = 0; i < kLineControls; ++i) {
    Control& line = Field("txtLine" + std::to_string(i + 1));
    line.SetLeft(kPadX);
    line.SetWidth(sheet->width - 2 * kPadX);
    line.SetTop(kPadY + kLinePitch * static_cast<float>(i));
    line.SetHeight(kLinePitch);
    line.SetVisible(i < room);
  }
  BuildSQL();
  ReadLabels(*sheet);
}

void arLabels::ReadLabels(const LabelSheet& sheet) {
  const std::string home = TrellinReportGlobals::RequireApplication().Options().Country();
  const int room = Room(sheet);
  labels_.clear();
  next_ = 0;
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(SQL());
  for (; !rs->Eof(); rs->MoveNext()) {
    std::vector<std::string> heading;
    if (contacts_) {
      std::string name = Trim(Text(*rs, "FirstName") + " " + Text(*rs, "LastName"));
      heading.push_back(name);
      if (std::string party = Text(*rs, "PartyName"); !party.empty()) heading.push_back(party);
    } else {
      heading.push_back(Text(*rs, "Name"));
    }
    std::string place = Text(*rs, "City");
    for (const char* part : {"State", "Postcode"}) {
      const std::string text = Text(*rs, part);
      if (!text.empty()) place += (place.empty() ? "" : " ") + text;
    }
    std::vector<std::string> tail;
    if (!place.empty()) tail.push_back(place);
    const std::string country = Text(*rs, "Country");
    if (!country.empty() && !EqualsIgnoreCase(country, home)) tail.push_back(country);
    labels_.push_back(
        LabelLines(std::move(heading), NonBlankLines(Text(*rs, "Address")), std::move(tail), room));
  }
}

void arLabels::ActiveReport_DataInitialize() {
  for (int i = 1; i <= kLineControls; ++i) Fields().Add("Line" + std::to_string(i));
}

void arLabels::ActiveReport_FetchData(bool& eof) {
  const std::size_t total = labels_.size() * static_cast<std::size_t>(copies_);
  if (next_ >= total) {
    eof = true;
    return;
  }
  const std::vector<std::string>& lines = labels_[next_ / static_cast<std::size_t>(copies_)];
  for (std::size_t i = 0; i < kLineControls; ++i) {
    Fields()
        .Item("Line" + std::to_string(i + 1))
        .SetValue(Variant(i < lines.size() ? lines[i] : std::string()));
  }
  ++next_;
}

}  // namespace trellin
