// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "elementbytes.h"
#include "recordstream/elementstream.h"
#include "recordstream/recordkind.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QByteArray>
#include <QDataStream>
#include <QImage>
#include <QTest>

#include <memory>

using namespace ElementBytes;
using Vorsk::RecordStream::readElement;
using Vorsk::RecordStream::readElements;
using Vorsk::RecordStream::streamVersion;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

/** What comes back from a sound stream, field by field. */
class tst_ElementStreamReading : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void readsEveryField();
    void nullAndEmptyTextsStayApart();
    void readsNullId();
    void readsSeveralAttributes();
    void readsImagePixels();
    void readingAnnouncesNoUsage();
    void readChildrenHaveTheirParent();
    void leavesBytesBehindElement();
    void readsListOfElements();
    void readsEmptyList();
};

void tst_ElementStreamReading::readsEveryField() {
    const auto element = fromBytes(fromHex(
        QByteArray("00000002 0069  00000002 0042  00000002 0051  00000002 0033  00000002 0034"
                   "00000002 00000002 0065 00000002 0066  010001  00000002 0054"
                   "00000001 00000002 0000000a 00000014 01  00000001") +
        pngHex +
        "00000002 0031  00000002 0032  00000001 00000002 006b 00000002 0076"
        "00000001 00000002 006d 00000002 0077  00000001 00000002 0063 00000005  00000000"));
    QVERIFY(element);
    QCOMPARE(element->id(), QStringLiteral("i"));
    QCOMPARE(element->standardType(), StandardType(QStringLiteral("B")));
    QCOMPARE(element->concreteType(), QStringLiteral("Q"));
    QCOMPARE(element->extraString1(), QStringLiteral("1"));
    QCOMPARE(element->extraString2(), QStringLiteral("2"));
    QCOMPARE(element->extraString3(), QStringLiteral("3"));
    QCOMPARE(element->extraString4(), QStringLiteral("4"));
    QCOMPARE(element->extraStrings(), (QStringList{QStringLiteral("e"), QStringLiteral("f")}));
    QVERIFY(element->isTransparentNode());
    QVERIFY(!element->isSubgraphTransparent());
    QVERIFY(element->isWindowNode());
    QCOMPARE(element->text(), QStringLiteral("T"));
    QCOMPARE(element->geometry(), ElementGeometry(QRect(QPoint(1, 2), QPoint(10, 20)), true));
    QCOMPARE(element->image().size(), QSize(2, 1));
    using Attributes = QHash<QString, QString>;
    QCOMPARE(element->extraAttributes1(), (Attributes{{QStringLiteral("k"), QStringLiteral("v")}}));
    QCOMPARE(element->extraAttributes2(), (Attributes{{QStringLiteral("m"), QStringLiteral("w")}}));
    QCOMPARE(element->usage(), (QMap<UIEvent, int>{{UIEvent(QStringLiteral("c")), 5}}));
    QVERIFY(element->children().isEmpty());
    QVERIFY(element->isRoot());
}

void tst_ElementStreamReading::nullAndEmptyTextsStayApart() {
    UIElement element = plainElement();
    element.setExtraStrings({QString(), QStringLiteral("")});
    element.setText(QString());
    const auto withNull = fromBytes(toBytes(element));
    element.setText(QStringLiteral(""));
    const auto withEmpty = fromBytes(toBytes(element));
    QVERIFY(withNull && withEmpty);
    QVERIFY(withNull->text().isNull());
    QVERIFY(!withEmpty->text().isNull());
    QVERIFY(withEmpty->text().isEmpty());
    QVERIFY(withNull->extraStrings().at(0).isNull());
    QVERIFY(!withNull->extraStrings().at(1).isNull());
    QVERIFY(withNull->extraString1().isNull());
}

void tst_ElementStreamReading::readsNullId() {
    const QByteArray rest = fromHex(plainStart + plainEnd + "00000000").mid(6);
    const auto element = fromBytes(fromHex("ffffffff") + rest);
    QVERIFY(element);
    QVERIFY(element->id().isNull());
}

void tst_ElementStreamReading::readsSeveralAttributes() {
    const QByteArray bytes = fromHex(
        plainStart +
        "ffffffff  00000000 00000000 ffffffff ffffffff 00  00000000  ffffffff ffffffff"
        "00000003 00000002 0061 00000002 0031 00000002 0062 00000002 0032 00000002 0063 ffffffff"
        "00000000  00000000  00000000");
    const auto element = fromBytes(bytes);
    QVERIFY(element);
    using Attributes = QHash<QString, QString>;
    const Attributes expected{{QStringLiteral("a"), QStringLiteral("1")},
                              {QStringLiteral("b"), QStringLiteral("2")},
                              {QStringLiteral("c"), QString()}};
    QCOMPARE(element->extraAttributes1(), expected);
    // Their order on the wire is a hash's; what they say is not.
    QCOMPARE(fromBytes(toBytes(*element))->extraAttributes1(), expected);
    QCOMPARE(toBytes(*element).size(), bytes.size());
}

void tst_ElementStreamReading::readsImagePixels() {
    QImage image(5, 3, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            image.setPixel(x, y, qRgba(40 * x, 80 * y, 7, 200));
        }
    }
    UIElement element = plainElement();
    element.setImage(image);
    const auto read = fromBytes(toBytes(element));
    QVERIFY(read);
    QCOMPARE(read->image(), image);
}

void tst_ElementStreamReading::readingAnnouncesNoUsage() {
    // A count that is read is stored, also one that no setter would announce.
    const QByteArray start = plainStart +
                             "ffffffff  00000000 00000000 ffffffff ffffffff 00  00000000"
                             "ffffffff ffffffff  00000000 00000000";
    const auto element =
        fromBytes(fromHex(start + "00000002 00000002 0061 ffffffff 00000002 0062 7fffffff"
                                  "00000000"));
    QVERIFY(element);
    QCOMPARE(element->usage().value(UIEvent(QStringLiteral("a"))), -1);
    QCOMPARE(element->usage().value(UIEvent(QStringLiteral("b"))), 0x7fffffff);
}

void tst_ElementStreamReading::readChildrenHaveTheirParent() {
    UIElement root = plainElement();
    auto* child = new UIElement(QStringLiteral("Child"), StandardType(), QStringLiteral("child"));
    child->addChild(new UIElement(QStringLiteral("Below"), StandardType(), QString()));
    root.addChild(child);
    const auto read = fromBytes(toBytes(root));
    QVERIFY(read);
    QVERIFY(*read == root);
    QCOMPARE(read->children().size(), 1);
    QCOMPARE(read->children().at(0)->parent(), read.get());
    QCOMPARE(read->children().at(0)->id(), QStringLiteral("child"));
    QCOMPARE(read->children().at(0)->children().at(0)->parent(), read->children().at(0));
}

void tst_ElementStreamReading::leavesBytesBehindElement() {
    const QByteArray bytes = toBytes(plainElement());
    QDataStream stream(bytes + "more");
    stream.setVersion(streamVersion);
    QVERIFY(readElement(stream));
    QCOMPARE(stream.status(), QDataStream::Ok);
    QCOMPARE(stream.device()->readAll(), QByteArray("more"));
}

void tst_ElementStreamReading::readsListOfElements() {
    const QByteArray one = toBytes(plainElement());
    bool ok = false;
    const QList<UIElement*> elements =
        readElements(QByteArray::fromHex("00000003") + one + one + one, &ok);
    QVERIFY(ok);
    QCOMPARE(elements.size(), 3);
    for (UIElement* element : elements) {
        QVERIFY(element->isRoot());
        QVERIFY(*element == plainElement());
    }
    qDeleteAll(elements);
}

void tst_ElementStreamReading::readsEmptyList() {
    bool ok = false;
    QVERIFY(readElements(QByteArray(4, '\0'), &ok).isEmpty());
    QVERIFY(ok);
    QVERIFY(readElements(QByteArray(4, '\0')).isEmpty());
}

QTEST_GUILESS_MAIN(tst_ElementStreamReading)
#include "tst_elementstreamreading.moc"
