#pragma once

#include "import/messages/Language.h"

namespace importing::report {

/// What the report says, in one language.
struct Words {
    Speech say;

    /// The value of the attribute `lang`.
    Phrase languageTag = say("zh-CN", "en");
    Phrase testRun = say("试运行报告", "Report of a test run");
    Phrase import = say("导入报告", "Import report");

    // What happened, and what follows. {0} rows, {1} rows refused.
    Phrase wouldTake =
        say("试运行：可导入 {0} 行，拒绝 {1} 行。", "Test run: {0} rows can be imported, {1} are refused.");
    Phrase nothingChanged = say("账套没有任何改动。", "Nothing in the account was changed.");
    Phrase imported = say("已导入 {0} 行，拒绝 {1} 行。", "{0} rows were imported, {1} were refused.");
    Phrase unusable = say("文件不能导入，没有导入任何数据。", "The file cannot be imported. Nothing was imported.");
    /// {0} the code, {1} the message.
    Phrase ledgerRefuses = say("账套不接受这次导入（{0}）：{1}", "The account does not accept this import ({0}): {1}");
    /// {0} rows.
    Phrase interrupted = say("导入中断，还有 {0} 行没有处理；再次运行同一命令即可继续。",
                             "The import was interrupted with {0} rows to go; the same command goes on with them.");
    Phrase inDoubt = say("有 {0} 行不能确定是否已入账，请在账套中核对。",
                         "Of {0} rows it is not certain whether they are in the ledger; look them up in the account.");
    Phrase alreadyIn = say("其中 {0} 行以前已导入，没有重复写入。",
                           "{0} of them had been imported before and were not written again.");
    /// Of rows that are hidden; {0} rows.
    Phrase hidden = say("文件中有 {0} 行被隐藏或筛选掉。", "{0} rows of the file are hidden or filtered out.");

    Phrase facts = say("文件与操作", "File and operator");
    Phrase file = say("文件", "File");
    Phrase hash = say("文件校验值（SHA-256）", "File's hash (SHA-256)");
    /// {0} the size in bytes.
    Phrase bytes = say("{0} 字节", "{0} bytes");
    Phrase when = say("时间", "Time");
    Phrase who = say("操作员", "Operator");
    Phrase account = say("账套", "Account");
    Phrase year = say("会计年度", "Accounting year");
    Phrase className = say("导入内容", "What was imported");
    Phrase number = say("导入编号", "Import number");

    Phrase totals = say("合计", "Totals");
    Phrase taken = say("已导入", "Imported");
    Phrase ready = say("可导入", "Can be imported");
    Phrase corrected = say("其中有更正", "of these, corrected");
    Phrase refused = say("拒绝", "Refused");
    Phrase open = say("未处理", "Not processed");
    Phrase rows = say("行数", "Rows");
    Phrase quantity = say("数量", "Quantity");
    Phrase amount = say("金额", "Amount");
    Phrase byWarehouse = say("按仓库", "By warehouse");
    Phrase warehouse = say("仓库编码", "Warehouse");
    Phrase byAccount = say("按存货科目", "By inventory account");
    Phrase stockAccount = say("科目编码", "Account code");
    Phrase noAccount = say("（未设科目）", "(no account set)");
    Phrase name = say("名称", "Name");
    Phrase sum = say("合计", "Total");

    Phrase refusals = say("拒绝的原因", "Why rows are refused");
    Phrase reason = say("原因", "Reason");
    Phrase count = say("次数", "How often");
    Phrase places = say("最先出现在", "First in");
    /// {0} the number.
    Phrase line = say("第 {0} 行", "line {0}");
    Phrase byClass = say("账套的提示", "said by the account");
    Phrase warnings = say("请留意", "Worth a look");
    Phrase remarks = say("说明", "Remarks");

    Phrase corrections = say("更正", "Corrections");
    Phrase cell = say("单元格", "Cell");
    Phrase heading = say("列", "Column");
    Phrase old = say("原值", "As it stood");
    Phrase now = say("改为", "Taken as");
    /// {0} how many are not listed.
    Phrase more = say("另有 {0} 处没有列出。", "{0} more are not listed.");
    Phrase none = say("没有。", "None.");

    Phrase maker = say("制单", "Prepared by");
    Phrase checker = say("审核", "Checked by");
    Phrase date = say("日期", "Date");
};

} // namespace importing::report
