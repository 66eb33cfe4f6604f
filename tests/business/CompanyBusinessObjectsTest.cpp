// The business objects over a fixture company: every look-up of objects.txt is dumped and the
// dump compared with the file, so a new case is one more "? kind code" line there.

#include <gtest/gtest.h>

#include <sstream>

#include "platform/business/CompanyBusinessObjects.h"
#include "tests/support/FixtureCompany.h"
#include "tests/support/TestPaths.h"

namespace trellin::testing {
namespace {

std::string Joined(const std::vector<std::string>& lines) {
  std::string joined;
  for (const std::string& line : lines) joined += (joined.empty() ? "" : " / ") + line;
  return joined;
}

void DumpParty(std::ostream& out, const OtherParty& p) {
  out << "  " << p.code << " | " << p.name << " | cheque " << p.cheque_name << " | xref " << p.xref
      << " |" << (p.is_customer ? " customer" : "") << (p.is_supplier ? " supplier" : "") << "\n";
  out << "  tax " << p.tax_number << " | branch " << p.branch << " | terms " << p.customer_terms
      << " / " << p.supplier_terms << "\n";
  for (const PartyAddress& a : p.addresses)
    out << "  address " << a.kind << ": " << Joined(a.lines) << "\n";
  for (const ContactMethod& m : p.contact_methods)
    out << "  contact " << m.kind << ": " << m.detail << "\n";
  const PartyAddress* postal = p.AddressOrDefault("postal");
  out << "  postal or default: " << (postal != nullptr ? postal->kind : "(none)") << "\n";
  out << "  first EmailAR: " << p.ContactDetail("emailar")
      << " | first Email: " << p.ContactDetail("EMAIL") << "\n";
}

void DumpBranch(std::ostream& out, const Branch& b) {
  out << "  " << b.code << " | " << b.name << " | " << b.description << "\n";
  out << "  address: " << Joined(b.address_lines) << "\n";
  out << "  contact: " << Joined(b.contact_lines) << "\n";
  out << "  phone " << b.phone << " | fax " << b.fax << " | email " << b.email << " | web "
      << b.website << " | tax file " << b.tax_file_number << " | tax " << b.tax_number << "\n";
}

void DumpBank(std::ostream& out, const BankDetails& b) {
  out << "  " << b.code << " | " << b.account_name << " | " << Joined(b.lines) << " | number "
      << b.bank_number << " | overdraft " << b.overdraft_limit.ToString() << " |"
      << (b.active ? " active" : "") << (b.in_use ? " in use" : "") << "\n";
  out << "  asset " << b.asset_account << " | fees " << b.fees_account << "\n";
}

std::string Dump(BusinessObjects& objects, const std::string& kind, const std::string& code) {
  std::ostringstream out;
  if (kind == "party") {
    if (const OtherParty* p = objects.FindOtherParty(code)) DumpParty(out, *p);
  } else if (kind == "branch") {
    if (const Branch* b = objects.FindBranch(code)) DumpBranch(out, *b);
  } else if (kind == "bank") {
    if (const BankDetails* b = objects.FindBank(code)) DumpBank(out, *b);
  } else if (kind == "tax") {
    if (const TaxCategory* t = objects.FindTaxCategory(code)) {
      out << "  " << t->code << " | " << t->description << " | " << t->rate << "%"
          << (t->inclusive ? " | inclusive" : "") << "\n";
    }
  } else if (kind == "employee") {
    if (const Employee* e = objects.FindEmployee(code)) {
      out << "  " << e->code << " | " << e->name << " | " << e->title << " | " << e->contact_method
          << ": " << e->contact_detail << "\n";
    }
  } else if (kind == "asset-category") {
    if (const AssetCategory* c = objects.FindAssetCategory(code)) {
      out << "  " << c->code << " | " << c->description << " | " << c->calculation_period << " | "
          << c->revaluation << " | " << c->disposal_type << "\n";
    }
  } else {
    ADD_FAILURE() << "objects.txt asks for an unknown kind: " << kind;
  }
  const std::string dump = out.str();
  return dump.empty() ? "  (none)\n" : dump;
}

TEST(CompanyBusinessObjects, EveryLookUpOfTheFixtureCompanyAsWritten) {
  FixtureCompany company({"business/objects.sql"});
  business::CompanyBusinessObjects objects(company.Database());
  const std::string expected = ReadFile(TestDir("business") / "objects.txt");
  std::istringstream lines(expected);
  std::string actual, line;
  while (std::getline(lines, line)) {
    if (line.rfind("#", 0) == 0) actual += line + "\n";
    if (line.rfind("? ", 0) != 0) continue;
    std::istringstream ask(line.substr(2));
    std::string kind, code;
    ask >> kind;
    std::getline(ask, code);
    code = code.empty() ? code : code.substr(1);  // the blank after the kind
    actual += line + "\n" + Dump(objects, kind, code);
  }
  EXPECT_EQ(actual, expected);
}

TEST(CompanyBusinessObjects, EachObjectIsReadOnceAndKeptForTheRun) {
  FixtureCompany company({"business/objects.sql"});
  business::CompanyBusinessObjects objects(company.Database());
  EXPECT_EQ(objects.FindOtherParty("acme"), objects.FindOtherParty(" ACME "));
  EXPECT_EQ(objects.FindBranch("tga"), objects.FindBranch("TGA"));
  EXPECT_EQ(objects.FindOtherParty("NOSUCH"), nullptr);
  EXPECT_EQ(objects.FindOtherParty("nosuch"), nullptr);
}

}  // namespace
}  // namespace trellin::testing
