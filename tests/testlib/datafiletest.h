// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testlib/testcase.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace TestLib {

/** Base of tests of data files: each test function begins with an empty folder of its own. */
class DataFileTest : public TestCase {
    Q_OBJECT

protected:
    /** Of the file; empty when there is none. */
    QByteArray contents() const;
    /** Makes the file, with one random run of up to that many elements and of five at least. */
    void makeFile(int elements = 20);

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;

protected Q_SLOTS:
    void init();
    void cleanup();
};

} // namespace TestLib
