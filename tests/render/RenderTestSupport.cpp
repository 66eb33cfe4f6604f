#include "RenderTestSupport.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace trellin::render::testing {

std::string RunCommand(const std::string& command, int* status) {
  std::FILE* pipe = ::popen((command + " 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  std::string out;
  std::array<char, 4096> buffer;
  std::size_t n;
  while ((n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0) out.append(buffer.data(), n);
  const int result = ::pclose(pipe);
  if (status != nullptr) *status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
  return out;
}

engine::TextRun Text(float left, float top, float width, std::string text, engine::Align align,
                     engine::FontSpec font) {
  engine::TextRun run;
  run.left = left;
  run.top = top;
  run.width = width;
  run.height = font.size * 23;  // the line height of Liberation Sans: 1.15 em
  run.text = std::move(text);
  run.font = std::move(font);
  run.align = align;
  return run;
}

engine::LineItem Rule(float x1, float x2, float y, float thickness) {
  return engine::LineItem{x1, y, x2, y, thickness, {}};
}

engine::RectItem Shade(float left, float top, float width, float height, engine::Color fill) {
  engine::RectItem rect;
  rect.left = left;
  rect.top = top;
  rect.width = width;
  rect.height = height;
  rect.filled = true;
  rect.fill = fill;
  return rect;
}

engine::Page LetterPage(int number) {
  engine::Page page;
  page.number = number;
  page.width = 12240;
  page.height = 15840;
  return page;
}

namespace {

struct Column {
  const char* caption;
  const char* name;
  float left, width;
  engine::Align align;
};

constexpr Column kColumns[] = {
    {"Date", "txtDate", 1440, 1000, engine::Align::Left},
    {"Reference", "txtReference", 2500, 1100, engine::Align::Left},
    {"Description", "txtDescription", 3650, 2900, engine::Align::Left},
    {"Debit", "txtDebit", 6600, 1350, engine::Align::Right},
    {"Credit", "txtCredit", 8000, 1350, engine::Align::Right},
    {"Balance", "txtBalance", 9400, 1400, engine::Align::Right},
};

}  // namespace

engine::DocumentInfo LetterDocument(std::string title) {
  engine::DocumentInfo info;
  info.title = std::move(title);
  info.caption = info.title;
  info.page_width = 12240;
  info.page_height = 15840;
  // The sample ledger's table, as its report would declare it.
  for (const Column& c : kColumns) {
    info.columns.push_back({c.caption, {c.name}, c.left, c.width});
  }
  return info;
}

namespace {

std::string Amount(std::int64_t cents) {
  std::string digits = std::to_string(std::llabs(cents) / 100);
  for (int i = static_cast<int>(digits.size()) - 3; i > 0; i -= 3) digits.insert(i, ",");
  const std::int64_t fraction = std::llabs(cents) % 100;
  return (cents < 0 ? "-" : "") + digits + (fraction < 10 ? ".0" : ".") + std::to_string(fraction);
}

engine::DataCell Cell(std::string name, float left, float width, Variant value, std::string text,
                      std::string format = "") {
  return engine::DataCell{std::move(name),  left, width, std::move(value), std::move(text),
                          std::move(format)};
}

engine::FontSpec Font(float size, bool bold = false, bool italic = false) {
  engine::FontSpec font;
  font.size = size;
  font.bold = bold;
  font.italic = italic;
  return font;
}

constexpr const char* kDescriptions[] = {"Invoice - timber and fixings", "Payment, thank you",
                                         "Credit note: returned \"seconds\"", "Invoice - paint",
                                         "Freight & handling"};

}  // namespace

engine::Page SampleLedgerPage(int number, int detail_rows, int first_row) {
  engine::Page page = LetterPage(number);
  const engine::Color band{0xE8, 0xEC, 0xF2};
  auto& items = page.items;

  // Page header.
  items.push_back(
      Text(1440, 720, 4000, "Harbour Supplies Ltd", engine::Align::Left, Font(10, true)));
  items.push_back(Text(1440, 720, 9360, "Customer Ledger", engine::Align::Center, Font(14, true)));
  items.push_back(
      Text(7800, 720, 3000, "Page " + std::to_string(number), engine::Align::Right, Font(9)));
  items.push_back(Text(1440, 1080, 9360, "For the period 1/07/2024 to 30/06/2025",
                       engine::Align::Center, Font(9, false, true)));
  engine::DataRow header{engine::RowKind::PageHeader, 0, "PageHeader", {}, {}};
  for (const Column& c : kColumns) {
    items.push_back(Text(c.left, 1500, c.width, c.caption, c.align, Font(9, true)));
    header.labels.push_back(c.caption);
  }
  items.push_back(Rule(1440, 10800, 1740, 20));
  page.rows.push_back(header);

  // Group header.
  float top = 1860;
  items.push_back(
      Text(1440, top, 9360, "ACME01   Acme Traders Ltd", engine::Align::Left, Font(10, true)));
  page.rows.push_back({engine::RowKind::GroupHeader,
                       1,
                       "GroupHeader1",
                       {Cell("ghCode", 1440, 1000, "ACME01", "ACME01"),
                        Cell("ghName", 2500, 4000, "Acme Traders Ltd", "Acme Traders Ltd")},
                       {}});
  top += 300;

  // Detail rows: alternate rows shaded, as the detail section flips its back style.
  std::mt19937 random(static_cast<unsigned>(1234 + first_row));
  std::int64_t balance = 0, debits = 0, credits = 0;
  for (int i = 0; i < detail_rows; ++i) {
    const int row_number = first_row + i;
    const bool credit = row_number % 3 == 1;
    const std::int64_t cents = 1000 + static_cast<std::int64_t>(random() % 250000);
    (credit ? credits : debits) += cents;
    balance += credit ? -cents : cents;
    if (row_number % 2 == 1) items.push_back(Shade(1440, top, 9360, 240, band));
    const Date date = Date::FromSerial(45474 + row_number);
    const std::string day = std::to_string(1 + row_number % 28) + "/07/2024";
    const std::string reference = (credit ? "CR" : "IN") + std::to_string(10400 + row_number);
    const std::string description = kDescriptions[row_number % 5];
    const std::string amount = Amount(cents);
    const std::string values[] = {
        day, reference, description, credit ? "" : amount, credit ? amount : "", Amount(balance)};
    for (std::size_t c = 0; c < 6; ++c) {
      items.push_back(Text(kColumns[c].left, top + 5, kColumns[c].width, values[c],
                           kColumns[c].align, Font(9)));
    }
    const Variant none = Variant::Null();
    page.rows.push_back(
        {engine::RowKind::Detail,
         0,
         "Detail",
         {Cell("txtDate", 1440, 1000, date, day, "d/mm/yyyy"),
          Cell("txtReference", 2500, 1100, reference, reference),
          Cell("txtDescription", 3650, 2900, description, description),
          Cell("txtDebit", 6600, 1350, credit ? none : Variant(Currency::FromRaw(cents * 100)),
               values[3], "#,##0.00;(#,##0.00)"),
          Cell("txtCredit", 8000, 1350, credit ? Variant(Currency::FromRaw(cents * 100)) : none,
               values[4], "#,##0.00;(#,##0.00)"),
          Cell("txtBalance", 9400, 1400, Currency::FromRaw(balance * 100), values[5],
               "#,##0.00;(#,##0.00)")},
         {}});
    top += 240;
  }

  // Group footer: a rule over the amounts, the totals, a double rule under them.
  top += 60;
  items.push_back(Rule(6600, 10800, top, 15));
  items.push_back(
      Text(3650, top + 40, 2900, "Total Acme Traders Ltd", engine::Align::Left, Font(9, true)));
  const std::string totals[] = {Amount(debits), Amount(credits), Amount(balance)};
  for (int c = 0; c < 3; ++c) {
    items.push_back(Text(kColumns[3 + c].left, top + 40, kColumns[3 + c].width, totals[c],
                         engine::Align::Right, Font(9, true)));
  }
  items.push_back(Rule(6600, 10800, top + 290, 15));
  items.push_back(Rule(6600, 10800, top + 330, 15));
  page.rows.push_back({engine::RowKind::GroupFooter,
                       1,
                       "GroupFooter1",
                       {Cell("gfDebit", 6600, 1350, Currency::FromRaw(debits * 100), totals[0]),
                        Cell("gfCredit", 8000, 1350, Currency::FromRaw(credits * 100), totals[1]),
                        Cell("gfBalance", 9400, 1400, Currency::FromRaw(balance * 100), totals[2])},
                       {"Total Acme Traders Ltd"}});

  // Page footer.
  items.push_back(Rule(1440, 10800, 14880, 10));
  items.push_back(
      Text(1440, 14940, 4000, "Printed 21/11/2026 9:14 am", engine::Align::Left, Font(8)));
  items.push_back(Text(6800, 14940, 4000, "Harbour Supplies Ltd", engine::Align::Right, Font(8)));
  page.rows.push_back({engine::RowKind::PageFooter, 0, "PageFooter", {}, {}});
  page.bookmarks.push_back({{"Acme Traders Ltd"}, 1860});
  return page;
}

}  // namespace trellin::render::testing
