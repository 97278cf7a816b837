// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtmainwindowobserver.h"
#include "windowobservercases.h"

#include <QMainWindow>

using namespace Vorsk::UICoverage;

class tst_QtMainWindowObserver : public TestLib::TestCase {
    Q_OBJECT

    using Cases = WindowObserverCases<QMainWindow, QtMainWindowObserver>;

private Q_SLOTS:
    void addsNothingToAWidgetObserversSlots() {
        const QMetaObject& meta = QtMainWindowObserver::staticMetaObject;
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

QTEST_MAIN(tst_QtMainWindowObserver)
#include "tst_qtmainwindowobserver.moc"
