#include "platform/business/RangeText.h"

#include <stdexcept>

#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

// A cursor over the whole text, so messages can quote it and say where the trouble is.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  [[nodiscard]] bool AtEnd() const { return pos_ >= text_.size(); }
  [[nodiscard]] char Peek() const { return text_[pos_]; }
  [[nodiscard]] bool LooksAt(std::string_view s) const { return text_.substr(pos_).starts_with(s); }
  void Skip(std::size_t n) { pos_ += n; }
  void SkipBlanks() {
    while (!AtEnd() && (Peek() == ' ' || Peek() == '\t')) ++pos_;
  }

  [[noreturn]] void Fail(const std::string& what) const {
    throw std::invalid_argument(what + " in the list \"" + std::string(text_) + "\".");
  }

  // One code, quoted or bare; nullopt when the item has nothing where a code could be.
  std::optional<std::string> ReadCode() {
    SkipBlanks();
    if (AtEnd() || Peek() == ',' || LooksAt(kRangeMark)) return std::nullopt;
    if (Peek() == '\'' || Peek() == '"') return ReadQuoted();
    std::size_t start = pos_;
    // A quote opens a quoted code only at its start; inside a bare code it is a letter, so
    // O'Neil needs no quoting.
    while (!AtEnd() && Peek() != ',' && !LooksAt(kRangeMark)) ++pos_;
    return Trim(text_.substr(start, pos_ - start));
  }

 private:
  std::string ReadQuoted() {
    char quote = Peek();
    std::size_t opened = pos_ + 1;
    ++pos_;
    std::string code;
    while (true) {
      if (AtEnd()) {
        Fail("The quote opened at position " + std::to_string(opened) + " is not closed");
      }
      char c = Peek();
      ++pos_;
      if (c != quote) {
        code += c;
        continue;
      }
      if (!AtEnd() && Peek() == quote) {
        code += quote;
        ++pos_;
        continue;
      }
      break;
    }
    SkipBlanks();
    if (!AtEnd() && Peek() != ',' && !LooksAt(kRangeMark)) {
      Fail("Unexpected text after the quoted code " + std::string(1, quote) + code +
           std::string(1, quote));
    }
    return code;
  }

  std::string_view text_;
  std::size_t pos_ = 0;
};

}  // namespace

std::vector<RangeItem> ParseRangeText(std::string_view text) {
  std::vector<RangeItem> items;
  Reader reader(text);
  while (true) {
    RangeItem item;
    item.From = reader.ReadCode();
    reader.SkipBlanks();
    if (!reader.AtEnd() && reader.LooksAt(kRangeMark)) {
      reader.Skip(kRangeMark.size());
      item.IsRange = true;
      item.Through = reader.ReadCode();
      reader.SkipBlanks();
      if (!reader.AtEnd() && reader.LooksAt(kRangeMark)) {
        reader.Fail("A range has more than one \"..\"");
      }
      if (!item.From && !item.Through) {
        reader.Fail("\"..\" needs a code on at least one side");
      }
    }
    if (item.From || item.IsRange) {
      items.push_back(std::move(item));
    }
    if (reader.AtEnd()) break;
    reader.Skip(1);  // the comma
  }
  return items;
}

}  // namespace trellin::business
