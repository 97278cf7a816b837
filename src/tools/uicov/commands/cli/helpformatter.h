// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

namespace Uicov::Commands::Cli {

/**
 * How help looks: the usage line as written by hand, then each option with its default and the
 * environment variable that stands for it.
 */
class HelpFormatter : public CLI::Formatter {
public:
    /** @param usage what can stand behind "Usage: " */
    explicit HelpFormatter(std::string usage);

    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_option_desc(const CLI::Option* option) const override;

private:
    std::string m_usage;
};

/** Gives the verb that usage line. */
inline void setUsage(CLI::App& app, const std::string& usage) {
    app.formatter(std::make_shared<HelpFormatter>(usage));
}

} // namespace Uicov::Commands::Cli
