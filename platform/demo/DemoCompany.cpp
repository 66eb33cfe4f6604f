#include "platform/demo/DemoCompany.h"

#include <stdexcept>

#include "platform/data/CompanyFile.h"
#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoContext.h"

namespace trellin::demo {

namespace {

constexpr int kMaxScale = 200;

// The schema's indexes, to drop before the bulk insert and build again after it: building an
// index once over sorted keys is much faster than keeping it up to date row by row.
std::vector<std::string> DropIndexes(sqlite3* db) {
  std::vector<std::string> created;
  sqlite3_stmt* stmt = nullptr;
  sqlite3_prepare_v2(db,
                     "SELECT name, sql FROM sqlite_master WHERE type='index' AND sql IS NOT NULL "
                     "ORDER BY name",
                     -1, &stmt, nullptr);
  std::vector<std::string> names;
  while (sqlite3_step(stmt) == SQLITE_ROW) {
    names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
    created.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 1)));
  }
  sqlite3_finalize(stmt);
  for (const std::string& name : names) Execute(db, "DROP INDEX \"" + name + "\"", "drop index");
  return created;
}

// A receipt by cheque carries the cheque's number in CardNumber, as a deposit slip lists it. The
// number follows from the receipt's id, not from a draw, so nothing else in the company moves.
void WriteChequeNumbers(sqlite3* db) {
  Execute(db,
          "UPDATE Transactions SET CardNumber = printf('%06d', 100000 + TransactionId * 7919 % "
          "900000) WHERE Type = 35 AND PayType = 'Q' AND CardNumber IS NULL",
          "cheque numbers");
}

// Each bank's statements, a page a month: a page closes at the running sum of the bank's own lines
// reconciled on it and on the pages before, and is dated on its month's last day. Every page but
// the latest is locked. On the latest page of the cheque account, the page still being worked,
// the bank charged a fee of 15.00 that is not entered yet: its variance is 15.00.
void WriteBankStatements(sqlite3* db, Date first_day) {
  Execute(db,
          "INSERT INTO glBankStatement (BankId, StmtPage, StatementDate, ClosingBalance, Locked) "
          "SELECT BankId, StmtPage, date('" +
              first_day.ToIso() +
              "', 'start of month', '+' || (StmtPage - 1) || ' months', '+1 month', '-1 day'), "
              "sum(Moved) OVER (PARTITION BY BankId ORDER BY StmtPage), 1 FROM (SELECT "
              "b.BankId, b.StmtPage, sum(t.Value) AS Moved FROM glBankTransaction b JOIN "
              "glTransaction t ON t.glBankTransactionId = b.glBankTransactionId AND "
              "t.glBankTransactionSequence = 0 WHERE b.StmtPage IS NOT NULL GROUP BY b.BankId, "
              "b.StmtPage) ORDER BY BankId, StmtPage",
          "bank statements");
  const std::string latest =
      "StmtPage = (SELECT max(s.StmtPage) FROM glBankStatement s WHERE s.BankId = "
      "glBankStatement.BankId)";
  Execute(db, "UPDATE glBankStatement SET Locked = 0 WHERE " + latest, "statements in progress");
  Execute(db,
          "UPDATE glBankStatement SET ClosingBalance = ClosingBalance - 150000 WHERE BankId = "
          "'CHQ' AND " +
              latest,
          "unentered bank fee");
}

}  // namespace

DemoContext::DemoContext(sqlite3* handle, const DemoOptions& opts)
    : db(handle),
      options(opts),
      facts(FactsOf(opts.country)),
      calendar(opts.country, opts.present),
      random(opts.seed) {}

DemoSummary BuildDemoCompany(const DemoOptions& options) {
  if (options.path.empty()) {
    throw std::invalid_argument("the demo company needs a file name to write to");
  }
  if (options.scale < 1 || options.scale > kMaxScale) {
    throw std::invalid_argument("the demo company's scale must be from 1 to " +
                                std::to_string(kMaxScale) + ", not " +
                                std::to_string(options.scale));
  }
  (void)FactsOf(options.country);  // an unknown country fails before any file is made
  auto file = data::CreateCompanyFile(options.path);
  sqlite3* db = file->Handle();
  // The file is private until it is renamed into place, so the build needs no journal and no
  // waiting on the disk; it goes back to WAL, as the application keeps it, at the end.
  Execute(db, "PRAGMA journal_mode=OFF", "journal mode");
  Execute(db, "PRAGMA synchronous=OFF", "synchronous");
  Execute(db, "PRAGMA cache_size=-65536", "cache size");
  const std::vector<std::string> indexes = DropIndexes(db);
  Execute(db, "BEGIN", "begin");
  DemoSummary summary;
  {
    DemoContext ctx(db, options);
    ctx.Progress(0.0);
    WriteSettings(ctx);
    WriteCodeTables(ctx);
    WriteChart(ctx);
    WriteParties(ctx);
    WriteItems(ctx);
    WriteTrading(ctx);
    WriteAssets(ctx);
    WriteControlDifferences(ctx);
    // Closing entries last, once every movement of every closed year is in.
    const auto& years = ctx.calendar.Years();
    for (std::size_t y = 0; y + 1 < years.size(); ++y) {
      if (years[y].end < ctx.calendar.Present()) {
        ctx.ledger->CloseYear(static_cast<int>(y), account::kRetainedEarnings);
      }
    }
    // The bulk of the rows is in. The extras below pick their rows by correlated queries over
    // documents and lines, so the schema's indexes come back first: the few rows the extras add
    // then cost little to index, and a large company's extras no longer read every line for
    // every document.
    for (const std::string& sql : indexes) Execute(db, sql, "create index");
    WriteBudgets(ctx);
    WriteOpenWork(ctx);
    WriteStockExtras(ctx);
    WriteLogs(ctx);
    WriteImportMessages(ctx);
    WriteBusyAccount(ctx);
    WriteJobExtras(ctx);
    WriteChequeRuns(ctx);
    WriteTaxExtras(ctx);
    WriteDocumentExtras(ctx);
    WriteLabelAddresses(ctx);
    ctx.Progress(0.9);
    summary = ctx.summary;
    summary.present = ctx.calendar.Present();
    summary.first_day = ctx.calendar.FirstDay();
    summary.financial_years = static_cast<int>(years.size());
    summary.gl_lines = ctx.ledger->Lines();
  }
  WriteChequeNumbers(db);
  WriteBankStatements(db, summary.first_day);
  Execute(db, "COMMIT", "commit");
  Execute(db, "ANALYZE", "analyze");
  Execute(db, "PRAGMA journal_mode=WAL", "journal mode");
  file->Commit();
  if (options.progress) options.progress(1.0);
  return summary;
}

}  // namespace trellin::demo
