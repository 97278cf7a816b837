// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "tracking/abstractuielementexporter.h"

#include <QImage>
#include <QMetaMethod>
#include <QTest>

#include <cstring>
#include <functional>
#include <memory>

using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::ElementStore;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;
using Vorsk::UICoverage::AbstractUIElementExporter;

namespace {

QString number(int value) {
    return QString::number(value);
}

/** Keeps every call as one line: the slot, the element's concrete type, the value. */
class RecordingExporter : public AbstractUIElementExporter {
public:
    QStringList calls;
    std::function<void(const UIElement*)> whenElementAdded;

    void onElementStoreAdded(const ElementStore* store) override {
        calls.append(QStringLiteral("elementStore ") + number(store->elements().size()));
    }
    void onElementAdded(const UIElement* element) override {
        note("element", element, QString());
        if (whenElementAdded) {
            whenElementAdded(element);
        }
    }
    void onChildAdded(const UIElement* element, const UIElement* child) override {
        note("child", element, child->concreteType());
    }
    void onEventRegistered(const UIElement* element, UIEvent event) override {
        note("event", element, event.name());
    }
    void onGeometryChanged(const UIElement* element, QRect geometry) override {
        note("geometry", element,
             QStringList{number(geometry.left()), number(geometry.top()), number(geometry.right()),
                         number(geometry.bottom())}
                 .join(QLatin1Char(',')));
    }
    void onImageChanged(const UIElement* element, QImage image) override {
        note("image", element, number(image.width()));
    }
    void onStandardTypeChanged(const UIElement* element, StandardType standardType) override {
        note("standardType", element, standardType.name());
    }
    void onSubgraphTransparentChanged(const UIElement* element,
                                      bool isSubgraphTransparent) override {
        note("subgraphTransparent", element, number(isSubgraphTransparent ? 1 : 0));
    }
    void onTextChanged(const UIElement* element, QString text) override {
        note("text", element, text);
    }
    void onTransparentNodeChanged(const UIElement* element, bool isTransparentNode) override {
        note("transparentNode", element, number(isTransparentNode ? 1 : 0));
    }
    void onUsageIncreased(const UIElement* element, UIEvent event, int usage) override {
        note("usage", element, event.name() + QLatin1Char('=') + number(usage));
    }
    void onWindowNodeChanged(const UIElement* element, bool isWindowNode) override {
        note("windowNode", element, number(isWindowNode ? 1 : 0));
    }
    void onAttributeChanged(const UIElement* element, const QString& name,
                            const QString& value) override {
        note("attribute", element,
             name + QLatin1Char('=') + (value.isNull() ? QStringLiteral("null") : value));
    }

private:
    void note(const char* slot, const UIElement* element, const QString& value) {
        calls.append(QLatin1String(slot) + QLatin1Char(' ') + element->concreteType() +
                     (value.isEmpty() ? QString() : QLatin1Char(' ') + value));
    }
};

std::unique_ptr<UIElement> newElement(const char* concreteType) {
    return std::make_unique<UIElement>(QLatin1String(concreteType), StandardType(), QString());
}

/** Where a virtual member function stands in the vtable. */
template <class Function>
std::ptrdiff_t slotOf(Function function) {
    // A pointer to a virtual member function begins with its offset: on ARM as it is, elsewhere
    // plus one.
#if defined(__arm__) || defined(__aarch64__)
    constexpr std::ptrdiff_t more = 0;
#else
    constexpr std::ptrdiff_t more = 1;
#endif
    std::ptrdiff_t offset = 0;
    static_assert(sizeof function >= sizeof offset);
    std::memcpy(&offset, &function, sizeof offset);
    return (offset - more) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

using Change = std::function<void(UIElement&)>;

} // namespace

Q_DECLARE_METATYPE(Change)

class tst_AbstractUIElementExporter : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void slotsAreRegisteredInOrder_data();
    void slotsAreRegisteredInOrder();
    void slotsCanBeInvokedByName();
    void virtualSlotsFollowThoseOfQObject();
    void addElementStoreAnnouncesStoreOnce();
    void elementsInStoreBeforeAreNotAttached();
    void everyChangeReachesItsSlot_data();
    void everyChangeReachesItsSlot();
    void elementIsAttachedBeforeItIsAnnounced();
    void elementThatIsInNoStoreIsNotSeen();
    void attachedElementIsSeenButNotAnnounced();
    void attachingAgainChangesNothing();
    void treeIsAnnouncedByItsRoot();
    void elementAddedTwiceIsAttachedTwice();
    void storeAddedTwiceAttachesTwice();
    void twoStoresShareAnExporter();
    void invalidGeometryReachesSlotWithItsRectangle();
    void changesAfterExporterReachNobody();
    void storeAndElementMayDieFirst();
};

void tst_AbstractUIElementExporter::slotsAreRegisteredInOrder_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("types");
    QTest::addColumn<QByteArray>("names");
    QTest::addColumn<int>("access");
    const QByteArray element = "const Vorsk::UIAbstraction::UIElement*";
    const QByteArray event = element + ",Vorsk::UIAbstraction::UIEvent";
    int index = 0;
    const auto row = [&index](const char* slot, const QByteArray& types, const char* names,
                              QMetaMethod::Access access = QMetaMethod::Protected) {
        QTest::newRow(slot) << index++ << types << QByteArray(names) << int(access);
    };
    row("onElementStoreAdded", "const Vorsk::UIAbstraction::ElementStore*", "elementStore");
    row("onElementAdded", element, "element");
    row("onChildAdded", element + ',' + element, "element,child");
    row("onEventRegistered", event, "element,event");
    row("onGeometryChanged", element + ",QRect", "element,geometry");
    row("onImageChanged", element + ",QImage", "element,image");
    row("onStandardTypeChanged", element + ",Vorsk::UIAbstraction::StandardType",
        "element,standardType");
    row("onSubgraphTransparentChanged", element + ",bool", "element,isSubgraphTransparent");
    row("onTextChanged", element + ",QString", "element,text");
    row("onTransparentNodeChanged", element + ",bool", "element,isTransparentNode");
    row("onUsageIncreased", event + ",int", "element,event,usage");
    row("onWindowNodeChanged", element + ",bool", "element,isWindowNode");
    row("onElementAdded_internal", element, "element", QMetaMethod::Private);
}

void tst_AbstractUIElementExporter::slotsAreRegisteredInOrder() {
    QFETCH(int, index);
    QFETCH(QByteArray, types);
    const QMetaObject& meta = AbstractUIElementExporter::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 13);
    const QMetaMethod method = meta.method(meta.methodOffset() + index);
    QCOMPARE(method.methodSignature(), QByteArray(QTest::currentDataTag()) + '(' + types + ')');
    QTEST(method.parameterNames().join(','), "names");
    QTEST(int(method.access()), "access");
    QCOMPARE(method.methodType(), QMetaMethod::Slot);
    QCOMPARE(method.returnType(), int(QMetaType::Void));
}

void tst_AbstractUIElementExporter::slotsCanBeInvokedByName() {
    RecordingExporter exporter;
    const auto element = newElement("A");
    QVERIFY(QMetaObject::invokeMethod(&exporter, "onTextChanged",
                                      Q_ARG(const Vorsk::UIAbstraction::UIElement*, element.get()),
                                      Q_ARG(QString, QStringLiteral("text"))));
    QCOMPARE(exporter.calls, QStringList{QStringLiteral("text A text")});
}

void tst_AbstractUIElementExporter::virtualSlotsFollowThoseOfQObject() {
    using E = RecordingExporter;
    // metaObject, qt_metacast, qt_metacall, two destructors, event, eventFilter, timerEvent,
    // childEvent, customEvent, connectNotify, disconnectNotify.
    constexpr std::ptrdiff_t first = 12;
    const QList<std::ptrdiff_t> found{
        slotOf(&E::onElementStoreAdded),   slotOf(&E::onElementAdded),
        slotOf(&E::onChildAdded),          slotOf(&E::onEventRegistered),
        slotOf(&E::onGeometryChanged),     slotOf(&E::onImageChanged),
        slotOf(&E::onStandardTypeChanged), slotOf(&E::onSubgraphTransparentChanged),
        slotOf(&E::onTextChanged),         slotOf(&E::onTransparentNodeChanged),
        slotOf(&E::onUsageIncreased),      slotOf(&E::onWindowNodeChanged),
        slotOf(&E::onAttributeChanged)};
    for (int i = 0; i < found.size(); ++i) {
        QCOMPARE(found.at(i), first + i);
    }
}

void tst_AbstractUIElementExporter::addElementStoreAnnouncesStoreOnce() {
    RecordingExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    QCOMPARE(exporter.calls, QStringList{QStringLiteral("elementStore 0")});
}

void tst_AbstractUIElementExporter::elementsInStoreBeforeAreNotAttached() {
    RecordingExporter exporter;
    ElementStore store;
    const auto before = newElement("before");
    const auto after = newElement("after");
    store.addElement(before.get());
    exporter.addElementStore(&store);
    QCOMPARE(exporter.calls, QStringList{QStringLiteral("elementStore 1")});
    before->setText(QStringLiteral("not seen"));
    store.addElement(after.get());
    after->setText(QStringLiteral("seen"));
    QCOMPARE(exporter.calls.mid(1),
             (QStringList{QStringLiteral("element after"), QStringLiteral("text after seen")}));
}

void tst_AbstractUIElementExporter::everyChangeReachesItsSlot_data() {
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("call");
    const UIEvent clicked(QStringLiteral("clicked"));
    const auto row = [](const char* call, const Change& change) {
        QTest::newRow(call) << change << QString::fromLatin1(call);
    };
    row("child A B", [](UIElement& e) { e.addChild(newElement("B").release()); });
    row("event A clicked", [=](UIElement& e) { e.registerEvent(clicked); });
    row("geometry A 1,2,3,5",
        [](UIElement& e) { e.setGeometry(ElementGeometry(QRect(1, 2, 3, 4), true)); });
    row("image A 7", [](UIElement& e) { e.setImage(QImage(7, 1, QImage::Format_RGB32)); });
    row("standardType A Menu",
        [](UIElement& e) { e.setStandardType(StandardType(QStringLiteral("Menu"))); });
    row("subgraphTransparent A 1", [](UIElement& e) { e.setSubgraphTransparent(true); });
    row("text A new", [](UIElement& e) { e.setText(QStringLiteral("new")); });
    row("transparentNode A 1", [](UIElement& e) { e.setTransparentNode(true); });
    row("usage A clicked=1", [=](UIElement& e) { e.increaseUsage(clicked); });
    row("windowNode A 0", [](UIElement& e) { e.setWindowNode(false); });
    row("attribute A k=v",
        [](UIElement& e) { e.setAttribute(QStringLiteral("k"), QStringLiteral("v")); });
}

void tst_AbstractUIElementExporter::everyChangeReachesItsSlot() {
    QFETCH(Change, change);
    QFETCH(QString, call);
    RecordingExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto element = newElement("A");
    store.addElement(element.get());
    exporter.calls.clear();
    change(*element);
    QCOMPARE(exporter.calls, QStringList{call});
}

void tst_AbstractUIElementExporter::elementIsAttachedBeforeItIsAnnounced() {
    RecordingExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto element = newElement("A");
    exporter.whenElementAdded = [&element](const UIElement* added) {
        QCOMPARE(added, element.get());
        element->setText(QStringLiteral("inside"));
    };
    store.addElement(element.get());
    QCOMPARE(exporter.calls.mid(1),
             (QStringList{QStringLiteral("element A"), QStringLiteral("text A inside")}));
}

void tst_AbstractUIElementExporter::elementThatIsInNoStoreIsNotSeen() {
    RecordingExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto element = newElement("A");
    store.addElement(element.get());
    UIElement* child = newElement("B").release();
    element->addChild(child);
    exporter.calls.clear();
    child->setText(QStringLiteral("not seen"));
    QVERIFY(exporter.calls.isEmpty());
}

void tst_AbstractUIElementExporter::attachedElementIsSeenButNotAnnounced() {
    RecordingExporter exporter;
    const auto element = newElement("A");
    exporter.attachTo(element.get());
    QVERIFY(exporter.calls.isEmpty());
    element->setText(QStringLiteral("t"));
    QCOMPARE(exporter.calls, QStringList{QStringLiteral("text A t")});
}

void tst_AbstractUIElementExporter::attachingAgainChangesNothing() {
    RecordingExporter exporter;
    RecordingExporter other;
    const auto element = newElement("A");
    exporter.attachTo(element.get());
    other.attachTo(element.get());
    exporter.attachTo(element.get());
    element->setText(QStringLiteral("t"));
    QCOMPARE(exporter.calls, QStringList{QStringLiteral("text A t")});
    QCOMPARE(other.calls, exporter.calls);
}

void tst_AbstractUIElementExporter::treeIsAnnouncedByItsRoot() {
    RecordingExporter exporter;
    const auto root = newElement("root");
    UIElement* const child = newElement("child").release();
    root->addChild(child);
    exporter.whenElementAdded = [child](const UIElement*) {
        child->setText(QStringLiteral("inside")); // attached before the announcement
    };
    exporter.announceTree(root.get());
    QCOMPARE(exporter.calls,
             (QStringList{QStringLiteral("element root"), QStringLiteral("text child inside")}));
}

void tst_AbstractUIElementExporter::elementAddedTwiceIsAttachedTwice() {
    RecordingExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto element = newElement("A");
    store.addElement(element.get());
    store.addElement(element.get());
    exporter.calls.clear();
    element->setText(QStringLiteral("t"));
    element->registerEvent(UIEvent(QStringLiteral("e")));
    QCOMPARE(exporter.calls,
             (QStringList{QStringLiteral("text A t"), QStringLiteral("text A t"),
                          QStringLiteral("event A e"), QStringLiteral("event A e")}));
}

void tst_AbstractUIElementExporter::storeAddedTwiceAttachesTwice() {
    RecordingExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    exporter.addElementStore(&store);
    const auto element = newElement("A");
    store.addElement(element.get());
    element->setText(QStringLiteral("t"));
    QCOMPARE(exporter.calls,
             (QStringList{QStringLiteral("elementStore 0"), QStringLiteral("elementStore 0"),
                          QStringLiteral("element A"), QStringLiteral("element A"),
                          QStringLiteral("text A t"), QStringLiteral("text A t")}));
}

void tst_AbstractUIElementExporter::twoStoresShareAnExporter() {
    RecordingExporter exporter;
    ElementStore first;
    ElementStore second;
    exporter.addElementStore(&first);
    exporter.addElementStore(&second);
    exporter.calls.clear();
    const auto a = newElement("A");
    const auto b = newElement("B");
    second.addElement(b.get());
    first.addElement(a.get());
    QCOMPARE(exporter.calls,
             (QStringList{QStringLiteral("element B"), QStringLiteral("element A")}));
}

void tst_AbstractUIElementExporter::invalidGeometryReachesSlotWithItsRectangle() {
    RecordingExporter exporter;
    ElementStore store;
    exporter.addElementStore(&store);
    const auto element = newElement("A");
    store.addElement(element.get());
    exporter.calls.clear();
    element->setGeometry(ElementGeometry(QRect(1, 2, 3, 4), false));
    element->setGeometry(ElementGeometry());
    QCOMPARE(exporter.calls, (QStringList{QStringLiteral("geometry A 1,2,3,5"),
                                          QStringLiteral("geometry A 0,0,-1,-1")}));
}

void tst_AbstractUIElementExporter::changesAfterExporterReachNobody() {
    ElementStore store;
    const auto element = newElement("A");
    {
        RecordingExporter exporter;
        exporter.addElementStore(&store);
        store.addElement(element.get());
    }
    element->setText(QStringLiteral("t"));
    store.addElement(element.get());
    QCOMPARE(element->text(), QStringLiteral("t"));
}

void tst_AbstractUIElementExporter::storeAndElementMayDieFirst() {
    RecordingExporter exporter;
    const auto kept = newElement("kept");
    {
        ElementStore store;
        exporter.addElementStore(&store);
        const auto element = newElement("A");
        store.addElement(element.get());
        store.addElement(kept.get());
    }
    exporter.calls.clear();
    kept->setText(QStringLiteral("t"));
    // An element stays attached when its store is gone.
    QCOMPARE(exporter.calls, QStringList{QStringLiteral("text kept t")});
}

QTEST_GUILESS_MAIN(tst_AbstractUIElementExporter)
#include "tst_abstractuielementexporter.moc"
