INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType) VALUES (2023, 1, '01')
