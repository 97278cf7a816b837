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
#include <random>
#include <vector>

using namespace ElementBytes;
using Vorsk::RecordStream::readElement;
using Vorsk::RecordStream::streamVersion;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

/** The stream form by recursion, for elements that are no picture and stand in no cycle. */
void writePlainly(QDataStream& stream, const UIElement& e) {
    stream << e.id() << e.standardType().name() << e.concreteType() << e.extraString3()
           << e.extraString4() << qint32(e.extraStrings().size());
    for (const QString& text : e.extraStrings()) {
        stream << text;
    }
    stream << qint8(e.isTransparentNode()) << qint8(e.isSubgraphTransparent())
           << qint8(e.isWindowNode()) << e.text() << qint32(e.geometry().rect().left())
           << qint32(e.geometry().rect().top()) << qint32(e.geometry().rect().right())
           << qint32(e.geometry().rect().bottom()) << qint8(e.geometry().isValid()) << qint32(0)
           << e.extraString1() << e.extraString2() << qint32(0) << qint32(0)
           << qint32(e.usage().size());
    const QMap<UIEvent, int> usage = e.usage();
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        stream << it.key().name() << qint32(it.value());
    }
    stream << qint32(e.children().size());
    for (const UIElement* child : e.children()) {
        writePlainly(stream, *child);
    }
}

} // namespace

/** The bytes of an element, and that reading them is their inverse. */
class tst_ElementStream : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void bytesOfPlainElement();
    void bytesOfEachField_data();
    void bytesOfEachField();
    void bytesOfUsageAreInOrderOfNames();
    void bytesOfChildrenFollowTheirNumber();
    void bytesOfImageArePng();
    void writesAndReadsElementOfTwoParentsTwice();
    void writesRingOnceAround_data();
    void writesRingOnceAround();
    void writesAndReadsDeepChain();
    void writesAsRecursionDoes_data();
    void writesAsRecursionDoes();
};

void tst_ElementStream::bytesOfPlainElement() {
    QCOMPARE(toBytes(plainElement()).toHex(), fromHex(plainStart + plainEnd + "00000000").toHex());
}

void tst_ElementStream::bytesOfEachField_data() {
    // Behind id and types: extraString3 and 4, extraStrings, flags, text, geometry, image,
    // extraString1 and 2, extraAttributes1 and 2, usage, children.
    QTest::addColumn<QByteArray>("hex");
    const QByteArray start = "00000002 0069  00000002 0042  00000002 0051 ";
    const QByteArray image = QByteArray("00000001") + pngHex;
    const auto row = [&start](const char* tag, const QByteArray& rest) {
        QTest::newRow(tag) << start + rest;
    };
    row("nothing", "ffffffff ffffffff 00000000 000000 ffffffff 00000000 00000000 ffffffff ffffffff"
                   "00 00000000 ffffffff ffffffff 00000000 00000000 00000000 00000000");
    row("empty texts", "00000000 00000000 00000000 000000 00000000 00000000 00000000 ffffffff"
                       "ffffffff 00 00000000 00000000 00000000 00000000 00000000 00000000 "
                       "00000000");
    row("extraString3 and 4",
        "00000002 0033 00000002 0034 00000000 000000 ffffffff 00000000 00000000 ffffffff ffffffff"
        "00 00000000 ffffffff ffffffff 00000000 00000000 00000000 00000000");
    row("extraStrings", "ffffffff ffffffff 00000003 00000002 0061 ffffffff 00000000 000000 ffffffff"
                        "00000000 00000000 ffffffff ffffffff 00 00000000 ffffffff ffffffff "
                        "00000000 00000000 00000000 00000000");
    row("transparent node",
        "ffffffff ffffffff 00000000 010000 ffffffff 00000000 00000000 ffffffff ffffffff"
        "00 00000000 ffffffff ffffffff 00000000 00000000 00000000 00000000");
    row("transparent subgraph",
        "ffffffff ffffffff 00000000 000100 ffffffff 00000000 00000000 ffffffff ffffffff"
        "00 00000000 ffffffff ffffffff 00000000 00000000 00000000 00000000");
    row("window", "ffffffff ffffffff 00000000 000001 ffffffff 00000000 00000000 ffffffff ffffffff"
                  "00 00000000 ffffffff ffffffff 00000000 00000000 00000000 00000000");
    row("text and geometry",
        "ffffffff ffffffff 00000000 000000 00000004 00e4d83d 00000001 fffffffe 0000001e 00000029"
        "01 00000000 ffffffff ffffffff 00000000 00000000 00000000 00000000");
    row("image, extraString1 and 2",
        "ffffffff ffffffff 00000000 000000 ffffffff 00000000 00000000 ffffffff ffffffff 00" +
            image + "00000002 0031 00000002 0032 00000000 00000000 00000000 00000000");
    row("attributes", "ffffffff ffffffff 00000000 000000 ffffffff 00000000 00000000 ffffffff"
                      "ffffffff 00 00000000 ffffffff ffffffff 00000001 00000002 006b 00000002 0076"
                      "00000001 00000000 ffffffff 00000000 00000000");
    row("usage", "ffffffff ffffffff 00000000 000000 ffffffff 00000000 00000000 ffffffff ffffffff"
                 "00 00000000 ffffffff ffffffff 00000000 00000000 00000002 00000002 0061 00000007"
                 "00000002 0062 ffffffff 00000000");
}

void tst_ElementStream::bytesOfEachField() {
    QFETCH(QByteArray, hex);
    const QByteArray bytes = fromHex(hex);
    const auto element = fromBytes(bytes);
    QVERIFY(element);
    if (element->image().isNull()) {
        QCOMPARE(toBytes(*element).toHex(), bytes.toHex());
    } else {
        // How an image is compressed is not fixed; where it stands and what stands around it is.
        const QByteArray png = fromHex(pngHex);
        const QByteArray written = toBytes(*element);
        const int start = bytes.indexOf(png);
        QCOMPARE(written.left(start).toHex(), bytes.left(start).toHex());
        const QByteArray rest = bytes.mid(start + png.size());
        QCOMPARE(written.right(rest.size()).toHex(), rest.toHex());
        QCOMPARE(QImage::fromData(written.mid(start, written.size() - start - rest.size()), "PNG"),
                 element->image());
    }
}

void tst_ElementStream::bytesOfUsageAreInOrderOfNames() {
    UIElement element = plainElement();
    element.registerEvent(UIEvent(QStringLiteral("b")));
    element.registerEvent(UIEvent(QStringLiteral("a")));
    element.setUsage(UIEvent(QStringLiteral("b")), 258);
    const QByteArray end = fromHex("00000002  00000002 0061 00000000  00000002 0062 00000102"
                                   "00000000");
    QCOMPARE(toBytes(element).right(end.size()).toHex(), end.toHex());
}

void tst_ElementStream::bytesOfChildrenFollowTheirNumber() {
    UIElement root = plainElement();
    auto* first =
        new UIElement(QStringLiteral("Q"), StandardType(QStringLiteral("B")), QStringLiteral("i"));
    auto* second =
        new UIElement(QStringLiteral("Q"), StandardType(QStringLiteral("B")), QStringLiteral("i"));
    auto* below =
        new UIElement(QStringLiteral("Q"), StandardType(QStringLiteral("B")), QStringLiteral("i"));
    root.addChild(first);
    root.addChild(second);
    first->addChild(below);
    const QByteArray plain = plainStart + plainEnd;
    const QByteArray expected =
        fromHex(plain + "00000002" + plain + "00000001" + plain + "00000000" + plain + "00000000");
    QCOMPARE(toBytes(root).toHex(), expected.toHex());
}

void tst_ElementStream::bytesOfImageArePng() {
    UIElement element = plainElement();
    QImage image(2, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(255, 0, 0));
    image.setPixel(1, 0, qRgb(0, 0, 255));
    element.setImage(image);
    const QByteArray bytes = toBytes(element);
    // Up to the image stand 62 bytes, behind it 24.
    const QByteArray null = fromHex(plainStart + plainEnd + "00000000");
    const int imageAt = null.size() - 24 - 4;
    QCOMPARE(bytes.left(imageAt).toHex(), null.left(imageAt).toHex());
    QCOMPARE(bytes.right(24).toHex(), null.right(24).toHex());
    QCOMPARE(bytes.mid(imageAt, 12).toHex(), QByteArray("0000000189504e470d0a1a0a"));
    const QByteArray png = bytes.mid(imageAt + 4, bytes.size() - 24 - imageAt - 4);
    QCOMPARE(png.right(12).toHex(), QByteArray("0000000049454e44ae426082"));
    QCOMPARE(QImage::fromData(png, "PNG").pixel(0, 0), qRgb(255, 0, 0));
    QCOMPARE(QImage::fromData(png, "PNG").pixel(1, 0), qRgb(0, 0, 255));
}

void tst_ElementStream::writesAndReadsElementOfTwoParentsTwice() {
    UIElement root(QStringLiteral("root"), StandardType(), QString());
    auto* left = new UIElement(QStringLiteral("left"), StandardType(), QString());
    auto* right = new UIElement(QStringLiteral("right"), StandardType(), QString());
    auto* shared = new UIElement(QStringLiteral("shared"), StandardType(), QString());
    root.addChild(left);
    root.addChild(right);
    left->addChild(shared);
    right->addChild(shared);
    const auto read = fromBytes(toBytes(root));
    QVERIFY(read);
    QVERIFY(*read == root);
    const UIElement* first = read->children().at(0)->children().at(0);
    const UIElement* second = read->children().at(1)->children().at(0);
    QVERIFY(first != second);
    QCOMPARE(first->id(), shared->id());
    QCOMPARE(second->id(), shared->id());
}

void tst_ElementStream::writesRingOnceAround_data() {
    QTest::addColumn<int>("size");
    QTest::newRow("listed in itself") << 1;
    QTest::newRow("two") << 2;
    QTest::newRow("five") << 5;
}

void tst_ElementStream::writesRingOnceAround() {
    QFETCH(int, size);
    const auto element = [](int i) {
        return new UIElement(QStringLiteral("Q"), StandardType(), QString::number(i));
    };
    QList<UIElement*> ring;
    QList<UIElement*> chain;
    for (int i = 0; i < size; ++i) {
        ring.append(element(i));
        chain.append(element(i));
    }
    for (int i = 0; i < size; ++i) {
        ring.at(i)->addChild(ring.at((i + 1) % size));
        if (i + 1 < size) {
            chain.at(i)->addChild(chain.at(i + 1));
        }
    }
    QCOMPARE(toBytes(*ring.first()).toHex(), toBytes(*chain.first()).toHex());
    QVERIFY(*fromBytes(toBytes(*ring.first())) == *ring.first());
    delete ring.first();
    delete chain.first();
}

void tst_ElementStream::writesAndReadsDeepChain() {
    constexpr int depth = 200000;
    UIElement root = plainElement();
    UIElement* deepest = &root;
    for (int i = 0; i < depth; ++i) {
        auto* child = new UIElement(QStringLiteral("Q"), StandardType(QStringLiteral("B")),
                                    QStringLiteral("i"));
        deepest->addChild(child);
        deepest = child;
    }
    const QByteArray bytes = toBytes(root);
    QCOMPARE(bytes.size(), (depth + 1) * toBytes(plainElement()).size());
    const auto read = fromBytes(bytes);
    QVERIFY(read);
    QVERIFY(*read == root);
    QVERIFY(toBytes(*read) == bytes);
}

void tst_ElementStream::writesAsRecursionDoes_data() {
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 30; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
}

void tst_ElementStream::writesAsRecursionDoes() {
    QFETCH(quint32, seed);
    std::mt19937 random(seed);
    const auto number = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const auto text = [&]() -> QString {
        const int length = number(6) - 1;
        return length < 0 ? QString() : QString(length, QChar(0x30 + number(0x2000)));
    };
    std::vector<UIElement*> elements;
    for (int i = 0; i < 30; ++i) {
        auto* element = new UIElement(text(), StandardType(text()), text());
        element->setText(text());
        element->setGeometry(ElementGeometry(
            QRect(QPoint(number(9) - 4, number(9)), QPoint(number(99), -number(99))),
            number(2) == 0));
        element->setWindowNode(number(2) == 0);
        element->setTransparentNode(number(2) == 0);
        element->setSubgraphTransparent(number(2) == 0);
        for (int event = number(4); event > 0; --event) {
            element->registerEvent(UIEvent(text()));
        }
        element->setExtraStrings(QStringList{text(), text()}.mid(number(3)));
        if (!elements.empty()) {
            elements[random() % elements.size()]->addChild(element);
            // Now and then another one lists it too; never a later one, so no cycle comes of it.
            elements[random() % elements.size()]->addChild(element);
        }
        elements.push_back(element);
    }
    const std::unique_ptr<UIElement> root(elements.front());
    QByteArray plain;
    QDataStream stream(&plain, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    writePlainly(stream, *root);
    QCOMPARE(toBytes(*root).toHex(), plain.toHex());
    const auto read = fromBytes(plain);
    QVERIFY(read);
    QVERIFY(*read == *root);
    QCOMPARE(toBytes(*read).toHex(), plain.toHex());
}

QTEST_GUILESS_MAIN(tst_ElementStream)
#include "tst_elementstream.moc"
