#include "platform/host/run/ReportService.h"

#include "core/TLRPXSupport.h"
#include "layouts/EmbeddedLayouts.h"
#include "platform/data/SqliteDatabase.h"
#include "platform/engine/LayoutLibrary.h"
#include "platform/host/ReportHost.h"
#include "platform/script/LuaScript.h"
#include "reports/Designers.h"

namespace trellin::host {

namespace {

std::optional<engine::StoredLayout> CompiledLayout(std::string_view designer) {
  std::optional<layouts::EmbeddedLayout> found = layouts::FindEmbeddedLayout(designer);
  if (!found) return std::nullopt;
  return engine::StoredLayout{std::string(found->path), std::string(found->text)};
}

}  // namespace

ReportService::ReportService(std::shared_ptr<data::CompanyDatabase> database)
    : database_(std::move(database)), catalogue_(trellin::Catalogue()) {
  if (!database_) throw std::invalid_argument("The report service needs a company database.");
  business_layer_ = std::make_shared<business::CompanyBusinessLayer>(database_);
  application_ = std::make_shared<business::CompanyApplication>(database_);
  // The factory holds the business layer weakly: the layer owns the factory.
  std::weak_ptr<business::CompanyBusinessLayer> weak_layer = business_layer_;
  business_layer_->SetReportFactory([weak_layer]() -> std::shared_ptr<TLReport> {
    return std::make_shared<ReportHost>(weak_layer.lock());
  });
  ActiveReport::SetLayoutProvider(std::make_shared<engine::LayoutLibrary>(
      CompiledLayout, std::filesystem::path(application_->Options().TemplateFolder())));
  ActiveReport::SetScriptEngine(std::make_shared<script::LuaScriptEngine>());
  // A script's rpx:GetRecordset on another company file opens it read only; a file that does
  // not open is an error GetRecordset turns into nothing.
  TLRPXSupport::SetDatabaseOpener(
      [](const std::string& path) -> std::shared_ptr<trellin::Database> {
        return data::SqliteDatabase::Open(path);
      });
  reports_.Initialise(business_layer_, application_);
  reports_.SetDesigners(trellin::Designers());
}

std::unique_ptr<ReportService> ReportService::Open(const std::string& company_path) {
  return std::make_unique<ReportService>(data::SqliteDatabase::Open(company_path));
}

ReportService::~ReportService() = default;

}  // namespace trellin::host
