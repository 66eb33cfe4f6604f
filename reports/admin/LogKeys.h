#pragma once
// What differs between the six keys of the log, one row a key: the owners and their notes, the
// owners' select list, order and grouping choices, standard parameters and filters, the
// description's first words, the join, and the notes' queries in their full and short forms.

#include <array>
#include <string_view>

namespace trellin {

// A standard parameter by its row, with the name and caption that replace the row's ("" keeps
// it). Index -1 ends a key's list.
struct LogStandardParameter {
  int index = -1;
  const char* name = "";
  const char* caption = "";
};

// A list parameter that narrows the owners, and the owner's column it applies to.
struct LogOwnerFilter {
  const char* parameter = nullptr;  // nullptr ends a key's list
  const char* field = nullptr;
};

// An `OrderBy` choice and the owners' column it sorts on; the others sort on the owner's code.
struct LogSortChoice {
  const char* choice = nullptr;
  const char* field = nullptr;
};

// The kinds of user-defined field an owner has.
enum class LogOwnerKind { Party, Item, Job, Asset };

struct LogKey {
  const char* key;
  LogOwnerKind kind;
  const char* note_table;   // "OtherPartyLog"
  const char* owner_table;  // "OtherParty"
  const char* owner_key;    // "OtherPartyId"
  const char* party_flag;   // "IsSupplier", "IsCustomer", or "" for none
  const char* select;       // the owners' select list: Code, Name and a third column
  const char* third_field;  // that third column's name in the recordset ("" for none)
  const char* order_choices;
  const char* groupings;
  const char* description;  // "Other Parties ordered by "
  const char* from;         // " FROM owner INNER JOIN notes ON ..."
  const char* notes_full;   // up to the owner's opening quote
  const char* notes_short;
  std::array<LogStandardParameter, 9> standard;
  std::array<LogOwnerFilter, 8> owner_filters;
  std::array<LogSortChoice, 2> sort_choices;
};

// The row of `key` (compared exactly), or nullptr when it is not a key of the log.
[[nodiscard]] const LogKey* FindLogKey(std::string_view key);

// Whether the key's owners are other parties, with contacts on their notes.
[[nodiscard]] inline bool IsPartyLog(const LogKey& key) { return key.kind == LogOwnerKind::Party; }

}  // namespace trellin
