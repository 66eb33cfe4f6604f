#include "platform/demo/DemoLedger.h"

#include <stdexcept>

namespace trellin::demo {

DemoLedger::DemoLedger(sqlite3* db, const DemoCalendar& calendar, DemoRandom& random,
                       const std::vector<std::pair<std::string, int>>& accounts)
    : calendar_(calendar),
      random_(random),
      accounts_(accounts),
      months_(accounts.size(), std::vector<std::int64_t>(calendar.Months() + 1, 0)),
      balances_(accounts.size(), 0),
      lines_(db, "glTransaction",
             {"AccountId", "Date", "Value", "TaxValue", "BranchId", "DeptId", "Type", "glSourceId",
              "Reference", "Comment", "TaxCategory", "TaxIO", "TaxPeriodId", "CashTaxCategory",
              "CashTaxValue", "glBankTransactionId", "glBankTransactionSequence", "TransactionId"}),
      bank_entries_(db, "glBankTransaction",
                    {"glBankTransactionId", "BankId", "Date", "OtherPartyId", "Reference",
                     "Comment", "StmtPage", "Presented"}) {
  for (std::size_t i = 0; i < accounts_.size(); ++i) {
    index_.emplace(accounts_[i].first, static_cast<int>(i));
  }
}

int DemoLedger::IndexOf(std::string_view account) const {
  auto found = index_.find(std::string(account));
  if (found == index_.end()) {
    throw std::logic_error("demo company: posting to '" + std::string(account) +
                           "', which is not a posting account");
  }
  return found->second;
}

void DemoLedger::Post(const Journal& journal) { WriteLines(journal, 0); }

void DemoLedger::WriteLines(const Journal& journal, std::int64_t bank_entry) {
  std::int64_t sum = 0;
  for (const GlLine& line : journal.lines) sum += line.value;
  if (sum != 0) {
    throw std::logic_error("demo company: journal '" + journal.reference + "' of " +
                           journal.date.ToIso() + " is out of balance by " + std::to_string(sum));
  }
  const int month = calendar_.MonthIndex(journal.date);
  int sequence = 0;
  for (const GlLine& line : journal.lines) {
    const int index = IndexOf(line.account);
    balances_[index] += line.value;
    if (journal.type == 0 && month >= 0 && month < static_cast<int>(months_[index].size())) {
      months_[index][month] += line.value;
    }
    const bool taxed = !line.tax_category.empty();
    // A line counts in a filed return once the period holding its date is filed.
    const int period = taxed ? calendar_.FiledTaxPeriod(journal.date) : 0;
    lines_.Insert(
        {line.account, journal.date, line.value, line.tax,
         OrNull(line.branch.empty() ? journal.branch : line.branch),
         OrNull(line.dept.empty() ? journal.dept : line.dept),
         journal.type == 0 ? Cell(Cell::Null{}) : Cell(journal.type), journal.source,
         OrNull(journal.reference), OrNull(journal.comment), OrNull(line.tax_category),
         OrNull(line.tax_io), period == 0 ? Cell(Cell::Null{}) : Cell(period),
         OrNull(line.tax_category), line.tax,
         bank_entry == 0 ? Cell(Cell::Null{}) : Cell(bank_entry),
         bank_entry == 0 ? Cell(Cell::Null{}) : Cell(sequence),
         journal.transaction_id == 0 ? Cell(Cell::Null{}) : Cell(journal.transaction_id)});
    ++sequence;
  }
}

std::int64_t DemoLedger::PostBank(const BankEntry& entry, Journal journal) {
  // Statements come monthly and reach the bank about two weeks behind: what is older than that
  // is reconciled on the page of its month, save the odd cheque that was never presented.
  const bool withdrawal = !journal.lines.empty() && journal.lines.front().value < 0;
  const bool stale = withdrawal && random_.Chance(0.004);
  const Date presented =
      entry.date.AddDays(withdrawal ? static_cast<int>(random_.Between(1, 6)) : 0);
  return WriteBank(entry, std::move(journal), presented, stale, withdrawal);
}

std::int64_t DemoLedger::PostBankPresented(const BankEntry& entry, Journal journal,
                                           Date presented) {
  const bool withdrawal = !journal.lines.empty() && journal.lines.front().value < 0;
  return WriteBank(entry, std::move(journal), presented, false, withdrawal);
}

std::int64_t DemoLedger::WriteBank(const BankEntry& entry, Journal journal, Date presented,
                                   bool stale, bool withdrawal) {
  const std::int64_t id = next_bank_entry_++;
  const Date present = calendar_.Present();
  const bool reconciled = !stale && presented.Serial() <= present.Serial() - 14;
  bank_entries_.Insert({id, entry.bank, entry.date, OrNull(entry.party), OrNull(entry.reference),
                        OrNull(entry.comment),
                        reconciled ? Cell(calendar_.MonthIndex(presented) + 1) : Cell(Cell::Null{}),
                        withdrawal && reconciled ? Cell(presented) : Cell(Cell::Null{})});
  WriteLines(journal, id);
  return id;
}

void DemoLedger::CloseYear(int year_index, std::string_view retained) {
  const YearSpan& year = calendar_.Years()[static_cast<std::size_t>(year_index)];
  Journal closing{Date::FromYmdHms(year.end.Year(), year.end.Month(), year.end.Day(), 23, 59, 59),
                  "GL", "YE" + year.name, "Year end closing " + year.name, 1};
  const int first = calendar_.MonthIndex(year.start);
  const int last = calendar_.MonthIndex(year.end);
  std::int64_t total = 0;
  for (std::size_t i = 0; i < accounts_.size(); ++i) {
    if (accounts_[i].second > 6) continue;
    std::int64_t movement = 0;
    for (int m = first; m <= last && m < static_cast<int>(months_[i].size()); ++m) {
      movement += months_[i][m];
    }
    if (movement == 0) continue;
    closing.lines.push_back({accounts_[i].first, -movement});
    total += movement;
  }
  closing.lines.push_back({retained, total});
  Post(closing);
}

std::int64_t DemoLedger::MonthMovement(std::string_view account, int month) const {
  const auto& months = months_[static_cast<std::size_t>(IndexOf(account))];
  return month >= 0 && month < static_cast<int>(months.size()) ? months[month] : 0;
}

std::int64_t DemoLedger::Balance(std::string_view account) const {
  return balances_[static_cast<std::size_t>(IndexOf(account))];
}

}  // namespace trellin::demo
