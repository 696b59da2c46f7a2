INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'bPostLocked', N'1')
