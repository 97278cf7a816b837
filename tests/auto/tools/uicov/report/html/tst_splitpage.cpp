// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/splitpage.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using Uicov::Base::Message;
using Uicov::Report::Html::PageModel;
using Uicov::Report::Html::SplitPage;

namespace {

PageModel sample(const QByteArray& picture) {
    PageModel model;
    model.title = QStringLiteral("panel");
    model.pictures = {{picture, QSize(1, 1), false}};
    return model;
}

} // namespace

class TestSplitPage : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;

    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }

    QStringList pictures() const {
        return QDir(path("site/pictures")).entryList(QDir::Files, QDir::Name);
    }

    bool writeFile(const char* name, const QByteArray& bytes) const {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aNewFolderIsMade() {
        const PageModel model = sample("one");
        QVERIFY(!SplitPage(model, path("deep/site")).write().has_value());
        QCOMPARE(QDir(path("deep/site")).entryList(QDir::Files, QDir::Name),
                 (QStringList{QStringLiteral("data.js"), QStringLiteral("index.html"),
                              QStringLiteral("page.css"), QStringLiteral("page.js")}));
    }

    void anotherPageReplacesOneOfOursWithItsPictures() {
        const PageModel first = sample("one");
        QVERIFY(!SplitPage(first, path("site")).write().has_value());
        const QStringList before = pictures();
        QCOMPARE(before.size(), 1);
        QVERIFY(writeFile("site/pictures/mine.png", "mine"));
        const PageModel second = sample("two");
        QVERIFY(!SplitPage(second, path("site")).write().has_value());
        QVERIFY(!pictures().contains(before.first()));
        QVERIFY(pictures().contains(QStringLiteral("mine.png")));
        QCOMPARE(pictures().size(), 2);
    }

    void whatIsNotOursIsLeftAlone_data() {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("some file") << QByteArray("site/notes.txt");
        QTest::newRow("a hidden file") << QByteArray("site/.git");
        QTest::newRow("a page of another program") << QByteArray("site/index.html");
    }

    void whatIsNotOursIsLeftAlone() {
        QFETCH(QByteArray, name);
        QVERIFY(QDir().mkpath(path("site")));
        QVERIFY(writeFile(name.constData(), "mine"));
        const QStringList before = QDir(path("site")).entryList(QDir::AllEntries | QDir::Hidden);
        const PageModel model = sample("one");
        const auto problem = SplitPage(model, path("site")).write();
        QVERIFY(problem.has_value());
        QCOMPARE(static_cast<int>(problem->message), static_cast<int>(Message::OutputForeign));
        QCOMPARE(QDir(path("site")).entryList(QDir::AllEntries | QDir::Hidden), before);
    }

    void aFileInPlaceOfTheFolderIsLeftAlone() {
        QVERIFY(writeFile("site", "mine"));
        const PageModel model = sample("one");
        QVERIFY(SplitPage(model, path("site")).write().has_value());
        QVERIFY(QFileInfo(path("site")).isFile());
    }

    void anEmptyFolderIsUsed() {
        QVERIFY(QDir().mkpath(path("site")));
        const PageModel model = sample("one");
        QVERIFY(!SplitPage(model, path("site")).write().has_value());
    }
};

QTEST_GUILESS_MAIN(TestSplitPage)

#include "tst_splitpage.moc"
