// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/inputattribution.h"
#include "testlib/testcase.h"

#include <QEvent>
#include <QTest>

#include <functional>
#include <memory>

using Vorsk::UIControls::Attribution;
using Vorsk::UIControls::InputAttribution;
using Cause = Attribution::Cause;

namespace {

/** Calls from a frame that lies well below the caller's, as a receiver's code does below notify().
 */
__attribute__((noinline)) void furtherIn(const std::function<void()>& action) {
    volatile char frame[1024];
    frame[0] = 0;
    action();
    frame[1023] = frame[0];
}

/** A host's delivery: tells the begin, lets the receiver do something, and tells the end where it
 * is wanted. */
class Deliverer {
public:
    explicit Deliverer(InputAttribution& attribution, bool tellsEnds)
        : m_attribution(attribution)
        , m_tellsEnds(tellsEnds) {}

    void deliver(QObject* receiver, QEvent::Type type, const std::function<void()>& action) {
        QEvent event(type);
        furtherIn([&] { m_attribution.begin(receiver, &event); });
        furtherIn([&] { furtherIn([&] { furtherIn(action); }); });
        if (m_tellsEnds) {
            m_attribution.end(receiver, &event);
        }
    }

private:
    InputAttribution& m_attribution;
    bool m_tellsEnds;
};

} // namespace

/** Has the name of the class that Qt's bridge to D-Bus gives to what clients call. */
class AtSpiAdaptor : public QObject {
    Q_OBJECT
};

class tst_InputAttribution : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void outsideOfDeliveriesItWasTheProgram();
    void onlyWhatMayConcernThemGoesToTrackers();
    void afterAClientAllGoesToTrackers();
    void inputIsItsReceivers_data();
    void inputIsItsReceivers();
    void whatAnInputHasStartedIsTheProgram_data();
    void whatAnInputHasStartedIsTheProgram();
    void afterANestedDeliveryTheOuterOneDecides_data();
    void afterANestedDeliveryTheOuterOneDecides();
    void timersAreTheProgramUnlessSomethingIsArmed();
    void whatIsArmedMayDie();
    void aClientOperatesWhatSignalsFirst();
    void aCallOfAClientEnds();
    void theLastInputIsRemembered();
    void aReceiverThatDiesLeavesNone();
};

void tst_InputAttribution::outsideOfDeliveriesItWasTheProgram() {
    InputAttribution attribution;
    QCOMPARE(attribution.verdict().cause, Cause::Program);
    QVERIFY(attribution.verdict().receiver == nullptr);
    QVERIFY(attribution.lastInputReceiver() == nullptr);
}

void tst_InputAttribution::onlyWhatMayConcernThemGoesToTrackers() {
    InputAttribution attribution;
    QObject receiver;
    constexpr int ofAnApplication = QEvent::User + 7;
    for (const int type : {int(QEvent::HoverMove), int(QEvent::Polish), int(QEvent::None),
                           int(QEvent::User), ofAnApplication, int(QEvent::MaxUser)}) {
        const QEvent event(static_cast<QEvent::Type>(type));
        QVERIFY2(!attribution.begin(&receiver, &event), qPrintable(QString::number(type)));
        QCOMPARE(attribution.verdict().type, QEvent::None);
    }
    for (const QEvent::Type type :
         {QEvent::Show, QEvent::Hide, QEvent::Paint, QEvent::Timer, QEvent::MetaCall,
          QEvent::MouseButtonPress, QEvent::KeyPress, QEvent::TouchBegin, QEvent::Drop}) {
        const QEvent event(type);
        QVERIFY2(attribution.begin(&receiver, &event), qPrintable(QString::number(type)));
    }
}

void tst_InputAttribution::afterAClientAllGoesToTrackers() {
    InputAttribution attribution;
    AtSpiAdaptor bridge;
    const QEvent call(QEvent::MetaCall);
    const QEvent other(QEvent::User);
    QVERIFY(!attribution.begin(&bridge, &other));
    QVERIFY(attribution.begin(&bridge, &call));
    attribution.end(&bridge, &call);
    QVERIFY(attribution.begin(&bridge, &other));
}

void tst_InputAttribution::inputIsItsReceivers_data() {
    QTest::addColumn<int>("type");
    for (const QEvent::Type type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseMove, QEvent::KeyPress,
          QEvent::Shortcut, QEvent::ShortcutOverride, QEvent::Wheel, QEvent::TouchBegin,
          QEvent::TouchEnd, QEvent::TabletPress, QEvent::InputMethod, QEvent::ContextMenu,
          QEvent::Drop, QEvent::GraphicsSceneMousePress}) {
        QTest::addRow("%d", type) << static_cast<int>(type);
    }
}

void tst_InputAttribution::inputIsItsReceivers() {
    QFETCH(int, type);
    InputAttribution attribution;
    QObject receiver;
    int asked = 0;
    Deliverer(attribution, true).deliver(&receiver, static_cast<QEvent::Type>(type), [&] {
        ++asked;
        QCOMPARE(attribution.verdict().cause, Cause::Input);
        QCOMPARE(attribution.verdict().receiver, &receiver);
        QCOMPARE(static_cast<int>(attribution.verdict().type), type);
    });
    QCOMPARE(asked, 1);
    QCOMPARE(attribution.verdict().cause, Cause::Program);
}

void tst_InputAttribution::whatAnInputHasStartedIsTheProgram_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("tellsEnds");
    for (const QEvent::Type type :
         {QEvent::Timer, QEvent::MetaCall, QEvent::User, QEvent::Paint, QEvent::FocusOut}) {
        QTest::addRow("%d", type) << static_cast<int>(type) << true;
        // Of the others, such a host does not tell when they are over.
        if (type != QEvent::Paint && type != QEvent::FocusOut) {
            QTest::addRow("%d, ends untold", type) << static_cast<int>(type) << false;
        }
    }
}

void tst_InputAttribution::whatAnInputHasStartedIsTheProgram() {
    QFETCH(int, type);
    QFETCH(bool, tellsEnds);
    InputAttribution attribution;
    Deliverer host(attribution, tellsEnds);
    QObject button;
    QObject other;
    int asked = 0;
    host.deliver(&other, QEvent::KeyPress, [] {}); // what the host tells is known by the first end
    host.deliver(&button, QEvent::MouseButtonPress, [&] {
        host.deliver(&other, static_cast<QEvent::Type>(type), [&] {
            ++asked;
            QCOMPARE(attribution.verdict().cause, Cause::Program);
        });
    });
    QCOMPARE(asked, 1);
}

void tst_InputAttribution::afterANestedDeliveryTheOuterOneDecides_data() {
    QTest::addColumn<bool>("tellsEnds");
    QTest::addRow("ends told") << true;
    QTest::addRow("ends untold") << false;
}

void tst_InputAttribution::afterANestedDeliveryTheOuterOneDecides() {
    QFETCH(bool, tellsEnds);
    InputAttribution attribution;
    Deliverer host(attribution, tellsEnds);
    QObject button;
    QObject other;
    host.deliver(&button, QEvent::MouseButtonRelease, [&] {
        host.deliver(&other, QEvent::Paint, [] {});
        // As deep as the receiver of the release is by now.
        QCOMPARE(attribution.verdict().cause, Cause::Input);
        QCOMPARE(attribution.verdict().receiver, &button);
    });
    host.deliver(&other, QEvent::Timer,
                 [&] { QCOMPARE(attribution.verdict().cause, Cause::Program); });
}

void tst_InputAttribution::timersAreTheProgramUnlessSomethingIsArmed() {
    InputAttribution attribution;
    Deliverer host(attribution, true);
    QObject button;
    host.deliver(&button, QEvent::Timer,
                 [&] { QCOMPARE(attribution.verdict().cause, Cause::Program); });
    host.deliver(&button, QEvent::Shortcut, [&] { attribution.arm(&button); });
    QVERIFY(attribution.isArmed(&button));
    host.deliver(&button, QEvent::Timer, [&] {
        QCOMPARE(attribution.verdict().cause, Cause::Later);
        QCOMPARE(attribution.verdict().receiver, &button);
        QCOMPARE(attribution.verdict().type, QEvent::Timer);
    });
    attribution.disarm(&button);
    QVERIFY(!attribution.isArmed(&button));
    host.deliver(&button, QEvent::Timer,
                 [&] { QCOMPARE(attribution.verdict().cause, Cause::Program); });
}

void tst_InputAttribution::whatIsArmedMayDie() {
    InputAttribution attribution;
    Deliverer host(attribution, true);
    QObject other;
    {
        QObject button;
        attribution.arm(&button);
    }
    attribution.arm(&other);
    attribution.disarm(&other);
    host.deliver(&other, QEvent::Timer,
                 [&] { QCOMPARE(attribution.verdict().cause, Cause::Program); });
}

void tst_InputAttribution::aClientOperatesWhatSignalsFirst() {
    InputAttribution attribution;
    Deliverer host(attribution, true);
    AtSpiAdaptor bridge;
    QObject button;
    QObject other;
    QVERIFY(!attribution.isOperatedByClient(&button));
    int asked = 0;
    host.deliver(&bridge, QEvent::MetaCall, [&] {
        ++asked;
        QCOMPARE(attribution.verdict().cause, Cause::Accessibility);
        QVERIFY(attribution.isOperatedByClient(&button));
        QVERIFY(!attribution.isOperatedByClient(&other));
        QVERIFY(attribution.isOperatedByClient(&button));
    });
    host.deliver(&bridge, QEvent::MetaCall, [&] {
        ++asked;
        QVERIFY(attribution.isOperatedByClient(&other));
        QVERIFY(!attribution.isOperatedByClient(&button));
    });
    QCOMPARE(asked, 2);
}

void tst_InputAttribution::aCallOfAClientEnds() {
    InputAttribution attribution;
    Deliverer host(attribution, false);
    AtSpiAdaptor bridge;
    QObject button;
    host.deliver(&bridge, QEvent::MetaCall, [] {});
    host.deliver(&button, QEvent::Timer,
                 [&] { QVERIFY(!attribution.isOperatedByClient(&button)); });
    host.deliver(&button, QEvent::MetaCall,
                 [&] { QCOMPARE(attribution.verdict().cause, Cause::Program); });
}

void tst_InputAttribution::theLastInputIsRemembered() {
    InputAttribution attribution;
    Deliverer host(attribution, true);
    QObject first;
    QObject second;
    host.deliver(&first, QEvent::KeyPress, [] {});
    host.deliver(&second, QEvent::MouseMove, [] {});
    host.deliver(&second, QEvent::Timer, [] {});
    QCOMPARE(attribution.lastInputReceiver(), &first);
    host.deliver(&second, QEvent::TouchBegin, [] {});
    QCOMPARE(attribution.lastInputReceiver(), &second);
}

void tst_InputAttribution::aReceiverThatDiesLeavesNone() {
    InputAttribution attribution;
    Deliverer host(attribution, true);
    auto button = std::make_unique<QObject>();
    host.deliver(button.get(), QEvent::KeyPress, [&] {
        button.reset();
        QCOMPARE(attribution.verdict().cause, Cause::Input);
        QVERIFY(attribution.verdict().receiver == nullptr);
    });
    QVERIFY(attribution.lastInputReceiver() == nullptr);
}

QTEST_GUILESS_MAIN(tst_InputAttribution)
#include "tst_inputattribution.moc"
