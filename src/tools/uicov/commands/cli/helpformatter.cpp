// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/helpformatter.h"

#include <algorithm>
#include <utility>

namespace Uicov::Commands::Cli {

HelpFormatter::HelpFormatter(std::string usage)
    : m_usage(std::move(usage)) {
    constexpr std::size_t descriptionColumn = 26;
    column_width(descriptionColumn);
    label("Subcommands", "Verbs");
    label("Positionals", "Arguments");
}

std::string HelpFormatter::make_usage(const CLI::App* /*app*/, std::string /*name*/) const {
    return "Usage: " + m_usage + "\n";
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
    std::string type = option->get_type_size() == 0 ? std::string() : option->get_type_name();
    type.erase(std::min(type.find(':'), type.size())); // what the validators add is for programmers
    return type.empty() ? std::string() : " " + type;
}

std::string HelpFormatter::make_option_desc(const CLI::Option* option) const {
    std::string text = option->get_description();
    if (!option->get_default_str().empty() && option->get_type_size() != 0) {
        text += " (default: " + option->get_default_str() + ")";
    }
    if (!option->get_envname().empty()) {
        text += " [" + option->get_envname() + "]";
    }
    return text;
}

} // namespace Uicov::Commands::Cli
