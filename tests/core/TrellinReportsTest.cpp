// The service object: globals, Report's steps over a catalogue of test designers, item codes.

#include <gtest/gtest.h>

#include "FakeHost.h"
#include "Fakes.h"
#include "core/TrellinReportGlobals.h"

namespace trellin::testing {
namespace {

// Declares one parameter, then fails when asked to, as a designer whose declarations break
// part way.
class TestDesigner : public Designer {
 public:
  TestDesigner(std::string name, bool fail) : Designer(std::move(name)), fail_(fail) {}
  // Stands in for the stored layout's titles.
  void ActiveReport_Initialize() override {
    SetCaption("Caption of the layout");
    SetDocumentName("Document of the layout");
  }
  void RefreshParameters(std::string& ReportName) override {
    seen_name = ReportName;
    TLReport()->SetHasParameters(true);
    Parameters& parameters = TLReport()->Parameters();
    parameters.AddBoolean("Summary", false, true, "", false, false, "Summary");
    if (fail_) throw std::runtime_error("declaration failed");
    parameters.AddBoolean("Drilldown", false, false, "", false, false, "Drilldown");
  }
  std::string seen_name;

 private:
  bool fail_;
};

DesignerPtr MakeLedger() { return std::make_shared<TestDesigner>("ardscrLedger", false); }
DesignerPtr MakeAssetList() { return std::make_shared<TestDesigner>("arfaAssetList", false); }
DesignerPtr MakeDocument() { return std::make_shared<TestDesigner>("arDocumentTemplate", false); }
DesignerPtr MakeBroken() { return std::make_shared<TestDesigner>("arBroken", true); }

const CatalogueEntry kTestCatalogue[] = {
    {"AssetList", "arfaAssetList", CaptionRule::kLayout, nullptr, nullptr, "assets"},
    {"LedgerAR", "ardscrLedger", CaptionRule::kGiven, "AR Ledger", "Accounts Receivable Ledger",
     "receivables"},
    {"DocumentJO", "arDocumentTemplate", CaptionRule::kDocumentKey, nullptr, nullptr, "admin"},
    {"Broken", "arBroken", CaptionRule::kLayout, nullptr, nullptr, "admin"},
    {"Unbuilt", "arUnbuilt", CaptionRule::kLayout, nullptr, nullptr, "admin"},
    {"LedgerAR", "arSecond", CaptionRule::kGiven, "Second", "Second", "admin"},
};

// arUnbuilt has no row: its key gives nothing.
const DesignerEntry kTestDesigners[] = {
    {"arfaAssetList", &MakeAssetList},
    {"ardscrLedger", &MakeLedger},
    {"arDocumentTemplate", &MakeDocument},
    {"arBroken", &MakeBroken},
    {"arSecond", &MakeBroken},
};

FakeTLReport& HostOf(const DesignerPtr& designer) {
  return dynamic_cast<FakeTLReport&>(*designer->TLReport());
}

TEST(Report, TiesAFreshDesignerToAFreshHost) {
  ServiceFixture fixture(kTestDesigners);
  struct Case {
    std::string key, designer, caption, document_name;
  } cases[] = {
      {"AssetList", "arfaAssetList", "Caption of the layout", "Document of the layout"},
      {"LedgerAR", "ardscrLedger", "AR Ledger", "Accounts Receivable Ledger"},
      {"DocumentJO", "arDocumentTemplate", "JO Document", "JO Document"},
  };
  for (const Case& c : cases) {
    DesignerPtr designer = fixture.service.ReportFrom(kTestCatalogue, c.key);
    ASSERT_NE(designer, nullptr) << c.key;
    EXPECT_EQ(designer->DesignerName(), c.designer);
    EXPECT_EQ(designer->Caption(), c.caption) << c.key;
    EXPECT_EQ(designer->documentName(), c.document_name) << c.key;
    FakeTLReport& host = HostOf(designer);
    EXPECT_EQ(host.ReportName(), c.key);
    EXPECT_EQ(host.arReport(), designer);
    EXPECT_TRUE(host.HasParameters());
    EXPECT_EQ(static_cast<TestDesigner&>(*designer).seen_name, c.key);
    EXPECT_EQ(host.columns.initialised, 1) << c.key;
    EXPECT_EQ(host.columns.initialised_with, &host);
    EXPECT_TRUE(host.Parameters().Exists("Drilldown"));
    ASSERT_TRUE(designer->ErrorHook());
    designer->ErrorHook()("Detail_Format", "Division by zero");
    ASSERT_EQ(host.Errors().size(), 1u);
    EXPECT_EQ(host.Errors()[0].source, "Detail_Format");
    EXPECT_EQ(host.Errors()[0].message, "Division by zero");
    host.SetArReport(nullptr);  // the caller breaks the cycle
  }
}

TEST(Report, KeysMatchExactlyAndUnknownKeysGiveNothing) {
  ServiceFixture fixture(kTestDesigners);
  for (const std::string key : {"assetlist", "ASSETLIST", "AssetList ", "Unbuilt", "", "Nope"}) {
    EXPECT_EQ(fixture.service.ReportFrom(kTestCatalogue, key), nullptr) << "'" << key << "'";
  }
  EXPECT_EQ(fixture.business_layer->report_factory.created, 0);
}

TEST(Report, TwoCallsGiveTwoDesignersWithTwoHosts) {
  ServiceFixture fixture(kTestDesigners);
  DesignerPtr first = fixture.service.ReportFrom(kTestCatalogue, "LedgerAR");
  DesignerPtr second = fixture.service.ReportFrom(kTestCatalogue, "LedgerAR");
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(first, second);
  EXPECT_NE(first->TLReport(), second->TLReport());
  // The first row with the key serves it.
  EXPECT_EQ(second->DesignerName(), "ardscrLedger");
  EXPECT_EQ(fixture.business_layer->report_factory.created, 2);
  first->TLReport()->SetArReport(nullptr);
  second->TLReport()->SetArReport(nullptr);
}

TEST(Report, DeclarationAndColumnFailuresAreIgnored) {
  ServiceFixture fixture(kTestDesigners);
  fixture.business_layer->report_factory.fail_columns = true;
  DesignerPtr designer = fixture.service.ReportFrom(kTestCatalogue, "Broken");
  ASSERT_NE(designer, nullptr);
  FakeTLReport& host = HostOf(designer);
  // What was declared before the failure stays.
  EXPECT_TRUE(host.Parameters().Exists("Summary"));
  EXPECT_FALSE(host.Parameters().Exists("Drilldown"));
  EXPECT_EQ(host.columns.initialised, 1);
  EXPECT_EQ(host.ReportName(), "Broken");
  host.SetArReport(nullptr);
}

TEST(Report, HostFailuresAndAMissingServiceReachTheCaller) {
  {
    ServiceFixture fixture(kTestDesigners);
    fixture.business_layer->report_factory.fail = true;
    EXPECT_THROW((void)fixture.service.ReportFrom(kTestCatalogue, "LedgerAR"), std::runtime_error);
  }
  TrellinReports uninitialised;
  uninitialised.SetDesigners(kTestDesigners);
  EXPECT_THROW((void)uninitialised.ReportFrom(kTestCatalogue, "LedgerAR"), ObjectNotSet);
  // An unknown key stays silent even then.
  EXPECT_EQ(uninitialised.ReportFrom(kTestCatalogue, "Nope"), nullptr);
}

TEST(Designer, StandardValidationAsksTheParameters) {
  ServiceFixture fixture(kTestDesigners);
  DesignerPtr designer = fixture.service.ReportFrom(kTestCatalogue, "LedgerAR");
  ASSERT_NE(designer, nullptr);
  EXPECT_TRUE(designer->ValidateParameters());
  designer->TLReport()->SetArReport(nullptr);

  TestDesigner without_host("arLonely", false);
  EXPECT_THROW((void)without_host.ValidateParameters(), ObjectNotSet);
}

TEST(TrellinReports, GlobalsLiveFromInitialiseToDispose) {
  auto business_layer = std::make_shared<FakeBusinessLayer>();
  auto application = std::make_shared<FakeApplication>();
  {
    TrellinReports service;
    service.Initialise(business_layer, application);
    EXPECT_EQ(TrellinReportGlobals::BusinessLayer, business_layer);
    EXPECT_EQ(TrellinReportGlobals::Application, application);
    EXPECT_EQ(TrellinReportGlobals::TrellinReports, &service);
    EXPECT_EQ(&TrellinReportGlobals::RequireTrellinReports(), &service);
    {
      // A second service replaces the globals; the first one's end leaves them alone.
      auto other_layer = std::make_shared<FakeBusinessLayer>();
      TrellinReports second;
      second.Initialise(other_layer, nullptr);
      EXPECT_EQ(TrellinReportGlobals::BusinessLayer, other_layer);
      EXPECT_EQ(TrellinReportGlobals::Application, nullptr);
      EXPECT_THROW((void)TrellinReportGlobals::RequireApplication(), ObjectNotSet);
      service.Initialise(business_layer, application);
    }
    EXPECT_EQ(TrellinReportGlobals::TrellinReports, &service);
    service.Dispose();
    service.Dispose();
    EXPECT_EQ(TrellinReportGlobals::BusinessLayer, nullptr);
    EXPECT_EQ(TrellinReportGlobals::TrellinReports, nullptr);
    service.Initialise(business_layer, application);
  }
  // The instance named by the globals clears them when it ends.
  EXPECT_EQ(TrellinReportGlobals::BusinessLayer, nullptr);
  EXPECT_EQ(TrellinReportGlobals::Application, nullptr);
  EXPECT_EQ(TrellinReportGlobals::TrellinReports, nullptr);
  EXPECT_THROW((void)TrellinReportGlobals::RequireBusinessLayer(), ObjectNotSet);
}

TEST(TrellinReports, ItemCodeWidthFollowsTheSetting) {
  ServiceFixture fixture(kTestDesigners);
  struct Case {
    std::int16_t setting;
    std::int64_t width;
  } cases[] = {{0, 1600}, {-1, 1600}, {-32768, 1600}, {1, 2600}, {2, 2600}, {32767, 2600}};
  for (const Case& c : cases) {
    fixture.application->options.item_code_setting = c.setting;
    EXPECT_EQ(fixture.service.ItemCodeWidth(), c.width) << c.setting;
  }
  fixture.service.Dispose();
  EXPECT_THROW((void)fixture.service.ItemCodeWidth(), ObjectNotSet);
}

}  // namespace
}  // namespace trellin::testing
