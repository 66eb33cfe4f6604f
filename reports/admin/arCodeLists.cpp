// The keys of the code lists, one row each, and the due rule of a payment term.

#include "reports/admin/arCodeLists.h"

#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr ListOrder kTermOrders[] = {{"Code", "PaymentTermId"},
                                     {"Description", "Description,PaymentTermId"}};
constexpr ListOrder kPenaltyOrders[] = {{"Code", "PenaltyInterestId"},
                                        {"Description", "Description,PenaltyInterestId"}};
constexpr ListOrder kSupplierCategoryOrders[] = {{"Code", "SupplierCategoryId"},
                                                 {"Description", "Description,SupplierCategoryId"}};
constexpr ListOrder kSupplierTypeOrders[] = {{"Code", "SupplierTypeId"},
                                             {"Description", "Description,SupplierTypeId"}};
constexpr ListOrder kItemCategoryOrders[] = {{"Code", "ItemCategoryId"},
                                             {"Description", "Description,ItemCategoryId"}};
constexpr ListOrder kItemTypeOrders[] = {{"Code", "ItemTypeId"},
                                         {"Description", "Description,ItemTypeId"}};

// The standard row of each list, primary; payment terms are filtered on their own code, where
// the row's field is the customer's term.
constexpr ListParameter kTermParameters[] = {
    {.kind = ListParameterKind::Standard, .field = "PaymentTermId", .index = 12, .primary = true}};
constexpr ListParameter kPenaltyParameters[] = {
    {.kind = ListParameterKind::Standard, .index = 29, .primary = true}};
constexpr ListParameter kSupplierCategoryParameters[] = {
    {.kind = ListParameterKind::Standard, .index = 34, .primary = true}};
constexpr ListParameter kSupplierTypeParameters[] = {
    {.kind = ListParameterKind::Standard, .index = 38, .primary = true}};
constexpr ListParameter kItemCategoryParameters[] = {
    {.kind = ListParameterKind::Standard, .index = 16, .primary = true}};
constexpr ListParameter kItemTypeParameters[] = {
    {.kind = ListParameterKind::Standard, .index = 20, .primary = true}};

// clang-format off
constexpr ListColumn kTermColumns[] = {
    {"Code", "PaymentTermId", kColumnText, "Code", "", 1200, false},
    {"Description", "Description", kColumnText, "Description", "", 3400, false},
    {"Due", "Due", kColumnText, "Due", "", 2600, false},
    {"Customers", "Customers", kColumnNumber, "Customers", "", 1100, false, "#,##0"},
    {"Suppliers", "Suppliers", kColumnNumber, "Suppliers", "", 1100, false, "#,##0"},
};
constexpr ListColumn kPenaltyColumns[] = {
    {"Code", "PenaltyInterestId", kColumnText, "Code", "", 1200, false},
    {"Description", "Description", kColumnText, "Description", "", 3400, false},
    {"Rate", "Rate", kColumnNumber, "Rate %", "", 900, false, "0.00"},
    {"GraceDays", "GraceDays", kColumnNumber, "Grace Days", "Grace", 1000, false, "#,##0"},
    {"Minimum", "MinimumCharge", kColumnMoney, "Minimum", "", 1200, false},
    {"Customers", "Customers", kColumnNumber, "Customers", "", 1100, false, "#,##0"},
};
constexpr ListColumn kSupplierCategoryColumns[] = {
    {"Code", "SupplierCategoryId", kColumnText, "Code", "", 1200, false},
    {"Description", "Description", kColumnText, "Description", "", 4000, false},
    {"Suppliers", "Suppliers", kColumnNumber, "Suppliers", "", 1100, false, "#,##0"},
};
constexpr ListColumn kSupplierTypeColumns[] = {
    {"Code", "SupplierTypeId", kColumnText, "Code", "", 1200, false},
    {"Description", "Description", kColumnText, "Description", "", 4000, false},
    {"Suppliers", "Suppliers", kColumnNumber, "Suppliers", "", 1100, false, "#,##0"},
};
constexpr ListColumn kItemCategoryColumns[] = {
    {"Code", "ItemCategoryId", kColumnText, "Code", "", 1200, false},
    {"Description", "Description", kColumnText, "Description", "", 4000, false},
    {"Items", "Items", kColumnNumber, "Items", "", 1100, false, "#,##0"},
};
constexpr ListColumn kItemTypeColumns[] = {
    {"Code", "ItemTypeId", kColumnText, "Code", "", 1200, false},
    {"Description", "Description", kColumnText, "Description", "", 4000, false},
    {"Items", "Items", kColumnNumber, "Items", "", 1100, false, "#,##0"},
};

constexpr ListKey kCodeKeys[] = {
    {.key = "PaymentTermList",
     .base_sql = "SELECT PaymentTermId,Description,Days,FollowingMonth,"
                 "(SELECT Count(*) FROM OtherParty WHERE OtherParty.IsCustomer=True AND "
                 "OtherParty.CustomerPayTermId=PaymentTerm.PaymentTermId) AS Customers,"
                 "(SELECT Count(*) FROM OtherParty WHERE OtherParty.IsSupplier=True AND "
                 "OtherParty.SupplierPayTermId=PaymentTerm.PaymentTermId) AS Suppliers "
                 "FROM PaymentTerm",
     .orders = kTermOrders, .parameters = kTermParameters, .columns = kTermColumns},
    {.key = "PenaltyInterestTypeList",
     .base_sql = "SELECT PenaltyInterestId,Description,Rate,GraceDays,MinimumCharge,"
                 "(SELECT Count(*) FROM OtherParty WHERE OtherParty.IsCustomer=True AND "
                 "OtherParty.PenaltyInterestId=PenaltyInterest.PenaltyInterestId) AS Customers "
                 "FROM PenaltyInterest",
     .orders = kPenaltyOrders, .parameters = kPenaltyParameters, .columns = kPenaltyColumns},
    {.key = "SupplierCategoryList",
     .base_sql = "SELECT SupplierCategoryId,Description,(SELECT Count(*) FROM OtherParty WHERE "
                 "OtherParty.IsSupplier=True AND OtherParty.SupplierCategoryId="
                 "SupplierCategory.SupplierCategoryId) AS Suppliers FROM SupplierCategory",
     .orders = kSupplierCategoryOrders, .parameters = kSupplierCategoryParameters,
     .columns = kSupplierCategoryColumns},
    {.key = "SupplierTypeList",
     .base_sql = "SELECT SupplierTypeId,Description,(SELECT Count(*) FROM OtherParty WHERE "
                 "OtherParty.IsSupplier=True AND OtherParty.SupplierTypeId="
                 "SupplierType.SupplierTypeId) AS Suppliers FROM SupplierType",
     .orders = kSupplierTypeOrders, .parameters = kSupplierTypeParameters,
     .columns = kSupplierTypeColumns},
    {.key = "ItemCategoryList",
     .base_sql = "SELECT ItemCategoryId,Description,(SELECT Count(*) FROM Item WHERE "
                 "Item.ItemCategoryId=ItemCategory.ItemCategoryId) AS Items FROM ItemCategory",
     .orders = kItemCategoryOrders, .parameters = kItemCategoryParameters,
     .columns = kItemCategoryColumns},
    {.key = "ItemTypeList",
     .base_sql = "SELECT ItemTypeId,Description,(SELECT Count(*) FROM Item WHERE "
                 "Item.ItemTypeId=ItemType.ItemTypeId) AS Items FROM ItemType",
     .orders = kItemTypeOrders, .parameters = kItemTypeParameters, .columns = kItemTypeColumns},
};
// clang-format on

std::string Ordinal(long n) {
  const long last_two = n % 100;
  const long last = n % 10;
  const char* suffix = (last_two >= 11 && last_two <= 13) ? "th"
                       : last == 1                        ? "st"
                       : last == 2                        ? "nd"
                       : last == 3                        ? "rd"
                                                          : "th";
  return std::to_string(n) + suffix;
}

}  // namespace

std::string PaymentTermDue(long days, bool following_month) {
  if (following_month) return Ordinal(days) + " of the month following";
  if (days == 0) return "On delivery";
  return std::to_string(days) + (days == 1 ? " day" : " days");
}

arCodeList::arCodeList(std::string designer_name)
    : ListDesigner(std::move(designer_name), kCodeKeys) {}

void arCodeList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  DataColumns& columns = TLReport()->DataColumns();
  for (const ListColumn& c : Key().columns) {
    if (c.kind == kColumnNumber || c.kind == kColumnMoney) columns.Item(c.name).Totalled = false;
  }
}

void arCodeList::ActiveReport_DataInitialize() {
  if (Key().key == "PaymentTermList") Fields().Add("Due");
}

void arCodeList::ActiveReport_FetchData(bool&) {
  if (Key().key != "PaymentTermList") return;
  const ReportField* days = Fields().Find("Days");
  const ReportField* following = Fields().Find("FollowingMonth");
  if (days == nullptr || following == nullptr) return;
  Fields().Item("Due").SetValue(
      Variant(PaymentTermDue(days->Value().ToLong(), following->Value().ToBool())));
}

DesignerPtr CreatearPaymentTermList() { return std::make_shared<arCodeList>("arPaymentTermList"); }
DesignerPtr CreatearPenaltyInterestList() {
  return std::make_shared<arCodeList>("arPenaltyInterestList");
}
DesignerPtr CreatearSupplierCategoryList() {
  return std::make_shared<arCodeList>("arSupplierCategoryList");
}
DesignerPtr CreatearSupplierTypeList() {
  return std::make_shared<arCodeList>("arSupplierTypeList");
}
DesignerPtr CreatearItemCategoryList() {
  return std::make_shared<arCodeList>("arItemCategoryList");
}
DesignerPtr CreatearItemTypeList() { return std::make_shared<arCodeList>("arItemTypeList"); }

}  // namespace trellin
