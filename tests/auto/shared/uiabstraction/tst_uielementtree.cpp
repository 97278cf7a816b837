// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QHash>
#include <QPoint>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <vector>

using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

/** Children lists of UIElement and who dies with whom, in trees and in what is none. */
class tst_UIElementTree : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void addChildListsInOrder();
    void addChildTwiceAnnouncesOnce();
    void childIsListedBeforeItIsAnnounced();
    void childKeepsItsFirstParent();
    void deletesSubtreeOnce();
    void deletedChildLeavesItsParentsList();
    void elementOfTwoParentsDiesOnce_data();
    void elementOfTwoParentsDiesOnce();
    void deletedElementLeavesAllItsParentsLists();
    void elementListedInItselfDies();
    void ringDiesOnceFromAnyMember_data();
    void ringDiesOnceFromAnyMember();
    void ringMadeByMovingItemsDiesOnce();
    void manyChildrenOfTwoParentsDie();
    void deepChainNeitherOverflowsNorLeaks();
    void deepChainsCompare();
    void equalityEndsOnCycles();

private:
    UIElement* newElement(const char* concreteType = "QWidget");

    /** How often each element that newElement() made has died, by its address when alive. */
    QHash<const void*, int> m_deaths;
};

void tst_UIElementTree::init() {
    TestCase::init();
    m_deaths.clear();
}

UIElement* tst_UIElementTree::newElement(const char* concreteType) {
    auto* element = new UIElement(QLatin1String(concreteType), StandardType(), QString());
    // Addresses are used again, so that an element counts as another one at each birth.
    m_deaths.insert(element, 0);
    connect(element, &QObject::destroyed, this, [this, element] { ++m_deaths[element]; });
    return element;
}

void tst_UIElementTree::addChildListsInOrder() {
    UIElement root{QString(), StandardType(), QString()};
    const QSignalSpy added(&root, &UIElement::childAdded);
    UIElement* first = newElement();
    UIElement* second = newElement();
    root.addChild(first);
    root.addChild(second);
    QCOMPARE(root.children(), (QList<UIElement*>{first, second}));
    QCOMPARE(first->parent(), &root);
    QVERIFY(!first->isRoot());
    QVERIFY(root.isRoot());
    QCOMPARE(added.size(), 2);
    QCOMPARE(added.at(0).at(0).value<const UIElement*>(), &root);
    QCOMPARE(added.at(0).at(1).value<const UIElement*>(), first);
    QCOMPARE(added.at(1).at(1).value<const UIElement*>(), second);
}

void tst_UIElementTree::addChildTwiceAnnouncesOnce() {
    UIElement root{QString(), StandardType(), QString()};
    UIElement* child = newElement();
    const QSignalSpy added(&root, &UIElement::childAdded);
    root.addChild(child);
    root.addChild(newElement());
    root.addChild(child);
    QCOMPARE(added.size(), 2);
    QCOMPARE(root.children().size(), 2);
    QCOMPARE(root.children().first(), child);
}

void tst_UIElementTree::childIsListedBeforeItIsAnnounced() {
    UIElement root{QString(), StandardType(), QString()};
    bool isListed = false;
    connect(&root, &UIElement::childAdded, this,
            [&isListed](const UIElement* element, const UIElement* child) {
                isListed = element->children().last() == child && child->parent() == element;
            });
    root.addChild(newElement());
    QVERIFY(isListed);
}

void tst_UIElementTree::childKeepsItsFirstParent() {
    UIElement first{QString(), StandardType(), QString()};
    UIElement second{QString(), StandardType(), QString()};
    UIElement* child = newElement();
    const QSignalSpy added(&second, &UIElement::childAdded);
    first.addChild(child);
    second.addChild(child);
    second.addChild(child);
    QCOMPARE(child->parent(), &first);
    QCOMPARE(first.children(), QList<UIElement*>{child});
    QCOMPARE(second.children(), QList<UIElement*>{child});
    QCOMPARE(added.size(), 1);
}

void tst_UIElementTree::deletesSubtreeOnce() {
    UIElement* root = newElement();
    UIElement* child = newElement();
    root->addChild(child);
    child->addChild(newElement());
    root->addChild(newElement());
    delete root;
    QCOMPARE(m_deaths.values(), (QList<int>{1, 1, 1, 1}));
}

void tst_UIElementTree::deletedChildLeavesItsParentsList() {
    UIElement root{QString(), StandardType(), QString()};
    UIElement* first = newElement();
    UIElement* second = newElement();
    UIElement* third = newElement();
    for (UIElement* child : {first, second, third}) {
        root.addChild(child);
    }
    delete second;
    QCOMPARE(root.children(), (QList<UIElement*>{first, third}));
}

void tst_UIElementTree::elementOfTwoParentsDiesOnce_data() {
    // Parents 0 and 1 both list element 2, which lists 3.
    QTest::addColumn<QList<int>>("order");
    QTest::addColumn<QList<int>>("aliveAfterFirst");
    QTest::newRow("first parent, second parent") << QList<int>{0, 1} << QList<int>{1};
    QTest::newRow("second parent, first parent") << QList<int>{1, 0} << QList<int>{0};
    QTest::newRow("element first") << QList<int>{2, 0, 1} << QList<int>{0, 1};
    QTest::newRow("below it first") << QList<int>{3, 1, 0} << QList<int>{0, 1, 2};
}

void tst_UIElementTree::elementOfTwoParentsDiesOnce() {
    QFETCH(QList<int>, order);
    QFETCH(QList<int>, aliveAfterFirst);
    QList<UIElement*> elements;
    for (int i = 0; i < 4; ++i) {
        elements.append(newElement());
    }
    elements.at(0)->addChild(elements.at(2));
    elements.at(1)->addChild(elements.at(2));
    elements.at(2)->addChild(elements.at(3));
    delete elements.at(order.at(0));
    for (int i = 0; i < elements.size(); ++i) {
        QCOMPARE(m_deaths.value(elements.at(i)), aliveAfterFirst.contains(i) ? 0 : 1);
    }
    for (const int parent : {0, 1}) {
        const bool isAlive = aliveAfterFirst.contains(parent);
        if (isAlive) {
            QCOMPARE(elements.at(parent)->children().size(), aliveAfterFirst.contains(2) ? 1 : 0);
        }
    }
    for (int i = 1; i < order.size(); ++i) {
        delete elements.at(order.at(i));
    }
    QCOMPARE(m_deaths.values(), (QList<int>{1, 1, 1, 1}));
}

void tst_UIElementTree::deletedElementLeavesAllItsParentsLists() {
    UIElement a{QString(), StandardType(), QString()};
    UIElement b{QString(), StandardType(), QString()};
    UIElement c{QString(), StandardType(), QString()};
    UIElement* shared = newElement();
    UIElement* other = newElement();
    a.addChild(shared);
    b.addChild(other);
    b.addChild(shared);
    c.addChild(shared);
    delete shared;
    QVERIFY(a.children().isEmpty());
    QCOMPARE(b.children(), QList<UIElement*>{other});
    QVERIFY(c.children().isEmpty());
}

void tst_UIElementTree::elementListedInItselfDies() {
    UIElement* element = newElement();
    element->addChild(element);
    QCOMPARE(element->children(), QList<UIElement*>{element});
    QCOMPARE(element->parent(), element);
    delete element;
    QCOMPARE(m_deaths.values(), QList<int>{1});
}

void tst_UIElementTree::ringDiesOnceFromAnyMember_data() {
    QTest::addColumn<int>("member");
    for (int i = 0; i < 3; ++i) {
        QTest::addRow("%d", i) << i;
    }
}

void tst_UIElementTree::ringDiesOnceFromAnyMember() {
    QFETCH(int, member);
    QList<UIElement*> ring{newElement(), newElement(), newElement()};
    for (int i = 0; i < ring.size(); ++i) {
        ring.at(i)->addChild(ring.at((i + 1) % ring.size()));
    }
    delete ring.at(member);
    QCOMPARE(m_deaths.values(), (QList<int>{1, 1, 1}));
}

void tst_UIElementTree::ringMadeByMovingItemsDiesOnce() {
    // a above x; x moves out, which no list is told of; p with its child a is put under x.
    UIElement* a = newElement();
    UIElement* x = newElement();
    UIElement* p = newElement();
    UIElement* window = newElement();
    window->addChild(a);
    a->addChild(x);
    window->addChild(x);
    p->addChild(a);
    x->addChild(p);
    QCOMPARE(a->parent(), window);
    QCOMPARE(x->parent(), a);
    QCOMPARE(p->parent(), x);
    delete window;
    QCOMPARE(m_deaths.values(), (QList<int>{1, 1, 1, 1}));
}

void tst_UIElementTree::manyChildrenOfTwoParentsDie() {
    constexpr int count = 100000;
    UIElement survivor{QString(), StandardType(), QString()};
    auto* dying = new UIElement(QString(), StandardType(), QString());
    std::vector<UIElement*> children;
    for (int i = 0; i < count; ++i) {
        children.push_back(new UIElement(QString(), StandardType(), QStringLiteral("x")));
        dying->addChild(children.back());
    }
    // In the opposite order, so that what dies first stands last.
    std::for_each(children.rbegin(), children.rend(),
                  [&survivor](UIElement* child) { survivor.addChild(child); });
    QCOMPARE(survivor.children().size(), count);
    delete dying;
    QVERIFY(survivor.children().isEmpty());
}

void tst_UIElementTree::deepChainNeitherOverflowsNorLeaks() {
    constexpr int depth = 200000;
    const UIEvent event(QStringLiteral("clicked"));
    auto* root = new UIElement(QString(), StandardType(), QStringLiteral("x"));
    root->setGeometry(Vorsk::UIAbstraction::ElementGeometry(QRect(0, 0, 1, 1), true));
    UIElement* deepest = root;
    int deaths = 0;
    for (int i = 1; i < depth; ++i) {
        auto* child = new UIElement(QString(), StandardType(), QStringLiteral("x"));
        child->setGeometry(root->geometry());
        connect(child, &QObject::destroyed, this, [&deaths] { ++deaths; });
        deepest->addChild(child);
        deepest = child;
    }
    root->increaseUsageAt(event, QPoint(0, 0));
    QCOMPARE(deepest->usage().value(event), 1);
    delete root;
    QCOMPARE(deaths, depth - 1);
}

void tst_UIElementTree::deepChainsCompare() {
    constexpr int depth = 200000;
    UIElement a{QString(), StandardType(), QString()};
    UIElement b{QString(), StandardType(), QString()};
    UIElement* endOfA = &a;
    UIElement* endOfB = &b;
    for (int i = 0; i < depth; ++i) {
        for (UIElement** end : {&endOfA, &endOfB}) {
            auto* child = new UIElement(QString(), StandardType(), QStringLiteral("x"));
            (*end)->addChild(child);
            *end = child;
        }
    }
    QVERIFY(a == b);
    endOfB->setText(QStringLiteral("other"));
    QVERIFY(a != b);
}

void tst_UIElementTree::equalityEndsOnCycles() {
    UIElement a(QStringLiteral("A"), StandardType(), QString());
    UIElement b(QStringLiteral("A"), StandardType(), QString());
    UIElement* belowA = newElement("B");
    UIElement* belowB = newElement("B");
    a.addChild(belowA);
    b.addChild(belowB);
    belowA->addChild(&a);
    belowB->addChild(&b);
    QVERIFY(a == b);
    QVERIFY(a == a);
    QVERIFY(*belowA == *belowB);
    QVERIFY(a != *belowA);
    belowB->setText(QStringLiteral("other"));
    QVERIFY(a != b);
    QVERIFY(b != a);
}

QTEST_GUILESS_MAIN(tst_UIElementTree)
#include "tst_uielementtree.moc"
