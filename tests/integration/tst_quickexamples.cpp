// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "guisession.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"
#include "xserver.h"

#include <QTest>

#include <algorithm>

using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

constexpr char examples[] = UICOV_EXAMPLES "/";

/** Until then a slow and busy machine has done what was asked of it. */
constexpr int patience = 120000;

/** An element as a test names it: by the name of its QML type or class, by its text, and among
 * equal ones by its number, from 0 on. */
struct Name {
    QString type;
    QString text;
    int number;
};

Name name(const char* type, const char* text, int number = 0) {
    return {QString::fromLatin1(type), QString::fromUtf8(text), number};
}

bool isNamed(const UIElement* element, const Name& wanted) {
    const QString type = element->concreteType();
    return element->text() == wanted.text &&
           (type == wanted.type || type.startsWith(wanted.type + QLatin1String("_QML")));
}

/**
 * A program of Qt Quick with one window on the screen. There is no window manager, so the window
 * gets the focus from here, each time that the places of its items are wanted anew.
 */
class QuickSession {
public:
    QuickSession(const XServer& server, const char* program)
        : m_server(server)
        , m_session(server, QLatin1String(examples) + QLatin1String(program)) {}

    /** The first element of that name; null when there is none yet. */
    const UIElement* find(const Name& wanted) {
        const auto& elements = m_session.recording().replay().elements();
        int before = wanted.number;
        const auto it = std::find_if(elements.cbegin(), elements.cend(), [&](const auto* element) {
            return isNamed(element, wanted) && before-- == 0;
        });
        return it == elements.cend() ? nullptr : *it;
    }

    int usage(const Name& wanted, const QString& event = QStringLiteral("clicked")) {
        const UIElement* const element = find(wanted);
        return element == nullptr ? -1 : element->usage().value(UIEvent(event), -1);
    }

    bool waitForUsage(const Name& wanted, int count) {
        return QTest::qWaitFor([&] { return usage(wanted) == count; }, patience);
    }

    /** Clicks where the element stands once it has come to rest; false when it never does. */
    bool click(const Name& wanted) {
        QRect last;
        const bool rests = QTest::qWaitFor(
            [&] {
                refreshPlaces();
                const QRect place = placeOf(wanted);
                return std::exchange(last, place) == place && !place.isEmpty();
            },
            patience);
        if (rests) {
            m_server.click(last.center());
        }
        return rests;
    }

    int end() { return m_session.end(); }

private:
    /** Takes the focus from the window and gives it back, until the program has noticed. */
    void refreshPlaces() {
        const QList<XServer::Window> windows = m_server.visibleWindows();
        if (windows.isEmpty()) {
            return;
        }
        // Qt takes a loss of focus for none when it is back soon; how soon is its own affair.
        const qint64 known = messages();
        const auto hasNoticed = [&] { return messages() > known; };
        for (int gap = 300; gap < patience; gap *= 2) {
            m_server.focusNothing();
            Q_UNUSED(QTest::qWaitFor(hasNoticed, gap)); // mostly nothing comes in between
            m_server.focus(windows.constLast());
            if (QTest::qWaitFor(hasNoticed, gap)) {
                return;
            }
        }
    }

    qint64 messages() { return m_session.recording().run().messages; }

    /** On the screen; null while it cannot be seen there. */
    QRect placeOf(const Name& wanted) {
        const QList<XServer::Window> windows = m_server.visibleWindows();
        const UIElement* const element = find(wanted);
        if (windows.isEmpty() || element == nullptr || !element->geometry().isValid()) {
            return {};
        }
        const QRect window = windows.constLast().place;
        const QRect place = element->geometry().rect().translated(window.topLeft());
        return window.contains(place.center()) ? place : QRect();
    }

    const XServer& m_server;
    GuiSession m_session;
};

} // namespace

/**
 * Programs of Debian's qtdeclarative5-examples and qtquickcontrols2-5-examples, which nobody here
 * wrote and nothing was changed in, used with a mouse and a keyboard under Xvfb. A click on a
 * control counts twice: where it hits, and by the control's signal.
 */
class TestQuickExamples : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(m_server.isRunning(), qPrintable(m_server.why())); }
    void cleanup();

    void aMessageIsTypedAndSent();
    void aContactDialogIsOpenedAndCancelled();
    void aViewIsOpenedAndAnItemAdded();
    void buttonsOfVersion1AreClicked();
    void aTripIsTypedAndSaved();

private:
    XServer m_server;
};

void TestQuickExamples::cleanup() {
    if (QTest::currentTestFailed()) {
        m_server.saveScreen(QLatin1String(QTest::currentTestFunction()) + QLatin1String(".xwd"));
    }
    TestCase::cleanup();
}

void TestQuickExamples::aMessageIsTypedAndSent() {
    QuickSession session(m_server,
                         "quickcontrols2/chattutorial/chapter3-navigation/chapter3-navigation");
    QVERIFY(session.click(name("ItemDelegate", "Albert Einstein")));
    QVERIFY(session.waitForUsage(name("ItemDelegate", "Albert Einstein"), 2));
    // The others were made later, and given to their parent before they had a text.
    QCOMPARE(session.usage(name("ItemDelegate", "", 0)), 0);
    QCOMPARE(session.usage(name("ItemDelegate", "", 1)), 0);

    // The page of the conversation is made now: its controls have no texts either.
    const Name send = name("Button", "");
    const Name back = name("ToolButton", "");
    QVERIFY(session.click(name("TextArea", "")));
    m_server.type(QStringLiteral("hello"));
    // Only where something was typed can it be sent: before, a click hits and does nothing.
    QVERIFY(session.click(send));
    QVERIFY(session.waitForUsage(send, 2));
    QCOMPARE(session.usage(back), 0);
    QVERIFY(session.click(back));
    QVERIFY(session.waitForUsage(back, 2));
    QCOMPARE(session.end(), 128 + 15);
}

void TestQuickExamples::aContactDialogIsOpenedAndCancelled() {
    QuickSession session(m_server, "quickcontrols2/contactlist/contactlist");
    QVERIFY(session.click(name("RoundButton", "+")));
    QVERIFY(session.waitForUsage(name("RoundButton", "+"), 2));
    QVERIFY(session.click(name("Button", "Cancel")));
    QVERIFY(session.waitForUsage(name("Button", "Cancel"), 2));
    QCOMPARE(session.usage(name("Button", "OK")), 0);
    const UIElement* const dialog = session.find(name("QQuickPopupItem", "Add Contact"));
    QVERIFY(dialog);
    QCOMPARE(dialog->standardType().name(), QStringLiteral("Dialog"));
    QVERIFY(dialog->isWindowNode());
}

void TestQuickExamples::aViewIsOpenedAndAnItemAdded() {
    QuickSession session(m_server, "quick/views/views");
    QVERIFY(session.click(name("SimpleLauncherDelegate", "", 1)));
    QVERIFY(session.waitForUsage(name("SimpleLauncherDelegate", "", 1), 2));
    QCOMPARE(session.usage(name("SimpleLauncherDelegate", "", 0)), 0);
    QVERIFY(session.click(name("TextButton", "Add an item")));
    QVERIFY(session.waitForUsage(name("TextButton", "Add an item"), 2));
    QCOMPARE(session.usage(name("TextButton", "Remove all items")), 0);
}

void TestQuickExamples::buttonsOfVersion1AreClicked() {
    QuickSession session(m_server, "quick/layouts/layouts");
    QVERIFY(session.click(name("Button", "Button")));
    QVERIFY(session.waitForUsage(name("Button", "Button"), 2));
    QVERIFY(session.click(name("Button", "Page 1")));
    QVERIFY(session.waitForUsage(name("Button", "Page 1"), 2));
    QVERIFY(session.click(name("Button", "Page 2")));
    QVERIFY(session.waitForUsage(name("Button", "Page 2"), 2));
    QCOMPARE(session.usage(name("Button", "Page 3")), 0);
    QCOMPARE(session.usage(name("QQuickText", "This wants to grow horizontally"),
                           QStringLiteral("textChanged")),
             0);
}

void TestQuickExamples::aTripIsTypedAndSaved() {
    QuickSession session(m_server, "quick/localstorage/localstorage/localstorage");
    QVERIFY(session.click(name("MyButton", "New")));
    QVERIFY(session.waitForUsage(name("MyButton", "New"), 2));
    m_server.type(QStringLiteral("2020-02-02"));
    QVERIFY(session.click(name("MyButton", "Cancel")));
    QVERIFY(session.waitForUsage(name("MyButton", "Cancel"), 2));
    QCOMPARE(session.usage(name("MyButton", "Delete")), 0);
}

QTEST_GUILESS_MAIN(TestQuickExamples)

#include "tst_quickexamples.moc"
