UPDATE inventory SET bInvQuality = 1 WHERE cInvCode = 'A1'
