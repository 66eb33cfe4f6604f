-- The small company of the customer and supplier ledger tests, at 31 March 2025.
-- Values are ten-thousandths: -1000000 is an invoice of 100.00.
--   ALPHA  an invoice of February paid by a receipt processed on 5 March; another open
--   BRAVO  paid 80.00 in advance in February; a March invoice of 30.00 leaves a credit
--   COAST  invoiced and paid in January: nothing in March, nothing owed
--   DELTA  squared in February; a March invoice overdue from 20 March
--   ECHO   a customer and a supplier: an invoice and a bill in March
--   FOX    a supplier's bill paid within March
--   GOLF   two invoices of one date, the later id written first
--   HOTEL  an invoice dated 28 February, processed on 3 March
--   INDIA  a customer with no transactions
INSERT INTO Configuration (ConfigurationId) VALUES (1);
INSERT INTO CompanySetting VALUES ('Company','Name','Fixture Traders'),
  ('Formats','Date','d/mm/yyyy'),('Periods','CurrentDateAR','2025-03-31'),
  ('Periods','CurrentDateAP','2025-03-31'),('Periods','CurrentDateGL','2025-03-31');
INSERT INTO FinancialYear VALUES (1,'2023/24','2023-04-01','2024-03-31'),
  (2,'2024/25','2024-04-01','2025-03-31');
INSERT INTO TransactionType (TransactionTypeId, Description, Type) VALUES
  ('INV','Invoice',30),('REC','Receipt',35),('SINV','Supplier Invoice',20),('PAY','Payment',25);
INSERT INTO OtherParty (OtherPartyId, Name, XRefId, IsCustomer, IsSupplier, Status) VALUES
  ('ALPHA','Alpha Marine','X3',1,0,2),('BRAVO','Bravo Boats','X1',1,0,2),
  ('COAST','Coastal Nil','X2',1,0,3),('DELTA','Delta Zero','X4',1,0,2),
  ('ECHO','Echo Both','X5',1,1,2),('FOX','Foxtrot Supply','X6',0,1,2),
  ('GOLF','Golf Gear','X7',1,0,2),('HOTEL','Hotel Harbour','X8',1,0,2),
  ('INDIA','India Idle','X9',1,0,2);
INSERT INTO Transactions (TransactionId, OtherPartyId, Type, TransactionTypeId, BatchId,
  Reference, Date, DateProcess, DatePayment, CreatedDate, Value, ValueRemaining) VALUES
  (1,'ALPHA',30,'INV','AR202502','A-INV1','2025-02-10','2025-02-10','2025-03-20','2025-02-10',-1000000,0),
  (2,'ALPHA',30,'INV','AR202503','A-INV2','2025-03-12','2025-03-12','2025-04-20','2025-03-12',-500000,-500000),
  (3,'ALPHA',35,'REC','AR202503','A-REC1','2025-03-05','2025-03-05',NULL,'2025-03-05',1000000,0),
  (4,'BRAVO',35,'REC','AR202502','B-REC1','2025-02-20','2025-02-20',NULL,'2025-02-20',800000,800000),
  (5,'BRAVO',30,'INV','AR202503','B-INV1','2025-03-10','2025-03-10','2025-04-20','2025-03-10',-300000,-300000),
  (6,'COAST',30,'INV','AR202501','C-INV1','2025-01-10','2025-01-10','2025-02-20','2025-01-10',-400000,0),
  (7,'COAST',35,'REC','AR202501','C-REC1','2025-01-20','2025-01-20',NULL,'2025-01-20',400000,0),
  (8,'DELTA',30,'INV','AR202502','D-INV1','2025-02-05','2025-02-05','2025-03-01','2025-02-05',-200000,0),
  (9,'DELTA',35,'REC','AR202502','D-REC1','2025-02-25','2025-02-25',NULL,'2025-02-25',200000,0),
  (10,'DELTA',30,'INV','AR202503','D-INV2','2025-03-15','2025-03-15','2025-03-20','2025-03-15',-600000,-600000),
  (11,'ECHO',30,'INV','AR202503','E-INV1','2025-03-03','2025-03-03','2025-04-20','2025-03-03',-700000,-700000),
  (12,'ECHO',20,'SINV','AP202503','E-BILL1','2025-03-04','2025-03-04','2025-04-20','2025-03-04',900000,900000),
  (13,'FOX',20,'SINV','AP202503','F-BILL1','2025-03-01','2025-03-01','2025-03-20','2025-03-01',2000000,0),
  (14,'FOX',25,'PAY','AP202503','F-PAY1','2025-03-20','2025-03-20',NULL,'2025-03-20',-2000000,0),
  (16,'GOLF',30,'INV','AR202503','G-A','2025-03-18','2025-03-18','2025-04-20','2025-03-19',-100000,-100000),
  (15,'GOLF',30,'INV','AR202503','G-B','2025-03-18','2025-03-18','2025-04-20','2025-03-18',-150000,-150000),
  (17,'HOTEL',30,'INV','AR202503','H-INV1','2025-02-28','2025-03-03','2025-04-20','2025-03-03',-450000,-450000);
INSERT INTO TransactionAllocation (TransactionAllocationId, TransactionId1, TransactionId2,
  ValueAllocated) VALUES (1,3,1,1000000),(2,7,6,400000),(3,9,8,200000),(4,14,13,-2000000);
