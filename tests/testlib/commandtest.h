// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/run.h"
#include "testlib/commandrunner.h"
#include "testlib/testcase.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace TestLib {

/**
 * Base of tests of the command as a process: each test function begins with an empty folder of its
 * own in which the data file .uicov with panelRun() is.
 */
class CommandTest : public TestCase {
    Q_OBJECT

public:
    /** @param program path of the command */
    explicit CommandTest(const QString& program);

protected:
    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }
    /** The exit code for the arguments, which are what stands between blanks. */
    int run(const char* words);
    /** Whether the text is in what the command said on either stream. */
    bool says(const char* text) const;
    /** Makes a data file of that name with the one run. */
    void put(const char* name, const Uicov::Runs::Run& run) const;
    /** Writes uicov.toml. */
    void configure(const char* text) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CommandRunner> m_runner;

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    QString m_program;
};

} // namespace TestLib
