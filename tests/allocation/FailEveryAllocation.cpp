#include "tests/allocation/FailEveryAllocation.h"

#include "refhost/ado/ForwardingDatabase.h"
#include "tests/allocation/FailingNew.h"
#include "tests/support/Sanitized.h"
#include "tests/support/rules/CallAccount.h"
#include "tests/support/rules/Tape.h"

#include <algorithm>
#include <cstdio>

#include <gtest/gtest.h>

namespace test {
namespace {

using Contents = std::vector<std::string>;

const host::Error outOfMemory{7, "内存溢出"};

/// What the rules prescribe for a call that runs out of memory: results with their contents.
class Prescribed {
public:
    Prescribed(const PlayedCall& call, const Tape& undisturbed) : call_(call) {
        const Play whole = Add(std::nullopt, always);
        EXPECT_EQ(whole.steps().size(), undisturbed.stepsOfCall());
        for (std::size_t point = 1; point <= whole.points(); ++point) {
            Add(Fault{.point = point, .error = outOfMemory}, {});
        }
        for (std::size_t at = 0; at < undisturbed.operations().size(); ++at) {
            if (const std::optional<Fault> fault = undisturbed.FaultAt({.at = at, .error = outOfMemory})) {
                // What is built for a step or made of its answer fails as the step does.
                const During during{fault->step, fault->step + 1};
                Add(fault, during);
                AddAtEnd(undisturbed, *fault, during);
            }
        }
    }

    /// @param steps number of the steps that had begun when memory ran out
    bool Allows(const std::string& result, const Contents& contents, std::size_t steps) const {
        return Any([&](const Outcome& outcome) {
            return outcome.result == result && outcome.contents == contents && outcome.during.first <= steps &&
                   steps <= outcome.during.last;
        });
    }
    bool Allows(const std::string& result, const Contents& contents) const {
        return Any([&](const Outcome& outcome) { return outcome.result == result && outcome.contents == contents; });
    }
    bool Allows(const Contents& contents) const {
        return Any([&](const Outcome& outcome) { return outcome.contents == contents; });
    }

private:
    /// Numbers of steps begun.
    struct During {
        std::size_t first = 0;
        std::size_t last = 0;
    };
    static constexpr During always{0, static_cast<std::size_t>(-1)};

    struct Outcome {
        std::string result;
        Contents contents;
        During during;
    };

    template <class Matches> bool Any(const Matches& matches) const { return std::ranges::any_of(outcomes_, matches); }

    /// @param during of a failure at a point it is told by the play
    Play Add(const std::optional<Fault>& fault, During during) {
        Play play(call_.proc, fault);
        std::string result = call_.rules(play);
        if (fault && fault->point != 0) {
            during = {play.stepsBeforeFailedPoint(), play.stepsBeforeFailedPoint()};
        }
        outcomes_.push_back({std::move(result), play.Contents(), during});
        return play;
    }
    /// A component that has done everything may fail before it returns.
    void AddAtEnd(const Tape& undisturbed, Fault fault, const During& during) {
        fault.inside = false;
        fault.doneInside.clear();
        for (const Noted& operation : undisturbed.operations()) {
            if (operation.step == fault.step) {
                fault.doneInside.push_back(operation.text);
            }
        }
        Add(fault, during);
    }

    const PlayedCall& call_;
    std::vector<Outcome> outcomes_;
};

std::string Told(const std::string& result, const Contents& contents) {
    std::string told = "result: " + result + "\ncontents:\n";
    for (const std::string& row : contents) {
        told += "  " + row + "\n";
    }
    return told;
}

/// A database in which no allocation fails.
class SafeDatabase : public refhost::ForwardingDatabase {
public:
    using ForwardingDatabase::ForwardingDatabase;
    ~SafeDatabase() override {
        const FailingNew::Pause pause;
        Release();
    }
    SafeDatabase(const SafeDatabase&) = delete;
    SafeDatabase& operator=(const SafeDatabase&) = delete;

    refhost::ResultSet Query(std::string_view sql) override {
        const FailingNew::Pause pause;
        return inner().Query(sql);
    }
    void Execute(std::string_view sql) override {
        const FailingNew::Pause pause;
        inner().Execute(sql);
    }
    void BeginTrans() override {
        const FailingNew::Pause pause;
        inner().BeginTrans();
    }
    void CommitTrans() override {
        const FailingNew::Pause pause;
        inner().CommitTrans();
    }
    void RollbackTrans() override {
        const FailingNew::Pause pause;
        inner().RollbackTrans();
    }
};

/// The runs of one call.
class FailingRuns {
public:
    FailingRuns(const PlayedCall& call, bool inDatabase) : call_(call), account_(call), inDatabase_(inDatabase) {}

    void All() {
        Tape tape;
        account_.Run(tape);
        account_.Restore();
        const Prescribed prescribed(call_, tape);
        // The account's statements are planned once; from then on the runs are alike.
        std::size_t allocations = 0;
        for (int run = 0; run < 2; ++run) {
            const std::string result = Run(0, FailingNew::Mode::once);
            allocations = asked_;
            ASSERT_TRUE(prescribed.Allows(result, account_.Contents())) << call_.name << result;
            account_.Restore();
        }
        // The calls whose database does not count are slow ones, and slower under a sanitizer.
        const std::size_t onceStride = sanitized && !inDatabase_ ? 3 : 1;
        for (std::size_t at = 1; at <= allocations && differing_ < enough; at += onceStride) {
            Once(prescribed, at);
        }
        const std::size_t foreverStride = inDatabase_ ? 1 : 10;
        for (std::size_t at = 1; at <= allocations && differing_ < enough; at += foreverStride) {
            Forever(prescribed, at);
        }
        std::printf("allocation: %s: %zu allocations, %zu failures\n", call_.name.c_str(), allocations, failures_);
    }

private:
    /// A first few differences tell enough.
    static constexpr int enough = 5;

    std::string Run(std::size_t at, FailingNew::Mode mode) {
        Tape tape;
        std::optional<std::size_t> failedAfter;
        const auto note = [&] {
            if (!failedAfter && FailingNew::Failed()) {
                failedAfter = tape.steps().size();
            }
        };
        const auto before = [&](const HostOperation& operation) {
            const FailingNew::Pause pause;
            note();
            tape.Before(operation);
        };
        const CallMarks marks{[&] {
                                  tape.Begin();
                                  FailingNew::Watch(at, mode);
                              },
                              [&] {
                                  note();
                                  asked_ = FailingNew::Stop();
                                  tape.Returned();
                              }};
        const std::string result = inDatabase_
                                       ? account_.Run(before, marks)
                                       : account_.Run(before, marks, [](std::unique_ptr<refhost::Database> inner) {
                                             return std::make_unique<SafeDatabase>(std::move(inner));
                                         });
        failedAfter_ = failedAfter.value_or(0);
        return result;
    }

    void Once(const Prescribed& prescribed, std::size_t at) {
        const std::string result = Run(at, FailingNew::Mode::once);
        const Contents contents = account_.Contents();
        Expect(prescribed.Allows(result, contents, failedAfter_),
               "allocation " + std::to_string(at) + " failed, after " + std::to_string(failedAfter_) + " steps", result,
               contents);
    }

    void Forever(const Prescribed& prescribed, std::size_t at) {
        const std::string result = Run(at, FailingNew::Mode::forever);
        const Contents contents = account_.Contents();
        const bool withoutMemory = result.empty() || result == R"(<error code="7" dsc="内存溢出"/>)";
        Expect(withoutMemory ? prescribed.Allows(contents) : prescribed.Allows(result, contents),
               "every allocation from " + std::to_string(at) + " on failed", result, contents);
    }

    void Expect(bool allowed, const std::string& what, const std::string& result, const Contents& contents) {
        if (!allowed || account_.transactionLeftOpen()) {
            ADD_FAILURE() << call_.name << ": " << what << "\n"
                          << Told(result, contents)
                          << (account_.transactionLeftOpen() ? "a transaction was left open\n" : "");
            ++differing_;
        }
        ++failures_;
        account_.Restore();
    }

    const PlayedCall& call_;
    CallAccount account_;
    bool inDatabase_;
    /// Of the latest run: the allocations asked for, and the steps begun when one failed.
    std::size_t asked_ = 0;
    std::size_t failedAfter_ = 0;
    std::size_t failures_ = 0;
    int differing_ = 0;
};

} // namespace

void FailEveryAllocation(const PlayedCall& call, bool inDatabase) { FailingRuns(call, inDatabase).All(); }

} // namespace test
