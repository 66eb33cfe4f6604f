#include "platform/business/CompanyRangeBuilder.h"

#include <optional>
#include <stdexcept>
#include <unordered_set>
#include <vector>

#include "platform/business/RangeText.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

// A code as it stands in SQL, and how it orders against another code of the same list.
struct Literal {
  std::string sql;
  std::string code;
  std::optional<Currency> number;
};

Literal MakeLiteral(const std::string& code, bool numeric, const std::string& value) {
  if (!numeric) {
    return {Database::SQLString(code), code, std::nullopt};
  }
  // Grouping commas cannot reach here (the comma parts items), so a code that reads as money
  // is a plain number; "$5" and "(5)" are refused as codes are not written that way.
  std::optional<Currency> number;
  if (!code.empty() && code.find_first_of("$()") == std::string::npos) {
    number = Currency::Parse(code);
  }
  if (!number) {
    throw std::invalid_argument("\"" + code + "\" is not a number, in the list \"" + value + "\".");
  }
  return {Database::SQLNumber(*number), code, number};
}

// Codes compare as the database compares text: without regard to case.
bool RunsBackwards(const Literal& from, const Literal& through) {
  if (from.number && through.number) return *from.number > *through.number;
  return StrComp(from.code, through.code, true) > 0;
}

std::string RangeCondition(const std::string& field, const std::optional<Literal>& from,
                           const std::optional<Literal>& through) {
  if (from && through) {
    return "(" + field + ">=" + from->sql + " AND " + field + "<=" + through->sql + ")";
  }
  if (from) return field + ">=" + from->sql;
  return field + "<=" + through->sql;
}

}  // namespace

std::string CompanyRangeBuilder::BuildRangeCondition(const std::string& field,
                                                     const std::string& value, int data_type) {
  if (data_type != kTextDataType && data_type != kNumberDataType) {
    throw std::invalid_argument("Data type " + std::to_string(data_type) +
                                " is not one a list condition is built for (8 text, 3 number).");
  }
  const bool numeric = data_type == kNumberDataType;
  std::vector<std::string> singles;
  // A pasted list may hold thousands of codes; repeats are found by hash, not by scanning.
  std::unordered_set<std::string> seen;
  std::vector<std::string> ranges;
  for (const RangeItem& item : ParseRangeText(value)) {
    if (!item.IsRange) {
      std::string sql = MakeLiteral(*item.From, numeric, value).sql;
      if (seen.insert(sql).second) singles.push_back(std::move(sql));
      continue;
    }
    std::optional<Literal> from;
    std::optional<Literal> through;
    if (item.From) from = MakeLiteral(*item.From, numeric, value);
    if (item.Through) through = MakeLiteral(*item.Through, numeric, value);
    if (from && through && RunsBackwards(*from, *through)) {
      throw std::invalid_argument("The range \"" + from->code + ".." + through->code +
                                  "\" runs backwards; put the lower code first.");
    }
    ranges.push_back(RangeCondition(field, from, through));
  }

  std::vector<std::string> parts;
  if (singles.size() == 1) {
    parts.push_back(field + "=" + singles.front());
  } else if (singles.size() > 1) {
    parts.push_back(field + " IN (" + Join(singles, ",") + ")");
  }
  parts.insert(parts.end(), ranges.begin(), ranges.end());
  return Join(parts, " OR ");
}

}  // namespace trellin::business
