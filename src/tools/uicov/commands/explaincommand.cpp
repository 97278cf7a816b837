// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/explaincommand.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/cli/outputs.h"
#include "console/terminal.h"
#include "report/explanation.h"
#include "report/hiddenelements.h"
#include "store/datafilepath.h"

namespace Uicov::Commands {

using Base::Message;
using Cli::Failed;
using Cli::Outputs;
using Cli::setUsage;

namespace {

constexpr char examples[] =
    R"(KEY is a key as uicov json writes it or a name as uicov report prints it, the beginning of
one, a pattern, or a part of one, as the caption of a button. What has no key, since it is mere
structure or a part of another element, is found by its text, class or type.

Examples:
  uicov explain Licence
  uicov explain 'Window "Panel" > * > MenuItem "Quit"'
  uicov explain "Button*Apply*" nightly.uicov)";

} // namespace

CLI::App* ExplainCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("explain", "Say why an element counts as it does");
    setUsage(*app, "uicov explain [OPTIONS] KEY [FILE...]");
    app->add_option("-o,--output", m_output, "Write to FILE; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    m_options.declare(*app);
    m_options.declareUniverse(*app);
    app->add_option("KEY", m_key, "The element, or a part of its key")->type_name("");
    m_options.declareFiles(*app);
    app->footer(examples);
    return app;
}

void ExplainCommand::setArguments(const std::vector<std::string>& unread,
                                  const std::vector<std::string>* literal) {
    std::vector<std::string> words = unread;
    if (literal != nullptr) {
        words.insert(words.end(), literal->begin(), literal->end());
    }
    if (m_key.empty() && !words.empty()) {
        m_key = words.front();
        words.erase(words.begin());
    }
    m_options.addFiles(words);
}

int ExplainCommand::run(Console::Terminal& terminal) {
    if (m_key.empty()) {
        terminal.error({Message::WrongUse, QStringLiteral("explain takes the key of an element; "
                                                          "see uicov explain --help")});
        return Failed;
    }
    if (!m_options.readConfiguration(terminal)) {
        return Failed;
    }
    const auto coverage = m_options.read(m_options.files(), terminal);
    if (!coverage) {
        return Failed;
    }
    Report::Explanation explanation(*coverage);
    const QString key = QString::fromStdString(m_key);
    const bool hasKey = explanation.choose(key);
    Report::HiddenElements hidden(key);
    const auto look = [&](const Runs::Run& run) {
        hasKey ? explanation.look(run) : hidden.look(run);
    };
    if (!m_options.inputs().forEach(look, terminal)) {
        return Failed;
    }
    if (!hasKey && hidden.isEmpty()) {
        terminal.error({Message::NoSuchElement, QStringLiteral("no element has a key like ") + key +
                                                    QStringLiteral("; the nearest one is ") +
                                                    Store::shellQuoted(explanation.nearest(key))});
        return Failed;
    }
    Outputs outputs(terminal);
    outputs.add(m_output, [&](bool) {
        return (hasKey ? explanation.toString() : hidden.toString()).toUtf8();
    });
    if (!outputs.write()) {
        return Failed;
    }
    m_options.sayNext(QStringLiteral("uicov html"), terminal);
    return m_options.exitCode(*coverage, {});
}

} // namespace Uicov::Commands
