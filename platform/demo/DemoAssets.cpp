// Fixed assets: bought through the bank, depreciated at each year end on both books,
// a vehicle revalued, a few sold or scrapped, and in the present year an addition to a hoist, a
// diagnostic kit scrapped and a straight-line trailer bought.

#include <cmath>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoContext.h"

namespace trellin::demo {

namespace {

struct AssetKind {
  const char* category;
  const char* type;
  const char* site;
  const char* description;
  const char* cost_account;
  const char* depreciation_account;
  int dollars_low;
  int dollars_high;
  double rate;      // diminishing value, per cent a year
  double tax_rate;  // the tax book's rate
};

constexpr AssetKind kKinds[] = {
    {"PLANT", "LIFT", "WSHOP", "Boat hoist", "3320", "3325", 18000, 45000, 12, 10},
    {"PLANT", "MACH", "WSHOP", "Lathe", "3320", "3325", 6000, 15000, 15, 13},
    {"TOOLS", "MACH", "WSHOP", "Engine diagnostic kit", "3330", "3335", 1500, 4000, 30, 25},
    {"OFFICE", "IT", "OFFICE", "Computer", "3350", "3355", 1200, 3200, 40, 50},
    {"VEHICLE", "UTE", "HQ", "Service ute", "3400", "3405", 32000, 55000, 25, 30},
};

// The present year's movements, dated between the last year end and the present, so that no
// year-end depreciation or closing sees them: months into the year (from its first day), and
// days into that month. With a 31 March balance date, 14 July, 18 August and 22 September.
constexpr int kTrailerMonths = 3;
constexpr int kTrailerDay = 14;
constexpr int kAdditionMonths = 4;
constexpr int kAdditionDay = 18;
constexpr int kScrapMonths = 5;
constexpr int kScrapDay = 22;

}  // namespace

void WriteAssets(DemoContext& ctx) {
  DemoRandom& r = ctx.random;
  const DemoCalendar& cal = ctx.calendar;
  DemoTable assets(ctx.db, "Asset",
                   {"AssetId",
                    "Description",
                    "SerialNumber",
                    "Status",
                    "AssetCategoryId",
                    "AssetSiteId",
                    "AssetTypeId",
                    "BranchId",
                    "EmployeeId",
                    "SupplierId",
                    "ParentAssetId",
                    "PurchaseDate",
                    "Purchased",
                    "DepreciationBasis",
                    "DepreciationRate",
                    "DepreciationBasisTax",
                    "DepreciationRateTax",
                    "WarrantyDate",
                    "ReviewDate",
                    "DisposalDate",
                    "UserDefined1"});
  DemoTable moves(ctx.db, "AssetTransaction",
                  {"AssetId", "Type", "Date", "Value", "TaxValue", "Reference", "Comment"});
  const int count = 12 * ctx.options.scale;
  const int span = cal.Present().Serial() - cal.FirstDay().Serial() - 60;
  const Date year_start = cal.Years().back().start;
  // The first diagnostic kit is scrapped for nothing in the present year.
  constexpr int kScrapped = 2;
  const Date scrapped_on = year_start.AddMonths(kScrapMonths).AddDays(kScrapDay - 1);
  struct Scrap {
    std::string id;
    std::int64_t cost = 0, book = 0, tax_book = 0;
  } scrap;
  for (int a = 0; a < count; ++a) {
    const AssetKind& kind = kKinds[a % 5];
    const std::string id = std::string(kind.category).substr(0, 3) + std::to_string(101 + a);
    const Date bought =
        cal.FirstDay().AddDays(10 + static_cast<int>(static_cast<std::int64_t>(span) * a / count));
    const std::int64_t cost = DemoContext::Dollars(r.Between(kind.dollars_low, kind.dollars_high));
    const std::string& supplier =
        ctx.parties[ctx.suppliers[static_cast<std::size_t>(a) % ctx.suppliers.size()]].id;
    // The diagnostic kits are components of the lathe bought before them.
    const bool component = a % 5 == 2 && a >= 1;
    // The second computer keeps its tax book at the normal book's method and rate: its two books
    // agree, so the deferred tax schedule passes it over.
    const double tax_rate = a == 8 ? kind.rate : kind.tax_rate;
    const bool scrapped = a == kScrapped && scrapped_on < cal.Present();
    const bool disposed = (a % 7 == 3 && bought.AddYears(2) < cal.Present()) || scrapped;
    const Date disposal = scrapped ? scrapped_on : bought.AddYears(2).AddDays(40);
    assets.Insert(
        {id,
         kind.description,
         "SN-" + id,
         disposed ? (a % 2 == 0 ? 5 : 4) : 2,
         kind.category,
         kind.site,
         kind.type,
         ctx.branches[0],
         "TK",
         supplier,
         component ? Cell(std::string(kKinds[1].category).substr(0, 3) + std::to_string(100 + a))
                   : Cell(Cell::Null{}),
         bought,
         cost,
         2,
         kind.rate,
         2,
         tax_rate,
         bought.AddYears(1),
         cal.Present().AddMonths(static_cast<int>(r.Between(1, 12))),
         disposed ? Cell(disposal) : Cell(Cell::Null{}),
         OrNull(a % 5 == 4 ? "ABC" + std::to_string(100 + a) : "")});
    moves.Insert({id, 10, bought, cost, cost, "INV" + std::to_string(a), "Purchase"});
    ctx.ledger->PostBank({"CHQ", bought, supplier, "FA" + id, "Purchase of " + id},
                         {bought,
                          "FA",
                          "FA" + id,
                          kind.description,
                          0,
                          0,
                          ctx.branches[0],
                          "ADM",
                          {{account::kBankCheque, -cost}, {kind.cost_account, cost}}});
    std::int64_t book = cost;
    std::int64_t tax_book = cost;
    for (const YearSpan& year : cal.Years()) {
      if (year.end > cal.Present() || year.end < bought) continue;
      if (disposed && year.end > disposal) break;
      const double part = std::min(1.0, (year.end.Serial() - bought.Serial() + 1) / 365.0);
      const std::int64_t depn = ToCents(static_cast<double>(book) * kind.rate / 100.0 * part);
      const std::int64_t tax_depn =
          ToCents(static_cast<double>(tax_book) * tax_rate / 100.0 * part);
      book -= depn;
      tax_book -= tax_depn;
      moves.Insert({id, 20, year.end, -depn, -tax_depn, "DEP" + year.name, "Depreciation"});
      ctx.ledger->Post({year.end,
                        "FA",
                        "DEP" + year.name,
                        "Depreciation " + id,
                        0,
                        0,
                        ctx.branches[0],
                        "ADM",
                        {{account::kDepreciation, depn}, {kind.depreciation_account, -depn}}});
      // The first vehicle is revalued upward once, at the year end after its second.
      if (a == 4 && year.end > bought.AddYears(2) && year.end <= bought.AddYears(3)) {
        const std::int64_t up = DemoContext::Dollars(3000);
        moves.Insert({id, 12, year.end, up, std::int64_t{0}, "REV" + year.name, "Revaluation"});
        book += up;
      }
    }
    if (scrapped) {
      // Written after the other assets, so that their ledger lines stay where they were.
      scrap = {id, cost, book, tax_book};
      continue;
    }
    if (disposed) {
      // Sold (or scrapped for nothing): the proceeds leave the book value, and the difference is
      // the gain or loss, so that the asset ends at nothing.
      const std::int64_t proceeds = a % 2 == 0 ? 0 : ToCents(static_cast<double>(book) * 0.8);
      moves.Insert({id, 40, disposal, -proceeds, -proceeds, "DSP" + id, "Disposal"});
      moves.Insert({id, 30, disposal, proceeds - book, proceeds - tax_book, "DSP" + id,
                    proceeds > book ? "Gain on sale" : "Loss on sale"});
      const std::int64_t accumulated = cost - book;
      ctx.ledger->PostBank({"CHQ", disposal, "", "DSP" + id, "Disposal of " + id},
                           {disposal,
                            "FA",
                            "DSP" + id,
                            "Disposal of " + id,
                            0,
                            0,
                            ctx.branches[0],
                            "ADM",
                            {{account::kBankCheque, proceeds},
                             {kind.depreciation_account, accumulated},
                             {kind.cost_account, -cost},
                             {account::kLossOnSale, book - proceeds}}});
    }
  }
  const std::string& supplier = ctx.parties[ctx.suppliers.front()].id;
  // Scrapped for nothing: no proceeds (a type 40 of nothing), the whole book value lost, and a
  // journal with no bank line, since no money moves.
  if (!scrap.id.empty()) {
    const AssetKind& kind = kKinds[kScrapped];
    moves.Insert({scrap.id, 40, scrapped_on, std::int64_t{0}, std::int64_t{0}, "DSP" + scrap.id,
                  "Disposal"});
    moves.Insert({scrap.id, 30, scrapped_on, -scrap.book, -scrap.tax_book, "DSP" + scrap.id,
                  "Loss on sale"});
    ctx.ledger->Post({scrapped_on,
                      "FA",
                      "DSP" + scrap.id,
                      "Disposal of " + scrap.id,
                      0,
                      0,
                      ctx.branches[0],
                      "ADM",
                      {{kind.depreciation_account, scrap.cost - scrap.book},
                       {kind.cost_account, -scrap.cost},
                       {account::kLossOnSale, scrap.book}}});
  }
  // An addition to the first boat hoist (type 11): a second lifting beam, at cost on both books,
  // paid through the bank and presented three days later.
  const Date added_on = year_start.AddMonths(kAdditionMonths).AddDays(kAdditionDay - 1);
  if (added_on < cal.Present()) {
    const AssetKind& hoist = kKinds[0];
    const std::string id = std::string(hoist.category).substr(0, 3) + "101";
    const std::int64_t extra = DemoContext::Dollars(3200);
    moves.Insert({id, 11, added_on, extra, extra, "ADD" + id, "Addition"});
    ctx.ledger->PostBankPresented({"CHQ", added_on, supplier, "FA" + id + "A", "Addition to " + id},
                                  {added_on,
                                   "FA",
                                   "FA" + id + "A",
                                   "Lifting beam",
                                   0,
                                   0,
                                   ctx.branches[0],
                                   "ADM",
                                   {{account::kBankCheque, -extra}, {hoist.cost_account, extra}}},
                                  added_on.AddDays(3));
  }
  // A boat trailer on straight line (method 1) on both books, at different rates, bought in the
  // present year: no year end has depreciated it yet. Its code follows every other asset's.
  const Date trailer_on = year_start.AddMonths(kTrailerMonths).AddDays(kTrailerDay - 1);
  if (trailer_on < cal.Present()) {
    const std::string id = "VEH" + std::to_string(101 + count);
    const std::int64_t cost = DemoContext::Dollars(12600);
    assets.Insert({id,
                   "Boat trailer",
                   "SN-" + id,
                   2,
                   "VEHICLE",
                   "HQ",
                   "VEH",
                   ctx.branches[0],
                   "TK",
                   supplier,
                   Cell(Cell::Null{}),
                   trailer_on,
                   cost,
                   1,
                   15.0,
                   1,
                   20.0,
                   trailer_on.AddYears(1),
                   trailer_on.AddYears(1),
                   Cell(Cell::Null{}),
                   Cell(Cell::Null{})});
    moves.Insert({id, 10, trailer_on, cost, cost, "INV" + std::to_string(count), "Purchase"});
    ctx.ledger->PostBankPresented({"CHQ", trailer_on, supplier, "FA" + id, "Purchase of " + id},
                                  {trailer_on,
                                   "FA",
                                   "FA" + id,
                                   "Boat trailer",
                                   0,
                                   0,
                                   ctx.branches[0],
                                   "ADM",
                                   {{account::kBankCheque, -cost}, {kKinds[4].cost_account, cost}}},
                                  trailer_on.AddDays(3));
  }
}

}  // namespace trellin::demo
