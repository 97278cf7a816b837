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

    void everyChapterNamesATest() {
        const QString page = contents(QStringLiteral(UICOV_SOURCE_DIR "/docs/promises.md"));
        const QStringList chapters = page.split(QStringLiteral("\n## ")).mid(1);
        QVERIFY(!chapters.isEmpty());
        for (const QString& chapter : chapters) {
            QVERIFY2(chapter.contains(QStringLiteral("`tst_")), qPrintable(chapter));
        }
    }
};

QTEST_GUILESS_MAIN(TestPromises)
#include "tst_promises.moc"
