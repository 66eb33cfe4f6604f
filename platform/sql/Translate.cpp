#include "platform/sql/Translate.h"

#include <algorithm>

#include "platform/sql/Emitter.h"
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

}  // namespace

Translation Translate(std::string_view jet, const Catalog& catalog) {
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
  // Translated outside the lock: a slow statement doesn't hold up others. Two threads that
  // race on one text both translate it, and the first result stays.
  auto translation = std::make_shared<const Translation>(sql::Translate(jet, catalog_));
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
