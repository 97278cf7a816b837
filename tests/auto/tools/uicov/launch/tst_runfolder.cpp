// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/runfolder.h"
#include "launch/unfinishedruns.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using Uicov::Base::Message;
using Uicov::Launch::RunFolder;

class TestRunFolder : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_dataFile;
    const QString m_session = QStringLiteral("0a1b2c3d-0000-4000-8000-000000000001");

    std::optional<Uicov::Base::Problem> announce(RunFolder& run) const {
        return run.announce({run.path(), m_session, run.path() + QStringLiteral("/a.uirec"),
                             QStringLiteral("/options.ini")});
    }

    static void put(const QString& path) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_dataFile = m_folder->filePath(QStringLiteral(".uicov"));
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void aRunThatGoesIsFound() {
        RunFolder run;
        QVERIFY(!run.create(m_dataFile, m_session));
        QCOMPARE(QFileInfo(run.path()).fileName(), QStringLiteral(".uicov.run-0a1b2c3d"));
        QVERIFY(!RunFolder::running(run.path())); // not announced yet
        QVERIFY(!announce(run));
        const auto info = RunFolder::running(run.path());
        QVERIFY(info);
        QCOMPARE(info->session, m_session);
        QCOMPARE(info->recording, run.path() + QStringLiteral("/a.uirec"));
        QCOMPARE(info->optionsFile, QStringLiteral("/options.ini"));
        QCOMPARE(RunFolder::foldersOf(m_dataFile, true), QStringList{run.path()});
        QCOMPARE(RunFolder::foldersOf(m_dataFile, false), QStringList());
        QCOMPARE(RunFolder::foldersOf(m_folder->filePath(QStringLiteral("other")), true),
                 QStringList());
    }

    void onlyItsOwnerCanLookInside() {
        RunFolder run;
        QVERIFY(!run.create(m_dataFile, m_session));
        QVERIFY(!(QFileInfo(run.path()).permissions() &
                  (QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther)));
    }

    void theFolderGoesWithTheRun() {
        {
            RunFolder run;
            QVERIFY(!run.create(m_dataFile, m_session));
            QVERIFY(!announce(run));
            put(run.path() + QStringLiteral("/a.uirec"));
        }
        QVERIFY(QDir(m_folder->path()).isEmpty());
    }

    void aKeptFolderHoldsNothingButRecordings() {
        QString path;
        {
            RunFolder run;
            QVERIFY(!run.create(m_dataFile, m_session));
            QVERIFY(!announce(run));
            path = run.path();
            put(path + QStringLiteral("/a.uirec"));
            run.keep();
        }
        QCOMPARE(QDir(path).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("a.uirec")});
        QVERIFY(!RunFolder::running(path));
        QCOMPARE(RunFolder::foldersOf(m_dataFile, false), QStringList{path});
    }

    void aKeptFolderWithNothingInItGoes() {
        {
            RunFolder run;
            QVERIFY(!run.create(m_dataFile, m_session));
            run.keep();
        }
        QVERIFY(QDir(m_folder->path()).isEmpty());
    }

    void aRunThatWasKilledDoesNotGo() {
        const QString path = m_dataFile + QStringLiteral(".run-1");
        QVERIFY(QDir().mkdir(path));
        put(path + QStringLiteral("/lock"));
        QFile info(path + QStringLiteral("/run.json"));
        QVERIFY(info.open(QIODevice::WriteOnly));
        info.write("{\"session\":\"s\",\"recording\":\"r\",\"options\":\"o\"}");
        info.close();
        QVERIFY(!RunFolder::running(path));
        QCOMPARE(RunFolder::foldersOf(m_dataFile, false), QStringList{path});
    }

    void aRunThatWasKilledIsOfferedIfItRecorded() {
        const QString recorded = m_dataFile + QStringLiteral(".run-1");
        const QString empty = m_dataFile + QStringLiteral(".run-2");
        const QString starting = m_dataFile + QStringLiteral(".run-3");
        for (const QString& path : {recorded, empty, starting}) {
            QVERIFY(QDir().mkdir(path));
            put(path + QStringLiteral("/lock"));
            put(path + QStringLiteral("/run.json"));
        }
        put(recorded + QStringLiteral("/a.uirec"));
        const timespec longAgo[2] = {{1000, 0}, {1000, 0}};
        QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(empty).constData(), longAgo, 0), 0);
        RunFolder run;
        QVERIFY(!run.create(m_dataFile, m_session)); // goes, and so is nobody else's business
        QCOMPARE(Uicov::Launch::unfinishedRuns(m_dataFile), QStringList{recorded});
        QVERIFY(!QFile::exists(empty));
        QVERIFY(QFile::exists(starting) && QFile::exists(run.path()));
        QCOMPARE(Uicov::Launch::adviceForUnfinished(QStringLiteral("my file"), recorded),
                 QStringLiteral("uicov combine -a -o 'my file' ") + recorded +
                     QStringLiteral(", then remove the folder"));
    }

    void aRunOfAnotherUserIsNotFound() {
        if (::geteuid() != 0) {
            QSKIP("only root can give a folder away");
        }
        RunFolder run;
        QVERIFY(!run.create(m_dataFile, m_session));
        QVERIFY(!announce(run));
        QVERIFY(RunFolder::running(run.path()));
        constexpr uid_t somebody = 65534;
        QCOMPARE(::chown(QFile::encodeName(run.path()).constData(), somebody, somebody), 0);
        QVERIFY(!RunFolder::running(run.path()));
    }

    void aFolderThatCannotBeMadeIsAProblem() {
        RunFolder run;
        const auto problem =
            run.create(m_folder->filePath(QStringLiteral("none/.uicov")), m_session);
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::OutputNotWritable);
    }

    void aLinkIsNotFollowed() {
        QVERIFY(QFile::link(m_folder->path(), m_dataFile + QStringLiteral(".run-0a1b2c3d")));
        RunFolder run;
        QVERIFY(run.create(m_dataFile, m_session));
        QCOMPARE(RunFolder::foldersOf(m_dataFile, false), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestRunFolder)
#include "tst_runfolder.moc"
