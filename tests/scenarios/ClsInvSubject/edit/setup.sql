INSERT INTO IA_HeadSet (cWhCode, cInvCode, cInvHead, iYear) VALUES (N'01', N'1001', N'1402', 2023), (N'02', NULL, N'1402', 2023)
