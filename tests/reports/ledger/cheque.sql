-- On top of fixture.sql and bank.sql: the cheques of 20 March 2025. A payment of exactly 25 bills
-- to a supplier whose cheque name is empty; one of 26 bills to a supplier with a cheque name of its
-- own and only a street address; a refund of 45 cents written against ledger lines, with its GST
-- on a line of category "*", to a supplier at a location of a branch the branch list lacks; and a
-- payment of two bills less a credit allocated to it from the credit's side, to a supplier whose
-- postal address is blank beside a delivery one.
INSERT INTO TransactionType (TransactionTypeId, Description, Type) VALUES
  ('SINV','Supplier Invoice',20),('SCRN','Supplier Credit',21),('PAY','Supplier Payment',25);
INSERT INTO Location (LocationId, Description, BranchId) VALUES
  ('NTH','North yard','N'),('GONE','Closed yard','X');
INSERT INTO OtherParty (OtherPartyId, Name, ChqName, IsSupplier, LocationId) VALUES
  ('TWENTY5','Twenty Five Ltd','',1,'NTH'),
  ('TWENTY6','Twenty Six Ltd','Twenty Six Trust Account',1,'NTH'),
  ('CENTS','Small Change',NULL,1,'GONE'),
  ('SIDES','Both Sides Ltd','Both Sides Ltd',1,'NTH');
INSERT INTO OtherPartyAddress VALUES
  ('TWENTY5','Postal','PO Box 25','Nelson',NULL,'7010','NZ'),
  ('TWENTY6','Street','26 Quay Street','Nelson',NULL,'7010','NZ'),
  ('SIDES','Postal','','',NULL,'',NULL),
  ('SIDES','Delivery','9 Wharf Road','Picton',NULL,'7220','NZ');
INSERT INTO glBankTransaction (glBankTransactionId, BankId, Date, OtherPartyId, Reference, Comment)
  VALUES (10,'CHQ','2025-03-20','TWENTY5','000125','Payment'),
  (11,'CHQ','2025-03-20','TWENTY6','000126','Payment'),
  (12,'CHQ','2025-03-20','CENTS','000127','Refund of overcharge'),
  (13,'CHQ','2025-03-20','SIDES','000128','Payment');
-- Bill i of the first supplier is i times 10.00, of the second i times 10.00 and 1 cent.
INSERT INTO Transactions (TransactionId, OtherPartyId, Type, TransactionTypeId, Reference, Date,
  DateProcess, Value)
  WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 26)
  SELECT 100 + i, 'TWENTY5', 20, 'SINV', 'A' || i, date('2025-02-01', '+' || i || ' days'),
    date('2025-02-01', '+' || i || ' days'), 100000 * i FROM n WHERE i <= 25
  UNION ALL
  SELECT 200 + i, 'TWENTY6', 20, 'SINV', 'B' || i, date('2025-02-01', '+' || i || ' days'),
    date('2025-02-01', '+' || i || ' days'), 100100 * i FROM n;
INSERT INTO Transactions (TransactionId, OtherPartyId, Type, TransactionTypeId, Reference, Date,
  DateProcess, Value, PayType, glBankTransactionId) VALUES
  (100,'TWENTY5',25,'PAY','000125','2025-03-20','2025-03-20',-32500000,'Q',10),
  (200,'TWENTY6',25,'PAY','000126','2025-03-20','2025-03-20',-35135100,'Q',11),
  (301,'SIDES',20,'SINV','C1','2025-03-01','2025-03-01',2000000,NULL,NULL),
  (302,'SIDES',20,'SINV','C2','2025-03-02','2025-03-02',1500000,NULL,NULL),
  (303,'SIDES',21,'SCRN','C3','2025-03-05','2025-03-05',-500000,NULL,NULL),
  (300,'SIDES',25,'PAY','000128','2025-03-20','2025-03-20',-3000000,'Q',13);
INSERT INTO TransactionAllocation (TransactionId1, TransactionId2, ValueAllocated)
  SELECT CASE OtherPartyId WHEN 'TWENTY5' THEN 100 ELSE 200 END, TransactionId, -Value
  FROM Transactions WHERE Type = 20 AND OtherPartyId IN ('TWENTY5','TWENTY6')
  ORDER BY TransactionId;
INSERT INTO TransactionAllocation (TransactionId1, TransactionId2, ValueAllocated) VALUES
  (300,301,-2000000),(300,302,-1500000),(303,300,500000);
INSERT INTO glTransaction (AccountId, Date, Value, TaxValue, Comment, TaxCategory,
  glBankTransactionId, glBankTransactionSequence) VALUES
  ('3010','2025-03-20',-32500000,0,'Payment','*',10,0),
  ('4010','2025-03-20',32500000,0,'Payment','E',10,1),
  ('3010','2025-03-20',-35135100,0,'Payment','*',11,0),
  ('4010','2025-03-20',35135100,0,'Payment','E',11,1),
  ('3010','2025-03-20',-4500,0,'Refund of overcharge','*',12,0),
  ('1210','2025-03-20',3900,600,'Refund of overcharge','S',12,1),
  ('4010','2025-03-20',600,0,'GST','*',12,2),
  ('3010','2025-03-20',-3000000,0,'Payment','*',13,0),
  ('4010','2025-03-20',3000000,0,'Payment','E',13,1);
