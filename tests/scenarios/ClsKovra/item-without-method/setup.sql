UPDATE AccInformation SET cValue = N'按存货核算' WHERE cName = N'cValueStyle'
GO
UPDATE inventory SET cValueType = NULL WHERE cInvCode = 'A1'
