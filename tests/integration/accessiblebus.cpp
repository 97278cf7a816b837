// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "accessiblebus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

const char* const busName = "accessibility";

QDBusMessage property(const AccessibleBus::Object& object, const char* interface,
                      const char* name) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        object.service, object.path, text("org.freedesktop.DBus.Properties"), text("Get"));
    call.setArguments({text(interface), text(name)});
    return call;
}

/** Empty when it cannot be had. */
QString addressOfBus(QProcess& sessionBus, const QString& folder) {
    qputenv("XDG_RUNTIME_DIR", folder.toLocal8Bit());
    sessionBus.start(text("dbus-daemon"),
                     {text("--session"), text("--nofork"), text("--print-address=1")});
    while (!sessionBus.canReadLine() && sessionBus.waitForReadyRead()) {
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", sessionBus.readLine().trimmed());
    const QDBusConnection session = QDBusConnection::sessionBus();
    const QString service = text("org.a11y.Bus");
    const QString path = text("/org/a11y/bus");
    QDBusMessage enable = QDBusMessage::createMethodCall(
        service, path, text("org.freedesktop.DBus.Properties"), text("Set"));
    enable.setArguments(
        {text("org.a11y.Status"), text("IsEnabled"), QVariant::fromValue(QDBusVariant(true))});
    session.call(enable);
    const QDBusReply<QString> address =
        session.call(QDBusMessage::createMethodCall(service, path, service, text("GetAddress")));
    qputenv("AT_SPI_BUS_ADDRESS", address.value().toLocal8Bit()); // whom programs ask first
    return address.value();
}

} // namespace

AccessibleBus::AccessibleBus()
    : m_bus(QDBusConnection::connectToBus(addressOfBus(m_session, m_folder.path()), text(busName)))
    , m_why(m_bus.lastError().message()) {}

AccessibleBus::~AccessibleBus() {
    QDBusConnection::disconnectFromBus(text(busName));
    m_session.terminate();
    m_session.waitForFinished();
}

QVector<AccessibleBus::Object> AccessibleBus::childrenOf(const Object& object) const {
    const QDBusMessage reply = m_bus.call(QDBusMessage::createMethodCall(
        object.service, object.path, text("org.a11y.atspi.Accessible"), text("GetChildren")));
    QVector<Object> children;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        return children;
    }
    const auto array = reply.arguments().constFirst().value<QDBusArgument>();
    array.beginArray();
    while (!array.atEnd()) {
        Object child;
        QDBusObjectPath path;
        array.beginStructure();
        array >> child.service >> path;
        array.endStructure();
        child.path = path.path();
        children.append(child);
    }
    array.endArray();
    return children;
}

QString AccessibleBus::nameOf(const Object& object) const {
    const QDBusReply<QDBusVariant> name =
        m_bus.call(property(object, "org.a11y.atspi.Accessible", "Name"));
    return name.value().variant().toString();
}

AccessibleBus::Object AccessibleBus::findIn(const Object& object, const QString& name,
                                            int depth) const {
    const QVector<Object> children = childrenOf(object);
    for (const Object& child : children) {
        if (nameOf(child) == name) {
            return child;
        }
        const Object inner = depth > 1 ? findIn(child, name, depth - 1) : Object();
        if (inner.isValid()) {
            return inner;
        }
    }
    return {};
}

AccessibleBus::Object AccessibleBus::find(const QString& name) const {
    constexpr int deepest = 6;
    return findIn({text("org.a11y.atspi.Registry"), text("/org/a11y/atspi/accessible/root")}, name,
                  deepest);
}

bool AccessibleBus::act(const Object& object) const {
    QDBusMessage call = QDBusMessage::createMethodCall(
        object.service, object.path, text("org.a11y.atspi.Action"), text("DoAction"));
    call.setArguments({0});
    const QDBusReply<bool> done = m_bus.call(call);
    return done.value();
}
