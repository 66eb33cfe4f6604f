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

// Whole numbers stand in a statement's shape as placeholders: "2146999" and the number's place,
// three digits. They are whole numbers a Long holds, as the numbers they stand for, so they type
// alike; a text that already holds the prefix is never shaped.
constexpr std::string_view kPlaceholder = "2146999";
constexpr std::size_t kMostNumbers = 1000;
// The longest number lifted: nine digits always fit a Long.
constexpr std::size_t kLongestNumber = 9;

bool IsWordCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.';
}

// The statement with its whole numbers replaced by placeholders, and the numbers as written.
struct Lifted {
  std::string skeleton;
  std::vector<std::string> numbers;
};

Lifted LiftWholeNumbers(std::string_view jet) {
  Lifted lifted;
  if (jet.find(kPlaceholder) != std::string_view::npos) return lifted;
  std::vector<Token> tokens;
  try {
    tokens = Tokenize(jet);
  } catch (const SqlError&) {
    return lifted;  // translation reports the fault
  }
  std::size_t copied = 0;
  for (const Token& token : tokens) {
    if (token.kind != TokenKind::kNumber || lifted.numbers.size() == kMostNumbers) continue;
    const std::string_view digits = token.source;
    if (digits.size() > kLongestNumber ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
      continue;
    }
    const std::size_t at = static_cast<std::size_t>(token.position - 1);
    lifted.skeleton.append(jet.substr(copied, at - copied));
    char place[4];
    std::snprintf(place, sizeof place, "%03zu", lifted.numbers.size());
    lifted.skeleton.append(kPlaceholder).append(place);
    lifted.numbers.emplace_back(digits);
    copied = at + digits.size();
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
                                                             std::size_t numbers) {
  {
    std::lock_guard lock(mutex_);
    auto it = shapes_.find(skeleton);
    if (it != shapes_.end()) return it->second;
  }
  auto shape = std::make_shared<Shape>();
  Translation translation;
  try {
    translation = sql::Translate(skeleton, catalog_, dialect_);
  } catch (const SqlError&) {
    return shape;  // not usable: the text itself is translated, and reports its own fault
  }
  // Each placeholder must come through as it went in, a whole token of its own.
  const std::string& text = translation.sql;
  std::vector<bool> seen(numbers, false);
  std::size_t copied = 0;
  const std::size_t width = kPlaceholder.size() + 3;
  for (std::size_t at = text.find(kPlaceholder); at != std::string::npos;
       at = text.find(kPlaceholder, at + 1)) {
    const bool whole = (at == 0 || !IsWordCharacter(text[at - 1])) && at + width <= text.size() &&
                       (at + width == text.size() || !IsWordCharacter(text[at + width]));
    if (!whole) return shape;
    const std::size_t slot =
        static_cast<std::size_t>(std::stoi(text.substr(at + kPlaceholder.size(), 3)));
    if (slot >= numbers) return shape;
    seen[slot] = true;
    shape->pieces.push_back(text.substr(copied, at - copied));
    shape->slots.push_back(slot);
    copied = at + width;
  }
  shape->pieces.push_back(text.substr(copied));
  for (const ResultColumn& column : translation.columns) {
    if (column.name.find(kPlaceholder) != std::string::npos) return std::make_shared<Shape>();
  }
  shape->usable = std::all_of(seen.begin(), seen.end(), [](bool s) { return s; });
  shape->columns = std::move(translation.columns);
  std::lock_guard lock(mutex_);
  if (shapes_.size() >= capacity_) shapes_.clear();
  shapes_.emplace(skeleton, shape);
  return shape;
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
  // A statement seen before with other whole numbers: its numbers go into that one's gaps.
  Lifted lifted = LiftWholeNumbers(jet);
  if (!lifted.numbers.empty()) {
    std::shared_ptr<const Shape> shape = ShapeOf(lifted.skeleton, lifted.numbers.size());
    if (shape->usable) {
      auto filled = std::make_shared<Translation>();
      for (std::size_t i = 0; i < shape->slots.size(); ++i) {
        filled->sql += shape->pieces[i];
        filled->sql += lifted.numbers[shape->slots[i]];
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
