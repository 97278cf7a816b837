// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/deliveryends.h"

#include <vorsk/extension.h>
#include <vorsk/extensionhost.h>
#include <vorsk/hook.h>
#include <vorsk/hostlogger.h>
#include <vorsk/optionset.h>
#include <vorsk/wrappercontext.h>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QVariant>

/*
 * An extension that says all that happens to it as messages. TEST_EXTENSION_DECLINES in the
 * environment makes it give no extension at all, TEST_EXTENSION_ASKS_FOR_ENDS ask for the ends of
 * deliveries.
 */

namespace {

Vorsk::ExtensionHost* host = nullptr;

void say(const char* what, const Vorsk::ArgumentList& arguments = {}) {
    Vorsk::Hook* hook = Vorsk::Hook::hook;
    if (hook != nullptr) {
        hook->send(hook->channel, QString::fromLatin1(what), arguments);
    }
}

QObject* pressed = nullptr;

void eventCallback(QObject* object, QEvent* event) {
    if (!object->objectName().isEmpty() && event->type() == QEvent::MouseButtonPress) {
        pressed = object;
        say("press", {object->objectName()});
    }
}

void endCallback(QObject* object, QEvent* event) {
    // Addresses only: both may be dead. The receiver of the press is known to live.
    if (object == pressed && event->type() == QEvent::MouseButtonPress) {
        say("end of press", {object->objectName()});
    }
}

class TestExtension final : public Vorsk::Extension {
public:
    TestExtension() = default;
    ~TestExtension() override {
        say("destroyed");
        host->logger()->info("gone");
    }

    void initialize(Vorsk::WrapperContext* context) override {
        QVariantList enabled;
        for (const std::string& value : options->values("enabled")) {
            enabled.append(QString::fromStdString(value));
        }
        say("initialize",
            {QString::fromStdString(name), QString::fromStdString(path), QVariant(enabled),
             options->contains("qtquick"), QCoreApplication::instance() != nullptr});
        context->registerEventCallback(&QObject::staticMetaObject, eventCallback);
        if (qEnvironmentVariableIsSet("TEST_EXTENSION_ASKS_FOR_ENDS")) {
            say(Vorsk::UICoverage::registerDeliveryEndCallback(*context, endCallback)
                    ? "ends are told"
                    : "ends are not told");
        }
        host->logger()->info("ready");
        host->logger()->warning("careful");
    }

    void finish() override { say("finish"); }
};

} // namespace

extern "C" Q_DECL_EXPORT Vorsk::Extension* init_extension(Vorsk::ExtensionHost* extensionHost) {
    host = extensionHost;
    if (qEnvironmentVariableIsSet("TEST_EXTENSION_DECLINES")) {
        return nullptr;
    }
    static TestExtension extension;
    return &extension;
}
