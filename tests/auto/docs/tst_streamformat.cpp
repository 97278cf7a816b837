// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/elementstream.h"
#include "testlib/fakehook.h"
#include "testlib/streamed.h"
#include "testlib/testcase.h"
#include "tracking/streamuielementexporter.h"

#include <QDataStream>
#include <QFile>
#include <QHash>
#include <QImage>
#include <QMap>
#include <QRect>
#include <QRegularExpression>
#include <QTest>

#include <functional>
#include <memory>

using TestLib::streamed;
using Vorsk::RecordStream::streamVersion;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::ElementStore;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;
using Vorsk::UICoverage::StreamUIElementExporter;

namespace {

std::unique_ptr<UIElement> newElement(const char* id, const char* standardType,
                                      const char* concreteType) {
    return std::make_unique<UIElement>(
        QLatin1String(concreteType), StandardType(QLatin1String(standardType)), QLatin1String(id));
}

ElementGeometry geometry() {
    return {QRect(10, 20, 80, 24), true};
}

QImage redAndBlue() {
    QImage image(2, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(255, 0, 0));
    image.setPixel(1, 0, qRgb(0, 0, 255));
    return image;
}

/** The payload of the one message of that kind that the change of an element "e" makes. */
QByteArray payload(int kind, const std::function<void(UIElement&)>& change) {
    TestLib::FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto element = newElement("e", "B", "Q");
    store.addElement(element.get());
    hook.messages.clear();
    change(*element);
    const auto& args = hook.messages.last().args;
    return args.at(2).toInt() == kind ? args.at(3).toByteArray() : QByteArray("another kind");
}

QByteArray attributeGone() {
    return payload(12, [](UIElement& element) {
        element.setAttribute(QStringLiteral("enabled"), QStringLiteral("false"));
        element.setAttribute(QStringLiteral("enabled"), QString());
    });
}

QByteArray elementRecord() {
    TestLib::FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto element = newElement("e", "Button", "Q");
    element->setText(QStringLiteral("OK"));
    element->setGeometry(geometry());
    element->registerEvent(UIEvent(QStringLiteral("clicked")));
    element->increaseUsage(UIEvent(QStringLiteral("shown")));
    store.addElement(element.get());
    return hook.messages.last().args.at(3).toByteArray();
}

QByteArray elementWithChild() {
    const auto element = newElement("e", "B", "Q");
    auto* child = new UIElement(QStringLiteral("C"), StandardType(), QStringLiteral("c"));
    element->addChild(child);
    return streamed(*element);
}

/** What the code makes of each example of the page, by the example's name. */
QMap<QString, QByteArray> produced() {
    const QString text = QStringLiteral("OK");
    const UIEvent clicked(QStringLiteral("clicked"));
    const StandardType button(QStringLiteral("Button"));
    using E = UIElement&;
    const auto name = [](const char* latin1) { return QString::fromLatin1(latin1); };
    return {
        {name("text"), streamed(text)},
        {name("empty-text"), streamed(QStringLiteral(""))},
        {name("null-text"), streamed(QString())},
        {name("rectangle"), streamed(geometry().rect())},
        {name("attributes"), streamed(QHash<QString, QString>{{name("k"), name("v")}})},
        {name("element"), elementWithChild()},
        {name("kind-1"), elementRecord()},
        {name("kind-2"), payload(2, [](E e) { e.addChild(newElement("c", "B", "Q").release()); })},
        {name("kind-3"), payload(3, [&](E e) { e.registerEvent(clicked); })},
        {name("kind-4"), payload(4, [](E e) { e.setGeometry(geometry()); })},
        {name("kind-5"), payload(5, [](E e) { e.setImage(redAndBlue()); })},
        {name("kind-5-null"), payload(5, [](E e) { e.setImage(QImage()); })},
        {name("kind-6"), payload(6, [&](E e) { e.setStandardType(button); })},
        {name("kind-7"), payload(7, [&](E e) { e.setText(text); })},
        {name("kind-8"), payload(8, [](E e) { e.setTransparentNode(true); })},
        {name("kind-9"), payload(9, [](E e) { e.setSubgraphTransparent(true); })},
        {name("kind-10"), payload(10, [](E e) { e.setWindowNode(true); })},
        {name("kind-11"), payload(11, [&](E e) { e.increaseUsage(clicked); })},
        {name("kind-12"),
         payload(12, [&](E e) { e.setAttribute(name("enabled"), name("false")); })},
        {name("kind-12-gone"), attributeGone()},
    };
}

/** The bytes of each block that begins with "```hex NAME", by its name. */
QMap<QString, QByteArray> documented() {
    QMap<QString, QByteArray> examples;
    QFile page(QStringLiteral(STREAM_FORMAT_PAGE));
    if (!page.open(QIODevice::ReadOnly)) {
        return examples;
    }
    const QRegularExpression block(QStringLiteral("^```hex (\\S+)$\n(.*?)^```$"),
                                   QRegularExpression::MultilineOption |
                                       QRegularExpression::DotMatchesEverythingOption);
    auto matches = block.globalMatch(QString::fromUtf8(page.readAll()));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        QString hex = match.captured(2);
        hex.remove(QRegularExpression(QStringLiteral("#.*$"), QRegularExpression::MultilineOption));
        hex.remove(QRegularExpression(QStringLiteral("\\s")));
        // Two examples of one name would hide one of them.
        if (examples.contains(match.captured(1))) {
            hex = QStringLiteral("00");
        }
        examples.insert(match.captured(1), hex.toLatin1());
    }
    return examples;
}

} // namespace

/** The examples of docs/stream-format.md. */
class tst_StreamFormat : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void pageHasAnExampleOfEverything();
    void examplesAreWhatTheCodeMakes_data();
    void examplesAreWhatTheCodeMakes();
    void pictureReadsAsItIsDescribed();
    void shortestElementTakesWhatIsSaid();
};

void tst_StreamFormat::pageHasAnExampleOfEverything() {
    QCOMPARE(documented().keys(), produced().keys());
}

void tst_StreamFormat::examplesAreWhatTheCodeMakes_data() {
    QTest::addColumn<QByteArray>("example");
    const QMap<QString, QByteArray> examples = documented();
    for (auto it = examples.cbegin(); it != examples.cend(); ++it) {
        // How a picture is compressed depends on the encoder.
        if (it.key() != QLatin1String("kind-5")) {
            QTest::newRow(qPrintable(it.key())) << it.value();
        }
    }
}

void tst_StreamFormat::examplesAreWhatTheCodeMakes() {
    QFETCH(QByteArray, example);
    QCOMPARE(example, produced().value(QLatin1String(QTest::currentDataTag())).toHex());
}

void tst_StreamFormat::pictureReadsAsItIsDescribed() {
    const QString kind = QStringLiteral("kind-5");
    for (const QByteArray& bytes :
         {QByteArray::fromHex(documented().value(kind)), produced().value(kind)}) {
        QDataStream stream(bytes);
        stream.setVersion(streamVersion);
        QString id;
        stream >> id;
        QCOMPARE(id, QStringLiteral("e"));
        QImage image;
        QVERIFY(Vorsk::RecordStream::readImage(stream, image));
        QVERIFY(stream.atEnd());
        QCOMPARE(image.convertToFormat(QImage::Format_RGB32), redAndBlue());
    }
}

void tst_StreamFormat::shortestElementTakesWhatIsSaid() {
    QFile page(QStringLiteral(STREAM_FORMAT_PAGE));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QRegularExpressionMatch match =
        QRegularExpression(QStringLiteral("The shortest element takes (\\d+) bytes"))
            .match(QString::fromUtf8(page.readAll()));
    QVERIFY(match.hasMatch());
    UIElement shortest{QString(), StandardType(), QStringLiteral("x")};
    // An id can be null only when it was read; a text can be null in any case.
    QCOMPARE(match.captured(1).toInt(), streamed(shortest).size() - 2);
}

QTEST_GUILESS_MAIN(tst_StreamFormat)
#include "tst_streamformat.moc"
