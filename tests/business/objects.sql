-- The business objects' fixture: two branches (one without a fax, one with its address on
-- messy lines), two banks, tax categories, a location in each branch, payment terms, three
-- parties (one with no address and no contact method), employees and an asset category.
INSERT INTO Branch (BranchId, Name, Description, Address, Phone, Fax, Email, Website,
                    TaxFileNumber, TaxNumber) VALUES
  ('AKL', 'Auckland', 'Head office', '12 Wharf Road' || char(13) || char(10) || 'Auckland',
   '0800 884 627', NULL, 'accounts@tuibay.example', 'www.tuibay.example', '12-345-678', NULL),
  ('tga', 'Tauranga', NULL, '  3 Dive Crescent  ' || char(10) || char(10) || 'Mount Maunganui ',
   '07 555 0100', '07 555 0101', '', NULL, NULL, '98-765-432');
INSERT INTO Account (AccountId, Description) VALUES ('3010', 'Cheque Account'),
  ('1255', 'Bank Fees');
INSERT INTO Bank (BankId, AccountName, AccountNumber, BankName, BankNumber, Branch,
                  OverdraftLimit, AssetAccountId, FeesAccountId, Active, InUse) VALUES
  ('CHQ', 'Operating', '12-3108-0456123-00', 'Harbour Bank', '12', 'Auckland', 50000000,
   '3010', '1255', 1, 1),
  ('SAV', 'Reserve', NULL, 'Harbour Bank', NULL, NULL, 0, NULL, '1255', 0, 1);
INSERT INTO TaxCategory (TaxCategoryId, Description, Rate, Inclusive) VALUES
  ('S', 'Standard', 15, 0), ('Z', 'Zero rated', 0, 0), ('I', 'Standard, inclusive', 15, 1),
  ('*', 'Not reported', 0, 0);
INSERT INTO Location (LocationId, Description, BranchId) VALUES ('MAIN', 'Warehouse', 'AKL'),
  ('BR2', 'Second store', 'TGA');
INSERT INTO PaymentTerm (PaymentTermId, Description) VALUES ('20M', '20th of the month'),
  ('7D', 'Seven days');
INSERT INTO OtherParty (OtherPartyId, Name, XRefId, IsCustomer, IsSupplier, LocationId,
                        CustomerPayTermId, SupplierPayTermId, TaxNumber, ChqName) VALUES
  ('ACME', 'Acme Marine Ltd', 'A1', 1, 1, 'BR2', '20M', '7D', '111-222-333', 'Acme Marine'),
  ('BOAT', 'Boat Bits', NULL, 0, 1, NULL, NULL, '7D', NULL, NULL),
  ('ZED', 'Zed Only', NULL, 1, 0, 'MAIN', NULL, NULL, NULL, NULL);
INSERT INTO OtherPartyAddress (OtherPartyId, AddressId, Address, City, State, Postcode,
                               Country) VALUES
  ('ACME', 'Postal', 'PO Box 12', 'Tauranga', NULL, '3140', NULL),
  ('ACME', 'Delivery', '4 Quay St' || char(13) || char(10) || 'Sulphur Point', 'Tauranga', 'BOP',
   '3110', 'New Zealand'),
  ('BOAT', 'Postal', '  ', NULL, NULL, NULL, NULL),
  ('BOAT', 'Street', '9 Slipway', 'Napier', NULL, NULL, NULL);
INSERT INTO OtherPartyContactMethod (OtherPartyId, Sequence, Kind, Detail) VALUES
  ('ACME', 2, 'Email', 'sales@acme.example'),
  ('ACME', 1, 'EmailAR', ''),
  ('ACME', 3, 'Phone', '07 555 0199'),
  ('BOAT', 1, 'EmailAR', 'ap@boatbits.example');
INSERT INTO Employee (EmployeeId, Name, Title, ContactMethod, ContactDetail) VALUES
  ('MW', 'Mere Walker', 'Accounts', 'Mobile', '021 555 0142'),
  ('JS', 'Jo Smith', NULL, NULL, NULL);
INSERT INTO AssetCategory (AssetCategoryId, Description, CalculationPeriod, Revaluation,
                           DisposalType) VALUES ('VEHICLE', 'Motor vehicles', 'Monthly', 'Market',
                           'Sale');
