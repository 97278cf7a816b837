// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>

/** Each function is a way to save: one command, which the menu, the tool bar and Ctrl+S reach. */
class SavingProgram : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void byKeyBeforeTheMenuWasOpen();
    void byKeyAfterTheMenuWasOpen();
    void byToolBar();
    void byMenu();
    void byMnemonic();

private:
    void openMenu() const;

    QMainWindow* m_window = nullptr;
    QMenu* m_menu = nullptr;
    QToolBar* m_tools = nullptr;
    QAction* m_save = nullptr;
    int m_saved = 0;
};

void SavingProgram::init() {
    m_saved = 0;
    m_window = new QMainWindow;
    m_window->setWindowTitle(QStringLiteral("Editor"));
    m_menu = m_window->menuBar()->addMenu(QStringLiteral("&File"));
    m_save = m_menu->addAction(QStringLiteral("&Save"), this, [this] { ++m_saved; });
    m_save->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    m_menu->addAction(QStringLiteral("&Close"));
    m_tools = m_window->addToolBar(QStringLiteral("Tools"));
    m_tools->addAction(m_save);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void SavingProgram::cleanup() {
    delete m_window;
    QCOMPARE(m_saved, 1);
}

void SavingProgram::openMenu() const {
    QTest::mouseClick(m_window->menuBar(), Qt::LeftButton, Qt::NoModifier,
                      m_window->menuBar()->actionGeometry(m_menu->menuAction()).center());
    QVERIFY(QTest::qWaitForWindowExposed(m_menu));
}

void SavingProgram::byKeyBeforeTheMenuWasOpen() {
    QTest::keyClick(m_window, Qt::Key_S, Qt::ControlModifier);
}

void SavingProgram::byKeyAfterTheMenuWasOpen() {
    openMenu();
    QTest::keyClick(m_menu, Qt::Key_Escape);
    QTRY_VERIFY(!m_menu->isVisible());
    QTest::keyClick(m_window, Qt::Key_S, Qt::ControlModifier);
}

void SavingProgram::byToolBar() {
    QTest::mouseClick(m_tools->widgetForAction(m_save), Qt::LeftButton);
}

void SavingProgram::byMenu() {
    openMenu();
    QTest::mouseClick(m_menu, Qt::LeftButton, Qt::NoModifier,
                      m_menu->actionGeometry(m_save).center());
}

void SavingProgram::byMnemonic() {
    QTest::keyClick(m_window, Qt::Key_F, Qt::AltModifier);
    QVERIFY(QTest::qWaitForWindowExposed(m_menu));
    QTest::keyClick(m_menu, Qt::Key_S);
}

QTEST_MAIN(SavingProgram)

#include "savingprogram.moc"
