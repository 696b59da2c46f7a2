#include "tests/allocation/FailEveryAllocation.h"

#include "tests/allocation/FailingNew.h"
#include "tests/rules/CallAccount.h"
#include "tests/rules/Tape.h"

#include <cstdio>
#include <map>
#include <set>

#include <gtest/gtest.h>

namespace test {
namespace {

using Contents = std::vector<std::string>;

const host::Error outOfMemory{7, "内存溢出"};

/// What the rules prescribe for a call that runs out of memory at any one of its steps: results with their contents.
class Prescribed {
public:
    Prescribed(const PlayedCall& call, const Tape& undisturbed) : call_(call) {
        for (std::size_t point = 1, points = Add(std::nullopt); point <= points; ++point) {
            Add(Fault{.point = point, .error = outOfMemory});
        }
        for (std::size_t at = 0; at < undisturbed.operations().size(); ++at) {
            if (const std::optional<Fault> fault = undisturbed.FaultAt({.at = at, .error = outOfMemory})) {
                Add(fault);
                AddAtEnd(undisturbed, *fault);
            }
        }
    }

    bool Allows(const std::string& result, const Contents& contents) const {
        const auto found = contents_.find(result);
        return found != contents_.end() && found->second.contains(contents);
    }
    bool Allows(const Contents& contents) const {
        for (const auto& [result, allowed] : contents_) {
            if (allowed.contains(contents)) {
                return true;
            }
        }
        return false;
    }

private:
    /// @return the number of points in the call
    std::size_t Add(const std::optional<Fault>& fault) {
        Play play(call_.proc, fault);
        std::string result = call_.rules(play);
        contents_[std::move(result)].insert(play.Contents());
        return play.points();
    }
    /// A component that has done everything may fail before it returns.
    void AddAtEnd(const Tape& undisturbed, Fault fault) {
        fault.inside = false;
        fault.doneInside.clear();
        for (const Noted& operation : undisturbed.operations()) {
            if (operation.step == fault.step) {
                fault.doneInside.push_back(operation.text);
            }
        }
        Add(fault);
    }

    const PlayedCall& call_;
    std::map<std::string, std::set<Contents>> contents_;
};

std::string Told(const std::string& result, const Contents& contents) {
    std::string told = "result: " + result + "\ncontents:\n";
    for (const std::string& row : contents) {
        told += "  " + row + "\n";
    }
    return told;
}

/// A database in which no allocation fails.
class SafeDatabase : public refhost::Database {
public:
    explicit SafeDatabase(std::unique_ptr<refhost::Database> inner) : inner_(std::move(inner)) {}
    ~SafeDatabase() override {
        const FailingNew::Pause pause;
        inner_.reset();
    }
    SafeDatabase(const SafeDatabase&) = delete;
    SafeDatabase& operator=(const SafeDatabase&) = delete;

    refhost::ResultSet Query(std::string_view sql) override {
        const FailingNew::Pause pause;
        return inner_->Query(sql);
    }
    void Execute(std::string_view sql) override {
        const FailingNew::Pause pause;
        inner_->Execute(sql);
    }
    void BeginTrans() override {
        const FailingNew::Pause pause;
        inner_->BeginTrans();
    }
    void CommitTrans() override {
        const FailingNew::Pause pause;
        inner_->CommitTrans();
    }
    void RollbackTrans() override {
        const FailingNew::Pause pause;
        inner_->RollbackTrans();
    }

private:
    std::unique_ptr<refhost::Database> inner_;
};

/// The runs of one call.
class Runs {
public:
    Runs(const PlayedCall& call, bool inDatabase) : call_(call), account_(call), inDatabase_(inDatabase) {}

    void All() {
        Tape tape;
        account_.Run(tape);
        account_.Restore();
        const Prescribed prescribed(call_, tape);
        // The account's statements are planned once; from then on the runs are alike.
        std::size_t allocations = 0;
        for (int run = 0; run < 2; ++run) {
            const std::string result = Run(0, FailingNew::Mode::once, allocations);
            ASSERT_TRUE(prescribed.Allows(result, account_.Contents())) << call_.name << result;
            account_.Restore();
        }
        for (std::size_t at = 1; at <= allocations && differing_ < enough; ++at) {
            Once(prescribed, at);
        }
        // The calls whose database does not count are slow ones.
        const std::size_t stride = inDatabase_ ? 1 : 10;
        for (std::size_t at = 1; at <= allocations && differing_ < enough; at += stride) {
            Forever(prescribed, at);
        }
        std::printf("allocation: %s: %zu allocations, %zu failures\n", call_.name.c_str(), allocations, failures_);
    }

private:
    /// A first few differences tell enough.
    static constexpr int enough = 5;

    std::string Run(std::size_t at, FailingNew::Mode mode, std::size_t& asked) {
        const CallMarks marks{[&] { FailingNew::Watch(at, mode); }, [&] { asked = FailingNew::Stop(); }};
        return inDatabase_ ? account_.Run(marks) : account_.Run(marks, [](std::unique_ptr<refhost::Database> inner) {
            return std::make_unique<SafeDatabase>(std::move(inner));
        });
    }

    void Once(const Prescribed& prescribed, std::size_t at) {
        std::size_t asked = 0;
        const std::string result = Run(at, FailingNew::Mode::once, asked);
        const Contents contents = account_.Contents();
        Expect(prescribed.Allows(result, contents), "allocation " + std::to_string(at) + " failed", result, contents);
    }

    void Forever(const Prescribed& prescribed, std::size_t at) {
        std::size_t asked = 0;
        const std::string result = Run(at, FailingNew::Mode::forever, asked);
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
    std::size_t failures_ = 0;
    int differing_ = 0;
};

} // namespace

void FailEveryAllocation(const PlayedCall& call, bool inDatabase) { Runs(call, inDatabase).All(); }

} // namespace test
