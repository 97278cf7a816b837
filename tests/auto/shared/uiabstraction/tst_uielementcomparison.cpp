// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QTest>

#include <functional>

using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

using Change = std::function<void(UIElement&)>;
Q_DECLARE_METATYPE(Change)

namespace {

UIElement* newElement(const char* concreteType, const char* standardType = "",
                      const char* text = "") {
    auto* element = new UIElement(QLatin1String(concreteType),
                                  StandardType(QLatin1String(standardType)), QString());
    element->setText(QLatin1String(text));
    return element;
}

} // namespace

/** What UIElement finds among children and siblings, and when two elements are equal. */
class tst_UIElementComparison : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void findChildComparesTextAndType_data();
    void findChildComparesTextAndType();
    void findChildLooksAtDirectChildrenOnly();
    void findSiblingComparesConcreteType();
    void equalityIgnoresWhatTwoRunsDifferIn_data();
    void equalityIgnoresWhatTwoRunsDifferIn();
    void equalitySeesDifferences_data();
    void equalitySeesDifferences();
    void equalityComparesChildrenInOrder();
};

void tst_UIElementComparison::findChildComparesTextAndType_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<StandardType>("type");
    QTest::addColumn<int>("index");
    const StandardType any;
    const StandardType menu(QStringLiteral("Menu"));
    QTest::newRow("any type, first of two") << QStringLiteral("Open") << any << 1;
    QTest::newRow("type") << QStringLiteral("Open") << menu << 2;
    QTest::newRow("no such type") << QStringLiteral("Close") << menu << -1;
    QTest::newRow("no such text") << QStringLiteral("Save") << any << -1;
    QTest::newRow("case") << QStringLiteral("open") << any << -1;
    QTest::newRow("empty type is a type")
        << QStringLiteral("Open") << StandardType(QStringLiteral("")) << 3;
    QTest::newRow("empty text") << QStringLiteral("") << any << 4;
    QTest::newRow("null text") << QString() << any << 4;
}

void tst_UIElementComparison::findChildComparesTextAndType() {
    QFETCH(QString, text);
    QFETCH(StandardType, type);
    QFETCH(int, index);
    UIElement parent(QStringLiteral("QMenu"), StandardType(), QString());
    parent.addChild(newElement("a", "Button", "Close"));
    parent.addChild(newElement("b", "MenuItem", "Open"));
    parent.addChild(newElement("c", "Menu", "Open"));
    parent.addChild(newElement("d", "", "Open"));
    parent.addChild(newElement("e", "", ""));
    QCOMPARE(parent.children().indexOf(parent.findChild(text, type)), index);
}

void tst_UIElementComparison::findChildLooksAtDirectChildrenOnly() {
    UIElement root(QStringLiteral("QMenu"), StandardType(), QString());
    root.setText(QStringLiteral("Open"));
    UIElement* child = newElement("a");
    root.addChild(child);
    child->addChild(newElement("b", "Menu", "Open"));
    QCOMPARE(root.findChild(QStringLiteral("Open"), StandardType()), nullptr);
}

void tst_UIElementComparison::findSiblingComparesConcreteType() {
    UIElement root(QStringLiteral("Root"), StandardType(), QString());
    UIElement* first = newElement("QMenu");
    UIElement* second = newElement("QMenu");
    UIElement* third = newElement("QLabel");
    for (UIElement* child : {first, second, third}) {
        root.addChild(child);
    }
    QCOMPARE(second->findSibling(QStringLiteral("QMenu")), first);
    QCOMPARE(first->findSibling(QStringLiteral("QMenu")), first);
    QCOMPARE(first->findSibling(QStringLiteral("QLabel")), third);
    QCOMPARE(third->findSibling(QStringLiteral("QLabel")), third);
    QCOMPARE(third->findSibling(QStringLiteral("qmenu")), nullptr);
    QCOMPARE(root.findSibling(QStringLiteral("Root")), nullptr);
}

void tst_UIElementComparison::equalityIgnoresWhatTwoRunsDifferIn_data() {
    QTest::addColumn<Change>("change");
    QTest::newRow("nothing but the id") << Change([](UIElement&) {});
    QTest::newRow("image") << Change(
        [](UIElement& e) { e.setImage(QImage(1, 1, QImage::Format_Mono)); });
    QTest::newRow("registered event")
        << Change([](UIElement& e) { e.registerEvent(UIEvent(QStringLiteral("shown"))); });
    QTest::newRow("usage") << Change(
        [](UIElement& e) { e.increaseUsage(UIEvent(QStringLiteral("shown"))); });
    QTest::newRow("extraStrings") << Change(
        [](UIElement& e) { e.setExtraStrings({QStringLiteral("a")}); });
}

void tst_UIElementComparison::equalityIgnoresWhatTwoRunsDifferIn() {
    QFETCH(Change, change);
    const UIElement a(QStringLiteral("QWidget"), StandardType(), QString());
    UIElement b(QStringLiteral("QWidget"), StandardType(), QString());
    change(b);
    QVERIFY(a.id() != b.id());
    QVERIFY(a == b);
    QVERIFY(!(a != b));
    QVERIFY(b.isEqualTo(a));
    QVERIFY(b == b);
}

void tst_UIElementComparison::equalitySeesDifferences_data() {
    QTest::addColumn<Change>("change");
    QTest::newRow("type") << Change(
        [](UIElement& e) { e.setStandardType(StandardType(QStringLiteral("Menu"))); });
    QTest::newRow("text") << Change([](UIElement& e) { e.setText(QStringLiteral("a")); });
    QTest::newRow("window") << Change([](UIElement& e) { e.setWindowNode(true); });
    QTest::newRow("node") << Change([](UIElement& e) { e.setTransparentNode(true); });
    QTest::newRow("subgraph") << Change([](UIElement& e) { e.setSubgraphTransparent(true); });
    QTest::newRow("rectangle") << Change(
        [](UIElement& e) { e.setGeometry(ElementGeometry(QRect(0, 0, 1, 1), false)); });
    QTest::newRow("geometry flag")
        << Change([](UIElement& e) { e.setGeometry(ElementGeometry(QRect(), true)); });
    QTest::newRow("child") << Change([](UIElement& e) { e.addChild(newElement("QLabel")); });
}

void tst_UIElementComparison::equalitySeesDifferences() {
    QFETCH(Change, change);
    const UIElement a(QStringLiteral("QWidget"), StandardType(), QString());
    UIElement b(QStringLiteral("QWidget"), StandardType(), QString());
    change(b);
    QVERIFY(a != b);
    QVERIFY(b != a);
    // The same difference one level further down.
    UIElement above(QStringLiteral("Root"), StandardType(), QString());
    UIElement aboveToo(QStringLiteral("Root"), StandardType(), QString());
    above.addChild(newElement("QWidget"));
    UIElement* child = newElement("QWidget");
    aboveToo.addChild(child);
    QVERIFY(above == aboveToo);
    change(*child);
    QVERIFY(above != aboveToo);
    // Concrete types are given when the element is made.
    QVERIFY(a != UIElement(QStringLiteral("QLabel"), StandardType(), QString()));
}

void tst_UIElementComparison::equalityComparesChildrenInOrder() {
    UIElement a(QStringLiteral("QWidget"), StandardType(), QString());
    UIElement b(QStringLiteral("QWidget"), StandardType(), QString());
    a.addChild(newElement("A"));
    a.addChild(newElement("B"));
    b.addChild(newElement("B"));
    b.addChild(newElement("A"));
    QVERIFY(a != b);
    // As many elements in the same order, but in another shape: A and B below one another.
    UIElement c(QStringLiteral("QWidget"), StandardType(), QString());
    UIElement* first = newElement("A");
    first->addChild(newElement("B"));
    c.addChild(first);
    QVERIFY(a != c);
    QVERIFY(c != a);
}

QTEST_GUILESS_MAIN(tst_UIElementComparison)
#include "tst_uielementcomparison.moc"
