#pragma once

#include "tests/support/WatchedHost.h"
#include "tests/support/rules/Play.h"

#include <optional>
#include <string>
#include <vector>

namespace test {

/// An operation that a call has asked for.
struct Noted {
    HostOperation::Kind kind;
    std::string text;
    int connection;
    int recordset;
    bool inside;
    /// Position of the step that it belongs to.
    std::size_t step;
};

/// What one run of a call asked of the host, and which of it failed.
class Tape {
public:
    /// Lets the operation at this position fail.
    struct Failure {
        std::size_t at;
        host::Error error;
        Lost lost = Lost::nothing;
    };

    explicit Tape(std::optional<Failure> failure = std::nullopt) : failure_(std::move(failure)) {}

    /// Of the call's marks: what comes before the beginning is not noted.
    void Begin() { begun_ = true; }
    void Returned() { returnedAt_ = steps_.size(); }
    /// Notes the operation, and throws where it fails.
    void Before(const HostOperation& operation);

    const std::vector<Noted>& operations() const { return operations_; }
    const std::vector<Step>& steps() const { return steps_; }
    /// Number of steps before the call returned.
    std::size_t stepsOfCall() const { return returnedAt_.value_or(steps_.size()); }
    /// Whether a statement may have written.
    bool wrote() const { return wrote_; }

    /// The failure of an operation of this tape, as the rules are told of it; nothing for one after the call's return.
    std::optional<Fault> FaultAt(const Failure& failure) const;

private:
    void Note(const HostOperation& operation);

    std::optional<Failure> failure_;
    std::vector<Noted> operations_;
    std::vector<Step> steps_;
    std::optional<std::size_t> returnedAt_;
    bool wrote_ = false;
    bool begun_ = false;
    int lostConnection_ = 0;
    bool helperLost_ = false;
    /// The recordset of the latest step.
    int reading_ = 0;
};

} // namespace test
