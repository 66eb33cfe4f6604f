#pragma once
// The details the master lists show beside a record's own columns: a bank's lines and ledger
// accounts, a branch's address and contact lines, an employee's contact, an asset category's
// rules. Read once for a run, then handed out by the record's code.

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/host/Database.h"
#include "core/host/Fields.h"

namespace trellin {

class AdminDetails {
 public:
  // Reads the details of every record of the list `key` from `database` (never null). Keys
  // whose rows need no details read nothing. Throws DatabaseError when the read fails.
  AdminDetails(const std::shared_ptr<Database>& database, const std::string& key);

  // Sets the detail fields of the record `code` (codes match without regard to case) in
  // `fields`, adding them where missing. A code without details gets empty texts, so that a row
  // never shows the details of the row before it.
  void Fill(const std::string& code, Fields& fields) const;

  // The details of one record, field name and text, in the order the list adds the fields.
  using Details = std::vector<std::pair<std::string, std::string>>;
  [[nodiscard]] const Details* Find(const std::string& code) const;

  // Texts joined by `separator`, leaving out the empty ones: the lines of an address, the parts
  // of an account.
  [[nodiscard]] static std::string JoinPresent(const std::vector<std::string>& parts,
                                               std::string_view separator);

 private:
  std::vector<std::string> names_;
  std::unordered_map<std::string, Details> by_code_;  // upper-cased code -> details
};

}  // namespace trellin
