// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "qtuicoverage/qtquickitemobserver.h"
#include "testlib/testcase.h"
#include "tracking/observerpool.h"
#include "uiabstraction/uielement.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <memory>
#include <random>

using Vorsk::UIAbstraction::ElementStore;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UICoverage::ObserverPool;
using Vorsk::UICoverage::QtQuickCoverageTracker;
using Vorsk::UICoverage::QtQuickItemObserver;
using Vorsk::UICoverage::UICoverageTracker;

namespace {

/** Tracks items in the plainest way: looks at all children of an item whenever they change. */
class PlainTracker : public UICoverageTracker {
public:
    PlainTracker()
        : UICoverageTracker(nullptr) {}

    UIElement* trackItem(QQuickItem* item) {
        UIElement* tracked = element(item);
        if (tracked == nullptr) {
            tracked = new UIElement(QStringLiteral("Item"), StandardType(), QString());
            tracked->setTransparentNode(true);
            elementStore().addMapping(item, tracked);
            m_observers.addObserver(tracked, new QtQuickItemObserver(item, tracked, this));
        }
        if (UIElement* const parent = element(item->parentItem())) {
            parent->addChild(tracked);
        }
        const QList<QQuickItem*> children = item->childItems();
        for (QQuickItem* child : children) {
            trackItem(child);
        }
        return tracked;
    }

    void trackChildren(QObject* object) override {
        const QList<QQuickItem*> children = static_cast<QQuickItem*>(object)->childItems();
        for (QQuickItem* child : children) {
            if (element(child) == nullptr) {
                trackItem(child);
                trackChildren(child);
            }
        }
    }

private:
    ObserverPool m_observers;
};

/** Writes down what a tracker announces of its elements, each with the name of its item. */
class Journal : public QObject {
public:
    explicit Journal(UICoverageTracker& tracker) {
        connect(&tracker.elementStore(), &ElementStore::elementAdded, this,
                [this, &tracker](const UIElement* element) {
                    const QObject* const object = tracker.elementStore().objectForElement(element);
                    m_names.insert(element, object->objectName());
                    m_elements.append(const_cast<UIElement*>(element));
                    lines.append(QStringLiteral("added ") + object->objectName());
                    connect(element, &UIElement::childAdded, this,
                            [this](const UIElement* parent, const UIElement* child) {
                                lines.append(QStringLiteral("%1 lists %2")
                                                 .arg(m_names.value(parent), m_names.value(child)));
                            });
                });
    }

    ~Journal() override {
        for (const QPointer<UIElement>& element : qAsConst(m_elements)) {
            delete element;
        }
    }

    /** Every element that was ever made with those that it lists. */
    QStringList tree() const {
        QStringList text;
        for (const QPointer<UIElement>& element : m_elements) {
            QStringList children;
            const QList<UIElement*> listed = element->children();
            for (const UIElement* child : listed) {
                children.append(m_names.value(child));
            }
            text.append(m_names.value(element) + QStringLiteral(": ") +
                        children.join(QLatin1Char(' ')));
        }
        return text;
    }

    QStringList lines;

private:
    QHash<const UIElement*, QString> m_names;
    QList<QPointer<UIElement>> m_elements;
};

/** Items in a window and beside it, and what may happen to them, by chance. */
class History {
public:
    History(quint32 seed, QQuickItem* root)
        : m_random(seed)
        , m_root(root) {}

    ~History() {
        for (const QPointer<QQuickItem>& item : qAsConst(m_items)) {
            delete item;
        }
    }

    /** @return what happened, for a person who wants to know */
    QString step() {
        m_items.removeAll(QPointer<QQuickItem>());
        switch (below(8)) {
        case 0:
        case 1:
            return makeItem();
        case 2:
        case 3:
            return moveItem(any());
        case 4:
            return moveToTheEdge();
        case 5:
            return restack();
        case 6:
            return below(3) == 0 ? deleteItem() : makeBatch();
        default:
            return moveAllChildren();
        }
    }

private:
    int below(int bound) { return static_cast<int>(m_random() % static_cast<quint32>(bound)); }

    QQuickItem* any() {
        const int index = below(m_items.size() + 1);
        return index == m_items.size() ? m_root : m_items.at(index).data();
    }

    QQuickItem* makeNamed() {
        auto* const item = new QQuickItem;
        item->setObjectName(QStringLiteral("i%1").arg(++m_made));
        m_items.append(item);
        return item;
    }

    QString moveTo(QQuickItem* item, QQuickItem* parent) {
        if (item == m_root || parent == item || (parent != nullptr && item->isAncestorOf(parent))) {
            return QStringLiteral("nothing");
        }
        item->setParentItem(parent);
        return QStringLiteral("%1 to %2")
            .arg(item->objectName(),
                 parent == nullptr ? QStringLiteral("none") : parent->objectName());
    }

    QString makeItem() { return moveTo(makeNamed(), below(4) == 0 ? nullptr : any()); }

    QString moveItem(QQuickItem* item) { return moveTo(item, below(5) == 0 ? nullptr : any()); }

    QString moveToTheEdge() {
        QQuickItem* const parent = any();
        const QList<QQuickItem*> children = parent->childItems();
        if (children.isEmpty()) {
            return QStringLiteral("nothing");
        }
        return moveItem(below(2) == 0 ? children.constFirst() : children.constLast());
    }

    QString restack() {
        const QList<QQuickItem*> children = any()->childItems();
        if (children.size() < 2) {
            return QStringLiteral("nothing");
        }
        QQuickItem* const moved = children.at(below(children.size()));
        QQuickItem* const other = children.at(below(children.size()));
        if (moved != other) {
            below(2) == 0 ? moved->stackBefore(other) : moved->stackAfter(other);
        }
        return QStringLiteral("restack ") + moved->objectName();
    }

    QString deleteItem() {
        QQuickItem* const item = any();
        if (item == m_root) {
            return QStringLiteral("nothing");
        }
        const QString name = item->objectName();
        delete item;
        return QStringLiteral("delete ") + name;
    }

    /** An item with others below it, put together outside of any window. */
    QString makeBatch() {
        QQuickItem* const top = makeNamed();
        for (int i = below(4); i > 0; --i) {
            makeNamed()->setParentItem(top);
        }
        return QStringLiteral("batch ") + moveTo(top, any());
    }

    QString moveAllChildren() {
        QQuickItem* const from = any();
        QQuickItem* const to = any();
        const QList<QQuickItem*> children = from->childItems();
        for (QQuickItem* child : children) {
            moveTo(child, to);
        }
        return QStringLiteral("children of %1 to %2").arg(from->objectName(), to->objectName());
    }

    std::mt19937 m_random;
    QQuickItem* m_root;
    QList<QPointer<QQuickItem>> m_items;
    int m_made = 0;
};

} // namespace

/**
 * The tracker remembers which children of an item it knows, so that it need not look at all of them
 * each time. Whatever happens to the items, it must announce what a tracker without a memory does.
 */
class tst_QtQuickCoverageTrackerHistory : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void announcesTheSameAsThePlainWay_data();
    void announcesTheSameAsThePlainWay();
    void childrenThatCameUnheardAreFoundWithTheNextOne_data();
    void childrenThatCameUnheardAreFoundWithTheNextOne();
    void childThatCameUnheardIsFoundWhenAnotherLeaves();
    void childThatComesWhileAnotherIsTrackedIsTracked();
};

void tst_QtQuickCoverageTrackerHistory::announcesTheSameAsThePlainWay_data() {
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed) {
        QTest::addRow("history %u", seed) << seed;
    }
}

void tst_QtQuickCoverageTrackerHistory::announcesTheSameAsThePlainWay() {
    QFETCH(quint32, seed);
    QQuickWindow window;
    window.setObjectName(QStringLiteral("window"));
    window.contentItem()->setObjectName(QStringLiteral("root"));
    PlainTracker plainTracker;
    QtQuickCoverageTracker tracker(nullptr);
    Journal plain(plainTracker);
    Journal journal(tracker);
    plainTracker.trackItem(window.contentItem());
    tracker.windowElement(&window);
    // The window's own, which the plain tracker has nothing to do with.
    QCOMPARE(journal.lines.takeFirst(), QStringLiteral("added window"));
    QCOMPARE(journal.lines.takeLast(), QStringLiteral("window lists root"));

    History history(seed, window.contentItem());
    for (int step = 0; step < 200; ++step) {
        const QString what = history.step();
        QVERIFY2(journal.lines == plain.lines,
                 qPrintable(QStringLiteral("after step %1: %2").arg(step).arg(what)));
    }
    QVERIFY(plain.lines.size() > 20);
    QCOMPARE(journal.tree().mid(1), plain.tree());
}

namespace {

/** Changes the children of the item without a signal, as an application can that blocks them. */
using Unheard = void (*)(QQuickItem* parent, QList<QQuickItem*>& children);

void addOneRemoveFirst(QQuickItem* parent, QList<QQuickItem*>& children) {
    children.append(new QQuickItem);
    children.last()->setParentItem(parent);
    children.first()->setParentItem(nullptr);
}

void addOneRemoveLast(QQuickItem* parent, QList<QQuickItem*>& children) {
    QQuickItem* const last = children.last();
    children.append(new QQuickItem);
    children.last()->setParentItem(parent);
    last->setParentItem(nullptr);
}

void addOneRemoveTwo(QQuickItem* parent, QList<QQuickItem*>& children) {
    children.append(new QQuickItem);
    children.last()->setParentItem(parent);
    children.at(0)->setParentItem(nullptr);
    children.at(1)->setParentItem(nullptr);
}

void addTwo(QQuickItem* parent, QList<QQuickItem*>& children) {
    for (int i = 0; i < 2; ++i) {
        children.append(new QQuickItem);
        children.last()->setParentItem(parent);
    }
}

} // namespace

Q_DECLARE_METATYPE(Unheard)

void tst_QtQuickCoverageTrackerHistory::childrenThatCameUnheardAreFoundWithTheNextOne_data() {
    QTest::addColumn<Unheard>("change");
    QTest::newRow("one more, the first one gone") << &addOneRemoveFirst;
    QTest::newRow("one more, the last one gone") << &addOneRemoveLast;
    QTest::newRow("one more, two gone") << &addOneRemoveTwo;
    QTest::newRow("two more") << &addTwo;
}

void tst_QtQuickCoverageTrackerHistory::childrenThatCameUnheardAreFoundWithTheNextOne() {
    QFETCH(Unheard, change);
    QQuickWindow window;
    QtQuickCoverageTracker tracker(nullptr);
    Journal journal(tracker);
    QQuickItem* const parent = window.contentItem();
    QList<QQuickItem*> children;
    for (int i = 0; i < 5; ++i) {
        children.append(new QQuickItem);
        children.last()->setParentItem(parent);
    }
    tracker.windowElement(&window);
    parent->blockSignals(true);
    change(parent, children);
    parent->blockSignals(false);
    QCOMPARE(tracker.element(children.last()), nullptr);
    children.append(new QQuickItem);
    children.last()->setParentItem(parent);
    const QList<QQuickItem*> present = parent->childItems();
    for (QQuickItem* child : present) {
        QVERIFY(tracker.element(child));
    }
    qDeleteAll(children);
}

void tst_QtQuickCoverageTrackerHistory::childThatCameUnheardIsFoundWhenAnotherLeaves() {
    QQuickWindow window;
    QtQuickCoverageTracker tracker(nullptr);
    Journal journal(tracker);
    QQuickItem* const parent = window.contentItem();
    QList<QQuickItem*> children;
    for (int i = 0; i < 5; ++i) {
        children.append(new QQuickItem);
        children.last()->setParentItem(parent);
    }
    tracker.windowElement(&window);
    parent->blockSignals(true);
    addOneRemoveTwo(parent, children);
    parent->blockSignals(false);
    QCOMPARE(tracker.element(children.last()), nullptr);
    children.at(2)->setParentItem(nullptr);
    QVERIFY(tracker.element(children.last()));
    qDeleteAll(children);
}

/** Gives its parent another child when it is looked at. */
class Breeding : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString text READ text CONSTANT)
public:
    explicit Breeding(QQuickItem* sibling)
        : m_sibling(sibling) {}
    QString text() const {
        m_sibling->setParentItem(parentItem());
        return {};
    }

private:
    QQuickItem* m_sibling;
};

void tst_QtQuickCoverageTrackerHistory::childThatComesWhileAnotherIsTrackedIsTracked() {
    QQuickWindow window;
    QtQuickCoverageTracker tracker(nullptr);
    Journal journal(tracker);
    tracker.windowElement(&window);
    QQuickItem sibling;
    Breeding breeding(&sibling);
    breeding.setParentItem(window.contentItem());
    QVERIFY(tracker.element(&breeding));
    QVERIFY(tracker.element(&sibling));
    const QQuickItem later(window.contentItem());
    QCOMPARE(tracker.element(window.contentItem())->children().size(), 3);
}

QTEST_MAIN(tst_QtQuickCoverageTrackerHistory)

#include "tst_qtquickcoveragetrackerhistory.moc"
