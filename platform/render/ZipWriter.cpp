#include "platform/render/ZipWriter.h"

#include <limits>

#include "platform/render/Render.h"

namespace trellin::render {
namespace {

constexpr std::uint32_t kLocalHeader = 0x04034b50;
constexpr std::uint32_t kDescriptor = 0x08074b50;
constexpr std::uint32_t kDirectoryEntry = 0x02014b50;
constexpr std::uint32_t kDirectoryEnd = 0x06054b50;
constexpr std::uint16_t kVersion = 20;        // deflate
constexpr std::uint16_t kSizesFollow = 0x08;  // crc and sizes come after the data
constexpr std::uint16_t kDeflated = 8;
constexpr std::uint16_t kDosDate = (0 << 9) | (1 << 5) | 1;  // 1 January 1980: a fixed stamp
constexpr std::size_t kChunk = 1 << 16;

void Le(std::string& out, std::uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out += static_cast<char>((value >> (8 * i)) & 0xFF);
}

}  // namespace

ZipWriter::ZipWriter(std::FILE* file, std::string name)
    : file_(file), name_(std::move(name)), buffer_(kChunk) {}

ZipWriter::~ZipWriter() {
  if (open_) deflateEnd(&stream_);
}

void ZipWriter::Put(const void* data, std::size_t size) {
  if (size == 0) return;
  if (std::fwrite(data, 1, size, file_) != size) throw RenderError("Cannot write " + name_);
  position_ += size;
  if (position_ >= std::numeric_limits<std::uint32_t>::max()) {
    throw RenderError("Cannot write " + name_ + ": the workbook would exceed 4 GiB");
  }
}

void ZipWriter::Begin(const std::string& entry) {
  if (open_) End();
  Entry e;
  e.name = entry;
  e.offset = position_;
  std::string header;
  Le(header, kLocalHeader, 4);
  Le(header, kVersion, 2);
  Le(header, kSizesFollow, 2);
  Le(header, kDeflated, 2);
  Le(header, 0, 2);  // time
  Le(header, kDosDate, 2);
  Le(header, 0, 4);  // crc, sizes: in the descriptor
  Le(header, 0, 4);
  Le(header, 0, 4);
  Le(header, entry.size(), 2);
  Le(header, 0, 2);
  header += entry;
  Put(header.data(), header.size());
  entries_.push_back(std::move(e));
  stream_ = z_stream{};
  if (deflateInit2(&stream_, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8,
                   Z_DEFAULT_STRATEGY) != Z_OK) {
    throw RenderError("Cannot write " + name_ + ": no memory to compress");
  }
  open_ = true;
}

void ZipWriter::Deflate(int flush) {
  do {
    stream_.next_out = buffer_.data();
    stream_.avail_out = static_cast<uInt>(buffer_.size());
    const int result = deflate(&stream_, flush);
    if (result == Z_STREAM_ERROR)
      throw RenderError("Cannot write " + name_ + ": compression failed");
    const std::size_t produced = buffer_.size() - stream_.avail_out;
    Put(buffer_.data(), produced);
    entries_.back().compressed += produced;
  } while (stream_.avail_out == 0);
}

void ZipWriter::Write(std::string_view data) {
  Entry& e = entries_.back();
  e.crc = static_cast<std::uint32_t>(
      crc32(e.crc, reinterpret_cast<const Bytef*>(data.data()), static_cast<uInt>(data.size())));
  e.size += data.size();
  stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  stream_.avail_in = static_cast<uInt>(data.size());
  Deflate(Z_NO_FLUSH);
}

void ZipWriter::End() {
  if (!open_) return;
  stream_.next_in = nullptr;
  stream_.avail_in = 0;
  Deflate(Z_FINISH);
  deflateEnd(&stream_);
  open_ = false;
  const Entry& e = entries_.back();
  std::string descriptor;
  Le(descriptor, kDescriptor, 4);
  Le(descriptor, e.crc, 4);
  Le(descriptor, e.compressed, 4);
  Le(descriptor, e.size, 4);
  Put(descriptor.data(), descriptor.size());
}

void ZipWriter::Finish() {
  End();
  const std::uint64_t start = position_;
  std::string directory;
  for (const Entry& e : entries_) {
    Le(directory, kDirectoryEntry, 4);
    Le(directory, kVersion, 2);  // made by
    Le(directory, kVersion, 2);  // needed
    Le(directory, kSizesFollow, 2);
    Le(directory, kDeflated, 2);
    Le(directory, 0, 2);
    Le(directory, kDosDate, 2);
    Le(directory, e.crc, 4);
    Le(directory, e.compressed, 4);
    Le(directory, e.size, 4);
    Le(directory, e.name.size(), 2);
    Le(directory, 0, 2);  // extra
    Le(directory, 0, 2);  // comment
    Le(directory, 0, 2);  // disk
    Le(directory, 0, 2);  // internal attributes
    Le(directory, 0, 4);  // external attributes
    Le(directory, e.offset, 4);
    directory += e.name;
  }
  const std::uint64_t directory_size = directory.size();
  Le(directory, kDirectoryEnd, 4);
  Le(directory, 0, 2);
  Le(directory, 0, 2);
  Le(directory, entries_.size(), 2);
  Le(directory, entries_.size(), 2);
  Le(directory, directory_size, 4);
  Le(directory, start, 4);
  Le(directory, 0, 2);
  Put(directory.data(), directory.size());
}

}  // namespace trellin::render
