#include <functional>

#include "platform/business/CompanyApplication.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

struct Context {
  const CompanyApplication& application;
  Date date_as_at;
  // The financial year holding the date as at, when the calendar has one.
  std::optional<FinancialYear> year;
};

using Filler = std::string (*)(const Context&);

std::string InDateFormat(const Context& context, Date date) {
  return Format(Variant(date), context.application.Details().DateFormat);
}

struct PlaceHolder {
  std::string_view Text;
  Filler Fill;
};

constexpr PlaceHolder kPlaceHolders[] = {
    {"<Company>", [](const Context& c) { return c.application.Details().Name; }},
    {"<LongDateAsAt>",
     [](const Context& c) {
       return Format(Variant(c.date_as_at), c.application.Details().LongDateFormat);
     }},
    {"<DateAsAt>", [](const Context& c) { return InDateFormat(c, c.date_as_at); }},
    {"<Date>", [](const Context& c) { return InDateFormat(c, Today()); }},
    {"<YearStart>",
     [](const Context& c) { return c.year ? InDateFormat(c, c.year->DateStart) : std::string(); }},
    {"<YearEnd>",
     [](const Context& c) { return c.year ? InDateFormat(c, c.year->DateEnd) : std::string(); }},
    {"<Year>", [](const Context& c) { return c.year ? c.year->Name : std::string(); }},
    {"<TaxName>", [](const Context& c) { return c.application.Tax().TaxName(); }},
};

}  // namespace

std::string CompanyApplication::SubstituteString(const std::string& text, Date date_as_at) const {
  if (text.find('<') == std::string::npos) return text;
  Context context{*this, date_as_at.DateOnly(), std::nullopt};
  if (std::int64_t id = calendar_.YearIdFromDate(date_as_at)) {
    context.year = calendar_.Year(id);
  }
  // One pass from left to right, so text a place holder puts in is never read again.
  std::string result;
  std::size_t i = 0;
  while (i < text.size()) {
    const PlaceHolder* found = nullptr;
    if (text[i] == '<') {
      for (const PlaceHolder& holder : kPlaceHolders) {
        if (EqualsIgnoreCase(std::string_view(text).substr(i, holder.Text.size()), holder.Text)) {
          found = &holder;
          break;
        }
      }
    }
    if (found) {
      result += found->Fill(context);
      i += found->Text.size();
    } else {
      result += text[i++];
    }
  }
  return result;
}

}  // namespace trellin::business
