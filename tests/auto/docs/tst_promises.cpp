// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

/** Every test that docs/promises.md names is there. */
class TestPromises : public TestLib::TestCase {
    Q_OBJECT

    static QString contents(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

private Q_SLOTS:
    void eachNamedTestExists_data() {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("function");
        const QString page = contents(QStringLiteral(UICOV_SOURCE_DIR "/docs/promises.md"));
        static const QRegularExpression name(QStringLiteral("`(tst_[a-z]+)\\.([A-Za-z0-9]+)`"));
        auto matches = name.globalMatch(page);
        QVERIFY(matches.hasNext());
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            QTest::newRow(qPrintable(match.captured())) << match.captured(1) << match.captured(2);
        }
    }

    void eachNamedTestExists() {
        QFETCH(QString, program);
        QFETCH(QString, function);
        QDirIterator files(QStringLiteral(UICOV_SOURCE_DIR "/tests"),
                           {program + QStringLiteral(".cpp")}, QDir::Files,
                           QDirIterator::Subdirectories);
        QVERIFY2(files.hasNext(), "there is no such program");
        const QString source = contents(files.next());
        const QRegularExpression declaration(QStringLiteral("\\bvoid %1\\(\\)").arg(function));
        QVERIFY2(source.contains(declaration), "it has no such function");
    }

    void everyPromiseNamesATest() {
        const QString page = contents(QStringLiteral(UICOV_SOURCE_DIR "/docs/promises.md"));
        const QStringList promises = page.split(QStringLiteral("\n- ")).mid(1);
        QVERIFY(promises.size() > 30);
        static const QRegularExpression test(
            QStringLiteral("`(tst_[a-z]+\\.[A-Za-z0-9]+|fuzz_[a-z]+|valgrind_example_[a-z]+)`"));
        for (const QString& promise : promises) {
            QVERIFY2(promise.section(QStringLiteral("\n\n"), 0, 0).contains(test),
                     qPrintable(promise));
        }
    }

    void eachNamedProgramExists() {
        const QString page = contents(QStringLiteral(UICOV_SOURCE_DIR "/docs/promises.md"));
        static const QRegularExpression target(QStringLiteral("`(fuzz_[a-z]+)`"));
        int targets = 0;
        for (auto matches = target.globalMatch(page); matches.hasNext(); ++targets) {
            const QString name = matches.next().captured(1);
            QVERIFY2(QFile::exists(QStringLiteral(UICOV_SOURCE_DIR "/tests/fuzz/") + name +
                                   QStringLiteral(".cpp")),
                     qPrintable(name));
        }
        QVERIFY(targets > 0);
        const QString integration =
            contents(QStringLiteral(UICOV_SOURCE_DIR "/tests/integration/CMakeLists.txt"));
        QVERIFY(integration.contains(QStringLiteral("valgrind_example_${kind}")));
        static const QRegularExpression example(QStringLiteral("`valgrind_example_([a-z]+)`"));
        int examples = 0;
        for (auto matches = example.globalMatch(page); matches.hasNext(); ++examples) {
            QVERIFY(integration.contains(QStringLiteral("program_") + matches.next().captured(1) +
                                         QLatin1Char(' ')));
        }
        QVERIFY(examples > 0);
    }
};

QTEST_GUILESS_MAIN(TestPromises)
#include "tst_promises.moc"
