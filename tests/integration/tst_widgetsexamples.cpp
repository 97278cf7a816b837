// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "guisession.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"
#include "xserver.h"

#include <QTest>

#include <csignal>

using Name = GuiSession::Name;

namespace {

constexpr char examples[] = UICOV_EXAMPLES "/widgets/";

QString example(const char* path) {
    return QLatin1String(examples) + QLatin1String(path);
}

Name menuItem(const char* text) {
    return {QStringLiteral("MenuItem"), QString::fromUtf8(text)};
}
Name button(const char* text) {
    return {QStringLiteral("Button"), QString::fromUtf8(text)};
}
Name checkBox(const char* text) {
    return {QStringLiteral("CheckBox"), QString::fromUtf8(text)};
}
Name dialog(const char* text) {
    return {QStringLiteral("Dialog"), QString::fromUtf8(text)};
}
Name textInput() {
    return {QStringLiteral("TextInput"), QString()};
}

const QString shown = QStringLiteral("shown");
const QString clicked = QStringLiteral("clicked");
const QString checked = QStringLiteral("checked");

} // namespace

/**
 * Programs of Debian's qtbase5-examples, which nobody here wrote and nothing was changed in, used
 * with a mouse and a keyboard under Xvfb.
 */
class TestWidgetsExamples : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(m_server.isRunning(), qPrintable(m_server.why())); }

    void menusAreOpenedAndTheirItemsClicked();
    void anAboutBoxIsOpenedAndClosed();
    void numbersAreTypedIntoAnInputDialog();
    void checkBoxesAreChecked();
    void lineEditsAreTypedInto();
    void aTreeViewHasNothingToCount();

private:
    XServer m_server;
};

void TestWidgetsExamples::menusAreOpenedAndTheirItemsClicked() {
    GuiSession session(m_server, example("mainwindows/menus/menus"));
    QVERIFY(session.click(menuItem("File")));
    QVERIFY(session.waitForUsage(menuItem("File"), clicked, 1));
    QVERIFY(session.click(menuItem("New")));
    // Once for the press and once for what it triggers.
    QVERIFY(session.waitForUsage(menuItem("New"), clicked, 2));
    QCOMPARE(session.usage(menuItem("New"), shown), 1);
    QCOMPARE(session.usage(menuItem("Open..."), shown), 1);
    QCOMPARE(session.usage(menuItem("Open..."), clicked), 0);

    QVERIFY(session.click(menuItem("Edit")));
    QVERIFY(session.click(menuItem("Format")));
    QVERIFY(session.click(menuItem("Bold")));
    QVERIFY(session.waitForUsage(menuItem("Bold"), clicked, 2));
    QCOMPARE(session.usage(menuItem("Format"), clicked), 1);
    QCOMPARE(session.usage(menuItem("Italic"), clicked), 0);
    QCOMPARE(session.end(), 128 + SIGTERM);
}

void TestWidgetsExamples::anAboutBoxIsOpenedAndClosed() {
    GuiSession session(m_server, example("mainwindows/application/application"));
    QVERIFY(session.click(menuItem("Help")));
    QVERIFY(session.click(menuItem("About")));
    // A message box finds its size after it was shown, so its button is not where it was: by
    // keyboard.
    QVERIFY(session.focusWindowOf(dialog("About Application")));
    m_server.press(QStringLiteral("Return"));
    QVERIFY(session.waitForUsage(button("OK"), clicked, 1));
    QCOMPARE(session.usage(dialog("About Application"), shown), 1);
    QVERIFY(session.waitForUsage(menuItem("About"), clicked, 2));

    QVERIFY(session.click(menuItem("File")));
    QVERIFY(session.click(menuItem("Exit")));
    // The program ends by itself, so the recording has an orderly end.
    QCOMPARE(session.waitForEnd(), 0);
    QVERIFY2(session.recording().problems().isEmpty(), qPrintable(session.errors()));
    QCOMPARE(session.usage(menuItem("Exit"), clicked), 2);
}

void TestWidgetsExamples::numbersAreTypedIntoAnInputDialog() {
    GuiSession session(m_server, example("dialogs/standarddialogs/standarddialogs"));
    QVERIFY(session.click(button("QInputDialog::getInt()")));
    QVERIFY(session.focusWindowOf(dialog("QInputDialog::getInt()")));
    // The input's text is selected, so that the first digit replaces it and the second is added.
    m_server.type(QStringLiteral("42"));
    QVERIFY(session.waitForUsage(textInput(), QStringLiteral("textEdited"), 2));
    QVERIFY(session.usage(textInput(), QStringLiteral("textChanged")) >= 2);
    // The program's own slot is still inside the dialog, and the click is counted after it.
    QCOMPARE(session.usage(button("QInputDialog::getInt()"), clicked), 0);
    QVERIFY(session.click(button("OK")));
    QVERIFY(session.waitForUsage(button("OK"), clicked, 1));
    QVERIFY(session.waitForUsage(button("QInputDialog::getInt()"), clicked, 1));
    QCOMPARE(session.usage(button("Cancel"), clicked), 0);
    QCOMPARE(session.usage(button("QInputDialog::getDouble()"), clicked), 0);
    QCOMPARE(session.usage(button("QInputDialog::getDouble()"), shown), 1);
}

void TestWidgetsExamples::checkBoxesAreChecked() {
    GuiSession session(m_server, example("widgets/groupbox/groupbox"));
    QVERIFY(session.click(checkBox("Checkbox 1")));
    QVERIFY(session.waitForUsage(checkBox("Checkbox 1"), checked, 1));
    QVERIFY(session.waitForUsage(checkBox("Checkbox 1"), clicked, 1));
    // From partially checked to checked.
    QVERIFY(session.click(checkBox("Tri-state button")));
    QVERIFY(session.waitForUsage(checkBox("Tri-state button"), clicked, 1));
    QCOMPARE(session.usage(checkBox("Tri-state button"), checked), 1);
    QCOMPARE(session.usage(checkBox("Tri-state button"), QStringLiteral("partiallyChecked")), 0);
    QCOMPARE(session.usage(checkBox("Checkbox 2"), clicked), 0);
}

void TestWidgetsExamples::lineEditsAreTypedInto() {
    GuiSession session(m_server, example("widgets/lineedits/lineedits"));
    QVERIFY(session.focusWindowOf(textInput()));
    QVERIFY(session.click(textInput()));
    m_server.type(QStringLiteral("ab"));
    QVERIFY(session.waitForUsage(textInput(), QStringLiteral("textEdited"), 2));
    QCOMPARE(session.usage(textInput(), QStringLiteral("textChanged")), 2);
    m_server.press(QStringLiteral("Return"));
    QVERIFY(session.waitForUsage(textInput(), QStringLiteral("confirmed"), 1));
}

void TestWidgetsExamples::aTreeViewHasNothingToCount() {
    GuiSession session(m_server, example("itemviews/simpletreemodel/simpletreemodel"));
    QVERIFY(QTest::qWaitFor(
        [&] {
            const auto& elements = session.recording().replay().elements();
            return std::any_of(elements.cbegin(), elements.cend(), [](const auto* element) {
                return element->concreteType() == QLatin1String("QTreeView");
            });
        },
        30000));
    const auto& elements = session.recording().replay().elements();
    for (const auto* element : elements) {
        QVERIFY2(element->isTransparentNode(), qPrintable(element->concreteType()));
    }
}

QTEST_GUILESS_MAIN(TestWidgetsExamples)

#include "tst_widgetsexamples.moc"
