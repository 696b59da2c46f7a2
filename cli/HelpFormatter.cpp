#include "cli/HelpFormatter.h"

#include "cli/DisplayWidth.h"

#include <string_view>

namespace cli {
namespace {

constexpr std::size_t columns = 80;
constexpr std::size_t nameColumns = 26;

/// A name with what it means beside it, or below it where the name is too long.
std::string Entry(std::string_view name, std::string_view meaning) {
    std::string text = "  ";
    text.append(name);
    std::size_t used = 2 + DisplayWidth(name);
    if (used + 2 > nameColumns) {
        text.push_back('\n');
        used = 0;
    }
    while (!meaning.empty()) {
        text.append(nameColumns - used, ' ').append(TakeLine(meaning, columns - nameColumns)).push_back('\n');
        used = 0;
    }
    if (!text.ends_with('\n')) {
        text.push_back('\n');
    }
    return text;
}

std::string WithValue(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    return type.empty() ? option.get_name() : option.get_name() + " " + type;
}

} // namespace

HelpFormatter::HelpFormatter(const HelpTexts& texts) : texts_(texts) {
    label("Positionals", std::string(texts.arguments));
}

std::string HelpFormatter::make_description(const CLI::App* app) const {
    const std::string description = app->get_description();
    std::string text;
    for (std::string_view rest = description; !rest.empty();) {
        text.append(TakeLine(rest, columns)).push_back('\n');
    }
    return text.append("\n");
}

std::string HelpFormatter::make_usage(const CLI::App* app, std::string name) const {
    std::string text = std::string(texts_.usage) + ": " + name;
    for (const CLI::Option* option : app->get_options()) {
        if (option->nonpositional() && option->get_required()) {
            text.append(" ").append(WithValue(*option));
        }
    }
    text.append(" [").append(texts_.options).append("]");
    for (const CLI::Option* option : app->get_options()) {
        if (option->get_positional()) {
            text.append(option->get_required() ? " " : " [").append(option->get_name(true));
            text.append(option->get_expected_max() > 1 ? "..." : "").append(option->get_required() ? "" : "]");
        }
    }
    if (!app->get_subcommands({}).empty()) {
        text.append(" ").append(texts_.command);
    }
    return text.append("\n");
}

std::string HelpFormatter::make_subcommand(const CLI::App* sub) const {
    return Entry(sub->get_name(), sub->get_description());
}

std::string HelpFormatter::make_option(const CLI::Option* option, bool isPositional) const {
    std::string name = isPositional ? option->get_name(true) : option->get_name(false, true);
    if (!isPositional && !option->get_type_name().empty()) {
        name.append(" ").append(option->get_type_name());
    }
    std::string meaning = option->get_description();
    if (option->get_required()) {
        meaning.append(" (").append(texts_.required).append(")");
    }
    return Entry(name, meaning);
}

} // namespace cli
