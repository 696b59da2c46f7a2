INSERT INTO Warehouse (cWhCode, cWhName, cWhValueStyle) VALUES (N'01', N'原料仓', N'移动平均法')
GO
INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'1401', 1)
