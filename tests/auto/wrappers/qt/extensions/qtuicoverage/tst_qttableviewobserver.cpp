// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "itemviewcases.h"
#include "qtuicoverage/qttableviewobserver.h"

#include <QTableView>
#include <QTableWidget>

using namespace Vorsk::UICoverage;

class tst_QtTableViewObserver : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hasNoSlotOfItsOwn() {
        const QMetaObject& meta = QtTableViewObserver::staticMetaObject;
        QCOMPARE(meta.superClass(), &QtAbstractItemViewObserver::staticMetaObject);
        QCOMPARE(meta.methodCount(), meta.methodOffset());
    }

    void getsTheSameSixConnectionsAsAnyItemView() {
        QCOMPARE((connectionsMadeBy<QTableView, QtTableViewObserver>(m_probe)),
                 (connectionsMadeBy<QTableView, QtAbstractItemViewObserver>(m_probe)));
        QCOMPARE((connectionsMadeBy<QTableView, QtTableViewObserver>(m_probe)),
                 (QList<int>{1, 1, 1, 1, 1, 1}));
    }

    void usingACellCountsAndRegistersNothing() {
        int emitted = 0;
        QCOMPARE((elementAfterUse<QTableView, QtTableViewObserver>(m_probe, emitted)),
                 QStringLiteral("unknown/View\n"));
        QVERIFY(emitted > 0);
    }

private:
    TestLib::WidgetsProbe m_probe;
};

QTEST_MAIN(tst_QtTableViewObserver)
#include "tst_qttableviewobserver.moc"
