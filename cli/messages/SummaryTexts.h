#pragma once

#include "cli/messages/Language.h"

namespace cli {

/// What is told of an import. Rows, documents and entries come with their numbers, see `Noun`.
struct SummaryTexts {
    Speech say;

    /// `{0}` how many.
    Phrase accepted = say("已导入 {0}。", "{0} accepted.");
    Phrase allAccepted = say("{0}全部导入。", "All {0} accepted.");
    Phrase allRefused = say("没有导入任何数据，被拒绝 {0}。", "{0} refused, none accepted.");
    /// `{0}` how many were accepted, `{1}` how many refused.
    Phrase someRefused = say("已导入 {0}，被拒绝 {1}。", "{0} accepted, {1} refused.");
    /// `{0}` the row, `{1}` its key, `{2}` the message.
    Phrase refusal = say("  {0}（{1}）：{2}", "  {0} ({1}): {2}");
    /// The same without a key: `{0}` the row, `{1}` the message.
    Phrase refusalWithoutKey = say("  {0}：{1}", "  {0}: {1}");
    /// The same of a row that is written all the same.
    Phrase afterAcceptance =
        say("  {0}（{1}）：已经写入，但随后出现：{2}", "  {0} ({1}): it is written, but afterwards: {2}");
    /// `{0}` how many refusals are not shown.
    Phrase moreRefusals = say("  另有 {0} 条拒绝信息，全部见结果", "  and {0} more refusals; the result has them all");
    /// Stands for an empty message.
    Phrase noReason =
        say("没有给出原因，常见原因是值中含有单引号（'）", "no reason given; often a quote (') stands in a value");
    /// What an outcome without a row is of.
    Phrase request = say("整个请求", "the request");
    /// Stands between a document and its entry.
    Phrase betweenPlaces = say("", ", ");
    Phrase betweenClauses = say("；", "; ");
    /// `{0}` the row, `{1}` how many after it.
    Phrase stoppedByError = say("导入在{0}因错误停止，其后的 {1}没有处理。",
                                "An error ended the import at {0}; {1} behind it were not tried.");
    /// `{0}` the row, `{1}` what the driver says.
    Phrase connectionLost =
        say("处理{0}时与数据库的连接中断（{1}），不会自动重连，其后的数据均被拒绝；待数据库恢复后请重新导入这些数据。",
            "The connection to the database was lost at {0} ({1}). It is not opened again: what came after was "
            "refused; send it again when the database can be reached.");
    /// `{0}` the code, `{1}` the message.
    Phrase requestRefused = say("整个请求没有处理（{0}）：{1}", "The request was refused as a whole ({0}): {1}");
    Phrase nothingImported = say("没有导入任何数据。", "Nothing was imported.");
    Phrase noRows = say("请求中没有可导入的数据。", "The request holds nothing to import.");
    /// `{0}` the operation.
    Phrase emptied = say("已执行 {0}，该操作没有结果内容。", "Operation {0} is done; it has no result.");
    Phrase undone = say("全部已回滚，没有导入任何数据。", "Everything was rolled back: nothing was imported.");
    /// `{0}` how many were done, the number alone; `{1}` of how many; `{2}` how many were done, with their noun.
    Phrase interrupted = say("已中断：共 {1}，处理了 {2}。已导入的保留，其余请另发请求。",
                             "Interrupted after {0} of {1}. What was accepted stays; send the rest in a new request.");
    Phrase interruptedBefore =
        say("在第一行之前已中断，没有导入任何数据。", "Interrupted before the first row. Nothing was imported.");
    Phrase interruptedAfter =
        say("收到中断时已全部处理完毕。", "The interruption came when everything was done already.");
    /// Of a request that is written in one transaction.
    Phrase interruptedWhole = say("已中断；该类的请求要么整体写入，要么完全不写。",
                                  "Interrupted; this class writes a request as a whole or not at all.");
    Phrase stoppedByFailure = say("导入已停止：{0}", "The import was stopped: {0}");

    Phrase warning = say("注意：", "warning: ");
    Phrase rootTagNamesNothing = say("请求没有选中任何行：roottag 与其中各元素的名称都不相同",
                                     "the request selects no row: its roottag names none of its elements");
    /// `{0}` the operation asked for, `{1}` the class, `{2}` its operations.
    Phrase unknownOperation =
        say("请求的操作为“{0}”，而 {1} 支持的操作是 {2}", "the request asks for operation '{0}'; {1} offers {2}");
    Phrase emptyInput = say("标准输入是空的；请指定请求文件，或从标准输入送入请求",
                            "standard input was empty; name a request file or send one");
    /// `{0}` the element, `{1}` the class, `{2}` how often, `{3}` the first row.
    Phrase unknownField = say("<{0}> 不是 {1} 的字段，未被读取（{2}，首见于{3}）",
                              "<{0}> is no field of {1} and was not read ({2}, first in {3})");
    Phrase times = say("共 {0} 处", "{0} times");
    Phrase waitingForInput =
        say("正在从终端读取请求，以 Ctrl-D 结束", "reading the request from the terminal; Ctrl-D ends it");

    /// `{0}` how many have begun, `{1}` of how many.
    Phrase progress = say("已处理 {0}，共 {1}", "{0} of {1}");
    /// Behind it: `{0}` the time left.
    Phrase timeLeft = say("，约剩 {0}", ", about {0} left");
    /// `{0}` a number.
    Phrase seconds = say("{0} 秒", "{0} s");
    Phrase minutes = say("{0} 分钟", "{0} min");

    // The table of outcomes.
    Phrase rowHeading = say("行", "Row");
    Phrase outcomeHeading = say("结果", "Outcome");
    Phrase codeHeading = say("代码", "Code");
    Phrase keyHeading = say("键", "Key");
    Phrase messageHeading = say("提示信息", "Message");
    Phrase acceptedCell = say("接受", "accepted");
    Phrase refusedCell = say("拒绝", "refused");
};

} // namespace cli
