// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// The demo's panel, always used in the same way, as it is or changed as its makers might change it.
// The name of the change is the first argument; without one there is none.

#include "panelwidgets/panelwindow.h"
#include "panelwidgets/settingsdialog.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTranslator>
#include <QVBoxLayout>

namespace {

/** A language in which every text is another, as long as some are in real ones. */
class OtherLanguage : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* /*context*/, const char* sourceText,
                      const char* /*disambiguation*/, int /*n*/) const override {
        return QStringLiteral("Übersetzt: ") + QString::fromUtf8(sourceText);
    }
};

/** A widget more, in front of all others of its group and behind them. */
void addWidgets(QWidget& window) {
    auto* const group = window.findChild<QGroupBox*>();
    auto* const layout = qobject_cast<QVBoxLayout*>(group->layout());
    layout->insertWidget(0, new QPushButton(QStringLiteral("Boost")));
    layout->addWidget(new QCheckBox(QStringLiteral("Holiday")));
}

/** The group stands in three layouts and two widgets more than before. */
void wrapGroup(QMainWindow& window) {
    auto* const group = window.findChild<QGroupBox*>();
    auto* const inner = new QWidget;
    auto* const outer = new QWidget;
    auto* const innerLayout = new QVBoxLayout(inner);
    auto* const row = new QHBoxLayout;
    innerLayout->addLayout(row);
    (new QVBoxLayout(outer))->addWidget(inner);
    auto* const page = qobject_cast<QHBoxLayout*>(window.centralWidget()->layout());
    page->removeWidget(group);
    row->addWidget(group);
    page->insertWidget(0, outer);
}

} // namespace

class IdentitySession : public QObject {
    Q_OBJECT

public:
    explicit IdentitySession(const QString& change)
        : m_change(change) {}

private Q_SLOTS:
    void session();

private:
    static QString caption(const char* source) {
        return QCoreApplication::translate("Panel::PanelWindow", source).remove(QLatin1Char('&'));
    }
    template <class Control>
    static Control* control(const QWidget& window, const QString& text) {
        for (Control* candidate : window.findChildren<Control*>()) {
            if (candidate->text().remove(QLatin1Char('&')) == text) {
                return candidate;
            }
        }
        return nullptr;
    }
    static void openMenus(const Panel::PanelWindow& window);

    QString m_change;
};

void IdentitySession::openMenus(const Panel::PanelWindow& window) {
    QMenuBar* const bar = window.menuBar();
    for (QAction* action : bar->actions()) {
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier,
                          bar->actionGeometry(action).center());
        QMenu* const menu = action->menu();
        QTRY_VERIFY(menu->isVisible());
        for (QAction* entry : menu->actions()) {
            if (entry->menu() != nullptr) {
                QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                                  menu->actionGeometry(entry).center());
                QTRY_VERIFY(entry->menu()->isVisible());
                QTest::keyClick(entry->menu(), Qt::Key_Escape);
            }
        }
        while (QWidget* const popup = QApplication::activePopupWidget()) {
            popup->close();
        }
    }
}

void IdentitySession::session() {
    Panel::PanelWindow window;
    if (m_change == QLatin1String("added")) {
        addWidgets(window);
    } else if (m_change == QLatin1String("wrapped")) {
        wrapGroup(window);
    } else if (m_change == QLatin1String("resized")) {
        window.resize(1100, 800);
    }
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    openMenus(window);
    QTest::keyClicks(window.findChild<QLineEdit*>(), QStringLiteral("Attic"));
    QTest::keyClick(control<QCheckBox>(window, caption("Night setback")), Qt::Key_Space);
    QTest::mouseClick(control<QPushButton>(window, caption("Settings...")), Qt::LeftButton);
    auto* const dialog = window.findChild<Panel::SettingsDialog*>();
    QVERIFY(dialog);
    QVERIFY(QTest::qWaitForWindowExposed(dialog));
    QTest::keyClick(dialog->findChild<QCheckBox*>(), Qt::Key_Space);
    dialog->accept();
    QTRY_VERIFY(!dialog->isVisible());
}

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("identity-panel"));
    QApplication application(argc, argv); // takes -style out
    const QString change = QCoreApplication::arguments().value(1);
    OtherLanguage language;
    if (change == QLatin1String("translated")) {
        QCoreApplication::installTranslator(&language);
    }
    IdentitySession session(change);
    return QTest::qExec(&session, {QString::fromLocal8Bit(argv[0]), QStringLiteral("-silent")});
}

#include "identitypanel.moc"
