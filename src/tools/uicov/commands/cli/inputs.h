// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "run/run.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Store {
class DataFile;
}

namespace Uicov::Commands::Cli {

/**
 * The files that a verb reads, recordings and data files alike, as the runs in them. Each run comes
 * once however many files hold it, then in its most complete form, and in an order that does not
 * depend on that of the files. Nothing is ever written to the files.
 */
class Inputs {
public:
    Inputs();
    ~Inputs();

    /** To be called before add(): fills Run::pictures, which takes time and memory. */
    void setTakesPictures(bool takes) { m_takesPictures = takes; }

    /** To be called before add(): recordings of applications that still run, which for that are
     * no damage. */
    void setGoing(const QStringList& recordings) { m_going = recordings; }

    /** To be called before add(): which runs there are, by all but their elements and pictures. */
    void setFilter(const std::function<bool(const Runs::Run&)>& filter) { m_filter = filter; }

    /**
     * Takes in all that can be read of the files. One that cannot be used is reported as an error,
     * named and skipped; one with something wrong in it is reported as a warning.
     * @return false when none of them could be used
     */
    bool add(const QStringList& paths, Console::Terminal& terminal);

    /**
     * Calls the visitor for each run, by application, start and UUID.
     * @return false when a run could not be read, which has been reported then
     */
    bool forEach(const std::function<void(const Runs::Run&)>& visitor,
                 Console::Terminal& terminal) const;

    int skippedFiles() const { return m_skippedFiles; }

private:
    bool addOnly(const QString& path, Console::Terminal& terminal);
    std::optional<Base::Problem> createPlace();
    bool addSeveral(const QStringList& paths, Console::Terminal& terminal);
    /** What stands in the recording; a problem is told unless it comes from still being written. */
    std::optional<Base::Problem> load(const QString& recording, Runs::Run& run,
                                      Console::Terminal& terminal) const;
    std::optional<Base::Problem> addGoing(const QString& recording, Console::Terminal& terminal);
    static void warn(const QVector<Base::Problem>& problems, Console::Terminal& terminal);

    bool m_takesPictures = false;
    std::function<bool(const Runs::Run&)> m_filter;
    QStringList m_going;
    bool m_hasReadAny = false;
    int m_skippedFiles = 0;
    // Either the one run that there is, or a data file with all of them.
    std::optional<Runs::Run> m_run;
    std::unique_ptr<Store::DataFile> m_file;
};

} // namespace Uicov::Commands::Cli
