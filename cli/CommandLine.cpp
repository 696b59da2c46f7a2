#include "cli/CommandLine.h"

#include "cli/Classes.h"
#include "cli/Commands.h"
#include "cli/HelpFormatter.h"
#include "cli/Host.h"
#include "cli/Output.h"
#include "cli/Platform.h"
#include "cli/Registered.h"
#include "cli/SheetOptions.h"
#include "cli/Version.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/ranges.h>

namespace cli {
namespace {

/// The language that `--lang` chooses, before anything else is read: the help speaks it too.
Language ChosenLanguage(const std::vector<std::string>& arguments) {
    constexpr std::string_view option = "--lang";
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        std::string_view argument = arguments[i];
        if (argument == option && i + 1 < arguments.size()) {
            argument = arguments[i + 1];
        } else if (argument.starts_with(option) && argument.substr(option.size()).starts_with("=")) {
            argument.remove_prefix(option.size() + 1);
        } else {
            continue;
        }
        if (const std::optional<Language> language = LanguageNamed(argument)) {
            return *language;
        }
    }
    return LanguageOfEnvironment();
}

/// What the command line is read into; it outlives the command.
struct Arguments {
    std::string language;
    TransactArguments transact;
    QueryArguments query;
    ImportArguments import;
    ImportsArguments imports;
    SqlArguments sql;
    RequestArguments request;
    TemplateArguments workbook;
    AccountArguments account;
    LoginCheckArguments loginCheck;
    LoginInitArguments loginInit;
    DoctorArguments doctor;
    TraceShowArguments traceShow;
    std::function<int(Console&)> command;
};

class Reader {
public:
    Reader(const Messages& messages, Arguments& arguments)
        : help_(messages.help), usage_(messages.usage), arguments_(arguments) {
        app_.formatter(std::make_shared<HelpFormatter>(help_));
        // On Windows too, a name that begins with '/' is a file's.
        app_.allow_windows_style_options(false);
        app_.option_defaults()->group(std::string(help_.options));
        AddHelp(app_);
        app_.set_version_flag("--version", VersionText, Text(help_.version));
        AddLanguage(app_);
        app_.require_subcommand(1);
        app_.footer(Text(help_.exitStatus));
        AddTransact();
        AddQuery();
        AddTemplate();
        AddRequest();
        AddImport();
        AddImports();
        AddSql();
        AddAccount();
        AddLoginCommands();
        AddTraceCommands();
        if constexpr (hasCom) {
            AddDoctor();
        }
    }

    CLI::App& app() { return app_; }

private:
    static std::string Text(std::string_view text) { return std::string(text); }

    CLI::App* AddCommand(CLI::App& parent, const char* name, std::string_view meaning) {
        CLI::App* const command = parent.add_subcommand(name, Text(meaning));
        command->group(Text(help_.commands));
        AddHelp(*command);
        AddLanguage(*command);
        return command;
    }
    void AddHelp(CLI::App& command) { command.set_help_flag("-h,--help", Text(help_.help)); }
    void AddLanguage(CLI::App& command) { AddChoice(command, "--lang", arguments_.language, help_.lang, {"zh", "en"}); }
    /// Refuses all but whole numbers from 1 on.
    auto PositiveNumber() const {
        return [words = std::string(usage_.wrongNumber)](const std::string& given) {
            unsigned number = 0;
            const auto [end, error] = std::from_chars(given.data(), given.data() + given.size(), number);
            return error == std::errc() && end == given.data() + given.size() && number > 0 ? std::string() : words;
        };
    }
    /// An option that takes one of a few values.
    void AddChoice(CLI::App& command, const char* name, std::string& value, std::string_view meaning,
                   const std::vector<std::string>& choices) {
        const auto check = [choices,
                            words = Fill(usage_.wrongValue, fmt::join(choices, ", "))](const std::string& given) {
            return std::ranges::find(choices, given) == choices.end() ? words : std::string();
        };
        command.add_option(name, value, Text(meaning))
            ->type_name(fmt::format("{}", fmt::join(choices, "|")))
            ->check(check);
    }
    void AddLogin(CLI::App& command, std::string& login) {
        command.add_option("--login", login, Text(help_.login))->required()->type_name("FILE");
    }
    void AddTrace(CLI::App& command, std::string& file, bool& times) {
        command.add_option("--trace", file, Text(help_.trace))->type_name("FILE");
        command.add_flag("--trace-times", times, Text(help_.traceTimes));
    }
    /// Where there is but one host, nothing is to be chosen.
    void AddHost(CLI::App& command, std::string& host) {
        if (const std::vector<std::string> names = HostNames(); names.size() > 1) {
            AddChoice(command, "--host", host, help_.host, names);
        }
    }
    void Runs(CLI::App& command, std::function<int(Console&)> run) {
        command.callback([this, run = std::move(run)] { arguments_.command = run; });
    }

    /// The options that say how a spreadsheet is read.
    void AddSheet(CLI::App& command, SheetArguments& sheet) {
        command.add_option("FILE", sheet.file, Text(help_.sheetFile))->required();
        command.add_option("--class", sheet.className, Fill(help_.sheetClass, ClassNames()))->type_name("CLASS");
        command.add_option("--sheet", sheet.sheet, Text(help_.sheetName))->type_name("NAME");
        command.add_option("--header-row", sheet.headerRow, Text(help_.sheetHeaderRow))
            ->type_name("ROW")
            ->check(PositiveNumber());
        command.add_option("--map", sheet.map, Text(help_.sheetMap))
            ->allow_extra_args(false)
            ->type_name(Text(help_.sheetMapValue));
        command.add_option("--encoding", sheet.encoding, Text(help_.sheetEncoding))->type_name("NAME");
        AddChoice(command, "--hidden", sheet.hidden, help_.sheetHidden, {"include", "skip"});
        command.add_flag("--fix-codes", sheet.fixCodes, Text(help_.sheetFixCodes));
        command.add_flag("--allow-duplicates", sheet.allowDuplicates, Text(help_.sheetAllowDuplicates));
    }

    static void FromLocale(SheetArguments& sheet) {
        sheet.sheet = platform::FromLocale(sheet.sheet);
        for (std::string& entry : sheet.map) {
            entry = platform::FromLocale(entry);
        }
    }

    void AddTransact() {
        TransactArguments& transact = arguments_.transact;
        CLI::App& command = *AddCommand(app_, "transact", help_.transact);
        command.add_option("--class", transact.className, Fill(help_.transactClass, ClassNames()))
            ->required()
            ->type_name("CLASS");
        AddLogin(command, transact.login);
        AddTrace(command, transact.trace, transact.traceTimes);
        command.add_option("--journal", transact.journal, Text(help_.transactJournal))->type_name("FILE");
        AddChoice(command, "--format", transact.format, help_.transactFormat, {"xml", "table", "json"});
        AddHost(command, transact.host);
        if constexpr (hasCom) {
            command.add_flag("--server", transact.registered, Text(help_.transactServer));
        }
        command.add_flag("-q,--quiet", transact.quiet, Text(help_.transactQuiet));
        command.add_option("REQUEST", transact.request, Text(help_.transactRequest));
        Runs(command, [&transact](Console& console) { return RunTransact(transact, console); });
    }

    void AddQuery() {
        QueryArguments& query = arguments_.query;
        CLI::App& command = *AddCommand(app_, "query", help_.query);
        AddLogin(command, query.login);
        command.add_option("--conditions", query.conditions, Text(help_.queryConditions))->type_name("FILE");
        AddTrace(command, query.trace, query.traceTimes);
        AddHost(command, query.host);
        command.add_option("ENVELOPE", query.envelope, Text(help_.queryEnvelope));
        Runs(command, [&query](Console&) { return RunQuery(query); });
    }

    void AddTemplate() {
        TemplateArguments& workbook = arguments_.workbook;
        CLI::App& command = *AddCommand(app_, "template", help_.workbook);
        command.add_option("CLASS", workbook.className, Fill(help_.transactClass, ClassNames()))->required();
        command.add_option("-o,--output", workbook.output, Text(help_.workbookOutput))->required()->type_name("FILE");
        command.add_option("--login", workbook.login, Text(help_.workbookLogin))->type_name("FILE");
        Runs(command, [&workbook](Console& console) { return RunTemplate(workbook, console); });
    }

    void AddRequest() {
        RequestArguments& request = arguments_.request;
        CLI::App& command = *AddCommand(app_, "request", help_.request);
        AddSheet(command, request.sheet);
        command.add_option("-o,--output", request.output, Text(help_.requestOutput))->type_name("FILE");
        command.add_option("--login", request.login, Text(help_.requestLogin))->type_name("FILE");
        command.add_flag("--json", request.json, Text(help_.sheetJson));
        command.add_flag("-q,--quiet", request.quiet, Text(help_.requestQuiet));
        Runs(command, [&request](Console& console) {
            FromLocale(request.sheet);
            return RunRequest(request, console);
        });
    }

    void AddImport() {
        ImportArguments& import = arguments_.import;
        CLI::App& command = *AddCommand(app_, "import", help_.import);
        AddSheet(command, import.sheet);
        AddLogin(command, import.login);
        command.add_flag("--commit", import.commit, Text(help_.importCommit));
        command.add_flag("--strict", import.strict, Text(help_.importStrict));
        command.add_option("--report", import.report, Text(help_.importReport))->type_name("FILE");
        command.add_option("--refused", import.refused, Text(help_.importRefused))->type_name("FILE");
        command.add_flag("--json", import.json, Text(help_.sheetJson));
        command.add_flag("-q,--quiet", import.quiet, Text(help_.requestQuiet));
        Runs(command, [&import](Console& console) {
            FromLocale(import.sheet);
            return RunImport(import, console);
        });
    }

    void AddImports() {
        CLI::App& imports = *AddCommand(app_, "imports", help_.imports);
        imports.require_subcommand(1);
        AddImportsCommand(imports, "list", help_.importsList, RunImportsList);
        AddImportsNumber(AddImportsCommand(imports, "show", help_.importsShow, RunImportsShow));
        AddImportsNumber(AddImportsCommand(imports, "undo", help_.importsUndo, RunImportsUndo));
    }
    CLI::App& AddImportsCommand(CLI::App& parent, const char* name, std::string_view meaning,
                                int (*run)(const ImportsArguments& arguments, Console& console)) {
        CLI::App& command = *AddCommand(parent, name, meaning);
        ImportsArguments& imports = arguments_.imports;
        AddLogin(command, imports.login);
        Runs(command, [&imports, run](Console& console) { return run(imports, console); });
        return command;
    }
    void AddImportsNumber(CLI::App& command) {
        command.add_option("NUMBER", arguments_.imports.number, Text(help_.importsNumber))
            ->required()
            ->check(CLI::Validator(CLI::PositiveNumber).description(""));
    }

    void AddSql() {
        SqlArguments& sql = arguments_.sql;
        CLI::App& command = *AddCommand(app_, "sql", help_.sql);
        AddLogin(command, sql.login);
        command.add_option("-e,--execute", sql.statements, Text(help_.sqlExecute))
            ->allow_extra_args(false)
            ->type_name("SQL");
        command.add_option("FILE", sql.files, Text(help_.sqlFiles));
        AddChoice(command, "--format", sql.format, help_.sqlFormat, {"table", "json", "csv"});
        command.add_option("--timeout", sql.seconds, Text(help_.sqlTimeout))
            ->type_name("SECONDS")
            ->check(PositiveNumber());
        Runs(command, [&sql](Console& console) {
            for (std::string& statement : sql.statements) {
                statement = platform::FromLocale(statement);
            }
            return RunSql(sql, console);
        });
    }

    void AddAccount() {
        AccountArguments& account = arguments_.account;
        CLI::App& accounts = *AddCommand(app_, "account", help_.account);
        accounts.require_subcommand(1);
        CLI::App& command = *AddCommand(accounts, "create", help_.accountCreate);
        AddLogin(command, account.login);
        command.add_flag("--demo", account.demo, Text(help_.accountDemo));
        command.add_option("--database", account.database, Text(help_.accountDatabase))->type_name("NAME");
        Runs(command, [&account](Console& console) { return RunAccountCreate(account, console); });
        AddAccountCopy(accounts, "backup", help_.accountBackup, RunAccountBackup);
        AddAccountCopy(accounts, "restore", help_.accountRestore, RunAccountRestore);
        AddAccountWork(accounts, "check", help_.accountCheck, RunAccountCheck);
        AddAccountWork(accounts, "upgrade", help_.accountUpgrade, RunAccountUpgrade);
    }

    using AccountWork = int (*)(const AccountArguments&, Console&);

    CLI::App& AddAccountWork(CLI::App& accounts, const char* name, std::string_view meaning, AccountWork work) {
        AccountArguments& account = arguments_.account;
        CLI::App& command = *AddCommand(accounts, name, meaning);
        AddLogin(command, account.login);
        Runs(command, [&account, work](Console& console) { return work(account, console); });
        return command;
    }
    /// A command that copies to or from a file.
    void AddAccountCopy(CLI::App& accounts, const char* name, std::string_view meaning, AccountWork work) {
        CLI::App& command = AddAccountWork(accounts, name, meaning, work);
        command.add_flag("--system", arguments_.account.system, Text(help_.accountSystem));
        command.add_option("FILE", arguments_.account.file, Text(help_.accountFile))->required();
    }

    void AddLoginCommands() {
        CLI::App& logins = *AddCommand(app_, "login", help_.loginCommand);
        logins.require_subcommand(1);
        LoginCheckArguments& check = arguments_.loginCheck;
        CLI::App& checkCommand = *AddCommand(logins, "check", help_.loginCheck);
        AddLogin(checkCommand, check.login);
        Runs(checkCommand, [&check](Console& console) { return RunLoginCheck(check, console); });

        LoginInitArguments& init = arguments_.loginInit;
        CLI::App& initCommand = *AddCommand(logins, "init", help_.loginInit);
        const auto add = [&initCommand](const char* name, std::string& value, std::string_view meaning,
                                        const char* type) {
            initCommand.add_option(name, value, Text(meaning))->type_name(type);
        };
        add("--connection", init.connection, help_.loginInitConnection, "TEXT");
        add("--account", init.account, help_.loginInitAccount, "ID");
        add("--year", init.year, help_.loginInitYear, "YEAR");
        add("--user", init.user, help_.loginInitUser, "ID");
        add("--name", init.userName, help_.loginInitName, "NAME");
        initCommand.add_option("FILE", init.file, Text(help_.loginInitFile));
        Runs(initCommand, [&init](Console& console) {
            for (std::string* text : {&init.connection, &init.account, &init.user, &init.userName}) {
                *text = platform::FromLocale(*text);
            }
            return RunLoginInit(init, console);
        });
    }

    void AddTraceCommands() {
        CLI::App& traces = *AddCommand(app_, "trace", help_.traceCommand);
        traces.require_subcommand(1);
        TraceShowArguments& show = arguments_.traceShow;
        CLI::App& command = *AddCommand(traces, "show", help_.traceShow);
        command.add_option("FILE", show.file, Text(help_.traceShowFile))->required();
        Runs(command, [&show](Console& console) { return RunTraceShow(show, console); });
    }

    void AddDoctor() {
        DoctorArguments& doctor = arguments_.doctor;
        CLI::App& command = *AddCommand(app_, "doctor", help_.doctor);
        command.add_option("--login", doctor.login, Text(help_.doctorLogin))->type_name("FILE");
        Runs(command, [&doctor](Console& console) { return RunDoctor(doctor, console); });
    }

    const HelpTexts& help_;
    const UsageTexts& usage_;
    Arguments& arguments_;
    CLI::App app_{std::string(help_.program), "kovra"};
};

/// The command that a usage error is about, as it is called: "kovra transact".
std::string CommandName(const CLI::App& app) {
    std::string name = app.get_name();
    for (const CLI::App* command = &app; !command->get_subcommands().empty();) {
        command = command->get_subcommands().front();
        name.append(" ").append(command->get_name());
    }
    return name;
}

/// The option that CLI11's words begin with.
std::string OptionIn(std::string_view words) { return std::string(words.substr(0, words.find_first_of(": "))); }

std::string WhatIsWrong(const CLI::App& app, const CLI::ParseError& error, const UsageTexts& texts) {
    std::string words = error.what();
    if (const std::vector<std::string> extras = app.remaining(true); !extras.empty()) {
        return Fill(texts.unexpected, extras.front());
    }
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
        return words.starts_with("A ") ? std::string(texts.missingCommand) : Fill(texts.missingOption, OptionIn(words));
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr && words.starts_with("-")) {
        return Fill(texts.missingValue, OptionIn(words));
    }
    return words;
}

} // namespace

Invocation ReadCommandLine(const std::vector<std::string>& words) {
    Invocation invocation;
    invocation.language = ChosenLanguage(words);
    const Messages& messages = MessagesIn(invocation.language);
    const auto arguments = std::make_shared<Arguments>();
    Reader reader(messages, *arguments);
    CLI::App& app = reader.app();
    try {
        // CLI11 takes them from the last to the first, without the program's name.
        app.parse(std::vector<std::string>(words.rbegin(), std::prev(words.rend())));
        invocation.command = [arguments](Console& console) { return arguments->command(console); };
    } catch (const CLI::Success& asked) {
        const bool version = dynamic_cast<const CLI::CallForVersion*>(&asked) != nullptr;
        WriteForPeople(version ? asked.what() : app.help());
    } catch (const CLI::ParseError& error) {
        Console console(invocation.language);
        console.Say(Console::Tone::bad, "kovra: ", WhatIsWrong(app, error, messages.usage));
        console.Say(Fill(messages.usage.seeHelp, CommandName(app)));
        invocation.status = exit_status::unusable;
    }
    return invocation;
}

} // namespace cli
