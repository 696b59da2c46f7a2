SELECT cWhCode, cInvCode, iAInQuantity, iInCost, iAInPrice, iDebitDifCost, iCreditDifCost FROM Ia_subsidiary ORDER BY AutoID
