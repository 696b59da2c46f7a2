#pragma once

#include "host/Error.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace test_sql {

inline constexpr const char* memory = "Provider=KovraAccount;Data Source=:memory:";

inline std::unique_ptr<refhost::sql::EmbeddedDatabase> OpenMemory() {
    return refhost::sql::OpenEmbedded(memory, refhost::sql::Mode::create);
}

/// A value as the tables of these tests write it: texts in quotes, dates as #days#, bytes as 0x….
inline std::string Show(const host::Value& value) {
    struct Visitor {
        std::string operator()(host::Empty) const { return "Empty"; }
        std::string operator()(host::Null) const { return "Null"; }
        std::string operator()(bool flag) const { return flag ? "True" : "False"; }
        std::string operator()(std::int64_t number) const { return std::to_string(number); }
        std::string operator()(float number) const { return fmt::format("{}f", number); }
        std::string operator()(double number) const { return fmt::format("{}r", number); }
        std::string operator()(const host::Decimal& number) const { return number.text + "m"; }
        std::string operator()(const std::string& text) const { return "'" + text + "'"; }
        std::string operator()(host::Date date) const { return fmt::format("#{}#", date.days); }
        std::string operator()(const host::Bytes& bytes) const {
            std::string text = "0x";
            for (const std::uint8_t byte : bytes.data) {
                text += fmt::format("{:02X}", byte);
            }
            return text;
        }
    };
    return std::visit(Visitor{}, value.storage());
}

/// The values of a result: separated by a blank, rows by " | ".
inline std::string ShowRows(const refhost::ResultSet& result) {
    std::string text;
    for (std::size_t i = 0; i < result.cells.size(); ++i) {
        if (i > 0) {
            text += i % result.fields->size() == 0 ? " | " : " ";
        }
        text += Show(result.cells[i]);
    }
    return text;
}

/// All answers of a batch, separated by "; ": "rows(NAMES) VALUES", "N written", "says TEXT", "NUMBER: MESSAGE".
inline std::string Batch(refhost::Database& db, std::string_view sql, refhost::TimeLimit limit = std::nullopt) {
    struct Visitor {
        std::string operator()(const refhost::ResultSet& rows) const {
            std::string names;
            for (const host::Field& field : *rows.fields) {
                names += (names.empty() ? "" : ",") + field.name;
            }
            return "rows(" + names + ")" + (rows.rowCount > 0 ? " " + ShowRows(rows) : "");
        }
        std::string operator()(refhost::RowsWritten rows) const { return fmt::format("{} written", rows.count); }
        std::string operator()(const refhost::ServerMessage& message) const { return "says " + message.text; }
        std::string operator()(const host::Error& error) const {
            return fmt::format("{}: {}", error.number(), error.description());
        }
    };
    std::string text;
    db.RunBatch(sql, limit, [&](const refhost::BatchAnswer& answer) {
        text += (text.empty() ? "" : "; ") + std::visit(Visitor{}, answer);
    });
    return text;
}

/// The whole answer in one text: values separated by a blank, rows by " | "; an error as "NUMBER: MESSAGE".
inline std::string Answer(refhost::Database& db, std::string_view sql) {
    try {
        return ShowRows(db.Query(sql));
    } catch (const host::Error& error) {
        return fmt::format("{}: {}", error.number(), error.description());
    }
}

/// A statement and what it must answer.
struct Case {
    std::string_view sql;
    std::string_view answer;
};

/// Runs the cases one after the other on one database.
template <class Cases> void RunCases(refhost::Database& db, const Cases& cases) {
    for (const Case& each : cases) {
        EXPECT_EQ(Answer(db, each.sql), each.answer) << each.sql;
    }
}

} // namespace test_sql
