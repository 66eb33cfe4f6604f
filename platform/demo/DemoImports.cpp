// The messages of the company's recent imports, a commit of the open invoice batch and a purge
// test: two import runs with errors and warnings, a commit run stopped by errors, and a purge
// test naming what would go and what keeps the rest. Fixed rows, no random draw, so nothing
// written before them moves.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/demo/DemoContext.h"
#include "platform/demo/DemoTable.h"

namespace trellin::demo {

namespace {

enum class Severity : std::int16_t { Error = 1, Warning = 2, Note = 3 };

struct Message {
  int line;
  const char* record_type;
  const char* record;  // "" the first customer, "~" the first supplier
  const char* field;
  const char* value;
  Severity severity;
  const char* text;
};

struct Run {
  const char* process;
  int days_ago;
  const char* time;
  bool open_batch;  // the run read the open invoice batch
  std::span<const Message> messages;
};

constexpr Message kFirstImport[] = {
    {3, "Invoice", "B7001", "CustomerId", "HARBOURX", Severity::Error,
     "Customer HARBOURX not on file"},
    {3, "Invoice", "B7001", "TaxCategory", "", Severity::Warning,
     "No tax category: the customer's default used"},
    {7, "Invoice", "B7002", "Date", "31/02", Severity::Error, "Date 31/02 is not a date"},
    {8, "Line", "B7002", "ItemId", "ROPE-99", Severity::Error, "Item ROPE-99 not on file"},
    {12, "Line", "B7004", "UnitPrice", "-12.50", Severity::Error, "Unit price below zero"},
    {15, "Line", "B7005", "Quantity", "1000", Severity::Warning,
     "Quantity 1000 is more than ten times the usual order"},
};
constexpr Message kSecondImport[] = {
    {2, "Bill", "S-4410", "SupplierId", "~", Severity::Warning,
     "Supplier reference S-4410 already entered on another bill"},
    {5, "Bill", "S-4411", "DatePayment", "2001-01-01", Severity::Error,
     "Due date before the bill's date"},
    {9, "Line", "S-4412", "AccountId", "9999", Severity::Error, "Account 9999 not on file"},
    {11, "Line", "S-4412", "TaxValue", "1.01", Severity::Warning,
     "Tax differs from the category's rate by more than a cent"},
    {14, "Bill", "S-4413", "Reference", "", Severity::Warning, "No supplier reference"},
    {20, "Summary", "", "", "", Severity::Note, "20 lines read, 3 bills made"},
};
constexpr Message kCommit[] = {
    {1, "Invoice", "B9001", "DateProcess", "", Severity::Error,
     "Processing date falls in a closed period"},
    {2, "Line", "B9002", "AccountId", "", Severity::Error, "Line has no sales account"},
    {3, "Line", "B9003", "TaxCategory", "", Severity::Error, "Line has no tax category"},
    {4, "Invoice", "B9004", "OtherPartyId", "", Severity::Warning, "Customer is on stop credit"},
};
constexpr Message kPurgeTest[] = {
    {1, "Customer", "", "", "", Severity::Note, "Would purge: no transactions since the cut-off"},
    {2, "Supplier", "~", "", "", Severity::Note, "Would purge: no transactions since the cut-off"},
    {3, "Transaction", "INV1001", "ValueRemaining", "125.00", Severity::Error,
     "Kept: not fully allocated"},
    {4, "Item", "ROPE-12", "", "", Severity::Error, "Kept: item on an open purchase order"},
    {5, "Item", "PAINT-01", "", "", Severity::Warning, "Kept: stock on hand at MAIN"},
};

constexpr Run kRuns[] = {
    {"Import", 9, "09:14:05", false, kFirstImport},
    {"Import", 2, "16:40:31", false, kSecondImport},
    {"Commit", 1, "11:05:12", true, kCommit},
    {"PurgeTest", 0, "08:30:00", false, kPurgeTest},
};

}  // namespace

void WriteImportMessages(DemoContext& ctx) {
  DemoTable messages(ctx.db, "ImportMessage",
                     {"ImportMessageId", "Process", "RunDate", "acBatchSId", "LineNo", "RecordType",
                      "RecordKey", "FieldName", "FieldValue", "Severity", "Message"});
  const std::string customer = ctx.parties[ctx.customers.front()].id;
  const std::string supplier = ctx.parties[ctx.suppliers.front()].id;
  auto named = [&](const char* text) -> std::string {
    const std::string_view t(text);
    if (t == "~") return supplier;
    return std::string(t);
  };
  std::int64_t id = 1;
  for (const Run& run : kRuns) {
    const std::string when = ctx.calendar.Present().AddDays(-run.days_ago).ToIso() + " " + run.time;
    for (const Message& m : run.messages) {
      const bool party_record = std::string_view(m.record_type) == "Customer";
      const std::string record = party_record && *m.record == 0 ? customer : named(m.record);
      messages.Insert({id++, run.process, when,
                       run.open_batch ? Cell(std::int64_t{1}) : Cell(Cell::Null{}), m.line,
                       m.record_type, OrNull(record), OrNull(m.field), OrNull(named(m.value)),
                       static_cast<int>(m.severity), m.text});
    }
  }
}

}  // namespace trellin::demo
