// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "panelwidgets/gauge.h"
#include "panelwidgets/panelwindow.h"
#include "panelwidgets/servicewindow.h"
#include "panelwidgets/settingsdialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDial>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

#include <algorithm>

using Panel::PanelWindow;

/** A test of the panel as its makers might have it: it uses some of the panel and forgets the rest.
 */
class PanelSession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void namesTheRoom();
    void switchesNightSetback();
    void exportsAsTable();
    void changesTheSettings();
    void setsTheCircuit();
    void plansTheWeek();
    void writesTheLog();

private:
    /** The service window, opened as a technician does; null when it does not come. */
    Panel::ServiceWindow* openService() const;
    /** Turns to that page of the service window. */
    static void turnTo(const Panel::ServiceWindow* service, int page);
    template <class Control>
    Control* control(const QWidget* window, const QString& text) const;
    QLineEdit* input(const QWidget* window, const QString& placeholder) const;
    static QAction* action(const QWidget* menu, const QString& text);
    static void click(QMenu* menu, const QString& text);

    PanelWindow* m_window = nullptr;
};

void PanelSession::init() {
    m_window = new PanelWindow;
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void PanelSession::cleanup() {
    delete m_window;
}

template <class Control>
Control* PanelSession::control(const QWidget* window, const QString& text) const {
    const QList<Control*> controls = window->findChildren<Control*>();
    const auto it =
        std::find_if(controls.cbegin(), controls.cend(), [&text](const Control* candidate) {
            return candidate->text().remove(QLatin1Char('&')) == text;
        });
    return it == controls.cend() ? nullptr : *it;
}

QLineEdit* PanelSession::input(const QWidget* window, const QString& placeholder) const {
    const QList<QLineEdit*> inputs = window->findChildren<QLineEdit*>();
    const auto it =
        std::find_if(inputs.cbegin(), inputs.cend(), [&placeholder](const QLineEdit* candidate) {
            return candidate->placeholderText() == placeholder;
        });
    return it == inputs.cend() ? nullptr : *it;
}

QAction* PanelSession::action(const QWidget* menu, const QString& text) {
    const QList<QAction*> actions = menu->actions();
    const auto it =
        std::find_if(actions.cbegin(), actions.cend(), [&text](const QAction* candidate) {
            return candidate->text().remove(QLatin1Char('&')) == text;
        });
    return it == actions.cend() ? nullptr : *it;
}

void PanelSession::click(QMenu* menu, const QString& text) {
    QTRY_VERIFY(menu->isVisible());
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                      menu->actionGeometry(action(menu, text)).center());
}

void PanelSession::namesTheRoom() {
    QLineEdit* const room = input(m_window, QStringLiteral("Room name"));
    QVERIFY(room);
    QTest::mouseClick(room, Qt::LeftButton);
    QTest::keyClicks(room, QStringLiteral("Kitchen"));
    QTest::keyClick(room, Qt::Key_Return);
    QTest::mouseClick(control<QPushButton>(m_window, QStringLiteral("Apply")), Qt::LeftButton);
    QCOMPARE(room->text(), QStringLiteral("Kitchen"));
}

void PanelSession::switchesNightSetback() {
    auto* const nightSetback = control<QCheckBox>(m_window, QStringLiteral("Night setback"));
    QVERIFY(nightSetback);
    QTest::keyClick(nightSetback, Qt::Key_Space);
    QVERIFY(nightSetback->isChecked());
}

void PanelSession::exportsAsTable() {
    QMenuBar* const bar = m_window->menuBar();
    QAction* const file = action(bar, QStringLiteral("File"));
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(file).center());
    click(file->menu(), QStringLiteral("Export"));
    click(action(file->menu(), QStringLiteral("Export"))->menu(), QStringLiteral("As table"));
}

void PanelSession::changesTheSettings() {
    QTest::mouseClick(control<QPushButton>(m_window, QStringLiteral("Settings...")),
                      Qt::LeftButton);
    auto* const dialog = m_window->findChild<Panel::SettingsDialog*>();
    QVERIFY(dialog);
    QVERIFY(QTest::qWaitForWindowExposed(dialog));
    QTest::keyClick(control<QCheckBox>(dialog, QStringLiteral("Summer time")), Qt::Key_Space);
    QTest::mouseClick(control<QPushButton>(dialog, QStringLiteral("OK")), Qt::LeftButton);
    QVERIFY(!dialog->isVisible());
}

Panel::ServiceWindow* PanelSession::openService() const {
    auto* const tools = m_window->findChild<QToolBar*>();
    QTest::mouseClick(tools->widgetForAction(action(tools, QStringLiteral("Service..."))),
                      Qt::LeftButton);
    auto* const service = m_window->findChild<Panel::ServiceWindow*>();
    return service != nullptr && QTest::qWaitForWindowExposed(service) ? service : nullptr;
}

void PanelSession::turnTo(const Panel::ServiceWindow* service, int page) {
    auto* const pages = service->findChild<QTabWidget*>();
    QTest::mouseClick(pages->tabBar(), Qt::LeftButton, Qt::NoModifier,
                      pages->tabBar()->tabRect(page).center());
    QCOMPARE(pages->currentIndex(), page);
}

void PanelSession::setsTheCircuit() {
    const Panel::ServiceWindow* const service = openService();
    QVERIFY(service);
    auto* const cooling = control<QRadioButton>(service, QStringLiteral("Cooling"));
    QTest::mouseClick(cooling, Qt::LeftButton, Qt::NoModifier, QPoint(8, cooling->height() / 2));
    QVERIFY(cooling->isChecked());

    auto* const mode = service->findChild<QComboBox*>();
    QTest::keyClick(mode, Qt::Key_Down);
    QCOMPARE(mode->currentText(), QStringLiteral("Economy"));

    auto* const curve = service->findChild<QSlider*>();
    QTest::keyClick(curve, Qt::Key_PageUp);
    QCOMPARE(curve->value(), curve->pageStep());

    auto* const speed = service->findChild<QDial*>();
    QTest::keyClick(speed, Qt::Key_Up);
    QCOMPARE(speed->value(), speed->singleStep());

    auto* const hours = service->findChild<QSpinBox*>();
    QTest::keyClick(hours, Qt::Key_Up);
    QCOMPARE(hours->value(), 1);

    auto* const holiday = service->findChild<QGroupBox*>();
    QTest::keyClick(holiday, Qt::Key_Space);
    QVERIFY(holiday->isChecked());

    // It waits for a sensor that is not connected.
    QTest::mouseClick(control<QPushButton>(service, QStringLiteral("Calibrate")), Qt::LeftButton);
}

void PanelSession::plansTheWeek() {
    const Panel::ServiceWindow* const service = openService();
    QVERIFY(service);
    turnTo(service, 1);
    const auto* const days = service->findChild<QListWidget*>();
    QTest::mouseClick(days->viewport(), Qt::LeftButton, Qt::NoModifier,
                      days->visualItemRect(days->item(1)).center());
    QCOMPARE(days->currentRow(), 1);

    auto* const rooms = service->findChild<QTreeWidget*>();
    QTest::mouseClick(rooms->viewport(), Qt::LeftButton, Qt::NoModifier,
                      rooms->visualItemRect(rooms->topLevelItem(0)).center());
    QTest::keyClick(rooms, Qt::Key_Right);
    QVERIFY(rooms->topLevelItem(0)->isExpanded());
}

void PanelSession::writesTheLog() {
    Panel::ServiceWindow* const service = openService();
    QVERIFY(service);
    turnTo(service, 2);
    auto* const note = service->findChild<QPlainTextEdit*>();
    QTest::keyClicks(note, QStringLiteral("ok"));
    QCOMPARE(note->toPlainText(), QStringLiteral("ok"));

    auto* const gauge = service->findChild<Panel::Gauge*>();
    QTest::mouseClick(gauge, Qt::LeftButton);
    QCOMPARE(service->statusBar()->currentMessage(), QStringLiteral("Highest pressure reset"));

    QTest::keyClick(service, Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(service->statusBar()->currentMessage(), QStringLiteral("Venting"));

    const auto links = service->findChildren<QLabel*>();
    const auto manual = std::find_if(links.cbegin(), links.cend(), [](const QLabel* label) {
        return label->text().contains(QLatin1String("href"));
    });
    QVERIFY(manual != links.cend());
    QTest::mouseClick(*manual, Qt::LeftButton, Qt::NoModifier, QPoint(10, (*manual)->height() / 2));
    QCOMPARE(service->statusBar()->currentMessage(), QStringLiteral("Manual opened"));
}

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("panel-widgets"));
    QApplication application(argc, argv);
    PanelSession session;
    return QTest::qExec(&session, argc, argv);
}

#include "session.moc"
