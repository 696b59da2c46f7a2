SELECT iYear, iMonth, cVouType, bRdFlag, cWhCode, cInvCode, dVouDate, cMemo, iAInQuantity, iInCost, iAInPrice, iDebitDifCost, iCreditDifCost, cBusType FROM Ia_subsidiary ORDER BY AutoID
