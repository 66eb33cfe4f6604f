-- The parties of the exception report tests, at 31 March 2025: two that are in order and one
-- made to break each check, and nothing else. Values are ten-thousandths; a customer's documents
-- are stored negative, a supplier's positive.
--   CLEAN     a customer owing 100.00 under its 5,000.00 limit; no type (a blank code is no fault)
--   SCLEAN    a supplier owed 200.00
--   CODECAT   (Codes) a customer whose category RETIRED is not on file
--   CODEEMP   (Codes) a supplier whose employee GONE is not on file
--   OVERLIM   (CreditLimit) owes 1,500.00 against a limit of 1,000.00, by an invoice processed
--             on 20 March
--   STOPPED   (Stopped) a customer whose credit is stopped
--   INCREDIT  (CreditBalance) a customer who paid 250.00 on account and owes nothing
--   SDEBIT    (CreditBalance) a supplier paid 50.00 on account
--   INACTIVE  (InactiveBalance) an inactive customer still owing 80.00
--   NOADDR    (NoAddress) a delivery address only
--   NOCONT    (NoContact) no contact method and no contact person
--   BADSTAT   (Status) credit status Bad (4)
--   ADVERSE   (Status) credit status Adverse (5)
--   PERSON    no contact method, but a contact person: in order
INSERT INTO CompanySetting VALUES ('Company','Name','Exception Traders'),
  ('Formats','Date','d/mm/yyyy'),('Periods','CurrentDateAR','2025-03-31'),
  ('Periods','CurrentDateAP','2025-03-31'),('Periods','CurrentDateGL','2025-03-31');
INSERT INTO FinancialYear VALUES (1,'2024/25','2024-04-01','2025-03-31');
INSERT INTO Branch (BranchId, Name) VALUES ('AKL','Auckland');
INSERT INTO Location (LocationId, Description, BranchId) VALUES ('MAIN','Warehouse','AKL'),
  ('SHOP','Shop','AKL');
INSERT INTO Employee (EmployeeId, Name) VALUES ('E1','Erin One'),('E2','Evan Two');
INSERT INTO CustomerCategory VALUES ('TRADE','Trade');
INSERT INTO CustomerType VALUES ('COMP','Company');
INSERT INTO SupplierCategory VALUES ('STOCK','Stock');
INSERT INTO SupplierType VALUES ('LOCAL','Local');
INSERT INTO PaymentTerm (PaymentTermId, Description, Days) VALUES ('30D','30 days',30);
INSERT INTO TransactionType (TransactionTypeId, Description, Type) VALUES
  ('INV','Invoice',30),('REC','Receipt',35),('SINV','Supplier Invoice',20),('PAY','Payment',25);
INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer, IsSupplier, LocationId, EmployeeId,
  CustomerCategoryId, CustomerTypeId, CustomerPayTermId, SupplierCategoryId, SupplierTypeId,
  SupplierPayTermId, Status, CustomerCreditLimit, CustomerActive, SupplierActive,
  CustomerStopCredit) VALUES
  ('CLEAN','Clean Customer',1,0,'MAIN','E1','TRADE',NULL,'30D',NULL,NULL,NULL,2,50000000,1,1,0),
  ('SCLEAN','Clean Supplier',0,1,'MAIN','E1',NULL,NULL,NULL,'STOCK','LOCAL','30D',2,0,1,1,0),
  ('CODECAT','Category Gone',1,0,'MAIN','E1','RETIRED','COMP','30D',NULL,NULL,NULL,2,0,1,1,0),
  ('CODEEMP','Employee Gone',0,1,'SHOP','GONE',NULL,NULL,NULL,'STOCK','LOCAL','30D',2,0,1,1,0),
  ('OVERLIM','Over Limit',1,0,'MAIN','E2','TRADE','COMP','30D',NULL,NULL,NULL,2,10000000,1,1,0),
  ('STOPPED','Stopped Credit',1,0,'SHOP','E2','TRADE','COMP','30D',NULL,NULL,NULL,2,0,1,1,1),
  ('INCREDIT','In Credit',1,0,'MAIN','E1','TRADE','COMP','30D',NULL,NULL,NULL,2,0,1,1,0),
  ('SDEBIT','In Debit',0,1,'MAIN','E2',NULL,NULL,NULL,'STOCK','LOCAL','30D',2,0,1,1,0),
  ('INACTIVE','Inactive Owing',1,0,'SHOP','E1','TRADE','COMP','30D',NULL,NULL,NULL,2,0,0,1,0),
  ('NOADDR','No Address',1,0,'MAIN','E2','TRADE','COMP','30D',NULL,NULL,NULL,2,0,1,1,0),
  ('NOCONT','No Contact',1,0,'MAIN','E1','TRADE','COMP','30D',NULL,NULL,NULL,2,0,1,1,0),
  ('BADSTAT','Bad Status',1,0,'SHOP','E2','TRADE','COMP','30D',NULL,NULL,NULL,4,0,1,1,0),
  ('ADVERSE','Adverse Status',1,0,'SHOP','E1','TRADE','COMP','30D',NULL,NULL,NULL,5,0,1,1,0),
  ('PERSON','Person Only',1,0,'MAIN','E1','TRADE','COMP','30D',NULL,NULL,NULL,2,0,1,1,0);
INSERT INTO OtherPartyAddress (OtherPartyId, AddressId, Address, City) VALUES
  ('CLEAN','Postal','PO Box 1','Auckland'),('SCLEAN','Postal','PO Box 2','Auckland'),
  ('CODECAT','Postal','PO Box 3','Auckland'),('CODEEMP','Postal','PO Box 4','Auckland'),
  ('OVERLIM','Postal','PO Box 5','Auckland'),('STOPPED','Postal','PO Box 6','Auckland'),
  ('INCREDIT','Postal','PO Box 7','Auckland'),('SDEBIT','Postal','PO Box 8','Auckland'),
  ('INACTIVE','Postal','PO Box 9','Auckland'),('NOADDR','Delivery','10 Quay Street','Auckland'),
  ('NOCONT','Postal','PO Box 11','Auckland'),('BADSTAT','Postal','PO Box 12','Auckland'),
  ('ADVERSE','Postal','PO Box 13','Auckland'),('PERSON','Postal','PO Box 14','Auckland');
INSERT INTO OtherPartyContactMethod (OtherPartyId, Sequence, Kind, Detail) VALUES
  ('CLEAN',1,'Phone','09 555 0001'),('SCLEAN',1,'Phone','09 555 0002'),
  ('CODECAT',1,'Phone','09 555 0003'),('CODEEMP',1,'Email','gone@example.com'),
  ('OVERLIM',1,'Phone','09 555 0005'),('STOPPED',1,'Phone','09 555 0006'),
  ('INCREDIT',1,'Phone','09 555 0007'),('SDEBIT',1,'Phone','09 555 0008'),
  ('INACTIVE',1,'Phone','09 555 0009'),('NOADDR',1,'Phone','09 555 0010'),
  ('NOCONT',1,'Phone',' '),('BADSTAT',1,'Phone','09 555 0012'),
  ('ADVERSE',1,'Phone','09 555 0013');
INSERT INTO Contact (ContactId, LastName, FirstName, OtherPartyId) VALUES
  (1,'Only','Pat','PERSON');
INSERT INTO Transactions (TransactionId, OtherPartyId, Type, TransactionTypeId, Reference,
  Date, DateProcess, Value, ValueRemaining) VALUES
  (1,'CLEAN',30,'INV','I1','2025-03-01','2025-03-01',-1000000,-1000000),
  (2,'SCLEAN',20,'SINV','S2','2025-03-01','2025-03-01',2000000,2000000),
  (3,'OVERLIM',30,'INV','I3','2025-03-20','2025-03-20',-15000000,-15000000),
  (4,'INCREDIT',35,'REC','R4','2025-03-05','2025-03-05',2500000,2500000),
  (5,'INACTIVE',30,'INV','I5','2025-03-02','2025-03-02',-800000,-800000),
  (6,'SDEBIT',25,'PAY','P6','2025-03-06','2025-03-06',-500000,-500000);
