-- The system database, shared by every account: the calendar of accounting periods.
CREATE TABLE QxSystem..UA_Period (
    cAcc_ID nvarchar(10) NOT NULL,
    iYear smallint NOT NULL,
    iId tinyint NOT NULL,
    dBegin datetime NULL,
    dEnd datetime NULL,
    CONSTRAINT PK_UA_Period PRIMARY KEY (cAcc_ID, iYear, iId)
)
GO
