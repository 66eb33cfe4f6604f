-- Settings, two financial years, a few accounts and parties: enough to read the calendar and
-- options and to run list conditions and pick-lists against real SQL.
INSERT INTO CompanySetting VALUES ('Company','Name','Harbour Traders'), ('Tax','Rate','12.5'),
  ('Periods','CurrentDateAR','2025-03-31'), ('Formats','Date','dd/mm/yyyy'),
  ('UserDefinedFields','OtherParty.1.Name','Region');
INSERT INTO FinancialYear VALUES (1,'2023/24','2023-04-01','2024-03-31'),
  (2,'2024/25','2024-04-01','2025-03-31');
INSERT INTO Configuration VALUES (1);
INSERT INTO Account (AccountId, Description, ALevel) VALUES ('1-1000','Bank',1),
  ('1-1100','Cheque account',2), ('1-1999','Petty cash',2), ('2-1000','Creditors',1);
INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer, Status, UserDefined1) VALUES
  ('A100','Acme',1,1,'North'), ('a150','Apex',1,2,'South'), ('A199','Atlas',1,3,NULL),
  ('B7','Bay',1,4,'North'), ('X,Y','Comma Co',1,5,NULL), ('O''Neil','O''Neil Ltd',0,1,'South');
