#include "testlib/controlsprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QAction>
#include <QDialog>
#include <QElapsedTimer>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

using namespace Vorsk::UIControls;
using TestLib::ControlsProbe;

/** What applications do to their widgets while they are tracked. */
class tst_WidgetsTracker : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aWidgetInConstructionIsNotLookedAt();
    void aWidgetThatDiesBeforeItIsSurveyedIsLeftAlone();
    void aWindowThatDeletesItselfWhenShownIsLeftAlone();
    void aWindowThatIsDeletedInAPressIsLeftAlone();
    void aNewWidgetAtTheAddressOfADeadOneIsAnother();
    void aDisconnectOfEverythingHarmsNothing();
    void aMenuThatIsFilledAsItOpensIsFound();
    void rowsThatAreMadeAnewStayTheSame();
    void widgetsMayOutliveTheTracker();
    void elementsMayOutliveTheirWidgets();
    void noEventIsChangedOrConsumed();
    void theTimeGrowsWithTheNumberOfControlsOnly();
    void aWindowIsToldInOneRecord();
};

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

void showAndWait(QWidget& window) {
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

/** Has events of all kinds while it is not yet what it will be. */
class Early : public QPushButton {
    Q_OBJECT

public:
    explicit Early(QWidget* parent)
        : QPushButton(parent) {
        ensurePolished();
        addAction(new QAction(this));
        setToolTip(QStringLiteral("early"));
    }
};

class Late : public Early {
    Q_OBJECT

public:
    using Early::Early;
};

class DeletesItself : public QDialog {
    Q_OBJECT

protected:
    void showEvent(QShowEvent* event) override {
        QDialog::showEvent(event);
        deleteLater();
    }
};

class KeepsEvents : public QWidget {
    Q_OBJECT

public:
    QVector<int> types;

protected:
    bool event(QEvent* event) override {
        types.append(event->type());
        return QWidget::event(event);
    }
};

qint64 timeOf(int number) {
    ControlsProbe probe;
    QElapsedTimer clock;
    clock.start();
    auto window = std::make_unique<QWidget>();
    for (int i = 0; i < number; ++i) {
        new QPushButton(QString::number(i), window.get());
    }
    window->show();
    QCoreApplication::processEvents();
    window.reset();
    return clock.nsecsElapsed();
}

} // namespace

void tst_WidgetsTracker::aWidgetInConstructionIsNotLookedAt() {
    ControlsProbe probe;
    QWidget window;
    showAndWait(window);
    auto* const button = new Late(&window);
    QTRY_VERIFY(probe.element(button) != nullptr);
    QCOMPARE(probe.element(button)->concreteType(), text("Late"));
}

void tst_WidgetsTracker::aWidgetThatDiesBeforeItIsSurveyedIsLeftAlone() {
    ControlsProbe probe;
    QWidget window;
    showAndWait(window);
    auto* const panel = new QWidget;
    panel->ensurePolished();
    panel->setParent(&window); // noted for the next survey
    delete panel;
    auto* const button = new QPushButton(text("After"), &window);
    QTRY_VERIFY(probe.element(button) != nullptr);
    QCOMPARE(probe.count(text("Button")), 1);
}

void tst_WidgetsTracker::aWindowThatDeletesItselfWhenShownIsLeftAlone() {
    ControlsProbe probe;
    const QPointer<QWidget> dialog = new DeletesItself;
    dialog->show();
    QTRY_VERIFY(dialog.isNull());
    QWidget window;
    showAndWait(window);
    QTRY_COMPARE(probe.line(&window), text("Window {seen}"));
}

void tst_WidgetsTracker::aWindowThatIsDeletedInAPressIsLeftAlone() {
    ControlsProbe probe;
    const QPointer<QWidget> window = new QWidget;
    auto* const button = new QPushButton(text("Gone"), window);
    QObject::connect(button, &QPushButton::pressed, window, [&] { delete window.data(); });
    showAndWait(*window);
    QTest::mousePress(button, Qt::LeftButton);
    QVERIFY(window.isNull());
    QWidget other;
    other.setWindowTitle(text("Other"));
    showAndWait(other);
    QTRY_COMPARE(probe.line(&other), text("Window \"Other\" {seen}"));
}

void tst_WidgetsTracker::aNewWidgetAtTheAddressOfADeadOneIsAnother() {
    ControlsProbe probe;
    QWidget window;
    showAndWait(window);
    alignas(QPushButton) unsigned char memory[sizeof(QPushButton)];
    auto* button = new (memory) QPushButton(text("First"), &window);
    QTRY_COMPARE(probe.line(button), text("Button \"First\""));
    button->~QPushButton();
    button = new (memory) QPushButton(text("Second"), &window);
    QTRY_COMPARE(probe.line(button), text("Button \"Second\""));
    QVERIFY(probe.find(text("Button"), text("First")) != nullptr);
    button->~QPushButton();
}

void tst_WidgetsTracker::aDisconnectOfEverythingHarmsNothing() {
    ControlsProbe probe;
    QWidget window;
    auto* const button = new QPushButton(text("Cut off"), &window);
    showAndWait(window);
    button->disconnect();
    window.disconnect();
    delete button;
    auto* const other = new QPushButton(text("Other"), &window);
    QTRY_COMPARE(probe.line(other), text("Button \"Other\""));
}

void tst_WidgetsTracker::aMenuThatIsFilledAsItOpensIsFound() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("Window"));
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu] {
        menu->clear();
        menu->addAction(text("one.txt"));
        menu->addMenu(text("More"))->addAction(text("two.txt"));
    });
    showAndWait(window);
    for (int i = 0; i < 3; ++i) {
        menu->popup(QPoint(10, 10));
        QTRY_COMPARE(probe.usage(probe.element(menu), "seen"), i + 1);
        menu->hide();
    }
    QVERIFY(probe.find(text("Command"), text("one.txt")) != nullptr);
    QVERIFY(probe.find(text("Command"), text("two.txt")) != nullptr);
}

void tst_WidgetsTracker::rowsThatAreMadeAnewStayTheSame() {
    ControlsProbe probe;
    QListWidget window;
    for (int i = 0; i < 3; ++i) {
        window.addItem(QString());
    }
    showAndWait(window);
    for (int round = 0; round < 10; ++round) {
        for (int i = 0; i < 3; ++i) {
            auto* const button = new QPushButton(text("Remove"));
            window.setItemWidget(window.item(i), nullptr);
            window.setItemWidget(window.item(i), button);
            QTRY_VERIFY(probe.element(button) != nullptr);
        }
        // Those that were replaced die from the event loop.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QVERIFY2(probe.count(text("Button")) <= 6, qPrintable(probe.tree()));
}

void tst_WidgetsTracker::widgetsMayOutliveTheTracker() {
    auto window = std::make_unique<QTabBar>();
    {
        ControlsProbe probe;
        window->addTab(text("One"));
        showAndWait(*window);
        QCOMPARE(probe.count(text("Tab")), 1);
    }
    window->addTab(text("Two"));
    QCoreApplication::processEvents();
    window.reset();
}

void tst_WidgetsTracker::elementsMayOutliveTheirWidgets() {
    ControlsProbe probe;
    auto window = std::make_unique<QWidget>();
    new QPushButton(text("Gone"), window.get());
    showAndWait(*window);
    window.reset();
    QCOMPARE(probe.tree({text("showing")}),
             text("Window showing=false {seen}\n  Button \"Gone\"\n"));
}

void tst_WidgetsTracker::noEventIsChangedOrConsumed() {
    const auto eventsOf = [] {
        KeepsEvents window;
        QVBoxLayout layout(&window);
        layout.addWidget(new QPushButton(text("OK")));
        showAndWait(window);
        QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(1, 1));
        window.hide();
        QCoreApplication::processEvents();
        return window.types;
    };
    const QVector<int> bare = eventsOf();
    ControlsProbe probe;
    QCOMPARE(eventsOf(), bare);
}

void tst_WidgetsTracker::theTimeGrowsWithTheNumberOfControlsOnly() {
    timeOf(100);
    const qint64 few = timeOf(500);
    const qint64 many = timeOf(4000);
    // Eight times as many; a cost that grows with the square would be sixty times as much.
    QVERIFY2(many < 24 * few, qPrintable(QStringLiteral("%1 and %2 ns").arg(few).arg(many)));
}

void tst_WidgetsTracker::aWindowIsToldInOneRecord() {
    ControlsProbe probe;
    QWidget window;
    QVBoxLayout layout(&window);
    for (int i = 0; i < 20; ++i) {
        layout.addWidget(new QPushButton(QString::number(i)));
    }
    window.show();
    QCOMPARE(probe.takeRecords(), 1);
}

QTEST_MAIN(tst_WidgetsTracker)
#include "tst_widgetstracker.moc"
