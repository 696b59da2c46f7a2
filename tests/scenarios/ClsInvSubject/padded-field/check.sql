select cWhCode, cInvCCode, cInvCode, cInvHead, cDifHead, cOutHead, cEnDispHead, czyHead, iYear from IA_HeadSet order by AutoID
