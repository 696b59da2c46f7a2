UPDATE inventory SET bInvBatch = 1, bCheckBatch = 1 WHERE cInvCode = 'A1'
