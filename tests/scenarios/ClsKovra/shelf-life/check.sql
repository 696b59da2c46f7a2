SELECT dMadeDateIA, dVDateIA FROM Ia_subsidiary ORDER BY AutoID
