-- On top of fixture.sql: bank entries of February 2025, petty cash, departments (one line under a
-- code the department list lacks), and the closing entry of March 2024 typed as a year-end line.
INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer) VALUES ('ALPHA','Alpha Marine',1);
INSERT INTO Department (DeptId, Description) VALUES ('D1','Retail');
INSERT INTO glBankTransaction (glBankTransactionId, Date, OtherPartyId, StmtPage) VALUES
  (1,'2025-02-10','ALPHA',3),(2,'2025-02-12',NULL,NULL),(3,'2025-02-14','ALPHA',NULL);
INSERT INTO glTransaction (AccountId, Date, Value, TaxValue, BranchId, DeptId, Comment,
  TaxCategory, glBankTransactionId, glBankTransactionSequence) VALUES
  ('3010','2025-02-10',11500000,0,'N','D1','Receipt',NULL,1,0),
  ('1010','2025-02-10',-10000000,-1500000,'N','D1','',NULL,1,1),
  ('3010','2025-02-12',-230000,0,'S',NULL,'Bank fee',NULL,2,0),
  ('1210','2025-02-12',230000,0,'S',NULL,'Bank fee','*',2,1),
  ('3010','2025-02-14',-5000000,0,NULL,'GONE',NULL,NULL,3,0),
  ('1010','2025-02-14',5000000,0,NULL,'D1','Refund',NULL,3,1),
  ('3020','2025-02-20',6000000,0,'N',NULL,'Float',NULL,NULL,NULL),
  ('3020','2025-02-21',6000000,0,'N',NULL,'Float',NULL,NULL,NULL),
  ('3020','2025-02-28 16:00:00',1000000,0,'N',NULL,'Late float',NULL,NULL,NULL);
UPDATE glTransaction SET Type=1 WHERE Date='2024-03-31 10:00:00';
