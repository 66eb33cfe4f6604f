#include "reports/ledger/arglAccountReportsCashFlowSub.h"

#include "core/TrellinReportGlobals.h"

namespace trellin {

namespace {

constexpr const char* kCaptions[] = {"Opening Bank Balance", "Total Cash Movement",
                                     "Closing Bank Balance"};

std::size_t Slot(int column) { return static_cast<std::size_t>(column); }

}  // namespace

void arglAccountReportsCashFlowSub::Update_Array(CashRow row, int column, Currency value) {
  if (column < 1 || column > kColumns) return;
  auto& cell = values_[Slot(column)];
  cell[static_cast<std::size_t>(row)] = value;
  values_[Slot(column + 1)][0] = cell[0] + cell[1];
}

Currency arglAccountReportsCashFlowSub::Opening(int column) const {
  return column < 1 || column > kColumns ? Currency() : values_[Slot(column)][0];
}

Currency arglAccountReportsCashFlowSub::Movement(int column) const {
  return column < 1 || column > kColumns ? Currency() : values_[Slot(column)][1];
}

void arglAccountReportsCashFlowSub::ActiveReport_ReportStart() {
  LineIndex = 1;
  auto sum = [this](int first, int last) {
    Currency total;
    for (int n = first; n <= last; ++n) total += Movement(n);
    return total;
  };
  if (Period == "Quarterly") {
    // Each sub-total spans its four quarters, and the second four carry on from the first's end.
    Update_Array(CashRow::Opening, 5, Opening(1));
    Update_Array(CashRow::Movement, 5, sum(1, 4));
    for (int n = 6; n <= 9; ++n) Update_Array(CashRow::Movement, n, Movement(n));
    const Currency second = sum(6, 9);
    Update_Array(CashRow::Opening, 10, Opening(6));
    Update_Array(CashRow::Movement, 10, second);
    if (ShowTotal && TotalColumn > 0) {
      Update_Array(CashRow::Opening, TotalColumn, Opening(1));
      Update_Array(CashRow::Movement, TotalColumn, sum(1, 4) + second);
    }
  } else if (ShowTotal && TotalColumn > 0) {
    Update_Array(CashRow::Opening, TotalColumn, Opening(1));
    Update_Array(CashRow::Movement, TotalColumn, sum(1, TotalColumn - 1));
  }
}

void arglAccountReportsCashFlowSub::ActiveReport_FetchData(bool& eof) { eof = LineIndex > 3; }

void arglAccountReportsCashFlowSub::OnFormat(Section& section) {
  if (section.Type() != SectionType::Detail) return;
  if (Control* caption = FindControl("txtDescription")) {
    caption->SetText(kCaptions[LineIndex - 1]);
  }
  Rounder& rounder = TrellinReportGlobals::RequireBusinessLayer().Utilities().Rounder();
  for (int n = 1; n <= Columns; ++n) {
    Control* c = FindControl("numField" + std::to_string(n));
    if (c == nullptr) continue;
    Currency value = LineIndex == 1   ? Opening(n)
                     : LineIndex == 2 ? Movement(n)
                                      : Opening(n) + Movement(n);
    double shown = rounder.Round(Variant(value.ToDouble()), Rounding).ToDouble();
    if (Rounding == -3) shown /= 1000.0;
    c->SetDataValue(Variant(shown));
    c->SetVisible(true);
    c->Border().TopStyle = LineIndex == 3 ? 1 : 0;
    c->Border().BottomStyle = 0;
  }
  ++LineIndex;
}

}  // namespace trellin
