// The asset cards' key, the card's texts, and the asset's movements with their running book
// value.

#include "reports/assets/arfaAssetDetail.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/AssetDepreciation.h"
#include "core/host/Database.h"
#include "core/host/Recordset.h"
#include "reports/CardText.h"

namespace trellin {

namespace {

constexpr ListParameter kDetailOptions[] = {
    {.kind = ListParameterKind::Option,
     .name = "ShowTransactions",
     .caption = "Show Transactions",
     .phrase = "With the transactions",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "ShowComponents",
     .caption = "Show Components",
     .phrase = "With the components",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "ShowNotes",
     .caption = "Show Notes",
     .phrase = "With the notes",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "NewPagePerAsset",
     .caption = "New Page per Asset",
     .phrase = "A page per asset"},
};

// The family's filters, then the card's options.
constexpr auto kDetailParameters = [] {
  std::array<ListParameter, std::size(kAssetFilters) + std::size(kDetailOptions)> all{};
  std::size_t n = 0;
  for (const ListParameter& p : kAssetFilters) all[n++] = p;
  for (const ListParameter& p : kDetailOptions) all[n++] = p;
  return all;
}();

constexpr ListKey kDetailKeys[] = {{
    .key = "AssetDetails",
    .base_sql =
        "SELECT Asset.AssetId,Asset.Description,Asset.SerialNumber,Asset.Status,"
        "Asset.AssetCategoryId,AssetCategory.Description AS CategoryName,Asset.AssetTypeId,"
        "AssetType.Description AS TypeName,Asset.AssetSiteId,AssetSite.Description AS SiteName,"
        "Asset.BranchId,Branch.Name AS BranchName,Asset.EmployeeId,Employee.Name AS "
        "EmployeeName,Asset.SupplierId,OtherParty.Name AS SupplierName,Asset.ParentAssetId,"
        "ParentAsset.Description AS ParentName,Asset.PurchaseDate,Asset.Purchased,"
        "Asset.DepreciationBasis,Asset.DepreciationRate,Asset.DepreciationBasisTax,"
        "Asset.DepreciationRateTax,Asset.WarrantyDate,Asset.ReviewDate,Asset.DisposalDate,"
        "Asset.UserDefined1,Asset.UserDefined2,Asset.UserDefined3,Asset.UserDefined4,"
        "Asset.UserDefined5,Asset.UserDefined6,Asset.UserDefined7,Asset.UserDefined8,"
        "Asset.UserDefined9,Asset.UserDefined10,Asset.UserDefined11,Asset.UserDefined12,"
        "Asset.UserDefined13,Asset.UserDefined14,Asset.UserDefined15,Asset.UserDefined16,"
        "Asset.UserDefined17,Asset.UserDefined18,Asset.UserDefined19,Asset.UserDefined20"
        " FROM ((((((Asset LEFT JOIN AssetCategory ON "
        "Asset.AssetCategoryId=AssetCategory.AssetCategoryId) LEFT JOIN AssetType ON "
        "Asset.AssetTypeId=AssetType.AssetTypeId) LEFT JOIN AssetSite ON "
        "Asset.AssetSiteId=AssetSite.AssetSiteId) LEFT JOIN Branch ON "
        "Asset.BranchId=Branch.BranchId) LEFT JOIN Employee ON "
        "Asset.EmployeeId=Employee.EmployeeId) LEFT JOIN OtherParty ON "
        "Asset.SupplierId=OtherParty.OtherPartyId) LEFT JOIN Asset AS ParentAsset ON "
        "Asset.ParentAssetId=ParentAsset.AssetId",
    .orders = kAssetOrders,
    .parameters = kDetailParameters,
}};

// The card's blocks: the field each fills, and the caption printed beside it.
constexpr card::Block kDetailBlocks[] = {
    {"ClassLines", "lblClass", "txtClass"},      {"DateLines", "lblDates", "txtDates"},
    {"MethodLines", "lblMethods", "txtMethods"}, {"ValueLines", "lblValues", "txtValues"},
    {"FieldLines", "lblFields", "txtFields"},    {"PartLines", "lblParts", "txtParts"},
    {"NoteLines", "lblNotes", "txtNotes"},
};

// "Diminishing value 20.00%": a book's method; "" when it has none.
std::string MethodText(const Variant& basis, const Variant& rate) {
  const int code = card::Blank(basis) ? 0 : static_cast<int>(basis.ToLong());
  const char* name = code == static_cast<int>(DepreciationBasis::StraightLine) ? "Straight line"
                     : code == static_cast<int>(DepreciationBasis::DiminishingValue)
                         ? "Diminishing value"
                         : nullptr;
  if (name == nullptr) return "Not depreciated";
  return std::string(name) + " (" + Asset::BasisText(code) + ") " +
         Format(card::Blank(rate) ? Variant(0.0) : rate, "0.00") + "%";
}

}  // namespace

arfaAssetDetail::arfaAssetDetail()
    : ListDesigner("arfaAssetDetail", kDetailKeys, "Asset Details") {}

DesignerPtr CreatearfaAssetDetail() { return std::make_shared<arfaAssetDetail>(); }

void arfaAssetDetail::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  trellin::Parameters& p = TLReport()->Parameters();
  AddAssetStatusBoxes(p);
  AddAssetDateAsAt(p);
}

std::string arfaAssetDetail::ExtraCondition() {
  status_phrase_.clear();
  return AssetStatusCondition(TLReport()->Parameters(), status_phrase_);
}

void arfaAssetDetail::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  as_at_ = AssetDateAsAt(p);
  combined_ = p.Value("IncludeComponents", false).ToBool();
  show_components_ = p.Value("ShowComponents", true).ToBool();
  show_notes_ = p.Value("ShowNotes", true).ToBool();
  own_ = AssetFiguresAt(as_at_, false);
  figures_ = combined_ ? AssetFiguresAt(as_at_, true) : own_;
  parts_.clear();
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(
      "SELECT ParentAssetId,AssetId,Description FROM Asset WHERE ParentAssetId Is Not Null "
      "ORDER BY ParentAssetId,AssetId");
  for (; !rs->Eof(); rs->MoveNext()) {
    parts_[UCase(rs->Value(0).Text())].emplace_back(rs->Value(1).Text(), rs->Value(2).Text());
  }
  ListDesigner::ActiveReport_ReportStart();
  std::string description = Description();
  AppendDescription(description, status_phrase_);
  AppendDescription(description, "Dated As At " + card::DateText(Variant(as_at_)));
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);

  transactions_ = std::make_shared<arfaAssetDetailTransSub>();
  transactions_->AsAt = as_at_;
  Control& transactions = Field("srptTransactions");
  transactions.SetObject(transactions_);
  transactions.SetVisible(p.Value("ShowTransactions", true).ToBool());
  if (p.Value("NewPagePerAsset", false).ToBool()) {
    Sections()["Detail"].SetNewPage(NewPageMode::After);
  }
}

void arfaAssetDetail::ActiveReport_DataInitialize() {
  for (const card::Block& block : kDetailBlocks) Fields().Add(block.field);
  Fields().Add("Identity");
}

void arfaAssetDetail::ActiveReport_FetchData(bool&) {
  trellin::Fields& fields = Fields();
  const std::string code = card::Text(fields, "AssetId");
  if (code.empty()) return;
  auto text = [&fields](const char* name) { return card::Text(fields, name); };

  fields.Item("Identity")
      .SetValue(Variant(card::Joined({AssetStatusText(card::Value(fields, "Status")),
                                      card::Part("Serial No", text("SerialNumber"))})));

  std::string lines;
  card::AddLine(
      lines,
      card::Joined(
          {card::Part("Category", card::Named(text("AssetCategoryId"), text("CategoryName"))),
           card::Part("Type", card::Named(text("AssetTypeId"), text("TypeName"))),
           card::Part("Site", card::Named(text("AssetSiteId"), text("SiteName")))}));
  card::AddLine(
      lines, card::Joined(
                 {card::Part("Branch", card::Named(text("BranchId"), text("BranchName"))),
                  card::Part("Employee", card::Named(text("EmployeeId"), text("EmployeeName")))}));
  card::AddLine(
      lines, card::Joined(
                 {card::Part("Supplier", card::Named(text("SupplierId"), text("SupplierName"))),
                  card::Part("Part of", card::Named(text("ParentAssetId"), text("ParentName")))}));
  fields.Item("ClassLines").SetValue(Variant(lines));

  fields.Item("DateLines")
      .SetValue(Variant(card::Joined(
          {card::Part("Purchased", card::DateText(card::Value(fields, "PurchaseDate"))),
           card::Part("Warranty to", card::DateText(card::Value(fields, "WarrantyDate"))),
           card::Part("Review", card::DateText(card::Value(fields, "ReviewDate"))),
           card::Part("Disposed", card::DateText(card::Value(fields, "DisposalDate")))})));

  lines.clear();
  card::AddLine(lines, "Book: " + MethodText(card::Value(fields, "DepreciationBasis"),
                                             card::Value(fields, "DepreciationRate")));
  card::AddLine(lines, "Tax: " + MethodText(card::Value(fields, "DepreciationBasisTax"),
                                            card::Value(fields, "DepreciationRateTax")));
  fields.Item("MethodLines").SetValue(Variant(lines));

  const auto found = figures_.find(UCase(code));
  const AssetFigures figures = found == figures_.end() ? AssetFigures{} : found->second;
  lines = "At " + card::DateText(Variant(as_at_)) + ": cost " +
          card::MoneyText(Variant(figures.cost)) + ", book value " +
          card::MoneyText(Variant(figures.book)) + ", tax value " +
          card::MoneyText(Variant(figures.tax));
  if (combined_ && parts_.count(UCase(code))) lines += ", with its components";
  fields.Item("ValueLines").SetValue(Variant(lines));

  // Each user-defined field the company has named and the asset fills.
  lines.clear();
  const Options& options = TrellinReportGlobals::RequireApplication().Options();
  for (int n = 1; n <= 20; ++n) {
    const UserDefinedField field = options.UserDefinedFields(UserDefinedKind::Asset, n);
    if (field.Name.empty()) continue;
    card::AddLine(lines, card::Part(field.Name, text(("UserDefined" + std::to_string(n)).c_str())));
  }
  fields.Item("FieldLines").SetValue(Variant(lines));

  lines.clear();
  const auto parts = parts_.find(UCase(code));
  if (show_components_ && parts != parts_.end()) {
    for (const auto& [part, description] : parts->second) {
      const auto own = own_.find(UCase(part));
      card::AddLine(
          lines, card::Named(part, description) + ": book value " +
                     card::MoneyText(Variant(own == own_.end() ? Currency() : own->second.book)));
    }
  }
  fields.Item("PartLines").SetValue(Variant(lines));

  lines.clear();
  if (show_notes_) {
    lines = card::NoteLines(*TrellinReportGlobals::RequireDatabase(),
                            "SELECT Date,Subject,Notes FROM AssetLog WHERE AssetId=" +
                                Database::SQLString(code) + " ORDER BY Date");
  }
  fields.Item("NoteLines").SetValue(Variant(lines));
}

void arfaAssetDetail::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail && transactions_) {
    const std::string code = card::Text(Fields(), "AssetId");
    transactions_->AssetIds = {code};
    const auto parts = parts_.find(UCase(code));
    if (combined_ && parts != parts_.end()) {
      for (const auto& part : parts->second) transactions_->AssetIds.push_back(part.first);
    }
  }
  ListDesigner::OnFormat(section);
}

void arfaAssetDetail::Detail_Format() {
  // The movements stand after the components, before the notes.
  card::StackBlocks(*this, kDetailBlocks, "NoteLines", "srptTransactions");
}

void arfaAssetDetailTransSub::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

std::string arfaAssetDetailTransSub::SQL() const {
  std::string codes;
  for (const std::string& id : AssetIds) {
    codes += (codes.empty() ? "" : ",") + Database::SQLString(id);
  }
  return "SELECT AssetTransaction.Date,AssetTransaction.Type,AssetTransaction.Reference,"
         "AssetTransaction.Comment,AssetTransaction.Value,AssetTransaction.TaxValue FROM "
         "AssetTransaction WHERE AssetTransaction.AssetId IN (" +
         (codes.empty() ? std::string("''") : codes) + ") AND AssetTransaction.Date<" +
         Database::SQLDate(AsAt.AddDays(1)) +
         " ORDER BY AssetTransaction.Date,AssetTransaction.AssetTransactionId";
}

// An asset with no movements to the date says so.
void arfaAssetDetailTransSub::ActiveReport_ReportStart() {
  running_ = Currency();
  DataControl().SetSource(SQL());
  const auto& rs = DataControl().Recordset();
  const bool empty = !rs || rs->Eof();
  for (const char* caption : {"lblDate", "lblKind", "lblReference", "lblComment", "lblValue",
                              "lblTaxValue", "lblBookValue"}) {
    Field(caption).SetVisible(!empty);
  }
  Field("lblNoTransactions").SetVisible(empty);
  Sections()["Detail"].SetVisible(!empty);
}

void arfaAssetDetailTransSub::ActiveReport_DataInitialize() {
  Fields().Add("KindText");
  Fields().Add("BookValue");
}

void arfaAssetDetailTransSub::ActiveReport_FetchData(bool&) {
  FillAssetKind(Fields());
  const Variant value = card::Value(Fields(), "Value");
  if (!card::Blank(value)) running_ += value.ToCurrency();
  Fields().Add("BookValue").SetValue(Variant(running_));
}

}  // namespace trellin
