#include "ModPub/Conversions.h"
#include "cli/AccountQuestions.h"
#include "cli/Commands.h"
#include "cli/LoginFile.h"
#include "cli/Output.h"
#include "cli/Table.h"
#include "text/ConnectionString.h"
#include "text/SameName.h"

#include <algorithm>
#include <array>

#include <fmt/ranges.h>
#include <sqlite3.h>

namespace cli {
namespace {

/// What is asked of an attribute's value.
enum class Kind { text, secret, connection, year, month, date };

struct Attribute {
    std::string_view name;
    Kind kind;
    /// The classes that read it.
    std::string_view neededBy;
};

constexpr std::array attributes = {
    Attribute{"QxDbName", Kind::connection, "kovra"},
    Attribute{"cAcc_Id", Kind::text, "ClsKovra, ClsKovraProof, ClsPriceJustVou"},
    Attribute{"cIYear", Kind::year, "kovra"},
    Attribute{"cUserId", Kind::text, "ClsKovraProof"},
    Attribute{"cUserName", Kind::text, "ClsPriceJustVou"},
    Attribute{"cUserPassWord", Kind::secret, "ClsKovraProof"},
    Attribute{"CurDate", Kind::date, "ClsKovraProof, ClsPriceJustVou"},
    Attribute{"cServer", Kind::text, "ClsKovraProof"},
    Attribute{"cSerial", Kind::text, "ClsKovraProof"},
    Attribute{"iMonth", Kind::month, "ClsKovraProof, ClsPriceJustVou"},
    Attribute{"iStartPeriod", Kind::month, "ClsKovra"},
};

bool IsDigits(std::string_view text, std::size_t length) {
    return text.size() == length && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

bool NamesDatabase(std::string_view connectionString) {
    const std::string provider = text::ConnectionStringValue(connectionString, "Provider").value_or("");
    const bool hasFile = !text::ConnectionStringValue(connectionString, "Data Source").value_or("").empty();
    return refhost::IsOdbc(connectionString) || (text::SameName(provider, "KovraAccount") && hasFile);
}

/// What is wrong with a value; empty when nothing is.
std::string_view Fault(const std::string& value, Kind kind, const AccountTexts& texts) {
    switch (kind) {
    case Kind::connection:
        return NamesDatabase(value) ? std::string_view() : texts.noDatabase;
    case Kind::year:
        return IsDigits(value, 4) ? std::string_view() : texts.noYear;
    case Kind::month:
        return (IsDigits(value, 1) || IsDigits(value, 2)) && std::stoi(value) >= 1 && std::stoi(value) <= 12
                   ? std::string_view()
                   : texts.noMonth;
    case Kind::date:
        // A date that is none, such as "2024-02-30", is not read as one.
        return value.size() == 10 && ModPub::IsDate(value) && ModPub::FormatDate(value) == value ? std::string_view()
                                                                                                 : texts.noDate;
    case Kind::text:
    case Kind::secret:
        break;
    }
    return {};
}

std::string Shown(const std::string& value, Kind kind, const AccountTexts& texts) {
    if (kind == Kind::secret) {
        return value.empty() ? std::string() : std::string(texts.hidden);
    }
    return kind == Kind::connection ? text::MaskPasswords(value) : value;
}

class Check {
public:
    Check(const refhost::Login& login, refhost::Environment& environment, const AccountTexts& texts)
        : login_(login), environment_(environment), texts_(texts) {}

    int Tell() {
        TellAttributes();
        if (NamesDatabase(Value("QxDbName"))) {
            TellAccount();
        }
        Line(faults_ == 0 ? std::string(texts_.usable) : Fill(texts_.unusable, faults_));
        return faults_ == 0 ? exit_status::done : exit_status::failed;
    }

private:
    static void Line(std::string_view line) { WriteForPeople(std::string(line) + "\n"); }

    /// The value of an attribute; empty when it is missing.
    std::string Value(std::string_view name) const {
        try {
            return ModPub::ToText(login_.Member(name));
        } catch (const host::Error&) {
            return {};
        }
    }

    bool Has(std::string_view name) const {
        try {
            login_.Member(name);
            return true;
        } catch (const host::Error&) {
            return false;
        }
    }

    void TellAttributes() {
        Table table({texts_.attributeHeading, texts_.valueHeading, texts_.stateHeading});
        for (const Attribute& attribute : attributes) {
            const std::string value = Value(attribute.name);
            std::string state(texts_.fine);
            if (!Has(attribute.name)) {
                state = Fill(texts_.missing, attribute.neededBy);
                ++faults_;
            } else if (const std::string_view fault = Fault(value, attribute.kind, texts_); !fault.empty()) {
                state = fault;
                ++faults_;
            }
            table.AddRow({std::string(attribute.name), Shown(value, attribute.kind, texts_), state});
        }
        WriteForPeople(table.Text(OutputWidth()) + "\n");
    }

    void TellAccount() {
        try {
            const std::string connectionString = Value("QxDbName");
            const std::unique_ptr<host::Connection> connection = environment_.CreateConnection();
            connection->Open(connectionString, "", "", host::command_option::unspecified);
            AccountQuestions account(environment_, *connection);
            if (refhost::IsOdbc(connectionString)) {
                Line(texts_.odbc);
                Line(Fill(texts_.version, FirstLine(account.First("SELECT @@VERSION"))));
            } else {
                Line(Fill(texts_.embedded, text::ConnectionStringValue(connectionString, "Data Source").value_or("")));
                Line(Fill(texts_.version, std::string("SQLite ") + sqlite3_libversion()));
            }
            if (account.First("SELECT name FROM sysobjects WHERE name = N'AccInformation'").empty()) {
                Line(texts_.noAccount);
                ++faults_;
                return;
            }
            TellLedger(account);
        } catch (const host::Error& error) {
            Line(Fill(texts_.cannotOpen, error.number(), error.description()));
            ++faults_;
        }
    }

    static std::string FirstLine(const std::string& text) { return text.substr(0, text.find_first_of("\r\n")); }

    void TellLedger(AccountQuestions& account) {
        const std::string start =
            account.First("SELECT cValue FROM AccInformation WHERE cSysID = N'IA' AND cName = N'dIAStartDate'");
        Line(start.empty() ? std::string(texts_.noStart) : Fill(texts_.starts, start));
        const std::string year = Value("cIYear");
        if (IsDigits(year, 4)) {
            const std::vector<std::string> closed =
                account.Column("SELECT iperiod FROM GL_mend WHERE bflag_IA = 1 AND iperiod > 0 AND iyear = " + year +
                               " ORDER BY iperiod");
            Line(closed.empty() ? Fill(texts_.noneClosed, year) : Fill(texts_.closed, year, fmt::join(closed, ", ")));
            if (std::ranges::find(closed, "12") != closed.end()) {
                Line(Fill(texts_.decemberClosed, year));
            }
            TellCalendar(account, year);
        }
        Line(Fill(texts_.ledgerRows, account.First("SELECT COUNT(*) AS n FROM Ia_subsidiary")));
    }

    void TellCalendar(AccountQuestions& account, const std::string& year) {
        std::string quoted;
        const std::string id = Value("cAcc_Id");
        for (const char c : id) {
            quoted.append(c == '\'' ? 2 : 1, c);
        }
        const std::string periods = account.First("SELECT COUNT(*) AS n FROM QxSystem..UA_Period WHERE cAcc_ID = N'" +
                                                  quoted + "' AND iYear = " + year);
        Line(periods == "0" ? Fill(texts_.noCalendar, id, year) : Fill(texts_.calendar, id, year, periods));
    }

    const refhost::Login& login_;
    refhost::Environment& environment_;
    const AccountTexts& texts_;
    std::size_t faults_ = 0;
};

} // namespace

int RunLoginCheck(const LoginCheckArguments& arguments, Console& console) {
    refhost::Environment environment;
    const refhost::Login login = ReadLogin(arguments.login, environment);
    return Check(login, environment, console.messages().account).Tell();
}

} // namespace cli
