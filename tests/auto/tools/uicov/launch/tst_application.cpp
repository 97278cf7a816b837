// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/application.h"
#include "testlib/cprogram.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using TestLib::buildC;
using TestLib::writeScript;
using Uicov::Base::Message;
using Uicov::Launch::Application;

namespace {

const QString emptyMain = QStringLiteral("int main(void) { return 0; }");

} // namespace

class TestApplication : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_extension = path("extension.so");

    QString path(const char* name) { return m_folder.filePath(QLatin1String(name)); }

    /** A library of Qt's name, and a program that needs it. */
    bool buildAgainst(const char* library, const char* program) {
        const QString name = QLatin1String(library);
        return buildC(QStringLiteral("int x;"), path(library),
                      {QStringLiteral("-shared"), QStringLiteral("-fPIC"),
                       QStringLiteral("-Wl,-soname,") + name}) &&
               buildC(emptyMain, path(program),
                      {QStringLiteral("-Wl,--no-as-needed"), path(library),
                       QStringLiteral("-Wl,-rpath,") + m_folder.path()});
    }

    bool buildWithQt(const char* program, const char* library) {
        return TestLib::buildWithQt(path(program), {QLatin1String(library)});
    }

    void compareProblem(const QString& command, Message message, int exitCode,
                        const QStringList& parts) {
        Application application(command);
        const auto problem = application.check(m_extension);
        QVERIFY(problem);
        QCOMPARE(Uicov::Base::messageName(problem->message), Uicov::Base::messageName(message));
        QCOMPARE(application.exitCode(), exitCode);
        for (const QString& part : parts) {
            QVERIFY2(problem->text.contains(part), qPrintable(problem->text));
        }
        QVERIFY(!problem->text.contains(QLatin1Char('\n')));
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(buildC(QStringLiteral("void init_extension(void) {}"), m_extension,
                       {QStringLiteral("-shared"), QStringLiteral("-fPIC")}));
    }

    void whatIsNotThere() {
        compareProblem(path("none"), Message::ApplicationMissing, 127,
                       {QStringLiteral("check the path")});
        compareProblem(QStringLiteral("uicov-no-such-program"), Message::ApplicationMissing, 127,
                       {QStringLiteral("PATH"), QStringLiteral("./uicov-no-such-program")});
        compareProblem(QString(), Message::ApplicationMissing, 127, {});
    }

    void whatCannotBeRun() {
        compareProblem(m_folder.path(), Message::ApplicationNotExecutable, 126,
                       {QStringLiteral("is a folder")});
        QFile file(path("data"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
        file.close();
        compareProblem(path("data"), Message::ApplicationNotExecutable, 126,
                       {QStringLiteral("chmod +x")});
    }

    void aNameIsLookedUpAsShellsDo() {
        const QByteArray before = qgetenv("PATH");
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("first")));
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("second")));
        QVERIFY(writeScript(path("second/tool"), QStringLiteral("#!/bin/sh\n")));
        qputenv("PATH", QFile::encodeName(path("first") + QLatin1Char(':') + path("second")));
        const Application application(QStringLiteral("tool"));
        // a file of that name that cannot be run does not stand in the way of one that can
        QFile file(path("first/tool"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        const Application hidden(QStringLiteral("tool"));
        QVERIFY(QFile::remove(path("second/tool")));
        Application unusable(QStringLiteral("tool"));
        const auto problem = unusable.check(m_extension);
        qputenv("PATH", before);
        QCOMPARE(application.path(), path("second/tool"));
        QCOMPARE(hidden.path(), path("second/tool"));
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::ApplicationNotExecutable);
    }

    void anotherMachineIsNamedWithOurs() {
        QVERIFY(buildC(emptyMain, path("foreign")));
        QFile file(path("foreign"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        constexpr qint64 machineOffset = 18;
        QVERIFY(file.seek(machineOffset));
        QVERIFY(file.write("\xf3\0", 2) == 2);
        file.close();
        compareProblem(path("foreign"), Message::WrongArchitecture, 1,
                       {QStringLiteral("RISC-V, %1 bit").arg(QSysInfo::WordSize),
                        QStringLiteral("but the extension for ")});
    }

    void aStaticExecutableIsRefused() {
        QVERIFY(buildC(emptyMain, path("static"), {QStringLiteral("-static")}));
        compareProblem(path("static"), Message::StaticExecutable, 1, {});
    }

    void anotherMajorVersionOfQtIsNamedWithOurs() {
        QVERIFY(buildAgainst("libQt6Core.so.6", "six"));
        compareProblem(path("six"), Message::WrongQtVersion, 1,
                       {QStringLiteral("uses Qt 6"), QString::fromLatin1(qVersion())});
        QVERIFY(buildAgainst("libQtCore.so.4", "four"));
        compareProblem(path("four"), Message::WrongQtVersion, 1, {QStringLiteral("uses Qt 4")});
    }

    void theExactVersionIsTakenFromTheFile() {
        QVERIFY(buildAgainst("libQt6Core.so.6", "exact"));
        QVERIFY(QFile::rename(path("libQt6Core.so.6"), path("libQt6Core.so.6.4.2")));
        QVERIFY(QFile::link(path("libQt6Core.so.6.4.2"), path("libQt6Core.so.6")));
        compareProblem(path("exact"), Message::WrongQtVersion, 1,
                       {QStringLiteral("uses Qt 6.4.2,")});
    }

    void aStaticQtIsRefused() {
        QVERIFY(
            buildC(QStringLiteral("#include <stdio.h>\n"
                                  "int main(void) { puts(\"Qt 5.12.3 (arm-little_endian-ilp32-eabi-"
                                  "hardfloat static release build; by GCC 9)\"); }"),
                   path("staticqt")));
        compareProblem(path("staticqt"), Message::StaticQt, 1, {QStringLiteral("(Qt 5.12.3 (arm")});
    }

    void rightsOfOthersAreACauseOfSilence() {
        QVERIFY(buildWithQt("privileged", "libQt5Gui.so.5"));
        const QByteArray file = QFile::encodeName(path("privileged"));
        Application application(path("privileged"));
        QVERIFY(!application.check(m_extension));
        QCOMPARE(application.privilege(), Application::Privilege::None);
        QCOMPARE(chmod(file.constData(), 04755), 0);
        QCOMPARE(application.privilege(), Application::Privilege::SameUser);
        QVERIFY(!application.causeOfSilence(0).contains(QStringLiteral("setuid")));
        constexpr uid_t nobody = 65534;
        if (chown(file.constData(), nobody, nobody) != 0) {
            QSKIP("only root can give a file away");
        }
        QCOMPARE(chmod(file.constData(), 04755), 0); // giving it away took the mode off
        QCOMPARE(application.privilege(), Application::Privilege::Other);
        QVERIFY(application.causeOfSilence(0).contains(QStringLiteral("setuid")));
    }

    void theRestMayStartAndSaysLaterWhyItWasSilent_data() {
        QTest::addColumn<QString>("program");
        QTest::addColumn<int>("signal");
        QTest::addColumn<QString>("cause");
        QVERIFY(writeScript(path("script"), QStringLiteral("#!/bin/sh\n")));
        QVERIFY(buildC(emptyMain, path("plain")));
        QVERIFY(buildWithQt("core", "libQt5Core.so.5"));
        QVERIFY(buildWithQt("gui", "libQt5Gui.so.5"));
        QTest::newRow("script") << path("script") << 0 << "it is a script";
        QTest::newRow("no Qt") << path("plain") << 0 << "it does not use Qt 5;";
        QTest::newRow("no GUI") << path("core") << 0 << "only libQt5Core";
        QTest::newRow("killed") << path("gui") << 11 << "ended by signal 11 (Segmentation fault)";
        QTest::newRow("GUI") << path("gui") << 0 << "QT_PLUGIN_PATH";
    }

    void theRestMayStartAndSaysLaterWhyItWasSilent() {
        QFETCH(QString, program);
        QFETCH(int, signal);
        QFETCH(QString, cause);
        Application application(program);
        const auto problem = application.check(m_extension);
        QVERIFY2(!problem, problem ? qPrintable(problem->text) : "");
        QVERIFY2(application.causeOfSilence(signal).contains(cause),
                 qPrintable(application.causeOfSilence(signal)));
    }
};

QTEST_GUILESS_MAIN(TestApplication)
#include "tst_application.moc"
