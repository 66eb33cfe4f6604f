-- The statements' small company: a few accounts of every kind, a group with nothing in it, a
-- total with nothing above it, a balance below one thousand, budgets with a month missing, a
-- year-end closing entry stamped after midnight, and from January 2025 one ledger line with no
-- other side.
INSERT INTO CompanySetting VALUES ('Company','Name','Fixture Traders'),('Tax','Name','GST'),
  ('Accounts','RetainedEarnings','4520'),('Periods','CurrentDateGL','2025-03-31'),
  ('Formats','Date','d/mm/yyyy');
INSERT INTO FinancialYear VALUES (1,'2023/24','2023-04-01','2024-03-31'),
  (2,'2024/25','2024-04-01','2025-03-31');
INSERT INTO Branch (BranchId, Name) VALUES ('N','North'),('S','South');
INSERT INTO Account (AccountId, Description, Post, Type, ALevel, DrCr) VALUES
  ('1000','INCOME','H',1,1,NULL),
  ('1005','Sales','G',1,2,NULL),
  ('1010','Sales A',NULL,1,3,'C'),
  ('1020','Sales B',NULL,1,3,'C'),
  ('1100','Idle Costs','G',3,2,NULL),
  ('1110','Idle Expense',NULL,3,3,'D'),
  ('1200','Expenses','G',3,2,NULL),
  ('1210','Rent',NULL,3,3,'D'),
  ('1290','NET RESULT','T',3,1,NULL),
  ('1295','Clear','C',3,1,NULL),
  ('1296','Nothing Above','T',3,2,NULL),
  ('3000','ASSETS','G',7,1,NULL),
  ('3010','Bank',NULL,7,2,'D'),
  ('3020','Petty Cash',NULL,7,2,'D'),
  ('4000','Liabilities','G',10,1,NULL),
  ('4010','Loan',NULL,10,2,'C'),
  ('4500','EQUITY','G',11,1,NULL),
  ('4520','Retained Earnings',NULL,11,2,'C');
INSERT INTO glTransaction (AccountId, Date, Value, BranchId) VALUES
  ('1010','2024-03-15',-2000000,'N'),('3010','2024-03-15',2000000,'N'),
  ('1010','2024-03-31 10:00:00',2000000,NULL),('4520','2024-03-31 10:00:00',-2000000,NULL),
  ('1010','2024-04-05',-10000000,'N'),('3010','2024-04-05',10000000,'N'),
  ('1010','2024-06-20',-4000000,'S'),('3010','2024-06-20',4000000,'S'),
  ('1210','2024-05-10',3000000,'N'),('3010','2024-05-10',-3000000,'N'),
  ('3010','2024-06-01',50000000,NULL),('4010','2024-06-01',-50000000,NULL),
  ('3020','2024-06-02',4000,NULL),('3010','2024-06-02',-4000,NULL),
  ('3010','2025-01-15',500000,NULL);
INSERT INTO glBudget (AccountId, Month, Budget, Revised) VALUES
  ('1010','2024-04-01',-9000000,-9500000),('1010','2024-06-01',-11000000,-10000000),
  ('1210','2024-05-01',2500000,2500000);
