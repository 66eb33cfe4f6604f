-- One sale of a million million in June 2025: past every scale of the management report.
INSERT INTO glTransaction (AccountId, Date, Value, BranchId, DeptId, Type) VALUES
  ('1000','2025-06-15',10000000000000000,NULL,NULL,NULL),
  ('4009','2025-06-15',-10000000000000000,NULL,NULL,NULL);
