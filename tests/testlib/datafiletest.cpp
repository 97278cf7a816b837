// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/datafiletest.h"

#include "store/datafile.h"
#include "testlib/randomrun.h"

#include <QFile>
#include <QTest>

namespace TestLib {

using Uicov::Runs::Run;
using Uicov::Store::DataFile;

QByteArray DataFileTest::contents() const {
    QFile file(m_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void DataFileTest::makeFile(int elements) {
    constexpr int fewest = 5;
    QRandomGenerator random(5);
    DataFile file;
    QVERIFY(!file.create(m_path));
    Run run = randomRun(random, elements);
    while (run.elements.size() < fewest) {
        run = randomRun(random, elements);
    }
    run.uuid = uuid(1);
    QVERIFY(!file.add(run));
    QVERIFY(!file.commit());
}

void DataFileTest::init() {
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(QStringLiteral("x.uicov"));
}

void DataFileTest::cleanup() {
    m_folder.reset();
    TestCase::cleanup();
}

} // namespace TestLib
