// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

#include <QStringList>
#include <QTest>

#include <memory>
#include <random>

using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

namespace {

UIElement* newElement(const char* name) {
    return new UIElement(QLatin1String(name), StandardType(), QStringLiteral("id"));
}

/** Each step as name, depth and number of children. */
QString walked(const UIElement* root) {
    QStringList steps;
    ElementWalk walk(root);
    while (const UIElement* element = walk.next()) {
        steps.append(QStringLiteral("%1:%2:%3")
                         .arg(element->concreteType())
                         .arg(walk.depth())
                         .arg(walk.childCount()));
    }
    return steps.join(QLatin1Char(' '));
}

/** The same, by recursion. */
void walkPlainly(const UIElement* element, QList<const UIElement*>& path, QStringList& steps) {
    path.append(element);
    QList<const UIElement*> children;
    for (const UIElement* child : element->children()) {
        if (!path.contains(child)) {
            children.append(child);
        }
    }
    steps.append(QStringLiteral("%1:%2:%3")
                     .arg(element->concreteType())
                     .arg(path.size() - 1)
                     .arg(children.size()));
    for (const UIElement* child : qAsConst(children)) {
        walkPlainly(child, path, steps);
    }
    path.removeLast();
}

} // namespace

class tst_ElementWalk : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nullRootIsAnEmptyWalk();
    void leafIsMetOnce();
    void parentsComeFirst();
    void staysBelowItsRoot();
    void endedWalkStaysAtItsEnd();
    void elementListedTwiceIsMetTwice();
    void elementListedInItselfIsMetOnce();
    void ringIsMetOnceFromEachMember();
    void cycleLeavesSiblingsAlone();
    void childrenAddedToMetElementAreNotSeen();
    void deepChainIsWalked();
    void behavesAsRecursion_data();
    void behavesAsRecursion();
};

void tst_ElementWalk::nullRootIsAnEmptyWalk() {
    QCOMPARE(ElementWalk(nullptr).next(), nullptr);
}

void tst_ElementWalk::leafIsMetOnce() {
    const std::unique_ptr<UIElement> leaf(newElement("leaf"));
    QCOMPARE(walked(leaf.get()), QStringLiteral("leaf:0:0"));
}

void tst_ElementWalk::parentsComeFirst() {
    const std::unique_ptr<UIElement> root(newElement("root"));
    UIElement* a = newElement("a");
    root->addChild(a);
    root->addChild(newElement("b"));
    UIElement* below = newElement("aa");
    a->addChild(below);
    below->addChild(newElement("aaa"));
    a->addChild(newElement("ab"));
    QCOMPARE(walked(root.get()), QStringLiteral("root:0:2 a:1:2 aa:2:1 aaa:3:0 ab:2:0 b:1:0"));
}

void tst_ElementWalk::staysBelowItsRoot() {
    const std::unique_ptr<UIElement> root(newElement("root"));
    UIElement* a = newElement("a");
    root->addChild(a);
    root->addChild(newElement("b"));
    a->addChild(newElement("aa"));
    QCOMPARE(walked(a), QStringLiteral("a:0:1 aa:1:0"));
}

void tst_ElementWalk::endedWalkStaysAtItsEnd() {
    const std::unique_ptr<UIElement> root(newElement("root"));
    ElementWalk walk(root.get());
    QCOMPARE(walk.next(), root.get());
    QCOMPARE(walk.next(), nullptr);
    QCOMPARE(walk.next(), nullptr);
}

void tst_ElementWalk::elementListedTwiceIsMetTwice() {
    const std::unique_ptr<UIElement> root(newElement("root"));
    UIElement* a = newElement("a");
    UIElement* b = newElement("b");
    UIElement* shared = newElement("shared");
    root->addChild(a);
    root->addChild(b);
    root->addChild(shared);
    a->addChild(shared);
    b->addChild(shared);
    shared->addChild(newElement("below"));
    QCOMPARE(walked(root.get()),
             QStringLiteral("root:0:3 a:1:1 shared:2:1 below:3:0 b:1:1 shared:2:1 below:3:0 "
                            "shared:1:1 below:2:0"));
}

void tst_ElementWalk::elementListedInItselfIsMetOnce() {
    const std::unique_ptr<UIElement> root(newElement("root"));
    root->addChild(root.get());
    root->addChild(newElement("a"));
    QCOMPARE(walked(root.get()), QStringLiteral("root:0:1 a:1:0"));
}

void tst_ElementWalk::ringIsMetOnceFromEachMember() {
    const std::unique_ptr<UIElement> a(newElement("a"));
    UIElement* b = newElement("b");
    UIElement* c = newElement("c");
    a->addChild(b);
    b->addChild(c);
    c->addChild(a.get());
    QCOMPARE(walked(a.get()), QStringLiteral("a:0:1 b:1:1 c:2:0"));
    QCOMPARE(walked(b), QStringLiteral("b:0:1 c:1:1 a:2:0"));
    QCOMPARE(walked(c), QStringLiteral("c:0:1 a:1:1 b:2:0"));
}

void tst_ElementWalk::cycleLeavesSiblingsAlone() {
    // Two menus that open each other, below a bar: each is met from the bar and from the other.
    const std::unique_ptr<UIElement> bar(newElement("bar"));
    UIElement* first = newElement("first");
    UIElement* second = newElement("second");
    bar->addChild(first);
    bar->addChild(second);
    first->addChild(second);
    first->addChild(newElement("x"));
    second->addChild(first);
    second->addChild(bar.get());
    QCOMPARE(walked(bar.get()),
             QStringLiteral("bar:0:2 first:1:2 second:2:0 x:2:0 second:1:1 first:2:1 x:3:0"));
}

void tst_ElementWalk::childrenAddedToMetElementAreNotSeen() {
    const std::unique_ptr<UIElement> root(newElement("root"));
    UIElement* a = newElement("a");
    root->addChild(a);
    ElementWalk walk(root.get());
    QCOMPARE(walk.next(), root.get());
    QCOMPARE(walk.childCount(), 1);
    root->addChild(newElement("late"));
    UIElement* below = newElement("below");
    a->addChild(below);
    QCOMPARE(walk.next(), a);
    QCOMPARE(walk.next(), below);
    QCOMPARE(walk.next(), nullptr);
}

void tst_ElementWalk::deepChainIsWalked() {
    constexpr int depth = 200000;
    const std::unique_ptr<UIElement> root(newElement("root"));
    UIElement* deepest = root.get();
    for (int i = 0; i < depth; ++i) {
        UIElement* child = newElement("child");
        deepest->addChild(child);
        deepest = child;
    }
    // A way back to the top from the very end.
    deepest->addChild(root.get());
    ElementWalk walk(root.get());
    int steps = 0;
    const UIElement* last = nullptr;
    while (const UIElement* element = walk.next()) {
        last = element;
        ++steps;
    }
    QCOMPARE(steps, depth + 1);
    QCOMPARE(last, deepest);
}

void tst_ElementWalk::behavesAsRecursion_data() {
    // So far below the top: a walk remembers the levels near it in another way than deep ones.
    QTest::addColumn<int>("depth");
    QTest::addColumn<quint32>("seed");
    for (const int depth : {0, 29, 40}) {
        for (quint32 seed = 1; seed <= 60; ++seed) {
            QTest::addRow("depth %d, seed %u", depth, seed) << depth << seed;
        }
    }
}

void tst_ElementWalk::behavesAsRecursion() {
    QFETCH(int, depth);
    QFETCH(quint32, seed);
    constexpr std::size_t count = 8;
    std::mt19937 random(seed);
    std::vector<UIElement*> elements;
    for (std::size_t i = 0; i < count; ++i) {
        elements.push_back(newElement(QByteArray::number(static_cast<uint>(i)).constData()));
    }
    for (std::size_t i = 1; i < count; ++i) {
        elements[random() % i]->addChild(elements[i]);
    }
    // Further edges in any direction: second parents, cycles, self-loops.
    for (int i = 0; i < 6; ++i) {
        elements[random() % count]->addChild(elements[random() % count]);
    }
    UIElement* top = elements.front();
    for (int i = 0; i < depth; ++i) {
        UIElement* const above = newElement("above");
        above->addChild(top);
        // Ways back to every level.
        elements[random() % count]->addChild(above);
        top = above;
    }
    // From the top alone all ways back lead to what is being walked: no others, or there are too
    // many ways.
    const std::vector<UIElement*> roots = depth == 0 ? elements : std::vector<UIElement*>{top};
    for (const UIElement* root : roots) {
        QList<const UIElement*> path;
        QStringList steps;
        walkPlainly(root, path, steps);
        QCOMPARE(walked(root), steps.join(QLatin1Char(' ')));
    }
    delete top;
}

QTEST_GUILESS_MAIN(tst_ElementWalk)
#include "tst_elementwalk.moc"
