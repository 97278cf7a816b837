// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/htmlcommand.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/cli/values.h"
#include "console/terminal.h"
#include "coverage/configuration.h"
#include "report/html/splitpage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Uicov::Commands {

using Base::Message;
using Cli::CoverageOptions;
using Cli::Failed;
using Cli::setUsage;
using Coverage::CoverageResult;
using Report::Html::PageModel;

namespace {

constexpr char examples[] =
    R"(The page is one file with everything in it: it opens from the disk, needs no network and can be
sent around. To see pictures of the windows, record with uicov run --screenshots. Rules and gates
can stand in uicov.toml; see docs/configuration.md.

Examples:
  uicov html
  uicov html -o panel.html --title "Panel, nightly" monday.uirec tuesday.uirec
  uicov html --split site/coverage nightly.uicov
  uicov html -o panel.html --split site/coverage --fail-under 80 nightly.uicov)";

bool isInside(const QString& file, const QString& folder) {
    const QString root = QDir::cleanPath(QDir(folder).absolutePath()) + QLatin1Char('/');
    return file != QLatin1String("-") &&
           QDir::cleanPath(QFileInfo(file).absoluteFilePath()).startsWith(root);
}

} // namespace

CLI::App* HtmlCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("html", "Make a page with pictures of what was used and what not");
    setUsage(*app, "uicov html [OPTIONS] [FILE...]");
    app->add_option("-o,--output", m_output,
                    "The page to write; - is standard output (default: uicov.html)")
        ->type_name("FILE");
    app->add_option("--split", m_folder,
                    "Write a folder, besides -o if given: nothing inline, pictures in full")
        ->type_name("DIR");
    app->add_option("--title", m_title, "What stands at the top (default: the applications)")
        ->type_name("TEXT");
    app->add_option("--max-size", m_maximumMegabytes,
                    "Shrink pictures until the page is that small; 0: never")
        ->type_name("MB")
        ->check(Cli::number(0))
        ->capture_default_str();
    app->add_option("--precision", m_precision, "Digits behind the point of percentages")
        ->type_name("N")
        ->envname("UICOV_PRECISION")
        ->check(Cli::wholeNumber(0, Coverage::ReportDefaults::mostDigits));
    m_options.declare(*app);
    m_options.declareUniverse(*app);
    m_options.declareGates(*app);
    app->add_flag("--public", m_isPublic,
                  "Let others read the page who may not read the files it is made from");
    app->add_flag("-q,--quiet", m_isQuiet, "Print nothing but errors and warnings");
    m_options.declareFiles(*app);
    app->footer(examples);
    return app;
}

void HtmlCommand::setArguments(const std::vector<std::string>& unread,
                               const std::vector<std::string>* literal) {
    m_options.addFiles(unread);
    if (literal != nullptr) {
        m_options.addFiles(*literal);
    }
}

int HtmlCommand::run(Console::Terminal& terminal) {
    terminal.setShowsProgress(!m_isQuiet);
    if (!m_options.readConfiguration(terminal)) {
        return Failed;
    }
    m_pages.setTitle(QString::fromStdString(m_title));
    m_pages.setMaximumMegabytes(m_maximumMegabytes);
    m_pages.setQuiet(m_isQuiet);
    m_pages.setPublic(m_isPublic);
    m_pages.watch(m_options);
    const auto coverage = m_options.read(m_options.files(), terminal);
    if (!coverage) {
        return Failed; // it has been told why
    }
    m_options.warnOfRules(*coverage, terminal);
    const int digits =
        m_precision >= 0 ? m_precision : m_options.configuration().report.precision.value_or(0);
    const auto gates = m_options.judge(*coverage, digits);
    PageModel model = m_pages.model(*coverage, gates, digits, m_options.inputs().skippedFiles());
    if (!write(model, terminal)) {
        return Failed;
    }
    CoverageOptions::tell(gates, terminal);
    return m_options.exitCode(*coverage, gates);
}

bool HtmlCommand::write(PageModel& model, Console::Terminal& terminal) const {
    const QString folder = QFile::decodeName(m_folder.c_str());
    const QString file = !m_output.empty()  ? QFile::decodeName(m_output.c_str())
                         : m_folder.empty() ? QStringLiteral("uicov.html")
                                            : QString();
    if (!folder.isEmpty() && !file.isEmpty() && isInside(file, folder)) {
        terminal.error({Message::WrongUse,
                        file + QStringLiteral(": -o cannot write into the folder of --split; "
                                              "choose another place for one of them")});
        return false;
    }
    // The folder first, which has the pictures in full.
    if (!folder.isEmpty() && !writeFolder(model, folder, terminal)) {
        return false;
    }
    return file.isEmpty() || m_pages.writeFile(model, file, terminal);
}

bool HtmlCommand::writeFolder(const PageModel& model, const QString& folder,
                              Console::Terminal& terminal) const {
    Report::Html::SplitPage page(model, folder);
    if (const auto readers = m_pages.readersOf(model)) {
        page.setReaders(*readers);
    }
    if (const auto problem = page.write()) {
        terminal.error(*problem);
        return false;
    }
    m_pages.tell(model, QDir(folder).filePath(QStringLiteral("index.html")), terminal);
    return true;
}

} // namespace Uicov::Commands
