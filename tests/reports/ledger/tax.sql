-- The small company of the tax return tests: GST at 15%, a two-monthly period open from 1 March
-- 2025, sales on the payments basis and purchases on the invoice basis. Values are
-- ten-thousandths; sales (output, "O") are credits and stored negative.
--   period 1  Jan-Feb 2025, invoice basis, 15%: standard sales in both branches, a zero-rated
--             sale, a "*" line, an exempt "E" sale, output and input
--             adjustments "A" (one of them negative), a purchase, a "Z" purchase
--   period 2  Nov-Dec 2024, output "Exempt", input on the invoice basis
--   period 3  Sep-Oct 2024, rate 0
--   period 4  Jul-Aug 2024 at 12.5% (divisor 9): recorded tax 1.00 short of the income method's
--   period 5  May-Jun 2024 at 12.5%: 1.01 short
--   period 6  Mar-Apr 2024: only a "Z" sale with tax (a category is zero rated by its sum)
--   open      from 1 March 2025: a February sale banked on 10 March (counted), an April sale
--             banked on 5 May (not counted), a March sale not through the bank (counted by its
--             own date); purchases of 20 March, of noon on 30 April (the period's last day) and
--             of 2 May
INSERT INTO CompanySetting VALUES ('Company','Name','Tax Traders'),('Company','Country','NZ'),
  ('Company','TaxNumber','123-456-789'),('Formats','Date','d/mm/yyyy'),
  ('Periods','CurrentDateAR','2025-04-30'),('Periods','CurrentDateAP','2025-04-30'),
  ('Periods','CurrentDateGL','2025-04-30'),('Tax','Name','GST'),('Tax','Rate','15'),
  ('Tax','PeriodStart','2025-03-01'),('Tax','PeriodMonths','2'),
  ('Tax','BasisOutput','Payments'),('Tax','BasisInput','Invoice');
INSERT INTO FinancialYear VALUES (1,'2024/25','2024-04-01','2025-03-31'),
  (2,'2025/26','2025-04-01','2026-03-31');
INSERT INTO Branch (BranchId, Name) VALUES ('AKL','Auckland'),('WLG','Wellington');
INSERT INTO Account (AccountId, Description, Type) VALUES ('1000','Sales',1),
  ('2000','Purchases',3),('3010','Cheque account',6),('4020','GST',9);
INSERT INTO Bank (BankId, AccountName, AssetAccountId) VALUES ('CHQ','Cheque account','3010');
INSERT INTO TaxCategory (TaxCategoryId, Description, Rate) VALUES ('S','Standard',15),
  ('Z','Zero rated',0),('E','Exempt',0),('A','Adjustment',0),('*','Not reported',0);
INSERT INTO TaxPeriod VALUES (1,'2025-01-01','2025-02-28','Invoice','Invoice',15),
  (2,'2024-11-01','2024-12-31','Exempt','Invoice',15),
  (3,'2024-09-01','2024-10-31','Invoice','Invoice',0),
  (4,'2024-07-01','2024-08-31','Invoice','Invoice',12.5),
  (5,'2024-05-01','2024-06-30','Invoice','Invoice',12.5),
  (6,'2024-03-01','2024-04-30','Invoice','Invoice',15);
INSERT INTO glBankTransaction (glBankTransactionId, BankId, Date, Reference) VALUES
  (1,'CHQ','2025-03-10','DEP1'),(2,'CHQ','2025-05-05','DEP2');
INSERT INTO glTransaction (glTransactionId, AccountId, Date, Value, TaxValue, BranchId,
  glSourceId, Reference, TaxCategory, TaxIO, TaxPeriodId, CashTaxCategory, CashTaxValue,
  glBankTransactionId) VALUES
  (1,'1000','2025-01-10',-20000000,-3000000,'AKL',NULL,'INV1','S','O',1,'S',-3000000,NULL),
  (2,'1000','2025-02-10',-10000000,-1500000,'WLG',NULL,'INV2','S','O',1,'S',-1500000,NULL),
  (3,'1000','2025-01-15',-5000000,0,'AKL',NULL,'EXP1','Z','O',1,'Z',0,NULL),
  (4,'1000','2024-03-16',-1000000,-150000,'AKL',NULL,'ZTAX','Z','O',6,'Z',-150000,NULL),
  (5,'4020','2025-01-20',-9990000,-990000,'AKL',NULL,'GSTPAY','*','O',1,'*',-990000,NULL),
  (6,'1000','2025-02-01',0,-200000,'AKL',NULL,'ADJO','A','O',1,'A',-200000,NULL),
  (7,'1000','2025-02-02',-3000000,0,'AKL',NULL,'RENT','E','O',1,'E',0,NULL),
  (8,'2000','2025-01-12',8000000,1200000,'AKL',NULL,'BILL1','S','I',1,'S',1200000,NULL),
  (9,'2000','2025-02-12',0,100000,'WLG',NULL,'ADJI','A','I',1,'A',100000,NULL),
  (10,'2000','2025-02-13',2000000,0,'WLG',NULL,'BILLZ','Z','I',1,'Z',0,NULL),
  (11,'2000','2025-02-14',500000,0,'WLG',NULL,'STAR','*','I',1,'*',0,NULL),
  (12,'2000','2025-02-15',-100000,-5000,'AKL',NULL,'ADJN','A','I',1,'A',-5000,NULL),
  (13,'1000','2024-11-05',-10000000,-1500000,'AKL',NULL,'INV3','S','O',2,'S',-1500000,NULL),
  (14,'2000','2024-11-06',4000000,600000,'AKL',NULL,'BILL2','S','I',2,'S',600000,NULL),
  (15,'1000','2024-09-05',-10000000,0,'AKL',NULL,'INV4','S','O',3,'S',0,NULL),
  (16,'2000','2024-09-06',3000000,0,'AKL',NULL,'BILL3','S','I',3,'S',0,NULL),
  (17,'1000','2024-07-05',-8010000,-990000,'AKL',NULL,'INV5','S','O',4,'S',-990000,NULL),
  (18,'1000','2024-05-05',-8010100,-989900,'AKL',NULL,'INV6','S','O',5,'S',-989900,NULL),
  (19,'1000','2025-02-20',-4000000,-600000,'AKL',NULL,'INV7','S','O',NULL,'S',-600000,1),
  (20,'1000','2025-04-25',-2000000,-300000,'AKL',NULL,'INV8','S','O',NULL,'S',-300000,2),
  (21,'1000','2025-03-15',-1000000,-150000,'WLG',NULL,'INV9','S','O',NULL,'S',-150000,NULL),
  (22,'2000','2025-04-30 12:00:00',1000000,150000,'AKL',NULL,'NOON','S','I',NULL,'S',150000,NULL),
  (23,'2000','2025-03-20',2000000,300000,'WLG',NULL,'BILL4','S','I',NULL,'S',300000,NULL),
  (24,'2000','2025-05-02',10000000,1500000,'AKL',NULL,'BILL5','S','I',NULL,'S',1500000,NULL);
