#include "refhost/sql/functions/FunctionGroups.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"
#include "refhost/sql/types/ExactNumber.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace refhost::sql {
namespace {

// Aggregates over exact numbers, and the mean of whole ones, which is whole.

struct Sum {
    ExactNumber total;
    std::int64_t count = 0;
};

Sum* SumOf(sqlite3_context* context, bool create) {
    auto** slot = static_cast<Sum**>(sqlite3_aggregate_context(context, create ? sizeof(void*) : 0));
    if (slot == nullptr) {
        return nullptr;
    }
    if (*slot == nullptr && create) {
        *slot = std::make_unique<Sum>().release();
    }
    return *slot;
}

void SumStep(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    Guarded(context, [&] {
        const Call call(context, arguments, 1);
        Sum* sum = SumOf(context, true);
        if (sum == nullptr || call.IsNull(0)) {
            return;
        }
        sum->total = sum->total + ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
        ++sum->count;
    });
}

/// Takes a row out of the window again.
void SumInverse(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    Guarded(context, [&] {
        const Call call(context, arguments, 1);
        Sum* sum = SumOf(context, false);
        if (sum == nullptr || call.IsNull(0)) {
            return;
        }
        sum->total = sum->total - ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
        --sum->count;
    });
}

enum class Aggregate { sum, average, moneyAverage };

template <Aggregate aggregate> void SumValue(sqlite3_context* context) {
    Guarded(context, [&] {
        const Sum* sum = SumOf(context, false);
        if (sum == nullptr || sum->count == 0) {
            return sqlite3_result_null(context);
        }
        std::string text;
        if (aggregate == Aggregate::moneyAverage) {
            // Money divides as the whole number of ten-thousandths that it is.
            constexpr int moneyScale = 4;
            text = Divide(sum->total, ExactNumber(sum->count), moneyScale).ToText();
        } else if (aggregate == Aggregate::average) {
            constexpr int leastScale = 6;
            text = Divide(sum->total, ExactNumber(sum->count), std::max(leastScale, sum->total.Scale())).ToText();
        } else {
            text = sum->total.ToText();
        }
        sqlite3_result_text(context, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    });
}

template <Aggregate aggregate> void SumFinal(sqlite3_context* context) {
    SumValue<aggregate>(context);
    const std::unique_ptr<Sum> done(SumOf(context, false));
}

/// How far numbers spread, by Welford's method: one pass, and no difference of large sums.
struct Spread {
    double count;
    double mean;
    double squares;
};

void SpreadStep(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, sizeof(Spread)));
    if (spread == nullptr || sqlite3_value_type(arguments[0]) == SQLITE_NULL) {
        return;
    }
    const double value = sqlite3_value_double(arguments[0]);
    const double distance = value - spread->mean;
    spread->count += 1;
    spread->mean += distance / spread->count;
    spread->squares += distance * (value - spread->mean);
}

/// Of a sample, or of the whole; the variance or its root.
template <bool sample, bool root> void SpreadFinal(sqlite3_context* context) {
    const auto* spread = static_cast<const Spread*>(sqlite3_aggregate_context(context, 0));
    const double count = spread == nullptr ? 0 : spread->count - (sample ? 1 : 0);
    if (count <= 0) {
        return sqlite3_result_null(context);
    }
    const double variance = spread->squares / count;
    sqlite3_result_double(context, root ? std::sqrt(variance) : variance);
}

/// Texts to be joined in an order.
struct SortedTexts {
    struct Key {
        std::optional<double> number;
        std::string text;
    };
    struct Item {
        std::string text;
        std::vector<Key> keys;
    };
    std::vector<Item> items;
    std::string separator;
    /// Of each key: 1 for numbers, 2 for texts, 3 for exact numbers; below 0 where it descends.
    std::vector<std::int64_t> orders;
};

/// Null is the lowest, as the server has it.
int CompareKeys(const SortedTexts::Key& left, const SortedTexts::Key& right, std::int64_t order) {
    if (!left.number || !right.number) {
        return (left.number ? 1 : 0) - (right.number ? 1 : 0);
    }
    switch (order < 0 ? -order : order) {
    case 2:
        return CompareText(left.text, right.text);
    case 3:
        return CompareExact(left.text, right.text);
    default:
        return *left.number < *right.number ? -1 : *left.number > *right.number ? 1 : 0;
    }
}

SortedTexts** SortedTextsOf(sqlite3_context* context, bool create) {
    return static_cast<SortedTexts**>(sqlite3_aggregate_context(context, create ? sizeof(void*) : 0));
}

/// k_string_agg(text, separator, key, order, …)
void SortedTextsStep(sqlite3_context* context, int count, sqlite3_value** arguments) {
    Guarded(context, [&] {
        const Call call(context, arguments, count);
        SortedTexts** slot = SortedTextsOf(context, true);
        if (slot == nullptr) {
            throw std::bad_alloc();
        }
        if (*slot == nullptr) {
            auto fresh = std::make_unique<SortedTexts>();
            fresh->separator = call.Text(1);
            for (int i = 3; i < count; i += 2) {
                fresh->orders.push_back(call.Integer(i));
            }
            *slot = fresh.release();
        }
        if (call.IsNull(0)) {
            return;
        }
        SortedTexts::Item item{std::string(call.Text(0)), {}};
        for (int i = 2; i < count; i += 2) {
            item.keys.push_back(
                {call.IsNull(i) ? std::nullopt : std::optional(call.Real(i)), std::string(call.Text(i))});
        }
        (*slot)->items.push_back(std::move(item));
    });
}

void SortedTextsFinal(sqlite3_context* context) {
    SortedTexts** slot = SortedTextsOf(context, false);
    const std::unique_ptr<SortedTexts> texts(slot == nullptr ? nullptr : std::exchange(*slot, nullptr));
    Guarded(context, [&] {
        if (!texts || texts->items.empty()) {
            return sqlite3_result_null(context);
        }
        std::ranges::stable_sort(texts->items, [&](const SortedTexts::Item& left, const SortedTexts::Item& right) {
            for (std::size_t i = 0; i < texts->orders.size(); ++i) {
                const int order = CompareKeys(left.keys[i], right.keys[i], texts->orders[i]);
                if (order != 0) {
                    return (order < 0) == (texts->orders[i] > 0);
                }
            }
            return false;
        });
        std::string joined;
        for (const SortedTexts::Item& item : texts->items) {
            joined += (&item == &texts->items.front() ? "" : texts->separator) + item.text;
        }
        sqlite3_result_text64(context, joined.data(), joined.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    });
}

/// The one value of a subquery.
struct Single {
    sqlite3_value* value = nullptr;
};

Single* SingleOf(sqlite3_context* context, bool create) {
    return static_cast<Single*>(sqlite3_aggregate_context(context, create ? sizeof(Single) : 0));
}

void SingleStep(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    Guarded(context, [&] {
        Single* single = SingleOf(context, true);
        if (single == nullptr) {
            throw std::bad_alloc();
        }
        if (single->value != nullptr) {
            Fail(512, "Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, <, "
                      "<= , >, >= or when the subquery is used as an expression.");
        }
        single->value = sqlite3_value_dup(arguments[0]);
        if (single->value == nullptr) {
            throw std::bad_alloc();
        }
    });
}

void SingleFinal(sqlite3_context* context) {
    Single* single = SingleOf(context, false);
    if (single == nullptr || single->value == nullptr) {
        return sqlite3_result_null(context);
    }
    sqlite3_result_value(context, single->value);
    sqlite3_value_free(std::exchange(single->value, nullptr));
}

} // namespace

void RegisterAggregates(sqlite3* db, Runtime& runtime) {
    constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    sqlite3_create_window_function(db, "k_sum", 1, pure, &runtime, SumStep, SumFinal<Aggregate::sum>,
                                   SumValue<Aggregate::sum>, SumInverse, nullptr);
    sqlite3_create_window_function(db, "k_avg", 1, pure, &runtime, SumStep, SumFinal<Aggregate::average>,
                                   SumValue<Aggregate::average>, SumInverse, nullptr);
    sqlite3_create_window_function(db, "k_avg_money", 1, pure, &runtime, SumStep, SumFinal<Aggregate::moneyAverage>,
                                   SumValue<Aggregate::moneyAverage>, SumInverse, nullptr);
    sqlite3_create_function_v2(db, "k_stdev", 1, pure, &runtime, nullptr, SpreadStep, SpreadFinal<true, true>, nullptr);
    sqlite3_create_function_v2(db, "k_stdevp", 1, pure, &runtime, nullptr, SpreadStep, SpreadFinal<false, true>,
                               nullptr);
    sqlite3_create_function_v2(db, "k_var", 1, pure, &runtime, nullptr, SpreadStep, SpreadFinal<true, false>, nullptr);
    sqlite3_create_function_v2(db, "k_varp", 1, pure, &runtime, nullptr, SpreadStep, SpreadFinal<false, false>,
                               nullptr);
    sqlite3_create_function_v2(db, "k_string_agg", -1, pure, &runtime, nullptr, SortedTextsStep, SortedTextsFinal,
                               nullptr);
    sqlite3_create_function_v2(db, "k_single", 1, pure, &runtime, nullptr, SingleStep, SingleFinal, nullptr);
}

} // namespace refhost::sql
