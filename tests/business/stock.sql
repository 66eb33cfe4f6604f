-- A small stock company at 30 June 2025, for the stock levels and the stock reports' edge cases.
-- Money is in ten-thousandths: 100100 is 10.01. Tax: S 15%, Z 0%.
--   INC   cost and sell 10.01 with tax in, 3 on hand           (@ C.Cost 26.10, @ C.Sell 26.11)
--   WRK   cost 115.00, sell 230.00 with tax in, 4 costing 380  (95.00, 400.00, 800.00, 52.50)
--   UNK   cost 115.00 under "OLD", a code the list lacks: the cost keeps its tax
--   NONE  a stock item with no lines
--   NEG   2 more sold than bought: quantity -2, value -50.00
--   ZERO  none left, 5.00 of value left; alone in category ZC
--   UND   5 on a line with no process date, 1 more on 1 June 2025
--   LOC   4 at MAIN and 6 at SHOP
--   SER   serial numbers A1 (100.00) and A2 (120.00)
--   LAB   labour: no stock kept
--   DOC   the open documents of the stock level object (see the tests for the hand count)
--   R6 R5 RBIG RLATE RNET RALLOC R00 RNOSUP  reorder at MAIN, minimum 5, maximum 20
--   MOVE  5 costing 50.00 before June 2025; in June +10 at 100.00 (20), -4 at 40.00 (30),
--         +1 at 10.00 (30, a return), 5.00 (18), -1 at 10.00 (19), +2 at 20.00 (29), +1 at
--         10.00 (13): opening 50.00, in 125.00, out 30.00, adjusted 0.00, closing 145.00
--   VAR10 8 on hand at MAIN costing 80.00, counted 10
--   VAR5  bought 2 at 12.50 and sold them: nothing on hand at MAIN, counted 5
--   TAXC  never bought, cost 11.50 with tax in (10.00 without)
INSERT INTO CompanySetting VALUES ('Company','Name','Harbour Stock Ltd'),
  ('Formats','Date','d/mm/yyyy'),('Formats','Currency','#,##0.00;(#,##0.00)'),
  ('Periods','CurrentDateAR','2025-06-30'),
  ('Periods','CurrentDateAP','2025-06-30'),('Periods','CurrentDateGL','2025-06-30');
INSERT INTO FinancialYear VALUES (1,'2024/25','2024-07-01','2025-06-30');
INSERT INTO TaxCategory VALUES ('S','Standard rated',15,0),('Z','Zero rated',0,0);
INSERT INTO Location VALUES ('MAIN','Main warehouse',NULL),('SHOP','Shop floor',NULL);
INSERT INTO ItemCategory VALUES ('GEN','General'),('ZC','Zeroed'),('RE','Reordered');
INSERT INTO ItemType VALUES ('STOCK','Stock'),('SERIAL','Serial numbered'),('MISC','Misc');
INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer, IsSupplier) VALUES
  ('SUPA','Supplier A',0,1),('CUST','Customer C',1,0);
INSERT INTO Item (ItemId, Description, PLU, ItemCategoryId, ItemTypeId, SupplierId, Inventory,
  Active, CostPrice, CostTaxType, SellPrice1, SellTaxType1) VALUES
  ('INC','Inclusive ten','P01','GEN','STOCK','SUPA',1,1,100100,'S',100100,'S'),
  ('WRK','Worked example','P02','GEN','STOCK','SUPA',1,1,1150000,'S',2300000,'S'),
  ('UNK','Unknown tax','P03','GEN','STOCK','SUPA',1,1,1150000,'OLD',2300000,'S'),
  ('NONE','No lines','P04','GEN','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('NEG','Oversold','P05','GEN','STOCK','SUPA',1,1,200000,NULL,400000,NULL),
  ('ZERO','All gone','P06','ZC','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('UND','Undated opening','P07','GEN','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('LOC','Two places','P08','GEN','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('SER','Serial','P09','GEN','SERIAL','SUPA',2,1,1000000,NULL,2000000,NULL),
  ('LAB','Labour','P10','GEN','MISC','SUPA',0,1,0,NULL,800000,NULL),
  ('DOC','Documents','P11','GEN','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('R6','Six available','R01','RE','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('R5','Five available','R02','RE','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('RBIG','Much on order','R03','RE','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('RLATE','Ordered later','R04','RE','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('RNET','Order netted','R05','RE','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('RALLOC','Some allocated','R06','RE','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('R00','No levels','R07','RE','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('RNOSUP','No supplier','R08','RE','STOCK',NULL,1,1,100000,NULL,200000,NULL),
  ('MOVE','Moved about','M01','GEN','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('VAR10','Counted over','V01','GEN','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('VAR5','Counted from none','V02','GEN','STOCK','SUPA',1,1,100000,NULL,200000,NULL),
  ('TAXC','Never bought','V03','GEN','STOCK','SUPA',1,1,115000,'S',200000,NULL);
INSERT INTO ItemLocation (ItemId, LocationId, Shelf, MinReorder, MaxReorder, InUse) VALUES
  ('INC','MAIN','A1',0,0,1),('LOC','MAIN','A2',0,0,1),('LOC','SHOP','S1',0,0,1),
  ('R6','MAIN','B1',5,20,1),('R5','MAIN','B2',5,20,1),('RBIG','MAIN','B3',5,20,1),
  ('RLATE','MAIN','B4',5,20,1),('RNET','MAIN','B5',5,20,1),('RALLOC','MAIN','B6',5,20,1),
  ('R00','MAIN','B7',0,0,1),('RNOSUP','MAIN','B8',5,20,1),
  ('MOVE','MAIN','C1',0,0,1),('VAR10','MAIN','C2',0,0,1),('VAR5','MAIN','C3',0,0,1);
INSERT INTO TransactionLine (Type, DateProcess, ItemId, LocationId, SerialNumber, Quantity,
  ItemCost) VALUES
  (20,'2025-05-01','INC','MAIN',NULL,3,270000),
  (20,'2025-05-01','WRK','MAIN',NULL,4,3800000),
  (20,'2025-05-01','UNK','MAIN',NULL,2,2000000),
  (20,'2025-05-01','NEG','MAIN',NULL,1,250000),
  (30,'2025-05-10','NEG','MAIN',NULL,-3,-750000),
  (20,'2025-05-01','ZERO','MAIN',NULL,2,200000),
  (30,'2025-05-10','ZERO','MAIN',NULL,-2,-150000),
  (11,NULL,'UND','MAIN',NULL,5,500000),
  (20,'2025-06-01','UND','MAIN',NULL,1,100000),
  (20,'2025-05-01','LOC','MAIN',NULL,4,400000),
  (20,'2025-05-01','LOC','SHOP',NULL,6,600000),
  (20,'2025-05-01','SER','MAIN','A1',1,1000000),
  (20,'2025-05-01','SER','MAIN','A2',1,1200000),
  (30,'2025-05-01','LAB',NULL,NULL,-3,0),
  (20,'2025-05-01','DOC','MAIN',NULL,10,1000000),
  (20,'2025-05-01','DOC','SHOP',NULL,2,200000),
  (20,'2025-05-01','R6','MAIN',NULL,6,600000),
  (20,'2025-05-01','R5','MAIN',NULL,5,500000),
  (20,'2025-05-01','RBIG','MAIN',NULL,5,500000),
  (20,'2025-05-01','RLATE','MAIN',NULL,5,500000),
  (20,'2025-05-01','RNET','MAIN',NULL,5,500000),
  (20,'2025-05-01','RALLOC','MAIN',NULL,8,800000);
INSERT INTO PurchaseOrder (PurchaseOrderId, OtherPartyId, Date, Reference, LocationId) VALUES
  (1,'SUPA','2025-06-10','PO1','MAIN'),(2,'SUPA','2025-06-12','PO2','MAIN'),
  (3,'SUPA','2025-07-05','PO3','MAIN'),(4,'SUPA','2025-06-15','PO4','MAIN'),
  (5,'SUPA','2025-06-20','PO5','MAIN');
INSERT INTO PurchaseOrderLine (PurchaseOrderLineId, PurchaseOrderId, ItemId, Description,
  LocationId, DeptId, Quantity, UnitPrice, Value, TaxValue, EstimatedDate, TransactionLineId) VALUES
  (1,1,'R5','Five available','MAIN',NULL,3,100000,300000,45000,'2025-06-24',NULL),
  (2,2,'RBIG','Much on order','MAIN',NULL,16,100000,1600000,240000,NULL,NULL),
  (3,3,'RLATE','Ordered later','MAIN',NULL,7,100000,700000,105000,'2025-07-20',NULL),
  (4,4,'RNET','Order netted','MAIN',NULL,4,100000,400000,60000,'2025-06-25',NULL),
  (5,4,'RNET','Order netted','MAIN',NULL,-4,100000,-400000,-60000,'2025-06-25',20),
  (6,5,'DOC','Documents','MAIN',NULL,5,100000,500000,75000,'2025-07-01',NULL),
  (7,5,'DOC','Documents','MAIN',NULL,3,100000,300000,45000,'2025-07-01',NULL),
  (8,5,'DOC','Documents','MAIN',NULL,-3,100000,-300000,-45000,'2025-07-01',15);
INSERT INTO acBatchHeader VALUES (1,'Open',30,'2025-06-25','2025-06-30');
INSERT INTO acBatchTransaction (acBatchTransactionId, acBatchSId, Type, OtherPartyId, Reference,
  Date, DateProcess) VALUES
  (1,1,30,'CUST','B1','2025-06-28','2025-06-28'),(2,1,31,'CUST','B2','2025-06-28','2025-06-28'),
  (3,1,20,'SUPA','B3','2025-06-28','2025-06-28'),(4,1,21,'SUPA','B4','2025-06-28','2025-06-28'),
  (5,1,90,'CUST','SO5','2025-06-28','2025-06-28'),(6,1,42,'CUST','J6','2025-06-28','2025-06-28'),
  (7,1,90,'CUST','SO7','2025-06-28','2025-06-28');
INSERT INTO acBatchTransactionLine (acBatchTransactionId, Type, ItemId, LocationId, Hold,
  Description, OrderQuantity, Quantity, UnitPrice, Value, TaxValue) VALUES
  (1,30,'DOC','MAIN',0,'Documents',0,2,200000,400000,60000),
  (2,31,'DOC','MAIN',0,'Documents',0,1,200000,200000,30000),
  (3,20,'DOC','MAIN',0,'Documents',0,4,100000,400000,60000),
  (4,21,'DOC','MAIN',0,'Documents',0,1,100000,100000,15000),
  (5,90,'DOC','MAIN',0,'Documents',5,3,200000,600000,90000),
  (5,90,'DOC','MAIN',1,'Documents',2,1,200000,200000,30000),
  (6,42,'DOC','SHOP',0,'Documents',4,2,200000,400000,60000),
  (6,42,'DOC','SHOP',1,'Documents',1,1,200000,200000,30000),
  (7,90,'RALLOC','MAIN',0,'Some allocated',4,3,200000,600000,90000);
INSERT INTO TransactionLine (Type, DateProcess, ItemId, LocationId, SerialNumber, Quantity,
  ItemCost) VALUES
  (20,'2025-05-01','MOVE','MAIN',NULL,5,500000),
  (20,'2025-06-02','MOVE','MAIN',NULL,10,1000000),
  (30,'2025-06-05','MOVE','MAIN',NULL,-4,-400000),
  (30,'2025-06-06','MOVE','MAIN',NULL,1,100000),
  (18,'2025-06-07','MOVE','MAIN',NULL,0,50000),
  (19,'2025-06-08','MOVE','MAIN',NULL,-1,-100000),
  (29,'2025-06-09','MOVE','MAIN',NULL,2,200000),
  (13,'2025-06-10','MOVE','MAIN',NULL,1,100000),
  (20,'2025-05-01','VAR10','MAIN',NULL,8,800000),
  (20,'2025-04-01','VAR5','MAIN',NULL,2,250000),
  (30,'2025-05-01','VAR5','MAIN',NULL,-2,-250000);
INSERT INTO ItemStocktake (ItemId, LocationId, SerialNumber, Quantity) VALUES
  ('VAR10','MAIN',NULL,10),('VAR5','MAIN',NULL,5);
