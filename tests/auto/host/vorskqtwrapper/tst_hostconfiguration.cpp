// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskqtwrapper/hostconfiguration.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace VorskHost;

namespace {

using Values = std::vector<std::string>;

} // namespace

class tst_HostConfiguration : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyKey();
    void onlyWhatIsNeeded();
    void optionValues_data();
    void optionValues();
    void severalExtensions();
    void relativePaths();
    void writtenBySettings_data();
    void writtenBySettings();
    void contextAndLabelsSurviveEveryCharacter_data();
    void contextAndLabelsSurviveEveryCharacter();
    void theMarkIsReadAnew();
    void theExtensionOfAFolder_data();
    void theExtensionOfAFolder();
    void anExtensionThatThereIsNot();
    void faults_data();
    void faults();
    void fileThatIsNotThere();
    void folderInPlaceOfAFile();
    void fileThatCannotBeRead();

private:
    HostConfiguration readText(const QByteArray& text) {
        QFile file(m_file);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            qFatal("cannot write %s", qPrintable(m_file));
        }
        file.close();
        return HostConfiguration::read(m_file);
    }

    QScopedPointer<QTemporaryDir> m_dir;
    QString m_file;
};

void tst_HostConfiguration::init() {
    TestCase::init();
    m_dir.reset(new QTemporaryDir);
    m_file = m_dir->filePath(QStringLiteral("host.ini"));
}

void tst_HostConfiguration::cleanup() {
    qunsetenv("VORSK_RECORDING_DIR");
    qunsetenv("VORSK_RECORDING_EXTENSION");
    m_dir.reset();
    TestCase::cleanup();
}

void tst_HostConfiguration::everyKey() {
    const HostConfiguration configuration = readText("[host]\n"
                                                     "extension=/lib/libx.so\n"
                                                     "recording=/data/a b.uirec\n"
                                                     "session=1234-5678\n"
                                                     "[options]\n"
                                                     "enabled=1\n"
                                                     "qtwidgets=1\n"
                                                     "qtquick=0\n"
                                                     "takeScreenshotsOfElements=1\n");
    QCOMPARE(configuration.errorString(), QString());
    QVERIFY(configuration.isValid());
    QCOMPARE(configuration.extensions(), QStringList(QStringLiteral("/lib/libx.so")));
    QCOMPARE(configuration.recording(), QStringLiteral("/data/a b.uirec"));
    QCOMPARE(configuration.session(), QStringLiteral("1234-5678"));
    const HostConfiguration::Options expected{{"enabled", {"1"}},
                                              {"qtwidgets", {"1"}},
                                              {"qtquick", {"0"}},
                                              {"takeScreenshotsOfElements", {"1"}}};
    QVERIFY(configuration.options() == expected);
}

void tst_HostConfiguration::onlyWhatIsNeeded() {
    const HostConfiguration configuration = readText("[host]\nextension=/x.so\nrecording=/r\n");
    QVERIFY(configuration.isValid());
    QVERIFY(configuration.session().isNull());
    QVERIFY(configuration.options().empty());
}

void tst_HostConfiguration::optionValues_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QStringList>("values");
    QTest::newRow("one") << QByteArray("enabled=1") << QStringList(QStringLiteral("1"));
    QTest::newRow("two") << QByteArray("enabled=1, 1")
                         << QStringList{QStringLiteral("1"), QStringLiteral("1")};
    QTest::newRow("three") << QByteArray("enabled=1,0,x")
                           << QStringList{QStringLiteral("1"), QStringLiteral("0"),
                                          QStringLiteral("x")};
    QTest::newRow("none") << QByteArray("enabled=") << QStringList();
    QTest::newRow("with a comma") << QByteArray("enabled=\"1, 1\"")
                                  << QStringList(QStringLiteral("1, 1"));
    QTest::newRow("kept as written")
        << QByteArray("enabled=01") << QStringList(QStringLiteral("01"));
    QTest::newRow("spaces") << QByteArray("enabled=\" 1\"") << QStringList(QStringLiteral(" 1"));
    QTest::newRow("patterns") << QByteArray("redact=account*, \"a, b\"")
                              << QStringList{QStringLiteral("account*"), QStringLiteral("a, b")};
}

void tst_HostConfiguration::optionValues() {
    QFETCH(QByteArray, line);
    QFETCH(QStringList, values);
    const HostConfiguration configuration =
        readText("[host]\nextension=/x.so\nrecording=/r\n[options]\n" + line + '\n');
    QCOMPARE(configuration.errorString(), QString());
    QStringList actual;
    const std::string key = line.left(line.indexOf('=')).toStdString();
    for (const std::string& value : configuration.options().at(key)) {
        actual.append(QString::fromStdString(value));
    }
    QCOMPARE(actual, values);
}

void tst_HostConfiguration::severalExtensions() {
    const HostConfiguration configuration =
        readText("[host]\nextension=/a.so, \"/b, c.so\"\nrecording=/r\n");
    QCOMPARE(configuration.extensions(),
             (QStringList{QStringLiteral("/a.so"), QStringLiteral("/b, c.so")}));
}

void tst_HostConfiguration::relativePaths() {
    const HostConfiguration configuration =
        readText("[host]\nextension=x.so\nrecording=sub/r.uirec\n");
    QCOMPARE(configuration.extensions(),
             QStringList(QDir::currentPath() + QStringLiteral("/x.so")));
    QCOMPARE(configuration.recording(), QDir::currentPath() + QStringLiteral("/sub/r.uirec"));
}

void tst_HostConfiguration::writtenBySettings_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << QStringLiteral("/a/b.uirec");
    QTest::newRow("spaces") << QStringLiteral("/a b/ c .uirec");
    QTest::newRow("comma") << QStringLiteral("/a, b/c,d.uirec");
    QTest::newRow("semicolon, equals, hash") << QStringLiteral("/a;b=c#d.uirec");
    QTest::newRow("backslash and quotes") << QStringLiteral("/a\\b\"c'd.uirec");
    QTest::newRow("percent and at") << QStringLiteral("/@a%20b/@Invalid().uirec");
    QTest::newRow("other scripts") << QStringLiteral("/\u4e2d\u00e9\U0001F600.uirec");
}

/** What uicov writes with QSettings has to arrive, in either of its two encodings. */
void tst_HostConfiguration::writtenBySettings() {
    QFETCH(QString, path);
    for (const char* codec : {"", "UTF-8"}) {
        QFile::remove(m_file);
        {
            QSettings settings(m_file, QSettings::IniFormat);
            if (*codec != '\0') {
                settings.setIniCodec(codec);
            }
            settings.setValue(QStringLiteral("host/extension"), path);
            settings.setValue(QStringLiteral("host/recording"), path);
            settings.setValue(QStringLiteral("host/session"), path);
        }
        const HostConfiguration configuration = HostConfiguration::read(m_file);
        QCOMPARE(configuration.errorString(), QString());
        QCOMPARE(configuration.recording(), path);
        QCOMPARE(configuration.extensions(), QStringList(path));
        QCOMPARE(configuration.session(), path);
    }
}

void tst_HostConfiguration::contextAndLabelsSurviveEveryCharacter_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("comma") << QStringLiteral("a, b,c");
    QTest::newRow("quotation marks") << QStringLiteral("\"a\" 'b'");
    QTest::newRow("equals") << QStringLiteral("a=b==");
    QTest::newRow("semicolon") << QStringLiteral("a;b # c");
    QTest::newRow("backslash") << QStringLiteral("C:\\new\\x41");
    QTest::newRow("at") << QStringLiteral("@Invalid() @@");
    QTest::newRow("other scripts") << QStringLiteral("\u00fc\u05d0\u4e2d\U0001F600abc");
    QTest::newRow("spaces at the ends") << QStringLiteral("  a ");
    QTest::newRow("lines") << QStringLiteral("a\nb\tc\r");
    QTest::newRow("section") << QStringLiteral("[options]");
    QTest::newRow("percent") << QStringLiteral("%41/%2F\\/");
}

void tst_HostConfiguration::contextAndLabelsSurviveEveryCharacter() {
    QFETCH(QString, text);
    const QStringList oneAndTwo[] = {{QStringLiteral("a=") + text},
                                     {QStringLiteral("a=") + text, QStringLiteral("b=") + text}};
    for (const QStringList& labels : oneAndTwo) {
        QFile::remove(m_file);
        QSettings settings(m_file, QSettings::IniFormat);
        settings.setValue(QStringLiteral("host/extension"), QStringLiteral("/x.so"));
        settings.setValue(QStringLiteral("host/recording"), QStringLiteral("/r"));
        settings.setValue(QStringLiteral("host/context"), text);
        settings.setValue(QStringLiteral("host/mark"), text);
        settings.setValue(QStringLiteral("host/labels"), labels);
        settings.sync();
        const HostConfiguration configuration = HostConfiguration::read(m_file);
        QCOMPARE(configuration.errorString(), QString());
        QCOMPARE(configuration.context(), text);
        QCOMPARE(configuration.currentMark(), text);
        QCOMPARE(configuration.labels().size(), labels.size());
        QCOMPARE(configuration.labels().first(), qMakePair(QStringLiteral("a"), text));
        QCOMPARE(configuration.labels().last().second, text);
    }
}

/** It changes while the run goes; all else is as it was when the process started. */
void tst_HostConfiguration::theMarkIsReadAnew() {
    const QByteArray start = "[host]\nextension=/x.so\nrecording=/r\ncontext=nightly\n";
    const HostConfiguration configuration = readText(start);
    QVERIFY(configuration.isValid());
    QVERIFY(configuration.currentMark().isEmpty());
    readText(start + "mark=first\n");
    QCOMPARE(configuration.currentMark(), QStringLiteral("first"));
    readText(start + "mark=the second\n");
    QCOMPARE(configuration.currentMark(), QStringLiteral("the second"));
    readText(start + "mark=\n");
    QVERIFY(configuration.currentMark().isEmpty());
    QVERIFY(QFile::remove(m_file)); // as when the run has ended in this moment
    QVERIFY(configuration.currentMark().isEmpty());
    QCOMPARE(configuration.context(), QStringLiteral("nightly"));
}

void tst_HostConfiguration::theExtensionOfAFolder_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("extension");
    QTest::newRow("not set") << QByteArray() << QStringLiteral("/lib/libqtuicontrols.so");
    QTest::newRow("empty") << QByteArray("") << QStringLiteral("/lib/libqtuicontrols.so");
    QTest::newRow("controls") << QByteArray("controls")
                              << QStringLiteral("/lib/libqtuicontrols.so");
    QTest::newRow("classic") << QByteArray("classic") << QStringLiteral("/lib/libqtuicoverage.so");
}

void tst_HostConfiguration::theExtensionOfAFolder() {
    QFETCH(QByteArray, value);
    QFETCH(QString, extension);
    qputenv("VORSK_RECORDING_DIR", QFile::encodeName(m_dir->path()));
    if (!value.isNull()) {
        qputenv("VORSK_RECORDING_EXTENSION", value);
    }
    const auto configuration = HostConfiguration::fromEnvironment(QStringLiteral("/lib"));
    QVERIFY(configuration);
    QCOMPARE(configuration->errorString(), QString());
    QCOMPARE(configuration->extensions(), QStringList(extension));
}

void tst_HostConfiguration::anExtensionThatThereIsNot() {
    qputenv("VORSK_RECORDING_DIR", QFile::encodeName(m_dir->path()));
    qputenv("VORSK_RECORDING_EXTENSION", "Classic");
    const auto configuration = HostConfiguration::fromEnvironment(QStringLiteral("/lib"));
    QVERIFY(configuration);
    QCOMPARE(configuration->errorString(),
             QStringLiteral("options-malformed: VORSK_RECORDING_EXTENSION is \"Classic\"; nothing "
                            "is recorded, give controls or classic"));
}

void tst_HostConfiguration::faults_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const QByteArray sound = "[host]\nextension=/x.so\nrecording=/r\n";
    QTest::newRow("empty") << QByteArray()
                           << QStringLiteral("options-incomplete: the options file %1 has no value "
                                             "for \"extension\" in [host]; nothing is recorded, "
                                             "add one");
    QTest::newRow("no recording")
        << QByteArray("[host]\nextension=/x.so\nrecording=\n")
        << QStringLiteral("options-incomplete: the options file %1 has no value for \"recording\" "
                          "in [host]; nothing is recorded, add one");
    const QString cure =
        QStringLiteral("; nothing is recorded, set VORSK_OPTIONS_FILE to a sound options file");
    QTest::newRow("not an INI file")
        << QByteArray("this is prose\nand more of it\n")
        << QStringLiteral("options-malformed: the options file %1 is not an INI file") + cure;
    QTest::newRow("unknown section")
        << sound + "[opitons]\nenabled=1\n"
        << QStringLiteral("options-unknown: the options file %1: there is no section [opitons]; "
                          "known sections are [host] and [options]") +
               cure;
    QTest::newRow("no section")
        << QByteArray("enabled=1\n") + sound
        << QStringLiteral("options-unknown: the options file %1: a key stands outside any "
                          "section; known sections are [host] and [options]") +
               cure;
    QTest::newRow("unknown key in [host]")
        << sound + "extention=/y.so\n"
        << QStringLiteral(
               "options-unknown: the options file %1: [host] has no key "
               "\"extention\"; it can have extension, recording, session, context, mark, labels") +
               cure;
    QTest::newRow("unknown key in [options]")
        << sound + "[options]\nQtQuik=1\n"
        << QStringLiteral(
               "options-unknown: the options file %1: [options] has no key \"QtQuik\"; "
               "it can have enabled, qtwidgets, qtquick, takeScreenshotsOfElements, redact") +
               cure;
    QTest::newRow("key of the other section")
        << sound + "[options]\nrecording=1\n"
        << QStringLiteral("options-unknown: the options file %1: [options] has no key "
                          "\"recording\"; it can have enabled, qtwidgets, qtquick, "
                          "takeScreenshotsOfElements, redact") +
               cure;
    QTest::newRow("nested key")
        << sound + "session/id=1\n"
        << QStringLiteral("options-unknown: the options file %1: [host] has no key "
                          "\"session/id\"; it can have extension, recording, session, context, "
                          "mark, labels") +
               cure;
    QTest::newRow("two recordings")
        << QByteArray("[host]\nextension=/x.so\nrecording=/a,b\n")
        << QStringLiteral("options-malformed: the options file %1 has several values for "
                          "\"recording\"; a text with a comma needs quotation marks") +
               cure;
}

void tst_HostConfiguration::faults() {
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    const HostConfiguration configuration = readText(text);
    QVERIFY(!configuration.isValid());
    QCOMPARE(configuration.errorString(), error.arg(m_file));
}

void tst_HostConfiguration::fileThatIsNotThere() {
    const HostConfiguration configuration = HostConfiguration::read(m_file);
    QVERIFY(!configuration.isValid());
    QCOMPARE(configuration.errorString(),
             QStringLiteral("options-unreadable: there is no options file %1; nothing is "
                            "recorded, set VORSK_OPTIONS_FILE to a sound options file")
                 .arg(m_file));
}

void tst_HostConfiguration::folderInPlaceOfAFile() {
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("host.ini")));
    const HostConfiguration configuration = HostConfiguration::read(m_file);
    QVERIFY(configuration.errorString().startsWith(
        QStringLiteral("options-unreadable: the options file %1 cannot be read;").arg(m_file)));
}

void tst_HostConfiguration::fileThatCannotBeRead() {
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(chmod(QFile::encodeName(m_dir->path()).constData(), 0755), 0);
    QVERIFY(file.setPermissions(QFile::WriteOwner));
    // Nothing is unreadable for root.
    constexpr uid_t nobody = 65534;
    const bool isRoot = geteuid() == 0;
    QVERIFY(!isRoot || setresuid(nobody, nobody, 0) == 0);
    const QString error = HostConfiguration::read(m_file).errorString();
    QVERIFY(!isRoot || setresuid(0, 0, 0) == 0);
    QVERIFY2(
        error.startsWith(
            QStringLiteral("options-unreadable: the options file %1 cannot be read;").arg(m_file)),
        qPrintable(error));
}

QTEST_GUILESS_MAIN(tst_HostConfiguration)
#include "tst_hostconfiguration.moc"
