// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QVector>

/**
 * The bus of accessibility (AT-SPI), as a client of it: finds what programs show and operates it.
 * Has a session bus of its own, which programs that are started from now on use; the accessibility
 * bus is started there when it is asked for. Ends with this object. One in a process.
 */
class AccessibleBus {
public:
    /** Something that a program shows. A value. */
    struct Object {
        QString service;
        QString path;

        bool isValid() const { return !path.isEmpty(); }
    };

    /** Connects, and tells programs that there is a client. */
    AccessibleBus();
    ~AccessibleBus();
    Q_DISABLE_COPY(AccessibleBus)

    bool isConnected() const { return m_bus.isConnected(); }
    /** Why it is not. */
    QString why() const { return m_why; }

    /** The first of that name in any program; not valid when there is none. */
    Object find(const QString& name) const;
    /** Does the first thing that can be done to it, as pressing a button; false when there is none.
     */
    bool act(const Object& object) const;

private:
    QVector<Object> childrenOf(const Object& object) const;
    QString nameOf(const Object& object) const;
    Object findIn(const Object& object, const QString& name, int depth) const;

    QTemporaryDir m_folder;
    QProcess m_session;
    QDBusConnection m_bus;
    QString m_why;
};
