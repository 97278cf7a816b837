// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandrunner.h"
#include "testlib/terminalrunner.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using TestLib::TerminalRunner;

/** The scripts are read and asked by the shells that they are for. */
class TestCompletion : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    const QString m_program = QStringLiteral(UICOV_PROGRAM);

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    bool write(const QString& file, const QByteArray& bytes) const {
        QFile written(file);
        return QDir().mkpath(QFileInfo(file).path()) && written.open(QIODevice::WriteOnly) &&
               written.write(bytes) == bytes.size();
    }

    bool writeScript(const char* shell, const QString& file) const {
        CommandRunner runner(m_program);
        return runner.run({QStringLiteral("completion"), QLatin1String(shell)}) == 0 &&
               runner.errors().isEmpty() && write(file, runner.output().toUtf8());
    }

    /** What a shell's program says, line by line, sorted. */
    QStringList answers(const char* shell, const QStringList& arguments) const {
        CommandRunner runner(QStandardPaths::findExecutable(QLatin1String(shell)));
        runner.setWorkingFolder(path("work"));
        runner.setVariable(QStringLiteral("HOME"), path("home"));
        if (runner.run(arguments) != 0 || !runner.errors().isEmpty()) {
            return {QStringLiteral("failed: ") + runner.errors()};
        }
        QStringList lines = runner.output().split(QLatin1Char('\n'));
        lines.removeAll(QString());
        lines.sort();
        return lines;
    }

    /** As bash calls the function: "=" is a word of its own there, and the last word may be empty.
     */
    QStringList askBash(const QString& line) const {
        QStringList words = line.split(QLatin1Char(' '));
        for (int i = 0; i < words.size(); ++i) {
            const int sign = words.at(i).indexOf(QLatin1Char('='));
            if (sign > 0) {
                const QString value = words.at(i).mid(sign + 1);
                words[i].truncate(sign);
                words.insert(i + 1, QStringLiteral("="));
                if (!value.isEmpty()) {
                    words.insert(i + 2, value);
                }
            }
        }
        const QString script = QStringLiteral("source \"$0\"; COMP_WORDS=(\"$@\"); "
                                              "COMP_CWORD=$(($# - 1)); _uicov; "
                                              "printf '%s\\n' \"${COMPREPLY[@]}\"");
        return answers("bash", QStringList{QStringLiteral("--norc"), QStringLiteral("-u"),
                                           QStringLiteral("-c"), script, path("uicov.bash")} +
                                   words);
    }

    /** Fish describes what it offers, behind a tabulator. */
    QStringList askFish(const QString& line) const {
        const QString script =
            QStringLiteral("source %1; complete -C '%2'").arg(path("uicov.fish"), line);
        QStringList lines =
            answers("fish", {QStringLiteral("--no-config"), QStringLiteral("-c"), script});
        for (QString& offered : lines) {
            offered = offered.section(QLatin1Char('\t'), 0, 0);
        }
        return lines;
    }

    static void addQuestions() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("offered");
        QTest::newRow("verbs") << "uicov co"
                               << "combine completion config";
        QTest::newRow("one verb") << "uicov doc"
                                  << "doctor";
        QTest::newRow("no such verb") << "uicov zz"
                                      << "";
        QTest::newRow("verb behind an option with value") << "uicov --color never doc"
                                                          << "doctor";
        QTest::newRow("value of an option before the verb") << "uicov --color "
                                                            << "always auto never";
        QTest::newRow("long options") << "uicov run --scr"
                                      << "--screenshots";
        QTest::newRow("choices") << "uicov run --toolkit "
                                 << "both quick widgets";
        QTest::newRow("one choice") << "uicov run --toolkit q"
                                    << "quick";
        QTest::newRow("folders") << "uicov run --libdir "
                                 << "sub/";
        QTest::newRow("files") << "uicov report -m a"
                               << "a.uicov a.uirec";
        QTest::newRow("files behind the dashes") << "uicov report -- a"
                                                 << "a.uicov a.uirec";
        QTest::newRow("files of an option") << "uicov run -o a"
                                            << "a.uicov a.uirec";
        QTest::newRow("the word of an argument") << "uicov completion "
                                                 << "bash fish zsh";
        QTest::newRow("programs") << "uicov run ./"
                                  << "./a.uicov ./a.uirec ./sub/";
        QTest::newRow("files of the application") << "uicov run -- ./x a"
                                                  << "a.uicov a.uirec";
        QTest::newRow("the application's options are not ours") << "uicov run -- ./x --scr"
                                                                << "";
    }

private Q_SLOTS:
    void initTestCase() {
        for (const char* shell : {"bash", "zsh", "fish"}) {
            QVERIFY2(!QStandardPaths::findExecutable(QLatin1String(shell)).isEmpty(), shell);
        }
        QVERIFY(write(path("work/a.uirec"), "x") && write(path("work/a.uicov"), "x"));
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("work/sub")));
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("home")));
        QVERIFY(writeScript("bash", path("uicov.bash")));
        QVERIFY(writeScript("zsh", path("functions/_uicov")));
        QVERIFY(writeScript("fish", path("uicov.fish")));
    }

    void bash_data() { addQuestions(); }

    void bash() {
        QFETCH(QString, line);
        QFETCH(QString, offered);
        // bash itself puts the slash behind a folder, and only files that can be run are programs
        QStringList expected = offered.split(QLatin1Char(' '));
        expected.removeAll(QString());
        for (QString& word : expected) {
            word = word.endsWith(QLatin1Char('/')) ? word.chopped(1) : word;
        }
        QStringList answered = askBash(line);
        answered.removeDuplicates();
        QCOMPARE(answered.join(QLatin1Char(' ')), expected.join(QLatin1Char(' ')));
    }

    void bashTakesAnOptionWithItsValueApart() {
        QCOMPARE(askBash(QStringLiteral("uicov run --toolkit=q")),
                 QStringList{QStringLiteral("quick")});
        QCOMPARE(askBash(QStringLiteral("uicov run --toolkit=")).size(), 3);
        QCOMPARE(askBash(QStringLiteral("uicov --color=never doc")),
                 QStringList{QStringLiteral("doctor")});
    }

    void bashKnowsWhatToCall() {
        QCOMPARE(answers("bash",
                         {QStringLiteral("--norc"), QStringLiteral("-c"),
                          QStringLiteral("source \"$0\"; complete -p uicov"), path("uicov.bash")}),
                 QStringList{QStringLiteral("complete -F _uicov uicov")});
    }

    void fish_data() { addQuestions(); }

    void fish() {
        QFETCH(QString, line);
        QFETCH(QString, offered);
        QCOMPARE(askFish(line).join(QLatin1Char(' ')), offered);
    }

    void fishTakesAnOptionWithItsValueApart() {
        QCOMPARE(askFish(QStringLiteral("uicov run --toolkit=q")),
                 QStringList{QStringLiteral("--toolkit=quick")});
    }

    void zsh_data() {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("completed");
        QTest::newRow("verb") << QByteArray("uicov doc") << QByteArray("uicov doctor ");
        QTest::newRow("verb behind an option with value")
            << QByteArray("uicov --color never doc") << QByteArray("uicov --color never doctor ");
        QTest::newRow("long option")
            << QByteArray("uicov run --scr") << QByteArray("uicov run --screenshots ");
        QTest::newRow("choice") << QByteArray("uicov run --toolkit q")
                                << QByteArray("uicov run --toolkit quick ");
        QTest::newRow("choice behind the sign")
            << QByteArray("uicov run --toolkit=q") << QByteArray("uicov run --toolkit=quick ");
        QTest::newRow("folder") << QByteArray("uicov run --libdir s")
                                << QByteArray("uicov run --libdir sub/");
        QTest::newRow("file") << QByteArray("uicov report -m a.uir")
                              << QByteArray("uicov report -m a.uirec ");
        QTest::newRow("argument") << QByteArray("uicov completion b")
                                  << QByteArray("uicov completion bash ");
    }

    /** zsh completes only at its prompt, so it gets a terminal, and what it made is printed. */
    void zsh() {
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, completed);
        QVERIFY(
            write(path("home/.zshrc"),
                  "fpath=(" + QFile::encodeName(path("functions")) +
                      " $fpath)\n"
                      "autoload -Uz compinit; compinit -u -d " +
                      QFile::encodeName(path("home/dump")) +
                      "\n"
                      "PS1='READY '; unsetopt zle_bracketed_paste; zstyle ':completion:*' menu no\n"
                      "show() { print -r -- \"<$BUFFER>\"; BUFFER=exit; zle accept-line }\n"
                      "zle -N show; bindkey '^X' show\n"));
        qputenv("ZDOTDIR", QFile::encodeName(path("home")));
        qputenv("TERM", "xterm");
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(path("work")));
        TerminalRunner shell;
        const bool isStarted = shell.start(QStandardPaths::findExecutable(QStringLiteral("zsh")),
                                           {QStringLiteral("-i")}, 200);
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(isStarted);
        QVERIFY(shell.readUntil("READY"));
        shell.type(line + "\t\x18");
        shell.finish();
        QVERIFY2(shell.output().contains('<' + completed + '>'), shell.output().constData());
    }

    void otherShellsAreNotKnown() {
        CommandRunner runner(m_program);
        QCOMPARE(runner.run({QStringLiteral("completion"), QStringLiteral("ksh")}), 1);
        QVERIFY(runner.errors().endsWith(QStringLiteral("[wrong-use]\n")));
        QCOMPARE(runner.run({QStringLiteral("completion")}), 1);
        QVERIFY(runner.errors().contains(QStringLiteral("one shell")));
        QCOMPARE(runner.run({QStringLiteral("completion"), QStringLiteral("bash"),
                             QStringLiteral("--"), QStringLiteral("zsh")}),
                 1);
    }
};

QTEST_GUILESS_MAIN(TestCompletion)
#include "tst_completion.moc"
