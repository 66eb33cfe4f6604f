// The GST 101 form: its sums by category, its boxes by both methods and what it prints.

#include "reports/ledger/arglGST101.h"

#include <cmath>
#include <memory>
#include <string>

#include "core/TrellinReportGlobals.h"
#include "core/host/BusinessLayer.h"
#include "platform/runtime/Format.h"

namespace trellin {

namespace {

constexpr int kFirstGSTBox = 5;
constexpr int kGSTBoxes = 11;

Currency AbsoluteAmount(Currency c) { return c < Currency() ? -c : c; }

Currency GSTQuotient(Currency amount, double divisor) {
  if (divisor == 0) return {};
  return Currency::FromDouble(amount.ToDouble() / divisor);
}

// Whether a category's lines are taxable: a rate in the tax list, or tax on the lines.
bool GSTTaxed(const TaxAmount& row, const std::function<double(std::string_view)>& category_rate) {
  return category_rate(row.Category) != 0 || row.Tax != Currency();
}

std::string GSTBox(int box) { return std::to_string(box); }

}  // namespace

GST101Boxes ComputeGST101(const std::vector<TaxAmount>& output, const std::vector<TaxAmount>& input,
                          double divisor,
                          const std::function<double(std::string_view)>& category_rate) {
  GST101Boxes b;
  // Output values are credits: subtracting makes the sales positive.
  for (const TaxAmount& row : output) {
    if (row.Category == "A") {
      b.OutAdjustA -= row.Tax;
    } else if (row.Category == "F") {
      b.OutAdjustF -= row.Tax;
    } else if (row.Category == "Z" && row.Tax == Currency()) {
      b.ZeroRated -= row.Value;
    } else if (row.Category == "Z" || GSTTaxed(row, category_rate)) {
      b.Taxable -= row.Value + row.Tax;
      b.OutputTax -= row.Tax;
    }
  }
  for (const TaxAmount& row : input) {
    if (row.Category == "A") {
      b.InAdjust += row.Tax;
    } else if (GSTTaxed(row, category_rate)) {
      b.Purchases += row.Value + row.Tax;
      b.InputTax += row.Tax;
    }
  }
  for (Currency* column : {b.Income, b.Tax}) {
    column[0] = b.ZeroRated + b.Taxable;
    column[1] = b.ZeroRated;
    column[2] = b.Taxable;
    column[4] = b.OutAdjustA + b.OutAdjustF;
    column[6] = b.Purchases;
    column[8] = b.InAdjust;
  }
  b.Income[3] = GSTQuotient(b.Income[2], divisor);
  b.Income[7] = GSTQuotient(b.Income[6], divisor);
  b.Tax[3] = b.OutputTax;
  b.Tax[7] = b.InputTax;
  for (Currency* column : {b.Income, b.Tax}) {
    column[5] = column[3] + column[4];
    column[9] = column[7] + column[8];
    column[10] = AbsoluteAmount(column[5] - column[9]);
  }
  return b;
}

void arglGST101::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) Detail_Format();
}

void arglGST101::Detail_Format() {
  std::vector<std::string> tax_method = {"lblTaxMethod", "chkRefundb", "chkGSTToPayb"};
  for (int box = kFirstGSTBox; box < kFirstGSTBox + kGSTBoxes; ++box) {
    tax_method.push_back("lblT" + GSTBox(box));
    tax_method.push_back("num" + GSTBox(box) + "b");
  }
  ShowTaxControls(*this, tax_method, ShowTaxMethod);
  ShowTaxControls(*this, {"lblWarning1", "lblWarning2", "lblWarning3"}, false);

  Database& database = *TrellinReportGlobals::RequireDatabase();
  Application& application = TrellinReportGlobals::RequireApplication();
  BusinessLayer& business = TrellinReportGlobals::RequireBusinessLayer();
  const std::optional<TaxPeriodFacts> facts =
      ReadTaxPeriodFacts(database, application.Tax(), TaxPeriodId);
  // A filed period that is not on file: the form stays blank.
  if (!facts) return;

  double divisor = 0;
  if (facts->Rate == 0) {
    for (const char* name : {"Label4", "Label9"}) {
      if (Control* label = FindControl(name)) label->SetCaption("Nil Tax Rate");
    }
  } else {
    divisor = TaxDivisor(facts->Rate, business.Utilities().Rounder());
    const std::string shown = Variant(divisor).Text();
    if (Control* label = FindControl("Label4")) label->SetCaption("Divide Box 7 by " + shown);
    if (Control* label = FindControl("Label9")) label->SetCaption("Divide Box 11 by " + shown);
  }
  SetTaxControl(*this, "txtRegistrationNumber", Variant(application.Tax().TaxNumber()));
  SetTaxControl(*this, "txtFrom", Variant(facts->DateFrom));
  SetTaxControl(*this, "txtTo", Variant(facts->DateTo));
  SetTaxControl(*this, "txtPeriod", Variant(std::to_string(facts->Months) + " months"));
  SetTaxControl(*this, "txtBasis", Variant(TaxBasisText(*facts, ", ")));

  std::unique_ptr<BusinessObjects> objects = business.CreateObjects();
  auto category_rate = [&objects](std::string_view code) {
    const trellin::TaxCategory* category = objects->FindTaxCategory(code);
    return category == nullptr ? 0.0 : category->rate;
  };
  boxes_ = ComputeGST101(ReadTaxSide(database, TaxForm::GST101, TaxSide::Output, *facts, SQLWhere),
                         ReadTaxSide(database, TaxForm::GST101, TaxSide::Input, *facts, SQLWhere),
                         divisor, category_rate);

  for (int i = 0; i < kGSTBoxes; ++i) {
    SetTaxControl(*this, "num" + GSTBox(kFirstGSTBox + i), Variant(boxes_.Income[i]));
    SetTaxControl(*this, "num" + GSTBox(kFirstGSTBox + i) + "b", Variant(boxes_.Tax[i]));
  }
  const bool refund = boxes_.Income[9] > boxes_.Income[5];
  const bool refund_b = boxes_.Tax[9] > boxes_.Tax[5];
  SetTaxControl(*this, "chkRefund", Variant(refund));
  SetTaxControl(*this, "chkGSTToPay", Variant(!refund));
  SetTaxControl(*this, "chkRefundb", Variant(refund_b));
  SetTaxControl(*this, "chkGSTToPayb", Variant(!refund_b));

  // The calculation sheet, in whole dollars.
  auto whole = [](Currency c) {
    return Variant(static_cast<std::int64_t>(std::floor(c.ToDouble())));
  };
  SetTaxControl(*this, "numAdjustA", whole(boxes_.OutAdjustA));
  SetTaxControl(*this, "numAdjustF", whole(boxes_.OutAdjustF));
  SetTaxControl(*this, "numAdjustTotal", whole(boxes_.OutAdjustA + boxes_.OutAdjustF));
  SetTaxControl(*this, "numCreditA", whole(boxes_.InAdjust));
  SetTaxControl(*this, "numCreditTotal", whole(boxes_.InAdjust));

  const Currency one = Currency::FromWhole(1);
  const bool warn = ShowTaxMethod && (AbsoluteAmount(boxes_.Income[5] - boxes_.Tax[5]) > one ||
                                      AbsoluteAmount(boxes_.Income[9] - boxes_.Tax[9]) > one);
  ShowTaxControls(*this, {"lblWarning1", "lblWarning2", "lblWarning3"}, warn);
}

}  // namespace trellin
