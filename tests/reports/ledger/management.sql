-- The management report's small company, books from a year-opening line of 31 December 2024 to
-- June 2025 (money is ten-thousandths): nine sales accounts (so the sales pie has an "Other"),
-- one of every other kind, ratios on some, the control links, two branches and two departments
-- (the workshop department sells nothing), and lines with no branch or department.
INSERT INTO CompanySetting VALUES ('Company','Name','Management Traders'),('Tax','Name','GST'),
  ('Periods','CurrentDateGL','2025-06-30'),('Formats','Date','d/mm/yyyy');
INSERT INTO FinancialYear VALUES (1,'2024/25','2024-07-01','2025-06-30');
INSERT INTO Branch (BranchId, Name) VALUES ('N','North'),('S','South');
INSERT INTO Department (DeptId, Description) VALUES ('R','Retail'),('W','Workshop');
INSERT INTO Account (AccountId, Description, Post, Type, ALevel, DrCr, Ratio) VALUES
  ('4001','Sales One',NULL,1,1,'C',100),('4002','Sales Two',NULL,1,1,'C',50),
  ('4003','Sales Three',NULL,1,1,'C',NULL),('4004','Sales Four',NULL,1,1,'C',NULL),
  ('4005','Sales Five',NULL,1,1,'C',NULL),('4006','Sales Six',NULL,1,1,'C',NULL),
  ('4007','Sales Seven',NULL,1,1,'C',NULL),('4008','Sales Eight',NULL,1,1,'C',NULL),
  ('4009','Sales Nine',NULL,1,1,'C',NULL),
  ('5000','Purchases',NULL,2,1,'D',100),('6000','Rent',NULL,3,1,'D',100),
  ('6010','Wages',NULL,3,1,'D',NULL),('7000','Interest Received',NULL,4,1,'C',NULL),
  ('7100','Interest Paid',NULL,5,1,'D',NULL),('8000','Drawings',NULL,6,1,'D',NULL),
  ('1000','Bank',NULL,7,1,'D',100),('1100','Receivables',NULL,7,1,'D',100),
  ('1200','Stock',NULL,7,1,'D',NULL),('1500','Equipment',NULL,8,1,'D',NULL),
  ('2000','Payables',NULL,9,1,'C',100),('2100','GST',NULL,9,1,'C',NULL),
  ('2500','Loan',NULL,10,1,'C',NULL),('3000','Capital',NULL,11,1,'C',NULL);
INSERT INTO AccountLink (AccountLinkId, AccountId) VALUES ('AR','1100'),('SC','1200'),('AP','2000');
INSERT INTO glTransaction (AccountId, Date, Value, BranchId, DeptId, Type) VALUES
  ('1000','2024-12-31',500000000,NULL,NULL,1),('3000','2024-12-31',-500000000,NULL,NULL,1),
  ('1200','2025-01-03',80000000,'N','R',NULL),('2000','2025-01-03',-80000000,'N','R',NULL),
  ('1500','2025-01-10',120000000,NULL,NULL,NULL),('2500','2025-01-10',-120000000,NULL,NULL,NULL),
  ('1100','2025-01-20',110000000,'N','R',NULL),('4001','2025-01-20',-100000000,'N','R',NULL),
  ('2100','2025-01-20',-10000000,'N','R',NULL),
  ('5000','2025-01-20',40000000,'N','R',NULL),('1200','2025-01-20',-40000000,'N','R',NULL),
  ('1100','2025-02-14',66000000,'S','R',NULL),('4002','2025-02-14',-60000000,'S','R',NULL),
  ('2100','2025-02-14',-6000000,'S','R',NULL),
  ('1000','2025-02-28',110000000,'N','R',NULL),('1100','2025-02-28',-110000000,'N','R',NULL),
  ('6000','2025-03-01',20000000,'N','W',NULL),('2000','2025-03-01',-20000000,'N','W',NULL),
  ('6010','2025-03-15',15000000,'S','W',NULL),('1000','2025-03-15',-15000000,'S','W',NULL),
  ('1000','2025-04-02',90000000,'N',NULL,NULL),('4003','2025-04-02',-30000000,'N',NULL,NULL),
  ('4004','2025-04-02',-20000000,'N',NULL,NULL),('4005','2025-04-02',-15000000,'N',NULL,NULL),
  ('4006','2025-04-02',-10000000,'N',NULL,NULL),('4007','2025-04-02',-8000000,'N',NULL,NULL),
  ('4008','2025-04-02',-5000000,'N',NULL,NULL),('4009','2025-04-02',-2000000,'N',NULL,NULL),
  ('2000','2025-04-30',100000000,'N','R',NULL),('1000','2025-04-30',-100000000,'N','R',NULL),
  ('1000','2025-05-05',3000000,NULL,NULL,NULL),('7000','2025-05-05',-3000000,NULL,NULL,NULL),
  ('7100','2025-05-06',1000000,NULL,NULL,NULL),('1000','2025-05-06',-1000000,NULL,NULL,NULL),
  ('8000','2025-06-10',25000000,NULL,NULL,NULL),('1000','2025-06-10',-25000000,NULL,NULL,NULL),
  ('1100','2025-06-30',33000000,'S','R',NULL),('4001','2025-06-30',-30000000,'S','R',NULL),
  ('2100','2025-06-30',-3000000,'S','R',NULL);
