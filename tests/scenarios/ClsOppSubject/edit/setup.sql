INSERT INTO IA_OppHead (cRdCode, cInvcCode, cDepCode, cOppHead, cEstHead, iYear) VALUES
(N'101', N'', NULL, N'1402', N'1402', 2023), (N'101', N'0101', NULL, N'1402', NULL, 2023)
