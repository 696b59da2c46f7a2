#include "import/outcome/Reasons.h"

#include "import/reading/Cell.h"

#include <algorithm>
#include <map>
#include <utility>

namespace importing {
namespace {

/// A note's words without what differs from row to row.
std::string GeneralWords(const Note& note, Language language) {
    return Words({note.message, std::vector<std::string>(note.arguments.size(), "…")}, language);
}

class Collector {
public:
    Collector(Language language, std::size_t most) : language_(language), most_(most) {}

    void Add(const Row& row, const std::vector<Finding>& findings) {
        for (const Finding& finding : findings) {
            Add(GeneralWords(finding.note, language_), false, PlaceOf(row, finding));
        }
    }

    void Add(std::string words, bool byClass, std::string place) {
        const auto [found, isNew] = positions_.try_emplace({words, byClass}, reasons_.size());
        if (isNew) {
            reasons_.push_back({std::move(words), byClass, 0, {}});
        }
        Reason& reason = reasons_[found->second];
        ++reason.count;
        if (reason.places.size() < most_) {
            reason.places.push_back(std::move(place));
        }
    }

    std::vector<Reason> Take() {
        std::ranges::stable_sort(reasons_, std::ranges::greater(), &Reason::count);
        return std::move(reasons_);
    }

private:
    Language language_;
    std::size_t most_;
    std::vector<Reason> reasons_;
    std::map<std::pair<std::string, bool>, std::size_t> positions_;
};

} // namespace

std::vector<Reason> ReasonsOfRefusals(const Outcome& outcome, Language language, std::size_t most) {
    Collector collector(language, most);
    for (const RowOutcome& each : outcome.rows) {
        collector.Add(each.row, each.row.refusals);
        if (each.state == RowState::refusedByClass) {
            collector.Add(each.messages.empty() ? std::string() : each.messages.front(), true,
                          std::to_string(each.row.line));
        }
    }
    return collector.Take();
}

std::vector<Reason> ReasonsOfWarnings(const Outcome& outcome, Language language, std::size_t most) {
    Collector collector(language, most);
    for (const RowOutcome& each : outcome.rows) {
        collector.Add(each.row, each.row.warnings);
    }
    return collector.Take();
}

std::string PlaceOf(const Row& row, const Finding& finding) {
    return finding.column ? CellName(*finding.column, row.line) : std::to_string(row.line);
}

} // namespace importing
