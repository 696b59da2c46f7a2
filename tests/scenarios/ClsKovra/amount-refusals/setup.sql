UPDATE inventory SET bTrack = 1 WHERE cInvCode = 'A1'
GO
INSERT INTO inventory (cInvCode, iInvRCost) VALUES ('N1', -1)
