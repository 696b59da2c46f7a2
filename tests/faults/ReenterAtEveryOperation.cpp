#include "tests/faults/ReenterAtEveryOperation.h"

#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "tests/faults/Difference.h"
#include "tests/support/Import.h"

#include <cstdio>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

namespace test {
namespace {

constexpr const char* refusal = R"(<error code="3705" dsc="Operation is not allowed when the object is open."/>)";

/// The login of somebody else in another year: what is asked of it instead of the caller's shows in the statements.
std::string OtherLogin(std::string xml) {
    for (const auto& [from, to] : {std::pair<std::string, std::string>{"cAcc_Id=\"001\"", "cAcc_Id=\"999\""},
                                   {"cIYear=\"2023\"", "cIYear=\"1999\""},
                                   {"cUserName=\"王会计\"", "cUserName=\"外人\""},
                                   {"CurDate=\"2023-01-15\"", "CurDate=\"1999-12-31\""}}) {
        const std::size_t at = xml.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        xml.replace(at, from.size(), to);
    }
    return xml;
}

/// The runs of one call, which is entered again at its operations.
class Reentries {
public:
    explicit Reentries(const PlayedCall& call)
        : call_(call), account_(call), otherLogin_(OtherLogin(account_.LoginXml()), otherEnvironment_) {}

    void All() {
        Tape undisturbed;
        account_.Run(undisturbed);
        account_.Restore();
        // A first few differences tell enough.
        constexpr int enough = 5;
        for (std::size_t at = 0; at < undisturbed.operations().size() && differing_ < enough; ++at) {
            if (undisturbed.operations()[at].step < undisturbed.stepsOfCall()) {
                Reenter(at, undisturbed.steps()[undisturbed.operations()[at].step]);
            }
        }
        std::printf("faults: %s: entered again %zu times\n", call_.name.c_str(), entered_);
    }

private:
    void Reenter(std::size_t at, const Step& step) {
        Tape tape;
        TransactAgain again;
        std::optional<std::string> inner;
        bool inside = false;
        const auto before = [&](const HostOperation& operation) {
            if (inside) {
                return;
            }
            tape.Before(operation);
            if (again && !inner && tape.operations().size() > at) {
                inside = true;
                inner = again(Request("EDIT", "<row/>"), otherLogin_);
                inside = false;
            }
        };
        const CallMarks marks{[&] { tape.Begin(); }, [&] { tape.Returned(); },
                              [&](const TransactAgain& transact) { again = transact; }};
        const std::string result = account_.Run(before, marks);
        Play play(call_.proc);
        if (inner) {
            play.HelperIsThereBehind(tape.operations()[at].step);
            ++entered_;
        }
        std::string difference = Difference(call_, account_, tape, result, play);
        if (inner && *inner != refusal) {
            difference += "the inner call gave " + *inner + "\n";
        }
        if (!difference.empty()) {
            ADD_FAILURE() << call_.name << ", entered again at operation " << at << " of " << Told(step) << "\n"
                          << difference;
            ++differing_;
        }
        if (tape.wrote()) {
            account_.Restore();
        }
    }

    const PlayedCall& call_;
    CallAccount account_;
    refhost::Environment otherEnvironment_;
    refhost::Login otherLogin_;
    std::size_t entered_ = 0;
    int differing_ = 0;
};

} // namespace

void ReenterAtEveryOperation(const PlayedCall& call) { Reentries(call).All(); }

} // namespace test
