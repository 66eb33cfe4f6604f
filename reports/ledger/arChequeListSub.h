#pragma once
// The documents one supplier payment paid, under its line on the cheque list when ShowDetails is
// set: each document's date, type, reference and the amount paid off it. A sub-report over rows
// its caller read for every payment at once; the caller points it at a payment's rows before
// each run.

#include <cstddef>
#include <string>
#include <vector>

#include "core/host/ActiveReport.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"

namespace trellin {

class arChequeListSub : public ActiveReport {
 public:
  struct Document {
    Date date;
    std::string comment;  // the document's type
    std::string reference;
    Currency amount;
  };

  arChequeListSub() : ActiveReport("arChequeListSub") {}

  // The rows of the next run; they must outlive it. nullptr prints nothing.
  const std::vector<Document>* Documents = nullptr;

  void ActiveReport_ReportStart() override { next_ = 0; }
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  std::size_t next_ = 0;
};

}  // namespace trellin
