#pragma once
// A zip archive written entry by entry, each entry deflated as it streams in, so that a large
// entry (a long worksheet) never sits in memory. Sizes and checksums follow each entry's data;
// the directory closes the archive. Entries and the archive stay below 4 GiB each (no zip64).

#include <zlib.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace trellin::render {

class ZipWriter {
 public:
  // Writes to `file`, which must stay open until Finish; `name` names it in errors.
  ZipWriter(std::FILE* file, std::string name);
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  // Starts an entry; the one before must be ended. Throws RenderError on a write failure.
  void Begin(const std::string& entry);
  void Write(std::string_view data);
  void End();
  // Writes the directory. Throws RenderError.
  void Finish();

 private:
  struct Entry {
    std::string name;
    std::uint32_t crc = 0;
    std::uint64_t compressed = 0, size = 0, offset = 0;
  };
  void Put(const void* data, std::size_t size);
  void Deflate(int flush);

  std::FILE* file_;
  std::string name_;
  z_stream stream_{};
  bool open_ = false;
  std::uint64_t position_ = 0;
  std::vector<Entry> entries_;
  std::vector<unsigned char> buffer_;
};

}  // namespace trellin::render
