// `kovra trace show`: what a trace tells, for people.
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/Table.h"
#include "refhost/xml/FileText.h"
#include "text/JsonObject.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <stdexcept>
#include <vector>

namespace cli {
namespace {

/// How many of the slowest, and of the repeated, are told.
constexpr std::size_t told = 10;
/// Characters of a statement that are shown.
constexpr std::size_t shown = 160;

/// One thing that was asked of the database.
struct Operation {
    std::size_t line = 0;
    /// "Open", "Execute", "BeginTrans" and so on.
    std::string name;
    /// The statement, or the connection string; empty where there is neither.
    std::string text;
    /// The error's number; empty for success.
    std::string error;
    std::optional<std::int64_t> microseconds;
};

Operation ReadOperation(std::string_view json, std::size_t line, const TraceTexts& texts) {
    auto members = text::ReadJsonObject(json);
    if (!members || !members->contains("op")) {
        throw std::runtime_error(Fill(texts.noTrace, Grouped(line)));
    }
    const auto member = [&](std::string_view name) {
        const auto found = members->find(name);
        return found == members->end() ? std::string() : found->second;
    };
    Operation operation{.line = line,
                        .name = member("op"),
                        .text = member("sql"),
                        .error = member("error"),
                        .microseconds = std::nullopt};
    for (const std::string_view other : {"connection", "description"}) {
        operation.text.append(member(other));
    }
    if (members->contains("us")) {
        operation.microseconds = std::strtoll(member("us").c_str(), nullptr, 10);
    }
    return operation;
}

std::vector<Operation> ReadOperations(std::string_view text, const TraceTexts& texts) {
    std::vector<Operation> operations;
    std::size_t line = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        ++line;
        if (end != 0) {
            operations.push_back(ReadOperation(text.substr(0, end), line, texts));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return operations;
}

/// The statement without its values: texts and numbers become "?", so that those of many rows are one.
std::string Shape(std::string_view sql) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto isLetter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
               (static_cast<unsigned char>(c) & 0x80) != 0;
    };
    std::string shape;
    for (std::size_t position = 0; position < sql.size();) {
        const char c = sql[position];
        const bool inWord = !shape.empty() && (isLetter(shape.back()) || isDigit(shape.back()));
        if (c == '\'') {
            // A quote inside is written twice, and so begins a text right behind the first.
            const std::size_t end = std::min(sql.find('\'', position + 1), sql.size() - 1);
            if (!shape.ends_with('?')) {
                shape.push_back('?');
            }
            position = end + 1;
        } else if (isDigit(c) && !inWord) {
            position = std::min(sql.find_first_not_of("0123456789.", position), sql.size());
            shape.push_back('?');
        } else {
            shape.push_back(c);
            ++position;
        }
    }
    return shape;
}

std::string Milliseconds(std::int64_t microseconds) {
    return fmt::format("{}.{:03}", microseconds / 1000, microseconds % 1000);
}

/// On one line, and not longer than anybody reads.
std::string Shown(std::string_view statement) {
    std::string line;
    for (const char c : statement) {
        const bool blank = c == ' ' || c == '\r' || c == '\n' || c == '\t';
        if (!blank || (!line.empty() && line.back() != ' ')) {
            line.push_back(blank ? ' ' : c);
        }
    }
    if (line.size() > shown) {
        line.resize(text::CutUtf8(line, shown).size());
        line.append("…");
    }
    return line;
}

class Report {
public:
    Report(const std::vector<Operation>& operations, const TraceTexts& texts)
        : operations_(operations), texts_(texts),
          timed_(std::ranges::any_of(operations, [](const Operation& o) { return o.microseconds.has_value(); })) {}

    void Tell() const {
        TellAll();
        TellSlowest();
        TellRepeated();
        TellSum();
    }

private:
    static void Write(const Table& table) { WriteForPeople(table.Text(OutputWidth()) + "\n"); }
    static void Line(std::string_view line) { WriteForPeople(std::string(line) + "\n"); }
    std::string Time(const Operation& operation) const {
        return operation.microseconds ? Milliseconds(*operation.microseconds) : std::string();
    }
    Table::Column Right(std::string_view heading) const { return {heading, Table::Alignment::right}; }

    void TellAll() const {
        Table table({Right(texts_.lineHeading), Right(texts_.timeHeading), texts_.operationHeading, texts_.errorHeading,
                     texts_.statementHeading});
        for (const Operation& operation : operations_) {
            table.AddRow({std::to_string(operation.line), Time(operation), operation.name, operation.error,
                          Shown(operation.text)});
        }
        Write(table);
    }

    void TellSlowest() const {
        std::vector<const Operation*> slowest;
        for (const Operation& operation : operations_) {
            if (operation.microseconds) {
                slowest.push_back(&operation);
            }
        }
        if (slowest.empty()) {
            return;
        }
        std::ranges::stable_sort(slowest, std::ranges::greater(), [](const Operation* o) { return *o->microseconds; });
        slowest.resize(std::min(slowest.size(), told));
        Line(texts_.slowest);
        Table table({Right(texts_.lineHeading), Right(texts_.timeHeading), texts_.statementHeading});
        for (const Operation* operation : slowest) {
            table.AddRow({std::to_string(operation->line), Time(*operation),
                          Shown(operation->text.empty() ? operation->name : operation->text)});
        }
        Write(table);
    }

    void TellRepeated() const {
        struct Repeated {
            std::string shape;
            std::size_t count = 0;
            std::int64_t microseconds = 0;
        };
        std::map<std::string, Repeated> byShape;
        for (const Operation& operation : operations_) {
            if (operation.name == "Open" || operation.name == "Execute") {
                Repeated& repeated = byShape[Shape(operation.text)];
                repeated.shape = Shape(operation.text);
                ++repeated.count;
                repeated.microseconds += operation.microseconds.value_or(0);
            }
        }
        std::vector<Repeated> repeated;
        for (auto& [shape, one] : byShape) {
            if (one.count > 1) {
                repeated.push_back(std::move(one));
            }
        }
        if (repeated.empty()) {
            return;
        }
        std::ranges::stable_sort(repeated, std::ranges::greater(), &Repeated::count);
        repeated.resize(std::min(repeated.size(), told));
        Line(texts_.repeated);
        Table table({Right(texts_.countHeading), Right(texts_.timeHeading), texts_.statementHeading});
        for (const Repeated& one : repeated) {
            table.AddRow({std::to_string(one.count), timed_ ? Milliseconds(one.microseconds) : "", Shown(one.shape)});
        }
        Write(table);
    }

    void TellSum() const {
        std::int64_t microseconds = 0;
        for (const Operation& operation : operations_) {
            microseconds += operation.microseconds.value_or(0);
        }
        const auto failed = static_cast<std::size_t>(
            std::ranges::count_if(operations_, [](const Operation& o) { return !o.error.empty(); }));
        Line(Fill(texts_.sum, Grouped(operations_.size()), Grouped(failed)));
        Line(timed_ ? Fill(texts_.time, Milliseconds(microseconds)) : std::string(texts_.untimed));
    }

    const std::vector<Operation>& operations_;
    const TraceTexts& texts_;
    bool timed_;
};

} // namespace

int RunTraceShow(const TraceShowArguments& arguments, Console& console) {
    const TraceTexts& texts = console.messages().trace;
    Report(ReadOperations(refhost::xml::ReadTextFile(arguments.file), texts), texts).Tell();
    return exit_status::done;
}

} // namespace cli
