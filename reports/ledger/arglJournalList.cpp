// The journal list's key and the balance of each entry.

#include "reports/ledger/arglJournalList.h"

#include "platform/runtime/Format.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kJournalOrders[] = {
    {"Date",
     "glTransaction.Date,glTransaction.glSourceId,glTransaction.Reference,"
     "glTransaction.glTransactionId"},
    {"Reference",
     "glTransaction.Reference,glTransaction.Date,glTransaction.glSourceId,"
     "glTransaction.glTransactionId"},
};

constexpr ListParameter kJournalParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "glTransaction.glSourceId",
     .index = 32,
     .primary = true,
     .initial = "GL"},
    DatedParameter("glTransaction.Date"),
    {.kind = ListParameterKind::Standard, .field = "glTransaction.AccountId", .index = 0},
    kLedgerReferences,
    {.kind = ListParameterKind::Option,
     .name = "IncludeYearEnd",
     .caption = "Include Year End",
     .phrase = "Year-end entries included",
     .off_condition = "glTransaction.Type Is Null"},
};

constexpr ListKey kJournalKeys[] = {{
    .key = "JournalList",
    .base_sql =
        "SELECT glTransaction.glTransactionId,glTransaction.Date,glTransaction.glSourceId,"
        "glTransaction.Reference,glTransaction.Comment,glTransaction.AccountId,"
        "Account.Description,glTransaction.BranchId,glTransaction.DeptId,"
        "glTransaction.TaxCategory,IIf(glTransaction.Value>0,glTransaction.Value,Null) AS Debit,"
        "IIf(glTransaction.Value<0,-glTransaction.Value,Null) AS Credit,glTransaction.Value"
        " FROM glTransaction LEFT JOIN Account ON glTransaction.AccountId=Account.AccountId",
    .orders = kJournalOrders,
    .parameters = kJournalParameters,
}};

// An entry is the lines of one source, reference and day.
std::string EntryKey(const Fields& fields) {
  std::string key;
  for (const char* name : {"glSourceId", "Reference"}) {
    const ReportField* field = fields.Find(name);
    key += (field ? field->Value().Text() : std::string()) + '\x1f';
  }
  const ReportField* date = fields.Find("Date");
  if (date && date->Value().IsDate()) key += date->Value().ToDate().DateOnly().ToIso();
  return key;
}

}  // namespace

arglJournalList::arglJournalList() : ListDesigner("arglJournalList", kJournalKeys) {}

DesignerPtr CreatearglJournalList() { return std::make_shared<arglJournalList>(); }

// With an Accounts filter an entry shows only some of its lines, which need not balance.
void arglJournalList::ActiveReport_ReportStart() {
  check_balance_ = TLReport()->Parameters().Value("Accounts", Variant()).Text().empty();
  balances_.clear();
  ListDesigner::ActiveReport_ReportStart();
}

void arglJournalList::ActiveReport_DataInitialize() { Fields().Add("EntryKey"); }

void arglJournalList::ActiveReport_FetchData(bool&) {
  const std::string key = EntryKey(Fields());
  Fields().Add("EntryKey").SetValue(Variant(key));
  if (const ReportField* value = Fields().Find("Value"); value && !value->Value().IsNull()) {
    balances_[key] += value->Value().ToCurrency();
  }
}

// The footer sees its entry's last row.
void arglJournalList::OnFormat(Section& section) {
  if (section.Name() == "gfEntry") {
    auto found = balances_.find(EntryKey(Fields()));
    const bool out = check_balance_ && found != balances_.end() && found->second != Currency();
    Field("lblOutOfBalance").SetVisible(out);
    Field("txtDifference").SetVisible(out);
    if (out) Field("txtDifference").SetText(Format(Variant(found->second), "#,##0.00;(#,##0.00)"));
  } else {
    ListDesigner::OnFormat(section);
  }
}

}  // namespace trellin
