UPDATE inventory SET bFree1 = 1, bFree3 = 1 WHERE cInvCode = 'P1'
GO
INSERT INTO InvCheckFreeIA870 (cInvCode, cFree1, fInvRCost) VALUES ('P1', N'红', 4)
