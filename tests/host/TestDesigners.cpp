// The designers of the host tests, written as report code is: parameters, SQL, groups and the
// hand-over of section events to the host.

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "platform/engine/LayoutLoader.h"
#include "platform/runtime/Strings.h"
#include "tests/host/HostFixture.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPaths.h"

namespace trellin::host::testing {

namespace {

// The level number ending a group section's name: "GroupFooter2" -> 2; 0 for other sections.
int LevelOf(const Section& section, std::string_view prefix) {
  if (section.Name().rfind(prefix, 0) != 0) return 0;
  return std::stoi(section.Name().substr(prefix.size()));
}

struct Grouping {
  const char* choice;
  const char* name;
  const char* key_field;
  const char* list_sql;
};

constexpr Grouping kGroupings[] = {
    {"Type", "Customer Type", "OtherParty.CustomerTypeId",
     "SELECT CustomerTypeId,Description FROM CustomerType"},
    {"Category", "Customer Category", "CustomerCategoryId",
     "SELECT CustomerCategoryId,Description FROM CustomerCategory"},
};

// Loads tests/host/layouts/<name>.yaml into `report`.
void LoadTestLayout(const std::string& name, ActiveReport& report) {
  const std::string file = name + ".yaml";
  engine::LoadLayout(trellin::testing::ReadFile(trellin::testing::TestDir("host/layouts") / file),
                     file, report);
}

constexpr char kCustomersSQL[] =
    "SELECT OtherPartyId,Name,CustomerTypeId,CustomerCategoryId,CustomerCreditLimit,"
    "CustomerDiscRate FROM OtherParty WHERE IsCustomer=True ORDER BY ";

// Hands the section events to the host, as every grouped designer does.
class HostedDesigner : public Designer {
 public:
  // The stored layout is tests/host/layouts/<name>.yaml.
  explicit HostedDesigner(std::string name) : Designer(name) { LoadTestLayout(name, *this); }

  void OnFormat(Section& section) override {
    trellin::TLReport& host = *TLReport();
    if (int level = LevelOf(section, "GroupHeader")) host.GroupHeaderFormat(level);
    if (int level = LevelOf(section, "GroupFooter")) host.GroupFooterFormat(level);
    if (section.Type() == SectionType::Detail) DetailFormat(section);
  }
  void OnBeforePrint(Section& section) override {
    if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
  }

 protected:
  virtual void DetailFormat(Section&) {}
  [[nodiscard]] std::string Text(const char* name) const {
    return TLReport()->Parameters().Value(name, Variant("")).Text();
  }

  // Defines the groups picked in Groupings, last picked innermost, and returns the ORDER BY
  // keys they need, outermost first.
  std::string DefineGroups() {
    std::vector<MultiListItem> items = SplitMultiListValue(Text("Groupings"));
    std::string order;
    const int count = static_cast<int>(items.size());
    for (int i = count - 1; i >= 0; --i) {
      for (const Grouping& grouping : kGroupings) {
        if (!EqualsIgnoreCase(items[static_cast<std::size_t>(i)].Choice, grouping.choice)) continue;
        TLReport()->DefineGroup(count - i, grouping.name, grouping.key_field, grouping.list_sql,
                                items[static_cast<std::size_t>(i)].PageBreak);
        order = std::string(grouping.key_field) + "," + order;
      }
    }
    TLReport()->EndDefineGroups();
    return order;
  }
};

class arTestCustomers : public HostedDesigner {
 public:
  arTestCustomers() : HostedDesigner("arTestCustomers") {}

  void RefreshParameters(std::string&) override {
    TLReport()->SetHasParameters(true);
    Parameters& parameters = TLReport()->Parameters();
    parameters.AddMultiList("Groupings", Variant(""), false, "", Variant(""), "Type,Category",
                            false, false, "Groupings");
    parameters.AddBoolean("Summary", false, false, "", false, false, "Summary");
    parameters.AddDate("DateAsAt", Variant::Missing(), true, "Date As At", Variant("EOM"), false,
                       "Date As At");
    parameters.AddNumber("LimitFrom", Variant(), false, "", Variant(), -9999999999, false,
                         "Limit From");
    parameters.AddString("Fail", Variant(""), false, "", Variant(""), false, "");
  }

  void ActiveReport_ReportStart() override {
    std::string order = DefineGroups();
    TLReport()->SetupGroupSections(TLReport()->Parameters().Value("Summary").ToBool(), 200, true);
    TLReport()->SetupStandardHeader(true);
    if (Text("Fail") == "ReportStart") throw std::runtime_error("the SQL cannot be built");
    PrepareDataControl(DataControl());
    DataControl().SetSource(kCustomersSQL + order + "OtherPartyId");
  }

 protected:
  void DetailFormat(Section&) override {
    if (Text("Fail") == "Detail" && Fields().Item("OtherPartyId").Value().Text() == "C2") {
      throw std::runtime_error("row C2 cannot be shown");
    }
  }
};

class arTestColumns : public HostedDesigner {
 public:
  arTestColumns() : HostedDesigner("arTestColumns") {}

  void RefreshParameters(std::string&) override {
    TLReport()->SetHasParameters(true);
    TLReport()->DataColumns().SetEnabled(true);
    TLReport()->Parameters().AddMultiList("Groupings", Variant(""), false, "", Variant(""),
                                          "Type,Category", false, false, "Groupings");
  }

  void RefreshDataColumns() override {
    DataColumns& columns = TLReport()->DataColumns();
    columns.Add("Code", "OtherPartyId", 6, "Code", "", -1, 1000, -1, 0, "(auto)", 0, 0, "", true,
                "", false, false);
    columns.Add("Name", "Name", 0, "Name", "", -1, -1, -1, 0, "(auto)", 0, 0, "", true, "", false,
                false);
    columns.Add("Limit", "CustomerCreditLimit", 4, "Credit Limit", "Limit", 900, -1, -1, 0,
                "(auto)", 0, 0, "", true, "Terms", true, false);
    columns.Add("Discount", "CustomerDiscRate", 1, "Discount", "", 1000, -1, -1, 0, "Round", 2, 2,
                "", true, "Terms", true, false);
    // An optional column: added, but hidden until a report shows it.
    columns
        .Add("Category", "CustomerCategoryId", 0, "Category", "", 1200, -1, -1, 3, "(auto)", 0, 0,
             "", true, "", false, false)
        .Hidden = true;
  }

  void ActiveReport_ReportStart() override {
    if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
    std::string order = DefineGroups();
    TLReport()->SetupGroupSections(false, 200, true);
    TLReport()->SetupStandardHeader(true);
    TLReport()->DataColumns().CreateFields(Field("lblHeading").Top(), 0, 15, 0, true, 0, 10.0f,
                                           8.0f);
    PrepareDataControl(DataControl());
    DataControl().SetSource(kCustomersSQL + order + "OtherPartyId");
  }

 protected:
  void DetailFormat(Section&) override {
    if (TLReport()->ColumnsInUse()) TLReport()->DataColumns().FillRow(Fields(), "");
  }
};

// The customers of one type: the sub-report of arTestTypes.
class arTestTypeCustomers : public ActiveReport {
 public:
  arTestTypeCustomers() : ActiveReport("arTestTypeCustomers") {
    LoadTestLayout("arTestTypeCustomers", *this);
  }
  void ActiveReport_Initialize() override { PrepareDataControl(DataControl()); }
  void ActiveReport_ReportStart() override {
    DataControl().SetSource(
        "SELECT OtherPartyId FROM OtherParty WHERE IsCustomer=True AND CustomerTypeId='" + type +
        "' ORDER BY OtherPartyId");
  }

  std::string type;
};

class arTestTypes : public HostedDesigner {
 public:
  arTestTypes() : HostedDesigner("arTestTypes") {}

  void ActiveReport_ReportStart() override {
    customers_ = std::make_shared<arTestTypeCustomers>();
    Field("srptCustomers").SetObject(customers_);
    PrepareDataControl(DataControl());
    DataControl().SetSource("SELECT CustomerTypeId FROM CustomerType ORDER BY CustomerTypeId");
  }

 protected:
  void DetailFormat(Section&) override {
    customers_->type = Fields()["CustomerTypeId"].Value().Text();
  }

 private:
  std::shared_ptr<arTestTypeCustomers> customers_;
};

DesignerPtr CreatearTestCustomers() { return std::make_shared<arTestCustomers>(); }
DesignerPtr CreatearTestColumns() { return std::make_shared<arTestColumns>(); }
DesignerPtr CreatearTestTypes() { return std::make_shared<arTestTypes>(); }

constexpr CatalogueEntry kTestCatalogue[] = {
    {"CustomersByType", "arTestCustomers", CaptionRule::kGiven, "Customers By Type",
     "Customers By Type", "admin"},
    {"CustomerColumns", "arTestColumns", CaptionRule::kLayout, "", "", "admin"},
    {"CustomerTypes", "arTestTypes", CaptionRule::kLayout, "", "", "admin"},
    {"NotBuilt", "arNotBuilt", CaptionRule::kLayout, "", "", "admin"},
};

// arNotBuilt has no row: its key gives nothing.
constexpr DesignerEntry kTestDesigners[] = {
    {"arTestCustomers", CreatearTestCustomers},
    {"arTestColumns", CreatearTestColumns},
    {"arTestTypes", CreatearTestTypes},
};

}  // namespace

std::span<const CatalogueEntry> TestCatalogue() { return kTestCatalogue; }
std::span<const DesignerEntry> TestDesigners() { return kTestDesigners; }

}  // namespace trellin::host::testing
