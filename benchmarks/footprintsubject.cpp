// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVBoxLayout>

#include <cstdio>
#include <memory>

#include <malloc.h>

/*
 * Shows a window with that many push buttons, or Qt Quick items, and says how many bytes of memory
 * are in use then: as the C library counts them, and as the kernel does (resident). Started with
 * and without recording by benchmarks/footprint.
 */

namespace {

QQuickWindow* makeItems(QQmlEngine& engine, int count) {
    auto* window = new QQuickWindow;
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.0\nItem { width: 10; height: 10 }", QUrl());
    for (int i = 0; i < count; ++i) {
        auto* item = qobject_cast<QQuickItem*>(component.create());
        item->setParent(window->contentItem());
        item->setParentItem(window->contentItem());
    }
    return window;
}

QWidget* makeWidgets(int count) {
    auto* window = new QWidget;
    auto* layout = new QVBoxLayout(window);
    for (int i = 0; i < count; ++i) {
        layout->addWidget(new QPushButton(QStringLiteral("Button %1").arg(i)));
    }
    return window;
}

/** Bytes of this process in memory; under user-mode emulation the emulator's with them. */
long long residentBytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        const QByteArrayList lines = status.readAll().split('\n');
        for (const QByteArray& line : lines) {
            if (line.startsWith("VmRSS:")) {
                return line.simplified().split(' ').value(1).toLongLong() * 1024;
            }
        }
    }
    return 0;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const bool isQuick = arguments.value(1) == QStringLiteral("items");
    const int count = arguments.value(2).toInt();
    QQmlEngine engine;
    std::unique_ptr<QWidget> widgets;
    std::unique_ptr<QQuickWindow> items;
    if (isQuick) {
        items.reset(makeItems(engine, count));
        items->resize(400, 300);
        items->show();
        items->requestActivate();
    } else {
        widgets.reset(makeWidgets(count));
        widgets->show();
    }
    for (int round = 0; round < 20; ++round) {
        QApplication::processEvents();
    }
    const struct mallinfo2 used = mallinfo2();
    std::printf("%zu %lld\n", used.uordblks + used.hblkhd, residentBytes());
    return 0;
}
