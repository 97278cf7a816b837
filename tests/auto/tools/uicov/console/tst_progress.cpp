// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "console/progress.h"
#include "console/terminal.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Base::Message;
using Uicov::Console::Progress;
using Uicov::Console::Terminal;

namespace {

/** Keeps what would go to standard error. */
class KeptTerminal : public Terminal {
public:
    explicit KeptTerminal(bool isTerminal, int columns = 80)
        : m_isTerminal(isTerminal)
        , m_columns(columns) {}

    bool isErrorTerminal() const override { return m_isTerminal; }
    QByteArray take() { return std::exchange(m_bytes, QByteArray()); }

protected:
    void writeError(const QByteArray& bytes) override { m_bytes += bytes; }
    int errorColumns() const override { return m_columns; }

private:
    bool m_isTerminal;
    int m_columns;
    QByteArray m_bytes;
};

} // namespace

class TestProgress : public TestLib::TestCase {
    Q_OBJECT

    qint64 m_now = 0;
    const Progress::Clock m_clock = [this]() { return m_now; };

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        constexpr qint64 anyMoment = 123456;
        m_now = anyMoment;
    }

    void whatIsToBeQuietSaysNothing() {
        KeptTerminal terminal(false);
        terminal.setShowsProgress(false);
        Progress progress(terminal, QStringLiteral("combining"), QStringLiteral("runs"), 3,
                          m_clock);
        m_now += Progress::quietTime;
        progress.advance();
        QCOMPARE(terminal.take(), QByteArray());
        terminal.setShowsProgress(true);
        progress.advance();
        QCOMPARE(terminal.take(), QByteArray("uicov: combining: 2 of 3 runs (66%)\n"));
    }

    void quickWorkSaysNothing_data() {
        QTest::addColumn<bool>("isTerminal");
        QTest::newRow("terminal") << true;
        QTest::newRow("file") << false;
    }

    void quickWorkSaysNothing() {
        QFETCH(bool, isTerminal);
        KeptTerminal terminal(isTerminal);
        {
            Progress progress(terminal, QStringLiteral("combining"), QStringLiteral("runs"), 3,
                              m_clock);
            progress.advance();
            m_now += Progress::quietTime - 1;
            progress.advance(2);
            QCOMPARE(progress.done(), qint64{3});
        }
        QCOMPARE(terminal.take(), QByteArray());
    }

    void aTerminalHasOneLineThatGoesAtTheEnd() {
        KeptTerminal terminal(true);
        {
            Progress progress(terminal, QStringLiteral("combining"), QStringLiteral("runs"), 1000,
                              m_clock);
            m_now += Progress::quietTime;
            progress.advance(350);
            QCOMPARE(terminal.take(),
                     QByteArray("\r\x1b[Kuicov: combining: 350 of 1000 runs (35%)"));
            m_now += Progress::terminalInterval - 1;
            progress.advance();
            QCOMPARE(terminal.take(), QByteArray());
            m_now += 1;
            progress.advance();
            QCOMPARE(terminal.take(),
                     QByteArray("\r\x1b[Kuicov: combining: 352 of 1000 runs (35%)"));
        }
        QCOMPARE(terminal.take(), QByteArray("\r\x1b[K"));
    }

    void elsewhereThereIsALineFromTimeToTime() {
        KeptTerminal terminal(false);
        {
            Progress progress(terminal, QStringLiteral("reading"), QStringLiteral("files"), 9,
                              m_clock);
            m_now += Progress::quietTime;
            progress.advance();
            QCOMPARE(terminal.take(), QByteArray("uicov: reading: 1 of 9 files (11%)\n"));
            m_now += Progress::plainInterval - 1;
            progress.advance();
            QCOMPARE(terminal.take(), QByteArray());
            m_now += 1;
            progress.advance();
            QCOMPARE(terminal.take(), QByteArray("uicov: reading: 3 of 9 files (33%)\n"));
        }
        QCOMPARE(terminal.take(), QByteArray());
    }

    void anUnknownTotalIsNotNamed() {
        KeptTerminal terminal(false);
        Progress progress(terminal, QStringLiteral("reading"), QStringLiteral("messages"), 0,
                          m_clock);
        m_now += Progress::quietTime;
        progress.advance(5);
        QCOMPARE(terminal.take(), QByteArray("uicov: reading: 5 messages\n"));
    }

    void nothingUnfinishedIsCalledWhole() {
        KeptTerminal terminal(false);
        Progress progress(terminal, QStringLiteral("reading"), QStringLiteral("files"), 1000,
                          m_clock);
        m_now += Progress::quietTime;
        progress.advance(999);
        QVERIFY(terminal.take().contains("(99%)"));
        m_now += Progress::plainInterval;
        progress.advance(2); // more than was announced
        QCOMPARE(terminal.take(), QByteArray("uicov: reading: 1001 of 1000 files (100%)\n"));
    }

    void aWarningTakesThePlaceOfTheLine() {
        KeptTerminal terminal(true);
        Progress progress(terminal, QStringLiteral("reading"), QStringLiteral("files"), 2, m_clock);
        m_now += Progress::quietTime;
        progress.advance();
        static_cast<void>(terminal.take());
        terminal.warning({Message::InputEmpty, QStringLiteral("x: is empty")});
        const QByteArray shown = terminal.take();
        QVERIFY2(shown.startsWith("\r\x1b[Kuicov: warning:"), shown.constData());
        QVERIFY(shown.endsWith('\n'));
        terminal.note(QStringLiteral("done"));
        QCOMPARE(terminal.take(), QByteArray("uicov: done\n"));
    }

    void aNarrowTerminalIsNotWrapped() {
        constexpr int columns = 20;
        KeptTerminal terminal(true, columns);
        Progress progress(terminal, QStringLiteral("combining"), QStringLiteral("runs"), 1000,
                          m_clock);
        m_now += Progress::quietTime;
        progress.advance();
        const QString shown = QString::fromUtf8(terminal.take());
        QCOMPARE(shown.size(), QStringLiteral("\r\x1b[K").size() + columns - 1);
        QVERIFY(shown.contains(QChar(0x2026)));
    }

    void aClockOfItsOwnRuns() {
        KeptTerminal terminal(false);
        Progress progress(terminal, QStringLiteral("reading"), QStringLiteral("files"), 2);
        progress.advance();
        QCOMPARE(terminal.take(), QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestProgress)
#include "tst_progress.moc"
