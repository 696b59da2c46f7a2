#include "refhost/sql/engine/StatementGuess.h"

#include "text/Digit.h"

#include <algorithm>

namespace refhost::sql {
namespace {

/// What would make a longer number of the digits before it.
bool GoesOnWithNumber(std::string_view text) {
    if (text.empty()) {
        return false;
    }
    const char next = text.front();
    return next == '.' || (next | 0x20) == 'e' || (next | 0x20) == 'x' || text::IsDigit(next);
}

std::size_t CountDigits(std::string_view rest) {
    return static_cast<std::size_t>(std::ranges::find_if_not(rest, text::IsDigit) - rest.begin());
}

} // namespace

const Plan* StatementGuess::Guess(std::string_view sql) {
    if (last_ == nullptr) {
        return nullptr;
    }
    for (Known* const next : last_->next) {
        if (next != nullptr && Matches(*next, sql)) {
            last_ = next;
            return next->plan;
        }
    }
    return nullptr;
}

bool StatementGuess::Matches(const Known& known, std::string_view sql) {
    literals_.resize(known.pieces.size());
    std::size_t index = 0;
    for (const Piece& piece : known.pieces) {
        if (!Read(sql, piece, literals_[index++])) {
            return false;
        }
    }
    return sql == known.tail && std::ranges::all_of(known.pinned, [&](const auto& pinned) {
               return literals_[pinned.first].body == pinned.second;
           });
}

bool StatementGuess::Read(std::string_view& rest, const Piece& piece, Literal& literal) {
    if (!rest.starts_with(piece.before)) {
        return false;
    }
    rest.remove_prefix(piece.before.size());
    literal.kind = piece.kind;
    literal.national = piece.national;
    literal.doubled = false;
    return piece.kind == LiteralKind::text ? ReadText(rest, literal) : ReadNumber(rest, literal);
}

bool StatementGuess::ReadText(std::string_view& rest, Literal& literal) {
    // A backslash may continue a line. Most texts are too short for a search of many bytes at once to pay.
    std::size_t end = 0;
    while (end < rest.size() && rest[end] != '\'' && rest[end] != '\\') {
        ++end;
    }
    const std::string_view behind = rest.substr(std::min(end + 1, rest.size()));
    if (end == rest.size() || rest[end] == '\\' || behind.starts_with('\'')) {
        return false;
    }
    literal.body = rest.substr(0, end);
    rest = behind;
    return true;
}

bool StatementGuess::ReadNumber(std::string_view& rest, Literal& literal) {
    constexpr std::size_t fits32Bits = 9;
    std::size_t size = CountDigits(rest);
    if (size == 0 || size > fits32Bits) {
        return false;
    }
    if (literal.kind == LiteralKind::decimal) {
        const std::size_t fraction = rest.substr(size).starts_with('.') ? CountDigits(rest.substr(size + 1)) : 0;
        if (fraction == 0) {
            return false;
        }
        size += 1 + fraction;
    }
    literal.body = rest.substr(0, size);
    rest.remove_prefix(size);
    return !GoesOnWithNumber(rest);
}

void StatementGuess::Learn(const Plan& plan, std::string_view sql, const std::vector<Literal>& literals) {
    const auto [found, fresh] = known_.try_emplace(&plan);
    Known& known = found->second;
    if (fresh) {
        known.plan = &plan;
        std::size_t kept = 0;
        for (const Literal& literal : literals) {
            const auto begin = static_cast<std::size_t>(literal.body.data() - sql.data());
            known.pieces.push_back({std::string(sql.substr(kept, begin - kept)), literal.kind, literal.national});
            kept = begin + literal.body.size() + (literal.kind == LiteralKind::text ? 1 : 0);
        }
        known.tail = sql.substr(kept);
        for (const std::size_t index : plan.pinned) {
            known.pinned.emplace_back(index, literals[index].body);
        }
    }
    const bool guessable = std::ranges::all_of(literals, [](const Literal& literal) {
        return literal.kind == LiteralKind::text || literal.kind == LiteralKind::integer ||
               literal.kind == LiteralKind::decimal;
    });
    if (last_ != nullptr && guessable) {
        last_->next = {&known, last_->next.front()};
    }
    last_ = &known;
}

void StatementGuess::Clear() {
    known_.clear();
    last_ = nullptr;
}

} // namespace refhost::sql
