#include "commands/htmlcommand.h"

#include "commands/exitcode.h"
#include "commands/helpformatter.h"
#include "console/outputfile.h"
#include "console/terminal.h"
#include "report/html/htmlpage.h"
#include "report/html/pagemodelbuilder.h"
#include "report/html/picturebudget.h"
#include "report/html/splitpage.h"
#include "store/datafilepath.h"
#include "store/inputs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Uicov::Commands {

using Console::Message;
using Report::Html::PageModel;

namespace {

constexpr char examples[] =
    R"(The page is one file with everything in it: it opens from the disk, needs no network and can be
sent around. To see pictures of the windows, record with uicov run --screenshots.

Examples:
  uicov html
  uicov html -o panel.html --title "Panel, nightly" monday.uirec tuesday.uirec
  uicov html --split site/coverage nightly.uicov)";

constexpr double bytesInMegabyte = 1000000;
constexpr int markRange = 4096;
/** What a picture's size takes at most in the page, and what is said about reduced ones. */
constexpr int maximumSide = 99999;
constexpr int noteBytes = 1000;

QString counted(int count, const char* one, const char* several) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

} // namespace

HtmlCommand::HtmlCommand()
    : m_collector(m_tree) {}

CLI::App* HtmlCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("html", "Make a page with pictures of what was used and what not");
    setUsage(*app, "uicov html [OPTIONS] [FILE...]");
    CLI::Option* const output =
        app->add_option("-o,--output", m_output,
                        "The page to write; - is standard output (default: uicov.html)")
            ->type_name("FILE");
    app->add_option("--split", m_folder,
                    "Write a folder instead: index.html with nothing inline, pictures in full")
        ->type_name("DIR")
        ->excludes(output);
    app->add_option("--title", m_title, "What stands at the top (default: the applications)")
        ->type_name("TEXT");
    app->add_option("--max-size", m_maximumMegabytes,
                    "Shrink pictures until the page is that small; 0: never")
        ->type_name("MB")
        ->check(CLI::Validator(CLI::NonNegativeNumber).description(""))
        ->capture_default_str();
    app->add_flag("--strict", m_isStrict, "End with 3 when a run is partial");
    app->add_flag("-q,--quiet", m_isQuiet, "Print nothing but errors and warnings");
    app->add_option("FILE", m_files, "Data files and recordings (default: .uicov)")
        ->type_name("")
        ->expected(0, -1);
    app->footer(examples);
    return app;
}

void HtmlCommand::setArguments(const std::vector<std::string>& unread,
                               const std::vector<std::string>* literal) {
    m_files.insert(m_files.end(), unread.begin(), unread.end());
    if (literal != nullptr) {
        m_files.insert(m_files.end(), literal->begin(), literal->end());
    }
}

int HtmlCommand::run(Console::Terminal& terminal) {
    if (!read(terminal)) {
        return Failed; // it has been told why
    }
    const int status = write(terminal);
    if (status != Done || m_skippedFiles > 0) {
        return Failed;
    }
    return m_isStrict && m_history.partialRuns() > 0 ? PartialData : Done;
}

bool HtmlCommand::read(Console::Terminal& terminal) {
    QStringList paths;
    for (const std::string& file : m_files) {
        paths.append(QFile::decodeName(file.c_str()));
    }
    if (paths.isEmpty()) {
        paths.append(Store::DataFilePath::current());
    }
    Store::Inputs inputs;
    inputs.setTakesPictures(true);
    const bool isRead = inputs.add(paths, terminal) &&
                        inputs.forEach([this](const Store::Run& run) { take(run); }, terminal);
    m_skippedFiles = inputs.skippedFiles();
    return isRead;
}

void HtmlCommand::take(const Store::Run& run) {
    m_collector.collect(run);
    m_appearances.add(run, m_tree);
    m_history.add(run, m_tree);
    for (auto it = run.warnings.cbegin(); it != run.warnings.cend(); ++it) {
        m_warnings[it.key()] += it.value();
    }
}

PageModel HtmlCommand::model() const {
    PageModel model;
    model.title = title();
    model.runs = m_history.rows();
    Report::Html::PageModelBuilder(m_tree, m_appearances).build(model);
    model.warnings = warnings();
    model.notes = notes(model);
    return model;
}

QString HtmlCommand::title() const {
    if (!m_title.empty()) {
        return QString::fromStdString(m_title);
    }
    QStringList applications;
    for (const Report::Html::RunHistory::Row& run : m_history.rows()) {
        if (!run.application.isEmpty() && !applications.contains(run.application)) {
            applications.append(run.application);
        }
    }
    constexpr int named = 3;
    if (applications.size() > named) {
        return counted(applications.size(), "application", "applications");
    }
    return applications.isEmpty() ? QStringLiteral("GUI coverage")
                                  : applications.join(QStringLiteral(", "));
}

QStringList HtmlCommand::warnings() const {
    QStringList warnings;
    const int partial = m_history.partialRuns();
    if (partial > 0) {
        QString reason;
        for (const Report::Html::RunHistory::Row& run : m_history.rows()) {
            reason = run.isComplete ? reason : run.partialReason;
        }
        warnings.append(
            (partial == m_history.rows().size() && partial == 1
                 ? QStringLiteral("The run is partial: it %1.").arg(reason)
                 : QStringLiteral("%1 of %2 runs %3 partial; the last of them %4.")
                       .arg(partial)
                       .arg(m_history.rows().size())
                       .arg(QLatin1String(partial == 1 ? "is" : "are"), reason)) +
            QStringLiteral(" All that could be read is counted, and there may have been more."));
    }
    if (m_skippedFiles > 0) {
        warnings.append(counted(m_skippedFiles, "file", "files") +
                        QStringLiteral(" could not be read; nothing of it is counted."));
    }
    return warnings;
}

QStringList HtmlCommand::notes(const PageModel& model) const {
    QStringList notes;
    if (m_tree.unopenedMenus() > 0) {
        notes.append(QStringLiteral("Menus never opened: %1; what is in them is unknown and not "
                                    "counted.")
                         .arg(m_tree.unopenedMenus()));
    }
    qint64 warnings = 0;
    for (const qint64 count : m_warnings) {
        warnings += count;
    }
    if (warnings > 0) {
        notes.append(QStringLiteral("Warnings while recording: %1 (%2 different); uicov report "
                                    "--warnings lists them.")
                         .arg(warnings)
                         .arg(m_warnings.size()));
    }
    if (model.totals.neverCountedEvents > 0) {
        notes.append(QStringLiteral("\"unchecked\" of check boxes of Qt Widgets is left out: it is "
                                    "announced and never counted."));
    }
    if (model.totals.missedUnseen > 0) {
        notes.append(QStringLiteral("%1 of the missed elements may have been seen: they do not "
                                    "announce that (Qt Quick items).")
                         .arg(model.totals.missedUnseen));
    }
    return notes;
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

int HtmlCommand::write(Console::Terminal& terminal) {
    PageModel page = model();
    if (page.windows.isEmpty()) {
        terminal.error(
            {Message::NoElements, QStringLiteral("nothing to show: no element that counts was "
                                                 "recorded; check that the application "
                                                 "showed a window and that --toolkit fits it")});
        return Failed;
    }
    if (!m_folder.empty()) {
        return writeFolder(page, terminal);
    }
    fit(page, terminal);
    return writeFile(page, terminal);
}

int HtmlCommand::writeFile(const PageModel& model, Console::Terminal& terminal) const {
    const QString path =
        m_output.empty() ? QStringLiteral("uicov.html") : QFile::decodeName(m_output.c_str());
    QFile present(path);
    if (path != QLatin1String("-") && QFileInfo(path).isFile() && present.size() > 0 &&
        (!present.open(QIODevice::ReadOnly) ||
         !Report::Html::HtmlPage::isPage(present.read(markRange)))) {
        terminal.error({Message::OutputForeign,
                        path + QStringLiteral(": is not a page of uicov html and is not "
                                              "overwritten; choose another name with -o")});
        return Failed;
    }
    Console::OutputFile output(path);
    if (const auto problem = output.open()) {
        terminal.error(*problem);
        return Failed;
    }
    output.writeBytes(Report::Html::HtmlPage(model).singleFile());
    if (const auto problem = output.close()) {
        terminal.error(*problem);
        return Failed;
    }
    tell(model, path, terminal);
    return Done;
}

int HtmlCommand::writeFolder(const PageModel& model, Console::Terminal& terminal) const {
    const QString folder = QFile::decodeName(m_folder.c_str());
    if (const auto problem = Report::Html::SplitPage(model, folder).write()) {
        terminal.error(*problem);
        return Failed;
    }
    tell(model, QDir(folder).filePath(QStringLiteral("index.html")), terminal);
    return Done;
}

void HtmlCommand::tell(const PageModel& model, const QString& page,
                       Console::Terminal& terminal) const {
    if (m_isQuiet || page == QLatin1String("-")) {
        return;
    }
    terminal.note(page + QStringLiteral(" shows ") +
                  counted(model.totals.elements, "element", "elements") + QStringLiteral(" in ") +
                  counted(model.windows.size(), "window", "windows"));
    terminal.note(QStringLiteral("next: xdg-open ") + Store::DataFilePath::shellQuoted(page));
}

} // namespace Uicov::Commands
