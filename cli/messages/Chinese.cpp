#include "cli/messages/Tables.h"

namespace cli {

constexpr Messages chineseMessages = {
    .row = {.one = "{0} 行", .many = "{0} 行", .place = "第 {0} 行"},
    .document = {.one = "{0} 张单据", .many = "{0} 张单据", .place = "第 {0} 张单据"},
    .entry = {.one = "{0} 条分录", .many = "{0} 条分录", .place = "第 {0} 条分录"},
    .help =
        {
            .program = "把单据导入 ERP 账套的存货核算模块。",
            .usage = "用法",
            .options = "选项",
            .command = "命令",
            .commands = "命令",
            .arguments = "参数",
            .required = "必填",
            .help = "显示本帮助",
            .version = "显示版本及所用各库的版本",
            .lang = "提示语言：zh 或 en；不指定时由 LC_ALL、LC_MESSAGES 或 LANG 决定",
            .login = "登录文件（XML）；可用 kovra login init 生成",
            .trace = "把发给数据库的每条语句写入 FILE，每行一个 JSON 对象",
            .transact = "用指定的类执行请求并写出结果；汇总写到标准错误",
            .transactClass = "类名：{0}",
            .transactRequest = "请求文件（XML）；写 - 或不写则读标准输入",
            .transactFormat = "结果的格式：xml（类的原样结果）、table（表格）或 json；不指定时终端上为表格，否则为 xml",
            .transactJournal = "每得到一行的结果就立即追加到 FILE，每行一个 JSON 对象；FILE 原有内容保留",
            .transactQuiet = "标准错误上不显示汇总和进度",
            .query = "查询出入库单据，写出填好的信封",
            .queryConditions = "查询条件文件（XML）；不写则无条件",
            .queryEnvelope = "信封文件（XML）；写 - 或不写则读标准输入",
            .sql = "执行 T-SQL 批，输出结果行；行数和消息写到标准错误",
            .sqlExecute = "一条语句；可重复给出",
            .sqlFiles = "批文件，各批之间以只含 GO 的行分隔",
            .sqlFormat = "结果行的格式：不给时终端上为 table，否则为 json（每行一个对象）",
            .sqlTimeout = "每批最长执行时间；不给则不限时",
            .account = "账套数据库",
            .accountCreate = "在空的账套数据库中建立所需的表",
            .accountDemo = "同时建立一家演示用的小公司",
            .accountDatabase = "在服务器上：为账套创建名为 NAME 的数据库（已有则直接使用）",
            .loginCommand = "登录文件",
            .loginCheck = "检查登录文件缺什么、错在哪里，打开账套并说明其情况",
            .loginInit = "生成登录文件，只有本人可读",
            .loginInitFile = "要生成的文件；已存在的文件不会被覆盖",
            .loginInitConnection = "账套数据库的连接字符串",
            .loginInitAccount = "账套号",
            .loginInitYear = "会计年度",
            .loginInitUser = "操作员编码",
            .loginInitName = "操作员姓名；单据未写制单人时以此为制单人",
            .exitStatus = "退出状态：\n"
                          "  0    全部导入成功，或已执行 EMPTY\n"
                          "  1    部分或全部行被拒绝；query、sql、account 和 login：所要求的操作失败\n"
                          "  2    命令行或文件有误，无法使用\n"
                          "  3    整个请求未被接受，结果为错误结果\n"
                          "  130  被中断；中断前已完成的部分见结果",
        },
    .usage =
        {
            .unexpected = "无法识别 {0}",
            .missingOption = "缺少 {0}",
            .missingCommand = "缺少命令",
            .missingValue = "{0} 需要一个值",
            .wrongValue = "可用的值为 {0}",
            .seeHelp = "用法见 {0} --help",
            .unknownClass = "没有名为“{0}”的类；可用的类有 {1}",
            .didYouMean = "是否想写 {0}？",
        },
    .server =
        {
            .databaseCreated = "已创建数据库 {0}",
            .databaseThere = "数据库 {0} 已经存在",
            .calendarMade = "已在 QxSystem 中建立日历表 UA_Period",
            .calendarThere = "QxSystem 中已有日历表 UA_Period，保持原样",
            .nameInLogin = "接下来请在登录文件的 QxDbName 中写入 Database={0}",
            .noServer = "--database 只用于服务器上的账套；这个登录的账套是一个文件",
        },
};

} // namespace cli
