#pragma once
// The object layer of a PDF file: numbered objects written straight to a stream, Flate-compressed
// streams, and the cross-reference table and trailer at the end. Holds one file offset per
// object, nothing of what was written.

#include <zlib.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace trellin::render {

// Numbers and strings as PDF content and dictionaries spell them.
namespace pdf {
// `value` with at most three decimals, no exponent and no trailing zeros ("12.5", "-3", "0.125").
// Values beyond a million are clamped there: nothing on a page lies so far off the paper.
void AppendNumber(std::string& out, double value);
// A text string as a hexadecimal UTF-16BE string with its byte-order mark ("<FEFF0041>"); invalid
// UTF-8 is repaired first.
void AppendTextString(std::string& out, std::string_view utf8);
}  // namespace pdf

class PdfFile {
 public:
  // `stream` is the open file; not owned. `target` names the file in error messages.
  PdfFile(std::FILE* stream, std::string target);
  ~PdfFile();
  PdfFile(const PdfFile&) = delete;
  PdfFile& operator=(const PdfFile&) = delete;

  // A new object number, to refer to before the object is written.
  [[nodiscard]] int Reserve();
  // Writes object `id` (reserved, not yet written) with `body` between "obj" and "endobj".
  void WriteObject(int id, std::string_view body);
  // Writes object `id` as a stream: `dictionary` holds the entries besides /Length and /Filter
  // (may be empty). `compress`: Flate-encode `data`.
  void WriteStream(int id, std::string_view dictionary, std::string_view data, bool compress);
  // Writes the cross-reference table and the trailer naming `root` and `info`. Every reserved
  // object must have been written. Throws RenderError when the stream fails.
  void Finish(int root, int info);

 private:
  void Put(std::string_view bytes);
  void Compress(std::string_view data);

  std::FILE* stream_;
  std::string target_;
  std::uint64_t offset_ = 0;
  std::vector<std::uint64_t> offsets_;  // by object number - 1; 0 until written
  z_stream zip_{};
  bool zip_ready_ = false;
  std::string packed_;
  std::string head_;
};

}  // namespace trellin::render
