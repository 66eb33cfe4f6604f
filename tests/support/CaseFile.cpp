#include "tests/support/CaseFile.h"

#include <charconv>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "tests/support/TempFolder.h"
#include "tests/support/TestPaths.h"

namespace trellin::testing {

std::string CaseRow::Where() const { return file + ":" + std::to_string(line); }

namespace {

std::string Unescape(const std::string& field) {
  std::string text;
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (field[i] != '\\' || i + 1 == field.size()) {
      text += field[i];
      continue;
    }
    const char next = field[++i];
    text += next == 't' ? '\t' : next == 'n' ? '\n' : next;
  }
  return text;
}

}  // namespace

std::vector<CaseRow> ReadCases(std::string_view name, std::size_t columns, bool escapes) {
  std::istringstream text(ReadFile(TestDir(name)));
  std::vector<CaseRow> rows;
  std::string line;
  int number = 0;
  while (std::getline(text, line)) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    CaseRow row;
    row.line = number;
    row.file = std::string(name);
    std::size_t start = 0;
    while (true) {
      const std::size_t tab = line.find('\t', start);
      row.fields.push_back(line.substr(start, tab == std::string::npos ? tab : tab - start));
      if (tab == std::string::npos) break;
      start = tab + 1;
    }
    if (escapes) {
      for (std::string& field : row.fields) field = Unescape(field);
    }
    if (row.fields.size() < columns) {
      throw std::runtime_error(row.Where() + ": " + std::to_string(columns) + " fields wanted");
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<CaseRow> ReadCaseBlocks(std::string_view name, std::size_t columns) {
  std::vector<CaseRow> blocks;
  for (CaseRow& row : ReadCases(name, 1)) {
    if (!row.fields[0].empty()) {
      if (row.fields.size() < columns) {
        throw std::runtime_error(row.Where() + ": " + std::to_string(columns) + " fields wanted");
      }
      blocks.push_back(std::move(row));
    } else if (blocks.empty()) {
      throw std::runtime_error(row.Where() + ": a line of a case before any case");
    } else {
      std::string text = row.fields[1];
      for (std::size_t i = 2; i < row.fields.size(); ++i) text += "\t" + row.fields[i];
      blocks.back().lines.push_back(std::move(text));
    }
  }
  return blocks;
}

Variant ParseValue(std::string_view typed) {
  if (typed == "null") return Variant::Null();
  if (typed == "empty") return Variant();
  if (typed == "missing") return Variant::Missing();
  if (typed.size() >= 2 && typed[1] == ':') {
    const std::string_view text = typed.substr(2);
    switch (typed[0]) {
      case 's':
        return Variant(std::string(text));
      case 'd':
        return Variant(std::strtod(std::string(text).c_str(), nullptr));
      case 'l': {
        std::int64_t n = 0;
        auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), n);
        if (error == std::errc() && end == text.data() + text.size()) return Variant(n);
        break;
      }
      case 'm':
        if (auto money = Currency::Parse(text)) return Variant(*money);
        break;
      case 't':
        if (auto date = Date::FromIso(text)) return Variant(*date);
        break;
      case 'b':
        if (text == "true" || text == "false") return Variant(text == "true");
        break;
      default:
        break;
    }
  }
  throw std::invalid_argument("not a typed test value: '" + std::string(typed) + "'");
}

}  // namespace trellin::testing
