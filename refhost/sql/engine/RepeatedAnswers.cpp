#include "refhost/sql/engine/RepeatedAnswers.h"

#include <algorithm>
#include <utility>

namespace refhost::sql {
namespace {

std::size_t HashOf(const std::vector<Literal>& literals) {
    std::size_t hash = 0;
    for (const Literal& literal : literals) {
        for (const char c : literal.body) {
            hash = hash * 31 + static_cast<unsigned char>(c);
        }
        hash = hash * 31 + 0x100; // no byte of a value
    }
    return hash;
}

} // namespace

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

const ResultSet* RepeatedAnswers::Find(const std::vector<Literal>& literals) {
    if (known_.empty()) {
        known_.resize(places);
    }
    hash_ = HashOf(literals);
    const Known& known = known_[hash_ % places];
    const bool holds = known.changes == Changes() && std::ranges::equal(known.values, literals, {}, {}, &Literal::body);
    return holds ? &known.answer : nullptr;
}

void RepeatedAnswers::Note(const std::vector<Literal>& literals, const ResultSet& answer) {
    if (answer.cells.size() > mostCells) {
        return;
    }
    Known& known = known_[hash_ % places];
    if (std::exchange(known.hash, hash_) != hash_) {
        return;
    }
    known.changes = 0;
    known.values.resize(literals.size());
    std::ranges::transform(literals, known.values.begin(), [](const Literal& literal) { return literal.body; });
    known.answer = answer;
    known.changes = Changes();
}

} // namespace refhost::sql
