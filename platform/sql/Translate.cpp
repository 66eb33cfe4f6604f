#include "platform/sql/Translate.h"

#include "platform/sql/Emitter.h"
#include "platform/sql/Parser.h"

namespace trellin::sql {

Translation Translate(std::string_view jet, const Catalog& catalog) {
  auto query = ParseStatement(jet);
  Emitter emitter(catalog);
  QueryText text = emitter.WriteQuery(*query, nullptr);
  return Translation{std::move(text.sql), std::move(text.columns)};
}

std::shared_ptr<const Translation> Translator::Translate(std::string_view jet) {
  {
    std::lock_guard lock(mutex_);
    auto it = cache_.find(std::string(jet));
    if (it != cache_.end()) return it->second;
  }
  // Translated outside the lock: a slow statement doesn't hold up others. Two threads that
  // race on one text both translate it, and the first result stays.
  auto translation = std::make_shared<const Translation>(sql::Translate(jet, catalog_));
  std::lock_guard lock(mutex_);
  return cache_.try_emplace(std::string(jet), std::move(translation)).first->second;
}

std::size_t Translator::CachedCount() const {
  std::lock_guard lock(mutex_);
  return cache_.size();
}

}  // namespace trellin::sql
