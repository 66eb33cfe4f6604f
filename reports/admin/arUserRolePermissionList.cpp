// The key of the role permission list, and the users of each role.

#include "reports/admin/arUserRolePermissionList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr ListOrder kPermissionOrder[] = {
    {"Role", "UserRolePermission.RoleId,UserRolePermission.Area,UserRolePermission.FunctionName"},
};

constexpr ListParameter kPermissionParameters[] = {
    {.kind = ListParameterKind::PickList,
     .name = "Roles",
     .caption = "Roles",
     .field = "UserRolePermission.RoleId",
     .primary = true,
     .list_sql = "SELECT RoleId,Description FROM UserRole ORDER BY RoleId",
     .key_field = "RoleId"},
    {.kind = ListParameterKind::PickList,
     .name = "Areas",
     .caption = "Areas",
     .field = "UserRolePermission.Area",
     .list_sql = "SELECT Area,'' FROM UserRolePermission GROUP BY Area ORDER BY Area",
     .key_field = "Area"},
    {.kind = ListParameterKind::Option,
     .name = "ShowUsers",
     .caption = "Show Users",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "ShowDenied",
     .caption = "Show Denied",
     .phrase = "Functions denied included",
     .off_condition = "(UserRolePermission.CanView=True OR UserRolePermission.CanAdd=True OR "
                      "UserRolePermission.CanEdit=True OR UserRolePermission.CanDelete=True OR "
                      "UserRolePermission.CanPrint=True)"},
    {.kind = ListParameterKind::Option,
     .name = "NewPagePerRole",
     .caption = "New Page per Role",
     .phrase = "A page per role"},
};

constexpr ListKey kPermissionKeys[] = {{
    .key = "UserRolePermissionList",
    .base_sql = "SELECT UserRolePermission.RoleId,UserRole.Description,UserRolePermission.Area,"
                "UserRolePermission.FunctionName,UserRolePermission.CanView,"
                "UserRolePermission.CanAdd,UserRolePermission.CanEdit,"
                "UserRolePermission.CanDelete,UserRolePermission.CanPrint FROM UserRolePermission "
                "INNER JOIN UserRole ON UserRolePermission.RoleId=UserRole.RoleId",
    .orders = kPermissionOrder,
    .parameters = kPermissionParameters,
}};

}  // namespace

arUserRolePermissionList::arUserRolePermissionList()
    : ListDesigner("arUserRolePermissionList", kPermissionKeys) {}

DesignerPtr CreatearUserRolePermissionList() {
  return std::make_shared<arUserRolePermissionList>();
}

// Users is a choice of the users there are, not a pick-list: a pick-list's codes would be tested
// on a field of the list's own rows, and a role's rows hold no user.
void arUserRolePermissionList::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  std::string users;
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(
      "SELECT UserId FROM UserAccount ORDER BY UserId");
  for (; !rs->Eof(); rs->MoveNext()) users += (users.empty() ? "" : ",") + rs->Value(0).Text();
  TLReport()->Parameters().AddMultiList("Users", Variant(), true, "", Variant(), users, false,
                                        false, "Users");
}

std::string arUserRolePermissionList::ExtraCondition() {
  user_condition_.clear();
  const std::string picked = TLReport()->Parameters().Value("Users", Variant()).Text();
  if (picked.empty()) return {};
  Database& database = *TrellinReportGlobals::RequireDatabase();
  std::string codes;
  for (const std::string& user : Split(picked, ",")) {
    codes += (codes.empty() ? "" : ",") + database.SQLString(Trim(user));
  }
  user_condition_ = "UserAccount.UserId In (" + codes + ")";
  return "UserRolePermission.RoleId In (SELECT UserAccount.RoleId FROM UserAccount WHERE " +
         user_condition_ + ")";
}

void arUserRolePermissionList::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  const trellin::Parameters& p = TLReport()->Parameters();
  if (const std::string picked = p.Value("Users", Variant()).Text(); !picked.empty()) {
    std::string description = Description();
    AppendNamedValueDescription(description, "Users", picked);
    Field("txtParameters").SetText(description);
  }
  users_ = std::make_shared<arUserRoleUsersSub>();
  users_->UserCondition = user_condition_;
  Control& users = Field("srptUsers");
  users.SetObject(users_);
  const bool show_users = p.Value("ShowUsers", true).ToBool();
  users.SetVisible(show_users);
  if (!show_users) Sections()["ghRole"].SetHeight(users.Top());
  if (p.Value("NewPagePerRole", false).ToBool()) {
    Sections()["ghRole"].SetNewPage(NewPageMode::Before);
  }
}

void arUserRolePermissionList::OnFormat(Section& section) {
  if (section.Name() == "ghRole") {
    if (const ReportField* role = Fields().Find("RoleId")) users_->RoleId = role->Value().Text();
    return;
  }
  ListDesigner::OnFormat(section);
}

void arUserRoleUsersSub::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

std::string arUserRoleUsersSub::SQL() const {
  Database& database = *TrellinReportGlobals::RequireDatabase();
  std::string sql =
      "SELECT UserAccount.UserId,UserAccount.Name,UserAccount.EmployeeId,UserAccount.Active,"
      "UserAccount.LastLogin FROM UserAccount WHERE UserAccount.RoleId=" +
      database.SQLString(RoleId);
  if (!UserCondition.empty()) sql += " AND " + UserCondition;
  return sql + " ORDER BY UserAccount.UserId";
}

// A role nobody holds says so under the headings.
void arUserRoleUsersSub::ActiveReport_ReportStart() {
  DataControl().SetSource(SQL());
  const auto& rs = DataControl().Recordset();
  const bool empty = !rs || rs->Eof();
  Field("lblNoUsers").SetVisible(empty);
  Sections()["Detail"].SetVisible(!empty);
}

}  // namespace trellin
