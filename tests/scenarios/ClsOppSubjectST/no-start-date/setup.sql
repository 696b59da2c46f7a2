UPDATE AccInformation SET cValue = NULL WHERE cSysID = N'ca' AND cName = N'dCAFirstDate'
