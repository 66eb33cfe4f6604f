-- The small company of the control report tests, at 31 March 2025 (month start 1 March). Values
-- are ten-thousandths; a customer's documents are stored negative, a supplier's positive.
--   C1 (location MAIN)  1 an invoice of 10 February, 100.00 with tax, due 20 February, half paid
--                         by 3, a receipt of 15 March with no lines
--                       2 an invoice processed on the month's first day, 180.00 after a 20.00
--                         discount, due on the month's last day; 30.00 of it credited by 8
--                       9 an invoice of November, 60.00, due 20 November, open
--   C2 (location BR2)   4 an invoice processed on 5 April, after the date, due 20 May
--                       5 an invoice of 15 February, 400.00, due 20 March, paid in full by 6, a
--                         receipt processed on 10 April
--   (no party)          7 an invoice of 20 March, 70.00 with tax, due 20 April
--   S1                  10 a bill of 5 March, 500.00, due 20 April, 200.00 of it paid by 11
--   C2                  12 an invoice of October with no lines, paid by 13, a receipt by Visa
--   (open batch)        an invoice of 28 March, one line on hold and one of text alone
-- Invoice 2 also has a line of text alone. The control accounts hold what the sub-ledgers do to
-- 31 March (3100 730.00 debit, 4010 300.00 credit); 3100 has 300.00 more on 5 April.
INSERT INTO CompanySetting VALUES ('Company','Name','Control Traders'),
  ('Formats','Date','d/mm/yyyy'),('Periods','CurrentDateAR','2025-03-31'),
  ('Periods','CurrentDateAP','2025-03-31'),('Periods','CurrentDateGL','2025-03-31'),
  ('Accounts','ReceivablesControl','3100'),('Accounts','PayablesControl','4010'),
  ('Tax','Name','GST');
INSERT INTO FinancialYear VALUES (1,'2024/25','2024-04-01','2025-03-31'),
  (2,'2025/26','2025-04-01','2026-03-31');
INSERT INTO Branch (BranchId, Name) VALUES ('AKL','Auckland');
INSERT INTO Location (LocationId, Description, BranchId) VALUES ('MAIN','Warehouse','AKL'),
  ('BR2','Second store','AKL');
INSERT INTO Account (AccountId, Description, Post, Type) VALUES
  ('3100','Accounts Receivable','P',7),('4010','Accounts Payable','P',9),('1000','Sales','P',1);
INSERT INTO Item (ItemId, Description, Inventory, Active) VALUES ('GEAR','Gear',0,1);
INSERT INTO TransactionType (TransactionTypeId, Description, Type) VALUES
  ('INV','Invoice',30),('REC','Receipt',35),('CRN','Credit Note',31),
  ('SINV','Supplier Invoice',20),('PAY','Payment',25);
INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer, IsSupplier, LocationId) VALUES
  ('C1','Customer One',1,0,'MAIN'),('C2','Customer Two',1,0,'BR2'),
  ('S1','Supplier One',0,1,'MAIN');
INSERT INTO Transactions (TransactionId, OtherPartyId, Type, TransactionTypeId, Reference, Date,
  DateProcess, DatePayment, Value, ValueRemaining, Held) VALUES
  (1,'C1',30,'INV','I1','2025-02-10','2025-02-10','2025-02-20',-1000000,-500000,0),
  (2,'C1',30,'INV','I2','2025-03-01','2025-03-01','2025-03-31',-1800000,-1500000,0),
  (3,'C1',35,'REC','R3','2025-03-15','2025-03-15',NULL,500000,0,0),
  (4,'C2',30,'INV','I4','2025-04-05','2025-04-05','2025-05-20',-3000000,-3000000,0),
  (5,'C2',30,'INV','I5','2025-02-15','2025-02-15','2025-03-20',-4000000,0,0),
  (6,'C2',35,'REC','R6','2025-04-10','2025-04-10',NULL,4000000,0,0),
  (7,NULL,30,'INV','I7','2025-03-20','2025-03-20','2025-04-20',-700000,-700000,0),
  (8,'C1',31,'CRN','C8','2025-03-10','2025-03-10',NULL,300000,0,0),
  (9,'C1',30,'INV','I9','2024-11-10','2024-11-10','2024-11-20',-600000,-600000,0),
  (10,'S1',20,'SINV','B10','2025-03-05','2025-03-05','2025-04-20',5000000,3000000,0),
  (11,'S1',25,'PAY','P11','2025-03-25','2025-03-25',NULL,-2000000,0,0);
INSERT INTO TransactionLine (TransactionLineId, TransactionId, Type, DateProcess, ItemId,
  Description, Quantity, Discount, Value, TaxValue) VALUES
  (1,1,30,'2025-02-10','GEAR','Gear',-1,0,-869600,-130400),
  (2,2,30,'2025-03-01','GEAR','Gear',-2,-200000,-1800000,0),
  (3,4,30,'2025-04-05','GEAR','Gear',-3,0,-3000000,0),
  (4,5,30,'2025-02-15','GEAR','Gear',-4,0,-4000000,0),
  (5,7,30,'2025-03-20','GEAR','Gear',-1,0,-608700,-91300),
  (6,8,31,'2025-03-10','GEAR','Gear',1,0,300000,0),
  (7,9,30,'2024-11-10','GEAR','Gear',-1,0,-600000,0),
  (8,10,20,'2025-03-05','GEAR','Gear',5,0,5000000,0);
INSERT INTO TransactionAllocation (TransactionAllocationId, TransactionId1, TransactionId2,
  ValueAllocated) VALUES (1,3,1,500000),(2,8,2,300000),(3,6,5,4000000),(4,11,10,-2000000);
INSERT INTO glTransaction (glTransactionId, AccountId, Date, Value) VALUES
  (1,'3100','2025-02-28',5600000),(2,'3100','2025-03-31',1700000),(3,'3100','2025-04-05',3000000),
  (4,'4010','2025-03-31',-3000000);
-- For the transaction lists.
INSERT INTO Transactions (TransactionId, OtherPartyId, Type, TransactionTypeId, Reference, Date,
  DateProcess, DatePayment, Value, ValueRemaining, Held, PayType, Name, CardNumber, BankDetails)
  VALUES
  (12,'C2',30,'INV','I12','2024-10-05','2024-10-05','2024-11-20',-250000,0,0,NULL,NULL,NULL,NULL),
  (13,'C2',35,'REC','R13','2024-10-20','2024-10-20',NULL,250000,0,0,'V','C Two',
   'XXXX-XXXX-XXXX-1111',NULL);
INSERT INTO TransactionLine (TransactionLineId, TransactionId, Type, DateProcess, ItemId,
  Description, Quantity, Discount, Value, TaxValue) VALUES
  (9,2,30,'2025-03-01',NULL,'Delivered to the boat',0,0,0,0);
INSERT INTO TransactionAllocation (TransactionAllocationId, TransactionId1, TransactionId2,
  ValueAllocated) VALUES (5,13,12,250000);
INSERT INTO acBatchHeader (acBatchSId, acBatchHeaderId, Type, CreatedDate, LastDate) VALUES
  (1,'Open',30,'2025-03-28','2025-03-30');
INSERT INTO acBatchTransaction (acBatchTransactionId, acBatchSId, Type, TransactionTypeId,
  OtherPartyId, Reference, Date, DateProcess, DatePayment, Value) VALUES
  (1,1,30,'INV','C1','O1','2025-03-28','2025-03-28','2025-04-20',1150000);
INSERT INTO acBatchTransactionLine (acBatchTransactionId, Type, ItemId, Description, Hold,
  Quantity, OrderQuantity, UnitPrice, Value, TaxValue) VALUES
  (1,30,'GEAR','Gear',1,2,0,500000,1000000,150000),
  (1,30,NULL,'Fit next week',0,0,0,0,0,0);
