#pragma once
// The report service over one company (a file, or a database on a server), assembled the one way
// the CLI, tests and examples all use: business layer and application read from the company, a
// ReportHost for each report, the stored layouts (template folder first, then the compiled ones),
// TrellinReports initialised.

#include <memory>
#include <span>
#include <string>

#include "core/Catalogue.h"
#include "core/TrellinReports.h"
#include "platform/business/CompanyApplication.h"
#include "platform/business/CompanyBusinessLayer.h"
#include "platform/data/CompanyDatabase.h"
#include "platform/data/SqliteDatabase.h"

namespace trellin::host {

class ReportService {
 public:
  // Reads the company's settings and calendar from `database` (must not be null), installs the
  // layout provider process-wide and initialises the report service's globals. Throws what the
  // business layer and application throw for a company file they cannot read.
  explicit ReportService(std::shared_ptr<data::CompanyDatabase> database);
  // Opens the company file read-only first; DatabaseError names the file when it cannot.
  [[nodiscard]] static std::unique_ptr<ReportService> Open(const std::string& company_path);
  ReportService(const ReportService&) = delete;
  ReportService& operator=(const ReportService&) = delete;
  // Disposes the globals when they are still this service's.
  ~ReportService();

  [[nodiscard]] TrellinReports& Reports() { return reports_; }
  [[nodiscard]] data::CompanyDatabase& Database() { return *database_; }
  [[nodiscard]] const std::shared_ptr<data::CompanyDatabase>& DatabasePtr() const {
    return database_;
  }
  [[nodiscard]] business::CompanyBusinessLayer& BusinessLayer() { return *business_layer_; }
  [[nodiscard]] business::CompanyApplication& Application() { return *application_; }

  // The keys reports are asked for by, and the designers behind them: the built-in catalogue
  // and the built designers (reports/Designers.h) unless others are set (tests run designers of
  // their own this way). The spans must outlive the service's use of them.
  [[nodiscard]] std::span<const CatalogueEntry> Catalogue() const { return catalogue_; }
  void SetCatalogue(std::span<const CatalogueEntry> catalogue,
                    std::span<const DesignerEntry> designers) {
    catalogue_ = catalogue;
    reports_.SetDesigners(designers);
  }

 private:
  std::shared_ptr<data::CompanyDatabase> database_;
  std::shared_ptr<business::CompanyBusinessLayer> business_layer_;
  std::shared_ptr<business::CompanyApplication> application_;
  TrellinReports reports_;
  std::span<const CatalogueEntry> catalogue_;
};

}  // namespace trellin::host
