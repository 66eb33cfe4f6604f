#include "platform/sql/Translate.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "platform/sql/Emitter.h"
#include "platform/sql/Lexer.h"
#include "platform/sql/Parser.h"

namespace trellin::sql {

namespace {

// The 1-based character position of a 1-based byte position in UTF-8 text: a name or a literal
// with accented letters before the fault doesn't shift the position the user is shown.
int CharacterPosition(std::string_view text, int byte_position) {
  int characters = 0;
  std::size_t end = std::min<std::size_t>(static_cast<std::size_t>(byte_position - 1), text.size());
  for (std::size_t i = 0; i < end; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) ++characters;
  }
  return characters + 1;
}

// Whole numbers and plain texts stand in a statement's shape as placeholders: "2146999" and the
// literal's place, three digits (a text keeps its quotes around it). They type as the literals
// they stand for, and translation writes a literal's content as it was written, so the
// statement's own literals fill the gaps; a text that already holds the prefix is never shaped.
constexpr std::string_view kPlaceholder = "2146999";
constexpr std::size_t kMostLiterals = 1000;
// The longest number lifted: nine digits always fit a Long.
constexpr std::size_t kLongestNumber = 9;

bool IsWordCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.';
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
// As the lexer reads a name: a letter, '_' or any byte of a multi-byte character, then digits.
bool StartsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool InName(char c) { return StartsName(c) || IsDigit(c); }

// The statement with its whole numbers and plain texts replaced by placeholders, and the
// literals as written (a text's content without its quotes).
struct Lifted {
  std::string skeleton;
  std::vector<std::string> literals;
  std::vector<bool> texts;  // by literal: a text, whose placeholder must stay in quotes
};

// Reads the statement's words, numbers, texts, names and dates where the lexer would, without
// making tokens: a statement sent once for each row pays for this pass and the gap filling only.
// A text is lifted when its content is not empty and holds no quote (which the translation
// doubles), nor '*' or '?' (which a Like pattern rewrites). Anything the lexer would refuse
// leaves nothing lifted: the translation then reports the fault.
Lifted LiftLiterals(std::string_view jet) {
  Lifted lifted;
  if (jet.find(kPlaceholder) != std::string_view::npos ||
      jet.find('\0') != std::string_view::npos) {
    return lifted;
  }
  std::size_t copied = 0;
  const auto lift = [&](std::size_t at, std::size_t length, std::string_view quote) {
    lifted.skeleton.append(jet.substr(copied, at - copied));
    char place[4];
    std::snprintf(place, sizeof place, "%03zu", lifted.literals.size());
    lifted.skeleton.append(quote).append(kPlaceholder).append(place).append(quote);
    lifted.literals.emplace_back(jet.substr(at + quote.size(), length - 2 * quote.size()));
    lifted.texts.push_back(!quote.empty());
    copied = at + length;
  };
  std::size_t pos = 0;
  const std::size_t size = jet.size();
  while (pos < size) {
    const char c = jet[pos];
    const std::size_t start = pos;
    if (StartsName(c)) {
      while (pos < size && InName(jet[pos])) ++pos;
    } else if (IsDigit(c) || (c == '.' && pos + 1 < size && IsDigit(jet[pos + 1]))) {
      bool whole = c != '.';
      while (pos < size && IsDigit(jet[pos])) ++pos;
      if (pos < size && jet[pos] == '.') {
        whole = false;
        ++pos;
        while (pos < size && IsDigit(jet[pos])) ++pos;
      }
      if (pos < size && (jet[pos] == 'e' || jet[pos] == 'E')) {
        const std::size_t mark = pos++;
        if (pos < size && (jet[pos] == '+' || jet[pos] == '-')) ++pos;
        if (pos < size && IsDigit(jet[pos])) {
          whole = false;
          while (pos < size && IsDigit(jet[pos])) ++pos;
        } else {
          pos = mark;
        }
      }
      if (pos < size && StartsName(jet[pos])) return {};  // "12abc": the lexer's fault
      if (whole && pos - start <= kLongestNumber && lifted.literals.size() < kMostLiterals) {
        lift(start, pos - start, "");
      }
    } else if (c == '[' || c == '#') {
      const std::size_t end = jet.find(c == '[' ? ']' : '#', pos + 1);
      if (end == std::string_view::npos) return {};
      pos = end + 1;
    } else if (c == '\'' || c == '"') {
      bool plain = true;
      ++pos;
      while (true) {
        if (pos >= size) return {};
        const char d = jet[pos++];
        if (d == c) {
          if (pos < size && jet[pos] == c) {
            plain = false;
            ++pos;
            continue;
          }
          break;
        }
        if (d == '\'' || d == '"' || d == '*' || d == '?') plain = false;
      }
      if (plain && pos - start > 2 && lifted.literals.size() < kMostLiterals) {
        lift(start, pos - start, jet.substr(start, 1));
      }
    } else {
      ++pos;
    }
  }
  lifted.skeleton.append(jet.substr(copied));
  return lifted;
}

}  // namespace

Translation Translate(std::string_view jet, const Catalog& catalog, Dialect dialect) {
  DialectScope scope(dialect);
  try {
    auto query = ParseStatement(jet);
    Emitter emitter(catalog);
    QueryText text = emitter.WriteQuery(*query, nullptr);
    return Translation{std::move(text.sql), std::move(text.columns)};
  } catch (const SqlError& error) {
    int position = CharacterPosition(jet, error.position());
    if (position == error.position()) throw;
    throw SqlError(error.problem(), position, error.token());
  }
}

std::shared_ptr<const Translator::Shape> Translator::ShapeOf(const std::string& skeleton,
                                                             const std::vector<bool>& texts) {
  {
    std::lock_guard lock(mutex_);
    auto it = shapes_.find(skeleton);
    if (it != shapes_.end()) return it->second;
  }
  // A shape that cannot be filled is kept too, so that its statements are not tried again.
  const auto keep = [&](std::shared_ptr<Shape> shape) {
    std::lock_guard lock(mutex_);
    if (shapes_.size() >= capacity_) shapes_.clear();
    return shapes_.emplace(skeleton, std::move(shape)).first->second;
  };
  Translation translation;
  try {
    translation = sql::Translate(skeleton, catalog_, dialect_);
  } catch (const SqlError&) {
    return keep(std::make_shared<Shape>());  // the text itself is translated, and reports its fault
  }
  // Each placeholder must come through as it went in, a whole token of its own, and a text's
  // still in quotes.
  auto shape = std::make_shared<Shape>();
  const std::string& text = translation.sql;
  const std::size_t count = texts.size();
  std::vector<bool> seen(count, false);
  std::size_t copied = 0;
  const std::size_t width = kPlaceholder.size() + 3;
  for (std::size_t at = text.find(kPlaceholder); at != std::string::npos;
       at = text.find(kPlaceholder, at + 1)) {
    const bool whole = (at == 0 || !IsWordCharacter(text[at - 1])) && at + width <= text.size() &&
                       (at + width == text.size() || !IsWordCharacter(text[at + width]));
    if (!whole) return keep(std::make_shared<Shape>());
    const std::size_t slot =
        static_cast<std::size_t>(std::stoi(text.substr(at + kPlaceholder.size(), 3)));
    if (slot >= count) return keep(std::make_shared<Shape>());
    const bool quoted =
        at > 0 && text[at - 1] == '\'' && at + width < text.size() && text[at + width] == '\'';
    if (texts[slot] && !quoted) return keep(std::make_shared<Shape>());
    seen[slot] = true;
    shape->pieces.push_back(text.substr(copied, at - copied));
    shape->slots.push_back(slot);
    copied = at + width;
  }
  shape->pieces.push_back(text.substr(copied));
  for (const ResultColumn& column : translation.columns) {
    if (column.name.find(kPlaceholder) != std::string::npos) return keep(std::make_shared<Shape>());
  }
  shape->usable = std::all_of(seen.begin(), seen.end(), [](bool s) { return s; });
  shape->columns = std::move(translation.columns);
  return keep(std::move(shape));
}

std::shared_ptr<const Translation> Translator::Translate(std::string_view jet) {
  std::string key(jet);
  {
    std::lock_guard lock(mutex_);
    auto it = cache_.find(key);
    if (it != cache_.end()) {
      recency_.splice(recency_.begin(), recency_, it->second.place);
      return it->second.translation;
    }
  }
  // A statement seen before with other literals: its own go into that one's gaps.
  Lifted lifted = LiftLiterals(jet);
  if (!lifted.literals.empty()) {
    std::shared_ptr<const Shape> shape = ShapeOf(lifted.skeleton, lifted.texts);
    if (shape->usable) {
      auto filled = std::make_shared<Translation>();
      for (std::size_t i = 0; i < shape->slots.size(); ++i) {
        filled->sql += shape->pieces[i];
        filled->sql += lifted.literals[shape->slots[i]];
      }
      filled->sql += shape->pieces.back();
      filled->columns = shape->columns;
      return filled;
    }
  }
  // Translated outside the lock: a slow statement doesn't hold up others. Two threads that
  // race on one text both translate it, and the first result stays.
  auto translation = std::make_shared<const Translation>(sql::Translate(jet, catalog_, dialect_));
  std::lock_guard lock(mutex_);
  auto [it, added] = cache_.try_emplace(key, Entry{std::move(translation), {}});
  if (!added) return it->second.translation;
  recency_.push_front(key);
  it->second.place = recency_.begin();
  if (cache_.size() > capacity_) {
    cache_.erase(recency_.back());
    recency_.pop_back();
  }
  return it->second.translation;
}

std::size_t Translator::CachedCount() const {
  std::lock_guard lock(mutex_);
  return cache_.size();
}

}  // namespace trellin::sql
