#include "platform/render/PdfFile.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "platform/render/Render.h"
#include "platform/render/Utf8.h"

namespace trellin::render {
namespace pdf {
namespace {

constexpr char kTextHex[] = "0123456789ABCDEF";

void AppendUtf16Unit(std::string& out, unsigned unit) {
  for (int shift = 12; shift >= 0; shift -= 4) out += kTextHex[(unit >> shift) & 0xF];
}

}  // namespace

void AppendNumber(std::string& out, double value) {
  if (!std::isfinite(value)) value = 0;
  value = std::clamp(value, -1e6, 1e6);
  // Thousandths as a whole number, then the digits with the point put back in.
  long long scaled = std::llround(value * 1000);
  if (scaled < 0) {
    out += '-';
    scaled = -scaled;
  }
  const long long whole = scaled / 1000;
  int fraction = static_cast<int>(scaled % 1000);
  char buffer[24];
  int n = 0;
  long long w = whole;
  do {
    buffer[n++] = static_cast<char>('0' + w % 10);
    w /= 10;
  } while (w != 0);
  while (n > 0) out += buffer[--n];
  if (fraction == 0) return;
  out += '.';
  int digits = 3;
  while (fraction % 10 == 0) {
    fraction /= 10;
    --digits;
  }
  for (int d = digits - 1; d >= 0; --d) {
    int p = 1;
    for (int i = 0; i < d; ++i) p *= 10;
    out += static_cast<char>('0' + fraction / p % 10);
  }
}

void AppendTextString(std::string& out, std::string_view utf8) {
  const std::string text = IsValidUtf8(utf8) ? std::string(utf8) : ValidUtf8(utf8);
  out += "<FEFF";
  for (std::size_t i = 0; i < text.size();) {
    const std::string_view rest(text.data() + i, text.size() - i);
    const int length = std::max(Utf8SequenceLength(rest), 1);
    const auto byte = [&](int k) { return static_cast<unsigned char>(rest[k]); };
    unsigned code = byte(0);
    if (length == 2) code = (code & 0x1F) << 6 | (byte(1) & 0x3F);
    if (length == 3) code = (code & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
    if (length == 4) {
      code =
          (code & 0x07) << 18 | (byte(1) & 0x3F) << 12 | (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F);
    }
    if (code >= 0x10000) {
      code -= 0x10000;
      AppendUtf16Unit(out, 0xD800 | (code >> 10));
      AppendUtf16Unit(out, 0xDC00 | (code & 0x3FF));
    } else {
      AppendUtf16Unit(out, code);
    }
    i += static_cast<std::size_t>(length);
  }
  out += '>';
}

}  // namespace pdf

PdfFile::PdfFile(std::FILE* stream, std::string target)
    : stream_(stream), target_(std::move(target)) {
  // The binary comment tells transfer programs the file is not text.
  Put("%PDF-1.5\n%\xE2\xE3\xCF\xD3\n");
}

PdfFile::~PdfFile() {
  if (zip_ready_) deflateEnd(&zip_);
}

int PdfFile::Reserve() {
  offsets_.push_back(0);
  return static_cast<int>(offsets_.size());
}

void PdfFile::Put(std::string_view bytes) {
  if (bytes.empty()) return;
  if (std::fwrite(bytes.data(), 1, bytes.size(), stream_) != bytes.size()) {
    throw RenderError("Cannot write " + target_ + ": " + std::strerror(errno));
  }
  offset_ += bytes.size();
}

void PdfFile::WriteObject(int id, std::string_view body) {
  offsets_.at(static_cast<std::size_t>(id) - 1) = offset_;
  head_.clear();
  head_ += std::to_string(id);
  head_ += " 0 obj\n";
  Put(head_);
  Put(body);
  Put("\nendobj\n");
}

void PdfFile::Compress(std::string_view data) {
  // One compressor for the whole file, reset per stream: setting one up costs more than
  // compressing a page.
  if (!zip_ready_) {
    if (deflateInit(&zip_, Z_DEFAULT_COMPRESSION) != Z_OK) {
      throw RenderError("Cannot write " + target_ + ": no memory for compression");
    }
    zip_ready_ = true;
  } else {
    deflateReset(&zip_);
  }
  packed_.resize(deflateBound(&zip_, data.size()));
  zip_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  zip_.avail_in = static_cast<uInt>(data.size());
  zip_.next_out = reinterpret_cast<Bytef*>(packed_.data());
  zip_.avail_out = static_cast<uInt>(packed_.size());
  if (deflate(&zip_, Z_FINISH) != Z_STREAM_END) {
    throw RenderError("Cannot write " + target_ + ": compression failed");
  }
  packed_.resize(zip_.total_out);
}

void PdfFile::WriteStream(int id, std::string_view dictionary, std::string_view data,
                          bool compress) {
  if (compress) {
    Compress(data);
    data = packed_;
  }
  offsets_.at(static_cast<std::size_t>(id) - 1) = offset_;
  head_.clear();
  head_ += std::to_string(id);
  head_ += " 0 obj\n<<";
  head_ += dictionary;
  head_ += "/Length ";
  head_ += std::to_string(data.size());
  if (compress) head_ += "/Filter/FlateDecode";
  head_ += ">>\nstream\n";
  Put(head_);
  Put(data);
  Put("\nendstream\nendobj\n");
}

void PdfFile::Finish(int root, int info) {
  const std::uint64_t xref = offset_;
  std::string table = "xref\n0 " + std::to_string(offsets_.size() + 1) + "\n0000000000 65535 f \n";
  char entry[32];
  for (std::uint64_t at : offsets_) {
    std::snprintf(entry, sizeof entry, "%010llu 00000 n \n", static_cast<unsigned long long>(at));
    table += entry;
    if (table.size() > 65536) {
      Put(table);
      table.clear();
    }
  }
  table += "trailer\n<</Size " + std::to_string(offsets_.size() + 1) + "/Root " +
           std::to_string(root) + " 0 R/Info " + std::to_string(info) + " 0 R>>\nstartxref\n" +
           std::to_string(xref) + "\n%%EOF\n";
  Put(table);
}

}  // namespace trellin::render
