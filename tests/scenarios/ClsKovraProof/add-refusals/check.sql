SELECT A.ID, A.cDecCode, B.cInvCode FROM IA_DecReady A LEFT JOIN IA_DecReadys B ON A.ID = B.ID
