#pragma once
// A small company in a FakeDatabase: three financial years and a few settings.

#include <memory>

#include "platform/business/CompanyFinancialCalendar.h"
#include "platform/runtime/Date.h"
#include "tests/support/FakeDatabase.h"

namespace trellin::testing {

inline std::shared_ptr<FakeDatabase> MakeCompany() {
  auto database = std::make_shared<FakeDatabase>();
  database->AddResult(
      std::string(business::kFinancialYearsSQL),
      {{"FinancialYearId", FieldType::Long},
       {"Name", FieldType::Text},
       {"DateStart", FieldType::Date},
       {"DateEnd", FieldType::Date}},
      {
          {std::int64_t{3}, "2023/24", Date::FromYmd(2023, 4, 1), Date::FromYmd(2024, 3, 31)},
          {std::int64_t{4}, "2024/25", Date::FromYmd(2024, 4, 1), Date::FromYmd(2025, 3, 31)},
          {std::int64_t{5}, "2025/26", Date::FromYmd(2025, 4, 1), Date::FromYmd(2026, 3, 31)},
      });
  return database;
}

}  // namespace trellin::testing
