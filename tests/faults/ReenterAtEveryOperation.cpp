#include "tests/faults/ReenterAtEveryOperation.h"

#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "tests/faults/Difference.h"
#include "tests/support/Import.h"

#include <array>
#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

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
        std::vector<std::size_t> alone;
        // Once the helper is there, an inner call leaves the outer one nothing to find, and one run takes many of them.
        // Between two that it enters at, operations stand that it does not.
        std::array<std::vector<std::size_t>, 8> together;
        bool hasHelper = false;
        for (std::size_t at = 0; at < undisturbed.operations().size(); ++at) {
            const Noted& operation = undisturbed.operations()[at];
            if (operation.step < undisturbed.stepsOfCall()) {
                (hasHelper ? together.at(at % together.size()) : alone).push_back(at);
            }
            hasHelper = hasHelper || operation.kind == HostOperation::Kind::helper;
        }
        for (const std::size_t at : alone) {
            Reenter({at});
        }
        for (const std::vector<std::size_t>& places : together) {
            Reenter(places);
        }
        std::printf("faults: %s: entered again %zu times\n", call_.name.c_str(), entered_);
    }

private:
    /// Enters the call again at each of these operations of one run; a first few differences tell enough.
    void Reenter(const std::vector<std::size_t>& places) {
        constexpr int enough = 5;
        if (places.empty() || differing_ >= enough) {
            return;
        }
        Tape tape;
        TransactAgain again;
        std::optional<std::size_t> first;
        std::vector<std::string> answers;
        std::size_t next = 0;
        bool inside = false;
        const auto before = [&](const HostOperation& operation) {
            if (inside) {
                return;
            }
            tape.Before(operation);
            if (again && next < places.size() && tape.operations().size() > places[next]) {
                ++next;
                inside = true;
                answers.push_back(again(Request("EDIT", "<row/>"), otherLogin_));
                inside = false;
                first = first.value_or(tape.operations().size() - 1);
            }
        };
        const CallMarks marks{[&] { tape.Begin(); }, [&] { tape.Returned(); },
                              [&](const TransactAgain& transact) { again = transact; }};
        const std::string result = account_.Run(before, marks);
        Play play(call_.proc);
        if (first) {
            play.HelperIsThereBehind(tape.operations()[*first].step);
        }
        entered_ += answers.size();
        std::string difference = Difference(call_, account_, tape, result, play);
        if (answers.size() != places.size()) {
            difference += "entered " + std::to_string(answers.size()) + " times\n";
        }
        for (const std::string& answer : answers) {
            if (answer != refusal) {
                difference += "an inner call gave " + answer + "\n";
            }
        }
        if (!difference.empty()) {
            ADD_FAILURE() << call_.name << ", entered again at operations " << testing::PrintToString(places) << "\n"
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
