create table QxSystem..UA_Period (cAcc_Id nvarchar(3) not null, iYear smallint not null, iId tinyint not null, dBegin datetime, constraint PK_UA_Period primary key (cAcc_Id, iYear, iId))
GO
insert into QxSystem..UA_Period values (N'001', 2024, 1, '2024-01-01')
GO
create table Customer (cCusCode nvarchar(20) not null, cCusName nvarchar(60), iCredit money default 0, constraint PK_Customer primary key (cCusCode))
GO
create index IX_Customer_Name on Customer (cCusName)
GO
insert into Customer (cCusCode, cCusName, iCredit) values (N'Weiß', N'Straße 1', 10), (N'Wels', N'Strasa', 20), (N'Zoe', N'Ægir', 30), (N'甲', null, 40)
GO
create table Entry (AutoID int identity(5,1) not null, cCusCode nvarchar(20), iMoney decimal(20,2), constraint PK_Entry primary key (AutoID), constraint CK_Entry check (iMoney > 0))
GO
insert into Entry (cCusCode, iMoney) values (N'Weiß', 1.5), (N'甲', 2)
GO
create view EntryName as select e.AutoID, c.cCusName, e.iMoney * 2 as iTwice from Entry e inner join Customer c on c.cCusCode = e.cCusCode
GO
