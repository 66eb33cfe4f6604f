// The purchase and disposal summaries: parameters, columns, the query and the hand-over of each
// asset to the movements beneath its line.

#include "reports/assets/arfaPurchaseSummary.h"

#include <algorithm>
#include <span>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/assets/arfaDisposalSummary.h"
#include "reports/assets/arfaDisposalSummarySub.h"

namespace trellin {

namespace {

// The columns in order: field, data field, heading, kind, width (-1 automatic), least width,
// totalled, and whether summary mode hides the column.
struct SummaryColumn {
  const char* name;
  const char* field;
  const char* caption;
  int data_type;
  float width;
  float minimum;
  bool totalled;
  bool summary_hides;
};

constexpr float kSummaryCodeWidth = 900;  // twips: "PLA101" and its gap in the body font

// The sum of the period's movements has no heading of its own: it stands under "Value", as the
// footers' sums do.
constexpr SummaryColumn kPurchaseColumns[] = {
    {"AssetId", "AssetId", "Code", kColumnCode, 1000, kSummaryCodeWidth, true, false},
    {"Description", "Description", "Description", kColumnText, -1, -1, true, false},
    {"StatusText", "StatusText", "Status", kColumnText, 800, -1, false, false},
    {"PurchasedDate", "PurchaseDate", "Purchased", kColumnDate, 1100, -1, false, false},
    {"Purchased", "SumOfValue", "Value", kColumnMoney, 1300, -1, true, false},
    {"Warranty", "WarrantyDate", "Warranty Expiry", kColumnDate, 1600, -1, false, true},
    {"Review", "ReviewDate", "Asset Review", kColumnDate, 1400, -1, false, true},
};

constexpr SummaryColumn kDisposalColumns[] = {
    {"AssetId", "AssetId", "Code", kColumnCode, 1000, kSummaryCodeWidth, true, false},
    {"Description", "Description", "Description", kColumnText, -1, -1, true, false},
    {"StatusText", "StatusText", "Status", kColumnText, 1000, -1, false, false},
    {"PurchasedDate", "PurchaseDate", "Purchased", kColumnDate, 1100, -1, false, false},
    {"DisposalDate", "DisposalDate", "Disposed", kColumnDate, 1400, -1, false, false},
    {"Value", "SumOfValue", "Value", kColumnMoney, 1300, -1, true, false},
};

constexpr const char* kPurchaseTypes = "10,11";
constexpr const char* kDisposalTypes = "30,31,40,41,42,43,44";

std::span<const SummaryColumn> ColumnsOf(bool disposals) {
  if (disposals) return kDisposalColumns;
  return kPurchaseColumns;
}

}  // namespace

DesignerPtr CreatearfaPurchaseSummary() { return std::make_shared<arfaPurchaseSummary>(); }
DesignerPtr CreatearfaDisposalSummary() { return std::make_shared<arfaDisposalSummary>(); }

const char* arfaPurchaseSummary::Types() const {
  return disposals_ ? kDisposalTypes : kPurchaseTypes;
}

void arfaPurchaseSummary::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name,Status", false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  AddGroupings(p);
  p.AddList("Period", "MTD", true, "", "MTD", "ALL,MTD,QTD,YTD,Custom", false, "Period");
  p.AddDate("DateFrom", Variant(), true, "Date From", Variant(), false, "Date From");
  p.AddDate("DateTo", Variant(), true, "Date To", "GLCURRENT", false, "Date To")->Help =
      "Left blank, the general ledger's current date.";
  if (!disposals_) AddDateRangeParameters(p);
  p.AddBoolean("UseTaxBasis", false, false, "", false, false, "Use Tax Basis");
  if (disposals_) {
    // The standard Status list offers the parties' credit statuses, yet filters the asset's
    // status by its number.
    CreateStandardParameter(25, p, false, "", "", "", "Asset.Status");
  } else {
    AddStatusParameters(p);
  }
  AddLists(p);
}

void arfaPurchaseSummary::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  for (const SummaryColumn& c : ColumnsOf(disposals_)) {
    const bool code = c.data_type == kColumnCode;
    columns.Add(c.name, c.field, c.data_type, c.caption, "", c.width, c.minimum, -1, code ? 0 : -1,
                "(auto)", 0, 0, "", true, "", c.totalled, false);
  }
}

std::string arfaPurchaseSummary::PeriodDescription() const {
  const std::string from = DateText(date_from_);
  const std::string to = DateText(date_to_);
  if (disposals_) {
    if (from.empty() && to.empty()) return {};
    if (to.empty()) return "Period Covered from " + from;
    if (from.empty()) return "Period Covered to " + to;
    return "Period Covered " + from + " to " + to;
  }
  std::string dates;
  if (!from.empty()) dates = "from " + from;
  if (!to.empty()) dates += std::string(dates.empty() ? "" : " ") + "to " + to;
  const std::string period = TLReport()->Parameters().Value("Period", "MTD").Text();
  if (!EqualsIgnoreCase(period, "Custom")) return Trim(period + " " + dates);
  return dates.empty() ? std::string() : "Period Covered: " + dates;
}

void arfaPurchaseSummary::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  description_.clear();
  summary_ = p.Value("Summary", false).ToBool();
  use_tax_basis_ = p.Value("UseTaxBasis", false).ToBool();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  const bool all_time = EqualsIgnoreCase(p.Value("Period", "MTD").Text(), "ALL");
  date_from_ = all_time ? Variant::Null() : DateOrNull(p.Value("DateFrom", Variant()));
  date_to_ = all_time ? Variant::Null() : DateOrNull(p.Value("DateTo", Variant()));
  const std::string amount = use_tax_basis_ ? "[TaxValue]" : "[Value]";
  const std::string types = Types();

  // The sum counts from the day after the day before DateFrom; the disposal summary's existence
  // test counts from DateFrom itself. Both come to the same day.
  const char* op_after =
      disposals_ ? " AND AssetTransaction.Date >" : " AND AssetTransaction.Date>";
  const char* op_before =
      disposals_ ? " AND AssetTransaction.Date <" : " AND AssetTransaction.Date<";
  std::string bounds;
  if (!date_from_.IsNull()) bounds += op_after + Database::SQLDate(date_from_.ToDate().AddDays(-1));
  if (!date_to_.IsNull()) bounds += op_before + Database::SQLDate(date_to_.ToDate().AddDays(1));
  const std::string movements =
      " FROM AssetTransaction WHERE AssetTransaction.AssetId=Asset.AssetId AND "
      "AssetTransaction.Type In (" +
      types + ")";
  std::string fields = disposals_ ? "AssetId,Description,PurchaseDate,DisposalDate,Status"
                                  : "AssetId,Description,ReviewDate,PurchaseDate,Purchased,"
                                    "WarrantyDate,Status";
  fields += ",(SELECT Sum(" + amount + ")" + movements + bounds + ") As SumOfValue";

  AppendDescription(description_, "Assets ordered by " + order_by);
  AppendDescription(description_, PeriodDescription());
  if (use_tax_basis_) AppendDescription(description_, "Tax Basis Figures");

  std::string where;
  AddFamilyFilters(where, description_);
  if (!disposals_) AddStatusFilter(where, description_);
  std::string exists = "(SELECT Count(AssetTransactionId)" + movements + " AND " + amount + "<>0";
  if (disposals_) {
    if (!date_from_.IsNull()) {
      exists += " AND AssetTransaction.Date>=" + Database::SQLDate(date_from_.ToDate());
    }
    if (!date_to_.IsNull()) {
      exists += " AND AssetTransaction.Date<" + Database::SQLDate(date_to_.ToDate().AddDays(1));
    }
  } else {
    exists += bounds;
  }
  AppendSQLCondition(where, exists + ")<>0");

  std::string order = order_by == "Name"     ? "Description"
                      : order_by == "Status" ? "Status"
                                             : "AssetId";
  DefineGroupings(fields, order, "StatusText");
  sql_ = "SELECT " + fields + (disposals_ ? " FROM Asset" : " FROM Asset ");
  if (!where.empty()) sql_ += " WHERE " + where;
  sql_ += " ORDER BY " + order;
}

void arfaPurchaseSummary::ActiveReport_ReportStart() {
  DataColumns& columns = TLReport()->DataColumns();
  if (columns.Count() == 0) RefreshDataColumns();
  BuildSQL();
  if (summary_) {
    // The group's sum closes the line, under "Value"; the dates of an asset have no group sum.
    for (const SummaryColumn& c : ColumnsOf(disposals_)) {
      if (!columns.Exists(c.name)) continue;
      DataColumn& column = columns.Item(c.name);
      if (c.summary_hides) column.Hidden = true;
      if (c.data_type == kColumnText || c.data_type == kColumnDate) column.Caption.clear();
    }
  }
  StartRun(sql_, description_, summary_);
  Control& details = Field("srptDetails");
  if (summary_) {
    details.SetVisible(false);
    return;
  }
  if (disposals_) {
    sub_ = std::make_shared<arfaDisposalSummarySub>();
  } else {
    sub_ = std::make_shared<arfaPurchaseSummarySub>();
  }
  sub_->DateFrom = date_from_;
  sub_->DateTo = date_to_;
  sub_->UseTaxBasis = use_tax_basis_;
  sub_->Types = Types();
  details.SetObject(sub_);
  // The movements' amounts stand under the line's sum: the sub-report's right edge meets the
  // money column's.
  const char* money = disposals_ ? "txtValue" : "txtPurchased";
  if (const Control* sum = FindControl(money); sum != nullptr && sum->Visible()) {
    details.SetLeft(std::max(0.0f, sum->Left() + sum->Width() - details.Width()));
  }
}

void arfaPurchaseSummary::ActiveReport_DataInitialize() { Fields().Add("StatusText"); }

void arfaPurchaseSummary::ActiveReport_FetchData(bool& eof) {
  if (eof) return;
  const ReportField* status = Fields().Find("Status");
  Fields()["StatusText"].SetValue(
      status == nullptr || status->Value().IsNull()
          ? std::string()
          : Asset::StatusText(static_cast<int>(status->Value().ToLong())));
}

void arfaPurchaseSummary::Detail_Format() {
  if (summary_ || !sub_) return;
  sub_->AssetId = Trim(Fields()["AssetId"].Value().Text());
}

void arfaPurchaseSummary::ActiveReport_ReportEnd() {
  sub_.reset();
  arfaScheduleBase::ActiveReport_ReportEnd();
}

}  // namespace trellin
