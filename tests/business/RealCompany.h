#pragma once
// A small company file on disk (tests/business/real_company.sql: settings, two financial years, a
// few accounts and parties), opened read-only.

#include "tests/support/FixtureCompany.h"

namespace trellin::testing {

class RealCompany : public FixtureCompany {
 public:
  RealCompany() : FixtureCompany({"business/real_company.sql"}) {}
};

}  // namespace trellin::testing
