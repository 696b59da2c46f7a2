#include "refhost/sql/engine/RepeatedAnswers.h"

#include <algorithm>

namespace refhost::sql {

void TableChanges::ChangeAll() {
    for (auto& [table, count] : counts_) {
        ++count;
    }
}

RepeatedAnswers::RepeatedAnswers(TableChanges& changes, const std::vector<std::string>& read) {
    for (const std::string& table : read) {
        read_.push_back(&changes.Of(table));
    }
}

std::uint64_t RepeatedAnswers::Changes() const {
    std::uint64_t sum = 1;
    for (const std::uint64_t* count : read_) {
        sum += *count;
    }
    return sum;
}

const ResultSet* RepeatedAnswers::Find(const std::vector<Literal>& literals) const {
    const std::uint64_t changes = Changes();
    const auto* const found = std::ranges::find_if(known_, [&](const Known& known) {
        return known.changes == changes && std::ranges::equal(known.values, literals, {}, {}, &Literal::body);
    });
    return found == known_.end() ? nullptr : &found->answer;
}

void RepeatedAnswers::Note(const std::vector<Literal>& literals, const ResultSet& answer) {
    if (answer.cells.size() > mostCells) {
        return;
    }
    Known& known = known_.at(next_++ % most);
    known.changes = 0;
    known.values.resize(literals.size());
    std::ranges::transform(literals, known.values.begin(), [](const Literal& literal) { return literal.body; });
    known.answer = answer;
    known.changes = Changes();
}

} // namespace refhost::sql
