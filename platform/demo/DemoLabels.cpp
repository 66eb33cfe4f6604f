// What the mailing labels need beyond the parties' own addresses: an export customer overseas
// whose postal address runs to more lines, and wider, than any label holds, and a contact who
// works for no party on the books and so has no address. Fixed rows, no random draw, so nothing
// written before them moves.

#include "platform/demo/DemoContext.h"
#include "platform/demo/DemoTable.h"

namespace trellin::demo {

void WriteLabelAddresses(DemoContext& ctx) {
  // The customer takes its place, people and terms from the first export customer, so that it
  // reads like one; it has bought nothing yet.
  Execute(ctx.db,
          "INSERT INTO OtherParty (OtherPartyId,Name,Type,IsCustomer,IsSupplier,LocationId,"
          "EmployeeId,CustomerCategoryId,CustomerTypeId,CustomerPayTermId,Status,"
          "CustomerCreditLimit,CustomerActive,SupplierActive,CustomerStopCredit) SELECT "
          "'ZZVAVAU','Vava''u Yacht Charters and Marine Services Limited','Business',1,0,"
          "LocationId,EmployeeId,CustomerCategoryId,CustomerTypeId,CustomerPayTermId,2,"
          "CustomerCreditLimit,1,0,0 FROM OtherParty WHERE IsCustomer=1 AND "
          "CustomerCategoryId='EXPORT' ORDER BY rowid LIMIT 1",
          "overseas customer");
  DemoTable addresses(
      ctx.db, "OtherPartyAddress",
      {"OtherPartyId", "AddressId", "Address", "City", "State", "Postcode", "Country"});
  addresses.Insert({"ZZVAVAU", "Postal",
                    "Private Bag 3\r\nLevel 2, Fangatongo Commercial Building, Fatafehi Road "
                    "Waterfront\r\nNeiafu Harbour Moorings Office\r\nVava'u Islands Trading "
                    "Estate\r\nAttention: Accounts Payable\r\nOld Customs Wharf",
                    "Neiafu", Cell(Cell::Null{}), Cell(Cell::Null{}), "Tonga"});
  Execute(ctx.db,
          "INSERT INTO Contact (ContactId,LastName,FirstName,Position,Phone,Mobile,Email) SELECT "
          "Coalesce(Max(ContactId),0)+1,'Parata','Rangi','Marine Surveyor','09 555 0172',"
          "'021 555 0172','rangi.parata@example.com' FROM Contact",
          "contact with no party");
}

}  // namespace trellin::demo
