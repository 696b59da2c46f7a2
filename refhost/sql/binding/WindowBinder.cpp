#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>

namespace refhost::sql {
namespace {

/// A function that only stands over a window.
struct WindowRow {
    std::string_view name;
    std::size_t least;
    std::size_t most;
    /// Whether its first argument is the value that it gives; else it gives a bigint.
    bool givesArgument;
};

constexpr std::array windowFunctions{
    WindowRow{"row_number", 0, 0, false}, WindowRow{"rank", 0, 0, false},      WindowRow{"dense_rank", 0, 0, false},
    WindowRow{"ntile", 1, 1, false},      WindowRow{"lag", 1, 3, true},        WindowRow{"lead", 1, 3, true},
    WindowRow{"first_value", 1, 1, true}, WindowRow{"last_value", 1, 1, true},
};

} // namespace

std::string Binder::BindWindow(const Window& window) {
    if (scope_ == nullptr || !scope_->windows) {
        Fail(4108, "Windowed functions can only appear in the SELECT or ORDER BY clauses.");
    }
    scope_->windows = false;
    std::string text;
    for (const ExpressionPtr& expression : window.partition) {
        Bound value = BindValue(*expression);
        Own(value);
        text += (text.empty() ? "PARTITION BY " : ", ") + Collated(value);
    }
    std::string order;
    for (const OrderItem& item : window.order) {
        Bound value = BindValue(*item.value);
        Own(value);
        order += (order.empty() ? " ORDER BY " : ", ") + Collated(value) + (item.descending ? " DESC" : "");
    }
    scope_->windows = true;
    return " OVER (" + text + order + window.frame + ")";
}

std::optional<Bound> Binder::BindWindowFunction(const std::string& name, const Expression& expression) {
    const auto* const row = std::ranges::find(windowFunctions, name, &WindowRow::name);
    if (row == windowFunctions.end()) {
        return std::nullopt;
    }
    RequireArguments(expression, row->least, row->most);
    if (!expression.window) {
        Fail(10753, "The function '{}' must have an OVER clause.", name);
    }
    if (expression.window->order.empty()) {
        Fail(4112, "The function '{}' must have an OVER clause with ORDER BY.", name);
    }
    Bound result;
    result.type = {Base::bigint, 0, 0, 0};
    std::string arguments;
    for (const ExpressionPtr& argument : expression.arguments) {
        Bound value = BindValue(*argument);
        const bool first = argument == expression.arguments.front();
        if (first && row->givesArgument) {
            Own(value);
            result.type = value.type;
            arguments = value.text;
        } else if (argument == expression.arguments.back() && expression.arguments.size() == 3) {
            arguments += ", " + As(std::move(value), result.type);
        } else {
            arguments += (arguments.empty() ? "" : ", ") + As(std::move(value), {Base::integer, 0, 0, 0});
        }
    }
    result.text = name + "(" + arguments + ")" + BindWindow(*expression.window);
    return result;
}

} // namespace refhost::sql
