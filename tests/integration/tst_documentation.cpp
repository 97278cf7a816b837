// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/commandline.h"
#include "console/terminal.h"
#include "help/vocabulary.h"
#include "testlib/emulation.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <CLI/CLI.hpp>

namespace {

/** A slow and busy machine with sanitizers takes its time. */
constexpr int patience = 240000;

/** A fenced block of a page. */
struct Block {
    QString language;
    QString text;
};

QString read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QVector<Block> blocksOf(const QString& page) {
    static const QRegularExpression fence(QStringLiteral("^```([a-z]+)\\n(.*?)^```$"),
                                          QRegularExpression::MultilineOption |
                                              QRegularExpression::DotMatchesEverythingOption);
    QVector<Block> blocks;
    auto it = fence.globalMatch(page);
    while (it.hasNext()) {
        const auto match = it.next();
        blocks.append({match.captured(1), match.captured(2)});
    }
    return blocks;
}

/** Every call of the command in that text, up to where a shell or the text ends it. */
QStringList callsIn(QString text) {
    static const QRegularExpression call(
        QStringLiteral("(?:^|[;&|(\"'`] *|- run: |- |-a |<\\()uicov ([^\\n|;&>`#)]*)"),
        QRegularExpression::MultilineOption);
    text.replace(QRegularExpression(QStringLiteral("\\\\\\n *")), QString());
    // What a CI system puts in is a word like any other.
    text.replace(QRegularExpression(QStringLiteral("\\$\\{\\{[^}]*\\}\\}")), QStringLiteral("1"));
    QStringList calls;
    auto it = call.globalMatch(text);
    while (it.hasNext()) {
        calls.append(it.next().captured(1).trimmed());
    }
    return calls;
}

/** As a shell takes it apart, as far as documentation goes. */
std::vector<std::string> wordsOf(const QString& call) {
    static const QRegularExpression word(QStringLiteral("(?:\"([^\"]*)\"|'([^']*)'|([^\\s\"']+))"));
    std::vector<std::string> words;
    auto it = word.globalMatch(call);
    while (it.hasNext()) {
        const auto match = it.next();
        words.push_back(match.captured(match.lastCapturedIndex()).toStdString());
    }
    return words;
}

/** What the command would say about its options; empty when it takes them. */
QString complaintAbout(const QString& call) {
    std::vector<std::string> words = wordsOf(call);
    words.erase(std::find(words.begin(), words.end(), "--"), words.end());
    std::reverse(words.begin(), words.end());
    Uicov::Console::Terminal terminal;
    Uicov::Commands::CommandLine commandLine(terminal);
    const auto app = commandLine.definitions();
    try {
        app->parse(words);
    } catch (const CLI::Success&) {
        return {};
    } catch (const CLI::ParseError& error) {
        return QString::fromStdString(error.what());
    }
    return {};
}

} // namespace

/** What is told to be typed can be typed. */
class TestDocumentation : public TestLib::TestCase {
    Q_OBJECT

    const QDir m_sources{QStringLiteral(UICOV_SOURCE_DIR)};

private Q_SLOTS:
    void everyCallInAPageIsValid_data() {
        QTest::addColumn<QString>("page");
        QTest::addRow("README.md") << m_sources.filePath(QStringLiteral("README.md"));
        QDirIterator pages(m_sources.filePath(QStringLiteral("docs")), {QStringLiteral("*.md")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (pages.hasNext()) {
            const QString page = pages.next();
            QTest::addRow("%s", qPrintable(m_sources.relativeFilePath(page))) << page;
        }
    }

    void everyCallInAPageIsValid() {
        QFETCH(QString, page);
        const QString text = read(page);
        QVERIFY(!text.isEmpty());
        for (const Block& block : blocksOf(text)) {
            if (block.language == QLatin1String("text") ||
                block.language == QLatin1String("cmake")) {
                continue; // what a program prints, and what calls other things "uicov"
            }
            for (const QString& call : callsIn(block.text)) {
                const QString complaint = complaintAbout(call);
                QVERIFY2(complaint.isEmpty(), qPrintable(call + QStringLiteral(": ") + complaint));
            }
        }
    }

    void theJobsCallTheCommand() {
        const QString page = read(m_sources.filePath(QStringLiteral("docs/ci.md")));
        int calls = 0;
        for (const Block& block : blocksOf(page)) {
            calls += callsIn(block.text).size();
        }
        QVERIFY2(calls >= 14, qPrintable(QString::number(calls)));
        // and a call that is wrong would be noticed
        QVERIFY(
            !complaintAbout(callsIn(QStringLiteral("      - run: uicov report --mised x")).first())
                 .isEmpty());
        QVERIFY(!complaintAbout(QStringLiteral("reprot x")).isEmpty());
        QVERIFY(complaintAbout(QStringLiteral("run -q -- ./x --of-its-own")).isEmpty());
    }

    void everyExampleOfTheHelpIsValid() {
        Uicov::Console::Terminal terminal;
        Uicov::Commands::CommandLine commandLine(terminal);
        const auto app = commandLine.definitions();
        const Uicov::Help::Vocabulary vocabulary(*app);
        QStringList calls;
        for (const Uicov::Help::Verb& verb : vocabulary.verbs()) {
            calls += callsIn(QString(verb.examples)
                                 .replace(QStringLiteral("\n  "), QStringLiteral("\n"))
                                 .mid(2));
        }
        QVERIFY(calls.size() > 2 * vocabulary.verbs().size());
        for (const QString& call : qAsConst(calls)) {
            const QString complaint = complaintAbout(call);
            QVERIFY2(complaint.isEmpty(), qPrintable(call + QStringLiteral(": ") + complaint));
        }
    }

    /** In one shell, from a folder that looks as the sources do after "make demo". */
    void theCommandsOfGettingStartedRun() {
        if (TestLib::isEmulated()) {
            QSKIP(TestLib::preloadedTwice);
        }
        const QVector<Block> blocks =
            blocksOf(read(m_sources.filePath(QStringLiteral("docs/getting-started.md"))));
        QString script = QStringLiteral("set -euo pipefail\nunset UICOV_FILE UICOV_CONTEXT\n");
        QStringList expected;
        for (const Block& block : blocks) {
            if (block.language == QLatin1String("sh")) {
                script += block.text;
            } else if (block.language == QLatin1String("text")) {
                const QStringList lines = block.text.split(QLatin1Char('\n'));
                std::copy_if(lines.cbegin(), lines.cend(), std::back_inserter(expected),
                             [](const QString& line) { return !line.isEmpty(); });
            }
        }
        QVERIFY(script.count(QStringLiteral("\nuicov ")) >= 9);
        QVERIFY(expected.size() >= 3);
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("build")));
        QVERIFY(QFile::link(QStringLiteral(UICOV_BINARY_DIR),
                            folder.filePath(QStringLiteral("build/dev"))));
        QProcess shell;
        shell.setWorkingDirectory(folder.path());
        shell.start(QStringLiteral("bash"), {QStringLiteral("-c"), script});
        QVERIFY(shell.waitForFinished(patience));
        const QString output = QString::fromUtf8(shell.readAllStandardOutput());
        const QString errors = QString::fromUtf8(shell.readAllStandardError());
        QVERIFY2(shell.exitCode() == 0, qPrintable(output + errors));
        for (const QString& line : qAsConst(expected)) {
            QVERIFY2(output.contains(line + QLatin1Char('\n')), qPrintable(line));
        }
    }
};

QTEST_GUILESS_MAIN(TestDocumentation)
#include "tst_documentation.moc"
