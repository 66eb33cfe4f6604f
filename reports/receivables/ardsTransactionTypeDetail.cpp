// The key of the transaction type cards, and each type's figures from the books.

#include "reports/receivables/ardsTransactionTypeDetail.h"

#include "core/TrellinReportGlobals.h"
#include "core/host/Section.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/TransactionClass.h"

namespace trellin {

namespace {

constexpr ListOrder kDetailOrders[] = {
    {"Code", "TransactionType.TransactionTypeId"},
    {"Description", "TransactionType.Description,TransactionType.TransactionTypeId"},
    {"Class", "TransactionType.Type,TransactionType.TransactionTypeId"},
};

constexpr ListParameter kDetailParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "TransactionType.TransactionTypeId",
     .index = 39,
     .primary = true},
    // Only described: the dates bound the figures, not the types listed.
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Dated",
     .primary = true,
     .from_default = "BOY",
     .to_default = "EOY"},
};

constexpr ListColumn kDetailColumns[] = {
    {"Code", "TransactionTypeId", kColumnText, "Code", "", 900, false},
    {"Description", "Description", kColumnText, "Description", "", 2200, false},
    {"Class", "ClassText", kColumnText, "Class", "", 2400, false},
    {"Posted", "Posted", kColumnNumber, "Posted", "", 800, false, "#,##0"},
    {"Value", "PostedValue", kColumnMoney, "Value", "", 1500, false},
    {"YearBefore", "PriorPosted", kColumnNumber, "Year Before", "", 1100, false, "#,##0"},
    {"ValueYearBefore", "PriorValue", kColumnMoney, "Value Year Before", "", 1600, false},
    {"OpenBatches", "OpenBatches", kColumnNumber, "Open Batches", "", 1100, false, "#,##0"},
    {"FirstUsed", "FirstUsed", kColumnDate, "First Used", "", 1000, false},
    {"LastUsed", "LastUsed", kColumnDate, "Last Used", "", 1000, false},
};

constexpr ListKey kDetailKeys[] = {{
    .key = "TransactionTypeDetails",
    .base_sql = "SELECT TransactionType.TransactionTypeId,TransactionType.Description,"
                "TransactionType.Type,TransactionType.Message FROM TransactionType",
    .orders = kDetailOrders,
    .parameters = kDetailParameters,
    .columns = kDetailColumns,
}};

constexpr float kMessageIndent = 900;

// The receivables' documents are stored negative; they show as the customer's ledger shows them.
bool TypeValueTurned(long type) { return (type >= 30 && type <= 39) || type == 42; }

Variant TypeCardDate(const Variant& value) {
  if (value.IsNull() || value.IsEmpty() || value.IsMissing() || value.Text().empty()) {
    return Variant::Null();
  }
  return Variant(value.ToDate().DateOnly());
}

}  // namespace

ardsTransactionTypeDetail::ardsTransactionTypeDetail()
    : ListDesigner("ardsTransactionTypeDetail", kDetailKeys, "Transaction Type Details") {}

DesignerPtr CreateardsTransactionTypeDetail() {
  return std::make_shared<ardsTransactionTypeDetail>();
}

void ardsTransactionTypeDetail::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  for (const ListColumn& c : kDetailColumns)
    TLReport()->DataColumns().Item(c.name).Totalled = false;
}

void ardsTransactionTypeDetail::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  Section& detail = Sections()["Detail"];
  Control& message = detail.Controls().Add(ControlClass::Field, "txtMessage");
  message.SetDataField("Message");
  message.SetLeft(kMessageIndent);
  message.SetTop(detail.Height());
  message.SetWidth(PrintWidth() - kMessageIndent);
  message.SetHeight(200);
  message.SetCanGrow(true);
  message.SetCanShrink(true);
  message.Font().Size = 8;
  message.Font().Italic = true;
  detail.SetHeight(message.Top() + message.Height() + 60);

  figures_.clear();
  const trellin::Parameters& p = TLReport()->Parameters();
  const Variant from = TypeCardDate(p.Value("DatedFrom", Variant::Null()));
  const Variant to = TypeCardDate(p.Value("DatedTo", Variant::Null()));
  Database& db = *TrellinReportGlobals::RequireBusinessLayer().Database();
  const std::string types =
      "TransactionTypeId In (" + ListKeysSubquery(SQL(), "TransactionType.TransactionTypeId") + ")";
  // The dates, or the same dates a year before; an open end stays open.
  auto dated = [&](int years_back) {
    std::string where;
    if (!from.IsNull()) {
      where += " AND Date>=" + Database::SQLDate(from.ToDate().AddMonths(-12 * years_back));
    }
    if (!to.IsNull()) {
      where += " AND Date<" + Database::SQLDate(to.ToDate().AddMonths(-12 * years_back).AddDays(1));
    }
    return where;
  };
  for (int years_back : {0, 1}) {
    auto rs = db.Query(
        "SELECT TransactionTypeId,Count(TransactionId) AS Posted,Sum(Value) AS Total FROM "
        "Transactions WHERE " +
        types + dated(years_back) + " GROUP BY TransactionTypeId");
    for (; !rs->Eof(); rs->MoveNext()) {
      Figures& f = figures_[UCase(rs->Value(0).Text())];
      (years_back == 0 ? f.posted : f.prior_posted) = rs->Value(1);
      (years_back == 0 ? f.value : f.prior_value) =
          rs->Value(2).IsNull() ? Currency() : rs->Value(2).ToCurrency();
    }
  }
  auto used = db.Query(
      "SELECT TransactionTypeId,Min(Date) AS FirstUsed,Max(Date) AS LastUsed FROM Transactions "
      "WHERE " +
      types + " GROUP BY TransactionTypeId");
  for (; !used->Eof(); used->MoveNext()) {
    Figures& f = figures_[UCase(used->Value(0).Text())];
    f.first_used = TypeCardDate(used->Value(1));
    f.last_used = TypeCardDate(used->Value(2));
  }
  auto batches = db.Query(
      "SELECT TransactionTypeId,Count(acBatchSId) AS Batches FROM (SELECT DISTINCT "
      "TransactionTypeId,acBatchSId FROM acBatchTransaction WHERE " +
      types + ") AS Held GROUP BY TransactionTypeId");
  for (; !batches->Eof(); batches->MoveNext()) {
    figures_[UCase(batches->Value(0).Text())].open_batches = batches->Value(1);
  }
}

void ardsTransactionTypeDetail::ActiveReport_DataInitialize() {
  for (const char* name : {"ClassText", "Posted", "PostedValue", "PriorPosted", "PriorValue",
                           "OpenBatches", "FirstUsed", "LastUsed"}) {
    Fields().Add(name);
  }
}

void ardsTransactionTypeDetail::ActiveReport_FetchData(bool&) {
  const ReportField* code = Fields().Find("TransactionTypeId");
  const ReportField* type = Fields().Find("Type");
  if (code == nullptr || type == nullptr) return;
  const long type_class = type->Value().IsNull() ? 0 : type->Value().ToLong();
  Fields()
      .Item("ClassText")
      .SetValue(type->Value().IsNull() ? Variant(std::string())
                                       : Variant(TransactionClassText(type_class)));
  const auto found = figures_.find(UCase(code->Value().Text()));
  const Figures f = found == figures_.end() ? Figures{} : found->second;
  const bool turned = TypeValueTurned(type_class);
  Fields().Item("Posted").SetValue(f.posted);
  Fields().Item("PostedValue").SetValue(Variant(turned ? -f.value : f.value));
  Fields().Item("PriorPosted").SetValue(f.prior_posted);
  Fields().Item("PriorValue").SetValue(Variant(turned ? -f.prior_value : f.prior_value));
  Fields().Item("OpenBatches").SetValue(f.open_batches);
  Fields().Item("FirstUsed").SetValue(f.first_used);
  Fields().Item("LastUsed").SetValue(f.last_used);
}

}  // namespace trellin
