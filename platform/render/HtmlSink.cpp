#include "platform/render/HtmlSink.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <variant>

#include "platform/engine/PagePath.h"
#include "platform/render/Render.h"
#include "platform/render/Utf8.h"

namespace trellin::render {
namespace {

// Measures go out in points with at most two decimals: exact enough, and locale-free.
// Positions that are not numbers, or absurdly far off, are held to something a browser can take.
std::string Pt(double twips) {
  const double held = std::isfinite(twips) ? std::clamp(twips, -1e9, 1e9) : 0.0;
  const long hundredths = std::lround(held * 5.0);  // twips / 20 * 100
  std::string out = hundredths < 0 ? "-" : "";
  const long abs = std::labs(hundredths);
  out += std::to_string(abs / 100);
  const long fraction = abs % 100;
  if (fraction != 0) {
    out += '.';
    out += static_cast<char>('0' + fraction / 10);
    if (fraction % 10 != 0) out += static_cast<char>('0' + fraction % 10);
  }
  return out + "pt";
}

std::string Hex(const engine::Color& c) {
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", c.r, c.g, c.b);
  return buffer;
}

// The layouts' font names, with the metric-compatible faces a browser may have instead.
std::string FontStack(const std::string& name) {
  struct Family {
    std::string_view name, fallback;
  };
  static constexpr Family kFamilies[] = {
      {"Arial", "'Liberation Sans', Helvetica, sans-serif"},
      {"Times New Roman", "'Liberation Serif', Times, serif"},
      {"Courier New", "'Liberation Mono', Courier, monospace"},
  };
  std::string stack(1, '\'');
  stack += EscapeHtml(name.empty() ? "Arial" : name);
  stack += '\'';
  for (const Family& f : kFamilies) {
    if (f.name == name) return stack + ", " + std::string(f.fallback);
  }
  return stack + ", sans-serif";
}

std::string_view AlignCss(engine::Align align) {
  switch (align) {
    case engine::Align::Right:
      return "right";
    case engine::Align::Center:
      return "center";
    default:
      return "left";
  }
}

// The look of a run that many runs share: font, line height, alignment, decoration, colour.
std::string TextStyle(const engine::TextRun& r) {
  const engine::FontSpec& f = r.font;
  std::string out = "font:";
  if (f.italic) out += "italic ";
  if (f.bold) out += "bold ";
  out += Pt(f.size * 20.0);
  out += '/';
  out += Pt(r.height);
  out += ' ';
  out += FontStack(f.name);
  if (r.align != engine::Align::Left) out += ";text-align:" + std::string(AlignCss(r.align));
  if (f.underline) out += ";text-decoration:underline";
  if (r.color != engine::Color{}) out += ";color:" + Hex(r.color);
  return out;
}

std::string TextHtml(const engine::TextRun& r, const std::string& style_class) {
  return "<div class=\"t " + style_class + "\" style=\"left:" + Pt(r.left) + ";top:" + Pt(r.top) +
         ";width:" + Pt(r.width) + ";height:" + Pt(r.height) + "\">" +
         (r.link.Empty()
              ? EscapeHtml(r.text)
              : "<a href=\"" + EscapeHtml(LinkHref(r.link)) + "\">" + EscapeHtml(r.text) + "</a>") +
         "</div>\n";
}

std::string LineHtml(const engine::LineItem& l) {
  const double thickness = std::max(l.thickness, 1.0f);
  if (l.y1 == l.y2 || l.x1 == l.x2) {
    // Rules are thin boxes centred on the line, which prints as exactly as a drawn line.
    const bool horizontal = l.y1 == l.y2;
    const double left = horizontal ? std::min(l.x1, l.x2) : l.x1 - thickness / 2;
    const double top = horizontal ? l.y1 - thickness / 2 : std::min(l.y1, l.y2);
    const double width = horizontal ? std::fabs(l.x2 - l.x1) : thickness;
    const double height = horizontal ? thickness : std::fabs(l.y2 - l.y1);
    return "<div class=r style=\"left:" + Pt(left) + ";top:" + Pt(top) + ";width:" + Pt(width) +
           ";height:" + Pt(height) + ";background:" + Hex(l.color) + "\"></div>\n";
  }
  const double left = std::min(l.x1, l.x2), top = std::min(l.y1, l.y2);
  const double width = std::fabs(l.x2 - l.x1), height = std::fabs(l.y2 - l.y1);
  return "<svg class=r style=\"left:" + Pt(left) + ";top:" + Pt(top) + ";width:" + Pt(width) +
         ";height:" + Pt(height) + "\" viewBox=\"0 0 " + std::to_string(std::lround(width)) + " " +
         std::to_string(std::lround(height)) + "\"><line x1=\"" +
         std::to_string(std::lround(l.x1 - left)) + "\" y1=\"" +
         std::to_string(std::lround(l.y1 - top)) + "\" x2=\"" +
         std::to_string(std::lround(l.x2 - left)) + "\" y2=\"" +
         std::to_string(std::lround(l.y2 - top)) + "\" stroke=\"" + Hex(l.color) +
         "\" stroke-width=\"" + std::to_string(std::lround(thickness)) + "\"/></svg>\n";
}

std::string RectHtml(const engine::RectItem& r) {
  if (!r.filled && !r.stroked) return {};
  std::string out = "<div class=r style=\"left:" + Pt(r.left) + ";top:" + Pt(r.top) +
                    ";width:" + Pt(r.width) + ";height:" + Pt(r.height);
  if (r.filled) out += ";background:" + Hex(r.fill);
  if (r.stroked) out += ";border:" + Pt(std::max(r.thickness, 1.0f)) + " solid " + Hex(r.stroke);
  return out + "\"></div>\n";
}

// A drawn shape as an inline SVG element over the path's box, in twips like the rest of the page.
// The box is widened by the stroke on every side: a browser draws nothing of an element with no
// height, so a level line (a chart legend's sample) would vanish in a box of its own height.
std::string PathHtml(const engine::PathItem& p) {
  if ((!p.filled && !p.stroked) || p.steps.empty()) return {};
  const auto num = [](double v) { return std::to_string(std::lround(v)); };
  const float pad = p.stroked ? std::ceil(std::max(p.thickness, 1.0f)) : 1.0f;
  const float left = p.left - pad, top = p.top - pad;
  std::string d;
  for (const engine::FlatStep& s : engine::FlattenPath(p)) {
    if (!d.empty()) d += ' ';
    d += s.op;
    if (s.op == 'C') {
      d += num(s.x1 - left) + ',' + num(s.y1 - top) + ' ' + num(s.x2 - left) + ',' +
           num(s.y2 - top) + ' ';
    }
    if (s.op != 'Z') d += num(s.x - left) + ',' + num(s.y - top);
  }
  const double width = p.width + 2 * pad, height = p.height + 2 * pad;
  std::string out = "<svg class=r style=\"left:" + Pt(left) + ";top:" + Pt(top) +
                    ";width:" + Pt(width) + ";height:" + Pt(height) +
                    ";overflow:visible\" viewBox=\"0 0 " + num(width) + ' ' + num(height) +
                    "\"><path d=\"" + d + "\" fill=\"" + (p.filled ? Hex(p.fill) : "none") + '"';
  if (p.stroked) {
    out += " stroke=\"" + Hex(p.stroke) + "\" stroke-width=\"" + num(std::max(p.thickness, 1.0f)) +
           '"';
    if (!p.dash.empty()) {
      out += " stroke-dasharray=\"";
      for (std::size_t i = 0; i < p.dash.size(); ++i) out += (i ? "," : "") + num(p.dash[i]);
      out += '"';
    }
  }
  return out + "/></svg>\n";
}

constexpr std::string_view kStyle = R"(<style>
body{margin:0;background:#8a8a8a}
.p{position:relative;overflow:hidden;background:#fff;margin:12pt auto;box-shadow:0 1pt 6pt #0006}
.t{position:absolute;white-space:pre;overflow:visible}
.t a{color:inherit;text-decoration:none}.t a:hover{text-decoration:underline}
.r{position:absolute;box-sizing:border-box}
@media print{body{background:none}.p{margin:0;box-shadow:none;break-after:page;page-break-after:always}
.p:last-child{break-after:auto;page-break-after:auto}}
)";

}  // namespace

std::string EscapeHtml(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto c = static_cast<unsigned char>(text[i]);
    switch (c) {
      case '&':
        out += "&amp;";
        ++i;
        continue;
      case '<':
        out += "&lt;";
        ++i;
        continue;
      case '>':
        out += "&gt;";
        ++i;
        continue;
      case '"':
        out += "&quot;";
        ++i;
        continue;
      case '\'':
        out += "&#39;";
        ++i;
        continue;
      default:
        break;
    }
    // Pass well-formed UTF-8 sequences through whole; anything else is one replacement mark.
    const int length = Utf8SequenceLength(text.substr(i));
    if (length == 0) {
      out += "\xEF\xBF\xBD";
      ++i;
      continue;
    }
    if (c < 0x20 && c != '\t') {
      out += ' ';  // control characters are not allowed in HTML text
    } else {
      out.append(text, i, length);
    }
    i += length;
  }
  return out;
}

void HtmlSink::Emit(const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), file_->Stream()) != text.size()) {
    throw RenderError("Cannot write " + target_.string());
  }
}

void HtmlSink::OnBegin(const engine::DocumentInfo& info) {
  file_.emplace(target_);
  std::string head = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">\n<title>" +
                     EscapeHtml(info.title.empty() ? info.caption : info.title) +
                     "</title>\n<meta name=\"generator\" content=\"Trellin Reports\">\n" +
                     std::string(kStyle);
  if (info.page_width > 0 && info.page_height > 0) {
    head += "@page{size:" + Pt(info.page_width) + " " + Pt(info.page_height) + ";margin:0}\n";
  } else {
    head += "@page{margin:0}\n";
  }
  Emit(head + "</style></head><body>\n");
}

std::string HtmlSink::StyleClass(const engine::TextRun& run, std::string& out) {
  // Each distinct look is declared once, where it is first used, so a long report does not
  // repeat its fonts on every line.
  std::string style = TextStyle(run);
  auto it = styles_.find(style);
  if (it == styles_.end()) {
    std::string name(1, 'f');
    name += std::to_string(styles_.size() + 1);
    out += "<style>.";
    out += name;
    out += '{';
    out += style;
    out += "}</style>\n";
    it = styles_.emplace(std::move(style), name).first;
  }
  return it->second;
}

void HtmlSink::OnPage(const engine::Page& page) {
  const float width = page.width > 0 ? page.width : Info().page_width;
  const float height = page.height > 0 ? page.height : Info().page_height;
  std::string out;
  std::string print_page;
  // A page of another paper size (a landscape page among portrait ones) prints on its own named
  // page size; the style for it is declared the first time it is met.
  if (width != Info().page_width || height != Info().page_height) {
    const auto size = std::make_pair(width, height);
    auto it = std::find(sizes_.begin(), sizes_.end(), size);
    std::string name = "paper";
    name += std::to_string(it - sizes_.begin() + 1);
    if (it == sizes_.end()) {
      sizes_.push_back(size);
      out +=
          "<style>@page " + name + "{size:" + Pt(width) + " " + Pt(height) + ";margin:0}</style>\n";
    }
    print_page = ";page:" + name;
  }
  out += "<div class=p id=\"page-" + std::to_string(page.number) + "\" style=\"width:" + Pt(width) +
         ";height:" + Pt(height) + print_page + "\">\n";
  for (const engine::PageItem& item : page.items) {
    if (const auto* text = std::get_if<engine::TextRun>(&item)) {
      if (!text->text.empty()) out += TextHtml(*text, StyleClass(*text, out));
    } else if (const auto* line = std::get_if<engine::LineItem>(&item)) {
      out += LineHtml(*line);
    } else if (const auto* path = std::get_if<engine::PathItem>(&item)) {
      out += PathHtml(*path);
    } else {
      out += RectHtml(std::get<engine::RectItem>(item));
    }
  }
  Emit(out + "</div>\n");
}

void HtmlSink::OnEnd() {
  Emit("</body></html>\n");
  file_->Commit();
  file_.reset();
}

void HtmlSink::OnAbort() noexcept { file_.reset(); }

}  // namespace trellin::render
