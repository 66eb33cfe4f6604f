// Page furniture (title, print line, company, notice) and the run's description in the report
// footer.

#include <filesystem>

#include "platform/host/ReportHost.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

constexpr char kDefaultLongDate[] = "d mmmm yyyy";
constexpr char kDefaultDate[] = "d/mm/yyyy";
constexpr char kPrintTime[] = "h:nnam/pm";
constexpr char kParametersPlaceholder[] = "Parameters";

// The open ends of a number range: a bound at either means no bound, so it says nothing.
constexpr Currency kOpenLow = Currency::FromWhole(-9999999999);
constexpr Currency kOpenHigh = Currency::FromWhole(9999999999);

// The furniture a layout carries: a control found by its name or by the text it stands with.
struct FurnitureRow {
  std::string_view name;
  std::string_view placeholder;
  std::string (ReportHost::*text)() const;
};

constexpr FurnitureRow kFurniture[] = {
    {"phDated", "$Dated", &ReportHost::PrintedOnText},
    {"txtCompany", "CompanyName", &ReportHost::CompanyName},
    {"txtCompanyName", "CompanyName", &ReportHost::CompanyName},
    {"lblNotice", "$Notice", &ReportHost::NoticeText},
};

const std::string& ShownText(const Control& control) {
  return control.Class() == ControlClass::Label ? control.Caption() : control.Text();
}

void Show(Control& control, const std::string& text) {
  if (control.Class() == ControlClass::Label) {
    control.SetCaption(text);
    return;
  }
  // A field standing on "CompanyName" would be filled from a row field of that name.
  if (EqualsIgnoreCase(control.DataField(), "CompanyName")) control.SetDataField("");
  control.SetDataValue(Variant(text));
}

bool HasNoValue(const Variant& value) {
  return value.IsEmpty() || value.IsNull() || value.IsMissing() ||
         (value.IsString() && Trim(*value.Get<std::string>()).empty());
}

// The company a connection string names: its file, "Data Source=/data/acme.db;Mode=ReadOnly" ->
// "acme.db", or its database on a server, "Host=...;Database=acme;..." -> "acme".
std::string FileOfConnection(const std::string& connection) {
  for (const std::string& part : Split(connection, ";")) {
    std::size_t equals = part.find('=');
    if (equals == std::string::npos) continue;
    if (EqualsIgnoreCase(Trim(part.substr(0, equals)), "Data Source")) {
      return std::filesystem::path(Trim(part.substr(equals + 1))).filename().string();
    }
    if (EqualsIgnoreCase(Trim(part.substr(0, equals)), "Database")) {
      return Trim(part.substr(equals + 1));
    }
  }
  return {};
}

}  // namespace

std::string ReportHost::PrintedOnText() const {
  const std::string long_date =
      business_layer_ ? business_layer_->LongDateFormat() : std::string(kDefaultLongDate);
  const Date now = Now();
  return "Printed on " + Format(Variant(now), long_date) + " at " +
         Format(Variant(now), kPrintTime);
}

std::string ReportHost::CompanyName() const {
  if (!business_layer_ || !business_layer_->Database()) return {};
  return business_layer_->Database()->GetSetting("Company", "Name", "");
}

std::string ReportHost::NoticeText() const {
  if (!business_layer_) return {};
  std::string product = business_layer_->ProductName();
  std::string file;
  if (business_layer_->Database())
    file = FileOfConnection(business_layer_->Database()->ConnectionString());
  if (file.empty()) return product;
  return product.empty() ? file : product + " - " + file;
}

void ReportHost::SetupStandardHeader(bool enabled) {
  ActiveReport& designer = Designer();
  for (Section& section : designer.Sections()) {
    for (Control& control : section.Controls()) {
      if (enabled && EqualsIgnoreCase(control.Name(), "lblReportTitle")) {
        if (!designer.Caption().empty()) Show(control, designer.Caption());
        continue;
      }
      for (const FurnitureRow& row : kFurniture) {
        if (!EqualsIgnoreCase(control.Name(), row.name) && ShownText(control) != row.placeholder) {
          continue;
        }
        // Without the standard header a place holder still must not print as it stands.
        Show(control, enabled ? (this->*row.text)() : std::string());
        break;
      }
    }
  }
  // The run's description is known from the start, so that what heads an export (its title
  // block) says the same as the footer will; a report that writes its own later overrides it.
  if (Section* footer = designer.Sections().FindType(SectionType::ReportFooter);
      footer && enabled) {
    if (Control* description = footer->Controls().Find("txtParameters")) {
      const std::string& shown = ShownText(*description);
      if (shown.empty() || shown == kParametersPlaceholder) {
        description->SetCanGrow(true);
        Show(*description, ParametersText());
      }
    }
  }
}

std::string ReportHost::ParametersText() const {
  const std::string date_format =
      business_layer_ ? business_layer_->DateFormat() : std::string(kDefaultDate);
  std::vector<std::string> lines;
  for (const ParameterPtr& parameter : parameters_) {
    const Variant& value = parameter->Value;
    if (HasNoValue(value)) continue;
    std::string text;
    switch (parameter->Kind) {
      case ParameterType::String:
        // Text without a caption is the report's own (SQLWhere and the like), not the user's.
        if (parameter->Caption.empty()) continue;
        text = value.Text();
        break;
      case ParameterType::Boolean: {
        bool on = false;
        try {
          on = value.ToBool();
        } catch (const std::exception&) {
          continue;
        }
        if (!on) continue;
        text = "Yes";
        break;
      }
      case ParameterType::Date:
        text = value.IsDate() ? Format(value, date_format) : value.Text();
        break;
      case ParameterType::Number:
        try {
          Currency number = value.ToCurrency();
          if (number <= kOpenLow || number >= kOpenHigh) continue;
        } catch (const std::exception&) {
        }
        text = value.Text();
        break;
      default:
        text = value.Text();
        break;
    }
    lines.push_back(parameter->Label() + ": " + Trim(text));
  }
  return Join(lines, "\r\n");
}

void ReportHost::ReportFooterBeforePrint() {
  Section* footer = Designer().Sections().FindType(SectionType::ReportFooter);
  if (footer == nullptr) return;
  if (Control* description = footer->Controls().Find("txtParameters")) {
    // The report's own description, written in its SQL routine, stands.
    const std::string& shown = ShownText(*description);
    if (shown.empty() || shown == kParametersPlaceholder) {
      description->SetCanGrow(true);
      Show(*description, ParametersText());
    }
  }
  columns_.FormatTotals(*footer);
}

}  // namespace trellin::host
