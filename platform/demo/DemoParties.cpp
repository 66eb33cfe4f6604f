// Customers, suppliers (some both), their addresses and contact methods; items; jobs.

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <map>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoContext.h"

namespace trellin::demo {

namespace {

constexpr const char* kFirstNames[] = {"Aroha",  "Ben",  "Chloe", "David", "Emma", "Finn", "Grace",
                                       "Hemi",   "Isla", "Jack",  "Kiri",  "Liam", "Mia",  "Noah",
                                       "Olivia", "Paul", "Ruby",  "Sione", "Tess", "Will"};
constexpr const char* kLastNames[] = {"Anderson", "Brown",    "Campbell", "Davies", "Edwards",
                                      "Fraser",   "Gordon",   "Henare",   "Jones",  "King",
                                      "Lee",      "Morgan",   "Nguyen",   "Parata", "Robinson",
                                      "Smith",    "Thompson", "Walker",   "Wilson", "Young"};
constexpr const char* kPlaces[] = {"Harbour",    "Anchor",   "Bayview",  "Coastal", "Driftwood",
                                   "Eastern",    "Gull",     "Headland", "Island",  "Kauri",
                                   "Lighthouse", "Northern", "Ocean",    "Pacific", "Reef",
                                   "Southern",   "Tide",     "Westhaven"};
constexpr const char* kTrades[] = {"Charters",   "Boatbuilders", "Marina",          "Fishing Co",
                                   "Yacht Club", "Dive Centre",  "Marine Services", "Kayaks",
                                   "Boat Hire",  "Ferries"};
constexpr const char* kSupplierTrades[] = {"Engines", "Marine Wholesale", "Paints",  "Electronics",
                                           "Ropes",   "Safety Supplies",  "Freight", "Imports"};

template <std::size_t N>
const char* PickOf(DemoRandom& random, const char* const (&list)[N]) {
  return list[random.Below(N)];
}

// Codes are the name's first letters and a number, as a bookkeeper keys them.
std::string CodeFor(const std::string& name, std::map<std::string, int>& used) {
  std::string prefix;
  for (char c : name) {
    if (std::isalpha(static_cast<unsigned char>(c)) && prefix.size() < 5) {
      prefix += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
  }
  int n = ++used[prefix];
  std::string number = std::to_string(n);
  return prefix + std::string(3 - std::min<std::size_t>(3, number.size()), '0') + number;
}

struct ItemFamily {
  const char* category;
  const char* prefix;
  const char* names[4];
  int inventory;
  const char* sales_account;
  const char* dept;
  int cost_low;  // dollars
  int cost_high;
};

// One row per kind of thing the company sells: plain stock, serial-numbered engines and
// electronics, batch-tracked paint and flares, workshop labour and non-stock sundries.
constexpr ItemFamily kFamilies[] = {
    {"ENG",
     "ENG",
     {"Outboard 15hp", "Outboard 40hp", "Outboard 90hp", "Sterndrive 200hp"},
     2,
     account::kSalesTrade,
     "TRD",
     2500,
     18000},
    {"ENG",
     "PRT",
     {"Impeller kit", "Spark plug set", "Fuel filter", "Propeller 13in"},
     1,
     account::kSalesShop,
     "RET",
     8,
     350},
    {"SAFE",
     "SAF",
     {"Life jacket adult", "Life jacket child", "EPIRB beacon", "First aid kit"},
     1,
     account::kSalesShop,
     "RET",
     25,
     450},
    {"SAFE",
     "FLR",
     {"Flare pack coastal", "Flare pack offshore", "Smoke canister", "Dye marker"},
     3,
     account::kSalesShop,
     "RET",
     40,
     160},
    {"ELEC",
     "ELC",
     {"Chartplotter 7in", "VHF radio fixed", "Fishfinder 9in", "Autopilot"},
     2,
     account::kSalesTrade,
     "TRD",
     300,
     3500},
    {"ROPE",
     "RPE",
     {"Braid 10mm per m", "Anchor chain 8mm per m", "Shackle 10mm", "Fender large"},
     1,
     account::kSalesShop,
     "RET",
     2,
     90},
    {"PAINT",
     "PNT",
     {"Antifoul 4L red", "Antifoul 4L blue", "Epoxy primer 1L", "Topcoat 1L"},
     3,
     account::kSalesTrade,
     "TRD",
     45,
     260},
    {"SERV",
     "LAB",
     {"Workshop labour per hour", "Haul out and wash", "Engine service",
      "Electronics fit-out hour"},
     0,
     account::kSalesWorkshop,
     "WSH",
     40,
     120},
    {"SERV",
     "MSC",
     {"Sundry parts", "Freight charge", "Disposal fee", "Callout"},
     0,
     account::kSalesWorkshop,
     "WSH",
     10,
     80},
};

}  // namespace

void WriteParties(DemoContext& ctx) {
  DemoRandom& r = ctx.random;
  const int scale = ctx.options.scale;
  const int customers = 260 * scale;
  const int suppliers = 50 * scale;
  std::map<std::string, int> used;
  DemoTable parties(ctx.db, "OtherParty",
                    {"OtherPartyId",
                     "Name",
                     "XRefId",
                     "Type",
                     "IsCustomer",
                     "IsSupplier",
                     "LocationId",
                     "EmployeeId",
                     "CustomerCategoryId",
                     "SupplierCategoryId",
                     "CustomerTypeId",
                     "SupplierTypeId",
                     "CustomerPayTermId",
                     "SupplierPayTermId",
                     "Status",
                     "CustomerCreditLimit",
                     "CustomerActive",
                     "SupplierActive",
                     "CustomerStopCredit",
                     "CustomerDiscRate",
                     "TaxNumber",
                     "ChqName",
                     "UserDefined1"});
  DemoTable addresses(
      ctx.db, "OtherPartyAddress",
      {"OtherPartyId", "AddressId", "Address", "City", "State", "Postcode", "Country"});
  DemoTable methods(ctx.db, "OtherPartyContactMethod",
                    {"OtherPartyId", "Sequence", "Kind", "Detail"});
  const std::vector<int> payer_weights = {35, 40, 15, 7, 3};
  for (int i = 0; i < customers + suppliers; ++i) {
    PartyInfo p;
    p.customer = i < customers;
    // A few customers also sell to the company (boatbuilders who supply fittings), and a few
    // suppliers buy from it.
    p.supplier = !p.customer || r.Chance(0.04);
    const bool person = p.customer && r.Chance(0.45);
    if (person) {
      p.name = std::string(PickOf(r, kFirstNames)) + " " + PickOf(r, kLastNames);
    } else if (p.customer) {
      p.name = std::string(PickOf(r, kPlaces)) + " " + PickOf(r, kTrades);
    } else {
      p.name = std::string(PickOf(r, kPlaces)) + " " + PickOf(r, kSupplierTrades) +
               (ctx.facts.state[0] == 0 ? " Ltd" : " Pty Ltd");
    }
    p.id = CodeFor(p.name, used);
    p.location = r.Chance(0.7) ? "MAIN" : "BR2";
    p.branch = p.location == "MAIN" ? ctx.branches[0] : ctx.branches[1];
    p.employee = r.Pick(ctx.employees);
    p.term = person ? 3 * static_cast<int>(r.Chance(0.3)) : static_cast<int>(r.Below(3));
    p.payer = static_cast<Payer>(r.Weighted(payer_weights));
    p.weight = person ? 1 : static_cast<int>(r.Between(2, 12));
    const char* category = person          ? "RETAIL"
                           : r.Chance(0.1) ? "EXPORT"
                           : r.Chance(0.3) ? "MARINA"
                                           : "TRADE";
    // One customer's category was deleted after it was given: the lists show it as a code
    // with no description, the deliberate dangling code of the party table.
    if (p.customer && i == 7) category = "RETIRED";
    // Export customers are invoiced zero rated, in the export sales account.
    p.exporter = p.customer && std::string_view(category) == "EXPORT";
    const int status = p.payer == Payer::kBad ? 4 : p.payer == Payer::kSlow ? 3 : 2;
    parties.Insert({p.id,
                    p.name,
                    r.Chance(0.2) ? Cell("X" + p.id) : Cell(Cell::Null{}),
                    person ? "Private" : "Business",
                    p.customer,
                    p.supplier,
                    p.location,
                    p.employee,
                    p.customer ? Cell(category) : Cell(Cell::Null{}),
                    p.supplier ? Cell(r.Chance(0.7) ? "STOCK" : "SERV") : Cell(Cell::Null{}),
                    p.customer ? Cell(person           ? "IND"
                                      : r.Chance(0.05) ? "GOVT"
                                                       : "COMP")
                               : Cell(Cell::Null{}),
                    p.supplier ? Cell(r.Chance(0.3) ? "IMPORT" : "LOCAL") : Cell(Cell::Null{}),
                    p.customer ? Cell(kTerms[p.term].id) : Cell(Cell::Null{}),
                    p.supplier ? Cell(kTerms[0].id) : Cell(Cell::Null{}),
                    status,
                    p.customer ? DemoContext::Dollars(person ? 2000 : 20000) : std::int64_t{0},
                    !(p.customer && r.Chance(0.03)),
                    true,
                    p.payer == Payer::kBad,
                    p.customer && !person && r.Chance(0.3) ? Cell(2.5) : Cell(Cell::Null{}),
                    person ? Cell(Cell::Null{}) : Cell(std::to_string(10 + i) + "-456-789"),
                    p.supplier ? Cell(p.name) : Cell(Cell::Null{}),
                    p.customer && r.Chance(0.5)
                        ? Cell(std::string("MV ") + PickOf(r, kPlaces) + " Star")
                        : Cell(Cell::Null{})});
    const std::string city =
        p.location == "MAIN" ? ctx.facts.branches[0][1] : ctx.facts.branches[1][1];
    // The tenth supplier gives only its street address, so a remittance to it prints none.
    const bool street_only = p.supplier && ctx.suppliers.size() == 9;
    const std::int64_t box = 100 + r.Below(9000);
    addresses.Insert({p.id, street_only ? "Street" : "Postal",
                      street_only ? std::to_string(box % 200 + 1) + " Wharf Road"
                                  : "PO Box " + std::to_string(box),
                      city, OrNull(ctx.facts.state), std::to_string(1000 + r.Below(8000)),
                      ctx.facts.country});
    if (!person && r.Chance(0.5)) {
      p.delivery_address = true;
      addresses.Insert({p.id, "Delivery", std::to_string(1 + r.Below(200)) + " Marine Parade", city,
                        OrNull(ctx.facts.state), std::to_string(1000 + r.Below(8000)),
                        ctx.facts.country});
    }
    std::string mail = p.id + "@example.com";
    std::transform(mail.begin(), mail.end(), mail.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    methods.Insert({p.id, 1, "Phone", "09 " + std::to_string(3000000 + r.Below(6999999))});
    methods.Insert({p.id, 2, "Email", mail});
    if (p.customer && !person) methods.Insert({p.id, 3, "EmailAR", "accounts." + mail});
    const std::size_t index = ctx.parties.size();
    if (p.customer) ctx.customers.push_back(index);
    if (p.supplier) ctx.suppliers.push_back(index);
    ctx.parties.push_back(std::move(p));
  }
  // Trade accounts pay penalty interest on what they leave overdue.
  Execute(ctx.db,
          "UPDATE OtherParty SET PenaltyInterestId='STD' WHERE IsCustomer=1 AND "
          "CustomerCategoryId='TRADE'",
          "penalty interest");
  ctx.summary.parties = static_cast<std::int64_t>(ctx.parties.size());
  // The contacts work for the first business parties: the first two for one customer, the next
  // three for one customer each, the last for the first supplier that buys nothing.
  constexpr const char* kTieContacts =
      "UPDATE Contact SET OtherPartyId = (SELECT OtherPartyId FROM OtherParty WHERE %s ORDER BY "
      "rowid LIMIT 1 OFFSET %d) WHERE ContactId = %d";
  struct Tie {
    const char* parties;
    int offset;
  };
  constexpr Tie kTies[] = {{"Type = 'Business'", 0}, {"Type = 'Business'", 0},
                           {"Type = 'Business'", 1}, {"Type = 'Business'", 2},
                           {"Type = 'Business'", 3}, {"IsCustomer = 0", 0}};
  int contact = 1;
  for (const Tie& tie : kTies) {
    char sql[256];
    std::snprintf(sql, sizeof sql, kTieContacts, tie.parties, tie.offset, contact++);
    Execute(ctx.db, sql, "tie the contacts to their parties");
  }
}

static void WriteSpecialPrices(DemoContext& ctx);

void WriteItems(DemoContext& ctx) {
  DemoRandom& r = ctx.random;
  DemoTable items(ctx.db, "Item",
                  {"ItemId", "Description", "PLU", "ItemCategoryId", "ItemTypeId", "SupplierId",
                   "SupplierCode", "Inventory", "Active", "CostPrice", "CostTaxType", "SellPrice1",
                   "SellTaxType1", "UserDefined1"});
  DemoTable places(ctx.db, "ItemLocation",
                   {"ItemId", "LocationId", "Shelf", "MinReorder", "MaxReorder", "InUse"});
  constexpr const char* kTypes[] = {"MISC", "STOCK", "SERIAL", "BATCH"};
  const int per_name = 3 * ctx.options.scale;
  int sequence = 0;
  for (const ItemFamily& family : kFamilies) {
    for (const char* name : family.names) {
      for (int v = 1; v <= per_name; ++v) {
        ItemInfo item;
        item.id = std::string(family.prefix) + std::to_string(100 + sequence++);
        item.description = std::string(name) + (v > 1 ? " mk" + std::to_string(v) : "");
        item.inventory = family.inventory;
        item.category = family.category;
        item.sales_account = family.sales_account;
        item.dept = family.dept;
        item.cost = DemoContext::Dollars(r.Between(family.cost_low, family.cost_high));
        item.price = ToCents(static_cast<double>(item.cost) * (1.35 + r.Unit() * 0.5));
        item.supplier =
            static_cast<std::size_t>(r.Below(static_cast<std::int64_t>(ctx.suppliers.size())));
        const bool big = item.cost > DemoContext::Dollars(1000);
        item.min_reorder = item.inventory == 0 ? 0 : big ? 1 : 10;
        item.max_reorder = item.inventory == 0 ? 0 : big ? 3 : 40;
        const std::string& supplier = ctx.parties[ctx.suppliers[item.supplier]].id;
        // The last one of each family is no longer sold: inactive, kept for its history.
        const bool active = v < per_name || per_name == 1;
        items.Insert({item.id, item.description, item.id.substr(3), item.category,
                      item.inventory != 0                        ? kTypes[item.inventory]
                      : std::string_view(family.prefix) == "LAB" ? "LABOUR"
                                                                 : kTypes[0],
                      supplier, "S-" + item.id, item.inventory, active, item.cost, Cell::Null{},
                      item.price, Cell::Null{}, Cell(PickOf(r, kPlaces))});
        if (item.inventory != 0) {
          int shelf = 0;
          for (const std::string& location : ctx.locations) {
            places.Insert(
                {item.id, location,
                 std::string(1, static_cast<char>('A' + shelf)) + std::to_string(1 + r.Below(20)),
                 item.min_reorder, item.max_reorder, location != "SHOP" || !big});
            ++shelf;
          }
        }
        ctx.items.push_back(std::move(item));
      }
    }
  }
  for (const LedgerItem& item : kLedgerItems) {
    items.Insert({item.id, item.description, Cell::Null{}, "OVHD", "MISC", Cell::Null{},
                  Cell::Null{}, 0, true, std::int64_t{0}, Cell::Null{}, std::int64_t{0},
                  Cell::Null{}, Cell::Null{}});
  }
  WriteSpecialPrices(ctx);
}

// Special prices by customer type: companies get 10% off every fifth item, government buyers a
// fixed price on every seventh, individuals none. Chosen by position, not by the random stream,
// so that adding them changed nothing else in the company.
static void WriteSpecialPrices(DemoContext& ctx) {
  DemoTable prices(ctx.db, "SpecialPrice",
                   {"SType", "FieldValue", "ItemId", "Price", "DiscountRate"});
  for (std::size_t i = 0; i < ctx.items.size(); ++i) {
    const ItemInfo& item = ctx.items[i];
    if (item.inventory == 0) continue;
    if (i % 5 == 0) prices.Insert({3, "COMP", item.id, Cell::Null{}, 10.0});
    if (i % 7 == 0)
      prices.Insert(
          {3, "GOVT", item.id, ToCents(static_cast<double>(item.price) * 0.92), Cell::Null{}});
  }
}

}  // namespace trellin::demo
