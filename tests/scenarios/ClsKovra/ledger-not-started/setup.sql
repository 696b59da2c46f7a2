DELETE FROM AccInformation WHERE cName = N'dIAStartDate'
