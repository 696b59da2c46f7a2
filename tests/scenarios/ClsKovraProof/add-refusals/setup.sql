INSERT INTO IA_DecReady (ID, cDecCode) VALUES (5, N'DJ000')
GO
INSERT INTO IA_DecReadys (ID, cInvCode) VALUES (5, N'1001')
GO
INSERT INTO CurrentStock (cWhCode, cInvCode, iQuantity) VALUES (N'01', N'1001', 12), (N'01', N'1002', 3)
GO
INSERT INTO ItemBudget (cItem_class, cItemCode, iBudget) VALUES (N'97', N'RD01', 100)
