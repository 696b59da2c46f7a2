SELECT AutoID FROM Ia_subsidiary
