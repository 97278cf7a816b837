// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetlabels.h"
#include "testlib/testcase.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>

using Vorsk::UIControls::WidgetLabels;

class tst_WidgetLabels : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aBuddyIsTheLabel();
    void theRowOfAFormIsTheLabel();
    void everythingInAFormRowHasItsLabel();
    void whatStandsBeforeInABoxIsTheLabel();
    void aCheckBoxBeforeIsTheLabel();
    void aButtonBeforeIsNone();
    void whatStandsLeftInAGridIsTheLabel();
    void whatStandsAboveInAGridIsTheLabel();
    void aCheckBoxAboveIsNone();
    void aCheckBoxAboveInABoxIsNone();
    void aGroupBoxIsTheLastResort();
    void richTextIsRead();
    void anAmpersandIsKeptWhereItIsShown();
    void withoutAnythingThereIsNone();
    void aMainWindowsLayoutIsLeftAlone();
    void severalParentsDoNotMix();
};

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

QString labelOf(const QWidget& widget) {
    return WidgetLabels().labelOf(&widget);
}

} // namespace

void tst_WidgetLabels::aBuddyIsTheLabel() {
    QWidget parent;
    QLabel label(text("&Name:"), &parent);
    QLineEdit edit(&parent);
    label.setBuddy(&edit);
    QCOMPARE(labelOf(edit), text("Name:"));
}

void tst_WidgetLabels::theRowOfAFormIsTheLabel() {
    QWidget parent;
    QFormLayout form(&parent);
    QLineEdit first;
    QLineEdit second;
    form.addRow(text("First"), &first);
    form.addRow(text("Second"), &second);
    WidgetLabels labels;
    QCOMPARE(labels.labelOf(&first), text("First"));
    QCOMPARE(labels.labelOf(&second), text("Second"));
}

void tst_WidgetLabels::everythingInAFormRowHasItsLabel() {
    QWidget parent;
    QFormLayout form(&parent);
    QLineEdit edit;
    auto* const row = new QHBoxLayout;
    row->addWidget(&edit);
    form.addRow(text("Folder"), row);
    QCOMPARE(labelOf(edit), text("Folder"));
}

void tst_WidgetLabels::whatStandsBeforeInABoxIsTheLabel() {
    QWidget parent;
    QVBoxLayout box(&parent);
    QLabel label(text("Comment"));
    QLineEdit edit;
    QLineEdit next;
    box.addWidget(&label);
    box.addWidget(&edit);
    box.addWidget(&next);
    QCOMPARE(labelOf(edit), text("Comment"));
    QCOMPARE(labelOf(next), QString());
}

void tst_WidgetLabels::aCheckBoxBeforeIsTheLabel() {
    QWidget parent;
    QHBoxLayout box(&parent);
    QCheckBox limit(text("&Limit to"));
    QSpinBox number;
    box.addWidget(&limit);
    box.addWidget(&number);
    QCOMPARE(labelOf(number), text("Limit to"));
}

void tst_WidgetLabels::aButtonBeforeIsNone() {
    QWidget parent;
    QHBoxLayout box(&parent);
    QPushButton button(text("Browse"));
    QLineEdit edit;
    box.addWidget(&button);
    box.addWidget(&edit);
    QCOMPARE(labelOf(edit), QString());
}

void tst_WidgetLabels::whatStandsLeftInAGridIsTheLabel() {
    QWidget parent;
    QGridLayout grid(&parent);
    QLabel above(text("Above"));
    QLabel left(text("Left"));
    QLineEdit edit;
    grid.addWidget(&above, 0, 2);
    grid.addWidget(&left, 1, 0, 1, 2); // over two columns
    grid.addWidget(&edit, 1, 2);
    QCOMPARE(labelOf(edit), text("Left"));
}

void tst_WidgetLabels::whatStandsAboveInAGridIsTheLabel() {
    QWidget parent;
    QGridLayout grid(&parent);
    QLabel above(text("Above"));
    QLineEdit edit;
    grid.addWidget(&above, 0, 0);
    grid.addWidget(&edit, 1, 0);
    QCOMPARE(labelOf(edit), text("Above"));
}

void tst_WidgetLabels::aCheckBoxAboveIsNone() {
    QWidget parent;
    QGridLayout grid(&parent);
    QCheckBox above(text("Above"));
    QLineEdit edit;
    grid.addWidget(&above, 0, 0);
    grid.addWidget(&edit, 1, 0);
    QCOMPARE(labelOf(edit), QString());
}

void tst_WidgetLabels::aCheckBoxAboveInABoxIsNone() {
    QWidget parent;
    QVBoxLayout box(&parent);
    QCheckBox above(text("Above"));
    QLineEdit edit;
    box.addWidget(&above);
    box.addWidget(&edit);
    QCOMPARE(labelOf(edit), QString());
}

void tst_WidgetLabels::aGroupBoxIsTheLastResort() {
    QWidget window;
    QGroupBox group(text("&Proxy"), &window);
    QWidget inner(&group);
    QLineEdit edit(&inner);
    QCOMPARE(labelOf(edit), text("Proxy"));
}

void tst_WidgetLabels::richTextIsRead() {
    QWidget parent;
    QLabel label(text("<b>Host</b> name"), &parent);
    QLineEdit edit(&parent);
    label.setBuddy(&edit);
    QCOMPARE(labelOf(edit), text("Host name"));
}

void tst_WidgetLabels::anAmpersandIsKeptWhereItIsShown() {
    QWidget parent;
    QHBoxLayout box(&parent);
    QLabel label(text("Bed & breakfast"));
    QLineEdit edit;
    box.addWidget(&label);
    box.addWidget(&edit);
    QCOMPARE(labelOf(edit), text("Bed & breakfast"));
}

void tst_WidgetLabels::withoutAnythingThereIsNone() {
    QWidget parent;
    QLineEdit edit(&parent);
    QLineEdit window;
    QCOMPARE(labelOf(edit), QString());
    QCOMPARE(labelOf(window), QString());
}

void tst_WidgetLabels::aMainWindowsLayoutIsLeftAlone() {
    QMainWindow window;
    auto* const edit = new QLineEdit;
    window.setCentralWidget(edit);
    QCOMPARE(labelOf(*edit), QString()); // and it has warned of nothing
}

void tst_WidgetLabels::severalParentsDoNotMix() {
    QWidget one;
    QWidget other;
    QHBoxLayout box(&one);
    QLabel label(text("One's"));
    QLineEdit first;
    QLineEdit second(&other);
    box.addWidget(&label);
    box.addWidget(&first);
    WidgetLabels labels;
    QCOMPARE(labels.labelOf(&first), text("One's"));
    QCOMPARE(labels.labelOf(&second), QString());
    QCOMPARE(labels.labelOf(&first), text("One's"));
}

QTEST_MAIN(tst_WidgetLabels)
#include "tst_widgetlabels.moc"
