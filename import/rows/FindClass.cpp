#include "import/rows/FindClass.h"

#include "import/reading/UnreadableFile.h"

#include <optional>
#include <string>
#include <utility>

namespace importing {
namespace {

/// How well a line of headings fits a class; the better fit is the greater one.
using Fit = std::pair<std::ptrdiff_t, std::size_t>;

constexpr std::size_t leastHeadings = 2;
/// Lines that headings are looked for in.
constexpr std::size_t lastHeadingLine = 100;

/// Reads the next line that may hold the headings.
bool NextCandidate(Table& table, std::size_t headerLine, Line& line) {
    return table.Next(line) && (headerLine != 0 || line.number <= lastHeadingLine);
}

bool HasHeadings(const Line& line, const ClassFields& classFields, std::size_t headerLine, const HeadingMap& map) {
    return headerLine == 0 ? CountHeadings(line, classFields, map) >= leastHeadings : line.number == headerLine;
}

} // namespace

bool FindHeadings(Table& table, const ClassFields& classFields, std::size_t headerLine, const HeadingMap& map,
                  Line& line) {
    while (NextCandidate(table, headerLine, line)) {
        if (HasHeadings(line, classFields, headerLine, map)) {
            return true;
        }
    }
    return false;
}

const ClassFields* FindClass(Table& table, std::size_t headerLine, const HeadingMap& map) {
    Line line;
    const ClassFields* best = nullptr;
    std::optional<Fit> bestFit;
    std::string alike;
    while (best == nullptr && NextCandidate(table, headerLine, line)) {
        for (const ClassFields& classFields : AllClassFields()) {
            if (!HasHeadings(line, classFields, headerLine, map)) {
                continue;
            }
            const auto faults = static_cast<std::ptrdiff_t>(ReadHeadings(line, classFields, map).faults.size());
            const Fit fit(-faults, CountHeadings(line, classFields, map));
            if (!bestFit || fit > *bestFit) {
                best = &classFields;
                bestFit = fit;
                alike = classFields.className;
            } else if (fit == *bestFit) {
                alike.append("、").append(classFields.className);
            }
        }
    }
    if (best != nullptr && alike != best->className) {
        throw UnreadableFile({message::classUnclear, {alike}});
    }
    return best;
}

} // namespace importing
