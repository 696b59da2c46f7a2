INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType) VALUES (2023, 1, '24')
GO
INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, cBusType, iAOutQuantity) VALUES (2023, 1, '11', N'假退料', 3)
GO
INSERT INTO CostJustVouch (ID, dCJVDate) VALUES (1, '2022-12-31')
