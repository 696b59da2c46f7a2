INSERT INTO IA_HeadSet (cWhCode, cInvHead, iYear) VALUES (N'01', N'1401', 2023), (N'02', N'1401', 2022)
