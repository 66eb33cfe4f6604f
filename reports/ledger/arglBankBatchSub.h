#pragma once
// The split lines of one bank entry, under it on the bank entry list: each line other than the
// bank's own with its account, description, branch, department, tax category and its net, tax
// and gross from the bank's side (money in positive), so the gross adds up to the entry's amount.
// A sub-report over rows its caller read for every entry at once; the caller points it at an
// entry's rows before each run.

#include <cstddef>
#include <string>
#include <vector>

#include "core/host/ActiveReport.h"
#include "platform/runtime/Currency.h"

namespace trellin {

class arglBankBatchSub : public ActiveReport {
 public:
  struct Line {
    std::string account;
    std::string description;
    std::string branch;
    std::string dept;
    std::string tax_category;
    Currency net;
    Currency tax;
  };

  arglBankBatchSub() : ActiveReport("arglBankBatchSub") {}

  // The rows of the next run; they must outlive it. nullptr prints nothing.
  const std::vector<Line>* Lines = nullptr;

  void ActiveReport_ReportStart() override { next_ = 0; }
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  std::size_t next_ = 0;
};

}  // namespace trellin
