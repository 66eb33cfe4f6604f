-- Hand-made jobs over the stock company (stock.sql loaded first), for the Job object. Money is
-- in ten-thousandths. WRK averages 95.00 a unit at MAIN; JLAB is labour, costing 40.00 an hour.
--   JA  invoiced: labour 3 h for 300.00 after 30.00 discount, one WRK for 200.00 (cost 95.00);
--       a credit of an hour (100.00); a supplier's bill of 150.00 and a supplier credit of
--       20.00; one WRK disbursed (95.00). Open: a job invoice of labour 2 h (160.00 after 20.00
--       discount) and two WRK (400.00, costing 190.00), and a supplier bill of 50.00.
--       Budget: charges 1,000.00, stock 300.00, purchases 200.00, other 100.00, disbursed 50.00.
--   JB  a supplier's bill of 100.00 and no charge; no budget.
--   JC  nothing at all.
INSERT INTO Item (ItemId, Description, ItemCategoryId, ItemTypeId, Inventory, Active, CostPrice)
  VALUES ('JLAB','Workshop labour','GEN','MISC',0,1,400000);
INSERT INTO Job (JobId, Description, Status) VALUES
  ('JA','Refit','Open'),('JB','Survey','Costing'),('JC','Quote','Open');
INSERT INTO Transactions (TransactionId, OtherPartyId, Type, Date, DateProcess, JobId) VALUES
  (9001,'CUST',30,'2025-06-20','2025-06-20','JA'),(9002,'CUST',31,'2025-06-21','2025-06-21','JA'),
  (9003,'SUPA',20,'2025-06-22','2025-06-22','JA'),(9004,'SUPA',21,'2025-06-23','2025-06-23','JA'),
  (9005,NULL,43,'2025-06-24','2025-06-24','JA'),(9006,'SUPA',20,'2025-06-24','2025-06-24','JB');
INSERT INTO TransactionLine (TransactionId, Type, DateProcess, ItemId, LocationId, Quantity,
  Value, Discount, ItemCost) VALUES
  (9001,30,'2025-06-20','JLAB','MAIN',-3,-3000000,-300000,0),
  (9001,30,'2025-06-20','WRK','MAIN',-1,-2000000,0,-950000),
  (9001,30,'2025-06-20',NULL,NULL,0,0,0,0),
  (9002,31,'2025-06-21','JLAB','MAIN',1,1000000,0,0),
  (9003,20,'2025-06-22','LAB','MAIN',1,1500000,0,0),
  (9004,21,'2025-06-23','LAB','MAIN',-1,-200000,0,0),
  (9005,43,'2025-06-24','WRK','MAIN',-1,0,0,-950000),
  (9006,20,'2025-06-24','LAB','MAIN',1,1000000,0,0);
INSERT INTO acBatchHeader VALUES (2,'Jobs',42,'2025-06-29','2025-06-30');
INSERT INTO acBatchTransaction (acBatchTransactionId, acBatchSId, Type, OtherPartyId, Reference,
  Date, DateProcess, JobId) VALUES
  (901,2,42,'CUST','JA1','2025-06-30','2025-06-30','JA'),
  (902,2,20,'SUPA','JA2','2025-06-30','2025-06-30','JA');
INSERT INTO acBatchTransactionLine (acBatchTransactionId, Type, DateProcess, ItemId, LocationId,
  Quantity, Value, Discount) VALUES
  (901,42,'2025-06-30','JLAB','MAIN',2,1600000,200000),
  (901,42,'2025-06-30','WRK','MAIN',2,4000000,0),
  (902,20,'2025-06-30','LAB','MAIN',1,500000,0);
INSERT INTO JobBudget VALUES ('JA',10000000,3000000,2000000,1000000,500000);
