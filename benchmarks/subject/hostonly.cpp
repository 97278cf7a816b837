// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// In place of the extension, to see what the host costs by itself: asks for all events, as the
// extension does, and looks at none.
#include <vorsk/extension.h>
#include <vorsk/extensionhost.h>
#include <vorsk/wrappercontext.h>

#include <QObject>

namespace {

class HostOnly : public Vorsk::Extension {
public:
    void initialize(Vorsk::WrapperContext* context) override {
        context->registerEventCallback(&QObject::staticMetaObject, [](QObject*, QEvent*) {});
    }
};

} // namespace

extern "C" {

Q_DECL_EXPORT Vorsk::Extension* init_extension(Vorsk::ExtensionHost*) {
    static HostOnly extension;
    return &extension;
}
}
