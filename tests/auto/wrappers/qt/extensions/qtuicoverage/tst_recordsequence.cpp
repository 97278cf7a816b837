// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/golden.h"
#include "testlib/testcase.h"
#include "testlib/widgetsprobe.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include <memory>

using TestLib::WidgetsProbe;
using Sizes = TestLib::TreePrinter::Sizes;

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

} // namespace

/** Whole sequences of records, compared with the files below tests/gold/recordsequence. */
class tst_RecordSequence : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("fusion")); }

    void cleanup() {
        m_probe.reset();
        m_lines.clear();
        TestCase::cleanup();
    }

    void window_data() { withAndWithoutPictures(); }

    void window() {
        start(Sizes::Hidden);
        QMainWindow window;
        window.setWindowTitle(text("Main && more"));
        window.menuBar()->addMenu(text("&File"));
        auto* const container = new QWidget;
        auto* const label = new QLabel(text("label"), container);
        label->setGeometry(10, 10, 80, 20);
        auto* const button = new QPushButton(text("&Press"), container);
        button->setGeometry(10, 40, 80, 30);
        window.setCentralWidget(container);
        window.resize(300, 200);

        window.show();
        step("show a main window with a menu bar, a label and a button");
        QTest::mouseClick(button, Qt::LeftButton);
        step("click the button");
        window.hide();
        step("hide the window");
        window.show();
        step("show it again");
        compare("window", 0);
    }

    void menu_data() { withAndWithoutPictures(); }

    void menu() {
        start(Sizes::Hidden);
        QMenu menu;
        menu.addAction(text("&Open"));
        menu.addSeparator();
        QMenu* const recent = menu.addMenu(text("&Recent"));
        recent->addAction(text("One"));
        QAction* const two = recent->addAction(text("Two"));
        menu.addSeparator();
        menu.addAction(text("E&xit"));

        menu.popup(QPoint(0, 0));
        step("open a menu with a sub-menu and two separators");
        menu.setActiveAction(recent->menuAction()); // opened by its item, it closes with the menu
        step("open the sub-menu");
        QTest::mouseClick(recent, Qt::LeftButton, {}, recent->actionGeometry(two).center());
        step("click its second item");
        menu.popup(QPoint(0, 0));
        step("open the menu again");
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
        step("choose its first item with the keyboard");
        compare("menu", 4); // two separators, twice
    }

    void dialog_data() { withAndWithoutPictures(); }

    void dialog() {
        start(Sizes::Shown);
        QDialog dialog;
        dialog.setWindowTitle(text("Settings"));
        QLineEdit lineEdit(&dialog);
        lineEdit.setGeometry(10, 10, 200, 30);
        QCheckBox checkBox(text("&Remember"), &dialog);
        checkBox.setGeometry(10, 50, 150, 30);
        QPushButton button(&dialog);
        button.setGeometry(10, 90, 80, 30);
        button.setAutoDefault(false); // or Return would click it
        dialog.resize(300, 200);

        dialog.show();
        step("show a dialog with an input, a check box and a button");
        QTest::keyClicks(&lineEdit, text("ab"));
        step("type two letters");
        QTest::keyClick(&lineEdit, Qt::Key_Return);
        step("press Return");
        lineEdit.setText(text("else"));
        step("the application sets a text");
        QTest::mouseClick(&checkBox, Qt::LeftButton, {}, QPoint(8, 15));
        QTest::mouseClick(&checkBox, Qt::LeftButton, {}, QPoint(8, 15));
        step("click the check box twice");
        checkBox.setChecked(true);
        step("the application checks it");
        QTest::mouseClick(&button, Qt::LeftButton);
        step("click the button");
        compare("dialog", 0);
    }

    void checkBox_data() { withAndWithoutPictures(); }

    void checkBox() {
        start(Sizes::Shown);
        QCheckBox checkBox(text("&Bold && italic"));
        checkBox.setTristate();
        checkBox.resize(200, 40);

        checkBox.show();
        step("show a tri-state check box");
        for (const char* state :
             {"click it: partially checked", "click it: checked", "click it: unchecked"}) {
            QTest::mouseClick(&checkBox, Qt::LeftButton, {}, QPoint(8, 20));
            step(state);
        }
        QTest::keyClick(&checkBox, Qt::Key_Space);
        step("press the space bar");
        compare("checkbox", 0);
    }

private:
    static void withAndWithoutPictures() {
        QTest::addColumn<bool>("pictures");
        QTest::newRow("without pictures") << false;
        QTest::newRow("with pictures") << true;
    }

    void start(Sizes sizes) {
        QFETCH(bool, pictures);
        m_probe = std::make_unique<WidgetsProbe>(
            pictures ? WidgetsProbe::Pictures::On : WidgetsProbe::Pictures::Off, sizes);
        m_probe->start();
    }

    void step(const char* what) {
        m_lines.append(text("## ") + text(what));
        m_lines.append(m_probe->takeRecords());
    }

    void compare(const char* name, int warningsWithPictures) {
        QFETCH(bool, pictures);
        const QString file = text(name) + text(pictures ? "_pictures.txt" : ".txt");
        const QString difference =
            TestLib::compareWithGolden(text(UICOV_GOLD_DIR "/recordsequence/") + file, m_lines,
                                       text(UICOV_GOLD_ACTUAL_DIR "/recordsequence"));
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
        const QString separator = text("warning: Tried to grab unregistered action: ''");
        const QStringList log = m_probe->takeLog();
        QCOMPARE(log.size(), pictures ? warningsWithPictures : 0);
        QCOMPARE(log.count(separator), log.size());
    }

    std::unique_ptr<WidgetsProbe> m_probe;
    QStringList m_lines;
};

QTEST_MAIN(tst_RecordSequence)
#include "tst_recordsequence.moc"
