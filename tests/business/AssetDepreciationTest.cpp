// The depreciation calculator on hand-worked assets (depreciation.tsv), its portions, components,
// the run and the Asset object; and on the demo company, each year's posted depreciation given
// back by the calculator when it is taken out.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <set>

#include "platform/business/AssetBook.h"
#include "platform/business/CompanyAssetDepreciation.h"
#include "platform/data/CompanyFile.h"
#include "platform/data/SqliteDatabase.h"
#include "platform/runtime/Strings.h"
#include "tests/support/CaseFile.h"
#include "tests/support/DemoCache.h"
#include "tests/support/TempFolder.h"

namespace trellin::business {
namespace {

using trellin::testing::CaseRow;

Date Day(std::string_view iso) { return *Date::FromIso(iso); }

Currency Money(std::string_view text) { return *Currency::Parse(Trim(text)); }

// Two known years; the calculator runs on by whole years either side.
std::vector<FinancialYear> Years() {
  return {{4, "2024/25", Day("2024-04-01"), Day("2025-03-31")},
          {5, "2025/26", Day("2025-04-01"), Day("2026-03-31")}};
}

void SetMethod(const std::string& text, int& basis, double& rate) {
  const std::vector<std::string> parts = Split(text, " ");
  basis = parts[0] == "SL" ? 1 : parts[0] == "DV" ? 2 : 0;
  rate = std::stod(parts[1]);
}

// An asset from a row: the methods and "type date value[/tax]" movements.
AssetRecord AssetOf(const CaseRow& row) {
  AssetRecord asset;
  asset.id = row.fields[0];
  SetMethod(row.fields[1], asset.basis, asset.rate);
  SetMethod(row.fields[2], asset.basis_tax, asset.rate_tax);
  for (const std::string& item : Split(row.fields[3], ", ")) {
    const std::vector<std::string> parts = Split(item, " ");
    const std::vector<std::string> values = Split(parts[2], "/");
    AssetMovement m{asset.id, std::stoi(parts[0]), Day(parts[1]), Money(values[0]),
                    Money(values.size() > 1 ? values[1] : values[0])};
    if (m.Type == 10 && !asset.purchased) asset.purchased = m.Date;
    asset.movements.push_back(m);
  }
  return asset;
}

Variant DayOrNull(const std::string& text) {
  return text == "-" ? Variant::Null() : Variant(Day(text));
}

TEST(AssetDepreciationTest, HandWorkedAssetsGiveTheirFiguresToTheCentOnBothBases) {
  const auto rows = trellin::testing::ReadCases("business/depreciation.tsv", 9);
  ASSERT_GE(rows.size(), 25u);
  for (const CaseRow& row : rows) {
    auto book = std::make_shared<AssetBook>();
    book->Add(AssetOf(row));
    CompanyAssetDepreciation calc(book);
    std::string result;
    ASSERT_TRUE(calc.Calculate(row.fields[0], Day(row.fields[4]), false, Years(), result))
        << row.Where();
    Currency normal, tax;
    if (row.fields[5] == "run") {
      normal = calc.Figures().Depreciation;
      tax = calc.Figures().DepreciationTax;
    } else {
      normal =
          calc.DepreciationForPeriod(DayOrNull(row.fields[5]), DayOrNull(row.fields[6]), false);
      tax = calc.DepreciationForPeriod(DayOrNull(row.fields[5]), DayOrNull(row.fields[6]), true);
    }
    EXPECT_EQ(normal.ToString(), Money(row.fields[7]).ToString()) << row.Where();
    EXPECT_EQ(tax.ToString(), Money(row.fields[8]).ToString()) << row.Where();
  }
}

// The first hand-worked asset, DV 20% (tax 25%) on 10,000.00 bought 1 October 2024.
AssetRecord FirstAsset() {
  AssetRecord a;
  a.id = "DV20";
  a.description = "Press";
  a.basis = 2;
  a.rate = 20;
  a.basis_tax = 2;
  a.rate_tax = 25;
  a.purchased = Day("2024-10-01");
  a.movements = {{"DV20", 10, Day("2024-10-01"), Money("10000"), Money("10000")}};
  return a;
}

TEST(AssetDepreciationTest, PortionsKeepToOneMonthAndAddUpToTheRunAndTheMembersFollowTheBook) {
  auto book = std::make_shared<AssetBook>();
  book->Add(FirstAsset());
  CompanyAssetDepreciation calc(book);
  std::string result;
  ASSERT_TRUE(calc.Calculate("dv20", Day("2026-03-31"), false, Years(), result));
  const AssetDepreciationFigures& f = calc.Figures();
  // October 2024 to March 2026: eighteen months.
  ASSERT_EQ(calc.TransactionCount(), 18);
  Currency sum;
  for (std::int64_t i = 1; i <= calc.TransactionCount(); ++i) {
    const AssetDepreciationTransaction& t = calc.Transaction(i);
    EXPECT_EQ(t.Date.Month(), t.DateTo.Month()) << i;
    EXPECT_EQ(t.DateTo, t.DateTo.LastOfMonth()) << i;
    EXPECT_EQ(t.DepreciationBasis, "DV");
    sum += t.Value;
  }
  EXPECT_EQ(sum, f.Depreciation);
  EXPECT_EQ(f.Depreciation.ToString(), Money("2797.81").ToString());  // 997.26 + 1,800.55
  EXPECT_EQ(calc.Transaction(1).OpeningBookValue, Money("10000"));
  // Nothing posted yet: the book holds the cost, and the base is the second year's.
  EXPECT_EQ(f.OpeningBookValue, Money("10000"));
  EXPECT_EQ(f.AccumDepn, Currency());
  EXPECT_EQ(f.BaseValue, Money("9002.74"));
  EXPECT_EQ(f.BaseValueTax, Money("8753.42"));
  EXPECT_EQ(f.CostPrice, Money("10000"));
  EXPECT_EQ(f.Purchased.ToDate(), Day("2024-10-01"));
  EXPECT_FALSE(calc.Calculate("nothing", Day("2026-03-31"), false, Years(), result));
  EXPECT_EQ(result, "There is no asset \"nothing\".");
}

TEST(AssetDepreciationTest, ComponentsAddInOnlyWhenAskedAndADisposalSetsTheOffset) {
  auto book = std::make_shared<AssetBook>();
  book->Add(FirstAsset());
  AssetRecord kit;
  kit.id = "KIT";
  kit.parent = "DV20";
  kit.basis = 1;
  kit.rate = 10;
  kit.basis_tax = 1;
  kit.rate_tax = 10;
  kit.purchased = Day("2024-10-01");
  // SL 10% on 3,650.00: a dollar a day; two years' posted depreciation; sold 1 June 2026.
  kit.movements = {{"KIT", 10, Day("2024-10-01"), Money("3650"), Money("3650")},
                   {"KIT", 20, Day("2025-03-31"), Money("-182"), Money("-182")},
                   {"KIT", 20, Day("2026-03-31"), Money("-365"), Money("-365")},
                   {"KIT", 40, Day("2026-06-01"), Money("-3000"), Money("-3000")},
                   {"KIT", 30, Day("2026-06-01"), Money("-103"), Money("-103")}};
  book->Add(kit);
  CompanyAssetDepreciation calc(book);
  std::string result;
  ASSERT_TRUE(calc.Calculate("DV20", Day("2026-06-30"), true, Years(), result));
  const AssetDepreciationFigures& f = calc.Figures();
  ASSERT_TRUE(calc.Calculate("DV20", Day("2026-06-30"), false, Years(), result));
  const Currency alone = calc.Figures().Depreciation;
  EXPECT_EQ(calc.Figures().CostPrice, Money("10000"));
  ASSERT_TRUE(calc.Calculate("DV20", Day("2026-06-30"), true, Years(), result));
  // The kit runs April and May 2026 (61 days) and stops at its sale.
  EXPECT_EQ((f.Depreciation - alone).ToString(), Money("61").ToString());
  EXPECT_EQ(f.CostPrice, Money("13650"));
  EXPECT_EQ(f.AccumDepn, Money("547"));
  EXPECT_EQ(f.DepreciationOffset, Money("547"));
  calc.SetUseTaxBasis(true);
  EXPECT_EQ(calc.DepreciationOffset(), Money("547"));
  // Posted depreciation counts on its date, a portion on its last day: the kit's 182.00 posted on
  // 31 March 2025 and the press's March, 997.26 less 827.40 (151 days of 2,000.00).
  EXPECT_EQ(calc.DepreciationForPeriod(Day("2025-03-31"), Day("2025-03-31"), false).ToString(),
            Money("351.86").ToString());
}

TEST(AssetDepreciationTest, TheRunTakesAssetsInUseOrAvailableBoughtByItsDateAndNotDisposed) {
  auto book = std::make_shared<AssetBook>();
  struct Row {
    const char* id;
    int status;
    const char* bought;
    const char* disposed;
    bool in_run;
  };
  const Row rows[] = {
      {"A1", 2, "2024-10-01", nullptr, true},       {"A2", 3, "2024-10-01", nullptr, true},
      {"A3", 1, "2024-10-01", nullptr, false},       // on order
      {"A4", 4, "2024-10-01", "2025-01-01", false},  // disposed
      {"A5", 5, "2024-10-01", nullptr, false},       // scrapped
      {"A6", 2, "2025-04-01", nullptr, false},       // bought after the run's date
      {"A7", 2, "2025-03-31", nullptr, true},        // bought on it
      {"A8", 2, "2024-10-01", "2025-03-31", false},  // disposed on it
      {"A9", 2, nullptr, nullptr, false},            // never bought
  };
  for (const Row& r : rows) {
    AssetRecord a = FirstAsset();
    a.id = r.id;
    a.status = r.status;
    a.purchased = r.bought ? std::optional<Date>(Day(r.bought)) : std::nullopt;
    if (r.disposed) a.disposal = Day(r.disposed);
    book->Add(a);
  }
  CompanyDepreciationRun run(book, Day("2025-03-31"), Years());
  std::set<std::string> ids;
  for (std::int64_t i = 1; i <= run.Count(); ++i) ids.insert(run.Item(i).Figures().AssetId);
  for (const Row& r : rows) EXPECT_EQ(ids.count(r.id) == 1, r.in_run) << r.id;
  EXPECT_EQ(run.Item(1).Figures().Depreciation.ToString(), Money("997.26").ToString());
  EXPECT_THROW((void)run.Item(run.Count() + 1), std::out_of_range);
}

TEST(AssetDepreciationTest, TheAssetObjectGivesThePeriodsMovementsWithItsComponents) {
  auto book = std::make_shared<AssetBook>();
  AssetRecord lathe = FirstAsset();
  lathe.id = "LATHE";
  lathe.movements.push_back({"LATHE", 20, Day("2025-03-31"), Money("-997.26"), Money("-1246.58")});
  book->Add(lathe);
  AssetRecord kit = FirstAsset();
  kit.id = "KIT";
  kit.parent = "lathe";
  kit.movements = {{"KIT", 10, Day("2025-02-01"), Money("500"), Money("500")}};
  book->Add(kit);
  CompanyAsset asset(book);
  ASSERT_TRUE(asset.Load("Lathe "));
  asset.SetPeriod(Variant(Day("2025-01-01")), Variant(Day("2025-03-31")));
  EXPECT_EQ(asset.Transactions(false).size(), 1u);
  const std::vector<AssetMovement> both = asset.Transactions(true);
  ASSERT_EQ(both.size(), 2u);
  EXPECT_EQ(both[0].AssetId, "KIT");  // in date order
  asset.SetPeriod(Variant::Null(), Variant(Day("2025-03-30")));
  EXPECT_EQ(asset.Transactions(true).size(), 2u);  // the purchases, on either side of the year
  EXPECT_EQ(asset.AssetList(), "'LATHE','KIT'");
  EXPECT_EQ(asset.Description(), "Press");
  EXPECT_FALSE(asset.Load("NONE"));
  const char* statuses[] = {"", "On Order", "In Use", "Available", "Disposed", "Scrapped", ""};
  for (int n = 0; n <= 6; ++n) {
    EXPECT_EQ(Asset::StatusText(n), statuses[n]) << n;
    if (n >= 1 && n <= 5) {
      EXPECT_EQ(Asset::StatusFromText(UCase(statuses[n])), n);
    }
  }
  EXPECT_EQ(Asset::StatusFromText("Sold"), 0);
  EXPECT_EQ(Asset::BasisText(1), "SL");
  EXPECT_EQ(Asset::BasisText(2), "DV");
  EXPECT_EQ(Asset::BasisText(0), "");
  EXPECT_EQ(Asset::BasisText(3), "");
  // The movement types the reports name; 13, 22 and 45 are none of them.
  const std::pair<int, const char*> types[] = {{10, "Purchase"},
                                               {11, "Addition"},
                                               {12, "Revaluation"},
                                               {13, ""},
                                               {14, "Revaluation of cost"},
                                               {20, "Depreciation"},
                                               {22, ""},
                                               {23, "Depreciation"},
                                               {24, "Depreciation"},
                                               {31, "Gain/Loss"},
                                               {40, "Disposal"},
                                               {43, "Disposal"},
                                               {44, "Revaluation"},
                                               {45, ""}};
  for (const auto& [type, text] : types) EXPECT_EQ(Asset::TypeText(type), text) << type;
}

// A copy of the demo company's assets with one year's posted depreciation taken out.
std::shared_ptr<AssetBook> WithoutYear(const std::string& demo, const std::filesystem::path& path,
                                       const FinancialYear& year) {
  std::filesystem::remove(path);
  {
    auto writer = data::CreateCompanyFile(path.string());
    const std::string sql = "ATTACH DATABASE '" + demo + "' AS demo; PRAGMA foreign_keys=OFF;" +
                            "INSERT INTO Asset SELECT * FROM demo.Asset;" +
                            "INSERT INTO AssetTransaction SELECT * FROM demo.AssetTransaction " +
                            "WHERE NOT (Type=20 AND Date BETWEEN '" + year.DateStart.ToIso() +
                            "' AND '" + year.DateEnd.ToIso() + "'); DETACH DATABASE demo;";
    char* error = nullptr;
    if (sqlite3_exec(writer->Handle(), sql.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
      const std::string message = error ? error : "";
      sqlite3_free(error);
      throw std::runtime_error(message);
    }
    writer->Commit();
  }
  auto database = data::SqliteDatabase::Open(path.string());
  return AssetBook::Read(*database);
}

TEST(AssetDepreciationTest, TheDemoCompanysPostedDepreciationComesBackWithinACentEveryYear) {
  const std::string demo = trellin::testing::CachedDemoCompany("NZ");
  auto database = data::SqliteDatabase::Open(demo);
  const auto whole = AssetBook::Read(*database);
  std::vector<FinancialYear> years;
  for (auto rs =
           database->Query("SELECT FinancialYearId,Name,DateStart,DateEnd FROM FinancialYear");
       !rs->Eof(); rs->MoveNext()) {
    years.push_back(
        {rs->Value(0).ToLong(), rs->Value(1).Text(), rs->Value(2).ToDate(), rs->Value(3).ToDate()});
  }
  trellin::testing::TempFolder folder("trellin-depreciation");
  int compared = 0;
  for (const FinancialYear& year : years) {
    const auto book = WithoutYear(demo, folder.Path() / "company.db", year);
    CompanyAssetDepreciation calc(book);
    for (const AssetRecord* asset : whole->All()) {
      for (const AssetMovement& m : asset->movements) {
        if (m.Type != 20 || m.Date < year.DateStart || m.Date > year.DateEnd) continue;
        std::string result;
        ASSERT_TRUE(calc.Calculate(asset->id, year.DateEnd, false, years, result));
        const Currency normal = calc.Figures().Depreciation + m.Value;
        const Currency tax = calc.Figures().DepreciationTax + m.TaxValue;
        EXPECT_LE(std::abs(normal.Raw()), 100) << asset->id << " " << year.Name;
        EXPECT_LE(std::abs(tax.Raw()), 100) << asset->id << " " << year.Name;
        ++compared;
      }
    }
  }
  EXPECT_GE(compared, 20);
}

}  // namespace
}  // namespace trellin::business
