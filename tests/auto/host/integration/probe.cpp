// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QMouseEvent>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTextStream>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <sys/wait.h>
#include <unistd.h>

/*
 * An application that knows nothing of the host: it clicks its button, says what it saw and ends in
 * the way that its argument names.
 */

namespace {

class ProbeApplication : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override {
        ++deliveries;
        return QApplication::notify(receiver, event);
    }
    int deliveries = 0;
};

class Swallower : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        return event->type() == QEvent::MouseButtonPress;
    }
};

/** Ends the application from within the delivery of an event. */
class Ender : public QObject {
public:
    bool leavesAtOnce = false;

protected:
    void timerEvent(QTimerEvent*) override {
        if (leavesAtOnce) {
            std::exit(3);
        }
        QCoreApplication::exit(3);
    }
};

bool isWay(const char* way, const char* name) {
    return std::strcmp(way, name) == 0;
}

void report(int clicks, bool hasDeliveries) {
    QTextStream(stdout) << "clicks " << clicks << " deliveries " << (hasDeliveries ? "yes" : "no")
                        << '\n';
}

/** Clicks twice, the second time past a filter that lets no press through. */
int clickButton(ProbeApplication& application) {
    QPushButton button;
    button.setObjectName(QStringLiteral("button"));
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });
    button.show();
    QTest::mouseClick(&button, Qt::LeftButton);
    Swallower swallower;
    application.installEventFilter(&swallower);
    QTest::mouseClick(&button, Qt::LeftButton);
    return clicks;
}

void runChild() {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("return")});
    child.waitForFinished();
}

void forkChild(QObject* receiver) {
    const pid_t child = fork();
    if (child == 0) {
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(receiver, &press);
        std::exit(0);
    }
    waitpid(child, nullptr, 0);
}

int runOnce(int argc, char** argv, const char* way) {
    ProbeApplication application(argc, argv);
    const int clicks = clickButton(application);
    report(clicks, application.deliveries > 0);
    Ender ender;
    if (isWay(way, "kill")) {
        static_cast<void>(std::raise(SIGKILL));
    } else if (isWay(way, "terminate")) {
        static_cast<void>(std::raise(SIGTERM));
    } else if (isWay(way, "abort")) {
        std::abort();
    } else if (isWay(way, "exit-in-handler")) {
        ender.leavesAtOnce = true;
    } else if (isWay(way, "quick-exit")) {
        std::quick_exit(3);
    } else if (isWay(way, "_exit")) {
        _exit(3);
    } else if (isWay(way, "child")) {
        runChild();
    } else if (isWay(way, "fork")) {
        QObject receiver;
        receiver.setObjectName(QStringLiteral("in the child"));
        forkChild(&receiver);
    }
    ender.startTimer(0);
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    const char* way = argc > 1 ? argv[1] : "return";
    if (isWay(way, "never-destroyed")) {
        auto* application = new ProbeApplication(argc, argv);
        const int clicks = clickButton(*application);
        report(clicks, application->deliveries > 0);
        return 3;
    }
    if (isWay(way, "twice")) {
        runOnce(argc, argv, way);
    }
    return runOnce(argc, argv, way);
}
