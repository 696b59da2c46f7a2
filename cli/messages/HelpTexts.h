#pragma once

#include "cli/messages/Language.h"

namespace cli {

/// What the help says.
struct HelpTexts {
    Speech say;

    Phrase program = say("把单据导入 ERP 账套的存货核算模块。",
                         "Imports documents into the inventory accounting of an ERP account.");
    Phrase usage = say("用法", "Usage");
    Phrase options = say("选项", "Options");
    Phrase command = say("命令", "COMMAND");
    Phrase commands = say("命令", "Commands");
    Phrase arguments = say("参数", "Arguments");
    Phrase required = say("必填", "required");
    Phrase help = say("显示本帮助", "Show this help and end");
    Phrase version = say("显示版本及所用各库的版本", "Show the version, with those of the libraries, and end");
    Phrase lang = say("提示语言：zh 或 en；不指定时由 LC_ALL、LC_MESSAGES 或 LANG 决定",
                      "Language of what is said: zh or en; without it LC_ALL, LC_MESSAGES or LANG decides");
    Phrase login =
        say("登录文件（XML）；可用 kovra login init 生成", "The login, an XML file; kovra login init makes one");
    Phrase trace = say("把发给数据库的每条语句写入 FILE，每行一个 JSON 对象",
                       "Write what is asked of the database to FILE, as JSON lines");
    Phrase traceTimes = say("在跟踪中写出每次操作的用时（us，微秒）",
                            "Tell in the trace how long each operation took, as us, in microseconds");
    Phrase traceCommand = say("跟踪文件", "Traces");
    Phrase traceShow = say("显示跟踪文件：依次列出每次操作，并列出最慢的和重复的语句",
                           "Show a trace: every operation in order, the slowest, and the statements that repeat");
    Phrase traceShowFile = say("由 --trace 或 Kovra.dll 写出的文件", "A file that --trace or Kovra.dll has written");
    Phrase transact = say("用指定的类执行请求并写出结果；汇总写到标准错误",
                          "Run a request through a class and write the result; a summary goes to standard error");
    /// `{0}` the names of the classes.
    Phrase transactClass = say("类名：{0}", "The class: {0}");
    Phrase transactRequest =
        say("请求文件（XML）；写 - 或不写则读标准输入", "The request, an XML file; - or nothing for standard input");
    Phrase transactFormat =
        say("结果的格式：xml（类的原样结果）、table（表格）或 json；不指定时终端上为表格，否则为 xml",
            "How the result is written: xml (as the class gives it), table or json; without it table on a terminal, "
            "else xml");
    Phrase transactJournal = say("每得到一行的结果就立即追加到 FILE，每行一个 JSON 对象；FILE 原有内容保留",
                                 "Add each outcome to FILE as it happens, as JSON lines; what FILE holds stays");
    Phrase transactQuiet = say("标准错误上不显示汇总和进度", "No summary and no progress on standard error");
    Phrase host =
        say("各类在什么上运行：reference（kovra 自带的文档、数据库和组件，默认）或 com（MSXML、ADO 和 ERP "
            "已注册的组件，与 Kovra.dll 相同）",
            "What the classes run on: reference (documents, database and components of kovra's own, the usual) or com "
            "(MSXML, ADO and the ERP's registered components, as Kovra.dll does)");
    Phrase transactServer = say("像其他客户程序一样，创建注册名为 Kovra.CLASS 的类来执行",
                                "Create the class that is registered as Kovra.CLASS, as every client does");
    Phrase doctor =
        say("说明本机注册了哪些类，能否创建", "Tell which classes are registered here and whether they can be created");
    Phrase doctorLogin = say("同时通过 ADO 打开该登录文件的账套", "Open the account of this login too, through ADO");
    Phrase query = say("查询出入库单据，写出填好的信封", "Query stock documents and write the filled envelope");
    Phrase queryConditions = say("查询条件文件（XML）；不写则无条件", "The conditions, an XML file; without it none");
    Phrase queryEnvelope =
        say("信封文件（XML）；写 - 或不写则读标准输入", "The envelope, an XML file; - or nothing for standard input");
    Phrase sql = say("执行 T-SQL 批，输出结果行；行数和消息写到标准错误",
                     "Run T-SQL batches and write their rows; counts and messages go to standard error");
    Phrase sqlExecute = say("一条语句；可重复给出", "A statement; may be given several times");
    Phrase sqlFiles =
        say("批文件，各批之间以只含 GO 的行分隔", "Files of batches, separated by lines that hold GO alone");
    Phrase sqlFormat = say("结果行的格式：不给时终端上为 table，否则为 json（每行一个对象）",
                           "How rows are written: without it table on a terminal, else json (one object a line)");
    Phrase sqlTimeout =
        say("每批最长执行时间；不给则不限时", "How long a batch may take; without it as long as it takes");
    Phrase account = say("账套数据库", "Account databases");
    Phrase accountCreate =
        say("在空的账套数据库中建立所需的表", "Create the host's tables in an empty account database");
    Phrase accountDemo = say("同时建立一家演示用的小公司", "Add a small company to try things on");
    Phrase accountDatabase = say("在服务器上：为账套创建名为 NAME 的数据库（已有则直接使用）",
                                 "On a server: create the database NAME for the account, unless it is there");
    Phrase accountBackup = say("把内置账套备份到新文件，备份时他人可照常使用",
                               "Copy an embedded account to a new file, while others work on it");
    Phrase accountRestore =
        say("用这样的备份文件恢复内置账套的内容", "Put such a copy in the place of an embedded account's content");
    Phrase accountCheck =
        say("检查内置账套的数据库文件是否损坏", "Look through the files of an embedded account for damage");
    Phrase accountUpgrade = say("把内置账套的数据库文件升级到本程序的格式",
                                "Bring the files of an embedded account up to this program's format");
    Phrase accountSystem = say("处理账套所在文件夹的系统数据库 QxSystem，而不是账套",
                               "The system database QxSystem of the account's folder instead of the account");
    Phrase accountFile = say("备份文件", "The file of the copy");
    Phrase loginCommand = say("登录文件", "Login files");
    Phrase loginCheck = say("检查登录文件缺什么、错在哪里，打开账套并说明其情况",
                            "Tell what is missing or wrong in a login, open its account and say what it is");
    Phrase loginInit = say("生成登录文件，只有本人可读", "Make a login file that only its owner can read");
    Phrase loginInitFile =
        say("要生成的文件；已存在的文件不会被覆盖", "The file to make; one that is there stays as it is");
    Phrase loginInitConnection = say("账套数据库的连接字符串", "The connection string of the account's database");
    Phrase loginInitAccount = say("账套号", "The account's id");
    Phrase loginInitYear = say("会计年度", "The accounting year");
    Phrase loginInitUser = say("操作员编码", "The user's id");
    Phrase loginInitName = say("操作员姓名；单据未写制单人时以此为制单人",
                               "The operator's name, which becomes the maker of documents that name none");
    /// How spreadsheets are read. `{0}` the names of the classes.
    Phrase sheetClass = say("类名：{0}；不指定时由列标题判断", "The class: {0}; without it the headings tell");
    Phrase sheetName = say("工作表；不指定时取唯一合适的那张", "The sheet; without it the only one that fits");
    Phrase sheetHeaderRow =
        say("列标题所在的行；不指定时自动查找", "The line of the headings; without it they are looked for");
    Phrase sheetMap =
        say("把标题为“列”的一列当作“字段”，可重复给出；“列=”略去该列",
            "Read the column with this heading as FIELD, may be given several times; HEADING= leaves it out");
    Phrase sheetMapValue = say("列=字段", "HEADING=FIELD");
    Phrase sheetEncoding = say("CSV 文件的编码，例如 GB18030；不指定时自动判断",
                               "Encoding of a CSV file, such as GB18030; without it it is found out");
    Phrase sheetHidden =
        say("隐藏或筛选掉的行：include 导入，skip 跳过；不指定而有隐藏行时不导入",
            "Rows that are hidden or filtered out: include or skip; without it a table with such rows is not imported");
    Phrase sheetFixCodes = say("补齐编码丢失的前导零", "Put back the leading zeros that codes have lost");
    Phrase sheetAllowDuplicates = say("允许表中有重复的行", "Take rows that repeat others");
    Phrase sheetFile = say("表格文件：.xlsx 或 CSV", "The spreadsheet: .xlsx or CSV");
    Phrase sheetJson = say("结果写成一个 JSON 对象", "Write the outcome as one JSON object");
    Phrase workbook = say("生成待填写的 Excel 表格", "Make an Excel workbook to fill in");
    Phrase workbookOutput =
        say("要生成的文件；已存在的文件不会被覆盖", "The file to make; one that is there stays as it is");
    Phrase workbookLogin = say("登录文件（XML）；给出时列出账套中可用的编码供选择",
                               "The login, an XML file; with it the account's codes are offered");
    Phrase request = say("把表格中可用的行写成请求，并逐格列出更正和拒绝",
                         "Make a request of a spreadsheet's rows; what was corrected and refused is told cell by cell");
    Phrase requestOutput =
        say("请求写到 FILE；不写则写到标准输出", "Write the request to FILE; without it to standard output");
    Phrase requestLogin = say("登录文件（XML）；给出时按账套检查编码",
                              "The login, an XML file; with it codes are held against the account");
    Phrase requestQuiet = say("标准错误上只显示错误", "Nothing but errors on standard error");
    Phrase import = say("把表格导入账套；不带 --commit 时只试运行，账套不变",
                        "Import a spreadsheet into the account; without --commit a test run, which changes nothing");
    Phrase importCommit = say("正式导入", "Import in earnest");
    Phrase importStrict = say("不作任何更正：要更正或有警告的行都拒绝",
                              "Correct nothing: refuse rows that would be corrected or have a warning");
    Phrase importReport = say("报告（HTML）写到 FILE；不指定时写在表格旁边",
                              "Write the report (HTML) to FILE; without it beside the spreadsheet");
    Phrase importRefused = say("被拒绝的行写到 FILE；不指定时写在表格旁边",
                               "Write the refused rows to FILE; without it beside the spreadsheet");
    Phrase imports = say("查看以前的导入，或撤销", "Look at earlier imports, or take one back");
    Phrase importsList = say("列出所有导入和试运行", "List all imports and test runs");
    Phrase importsShow = say("显示一次导入写入的各行", "Show the lines that an import wrote");
    Phrase importsUndo = say("撤销一次期初余额或科目设置的导入", "Take an import of opening balances or settings back");
    Phrase importsNumber = say("导入的编号，见 imports list", "Number of the import, as imports list shows it");
    Phrase exitStatus =
        say("退出状态：\n"
            "  0    全部接受，或已执行 EMPTY\n"
            "  1    部分或全部行被拒绝；query、sql、account 和 login：所要求的操作失败\n"
            "  2    命令行或文件有误，无法使用\n"
            "  3    整个请求没有处理，结果为错误结果\n"
            "  130  被中断；中断前已完成的部分见结果",
            "Exit status:\n"
            "  0    everything was accepted, or operation EMPTY was done\n"
            "  1    some or all rows were refused; query, sql, account and login: what was asked failed\n"
            "  2    the command line or a file is not usable\n"
            "  3    the request was refused as a whole: the result is an error result\n"
            "  130  interrupted; the result tells what was done until then");
};

/// What is wrong with a command line. `{0}` is what it is wrong with.
struct UsageTexts {
    Speech say;

    Phrase unexpected = say("无法识别 {0}", "{0} is not known here");
    Phrase missingOption = say("缺少 {0}", "{0} is missing");
    Phrase missingCommand = say("缺少命令", "a command is missing");
    Phrase missingValue = say("{0} 需要一个值", "{0} takes a value");
    /// `{0}` the values that there are.
    Phrase wrongValue = say("可用的值为 {0}", "the values are {0}");
    Phrase wrongNumber = say("应为从 1 起的整数", "takes a whole number from 1 on");
    /// Where to read on; `{0}` the command.
    Phrase seeHelp = say("用法见 {0} --help", "{0} --help tells what there is");
    /// `{0}` the name given, `{1}` the names of the classes.
    Phrase unknownClass = say("没有名为“{0}”的类；可用的类有 {1}", "there is no class '{0}'; the classes are {1}");
    /// `{0}` the nearest name.
    Phrase didYouMean = say("是否想写 {0}？", "did you mean {0}?");
    /// `{0}` the entry.
    Phrase wrongMap = say("--map {0}：应写成 --map 列标题=字段", "--map {0}: write --map HEADING=FIELD");
};

} // namespace cli
