#pragma once
// The business objects the reports fetch by code: parties, branches, banks, tax categories,
// employees and asset categories. Their shapes are plain data; the business layer reads them
// from the company (platform/business/CompanyBusinessObjects) and decides the lines each shows.

#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/Currency.h"
#include "platform/runtime/Strings.h"

namespace trellin {

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

// A tax category: "S" standard 15%, "Z" zero rated, "*" never reported, ...
struct TaxCategory {
  std::string code;
  std::string description;
  double rate = 0;  // percent
  bool inclusive = false;
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
  [[nodiscard]] virtual const trellin::AssetCategory* FindAssetCategory(std::string_view code) = 0;
};

}  // namespace trellin
