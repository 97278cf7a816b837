// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

/** Each function is a program of its own about which a report has to tell the truth. */
class AnsweredProgram : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void closedMenus();
    void stackOfPages();
    void operatesItself();
    void hiddenAndDisabledActions();

private:
    void show() const;

    QMainWindow* m_window = nullptr;
};

void AnsweredProgram::init() {
    m_window = new QMainWindow;
    m_window->setWindowTitle(QStringLiteral("Editor"));
}

void AnsweredProgram::cleanup() {
    delete m_window;
}

void AnsweredProgram::show() const {
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void AnsweredProgram::closedMenus() {
    constexpr int menus = 10;
    constexpr int actions = 30;
    for (int i = 1; i <= menus; ++i) {
        QMenu* const menu = m_window->menuBar()->addMenu(QStringLiteral("Menu %1").arg(i));
        for (int j = 1; j <= actions; ++j) {
            menu->addAction(QStringLiteral("Action %1.%2").arg(i).arg(j));
        }
    }
    show();
}

void AnsweredProgram::stackOfPages() {
    constexpr int pages = 6;
    auto* const all = new QWidget;
    auto* const layout = new QVBoxLayout(all);
    auto* const stack = new QStackedWidget;
    auto* const next = new QPushButton(QStringLiteral("Next"));
    layout->addWidget(stack);
    layout->addWidget(next);
    for (int i = 1; i <= pages; ++i) {
        auto* const page = new QWidget;
        page->setObjectName(QStringLiteral("page%1").arg(i));
        auto* const box = new QCheckBox(QStringLiteral("Box %1").arg(i), page);
        box->resize(box->sizeHint());
        stack->addWidget(page);
    }
    connect(next, &QPushButton::clicked, stack,
            [stack] { stack->setCurrentIndex(stack->currentIndex() + 1); });
    m_window->setCentralWidget(all);
    show();
    QTest::mouseClick(next, Qt::LeftButton);
    QTRY_VERIFY(stack->currentWidget()->isVisible());
    QTest::keyClick(stack->currentWidget()->findChild<QCheckBox*>(), Qt::Key_Space);
}

void AnsweredProgram::operatesItself() {
    auto* const all = new QWidget;
    auto* const layout = new QVBoxLayout(all);
    auto* const box = new QCheckBox(QStringLiteral("Remember"));
    auto* const field = new QLineEdit;
    auto* const button = new QPushButton(QStringLiteral("Apply"));
    field->setPlaceholderText(QStringLiteral("Name"));
    for (QWidget* widget : {static_cast<QWidget*>(field), static_cast<QWidget*>(box),
                            static_cast<QWidget*>(button)}) {
        layout->addWidget(widget);
    }
    m_window->setCentralWidget(all);
    box->setChecked(true);
    show();
    bool isDone = false;
    QTimer::singleShot(0, this, [&] {
        box->click();
        field->setText(QStringLiteral("Attic"));
        button->click();
        isDone = true;
    });
    QTRY_VERIFY(isDone);
}

void AnsweredProgram::hiddenAndDisabledActions() {
    QMenu* const menu = m_window->menuBar()->addMenu(QStringLiteral("File"));
    QAction* const plain = menu->addAction(QStringLiteral("Plain"));
    menu->addAction(QStringLiteral("Disabled"))->setEnabled(false);
    menu->addAction(QStringLiteral("Hidden"))->setVisible(false);
    menu->addAction(QStringLiteral("Other"));
    show();
    QTest::mouseClick(m_window->menuBar(), Qt::LeftButton, Qt::NoModifier,
                      m_window->menuBar()->actionGeometry(menu->menuAction()).center());
    QVERIFY(QTest::qWaitForWindowExposed(menu));
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(plain).center());
}

QTEST_MAIN(AnsweredProgram)

#include "answeredprogram.moc"
