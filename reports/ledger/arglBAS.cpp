// The BAS form: its sums by category, its fields by both methods and what it prints.

#include "reports/ledger/arglBAS.h"

#include <cmath>
#include <initializer_list>
#include <string_view>

#include "core/TrellinReportGlobals.h"
#include "core/host/BusinessLayer.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr const char* kBASVariation =
    "WARNING - there is a variation between GST calculated and GST charged/claimed of ";

// The whole dollars of an amount, towards minus infinity.
std::int64_t WholeDollars(Currency c) {
  const std::int64_t raw = c.Raw();
  const std::int64_t scale = Currency::kScale;
  return raw >= 0 ? raw / scale : -((-raw + scale - 1) / scale);
}

std::int64_t WholeDollars(double d) { return static_cast<std::int64_t>(std::floor(d)); }

bool CategoryIn(std::string_view code, std::initializer_list<std::string_view> codes) {
  for (std::string_view c : codes) {
    if (code == c) return true;
  }
  return false;
}

}  // namespace

const std::vector<std::string> kBASFieldOrder = {
    "G1",  "G2",  "G3",  "G4",  "G5",  "G6",  "G7",  "G8",  "G9", "G10", "G12",
    "G11", "G13", "G14", "G16", "G17", "G18", "G19", "G20", "W2", "W4",  "1A",
    "1B",  "1C",  "1D",  "1E",  "1F",  "2A",  "2B",  "3",   "4",  "8A",  "9"};

BASBoxes ComputeBAS(const std::vector<TaxAmount>& output, const std::vector<TaxAmount>& input,
                    double divisor) {
  BASBoxes boxes;
  BASSums& s = boxes.Sums;
  // Output values are credits: subtracting makes the sales positive.
  for (const TaxAmount& row : output) {
    const std::string_view c = row.Category;
    const bool nil = row.Tax == Currency();
    if (c == "A") {
      s.G7 -= row.Value + row.Tax;
      continue;
    }
    if (c == "S" && nil) s.G4 -= row.Value;
    if (c == "Z" && nil) s.G3 -= row.Value;
    if (c == "P" && nil) s.G2 -= row.Value;
    if (CategoryIn(c, {"S", "Z", "P"}) || !nil) {
      s.SalesTotal -= row.Value + row.Tax;
      s.GSTSales -= row.Tax;
    }
  }
  for (const TaxAmount& row : input) {
    const std::string_view c = row.Category;
    const bool nil = row.Tax == Currency();
    if (c == "A") {
      s.G18 += row.Value + row.Tax;
      continue;
    }
    if (c == "C") {
      if (nil) continue;
      s.G10 += row.Value + row.Tax;
      s.GSTCapital += row.Tax;
    }
    if (c == "S" && nil) s.G13 += row.Value;
    if (c == "Z" && nil) s.G14 += row.Value;
    if (CategoryIn(c, {"S", "Z"}) || !nil) {
      s.PurchaseTotal += row.Value + row.Tax;
      s.GSTPurchases += row.Tax;
    }
  }

  const auto gross_up = [divisor](Currency tax) {
    return divisor == 0 ? 0.0L : static_cast<long double>(tax.ToDouble()) * divisor;
  };
  const auto divide = [divisor](std::int64_t whole) {
    return divisor == 0 ? std::int64_t{0} : WholeDollars(static_cast<double>(whole) / divisor);
  };
  for (bool tax_method : {false, true}) {
    BASFields& f = tax_method ? boxes.Tax : boxes.Income;
    f["G1"] = tax_method ? WholeDollars(static_cast<double>(s.G2.ToDouble() + s.G4.ToDouble() +
                                                            gross_up(s.GSTSales) + s.G3.ToDouble()))
                         : WholeDollars(s.SalesTotal);
    f["G2"] = WholeDollars(s.G2);
    f["G3"] = WholeDollars(s.G3);
    f["G4"] = WholeDollars(s.G4);
    f["G5"] = f["G2"] + f["G3"] + f["G4"];
    f["G6"] = f["G1"] - f["G5"];
    f["G7"] = WholeDollars(s.G7);
    f["G8"] = f["G6"] + f["G7"];
    f["G9"] = divide(f["G8"]);
    f["G10"] = tax_method ? WholeDollars(static_cast<double>(gross_up(s.GSTCapital)))
                          : WholeDollars(s.G10);
    f["G12"] = tax_method ? WholeDollars(static_cast<double>(s.G13.ToDouble() + s.G14.ToDouble() +
                                                             gross_up(s.GSTPurchases)))
                          : WholeDollars(s.PurchaseTotal);
    f["G11"] = f["G12"] - f["G10"];
    f["G13"] = WholeDollars(s.G13);
    f["G14"] = WholeDollars(s.G14);
    f["G16"] = f["G13"] + f["G14"];
    f["G17"] = f["G12"] - f["G16"];
    f["G18"] = WholeDollars(s.G18);
    f["G19"] = f["G17"] + f["G18"];
    f["G20"] = divide(f["G19"]);
    f["W2"] = WholeDollars(s.W2);
    f["W4"] = 0;
    f["1A"] = f["G9"];
    f["1B"] = f["G20"];
    f["1C"] = WholeDollars(s.C1);
    f["1D"] = WholeDollars(s.D1);
    f["1E"] = WholeDollars(s.E1);
    f["1F"] = WholeDollars(s.F1);
    f["2A"] = f["1A"] + f["1C"] + f["1E"];
    f["2B"] = f["1B"] + f["1D"] + f["1F"];
    f["3"] = f["2A"] - f["2B"];
    f["4"] = f["W2"] + f["W4"];
    f["8A"] = f["2A"] + f["4"];
    f["9"] = f["8A"] - f["2B"];
  }
  return boxes;
}

void arglBAS::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) Detail_Format();
}

void arglBAS::Detail_Format() {
  std::vector<std::string> tax_method = {"lblTaxMethod", "lblTaxMethod2"};
  for (const std::string& field : kBASFieldOrder) tax_method.push_back("num" + field + "b");
  ShowTaxControls(*this, tax_method, ShowTaxMethod);
  ShowTaxControls(*this, {"lblMethodVariation"}, false);

  Database& database = *TrellinReportGlobals::RequireDatabase();
  Application& application = TrellinReportGlobals::RequireApplication();
  BusinessLayer& business = TrellinReportGlobals::RequireBusinessLayer();
  const std::optional<TaxPeriodFacts> facts =
      ReadTaxPeriodFacts(database, application.Tax(), TaxPeriodId);
  // A filed period that is not on file: the form stays blank.
  if (!facts) return;

  double divisor = 0;
  if (facts->Rate == 0) {
    for (const char* name : {"lblDevideG8", "lblDevideG19"}) {
      if (Control* label = FindControl(name)) label->SetCaption("Nil Tax Rate");
    }
  } else {
    divisor = TaxDivisor(facts->Rate, business.Utilities().Rounder());
    const std::string shown = Variant(divisor).Text();
    if (Control* label = FindControl("lblDevideG8")) label->SetCaption("Divide G8 by " + shown);
    if (Control* label = FindControl("lblDevideG19")) label->SetCaption("Divide G19 by " + shown);
  }
  SetTaxControl(*this, "txtRegistrationNumber", Variant(application.Tax().TaxNumber()));
  SetTaxControl(*this, "txtFrom", Variant(facts->DateFrom));
  SetTaxControl(*this, "txtTo", Variant(facts->DateTo));
  const bool same_basis = EqualsIgnoreCase(facts->BasisOutput, facts->BasisInput);
  SetTaxControl(*this, "txtBasis",
                Variant(same_basis ? facts->BasisOutput + " Basis"
                                   : "Output " + facts->BasisOutput + " Basis"));
  SetTaxControl(*this, "txtBasis2", Variant("Input " + facts->BasisInput + " Basis"));
  ShowTaxControls(*this, {"lblBasis2", "txtBasis2"}, !same_basis);

  boxes_ =
      ComputeBAS(ReadTaxSide(database, TaxForm::BAS, TaxSide::Output, *facts, SQLWhere),
                 ReadTaxSide(database, TaxForm::BAS, TaxSide::Input, *facts, SQLWhere), divisor);
  for (const std::string& field : kBASFieldOrder) {
    SetTaxControl(*this, "num" + field, Variant(boxes_.Income.at(field)));
    SetTaxControl(*this, "num" + field + "b", Variant(boxes_.Tax.at(field)));
  }
  const std::int64_t net = boxes_.Income.at("3");
  if (Control* label = FindControl("lbl3Credit")) {
    label->SetCaption(net == 0 ? "Nothing" : net < 0 ? "Credit" : "");
  }
  const std::int64_t nine = boxes_.Income.at("9");
  if (Control* label = FindControl("lbl9Refund")) {
    label->SetCaption(nine == 0 ? "Nothing" : nine < 0 ? "Refund" : "Payable");
  }
  const std::int64_t variation = boxes_.Income.at("9") - boxes_.Tax.at("9");
  if (variation > 1 || variation < -1) {
    if (Control* label = FindControl("lblMethodVariation")) {
      label->SetCaption(std::string(kBASVariation) + " " + Format(Variant(variation), "#,##0"));
      label->SetVisible(true);
    }
  }
}

}  // namespace trellin
