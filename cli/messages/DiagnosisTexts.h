#pragma once

#include "cli/messages/Language.h"

namespace cli {

/// What `kovra trace` says.
struct TraceTexts {
    Speech say;

    Phrase lineHeading = say("行", "Line");
    Phrase timeHeading = say("毫秒", "ms");
    Phrase countHeading = say("次数", "Times");
    Phrase operationHeading = say("操作", "Operation");
    Phrase errorHeading = say("错误", "Error");
    Phrase statementHeading = say("语句", "Statement");
    Phrase slowest = say("最慢的操作：", "The slowest:");
    Phrase repeated =
        say("重复出现的语句（不计其中的值）：", "Statements that come more than once, whatever their values:");
    /// `{0}` how many operations, `{1}` how many of them failed.
    Phrase sum = say("操作 {0} 次，失败 {1} 次。", "Operations: {0}, failed: {1}.");
    /// `{0}` milliseconds.
    Phrase time = say("数据库用时共 {0} 毫秒。", "Time in the database: {0} ms.");
    Phrase untimed = say("跟踪中没有用时；加上 --trace-times 才会写出。",
                         "The trace tells no times; --trace-times has them written.");
    /// `{0}` the line.
    Phrase noTrace = say("第 {0} 行不是跟踪文件的内容", "line {0} is no line of a trace");
};

/// What `kovra doctor` says.
struct DoctorTexts {
    Speech say;

    Phrase classHeading = say("类", "Class");
    Phrase sizeHeading = say("位数", "Size");
    Phrase versionHeading = say("版本", "Version");
    Phrase stateHeading = say("状态", "State");
    Phrase fileHeading = say("文件", "File");
    Phrase bits64 = say("64 位", "64-bit");
    Phrase bits32 = say("32 位", "32-bit");
    Phrase created = say("可以创建", "can be created");
    /// `{0}` the HRESULT, `{1}` what the system says of it.
    Phrase notCreated = say("无法创建：{0}：{1}", "cannot be created: {0}: {1}");
    /// Of a class of the other size, in a process of its own.
    Phrase createdApart = say("可以创建（代理进程）", "can be created (surrogate)");
    /// `{0}` the HRESULT, `{1}` what the system says of it.
    Phrase notCreatedApart = say("代理进程无法创建：{0}：{1}", "cannot be created (surrogate): {0}: {1}");
    Phrase notRegistered = say("没有注册", "is not registered");
    /// Of a class that this program's size cannot create.
    Phrase otherSize = say("属于另一种位数", "of the other size");
    Phrase fileMissing = say("文件不存在", "its file is missing");
    /// `{0}` the database.
    Phrase accountOpens = say("账套可以打开：{0}", "The account opens: {0}");
    /// `{0}` the error's number, `{1}` its description.
    Phrase accountFails = say("账套无法打开：{0}：{1}", "The account cannot be opened: {0}: {1}");
    Phrase healthy = say("Kovra 所需的组件齐全。", "Everything that Kovra needs is here.");
    /// `{0}` how many classes.
    Phrase missing =
        say("Kovra 所需的组件中，有 {0} 个在此无法创建。", "Of what Kovra needs, {0} cannot be created here.");
    Phrase askOtherSize = say("其中一些以另一种位数注册：请用那种位数的 kovra.exe 检查。",
                              "Some are there in the other size: ask the kovra.exe of that size about them.");
};

} // namespace cli
