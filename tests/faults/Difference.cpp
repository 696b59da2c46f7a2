#include "tests/faults/Difference.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace test {
namespace {

bool Matches(const Step& played, const Step& asked) {
    return played.what == asked.what && asked.text.find(played.text) != std::string::npos;
}

} // namespace

std::string Told(const Step& step) { return step.what + " " + step.text; }

std::string Difference(const PlayedCall& call, CallAccount& account, const Tape& tape, const std::string& result,
                       Play& play) {
    const std::string prescribed = call.rules(play);
    std::string difference;
    if (result != prescribed) {
        difference += "result:     " + result + "\nprescribed: " + prescribed + "\n";
    }
    const std::size_t asked = tape.stepsOfCall();
    for (std::size_t step = 0; step < std::max(asked, play.steps().size()); ++step) {
        const bool isAsked = step < asked;
        const bool isPlayed = step < play.steps().size();
        if (!isAsked || !isPlayed || !Matches(play.steps()[step], tape.steps()[step])) {
            difference += "step " + std::to_string(step) + ": asked " +
                          (isAsked ? Told(tape.steps()[step]) : "nothing more") + "\nprescribed " +
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

} // namespace test
