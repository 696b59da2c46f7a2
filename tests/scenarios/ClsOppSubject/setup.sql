INSERT INTO rd_style (cRdCode, cRdName, bRdEnd) VALUES (N'1', N'入库', 0), (N'101', N'采购入库', 1)
GO
INSERT INTO inventoryclass (cInvCCode, cInvCName, bInvCEnd) VALUES (N'01', N'原材料', 0), (N'0101', N'钢材', 1)
GO
INSERT INTO inventory (cInvCode, cInvName, bService) VALUES (N'1001', N'冷轧钢板', 0), (N'9001', N'运输费', 1)
GO
INSERT INTO department (cDepCode, cDepName, bDepEnd) VALUES (N'02', N'生产中心', 0), (N'0201', N'一车间', 1)
GO
INSERT INTO fitem (citem_class, citem_name, ctable) VALUES (N'97', N'研发项目', N'fitemss97')
GO
INSERT INTO fitemss97 (citemcode, citemname) VALUES (N'RD01', N'高速主轴研制')
GO
INSERT INTO code (iyear, ccode, bend) VALUES
(2023, N'1401', 1), (2023, N'1402', 1), (2023, N'1403', 0), (2022, N'1412', 1)
