// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "testlib/treeprinter.h"
#include "uiabstraction/uielement.h"

#include <QImage>
#include <QRect>
#include <QTest>

using TestLib::TreePrinter;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

class tst_TreePrinter : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void leavesOutWhatIsNotSet();
    void showsEverythingThatIsSet();
    void hidesSizes();
    void indentsChildren();
    void putsChildrenInBracketsOnOneLine();
    void endsOnCycles();
    void quotes_data();
    void quotes();
    void keepsWordsBare_data();
    void keepsWordsBare();
    void rectangles_data();
    void rectangles();
};

namespace {

UIElement* add(UIElement& parent, const QString& type, const QString& text) {
    auto* child = new UIElement(QStringLiteral("Q") + type, StandardType(type), text);
    child->setText(text);
    parent.addChild(child);
    return child;
}

QString idInAngles(const QString& id) {
    return QLatin1Char('<') + id + QLatin1Char('>');
}

} // namespace

void tst_TreePrinter::leavesOutWhatIsNotSet() {
    const UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    QCOMPARE(TreePrinter().print(element), QStringLiteral("unknown/QWidget\n"));
}

void tst_TreePrinter::showsEverythingThatIsSet() {
    UIElement element(QStringLiteral("QPushButton"), StandardType(QStringLiteral("Button")),
                      QString());
    element.setText(QStringLiteral("&OK"));
    element.setWindowNode(true);
    element.setTransparentNode(true);
    element.setSubgraphTransparent(true);
    element.setGeometry(ElementGeometry(QRect(10, 20, 80, 24), true));
    element.setImage(QImage(80, 24, QImage::Format_RGB32));
    element.setExtraStrings({QStringLiteral("one"), QString()});
    element.registerEvent(UIEvent(QStringLiteral("shown")));
    element.registerEvent(UIEvent(QStringLiteral("clicked")));
    element.setUsage(UIEvent(QStringLiteral("shown")), 1);
    QCOMPARE(
        TreePrinter().print(element),
        QStringLiteral("Button/QPushButton \"&OK\" window transparent subgraphTransparent "
                       "(10,20 80x24) image 80x24 extraStrings[0]=\"one\" extraStrings[1]=null "
                       "{clicked=0, shown=1}\n"));
}

void tst_TreePrinter::hidesSizes() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    element.setGeometry(ElementGeometry(QRect(10, 20, 80, 24), true));
    element.setImage(QImage(80, 24, QImage::Format_RGB32));
    QCOMPARE(TreePrinter(TreePrinter::Sizes::Hidden).print(element),
             QStringLiteral("unknown/QWidget (rect) image\n"));
}

void tst_TreePrinter::indentsChildren() {
    UIElement root(QStringLiteral("QMainWindow"), StandardType(QStringLiteral("Window")),
                   QString());
    UIElement* bar = add(root, QStringLiteral("MenuBar"), QString());
    add(*bar, QStringLiteral("Menu"), QStringLiteral("File"));
    add(root, QStringLiteral("Table"), QStringLiteral(""));
    QCOMPARE(TreePrinter().print(root), QStringLiteral("Window/QMainWindow\n"
                                                       "  MenuBar/QMenuBar\n"
                                                       "    Menu/QMenu \"File\"\n"
                                                       "  Table/QTable \"\"\n"));
}

void tst_TreePrinter::putsChildrenInBracketsOnOneLine() {
    UIElement root(QStringLiteral("A"), StandardType(), QStringLiteral("root"));
    UIElement* first = add(root, QStringLiteral("B"), QStringLiteral("first"));
    UIElement* inner = add(*first, QStringLiteral("C"), QStringLiteral("inner"));
    add(*inner, QStringLiteral("D"), QStringLiteral("innermost"));
    add(root, QStringLiteral("E"), QStringLiteral("last"));
    QCOMPARE(TreePrinter().printCompact(root, idInAngles),
             QStringLiteral("<root> unknown/A [<first> B/QB \"first\" [<inner> C/QC \"inner\" "
                            "[<innermost> D/QD \"innermost\"]], <last> E/QE \"last\"]"));
}

void tst_TreePrinter::endsOnCycles() {
    UIElement root(QStringLiteral("A"), StandardType(), QStringLiteral("root"));
    UIElement* child = add(root, QStringLiteral("B"), QStringLiteral("child"));
    child->addChild(&root);
    QCOMPARE(TreePrinter().print(root), QStringLiteral("unknown/A\n"
                                                       "  B/QB \"child\"\n"));
    QCOMPARE(TreePrinter().printCompact(root, idInAngles),
             QStringLiteral("<root> unknown/A [<child> B/QB \"child\"]"));
}

void tst_TreePrinter::quotes_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("printed");
    QTest::newRow("null") << QString() << QStringLiteral("null");
    QTest::newRow("empty") << QStringLiteral("") << QStringLiteral("\"\"");
    QTest::newRow("the word null") << QStringLiteral("null") << QStringLiteral("\"null\"");
    QTest::newRow("quote and backslash")
        << QStringLiteral("a\"b\\c") << QStringLiteral("\"a\\\"b\\\\c\"");
    QTest::newRow("newline") << QStringLiteral("a\nb") << QStringLiteral("\"a\\nb\"");
    QTest::newRow("control") << QString(QChar(0x1f)) << QStringLiteral("\"\\u001f\"");
    QTest::newRow("not ASCII") << QStringLiteral("\u00e4\U0001f600")
                               << QStringLiteral("\"\u00e4\U0001f600\"");
}

void tst_TreePrinter::quotes() {
    QFETCH(QString, text);
    QTEST(TreePrinter::quoted(text), "printed");
}

void tst_TreePrinter::keepsWordsBare_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("printed");
    QTest::newRow("word") << QStringLiteral("clicked") << QStringLiteral("clicked");
    QTest::newRow("class") << QStringLiteral("My::List<int>") << QStringLiteral("My::List<int>");
    QTest::newRow("null") << QString() << QStringLiteral("null");
    QTest::newRow("empty") << QStringLiteral("") << QStringLiteral("\"\"");
    QTest::newRow("two words") << QStringLiteral("a b") << QStringLiteral("\"a b\"");
    QTest::newRow("newline") << QStringLiteral("a\nb") << QStringLiteral("\"a\\nb\"");
}

void tst_TreePrinter::keepsWordsBare() {
    QFETCH(QString, name);
    QTEST(TreePrinter::bare(name), "printed");
}

void tst_TreePrinter::rectangles_data() {
    constexpr int max = std::numeric_limits<int>::max();
    constexpr int min = std::numeric_limits<int>::min();
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QString>("printed");
    QTest::newRow("null") << QRect() << QStringLiteral("(0,0 0x0)");
    QTest::newRow("negative") << QRect(-5, -6, 7, 8) << QStringLiteral("(-5,-6 7x8)");
    QTest::newRow("as wide as there is") << QRect(QPoint(min, min), QPoint(max, max))
                                         << QStringLiteral("(-2147483648,-2147483648 "
                                                           "4294967296x4294967296)");
}

void tst_TreePrinter::rectangles() {
    QFETCH(QRect, rect);
    QTEST(TreePrinter().rect(rect), "printed");
}

QTEST_GUILESS_MAIN(tst_TreePrinter)
#include "tst_treeprinter.moc"
