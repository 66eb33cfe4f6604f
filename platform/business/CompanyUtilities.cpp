#include "platform/business/CompanyUtilities.h"

#include <stdexcept>
#include <string>

namespace trellin::business {

std::string CompanyUtilities::GetNextToken(const std::string& text, std::int64_t& position,
                                           int delimiter_code) {
  if (delimiter_code < 1 || delimiter_code > 255) {
    throw std::invalid_argument("GetNextToken takes a delimiter code from 1 to 255, not " +
                                std::to_string(delimiter_code) + ".");
  }
  const auto length = static_cast<std::int64_t>(text.size());
  // Position Len + 1 is the empty token after a final delimiter; anything else outside the text
  // has no token at all.
  if (position < 1 || position > length + 1) {
    position = -1;
    return {};
  }
  const char delimiter = static_cast<char>(delimiter_code);
  std::string token;
  bool quoted = false;
  for (std::size_t i = static_cast<std::size_t>(position - 1); i < text.size(); ++i) {
    char c = text[i];
    if (c == '"') {
      if (quoted && i + 1 < text.size() && text[i + 1] == '"') {
        token += '"';
        ++i;
      } else {
        quoted = !quoted;
      }
      continue;
    }
    if (c == delimiter && !quoted) {
      position = static_cast<std::int64_t>(i) + 2;
      return token;
    }
    token += c;
  }
  position = -1;
  return token;
}

}  // namespace trellin::business
