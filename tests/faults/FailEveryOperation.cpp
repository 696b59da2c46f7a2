#include "tests/faults/FailEveryOperation.h"

#include "tests/faults/Difference.h"
#include "tests/support/rules/CallAccount.h"
#include "tests/support/rules/Tape.h"

#include <array>
#include <cstdio>

#include <gtest/gtest.h>

namespace test {
namespace {

using Kind = HostOperation::Kind;

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

const std::map<Lost, std::string_view> lostLabels = {
    {Lost::nothing, ""}, {Lost::connection, ", connection lost,"}, {Lost::helper, ", helper lost,"}};

/// The runs of one call.
class Runs {
public:
    explicit Runs(const PlayedCall& call) : call_(call), account_(call) {}

    void Undisturbed() {
        const std::string result = account_.Run(undisturbed_);
        Play play(call_.proc);
        Expect(Difference(call_, account_, undisturbed_, result, play), "undisturbed");
        account_.Restore();
    }

    void Fail(std::size_t at, const host::Error& error, Lost lost) {
        const Tape::Failure failure{at, error, lost};
        Tape tape(failure);
        const std::string result = account_.Run(tape);
        const Step& step = undisturbed_.steps()[undisturbed_.operations()[at].step];
        Play play(call_.proc, undisturbed_.FaultAt(failure));
        Expect(Difference(call_, account_, tape, result, play),
               "operation " + std::to_string(at) + std::string(lostLabels.at(lost)) + " of " + Told(step));
        EXPECT_GT(tape.operations().size(), at) << "the operation did not come again";
        ++failed_;
        if (tape.wrote()) {
            account_.Restore();
        }
    }

    void All() {
        Undisturbed();
        // A first few differences tell enough.
        constexpr int enough = 5;
        std::size_t ofDatabase = 0;
        for (std::size_t at = 0; at < undisturbed_.operations().size() && differing_ < enough; ++at) {
            const Noted& operation = undisturbed_.operations()[at];
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
                    undisturbed_.operations().size() - ofDatabase, failed_);
    }

private:
    void Expect(const std::string& difference, const std::string& run) {
        if (!difference.empty()) {
            ADD_FAILURE() << call_.name << ", " << run << "\n" << difference;
            ++differing_;
        }
    }

    const PlayedCall& call_;
    CallAccount account_;
    Tape undisturbed_;
    std::size_t failed_ = 0;
    int differing_ = 0;
};

} // namespace

void FailEveryOperation(const PlayedCall& call) { Runs(call).All(); }

} // namespace test
