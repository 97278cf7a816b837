// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/htmlcommand.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/cli/outputfile.h"
#include "console/terminal.h"
#include "coverage/configuration.h"
#include "report/html/htmlpage.h"
#include "report/html/pagemodelbuilder.h"
#include "report/html/pagesummary.h"
#include "report/html/picturebudget.h"
#include "report/html/splitpage.h"
#include "store/datafilepath.h"

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

constexpr double bytesInMegabyte = 1000000;
constexpr int markRange = 4096;
/** What a picture's size takes at most in the page, and what is said about reduced ones. */
constexpr int maximumSide = 99999;
constexpr int noteBytes = 1000;

QString counted(int count, const char* one, const char* several) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

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
        ->check(CLI::Validator(CLI::NonNegativeNumber).description(""))
        ->capture_default_str();
    app->add_option("--precision", m_precision, "Digits behind the point of percentages")
        ->type_name("N")
        ->envname("UICOV_PRECISION")
        ->check(CLI::Range(0, Coverage::ReportDefaults::mostDigits).description(""));
    m_options.declare(*app);
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
    m_options.setVisitor([this](const Runs::Run& run, const CoverageResult& coverage) {
        m_appearances.setNameRules(coverage.nameRules());
        m_appearances.add(run, coverage.tree());
        m_history.add(run, coverage);
    });
    const auto coverage = m_options.read(m_options.files(), terminal);
    if (!coverage) {
        return Failed; // it has been told why
    }
    m_history.finish(*coverage);
    m_options.warnOfRules(*coverage, terminal);
    const int digits =
        m_precision >= 0 ? m_precision : m_options.configuration().report.precision.value_or(0);
    const auto gates = m_options.judge(*coverage, digits);
    Report::Html::PageSummary summary(*coverage, m_history);
    summary.setTitle(QString::fromStdString(m_title));
    summary.setGates(gates);
    summary.setPrecision(digits);
    summary.setSkippedFiles(m_options.inputs().skippedFiles());
    PageModel model;
    summary.fill(model);
    Report::Html::PageModelBuilder(coverage->tree(), m_appearances).build(model);
    if (!write(model, terminal)) {
        return Failed;
    }
    CoverageOptions::tell(gates, terminal);
    return m_options.exitCode(*coverage, gates);
}

/** Makes pictures smaller until the page is as small as was asked for, or as it can be. */
void HtmlCommand::fit(PageModel& model, Console::Terminal& terminal) const {
    const auto limit = static_cast<qint64>(m_maximumMegabytes * bytesInMegabyte);
    if (limit == 0) {
        return;
    }
    PageModel bare = model;
    bare.pictures.fill({QByteArray(), QSize(maximumSide, maximumSide), false});
    const qint64 room = limit - noteBytes - Report::Html::HtmlPage(bare).singleFile().size();
    Report::Html::PictureBudget budget(qMax<qint64>(1, room));
    budget.apply(model);
    if (budget.reduced() > 0) {
        const QString told =
            QStringLiteral("%1 of %2 pictures are smaller than they were recorded, so that the "
                           "page has at most %3 MB")
                .arg(budget.reduced())
                .arg(model.pictures.size())
                .arg(m_maximumMegabytes);
        model.notes.append(told + QStringLiteral("; uicov html --split DIR keeps them in full."));
        if (!m_isQuiet) {
            terminal.note(told + QStringLiteral("; --split DIR keeps them in full"));
        }
    }
    if (room < 0 || !budget.isKept()) {
        terminal.warning({Message::PageTooLarge,
                          QStringLiteral("the page is larger than %1 MB, although its pictures are "
                                         "as small as they can be; use --split DIR, or fewer runs")
                              .arg(m_maximumMegabytes)});
    }
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
    if (!file.isEmpty()) {
        fit(model, terminal);
        return writeFile(model, file, terminal);
    }
    return true;
}

std::optional<QFileDevice::Permissions> HtmlCommand::readersOf(const PageModel& model) const {
    if (m_isPublic || model.pictures.isEmpty()) {
        return std::nullopt;
    }
    QFileDevice::Permissions readers = QFile::ReadGroup | QFile::ReadOther;
    for (const std::string& file : m_options.files()) {
        readers &= QFile::permissions(QFile::decodeName(file.c_str()));
    }
    return m_options.files().empty() ? readers & QFile::permissions(Store::currentDataFile())
                                     : readers;
}

bool HtmlCommand::writeFile(const PageModel& model, const QString& path,
                            Console::Terminal& terminal) const {
    QFile present(path);
    if (path != QLatin1String("-") && QFileInfo(path).isFile() && present.size() > 0 &&
        (!present.open(QIODevice::ReadOnly) ||
         !Report::Html::HtmlPage::isPage(present.read(markRange)))) {
        terminal.error({Message::OutputForeign,
                        path + QStringLiteral(": is not a page of uicov html and is not "
                                              "overwritten; choose another name with -o")});
        return false;
    }
    if (!model.pictures.isEmpty() && QFileInfo(path).isSymLink()) {
        terminal.error({Message::OutputForeign,
                        path + QStringLiteral(": is a symbolic link, and a page with pictures is "
                                              "not written to where one leads; name the file "
                                              "itself with -o")});
        return false;
    }
    Cli::OutputFile output(path);
    if (const auto readers = readersOf(model)) {
        output.setReaders(*readers);
    }
    auto problem = output.open();
    if (!problem) {
        output.writeBytes(Report::Html::HtmlPage(model).singleFile());
        problem = output.close();
    }
    if (problem) {
        terminal.error(*problem);
        return false;
    }
    tell(model, path, terminal);
    return true;
}

bool HtmlCommand::writeFolder(const PageModel& model, const QString& folder,
                              Console::Terminal& terminal) const {
    Report::Html::SplitPage page(model, folder);
    if (const auto readers = readersOf(model)) {
        page.setReaders(*readers);
    }
    if (const auto problem = page.write()) {
        terminal.error(*problem);
        return false;
    }
    tell(model, QDir(folder).filePath(QStringLiteral("index.html")), terminal);
    return true;
}

void HtmlCommand::tell(const PageModel& model, const QString& page,
                       Console::Terminal& terminal) const {
    if (m_isQuiet || page == QLatin1String("-")) {
        return;
    }
    terminal.note(page + QStringLiteral(" shows ") +
                  counted(model.totals.elements, "element", "elements") + QStringLiteral(" in ") +
                  counted(model.windows.size(), "window", "windows"));
    terminal.note(QStringLiteral("next: xdg-open ") + Store::shellQuoted(page));
}

} // namespace Uicov::Commands
