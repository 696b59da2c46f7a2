#pragma once

#include "cli/messages/Messages.h"

#include <string>

#include <CLI/CLI.hpp>

namespace cli {

/// Lays out the help in the user's language, for terminals of 80 columns: names in one column, what they mean in the
/// other.
class HelpFormatter : public CLI::Formatter {
public:
    explicit HelpFormatter(const HelpTexts& texts);

    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_description(const CLI::App* app) const override;
    std::string make_subcommand(const CLI::App* sub) const override;
    std::string make_option(const CLI::Option* option, bool isPositional) const override;

private:
    const HelpTexts& texts_;
};

} // namespace cli
