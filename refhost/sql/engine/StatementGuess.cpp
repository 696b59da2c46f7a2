#include "refhost/sql/engine/StatementGuess.h"

#include "text/Digit.h"

#include <algorithm>
#include <cstring>

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
    std::size_t count = 0;
    while (count < rest.size() && text::IsDigit(rest[count])) {
        ++count;
    }
    return count;
}

/// The size of the text that begins `rest`, npos where only reading the statement tells. A quote that is doubled is not
/// followed by what follows the text elsewhere.
std::size_t TextSize(std::string_view rest) {
    // A backslash may continue a line. Most texts are too short for a search of many bytes at once to pay.
    std::size_t end = 0;
    while (end < rest.size() && rest[end] != '\'' && rest[end] != '\\') {
        ++end;
    }
    return end < rest.size() && rest[end] == '\'' ? end : std::string_view::npos;
}

/// The same for a number.
std::size_t NumberSize(std::string_view rest, LiteralKind kind) {
    constexpr std::size_t fits32Bits = 9;
    std::size_t size = CountDigits(rest);
    if (size == 0 || size > fits32Bits) {
        return std::string_view::npos;
    }
    if (kind == LiteralKind::decimal) {
        const std::size_t fraction = rest.substr(size).starts_with('.') ? CountDigits(rest.substr(size + 1)) : 0;
        if (fraction == 0) {
            return std::string_view::npos;
        }
        size += 1 + fraction;
    }
    return GoesOnWithNumber(rest.substr(size)) ? std::string_view::npos : size;
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

bool StatementGuess::Matches(Known& known, std::string_view sql) {
    auto before = known.before.begin();
    for (Literal& literal : known.literals) {
        const std::size_t begin = before->size();
        if (sql.size() < begin || std::memcmp(sql.data(), before->data(), begin) != 0) {
            return false;
        }
        ++before;
        sql.remove_prefix(begin);
        const std::size_t size = literal.kind == LiteralKind::text ? TextSize(sql) : NumberSize(sql, literal.kind);
        if (size == std::string_view::npos) {
            return false;
        }
        literal.body = sql.substr(0, size);
        sql.remove_prefix(size);
    }
    return sql == known.tail && std::ranges::all_of(known.pinned, [&](const auto& pinned) {
               return known.literals[pinned.first].body == pinned.second;
           });
}

void StatementGuess::Learn(const Plan& plan, std::string_view sql, const std::vector<Literal>& literals) {
    const auto [found, fresh] = known_.try_emplace(&plan);
    Known& known = found->second;
    if (fresh) {
        known.plan = &plan;
        std::size_t kept = 0;
        for (const Literal& literal : literals) {
            const auto begin = static_cast<std::size_t>(literal.body.data() - sql.data());
            known.before.emplace_back(sql.substr(kept, begin - kept));
            known.literals.push_back({literal.kind, literal.national, false, {}});
            kept = begin + literal.body.size();
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
