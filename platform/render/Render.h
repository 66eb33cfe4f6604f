#pragma once
// Output of finished pages: the formats a run can be written to, and the factory that makes the
// page sink for one of them. Every sink writes beside its target and renames into place at End,
// so a failed or cancelled run never leaves a partial file and never replaces a good one.

#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "platform/engine/PageModel.h"
#include "platform/runtime/Error.h"

namespace trellin::render {

enum class Format { Pdf, Png, Html, Text, Csv, Xlsx };

struct RenderOptions {
  // Resolution of PNG pages, in dots per inch (96 gives 816 x 1056 pixels for Letter).
  double png_dpi = 96.0;
  // The character cell of plain text output, in twips (see TextPage.h): 100 across reads a 10pt
  // Arial report at about its printed width; 240 down is six lines to the inch.
  float text_column_twips = 100;
  float text_line_twips = 240;
};

// Raised for output that cannot be written (missing folder, full disk, bad options) and for a
// sink used out of order (a page before Begin, a page after End). The message names the file.
class RenderError : public Error {
 public:
  explicit RenderError(const std::string& message) : Error(ErrorKind::Input, message) {}
};

// The format named by a file's extension, case-insensitively: .pdf .png .html .htm .txt .csv
// .xlsx; nullopt for any other.
[[nodiscard]] std::optional<Format> FormatFromExtension(const std::filesystem::path& path);
// The format named "pdf", "png", "html", "text" (or "txt"), "csv", "xlsx"; nullopt otherwise.
[[nodiscard]] std::optional<Format> FormatFromName(std::string_view name);
// The lower-case name of a format: "pdf", "png", "html", "text", "csv", "xlsx".
[[nodiscard]] std::string_view FormatName(Format format);

// The file a PNG run writes for page `number` (1-based) of `target`: "out/ledger.png", 3 gives
// "out/ledger-3.png"; a target without an extension gets ".png".
[[nodiscard]] std::filesystem::path PngPagePath(const std::filesystem::path& target, int number);

// A sink writing `format` to `target`. For PNG the target names the series: "out/ledger.png"
// gives "out/ledger-1.png", "out/ledger-2.png", ... Nothing is created until Begin; the caller
// owns the sink and streams pages into it, then calls End (or Abort). Destroying a sink without
// End discards its output. Throws RenderError for options out of range.
[[nodiscard]] std::unique_ptr<engine::PageSink> MakeSink(Format format,
                                                         const std::filesystem::path& target,
                                                         const RenderOptions& options = {});

}  // namespace trellin::render
