-- The company of tax.sql with no open tax period in its settings.
DELETE FROM CompanySetting WHERE Section='Tax' AND Key='PeriodStart';
