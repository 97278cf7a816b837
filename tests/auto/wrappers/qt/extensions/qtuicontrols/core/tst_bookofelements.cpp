// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/bookofelements.h"
#include "testlib/fakehook.h"
#include "testlib/recordprinter.h"
#include "testlib/testcase.h"
#include "tracking/streamuielementexporter.h"
#include "uiabstraction/uielement.h"

#include <QTest>

#include <memory>
#include <vector>

using namespace Vorsk::UIControls;

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

Description window(const char* title) {
    Description what;
    what.type = ElementType::Window;
    what.className = text("QWidget");
    what.text = text(title);
    what.uses = {Use::Seen};
    return what;
}

Description button(const char* caption) {
    Description what;
    what.type = ElementType::Button;
    what.className = text("QPushButton");
    what.text = text(caption);
    what.uses = {Use::Clicked};
    return what;
}

/** The book between its exporter and a host. */
struct Scene {
    TestLib::FakeHook hook;
    Vorsk::UICoverage::StreamUIElementExporter exporter;
    BookOfElements book{exporter};
    TestLib::RecordPrinter printer;

    /** The records since the last call, a line each. */
    QStringList records() {
        QStringList lines;
        for (const TestLib::FakeHook::Message& message : hook.messages) {
            lines.append(
                printer.print(message.args.at(2).toInt(), message.args.at(3).toByteArray()));
        }
        hook.messages.clear();
        return lines;
    }
};

} // namespace

class tst_BookOfElements : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aRootIsToldAsItIsMade();
    void aChildIsToldAndThenListed();
    void whatIsMadeInABatchIsToldWithItsRoot();
    void whatIsAddedInABatchBelowWhatIsKnownIsToldWithItsSubtree();
    void batchesNest();
    void changesAreToldOnce();
    void usesAreCounted();
    void theViewOfAControlIsTheNearestAbove();
    void whatIsMadeAnewIsTheSameElement();
    void whatIsMadeAnewIsToldAsItIsNow();
    void theFirstOfThoseAlikeIsUsedAgainFirst();
    void whatLivesIsNotUsedAgain();
    void whatDiffersIsNotUsedAgain();
    void partsWithoutAnObjectAreUsedAgainWithWhatTheyBelongTo();
    void manyVisitsDoNotMakeMoreElements();
};

void tst_BookOfElements::aRootIsToldAsItIsMade() {
    Scene scene;
    QObject object;
    UIElement* const element = scene.book.add(&object, window("Main"), nullptr);
    QCOMPARE(scene.records(),
             QStringList{text("kind 1 elementAdded #1 Window/QWidget \"Main\" window {seen=0}")});
    QCOMPARE(scene.book.elementOf(&object), element);
    QCOMPARE(scene.book.objectOf(element), &object);
    QCOMPARE(scene.book.typeOf(element), ElementType::Window);
    QVERIFY(scene.book.parentOf(element) == nullptr);
}

void tst_BookOfElements::aChildIsToldAndThenListed() {
    Scene scene;
    QObject object;
    QObject child;
    UIElement* const root = scene.book.add(&object, window("Main"), nullptr);
    scene.records();
    scene.book.add(&child, button("OK"), root);
    QCOMPARE(scene.records(),
             (QStringList{text("kind 1 elementAdded #2 Button/QPushButton \"OK\" {clicked=0}"),
                          text("kind 2 childAdded #1 #2")}));
}

void tst_BookOfElements::whatIsMadeInABatchIsToldWithItsRoot() {
    Scene scene;
    QObject object;
    QObject child;
    {
        const ElementBook::Batch batch(scene.book);
        UIElement* const root = scene.book.add(&object, window("Main"), nullptr);
        UIElement* const made = scene.book.add(&child, button("OK"), root);
        QCOMPARE(scene.book.elementOf(&child), made);
        QVERIFY(scene.records().isEmpty());
    }
    const QStringList records = scene.records();
    QCOMPARE(records.size(), 1);
    QVERIFY2(records.first().startsWith(text("kind 1 elementAdded #1 Window/QWidget")) &&
                 records.first().contains(text("Button/QPushButton \"OK\"")),
             qPrintable(records.first()));
    scene.book.countUse(scene.book.elementOf(&child), Use::Clicked);
    QCOMPARE(scene.records(), QStringList{text("kind 11 usageIncreased #2 clicked=1")});
}

void tst_BookOfElements::whatIsAddedInABatchBelowWhatIsKnownIsToldWithItsSubtree() {
    Scene scene;
    QObject object;
    UIElement* const root = scene.book.add(&object, window("Main"), nullptr);
    scene.records();
    QObject page;
    QObject child;
    {
        const ElementBook::Batch batch(scene.book);
        Description what = window("Page");
        what.type = ElementType::Page;
        UIElement* const made = scene.book.add(&page, what, root);
        scene.book.add(&child, button("OK"), made);
    }
    const QStringList records = scene.records();
    QCOMPARE(records.size(), 2);
    QVERIFY(records.first().contains(text("Button/QPushButton \"OK\"")));
    QCOMPARE(records.last(), text("kind 2 childAdded #1 #2"));
}

void tst_BookOfElements::batchesNest() {
    Scene scene;
    QObject object;
    {
        const ElementBook::Batch outer(scene.book);
        {
            const ElementBook::Batch inner(scene.book);
            scene.book.add(&object, window("Main"), nullptr);
        }
        QVERIFY(scene.records().isEmpty());
    }
    QCOMPARE(scene.records().size(), 1);
}

void tst_BookOfElements::changesAreToldOnce() {
    Scene scene;
    QObject object;
    UIElement* const element = scene.book.add(&object, window("Main"), nullptr);
    scene.records();
    for (int i = 0; i < 2; ++i) {
        scene.book.setText(element, text("Other"));
        scene.book.setPlace(element, QRect(1, 2, 3, 4));
        scene.book.setAttribute(element, Attribute::Enabled, text("false"));
        scene.book.announceUse(element, Use::Pressed);
    }
    const QStringList records = scene.records();
    QCOMPARE(records.size(), 4);
    QCOMPARE(records.at(0), text("kind 7 textChanged #1 \"Other\""));
    QCOMPARE(records.at(1), text("kind 4 geometryChanged #1 (1,2 3x4)"));
    QCOMPARE(records.at(3), text("kind 3 eventRegistered #1 pressed"));
    QCOMPARE(scene.book.attribute(element, Attribute::Enabled), text("false"));
}

void tst_BookOfElements::usesAreCounted() {
    Scene scene;
    QObject object;
    UIElement* const element = scene.book.add(&object, button("OK"), nullptr);
    scene.records();
    scene.book.countUse(element, Use::Clicked);
    scene.book.countUse(element, Use::Clicked);
    QCOMPARE(scene.records(), (QStringList{text("kind 11 usageIncreased #1 clicked=1"),
                                           text("kind 11 usageIncreased #1 clicked=2")}));
}

void tst_BookOfElements::theViewOfAControlIsTheNearestAbove() {
    Scene scene;
    QObject object;
    QObject box;
    QObject option;
    UIElement* const root = scene.book.add(&object, window("Main"), nullptr);
    Description what = button("Choice");
    what.type = ElementType::ComboBox;
    UIElement* const control = scene.book.add(&box, what, root);
    what.type = ElementType::Option;
    UIElement* const part = scene.book.add(&option, what, control);
    QCOMPARE(scene.book.viewOf(part), root);
    QCOMPARE(scene.book.viewOf(root), root);
    QCOMPARE(scene.book.parentOf(part), control);
    QVERIFY(scene.book.viewOf(nullptr) == nullptr);
}

void tst_BookOfElements::whatIsMadeAnewIsTheSameElement() {
    Scene scene;
    QObject object;
    UIElement* const root = scene.book.add(&object, window("Main"), nullptr);
    auto first = std::make_unique<QObject>();
    UIElement* const element = scene.book.add(first.get(), button("OK"), root);
    scene.book.countUse(element, Use::Clicked);
    first.reset();
    scene.records();
    QObject second;
    QCOMPARE(scene.book.add(&second, button("OK"), root), element);
    QVERIFY(scene.records().isEmpty());
    scene.book.countUse(element, Use::Clicked);
    QCOMPARE(scene.records(), QStringList{text("kind 11 usageIncreased #2 clicked=2")});
}

void tst_BookOfElements::whatIsMadeAnewIsToldAsItIsNow() {
    Scene scene;
    auto first = std::make_unique<QObject>();
    Description what = button("OK");
    what.attributes.append(qMakePair(Attribute::Enabled, text("false")));
    UIElement* const element = scene.book.add(first.get(), what, nullptr);
    first.reset();
    what.attributes.clear();
    what.attributes.append(qMakePair(Attribute::ToolTip, text("Yes")));
    QObject second;
    QCOMPARE(scene.book.add(&second, what, nullptr), element);
    QVERIFY(scene.book.attribute(element, Attribute::Enabled).isNull());
    QCOMPARE(scene.book.attribute(element, Attribute::ToolTip), text("Yes"));
}

void tst_BookOfElements::theFirstOfThoseAlikeIsUsedAgainFirst() {
    Scene scene;
    QObject object;
    UIElement* const root = scene.book.add(&object, window("Main"), nullptr);
    std::vector<std::unique_ptr<QObject>> objects;
    std::vector<UIElement*> elements;
    for (int i = 0; i < 3; ++i) {
        objects.push_back(std::make_unique<QObject>());
        elements.push_back(scene.book.add(objects.back().get(), button("Row"), root));
    }
    objects.clear();
    for (int i = 0; i < 3; ++i) {
        objects.push_back(std::make_unique<QObject>());
        QCOMPARE(scene.book.add(objects.back().get(), button("Row"), root),
                 elements.at(static_cast<std::size_t>(i)));
    }
    QObject fourth;
    UIElement* const added = scene.book.add(&fourth, button("Row"), root);
    QVERIFY(std::find(elements.begin(), elements.end(), added) == elements.end());
}

void tst_BookOfElements::whatLivesIsNotUsedAgain() {
    Scene scene;
    QObject first;
    QObject second;
    UIElement* const element = scene.book.add(&first, button("OK"), nullptr);
    QVERIFY(scene.book.add(&second, button("OK"), nullptr) != element);
    QCOMPARE(scene.book.elementOf(&first), element);
}

void tst_BookOfElements::whatDiffersIsNotUsedAgain() {
    Scene scene;
    auto first = std::make_unique<QObject>();
    UIElement* const element = scene.book.add(first.get(), button("OK"), nullptr);
    first.reset();
    Description named = button("OK");
    named.attributes.append(qMakePair(Attribute::ObjectName, text("ok")));
    QObject second;
    QVERIFY(scene.book.add(&second, named, nullptr) != element);
    QObject third;
    QVERIFY(scene.book.add(&third, button("Cancel"), nullptr) != element);
}

void tst_BookOfElements::partsWithoutAnObjectAreUsedAgainWithWhatTheyBelongTo() {
    Scene scene;
    auto first = std::make_unique<QObject>();
    Description part = button("Red");
    part.type = ElementType::Option;
    UIElement* const box = scene.book.add(first.get(), button("Colour"), nullptr);
    UIElement* const red = scene.book.add(nullptr, part, box);
    QVERIFY(scene.book.add(nullptr, part, box) != red);
    first.reset();
    QObject second;
    QCOMPARE(scene.book.add(&second, button("Colour"), nullptr), box);
    QCOMPARE(scene.book.add(nullptr, part, box), red);
}

void tst_BookOfElements::manyVisitsDoNotMakeMoreElements() {
    Scene scene;
    QObject object;
    UIElement* const root = scene.book.add(&object, window("Main"), nullptr);
    for (int visit = 0; visit < 200; ++visit) {
        QObject page;
        std::vector<std::unique_ptr<QObject>> boxes;
        const ElementBook::Batch batch(scene.book);
        UIElement* const made = scene.book.add(&page, window("Page"), root);
        for (int i = 0; i < 30; ++i) {
            boxes.push_back(std::make_unique<QObject>());
            scene.book.add(boxes.back().get(), button("Box"), made);
        }
    }
    QCOMPARE(root->children().size(), 1);
    QCOMPARE(root->children().first()->children().size(), 30);
}

QTEST_GUILESS_MAIN(tst_BookOfElements)
#include "tst_bookofelements.moc"
