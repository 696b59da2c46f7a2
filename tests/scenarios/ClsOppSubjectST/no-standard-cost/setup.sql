UPDATE AccInformation SET cValue = N'0' WHERE cSysID = N'ca' AND cName = N'bRLOrST'
GO
INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 1)
