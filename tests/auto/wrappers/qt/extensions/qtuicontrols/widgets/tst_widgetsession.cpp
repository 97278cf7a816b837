// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "sessionsteps.h"
#include "testlib/hostapplication.h"
#include "testlib/testcase.h"

#include <QTest>

using TestLib::HostApplication;

/**
 * A person works through a window with every kind of control while the program changes others by
 * itself, in slots, in timers and in nested event loops. Each step has to count what was operated
 * and nothing else.
 */
class tst_WidgetSession : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyStepCountsWhatWasOperated_data();
    void everyStepCountsWhatWasOperated();
};

void tst_WidgetSession::everyStepCountsWhatWasOperated_data() {
    QTest::addColumn<bool>("tellsEnds");
    QTest::newRow("the host tells ends of deliveries") << true;
    QTest::newRow("the host tells begins only") << false;
}

void tst_WidgetSession::everyStepCountsWhatWasOperated() {
    QFETCH(bool, tellsEnds);
    HostApplication::setTellsEnds(tellsEnds);
    Session session;
    pushButtonSteps(session);
    pushButtonSlotSteps(session);
    choiceButtonSteps(session);
    lineEditSteps(session);
    textEditSteps(session);
    textMenuSteps(session);
    comboBoxSteps(session);
    editableComboBoxSteps(session);
    spinBoxSteps(session);
    sliderSteps(session);
    tabSteps(session);
    listSteps(session);
    treeSteps(session);
    menuSteps(session);
    actionSteps(session);
    shortcutSteps(session);
    linkAndAreaSteps(session);
    actionWithDialogSteps(session);
    dialogSteps(session);
    programSteps(session);
    // One line each, since a long text is cut off.
    const QStringList mistakes = session.mistakes();
    for (const QString& mistake : mistakes) {
        qInfo("%s", qPrintable(mistake));
    }
    QCOMPARE(mistakes.size(), 0);
    QVERIFY(session.steps() >= 150);
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_WidgetSession test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_widgetsession.moc"
