// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/revision.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using Uicov::Launch::Revision;

class TestRevision : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_before;
    QByteArray m_path;

    /** What git prints, run in that folder below the test's own. */
    QString git(const QString& folder, const QStringList& arguments) {
        QProcess process;
        process.setWorkingDirectory(m_folder.filePath(folder));
        process.start(QStringLiteral("git"), arguments);
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }

    void commit(const QString& text) {
        QFile file(m_folder.filePath(QStringLiteral("work/file")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        file.close();
        git(QStringLiteral("work"), {QStringLiteral("add"), QStringLiteral("file")});
        git(QStringLiteral("work"), {QStringLiteral("commit"), QStringLiteral("-m"), text});
    }

    QString hashOf(const char* name) {
        return git(QStringLiteral("work"), {QStringLiteral("rev-parse"), QLatin1String(name)});
    }

    void enter(const char* folder) {
        QVERIFY(QDir::setCurrent(m_folder.filePath(QLatin1String(folder))));
    }

private Q_SLOTS:
    /** Three commits, of which the last merges a side branch; a shallow clone; an empty folder. */
    void initTestCase() {
        if (QStandardPaths::findExecutable(QStringLiteral("git")).isEmpty()) {
            QSKIP("git is not installed");
        }
        m_before = QDir::currentPath();
        m_path = qgetenv("PATH");
        for (const char* name : {"GIT_AUTHOR_NAME", "GIT_COMMITTER_NAME"}) {
            qputenv(name, "Somebody");
        }
        for (const char* name : {"GIT_AUTHOR_EMAIL", "GIT_COMMITTER_EMAIL"}) {
            qputenv(name, "somebody@example.org");
        }
        qputenv("GIT_CEILING_DIRECTORIES", QFile::encodeName(m_folder.path()));
        qputenv("GIT_CONFIG_GLOBAL", "/dev/null");
        for (const char* name : {"work", "empty"}) {
            QVERIFY(QDir(m_folder.path()).mkdir(QLatin1String(name)));
        }
        git(QStringLiteral("work"), {QStringLiteral("init"), QStringLiteral("-q")});
        commit(QStringLiteral("first"));
        git(QStringLiteral("work"), {QStringLiteral("checkout"), QStringLiteral("-q"),
                                     QStringLiteral("-b"), QStringLiteral("side")});
        commit(QStringLiteral("second"));
        git(QStringLiteral("work"),
            {QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-")});
        git(QStringLiteral("work"),
            {QStringLiteral("merge"), QStringLiteral("-q"), QStringLiteral("--no-ff"),
             QStringLiteral("-m"), QStringLiteral("merged"), QStringLiteral("side")});
        git(QString(), {QStringLiteral("clone"), QStringLiteral("-q"), QStringLiteral("--depth"),
                        QStringLiteral("1"),
                        QStringLiteral("file://") + m_folder.filePath(QStringLiteral("work")),
                        QStringLiteral("shallow")});
        QCOMPARE(hashOf("HEAD").size(), 40);
        QCOMPARE(
            git(QStringLiteral("shallow"), {QStringLiteral("rev-parse"), QStringLiteral("HEAD")}),
            hashOf("HEAD"));
    }

    void init() {
        for (const char* name : {"GITHUB_SHA", "CI_COMMIT_SHA", "GIT_COMMIT"}) {
            qunsetenv(name);
        }
    }

    void cleanup() {
        qputenv("PATH", m_path);
        QVERIFY(QDir::setCurrent(m_before));
    }

    void theCommitAndItsParentsAreKnown() {
        enter("work");
        const Revision revision = Revision::ofWorkingFolder();
        QCOMPARE(revision.commit, hashOf("HEAD"));
        QCOMPARE(revision.parents, (QStringList{hashOf("HEAD^1"), hashOf("HEAD^2")}));
        QVERIFY(!revision.isChanged);
        QCOMPARE(revision.toLabels(),
                 (QStringList{QStringLiteral("vcs.commit=") + hashOf("HEAD"),
                              QStringLiteral("vcs.parents=") + hashOf("HEAD^1") + QLatin1Char(' ') +
                                  hashOf("HEAD^2")}));
        QCOMPARE(Revision::firstParents(hashOf("HEAD"), 9),
                 (QStringList{hashOf("HEAD"), hashOf("HEAD^1")}));
        QCOMPARE(Revision::firstParents(hashOf("HEAD"), 1), QStringList{hashOf("HEAD")});
    }

    void aShallowCloneTellsTheParentsAllTheSame() {
        enter("shallow");
        const Revision revision = Revision::ofWorkingFolder();
        QCOMPARE(revision.commit, hashOf("HEAD"));
        QCOMPARE(revision.parents, (QStringList{hashOf("HEAD^1"), hashOf("HEAD^2")}));
        QCOMPARE(Revision::firstParents(revision.commit, 9), QStringList{hashOf("HEAD")});
    }

    void changesThatAreNotCommittedAreTold() {
        enter("work");
        QFile file(QStringLiteral("file"));
        QVERIFY(file.open(QIODevice::Append));
        file.write("more");
        file.close();
        QVERIFY(Revision::ofWorkingFolder().isChanged);
        QVERIFY(Revision::ofWorkingFolder().toLabels().contains(QStringLiteral("vcs.changed=yes")));
        git(QStringLiteral("work"),
            {QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("file")});
        QFile other(QStringLiteral("untracked"));
        QVERIFY(other.open(QIODevice::WriteOnly));
        QVERIFY(!Revision::ofWorkingFolder().isChanged);
    }

    void outsideOfARepositoryTheServiceIsAsked() {
        enter("empty");
        QVERIFY(Revision::ofWorkingFolder().toLabels().isEmpty());
        qputenv("CI_COMMIT_SHA", "0123456789ABCDEF0123456789abcdef01234567\n");
        const Revision revision = Revision::ofWorkingFolder();
        QCOMPARE(revision.commit, QStringLiteral("0123456789abcdef0123456789abcdef01234567"));
        QVERIFY(revision.parents.isEmpty());
        qputenv("CI_COMMIT_SHA", "--all");
        QVERIFY(Revision::ofWorkingFolder().commit.isEmpty());
    }

    void withoutGitTheServiceIsAskedToo() {
        enter("work");
        qputenv("PATH", QFile::encodeName(m_folder.filePath(QStringLiteral("empty"))));
        QVERIFY(Revision::ofWorkingFolder().commit.isEmpty());
        qputenv("GITHUB_SHA", "0123456789abcdef0123456789abcdef01234567");
        QCOMPARE(Revision::ofWorkingFolder().commit.left(4), QStringLiteral("0123"));
        QVERIFY(Revision::firstParents(QStringLiteral("0123456789"), 5).isEmpty());
    }

    void whatIsNoHashIsNeverAnArgument() {
        enter("work");
        QVERIFY(Revision::firstParents(QStringLiteral("--all"), 5).isEmpty());
        QVERIFY(Revision::firstParents(QString(), 5).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestRevision)
#include "tst_revision.moc"
