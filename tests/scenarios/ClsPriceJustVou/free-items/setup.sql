UPDATE AccInformation SET cValue = N'按部门核算' WHERE cSysID = N'IA' AND cName = N'cValueStyle'
GO
INSERT INTO inventory (cInvCode, cInvName, cValueType, iInvRCost, bFree1, bCheckFree1) VALUES (N'1005', N'控制器', N'计划价法', 400, 1, 1)
GO
INSERT INTO InvCheckFreeIA870 (cInvCode, cFree1, fInvRCost) VALUES (N'1005', N'国产', 380), (N'1005', N'进口', 520)
GO
INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, dVouDate, bRdFlag, cWhCode, cInvCode, cFree1, iAInQuantity, iAInPrice) VALUES
(2023, 0, N'34', '2022-12-31', 1, N'03', N'1005', N'国产', 10, 3800),
(2023, 0, N'34', '2022-12-31', 1, N'03', N'1005', N'进口', 3, 1560)
