// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandrunner.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;

/** The pages as they are installed, looked at by a reader of manual pages. */
class TestManualPage : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    CommandRunner m_reader{QStringLiteral("mandoc")};

    QString page(const QString& name) const {
        return m_folder.filePath(QStringLiteral("man1/") + name);
    }

    /** The page as a terminal shows it, without bold and italic letters. */
    QString read(const QString& name) {
        const int status = m_reader.run({QStringLiteral("-Tutf8"), QStringLiteral("-O"),
                                         QStringLiteral("width=100"), page(name)});
        QString text = status == 0 ? m_reader.output() : QString();
        // bold and italic letters are typed over: letter, backspace, letter
        for (int at = text.indexOf(QLatin1Char('\b')); at > 0;
             at = text.indexOf(QLatin1Char('\b'))) {
            text.remove(at - 1, 2);
        }
        return text;
    }

private Q_SLOTS:
    void initTestCase() {
        CommandRunner writer{QStringLiteral(UICOV_MANUAL_WRITER)};
        QCOMPARE(writer.run({m_folder.path()}), 0);
        QCOMPARE(writer.errors(), QString());
    }

    void everyVerbHasAPage() {
        CommandRunner uicov{QStringLiteral(UICOV_PROGRAM)};
        QCOMPARE(uicov.run({QStringLiteral("--help")}), 0);
        const QRegularExpression verb(QStringLiteral("^  ([a-z]+)  +[A-Z]"),
                                      QRegularExpression::MultilineOption);
        QStringList expected{QStringLiteral("uicov.1")};
        auto it = verb.globalMatch(uicov.output());
        while (it.hasNext()) {
            expected.append(QStringLiteral("uicov-%1.1").arg(it.next().captured(1)));
        }
        expected.sort();
        QStringList pages = QDir(page(QString())).entryList(QDir::Files);
        pages.sort();
        QCOMPARE(pages, expected);
        QVERIFY(pages.size() > 7);
    }

    void noPageHasAMistake() {
        const QStringList pages = QDir(page(QString())).entryList(QDir::Files);
        for (const QString& name : pages) {
            // long lines are only a matter of style, which this leaves out
            const int status =
                m_reader.run({QStringLiteral("-Tlint"), QStringLiteral("-Wwarning"), page(name)});
            QVERIFY2(status == 0, qPrintable(m_reader.output() + m_reader.errors()));
        }
    }

    void aPageSaysWhatHelpSays() {
        const QString text = read(QStringLiteral("uicov-run.1"));
        for (const char* part : {"uicov-run - Run an application", "uicov run [OPTIONS] -- APP",
                                 "-o FILE, --output FILE", "--toolkit NAME", "(default: both)",
                                 "UICOV_TOOLKIT", "EXAMPLES", "uicov run -o shard-%p.uicov",
                                 "SEE ALSO", "uicov(1)", "uicov-doctor(1)"}) {
            QVERIFY2(text.contains(QLatin1String(part)), qPrintable(QLatin1String(part) + text));
        }
    }

    void thePageOfTheWholeHasTheVerbsInGroups() {
        const QString text = read(QStringLiteral("uicov.1"));
        for (const char* part : {"Recording", "uicov-run(1)", "uicov-completion(1)", "EXIT STATUS",
                                 "2 a limit", "--color WHEN"}) {
            QVERIFY2(text.contains(QLatin1String(part)), part);
        }
    }

    void pagesOfVerbsThatAreNoMoreGo() {
        QFile old(page(QStringLiteral("uicov-old.1")));
        QVERIFY(old.open(QIODevice::WriteOnly));
        CommandRunner writer{QStringLiteral(UICOV_MANUAL_WRITER)};
        QCOMPARE(writer.run({m_folder.path()}), 0);
        QVERIFY(!old.exists());
    }

    void whatCannotBeWrittenIsAnError() {
        CommandRunner writer{QStringLiteral(UICOV_MANUAL_WRITER)};
        QCOMPARE(writer.run({QStringLiteral("/proc/none")}), 1);
        QVERIFY(writer.errors().contains(QStringLiteral("cannot be written")));
        QCOMPARE(writer.run({}), 1);
    }
};

QTEST_GUILESS_MAIN(TestManualPage)
#include "tst_manualpage.moc"
