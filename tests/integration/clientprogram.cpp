// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// A window for an accessibility client to operate: each thing that it does changes the title. Ends
// when "Quit" is pressed, or by itself after a minute.

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    auto* const reset = new QPushButton(QStringLiteral("Reset"));
    auto* const check = new QCheckBox(QStringLiteral("Check"));
    auto* const set = new QCheckBox(QStringLiteral("Set by the program"));
    auto* const line = new QLineEdit;
    auto* const quit = new QPushButton(QStringLiteral("Quit"));
    for (QWidget* const widget :
         {static_cast<QWidget*>(reset), static_cast<QWidget*>(check), static_cast<QWidget*>(set),
          static_cast<QWidget*>(line), static_cast<QWidget*>(quit)}) {
        layout->addWidget(widget);
    }
    line->setAccessibleName(QStringLiteral("Line"));
    const auto change = [&](const QString& title) {
        set->setChecked(!set->isChecked());
        line->setText(title);
        window.setWindowTitle(title);
    };
    QObject::connect(reset, &QPushButton::clicked, [&] { change(QStringLiteral("was reset")); });
    QObject::connect(check, &QCheckBox::toggled,
                     [&window] { window.setWindowTitle(QStringLiteral("was checked")); });
    QObject::connect(quit, &QPushButton::clicked, &application, &QApplication::quit);
    window.setWindowTitle(QStringLiteral("clientprogram"));
    window.show();
    constexpr int longEnough = 60000;
    QTimer::singleShot(longEnough, [] { QCoreApplication::exit(1); });
    return QApplication::exec();
}
