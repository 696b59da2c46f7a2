UPDATE inventory SET bInvQuality = 1, bInvBatch = 1 WHERE cInvCode = 'A1'
