#include "platform/runtime/Strings.h"

#include <algorithm>
#include <stdexcept>

#include "platform/runtime/DecimalNumber.h"

namespace trellin {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// 0-based index of `find` in `s` from `from`, or npos.
std::size_t FindFrom(std::string_view s, std::string_view find, std::size_t from,
                     bool ignore_case) {
  if (!ignore_case) return s.find(find, from);
  if (find.size() > s.size()) return std::string_view::npos;
  for (std::size_t i = from; i + find.size() <= s.size(); ++i) {
    bool match = true;
    for (std::size_t k = 0; k < find.size() && match; ++k)
      match = Lower(s[i + k]) == Lower(find[k]);
    if (match) return i;
  }
  return std::string_view::npos;
}

}  // namespace

std::string LTrim(std::string_view s) {
  std::size_t i = 0;
  while (i < s.size() && IsBlank(s[i])) ++i;
  return std::string(s.substr(i));
}

std::string RTrim(std::string_view s) {
  std::size_t n = s.size();
  while (n > 0 && IsBlank(s[n - 1])) --n;
  return std::string(s.substr(0, n));
}

std::string Trim(std::string_view s) { return LTrim(RTrim(s)); }

std::string UCase(std::string_view s) {
  std::string out(s);
  std::transform(out.begin(), out.end(), out.begin(), Upper);
  return out;
}

std::string LCase(std::string_view s) {
  std::string out(s);
  std::transform(out.begin(), out.end(), out.begin(), Lower);
  return out;
}

std::string Left(std::string_view s, std::size_t n) { return std::string(s.substr(0, n)); }

std::string Right(std::string_view s, std::size_t n) {
  return std::string(n >= s.size() ? s : s.substr(s.size() - n));
}

std::string Mid(std::string_view s, std::size_t start, std::size_t length) {
  // Start 0 is a programming error in the report language too ("invalid procedure call").
  if (start < 1) throw std::out_of_range("Mid: the start position is 1 or more");
  if (start > s.size()) return "";
  return std::string(s.substr(start - 1, length));
}

std::string Space(std::size_t n) { return std::string(n, ' '); }

std::size_t InStr(std::string_view s, std::string_view find, std::size_t start, bool ignore_case) {
  if (start < 1) throw std::out_of_range("InStr: the start position is 1 or more");
  // Nothing is found in empty text, not even "". "" itself is found where the search starts,
  // so long as that is inside the text or just past its end.
  if (s.empty() || start > s.size() + 1) return 0;
  if (find.empty()) return start;
  std::size_t at = FindFrom(s, find, start - 1, ignore_case);
  return at == std::string_view::npos ? 0 : at + 1;
}

std::string Replace(std::string_view s, std::string_view find, std::string_view with,
                    bool ignore_case) {
  if (find.empty()) return std::string(s);
  std::string out;
  out.reserve(s.size());
  std::size_t from = 0;
  for (;;) {
    std::size_t at = FindFrom(s, find, from, ignore_case);
    if (at == std::string_view::npos) break;
    out.append(s.substr(from, at - from));
    out.append(with);
    from = at + find.size();
  }
  out.append(s.substr(from));
  return out;
}

std::vector<std::string> Split(std::string_view s, std::string_view delimiter) {
  std::vector<std::string> items;
  if (delimiter.empty()) {
    items.emplace_back(s);
    return items;
  }
  std::size_t from = 0;
  for (;;) {
    std::size_t at = s.find(delimiter, from);
    if (at == std::string_view::npos) break;
    items.emplace_back(s.substr(from, at - from));
    from = at + delimiter.size();
  }
  items.emplace_back(s.substr(from));
  return items;
}

std::string Join(const std::vector<std::string>& items, std::string_view delimiter) {
  std::string out;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i > 0) out.append(delimiter);
    out.append(items[i]);
  }
  return out;
}

int StrComp(std::string_view a, std::string_view b, bool ignore_case) {
  std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    unsigned char ca = static_cast<unsigned char>(ignore_case ? Lower(a[i]) : a[i]);
    unsigned char cb = static_cast<unsigned char>(ignore_case ? Lower(b[i]) : b[i]);
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && StrComp(a, b, true) == 0;
}

std::optional<double> ParseNumber(std::string_view s) {
  std::optional<decimal::DecimalNumber> n = decimal::Parse(s);
  if (!n) return std::nullopt;
  return decimal::ToDouble(*n);
}

bool IsNumeric(std::string_view s) { return decimal::Parse(s).has_value(); }

}  // namespace trellin
