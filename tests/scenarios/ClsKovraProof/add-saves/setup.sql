INSERT INTO CurrentStock (cWhCode, cInvCode, iQuantity) VALUES (N'01', N'1001', 12)
