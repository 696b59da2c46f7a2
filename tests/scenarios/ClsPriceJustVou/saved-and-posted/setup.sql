UPDATE AccInformation SET cValue = N'按仓库核算' WHERE cSysID = N'IA' AND cName = N'cValueStyle'
GO
INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'ca', N'dCAFirstDate', N'2023-01-01'), (N'ca', N'bRLOrST', N'1')
