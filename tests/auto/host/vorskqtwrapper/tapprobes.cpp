// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/vorskqtwrapper/tapprobes.h"

#include "vorskqtwrapper/eventtap.h"

#include <QThread>

namespace TapProbes {

QStringList handedOver;
QStringList sequence;
std::function<void(QObject*, QEvent*)> onHandOver;
int handedOverOnOtherThreads = 0;

namespace {

QString line(const QObject* receiver, const QEvent* event) {
    return QStringLiteral("%1 %2").arg(QString::number(event->type()), receiver->objectName());
}

QString line(QEvent::Type type, const char* name) {
    return QStringLiteral("%1 %2").arg(QString::number(type), QString::fromLatin1(name));
}

bool isOfInterest(const QObject* receiver) {
    return !receiver->objectName().isEmpty();
}

} // namespace

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

void clear() {
    onHandOver = nullptr;
    handedOver.clear();
    sequence.clear();
    handedOverOnOtherThreads = 0;
}

WatchedApplication::WatchedApplication(int& argc, char** argv)
    : QApplication(argc, argv) {
    VorskHost::EventTap::instance().add(&QObject::staticMetaObject, callback);
}

bool OwnNotifyApplication::notify(QObject* receiver, QEvent* event) {
    ++calls;
    const bool applies = isOfInterest(receiver) && isPress(receiver, event);
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

OwnNotifyApplication* application() {
    return static_cast<OwnNotifyApplication*>(qApp);
}

Receiver::Receiver(const QString& name, QWidget* parent)
    : QWidget(parent) {
    setObjectName(name);
    setFocusPolicy(Qt::StrongFocus);
}

bool Receiver::event(QEvent* event) {
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

bool Filter::eventFilter(QObject* receiver, QEvent* event) {
    if (isOfInterest(receiver)) {
        seen.append(line(receiver, event));
    }
    return swallows && swallows(receiver, event);
}

int count(const QStringList& lines, QEvent::Type type, const char* name) {
    return lines.count(line(type, name));
}

int seenCount(QEvent::Type type, const char* name) {
    return sequence.count(QStringLiteral("seen ") + line(type, name));
}

bool onceAndFirst(QEvent::Type type, const char* name) {
    const QString handed = QStringLiteral("handed ") + line(type, name);
    const QString seen = QStringLiteral("seen ") + line(type, name);
    return sequence.count(handed) == 1 && sequence.count(seen) == 1 &&
           sequence.indexOf(handed) < sequence.indexOf(seen);
}

bool isPress(QObject*, QEvent* event) {
    return event->type() == QEvent::MouseButtonPress;
}

QMouseEvent press() {
    return {QEvent::MouseButtonPress, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
            Qt::NoModifier};
}

} // namespace TapProbes
