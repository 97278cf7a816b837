// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/elementstream.h"
#include "recordstream/recordkind.h"
#include "testlib/recordprinter.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QByteArray>
#include <QDataStream>
#include <QImage>
#include <QRect>
#include <QTest>

using TestLib::RecordPrinter;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

class tst_RecordPrinter : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void printsEachKind_data();
    void printsEachKind();
    void printsElementWithSubtree();
    void reportsElementUnderAnotherId();
    void namesIdsInOrderOfAppearance();
    void reportsUnknownKinds_data();
    void reportsUnknownKinds();
    void reportsEveryTruncation_data();
    void reportsEveryTruncation();
    void reportsBytesLeftOver_data();
    void reportsBytesLeftOver();
    void hidesSizes();
};

namespace {

template <class... Items>
QByteArray payload(const Items&... items) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(Vorsk::RecordStream::streamVersion);
    (stream << ... << items);
    return bytes;
}

UIElement button() {
    return {QStringLiteral("QPushButton"), StandardType(QStringLiteral("Button")),
            QStringLiteral("{id}")};
}

} // namespace

void tst_RecordPrinter::printsEachKind_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("line");
    const QString id = QStringLiteral("{id}");
    const auto row = [](int kind, const char* tag, const QByteArray& bytes, const char* line) {
        QTest::newRow(tag) << kind << bytes << QString::fromLatin1(line);
    };
    row(1, "element", payload(id, button()), "kind 1 elementAdded #1 Button/QPushButton");
    row(2, "child", payload(id, QStringLiteral("{child}")), "kind 2 childAdded #1 #2");
    row(3, "event", payload(id, QStringLiteral("clicked")), "kind 3 eventRegistered #1 clicked");
    row(3, "event without a name", payload(id, QString()), "kind 3 eventRegistered #1 null");
    row(4, "geometry", payload(id, QRect(1, 2, 30, 40)), "kind 4 geometryChanged #1 (1,2 30x40)");
    row(5, "image", payload(id, QImage(3, 4, QImage::Format_RGB32)),
        "kind 5 imageChanged #1 image 3x4");
    row(5, "null image", payload(id, QImage()), "kind 5 imageChanged #1 no image");
    row(6, "type", payload(id, QStringLiteral("Menu")), "kind 6 standardTypeChanged #1 Menu");
    row(6, "null type", payload(id, QString()), "kind 6 standardTypeChanged #1 unknown");
    row(7, "text", payload(id, QStringLiteral("a \"b\"")), R"(kind 7 textChanged #1 "a \"b\"")");
    row(7, "empty text", payload(id, QStringLiteral("")), "kind 7 textChanged #1 \"\"");
    row(7, "null text", payload(id, QString()), "kind 7 textChanged #1 null");
    row(8, "transparent", payload(id, true), "kind 8 transparentNodeChanged #1 true");
    row(9, "subgraph", payload(id, false), "kind 9 subgraphTransparentChanged #1 false");
    row(10, "window", payload(id, true), "kind 10 windowNodeChanged #1 true");
    row(11, "usage", payload(id, QStringLiteral("clicked"), qint32(7)),
        "kind 11 usageIncreased #1 clicked=7");
    row(12, "attribute", payload(id, QStringLiteral("enabled"), QStringLiteral("false")),
        R"(kind 12 attributeChanged #1 enabled="false")");
}

void tst_RecordPrinter::printsEachKind() {
    QFETCH(int, kind);
    QFETCH(QByteArray, bytes);
    QTEST(RecordPrinter().print(kind, bytes), "line");
}

void tst_RecordPrinter::printsElementWithSubtree() {
    UIElement root(QStringLiteral("QDialog"), StandardType(QStringLiteral("Dialog")),
                   QStringLiteral("{root}"));
    auto* child = new UIElement(QStringLiteral("QCheckBox"),
                                StandardType(QStringLiteral("CheckBox")), QStringLiteral("{box}"));
    child->setText(QStringLiteral("Save"));
    child->increaseUsage(UIEvent(QStringLiteral("checked")));
    root.addChild(child);
    RecordPrinter printer;
    QCOMPARE(printer.print(1, payload(QStringLiteral("{root}"), root)),
             QStringLiteral("kind 1 elementAdded #1 Dialog/QDialog [#2 CheckBox/QCheckBox \"Save\" "
                            "{checked=1}]"));
    QCOMPARE(printer.print(7, payload(QStringLiteral("{box}"), QString())),
             QStringLiteral("kind 7 textChanged #2 null"));
}

void tst_RecordPrinter::reportsElementUnderAnotherId() {
    QCOMPARE(RecordPrinter().print(1, payload(QStringLiteral("{other}"), button())),
             QStringLiteral("error: kind 1 elementAdded #1: the record holds #2 "
                            "Button/QPushButton"));
}

void tst_RecordPrinter::namesIdsInOrderOfAppearance() {
    RecordPrinter printer;
    const QString first = QStringLiteral("{z}");
    const QString second = QStringLiteral("{a}");
    QCOMPARE(printer.print(8, payload(first, true)),
             QStringLiteral("kind 8 transparentNodeChanged #1 true"));
    QCOMPARE(printer.print(2, payload(first, second)), QStringLiteral("kind 2 childAdded #1 #2"));
    QCOMPARE(printer.print(2, payload(second, first)), QStringLiteral("kind 2 childAdded #2 #1"));
    QCOMPARE(printer.nameOf(second), QStringLiteral("#2"));
    QCOMPARE(printer.nameOf(QStringLiteral("{new}")), QStringLiteral("#3"));
}

void tst_RecordPrinter::reportsUnknownKinds_data() {
    QTest::addColumn<int>("kind");
    QTest::newRow("below") << 0;
    QTest::newRow("above") << 13;
    QTest::newRow("negative") << -1;
}

void tst_RecordPrinter::reportsUnknownKinds() {
    QFETCH(int, kind);
    QCOMPARE(RecordPrinter().print(kind, QByteArray(3, '\0')),
             QStringLiteral("error: kind %1: unknown kind, 3 bytes").arg(kind));
}

void tst_RecordPrinter::reportsEveryTruncation_data() {
    printsEachKind_data();
}

void tst_RecordPrinter::reportsEveryTruncation() {
    QFETCH(int, kind);
    QFETCH(QByteArray, bytes);
    for (int size = 0; size < bytes.size(); ++size) {
        RecordPrinter printer;
        const QString line = printer.print(kind, bytes.left(size));
        const bool hasId = size >= payload(QStringLiteral("{id}")).size();
        QVERIFY2(line.startsWith(QStringLiteral("error: kind %1 ").arg(kind)), qPrintable(line));
        QVERIFY2(line.contains(hasId ? QStringLiteral("undecodable, %1 bytes").arg(size)
                                     : QStringLiteral("no element id in %1 bytes").arg(size)),
                 qPrintable(line));
        // Damage must not use up names.
        QCOMPARE(printer.nameOf(QStringLiteral("{next}")),
                 hasId ? QStringLiteral("#2") : QStringLiteral("#1"));
    }
}

void tst_RecordPrinter::reportsBytesLeftOver_data() {
    printsEachKind_data();
}

void tst_RecordPrinter::reportsBytesLeftOver() {
    QFETCH(int, kind);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, line);
    QCOMPARE(RecordPrinter().print(kind, bytes + QByteArray(2, 'x')),
             QStringLiteral("error: ") + line + QStringLiteral(": 2 bytes left over"));
}

void tst_RecordPrinter::hidesSizes() {
    RecordPrinter printer(TestLib::TreePrinter::Sizes::Hidden);
    QCOMPARE(printer.print(4, payload(QStringLiteral("{id}"), QRect(1, 2, 3, 4))),
             QStringLiteral("kind 4 geometryChanged #1 (rect)"));
    QCOMPARE(printer.print(5, payload(QStringLiteral("{id}"), QImage(1, 1, QImage::Format_Mono))),
             QStringLiteral("kind 5 imageChanged #1 image"));
}

QTEST_GUILESS_MAIN(tst_RecordPrinter)
#include "tst_recordprinter.moc"
