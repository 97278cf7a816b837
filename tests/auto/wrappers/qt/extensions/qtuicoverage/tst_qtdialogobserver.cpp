// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtdialogobserver.h"
#include "windowobservercases.h"

#include <QDialog>

using namespace Vorsk::UICoverage;

class tst_QtDialogObserver : public TestLib::TestCase {
    Q_OBJECT

    using Cases = WindowObserverCases<QDialog, QtDialogObserver>;

private Q_SLOTS:
    void addsNothingToAWidgetObserversSlots() {
        const QMetaObject& meta = QtDialogObserver::staticMetaObject;
        QCOMPARE(meta.superClass(), &QtWidgetObserver::staticMetaObject);
        QCOMPARE(meta.methodCount(), meta.methodOffset());
    }

    void elementIsAWindowNamedAfterTheTitle_data() { Cases::titles(); }

    void elementIsAWindowNamedAfterTheTitle() {
        QFETCH(QString, title);
        QTEST(Cases::print(m_probe, title), "printed");
    }

    void windowIsAnnouncedBeforeTheTitleAndNothingIsLater() {
        QCOMPARE(Cases::announcements(m_probe),
                 (QStringList{QStringLiteral("window"), QStringLiteral("title")}));
    }

private:
    TestLib::WidgetsProbe m_probe;
};

QTEST_MAIN(tst_QtDialogObserver)
#include "tst_qtdialogobserver.moc"
