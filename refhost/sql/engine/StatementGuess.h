#pragma once

#include "refhost/sql/store/Plan.h"
#include "refhost/sql/syntax/Literals.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace refhost::sql {

/// Guesses which statement comes next: an import repeats a handful of shapes in one order, row after row. What stands
/// between the literals is compared as a whole then, instead of being read character by character.
class StatementGuess {
public:
    /// The plan of the statement when it is the one that followed last time; else nullptr, and only reading the
    /// statement tells.
    const Plan* Guess(std::string_view sql);
    /// The literals of the statement that was guessed last. They live as long as the statement's text and its plan.
    const std::vector<Literal>& Literals() const { return last_->literals; }
    /// Takes note of the plan that a statement has, and of what it followed.
    /// @param literals of the statement; they point into `sql`
    void Learn(const Plan& plan, std::string_view sql, const std::vector<Literal>& literals);
    /// Forgets everything; to be called before any plan goes.
    void Clear();

private:
    struct Known {
        const Plan* plan = nullptr;
        /// What stands between each literal and the one before, quotes included.
        std::vector<std::string> before;
        /// Their bodies are those of the statement that was compared last.
        std::vector<Literal> literals;
        std::string tail;
        /// Literals that the plan is bound to, with their bodies.
        std::vector<std::pair<std::size_t, std::string>> pinned;
        /// What followed it, the latest first: one that is repeated is followed by itself and by another.
        std::array<Known*, 2> next = {};
    };

    bool Matches(Known& known, std::string_view sql);

    std::unordered_map<const Plan*, Known> known_;
    Known* last_ = nullptr;
};

} // namespace refhost::sql
