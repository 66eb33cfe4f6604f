// trellin sql: runs Jet-dialect SQL on the company file, read only, and prints the rows; or shows
// the SQLite text it becomes. For checking a report's figures and for support.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "apps/trellin/Company.h"
#include "platform/sql/Translate.h"

namespace trellin::cli {

namespace {

const std::vector<OptionSpec> kSqlOptions = {
    {"db", 0, true, false, "FILE|URL",
     "company file, or postgresql://user@host/dbname (default: $TRELLIN_DB, else the demo "
     "company)"},
    {"csv", 0, false, false, "", "print the rows as CSV instead of a table"},
    {"translate", 't', false, false, "",
     "print the SQLite text the statement becomes, and its column types"},
    {"help", 'h', false, false, "", "show this help"},
};

// Values as a person checking figures wants them: money and numbers plain, dates ISO.
std::string CellText(const Variant& value) {
  if (value.IsNull()) return "NULL";
  if (const Date* date = value.Get<Date>()) return date->ToIso();
  if (const Currency* money = value.Get<Currency>()) return money->ToString();
  return value.Text();
}

std::string CsvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string out = "\"";
  for (char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  return out + "\"";
}

bool IsNumericField(FieldType type) {
  return type == FieldType::Long || type == FieldType::Double || type == FieldType::Currency;
}

void PrintTable(Recordset& rs) {
  int columns = rs.FieldCount();
  std::vector<std::vector<std::string>> rows;
  std::vector<std::size_t> widths(columns);
  for (int c = 0; c < columns; ++c) widths[c] = rs.Field(c).name.size();
  for (; !rs.Eof(); rs.MoveNext()) {
    std::vector<std::string> row;
    for (int c = 0; c < columns; ++c) {
      row.push_back(CellText(rs.Value(c)));
      widths[c] = std::max(widths[c], row.back().size());
    }
    rows.push_back(std::move(row));
  }
  auto print_row = [&](const std::vector<std::string>& cells, bool heading) {
    std::string line;
    for (int c = 0; c < columns; ++c) {
      std::string pad(widths[c] - cells[c].size(), ' ');
      bool right = !heading && IsNumericField(rs.Field(c).type);
      line += right ? pad + cells[c] : cells[c] + (c + 1 < columns ? pad : "");
      if (c + 1 < columns) line += "  ";
    }
    std::printf("%s\n", line.c_str());
  };
  std::vector<std::string> heading, rule;
  for (int c = 0; c < columns; ++c) {
    heading.push_back(rs.Field(c).name);
    rule.push_back(std::string(widths[c], '-'));
  }
  print_row(heading, true);
  print_row(rule, true);
  for (const auto& row : rows) print_row(row, false);
  std::fprintf(stderr, "(%zu row%s)\n", rows.size(), rows.size() == 1 ? "" : "s");
}

void PrintCsv(Recordset& rs) {
  int columns = rs.FieldCount();
  std::string line;
  for (int c = 0; c < columns; ++c) line += (c ? "," : "") + CsvField(rs.Field(c).name);
  std::printf("%s\n", line.c_str());
  for (; !rs.Eof(); rs.MoveNext()) {
    line.clear();
    for (int c = 0; c < columns; ++c) {
      const Variant& v = rs.Value(c);
      line += (c ? "," : "") + (v.IsNull() ? std::string() : CsvField(CellText(v)));
    }
    std::printf("%s\n", line.c_str());
  }
}

}  // namespace

int SqlCommand(const Args& args, const Context&) {
  ParsedArgs parsed = Parse(args, kSqlOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin sql [--db FILE|URL] [--csv | --translate] \"SELECT ...\"\n\n"
        "Runs one Jet-dialect SELECT on the company file, read only, and prints its rows.\n\n%s",
        OptionsHelp(kSqlOptions).c_str());
    return kExitOk;
  }
  if (parsed.Positional().size() != 1)
    throw UsageError("sql takes exactly one statement (quote it)");
  const std::string& statement = parsed.Positional()[0];
  auto database = OpenCompany(parsed.Value("db"));
  // The statement is the user's: text that does not translate is an input error. What fails
  // once it runs is the company file's.
  sql::Translation translation;
  try {
    translation = sql::Translate(statement, database->Catalog(), database->SqlDialect());
  } catch (const sql::SqlError& e) {
    throw Error(ErrorKind::Input, e.what());
  }
  if (parsed.Has("translate")) {
    std::printf("%s\n", translation.sql.c_str());
    for (const auto& column : translation.columns) {
      std::fprintf(stderr, "-- %s: %s\n", column.name.c_str(),
                   std::string(sql::SemTypeName(column.type)).c_str());
    }
    return kExitOk;
  }
  std::shared_ptr<Recordset> rs = database->Query(statement);
  if (parsed.Has("csv")) {
    PrintCsv(*rs);
  } else {
    PrintTable(*rs);
  }
  return kExitOk;
}

}  // namespace trellin::cli
