INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'ca', N'dCAFirstDate', N'2023-01-01'), (N'ca', N'bRLOrST', N'1')
GO
INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 1)
