// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandtest.h"

#include "store/datafile.h"
#include "testlib/runmaker.h"

#include <QFile>
#include <QTest>

namespace TestLib {

CommandTest::CommandTest(const QString& program)
    : m_program(program) {}

int CommandTest::run(const char* words) {
    return m_runner->run(QString::fromUtf8(words).split(QLatin1Char(' ')));
}

bool CommandTest::says(const char* text) const {
    return m_runner->output().contains(QString::fromUtf8(text)) ||
           m_runner->errors().contains(QString::fromUtf8(text));
}

void CommandTest::put(const char* name, const Uicov::Runs::Run& run) const {
    Uicov::Store::DataFile file;
    QVERIFY(!file.create(path(name)));
    QVERIFY(!file.add(run));
    QVERIFY(!file.commit());
}

void CommandTest::configure(const char* text) const {
    QFile file(path("uicov.toml"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) >= 0);
}

void CommandTest::init() {
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_runner = std::make_unique<CommandRunner>(m_program);
    m_runner->setWorkingFolder(m_folder->path());
    m_runner->setVariable(QStringLiteral("UICOV_FILE"), QString());
    m_runner->setVariable(QStringLiteral("UICOV_CONFIG"), QString());
    put(".uicov", panelRun());
}

void CommandTest::cleanup() {
    TestCase::cleanup();
}

} // namespace TestLib
