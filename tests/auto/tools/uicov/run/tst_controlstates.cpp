// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/controlstates.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QTest>

using Uicov::Runs::ControlStates;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

/** A window with a button and a page with a box. */
class TestControlStates : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<UIElement> m_window;
    UIElement* m_button = nullptr;
    UIElement* m_page = nullptr;
    UIElement* m_box = nullptr;
    ControlStates m_states;

    static UIElement* make(const char* type) {
        return new UIElement(QStringLiteral("QWidget"), StandardType(QLatin1String(type)),
                             QString());
    }

    void set(UIElement* element, const char* name, const char* value) {
        element->setAttribute(QLatin1String(name),
                              value == nullptr ? QString() : QString::fromLatin1(value));
        m_states.changed(*element);
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_states = ControlStates();
        m_window.reset(make("Window"));
        m_button = make("Button");
        m_page = make("Page");
        m_box = make("CheckBox");
        m_window->addChild(m_button);
        m_window->addChild(m_page);
        m_page->addChild(m_box);
    }

    void cleanup() {
        m_window.reset();
        TestLib::TestCase::cleanup();
    }

    void whatWasNeverToldIsNeither() {
        QVERIFY(!m_states.wasEnabled(m_button));
        QVERIFY(!m_states.wasSeen(m_button));
        QVERIFY(!m_states.wasSeen(nullptr));
    }

    void aControlIsEnabledAndUnseenWhereItsViewDoesNotShow() {
        m_states.announced(*m_window);
        QVERIFY(m_states.wasEnabled(m_button));
        QVERIFY(!m_states.wasSeen(m_button));
    }

    void itIsSeenOnceItsViewShows() {
        m_states.announced(*m_window);
        set(m_window.get(), "showing", "true");
        QVERIFY(m_states.wasSeen(m_button));
        QVERIFY2(!m_states.wasSeen(m_box), "the page tells by itself whether it shows");
        set(m_page, "showing", "true");
        QVERIFY(m_states.wasSeen(m_box));
    }

    void whatWasSeenStaysSeen() {
        set(m_window.get(), "showing", "true");
        QVERIFY(m_states.wasSeen(m_button));
        set(m_window.get(), "showing", "false");
        set(m_button, "enabled", "false");
        set(m_button, "hidden", "true");
        QVERIFY(m_states.wasSeen(m_button));
        QVERIFY(m_states.wasEnabled(m_button));
    }

    void aDisabledControlIsSeenWhenItIsEnabledWhileItShows() {
        m_button->setAttribute(QStringLiteral("enabled"), QStringLiteral("false"));
        m_states.announced(*m_window);
        set(m_window.get(), "showing", "true");
        QVERIFY(!m_states.wasEnabled(m_button));
        QVERIFY(!m_states.wasSeen(m_button));
        set(m_button, "enabled", nullptr);
        QVERIFY(m_states.wasEnabled(m_button));
        QVERIFY(m_states.wasSeen(m_button));
    }

    void enabledAndShowingAtDifferentTimesIsNotSeen() {
        m_states.announced(*m_window);
        set(m_button, "enabled", "false");
        set(m_window.get(), "showing", "true");
        QVERIFY(m_states.wasEnabled(m_button));
        QVERIFY(!m_states.wasSeen(m_button));
    }

    void aHiddenControlIsSeenWhenItComesUp() {
        m_button->setAttribute(QStringLiteral("hidden"), QStringLiteral("true"));
        set(m_window.get(), "showing", "true");
        QVERIFY(!m_states.wasSeen(m_button));
        QVERIFY(m_states.wasEnabled(m_button));
        set(m_button, "hidden", nullptr);
        QVERIFY(m_states.wasSeen(m_button));
    }

    void aControlThatComesWhileItsViewShowsIsSeen() {
        set(m_window.get(), "showing", "true");
        auto* const late = make("Button");
        m_window->addChild(late);
        m_states.announced(*late);
        QVERIFY(m_states.wasSeen(late));
    }

    void aControlInAControlIsOfTheViewAbove() {
        auto* const part = make("Button");
        m_button->addChild(part);
        set(m_window.get(), "showing", "true");
        QVERIFY(m_states.wasSeen(part));
    }

    void anElementBelowItselfEnds() {
        m_box->addChild(m_button);
        m_button->addChild(m_box);
        set(m_window.get(), "showing", "true");
        m_states.changed(*m_box);
        QVERIFY(m_states.wasSeen(m_button));
        QVERIFY(m_states.wasSeen(m_box));
    }
};

QTEST_GUILESS_MAIN(TestControlStates)
#include "tst_controlstates.moc"
