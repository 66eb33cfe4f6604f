// The catalogue of report keys, read against its written-out form in catalogue.tsv.

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "FakeHost.h"
#include "Fakes.h"
#include "core/Catalogue.h"
#include "reports/Designers.h"
#include "tests/support/CaseFile.h"

namespace trellin::testing {
namespace {

// catalogue.tsv: key, designer, caption, document name; "-" for rows that keep their layout's
// titles, "*" for the rows titled from the key.
TEST(Catalogue, KeysDesignersAndTitlesInComparisonOrder) {
  const std::vector<CaseRow> expected = ReadCases("core/catalogue.tsv", 3);
  ASSERT_EQ(expected.size(), 164u);
  const auto catalogue = Catalogue();
  ASSERT_EQ(catalogue.size(), 164u);
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const CatalogueEntry& entry = catalogue[i];
    const std::vector<std::string>& row = expected[i].fields;
    SCOPED_TRACE(expected[i].Where());
    EXPECT_EQ(entry.key, row[0]);
    EXPECT_EQ(entry.designer, row[1]);
    if (row[2] == "-") {
      EXPECT_EQ(entry.caption_rule, CaptionRule::kLayout);
    } else if (row[2] == "*") {
      EXPECT_EQ(entry.caption_rule, CaptionRule::kDocumentKey);
    } else {
      ASSERT_EQ(entry.caption_rule, CaptionRule::kGiven);
      ASSERT_EQ(row.size(), 4u);
      EXPECT_EQ(entry.caption, row[2]);
      EXPECT_EQ(entry.document_name, row[3]);
    }
  }
}

// How a row's captions become the designer's: given, from the key, or the layout's own.
TEST(Catalogue, CaptionsByRule) {
  const struct {
    const char* key;
    const char* caption;
    const char* document_name;
  } cases[] = {
      {"SalesAnalysisAR", "AR Sales Analysis", "Sales Analysis Report"},
      {"DocumentAP", "AP Document", "AP Document"},
      {"DocumentJO", "JO Document", "JO Document"},
      {"AssetList", "", ""},
  };
  for (const auto& c : cases) {
    const CatalogueEntry* entry = FindCatalogueEntry(Catalogue(), c.key);
    ASSERT_NE(entry, nullptr) << c.key;
    const CatalogueCaptions captions = CaptionsFor(*entry, c.key);
    EXPECT_EQ(captions.caption, c.caption) << c.key;
    EXPECT_EQ(captions.document_name, c.document_name) << c.key;
  }
  // Keys match exactly, case and blanks included.
  for (const std::string key : {"assetlist", "SalesOrder", "Sales  Order", "", "LedgerAR "}) {
    EXPECT_EQ(FindCatalogueEntry(Catalogue(), key), nullptr) << "'" << key << "'";
  }
}

TEST(Catalogue, AreasAreTheReportFolders) {
  const std::set<std::string> areas = {"ledger", "receivables", "stock", "assets", "jobs", "admin"};
  std::map<std::string, std::string> area_of_designer;
  for (const CatalogueEntry& entry : Catalogue()) {
    EXPECT_TRUE(areas.count(entry.area)) << entry.key << " in " << entry.area;
    // One designer lives in one folder, whichever key asks for it.
    auto [it, added] = area_of_designer.emplace(entry.designer, entry.area);
    EXPECT_EQ(it->second, entry.area) << entry.designer;
  }
}

TEST(Catalogue, UnbuiltKeysGiveNothing) {
  ServiceFixture fixture(Designers());
  const std::vector<std::string> unbuilt = UnbuiltReportKeys(Catalogue(), Designers());
  std::size_t next = 0;
  for (const CatalogueEntry& entry : Catalogue()) {
    if (FindKeyFactory(Designers(), entry) != nullptr) continue;
    ASSERT_LT(next, unbuilt.size());
    EXPECT_EQ(unbuilt[next++], entry.key);
    EXPECT_EQ(fixture.service.Report(entry.key), nullptr) << entry.key;
  }
  EXPECT_EQ(next, unbuilt.size());
  EXPECT_EQ(fixture.business_layer->report_factory.created, 0);
}

TEST(Catalogue, BuiltKeysMakeTheirDesigner) {
  ServiceFixture fixture(Designers());
  for (const CatalogueEntry& entry : Catalogue()) {
    if (FindKeyFactory(Designers(), entry) == nullptr) continue;
    SCOPED_TRACE(entry.key);
    DesignerPtr designer = fixture.service.Report(entry.key);
    ASSERT_NE(designer, nullptr);
    EXPECT_EQ(designer->DesignerName(), entry.designer);
    EXPECT_EQ(designer->TLReport()->ReportName(), entry.key);
    const CatalogueCaptions captions = CaptionsFor(entry, entry.key);
    if (entry.caption_rule != CaptionRule::kLayout) {
      EXPECT_EQ(designer->Caption(), captions.caption);
      EXPECT_EQ(designer->documentName(), captions.document_name);
    }
    designer->TLReport()->SetArReport(nullptr);
  }
}

}  // namespace
}  // namespace trellin::testing
