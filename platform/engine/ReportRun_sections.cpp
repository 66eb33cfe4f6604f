#include <algorithm>

#include "platform/engine/PageBreaker.h"
#include "platform/engine/ReportRun.h"
#include "platform/runtime/Format.h"

namespace trellin::engine {
namespace {

constexpr int kMaxNesting = 16;

// Passes a sub-report's bands to the parent's place on the page, moved right to the sub-report
// control, and measures how far they took the page position.
class ChildSink : public BandSink {
 public:
  ChildSink(BandSink& parent, float dx) : parent_(parent), dx_(dx) {}

  void Place(Band band) override {
    advance_ += band.height;
    for (auto& item : band.items) {
      std::visit(
          [this](auto& it) {
            using T = std::decay_t<decltype(it)>;
            if constexpr (std::is_same_v<T, LineItem>) {
              it.x1 += dx_;
              it.x2 += dx_;
            } else {
              it.left += dx_;
            }
          },
          item);
    }
    for (auto& row : band.rows) {
      // Each sub-report the rows pass out through is one level of nesting.
      ++row.depth;
      for (auto& cell : row.cells) cell.left += dx_;
      for (auto& span : row.label_spans) span.first += dx_;
    }
    parent_.Place(std::move(band));
  }
  void StartSection(bool new_page) override { parent_.StartSection(new_page); }
  [[nodiscard]] int CurrentPage() const override { return parent_.CurrentPage(); }
  [[nodiscard]] float Room() override { return parent_.Room(); }
  [[nodiscard]] float Advance() const { return advance_; }

 private:
  BandSink& parent_;
  float dx_;
  float advance_ = 0;
};

bool IsExpression(const std::string& data_field) {
  return !data_field.empty() && data_field.front() == '=';
}

}  // namespace

void ReportRun::FillBoundControls(Section& section) {
  Fields& fields = report_.Fields();
  summaries_.Publish(section);
  for (Control& c : section.Controls()) {
    const std::string& df = c.DataField();
    if (df.empty() || IsExpression(df) || c.SummaryType() != SummaryType::None) continue;
    BoundControl& b = bound_[&c];
    if (b.data_field != df) {
      b.data_field = df;
      b.field = fields.IndexOf(df);
    }
    if (b.field < 0) b.field = fields.IndexOf(df);
    if (b.field < 0) continue;
    try {
      c.SetDataValue(fields.Item(static_cast<std::size_t>(b.field)).Value());
    } catch (const std::exception& e) {
      // A value that cannot print (an object in a field) prints as nothing and is reported.
      c.SetText(std::string());
      ReportEventError(c.Name(), e.what());
    }
  }
}

void ReportRun::FormatOnly(Section& section) {
  FillBoundControls(section);
  Raise(&section, "Format", [&] { report_.OnFormat(section); });
  Raise(&section, "BeforePrint", [&] { report_.OnBeforePrint(section); });
  Raise(&section, "AfterPrint", [&] { report_.OnAfterPrint(section); });
  (void)report_.TOC().TakePending();
}

void ReportRun::PrintSection(Section& section, RowKind kind, int level) {
  if (&section != detail_) FlushColumns();
  NewPageMode mode = section.NewPage();
  out_->StartSection(section.Visible() &&
                     (mode == NewPageMode::Before || mode == NewPageMode::BeforeAfter));
  FillBoundControls(section);
  Raise(&section, "Format", [&] { report_.OnFormat(section); });
  Raise(&section, "BeforePrint", [&] { report_.OnBeforePrint(section); });
  std::vector<std::string> toc = report_.TOC().TakePending();
  if (section.Visible()) {
    LayOutAndPlace(section, kind, level, std::move(toc));
  } else if (!toc.empty()) {
    Band marker;
    marker.toc = std::move(toc);
    out_->Place(std::move(marker));
  }
  Raise(&section, "AfterPrint", [&] { report_.OnAfterPrint(section); });
}

void ReportRun::EvaluateExpressions(
    Section& section, std::unordered_map<const Control*, std::function<std::string(int)>>& late) {
  for (Control& c : section.Controls()) {
    if (!IsExpression(c.DataField()) || !c.Visible()) continue;
    try {
      auto& compiled = env_.expressions[c.DataField()];
      if (!compiled) compiled = Expression::Compile(c.DataField());
      const Fields* fields = &report_.Fields();
      c.SetDataValue(compiled->Evaluate(ExpressionScope{fields, out_->CurrentPage()}));
      if (compiled->UsesPage()) {
        // The page is known only when the band lands; the fields are read now, while they still
        // hold this section's row.
        std::shared_ptr<const Expression> expr = compiled;
        std::string mask = c.OutputFormat();
        late[&c] = [expr, fields, mask](int page) {
          try {
            Variant v = expr->Evaluate(ExpressionScope{fields, page});
            return mask.empty() ? v.Text() : Format(v, mask);
          } catch (const std::exception&) {
            return std::string();
          }
        };
      }
    } catch (const std::exception& e) {
      c.SetText(std::string());
      ReportEventError(c.Name(), e.what());
    }
  }
}

void ReportRun::LayOutAndPlace(Section& section, RowKind kind, int level,
                               std::vector<std::string> toc) {
  std::unordered_map<const Control*, std::function<std::string(int)>> late;
  EvaluateExpressions(section, late);
  LateTextFor late_for;
  if (!late.empty()) {
    late_for = [&late](const Control& c) {
      auto it = late.find(&c);
      return it == late.end() ? std::function<std::string(int)>() : it->second;
    };
  }
  Arrangement arr = Arrange(section, env_.measure);
  // A detail in columns is shaded over its own cell.
  const float width = cell_width_ > 0 ? cell_width_ : report_.PrintWidth();
  const bool before =
      section.NewPage() == NewPageMode::Before || section.NewPage() == NewPageMode::BeforeAfter;
  const bool after =
      section.NewPage() == NewPageMode::After || section.NewPage() == NewPageMode::BeforeAfter;

  std::vector<const ArrangedControl*> children;
  for (const auto& a : arr.controls) {
    if (a.control->Class() == ControlClass::Subreport) children.push_back(&a);
  }
  if (children.empty()) {
    Band band;
    band.height = arr.height;
    EmitItems(section, arr, 0, 1e30f, x0_, true, width, late_for, band);
    band.rows.push_back(MakeDataRow(section, arr, kind, level, x0_));
    band.toc = std::move(toc);
    band.break_before = before;
    band.break_after = after;
    band.can_split = section.CanGrow();
    // A group's heading goes over to the next page with its first line; one repeated on every
    // page is printed there anyway.
    band.keep_with_next = kind == RowKind::GroupHeader && !section.RepeatOnPage();
    PlaceWithPageBreaks(std::move(band), arr);
    return;
  }

  // A section with sub-reports prints in pieces: what stands above and beside each child, the
  // child's own bands (which may run over pages), and what stands below. A child with no output
  // takes no room.
  std::sort(children.begin(), children.end(),
            [](const ArrangedControl* a, const ArrangedControl* b) { return a->top < b->top; });
  float cursor = 0;
  bool first_piece = true;
  for (const ArrangedControl* child : children) {
    float child_top = std::max(child->top, cursor);
    float child_bottom = child_top + child->height;
    Band head;
    head.height = child_top - cursor;
    float reach = head.height;
    for (const auto& a : arr.controls) {
      if (a.top >= cursor - 0.5f && a.top < child_bottom - 0.5f &&
          a.control->Class() != ControlClass::Subreport) {
        reach = std::max(reach, a.top + a.height - cursor);
      }
    }
    head.ink_height = reach;
    EmitItems(section, arr, cursor, child_bottom, x0_, true, width, late_for, head);
    // What stands above a child (a party's line over its transactions) stays with its first line.
    head.keep_with_next = true;
    if (first_piece) {
      head.rows.push_back(MakeDataRow(section, arr, kind, level, x0_));
      head.toc = std::move(toc);
      head.break_before = before;
      first_piece = false;
    }
    int page_before = out_->CurrentPage();
    if (!head.Empty() || !head.toc.empty() || head.break_before) {
      PlaceWithPageBreaks(std::move(head), arr, cursor);
    }
    float advance = RunChild(*child);
    // Controls beside a short child still need their room before the next piece.
    if (out_->CurrentPage() == page_before && reach > (child_top - cursor) + advance) {
      Band spacer;
      spacer.height = reach - (child_top - cursor) - advance;
      out_->Place(std::move(spacer));
    }
    cursor = child_bottom;
  }
  Band tail;
  tail.height = std::max(0.0f, arr.height - cursor);
  EmitItems(section, arr, cursor, 1e30f, x0_, true, width, late_for, tail);
  tail.break_after = after;
  tail.can_split = section.CanGrow();
  if (!tail.Empty() || tail.break_after) PlaceWithPageBreaks(std::move(tail), arr, cursor);
}

// `offset` is where the band starts in the section: a piece of one that holds sub-reports
// breaks at the page breaks that stand in it, and starts a page at one on its top edge.
void ReportRun::PlaceWithPageBreaks(Band band, const Arrangement& arrangement, float offset) {
  std::vector<float> cuts;
  bool at_top = false;
  for (const auto& a : arrangement.controls) {
    if (a.control->Class() != ControlClass::PageBreak) continue;
    const float at = a.top - offset;
    if (at > 0) {
      cuts.push_back(at);
    } else if (offset <= 0 || at > -0.5f) {
      // A page break at the very top of a section starts the section on a new page.
      at_top = true;
    }
  }
  std::sort(cuts.begin(), cuts.end());
  float consumed = 0;
  const bool keep = band.keep_with_next;
  for (float cut : cuts) {
    if (cut <= consumed || cut >= consumed + band.height) continue;
    auto [upper, lower] = SplitBand(std::move(band), cut - consumed);
    out_->Place(std::move(upper));
    lower.break_before = true;
    lower.keep_with_next = keep;
    band = std::move(lower);
    consumed = cut;
  }
  if (at_top) band.break_before = true;
  out_->Place(std::move(band));
}

float ReportRun::RunChild(const ArrangedControl& subreport) {
  std::shared_ptr<ActiveReport> child = subreport.control->object();
  if (!child) return 0;
  if (env_.depth >= kMaxNesting) {
    ReportEventError(subreport.control->Name(),
                     "sub-reports nest deeper than " + std::to_string(kMaxNesting));
    return 0;
  }
  child->Initialize();
  if (std::find(env_.children.begin(), env_.children.end(), child) == env_.children.end()) {
    env_.children.push_back(child);
  }
  ChildSink sink(*out_, x0_ + subreport.control->Left());
  ReportRun run(*child, env_, this, 0);
  ++env_.depth;
  try {
    run.Run(sink, nullptr);
  } catch (...) {
    --env_.depth;
    throw;
  }
  --env_.depth;
  report_.SetPageNumber(out_->CurrentPage());
  return sink.Advance();
}

Band ReportRun::FurnitureBand(Section* section, RowKind kind, int page) {
  report_.SetPageNumber(page);
  Band band;
  if (!section) return band;
  FillBoundControls(*section);
  Raise(section, "Format", [&] { report_.OnFormat(*section); });
  Raise(section, "BeforePrint", [&] { report_.OnBeforePrint(*section); });
  band.toc = report_.TOC().TakePending();
  if (section->Visible()) {
    std::unordered_map<const Control*, std::function<std::string(int)>> late;
    EvaluateExpressions(*section, late);
    LateTextFor late_for = [&late](const Control& c) {
      auto it = late.find(&c);
      return it == late.end() ? std::function<std::string(int)>() : it->second;
    };
    Arrangement arr = Arrange(*section, env_.measure);
    band.height = arr.height;
    EmitItems(*section, arr, 0, 1e30f, x0_, true, report_.PrintWidth(), late_for, band);
    band.rows.push_back(MakeDataRow(*section, arr, kind, 0, x0_));
  }
  Raise(section, "AfterPrint", [&] { report_.OnAfterPrint(*section); });
  return band;
}

Band ReportRun::PageHeader(int page) {
  Band band = FurnitureBand(report_.Sections().FindType(SectionType::PageHeader),
                            RowKind::PageHeader, page);
  AddRepeatedHeaders(band);
  return band;
}

void ReportRun::AddRepeatedHeaders(Band& band) {
  for (auto level = groups_.rbegin(); level != groups_.rend(); ++level) {
    Section* header = level->header;
    if (!level->open || header == nullptr || !header->RepeatOnPage()) continue;
    // Formatted again, so that the heading reads the group it now stands for.
    FillBoundControls(*header);
    Raise(header, "Format", [&] { report_.OnFormat(*header); });
    Raise(header, "BeforePrint", [&] { report_.OnBeforePrint(*header); });
    (void)report_.TOC().TakePending();
    if (header->Visible()) {
      std::unordered_map<const Control*, std::function<std::string(int)>> late;
      EvaluateExpressions(*header, late);
      LateTextFor late_for = [&late](const Control& c) {
        auto it = late.find(&c);
        return it == late.end() ? std::function<std::string(int)>() : it->second;
      };
      Arrangement arr = Arrange(*header, env_.measure);
      Band repeated;
      repeated.height = arr.height;
      EmitItems(*header, arr, 0, 1e30f, x0_, true, report_.PrintWidth(), late_for, repeated);
      for (auto& item : repeated.items) {
        std::visit(
            [&band](auto& it) {
              using T = std::decay_t<decltype(it)>;
              if constexpr (std::is_same_v<T, LineItem>) {
                it.y1 += band.height;
                it.y2 += band.height;
              } else {
                it.top += band.height;
              }
            },
            item);
      }
      const std::size_t first = band.items.size();
      for (auto& late_text : repeated.late) {
        late_text.item += first;
        band.late.push_back(std::move(late_text));
      }
      band.items.insert(band.items.end(), std::make_move_iterator(repeated.items.begin()),
                        std::make_move_iterator(repeated.items.end()));
      band.height += repeated.height;
    }
    Raise(header, "AfterPrint", [&] { report_.OnAfterPrint(*header); });
  }
}

Band ReportRun::PageFooter(int page) {
  return FurnitureBand(report_.Sections().FindType(SectionType::PageFooter), RowKind::PageFooter,
                       page);
}

float ReportRun::FooterReserve() {
  Section* footer = report_.Sections().FindType(SectionType::PageFooter);
  return footer ? footer->Height() : 0;
}

}  // namespace trellin::engine
