#include "panelwidgets/panelwindow.h"
#include "panelwidgets/settingsdialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

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

private:
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

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("panel-widgets"));
    QApplication application(argc, argv);
    PanelSession session;
    return QTest::qExec(&session, argc, argv);
}

#include "session.moc"
