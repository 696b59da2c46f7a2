INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'bPriceAdjLocked', N'1')
