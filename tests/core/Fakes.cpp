#include "Fakes.h"

#include <stdexcept>

#include "FakeHost.h"

namespace trellin::testing {

std::string FakeRangeBuilder::BuildRangeCondition(const std::string& field,
                                                  const std::string& value, int data_type) {
  calls.push_back({field, value, data_type});
  return field + " IN [" + value + "]";
}

Variant FakeRounder::Round(const Variant& value, int digits) {
  if (value.IsNull()) return value;
  return Variant(value.ToCurrency().Round(digits));
}

std::string FakeUtilities::GetNextToken(const std::string& text, std::int64_t& position,
                                        int delimiter_code) {
  const auto length = static_cast<std::int64_t>(text.size());
  if (position < 1 || position > length) {
    position = -1;
    return "";
  }
  const std::size_t start = static_cast<std::size_t>(position - 1);
  const std::size_t delimiter = text.find(static_cast<char>(delimiter_code), start);
  if (delimiter == std::string::npos) {
    position = late_end ? length + 1 : -1;
    return text.substr(start);
  }
  position = static_cast<std::int64_t>(delimiter) + 2;
  return text.substr(start, delimiter - start);
}

std::shared_ptr<TLReport> FakeReportFactory::CreateReport() {
  if (fail) throw std::runtime_error("no host can be made");
  ++created;
  auto host = std::make_shared<FakeTLReport>();
  host->columns.fail_initialise = fail_columns;
  return host;
}

std::int64_t FakeCalendar::YearIdFromDate(Date date) const {
  for (const FinancialYear& year : years) {
    if (year.DateStart <= date && date <= year.DateEnd) return year.Id;
  }
  return 0;
}

FinancialYear FakeCalendar::Year(std::int64_t id) const {
  for (const FinancialYear& year : years) {
    if (year.Id == id) return year;
  }
  throw NoSuchYear("no year " + std::to_string(id));
}

UserDefinedField FakeOptions::UserDefinedFields(UserDefinedKind kind, int position) const {
  const auto found = user_defined.find({kind, position});
  return found == user_defined.end() ? UserDefinedField{} : found->second;
}

ServiceFixture::ServiceFixture(std::span<const DesignerEntry> designers) {
  service.Initialise(business_layer, application);
  service.SetDesigners(designers);
}

ServiceFixture::~ServiceFixture() { service.Dispose(); }

}  // namespace trellin::testing
