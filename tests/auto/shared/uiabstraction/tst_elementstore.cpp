// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/elementstore.h"
#include "uiabstraction/uielement.h"

#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <random>
#include <vector>

using Vorsk::UIAbstraction::ElementStore;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

namespace {

/** Removal is for subclasses. */
class RemovingStore : public ElementStore {
public:
    using ElementStore::removeFirstEntry;
};

UIElement* newElement(const QString& id = QString()) {
    return new UIElement(QStringLiteral("QWidget"), StandardType(), id);
}

} // namespace

class tst_ElementStore : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void announcesAdditionsAsItsOnlySignal();
    void registersPointerType();
    void newStoreIsEmpty();
    void rootsAreListedElementsWithoutParent();
    void rootsAreInListOrder();
    void addingTwiceListsAndAnnouncesTwice();
    void elementIsListedWhenItIsAnnounced();
    void elementsIsACopy();
    void elementByIdComparesExactly_data();
    void elementByIdComparesExactly();
    void elementByIdReturnsFirstOfEqualIds();
    void clearDeletesRootsWithSubtrees();
    void clearKeepsChildrenWhoseRootIsNotListed();
    void clearDeletesRootListedTwiceOnce();
    void clearDeletesChildOfTwoRootsOnce();
    void clearedStoreCanBeUsedAgain();
    void destructorDeletesNoElement();
    void removalTakesFirstEntryAndAnnouncesNothing();
    void removalOfUnlistedElementDoesNothing();
    void removalKeepsOrderOfMany();
    void behavesAsPlainList_data();
    void behavesAsPlainList();
};

void tst_ElementStore::announcesAdditionsAsItsOnlySignal() {
    const QMetaObject& meta = ElementStore::staticMetaObject;
    QCOMPARE(QByteArray(meta.className()), QByteArray("Vorsk::UIAbstraction::ElementStore"));
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.methodSignature(),
             QByteArray("elementAdded(const Vorsk::UIAbstraction::UIElement*)"));
    QCOMPARE(method.parameterNames(), QList<QByteArray>{"element"});
}

void tst_ElementStore::registersPointerType() {
    const ElementStore store;
    constexpr char name[] = "const Vorsk::UIAbstraction::ElementStore*";
    const int id = QMetaType::type(name);
    QVERIFY(id != QMetaType::UnknownType);
    QCOMPARE(QByteArray(QMetaType::typeName(id)), QByteArray(name));
}

void tst_ElementStore::newStoreIsEmpty() {
    const ElementStore store;
    QVERIFY(store.rootElements().isEmpty());
    QVERIFY(store.elements().isEmpty());
    QCOMPARE(store.elementById(QString()), nullptr);
    QVERIFY(!store.containsElement(QString()));
    QCOMPARE(store.parent(), nullptr);
}

void tst_ElementStore::rootsAreListedElementsWithoutParent() {
    ElementStore store;
    const std::unique_ptr<UIElement> root(newElement());
    UIElement* child = newElement();
    store.addElement(root.get());
    root->addChild(child);
    store.addElement(child);
    QCOMPARE(store.rootElements(), QList<UIElement*>{root.get()});
    QCOMPARE(store.elements(), (QList<UIElement*>{root.get(), child}));
}

void tst_ElementStore::rootsAreInListOrder() {
    ElementStore store;
    const std::unique_ptr<UIElement> first(newElement());
    const std::unique_ptr<UIElement> second(newElement());
    UIElement* child = newElement();
    store.addElement(second.get());
    store.addElement(child);
    store.addElement(first.get());
    QCOMPARE(store.rootElements(), (QList<UIElement*>{second.get(), child, first.get()}));
    // An element that gets a parent while it is listed is no root any more.
    first->addChild(child);
    QCOMPARE(store.rootElements(), (QList<UIElement*>{second.get(), first.get()}));
}

void tst_ElementStore::addingTwiceListsAndAnnouncesTwice() {
    ElementStore store;
    const std::unique_ptr<UIElement> element(newElement());
    const QSignalSpy added(&store, &ElementStore::elementAdded);
    store.addElement(element.get());
    store.addElement(element.get());
    QCOMPARE(added.size(), 2);
    QCOMPARE(added.at(1).at(0).value<const UIElement*>(), element.get());
    QCOMPARE(store.elements(), (QList<UIElement*>{element.get(), element.get()}));
    QCOMPARE(store.rootElements(), (QList<UIElement*>{element.get(), element.get()}));
}

void tst_ElementStore::elementIsListedWhenItIsAnnounced() {
    ElementStore store;
    const std::unique_ptr<UIElement> element(newElement());
    bool isListed = false;
    connect(&store, &ElementStore::elementAdded, this, [&](const UIElement* added) {
        isListed = store.elements().last() == added && store.containsElement(added->id());
    });
    store.addElement(element.get());
    QVERIFY(isListed);
}

void tst_ElementStore::elementsIsACopy() {
    ElementStore store;
    const std::unique_ptr<UIElement> element(newElement());
    const QList<UIElement*> before = store.elements();
    store.addElement(element.get());
    QVERIFY(before.isEmpty());
    store.elements().clear();
    QCOMPARE(store.elements().size(), 1);
}

void tst_ElementStore::elementByIdComparesExactly_data() {
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("equal") << QStringLiteral("{abc}") << true;
    QTest::newRow("without braces") << QStringLiteral("abc") << false;
    QTest::newRow("other case") << QStringLiteral("{ABC}") << false;
    QTest::newRow("with a blank") << QStringLiteral("{abc} ") << false;
    QTest::newRow("empty") << QStringLiteral("") << false;
    QTest::newRow("null") << QString() << false;
}

void tst_ElementStore::elementByIdComparesExactly() {
    QFETCH(QString, id);
    QFETCH(bool, isFound);
    ElementStore store;
    const std::unique_ptr<UIElement> other(newElement());
    const std::unique_ptr<UIElement> element(newElement(QStringLiteral("{abc}")));
    store.addElement(other.get());
    store.addElement(element.get());
    QCOMPARE(store.elementById(id), isFound ? element.get() : nullptr);
    QCOMPARE(store.containsElement(id), isFound);
}

void tst_ElementStore::elementByIdReturnsFirstOfEqualIds() {
    RemovingStore store;
    const std::unique_ptr<UIElement> first(newElement(QStringLiteral("id")));
    const std::unique_ptr<UIElement> second(newElement(QStringLiteral("id")));
    store.addElement(first.get());
    store.addElement(second.get());
    QCOMPARE(store.elementById(QStringLiteral("id")), first.get());
    store.removeFirstEntry(first.get());
    QCOMPARE(store.elementById(QStringLiteral("id")), second.get());
}

void tst_ElementStore::clearDeletesRootsWithSubtrees() {
    ElementStore store;
    UIElement* root = newElement();
    UIElement* listedChild = newElement();
    root->addChild(listedChild);
    listedChild->addChild(newElement());
    const QList<QPointer<UIElement>> guards{root, listedChild, listedChild->children().first()};
    store.addElement(listedChild);
    store.addElement(root);
    store.clear();
    for (const QPointer<UIElement>& guard : guards) {
        QVERIFY(guard.isNull());
    }
    QVERIFY(store.elements().isEmpty());
    QVERIFY(store.rootElements().isEmpty());
}

void tst_ElementStore::clearKeepsChildrenWhoseRootIsNotListed() {
    ElementStore store;
    const std::unique_ptr<UIElement> root(newElement());
    root->addChild(newElement());
    const QPointer<UIElement> child(root->children().first());
    store.addElement(child);
    store.clear();
    QVERIFY(!child.isNull());
    QCOMPARE(root->children(), QList<UIElement*>{child.data()});
    QVERIFY(store.elements().isEmpty());
}

void tst_ElementStore::clearDeletesRootListedTwiceOnce() {
    ElementStore store;
    UIElement* root = newElement();
    const QSignalSpy destroyed(root, &QObject::destroyed);
    store.addElement(root);
    store.addElement(root);
    store.clear();
    QCOMPARE(destroyed.size(), 1);
}

void tst_ElementStore::clearDeletesChildOfTwoRootsOnce() {
    ElementStore store;
    UIElement* first = newElement();
    UIElement* second = newElement();
    UIElement* child = newElement();
    first->addChild(child);
    second->addChild(child);
    child->addChild(child);
    int deaths = 0;
    for (UIElement* element : {first, second, child}) {
        connect(element, &QObject::destroyed, this, [&deaths] { ++deaths; });
        store.addElement(element);
    }
    store.clear();
    QCOMPARE(deaths, 3);
}

void tst_ElementStore::clearedStoreCanBeUsedAgain() {
    RemovingStore store;
    store.addElement(newElement());
    store.clear();
    const std::unique_ptr<UIElement> element(newElement());
    store.addElement(element.get());
    QCOMPARE(store.elements(), QList<UIElement*>{element.get()});
    store.removeFirstEntry(element.get());
    QVERIFY(store.elements().isEmpty());
}

void tst_ElementStore::destructorDeletesNoElement() {
    const std::unique_ptr<UIElement> element(newElement());
    const QPointer<UIElement> guard(element.get());
    {
        ElementStore store;
        store.addElement(element.get());
    }
    QVERIFY(!guard.isNull());
}

void tst_ElementStore::removalTakesFirstEntryAndAnnouncesNothing() {
    RemovingStore store;
    const std::unique_ptr<UIElement> a(newElement());
    const std::unique_ptr<UIElement> b(newElement());
    for (UIElement* element : {a.get(), b.get(), a.get()}) {
        store.addElement(element);
    }
    const QSignalSpy added(&store, &ElementStore::elementAdded);
    store.removeFirstEntry(a.get());
    QCOMPARE(store.elements(), (QList<UIElement*>{b.get(), a.get()}));
    store.removeFirstEntry(a.get());
    QCOMPARE(store.elements(), QList<UIElement*>{b.get()});
    QCOMPARE(added.size(), 0);
}

void tst_ElementStore::removalOfUnlistedElementDoesNothing() {
    RemovingStore store;
    const std::unique_ptr<UIElement> listed(newElement());
    const std::unique_ptr<UIElement> other(newElement());
    store.addElement(listed.get());
    store.removeFirstEntry(other.get());
    store.removeFirstEntry(nullptr);
    QCOMPARE(store.elements(), QList<UIElement*>{listed.get()});
}

void tst_ElementStore::removalKeepsOrderOfMany() {
    constexpr int count = 20000;
    RemovingStore store;
    std::vector<std::unique_ptr<UIElement>> elements;
    QList<UIElement*> kept;
    for (int i = 0; i < count; ++i) {
        elements.emplace_back(newElement(QString::number(i)));
        store.addElement(elements.back().get());
    }
    for (int i = 0; i < count; ++i) {
        if (i % 7 == 3) {
            kept.append(elements[static_cast<std::size_t>(i)].get());
        } else {
            store.removeFirstEntry(elements[static_cast<std::size_t>(i)].get());
        }
    }
    QCOMPARE(store.elements(), kept);
    QCOMPARE(store.elementById(QStringLiteral("4")), nullptr);
    QCOMPARE(store.elementById(QStringLiteral("10")), kept.at(1));
}

void tst_ElementStore::behavesAsPlainList_data() {
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("removalsInTen");
    for (quint32 seed = 1; seed <= 8; ++seed) {
        QTest::addRow("growing, seed %u", seed) << seed << 3;
        QTest::addRow("steady, seed %u", seed) << seed << 5;
        QTest::addRow("shrinking, seed %u", seed) << seed << 8;
    }
}

void tst_ElementStore::behavesAsPlainList() {
    QFETCH(quint32, seed);
    QFETCH(int, removalsInTen);
    std::mt19937 random(seed);
    std::vector<std::unique_ptr<UIElement>> elements;
    elements.reserve(300);
    for (int i = 0; i < 300; ++i) {
        elements.emplace_back(newElement(QString::number(i % 250)));
    }
    RemovingStore store;
    QList<UIElement*> plain;
    const auto pick = [&] { return elements[random() % elements.size()].get(); };
    // Enough entries to begin with for removals to outnumber what is left.
    for (int i = 0; i < 300; ++i) {
        store.addElement(elements[static_cast<std::size_t>(i)].get());
        plain.append(elements[static_cast<std::size_t>(i)].get());
    }
    for (int step = 0; step < 1500; ++step) {
        UIElement* element = pick();
        if (static_cast<int>(random() % 10) < removalsInTen) {
            store.removeFirstEntry(element);
            plain.removeOne(element);
        } else {
            store.addElement(element);
            plain.append(element);
        }
        const QString id = pick()->id();
        const auto byId = std::find_if(plain.cbegin(), plain.cend(),
                                       [&id](const UIElement* e) { return e->id() == id; });
        QCOMPARE(store.elementById(id), byId == plain.cend() ? nullptr : *byId);
        if (step % 10 == 0) {
            QCOMPARE(store.elements(), plain);
            QCOMPARE(store.rootElements(), plain);
        }
    }
    QCOMPARE(store.elements(), plain);
}

QTEST_GUILESS_MAIN(tst_ElementStore)
#include "tst_elementstore.moc"
