#include "core/TLRPXSupport.h"

#include <dlfcn.h>

#include <filesystem>

#include "core/TrellinReportGlobals.h"
#include "core/host/Application.h"
#include "core/host/BusinessLayer.h"
#include "core/host/HostDispatch.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {
namespace {

TLRPXSupport::DatabaseOpener& OpenerSlot() {
  static TLRPXSupport::DatabaseOpener opener;
  return opener;
}

// "Data Source=FILE;..." gives FILE; a string without it is the file itself.
std::string FileOfConnection(const std::string& connection) {
  const std::size_t at = InStr(connection, "Data Source=", 1, true);
  if (at == 0) return Trim(connection);
  std::string rest = connection.substr(at - 1 + 12);
  return Trim(rest.substr(0, rest.find(';')));
}

Variant ObjectOrNothing(std::shared_ptr<Object> object) {
  return object ? Variant(std::move(object)) : Variant();
}

// The folder of the file this code was loaded from (the program's, when linked into it).
std::string OwnFolder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&OwnFolder), &info) == 0 || info.dli_fname == nullptr) {
    return {};
  }
  std::error_code ec;
  std::filesystem::path file = std::filesystem::canonical(info.dli_fname, ec);
  if (ec) file = info.dli_fname;
  return (file.parent_path() / "").string();
}

}  // namespace

void TLRPXSupport::SetDatabaseOpener(DatabaseOpener opener) { OpenerSlot() = std::move(opener); }

TLRPXSupport::TLRPXSupport() : dateAsAt(Today()) {}

std::shared_ptr<Object> TLRPXSupport::ApplicationFor(std::string_view product) const {
  auto& layer = TrellinReportGlobals::BusinessLayer;
  if (!layer || layer->ProductName() != product) return nullptr;
  return TrellinReportGlobals::Application;
}

std::shared_ptr<Object> TLRPXSupport::KestraneBL(const std::string&, const std::string&) const {
  return ApplicationFor("Kestrane");
}

std::shared_ptr<Object> TLRPXSupport::LundrelBL(const std::string&, const std::string&) const {
  return ApplicationFor("Lundrel");
}

std::shared_ptr<Object> TLRPXSupport::MorvaneBL(const std::string&, const std::string&) const {
  return ApplicationFor("Morvane");
}

std::string TLRPXSupport::Format(const Variant& Value, const std::string& Format) {
  return trellin::Format(Value, Format);
}

std::shared_ptr<Recordset> TLRPXSupport::GetRecordset(const std::string& ConnectionString,
                                                      const std::string& SQL) const {
  try {
    std::shared_ptr<Database> database = TrellinReportGlobals::RequireDatabase();
    if (Trim(ConnectionString) != database->ConnectionString()) {
      const DatabaseOpener& opener = OpenerSlot();
      database = opener ? opener(FileOfConnection(ConnectionString)) : nullptr;
      if (!database) return nullptr;
    }
    return database->Query(SQL);
  } catch (const std::exception&) {
    return nullptr;
  }
}

std::shared_ptr<ActiveReport> TLRPXSupport::GetSubreport(const std::string& FileName) {
  auto report = std::make_shared<ActiveReport>(std::filesystem::path(FileName).stem().string());
  // A bare name is looked for in the template folder by the layout provider.
  (void)report->LoadLayoutFile(FileName);
  return report;
}

std::string TLRPXSupport::SQLBooleanToField(bool Value) { return Database::SQLBoolean(Value); }

std::string TLRPXSupport::SQLDateToField(const Variant& Value) {
  return Database::SQLDate(Value.ToDate());
}

std::string TLRPXSupport::SubstituteString(const std::string& Text) const {
  std::shared_ptr<Database> database = TrellinReportGlobals::RequireDatabase();
  auto written = [&](Date date) {
    return database->DatabaseType() == 1 ? "#" + trellin::Format(Variant(date), "m/d/yyyy") + "#"
                                         : "'" + trellin::Format(Variant(date), "yyyymmdd") + "'";
  };
  std::string text = Replace(Text, "{Now}", written(Today()), true);
  text = Replace(text, "{DateAsAt}", written(dateAsAt), true);
  text = Replace(text, "{TemplateFolder}", OwnFolder(), true);
  return TrellinReportGlobals::RequireApplication().SubstituteString(text, dateAsAt);
}

const MemberTable<TLRPXSupport>& TLRPXSupport::Table() {
  static const MemberTable<TLRPXSupport> table = [] {
    using Args = std::vector<Variant>;
    MemberTable<TLRPXSupport> t;
    t.Property(
        "dateAsAt", [](TLRPXSupport& s) { return Variant(s.dateAsAt); },
        [](TLRPXSupport& s, const Variant& v) { s.dateAsAt = v.ToDate(); });
    t.Property(
        "DateFrom", [](TLRPXSupport& s) { return s.DateFrom; },
        [](TLRPXSupport& s, const Variant& v) { s.DateFrom = v; });
    t.Property(
        "DateTo", [](TLRPXSupport& s) { return s.DateTo; },
        [](TLRPXSupport& s, const Variant& v) { s.DateTo = v; });
    t.Property("DesignMode", [](TLRPXSupport& s) { return Variant(s.DesignMode()); });
    t.Property("TLReport", [](TLRPXSupport& s) {
      return ObjectOrNothing(std::static_pointer_cast<Object>(s.TLReport.lock()));
    });
    t.Property("Parameters", [](TLRPXSupport& s) {
      return s.Parameters
                 ? Variant(std::static_pointer_cast<Object>(DispatchParameters(*s.Parameters)))
                 : Variant();
    });
    t.Property(
        "SQLWhere", [](TLRPXSupport& s) { return Variant(s.SQLWhere); },
        [](TLRPXSupport& s, const Variant& v) { s.SQLWhere = v.Text(); });
    t.Method("KestraneBL",
             [](TLRPXSupport& s, const Args&) { return ObjectOrNothing(s.KestraneBL()); });
    t.Method("LundrelBL",
             [](TLRPXSupport& s, const Args&) { return ObjectOrNothing(s.LundrelBL()); });
    t.Method("MorvaneBL",
             [](TLRPXSupport& s, const Args&) { return ObjectOrNothing(s.MorvaneBL()); });
    t.Method("Format", [](TLRPXSupport&, const Args& a) {
      return Variant(Format(Arg(a, 0), Arg(a, 1).Text()));
    });
    t.Method("GetRecordset", [](TLRPXSupport& s, const Args& a) {
      std::shared_ptr<Recordset> rs = s.GetRecordset(Arg(a, 0).Text(), Arg(a, 1).Text());
      return rs ? Variant(std::static_pointer_cast<Object>(DispatchRecordset(rs))) : Variant();
    });
    t.Method("GetSubreport", [](TLRPXSupport&, const Args& a) {
      return Variant(
          std::static_pointer_cast<Object>(DispatchReport(GetSubreport(Arg(a, 0).Text()))));
    });
    t.Method("SQLBooleanToField", [](TLRPXSupport&, const Args& a) {
      return Variant(SQLBooleanToField(Arg(a, 0).ToBool()));
    });
    t.Method("SQLDateToField",
             [](TLRPXSupport&, const Args& a) { return Variant(SQLDateToField(Arg(a, 0))); });
    t.Method("SubstituteString", [](TLRPXSupport& s, const Args& a) {
      return Variant(s.SubstituteString(Arg(a, 0).Text()));
    });
    return t;
  }();
  return table;
}

}  // namespace trellin
