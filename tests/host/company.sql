-- Customers C1..C4 (types RETAIL, TRADE and none; category A or none) and a supplier S1; the
-- company "Harbour Test Co" of the product "Trellin Accounts".
INSERT INTO CompanySetting VALUES ('Company', 'Name', 'Harbour Test Co');
INSERT INTO CompanySetting VALUES ('Company', 'ProductName', 'Trellin Accounts');
INSERT INTO FinancialYear VALUES (1, '2024/25', '2024-04-01', '2025-03-31');
INSERT INTO CustomerType VALUES ('RETAIL', 'Retail customers');
INSERT INTO CustomerType VALUES ('TRADE', 'Trade accounts');
INSERT INTO CustomerCategory VALUES ('A', 'Category A');
INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer, CustomerTypeId, CustomerCategoryId,
                        CustomerCreditLimit, CustomerDiscRate)
  VALUES ('C1', 'Alpha Ltd', 1, 'RETAIL', 'A', 1000000, 12.345),
         ('C2', 'Beta Ltd', 1, 'RETAIL', NULL, 2505000, -3.3333),
         ('C3', 'Gamma Ltd', 1, 'TRADE', 'A', 10000000, NULL),
         ('C4', 'Delta Ltd', 1, NULL, 'A', 50000, 1.5);
INSERT INTO OtherParty (OtherPartyId, Name, IsSupplier) VALUES ('S1', 'Supplies Ltd', 1);
