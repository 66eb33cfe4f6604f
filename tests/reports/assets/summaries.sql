-- The purchase and disposal summaries' edges, on top of business/real_company.sql (years to 31
-- March 2025). S1: a purchase and its return in October 2024, netting to nothing. S2: sold on
-- 1 October 2024, proceeds and loss on that day. S3: scrapped on 31 March 2025, a disposal of
-- nothing and the loss. S4: bought in 2020, outside every period but "ALL".
INSERT INTO Asset (AssetId, Description, Status, PurchaseDate, DisposalDate, DepreciationBasis,
  DepreciationRate, DepreciationBasisTax, DepreciationRateTax) VALUES
  ('S1','Winch',2,'2024-10-05',NULL,2,20,2,20), ('S2','Forklift',4,'2022-05-01','2024-10-01',2,20,2,25),
  ('S3','Drill',5,'2023-06-01','2025-03-31',2,20,2,20), ('S4','Trailer',2,'2020-06-01',NULL,2,20,2,20);
INSERT INTO AssetTransaction (AssetId, Type, Date, Value, TaxValue, Reference, Comment) VALUES
  ('S1',10,'2024-10-05',15000000,15000000,'INV1','Purchase'),
  ('S1',11,'2024-10-20',-15000000,-15000000,'CRN1','Returned'),
  ('S2',10,'2022-05-01',20000000,20000000,'INV2','Purchase'),
  ('S2',20,'2023-03-31',-4000000,-5000000,'DEP2023','Depreciation'),
  ('S2',40,'2024-10-01',-12000000,-12000000,'DSPS2','Sale'),
  ('S2',30,'2024-10-01',-4000000,-3000000,'DSPS2','Loss on sale'),
  ('S3',10,'2023-06-01',3000000,3000000,'INV3','Purchase'),
  ('S3',40,'2025-03-31',0,0,'DSPS3','Scrapped'),
  ('S3',30,'2025-03-31',-3000000,-3000000,'DSPS3','Loss on scrapping'),
  ('S4',10,'2020-06-01',5000000,5000000,'INV4','Purchase');
