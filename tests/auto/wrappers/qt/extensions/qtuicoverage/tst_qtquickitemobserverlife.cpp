// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "shownscene.h"
#include "testlib/quickprobe.h"
#include "testlib/quickscene.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QSignalSpy>
#include <QTest>

using TestLib::QuickProbe;
using TestLib::QuickScene;
using Vorsk::UIAbstraction::UIElement;

using Imports = QuickScene::Imports;

/** Items that are shown, hidden and deleted while they are observed. */
class tst_QtQuickItemObserverLife : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hiddenButtonBecomesVisibleWhenShown_data();
    void hiddenButtonBecomesVisibleWhenShown();
    void buttonThatWasSeenOnceStaysVisible();
    void transparentButtonThatIsShownStaysTransparent();
    void unrecognisedItemStaysTransparent();
    void textIsNotFollowed();
    void itemMayDestroyItselfWhenItIsClicked();
    void itemMayBeDeletedBeforeItsClickIsCounted();
    void itemMayBeDeletedWhileItsStateIsRead();
    void itemMayBeDeletedWhenItIsFirstReadFrom();
    void nothingIsReadOfAnItemThatIsBeingDestroyed();
};

void tst_QtQuickItemObserverLife::hiddenButtonBecomesVisibleWhenShown_data() {
    QTest::addColumn<QByteArray>("state");
    QTest::newRow("invisible") << QByteArray("visible: false");
    QTest::newRow("invisible and transparent") << QByteArray("visible: false; opacity: 0");
}

void tst_QtQuickItemObserverLife::hiddenButtonBecomesVisibleWhenShown() {
    QFETCH(QByteArray, state);
    ShownScene shown("T.Button { objectName: 'it'; " + state + " }", Imports::Templates2);
    QQuickItem* const button = shown.scene.item("it");
    const UIElement* const element = shown.probe.element(button);
    QVERIFY(element->isTransparentNode());
    button->setOpacity(1);
    QVERIFY(element->isTransparentNode());
    button->setVisible(true);
    QVERIFY(!element->isTransparentNode());
}

void tst_QtQuickItemObserverLife::buttonThatWasSeenOnceStaysVisible() {
    ShownScene shown("T.Button { objectName: 'it' }", Imports::Templates2);
    QQuickItem* const button = shown.scene.item("it");
    QVERIFY(!shown.probe.element(button)->isTransparentNode());
    button->setVisible(false);
    QVERIFY(!shown.probe.element(button)->isTransparentNode());
    QCOMPARE(shown.probe.takeRecords(8), QStringList());
}

void tst_QtQuickItemObserverLife::transparentButtonThatIsShownStaysTransparent() {
    ShownScene shown("T.Button { objectName: 'it'; visible: false; opacity: 0 }",
                     Imports::Templates2);
    shown.scene.item("it")->setVisible(true);
    QVERIFY(shown.probe.element(shown.scene.item("it"))->isTransparentNode());
    QCOMPARE(shown.probe.takeRecords(8).size(), 1); // announced again all the same
}

void tst_QtQuickItemObserverLife::unrecognisedItemStaysTransparent() {
    ShownScene shown("Rectangle { objectName: 'it'; visible: false }");
    QQuickItem* const item = shown.scene.item("it");
    item->setVisible(true);
    item->setVisible(false);
    QVERIFY(shown.probe.element(item)->isTransparentNode());
    QVERIFY(shown.probe.element(item)->standardType().name().isNull());
    QCOMPARE(shown.probe.takeRecords(), QStringList());
}

void tst_QtQuickItemObserverLife::textIsNotFollowed() {
    ShownScene shown("T.Button { objectName: 'it'; text: 'old' }", Imports::Templates2);
    QVERIFY(shown.scene.item("it")->setProperty("text", QStringLiteral("new")));
    QCOMPARE(shown.probe.element(shown.scene.item("it"))->text(), QStringLiteral("old"));
}

void tst_QtQuickItemObserverLife::itemMayDestroyItselfWhenItIsClicked() {
    ShownScene shown("property var made: Qt.createQmlObject('import QtQuick.Controls 2.3; Button {"
                     " objectName: \"it\"; onClicked: destroy() }', this)",
                     Imports::Controls2);
    QVERIFY(shown.scene.show());
    const QPointer<QQuickItem> button = shown.scene.item("it");
    const UIElement* const element = shown.probe.element(button);
    shown.scene.click(button);
    QTRY_VERIFY(button.isNull());
    QCOMPARE(usageText(element), QStringLiteral("clicked=1"));
    QVERIFY(!shown.probe.tracker().elementStore().elements().contains(
        const_cast<UIElement*>(element))); // compared only
    shown.probe.focusIn(shown.scene.window());
}

class Deleter : public QObject {
    Q_OBJECT
public:
    explicit Deleter(QQuickItem* victim)
        : m_victim(victim) {}
public Q_SLOTS:
    void deleteVictim() { delete m_victim; }

private:
    QPointer<QQuickItem> m_victim;
};

void tst_QtQuickItemObserverLife::itemMayBeDeletedBeforeItsClickIsCounted() {
    QuickProbe probe;
    QuickScene scene("Item { Item { signal clicked(); objectName: 'it' } }");
    const QPointer<QQuickItem> item = scene.item("it");
    // Connected before the observer is, so the item is gone when the observer's turn comes.
    Deleter deleter(item);
    connect(item, SIGNAL(clicked()), &deleter, SLOT(deleteVictim()));
    probe.show(scene.window());
    const UIElement* const element = probe.element(item);
    QVERIFY(QMetaObject::invokeMethod(item, "clicked"));
    QVERIFY(item.isNull());
    QCOMPARE(usageText(element), QStringLiteral("clicked=0"));
    probe.focusIn(scene.window());
}

/** Deletes itself when its state is read. */
class SelfDestructive : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(bool checked READ isChecked NOTIFY checkedChanged)
public:
    using QQuickItem::QQuickItem;
    bool isChecked() {
        delete this;
        return true;
    }
Q_SIGNALS:
    void checkedChanged();
};

void tst_QtQuickItemObserverLife::itemMayBeDeletedWhileItsStateIsRead() {
    QuickProbe probe;
    QQuickWindow window;
    const QPointer<SelfDestructive> item = new SelfDestructive(window.contentItem());
    probe.show(&window);
    const UIElement* const element = probe.element(item);
    Q_EMIT item->checkedChanged();
    QVERIFY(item.isNull()); // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): its parent owns it
    QCOMPARE(usageText(element), QStringLiteral("checked=1"));
}

/** Deletes itself when the first of its properties is read. */
class DeadAtFirstSight : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(bool partiallyCheckedEnabled READ isPartial CONSTANT)
    Q_PROPERTY(bool checkable READ isCheckable CONSTANT)
public:
    using QQuickItem::QQuickItem;
    bool isPartial() {
        delete this;
        return true;
    }
    bool isCheckable() const { return true; }
};

void tst_QtQuickItemObserverLife::itemMayBeDeletedWhenItIsFirstReadFrom() {
    QuickProbe probe;
    QQuickWindow window;
    const QPointer<DeadAtFirstSight> item = new DeadAtFirstSight(window.contentItem());
    QQuickItem sibling(window.contentItem());
    probe.show(&window);
    QVERIFY(item.isNull()); // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): its parent owns it
    QVERIFY(probe.element(&sibling) != nullptr);
}

/** Knows how often it was looked into. */
class Watched : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    Q_PROPERTY(bool checked READ isChecked NOTIFY checkedChanged)
public:
    explicit Watched(int* reads)
        : m_reads(reads) {}
    QString text() const {
        ++*m_reads;
        return {};
    }
    bool isChecked() const {
        ++*m_reads;
        return true;
    }
Q_SIGNALS:
    void textChanged();
    void checkedChanged();

private:
    int* m_reads;
};

void tst_QtQuickItemObserverLife::nothingIsReadOfAnItemThatIsBeingDestroyed() {
    int reads = 0;
    QuickProbe probe;
    QQuickWindow window;
    auto* const item = new Watched(&reads);
    item->setParentItem(window.contentItem());
    probe.show(&window);
    QCOMPARE(reads, 1);
    QQuickItem child;
    child.setParentItem(item);
    QVERIFY(probe.element(&child));
    delete item; // announces that it is hidden and that its children leave
    QCOMPARE(reads, 1);
    QVERIFY(probe.element(&child));
}

QTEST_MAIN(tst_QtQuickItemObserverLife)

#include "tst_qtquickitemobserverlife.moc"
