#pragma once
// "UserRolePermissionList": each role with its description and, with ShowUsers, the users who
// hold it; then, area by area, the functions with a tick for each right the role has (view, add,
// edit, delete, print). Functions a role may not use at all print only with ShowDenied. A fixed
// layout on the list base; the users are the sub-report arUserRoleUsersSub.

#include <memory>
#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class arUserRoleUsersSub;

class arUserRolePermissionList : public ListDesigner {
 public:
  arUserRolePermissionList();

  // Adds Users after the list's parameters.
  void RefreshParameters(std::string& ReportName) override;
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;

 protected:
  // Users narrows the roles to those the picked users hold, and the role's users to them.
  [[nodiscard]] std::string ExtraCondition() override;

 private:
  std::shared_ptr<arUserRoleUsersSub> users_;
  std::string user_condition_;  // the Users filter on UserAccount.UserId; "" none
};

// The users of one role, one line each: user, name, employee, active, last login.
class arUserRoleUsersSub : public Designer {
 public:
  arUserRoleUsersSub() : Designer("arUserRoleUsersSub") {}

  std::string RoleId;         // the role whose users print
  std::string UserCondition;  // a further condition on the users; "" none

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  [[nodiscard]] std::string SQL() const;
};

[[nodiscard]] DesignerPtr CreatearUserRolePermissionList();

}  // namespace trellin
