INSERT INTO IA_OppHead (cRdCode, cOppHead, iYear) VALUES (N'1', N'1401', 2023), (N'101', N'1401', 2022)
