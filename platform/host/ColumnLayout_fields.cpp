// CreateFields: heading labels, detail fields and footer totals for the picked columns.

#include <algorithm>
#include <stdexcept>

#include "platform/engine/TextMeasure.h"
#include "platform/host/ColumnLayout.h"
#include "platform/host/ColumnWidths.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

// A line of text in a font of `points`, with room for the descent: 10 points take 240 twips.
float LineHeight(float points) { return points * 20.0f + 40.0f; }

// Captions need a little air inside their box before they count as fitting.
constexpr float kCaptionPadding = 30.0f;

// The least room after a column. The spacing reports ask for (15 twips) is a hairline: a
// right-aligned figure would touch the text of the column after it. Left-aligned text ends
// short of its column's edge but where it fills the column, so it needs less.
constexpr float kColumnGutter = 120.0f;
constexpr float kTextGutter = 60.0f;

// The widest word of `text`: a heading may wrap between words, never inside one.
float WidestWord(const std::string& text, const engine::FontSpec& font,
                 engine::TextMeasure& measure) {
  float widest = 0;
  for (const std::string& word : Split(text, " ")) {
    if (!word.empty()) widest = std::max(widest, measure.Width(word, font));
  }
  return widest;
}

Control& PlaceControl(Section& section, ControlClass cls, const std::string& name) {
  // Laying out twice (a designer that calls CreateFields again) moves the controls it made.
  if (Control* existing = section.Controls().Find(name)) return *existing;
  return section.Controls().Add(cls, name);
}

void SetBox(Control& control, float left, float top, float width, float height) {
  control.SetLeft(left);
  control.SetTop(top);
  control.SetWidth(width);
  control.SetHeight(height);
}

void GrowToHold(Section& section, float bottom) {
  if (section.Height() < bottom) section.SetHeight(bottom);
}

TextAlignment AlignmentOf(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::Number:
    case ColumnKind::Money:
      return TextAlignment::Right;
    case ColumnKind::Boolean:
      return TextAlignment::Center;
    default:
      return TextAlignment::Left;
  }
}

// An automatic column wants at least this much to be read comfortably.
constexpr float kComfortableAutomatic = 1500.0f;

// A portrait page too narrow for its columns turns to landscape, and the print width grows by
// what that gives; the report then fits its furniture to the new width. Columns a little too
// wide (a twentieth) stay on the upright page and are scaled down instead.
void TurnWhenTooWide(ActiveReport& designer, const std::vector<ColumnWidthRequest>& requests) {
  PageSettings& page = designer.PageSettings();
  if (page.Orientation != PageOrientation::Portrait || page.PaperHeight <= page.PaperWidth) return;
  float wanted = 0;
  for (const ColumnWidthRequest& r : requests) {
    wanted += r.width < 0   ? std::max({kComfortableAutomatic, r.minimum_width, r.least})
              : r.width > 0 ? std::max(r.width, r.least)
                            : 0.0f;
  }
  if (wanted <= designer.PrintWidth() * 1.05f) return;
  page.Orientation = PageOrientation::Landscape;
  designer.SetPrintWidth(designer.PrintWidth() + page.PaperHeight - page.PaperWidth);
}

struct Slot {
  float left = 0;
  float width = 0;  // the control's width: the slot less the spacing after it
};

}  // namespace

bool ColumnLayout::SumsInFooters(const DataColumn& column) const {
  ColumnKind kind = KindOfDataType(column.DataType);
  return kind == ColumnKind::Number || kind == ColumnKind::Money ||
         EqualsIgnoreCase(column.Format, "Round");
}

std::string ColumnLayout::OutputFormatOf(const DataColumn& column) const {
  if (!EqualsIgnoreCase(column.Format, "(auto)") && !column.Format.empty()) return column.Format;
  switch (KindOfDataType(column.DataType)) {
    case ColumnKind::Money:
      return business_layer_ ? business_layer_->CurrencyFormat(0)
                             : std::string(kDefaultCurrencyFormat);
    case ColumnKind::Date:
      return business_layer_ ? business_layer_->DateFormat() : std::string("d/mm/yyyy");
    case ColumnKind::Boolean:
      return "Yes/No";
    default:
      return {};
  }
}

void ColumnLayout::CreateFields(float top, int, int spacing, int, bool, int,
                                float heading_font_size, float body_font_size) {
  ActiveReport& designer = Designer();
  Section* heading_section = designer.Sections().FindType(SectionType::PageHeader);
  Section* detail = designer.Sections().FindType(SectionType::Detail);
  if (heading_section == nullptr || detail == nullptr) {
    throw std::logic_error(designer.DesignerName() +
                           " has no page header or detail to lay its columns out in.");
  }
  std::vector<DataColumn*> picked = PickedColumns();
  laid_out_.clear();
  if (picked.empty()) return;

  engine::TextMeasure measure;
  engine::FontSpec heading_font;
  heading_font.size = heading_font_size;
  heading_font.bold = true;
  const float spacing_asked = static_cast<float>(spacing);
  auto gap_after = [&](const DataColumn& column) {
    const bool left = AlignmentOf(KindOfDataType(column.DataType)) == TextAlignment::Left;
    return std::max(spacing_asked, left ? kTextGutter : kColumnGutter);
  };

  // A column is never narrower than the longest word of its caption (or of its short caption,
  // when it has one) and the gap after it; the last has no gap after it.
  std::vector<ColumnWidthRequest> requests;
  requests.reserve(picked.size());
  for (std::size_t i = 0; i < picked.size(); ++i) {
    const DataColumn& column = *picked[i];
    const std::string& shortest =
        column.ShortCaption.empty() ? column.Caption : column.ShortCaption;
    const float after = i + 1 < picked.size() ? gap_after(column) : 0.0f;
    const float least = WidestWord(shortest, heading_font, measure) + kCaptionPadding + after;
    requests.push_back({column.Width, column.MinimumWidth, least});
  }
  TurnWhenTooWide(designer, requests);
  const float print_width = designer.PrintWidth();
  std::vector<float> widths = ColumnWidths(requests, print_width);
  std::vector<Slot> slots;
  float left = 0;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    bool last = i + 1 == widths.size();
    // The last automatic slot takes up any rounding, so the row ends on the right margin.
    if (last && std::any_of(requests.begin(), requests.end(),
                            [](const ColumnWidthRequest& r) { return r.width < 0; })) {
      widths[i] = std::max(0.0f, print_width - left);
    }
    float width = last ? widths[i] : std::max(0.0f, widths[i] - gap_after(*picked[i]));
    slots.push_back({left, widths[i] > 0 ? width : 0.0f});
    left += widths[i];
  }

  const float heading_height = LineHeight(heading_font_size);
  const float body_height = LineHeight(body_font_size);
  const bool any_group_caption = std::any_of(
      picked.begin(), picked.end(), [](const DataColumn* c) { return !c->GroupCaption.empty(); });
  const float heading_top = any_group_caption ? top + heading_height : top;

  // Column-group captions: one label over each run of neighbouring columns with the same caption.
  for (std::size_t i = 0; any_group_caption && i < picked.size();) {
    std::size_t end = i + 1;
    while (end < picked.size() && picked[end]->GroupCaption == picked[i]->GroupCaption) ++end;
    if (!picked[i]->GroupCaption.empty()) {
      Control& label =
          PlaceControl(*heading_section, ControlClass::Label, "lblGroup" + picked[i]->Name);
      float right = slots[end - 1].left + slots[end - 1].width;
      SetBox(label, slots[i].left, top, right - slots[i].left, heading_height);
      label.SetCaption(picked[i]->GroupCaption);
      label.SetAlignment(TextAlignment::Center);
      label.Font().Size = heading_font_size;
      label.Font().Bold = true;
      label.Border().BottomStyle = 1;
    }
    i = end;
  }

  std::vector<Section*> footers;
  for (Section& section : designer.Sections()) {
    bool footer =
        section.Type() == SectionType::GroupFooter || section.Type() == SectionType::ReportFooter;
    if (footer && section.Visible()) footers.push_back(&section);
  }

  // A caption too wide for its column gives way to the short caption, where there is one, and
  // then wraps between words; the headings stand on a common foot, as many lines as the
  // tallest of them.
  std::vector<std::string> captions;
  std::vector<std::size_t> caption_lines;
  std::size_t heading_lines = 1;
  for (std::size_t i = 0; i < picked.size(); ++i) {
    const DataColumn& column = *picked[i];
    bool narrow = measure.Width(column.Caption, heading_font) + kCaptionPadding > slots[i].width;
    captions.push_back(narrow && !column.ShortCaption.empty() ? column.ShortCaption
                                                              : column.Caption);
    const std::size_t lines = std::max<std::size_t>(
        1, measure.WrapWords(captions.back(), heading_font, slots[i].width - kCaptionPadding)
               .lines.size());
    caption_lines.push_back(lines);
    if (slots[i].width > 0) heading_lines = std::max(heading_lines, lines);
  }

  for (std::size_t i = 0; i < picked.size(); ++i) {
    DataColumn& column = *picked[i];
    const Slot& slot = slots[i];
    const ColumnKind kind = KindOfDataType(column.DataType);
    const TextAlignment alignment = AlignmentOf(kind);
    const std::string format = OutputFormatOf(column);

    Control& label = PlaceControl(*heading_section, ControlClass::Label, HeadingName(column));
    const auto lines = static_cast<float>(caption_lines[i]);
    const float above = static_cast<float>(heading_lines) - lines;
    SetBox(label, slot.left, heading_top + above * heading_height, slot.width,
           lines * heading_height);
    label.SetCaption(captions[i]);
    label.SetAlignment(alignment);
    label.Font().Size = heading_font_size;
    label.Font().Bold = true;
    label.SetVisible(slot.width > 0);
    GrowToHold(*heading_section, heading_top + static_cast<float>(heading_lines) * heading_height);

    Control& field = PlaceControl(*detail, ControlClass::Field, DetailName(column));
    SetBox(field, slot.left, 0, slot.width, body_height);
    field.SetDataField(column.DataField);
    field.SetOutputFormat(format);
    field.SetAlignment(alignment);
    field.Font().Size = body_font_size;
    // Text wraps between words rather than be cut; codes and figures keep to one line.
    field.SetCanGrow(kind == ColumnKind::Text);
    field.SetVisible(slot.width > 0);
    GrowToHold(*detail, body_height);
    laid_out_.push_back({&column, &field});

    if (!column.Totalled) continue;
    for (Section* footer : footers) {
      Control& total = PlaceControl(*footer, ControlClass::Field, SummaryName(*footer, column));
      SetBox(total, slot.left, 0, slot.width, body_height);
      total.SetAlignment(alignment);
      total.Font().Size = body_font_size;
      total.Font().Bold = true;
      total.SetVisible(slot.width > 0);
      if (SumsInFooters(column)) {
        total.SetDataField(column.DataField);
        total.SetOutputFormat(format);
        total.SetSummaryFunc(SummaryFunc::Sum);
        total.SetSummaryType(footer->Type() == SectionType::ReportFooter ? SummaryType::GrandTotal
                                                                         : SummaryType::SubTotal);
        total.Border().TopStyle = 1;
      }
      GrowToHold(*footer, body_height);
    }
  }
}

}  // namespace trellin::host
