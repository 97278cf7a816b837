// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/gatekeeper.h"
#include "report/html/appearances.h"
#include "report/html/pagemodel.h"
#include "report/html/runhistory.h"

#include <QByteArray>
#include <QFileDevice>
#include <QString>
#include <QVector>

#include <optional>

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Coverage {
class CoverageResult;
}

namespace Uicov::Commands {

namespace Cli {
class CoverageOptions;
}

/**
 * Makes the page with pictures for the verbs that write it: looks at each run while it is read,
 * then builds the page's model and writes it. Owned by the verb's command.
 */
class PageMaker {
public:
    static constexpr double usualMegabytes = 20;

    void setTitle(const QString& title) { m_title = title; }
    /** How large a page in one file may be; 0 for as large as it gets. */
    void setMaximumMegabytes(double megabytes) { m_maximumMegabytes = megabytes; }
    void setQuiet(bool isQuiet) { m_isQuiet = isQuiet; }
    /** Whether others may read pages who may not read the files that they are made from. */
    void setPublic(bool isPublic) { m_isPublic = isPublic; }

    /** To be called before the options read: lets them show each run to this, which lives longer.
     */
    void watch(Cli::CoverageOptions& options);

    /** After the options have read; once. */
    Report::Html::PageModel model(const Coverage::CoverageResult& coverage,
                                  const QVector<Coverage::GateResult>& gates, int digits,
                                  int skippedFiles);

    /** Who besides the owner may read what shows pictures; nothing where that is not limited. */
    std::optional<QFileDevice::Permissions> readersOf(const Report::Html::PageModel& model) const;
    /** The same where it is not known yet whether there are pictures. */
    std::optional<QFileDevice::Permissions> readers() const;

    /** Whether a page may be written there: not in the place of a file that is none, which is told.
     */
    static bool mayWrite(const QString& path, Console::Terminal& terminal);
    /** False for a symbolic link, which is told: where it leads others may have chosen. */
    static bool isNoLink(const QString& path, Console::Terminal& terminal);
    /** The page as one file, with pictures as small as they have to be. */
    QByteArray toBytes(Report::Html::PageModel& model, Console::Terminal& terminal) const;
    /** Writes that into a file; "-" is standard output. False when that failed, which has been
     * told. */
    bool writeFile(Report::Html::PageModel& model, const QString& path,
                   Console::Terminal& terminal) const;

    /** Says what the page shows and how to open it. */
    void tell(const Report::Html::PageModel& model, const QString& page,
              Console::Terminal& terminal) const;

private:
    void fit(Report::Html::PageModel& model, Console::Terminal& terminal) const;

    QString m_title;
    double m_maximumMegabytes = usualMegabytes;
    bool m_isQuiet = false;
    bool m_isPublic = false;
    /** Of the verb; null until watch(). */
    const Cli::CoverageOptions* m_options = nullptr;
    Report::Html::Appearances m_appearances;
    Report::Html::RunHistory m_history;
};

} // namespace Uicov::Commands
