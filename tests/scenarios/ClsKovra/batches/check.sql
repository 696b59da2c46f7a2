SELECT cWhCode, cBatchIA FROM Ia_subsidiary ORDER BY AutoID
