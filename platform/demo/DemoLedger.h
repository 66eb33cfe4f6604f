#pragma once
// The general ledger as the accounts application posts it: every journal balanced, bank entries
// with their lines, the tax period of each filed line, and running movements for the year-end
// closing and the budgets.

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/demo/DemoCalendar.h"
#include "platform/demo/DemoRandom.h"
#include "platform/demo/DemoTable.h"

namespace trellin::demo {

struct GlLine {
  std::string_view account;
  std::int64_t value = 0;         // debit positive, ten-thousandths
  std::int64_t tax = 0;           // the tax carried beside the value
  std::string_view tax_category;  // empty: not a taxable line
  std::string_view tax_io;        // "O" output (sales) or "I" input (purchases)
  std::string_view branch;        // empty: the journal's
  std::string_view dept;          // empty: the journal's
};

struct Journal {
  Date date;
  std::string_view source;  // glSourceId
  std::string reference;
  std::string comment;
  int type = 0;                     // 0 ordinary movement (Null), 1 year-end closing
  std::int64_t transaction_id = 0;  // the sub-ledger document posted, 0 for none
  std::string_view branch;
  std::string_view dept;
  std::vector<GlLine> lines;
};

struct BankEntry {
  std::string_view bank;  // BankId
  Date date;
  std::string_view party;  // OtherPartyId or empty
  std::string reference;
  std::string comment;
};

class DemoLedger {
 public:
  // `accounts` are the posting accounts' codes with their class (Type).
  DemoLedger(sqlite3* db, const DemoCalendar& calendar, DemoRandom& random,
             const std::vector<std::pair<std::string, int>>& accounts);

  // Writes the journal's lines. Throws std::logic_error when they do not sum to zero or name an
  // account that is not a posting account: a generator fault, never the user's.
  void Post(const Journal& journal);
  // As PostBank, for an entry the bank presented on `presented`, never stale; draws nothing from
  // the random source, so what is written after it stays as it was.
  std::int64_t PostBankPresented(const BankEntry& entry, Journal journal, Date presented);
  // Writes the bank entry and its journal; the journal's first line must be the bank's own
  // account, which becomes sequence 0. Returns the glBankTransactionId.
  std::int64_t PostBank(const BankEntry& entry, Journal journal);
  // Adds the closing entries of year `year_index`: every profit and loss and appropriation
  // account's movement for the year moved to `retained`, dated the year's last day just before
  // midnight and typed 1, so that only a date with its time sees them.
  void CloseYear(int year_index, std::string_view retained);

  // Ordinary movement of an account in a month (month index from the first day).
  [[nodiscard]] std::int64_t MonthMovement(std::string_view account, int month) const;
  [[nodiscard]] std::int64_t Balance(std::string_view account) const;
  [[nodiscard]] std::int64_t Lines() const { return lines_.Rows(); }
  [[nodiscard]] const std::vector<std::pair<std::string, int>>& Accounts() const {
    return accounts_;
  }

 private:
  int IndexOf(std::string_view account) const;
  void WriteLines(const Journal& journal, std::int64_t bank_entry);
  std::int64_t WriteBank(const BankEntry& entry, Journal journal, Date presented, bool stale,
                         bool withdrawal);

  const DemoCalendar& calendar_;
  DemoRandom& random_;
  std::vector<std::pair<std::string, int>> accounts_;
  std::unordered_map<std::string, int> index_;
  std::vector<std::vector<std::int64_t>> months_;  // [account][month], ordinary movement
  std::vector<std::int64_t> balances_;
  DemoTable lines_;
  DemoTable bank_entries_;
  std::int64_t next_bank_entry_ = 1;
};

}  // namespace trellin::demo
