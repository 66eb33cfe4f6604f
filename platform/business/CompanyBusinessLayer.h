#pragma once
// The reference business layer: a company database, its formats and the shared utilities.

#include <functional>
#include <memory>
#include <string>

#include "core/host/BusinessLayer.h"
#include "platform/business/CompanyUtilities.h"

namespace trellin::business {

// Makes report hosts through a function given by whoever assembles the report service.
class FunctionReportFactory : public ReportFactory {
 public:
  using Function = std::function<std::shared_ptr<TLReport>()>;

  void SetFunction(Function function) { function_ = std::move(function); }
  // Throws std::logic_error when no function has been set, or when it gives no host.
  [[nodiscard]] std::shared_ptr<TLReport> CreateReport() override;

 private:
  Function function_;
};

// Formats and the overdue default are read from the company settings once, when the layer is
// made (see platform/business/README.md for the settings and their defaults); a setting that
// does not read as its type fails then, with std::runtime_error naming it.
class CompanyBusinessLayer : public BusinessLayer {
 public:
  // `database` must not be null.
  explicit CompanyBusinessLayer(std::shared_ptr<trellin::Database> database);

  [[nodiscard]] std::string ProductName() const override { return product_name_; }
  [[nodiscard]] std::shared_ptr<trellin::Database> Database() const override { return database_; }
  [[nodiscard]] std::string DateFormat() const override { return date_format_; }
  [[nodiscard]] std::string LongDateFormat() const override { return long_date_format_; }
  [[nodiscard]] std::string CurrencyFormat(int reserved = 0) const override;
  [[nodiscard]] std::int64_t OverdueFromDefault() const override { return overdue_from_default_; }
  [[nodiscard]] trellin::ReportFactory& ReportFactory() override { return report_factory_; }
  [[nodiscard]] trellin::Utilities& Utilities() override { return utilities_; }
  [[nodiscard]] std::unique_ptr<BusinessObjects> CreateObjects() override;

  // The function that makes a new report host for each report.
  void SetReportFactory(FunctionReportFactory::Function function) {
    report_factory_.SetFunction(std::move(function));
  }

 private:
  std::shared_ptr<trellin::Database> database_;
  std::string product_name_;
  std::string date_format_;
  std::string long_date_format_;
  std::string currency_format_;
  std::int64_t overdue_from_default_ = 0;
  FunctionReportFactory report_factory_;
  CompanyUtilities utilities_;
};

}  // namespace trellin::business
