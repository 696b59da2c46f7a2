INSERT INTO IA_DecReady (ID, cDecCode) VALUES (5, N'DJ001'), (6, N'DJ002'), (7, N'DJ003')
GO
INSERT INTO IA_DecReadys (ID, cInvCode) VALUES (5, N'1001'), (6, N'1002'), (7, N'1003')
GO
INSERT INTO CurrentStock (cWhCode, cInvCode, iQuantity) VALUES (N'01', N'1002', 3)
