create table QxSystem..UA_Period (cAcc_Id nvarchar(3) not null, iYear smallint not null, iId tinyint not null, dBegin datetime, constraint PK_UA_Period primary key (cAcc_Id, iYear, iId))
GO
insert into QxSystem..UA_Period values (N'001', 2024, 1, '2024-01-01')
GO
create table Inventory (cInvCode nvarchar(60) not null, cInvName nvarchar(255), cInvCCode nvarchar(12), iInvRCost money, bService bit default 0, constraint PK_Inventory primary key (cInvCode))
GO
create index IX_Inventory_Name on Inventory (cInvName)
GO
insert into Inventory (cInvCode, cInvName, cInvCCode, iInvRCost) values (N'1001', N'中性笔', N'01', 1.5)
GO
insert into Inventory (cInvCode, cInvName, cInvCCode, iInvRCost) values (N'a-1', N'阿司匹林', N'01', 20)
GO
insert into Inventory (cInvCode, cInvName, cInvCCode, iInvRCost) values (N'A2', N'包装箱', N'02', 3)
GO
insert into Inventory (cInvCode, cInvName, cInvCCode, iInvRCost) values (N'乙', N'（另计）', N'02', 4)
GO
insert into Inventory (cInvCode, cInvName, cInvCCode, iInvRCost) values (N'甲', null, N'02', 5)
GO
create table Ledger (AutoID int identity(1,1) not null, cInvCode nvarchar(60), iQuantity decimal(20,6), fRate float, dDate datetime, cMemo varchar(20), cFree nvarchar(20), ts timestamp, constraint PK_Ledger primary key (AutoID), constraint CK_Ledger check (iQuantity > 0 and len(cMemo) < 10), constraint UQ_Ledger unique (cInvCode, cFree))
GO
insert into Ledger (cInvCode, iQuantity, fRate, dDate, cMemo, cFree) values (N'1001', 2.5, 0.1, '2024-01-31', 'first', null)
GO
insert into Ledger (cInvCode, iQuantity, fRate, dDate, cMemo, cFree) values (N'A2', 3, 0.2, '2024-02-29 13:04:05.007', '摘要', N'红')
GO
create view LedgerValue as select l.AutoID, i.cInvName, l.iQuantity * i.iInvRCost as iMoney, convert(nvarchar(10), l.dDate, 23) as cDay, isnull(l.cMemo, N'') + N'!' as cText from Ledger l inner join Inventory i on i.cInvCode = l.cInvCode
GO
create view LargeLedger as select AutoID, iMoney from LedgerValue where iMoney > 5
GO
