INSERT INTO Warehouse (cWhCode, cWhName, cWhValueStyle) VALUES (N'01', N'原料仓', N'移动平均法'), (N'02', N'成品仓', N'先进先出法')
GO
INSERT INTO inventoryclass (cInvCCode, cInvCName, bInvCEnd) VALUES (N'01', N'原材料', 0), (N'0101', N'钢材', 1)
GO
INSERT INTO inventory (cInvCode, cInvName, bService) VALUES (N'1001', N'冷轧钢板', 0), (N'1002', N'轴承', 0), (N'9001', N'运输费', 1)
GO
INSERT INTO code (iyear, ccode, bend) VALUES
(2023, N'1401', 1), (2023, N'1402', 1), (2023, N'1403', 0), (2022, N'1412', 1)
