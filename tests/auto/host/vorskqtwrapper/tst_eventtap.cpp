#include "testlib/testcase.h"
#include "vorskqtwrapper/eventtap.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>
#include <QWidget>
#include <QWindow>

#include <functional>
#include <typeinfo>

namespace {

/** One line such as "press child". */
QString line(const QObject* receiver, const QEvent* event) {
    return QStringLiteral("%1 %2").arg(QString::number(event->type()), receiver->objectName());
}

bool isOfInterest(const QObject* receiver) {
    return !receiver->objectName().isEmpty();
}

QStringList handedOver;
/** What the receivers themselves and the hand-overs saw, in one sequence. */
QStringList sequence;
std::function<void(QObject*, QEvent*)> onHandOver;
int handedOverOnOtherThreads = 0;
int handedOverToWidgetCallback = 0;

void callback(QObject* receiver, QEvent* event) {
    if (QThread::currentThread() != qApp->thread()) {
        ++handedOverOnOtherThreads;
        return;
    }
    if (isOfInterest(receiver)) {
        handedOver.append(line(receiver, event));
        sequence.append(QStringLiteral("handed ") + line(receiver, event));
    }
    if (onHandOver) {
        onHandOver(receiver, event);
    }
}

void widgetCallback(QObject* receiver, QEvent*) {
    QVERIFY(receiver->isWidgetType());
    ++handedOverToWidgetCallback;
}

/** Begins to watch while the constructors of the application's class still run, as the host does.
 */
class WatchedApplication : public QApplication {
public:
    WatchedApplication(int& argc, char** argv)
        : QApplication(argc, argv) {
        VorskHost::EventTap::instance().add(&QObject::staticMetaObject, callback);
    }
};

/** An application as some are: with a notify() of its own, which a test can tell what to do. */
class OwnNotifyApplication : public WatchedApplication {
public:
    enum class Mode { Pass, Swallow, PassCopy, PassTwice };

    using WatchedApplication::WatchedApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        ++calls;
        const bool applies = isOfInterest(receiver) && event->type() == QEvent::MouseButtonPress;
        if (applies && mode == Mode::Swallow) {
            return true;
        }
        if (applies && mode == Mode::PassCopy) {
            QMouseEvent copy(*static_cast<QMouseEvent*>(event));
            return QApplication::notify(receiver, &copy);
        }
        if (applies && mode == Mode::PassTwice) {
            QApplication::notify(receiver, event);
        }
        return QApplication::notify(receiver, event);
    }

    Mode mode = Mode::Pass;
    int calls = 0;
};

OwnNotifyApplication* application() {
    return static_cast<OwnNotifyApplication*>(qApp);
}

/** Says what it sees, accepts or ignores input as told. */
class Receiver : public QWidget {
public:
    explicit Receiver(const QString& name, QWidget* parent = nullptr)
        : QWidget(parent) {
        setObjectName(name);
        setFocusPolicy(Qt::StrongFocus);
    }

    bool accepts = true;
    std::function<void(QEvent*)> onEvent;

protected:
    bool event(QEvent* event) override {
        sequence.append(QStringLiteral("seen ") + line(this, event));
        if (onEvent) {
            onEvent(event);
        }
        const bool result = QWidget::event(event);
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
            event->setAccepted(accepts);
            return accepts;
        default:
            return result;
        }
    }
};

/** Sees everything and swallows what it is told to. */
class Filter : public QObject {
public:
    QStringList seen;
    std::function<bool(QObject*, QEvent*)> swallows;

    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (isOfInterest(receiver)) {
            seen.append(line(receiver, event));
        }
        return swallows && swallows(receiver, event);
    }
};

int count(const QStringList& lines, QEvent::Type type, const char* name) {
    return lines.count(
        QStringLiteral("%1 %2").arg(QString::number(type), QString::fromLatin1(name)));
}

/** Handed over once, and before the receiver saw it. */
bool onceAndFirst(QEvent::Type type, const char* name) {
    const QString tail =
        QStringLiteral("%1 %2").arg(QString::number(type), QString::fromLatin1(name));
    const int handed = sequence.indexOf(QStringLiteral("handed ") + tail);
    const int seen = sequence.indexOf(QStringLiteral("seen ") + tail);
    return sequence.count(QStringLiteral("handed ") + tail) == 1 &&
           sequence.count(QStringLiteral("seen ") + tail) == 1 && handed < seen;
}

bool isPress(QObject*, QEvent* event) {
    return event->type() == QEvent::MouseButtonPress;
}

QMouseEvent press() {
    return {QEvent::MouseButtonPress, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
            Qt::NoModifier};
}

int internalCallbackCalls = 0;
QObject* consumedReceiver = nullptr;

bool internalCallback(void** parameters) {
    ++internalCallbackCalls;
    return consumedReceiver != nullptr && parameters[0] == consumedReceiver;
}

} // namespace

class tst_EventTap : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void mouseClickOnAWidget();
    void keyClickOnAWidget();
    void mouseClickOnAWindow();
    void pressThatPropagatesToAParent();
    void keyThatPropagatesToAParent();
    void contextMenuThatPropagatesToAParent();
    void wheel();
    void pressSwallowedByAnObjectFilter();
    void pressSwallowedByAnApplicationFilter_data();
    void pressSwallowedByAnApplicationFilter();
    void deliveriesAfterASwallowedOne();
    void eventSentWhileAnotherIsDelivered();
    void sameTypeSentToTheSameReceiverWithinADelivery();
    void pressThatChangesFocus();
    void postedEvent();
    void eventsOnAnotherThread();
    void eventPostedFromAnotherThread();
    void moveWithoutMouseTracking();
    void otherInternalCallbacksKeepWorking();
    void applicationsOwnNotify_data();
    void applicationsOwnNotify();
    void noneIsConsumed();
    void receiverDeletedByACallback();
    void receiverInItsDestructor();
    void exceptionThroughADelivery();
    void callbackForAClassOnly();
    void callbackRegisteredByACallback();
    void applicationKeepsItsType();
    void randomInputAgainstAFilterThatSeesAll();
};

void tst_EventTap::init() {
    TestCase::init();
    application()->mode = OwnNotifyApplication::Mode::Pass;
    onHandOver = nullptr;
    handedOver.clear();
    sequence.clear();
}

void tst_EventTap::mouseClickOnAWidget() {
    Receiver widget(QStringLiteral("widget"));
    QTest::mouseClick(&widget, Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "widget"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonRelease, "widget"));
}

void tst_EventTap::keyClickOnAWidget() {
    Receiver widget(QStringLiteral("widget"));
    QTest::keyClick(&widget, Qt::Key_A);
    QVERIFY(onceAndFirst(QEvent::KeyPress, "widget"));
    QVERIFY(onceAndFirst(QEvent::KeyRelease, "widget"));
}

void tst_EventTap::mouseClickOnAWindow() {
    Receiver widget(QStringLiteral("widget"));
    widget.resize(50, 50);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    widget.windowHandle()->setObjectName(QStringLiteral("window"));
    handedOver.clear();
    sequence.clear();
    QTest::mouseClick(widget.windowHandle(), Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "widget"));
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "window"), 1);
}

void tst_EventTap::pressThatPropagatesToAParent() {
    Receiver parent(QStringLiteral("parent"));
    Receiver middle(QStringLiteral("middle"), &parent);
    Receiver child(QStringLiteral("child"), &middle);
    middle.accepts = false;
    child.accepts = false;
    sequence.clear();
    QTest::mousePress(&child, Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "child"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "middle"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "parent"));

    sequence.clear();
    QMouseEvent event = press();
    QCoreApplication::sendEvent(&child, &event);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "child"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "middle"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "parent"));
}

void tst_EventTap::keyThatPropagatesToAParent() {
    Receiver parent(QStringLiteral("parent"));
    Receiver child(QStringLiteral("child"), &parent);
    child.accepts = false;
    sequence.clear();
    QTest::keyPress(&child, Qt::Key_A);
    QVERIFY(onceAndFirst(QEvent::KeyPress, "child"));
    QVERIFY(onceAndFirst(QEvent::KeyPress, "parent"));
}

void tst_EventTap::contextMenuThatPropagatesToAParent() {
    Receiver parent(QStringLiteral("parent"));
    Receiver child(QStringLiteral("child"), &parent);
    child.accepts = false;
    sequence.clear();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QCoreApplication::sendEvent(&child, &event);
    QVERIFY(onceAndFirst(QEvent::ContextMenu, "child"));
    QVERIFY(onceAndFirst(QEvent::ContextMenu, "parent"));
}

void tst_EventTap::wheel() {
    Receiver widget(QStringLiteral("widget"));
    QWheelEvent event(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
    QVERIFY(onceAndFirst(QEvent::Wheel, "widget"));
}

void tst_EventTap::pressSwallowedByAnObjectFilter() {
    Receiver widget(QStringLiteral("widget"));
    Filter filter;
    filter.swallows = isPress;
    widget.installEventFilter(&filter);
    QTest::mousePress(&widget, Qt::LeftButton);
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), 1);
    QCOMPARE(count(filter.seen, QEvent::MouseButtonPress, "widget"), 1);
    QVERIFY(!sequence.contains(QStringLiteral("seen %1 widget").arg(QEvent::MouseButtonPress)));
}

void tst_EventTap::pressSwallowedByAnApplicationFilter_data() {
    QTest::addColumn<bool>("sent");
    QTest::newRow("straight to notify") << false;
    QTest::newRow("sent") << true;
}

void tst_EventTap::pressSwallowedByAnApplicationFilter() {
    QFETCH(bool, sent);
    Receiver widget(QStringLiteral("widget"));
    Filter filter;
    filter.swallows = isPress;
    qApp->installEventFilter(&filter);
    if (sent) {
        QMouseEvent event = press();
        QVERIFY(QCoreApplication::sendEvent(&widget, &event));
    } else {
        QTest::mousePress(&widget, Qt::LeftButton);
    }
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), 1);
    QCOMPARE(count(filter.seen, QEvent::MouseButtonPress, "widget"), 1);
    QVERIFY(!sequence.contains(QStringLiteral("seen %1 widget").arg(QEvent::MouseButtonPress)));
}

void tst_EventTap::deliveriesAfterASwallowedOne() {
    // The same event object, the same receiver, the same place on the stack, and every second
    // delivery swallowed before it reaches our filter.
    Receiver widget(QStringLiteral("widget"));
    Filter filter;
    bool swallowNext = false;
    filter.swallows = [&swallowNext](QObject*, QEvent* event) {
        return event->type() == QEvent::MouseButtonPress && swallowNext;
    };
    qApp->installEventFilter(&filter);
    QMouseEvent event = press();
    for (int i = 1; i <= 20; ++i) {
        swallowNext = i % 2 == 1;
        if (i % 3 == 0) {
            QCoreApplication::sendEvent(&widget, &event);
        } else {
            qApp->notify(&widget, &event);
        }
        QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), i);
    }
    QCOMPARE(sequence.count(QStringLiteral("seen %1 widget").arg(QEvent::MouseButtonPress)), 10);
}

void tst_EventTap::eventSentWhileAnotherIsDelivered() {
    Receiver outer(QStringLiteral("outer"));
    Receiver inner(QStringLiteral("inner"));
    outer.onEvent = [&inner](QEvent* event) {
        if (event->type() == QEvent::MouseButtonPress) {
            QTest::keyPress(&inner, Qt::Key_A);
            QTest::mousePress(&inner, Qt::LeftButton);
        }
    };
    sequence.clear();
    QTest::mousePress(&outer, Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "outer"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "inner"));
    QVERIFY(onceAndFirst(QEvent::KeyPress, "inner"));
}

void tst_EventTap::sameTypeSentToTheSameReceiverWithinADelivery() {
    // From the receiver, and from a filter that stands before ours: the first delivery has not
    // reached our filter then.
    Receiver widget(QStringLiteral("widget"));
    int depth = 0;
    const auto sendAnother = [&widget, &depth] {
        if (++depth < 4) {
            QMouseEvent event = press();
            qApp->notify(&widget, &event);
        }
    };
    Filter filter;
    filter.swallows = [&](QObject* receiver, QEvent* event) {
        if (receiver == &widget && event->type() == QEvent::MouseButtonPress) {
            sendAnother();
        }
        return false;
    };
    qApp->installEventFilter(&filter);
    widget.onEvent = [&](QEvent* event) {
        if (event->type() == QEvent::MouseButtonPress) {
            sendAnother();
        }
    };
    QTest::mousePress(&widget, Qt::LeftButton);
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), 4);
    QCOMPARE(sequence.count(QStringLiteral("seen %1 widget").arg(QEvent::MouseButtonPress)), 4);
}

void tst_EventTap::pressThatChangesFocus() {
    Receiver window(QStringLiteral("window"));
    Receiver first(QStringLiteral("first"), &window);
    Receiver second(QStringLiteral("second"), &window);
    window.show();
    qApp->setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    first.setFocus();
    handedOver.clear();
    sequence.clear();
    // Spontaneous, as only such a press gives focus.
    QTest::mousePress(&second, Qt::LeftButton);
    QVERIFY(second.hasFocus());
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "second"));
    QVERIFY(onceAndFirst(QEvent::FocusOut, "first"));
    QVERIFY(onceAndFirst(QEvent::FocusIn, "second"));
}

void tst_EventTap::postedEvent() {
    Receiver widget(QStringLiteral("widget"));
    QCoreApplication::postEvent(&widget, new QEvent(QEvent::User));
    QCoreApplication::sendPostedEvents();
    QVERIFY(onceAndFirst(QEvent::User, "widget"));
}

void tst_EventTap::eventsOnAnotherThread() {
    QThread thread;
    QObject object;
    Filter filter;
    object.setObjectName(QStringLiteral("elsewhere"));
    object.installEventFilter(&filter);
    object.moveToThread(&thread);
    filter.moveToThread(&thread);
    handedOver.clear();
    filter.swallows = [&thread](QObject*, QEvent* event) {
        if (event->type() == QEvent::User) {
            thread.quit();
        }
        return false;
    };
    thread.start();
    QCoreApplication::postEvent(&object, new QEvent(QEvent::User));
    QVERIFY(thread.wait(20000));
    QCOMPARE(count(filter.seen, QEvent::User, "elsewhere"), 1);
    QCOMPARE(count(handedOver, QEvent::User, "elsewhere"), 0);
    QCOMPARE(handedOverOnOtherThreads, 0);
}

void tst_EventTap::eventPostedFromAnotherThread() {
    Receiver widget(QStringLiteral("widget"));
    std::unique_ptr<QThread> thread(QThread::create(
        [&widget] { QCoreApplication::postEvent(&widget, new QEvent(QEvent::User)); }));
    thread->start();
    QVERIFY(thread->wait(20000));
    QCoreApplication::sendPostedEvents();
    QVERIFY(onceAndFirst(QEvent::User, "widget"));
}

void tst_EventTap::moveWithoutMouseTracking() {
    // Such a move goes through the application's filters and never to the widget.
    Receiver widget(QStringLiteral("widget"));
    QMouseEvent event(QEvent::MouseMove, QPointF(5, 5), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
    QCOMPARE(count(handedOver, QEvent::MouseMove, "widget"), 1);
    QVERIFY(!sequence.contains(QStringLiteral("seen %1 widget").arg(QEvent::MouseMove)));
}

void tst_EventTap::otherInternalCallbacksKeepWorking() {
    QVERIFY(QInternal::registerCallback(QInternal::EventNotifyCallback, internalCallback));
    Receiver widget(QStringLiteral("widget"));
    Receiver consumed(QStringLiteral("consumed"));
    consumedReceiver = &consumed;
    internalCallbackCalls = 0;
    QMouseEvent event = press();
    QCoreApplication::sendEvent(&widget, &event);
    QCoreApplication::sendEvent(&consumed, &event);
    consumedReceiver = nullptr;
    QVERIFY(QInternal::unregisterCallback(QInternal::EventNotifyCallback, internalCallback));
    QCOMPARE(internalCallbackCalls, 2);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "widget"));
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "consumed"), 0);
}

void tst_EventTap::applicationsOwnNotify_data() {
    using Mode = OwnNotifyApplication::Mode;
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("handed");
    QTest::addColumn<int>("seen");
    QTest::newRow("passes on") << static_cast<int>(Mode::Pass) << 1 << 1;
    QTest::newRow("swallows") << static_cast<int>(Mode::Swallow) << 1 << 0;
    QTest::newRow("passes on a copy") << static_cast<int>(Mode::PassCopy) << 1 << 1;
    QTest::newRow("delivers twice") << static_cast<int>(Mode::PassTwice) << 2 << 2;
}

void tst_EventTap::applicationsOwnNotify() {
    QFETCH(int, mode);
    QFETCH(int, handed);
    QFETCH(int, seen);
    Receiver widget(QStringLiteral("widget"));
    application()->mode = static_cast<OwnNotifyApplication::Mode>(mode);
    const int callsBefore = application()->calls;
    QMouseEvent event = press();
    qApp->notify(&widget, &event);
    QCOMPARE(application()->calls, callsBefore + 1);
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), handed);
    QCOMPARE(sequence.count(QStringLiteral("seen %1 widget").arg(QEvent::MouseButtonPress)), seen);
}

void tst_EventTap::noneIsConsumed() {
    Receiver accepting(QStringLiteral("accepting"));
    Receiver ignoring(QStringLiteral("ignoring"));
    ignoring.accepts = false;
    QMouseEvent first = press();
    QVERIFY(QCoreApplication::sendEvent(&accepting, &first));
    QVERIFY(first.isAccepted());
    QMouseEvent second = press();
    QVERIFY(!QCoreApplication::sendEvent(&ignoring, &second));
    QVERIFY(!second.isAccepted());
    for (const QString& handed : qAsConst(handedOver)) {
        QVERIFY2(sequence.contains(QStringLiteral("seen ") + handed), qPrintable(handed));
    }
}

void tst_EventTap::receiverDeletedByACallback() {
    QPointer<QObject> widget = new Receiver(QStringLiteral("widget"));
    onHandOver = [&widget](QObject* receiver, QEvent* event) {
        if (receiver == widget && event->type() == QEvent::User) {
            delete receiver;
        }
    };
    QEvent event(QEvent::User);
    QVERIFY(QCoreApplication::sendEvent(widget, &event));
    QVERIFY(widget.isNull());
    QCOMPARE(count(handedOver, QEvent::User, "widget"), 1);

    // The same where only the filter sees it: a press on its way to the parent.
    auto* parent = new Receiver(QStringLiteral("parent"));
    widget = parent;
    Receiver child(QStringLiteral("child"), parent);
    child.accepts = false;
    onHandOver = [&widget, &child](QObject* receiver, QEvent* passedOn) {
        if (receiver == widget && passedOn->type() == QEvent::MouseButtonPress) {
            child.setParent(nullptr);
            delete receiver;
        }
    };
    QTest::mousePress(&child, Qt::LeftButton);
    QVERIFY(widget.isNull());
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "parent"), 1);
}

void tst_EventTap::receiverInItsDestructor() {
    // Qt tells an object that is being destroyed of children that leave it.
    auto* parent = new QObject;
    parent->setObjectName(QStringLiteral("dying"));
    auto* leaving = new QObject(parent);
    connect(parent, &QObject::destroyed, leaving, [leaving] { leaving->setParent(nullptr); });
    delete parent;
    delete leaving;
    QCOMPARE(count(handedOver, QEvent::ChildRemoved, "dying"), 1);
}

void tst_EventTap::exceptionThroughADelivery() {
    Receiver widget(QStringLiteral("widget"));
    widget.onEvent = [](QEvent* event) {
        if (event->type() == QEvent::User) {
            throw 1;
        }
    };
    QEvent event(QEvent::User);
    bool caught = false;
    try {
        qApp->notify(&widget, &event);
    } catch (int) {
        caught = true;
    }
    QVERIFY(caught);
    QTest::mousePress(&widget, Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "widget"));
}

void tst_EventTap::callbackForAClassOnly() {
    VorskHost::EventTap::instance().add(&QWidget::staticMetaObject, widgetCallback);
    QObject object;
    QLineEdit edit;
    handedOverToWidgetCallback = 0;
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&object, &event);
    QCOMPARE(handedOverToWidgetCallback, 0);
    QCoreApplication::sendEvent(&edit, &event);
    QCOMPARE(handedOverToWidgetCallback, 1);
}

void tst_EventTap::callbackRegisteredByACallback() {
    Receiver widget(QStringLiteral("widget"));
    bool added = false;
    onHandOver = [&added](QObject*, QEvent*) {
        // Enough that the list moves.
        for (int i = 0; i < 100 && !added; ++i) {
            VorskHost::EventTap::instance().add(&QThread::staticMetaObject, callback);
        }
        added = true;
    };
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&widget, &event);
    QVERIFY(onceAndFirst(QEvent::User, "widget"));
}

void tst_EventTap::applicationKeepsItsType() {
    QVERIFY(dynamic_cast<OwnNotifyApplication*>(QCoreApplication::instance()) != nullptr);
    QVERIFY(dynamic_cast<QThread*>(static_cast<QObject*>(qApp)) == nullptr);
    QVERIFY(typeid(*QCoreApplication::instance()) == typeid(OwnNotifyApplication));
    QCOMPARE(qApp->metaObject(), &QApplication::staticMetaObject);
}

void tst_EventTap::randomInputAgainstAFilterThatSeesAll() {
    // A filter that was installed last is asked first, so it sees every delivery that there is.
    Receiver window(QStringLiteral("window"));
    Receiver panel(QStringLiteral("panel"), &window);
    Receiver left(QStringLiteral("left"), &panel);
    Receiver right(QStringLiteral("right"), &panel);
    const QList<Receiver*> receivers{&window, &panel, &left, &right};
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QRandomGenerator random(20);
    Filter filter;
    QObject* firstReceiver = nullptr;
    filter.swallows = [&](QObject* receiver, QEvent* event) {
        // What is passed on to a parent and swallowed there is the one thing that we do not see.
        return isPress(receiver, event) && receiver == firstReceiver && random.bounded(3) == 0;
    };
    qApp->installEventFilter(&filter);
    handedOver.clear();
    filter.seen.clear();
    for (int i = 0; i < 500; ++i) {
        for (Receiver* receiver : receivers) {
            receiver->accepts = random.bounded(2) == 0;
        }
        Receiver* target = receivers[random.bounded(receivers.size())];
        firstReceiver = target;
        QMouseEvent event = press();
        QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        switch (random.bounded(5)) {
        case 0:
            qApp->notify(target, &event);
            break;
        case 1:
            qApp->notify(target, &key);
            break;
        case 2:
            QCoreApplication::sendEvent(target, &event);
            break;
        case 3:
            QCoreApplication::postEvent(target, new QEvent(QEvent::User));
            QCoreApplication::sendPostedEvents();
            break;
        default:
            target->setVisible(!target->isVisible());
            break;
        }
    }
    QVERIFY(count(filter.seen, QEvent::MouseButtonPress, "window") >
            count(filter.seen, QEvent::MouseButtonPress, "left"));
    handedOver.sort();
    filter.seen.sort();
    QCOMPARE(handedOver, filter.seen);
}

int main(int argc, char** argv) {
    OwnNotifyApplication app(argc, argv);
    tst_EventTap test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_eventtap.moc"
