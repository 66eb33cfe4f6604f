#include "platform/runtime/LinkTarget.h"

#include <stdexcept>

namespace trellin {
namespace {

constexpr std::string_view kPrefix = "#run=";
constexpr std::size_t kMaxName = 64;

bool IsAsciiAlpha(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }
bool IsUnreserved(char c) {
  return IsAsciiAlpha(c) || IsAsciiDigit(c) || c == '-' || c == '.' || c == '_' || c == '~';
}

void Encode(std::string_view text, std::string& out) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  for (char ch : text) {
    if (IsUnreserved(ch)) {
      out += ch;
    } else {
      const auto byte = static_cast<unsigned char>(ch);
      out += '%';
      out += kHex[byte >> 4];
      out += kHex[byte & 15];
    }
  }
}

int HexValue(char c) {
  if (IsAsciiDigit(c)) return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

std::optional<std::string> Decode(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      if (!IsUnreserved(text[i])) return std::nullopt;
      out += text[i];
      continue;
    }
    if (i + 2 >= text.size()) return std::nullopt;
    const int hi = HexValue(text[i + 1]);
    const int lo = HexValue(text[i + 2]);
    if (hi < 0 || lo < 0) return std::nullopt;
    out += static_cast<char>(hi * 16 + lo);
    i += 2;
  }
  return out;
}

}  // namespace

bool IsLinkName(std::string_view name) {
  if (name.empty() || name.size() > kMaxName || !IsAsciiAlpha(name[0])) return false;
  for (char c : name) {
    if (!IsAsciiAlpha(c) && !IsAsciiDigit(c) && c != '_') return false;
  }
  return true;
}

std::string LinkHref(const LinkTarget& target) {
  if (!IsLinkName(target.key)) {
    throw std::invalid_argument("link target: not a report key: \"" + target.key + "\"");
  }
  std::string out(kPrefix);
  out += target.key;
  for (const auto& [name, value] : target.values) {
    if (!IsLinkName(name)) {
      throw std::invalid_argument("link target: not a parameter name: \"" + name + "\"");
    }
    out += '&';
    out += name;
    out += '=';
    Encode(value, out);
  }
  return out;
}

std::optional<LinkTarget> ParseLinkHref(std::string_view href) {
  if (href.substr(0, kPrefix.size()) != kPrefix) return std::nullopt;
  href.remove_prefix(kPrefix.size());
  LinkTarget target;
  bool first = true;
  while (true) {
    const std::size_t amp = href.find('&');
    const std::string_view part = href.substr(0, amp);
    if (first) {
      if (!IsLinkName(part)) return std::nullopt;
      target.key = std::string(part);
      first = false;
    } else {
      const std::size_t eq = part.find('=');
      if (eq == std::string_view::npos || !IsLinkName(part.substr(0, eq))) return std::nullopt;
      auto value = Decode(part.substr(eq + 1));
      if (!value) return std::nullopt;
      target.values.emplace_back(std::string(part.substr(0, eq)), std::move(*value));
    }
    if (amp == std::string_view::npos) break;
    href.remove_prefix(amp + 1);
  }
  return target;
}

}  // namespace trellin
