-- The account database: every host table and view that the import classes and the host components use.
-- Flags left out of an insert are 0, except those that mark the usual case (leaf, takes part in costing).

-- Options, one row each; cDefault stands where cValue is Null.
CREATE TABLE AccInformation (
    cSysID nvarchar(10) NOT NULL,
    cName nvarchar(60) NOT NULL,
    cCaption nvarchar(60) NULL,
    cValue nvarchar(255) NULL,
    cDefault nvarchar(255) NULL,
    CONSTRAINT PK_AccInformation PRIMARY KEY (cSysID, cName)
)
GO
-- Closing flags of the modules, one row an accounting period; period 0 is the opening.
CREATE TABLE GL_mend (
    iyear smallint NOT NULL,
    iperiod tinyint NOT NULL,
    iYPeriod int NULL,
    bflag bit NULL DEFAULT 0,
    bflag_AP bit NULL DEFAULT 0,
    bflag_AR bit NULL DEFAULT 0,
    bflag_CA bit NULL DEFAULT 0,
    bflag_IA bit NULL DEFAULT 0,
    bflag_PU bit NULL DEFAULT 0,
    bflag_SA bit NULL DEFAULT 0,
    bflag_ST bit NULL DEFAULT 0,
    CONSTRAINT PK_GL_mend PRIMARY KEY (iyear, iperiod)
)
GO
CREATE TABLE code (
    iyear smallint NOT NULL,
    ccode nvarchar(40) NOT NULL,
    ccode_name nvarchar(60) NULL,
    igrade tinyint NULL,
    bproperty bit NULL DEFAULT 1,
    bend bit NULL DEFAULT 1,
    CONSTRAINT PK_code PRIMARY KEY (ccode, iyear)
)
GO
CREATE TABLE department (
    cDepCode nvarchar(12) NOT NULL,
    cDepName nvarchar(60) NULL,
    iDepGrade tinyint NULL,
    bDepEnd bit NULL DEFAULT 1,
    CONSTRAINT PK_department PRIMARY KEY (cDepCode)
)
GO
CREATE TABLE rd_style (
    cRdCode nvarchar(12) NOT NULL,
    cRdName nvarchar(60) NULL,
    bRdFlag bit NULL DEFAULT 0,
    iRdGrade tinyint NULL,
    bRdEnd bit NULL DEFAULT 1,
    CONSTRAINT PK_rd_style PRIMARY KEY (cRdCode)
)
GO
-- Project classes; ctable names the table that holds the class's projects.
CREATE TABLE fitem (
    citem_class nvarchar(10) NOT NULL,
    citem_name nvarchar(60) NULL,
    ctable nvarchar(60) NULL,
    CONSTRAINT PK_fitem PRIMARY KEY (citem_class)
)
GO
-- The projects of class 97. Every further class brings a table of this form; class tables may also be inventory.
CREATE TABLE fitemss97 (
    citemcode nvarchar(60) NOT NULL,
    citemname nvarchar(255) NULL,
    bclose bit NULL DEFAULT 0,
    CONSTRAINT PK_fitemss97 PRIMARY KEY (citemcode)
)
GO
CREATE TABLE Customer (
    cCusCode nvarchar(20) NOT NULL,
    cCusName nvarchar(120) NULL,
    cCusAddress nvarchar(255) NULL,
    cExch_Name nvarchar(20) NULL,
    cMemo nvarchar(255) NULL,
    CONSTRAINT PK_Customer PRIMARY KEY (cCusCode)
)
GO
CREATE TABLE inventoryclass (
    cInvCCode nvarchar(12) NOT NULL,
    cInvCName nvarchar(60) NULL,
    iInvCGrade tinyint NULL,
    bInvCEnd bit NULL DEFAULT 1,
    CONSTRAINT PK_inventoryclass PRIMARY KEY (cInvCCode)
)
GO
CREATE TABLE Warehouse (
    cWhCode nvarchar(10) NOT NULL,
    cWhName nvarchar(60) NULL,
    cDepCode nvarchar(12) NULL,
    cWhValueStyle nvarchar(20) NULL,
    bInCost bit NULL DEFAULT 1,
    CONSTRAINT PK_Warehouse PRIMARY KEY (cWhCode)
)
GO
-- iInvRCost is the planned or the retail price.
CREATE TABLE inventory (
    cInvCode nvarchar(60) NOT NULL,
    cInvName nvarchar(255) NULL,
    cInvStd nvarchar(255) NULL,
    cInvCCode nvarchar(12) NULL,
    cInvUnit nvarchar(20) NULL,
    cValueType nvarchar(20) NULL,
    iInvRCost float NULL,
    bService bit NULL DEFAULT 0,
    bInvType bit NULL DEFAULT 0,
    bPTOModel bit NULL DEFAULT 0,
    bInvBatch bit NULL DEFAULT 0,
    bInvQuality bit NULL DEFAULT 0,
    bCheckBatch bit NULL DEFAULT 0,
    bTrack bit NULL DEFAULT 0,
    iMassDate int NULL,
    bFree1 bit NULL DEFAULT 0,
    bFree2 bit NULL DEFAULT 0,
    bFree3 bit NULL DEFAULT 0,
    bFree4 bit NULL DEFAULT 0,
    bFree5 bit NULL DEFAULT 0,
    bFree6 bit NULL DEFAULT 0,
    bFree7 bit NULL DEFAULT 0,
    bFree8 bit NULL DEFAULT 0,
    bFree9 bit NULL DEFAULT 0,
    bFree10 bit NULL DEFAULT 0,
    bCheckFree1 bit NULL DEFAULT 0,
    bCheckFree2 bit NULL DEFAULT 0,
    bCheckFree3 bit NULL DEFAULT 0,
    bCheckFree4 bit NULL DEFAULT 0,
    bCheckFree5 bit NULL DEFAULT 0,
    bCheckFree6 bit NULL DEFAULT 0,
    bCheckFree7 bit NULL DEFAULT 0,
    bCheckFree8 bit NULL DEFAULT 0,
    bCheckFree9 bit NULL DEFAULT 0,
    bCheckFree10 bit NULL DEFAULT 0,
    CONSTRAINT PK_inventory PRIMARY KEY (cInvCode)
)
GO
-- Planned or retail prices by free items; a free item left empty stands for any.
CREATE TABLE InvCheckFreeIA870 (
    AutoID int IDENTITY(1,1) NOT NULL,
    cInvCode nvarchar(60) NOT NULL,
    cFree1 nvarchar(20) NULL,
    cFree2 nvarchar(20) NULL,
    cFree3 nvarchar(20) NULL,
    cFree4 nvarchar(20) NULL,
    cFree5 nvarchar(20) NULL,
    cFree6 nvarchar(20) NULL,
    cFree7 nvarchar(20) NULL,
    cFree8 nvarchar(20) NULL,
    cFree9 nvarchar(20) NULL,
    cFree10 nvarchar(20) NULL,
    fInvRCost float NULL,
    CONSTRAINT PK_InvCheckFreeIA870 PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_InvCheckFreeIA870 ON InvCheckFreeIA870 (cInvCode)
GO
-- Bills of material: cInvCode is the product, cComCode its component.
CREATE TABLE CO_BOMList (
    AutoID int IDENTITY(1,1) NOT NULL,
    cInvCode nvarchar(60) NOT NULL,
    cComCode nvarchar(60) NULL,
    fQuantity float NULL,
    CONSTRAINT PK_CO_BOMList PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_CO_BOMList ON CO_BOMList (cInvCode)
GO
CREATE VIEW v_CO_BOMList AS SELECT cInvCode, cComCode, fQuantity FROM CO_BOMList
GO
-- Accounts of a warehouse, an inventory class or an item. One setting may be stored more than once.
CREATE TABLE IA_HeadSet (
    AutoID int IDENTITY(1,1) NOT NULL,
    cWhCode nvarchar(10) NULL,
    cInvCCode nvarchar(12) NULL,
    cInvHead nvarchar(40) NULL,
    cDifHead nvarchar(40) NULL,
    cOutHead nvarchar(40) NULL,
    cEnDispHead nvarchar(40) NULL,
    czyHead nvarchar(40) NULL,
    cInvCode nvarchar(60) NULL,
    iYear smallint NULL,
    CONSTRAINT PK_IA_HeadSet PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_IA_HeadSet_Item ON IA_HeadSet (cInvCode, iYear, cWhCode)
GO
CREATE INDEX IX_IA_HeadSet_Class ON IA_HeadSet (cInvCCode, iYear, cWhCode)
GO
CREATE INDEX IX_IA_HeadSet_Warehouse ON IA_HeadSet (cWhCode, iYear)
GO
-- Opposite accounts. One mapping may be stored more than once.
CREATE TABLE IA_OppHead (
    AutoID int IDENTITY(1,1) NOT NULL,
    cRdCode nvarchar(12) NULL,
    cInvcCode nvarchar(12) NULL,
    cInvCode nvarchar(60) NULL,
    cDepCode nvarchar(12) NULL,
    citem_class nvarchar(10) NULL,
    citemcode nvarchar(60) NULL,
    cOppHead nvarchar(40) NULL,
    cEstHead nvarchar(40) NULL,
    cProcessHead nvarchar(40) NULL,
    cMaterialHead nvarchar(40) NULL,
    cOLaborStdCostCode nvarchar(40) NULL,
    cOManuFixStdCostCode nvarchar(40) NULL,
    cOManuVarStdCostCode nvarchar(40) NULL,
    cOOmCostCode nvarchar(40) NULL,
    cOiqtCode nvarchar(40) NULL,
    cOPriceCode nvarchar(40) NULL,
    fLaborCostEffRateDifCode nvarchar(40) NULL,
    fLaborCostRateDifCode nvarchar(40) NULL,
    fSemiLaborDifCode nvarchar(40) NULL,
    fManuFixCostEffRateDifCode nvarchar(40) NULL,
    fManuFixCostRateDifCode nvarchar(40) NULL,
    fSemiManuFixDifCode nvarchar(40) NULL,
    fManuVarCostEffRateDifCode nvarchar(40) NULL,
    fManuVarCostRateDifCode nvarchar(40) NULL,
    fSemiManuVarDifCode nvarchar(40) NULL,
    fOmCostEDifCode nvarchar(40) NULL,
    fSemiOmDifCode nvarchar(40) NULL,
    cOTaxRefundCode nvarchar(40) NULL,
    iYear smallint NULL,
    CONSTRAINT PK_IA_OppHead PRIMARY KEY (AutoID)
)
GO
-- The keys of standard costing come first: with them, or with all six keys, a mapping is found at once.
CREATE INDEX IX_IA_OppHead ON IA_OppHead (cRdCode, cInvcCode, cDepCode, iYear, cInvCode, citemcode, citem_class)
GO
-- The inventory ledger. Opening balances have iMonth 0; amounts are float, since they come as doubles.
CREATE TABLE Ia_subsidiary (
    AutoID int IDENTITY(1,1) NOT NULL,
    iYear smallint NULL,
    iMonth tinyint NULL DEFAULT 0,
    id int NULL,
    cVouType nvarchar(10) NULL,
    cVouCode nvarchar(30) NULL,
    cBusType nvarchar(20) NULL,
    cBusCode nvarchar(30) NULL,
    dVouDate datetime NULL,
    dKeepDate datetime NULL,
    bRdFlag bit NULL,
    cWhCode nvarchar(10) NULL,
    cRdCode nvarchar(12) NULL,
    cDepCode nvarchar(12) NULL,
    cPersonCode nvarchar(20) NULL,
    cCusCode nvarchar(20) NULL,
    cVenCode nvarchar(20) NULL,
    cPTCode nvarchar(10) NULL,
    cSTCode nvarchar(10) NULL,
    cInvCode nvarchar(60) NULL,
    iAInQuantity float NULL,
    iAOutQuantity float NULL,
    iInCost float NULL,
    iOutCost float NULL,
    iAInPrice float NULL,
    iAOutPrice float NULL,
    iDebitDifCost float NULL,
    iCreditDifCost float NULL,
    cBatchIA nvarchar(60) NULL,
    dMadeDateIA datetime NULL,
    dVDateIA datetime NULL,
    iMassDateIA int NULL,
    cItem_class nvarchar(10) NULL,
    cItemCode nvarchar(60) NULL,
    cItemCName nvarchar(60) NULL,
    cName nvarchar(255) NULL,
    cInvHead nvarchar(40) NULL,
    cDifHead nvarchar(40) NULL,
    cOppHead nvarchar(40) NULL,
    cPZID nvarchar(30) NULL,
    cMaker nvarchar(40) NULL,
    cAccounter nvarchar(40) NULL,
    cHandler nvarchar(40) NULL,
    cMemo nvarchar(255) NULL,
    cFree1 nvarchar(20) NULL,
    cFree2 nvarchar(20) NULL,
    cFree3 nvarchar(20) NULL,
    cFree4 nvarchar(20) NULL,
    cFree5 nvarchar(20) NULL,
    cFree6 nvarchar(20) NULL,
    cFree7 nvarchar(20) NULL,
    cFree8 nvarchar(20) NULL,
    cFree9 nvarchar(20) NULL,
    cFree10 nvarchar(20) NULL,
    cDefine1 nvarchar(20) NULL,
    cDefine2 nvarchar(20) NULL,
    cDefine3 nvarchar(20) NULL,
    cDefine4 datetime NULL,
    cDefine5 int NULL,
    cDefine6 datetime NULL,
    cDefine7 float NULL,
    cDefine8 nvarchar(4) NULL,
    cDefine9 nvarchar(8) NULL,
    cDefine10 nvarchar(60) NULL,
    cDefine11 nvarchar(120) NULL,
    cDefine12 nvarchar(120) NULL,
    cDefine13 nvarchar(120) NULL,
    cDefine14 nvarchar(120) NULL,
    cDefine15 int NULL,
    cDefine16 float NULL,
    cDefine17 nvarchar(60) NULL,
    cDefine18 nvarchar(60) NULL,
    cDefine19 nvarchar(60) NULL,
    cDefine20 nvarchar(60) NULL,
    cDefine21 nvarchar(60) NULL,
    cDefine22 nvarchar(60) NULL,
    cDefine23 nvarchar(60) NULL,
    cDefine24 nvarchar(60) NULL,
    cDefine25 nvarchar(60) NULL,
    cDefine26 float NULL,
    cDefine27 float NULL,
    cDefine28 nvarchar(120) NULL,
    cDefine29 nvarchar(120) NULL,
    cDefine30 nvarchar(120) NULL,
    cDefine31 nvarchar(120) NULL,
    cDefine32 nvarchar(120) NULL,
    cDefine33 nvarchar(120) NULL,
    cDefine34 int NULL,
    cDefine35 int NULL,
    cDefine36 datetime NULL,
    cDefine37 datetime NULL,
    CONSTRAINT PK_Ia_subsidiary PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_Ia_subsidiary_KeepDate ON Ia_subsidiary (dKeepDate)
GO
CREATE INDEX IX_Ia_subsidiary_Item ON Ia_subsidiary (cInvCode)
GO
-- The ledger of goods issued but not yet invoiced.
CREATE TABLE IA_enSubsidiary (
    AutoID int IDENTITY(1,1) NOT NULL,
    iYear smallint NULL,
    iMonth tinyint NULL DEFAULT 0,
    id int NULL,
    cVouType nvarchar(10) NULL,
    cVouCode nvarchar(30) NULL,
    dVouDate datetime NULL,
    dKeepDate datetime NULL,
    cWhCode nvarchar(10) NULL,
    cInvCode nvarchar(60) NULL,
    iAInQuantity float NULL,
    iAOutQuantity float NULL,
    iAInPrice float NULL,
    iAOutPrice float NULL,
    CONSTRAINT PK_IA_enSubsidiary PRIMARY KEY (AutoID)
)
GO
-- Ledger totals by month; iPeriod 1 marks an item whose period-end processing is done.
CREATE TABLE ia_summary (
    AutoID int IDENTITY(1,1) NOT NULL,
    iYear smallint NULL,
    iMonth tinyint NULL,
    iPeriod tinyint NULL,
    iDirect tinyint NULL,
    cWhCode nvarchar(10) NULL,
    cDepCode nvarchar(12) NULL,
    cInvCode nvarchar(60) NOT NULL DEFAULT N'',
    iInitQuantity float NULL,
    iInitPrice float NULL,
    iInQuantity float NULL,
    iInPrice float NULL,
    iOutQuantity float NULL,
    iOutPrice float NULL,
    CONSTRAINT PK_ia_summary PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_ia_summary ON ia_summary (cInvCode, iYear, iMonth)
GO
-- Receipt and issue adjustment documents.
CREATE TABLE JustInVouch (
    AutoID int IDENTITY(1,1) NOT NULL,
    cJVCode nvarchar(30) NULL,
    dJVDate datetime NULL,
    cWhCode nvarchar(10) NULL,
    cMaker nvarchar(40) NULL,
    cMemo nvarchar(255) NULL,
    CONSTRAINT PK_JustInVouch PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_JustInVouch ON JustInVouch (dJVDate)
GO
-- Price adjustment vouchers: head and rows.
CREATE TABLE CostJustVouch (
    AutoID int IDENTITY(1,1) NOT NULL,
    ID int NULL,
    cCode nvarchar(60) NULL,
    dCJVDate datetime NULL,
    cMaker nvarchar(40) NULL,
    cAccounter nvarchar(40) NULL,
    dAccountDate datetime NULL,
    cMemo nvarchar(255) NULL,
    VT_ID int NULL,
    VouchType nvarchar(10) NULL,
    qxts timestamp NULL,
    CONSTRAINT PK_CostJustVouch PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_CostJustVouch_Date ON CostJustVouch (dCJVDate)
GO
CREATE INDEX IX_CostJustVouch_ID ON CostJustVouch (ID)
GO
-- iCJVBCost and iCJVACost are the prices before and after, iMoney the stock amount before, iAdjustMoney its change.
CREATE TABLE CostJustVouchs (
    AutoID int IDENTITY(1,1) NOT NULL,
    ID int NULL,
    cWhCode nvarchar(10) NULL,
    cInvCode nvarchar(60) NULL,
    cFree1 nvarchar(20) NULL,
    cFree2 nvarchar(20) NULL,
    cFree3 nvarchar(20) NULL,
    cFree4 nvarchar(20) NULL,
    cFree5 nvarchar(20) NULL,
    cFree6 nvarchar(20) NULL,
    cFree7 nvarchar(20) NULL,
    cFree8 nvarchar(20) NULL,
    cFree9 nvarchar(20) NULL,
    cFree10 nvarchar(20) NULL,
    cValueStyle nvarchar(20) NULL,
    iQuantity float NULL,
    iMoney money NULL,
    iCJVBCost decimal(30, 10) NULL,
    iCJVACost decimal(30, 10) NULL,
    iAdjustMoney money NULL,
    CONSTRAINT PK_CostJustVouchs PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_CostJustVouchs ON CostJustVouchs (ID)
GO
CREATE VIEW v_CostJustVouch_H AS SELECT AutoID, ID, cCode, dCJVDate, cMaker, dAccountDate, cAccounter, cMemo, VT_ID,
    VouchType, qxts FROM CostJustVouch
GO
CREATE VIEW v_CostJustVouch_B AS SELECT B.AutoID, B.ID, B.cWhCode, B.cInvCode, I.cInvName, B.cFree1, B.cFree2, B.cFree3,
    B.cFree4, B.cFree5, B.cFree6, B.cFree7, B.cFree8, B.cFree9, B.cFree10, B.cValueStyle, B.iQuantity, B.iMoney,
    B.iCJVBCost, B.iCJVACost, B.iAdjustMoney
    FROM CostJustVouchs B LEFT JOIN inventory I ON B.cInvCode = I.cInvCode
GO
-- Voucher cards: the views that show a card's head (BTQName) and rows (BWQName).
CREATE TABLE Vouchers_base (
    CardNumber nvarchar(30) NOT NULL,
    cCardName nvarchar(60) NULL,
    cVouchType nvarchar(10) NULL,
    BTQName nvarchar(60) NULL,
    BWQName nvarchar(60) NULL,
    CONSTRAINT PK_Vouchers_base PRIMARY KEY (CardNumber)
)
GO
INSERT INTO Vouchers_base (CardNumber, cCardName, cVouchType, BTQName, BWQName)
VALUES (N'IA51', N'价格调整单', N'22', N'v_CostJustVouch_H', N'v_CostJustVouch_B')
GO
INSERT INTO Vouchers_base (CardNumber, cCardName, cVouchType, BTQName, BWQName)
VALUES (N'IA48', N'跌价准备单', N'48', N'IA_DecReady', N'IA_DecReadys')
GO
-- Templates of the cards; one of a card is its default.
CREATE TABLE VoucherTemplates (
    VT_ID int NOT NULL,
    VT_Name nvarchar(60) NULL,
    VT_CardNumber nvarchar(30) NULL,
    cVouchType nvarchar(10) NULL,
    bDefault bit NULL DEFAULT 0,
    CONSTRAINT PK_VoucherTemplates PRIMARY KEY (VT_ID)
)
GO
INSERT INTO VoucherTemplates (VT_ID, VT_Name, VT_CardNumber, cVouchType, bDefault)
VALUES (5101, N'价格调整单显示模版', N'IA51', N'22', 1)
GO
INSERT INTO VoucherTemplates (VT_ID, VT_Name, VT_CardNumber, cVouchType, bDefault)
VALUES (4801, N'跌价准备单显示模版', N'IA48', N'48', 1)
GO
-- Price-decline provisions: head and rows. iThisPrice is the provision of the row.
CREATE TABLE IA_DecReady (
    ID int NOT NULL,
    cDecCode nvarchar(30) NOT NULL DEFAULT N'',
    dDecDate datetime NULL,
    cVouchType nvarchar(10) NULL,
    cDepCode nvarchar(12) NULL,
    cPersonCode nvarchar(20) NULL,
    cMaker nvarchar(40) NULL,
    cVerifier nvarchar(40) NULL,
    dVeriDate datetime NULL,
    cAccounter nvarchar(40) NULL,
    dAccountDate datetime NULL,
    cMemo nvarchar(255) NULL,
    VT_ID int NULL,
    iprintcount int NULL,
    cDefine1 nvarchar(20) NULL,
    cDefine2 nvarchar(20) NULL,
    cDefine3 nvarchar(20) NULL,
    cDefine4 datetime NULL,
    cDefine5 int NULL,
    cDefine6 datetime NULL,
    cDefine7 float NULL,
    cDefine8 nvarchar(4) NULL,
    cDefine9 nvarchar(8) NULL,
    cDefine10 nvarchar(60) NULL,
    cDefine11 nvarchar(120) NULL,
    cDefine12 nvarchar(120) NULL,
    cDefine13 nvarchar(120) NULL,
    cDefine14 nvarchar(120) NULL,
    cDefine15 int NULL,
    cDefine16 float NULL,
    CONSTRAINT PK_IA_DecReady PRIMARY KEY (ID)
)
GO
CREATE INDEX IX_IA_DecReady ON IA_DecReady (cDecCode)
GO
CREATE TABLE IA_DecReadys (
    AutoID int IDENTITY(1,1) NOT NULL,
    ID int NULL,
    cWhCode nvarchar(10) NULL,
    cInvCode nvarchar(60) NULL,
    iQuantity float NULL,
    iUnitCost float NULL,
    iPrice float NULL,
    iNetPrice float NULL,
    iLastPrice float NULL,
    iThisPrice float NULL,
    cBatch nvarchar(60) NULL,
    cItem_class nvarchar(10) NULL,
    cItemCode nvarchar(60) NULL,
    cMemo nvarchar(255) NULL,
    cFree1 nvarchar(20) NULL,
    cFree2 nvarchar(20) NULL,
    cFree3 nvarchar(20) NULL,
    cFree4 nvarchar(20) NULL,
    cFree5 nvarchar(20) NULL,
    cFree6 nvarchar(20) NULL,
    cFree7 nvarchar(20) NULL,
    cFree8 nvarchar(20) NULL,
    cFree9 nvarchar(20) NULL,
    cFree10 nvarchar(20) NULL,
    cDefine22 nvarchar(60) NULL,
    cDefine23 nvarchar(60) NULL,
    cDefine24 nvarchar(60) NULL,
    cDefine25 nvarchar(60) NULL,
    cDefine26 float NULL,
    cDefine27 float NULL,
    cDefine28 nvarchar(120) NULL,
    cDefine29 nvarchar(120) NULL,
    cDefine30 nvarchar(120) NULL,
    cDefine31 nvarchar(120) NULL,
    cDefine32 nvarchar(120) NULL,
    cDefine33 nvarchar(120) NULL,
    cDefine34 int NULL,
    cDefine35 int NULL,
    cDefine36 datetime NULL,
    cDefine37 datetime NULL,
    CONSTRAINT PK_IA_DecReadys PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_IA_DecReadys ON IA_DecReadys (ID)
GO
-- Stock receipt (bRdFlag 1) and issue (bRdFlag 0) documents: head and rows.
CREATE TABLE rdrecord (
    ID int NOT NULL,
    bRdFlag bit NULL,
    cVouchType nvarchar(10) NULL,
    cBusType nvarchar(20) NULL,
    cSource nvarchar(50) NULL,
    cBusCode nvarchar(30) NULL,
    cWhCode nvarchar(10) NULL,
    dDate datetime NULL,
    cCode nvarchar(30) NULL,
    cRdCode nvarchar(12) NULL,
    cDepCode nvarchar(12) NULL,
    cPersonCode nvarchar(20) NULL,
    cPTCode nvarchar(10) NULL,
    cSTCode nvarchar(10) NULL,
    cCusCode nvarchar(20) NULL,
    cVenCode nvarchar(20) NULL,
    cOrderCode nvarchar(30) NULL,
    cARVCode nvarchar(30) NULL,
    cBillCode nvarchar(30) NULL,
    cDLCode nvarchar(30) NULL,
    cProBatch nvarchar(60) NULL,
    cHandler nvarchar(40) NULL,
    cMemo nvarchar(255) NULL,
    iTaxRate float NULL,
    cExch_Name nvarchar(20) NULL,
    iExchRate float NULL,
    bTransFlag bit NULL DEFAULT 0,
    cAccounter nvarchar(40) NULL,
    cMaker nvarchar(40) NULL,
    iNetLock int NULL,
    dKeepDate datetime NULL,
    dVeriDate datetime NULL,
    bPuFirst bit NULL DEFAULT 0,
    bIAFirst bit NULL DEFAULT 0,
    iMQuantity float NULL,
    dARVDate datetime NULL,
    cChkCode nvarchar(30) NULL,
    dChkDate datetime NULL,
    cChkPerson nvarchar(40) NULL,
    VT_ID int NULL,
    bIsSTQc bit NULL DEFAULT 0,
    cPsPCode nvarchar(60) NULL,
    cMPoCode nvarchar(30) NULL,
    gspcheck nvarchar(10) NULL,
    ipurorderid int NULL,
    ipurarriveid int NULL,
    iproorderid int NULL,
    iarriveid int NULL,
    isalebillid int NULL,
    cDefine1 nvarchar(20) NULL,
    cDefine2 nvarchar(20) NULL,
    cDefine3 nvarchar(20) NULL,
    cDefine4 datetime NULL,
    cDefine5 int NULL,
    cDefine6 datetime NULL,
    cDefine7 float NULL,
    cDefine8 nvarchar(4) NULL,
    cDefine9 nvarchar(8) NULL,
    cDefine10 nvarchar(60) NULL,
    cDefine11 nvarchar(120) NULL,
    cDefine12 nvarchar(120) NULL,
    cDefine13 nvarchar(120) NULL,
    cDefine14 nvarchar(120) NULL,
    cDefine15 int NULL,
    cDefine16 float NULL,
    qxts timestamp NULL,
    CONSTRAINT PK_rdrecord PRIMARY KEY (ID)
)
GO
CREATE TABLE rdrecords (
    AutoID int IDENTITY(1,1) NOT NULL,
    ID int NULL,
    cInvCode nvarchar(60) NULL,
    iQuantity float NULL,
    iNum float NULL,
    iUnitCost float NULL,
    iPrice money NULL,
    cBatch nvarchar(60) NULL,
    dMadeDate datetime NULL,
    dVDate datetime NULL,
    cItem_class nvarchar(10) NULL,
    cItemCode nvarchar(60) NULL,
    cItemCName nvarchar(60) NULL,
    cName nvarchar(255) NULL,
    cFree1 nvarchar(20) NULL,
    cFree2 nvarchar(20) NULL,
    cFree3 nvarchar(20) NULL,
    cFree4 nvarchar(20) NULL,
    cFree5 nvarchar(20) NULL,
    cFree6 nvarchar(20) NULL,
    cFree7 nvarchar(20) NULL,
    cFree8 nvarchar(20) NULL,
    cFree9 nvarchar(20) NULL,
    cFree10 nvarchar(20) NULL,
    cDefine22 nvarchar(60) NULL,
    cDefine23 nvarchar(60) NULL,
    cDefine24 nvarchar(60) NULL,
    cDefine25 nvarchar(60) NULL,
    cDefine26 float NULL,
    cDefine27 float NULL,
    cDefine28 nvarchar(120) NULL,
    cDefine29 nvarchar(120) NULL,
    cDefine30 nvarchar(120) NULL,
    cDefine31 nvarchar(120) NULL,
    cDefine32 nvarchar(120) NULL,
    cDefine33 nvarchar(120) NULL,
    cDefine34 int NULL,
    cDefine35 int NULL,
    cDefine36 datetime NULL,
    cDefine37 datetime NULL,
    CONSTRAINT PK_rdrecords PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_rdrecords ON rdrecords (ID)
GO
CREATE TABLE CurrentStock (
    AutoID int IDENTITY(1,1) NOT NULL,
    cWhCode nvarchar(10) NULL,
    cInvCode nvarchar(60) NOT NULL DEFAULT N'',
    iQuantity float NULL,
    CONSTRAINT PK_CurrentStock PRIMARY KEY (AutoID)
)
GO
CREATE INDEX IX_CurrentStock ON CurrentStock (cInvCode)
GO
-- What provisions a project may carry.
CREATE TABLE ItemBudget (
    cItem_class nvarchar(10) NOT NULL,
    cItemCode nvarchar(60) NOT NULL,
    iBudget money NULL,
    CONSTRAINT PK_ItemBudget PRIMARY KEY (cItem_class, cItemCode)
)
GO
