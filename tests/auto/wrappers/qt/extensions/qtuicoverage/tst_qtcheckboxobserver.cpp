// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtcheckboxobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/testcase.h"
#include "testlib/treeprinter.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QCheckBox>
#include <QTest>

#include <memory>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

class tst_QtCheckBoxObserver : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hasOnePrivateSlot() {
        const QMetaObject& meta = QtCheckBoxObserver::staticMetaObject;
        QCOMPARE(meta.superClass(), &QtAbstractButtonObserver::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        const QMetaMethod slot = meta.method(meta.methodOffset());
        QCOMPARE(slot.methodSignature(), QByteArray("checkBoxChangedState(int)"));
        QCOMPARE(slot.parameterNames(), QList<QByteArray>{"state"});
        QCOMPARE(slot.access(), QMetaMethod::Private);
    }

    void eventsAreRegisteredInOrder_data() {
        QTest::addColumn<bool>("tristate");
        QTest::addColumn<QStringList>("events");
        const QStringList two{QStringLiteral("clicked"), QStringLiteral("checked"),
                              QStringLiteral("unchecked")};
        QTest::newRow("two states") << false << two;
        QTest::newRow("three states")
            << true << two + QStringList{QStringLiteral("partiallyChecked")};
    }

    void eventsAreRegisteredInOrder() {
        QFETCH(bool, tristate);
        QCheckBox checkBox(QStringLiteral("&Wrap"));
        checkBox.setTristate(tristate);
        UIElement element(QStringLiteral("QCheckBox"), StandardType(), QString());
        QStringList events;
        connect(&element, &UIElement::eventRegistered, this,
                [&](const UIElement*, const UIEvent& registered) { events << registered.name(); });
        const QtCheckBoxObserver observer(&checkBox, &element, &m_probe.tracker());
        QTEST(events, "events");
        QCOMPARE(element.text(), QStringLiteral("Wrap"));
    }

    void checkingByClickCountsClickedAndChecked() {
        Watched watched(m_probe, false);
        watched.click();
        QCOMPARE(watched.usage(), QStringLiteral("{checked=1, clicked=1, unchecked=0}"));
    }

    void uncheckingByClickCountsClickedOnly() {
        Watched watched(m_probe, false);
        watched.checkBox.setChecked(true);
        watched.click();
        QCOMPARE(watched.checkBox.checkState(), Qt::Unchecked);
        QCOMPARE(watched.usage(), QStringLiteral("{checked=1, clicked=1, unchecked=0}"));
    }

    void partialStateByClickCountsClickedAndPartiallyChecked() {
        Watched watched(m_probe, true);
        watched.click();
        QCOMPARE(watched.checkBox.checkState(), Qt::PartiallyChecked);
        QCOMPARE(watched.usage(),
                 QStringLiteral("{checked=0, clicked=1, partiallyChecked=1, unchecked=0}"));
        watched.click();
        watched.click();
        QCOMPARE(watched.checkBox.checkState(), Qt::Unchecked);
        QCOMPARE(watched.usage(),
                 QStringLiteral("{checked=1, clicked=3, partiallyChecked=1, unchecked=0}"));
    }

    void changeByTheApplicationCountsTheStateOnly_data() {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<QString>("usage");
        QTest::newRow("checked") << int(Qt::Unchecked) << int(Qt::Checked)
                                 << QStringLiteral("{checked=1, clicked=0, partiallyChecked=0, "
                                                   "unchecked=0}");
        QTest::newRow("partially checked")
            << int(Qt::Unchecked) << int(Qt::PartiallyChecked)
            << QStringLiteral("{checked=0, clicked=0, partiallyChecked=1, unchecked=0}");
        QTest::newRow("unchecked") << int(Qt::Checked) << int(Qt::Unchecked)
                                   << QStringLiteral("{checked=0, clicked=0, partiallyChecked=0, "
                                                     "unchecked=0}");
        QTest::newRow("no change") << int(Qt::Checked) << int(Qt::Checked)
                                   << QStringLiteral("{checked=0, clicked=0, partiallyChecked=0, "
                                                     "unchecked=0}");
    }

    void changeByTheApplicationCountsTheStateOnly() {
        QFETCH(int, from);
        QFETCH(int, to);
        Watched watched(m_probe, true, static_cast<Qt::CheckState>(from));
        watched.checkBox.setCheckState(static_cast<Qt::CheckState>(to));
        QTEST(watched.usage(), "usage");
    }

    void partialStateOfABoxMadeTristateLaterIsCountedSilently() {
        Watched watched(m_probe, false);
        QStringList registered;
        connect(&watched.element, &UIElement::eventRegistered, this,
                [&](const UIElement*, const UIEvent& added) { registered << added.name(); });
        QCOMPARE(watched.usage(), QStringLiteral("{checked=0, clicked=0, unchecked=0}"));
        watched.checkBox.setTristate(true);
        QCOMPARE(watched.usage(), QStringLiteral("{checked=0, clicked=0, unchecked=0}"));
        watched.checkBox.setCheckState(Qt::PartiallyChecked);
        QCOMPARE(watched.usage(),
                 QStringLiteral("{checked=0, clicked=0, partiallyChecked=1, unchecked=0}"));
        QCOMPARE(registered, QStringList());
    }

    void otherStatesAreIgnored_data() {
        QTest::addColumn<int>("state");
        QTest::newRow("unchecked") << 0;
        QTest::newRow("3") << 3;
        QTest::newRow("negative") << -1;
        QTest::newRow("large") << 0x7FFFFFFF;
    }

    void otherStatesAreIgnored() {
        QFETCH(int, state);
        Watched watched(m_probe, true);
        Q_EMIT watched.checkBox.stateChanged(state);
        QCOMPARE(watched.usage(),
                 QStringLiteral("{checked=0, clicked=0, partiallyChecked=0, unchecked=0}"));
    }

private:
    /** A check box with its observer. */
    struct Watched {
        Watched(TestLib::WidgetsProbe& probe, bool tristate, Qt::CheckState state = Qt::Unchecked)
            : element(QStringLiteral("QCheckBox"), StandardType(), QString()) {
            checkBox.setTristate(tristate);
            checkBox.setCheckState(state);
            checkBox.resize(100, 30);
            observer = std::make_unique<QtCheckBoxObserver>(&checkBox, &element, &probe.tracker());
        }

        void click() { QTest::mouseClick(&checkBox, Qt::LeftButton, {}, QPoint(8, 15)); }

        QString usage() const {
            return TestLib::TreePrinter().print(element).section(QLatin1Char(' '), 1).trimmed();
        }

        QCheckBox checkBox;
        UIElement element;
        std::unique_ptr<QtCheckBoxObserver> observer;
    };

    TestLib::WidgetsProbe m_probe;
};

QTEST_MAIN(tst_QtCheckBoxObserver)
#include "tst_qtcheckboxobserver.moc"
