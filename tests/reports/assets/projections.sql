-- The asset projections' worked examples, on top of business/real_company.sql (years to 31 March
-- 2025). W1: DV 20% book, DV 25% tax on 10,000.00 bought 1 October 2024, its 2024/25 depreciation
-- posted (997.26 and 1,246.58). W2: SL 25% on both books on 8,000.00 bought 15 August 2024,
-- 1,254.79 posted: its books agree. W3: books that differ year by year but sum alike over its
-- life. W4: no movements at all. W5: DV 20% on both books, 10,000.00 bought 1 April 2024 and
-- an addition of 1,000.00 on 2 May 2025, so that a portion runs 1 May to 1 May; W6 the same with
-- the addition on 1 May.
INSERT INTO Asset (AssetId, Description, Status, PurchaseDate, DepreciationBasis, DepreciationRate,
  DepreciationBasisTax, DepreciationRateTax) VALUES
  ('W1','Workboat',2,'2024-10-01',2,20,2,25), ('W2','Forklift',2,'2024-08-15',1,25,1,25),
  ('W3','Crane',2,'2023-04-01',NULL,NULL,NULL,NULL), ('W4','Trailer',1,NULL,2,20,2,25),
  ('W5','Hoist',2,'2024-04-01',2,20,2,20), ('W6','Hoist',2,'2024-04-01',2,20,2,20);
INSERT INTO AssetTransaction (AssetId, Type, Date, Value, TaxValue) VALUES
  ('W1',10,'2024-10-01',100000000,100000000), ('W1',20,'2025-03-31',-9972600,-12465800),
  ('W2',10,'2024-08-15',80000000,80000000), ('W2',20,'2025-03-31',-12547900,-12547900),
  ('W3',10,'2023-04-01',50000000,50000000), ('W3',20,'2024-03-31',-1000000,-2000000),
  ('W3',20,'2025-03-31',-2000000,-1000000),
  ('W5',10,'2024-04-01',100000000,100000000), ('W5',11,'2025-05-02',10000000,10000000),
  ('W6',10,'2024-04-01',100000000,100000000), ('W6',11,'2025-05-01',10000000,10000000);
