select cRdCode, cInvcCode, cInvCode, cDepCode, citem_class, citemcode, cOppHead, cEstHead, iYear from IA_OppHead order by AutoID
