#pragma once

#include "cli/messages/Language.h"

namespace cli {

/// What making an account on a server tells.
struct ServerTexts {
    Speech say;

    /// `{0}` the database.
    Phrase databaseCreated = say("已创建数据库 {0}", "created the database {0}");
    Phrase databaseThere = say("数据库 {0} 已经存在", "the database {0} was there already");
    Phrase calendarMade = say("已在 QxSystem 中建立日历表 UA_Period", "made the calendar table UA_Period in QxSystem");
    Phrase calendarThere = say("QxSystem 中已有日历表 UA_Period，保持原样",
                               "QxSystem had a calendar table UA_Period already: it was kept");
    /// What to do next: `{0}` the database.
    Phrase nameInLogin =
        say("接下来请在登录文件的 QxDbName 中写入 Database={0}", "now put Database={0} into the login's QxDbName");
    /// Neither the login nor the operator has named a database.
    Phrase nameDatabase = say("账套不能建在服务器自己的 master 数据库中：请用 --database 名称 指定账套的数据库",
                              "no account is made in the server's own database master: give --database NAME");
    /// A database was named for an account that is a file.
    Phrase noServer = say("--database 只用于服务器上的账套；这个登录的账套是一个文件",
                          "--database is for an account on a server; this login's account is a file");
};

/// What `kovra login` and `kovra account` say.
struct AccountTexts {
    Speech say;

    Phrase attributeHeading = say("属性", "Attribute");
    Phrase valueHeading = say("值", "Value");
    Phrase stateHeading = say("状态", "State");
    Phrase hidden = say("（不显示）", "(hidden)");
    Phrase fine = say("正确", "fine");
    /// `{0}` what needs the attribute.
    Phrase missing = say("缺少；{0} 需要它", "missing; {0} needs it");
    Phrase noDatabase =
        say("没有指明数据库：应为 Provider=KovraAccount;Data Source=文件，或含 Driver= 或 DSN= 的 ODBC 连接字符串",
            "names no database: Provider=KovraAccount;Data Source=FILE, or a text for ODBC with Driver= or DSN=");
    Phrase noYear = say("不是四位数字的年度", "is no year of four digits");
    Phrase noMonth = say("不是 1 到 12 的月份", "is no month from 1 to 12");
    Phrase noDate = say("不是 YYYY-MM-DD 形式的日期", "is no date YYYY-MM-DD");

    /// `{0}` the file.
    Phrase embedded = say("数据库：内置账套数据库 {0}", "Database: the embedded account database {0}");
    Phrase odbc = say("数据库：经 ODBC 连接的 SQL Server", "Database: SQL Server through ODBC");
    /// `{0}` the version.
    Phrase version = say("版本：{0}", "Version: {0}");
    Phrase noAccount = say("该数据库中没有账套。可用 kovra account create 在空数据库中建立。",
                           "The database holds no account. kovra account create makes one in an empty database.");
    /// `{0}` the date.
    Phrase starts = say("存货核算启用日期：{0}。", "Inventory accounting starts on {0}.");
    Phrase noStart = say("账套没有存货核算启用日期，期初余额会被拒绝。",
                         "The account has no start date of inventory accounting: opening balances are refused.");
    /// `{0}` the year, `{1}` the months.
    Phrase closed = say("{0} 年已结账的月份：{1}。", "Closed months of {0}: {1}.");
    Phrase noneClosed = say("{0} 年没有已结账的月份。", "No month of {0} is closed.");
    Phrase decemberClosed =
        say("{0} 年 12 月已结账，科目设置会被拒绝。", "December of {0} is closed: account settings are refused.");
    /// `{0}` how many.
    Phrase ledgerRows = say("存货明细账现有 {0} 笔记录。", "The inventory ledger holds {0} entries.");
    /// `{0}` the account, `{1}` the year, `{2}` how many.
    Phrase calendar =
        say("账套 {0} 的会计日历在 {1} 年有 {2} 个期间。", "The calendar of account {0} has {2} periods in {1}.");
    Phrase noCalendar =
        say("账套 {0} 的会计日历没有 {1} 年的期间，期初余额和调价单会被拒绝。",
            "The calendar has no periods for account {0} in {1}: opening balances and price vouchers are refused.");
    Phrase usable = say("登录文件可以使用。", "The login can be used.");
    /// `{0}` how many.
    Phrase unusable = say("登录文件有 {0} 处问题。", "The login has {0} faults.");
    Phrase cannotOpen = say("无法打开账套：{0}：{1}", "The account cannot be opened: {0}: {1}");

    /// `{0}` the file.
    Phrase loginMade = say("已生成 {0}，只有本人可读。", "Made {0}, which you alone can read.");
    /// `{0}` the command.
    Phrase next = say("下一步：{0}", "Next: {0}");

    /// `{0}` how many tables, `{1}` how many views.
    Phrase accountMade = say("已建立账套：{0} 张表，{1} 个视图。", "Made an account: {0} tables and {1} views.");
    /// `{0}` warehouses, `{1}` items, `{2}` ledger accounts, `{3}` departments.
    Phrase demoMade =
        say("演示公司有 {0} 个仓库、{1} 种存货、{2} 个科目、{3} 个部门；2024 年 1 月为未结账月份。",
            "The demonstration company has {0} warehouses, {1} items, {2} ledger accounts and {3} departments; January "
            "2024 is its open month.");

    /// `{0}` the backup's file.
    Phrase backedUp = say("账套已备份到 {0}。QxSystem.db 是另一个文件，用 --system 备份。",
                          "Copied the account to {0}. QxSystem.db is a file of its own; --system copies it.");
    Phrase systemBackedUp = say("系统数据库已备份到 {0}。", "Copied the system database to {0}.");
    Phrase restored = say("账套已恢复为 {0} 的内容。", "The account has the content of {0} now.");
    Phrase systemRestored = say("系统数据库已恢复为 {0} 的内容。", "The system database has the content of {0} now.");
    Phrase sound = say("账套的数据库文件完好。", "The account's files are sound.");
    /// What to do about the faults listed before it.
    Phrase damaged = say("账套的数据库文件已损坏，可用 kovra account restore 从备份恢复。",
                         "The account's files are damaged. kovra account restore puts a backup in their place.");
    /// `{0}` the file, `{1}` its format before, `{2}` its format now.
    Phrase upgraded = say("{0} 已由格式 {1} 升级到格式 {2}。", "Brought {0} from format {1} to format {2}.");
    Phrase upToDate = say("{0} 已是格式 {1}，无需升级。", "{0} has format {1} already.");
    /// The account is on a server.
    Phrase embeddedOnly =
        say("此命令只用于内置账套（Provider=KovraAccount）；该登录文件的账套在服务器上，请用服务器自带的工具",
            "this is for embedded accounts (Provider=KovraAccount); this login's account is on a server, which has "
            "tools of its own for it");
};

} // namespace cli
