INSERT INTO IA_HeadSet (cWhCode, cInvCCode, cInvHead, iYear) VALUES (N'01', N'0101', N'1401', 2023), (N'02', NULL, N'1401', 2022)
