// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "itemviewcases.h"
#include "qtuicoverage/qtabstractitemviewobserver.h"

#include <QListView>
#include <QTreeView>

using namespace Vorsk::UICoverage;

class tst_QtAbstractItemViewObserver : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hasSixPrivateSlotsInOrder() {
        const QMetaObject& meta = QtAbstractItemViewObserver::staticMetaObject;
        QCOMPARE(meta.superClass(), &QtWidgetObserver::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 6);
        const char* const signatures[] = {"onActivated(QModelIndex)",     "onClicked(QModelIndex)",
                                          "onDoubleClicked(QModelIndex)", "onEntered(QModelIndex)",
                                          "onPressed(QModelIndex)",       "onViewportEntered()"};
        for (int i = 0; i < 6; ++i) {
            const QMetaMethod slot = meta.method(meta.methodOffset() + i);
            QCOMPARE(slot.methodSignature(), QByteArray(signatures[i]));
            QCOMPARE(slot.access(), QMetaMethod::Private);
        }
    }

    void connectsToTheSixSignals() {
        const QList<int> once{1, 1, 1, 1, 1, 1};
        QCOMPARE((connectionsMadeBy<QListView, QtAbstractItemViewObserver>(m_probe)), once);
        QCOMPARE((connectionsMadeBy<QTreeView, QtAbstractItemViewObserver>(m_probe)), once);
    }

    void usingACellCountsAndRegistersNothing() {
        int emitted = 0;
        QCOMPARE((elementAfterUse<QListView, QtAbstractItemViewObserver>(m_probe, emitted)),
                 QStringLiteral("unknown/View\n"));
        QVERIFY(emitted > 0);
    }

private:
    TestLib::WidgetsProbe m_probe;
};

QTEST_MAIN(tst_QtAbstractItemViewObserver)
#include "tst_qtabstractitemviewobserver.moc"
