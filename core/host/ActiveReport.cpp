#include "core/host/ActiveReport.h"

#include <exception>

namespace trellin {
namespace {

std::shared_ptr<LayoutProvider>& ProviderSlot() {
  static std::shared_ptr<LayoutProvider> provider;
  return provider;
}

std::shared_ptr<ScriptEngine>& ScriptEngineSlot() {
  static std::shared_ptr<ScriptEngine> engine;
  return engine;
}

}  // namespace

void ActiveReport::SetScriptEngine(std::shared_ptr<ScriptEngine> engine) {
  ScriptEngineSlot() = std::move(engine);
}

std::shared_ptr<ScriptEngine> ActiveReport::GetScriptEngine() { return ScriptEngineSlot(); }

void ActiveReport::SetLayoutProvider(std::shared_ptr<LayoutProvider> provider) {
  ProviderSlot() = std::move(provider);
}

std::shared_ptr<LayoutProvider> ActiveReport::GetLayoutProvider() { return ProviderSlot(); }

void ActiveReport::Initialize() {
  if (initialized_) return;
  initialized_ = true;
  // A designer built in code (tests, reports that make all their sections) has sections already.
  if (auto provider = ProviderSlot(); provider && sections_.Count() == 0) {
    provider->Load(designer_name_, *this);
  }
  try {
    ActiveReport_Initialize();
  } catch (const std::exception& e) {
    if (!error_hook_) throw;
    error_hook_("ActiveReport_Initialize", e.what());
  }
}

bool ActiveReport::LoadLayoutFile(const std::string& path) {
  auto provider = ProviderSlot();
  if (!provider || sections_.Count() != 0) return false;
  try {
    if (provider->LoadFile(path, *this)) return true;
  } catch (const std::exception&) {
  }
  // A half-read layout is worse than none: start again from an empty report.
  sections_.Clear();
  script_.reset();
  return false;
}

Control& ActiveReport::Field(std::string_view control_name) const {
  if (Control* c = FindControl(control_name)) return *c;
  throw NoSuchItem(designer_name_ + " has no control named '" + std::string(control_name) + "'");
}

Control* ActiveReport::FindControl(std::string_view control_name) const {
  for (Section& s : sections_) {
    if (Control* c = s.Controls().Find(control_name)) return c;
  }
  return nullptr;
}

}  // namespace trellin
