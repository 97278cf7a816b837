// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/fakehook.h"
#include "testlib/recordprinter.h"
#include "testlib/testcase.h"
#include "tracking/streamuielementexporter.h"

#include <QImage>
#include <QTest>

#include <functional>
#include <memory>

using TestLib::FakeHook;
using TestLib::RecordPrinter;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::ElementStore;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;
using Vorsk::UICoverage::StreamUIElementExporter;

namespace {

std::unique_ptr<UIElement> newElement(const char* id, const char* concreteType = "Q") {
    return std::make_unique<UIElement>(QLatin1String(concreteType),
                                       StandardType(QStringLiteral("B")), QLatin1String(id));
}

UIEvent clicked() {
    return UIEvent(QStringLiteral("clicked"));
}

/** Lets the exporter see the element, and forgets that it was added. */
void attach(StreamUIElementExporter& exporter, ElementStore& store, UIElement& element,
            FakeHook& hook) {
    exporter.addElementStore(&store);
    store.addElement(&element);
    hook.messages.clear();
}

int kindOf(const FakeHook::Message& message) {
    return message.args.at(2).toInt();
}

QByteArray payloadOf(const FakeHook::Message& message) {
    return message.args.at(3).toByteArray();
}

/** The last message as a line, when all before it were printed too. */
QString printedLast(const FakeHook& hook) {
    RecordPrinter printer;
    QString line;
    for (const FakeHook::Message& message : hook.messages) {
        line = printer.print(kindOf(message), payloadOf(message));
    }
    return line;
}

using Change = std::function<void(UIElement&)>;

} // namespace

Q_DECLARE_METATYPE(Change)

/** The bytes of the payload of each kind of record, and that each reads back. */
class tst_RecordPayloads : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void payloadOfEachKind_data();
    void payloadOfEachKind();
    void payloadOfEachKindReadsBack_data();
    void payloadOfEachKindReadsBack();
    void payloadOfImage();
};

void tst_RecordPayloads::payloadOfEachKind_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<Change>("change");
    QTest::addColumn<QByteArray>("hex"); // behind the element's id
    QTest::addColumn<QString>("line");
    const auto row = [](int kind, const char* tag, const Change& change, const char* hex,
                        const char* line) {
        QTest::newRow(tag) << kind << change << QByteArray(hex)
                           << QStringLiteral("kind %1 ").arg(kind) + QString::fromUtf8(line);
    };
    row(
        2, "child", [](UIElement& e) { e.addChild(newElement("c").release()); }, "00000002 0063",
        "childAdded #1 #2");
    row(
        3, "event", [](UIElement& e) { e.registerEvent(UIEvent(QStringLiteral("ab"))); },
        "00000004 0061 0062", "eventRegistered #1 ab");
    row(
        3, "event without a name", [](UIElement& e) { e.registerEvent(UIEvent()); }, "ffffffff",
        "eventRegistered #1 null");
    row(
        4, "geometry",
        [](UIElement& e) { e.setGeometry(ElementGeometry(QRect(1, -2, 30, 40), true)); },
        "00000001 fffffffe 0000001e 00000025", "geometryChanged #1 (1,-2 30x40)");
    row(
        4, "invalid geometry", [](UIElement& e) { e.setGeometry(ElementGeometry()); },
        "00000000 00000000 ffffffff ffffffff", "geometryChanged #1 (0,0 0x0)");
    row(
        5, "null image", [](UIElement& e) { e.setImage(QImage()); }, "00000000",
        "imageChanged #1 no image");
    row(
        6, "type", [](UIElement& e) { e.setStandardType(StandardType(QStringLiteral("M"))); },
        "00000002 004d", "standardTypeChanged #1 M");
    row(
        6, "null type", [](UIElement& e) { e.setStandardType(StandardType()); }, "ffffffff",
        "standardTypeChanged #1 unknown");
    row(
        6, "empty type", [](UIElement& e) { e.setStandardType(StandardType(QStringLiteral(""))); },
        "00000000", "standardTypeChanged #1 \"\"");
    row(
        7, "text", [](UIElement& e) { e.setText(QStringLiteral("\u00e4\U0001f600")); },
        "00000006 00e4 d83d de00", "textChanged #1 \"\u00e4\U0001f600\"");
    row(
        7, "empty text", [](UIElement& e) { e.setText(QStringLiteral("")); }, "00000000",
        "textChanged #1 \"\"");
    row(
        7, "null text", [](UIElement& e) { e.setText(QString()); }, "ffffffff",
        "textChanged #1 null");
    row(
        8, "transparent", [](UIElement& e) { e.setTransparentNode(true); }, "01",
        "transparentNodeChanged #1 true");
    row(
        8, "not transparent", [](UIElement& e) { e.setTransparentNode(false); }, "00",
        "transparentNodeChanged #1 false");
    row(
        9, "subgraph transparent", [](UIElement& e) { e.setSubgraphTransparent(true); }, "01",
        "subgraphTransparentChanged #1 true");
    row(
        9, "subgraph not transparent", [](UIElement& e) { e.setSubgraphTransparent(false); }, "00",
        "subgraphTransparentChanged #1 false");
    row(
        10, "window", [](UIElement& e) { e.setWindowNode(true); }, "01",
        "windowNodeChanged #1 true");
    row(
        10, "no window", [](UIElement& e) { e.setWindowNode(false); }, "00",
        "windowNodeChanged #1 false");
    row(
        11, "clicked from 0 to 1", [](UIElement& e) { e.increaseUsage(clicked()); },
        "0000000e 0063 006c 0069 0063 006b 0065 0064 00000001", "usageIncreased #1 clicked=1");
    row(
        11, "largest count",
        [](UIElement& e) {
            e.increaseUsage(UIEvent(QStringLiteral("a")));
            e.setUsage(UIEvent(QStringLiteral("a")), 0x7fffffff);
        },
        "00000002 0061 7fffffff", "usageIncreased #1 a=2147483647");
    row(
        12, "attribute",
        [](UIElement& e) { e.setAttribute(QStringLiteral("k"), QStringLiteral("v")); },
        "00000002 006b 00000002 0076", R"(attributeChanged #1 k="v")");
    row(
        12, "attribute gone",
        [](UIElement& e) {
            e.setAttribute(QStringLiteral("k"), QStringLiteral("v"));
            e.setAttribute(QStringLiteral("k"), QString());
        },
        "00000002 006b ffffffff", "attributeChanged #1 k=null");
}

void tst_RecordPayloads::payloadOfEachKind() {
    QFETCH(int, kind);
    QFETCH(Change, change);
    QFETCH(QByteArray, hex);
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto element = newElement("e");
    attach(exporter, store, *element, hook);
    change(*element);
    QVERIFY(!hook.messages.isEmpty());
    QCOMPARE(kindOf(hook.messages.last()), kind);
    QCOMPARE(payloadOf(hook.messages.last()).toHex(),
             QByteArray::fromHex("00000002 0065" + hex).toHex());
}

void tst_RecordPayloads::payloadOfEachKindReadsBack_data() {
    payloadOfEachKind_data();
    QTest::newRow("element") << 1 << Change() << QByteArray()
                             << QStringLiteral("kind 1 elementAdded #1 B/Q");
}

void tst_RecordPayloads::payloadOfEachKindReadsBack() {
    QFETCH(Change, change);
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto element = newElement("e");
    exporter.addElementStore(&store);
    store.addElement(element.get());
    if (change) {
        change(*element);
    }
    QTEST(printedLast(hook), "line");
}

void tst_RecordPayloads::payloadOfImage() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto element = newElement("e");
    attach(exporter, store, *element, hook);
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(255, 0, 0, 255));
    image.setPixel(1, 0, qRgba(0, 0, 255, 128));
    element->setImage(image);
    QCOMPARE(kindOf(hook.messages.last()), 5);
    const QByteArray payload = payloadOf(hook.messages.last());
    const QByteArray start = QByteArray::fromHex("00000002 0065 00000001 89504e470d0a1a0a");
    QCOMPARE(payload.left(start.size()).toHex(), start.toHex());
    QCOMPARE(payload.right(12).toHex(), QByteArray("0000000049454e44ae426082"));
    QCOMPARE(QImage::fromData(payload.mid(start.size() - 8), "PNG"), image);
    QCOMPARE(printedLast(hook), QStringLiteral("kind 5 imageChanged #1 image 2x1"));
}

QTEST_GUILESS_MAIN(tst_RecordPayloads)
#include "tst_recordpayloads.moc"
