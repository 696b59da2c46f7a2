INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'AA', N'cSysVersion', N'商业')
GO
INSERT INTO CostJustVouch (ID, dCJVDate) VALUES (1, '2023-01-01')
