UPDATE inventory SET bPTOModel = 1 WHERE cInvCode = 'P1'
GO
INSERT INTO Warehouse (cWhCode, cWhValueStyle, bInCost) VALUES ('07', N'全月平均法', 0)
GO
INSERT INTO Warehouse (cWhCode) VALUES ('08')
GO
INSERT INTO inventory (cInvCode, bService) VALUES ('S1', 1)
GO
INSERT INTO inventory (cInvCode, bInvType) VALUES ('D1', 1)
