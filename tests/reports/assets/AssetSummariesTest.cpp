// The purchase and disposal summaries (golden runs in golden_runs.tsv): their sums and lines on
// the demo company against plain SQL over AssetTransaction, and the edges of their bounds on
// hand-made assets (summaries.sql).

#include "core/host/Database.h"
#include "reports/assets/arfaPurchaseSummary.h"
#include "tests/reports/assets/AssetFixtures.h"

namespace trellin::reports::testing {
namespace {

class SummariesDemo : public DemoReports {};

// The detail lines of a summary: an asset's line carries txtAssetId; the lines of its movements,
// which the sub-report prints, do not.
std::vector<DumpRow> AssetLines(const std::string& dump) {
  std::vector<DumpRow> lines;
  for (DumpRow& row : RowsOf(dump, "Detail")) {
    if (row.count("txtAssetId") != 0) lines.push_back(std::move(row));
  }
  return lines;
}

// Cents as the demo company prints them: "1,234.56", "(1,234.56)".
std::string Printed(std::int64_t cents) {
  std::string digits = std::to_string(cents < 0 ? -cents : cents);
  while (digits.size() < 3) digits.insert(0, "0");
  std::string text = "." + digits.substr(digits.size() - 2);
  digits.resize(digits.size() - 2);
  for (int n = 0; !digits.empty(); ++n) {
    if (n > 0 && n % 3 == 0) text.insert(0, ",");
    text.insert(0, 1, digits.back());
    digits.pop_back();
  }
  return cents < 0 ? "(" + text + ")" : text;
}

// Both summaries over the demo's years, both books and "ALL": the assets listed are those with a
// non-zero movement of their types in the period, each line's sum and the report's total are
// plain SQL's sums over AssetTransaction with the same bounds.
TEST_F(SummariesDemo, SumsAndAssetsAreThoseOfPlainSqlOverTheMovements) {
  struct Key {
    const char* key;
    const char* types;
    const char* column;
  };
  const Key keys[] = {{"AssetPurchaseSummary", "10,11", "Purchased"},
                      {"AssetDisposalSummary", "30,31,40,41,42,43,44", "Value"}};
  struct Period {
    const char* from;  // dd/mm/yyyy and ISO; nullptr for "ALL"
    const char* to;
    const char* from_iso;
    const char* to_iso;
  };
  const Period periods[] = {
      {nullptr, nullptr, "0000-00-00", "9999-99-99"},
      {"1/04/2021", "31/03/2022", "2021-04-01", "2022-03-31"},
      {"1/04/2023", "31/03/2024", "2023-04-01", "2024-03-31"},
      {"5/10/2023", "31/03/2026", "2023-10-05", "2026-03-31"},
      {"1/04/2024", "31/03/2025", "2024-04-01", "2025-03-31"},
  };
  const BooksSql sql;
  for (const Key& k : keys) {
    for (const Period& period : periods) {
      for (const char* amount : {"Value", "TaxValue"}) {
        std::vector<std::string> values = {std::string("UseTaxBasis=") +
                                           (std::string(amount) == "TaxValue" ? "True" : "False")};
        if (period.from == nullptr) {
          values.push_back("Period=ALL");
        } else {
          values.insert(values.end(), {"Period=Custom", std::string("DateFrom=") + period.from,
                                       std::string("DateTo=") + period.to});
        }
        SCOPED_TRACE(std::string(k.key) + " " + Join(values, " "));
        const std::string moves = std::string(" FROM AssetTransaction t WHERE t.Type IN (") +
                                  k.types + ") AND t.Date>='" + period.from_iso +
                                  "' AND t.Date<='" + period.to_iso + "'";
        const std::vector<std::string> expected =
            sql.Texts(std::string("SELECT DISTINCT t.AssetId") + moves + " AND t." + amount +
                      "<>0 ORDER BY t.AssetId");
        const std::string dump = Dump(Open(k.key, values));
        std::vector<std::string> listed;
        std::int64_t total = 0;
        for (const DumpRow& line : AssetLines(dump)) {
          listed.push_back(line.at("txtAssetId").second);
          const std::int64_t sum = CentsOf(line.at(std::string("txt") + k.column).second);
          EXPECT_EQ(sum, sql.Cents(std::string("SELECT Sum(t.") + amount + ")" + moves +
                                   " AND t.AssetId='" + listed.back() + "'"))
              << listed.back();
          total += sum;
        }
        EXPECT_EQ(listed, expected);
        // The report's total: the one bold figure of the body font without groupings.
        EXPECT_NE(dump.find("\"" + Printed(total) + "\" Arial 8 B right"), std::string::npos)
            << Printed(total);
      }
    }
  }
}

constexpr char kSummaries[] = "reports/assets/summaries.sql";
using AssetSummaries = AssetCompany<kSummaries>;

// The assets listed and their printed sums, and the amounts of the movements beneath them.
struct Listing {
  std::vector<std::string> assets;
  std::vector<std::int64_t> sums;
  std::vector<std::int64_t> movements;
};

Listing ListingOf(const std::string& dump, const char* column) {
  Listing listing;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    if (row.count("txtAssetId") != 0) {
      listing.assets.push_back(row.at("txtAssetId").second);
      listing.sums.push_back(CentsOf(row.at(column).second));
    } else if (row.count("numValue") != 0) {
      listing.movements.push_back(CentsOf(row.at("numValue").second));
    }
  }
  return listing;
}

TEST_F(AssetSummaries, TheBoundsOfThePeriod) {
  struct Case {
    const char* key;
    std::vector<std::string> values;
    std::vector<std::string> assets;
    std::vector<std::int64_t> sums;
    std::vector<std::int64_t> movements;
  };
  const Case cases[] = {
      // S1's purchase and its return net to nothing: the existence test counts lines, so it
      // prints, with both lines and a sum of nothing.
      {"AssetPurchaseSummary",
       {"Period=Custom", "DateFrom=1/10/2024", "DateTo=31/03/2025"},
       {"S1"},
       {0},
       {150000, -150000}},
      // "ALL" drops both bounds: S4, bought in 2020, comes in.
      {"AssetPurchaseSummary",
       {"Period=ALL"},
       {"S1", "S2", "S3", "S4"},
       {0, 200000, 30000, 50000},
       {150000, -150000, 200000, 30000, 50000}},
      // A disposal on DateFrom counts in the sum and in the existence test; S3's disposal of
      // nothing prints beneath it, although the existence test looks for a line of something.
      {"AssetDisposalSummary",
       {"Period=Custom", "DateFrom=1/10/2024", "DateTo=31/03/2025"},
       {"S2", "S3"},
       {-160000, -30000},
       {-120000, -40000, 0, -30000}},
      {"AssetDisposalSummary",
       {"Period=Custom", "DateFrom=1/10/2024", "DateTo=31/03/2025", "UseTaxBasis=True"},
       {"S2", "S3"},
       {-150000, -30000},
       {-120000, -30000, 0, -30000}},
      // The day after, S2 has gone; the day before DateTo's end, S3 too.
      {"AssetDisposalSummary",
       {"Period=Custom", "DateFrom=2/10/2024", "DateTo=31/03/2025"},
       {"S3"},
       {-30000},
       {0, -30000}},
      {"AssetDisposalSummary",
       {"Period=Custom", "DateFrom=1/10/2024", "DateTo=30/03/2025"},
       {"S2"},
       {-160000},
       {-120000, -40000}},
      // The Status list filters the asset's status by its number: 5 is Scrapped.
      {"AssetDisposalSummary", {"Period=ALL", "Status=5"}, {"S3"}, {-30000}, {0, -30000}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.key) + " " + Join(c.values, " "));
    const std::string dump = Run(c.key, c.values);
    const Listing listing =
        ListingOf(dump, std::string(c.key) == "AssetPurchaseSummary" ? "txtPurchased" : "txtValue");
    EXPECT_EQ(listing.assets, c.assets) << dump;
    EXPECT_EQ(listing.sums, c.sums);
    EXPECT_EQ(listing.movements, c.movements);
  }
}

TEST_F(AssetSummaries, QueryBoundsAndDescriptions) {
  const auto date = [](int y, int m, int d) { return Database::SQLDate(Date::FromYmd(y, m, d)); };
  struct Case {
    const char* key;
    std::vector<std::string> values;
    std::vector<std::string> in_sql;
    std::vector<std::string> not_in_sql;
    const char* description;  // the period's words
  };
  const std::vector<std::string> half = {"Period=Custom", "DateFrom=1/10/2024",
                                         "DateTo=31/03/2025"};
  const Case cases[] = {
      {"AssetPurchaseSummary",
       half,
       {"(SELECT Sum([Value]) FROM AssetTransaction WHERE AssetTransaction.AssetId=Asset.AssetId "
        "AND AssetTransaction.Type In (10,11) AND AssetTransaction.Date>" +
            date(2024, 9, 30) + " AND AssetTransaction.Date<" + date(2025, 4, 1) +
            ") As SumOfValue FROM Asset  WHERE ",
        "AND [Value]<>0 AND AssetTransaction.Date>" + date(2024, 9, 30)},
       {},
       "Period Covered: from 01/10/2024 to 31/03/2025"},
      {"AssetPurchaseSummary",
       {"Period=MTD", "DateTo=31/03/2025", "UseTaxBasis=True"},
       {"Sum([TaxValue])", "[TaxValue]<>0", ">" + date(2025, 2, 28)},
       {"[Value]"},
       "MTD from 01/03/2025 to 31/03/2025"},
      {"AssetPurchaseSummary", {"Period=ALL"}, {}, {"AssetTransaction.Date"}, "ALL"},
      {"AssetDisposalSummary",
       half,
       {"Type In (30,31,40,41,42,43,44) AND AssetTransaction.Date >" + date(2024, 9, 30) +
            " AND AssetTransaction.Date <" + date(2025, 4, 1) + ") As SumOfValue FROM Asset WHERE ",
        "AND [Value]<>0 AND AssetTransaction.Date>=" + date(2024, 10, 1) +
            " AND AssetTransaction.Date<" + date(2025, 4, 1) + ")<>0"},
       {"Asset.Status IN"},
       "Period Covered 01/10/2024 to 31/03/2025"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.key) + " " + Join(c.values, " "));
    DesignerPtr designer = OpenWithValues(*service_, c.key, c.values);
    auto* summary = dynamic_cast<arfaPurchaseSummary*>(designer.get());
    ASSERT_NE(summary, nullptr);
    summary->RefreshDataColumns();
    summary->BuildSQL();
    for (const std::string& piece : c.in_sql) {
      EXPECT_NE(summary->SQL().find(piece), std::string::npos) << piece << "\n" << summary->SQL();
    }
    for (const std::string& piece : c.not_in_sql) {
      EXPECT_EQ(summary->SQL().find(piece), std::string::npos) << piece << "\n" << summary->SQL();
    }
    EXPECT_NE(summary->Description().find(c.description), std::string::npos)
        << summary->Description();
    designer->TLReport()->SetArReport(nullptr);
  }
}

}  // namespace
}  // namespace trellin::reports::testing
