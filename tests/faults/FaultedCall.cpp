#include "tests/faults/FaultedCall.h"

#include "refhost/JsonRow.h"
#include "refhost/account/Batches.h"
#include "tests/support/DatabasePool.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include <gtest/gtest.h>

namespace test {
namespace {

using Kind = HostOperation::Kind;

/// An operation that a call has asked for.
struct Noted {
    Kind kind;
    std::string text;
    int connection;
    int recordset;
    bool inside;
    std::size_t step;
};

/// What one run of a call asked of the host, and which of it failed.
class Tape {
public:
    /// Lets the operation at this position fail.
    struct Failure {
        std::size_t at;
        host::Error error;
        Lost lost;
    };

    explicit Tape(std::optional<Failure> failure = std::nullopt) : failure_(std::move(failure)) {}

    void Begin() { begun_ = true; }
    void Before(const HostOperation& operation) {
        if (!begun_) {
            return;
        }
        Note(operation);
        if (failure_ && operations.size() - 1 == failure_->at) {
            if (failure_->lost == Lost::connection) {
                lostConnection_ = operation.connection;
            }
            helperLost_ = failure_->lost == Lost::helper;
            throw host::Error(failure_->error);
        }
        if (operation.connection != 0 && operation.connection == lostConnection_) {
            throw host::Error(lostConnection);
        }
        if (operation.kind == Kind::helper && helperLost_) {
            throw host::Error(lostHelper);
        }
        wrote = wrote || operation.name == "Execute";
    }
    void Returned() { returnedAt = steps.size(); }

    std::vector<Noted> operations;
    std::vector<Step> steps;
    /// Number of steps before the call returned.
    std::optional<std::size_t> returnedAt;
    /// Whether a statement may have written.
    bool wrote = false;

private:
    static bool IsRead(std::string_view name) {
        static constexpr std::array<std::string_view, 8> reads = {"AtEOF",      "AtBOF",   "RecordCount", "FieldCount",
                                                                  "FieldIndex", "FieldAt", "FieldValue",  "IsOpen"};
        return std::ranges::find(reads, name) != reads.end();
    }

    void Note(const HostOperation& operation) {
        const bool isRead = IsRead(operation.name);
        if (!operation.inside && !(isRead && steps.back().what == "Read" && reading_ == operation.recordset)) {
            std::string what(isRead ? "Read" : operation.name);
            if (operation.kind == Kind::creation) {
                what.insert(0, "Create ");
            }
            steps.push_back({std::move(what), std::string(operation.text)});
            reading_ = operation.recordset;
        }
        operations.push_back({operation.kind, std::string(operation.text), operation.connection, operation.recordset,
                              operation.inside, steps.size() - 1});
    }

    std::optional<Failure> failure_;
    bool begun_ = false;
    int lostConnection_ = 0;
    bool helperLost_ = false;
    /// The recordset of the latest step.
    int reading_ = 0;
};

bool Matches(const Step& played, const Step& asked) {
    return played.what == asked.what && asked.text.find(played.text) != std::string::npos;
}

std::string Told(const Step& step) { return step.what + " " + step.text; }

/// The account that a call works on, as it is between the runs.
class CallAccount {
public:
    explicit CallAccount(const FaultedCall& call) : call_(call) {
        account_.Run(call.setup);
        account_.Run(call.restore);
    }

    std::string Run(Tape& tape) {
        WatchedEnvironment environment([&](const HostOperation& operation) { tape.Before(operation); }, pool_.Opener());
        refhost::Login login(LoginXml(), environment);
        return call_.run(environment, *environment.Watch(login), {[&] { tape.Begin(); }, [&] { tape.Returned(); }});
    }

    std::vector<std::string> Contents() {
        const std::unique_ptr<refhost::Database> database = pool_.Open(ConnectionString());
        std::vector<std::string> rows;
        for (const std::string& sql : call_.contents) {
            const refhost::ResultSet found = database->Query(sql);
            for (std::size_t row = 0; row < found.rowCount; ++row) {
                refhost::AppendJsonRow(rows.emplace_back(), found, row);
            }
        }
        std::ranges::sort(rows);
        return rows;
    }

    void Restore() {
        const std::unique_ptr<refhost::Database> database = pool_.Open(ConnectionString());
        for (const std::string& batch : refhost::SplitBatches(call_.restore)) {
            database->Execute(batch);
        }
    }

    bool transactionLeftOpen() const { return pool_.transactionLeftOpen(); }

private:
    std::string ConnectionString() const { return account_.connectionString() + call_.connectionMore; }
    std::string LoginXml() const {
        std::string xml = account_.LoginXml();
        const std::string plain = account_.connectionString();
        return xml.insert(xml.find(plain) + plain.size(), call_.connectionMore);
    }

    const FaultedCall& call_;
    TestAccount account_;
    DatabasePool pool_;
};

/// Holds one run against the rules; says what differs, in words.
std::string Difference(const FaultedCall& call, CallAccount& account, const Tape& tape, const std::string& result,
                       std::optional<Fault> fault) {
    Play play(call.proc, std::move(fault));
    const std::string prescribed = call.rules(play);
    std::string difference;
    if (result != prescribed) {
        difference += "result:     " + result + "\nprescribed: " + prescribed + "\n";
    }
    const std::size_t asked = tape.returnedAt.value_or(tape.steps.size());
    for (std::size_t step = 0; step < std::max(asked, play.steps().size()); ++step) {
        const bool isAsked = step < asked;
        const bool isPlayed = step < play.steps().size();
        if (!isAsked || !isPlayed || !Matches(play.steps()[step], tape.steps[step])) {
            difference += "step " + std::to_string(step) + ": asked " +
                          (isAsked ? Told(tape.steps[step]) : "nothing more") + "\nprescribed " +
                          (isPlayed ? Told(play.steps()[step]) : "nothing more") + "\n";
            break;
        }
    }
    if (const std::vector<std::string> contents = account.Contents(); contents != play.Contents()) {
        difference += "contents:\n";
        for (const std::string& row : contents) {
            difference += "  " + row + "\n";
        }
        difference += "prescribed:\n";
        for (const std::string& row : play.Contents()) {
            difference += "  " + row + "\n";
        }
    }
    if (account.transactionLeftOpen()) {
        difference += "a transaction was left open\n";
    }
    return difference;
}

/// The errors that fail an operation by itself: the kind of the operation and its position choose.
host::Error ErrorFor(const Noted& operation, std::size_t at) {
    static const std::array<host::Error, 2> database = {host::Error{-2147217900, "Incorrect syntax near 'fault'."},
                                                        host::Error{-2147467259, "Unspecified error"}};
    static const std::array<host::Error, 2> component = {host::Error{-2147467259, "The host's component failed."},
                                                         host::Error{13, "类型不匹配"}};
    switch (operation.kind) {
    case Kind::creation:
        return {429, "ActiveX 部件不能创建对象"};
    case Kind::database:
        return database[at % database.size()];
    case Kind::helper:
    case Kind::component:
        break;
    }
    return component[at % component.size()];
}

/// The failure at position `at` of the undisturbed tape, as the rules are told of it.
std::optional<Fault> FaultAt(const Tape& undisturbed, const Tape::Failure& failure) {
    const Noted& failing = undisturbed.operations[failure.at];
    if (failing.step >= undisturbed.returnedAt.value_or(undisturbed.steps.size())) {
        return std::nullopt;
    }
    Fault fault{.step = failing.step,
                .error = failure.error,
                .connection = failing.connection,
                .lost = failure.lost,
                .inside = failing.inside};
    for (std::size_t at = failure.at; at-- > 0 && undisturbed.operations[at].step == failing.step;) {
        fault.doneInside.push_back(undisturbed.operations[at].text);
    }
    return fault;
}

const std::map<Lost, std::string_view> lostLabels = {
    {Lost::nothing, ""}, {Lost::connection, ", connection lost,"}, {Lost::helper, ", helper lost,"}};

/// The runs of one call.
class Runs {
public:
    explicit Runs(const FaultedCall& call) : call_(call), account_(call) {}

    void Undisturbed() {
        const std::string result = account_.Run(undisturbed_);
        Expect(Difference(call_, account_, undisturbed_, result, std::nullopt), "undisturbed");
        account_.Restore();
    }

    void Fail(std::size_t at, const host::Error& error, Lost lost) {
        const Tape::Failure failure{at, error, lost};
        Tape tape(failure);
        const std::string result = account_.Run(tape);
        const Step& step = undisturbed_.steps[undisturbed_.operations[at].step];
        Expect(Difference(call_, account_, tape, result, FaultAt(undisturbed_, failure)),
               "operation " + std::to_string(at) + std::string(lostLabels.at(lost)) + " of " + Told(step));
        EXPECT_GT(tape.operations.size(), at) << "the operation did not come again";
        ++failed_;
        if (tape.wrote) {
            account_.Restore();
        }
    }

    void All() {
        Undisturbed();
        // A first few differences tell enough.
        constexpr int enough = 5;
        std::size_t ofDatabase = 0;
        for (std::size_t at = 0; at < undisturbed_.operations.size() && differing_ < enough; ++at) {
            const Noted& operation = undisturbed_.operations[at];
            Fail(at, ErrorFor(operation, at), Lost::nothing);
            if (operation.connection != 0) {
                Fail(at, lostConnection, Lost::connection);
            }
            if (operation.kind == Kind::helper) {
                Fail(at, lostHelper, Lost::helper);
            }
            ofDatabase += operation.kind == Kind::database ? 1 : 0;
        }
        std::printf("faults: %s: %zu database operations, %zu others, %zu failures\n", call_.name.c_str(), ofDatabase,
                    undisturbed_.operations.size() - ofDatabase, failed_);
    }

private:
    void Expect(const std::string& difference, const std::string& run) {
        if (!difference.empty()) {
            ADD_FAILURE() << call_.name << ", " << run << "\n" << difference;
            ++differing_;
        }
    }

    const FaultedCall& call_;
    CallAccount account_;
    Tape undisturbed_;
    std::size_t failed_ = 0;
    int differing_ = 0;
};

} // namespace

void FailEveryOperation(const FaultedCall& call) { Runs(call).All(); }

std::string FaultRequest(std::string_view proc, std::string_view rows) {
    std::string request = "<qxinterface roottag=\"row\" docid=\"D\" proc=\"";
    return request.append(proc).append("\">").append(rows).append("</qxinterface>");
}

} // namespace test
