// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandrunner.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using TestLib::RecordingBuilder;

namespace {

constexpr int megabyte = 1024 * 1024;

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

/** What is tried, by its name; null when there is none of that name. */
QString hostile(const QString& name) {
    if (name == text("terminal")) {
        return text("\x1b]0;title\x07\x1b[2J\x9b") + text("31m");
    }
    if (name == text("control")) {
        QString all(text("a"));
        for (ushort code = 1; code < 0x20; ++code) {
            all += QChar(code);
        }
        return all + QChar(0x7f) + QChar(0x85) + QChar(0x2028) + QChar(0x202e) + QChar(0xfeff) +
               QChar(0) + text("b");
    }
    if (name == text("markup")) {
        return text("</script><script>alert(1)</script><img src=x onerror=alert(1)>&amp;]]><!--");
    }
    if (name == text("sql")) {
        return text("'); DROP TABLE run; -- \"; DELETE FROM element WHERE 1=1");
    }
    if (name == text("paths")) {
        return text("../../../../escaped/../x\\..\\y:z|CON");
    }
    if (name == text("surrogates")) {
        return QChar(0xd800) + text("a") + QChar(0xdc00) + QChar(0xdbff);
    }
    if (name == text("markdown")) {
        return text("| a | [x](javascript:alert(1)) `b` ![p](q)\n# h\n```\n<b>");
    }
    if (name == text("shell")) {
        return text("$(touch escaped) `touch escaped`; touch escaped & %n%s %1%2 * ?");
    }
    if (name == text("workflow")) {
        return text("\n::error::x\n::set-output name=a::b\n##vso[task.complete]");
    }
    if (name == text("long")) {
        return QStringLiteral("x").repeated(megabyte);
    }
    return {};
}

const char* const names[] = {"terminal",   "control",  "markup", "sql",      "paths",
                             "surrogates", "markdown", "shell",  "workflow", "long"};

/** Everything that a command can be told to print, on FILE alone, and what it is. */
struct Output {
    const char* name;
    QStringList arguments;
    const char* form; ///< lines, json, jsonlines, xml, html
};

QVector<Output> outputs() {
    const QString file = text("hostile.uirec");
    return {
        {"table", {text("report"), text("-m"), text("--show-contexts"), file}, "lines"},
        {"contexts", {text("report"), text("--by-context"), file}, "lines"},
        {"warnings", {text("report"), text("--warnings"), file}, "lines"},
        {"total", {text("report"), text("--format"), text("total"), file}, "lines"},
        {"markdown",
         {text("report"), text("-m"), text("--format"), text("markdown"), file},
         "lines"},
        {"json", {text("json"), file}, "json"},
        {"junit", {text("junit"), file}, "xml"},
        {"badge", {text("badge"), file}, "xml"},
        {"html", {text("html"), text("-o"), text("-"), file}, "html"},
        {"dump", {text("dump"), file}, "lines"},
        {"dump as json", {text("dump"), text("--format"), text("json"), file}, "jsonlines"},
        {"diff", {text("diff"), text("plain.uirec"), file}, "lines"},
        {"diff backwards", {text("diff"), file, text("plain.uirec")}, "lines"},
        {"diff as markdown",
         {text("diff"), text("--format"), text("markdown"), text("plain.uirec"), file},
         "lines"},
        {"diff as json",
         {text("diff"), text("--format"), text("json"), text("plain.uirec"), file},
         "json"},
        {"explain", {text("explain"), text("*"), file}, "lines"},
    };
}

} // namespace

/** Whatever an application says comes out of every command as data. */
class TestHostileContent : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_top;
    QString m_folder;

    QString path(const QString& name) const { return m_folder + QLatin1Char('/') + name; }

    struct Said {
        int exitCode = -1;
        QByteArray output;
        QByteArray errors;
    };

    Said uicov(const QStringList& arguments) const {
        QProcess process;
        process.setWorkingDirectory(m_folder);
        process.start(QStringLiteral(UICOV_PROGRAM), arguments);
        Said said;
        if (process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit) {
            said = {process.exitCode(), process.readAllStandardOutput(),
                    process.readAllStandardError()};
        }
        return said;
    }

    /** A recording in which everything that an application can name has that name. */
    static bool write(const QString& path, const QString& odd) {
        RecordingBuilder recording;
        recording.addProcess({{text("application"), odd},
                              {text("executable"), odd},
                              {text("run"), text("11111111-2222-3333-4444-555555555555")},
                              {text("session"), odd},
                              {text("platform"), odd},
                              {text("context"), odd},
                              {text("label.") + odd, odd}});
        recording.addLog(RecordingFormat::Severity::Warning, odd);
        recording.addMark(odd);
        auto* const window = recording.add(nullptr, text("Window"), odd, odd, {text("shown"), odd});
        window->setWindowNode(true);
        window->increaseUsage(Vorsk::UIAbstraction::UIEvent(text("shown")));
        auto* const button =
            recording.add(window, text("Button"), odd, odd, {text("clicked"), text("shown")});
        button->increaseUsage(Vorsk::UIAbstraction::UIEvent(text("shown")));
        QImage image(2, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        window->setImage(image);
        recording.add(window, odd, odd, odd, {odd});
        recording.addEnd();
        return recording.write(path);
    }

    /** Also what a terminal takes for the beginning of a command in one character. */
    static QByteArray controlIn(const QByteArray& output) {
        const QString decoded = QString::fromUtf8(output);
        for (const QChar character : decoded) {
            if (character.category() == QChar::Other_Control && character != QLatin1Char('\n')) {
                return "U+" + QByteArray::number(character.unicode(), 16);
            }
        }
        return {};
    }

    /** A terminal or a line-wise reader finds nothing here but lines of visible text. */
    static QByteArray invisibleIn(const QByteArray& output) {
        const QString decoded = QString::fromUtf8(output);
        if (decoded.toUtf8() != output) {
            return "bytes that are not UTF-8";
        }
        for (const QChar character : decoded) {
            const bool isLineEnd = character == QLatin1Char('\n');
            const bool isControl = character.category() == QChar::Other_Control;
            const bool isFormat = character.category() == QChar::Other_Format ||
                                  character.category() == QChar::Separator_Line ||
                                  character.category() == QChar::Separator_Paragraph;
            if ((isControl && !isLineEnd) || isFormat) {
                return "U+" + QByteArray::number(character.unicode(), 16);
            }
        }
        return {};
    }

    static QByteArray problemOfJson(const QByteArray& output) {
        QJsonParseError error{};
        QJsonDocument::fromJson(output, &error);
        return error.error == QJsonParseError::NoError ? QByteArray()
                                                       : error.errorString().toUtf8();
    }

    static QByteArray problemOfXml(const QByteArray& output) {
        QXmlStreamReader xml(output);
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement() &&
                (xml.name() == text("script") || xml.name() == text("img"))) {
                return "an element of the application's";
            }
        }
        return xml.hasError() ? xml.errorString().toUtf8() : QByteArray();
    }

    /** The page's own scripts and no more, each at its place. */
    static QByteArray problemOfHtml(const QByteArray& output) {
        if (output.count("<script") != output.count("</script>") || output.contains("<img src=x") ||
            output.contains("alert(1)</script>")) {
            return "markup of the application's";
        }
        return controlIn(output);
    }

    static QByteArray problemOf(const QByteArray& output, const QByteArray& form) {
        if (form == "html") {
            return problemOfHtml(output);
        }
        QByteArray problem = form == "lines" ? invisibleIn(output) : QByteArray();
        if (form == "json") {
            problem = problemOfJson(output);
        } else if (form == "xml") {
            problem = problemOfXml(output);
        } else if (form == "jsonlines") {
            const QList<QByteArray> lines = output.split('\n');
            for (const QByteArray& line : lines) {
                problem += line.isEmpty() ? QByteArray() : problemOfJson(line);
            }
        }
        return problem.isEmpty() && !controlIn(output).isEmpty() ? controlIn(output) : problem;
    }

    /** Below the folder that all this happens in, and above the one that commands run in. */
    QStringList everythingThere() const {
        QStringList all;
        QDirIterator files(m_top.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            all.append(files.next());
        }
        all.sort();
        return all;
    }

private Q_SLOTS:
    void initTestCase() {
        // Deep enough that "../" stays in sight.
        m_folder = m_top.filePath(text("a/b/c/d/e/f"));
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(write(path(text("plain.uirec")), text("plain")));
    }

    void everyCommandPrintsItAsData_data() {
        QTest::addColumn<QString>("content");
        QTest::addColumn<int>("output");
        const QVector<Output> all = outputs();
        for (const char* name : names) {
            for (int output = 0; output < all.size(); ++output) {
                QTest::newRow(qPrintable(text(name) + text(", ") + text(all[output].name)))
                    << text(name) << output;
            }
        }
    }

    void everyCommandPrintsItAsData() {
        QFETCH(QString, content);
        QFETCH(int, output);
        const Output what = outputs().at(output);
        QVERIFY(write(path(text("hostile.uirec")), hostile(content)));
        const QStringList before = everythingThere();
        const Said said = uicov(what.arguments);
        QVERIFY2(said.exitCode == 0, said.errors.constData());
        QVERIFY(!said.output.isEmpty());
        const QByteArray problem = problemOf(said.output, what.form);
        QVERIFY2(problem.isEmpty(), (problem + " in " + said.output.left(2000)).constData());
        const QByteArray onErrors = invisibleIn(said.errors);
        QVERIFY2(onErrors.isEmpty(), (onErrors + " in " + said.errors.left(2000)).constData());
        // A line of the application's own would be a command to whoever reads a build's log.
        for (const char* start : {"\n::error", "\n::set-output", "\n##vso"}) {
            QVERIFY(!("\n" + said.output + said.errors).contains(start));
        }
        QCOMPARE(everythingThere(), before);
    }

    void nothingIsWrittenOutsideOfASplitPage_data() { everyName(); }

    void nothingIsWrittenOutsideOfASplitPage() {
        QFETCH(QString, content);
        QVERIFY(write(path(text("hostile.uirec")), hostile(content)));
        QStringList expected = everythingThere();
        const Said said =
            uicov({text("html"), text("--split"), text("page"), text("hostile.uirec")});
        QVERIFY2(said.exitCode == 0, said.errors.constData());
        const QString page = path(text("page"));
        QStringList outside;
        static const QRegularExpression tame(text("^[A-Za-z0-9._/-]+$"));
        int inside = 0;
        const QStringList now = everythingThere();
        for (const QString& file : now) {
            if (file != page && !file.startsWith(page + QLatin1Char('/'))) {
                outside.append(file);
                continue;
            }
            ++inside;
            QVERIFY2(tame.match(file.mid(page.size())).hasMatch() || file == page,
                     qPrintable(file));
        }
        QVERIFY(inside > 2);
        QCOMPARE(outside, expected);
        QVERIFY(QDir(page).removeRecursively());
    }

    void aDataFileKeepsItAndStaysSound_data() { everyName(); }

    void aDataFileKeepsItAndStaysSound() {
        QFETCH(QString, content);
        QVERIFY(write(path(text("hostile.uirec")), hostile(content)));
        const Said combined =
            uicov({text("combine"), text("-o"), text("data.uicov"), text("hostile.uirec")});
        QVERIFY2(combined.exitCode == 0, combined.errors.constData());
        QVERIFY(invisibleIn(combined.output + combined.errors).isEmpty());
        // The same report from the data file and from the recording: nothing was changed or run.
        QCOMPARE(uicov({text("json"), text("data.uicov")}).output,
                 uicov({text("json"), text("hostile.uirec")}).output);
        for (const QStringList& arguments :
             {QStringList{text("doctor"), text("-o"), text("data.uicov")},
              QStringList{text("dump"), text("data.uicov")},
              QStringList{text("erase"), text("-o"), text("data.uicov")}}) {
            const Said said = uicov(arguments);
            const QByteArray problem = invisibleIn(said.output + said.errors);
            QVERIFY2(problem.isEmpty(),
                     (problem + " in " + (said.output + said.errors).left(2000)).constData());
        }
        QFile::remove(path(text("data.uicov")));
    }

private:
    static void everyName() {
        QTest::addColumn<QString>("content");
        for (const char* name : names) {
            QTest::newRow(name) << text(name);
        }
    }
};

QTEST_GUILESS_MAIN(TestHostileContent)
#include "tst_hostilecontent.moc"
