#include "tests/support/rules/Tape.h"

#include <algorithm>
#include <array>
#include <utility>

namespace test {
namespace {

bool IsRead(std::string_view name) {
    static constexpr std::array<std::string_view, 8> reads = {"AtEOF",      "AtBOF",   "RecordCount", "FieldCount",
                                                              "FieldIndex", "FieldAt", "FieldValue",  "IsOpen"};
    return std::ranges::find(reads, name) != reads.end();
}

} // namespace

void Tape::Before(const HostOperation& operation) {
    if (!begun_) {
        return;
    }
    Note(operation);
    if (failure_ && operations_.size() - 1 == failure_->at) {
        if (failure_->lost == Lost::connection) {
            lostConnection_ = operation.connection;
        }
        helperLost_ = failure_->lost == Lost::helper;
        throw host::Error(failure_->error);
    }
    if (operation.connection != 0 && operation.connection == lostConnection_) {
        throw host::Error(lostConnection);
    }
    if (operation.kind == HostOperation::Kind::helper && helperLost_) {
        throw host::Error(lostHelper);
    }
    wrote_ = wrote_ || operation.name == "Execute";
}

void Tape::Note(const HostOperation& operation) {
    const bool isRead = IsRead(operation.name);
    if (!operation.inside && !(isRead && steps_.back().what == "Read" && reading_ == operation.recordset)) {
        std::string what(isRead ? "Read" : operation.name);
        if (operation.kind == HostOperation::Kind::creation) {
            what.insert(0, "Create ");
        }
        steps_.push_back({std::move(what), std::string(operation.text)});
        reading_ = operation.recordset;
    }
    operations_.push_back({operation.kind, std::string(operation.text), operation.connection, operation.recordset,
                           operation.inside, steps_.size() - 1});
}

std::optional<Fault> Tape::FaultAt(const Failure& failure) const {
    const Noted& failing = operations_[failure.at];
    if (failing.step >= stepsOfCall()) {
        return std::nullopt;
    }
    Fault fault{.step = failing.step,
                .error = failure.error,
                .connection = failing.connection,
                .lost = failure.lost,
                .inside = failing.inside};
    for (std::size_t at = failure.at; at-- > 0 && operations_[at].step == failing.step;) {
        fault.doneInside.push_back(operations_[at].text);
    }
    return fault;
}

} // namespace test
