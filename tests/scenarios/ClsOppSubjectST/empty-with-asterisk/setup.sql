INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'ca', N'dCAFirstDate', N'2023-01-01'), (N'ca', N'bRLOrST', N'1')
GO
INSERT INTO IA_OppHead (cRdCode, cOppHead, iYear) VALUES (N'1', N'1401', 2023), (N'101', N'1401', 2022)
