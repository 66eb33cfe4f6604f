#include "platform/engine/DumpPage.h"

#include <cmath>
#include <cstdio>
#include <sstream>

namespace trellin::engine {
namespace {

std::string N(float v) { return std::to_string(static_cast<long long>(std::lround(v))); }

std::string Hex(const Color& c) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "#%02X%02X%02X", c.r, c.g, c.b);
  return buf;
}

const char* AlignName(Align a) {
  switch (a) {
    case Align::Right:
      return "right";
    case Align::Center:
      return "center";
    case Align::Justify:
      return "justify";
    case Align::Left:
      break;
  }
  return "left";
}

// Nothing for a whole text, so that the dumps of texts that fit read as they always have.
const char* FitMark(Fit fit) {
  switch (fit) {
    case Fit::Ellipsis:
      return " ellipsis";
    case Fit::Cut:
      return " !cut";
    case Fit::Wide:
      return " !wide";
    case Fit::Broken:
      return " !broken";
    case Fit::Whole:
      break;
  }
  return "";
}

const char* KindName(RowKind k) {
  static const char* kNames[] = {"ReportHeader", "PageHeader", "GroupHeader", "Detail",
                                 "GroupFooter",  "PageFooter", "ReportFooter"};
  return kNames[static_cast<int>(k)];
}

std::string Quote(const std::string& s) {
  std::string out;
  out.reserve(s.size() + 2);
  out.append(1, '"').append(s).append(1, '"');
  return out;
}

std::string ValueText(const Variant& v) {
  switch (v.Kind()) {
    case VariantKind::Null:
      return "Null";
    case VariantKind::Empty:
      return "Empty";
    case VariantKind::String:
      return Quote(v.ToString());
    case VariantKind::Currency:
      return v.Get<Currency>()->ToString() + "@";
    case VariantKind::Date:
      return std::string(1, '#').append(v.Get<Date>()->ToIso()).append(1, '#');
    case VariantKind::Object:
      return "Object";
    default:
      return v.ToString();
  }
}

}  // namespace

std::string DumpPage(const Page& page) {
  std::ostringstream out;
  out << "page " << page.number << ' ' << N(page.width) << 'x' << N(page.height) << '\n';
  for (const auto& item : page.items) {
    if (const auto* t = std::get_if<TextRun>(&item)) {
      out << "text " << N(t->left) << ',' << N(t->top) << ' ' << N(t->width) << 'x' << N(t->height)
          << ' ' << Quote(t->text) << ' ' << t->font.name << ' ' << t->font.size
          << (t->font.bold ? " B" : "") << (t->font.italic ? " I" : "") << ' '
          << AlignName(t->align) << FitMark(t->fit) << '\n';
    } else if (const auto* l = std::get_if<LineItem>(&item)) {
      out << "line " << N(l->x1) << ',' << N(l->y1) << '-' << N(l->x2) << ',' << N(l->y2) << '\n';
    } else if (const auto* r = std::get_if<RectItem>(&item)) {
      out << "rect " << N(r->left) << ',' << N(r->top) << ' ' << N(r->width) << 'x' << N(r->height);
      if (r->filled) out << " fill " << Hex(r->fill);
      if (r->stroked) out << " stroke " << Hex(r->stroke);
      out << '\n';
    } else if (const auto* p = std::get_if<PathItem>(&item)) {
      out << "path " << N(p->left) << ',' << N(p->top) << ' ' << N(p->width) << 'x' << N(p->height);
      if (p->filled) out << " fill " << Hex(p->fill);
      if (p->stroked) out << " stroke " << Hex(p->stroke) << ' ' << N(p->thickness);
      for (std::size_t i = 0; i < p->dash.size(); ++i) out << (i ? "," : " dash ") << N(p->dash[i]);
      out << " :";
      for (const PathStep& s : p->steps) {
        switch (s.op) {
          case PathOp::Move:
            out << " M" << N(s.x) << ',' << N(s.y);
            break;
          case PathOp::Line:
            out << " L" << N(s.x) << ',' << N(s.y);
            break;
          case PathOp::Arc:
            out << " A" << N(s.x) << ',' << N(s.y) << ' ' << N(s.radius) << ' ' << N(s.start) << ' '
                << N(s.sweep);
            break;
          case PathOp::Close:
            out << " Z";
            break;
        }
      }
      out << '\n';
    }
  }
  for (const auto& b : page.bookmarks) {
    std::string path;
    for (std::size_t i = 0; i < b.path.size(); ++i) {
      if (i) path += '\\';
      path += b.path[i];
    }
    out << "bookmark " << Quote(path) << " @" << N(b.top) << '\n';
  }
  for (const auto& row : page.rows) {
    out << "row " << KindName(row.kind);
    if (row.level) out << ' ' << row.level;
    out << ' ' << row.section;
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      const DataCell& c = row.cells[i];
      out << (i ? " | " : " ") << c.name << '=' << ValueText(c.value) << ' ' << Quote(c.text);
    }
    out << '\n';
  }
  return out.str();
}

std::vector<std::string> Misfits(const Page& page) {
  std::vector<std::string> out;
  for (const auto& item : page.items) {
    const auto* t = std::get_if<TextRun>(&item);
    if (t == nullptr || !IsMisfit(t->fit)) continue;
    out.push_back("page " + std::to_string(page.number) + FitMark(t->fit) + " " + Quote(t->text) +
                  " at " + N(t->left) + "," + N(t->top) + " in " + N(t->width));
  }
  return out;
}

}  // namespace trellin::engine
