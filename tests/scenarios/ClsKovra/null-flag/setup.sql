UPDATE inventory SET bInvQuality = NULL WHERE cInvCode = 'A1'
