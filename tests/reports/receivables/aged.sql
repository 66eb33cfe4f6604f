-- The small company of the ageing tests, at 15 March 2025. Under "EOM" the period ends are
-- 31 January, 28 February, 31 March and 30 April. Values are ten-thousandths.
--   AGED1    an invoice due in each column and one in Future (due 20 May); the first by JS, the
--            next three by AP, the last by nobody
--   NULLDUE  two invoices with no due date: one aged by its process date (Column2), one whose
--            process date and own date straddle 1 March, so it falls in no column
--   LATE     invoices dated 20 March and 25 April, after the as-at date
--   BACK     an invoice of February paid by a receipt processed on 20 March
--   ZERO     an invoice and its receipt, both before the as-at date: nothing open
--   CREDIT   a receipt on account of 1 March, with no due date
--   STOP     on stop credit; its second EmailAR method is the first with an address
--   SUPP1    a supplier's bill due 20 February with 100.00 of it held, and a payment on account
--   SUPP2    a supplier's bill due 20 April: nothing overdue
INSERT INTO CompanySetting VALUES ('Company','Name','Ageing Traders'),
  ('Formats','Date','d/mm/yyyy'),('Periods','CurrentDateAR','2025-03-15'),
  ('Periods','CurrentDateAP','2025-03-15'),('Periods','CurrentDateGL','2025-03-15'),
  ('Options','OverdueFromDefault','0');
INSERT INTO FinancialYear VALUES (1,'2024/25','2024-04-01','2025-03-31');
INSERT INTO Employee (EmployeeId, Name) VALUES ('AP','Anna Petrovic'),('JS','James Sutherland');
INSERT INTO TransactionType (TransactionTypeId, Description, Type) VALUES
  ('INV','Invoice',30),('REC','Receipt',35),('SINV','Supplier Invoice',20),('PAY','Payment',25);
INSERT INTO OtherParty (OtherPartyId, Name, XRefId, IsCustomer, IsSupplier, Status,
  CustomerStopCredit, CustomerCreditLimit) VALUES
  ('AGED1','Aged One','X1',1,0,2,0,5000000),('NULLDUE','Null Due','X2',1,0,2,0,0),
  ('LATE','Late Documents','X3',1,0,2,0,0),('BACK','Back Dated','X4',1,0,2,0,0),
  ('ZERO','Zero Balance','X5',1,0,2,0,0),('CREDIT','Credit Only','X6',1,0,2,0,0),
  ('STOP','Stopped','X7',1,0,2,1,10000000),('SUPP1','Supplier One','X8',0,1,2,0,0),
  ('SUPP2','Supplier Two','X9',0,1,2,0,0);
INSERT INTO OtherPartyContactMethod (OtherPartyId, Sequence, Kind, Detail) VALUES
  ('AGED1',1,'Email','aged1@example.com'),('STOP',1,'Phone','09 555 0100'),
  ('STOP',2,'EmailAR',''),('STOP',3,'Email','stop@example.com'),
  ('STOP',4,'EmailAR','accounts@example.com');
INSERT INTO Transactions (TransactionId, OtherPartyId, Type, TransactionTypeId, Reference, Date,
  DateProcess, DatePayment, Value, ValueRemaining, Held, EmployeeId) VALUES
  (1,'AGED1',30,'INV','A1','2024-12-10','2024-12-10','2025-01-20',-1000000,-1000000,0,'JS'),
  (2,'AGED1',30,'INV','A2','2025-01-10','2025-01-10','2025-02-20',-2000000,-2000000,0,'AP'),
  (3,'AGED1',30,'INV','A3','2025-02-10','2025-02-10','2025-03-20',-3000000,-3000000,0,'AP'),
  (4,'AGED1',30,'INV','A4','2025-03-10','2025-03-10','2025-04-20',-4000000,-4000000,0,'AP'),
  (5,'AGED1',30,'INV','A5','2025-03-12','2025-03-12','2025-05-20',-500000,-500000,0,NULL),
  (6,'NULLDUE',30,'INV','N1','2025-01-15','2025-02-10',NULL,-400000,-400000,0,NULL),
  (7,'NULLDUE',30,'INV','N2','2025-03-05','2025-02-15',NULL,-700000,-700000,0,NULL),
  (8,'LATE',30,'INV','L1','2025-03-20','2025-03-20','2025-04-20',-800000,-800000,0,NULL),
  (9,'LATE',30,'INV','L2','2025-04-25','2025-04-25','2025-05-20',-900000,-900000,0,NULL),
  (10,'BACK',30,'INV','B1','2025-02-01','2025-02-01','2025-02-20',-5000000,0,0,NULL),
  (11,'BACK',35,'REC','B2','2025-03-20','2025-03-20',NULL,5000000,0,0,NULL),
  (12,'ZERO',30,'INV','Z1','2025-01-10','2025-01-10','2025-02-20',-1000000,0,0,NULL),
  (13,'ZERO',35,'REC','Z2','2025-02-25','2025-02-25',NULL,1000000,0,0,NULL),
  (14,'CREDIT',35,'REC','C1','2025-03-01','2025-03-01',NULL,600000,600000,0,NULL),
  (15,'STOP',30,'INV','S1','2025-01-05','2025-01-05','2025-02-05',-2500000,-2500000,0,NULL),
  (16,'SUPP1',20,'SINV','P1','2025-01-05','2025-01-05','2025-02-20',3000000,3000000,1000000,NULL),
  (17,'SUPP1',25,'PAY','P2','2025-03-10','2025-03-10',NULL,-500000,-500000,0,NULL),
  (18,'SUPP2',20,'SINV','Q1','2025-03-05','2025-03-05','2025-04-20',1200000,1200000,0,NULL);
INSERT INTO TransactionAllocation (TransactionAllocationId, TransactionId1, TransactionId2,
  ValueAllocated) VALUES (1,11,10,5000000),(2,13,12,1000000);
