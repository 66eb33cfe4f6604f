#pragma once
// "ChequeStandard": the cheques of a bank run, one page each: the branch, the date, the payee
// (its cheque name when it has one), the postal address, the amount in figures and in words, and
// the stub arglChequeStandardSub saying what the cheque pays. It has no parameters of its own: the
// application that prints a run gives the WHERE text that picks the cheques (CreateRecordSet), or
// the command line gives it as the hidden parameter "SQLWhere"; empty text prints every bank entry
// that has a party.

#include <cstdint>
#include <memory>
#include <string>

#include "core/Designer.h"
#include "core/host/BusinessObjects.h"
#include "core/host/Recordset.h"
#include "reports/ledger/arglChequeStandardSub.h"

namespace trellin {

class arglChequeStandard : public Designer {
 public:
  arglChequeStandard() : Designer("arglChequeStandard") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // Keeps the WHERE text that picks the cheques; it brings its own " WHERE ". Called before the
  // run, it wins over the "SQLWhere" parameter.
  void CreateRecordSet(const std::string& SQLWhere);
  // Asks for the cheques to print straight away, without a preview.
  void PrintReportNow() { print_now_ = true; }
  [[nodiscard]] bool PrintsNow() const { return print_now_; }

  // The cheques' query with the WHERE text given.
  [[nodiscard]] static std::string ChequeSQL(const std::string& where);
  // The payee as printed: the cheque name when it has any length, else the name.
  [[nodiscard]] static std::string PayeeOf(const Variant& name, const Variant& cheque_name);
  // The amount in words as the cheque prints it: upper case first, behind five blanks.
  [[nodiscard]] static std::string AmountInWordsOf(Currency amount);

 private:
  void ghTransactionId_Format();
  void Detail_Format();

  std::string where_;
  bool where_given_ = false;
  bool print_now_ = false;
  std::shared_ptr<Recordset> rs_;
  std::unique_ptr<BusinessObjects> objects_;
  std::shared_ptr<arglChequeStandardSub> sub_;
  bool any_ = false;
};

[[nodiscard]] DesignerPtr CreatearglChequeStandard();

}  // namespace trellin
