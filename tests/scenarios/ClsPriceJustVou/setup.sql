INSERT INTO AccInformation (cSysID, cName, cValue) VALUES
(N'AA', N'iStrsQuanDecDgt', N'2'),
(N'AA', N'iStrsPriDecDgt', N'4'),
(N'IA', N'cValueStyle', N'按存货核算')
GO
INSERT INTO GL_mend (iyear, iperiod, iYPeriod, bflag_IA) VALUES (2022, 12, 202212, 1), (2023, 1, 202301, 0), (2023, 2, 202302, 0)
GO
INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES
(N'001', 2023, 1, '2023-01-01', '2023-01-31'),
(N'001', 2023, 2, '2023-02-01', '2023-02-28')
GO
INSERT INTO Warehouse (cWhCode, cWhName, cDepCode, cWhValueStyle) VALUES
(N'01', N'原材料库', N'03', N'全月平均法'),
(N'03', N'外购件库', N'03', N'计划价法'),
(N'04', N'零售商品库', N'0401', N'售价法')
GO
INSERT INTO inventory (cInvCode, cInvName, cValueType, iInvRCost) VALUES
(N'1004', N'深沟球轴承', N'计划价法', 25),
(N'1007', N'螺栓', N'计划价法', 0.5)
GO
INSERT INTO InvCheckFreeIA870 (cInvCode, fInvRCost) VALUES (N'1004', 25), (N'1007', 0.5)
GO
INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, dVouDate, bRdFlag, cWhCode, cInvCode, iAInQuantity, iAInPrice) VALUES
(2023, 0, N'34', '2022-12-31', 1, N'03', N'1004', 100, 2500),
(2023, 0, N'34', '2022-12-31', 1, N'04', N'1004', 8, 200),
(2023, 0, N'34', '2022-12-31', 1, N'03', N'1007', 4000, 2000)
