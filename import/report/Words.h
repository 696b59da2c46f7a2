#pragma once

#include "import/messages/Language.h"

#include <string_view>

namespace importing::report {

/// What the report says, in one language.
struct Words {
    Speech say;

    /// The value of the attribute `lang`.
    std::string_view languageTag = say("zh-CN", "en");
    std::string_view testRun = say("试运行报告", "Report of a test run");
    std::string_view import = say("导入报告", "Import report");

    // What happened, and what follows. {0} rows, {1} rows refused.
    std::string_view wouldTake =
        say("试运行：可导入 {0} 行，拒绝 {1} 行。", "Test run: {0} rows can be imported, {1} are refused.");
    std::string_view nothingChanged = say("账套没有任何改动。", "Nothing in the account was changed.");
    std::string_view imported = say("已导入 {0} 行，拒绝 {1} 行。", "{0} rows were imported, {1} were refused.");
    std::string_view unusable =
        say("文件不能导入，没有导入任何数据。", "The file cannot be imported. Nothing was imported.");
    /// {0} the code, {1} the message.
    std::string_view ledgerRefuses =
        say("账套不接受这次导入（{0}）：{1}", "The account does not accept this import ({0}): {1}");
    /// {0} rows.
    std::string_view interrupted =
        say("导入中断，还有 {0} 行没有处理；再次运行同一命令即可继续。",
            "The import was interrupted with {0} rows to go; the same command goes on with them.");
    std::string_view inDoubt =
        say("有 {0} 行不能确定是否已入账，请在账套中核对。",
            "Of {0} rows it is not certain whether they are in the ledger; look them up in the account.");
    std::string_view alreadyIn = say("其中 {0} 行以前已导入，没有重复写入。",
                                     "{0} of them had been imported before and were not written again.");
    /// Of rows that are hidden; {0} rows.
    std::string_view hidden =
        say("文件中有 {0} 行被隐藏或筛选掉。", "{0} rows of the file are hidden or filtered out.");

    std::string_view facts = say("文件与操作", "File and operator");
    std::string_view file = say("文件", "File");
    std::string_view hash = say("文件校验值（SHA-256）", "File's hash (SHA-256)");
    /// {0} the size in bytes.
    std::string_view bytes = say("{0} 字节", "{0} bytes");
    std::string_view when = say("时间", "Time");
    std::string_view who = say("操作员", "Operator");
    std::string_view account = say("账套", "Account");
    std::string_view year = say("会计年度", "Accounting year");
    std::string_view className = say("导入内容", "What was imported");
    std::string_view number = say("导入编号", "Import number");

    std::string_view totals = say("合计", "Totals");
    std::string_view taken = say("已导入", "Imported");
    std::string_view ready = say("可导入", "Can be imported");
    std::string_view corrected = say("其中有更正", "of these, corrected");
    std::string_view refused = say("拒绝", "Refused");
    std::string_view open = say("未处理", "Not processed");
    std::string_view rows = say("行数", "Rows");
    std::string_view quantity = say("数量", "Quantity");
    std::string_view amount = say("金额", "Amount");
    std::string_view byWarehouse = say("按仓库", "By warehouse");
    std::string_view warehouse = say("仓库编码", "Warehouse");
    std::string_view byAccount = say("按存货科目", "By inventory account");
    std::string_view stockAccount = say("科目编码", "Account code");
    std::string_view noAccount = say("（未设科目）", "(no account set)");
    std::string_view name = say("名称", "Name");
    std::string_view sum = say("合计", "Total");

    std::string_view refusals = say("拒绝的原因", "Why rows are refused");
    std::string_view reason = say("原因", "Reason");
    std::string_view count = say("次数", "How often");
    std::string_view places = say("最先出现在", "First in");
    /// {0} the number.
    std::string_view line = say("第 {0} 行", "line {0}");
    std::string_view byClass = say("账套的提示", "said by the account");
    std::string_view warnings = say("请留意", "Worth a look");
    std::string_view remarks = say("说明", "Remarks");

    std::string_view corrections = say("更正", "Corrections");
    std::string_view cell = say("单元格", "Cell");
    std::string_view heading = say("列", "Column");
    std::string_view old = say("原值", "As it stood");
    std::string_view now = say("改为", "Taken as");
    /// {0} how many are not listed.
    std::string_view more = say("另有 {0} 处没有列出。", "{0} more are not listed.");
    std::string_view none = say("没有。", "None.");

    std::string_view maker = say("制单", "Prepared by");
    std::string_view checker = say("审核", "Checked by");
    std::string_view date = say("日期", "Date");
};

} // namespace importing::report
