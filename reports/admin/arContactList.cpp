// The key of the contact list.

#include "reports/admin/arContactList.h"

#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr ListOrder kContactOrders[] = {
    {"Name", "Contact.LastName,Contact.FirstName,Contact.ContactId"},
    {"Party", "Contact.OtherPartyId,Contact.LastName,Contact.FirstName,Contact.ContactId"},
};

// Contacts are picked by their number; the parties on the contact's own party code.
constexpr ListParameter kContactParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "Contact.ContactId",
     .index = 7,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Contact.OtherPartyId", .index = 24},
};

constexpr ListGrouping kContactGroupings[] = {
    {"Other Party", "Contact.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty",
     "OtherPartyId"},
};

constexpr ListColumn kContactColumns[] = {
    {"Name", "ContactName", kColumnText, "Name", "", 2600, false},
    {"Position", "Position", kColumnText, "Position", "", 2200, false},
    {"Party", "OtherPartyId", kColumnCode, "Party", "", 1200, false},
    {"PartyName", "PartyName", kColumnText, "Party Name", "", 3000, false},
    {"Phone", "Phone", kColumnText, "Phone", "", 1500, false},
    {"Mobile", "Mobile", kColumnText, "Mobile", "", 1500, false},
    {"Email", "Email", kColumnText, "E-mail", "", 2600, false},
};

// A contact with no first name prints its last name alone.
constexpr ListKey kContactKeys[] = {{
    .key = "ContactList",
    .base_sql = "SELECT Contact.ContactId,Contact.LastName & IIf(Contact.FirstName Is Null,'',"
                "', ' & Contact.FirstName) AS ContactName,Contact.Position,Contact.OtherPartyId,"
                "OtherParty.Name AS PartyName,Contact.Phone,Contact.Mobile,Contact.Email FROM "
                "Contact LEFT JOIN OtherParty ON Contact.OtherPartyId=OtherParty.OtherPartyId",
    .orders = kContactOrders,
    .parameters = kContactParameters,
    .groupings = "Other Party",
    .own_groupings = kContactGroupings,
    .columns = kContactColumns,
}};

}  // namespace

arContactList::arContactList() : ListDesigner("arContactList", kContactKeys, "Contact List") {}

DesignerPtr CreatearContactList() { return std::make_shared<arContactList>(); }

}  // namespace trellin
