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
    /// The plan of the statement when it is the one that followed last time, with its literals in `Literals`; else
    /// nullptr, and only reading the statement tells.
    const Plan* Guess(std::string_view sql);
    const std::vector<Literal>& Literals() const { return literals_; }
    /// Takes note of the plan that a statement has, and of what it followed.
    /// @param literals of the statement; they point into `sql`
    void Learn(const Plan& plan, std::string_view sql, const std::vector<Literal>& literals);
    /// Forgets everything; to be called before any plan goes.
    void Clear();

private:
    /// A literal, and what stands between it and the one before, quotes included.
    struct Piece {
        std::string before;
        LiteralKind kind = LiteralKind::text;
        bool national = false;
    };
    struct Known {
        const Plan* plan = nullptr;
        std::vector<Piece> pieces;
        std::string tail;
        /// Literals that the plan is bound to, with their bodies.
        std::vector<std::pair<std::size_t, std::string>> pinned;
        /// What followed it, the latest first: one that is repeated is followed by itself and by another.
        std::array<Known*, 2> next = {};
    };

    bool Matches(const Known& known, std::string_view sql);

    std::unordered_map<const Plan*, Known> known_;
    Known* last_ = nullptr;
    std::vector<Literal> literals_;
};

} // namespace refhost::sql
