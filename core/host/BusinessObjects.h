#pragma once
// The business objects the reports fetch by code: parties, branches, banks, tax categories,
// employees and asset categories; and the stock levels of items. Their shapes are plain data; the
// business layer reads them from the company (platform/business/CompanyBusinessObjects) and decides
// the lines each shows.

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/AssetDepreciation.h"
#include "core/host/Job.h"
#include "core/host/TaxDetail.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Strings.h"

namespace trellin {

class Tax;  // core/host/Application.h

// One address of a party. Its kind is the stored AddressId ("Postal", "Delivery", ...).
struct PartyAddress {
  std::string kind;
  // The street lines, then city, state and postcode on one line, then the country; trimmed,
  // blank ones left out.
  std::vector<std::string> lines;
};

// One way to reach a party: "Phone", "Email", "EmailAR", ... and its detail.
struct ContactMethod {
  std::string kind;
  std::string detail;
};

// A customer or a supplier; one party can be both.
struct OtherParty {
  std::string code;
  std::string name;
  std::string cheque_name;
  std::string xref;
  bool is_customer = false;
  bool is_supplier = false;
  std::vector<PartyAddress> addresses;         // in AddressId order
  std::vector<ContactMethod> contact_methods;  // in Sequence order
  std::string tax_number;
  std::string branch;          // the branch of the party's location; "" when it has none
  std::string customer_terms;  // the payment terms' descriptions; "" when none
  std::string supplier_terms;

  // The address of `kind` (case ignored); nullptr when the party has none.
  [[nodiscard]] const PartyAddress* Address(std::string_view kind) const {
    for (const PartyAddress& address : addresses) {
      if (EqualsIgnoreCase(address.kind, kind)) return &address;
    }
    return nullptr;
  }
  // The address of `kind` when it has lines, else the party's default address: its first
  // address with lines. nullptr when the party has no address with lines.
  [[nodiscard]] const PartyAddress* AddressOrDefault(std::string_view kind) const {
    const PartyAddress* wanted = Address(kind);
    if (wanted != nullptr && !wanted->lines.empty()) return wanted;
    for (const PartyAddress& address : addresses) {
      if (!address.lines.empty()) return &address;
    }
    return nullptr;
  }
  // The detail of the first contact method of `kind` (case ignored) with a detail; "" when none.
  [[nodiscard]] std::string ContactDetail(std::string_view kind) const {
    for (const ContactMethod& method : contact_methods) {
      if (EqualsIgnoreCase(method.kind, kind) && !method.detail.empty()) return method.detail;
    }
    return {};
  }
};

// A branch of the company, with the block it prints on documents and lists.
struct Branch {
  std::string code;
  std::string name;
  std::string description;
  std::vector<std::string> address_lines;  // trimmed, blank ones left out
  std::string phone, fax, email, website;
  // "Bus: " and the phone, "Fax: " and the fax, "Email: " and the address, those present.
  std::vector<std::string> contact_lines;
  std::string tax_file_number;
  std::string tax_number;
};

// One of the company's bank accounts.
struct BankDetails {
  std::string code;
  std::string account_name;
  std::string bank_name, branch, account_number, bank_number;
  // The bank's name, branch and account number, those present.
  std::vector<std::string> lines;
  Currency overdraft_limit;
  bool active = true;
  bool in_use = true;
  // Ledger accounts as "3010, Cheque Account": code and description, those present.
  std::string asset_account;
  std::string fees_account;
};

// One line of a bank reconciliation: a bank entry, by its bank's own line.
struct BankReconciliationLine {
  std::int64_t glBankTransactionId = 0;
  bool Checked = false;  // on the statement page shown
  Date date;
  std::optional<Date> Presented;  // the day a cheque was presented
  std::string Reference;
  std::string OtherParty;  // the party's name; "" for an entry without one
  std::string Comment;
  Currency Value;  // positive for money in
};

// The state of a bank's latest statement page: its figures and the lines as at a date, those on
// the page (Checked) first, then the rest, each by date and entry. With no statement the page is
// 0, the figures are 0 and every line is unchecked.
struct BankReconciliation {
  std::string BankId;
  long StatementPage = 0;
  std::optional<Date> StatementDate;
  Currency StatementOpening;  // the closing balance of the page before; 0 for the first
  Currency StatementClosing;
  Currency TotalReconciled;    // the sum of the checked lines
  Currency TotalUnreconciled;  // the sum of the others
  bool Locked = false;
  std::string LockedText;  // "" unless locked
  std::vector<BankReconciliationLine> Lines;
};

// A tax category: "S" standard 15%, "Z" zero rated, "*" never reported, ...
struct TaxCategory {
  std::string code;
  std::string description;
  double rate = 0;  // percent
  bool inclusive = false;
};

// A kind of document: "INV" a "Tax Invoice" of class 30, and the message its documents print.
struct DocumentType {
  std::string code;
  std::string description;
  std::int16_t type = 0;  // the numeric class: 20-29 payables, 30-39 receivables, 80, 90
  std::string message;
};

// How an item's stock is counted, as stored in Item.Inventory.
enum class ItemTracking : std::int16_t { None = 0, Plain = 1, Serial = 2, Batch = 3 };

// An item as the documents print it.
struct StockItem {
  std::string code;
  std::string description;
  ItemTracking tracking = ItemTracking::None;
};

struct Employee {
  std::string code;
  std::string name;
  std::string title;
  std::string contact_method;  // "Mobile", "Phone", ...
  std::string contact_detail;
};

// How the assets of a category are depreciated, revalued and disposed of.
struct AssetCategory {
  std::string code;
  std::string description;
  std::string calculation_period;
  std::string revaluation;
  std::string disposal_type;
};

// The stock figures of one item: at one location or all, for one serial number or all. Sales
// orders (type 90) and job invoices (type 42) each give what was ordered, what is to be supplied,
// and the same over lines on hold.
struct StockFigures {
  double QuantityOnHand = 0;  // sums of the item's stock lines, at any process date
  Currency ValueOnHand;
  double PurchaseOrders = 0;  // purchase order lines, received twins netted off
  double APOpen = 0;          // unposted supplier invoices less supplier credits
  double AROpen = 0;          // unposted customer invoices less customer credits
  double SalesOrdersOnOrder = 0, SalesOrdersOnOrderHeld = 0;
  double SalesOrdersToSupply = 0, SalesOrdersToSupplyHeld = 0;
  double JobInvoicesOnOrder = 0, JobInvoicesOnOrderHeld = 0;
  double JobInvoicesToSupply = 0, JobInvoicesToSupplyHeld = 0;

  // To be supplied on sales orders and job invoices, less what is on hold.
  [[nodiscard]] double Allocated() const {
    return SalesOrdersToSupply - SalesOrdersToSupplyHeld + JobInvoicesToSupply -
           JobInvoicesToSupplyHeld;
  }
  // What is left to sell: on hand, less what is invoiced and not posted, less what is allocated.
  [[nodiscard]] double QuantityAvailable() const { return QuantityOnHand - AROpen - Allocated(); }
};

// The stock levels of a company's items, for one report run. The open documents and the
// quantities on hand are read once, at the first call, by item, location and serial number; later
// calls add up what they read. Codes match without regard to case or blanks at the ends; an empty
// location or serial number means all. Throws DatabaseError when the company cannot be read.
class ItemStockLevel {
 public:
  virtual ~ItemStockLevel() = default;
  // The figures of `item_id`; zeros for an item with no lines. Purchase order lines carry no
  // serial number: a load for one serial number counts none of them.
  [[nodiscard]] virtual StockFigures Load(std::string_view item_id, std::string_view location_id,
                                          std::string_view serial_number) = 0;
  // The quantity available of the item: on hand at the end of `date` (every line with no date;
  // a line with no process date counts at any date), less AROpen, less Allocated when
  // `exclude_allocated`.
  [[nodiscard]] virtual double QuantityAvailableAt(std::string_view item_id,
                                                   std::string_view location_id,
                                                   std::string_view serial_number,
                                                   std::optional<Date> date,
                                                   bool exclude_allocated) = 0;
};

// Which rule priced an issue of stock (`ItemCosting::Cost`), in the order they are tried.
enum class ItemCostRule : std::int16_t {
  UnknownItem = 0,  // no such item: no cost
  NonStock = 1,     // an item of which no stock is kept: its cost price as stored
  OwnNumber = 2,    // a serial or batch number: the cost of the lines that brought it in
  Average = 3,      // what is on hand at the location (every location for none) at the date
  LastReceipt = 4,  // nothing on hand there: the unit cost of the last purchase, any location
  CostPrice = 5,    // never bought: the item's cost price, less the tax it holds
};

// What an issue of stock costs.
struct ItemCost {
  Currency Value;  // of the whole quantity, to the cent, half away from zero
  ItemCostRule Rule = ItemCostRule::UnknownItem;
};

// The cost of issuing stock of an item: a stocktake adjustment, a job's use of stock. Read from
// the company's stock lines at each call, through the item's index. Codes match without regard
// to case or blanks at the ends; the tax list given must outlive the object. Throws
// DatabaseError when the company cannot be read. One thread at a time.
class ItemCosting {
 public:
  virtual ~ItemCosting() = default;
  // The cost of `quantity` of `item_id` (signed: the value has the quantity's sign) at the end
  // of `date` (nullopt: every line) at `location_id` ("" every location), of the serial or
  // batch number `serial_number` ("" none). `include_undated`: whether lines with no process
  // date count when a date is given (the stock status counts them, a stocktake does not).
  [[nodiscard]] virtual ItemCost Cost(std::string_view item_id, double quantity,
                                      std::optional<Date> date, std::string_view location_id,
                                      std::string_view serial_number, bool include_undated) = 0;
};

// The look-ups of one report run. Each kind is read from the company at its first look-up and
// kept, so a run sees one set of objects; make a new instance (BusinessLayer::CreateObjects) for
// the next run. Codes match without regard to case or blanks at the ends. Each returns nullptr for
// a code the company does not hold; the object lives as long as this instance. Throws
// DatabaseError when the company cannot be read. One thread at a time.
class BusinessObjects {
 public:
  virtual ~BusinessObjects() = default;
  [[nodiscard]] virtual const trellin::OtherParty* FindOtherParty(std::string_view code) = 0;
  [[nodiscard]] virtual const trellin::Branch* FindBranch(std::string_view code) = 0;
  [[nodiscard]] virtual const trellin::BankDetails* FindBank(std::string_view code) = 0;
  [[nodiscard]] virtual const trellin::TaxCategory* FindTaxCategory(std::string_view code) = 0;
  [[nodiscard]] virtual const trellin::Employee* FindEmployee(std::string_view code) = 0;
  // The kinds of document, the items and the locations' branches, each read whole at its first
  // look-up. FindLocationBranch gives the branch of location `code`: nullptr when the location
  // is not held or has no branch the company holds.
  [[nodiscard]] virtual const trellin::DocumentType* FindDocumentType(std::string_view code) = 0;
  [[nodiscard]] virtual const trellin::StockItem* FindItem(std::string_view code) = 0;
  [[nodiscard]] virtual const trellin::Branch* FindLocationBranch(std::string_view code) = 0;
  [[nodiscard]] virtual const trellin::AssetCategory* FindAssetCategory(std::string_view code) = 0;
  // The stock levels of the run's items; each call makes a fresh one that reads on first use.
  [[nodiscard]] virtual std::unique_ptr<trellin::ItemStockLevel> CreateItemStockLevel() = 0;
  // The costing of issues of the run's items, taking tax out of cost prices by `tax`, which must
  // outlive it. A business layer that keeps no stock throws std::logic_error.
  [[nodiscard]] virtual std::unique_ptr<trellin::ItemCosting> CreateItemCosting(const Tax& tax) {
    (void)tax;
    throw std::logic_error("This business layer keeps no stock.");
  }
  // A job object of the run, whose profit and GP lines reckon from "Actual Charges" when
  // `actual_charges` (Options.JobActualCharges), else from "Charges", and whose open stock is
  // priced through the item costing with `tax`, which must outlive it; each Load reads afresh. A
  // business layer that keeps no jobs throws std::logic_error.
  [[nodiscard]] virtual std::unique_ptr<trellin::Job> CreateJob(bool actual_charges,
                                                                const Tax& tax) {
    (void)actual_charges;
    (void)tax;
    throw std::logic_error("This business layer keeps no jobs.");
  }
  // The lines behind a tax return for one period and group (core/host/TaxDetail.h), sales first,
  // then by category, date and line. A business layer that keeps no ledger throws
  // std::logic_error.
  [[nodiscard]] virtual std::vector<trellin::TaxDetailLine> LoadTaxDetail(
      const trellin::TaxDetailRequest& request) {
    (void)request;
    throw std::logic_error("This business layer keeps no tax ledger.");
  }
  // The reconciliation of bank `code` as at `dated_to` (every unreconciled line when it is
  // absent); nullopt for a bank the company does not hold. A business layer that keeps no bank
  // statements throws std::logic_error.
  [[nodiscard]] virtual std::optional<trellin::BankReconciliation> LoadBankReconciliation(
      std::string_view code, std::optional<Date> dated_to) {
    (void)code;
    (void)dated_to;
    throw std::logic_error("This business layer keeps no bank statements.");
  }
  // The fixed assets of the run: a depreciation calculator, an Asset object, and a depreciation
  // run worked out to `date_dated` against `years`. The assets are read once, at the first of
  // these calls. A business layer that keeps no assets throws std::logic_error.
  [[nodiscard]] virtual std::unique_ptr<trellin::AssetDepreciation> CreateAssetDepreciation() {
    throw std::logic_error("This business layer keeps no fixed assets.");
  }
  [[nodiscard]] virtual std::unique_ptr<trellin::Asset> CreateAsset() {
    throw std::logic_error("This business layer keeps no fixed assets.");
  }
  // The deferred tax figures, worked against `years`.
  [[nodiscard]] virtual std::unique_ptr<trellin::AssetTaxValues> CreateAssetTaxValues(
      const std::vector<FinancialYear>& years) {
    (void)years;
    throw std::logic_error("This business layer keeps no fixed assets.");
  }
  [[nodiscard]] virtual std::unique_ptr<trellin::DepreciationRun> CreateDepreciationRun(
      Date date_dated, const std::vector<FinancialYear>& years) {
    (void)date_dated;
    (void)years;
    throw std::logic_error("This business layer keeps no fixed assets.");
  }
};

}  // namespace trellin
