#pragma once

#include "cli/messages/Language.h"

namespace cli {

/// What is told of a spreadsheet's cells.
struct SheetTexts {
    Speech say;

    /// `{0}` how many.
    Phrase corrections = say("更正了 {0}：", "{0} corrected:");
    /// `{0}` the place, `{1}` what stands there, `{2}` what it became.
    Phrase correction = say("{0}：“{1}”改为“{2}”", "{0}: \"{1}\" became \"{2}\"");
    /// `{0}` how many.
    Phrase warnings = say("请留意 {0}：", "A look at {0} is advised:");
    /// `{0}` how many rows.
    Phrase refusals = say("拒绝了 {0}：", "{0} refused:");
    /// `{0}` the place, `{1}` the reason.
    Phrase finding = say("{0}：{1}", "{0}: {1}");
    /// `{0}` how many.
    Phrase moreLines = say("另有 {0} 处；用 --json 可得到全部", "and {0} more; --json has them all");
    /// `{0}` how many rows.
    Phrase hiddenTaken = say("其中隐藏或筛选掉的 {0}也已计入。", "{0}, hidden or filtered out, are among them.");
    Phrase hiddenSkipped = say("跳过了隐藏或筛选掉的 {0}。", "{0}, hidden or filtered out, were left out.");
    /// `{0}` how many rows are taken, `{1}` how many refused.
    Phrase taken = say("可导入 {0}，拒绝 {1}。", "{0} can be imported, {1} refused.");
    Phrase noRows = say("表中没有数据行", "the table has no rows");
    /// `{0}` the file.
    Phrase requestWritten = say("请求已写到 {0}。", "The request is in {0}.");
    Phrase requestNotWritten = say("没有写出请求。", "No request was written.");
    /// `{0}` the file.
    Phrase templateWritten = say("已生成 {0}，带 * 的列必填。", "Made {0}; the columns with * are required.");
    Phrase templateThere = say("{0} 已经存在，没有覆盖", "{0} is there already; it was left as it is");
};

/// What `kovra import` and `kovra imports` say.
struct ImportTexts {
    Speech say;

    /// `{0}` how many rows.
    Phrase progressRefused = say("，已拒绝 {0} 行", ", {0} refused");
    /// `{0}` how many rows.
    Phrase ready = say("可以导入 {0}", "{0} can be imported");
    Phrase imported = say("已在账套中 {0}", "{0} in the account");
    /// `{0}` the quantity, `{1}` the amount.
    Phrase sums = say("，数量 {0}，金额 {1}", ", quantity {0}, amount {1}");
    /// `{0}` how many rows.
    Phrase corrected = say("  其中 {0}有更正", "  of these, {0} with corrections");
    Phrase hidden = say("  表中有 {0}被隐藏", "  {0} of the table hidden");
    Phrase refused = say("拒绝 {0}", "{0} refused");
    Phrase warnings = say("请核对：", "Worth a look:");
    /// `{0}` how many rows.
    Phrase open = say("未处理 {0}", "{0} not processed");
    /// `{0}` how often, `{1}` the reason, `{2}` the places.
    Phrase reason = say("  {0} 处：{1}（{2}）", "  {0}: {1} ({2})");
    Phrase betweenPlaces = say("、", ", ");
    Phrase morePlaces = say(" 等", ", ...");
    /// `{0}` how many.
    Phrase moreReasons = say("  另有 {0} 种原因", "  {0} further reasons");
    /// `{0}` the code, `{1}` the message.
    Phrase ledgerRefuses = say("账套不接受导入（{0}）：{1}", "The account takes nothing ({0}): {1}");
    Phrase testRun = say("这是试运行，账套没有改动；正式导入请加 --commit。",
                         "This was a test run; the account is unchanged. --commit imports in earnest.");
    Phrase interrupted = say("已中断；再执行同一命令，接着导入其余各行。",
                             "Interrupted; the same command again goes on with the other rows.");
    Phrase interruptedTest =
        say("试运行已中断，账套没有改动。", "The test run was interrupted; the account is unchanged.");
    /// `{0}` the number, `{1}` the login.
    Phrase undoHint =
        say("如需撤销：kovra imports undo {0} --login {1}", "To take it back: kovra imports undo {0} --login {1}");
    /// `{0}` the file.
    Phrase refusedWritten =
        say("被拒绝的行：{0}（更正后再导入这个文件）", "Refused rows: {0} (correct and import that file)");
    Phrase reportWritten = say("报告：{0}", "Report: {0}");
    /// `{0}` the file.
    Phrase logBusy = say("导入记录 {0} 正被另一次导入使用", "the import log {0} is in use by another import");
    Phrase noImports = say("还没有导入过。", "Nothing has been imported yet.");
    /// `{0}` the number.
    Phrase unknownImport =
        say("没有编号为 {0} 的导入，或它不属于这个账套", "there is no import {0}, or it is of another account");
    Phrase nothingToUndo = say("第 {0} 次是试运行，或已经撤销", "{0} is a test run, or was taken back already");
    /// `{0}` the number, `{1}` how many rows.
    Phrase undone =
        say("已撤销第 {0} 次导入，从账套删除 {1}", "Import {0} is taken back; {1} deleted from the account");
    Phrase undoNotByClass =
        say("单据不能这样撤销；请在 ERP 中删除。", "Documents are not taken back like this; delete them in the ERP.");
    Phrase undoPosted = say("期初已经记账，不能撤销；请先在 ERP 中取消期初记账。",
                            "The opening balances are posted; undo the posting in the ERP first.");
    /// `{0}` how many rows.
    Phrase undoChanged = say("{0}导入后改动过或已删除，没有撤销任何内容。",
                             "{0} changed or deleted since the import; nothing was taken back.");
    /// `{0}` the lines.
    Phrase undoChangedLines = say("  文件中的行：{0}", "  Lines of the file: {0}");
    /// `{0}` the hash.
    Phrase fileHash = say("文件的 SHA-256：{0}", "SHA-256 of the file: {0}");
    /// What the tables are headed by.
    Phrase number = say("编号", "No.");
    Phrase time = say("时间", "Time");
    Phrase state = say("状态", "State");
    Phrase className = say("类", "Class");
    Phrase file = say("文件", "File");
    Phrase operatorName = say("操作员", "Operator");
    Phrase rowsIn = say("导入行", "Rows in");
    Phrase rowsRefused = say("拒绝行", "Refused");
    Phrase amount = say("金额", "Amount");
    Phrase line = say("行", "Line");
    Phrase record = say("账套记录号", "Record");
    Phrase stateTest = say("试运行", "test run");
    Phrase stateCutOff = say("已中断", "cut off");
    Phrase stateEnded = say("已完成", "done");
    Phrase stateUndone = say("已撤销", "undone");
    Phrase unitBegun = say("未定", "in doubt");
    Phrase unitImported = say("已导入", "imported");
    Phrase unitNotIn = say("未导入", "not in");
};

} // namespace cli
