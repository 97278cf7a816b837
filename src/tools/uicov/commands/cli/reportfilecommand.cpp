// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/reportfilecommand.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/cli/outputs.h"
#include "commands/cli/values.h"
#include "console/terminal.h"

namespace Uicov::Commands::Cli {

CLI::App* ReportFileCommand::declare(CLI::App& commands) {
    const Verb declared = verb();
    CLI::App* const app = commands.add_subcommand(declared.name, declared.description);
    setUsage(*app, std::string("uicov ") + declared.name + " [OPTIONS] [FILE...]");
    app->add_option("-o,--output", m_output, "Write to FILE; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    app->add_option("--precision", m_precision, "Digits behind the point of percentages")
        ->type_name("N")
        ->envname("UICOV_PRECISION")
        ->check(wholeNumber(0, Coverage::ReportDefaults::mostDigits));
    declareMore(*app);
    m_options.declare(*app);
    m_options.declareUniverse(*app);
    m_options.declareGates(*app);
    m_options.declareFiles(*app);
    app->footer(declared.examples);
    return app;
}

void ReportFileCommand::declareMore(CLI::App& /*app*/) {}

int ReportFileCommand::precision() const {
    return m_precision >= 0 ? m_precision : m_options.configuration().report.precision.value_or(0);
}

void ReportFileCommand::setArguments(const std::vector<std::string>& unread,
                                     const std::vector<std::string>* literal) {
    m_options.addFiles(unread);
    if (literal != nullptr) {
        m_options.addFiles(*literal);
    }
}

int ReportFileCommand::run(Console::Terminal& terminal) {
    if (!m_options.readConfiguration(terminal)) {
        return Failed;
    }
    const auto coverage = m_options.read(m_options.files(), terminal);
    if (!coverage) {
        return Failed;
    }
    m_options.warnOfRules(*coverage, terminal);
    const auto gates = m_options.judge(*coverage, precision());
    Outputs outputs(terminal);
    outputs.add(m_output, [&](bool) { return make(*coverage, gates); });
    if (!outputs.write()) {
        return Failed;
    }
    CoverageOptions::tell(gates, terminal);
    m_options.sayNext(QStringLiteral("uicov report -m"), terminal);
    return m_options.exitCode(*coverage, gates);
}

} // namespace Uicov::Commands::Cli
