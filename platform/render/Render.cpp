#include "platform/render/Render.h"

#include <cctype>
#include <cmath>
#include <string>

#include "platform/render/CsvSink.h"
#include "platform/render/HtmlSink.h"
#include "platform/render/PdfSink.h"
#include "platform/render/PngSink.h"
#include "platform/render/TextSink.h"
#include "platform/render/XlsxSink.h"

namespace trellin::render {
namespace {

struct FormatRow {
  Format format;
  std::string_view name;
  std::string_view extensions[2];
};

constexpr FormatRow kFormats[] = {
    {Format::Pdf, "pdf", {".pdf", ""}},        {Format::Png, "png", {".png", ""}},
    {Format::Html, "html", {".html", ".htm"}}, {Format::Text, "text", {".txt", ""}},
    {Format::Csv, "csv", {".csv", ""}},        {Format::Xlsx, "xlsx", {".xlsx", ""}},
};

std::string Lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

}  // namespace

std::optional<Format> FormatFromExtension(const std::filesystem::path& path) {
  const std::string extension = Lower(path.extension().string());
  if (extension.empty()) return std::nullopt;
  for (const FormatRow& row : kFormats) {
    for (std::string_view e : row.extensions) {
      if (e == extension) return row.format;
    }
  }
  return std::nullopt;
}

std::optional<Format> FormatFromName(std::string_view name) {
  const std::string lower = Lower(name);
  if (lower == "txt") return Format::Text;
  if (lower == "htm") return Format::Html;
  for (const FormatRow& row : kFormats) {
    if (row.name == lower) return row.format;
  }
  return std::nullopt;
}

std::string_view FormatName(Format format) {
  for (const FormatRow& row : kFormats) {
    if (row.format == format) return row.name;
  }
  return "";
}

std::filesystem::path PngPagePath(const std::filesystem::path& target, int number) {
  return PngSink::PagePath(target, number);
}

std::unique_ptr<engine::PageSink> MakeSink(Format format, const std::filesystem::path& target,
                                           const RenderOptions& options) {
  if (target.filename().empty())
    throw RenderError("No file name in output path \"" + target.string() + "\"");
  switch (format) {
    case Format::Pdf:
      return std::make_unique<PdfSink>(target);
    case Format::Png:
      if (!std::isfinite(options.png_dpi) || options.png_dpi < 10 || options.png_dpi > 1200) {
        throw RenderError("PNG resolution must be between 10 and 1200 dpi");
      }
      return std::make_unique<PngSink>(target, options.png_dpi);
    case Format::Html:
      return std::make_unique<HtmlSink>(target);
    case Format::Text:
      if (!(options.text_column_twips >= 10 && options.text_column_twips <= 1440 &&
            options.text_line_twips >= 10 && options.text_line_twips <= 1440)) {
        throw RenderError("Text cell size must be between 10 and 1440 twips");
      }
      return std::make_unique<TextSink>(
          target, TextGrid{options.text_column_twips, options.text_line_twips});
    case Format::Csv:
      return std::make_unique<CsvSink>(target);
    case Format::Xlsx:
      return std::make_unique<XlsxSink>(target);
  }
  throw RenderError("Unknown output format");
}

}  // namespace trellin::render
