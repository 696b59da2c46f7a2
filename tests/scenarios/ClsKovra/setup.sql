INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'dIAStartDate', N'2023-01-01')
GO
INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'cValueStyle', N'按仓库核算')
GO
INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES ('001', 2023, 1, '2023-01-01', '2023-01-31')
GO
INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES ('01', N'全月平均法')
GO
INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES ('02', N'计划价法')
GO
INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES ('03', N'售价法')
GO
INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES ('04', N'个别计价法')
GO
INSERT INTO inventory (cInvCode, cInvName, cValueType) VALUES ('A1', N'钢板', N'移动平均法')
GO
INSERT INTO inventory (cInvCode, cInvName, cValueType, iInvRCost) VALUES ('P1', N'轴承', N'计划价法', 2.5)
