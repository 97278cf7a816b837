// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QStringList>
#include <QWidget>

#include <functional>

/** What the tests of the event tap share: an application, widgets and filters that say what they
 * see. */
namespace TapProbes {

/** What the tap handed over, as "type name", of objects that have a name. */
extern QStringList handedOver;
/** The same and what the receivers saw, in one sequence: "handed type name", "seen type name". */
extern QStringList sequence;
/** Called with every hand-over on the GUI thread. */
extern std::function<void(QObject*, QEvent*)> onHandOver;
extern int handedOverOnOtherThreads;

/** Registered with the tap for all objects. */
void callback(QObject* receiver, QEvent* event);

/** Forgets all of the above. */
void clear();

/** Begins to watch while the constructors of the application's class still run, as the host does.
 */
class WatchedApplication : public QApplication {
public:
    WatchedApplication(int& argc, char** argv);
};

/** An application as some are: with a notify() of its own, which a test can tell what to do. */
class OwnNotifyApplication : public WatchedApplication {
public:
    enum class Mode { Pass, Swallow, PassCopy, PassTwice };

    using WatchedApplication::WatchedApplication;

    bool notify(QObject* receiver, QEvent* event) override;

    Mode mode = Mode::Pass;
    int calls = 0;
};

OwnNotifyApplication* application();

/** Says what it sees, accepts or ignores input as told. */
class Receiver : public QWidget {
public:
    explicit Receiver(const QString& name, QWidget* parent = nullptr);

    bool accepts = true;
    std::function<void(QEvent*)> onEvent;

protected:
    bool event(QEvent* event) override;
};

/** Sees everything and swallows what it is told to. */
class Filter : public QObject {
public:
    bool eventFilter(QObject* receiver, QEvent* event) override;

    QStringList seen;
    std::function<bool(QObject*, QEvent*)> swallows;
};

/** How often a delivery is in lines of the form "type name". */
int count(const QStringList& lines, QEvent::Type type, const char* name);

/** How often a receiver itself saw a type of event. */
int seenCount(QEvent::Type type, const char* name);

/** Handed over once, seen once, and handed over before it was seen. */
bool onceAndFirst(QEvent::Type type, const char* name);

bool isPress(QObject* receiver, QEvent* event);

QMouseEvent press();

} // namespace TapProbes
