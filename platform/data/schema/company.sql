-- The accounting database of one company, as the reports read it.
--
-- Every table and column below is here because a report reads it, in its own SQL or through
-- the business layer's objects (branch details, tax categories, asset methods); a column that
-- no report reads does not exist. That matters for the reports' own SQL: several joins name a column
-- without its table, and they are unambiguous only because the other tables of the join lack
-- that name (Account has no Value or Date, Item has no Value, Quantity or SerialNumber,
-- OtherParty has no Value, Date, DateProcess or Held, and so on). The notes above each table
-- say which such names were checked before a column was added.
--
-- Declared types carry the semantic type that the translator and the recordsets read back
-- with PRAGMA table_info. Exactly six are used:
--   TEXT     text, always COLLATE NOCASE: codes and free text compare, group and sort
--            without regard to case
--   INTEGER  whole numbers: ids, type codes, counts, levels
--   DOUBLE   floating numbers: quantities, rates, percentages
--   MONEY    exact money, stored as INTEGER ten-thousandths (12.34 is stored 123400)
--   DATE     ISO text 'yyyy-mm-dd', or 'yyyy-mm-dd hh:mm:ss' when a time part exists
--   BOOLEAN  0 or 1
--
-- The sign conventions of the ledgers: glTransaction.Value is positive for a debit.
-- Transactions.Value and ValueRemaining are negative for what a customer owes and positive for
-- what is owed to a supplier. TransactionLine.Quantity and ItemCost are signed stock movements.
--
-- Report keys named in the notes are the catalogue keys that read the table, directly or
-- through a pick-list (standard parameter) or a grouping heading.

-- ---------------------------------------------------------------------------------------------
-- Company facts and settings
-- ---------------------------------------------------------------------------------------------

-- Company settings, read through Database.GetSetting(Section, Key, Default). Values are text;
-- numbers are written in plain invariant form ("2", "12.5"), dates as 'yyyy-mm-dd', Booleans
-- as "True" or "False".
--
-- Keys the reports and the business layer read:
--   Defaults   Branch                the branch whose details head documents by default
--   Company    Name                  printed in every page header (txtCompany, txtCompanyName)
--   Company    ProductName           which product the business layer is ("Kestrane", ...):
--                                    a layout script asks for its product's object by it
--   Company    Country               country code, "NZ", "AU", ...: picks the GST 101 or the
--                                    BAS form, "ABN: " lines, the Suburb/City/State rows
--   Company    TaxNumber             the company's tax registration number (GST form,
--                                    documents when the branch has none)
--   Tax        Name                  the sales tax's name, "GST"
--   Tax        Rate                  the current rate in per cent, "15"
--   Tax        PeriodStart           first day of the tax period now open, 'yyyy-mm-dd'
--   Tax        PeriodMonths          length of a tax period in months, "2"
--   Tax        BasisOutput           "Invoice", "Payments" (or "Cash") or "Exempt"
--   Tax        BasisInput            the same for purchases
--   Periods    CurrentDateAR         the receivables ledger's current date (ARCURRENT)
--   Periods    CurrentDateAP         the payables ledger's current date (APCURRENT)
--   Periods    CurrentDateGL         the general ledger's current date (GLCURRENT)
--   Accounts   RetainedEarnings      AccountId of the retained earnings account
--   Accounts   ReceivablesControl    AccountId of the receivables control account
--   Accounts   PayablesControl       AccountId of the payables control account
--   Options    ItemCodeSetting       16-bit number: above 0 gives wide item code columns
--   Options    SuburbInCityField     "True" when a New Zealand address keeps its suburb in City
--   Options    TemplateFolder        folder of user layouts, with its trailing separator
--   Options    JobActualCharges      "True": the job charge line is "Actual Charges"
--   Options    QuantityDecimals      decimals of quantities, "2"
--   Options    PriceDecimals         decimals of unit prices, "2"
--   Options    ValueDecimals         decimals of values, "2"
--   Options    PromptPaymentDiscount "True" when prompt payment discounts are in use
--   Options    AvailableIncludesAllocated  "True" when the available quantity of an item
--                                    keeps allocated stock in (StockReorder negates it)
--   Options    OverdueFromDefault    initial value of the OverdueFrom parameters
--   Formats    Date                  date mask, "d/mm/yyyy"
--   Formats    LongDate              printed date mask, "d mmmm yyyy"
--   Formats    Currency              money mask, "#,##0.00;(#,##0.00)"
--   UserDefinedFields  <Table>.<n>.Name  name of user-defined field n (1 to 20) of a kind,
--   UserDefinedFields  <Table>.<n>.Type  and its type code (1-3 party, 4 employee, 5 item
--                                    value list, 7 asset, 8 job); <Table> is Account, Asset,
--                                    Item, Job, OtherParty or Transactions
--   Settings   <any>                 further application settings by name
CREATE TABLE CompanySetting (Section TEXT COLLATE NOCASE NOT NULL, Key TEXT COLLATE NOCASE NOT NULL, Value TEXT, PRIMARY KEY (Section, Key));

-- The financial calendar: one row per financial year. YearIdFromDate finds the row whose
-- DateStart..DateEnd holds a date. Keys: every report with a date parameter whose expression
-- uses BOY or EOY; EndOfYearTrialBalance and FiveYearSummary (FiscalYear), TrialBalance and
-- the other statements with DateAsAt, PeriodSummary, BudgetSummary and BudgetCashFlow ("Year
-- to Date"), AssetDepreciationSchedule (year start), AssetFutureValueSchedule (years extended
-- in memory), ControlReportAR/AP (year to date). The year-end closing entries are posted with a
-- time on DateEnd, after midnight, which EndOfYearTrialBalance relies on.
CREATE TABLE FinancialYear (
  FinancialYearId INTEGER PRIMARY KEY,
  Name TEXT COLLATE NOCASE NOT NULL,
  DateStart DATE NOT NULL,
  DateEnd DATE NOT NULL
);

-- One row, always. The constant unions of the standard parameters Status and PaymentTypes
-- select from it. Keys: LedgerAR/AP, AgedOverdueAR/AP, OverdueListAR/AP (Status parameter and
-- "Status" grouping).
CREATE TABLE Configuration (
  ConfigurationId INTEGER PRIMARY KEY CHECK (ConfigurationId = 1)
);

-- ---------------------------------------------------------------------------------------------
-- Code tables
-- ---------------------------------------------------------------------------------------------

-- BranchList; the Branches parameter and the "Branch" grouping of every report that offers
-- them; statement keys (branch groups and splits), GST101Return, BASReturn, TaxDetailReport,
-- ManagementReport, RemittanceAP. TaxFileNumber is the "Tax No" column, TaxNumber the tax
-- registration shown on documents. Address (lines parted by line breaks), Phone, Fax, Email and
-- Website are the branch block that the business layer hands to StatementAR, InvoiceAR/AP and
-- the other documents, RemittanceAP and BranchList.
CREATE TABLE Branch (
  BranchId TEXT COLLATE NOCASE PRIMARY KEY,
  Name TEXT COLLATE NOCASE,
  Description TEXT COLLATE NOCASE,
  Address TEXT COLLATE NOCASE,
  Phone TEXT COLLATE NOCASE,
  Fax TEXT COLLATE NOCASE,
  Email TEXT COLLATE NOCASE,
  Website TEXT COLLATE NOCASE,
  TaxFileNumber TEXT COLLATE NOCASE,
  TaxNumber TEXT COLLATE NOCASE
);

-- DepartmentList; the Departments parameter and the "Department" grouping; statement keys,
-- GST101Return, BASReturn, TaxDetailReport, ManagementReport.
CREATE TABLE Department (
  DeptId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE
);

-- Locations, CustomerLocations, SupplierLocations parameters and the "Location" groupings;
-- ChequeStandard and RemittanceAP reach the branch through the party's location.
CREATE TABLE Location (
  LocationId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  BranchId TEXT COLLATE NOCASE REFERENCES Branch (BranchId)
);

-- EmployeeList; Employees, CustomerEmployees, SupplierEmployees parameters and the "Employee"
-- groupings; log sub-reports (employee's name). ContactMethod and ContactDetail are the
-- "Contact" column of EmployeeList, handed over by the business layer.
CREATE TABLE Employee (
  EmployeeId TEXT COLLATE NOCASE PRIMARY KEY,
  Name TEXT COLLATE NOCASE,
  Title TEXT COLLATE NOCASE,
  ContactMethod TEXT COLLATE NOCASE,
  ContactDetail TEXT COLLATE NOCASE,
  Active BOOLEAN NOT NULL DEFAULT 1,
  ReportsTo TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId)
);

-- Contacts parameter; OtherPartyLog, LogAR, LogAP ("Contact" grouping, contact names in the
-- full notes); ContactList, ContactDetailsList, ContactLabels. ContactId is numeric: the Contacts
-- filter is built as a number. OtherPartyId is the party the person works for.
-- Checked names: no Date, ActionDate, CompleteDate, Subject, Notes, Document or Name: the notes'
-- query joins Contact and names those bare.
CREATE TABLE Contact (
  ContactId INTEGER PRIMARY KEY,
  LastName TEXT COLLATE NOCASE,
  FirstName TEXT COLLATE NOCASE,
  OtherPartyId TEXT COLLATE NOCASE REFERENCES OtherParty (OtherPartyId),
  Position TEXT COLLATE NOCASE,
  Phone TEXT COLLATE NOCASE,
  Mobile TEXT COLLATE NOCASE,
  Email TEXT COLLATE NOCASE
);

-- ScriptList: the layout scripts the company keeps. RunsOn names the report key a script runs
-- on, Language its language, Body its text; Modified and ModifiedBy the last change.
CREATE TABLE Script (
  ScriptId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  RunsOn TEXT COLLATE NOCASE,
  Language TEXT COLLATE NOCASE,
  Active BOOLEAN NOT NULL DEFAULT 1,
  Modified DATE,
  ModifiedBy TEXT COLLATE NOCASE,
  Body TEXT COLLATE NOCASE
);

-- UserRolePermissionList: the roles, the users who hold them and what each role may do with
-- each function of an area. A role with no row for a function may not use it.
-- Checked names: UserAccount's Name and Active are qualified wherever Employee joins it.
CREATE TABLE UserRole (
  RoleId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE
);

CREATE TABLE UserAccount (
  UserId TEXT COLLATE NOCASE PRIMARY KEY,
  Name TEXT COLLATE NOCASE,
  RoleId TEXT COLLATE NOCASE REFERENCES UserRole (RoleId),
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId),
  Active BOOLEAN NOT NULL DEFAULT 1,
  LastLogin DATE
);

CREATE TABLE UserRolePermission (
  RoleId TEXT COLLATE NOCASE NOT NULL REFERENCES UserRole (RoleId),
  Area TEXT COLLATE NOCASE NOT NULL,
  FunctionName TEXT COLLATE NOCASE NOT NULL,
  CanView BOOLEAN NOT NULL DEFAULT 0,
  CanAdd BOOLEAN NOT NULL DEFAULT 0,
  CanEdit BOOLEAN NOT NULL DEFAULT 0,
  CanDelete BOOLEAN NOT NULL DEFAULT 0,
  CanPrint BOOLEAN NOT NULL DEFAULT 0,
  PRIMARY KEY (RoleId, Area, FunctionName)
);

-- CustomerCategoryList; CustomerCategories parameter and "Customer Category" grouping.
CREATE TABLE CustomerCategory (
  CustomerCategoryId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE
);

-- CustomerTypeList; CustomerTypes parameter and "Customer Type" grouping.
CREATE TABLE CustomerType (
  CustomerTypeId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE
);

-- CustomerTypeList (its special pricing sub-report). A special price applies to one kind of
-- buyer, told by SType (1 a customer, 2 a customer category, 3 a customer type), named by
-- FieldValue, for one item: a fixed Price, or a DiscountRate (percent) off the item's price,
-- optionally only between DateFrom and DateTo.
CREATE TABLE SpecialPrice (
  SType INTEGER NOT NULL,
  FieldValue TEXT COLLATE NOCASE NOT NULL,
  ItemId TEXT COLLATE NOCASE NOT NULL,
  Price MONEY,
  DiscountRate DOUBLE,
  DateFrom DATE,
  DateTo DATE,
  PRIMARY KEY (SType, FieldValue, ItemId)
);

-- SupplierCategoryList; SupplierCategories parameter and "Supplier Category" grouping.
CREATE TABLE SupplierCategory (
  SupplierCategoryId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE
);

-- SupplierTypeList; SupplierTypes parameter and "Supplier Type" grouping.
CREATE TABLE SupplierType (
  SupplierTypeId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE
);

-- PaymentTermList; PaymentTerms, CustomerPaymentTerms, SupplierPaymentTerms parameters and the
-- payment term groupings. A document falls due Days after its date, or with FollowingMonth on
-- that day of the month following; nought days is on delivery.
CREATE TABLE PaymentTerm (
  PaymentTermId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  Days INTEGER NOT NULL DEFAULT 0,
  FollowingMonth BOOLEAN NOT NULL DEFAULT 0
);

-- PenaltyInterestTypeList, PenaltyInterests; PenaltyInterests parameter. Rate is per cent a
-- year; interest runs on an item once it is GraceDays past due; a customer charged less than
-- MinimumCharge in a run is charged MinimumCharge.
CREATE TABLE PenaltyInterest (
  PenaltyInterestId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  Rate DOUBLE NOT NULL DEFAULT 0,
  GraceDays INTEGER NOT NULL DEFAULT 0,
  MinimumCharge MONEY NOT NULL DEFAULT 0
);

-- ItemCategoryList; ItemCategories parameter and "Item Category" grouping.
CREATE TABLE ItemCategory (
  ItemCategoryId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE
);

-- ItemTypeList; ItemTypes parameter and "Item Type" grouping.
CREATE TABLE ItemType (
  ItemTypeId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE
);

-- JobCategoryList; JobCategories parameter and "Job Category" grouping.
CREATE TABLE JobCategory (
  JobCategoryId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  TransactionTypeId TEXT COLLATE NOCASE,
  Message TEXT COLLATE NOCASE
);

-- AssetCategoryList; AssetCategories parameter, "Asset Category" grouping and the "Category"
-- group of AssetDepreciationCalculation and the asset schedules. CalculationPeriod,
-- Revaluation and DisposalType are the category's rules as AssetCategoryList prints them
-- through the business layer.
CREATE TABLE AssetCategory (
  AssetCategoryId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  CalculationPeriod TEXT COLLATE NOCASE,
  Revaluation TEXT COLLATE NOCASE,
  DisposalType TEXT COLLATE NOCASE
);

-- AssetSiteList; AssetSites parameter and "Asset Site" grouping.
CREATE TABLE AssetSite (
  AssetSiteId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  Active BOOLEAN NOT NULL DEFAULT 1,
  ParentAssetSiteId TEXT COLLATE NOCASE REFERENCES AssetSite (AssetSiteId)
);

-- AssetTypeList; AssetTypes parameter, "Asset Type" grouping and the "Type" group of
-- AssetDepreciationCalculation.
CREATE TABLE AssetType (
  AssetTypeId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  ParentAssetTypeId TEXT COLLATE NOCASE REFERENCES AssetType (AssetTypeId)
);

-- Sources parameter, "Source" grouping; GeneralLedger shows each line's source.
CREATE TABLE glSource (
  glSourceId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE
);

-- The kinds of document. Type is the numeric class (20-29 payables, 30-39 receivables, 80
-- purchase order, 90 sales order). TransactionTypes parameter, "Transaction Type" grouping;
-- InvoiceAR, InvoiceAP, PackingSlip, PurchaseOrder ("Sales Order" through the batch),
-- ControlReportAR/AP, TransactionListAR/AP (allocations), RemittanceAP, ChequeStandard.
-- Message holds a text that a document of the type may print.
CREATE TABLE TransactionType (
  TransactionTypeId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  Type INTEGER NOT NULL,
  Message TEXT COLLATE NOCASE
);

-- The sales tax categories, read by the business layer: GST101Return and BASReturn count a
-- category whose Rate (per cent) is not 0, TaxDetailReport heads each category with its
-- Description, and the documents (InvoiceAR/AP, PackingSlip, PurchaseOrder) print a tax-inclusive
-- total when every line's category has Inclusive set. The code "*" marks lines no return reports.
CREATE TABLE TaxCategory (
  TaxCategoryId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  Rate DOUBLE NOT NULL DEFAULT 0,
  Inclusive BOOLEAN NOT NULL DEFAULT 0
);

-- PostCodeList.
CREATE TABLE PostCodes (
  City TEXT COLLATE NOCASE,
  State TEXT COLLATE NOCASE,
  Country TEXT COLLATE NOCASE,
  Postcode TEXT COLLATE NOCASE,
  Comments TEXT COLLATE NOCASE
);

-- ---------------------------------------------------------------------------------------------
-- General ledger
-- ---------------------------------------------------------------------------------------------

-- The chart of accounts, one row an account or a line that shapes a statement. Post is Null for
-- a posting account, else "H" heading, "G" group, "T" total, "C" clear, "P" page. Type is the
-- class 1 to 11; ALevel the level 1 to 5; DrCr "D" or "C"; Ratio the per cent of the balance
-- that is quick or on credit.
-- Keys: TrialBalance, GeneralLedger, EndOfYearTrialBalance, FinancialStatement,
-- FiveYearSummary, PeriodSummary, MovementReport, VarianceReport, LastYearComparison,
-- BudgetCashFlow, BudgetSummary, BudgetVarianceReport, AccountReportsNew, ManagementReport,
-- BankReconciliation, DocumentGL; the Accounts parameter and "Account" grouping.
-- Checked names: no Value or Date (statement and management queries join glTransaction and
-- name these bare: Sum(Value), Year([Date]), Sum([Value]*[Ratio]/100)), and no BranchId or
-- DeptId: the trial balance's retained earnings query joins glTransaction under a bare
-- "BranchId='..'" group filter.
CREATE TABLE Account (
  AccountId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  Post TEXT COLLATE NOCASE,
  Type INTEGER,
  ALevel INTEGER NOT NULL DEFAULT 1,
  DrCr TEXT COLLATE NOCASE,
  Ratio DOUBLE,
  UserDefined1 TEXT COLLATE NOCASE,
  UserDefined2 TEXT COLLATE NOCASE,
  UserDefined3 TEXT COLLATE NOCASE,
  UserDefined4 TEXT COLLATE NOCASE,
  UserDefined5 TEXT COLLATE NOCASE,
  UserDefined6 TEXT COLLATE NOCASE,
  UserDefined7 TEXT COLLATE NOCASE,
  UserDefined8 TEXT COLLATE NOCASE,
  UserDefined9 TEXT COLLATE NOCASE,
  UserDefined10 TEXT COLLATE NOCASE,
  UserDefined11 TEXT COLLATE NOCASE,
  UserDefined12 TEXT COLLATE NOCASE,
  UserDefined13 TEXT COLLATE NOCASE,
  UserDefined14 TEXT COLLATE NOCASE,
  UserDefined15 TEXT COLLATE NOCASE,
  UserDefined16 TEXT COLLATE NOCASE,
  UserDefined17 TEXT COLLATE NOCASE,
  UserDefined18 TEXT COLLATE NOCASE,
  UserDefined19 TEXT COLLATE NOCASE,
  UserDefined20 TEXT COLLATE NOCASE
);

-- Link ids to accounts: "AR" receivables control, "SC" stock control, "AP" payables control.
-- ManagementReport.
CREATE TABLE AccountLink (
  AccountLinkId TEXT COLLATE NOCASE PRIMARY KEY,
  AccountId TEXT COLLATE NOCASE REFERENCES Account (AccountId)
);

-- One bank account. BankReconciliation (Active, InUse filters), BankList, the Banks parameter
-- and "Bank" grouping. AssetAccountId and FeesAccountId are the ledger accounts of the bank's
-- balance and of its fees, which BankList prints as code and description.
CREATE TABLE Bank (
  BankId TEXT COLLATE NOCASE PRIMARY KEY,
  AccountName TEXT COLLATE NOCASE,
  AccountNumber TEXT COLLATE NOCASE,
  BankName TEXT COLLATE NOCASE,
  BankNumber TEXT COLLATE NOCASE,
  Branch TEXT COLLATE NOCASE,
  OverdraftLimit MONEY NOT NULL DEFAULT 0,
  AssetAccountId TEXT COLLATE NOCASE REFERENCES Account (AccountId),
  FeesAccountId TEXT COLLATE NOCASE REFERENCES Account (AccountId),
  Active BOOLEAN NOT NULL DEFAULT 1,
  InUse BOOLEAN NOT NULL DEFAULT 1
);

-- One bank entry: its ledger lines are the glTransaction rows that carry its id, sequence 0 the
-- bank's own line and the others the split. StmtPage is the statement page that reconciled it,
-- Null while unreconciled; Presented the day a cheque was presented.
-- Keys: GeneralLedger (the ledger lines' bank side), BudgetCashFlow (opening bank balance),
-- GST101Return and BASReturn (cash basis: the bank date decides), BankReconciliation,
-- ChequeStandard.
-- Checked names: no BranchId, DeptId or TaxPeriodId: the group filters and the GST cash
-- queries name these bare beside glTransaction.
CREATE TABLE glBankTransaction (
  glBankTransactionId INTEGER PRIMARY KEY,
  BankId TEXT COLLATE NOCASE REFERENCES Bank (BankId),
  Date DATE NOT NULL,
  OtherPartyId TEXT COLLATE NOCASE REFERENCES OtherParty (OtherPartyId),
  Reference TEXT COLLATE NOCASE,
  Comment TEXT COLLATE NOCASE,
  StmtPage INTEGER,
  Presented DATE
);

-- One page of a bank's statement: its date, the closing balance the bank printed and whether the
-- reconciliation of the page is locked. The page numbers are those of glBankTransaction.StmtPage.
-- Keys: BankReconciliation (through the business layer's reconciliation object).
CREATE TABLE glBankStatement (
  BankId TEXT COLLATE NOCASE NOT NULL REFERENCES Bank (BankId),
  StmtPage INTEGER NOT NULL,
  StatementDate DATE NOT NULL,
  ClosingBalance MONEY NOT NULL DEFAULT 0,
  Locked BOOLEAN NOT NULL DEFAULT 0,
  PRIMARY KEY (BankId, StmtPage)
);

-- One posted ledger line. Value is positive for a debit; TaxValue the tax carried beside it.
-- Type is Null for ordinary movement; year-end lines carry a type (1 the closing entries).
-- TaxIO "O" output (sales) or "I" input (purchases); TaxCategory "*" is never reported;
-- the Cash... columns hold the line's cash-basis view. TaxPeriodId is set once a return that
-- holds the line is filed. TransactionId is the receivables or payables document a line was
-- posted from, which the general ledger's drill-down prints.
-- Keys: all twelve statement keys, AccountReportsNew, ManagementReport, GST101Return,
-- BASReturn, TaxDetailReport, BankReconciliation, ChequeStandard, ControlReportAR/AP (control
-- account balance), the "Reference" grouping on glTransaction.
-- Checked names: no Ratio, which the management report names bare beside Account.
CREATE TABLE glTransaction (
  glTransactionId INTEGER PRIMARY KEY,
  AccountId TEXT COLLATE NOCASE NOT NULL REFERENCES Account (AccountId),
  Date DATE NOT NULL,
  Value MONEY NOT NULL DEFAULT 0,
  TaxValue MONEY NOT NULL DEFAULT 0,
  BranchId TEXT COLLATE NOCASE REFERENCES Branch (BranchId),
  DeptId TEXT COLLATE NOCASE REFERENCES Department (DeptId),
  Type INTEGER,
  glSourceId TEXT COLLATE NOCASE REFERENCES glSource (glSourceId),
  Reference TEXT COLLATE NOCASE,
  Comment TEXT COLLATE NOCASE,
  TaxCategory TEXT COLLATE NOCASE,
  TaxIO TEXT COLLATE NOCASE,
  TaxPeriodId INTEGER REFERENCES TaxPeriod (TaxPeriodId),
  CashTaxCategory TEXT COLLATE NOCASE,
  CashTaxValue MONEY NOT NULL DEFAULT 0,
  glBankTransactionId INTEGER REFERENCES glBankTransaction (glBankTransactionId),
  glBankTransactionSequence INTEGER,
  TransactionId INTEGER REFERENCES Transactions (TransactionId)
);

-- One month's budget of an account; Month is the month's first day. Budget, Revised and
-- Alternate are the three versions, chosen by the Budget parameter.
-- Keys: VarianceReport, BudgetVarianceReport, BudgetSummary, BudgetCashFlow.
CREATE TABLE glBudget (
  AccountId TEXT COLLATE NOCASE NOT NULL REFERENCES Account (AccountId),
  Month DATE NOT NULL,
  BranchId TEXT COLLATE NOCASE REFERENCES Branch (BranchId),
  DeptId TEXT COLLATE NOCASE REFERENCES Department (DeptId),
  Budget MONEY NOT NULL DEFAULT 0,
  Revised MONEY NOT NULL DEFAULT 0,
  Alternate MONEY NOT NULL DEFAULT 0
);

-- A filed tax return. Rate in per cent (12.5 for 12.5%); the bases "Invoice", "Payments"
-- ("Cash" on the BAS) or "Exempt".
-- Keys: GST101Return, BASReturn, TaxDetailReport.
CREATE TABLE TaxPeriod (
  TaxPeriodId INTEGER PRIMARY KEY,
  DateFrom DATE NOT NULL,
  DateTo DATE NOT NULL,
  BasisOutput TEXT COLLATE NOCASE,
  BasisInput TEXT COLLATE NOCASE,
  Rate DOUBLE NOT NULL DEFAULT 0
);

-- ---------------------------------------------------------------------------------------------
-- Parties
-- ---------------------------------------------------------------------------------------------

-- A customer or a supplier; one row can be both. Status is the credit status 1 to 5 (None,
-- Good, Caution, Bad, Adverse). Type is the party's own classification ("Other Party Type").
-- CustomerDiscRate is the customer's discount rate in per cent.
-- Keys: LedgerAR/AP, AgedOverdueAR/AP, OverdueListAR/AP, StatementAR, InvoiceAR/AP,
-- PackingSlip, PurchaseOrder, SalesAnalysisAR, ItemSalesAnalysis, JobAnalysis, ItemJobAnalysis,
-- SalesSummaryAR, ItemSalesSummary, PurchaseAnalysisAP, ItemPurchaseAnalysis,
-- PurchaseSummaryAP, ItemPurchaseSummary, ControlReportAR/AP, TransactionListAR/AP,
-- OpenTransactionListAR/AP, SalesOrderList, JobInvoiceList, RemittanceAP, SalesTrendAR,
-- PurchaseTrendAP, ItemSalesTrend, ItemPurchaseTrend, StockReorder, StockOnOrder,
-- StockOnSalesOrders, GeneralLedger, ChequeStandard, JobStatusReport, OtherPartyLog, LogAR,
-- LogAP, DocumentAR/AP/OP; Customers, Suppliers, OtherParties parameters.
-- Checked names: no Value, ValueRemaining, Date, DateProcess, DatePayment or Held: the control
-- report and the overdue list join Transactions and name these bare.
CREATE TABLE OtherParty (
  OtherPartyId TEXT COLLATE NOCASE PRIMARY KEY,
  Name TEXT COLLATE NOCASE,
  XRefId TEXT COLLATE NOCASE,
  Type TEXT COLLATE NOCASE,
  IsCustomer BOOLEAN NOT NULL DEFAULT 0,
  IsSupplier BOOLEAN NOT NULL DEFAULT 0,
  LocationId TEXT COLLATE NOCASE REFERENCES Location (LocationId),
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId),
  CustomerCategoryId TEXT COLLATE NOCASE REFERENCES CustomerCategory (CustomerCategoryId),
  SupplierCategoryId TEXT COLLATE NOCASE REFERENCES SupplierCategory (SupplierCategoryId),
  CustomerTypeId TEXT COLLATE NOCASE REFERENCES CustomerType (CustomerTypeId),
  SupplierTypeId TEXT COLLATE NOCASE REFERENCES SupplierType (SupplierTypeId),
  CustomerPayTermId TEXT COLLATE NOCASE REFERENCES PaymentTerm (PaymentTermId),
  SupplierPayTermId TEXT COLLATE NOCASE REFERENCES PaymentTerm (PaymentTermId),
  Status INTEGER,
  CustomerCreditLimit MONEY NOT NULL DEFAULT 0,
  CustomerActive BOOLEAN NOT NULL DEFAULT 1,
  SupplierActive BOOLEAN NOT NULL DEFAULT 1,
  CustomerStopCredit BOOLEAN NOT NULL DEFAULT 0,
  CustomerDiscRate DOUBLE,
  TaxNumber TEXT COLLATE NOCASE,
  ChqName TEXT COLLATE NOCASE,
  UserDefined1 TEXT COLLATE NOCASE,
  UserDefined2 TEXT COLLATE NOCASE,
  UserDefined3 TEXT COLLATE NOCASE,
  UserDefined4 TEXT COLLATE NOCASE,
  UserDefined5 TEXT COLLATE NOCASE,
  UserDefined6 TEXT COLLATE NOCASE,
  UserDefined7 TEXT COLLATE NOCASE,
  UserDefined8 TEXT COLLATE NOCASE,
  UserDefined9 TEXT COLLATE NOCASE,
  UserDefined10 TEXT COLLATE NOCASE,
  UserDefined11 TEXT COLLATE NOCASE,
  UserDefined12 TEXT COLLATE NOCASE,
  UserDefined13 TEXT COLLATE NOCASE,
  UserDefined14 TEXT COLLATE NOCASE,
  UserDefined15 TEXT COLLATE NOCASE,
  UserDefined16 TEXT COLLATE NOCASE,
  UserDefined17 TEXT COLLATE NOCASE,
  UserDefined18 TEXT COLLATE NOCASE,
  UserDefined19 TEXT COLLATE NOCASE,
  UserDefined20 TEXT COLLATE NOCASE,
  PenaltyInterestId TEXT COLLATE NOCASE REFERENCES PenaltyInterest (PenaltyInterestId)
);

-- A party's addresses, keyed by a name such as 'Postal' or 'Delivery'. Address holds the
-- street lines, parted by line breaks.
-- Keys: SalesAnalysisAR, SalesSummaryAR and SalesTrendAR (split by address), RemittanceAP;
-- the Suburb, City, State, Postcode and Addresses parameters; DocumentAR/AP/OP.
CREATE TABLE OtherPartyAddress (
  OtherPartyId TEXT COLLATE NOCASE NOT NULL REFERENCES OtherParty (OtherPartyId),
  AddressId TEXT COLLATE NOCASE NOT NULL,
  Address TEXT COLLATE NOCASE,
  City TEXT COLLATE NOCASE,
  State TEXT COLLATE NOCASE,
  Postcode TEXT COLLATE NOCASE,
  Country TEXT COLLATE NOCASE,
  PRIMARY KEY (OtherPartyId, AddressId)
);

-- A party's contact methods in order; the first holds the main contact detail. Kind names the
-- method ("Phone", "Email", "EmailAR", ...): the business layer gives AgedOverdueAR its e-mail
-- address by kind, and PurchaseOrder prints each method as kind and detail.
-- Keys: OverdueListAR/AP, AgedOverdueAR, PurchaseOrder.
CREATE TABLE OtherPartyContactMethod (
  OtherPartyId TEXT COLLATE NOCASE NOT NULL REFERENCES OtherParty (OtherPartyId),
  Sequence INTEGER NOT NULL,
  Kind TEXT COLLATE NOCASE,
  Detail TEXT COLLATE NOCASE,
  PRIMARY KEY (OtherPartyId, Sequence)
);

-- ---------------------------------------------------------------------------------------------
-- Receivables and payables
-- ---------------------------------------------------------------------------------------------

-- One posted document or payment. Type: 20-29 payables (20 invoice, 21 credit, 22 prompt
-- payment discount, 25 payment), 30-39 receivables (30 invoice, 31 credit, 32 discount,
-- 35 receipt). DateProcess decides the period, Date is the document's date, DatePayment its
-- due date, CreatedDate when it was entered. ValueRemaining is the part no allocation has
-- taken up; Held the part withheld from payment. Receipts and payments carry PayType (a
-- letter), the payer's Name, CardNumber and BankDetails, and the bank entry that paid them.
-- Keys: LedgerAR/AP, AgedOverdueAR/AP, OverdueListAR/AP, StatementAR, InvoiceAR/AP,
-- PackingSlip, all sales and purchase analysis and summary keys, ControlReportAR/AP,
-- TransactionListAR/AP, RemittanceAP, ChequeStandard (stub), SalesTrendAR, PurchaseTrendAP,
-- ItemSalesTrend, ItemPurchaseTrend, LogAR, LogAP (outstanding), DocumentAR/AP; the Address,
-- AddressId, Reference and Batch groupings.
-- Checked names: no IsCustomer, IsSupplier, XRefId, Status, CustomerCategoryId and the other
-- party classifications, CustomerCreditLimit, CustomerActive, SupplierActive (bare in the aged
-- overdue and analysis joins with OtherParty); no TransactionId1/TransactionId2 (bare beside
-- TransactionAllocation); no Description, DeptId, ItemId (line joins). Name, the payer's name on
-- a receipt, is read bare only from Transactions alone; every join with OtherParty qualifies
-- OtherParty.Name.
CREATE TABLE Transactions (
  TransactionId INTEGER PRIMARY KEY,
  OtherPartyId TEXT COLLATE NOCASE REFERENCES OtherParty (OtherPartyId),
  Type INTEGER NOT NULL,
  TransactionTypeId TEXT COLLATE NOCASE REFERENCES TransactionType (TransactionTypeId),
  BatchId TEXT COLLATE NOCASE,
  Reference TEXT COLLATE NOCASE,
  OrderNo TEXT COLLATE NOCASE,
  Date DATE NOT NULL,
  DateProcess DATE NOT NULL,
  DatePayment DATE,
  CreatedDate DATE,
  Value MONEY NOT NULL DEFAULT 0,
  ValueRemaining MONEY NOT NULL DEFAULT 0,
  Held MONEY NOT NULL DEFAULT 0,
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId),
  LocationId TEXT COLLATE NOCASE REFERENCES Location (LocationId),
  JobId TEXT COLLATE NOCASE REFERENCES Job (JobId),
  AddressId TEXT COLLATE NOCASE,
  PPDDate DATE,
  PPDAllowed MONEY NOT NULL DEFAULT 0,
  PayType TEXT COLLATE NOCASE,
  Name TEXT COLLATE NOCASE,
  CardNumber TEXT COLLATE NOCASE,
  BankDetails TEXT COLLATE NOCASE,
  glBankTransactionId INTEGER REFERENCES glBankTransaction (glBankTransactionId),
  UserDefined1 TEXT COLLATE NOCASE,
  UserDefined2 TEXT COLLATE NOCASE,
  UserDefined3 TEXT COLLATE NOCASE,
  UserDefined4 TEXT COLLATE NOCASE,
  UserDefined5 TEXT COLLATE NOCASE,
  UserDefined6 TEXT COLLATE NOCASE,
  UserDefined7 TEXT COLLATE NOCASE,
  UserDefined8 TEXT COLLATE NOCASE,
  UserDefined9 TEXT COLLATE NOCASE,
  UserDefined10 TEXT COLLATE NOCASE,
  UserDefined11 TEXT COLLATE NOCASE,
  UserDefined12 TEXT COLLATE NOCASE,
  UserDefined13 TEXT COLLATE NOCASE,
  UserDefined14 TEXT COLLATE NOCASE,
  UserDefined15 TEXT COLLATE NOCASE,
  UserDefined16 TEXT COLLATE NOCASE,
  UserDefined17 TEXT COLLATE NOCASE,
  UserDefined18 TEXT COLLATE NOCASE,
  UserDefined19 TEXT COLLATE NOCASE,
  UserDefined20 TEXT COLLATE NOCASE
);

-- One line of a posted document, and every stock movement (types 11 stocktake, 13 adjustment,
-- 14 revaluation and 18 carry cost only and have no document party). Type and DateProcess
-- repeat the document's. Quantity and ItemCost are signed: sums give what is on hand and what
-- it cost; DateProcess may be Null on stock lines, which then always count. Hidden lines print
-- as one "Other Items" line. SerialNumber is the serial or batch number of a tracked item.
-- Keys: InvoiceAR/AP, PackingSlip, all analysis, summary and trend keys, ControlReportAR/AP,
-- TransactionListAR/AP, StockStatus, StockLevel, StockOnOrder (on hand), StockMovement,
-- StocktakeVarianceReport, DocumentSC; SerialNumber parameter.
-- Checked names: no party or document columns (OtherPartyId, Date, Reference, Status): those
-- come from Transactions, and the line queries that name Value, Discount, Quantity or TaxValue
-- bare read TransactionLine alone.
CREATE TABLE TransactionLine (
  TransactionLineId INTEGER PRIMARY KEY,
  TransactionId INTEGER REFERENCES Transactions (TransactionId),
  Type INTEGER,
  DateProcess DATE,
  ItemId TEXT COLLATE NOCASE REFERENCES Item (ItemId),
  LocationId TEXT COLLATE NOCASE REFERENCES Location (LocationId),
  DeptId TEXT COLLATE NOCASE REFERENCES Department (DeptId),
  Hidden BOOLEAN NOT NULL DEFAULT 0,
  Description TEXT COLLATE NOCASE,
  SerialNumber TEXT COLLATE NOCASE,
  Quantity DOUBLE NOT NULL DEFAULT 0,
  UnitPrice MONEY NOT NULL DEFAULT 0,
  Extension MONEY NOT NULL DEFAULT 0,
  Discount MONEY NOT NULL DEFAULT 0,
  DiscountRate DOUBLE NOT NULL DEFAULT 0,
  Value MONEY NOT NULL DEFAULT 0,
  TaxCategory TEXT COLLATE NOCASE,
  TaxValue MONEY NOT NULL DEFAULT 0,
  PPDiscount MONEY NOT NULL DEFAULT 0,
  ItemCost MONEY NOT NULL DEFAULT 0
);

-- One allocation of a value between two transactions, from either side.
-- Keys: LedgerAR/AP (outstanding), AgedOverdueAR/AP (back dating), StatementAR,
-- ControlReportAR/AP, TransactionListAR/AP, RemittanceAP, ChequeStandard.
CREATE TABLE TransactionAllocation (
  TransactionAllocationId INTEGER PRIMARY KEY,
  TransactionId1 INTEGER NOT NULL REFERENCES Transactions (TransactionId),
  TransactionId2 INTEGER NOT NULL REFERENCES Transactions (TransactionId),
  ValueAllocated MONEY NOT NULL DEFAULT 0
);

-- A batch of unposted documents. acBatchHeaderId 'Open' marks the open batch; Type its
-- document class (20, 21, 30, 31, 42 job invoices, 90 sales orders).
-- Keys: OpenTransactionListAR/AP, SalesOrderList, JobInvoiceList, InvoiceAR/AP (open),
-- "Sales Order", StockOnSalesOrders, InvoiceCommitBatch, SavedTransactionListAR/AP.
CREATE TABLE acBatchHeader (
  acBatchSId INTEGER PRIMARY KEY,
  acBatchHeaderId TEXT COLLATE NOCASE,
  Type INTEGER,
  CreatedDate DATE,
  LastDate DATE
);

-- One unposted document, with the header columns of Transactions.
-- Keys: as acBatchHeader, and JobSummary, JobStatusReport (open job documents); the
-- "Reference" grouping on acBatchTransaction.
CREATE TABLE acBatchTransaction (
  acBatchTransactionId INTEGER PRIMARY KEY,
  acBatchSId INTEGER NOT NULL REFERENCES acBatchHeader (acBatchSId),
  Type INTEGER,
  TransactionTypeId TEXT COLLATE NOCASE REFERENCES TransactionType (TransactionTypeId),
  OtherPartyId TEXT COLLATE NOCASE REFERENCES OtherParty (OtherPartyId),
  BatchId TEXT COLLATE NOCASE,
  Reference TEXT COLLATE NOCASE,
  OrderNo TEXT COLLATE NOCASE,
  Date DATE,
  DateProcess DATE,
  DatePayment DATE,
  CreatedDate DATE,
  Value MONEY NOT NULL DEFAULT 0,
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId),
  LocationId TEXT COLLATE NOCASE REFERENCES Location (LocationId),
  JobId TEXT COLLATE NOCASE REFERENCES Job (JobId),
  AddressId TEXT COLLATE NOCASE,
  PPDDate DATE,
  PPDAllowed MONEY NOT NULL DEFAULT 0,
  UserDefined1 TEXT COLLATE NOCASE,
  UserDefined2 TEXT COLLATE NOCASE,
  UserDefined3 TEXT COLLATE NOCASE,
  UserDefined4 TEXT COLLATE NOCASE,
  UserDefined5 TEXT COLLATE NOCASE,
  UserDefined6 TEXT COLLATE NOCASE,
  UserDefined7 TEXT COLLATE NOCASE,
  UserDefined8 TEXT COLLATE NOCASE,
  UserDefined9 TEXT COLLATE NOCASE,
  UserDefined10 TEXT COLLATE NOCASE,
  UserDefined11 TEXT COLLATE NOCASE,
  UserDefined12 TEXT COLLATE NOCASE,
  UserDefined13 TEXT COLLATE NOCASE,
  UserDefined14 TEXT COLLATE NOCASE,
  UserDefined15 TEXT COLLATE NOCASE,
  UserDefined16 TEXT COLLATE NOCASE,
  UserDefined17 TEXT COLLATE NOCASE,
  UserDefined18 TEXT COLLATE NOCASE,
  UserDefined19 TEXT COLLATE NOCASE,
  UserDefined20 TEXT COLLATE NOCASE
);

-- One line of an unposted document. Type is the line's class (42 a job charge line, 20 and 21
-- purchase lines, 21 and 31 credits print with the sign turned). OrderQuantity is what a sales
-- order asked for; Hold keeps a line from the document.
-- Keys: as acBatchTransaction.
-- Checked names: the open lines' query names Value, Discount, Quantity, TaxValue and
-- acBatchTransactionId bare beside Item, which has none of them.
CREATE TABLE acBatchTransactionLine (
  acBatchTransactionId INTEGER NOT NULL REFERENCES acBatchTransaction (acBatchTransactionId),
  Type INTEGER,
  DateProcess DATE,
  ItemId TEXT COLLATE NOCASE REFERENCES Item (ItemId),
  LocationId TEXT COLLATE NOCASE REFERENCES Location (LocationId),
  DeptId TEXT COLLATE NOCASE REFERENCES Department (DeptId),
  Hidden BOOLEAN NOT NULL DEFAULT 0,
  Hold BOOLEAN NOT NULL DEFAULT 0,
  Description TEXT COLLATE NOCASE,
  SerialNumber TEXT COLLATE NOCASE,
  OrderQuantity DOUBLE NOT NULL DEFAULT 0,
  Quantity DOUBLE NOT NULL DEFAULT 0,
  UnitPrice MONEY NOT NULL DEFAULT 0,
  Extension MONEY NOT NULL DEFAULT 0,
  Discount MONEY NOT NULL DEFAULT 0,
  DiscountRate DOUBLE NOT NULL DEFAULT 0,
  Value MONEY NOT NULL DEFAULT 0,
  TaxCategory TEXT COLLATE NOCASE,
  TaxValue MONEY NOT NULL DEFAULT 0
);

-- What an import, a commit of a batch or a purge test reported, line by line. Process is
-- 'Import', 'Commit' or 'PurgeTest'; RunDate (with time) tells one run from another; acBatchSId
-- the batch the run made or read, if any. LineNo is the input line, RecordType, RecordKey,
-- FieldName and FieldValue what was read there. Severity: 1 error, 2 warning, 3 note.
-- Keys: ErrorsList, CommitList, PurgeTestList.
CREATE TABLE ImportMessage (
  ImportMessageId INTEGER PRIMARY KEY,
  Process TEXT COLLATE NOCASE NOT NULL,
  RunDate DATE NOT NULL,
  acBatchSId INTEGER REFERENCES acBatchHeader (acBatchSId),
  LineNo INTEGER,
  RecordType TEXT COLLATE NOCASE,
  RecordKey TEXT COLLATE NOCASE,
  FieldName TEXT COLLATE NOCASE,
  FieldValue TEXT COLLATE NOCASE,
  Severity INTEGER NOT NULL,
  Message TEXT COLLATE NOCASE
);

-- A purchase order. Keys: PurchaseOrder, StockOnOrder, StockLevel (arrival date),
-- StockReorder (on order), JobStatusReport; the "Reference" grouping on PurchaseOrder.
CREATE TABLE PurchaseOrder (
  PurchaseOrderId INTEGER PRIMARY KEY,
  TransactionTypeId TEXT COLLATE NOCASE REFERENCES TransactionType (TransactionTypeId),
  OtherPartyId TEXT COLLATE NOCASE REFERENCES OtherParty (OtherPartyId),
  Date DATE,
  CreatedDate DATE,
  DateRequired DATE,
  Reference TEXT COLLATE NOCASE,
  InternalReference TEXT COLLATE NOCASE,
  Comment TEXT COLLATE NOCASE,
  LocationId TEXT COLLATE NOCASE REFERENCES Location (LocationId),
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId),
  JobId TEXT COLLATE NOCASE REFERENCES Job (JobId),
  AddressId TEXT COLLATE NOCASE,
  UserDefined1 TEXT COLLATE NOCASE,
  UserDefined2 TEXT COLLATE NOCASE,
  UserDefined3 TEXT COLLATE NOCASE,
  UserDefined4 TEXT COLLATE NOCASE,
  UserDefined5 TEXT COLLATE NOCASE,
  UserDefined6 TEXT COLLATE NOCASE,
  UserDefined7 TEXT COLLATE NOCASE,
  UserDefined8 TEXT COLLATE NOCASE,
  UserDefined9 TEXT COLLATE NOCASE,
  UserDefined10 TEXT COLLATE NOCASE,
  UserDefined11 TEXT COLLATE NOCASE,
  UserDefined12 TEXT COLLATE NOCASE,
  UserDefined13 TEXT COLLATE NOCASE,
  UserDefined14 TEXT COLLATE NOCASE,
  UserDefined15 TEXT COLLATE NOCASE,
  UserDefined16 TEXT COLLATE NOCASE,
  UserDefined17 TEXT COLLATE NOCASE,
  UserDefined18 TEXT COLLATE NOCASE,
  UserDefined19 TEXT COLLATE NOCASE,
  UserDefined20 TEXT COLLATE NOCASE
);

-- One line of a purchase order. A received line has a negative twin, so sums of Quantity over
-- like lines give what is still expected; TransactionLineId is set on the lines that a receipt
-- posted. EstimatedDate is the expected arrival.
-- Keys: as PurchaseOrder.
CREATE TABLE PurchaseOrderLine (
  PurchaseOrderLineId INTEGER PRIMARY KEY,
  PurchaseOrderId INTEGER NOT NULL REFERENCES PurchaseOrder (PurchaseOrderId),
  ItemId TEXT COLLATE NOCASE REFERENCES Item (ItemId),
  Description TEXT COLLATE NOCASE,
  LocationId TEXT COLLATE NOCASE REFERENCES Location (LocationId),
  DeptId TEXT COLLATE NOCASE REFERENCES Department (DeptId),
  Quantity DOUBLE NOT NULL DEFAULT 0,
  UnitPrice MONEY NOT NULL DEFAULT 0,
  Extension MONEY NOT NULL DEFAULT 0,
  Discount MONEY NOT NULL DEFAULT 0,
  DiscountRate DOUBLE NOT NULL DEFAULT 0,
  Value MONEY NOT NULL DEFAULT 0,
  TaxCategory TEXT COLLATE NOCASE,
  TaxValue MONEY NOT NULL DEFAULT 0,
  EstimatedDate DATE,
  TransactionLineId INTEGER REFERENCES TransactionLine (TransactionLineId)
);

-- ---------------------------------------------------------------------------------------------
-- Stock
-- ---------------------------------------------------------------------------------------------

-- One item. Inventory 0 for an item of which no stock is kept, otherwise the kind of stock
-- (1 plain, 2 serial numbered, 3 batch numbered). CostPrice and SellPrice1 include tax when
-- their tax-type column holds a code. SupplierId is the usual supplier. Unit is what one of the
-- item's quantity counts ("each", "m", "tin", "hour"), printed by the item lists and count sheets.
-- Keys: StockStatus, StockLevel, StockReorder, StockOnOrder, StockOnSalesOrders,
-- StockMovement, StocktakeVarianceReport, ItemSalesAnalysis, ItemJobAnalysis, JobAnalysis,
-- SalesAnalysisAR, ItemSalesSummary, ItemPurchaseAnalysis, ItemPurchaseSummary,
-- ItemSalesTrend, ItemPurchaseTrend, SalesTrendAR, PurchaseTrendAP, PurchaseOrder, ItemLog,
-- DocumentSC, TransactionListAR/AP (open lines); Items parameters and "Item" grouping.
-- Checked names: no Value, Quantity, Discount or TaxValue (bare in the open-batch lines'
-- join), no SerialNumber or DateProcess (bare in the stock status query and the serial number
-- pick-list), no JobCategoryId (bare in the analysis filters).
CREATE TABLE Item (
  ItemId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  PLU TEXT COLLATE NOCASE,
  ItemCategoryId TEXT COLLATE NOCASE REFERENCES ItemCategory (ItemCategoryId),
  ItemTypeId TEXT COLLATE NOCASE REFERENCES ItemType (ItemTypeId),
  SupplierId TEXT COLLATE NOCASE REFERENCES OtherParty (OtherPartyId),
  SupplierCode TEXT COLLATE NOCASE,
  Inventory INTEGER NOT NULL DEFAULT 0,
  Active BOOLEAN NOT NULL DEFAULT 1,
  CostPrice MONEY NOT NULL DEFAULT 0,
  CostTaxType TEXT COLLATE NOCASE,
  SellPrice1 MONEY NOT NULL DEFAULT 0,
  SellTaxType1 TEXT COLLATE NOCASE,
  UserDefined1 TEXT COLLATE NOCASE,
  UserDefined2 TEXT COLLATE NOCASE,
  UserDefined3 TEXT COLLATE NOCASE,
  UserDefined4 TEXT COLLATE NOCASE,
  UserDefined5 TEXT COLLATE NOCASE,
  UserDefined6 TEXT COLLATE NOCASE,
  UserDefined7 TEXT COLLATE NOCASE,
  UserDefined8 TEXT COLLATE NOCASE,
  UserDefined9 TEXT COLLATE NOCASE,
  UserDefined10 TEXT COLLATE NOCASE,
  UserDefined11 TEXT COLLATE NOCASE,
  UserDefined12 TEXT COLLATE NOCASE,
  UserDefined13 TEXT COLLATE NOCASE,
  UserDefined14 TEXT COLLATE NOCASE,
  UserDefined15 TEXT COLLATE NOCASE,
  UserDefined16 TEXT COLLATE NOCASE,
  UserDefined17 TEXT COLLATE NOCASE,
  UserDefined18 TEXT COLLATE NOCASE,
  UserDefined19 TEXT COLLATE NOCASE,
  UserDefined20 TEXT COLLATE NOCASE,
  Unit TEXT COLLATE NOCASE
);

-- Where an item is kept at a location, with its shelf and reorder levels.
-- Keys: StockStatus, StockLevel, StockReorder, StocktakeVarianceReport; Shelf parameter and
-- "Shelf" grouping.
-- Checked names: no DateProcess, SerialNumber, Quantity (bare in the stock status query).
CREATE TABLE ItemLocation (
  ItemId TEXT COLLATE NOCASE NOT NULL REFERENCES Item (ItemId),
  LocationId TEXT COLLATE NOCASE NOT NULL REFERENCES Location (LocationId),
  Shelf TEXT COLLATE NOCASE,
  MinReorder DOUBLE NOT NULL DEFAULT 0,
  MaxReorder DOUBLE NOT NULL DEFAULT 0,
  InUse BOOLEAN NOT NULL DEFAULT 1,
  PRIMARY KEY (ItemId, LocationId)
);

-- One count of a stocktake. Keys: StocktakeVarianceReport.
CREATE TABLE ItemStocktake (
  ItemId TEXT COLLATE NOCASE NOT NULL REFERENCES Item (ItemId),
  LocationId TEXT COLLATE NOCASE NOT NULL REFERENCES Location (LocationId),
  SerialNumber TEXT COLLATE NOCASE,
  Quantity DOUBLE NOT NULL DEFAULT 0
);

-- ---------------------------------------------------------------------------------------------
-- Fixed assets
-- ---------------------------------------------------------------------------------------------

-- One asset; ParentAssetId makes it a component of another. Status 1 On Order, 2 In Use,
-- 3 Available, 4 Disposed, 5 Scrapped. Purchased is the purchase amount. DepreciationBasis and
-- DepreciationRate (per cent), and their tax twins, are the asset's methods as the business
-- layer's Asset object gives them to the schedule's "Basis" columns. Basis codes: 0 or Null none;
-- 1 straight line "SL" (the rate of the cost a year); 2 diminishing value "DV" (the rate of the
-- book value at the start of the financial year, or at purchase in the year bought).
-- Keys: AssetDepreciationSchedule, AssetDeferredTaxSchedule, AssetFutureValueSchedule,
-- AssetPurchaseSummary, AssetDisposalSummary, AssetLog, DocumentFA; Assets and ParentAssets
-- parameters, "Asset" and "Parent Asset" groupings.
-- Checked names: no Value, TaxValue, Date, Type (bare in the asset transaction sub-selects).
CREATE TABLE Asset (
  AssetId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  SerialNumber TEXT COLLATE NOCASE,
  Status INTEGER NOT NULL DEFAULT 2,
  AssetCategoryId TEXT COLLATE NOCASE REFERENCES AssetCategory (AssetCategoryId),
  AssetSiteId TEXT COLLATE NOCASE REFERENCES AssetSite (AssetSiteId),
  AssetTypeId TEXT COLLATE NOCASE REFERENCES AssetType (AssetTypeId),
  BranchId TEXT COLLATE NOCASE REFERENCES Branch (BranchId),
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId),
  SupplierId TEXT COLLATE NOCASE REFERENCES OtherParty (OtherPartyId),
  ParentAssetId TEXT COLLATE NOCASE REFERENCES Asset (AssetId),
  PurchaseDate DATE,
  Purchased MONEY NOT NULL DEFAULT 0,
  DepreciationBasis INTEGER,
  DepreciationRate DOUBLE,
  DepreciationBasisTax INTEGER,
  DepreciationRateTax DOUBLE,
  WarrantyDate DATE,
  ReviewDate DATE,
  DisposalDate DATE,
  UserDefined1 TEXT COLLATE NOCASE,
  UserDefined2 TEXT COLLATE NOCASE,
  UserDefined3 TEXT COLLATE NOCASE,
  UserDefined4 TEXT COLLATE NOCASE,
  UserDefined5 TEXT COLLATE NOCASE,
  UserDefined6 TEXT COLLATE NOCASE,
  UserDefined7 TEXT COLLATE NOCASE,
  UserDefined8 TEXT COLLATE NOCASE,
  UserDefined9 TEXT COLLATE NOCASE,
  UserDefined10 TEXT COLLATE NOCASE,
  UserDefined11 TEXT COLLATE NOCASE,
  UserDefined12 TEXT COLLATE NOCASE,
  UserDefined13 TEXT COLLATE NOCASE,
  UserDefined14 TEXT COLLATE NOCASE,
  UserDefined15 TEXT COLLATE NOCASE,
  UserDefined16 TEXT COLLATE NOCASE,
  UserDefined17 TEXT COLLATE NOCASE,
  UserDefined18 TEXT COLLATE NOCASE,
  UserDefined19 TEXT COLLATE NOCASE,
  UserDefined20 TEXT COLLATE NOCASE
);

-- One movement of an asset; Value on the normal basis, TaxValue on the tax basis. Type: 10
-- purchase, 11 addition, 12 and 44 revaluation, 14 revaluation of cost, 20 21 23 24
-- depreciation, 30 31 gain or loss, 40-43 disposal.
-- Keys: AssetDepreciationSchedule, AssetDeferredTaxSchedule, AssetPurchaseSummary,
-- AssetDisposalSummary.
CREATE TABLE AssetTransaction (
  AssetTransactionId INTEGER PRIMARY KEY,
  AssetId TEXT COLLATE NOCASE NOT NULL REFERENCES Asset (AssetId),
  Type INTEGER NOT NULL,
  Date DATE NOT NULL,
  Value MONEY NOT NULL DEFAULT 0,
  TaxValue MONEY NOT NULL DEFAULT 0,
  Reference TEXT COLLATE NOCASE,
  Comment TEXT COLLATE NOCASE
);

-- ---------------------------------------------------------------------------------------------
-- Jobs
-- ---------------------------------------------------------------------------------------------

-- One job. Status is the status's name, as the job reports filter it: 'Open', 'Closed',
-- 'Costing', 'Completed', 'Hold', 'Template'.
-- Keys: JobSummary, JobStatusReport, JobAnalysis, ItemJobAnalysis, SalesAnalysisAR (job
-- grouping), JobInvoiceList, JobLog, DocumentJO; Jobs parameter and "Job" grouping.
-- Checked names: JobContact has no LocationId, EmployeeId or Description, which the job
-- summary names bare in its join with JobContact.
CREATE TABLE Job (
  JobId TEXT COLLATE NOCASE PRIMARY KEY,
  Description TEXT COLLATE NOCASE,
  Status TEXT COLLATE NOCASE,
  JobCategoryId TEXT COLLATE NOCASE REFERENCES JobCategory (JobCategoryId),
  LocationId TEXT COLLATE NOCASE REFERENCES Location (LocationId),
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId),
  OrderNo TEXT COLLATE NOCASE,
  DateOpened DATE,
  DateClosed DATE,
  UserDefined1 TEXT COLLATE NOCASE,
  UserDefined2 TEXT COLLATE NOCASE,
  UserDefined3 TEXT COLLATE NOCASE,
  UserDefined4 TEXT COLLATE NOCASE,
  UserDefined5 TEXT COLLATE NOCASE,
  UserDefined6 TEXT COLLATE NOCASE,
  UserDefined7 TEXT COLLATE NOCASE,
  UserDefined8 TEXT COLLATE NOCASE,
  UserDefined9 TEXT COLLATE NOCASE,
  UserDefined10 TEXT COLLATE NOCASE,
  UserDefined11 TEXT COLLATE NOCASE,
  UserDefined12 TEXT COLLATE NOCASE,
  UserDefined13 TEXT COLLATE NOCASE,
  UserDefined14 TEXT COLLATE NOCASE,
  UserDefined15 TEXT COLLATE NOCASE,
  UserDefined16 TEXT COLLATE NOCASE,
  UserDefined17 TEXT COLLATE NOCASE,
  UserDefined18 TEXT COLLATE NOCASE,
  UserDefined19 TEXT COLLATE NOCASE,
  UserDefined20 TEXT COLLATE NOCASE
);

-- The contacts of a job; Charge marks the one the job is charged to.
-- Keys: JobSummary, JobStatusReport, JobAnalysis, ItemJobAnalysis, DocumentJO.
CREATE TABLE JobContact (
  JobId TEXT COLLATE NOCASE NOT NULL REFERENCES Job (JobId),
  OtherPartyId TEXT COLLATE NOCASE NOT NULL REFERENCES OtherParty (OtherPartyId),
  Charge BOOLEAN NOT NULL DEFAULT 0,
  PRIMARY KEY (JobId, OtherPartyId)
);

-- A job's budget, one row a job: what it is to charge, and what it is to cost in stock, supplier
-- bills, other costs (labour) and disbursements. A job with no row has a budget of nothing.
-- Keys: JobSummary (the Budget and Variance lines, through the Job object).
CREATE TABLE JobBudget (
  JobId TEXT COLLATE NOCASE PRIMARY KEY REFERENCES Job (JobId),
  Charges MONEY NOT NULL DEFAULT 0,
  ItemCosts MONEY NOT NULL DEFAULT 0,
  Purchases MONEY NOT NULL DEFAULT 0,
  OtherCosts MONEY NOT NULL DEFAULT 0,
  Disbursements MONEY NOT NULL DEFAULT 0
);

-- ---------------------------------------------------------------------------------------------
-- Logs: notes kept on parties, items, jobs and assets
-- ---------------------------------------------------------------------------------------------

-- Keys: OtherPartyLog, LogAR, LogAP.
-- Checked names: the owners' query names Date, ActionDate, CompleteDate bare, so OtherParty,
-- Contact and Employee have none of them.
CREATE TABLE OtherPartyLog (
  OtherPartyId TEXT COLLATE NOCASE NOT NULL REFERENCES OtherParty (OtherPartyId),
  Date DATE NOT NULL,
  Subject TEXT COLLATE NOCASE,
  ActionDate DATE,
  CompleteDate DATE,
  Notes TEXT COLLATE NOCASE,
  Document TEXT COLLATE NOCASE,
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId),
  ContactId INTEGER REFERENCES Contact (ContactId)
);

-- Keys: ItemLog.
CREATE TABLE ItemLog (
  ItemId TEXT COLLATE NOCASE NOT NULL REFERENCES Item (ItemId),
  Date DATE NOT NULL,
  Subject TEXT COLLATE NOCASE,
  ActionDate DATE,
  CompleteDate DATE,
  Notes TEXT COLLATE NOCASE,
  Document TEXT COLLATE NOCASE,
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId)
);

-- Keys: JobLog.
CREATE TABLE JobLog (
  JobId TEXT COLLATE NOCASE NOT NULL REFERENCES Job (JobId),
  Date DATE NOT NULL,
  Subject TEXT COLLATE NOCASE,
  ActionDate DATE,
  CompleteDate DATE,
  Notes TEXT COLLATE NOCASE,
  Document TEXT COLLATE NOCASE,
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId)
);

-- Keys: AssetLog.
CREATE TABLE AssetLog (
  AssetId TEXT COLLATE NOCASE NOT NULL REFERENCES Asset (AssetId),
  Date DATE NOT NULL,
  Subject TEXT COLLATE NOCASE,
  ActionDate DATE,
  CompleteDate DATE,
  Notes TEXT COLLATE NOCASE,
  Document TEXT COLLATE NOCASE,
  EmployeeId TEXT COLLATE NOCASE REFERENCES Employee (EmployeeId)
);

-- ---------------------------------------------------------------------------------------------
-- Indexes, each for the queries the reports run
-- ---------------------------------------------------------------------------------------------

-- The statements' figures by account, in one pass each: SumByAccount and StatementFigures
-- (Sum(Value) by AccountId over a date range, Sum(Value+TaxValue) where the statement is tax
-- inclusive), the trial balance's opening, debits and credits,
-- its retained earnings and footer cross-check (Sum(Value) before a date), the five-year
-- summary's years without the year-end lines (Type Is Null), the branch and department splits
-- and group filters (BranchId, DeptId), GeneralLedger's lines of one account in date
-- order. The index carries every column these read, so SQLite never visits the table for them:
-- with statistics it seeks each account's date range (a skip-scan over AccountId), without them
-- it reads the index once in account order. Either way the grouping needs no sort.
CREATE INDEX glTransaction_AccountDate ON glTransaction (AccountId, Date, Value, TaxValue, Type, BranchId, DeptId);
-- Bank entry to its lines: cheque amounts and stubs, the reconciliation's split lines, the
-- GST cash basis join, the cash flow's opening bank balance.
CREATE INDEX glTransaction_Bank ON glTransaction (glBankTransactionId, glBankTransactionSequence);
-- Branch and department groups of the statements, returns and management report: the distinct
-- values come from this index alone, without reading the ledger's lines, and Date lets the
-- groups of one period (GROUP BY BranchId, DeptId over a date range) come from it too.
CREATE INDEX glTransaction_BranchDept ON glTransaction (BranchId, DeptId, Date);
-- GST and tax detail returns: lines of one filed period, or the unfiled ones by side.
CREATE INDEX glTransaction_TaxPeriod ON glTransaction (TaxPeriodId, TaxIO);
-- The account side of every join of the ledger's lines to the chart (statement figures,
-- retained earnings, the management report's ratios): the type and ratio of a line's account
-- without reading the chart's wide rows, once for each line.
CREATE INDEX Account_TypeRatio ON Account (AccountId, Type, Ratio);
-- Budgets summed by account over a month range.
CREATE INDEX glBudget_AccountMonth ON glBudget (AccountId, Month);
-- Cheques by payee.
CREATE INDEX glBankTransaction_OtherParty ON glBankTransaction (OtherPartyId);
-- A bank's entries on one statement page, or those on none up to a date: the reconciliation.
CREATE INDEX glBankTransaction_BankPage ON glBankTransaction (BankId, StmtPage, Date);

-- The per-party sub-selects of the ledger, aged overdue, statement and log reports:
-- OtherPartyId = ? AND Type Between ? AND a DateProcess range, summing Value or ValueRemaining.
-- The index covers those sums, so a ledger of many parties never reads the table for them.
CREATE INDEX Transactions_PartyTypeProcess ON Transactions (OtherPartyId, Type, DateProcess, Value, ValueRemaining);
-- The same by the document date: statements, the outstanding ledger, ageing by document date,
-- carrying the sums as the index above does. The aged reports' column sub-selects (a party's
-- documents of a side before a date, each aged by its due date, or its processing date where it
-- has none) read DatePayment and DateProcess too, so they are carried: AgedOverdueAR on the
-- scale-20 company reads its parties in 2 s from the index against 13 s through the table.
CREATE INDEX Transactions_PartyTypeDate ON Transactions (OtherPartyId, Type, Date, Value, ValueRemaining, DatePayment, DateProcess);
-- Overdue lists, ledger overdue range and statements' ageing: open items by due date.
CREATE INDEX Transactions_PartyDue ON Transactions (OtherPartyId, DatePayment);
-- Control report: this month's and future transactions of a side, whatever the party.
CREATE INDEX Transactions_Process ON Transactions (DateProcess);
-- The transaction type cards: the documents of a range of dates counted and summed by type, and
-- each type's first and last dates, from the index alone. Led by the date, not the type: an
-- index led by the type would hold the order of every GROUP BY TransactionTypeId (the control
-- report's), which then sorts too few rows to want it.
CREATE INDEX Transactions_DateType ON Transactions (Date, TransactionTypeId, Value);
-- The cheque stub finds the payment behind a bank entry.
CREATE INDEX Transactions_Bank ON Transactions (glBankTransactionId);
-- Analysis by job.
CREATE INDEX Transactions_Job ON Transactions (JobId);
-- Document lines, line sums of a document, the transaction list's lines.
CREATE INDEX TransactionLine_Transaction ON TransactionLine (TransactionId);
-- Stock on hand as at a date, movement, stocktake on hand, on-hand under an item group: the
-- quantity and value of an item's lines to a date, by location, from the index alone.
CREATE INDEX TransactionLine_ItemDate ON TransactionLine (ItemId, DateProcess, LocationId, Quantity, ItemCost);
-- Analysis, summary and trend keys read the lines of a period by type.
CREATE INDEX TransactionLine_ProcessType ON TransactionLine (DateProcess, Type);
-- Allocations from either side: outstanding items, back dating, allocation details,
-- remittance lines and cheque stubs.
CREATE INDEX TransactionAllocation_Id1 ON TransactionAllocation (TransactionId1);
CREATE INDEX TransactionAllocation_Id2 ON TransactionAllocation (TransactionId2);

-- Open batches: header to documents to lines; job documents of a job.
CREATE INDEX acBatchTransaction_Batch ON acBatchTransaction (acBatchSId);
CREATE INDEX acBatchTransaction_Job ON acBatchTransaction (JobId);
CREATE INDEX acBatchTransactionLine_Transaction ON acBatchTransactionLine (acBatchTransactionId);
-- Purchase orders: lines of an order, on order by item and location, orders of a job.
CREATE INDEX PurchaseOrderLine_Order ON PurchaseOrderLine (PurchaseOrderId);
CREATE INDEX PurchaseOrderLine_ItemLocation ON PurchaseOrderLine (ItemId, LocationId);
CREATE INDEX PurchaseOrder_Job ON PurchaseOrder (JobId);
-- The messages of one process's runs, latest run first: the import, commit and purge lists.
CREATE INDEX ImportMessage_ProcessRun ON ImportMessage (Process, RunDate);
-- Stocktake counts joined to item locations.
CREATE INDEX ItemStocktake_ItemLocation ON ItemStocktake (ItemId, LocationId);

-- Asset sums and walks: CostPrice, Closing, purchase and disposal sums by asset, type, date.
CREATE INDEX AssetTransaction_AssetTypeDate ON AssetTransaction (AssetId, Type, Date);
CREATE INDEX Asset_Parent ON Asset (ParentAssetId);

-- Items of a supplier (reorder, supplier groupings); jobs charged to a party.
CREATE INDEX Item_Supplier ON Item (SupplierId);
-- The stock level and reorder queries group every stock line by item code and description:
-- read in this order, the items come out grouped and the lines need no sort (1.2 million at
-- scale 20: the grouped query went from 0.9 s to 0.35 s).
CREATE INDEX Item_CodeDescription ON Item (ItemId, Description);
CREATE INDEX JobContact_OtherParty ON JobContact (OtherPartyId);

-- Notes of one owner in date order.
CREATE INDEX OtherPartyLog_OwnerDate ON OtherPartyLog (OtherPartyId, Date);
CREATE INDEX ItemLog_OwnerDate ON ItemLog (ItemId, Date);
CREATE INDEX JobLog_OwnerDate ON JobLog (JobId, Date);
CREATE INDEX AssetLog_OwnerDate ON AssetLog (AssetId, Date);
