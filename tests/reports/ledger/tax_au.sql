-- The company of tax.sql made Australian: its returns print the BAS, which calls the payments
-- basis "Cash".
UPDATE CompanySetting SET Value='AU' WHERE Section='Company' AND Key='Country';
UPDATE CompanySetting SET Value='Cash' WHERE Section='Tax' AND Key='BasisOutput';
