-- The asset reports' edges, on top of business/real_company.sql (years to 31 March 2025):
-- E1 with a type-23 depreciation and a movement of a type no column takes; E2 of a status outside
-- the five; E3 with no method, so no portions.
INSERT INTO Asset (AssetId, Description, Status, PurchaseDate, DepreciationBasis, DepreciationRate,
  DepreciationBasisTax, DepreciationRateTax) VALUES
  ('E1','Press',2,'2024-04-01',2,20,2,20), ('E2','Crane',9,'2024-04-01',1,10,1,10),
  ('E3','Bench',2,'2023-05-01',NULL,NULL,NULL,NULL);
INSERT INTO AssetTransaction (AssetId, Type, Date, Value, TaxValue) VALUES
  ('E1',10,'2024-04-01',10000000,10000000), ('E1',20,'2024-06-30',-500000,-500000),
  ('E1',23,'2024-12-31',-300000,-300000), ('E1',99,'2024-09-30',70000,70000),
  ('E2',10,'2024-04-01',5000000,5000000), ('E3',10,'2023-05-01',2000000,2000000);
