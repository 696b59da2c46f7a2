select cRdCode, cInvcCode, cInvCode, cDepCode, citem_class, citemcode, cOppHead, cEstHead, cProcessHead, cOPriceCode, cOTaxRefundCode, iYear from IA_OppHead order by AutoID
