SELECT AutoID FROM Ia_subsidiary WHERE cBusType = 'EAI'
