// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QHash>
#include <QPoint>
#include <QRandomGenerator>
#include <QRect>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

UIEvent clicked() {
    return UIEvent(QStringLiteral("clicked"));
}

UIElement* newElement(const QRect& rect) {
    auto* element = new UIElement(QStringLiteral("QWidget"), StandardType(), QString());
    element->setGeometry(ElementGeometry(rect, true));
    return element;
}

int clicks(const UIElement* element) {
    return element->usage().value(clicked());
}

/** The walk as it is meant, element by element. */
void walkPlainly(UIElement* element, const QPoint& point, QList<UIElement*>& path,
                 QHash<UIElement*, int>& counts) {
    if (path.contains(element)) {
        return;
    }
    if (element->geometry().rect().contains(point, false)) {
        ++counts[element];
    }
    path.append(element);
    const QList<UIElement*> children = element->children();
    for (UIElement* child : children) {
        walkPlainly(child, point, path, counts);
    }
    path.removeLast();
}

/** Clicks there, and compares all elements' counts with what the plain walk makes of it. */
void clickAsThePlainWalkDoes(UIElement* root, const QList<UIElement*>& elements,
                             const QPoint& point) {
    QHash<UIElement*, int> expected;
    for (UIElement* element : elements) {
        expected.insert(element, clicks(element));
    }
    QList<UIElement*> path;
    walkPlainly(root, point, path, expected);
    root->increaseUsageAt(clicked(), point);
    for (UIElement* element : elements) {
        QCOMPARE(clicks(element), expected.value(element));
    }
}

} // namespace

/** What UIElement counts for a point. */
class tst_UIElementHitTest : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void pointInsideCountsEdgesIncluded_data();
    void pointInsideCountsEdgesIncluded();
    void pointOutsideParentInsideChildCountsChildOnly();
    void pointIsNotTranslatedBetweenParentAndChild();
    void hitTestLooksAtRectangleNotAtItsFlag();
    void hitTestCountsParentsFirst();
    void hitTestCountsOncePerPath();
    void hitTestEndsOnCycles();
    void hitTestWarnsAndRegistersNothing();
    void hitTestCountsAsThePlainWalkDoes_data();
    void hitTestCountsAsThePlainWalkDoes();
    void hitTestFindsEachOfManyThatComeAndGo();
    void hitTestFindsWhatMovedMeanwhile_data();
    void hitTestFindsWhatMovedMeanwhile();
};

void tst_UIElementHitTest::pointInsideCountsEdgesIncluded_data() {
    // The rectangle covers 10..29 by 20..59.
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<int>("count");
    QTest::newRow("inside") << QPoint(15, 30) << 1;
    QTest::newRow("top left") << QPoint(10, 20) << 1;
    QTest::newRow("right edge") << QPoint(29, 30) << 1;
    QTest::newRow("bottom edge") << QPoint(15, 59) << 1;
    QTest::newRow("bottom right") << QPoint(29, 59) << 1;
    QTest::newRow("left of it") << QPoint(9, 30) << 0;
    QTest::newRow("above it") << QPoint(15, 19) << 0;
    QTest::newRow("right of it") << QPoint(30, 30) << 0;
    QTest::newRow("below it") << QPoint(15, 60) << 0;
}

void tst_UIElementHitTest::pointInsideCountsEdgesIncluded() {
    QFETCH(QPoint, point);
    const std::unique_ptr<UIElement> element(newElement(QRect(10, 20, 20, 40)));
    element->increaseUsageAt(clicked(), point);
    QTEST(clicks(element.get()), "count");
}

void tst_UIElementHitTest::pointOutsideParentInsideChildCountsChildOnly() {
    const std::unique_ptr<UIElement> root(newElement(QRect(0, 0, 10, 10)));
    UIElement* child = newElement(QRect(0, 0, 10, 10));
    UIElement* grandchild = newElement(QRect(100, 100, 10, 10));
    root->addChild(child);
    child->addChild(grandchild);
    root->increaseUsageAt(clicked(), QPoint(105, 105));
    QVERIFY(root->usage().isEmpty());
    QVERIFY(child->usage().isEmpty());
    QCOMPARE(clicks(grandchild), 1);
}

void tst_UIElementHitTest::pointIsNotTranslatedBetweenParentAndChild() {
    const std::unique_ptr<UIElement> root(newElement(QRect(50, 50, 20, 20)));
    UIElement* child = newElement(QRect(0, 0, 5, 5));
    root->addChild(child);
    root->increaseUsageAt(clicked(), QPoint(52, 52));
    QCOMPARE(clicks(root.get()), 1);
    QVERIFY(child->usage().isEmpty());
}

void tst_UIElementHitTest::hitTestLooksAtRectangleNotAtItsFlag() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    element.increaseUsageAt(clicked(), QPoint(0, 0));
    QVERIFY(element.usage().isEmpty());
    element.setGeometry(ElementGeometry(QRect(0, 0, 1, 1), false));
    element.increaseUsageAt(clicked(), QPoint(0, 0));
    QCOMPARE(clicks(&element), 1);
}

void tst_UIElementHitTest::hitTestCountsParentsFirst() {
    const QRect rect(0, 0, 10, 10);
    const std::unique_ptr<UIElement> root(newElement(rect));
    UIElement* first = newElement(rect);
    UIElement* below = newElement(rect);
    UIElement* second = newElement(rect);
    root->addChild(first);
    root->addChild(second);
    first->addChild(below);
    QList<const UIElement*> order;
    for (const UIElement* element :
         {static_cast<const UIElement*>(second), static_cast<const UIElement*>(below),
          static_cast<const UIElement*>(first), static_cast<const UIElement*>(root.get())}) {
        connect(element, &UIElement::usageIncreased, this,
                [&order](const UIElement* e) { order.append(e); });
    }
    root->increaseUsageAt(clicked(), QPoint(5, 5));
    QCOMPARE(order, (QList<const UIElement*>{root.get(), first, below, second}));
}

void tst_UIElementHitTest::hitTestCountsOncePerPath() {
    const QRect rect(0, 0, 10, 10);
    const std::unique_ptr<UIElement> root(newElement(rect));
    UIElement* left = newElement(rect);
    UIElement* right = newElement(rect);
    UIElement* shared = newElement(rect);
    UIElement* below = newElement(rect);
    root->addChild(left);
    root->addChild(right);
    left->addChild(shared);
    right->addChild(shared);
    shared->addChild(below);
    const QSignalSpy increased(shared, &UIElement::usageIncreased);
    root->increaseUsageAt(clicked(), QPoint(5, 5));
    QCOMPARE(clicks(root.get()), 1);
    QCOMPARE(clicks(left), 1);
    QCOMPARE(clicks(right), 1);
    QCOMPARE(clicks(shared), 2);
    QCOMPARE(clicks(below), 2);
    QCOMPARE(increased.size(), 2);
}

void tst_UIElementHitTest::hitTestEndsOnCycles() {
    const QRect rect(0, 0, 10, 10);
    // Two menus that open each other, below a bar that opens both.
    const std::unique_ptr<UIElement> bar(newElement(rect));
    UIElement* first = newElement(rect);
    UIElement* second = newElement(rect);
    bar->addChild(first);
    bar->addChild(second);
    first->addChild(second);
    second->addChild(first);
    bar->increaseUsageAt(clicked(), QPoint(5, 5));
    QCOMPARE(clicks(bar.get()), 1);
    // Once from the bar and once from the other menu.
    QCOMPARE(clicks(first), 2);
    QCOMPARE(clicks(second), 2);
}

void tst_UIElementHitTest::hitTestWarnsAndRegistersNothing() {
    const std::unique_ptr<UIElement> element(newElement(QRect(0, 0, 10, 10)));
    const QSignalSpy registered(element.get(), &UIElement::eventRegistered);
    element->increaseUsageAt(clicked(), QPoint(5, 5));
    QCOMPARE(registered.size(), 0);
    QCOMPARE(clicks(element.get()), 1);
}

void tst_UIElementHitTest::hitTestCountsAsThePlainWalkDoes_data() {
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 60; ++seed) {
        QTest::addRow("%u", seed) << seed;
    }
}

void tst_UIElementHitTest::hitTestCountsAsThePlainWalkDoes() {
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const auto side = [&random] { return random.bounded(-3, 6); };
    QList<UIElement*> elements;
    for (int i = 0; i < 7; ++i) {
        // Also empty ones, and some that are turned inside out.
        elements.append(newElement(QRect(side(), side(), side(), side())));
    }
    const std::unique_ptr<UIElement> root(elements.first());
    for (int i = 1; i < elements.size(); ++i) {
        elements.at(random.bounded(i))->addChild(elements.at(i));
    }
    for (int i = 0; i < 4; ++i) {
        // Whatever comes: an element below two others, below itself, rings.
        elements.at(random.bounded(7))->addChild(elements.at(random.bounded(7)));
    }
    for (const QPoint point : {QPoint(0, 0), QPoint(1, -1), QPoint(-2, 2)}) {
        clickAsThePlainWalkDoes(root.get(), elements, point);
        if (QTest::currentTestFailed()) {
            return;
        }
    }
}

void tst_UIElementHitTest::hitTestFindsEachOfManyThatComeAndGo() {
    const std::unique_ptr<UIElement> root(newElement(QRect()));
    const auto addTo = [&root](int number) {
        root->addChild(newElement(QRect(10 * number, 0, 10, 10)));
    };
    for (int i = 0; i < 200; ++i) {
        addTo(i);
    }
    int round = 0;
    const auto clickEach = [&] {
        ++round;
        const QList<UIElement*> children = root->children();
        for (UIElement* child : children) {
            root->increaseUsageAt(clicked(), child->geometry().rect().center());
        }
    };
    clickEach();
    delete root->children().first(); // all others move up
    clickEach();
    const QList<UIElement*> left = root->children();
    for (const UIElement* child : left) {
        QCOMPARE(clicks(child), round);
    }
    for (int i = 1; i <= 100; ++i) {
        addTo(1000 + i);
        UIElement* const added = root->children().last();
        root->increaseUsageAt(clicked(), added->geometry().rect().center());
        QCOMPARE(clicks(added), 1);
    }
}

void tst_UIElementHitTest::hitTestFindsWhatMovedMeanwhile_data() {
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed) {
        QTest::addRow("%u", seed) << seed;
    }
}

/** Many siblings at several depths that move, come and go between the points. */
void tst_UIElementHitTest::hitTestFindsWhatMovedMeanwhile() {
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    // What is near in the list is near in the window.
    const auto place = [&random](int number) {
        return QRect(10 * number + random.bounded(-20, 20), random.bounded(-20, 20),
                     random.bounded(30), random.bounded(30));
    };
    QList<UIElement*> elements{newElement(place(0))};
    const std::unique_ptr<UIElement> root(elements.first());
    for (int step = 0; step < 600; ++step) {
        UIElement* const element = elements.at(random.bounded(elements.size()));
        // In the end they only move: what comes and goes makes the element look anew.
        switch (step > 400 ? 0 : random.bounded(10)) {
        case 0:
            element->setGeometry(ElementGeometry(place(random.bounded(400)), true));
            break;
        case 1:
            element->addChild(elements.at(random.bounded(elements.size())));
            break;
        case 2:
            if (element->children().isEmpty() && element != root.get()) {
                elements.removeOne(element);
                delete element;
            }
            break;
        default:
            // Most of them side by side, and of what comes first many once more elsewhere.
            elements.append(newElement(step % 4 == 0 ? QRect() : place(step)));
            elements.at(random.bounded(qMin(3, elements.size() - 1)))->addChild(elements.last());
        }
        if (step % 10 != 0 || !elements.contains(element)) {
            continue;
        }
        const QPoint point = random.bounded(2) == 0 ? element->geometry().rect().center()
                                                    : QPoint(random.bounded(4000), 0);
        clickAsThePlainWalkDoes(root.get(), elements, point);
        if (QTest::currentTestFailed()) {
            return;
        }
    }
    QVERIFY(elements.size() > 200);
}

QTEST_GUILESS_MAIN(tst_UIElementHitTest)
#include "tst_uielementhittest.moc"
