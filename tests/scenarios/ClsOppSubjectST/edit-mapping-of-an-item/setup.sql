INSERT INTO IA_OppHead (cRdCode, cInvcCode, cInvCode, cDepCode, citem_class, citemcode, cOppHead, cEstHead, iYear) VALUES
(N'101', N'0101', N'1001', N'0201', N'97', N'RD01', N'1401', N'1402', 2023), (N'101', N'0101', NULL, NULL, NULL, NULL, N'1401', NULL, 2023)
