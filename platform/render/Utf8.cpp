#include "platform/render/Utf8.h"

namespace trellin::render {

int Utf8SequenceLength(std::string_view text) {
  if (text.empty()) return 0;
  const auto b0 = static_cast<unsigned char>(text[0]);
  if (b0 < 0x80) return 1;
  int length;
  unsigned char low = 0x80, high = 0xBF;  // allowed range of the second byte
  if (b0 >= 0xC2 && b0 <= 0xDF) {
    length = 2;
  } else if (b0 >= 0xE0 && b0 <= 0xEF) {
    length = 3;
    if (b0 == 0xE0) low = 0xA0;   // overlong
    if (b0 == 0xED) high = 0x9F;  // surrogates
  } else if (b0 >= 0xF0 && b0 <= 0xF4) {
    length = 4;
    if (b0 == 0xF0) low = 0x90;
    if (b0 == 0xF4) high = 0x8F;  // beyond U+10FFFF
  } else {
    return 0;
  }
  if (text.size() < static_cast<std::size_t>(length)) return 0;
  const auto b1 = static_cast<unsigned char>(text[1]);
  if (b1 < low || b1 > high) return 0;
  for (int i = 2; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  return length;
}

bool IsValidUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    // Plain ASCII runs are the common case.
    if (static_cast<unsigned char>(text[i]) < 0x80) {
      ++i;
      continue;
    }
    const int length = Utf8SequenceLength(text.substr(i));
    if (length == 0) return false;
    i += length;
  }
  return true;
}

std::string ValidUtf8(std::string_view text) {
  if (IsValidUtf8(text)) return std::string(text);
  std::string out;
  out.reserve(text.size() + 8);
  for (std::size_t i = 0; i < text.size();) {
    const int length = Utf8SequenceLength(text.substr(i));
    if (length == 0) {
      out += "\xEF\xBF\xBD";
      ++i;
    } else {
      out.append(text, i, length);
      i += length;
    }
  }
  return out;
}

}  // namespace trellin::render
