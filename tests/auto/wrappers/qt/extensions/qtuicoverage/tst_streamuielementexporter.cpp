// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/elementstream.h"
#include "recordstream/payloadreader.h"
#include "testlib/fakehook.h"
#include "testlib/recordprinter.h"
#include "testlib/testcase.h"
#include "tracking/streamuielementexporter.h"

#include <QDataStream>
#include <QTest>

#include <memory>

using TestLib::FakeHook;
using TestLib::RecordPrinter;
using Vorsk::RecordStream::PayloadReader;
using Vorsk::RecordStream::readElement;
using Vorsk::RecordStream::streamVersion;
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

QStringList printed(const FakeHook& hook) {
    RecordPrinter printer;
    QStringList lines;
    for (const FakeHook::Message& message : hook.messages) {
        lines.append(printer.print(kindOf(message), payloadOf(message)));
    }
    return lines;
}

/** The complete form of an element "e" that has nothing but id and types. */
const char elementHex[] = "00000002 0065  00000002 0042  00000002 0051  ffffffff ffffffff 00000000"
                          "000000  ffffffff  00000000 00000000 ffffffff ffffffff 00  00000000"
                          "ffffffff ffffffff  00000000 00000000";

} // namespace

class tst_StreamUIElementExporter : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void messageHasNameAndFourArguments();
    void hookIsAskedForItsNumbersAtEachSend();
    void elementRecordBeginsWithIdTwice();
    void elementRecordHoldsSubtreeAsItIs();
    void aTreeIsAnnouncedByOneRecordAndFollowed();
    void aTreeAnnouncedAgainIsFollowedOnce();
    void storeWithTwoRootsGivesTwoElementRecords();
    void emptyStoreGivesNothing();
    void equalValuesAreSentAgain();
    void lowerUsageIsNotSent();
    void recordsWaitForHookAndLeaveInOrder();
    void recordsWaitAgainWhenHookIsTakenAway();
    void exporterDropsWaitingRecordsWhenItDies();
    void elementInARingGivesAnElementRecord();
};

void tst_StreamUIElementExporter::messageHasNameAndFourArguments() {
    FakeHook hook;
    hook.channel = 77;
    hook.applicationId = 1234;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto element = newElement("e");
    attach(exporter, store, *element, hook);
    element->setWindowNode(true);
    QCOMPARE(hook.messages.size(), 1);
    const FakeHook::Message& message = hook.messages.first();
    QCOMPARE(message.channel, 77);
    QCOMPARE(message.name, QStringLiteral("uiCoverageData"));
    QCOMPARE(message.args.size(), 4);
    QCOMPARE(message.args.at(0), QVariant(1234));
    QCOMPARE(message.args.at(1), QVariant(1));
    QCOMPARE(message.args.at(2), QVariant(10));
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(message.args.at(i).userType(), int(QMetaType::Int));
    }
    QCOMPARE(message.args.at(3).userType(), int(QMetaType::QByteArray));
    QCOMPARE(payloadOf(message).toHex(), QByteArray("00000002006501"));
}

void tst_StreamUIElementExporter::hookIsAskedForItsNumbersAtEachSend() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto element = newElement("e");
    attach(exporter, store, *element, hook);
    hook.channel = 1;
    hook.applicationId = 10;
    element->setWindowNode(true);
    hook.channel = 2;
    hook.applicationId = 20;
    element->setWindowNode(true);
    QCOMPARE(hook.messages.at(0).channel, 1);
    QCOMPARE(hook.messages.at(0).args.at(0).toInt(), 10);
    QCOMPARE(hook.messages.at(1).channel, 2);
    QCOMPARE(hook.messages.at(1).args.at(0).toInt(), 20);
}

void tst_StreamUIElementExporter::elementRecordBeginsWithIdTwice() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto element = newElement("e");
    store.addElement(element.get());
    QCOMPARE(hook.messages.size(), 1);
    QCOMPARE(kindOf(hook.messages.first()), 1);
    QCOMPARE(payloadOf(hook.messages.first()).toHex(),
             QByteArray::fromHex(QByteArray("00000002 0065") + elementHex + "00000000 00000000")
                 .toHex());
}

void tst_StreamUIElementExporter::elementRecordHoldsSubtreeAsItIs() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto root = newElement("e");
    UIElement* child = newElement("c", "Child").release();
    UIElement* below = newElement("b", "Below").release();
    root->addChild(child);
    child->addChild(below);
    below->setText(QStringLiteral("text"));
    below->increaseUsage(clicked());
    child->registerEvent(UIEvent(QStringLiteral("shown")));
    store.addElement(root.get());
    below->increaseUsage(clicked());
    QCOMPARE(printed(hook),
             QStringList{QStringLiteral("kind 1 elementAdded #1 B/Q [#2 B/Child {shown=0} "
                                        "[#3 B/Below \"text\" {clicked=1}]]")});
    QDataStream stream(payloadOf(hook.messages.first()));
    stream.setVersion(streamVersion);
    QString id;
    stream >> id;
    const auto read = readElement(stream);
    QVERIFY(read);
    QVERIFY(stream.atEnd());
    QVERIFY(*read == *root);
}

void tst_StreamUIElementExporter::aTreeIsAnnouncedByOneRecordAndFollowed() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    const auto root = newElement("root");
    UIElement* const child = newElement("child").release();
    UIElement* const grandchild = newElement("grandchild").release();
    root->addChild(child);
    child->addChild(grandchild);
    root->addChild(grandchild); // listed twice, told of once
    exporter.announceTree(root.get());
    QCOMPARE(hook.messages.size(), 1);
    QCOMPARE(kindOf(hook.messages.at(0)), 1);
    PayloadReader payload(payloadOf(hook.messages.at(0)));
    QString id;
    payload >> id;
    QCOMPARE(id, root->id());
    const auto read = readElement(payload);
    QVERIFY(read != nullptr);
    QCOMPARE(read->children().size(), 2);
    QCOMPARE(read->children().at(0)->id(), child->id());
    QCOMPARE(read->children().at(0)->children().at(0)->id(), grandchild->id());

    int messages = 1;
    for (UIElement* element : {root.get(), child, grandchild}) {
        element->setText(QStringLiteral("text"));
        QCOMPARE(hook.messages.size(), ++messages);
        QCOMPARE(kindOf(hook.messages.last()), 7);
    }
}

void tst_StreamUIElementExporter::aTreeAnnouncedAgainIsFollowedOnce() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    const auto root = newElement("root");
    UIElement* const child = newElement("child").release();
    exporter.announceTree(child);
    root->addChild(child);
    exporter.announceTree(root.get());
    QCOMPARE(hook.messages.size(), 2);
    child->setText(QStringLiteral("text"));
    QCOMPARE(hook.messages.size(), 3);
}

void tst_StreamUIElementExporter::storeWithTwoRootsGivesTwoElementRecords() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto first = newElement("1", "First");
    const auto second = newElement("2", "Second");
    UIElement* child = newElement("c", "Child").release();
    store.addElement(child);
    store.addElement(second.get());
    store.addElement(first.get());
    first->addChild(child);
    exporter.addElementStore(&store);
    QCOMPARE(printed(hook),
             (QStringList{QStringLiteral("kind 1 elementAdded #1 B/Second"),
                          QStringLiteral("kind 1 elementAdded #2 B/First [#3 B/Child]")}));
}

void tst_StreamUIElementExporter::emptyStoreGivesNothing() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    QVERIFY(hook.messages.isEmpty());
}

void tst_StreamUIElementExporter::equalValuesAreSentAgain() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto element = newElement("e");
    attach(exporter, store, *element, hook);
    for (int i = 0; i < 2; ++i) {
        element->setText(QStringLiteral("t"));
        element->setGeometry(ElementGeometry());
        element->registerEvent(clicked());
        element->setUsage(clicked(), 3);
    }
    QCOMPARE(printed(hook).join(QLatin1Char('\n')),
             QStringLiteral("kind 7 textChanged #1 \"t\"\n"
                            "kind 4 geometryChanged #1 (0,0 0x0)\n"
                            "kind 3 eventRegistered #1 clicked\n"
                            "kind 11 usageIncreased #1 clicked=3\n"
                            "kind 7 textChanged #1 \"t\"\n"
                            "kind 4 geometryChanged #1 (0,0 0x0)"));
}

void tst_StreamUIElementExporter::lowerUsageIsNotSent() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto element = newElement("e");
    element->registerEvent(clicked());
    element->setUsage(clicked(), 3);
    attach(exporter, store, *element, hook);
    element->setUsage(clicked(), 2);
    QVERIFY(hook.messages.isEmpty());
}

void tst_StreamUIElementExporter::recordsWaitForHookAndLeaveInOrder() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto element = newElement("e");
    attach(exporter, store, *element, hook);
    hook.setPresent(false);
    element->setText(QStringLiteral("1"));
    element->setWindowNode(true);
    element->setText(QStringLiteral("2"));
    QVERIFY(hook.messages.isEmpty());
    hook.setPresent(true);
    QVERIFY(hook.messages.isEmpty());
    element->setTransparentNode(true);
    QCOMPARE(printed(hook).join(QLatin1Char('\n')),
             QStringLiteral("kind 7 textChanged #1 \"1\"\n"
                            "kind 10 windowNodeChanged #1 true\n"
                            "kind 7 textChanged #1 \"2\"\n"
                            "kind 8 transparentNodeChanged #1 true"));
}

void tst_StreamUIElementExporter::recordsWaitAgainWhenHookIsTakenAway() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    const auto element = newElement("e");
    attach(exporter, store, *element, hook);
    element->setText(QStringLiteral("1"));
    hook.setPresent(false);
    element->setText(QStringLiteral("2"));
    QCOMPARE(hook.messages.size(), 1);
    hook.setPresent(true);
    element->setText(QStringLiteral("3"));
    QCOMPARE(printed(hook).mid(1), (QStringList{QStringLiteral("kind 7 textChanged #1 \"2\""),
                                                QStringLiteral("kind 7 textChanged #1 \"3\"")}));
}

void tst_StreamUIElementExporter::exporterDropsWaitingRecordsWhenItDies() {
    FakeHook hook;
    ElementStore store;
    const auto element = newElement("e");
    hook.setPresent(false);
    {
        StreamUIElementExporter exporter;
        exporter.addElementStore(&store);
        store.addElement(element.get());
        hook.setPresent(true);
    }
    QVERIFY(hook.messages.isEmpty());
}

void tst_StreamUIElementExporter::elementInARingGivesAnElementRecord() {
    FakeHook hook;
    StreamUIElementExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto element = newElement("e");
    UIElement* child = newElement("c").release();
    element->addChild(child);
    child->addChild(element.get());
    store.addElement(element.get());
    QCOMPARE(printed(hook), QStringList{QStringLiteral("kind 1 elementAdded #1 B/Q [#2 B/Q]")});
}

QTEST_GUILESS_MAIN(tst_StreamUIElementExporter)
#include "tst_streamuielementexporter.moc"
