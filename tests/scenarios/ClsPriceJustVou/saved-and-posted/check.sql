SELECT cVouType, cVouCode, iYear, iMonth, bRdFlag, cWhCode, cInvCode, iAInPrice, iCreditDifCost, cMaker, cAccounter, dKeepDate FROM Ia_subsidiary WHERE cVouType = N'22' ORDER BY AutoID
