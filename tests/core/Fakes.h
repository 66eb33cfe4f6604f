#pragma once
// Small in-memory stand-ins for the business layer, the application and the database, enough
// for the report service's routines: literals, tokens, range conditions, calendar and options.

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/host/Application.h"
#include "core/host/BusinessLayer.h"
#include "core/host/Database.h"
#include "tests/support/FakeDatabase.h"

namespace trellin::testing {

// Records every call and answers "field IN [value]".
class FakeRangeBuilder : public RangeBuilder {
 public:
  struct Call {
    std::string field;
    std::string value;
    int data_type;
  };
  [[nodiscard]] std::string BuildRangeCondition(const std::string& field, const std::string& value,
                                                int data_type) override;
  std::vector<Call> calls;
};

class FakeRounder : public Rounder {
 public:
  [[nodiscard]] Variant Round(const Variant& value, int digits) override;
  [[nodiscard]] std::string AmountInWords(Currency, bool, const std::string&, const std::string&,
                                          const std::string&, const std::string&) override {
    return "";
  }
};

class FakeUtilities : public Utilities {
 public:
  // The comma reader either marks the end with the last token (the default), or hands the last
  // token with a positive position and then one empty token with the end mark.
  [[nodiscard]] std::string GetNextToken(const std::string& text, std::int64_t& position,
                                         int delimiter_code) override;
  [[nodiscard]] trellin::RangeBuilder& RangeBuilder() override { return range_builder; }
  [[nodiscard]] trellin::Rounder& Rounder() override { return rounder; }

  bool late_end = false;
  FakeRangeBuilder range_builder;
  FakeRounder rounder;
};

class FakeReportFactory : public ReportFactory {
 public:
  [[nodiscard]] std::shared_ptr<TLReport> CreateReport() override;
  int created = 0;
  bool fail = false;
  bool fail_columns = false;  // the hosts' DataColumns.Initialise throws
};

class FakeBusinessLayer : public BusinessLayer {
 public:
  [[nodiscard]] std::string ProductName() const override { return "Test"; }
  [[nodiscard]] std::shared_ptr<trellin::Database> Database() const override { return database; }
  [[nodiscard]] std::string DateFormat() const override { return "dd/mm/yyyy"; }
  [[nodiscard]] std::string LongDateFormat() const override { return "d mmmm yyyy"; }
  [[nodiscard]] std::string CurrencyFormat(int) const override { return "#,##0.00;(#,##0.00)"; }
  [[nodiscard]] std::int64_t OverdueFromDefault() const override { return 1; }
  [[nodiscard]] trellin::ReportFactory& ReportFactory() override { return report_factory; }
  [[nodiscard]] trellin::Utilities& Utilities() override { return utilities; }
  // The service's own tests fetch no business objects.
  [[nodiscard]] std::unique_ptr<BusinessObjects> CreateObjects() override {
    throw std::logic_error("the test business layer holds no business objects");
  }

  std::shared_ptr<FakeDatabase> database = std::make_shared<FakeDatabase>();
  FakeReportFactory report_factory;
  FakeUtilities utilities;
};

class FakeCalendar : public FinancialCalendar {
 public:
  [[nodiscard]] Date CurrentDateAP(bool) const override { return ap; }
  [[nodiscard]] Date CurrentDateAR(bool) const override { return ar; }
  [[nodiscard]] Date CurrentDateGL(bool) const override { return gl; }
  [[nodiscard]] std::int64_t YearIdFromDate(Date date) const override;
  [[nodiscard]] FinancialYear Year(std::int64_t id) const override;
  [[nodiscard]] std::vector<FinancialYear> Years() const override { return years; }

  Date ap = Date::FromYmd(2024, 5, 31);
  Date ar = Date::FromYmd(2024, 6, 30);
  Date gl = Date::FromYmd(2024, 3, 31);
  std::vector<FinancialYear> years;
};

class FakeOptions : public Options {
 public:
  [[nodiscard]] std::string Country() const override { return country; }
  [[nodiscard]] bool SuburbInCityField() const override { return suburb_in_city; }
  [[nodiscard]] std::int16_t ItemCodeSetting() const override { return item_code_setting; }
  [[nodiscard]] UserDefinedField UserDefinedFields(UserDefinedKind kind,
                                                   int position) const override;
  [[nodiscard]] std::string TemplateFolder() const override { return ""; }
  [[nodiscard]] bool JobActualCharges() const override { return false; }

  std::string country = "NZ";
  bool suburb_in_city = false;
  std::int16_t item_code_setting = 0;
  std::map<std::pair<UserDefinedKind, int>, UserDefinedField> user_defined;
};

class FakeTax : public Tax {
 public:
  [[nodiscard]] std::string TaxName() const override { return "GST"; }
  [[nodiscard]] double Rate() const override { return 15; }
};

class FakeApplication : public Application {
 public:
  [[nodiscard]] const trellin::FinancialCalendar& FinancialCalendar() const override {
    return calendar;
  }
  [[nodiscard]] const trellin::Options& Options() const override { return options; }
  [[nodiscard]] const trellin::Tax& Tax() const override { return tax; }
  void AddUserDefinedParametersAsset(Parameters&, bool, const Variant&) override {}
  void AddUserDefinedParametersItem(Parameters&, bool, const Variant&) override {}
  void AddUserDefinedParametersOtherParty(Parameters&, bool, const Variant&) override {}
  void AddUserDefinedParametersTransactions(Parameters&, bool, const Variant&) override {}
  [[nodiscard]] std::string SubstituteString(const std::string& text, Date) const override {
    return text;
  }

  FakeCalendar calendar;
  FakeOptions options;
  FakeTax tax;
};

// A service initialised with fresh fakes for the length of one test; disposed at the end.
class ServiceFixture {
 public:
  // Report makes the designers of `designers`.
  explicit ServiceFixture(std::span<const DesignerEntry> designers = {});
  ~ServiceFixture();

  std::shared_ptr<FakeBusinessLayer> business_layer = std::make_shared<FakeBusinessLayer>();
  std::shared_ptr<FakeApplication> application = std::make_shared<FakeApplication>();
  TrellinReports service;
};

}  // namespace trellin::testing
