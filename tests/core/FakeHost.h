#pragma once
// A report host that records what the catalogue does to it.

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/host/DataColumns.h"
#include "core/host/Parameters.h"
#include "core/host/TLReport.h"

namespace trellin::testing {

class FakeDataColumns : public DataColumns {
 public:
  void Initialise(TLReport& host) override {
    ++initialised;
    initialised_with = &host;
    if (fail_initialise) throw std::runtime_error("columns cannot be initialised");
  }
  void SetEnabled(bool enabled) override { enabled_ = enabled; }
  [[nodiscard]] bool Enabled() const override { return enabled_; }
  DataColumn& Add(const std::string& name, const std::string&, int, const std::string&,
                  const std::string&, float, float, int, int, const std::string&, int, int,
                  const std::string&, bool, const std::string&, bool, bool) override {
    DataColumn column;
    column.Name = name;
    columns_.push_back(column);
    return columns_.back();
  }
  [[nodiscard]] std::size_t Count() const override { return columns_.size(); }
  [[nodiscard]] bool Exists(std::string_view) const override { return false; }
  [[nodiscard]] DataColumn& Item(std::string_view) override {
    throw std::out_of_range("no columns in the fake");
  }
  void CreateFields(float, int, int, int, bool, int, float, float) override {}
  void FillRow(Fields&, const std::string&) override {}

  int initialised = 0;
  TLReport* initialised_with = nullptr;
  bool fail_initialise = false;

 private:
  bool enabled_ = false;
  std::vector<DataColumn> columns_;
};

class FakeTLReport : public TLReport {
 public:
  void SetArReport(std::shared_ptr<ActiveReport> designer) override { designer_ = designer; }
  [[nodiscard]] std::shared_ptr<ActiveReport> arReport() const override { return designer_; }
  void SetReportName(const std::string& name) override { name_ = name; }
  [[nodiscard]] const std::string& ReportName() const override { return name_; }
  [[nodiscard]] trellin::Parameters& Parameters() override { return parameters_; }
  [[nodiscard]] trellin::DataColumns& DataColumns() override { return columns; }
  void SetHasParameters(bool has) override { has_parameters_ = has; }
  [[nodiscard]] bool HasParameters() const override { return has_parameters_; }
  [[nodiscard]] bool ColumnsInUse() const override { return false; }
  void DefineGroup(int, const std::string&, const std::string&, const std::string&, bool) override {
  }
  void EndDefineGroups() override {}
  [[nodiscard]] int GroupCount() const override { return 0; }
  void SetupGroupSections(bool, std::int64_t, bool) override {}
  void SetupUngroupedSections(const std::string&) override {}
  void SetupStandardHeader(bool) override {}
  void GroupHeaderFormat(int) override {}
  void GroupFooterFormat(int) override {}
  void ReportFooterBeforePrint() override {}
  void DetailFormat(Section&, const std::string&) override {}
  void ReportError(const std::string& source, const std::string& message) override {
    errors_.push_back({source, message});
  }
  [[nodiscard]] const std::vector<ReportErrorInfo>& Errors() const override { return errors_; }

  FakeDataColumns columns;

 private:
  std::shared_ptr<ActiveReport> designer_;
  std::string name_;
  trellin::Parameters parameters_;
  bool has_parameters_ = false;
  std::vector<ReportErrorInfo> errors_;
};

}  // namespace trellin::testing
