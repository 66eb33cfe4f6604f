// Report: from a catalogue key to a designer tied to its host, parameters declared.

#include <memory>
#include <string>

#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"

namespace trellin {

DesignerPtr TrellinReports::Report(const std::string& ReportName,
                                   std::shared_ptr<Object> reserved) {
  // The second argument is held by this parameter for the call's duration and used nowhere.
  (void)reserved;
  return ReportFrom(Catalogue(), ReportName);
}

DesignerPtr TrellinReports::ReportFrom(std::span<const CatalogueEntry> catalogue,
                                       const std::string& ReportName) {
  std::string key = ReportName;
  // An unknown key, or one whose designer is not built, gives nothing and says nothing.
  const CatalogueEntry* entry = FindCatalogueEntry(catalogue, key);
  if (entry == nullptr) return nullptr;
  const DesignerFactory factory = FindKeyFactory(designers_, *entry);
  if (factory == nullptr) return nullptr;

  DesignerPtr designer = factory();
  if (!designer) return nullptr;
  // Making a designer loads its stored layout and raises ActiveReport_Initialize; the captions
  // set below then override the layout's. A layout that cannot be read reaches the caller.
  designer->Initialize();
  if (entry->caption_rule != CaptionRule::kLayout) {
    CatalogueCaptions captions = CaptionsFor(*entry, key);
    designer->SetCaption(std::move(captions.caption));
    designer->SetDocumentName(std::move(captions.document_name));
  }

  std::shared_ptr<trellin::TLReport> host =
      TrellinReportGlobals::RequireBusinessLayer().ReportFactory().CreateReport();
  if (!host) throw ObjectNotSet("Object variable not set: the ReportFactory made no TLReport");
  designer->SetTLReport(host);
  host->SetArReport(designer);
  // An event's failure goes to the host and ends that event quietly; the host decides whether
  // the run goes on. The hook holds the host weakly: host and designer already hold each other.
  designer->SetErrorHook([weak_host = std::weak_ptr<trellin::TLReport>(host)](
                             const std::string& source, const std::string& message) {
    if (std::shared_ptr<trellin::TLReport> tied = weak_host.lock()) {
      tied->ReportError(source, message);
    }
  });
  // Designers that serve several keys branch on this name, not on their class.
  host->SetReportName(key);

  // Declaring parameters and initialising the columns run under a resume-next rule: a designer
  // whose declarations fail part way is still handed out, with what it had added by then.
  try {
    designer->RefreshParameters(key);
  } catch (...) {
  }
  try {
    host->DataColumns().Initialise(*host);
  } catch (...) {
  }
  return designer;
}

}  // namespace trellin
