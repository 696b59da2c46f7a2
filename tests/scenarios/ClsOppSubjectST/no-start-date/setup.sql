INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'ca', N'dCAFirstDate', NULL), (N'ca', N'bRLOrST', N'1')
