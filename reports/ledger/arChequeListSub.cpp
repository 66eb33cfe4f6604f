#include "reports/ledger/arChequeListSub.h"

namespace trellin {

void arChequeListSub::ActiveReport_DataInitialize() {
  for (const char* name : {"Date", "Comment", "Reference", "Amount"}) Fields().Add(name);
}

void arChequeListSub::ActiveReport_FetchData(bool& eof) {
  if (Documents == nullptr || next_ >= Documents->size()) {
    eof = true;
    return;
  }
  const Document& d = (*Documents)[next_++];
  Fields()["Date"].SetValue(Variant(d.date));
  Fields()["Comment"].SetValue(Variant(d.comment));
  Fields()["Reference"].SetValue(Variant(d.reference));
  Fields()["Amount"].SetValue(Variant(d.amount));
  eof = false;
}

}  // namespace trellin
