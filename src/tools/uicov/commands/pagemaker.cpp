// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/pagemaker.h"

#include "commands/cli/coverageoptions.h"
#include "commands/cli/outputfile.h"
#include "console/terminal.h"
#include "report/html/htmlpage.h"
#include "report/html/pagemodelbuilder.h"
#include "report/html/pagesummary.h"
#include "report/html/picturebudget.h"
#include "store/datafilepath.h"

#include <QFile>
#include <QFileInfo>

namespace Uicov::Commands {

using Base::Message;
using Coverage::CoverageResult;
using Report::Html::PageModel;

namespace {

constexpr double bytesInMegabyte = 1000000;
constexpr int markRange = 4096;
/** What a picture's size takes at most in the page, and what is said about reduced ones. */
constexpr int maximumSide = 99999;
constexpr int noteBytes = 1000;

QString counted(int count, const char* one, const char* several) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

} // namespace

void PageMaker::watch(Cli::CoverageOptions& options) {
    m_options = &options;
    options.setVisitor([this](const Runs::Run& run, const CoverageResult& coverage) {
        m_appearances.setNameRules(coverage.nameRules());
        m_appearances.setContexts(
            [&coverage](const QString& context) { return coverage.countsContext(context); });
        m_appearances.add(run, coverage.tree());
        m_history.add(run, coverage);
    });
}

PageModel PageMaker::model(const CoverageResult& coverage,
                           const QVector<Coverage::GateResult>& gates, int digits,
                           int skippedFiles) {
    m_history.finish(coverage);
    Report::Html::PageSummary summary(coverage, m_history);
    summary.setTitle(m_title);
    summary.setGates(gates);
    summary.setPrecision(digits);
    summary.setSkippedFiles(skippedFiles);
    PageModel model;
    summary.fill(model);
    Report::Html::PageModelBuilder(coverage.tree(), m_appearances).build(model);
    return model;
}

/** Makes pictures smaller until the page is as small as was asked for, or as it can be. */
void PageMaker::fit(PageModel& model, Console::Terminal& terminal) const {
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

bool PageMaker::mayWrite(const QString& path, Console::Terminal& terminal) {
    QFile present(path);
    if (path != QLatin1String("-") && QFileInfo(path).isFile() && present.size() > 0 &&
        (!present.open(QIODevice::ReadOnly) ||
         !Report::Html::HtmlPage::isPage(present.read(markRange)))) {
        terminal.error({Message::OutputForeign,
                        path + QStringLiteral(": is not a page of uicov html and is not "
                                              "overwritten; choose another name")});
        return false;
    }
    return true;
}

QByteArray PageMaker::toBytes(PageModel& model, Console::Terminal& terminal) const {
    fit(model, terminal);
    return Report::Html::HtmlPage(model).singleFile();
}

std::optional<QFileDevice::Permissions> PageMaker::readersOf(const PageModel& model) const {
    return model.pictures.isEmpty() ? std::nullopt : readers();
}

std::optional<QFileDevice::Permissions> PageMaker::readers() const {
    if (m_isPublic || m_options == nullptr) {
        return std::nullopt;
    }
    QFileDevice::Permissions readers = QFile::ReadGroup | QFile::ReadOther;
    for (const std::string& file : m_options->files()) {
        readers &= QFile::permissions(QFile::decodeName(file.c_str()));
    }
    return m_options->files().empty() ? readers & QFile::permissions(Store::currentDataFile())
                                      : readers;
}

bool PageMaker::isNoLink(const QString& path, Console::Terminal& terminal) {
    if (!QFileInfo(path).isSymLink()) {
        return true;
    }
    terminal.error({Message::OutputForeign,
                    path + QStringLiteral(": is a symbolic link, and a page with pictures is not "
                                          "written to where one leads; name the file itself")});
    return false;
}

bool PageMaker::writeFile(PageModel& model, const QString& path,
                          Console::Terminal& terminal) const {
    if (!mayWrite(path, terminal) || (!model.pictures.isEmpty() && !isNoLink(path, terminal))) {
        return false;
    }
    Cli::OutputFile output(path);
    if (const auto readers = readersOf(model)) {
        output.setReaders(*readers);
    }
    auto problem = output.open();
    if (!problem) {
        output.writeBytes(toBytes(model, terminal));
        problem = output.close();
    }
    if (problem) {
        terminal.error(*problem);
        return false;
    }
    tell(model, path, terminal);
    return true;
}

void PageMaker::tell(const PageModel& model, const QString& page,
                     Console::Terminal& terminal) const {
    if (m_isQuiet || page == QLatin1String("-")) {
        return;
    }
    terminal.note(page + QStringLiteral(" shows ") +
                  (model.isOfControls ? counted(model.totals.elements, "control", "controls")
                                      : counted(model.totals.elements, "element", "elements")) +
                  QStringLiteral(" in ") + counted(model.windows.size(), "window", "windows"));
    terminal.note(QStringLiteral("next: xdg-open ") + Store::shellQuoted(page));
}

} // namespace Uicov::Commands
