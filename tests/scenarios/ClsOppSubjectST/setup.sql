INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'ca', N'dCAFirstDate', N'2023-01-01'), (N'ca', N'bRLOrST', N'1')
GO
INSERT INTO rd_style (cRdCode, cRdName, bRdEnd) VALUES (N'1', N'入库', 0), (N'101', N'采购入库', 1)
GO
INSERT INTO inventoryclass (cInvCCode, cInvCName, bInvCEnd) VALUES (N'01', N'原材料', 0), (N'0101', N'钢材', 1)
GO
INSERT INTO department (cDepCode, cDepName, bDepEnd) VALUES (N'02', N'生产中心', 0), (N'0201', N'一车间', 1)
GO
INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'5301', 0), (2022, N'530199', 1)
GO
INSERT INTO code (iyear, ccode, bend) VALUES
(2023, N'530101', 1), (2023, N'530102', 1), (2023, N'530103', 1), (2023, N'530104', 1), (2023, N'530105', 1),
(2023, N'530106', 1), (2023, N'530107', 1), (2023, N'530108', 1), (2023, N'530109', 1), (2023, N'530110', 1),
(2023, N'530111', 1), (2023, N'530112', 1), (2023, N'530113', 1), (2023, N'530114', 1), (2023, N'530115', 1),
(2023, N'530116', 1), (2023, N'530117', 1), (2023, N'530118', 1), (2023, N'530119', 1), (2023, N'530120', 1),
(2023, N'530121', 1)
