SELECT cVouType, iMassDateIA, dMadeDateIA, cBatchIA, dVouDate, cFree2 FROM Ia_subsidiary ORDER BY AutoID
