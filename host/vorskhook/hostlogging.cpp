#include "vorskhook/hostlogging.h"

namespace VorskHost {

// Neither category is ever destroyed: both are used while the process exits, after the statics of
// this library are gone.

const QLoggingCategory& hostLog() {
    static const auto* category = new QLoggingCategory("vorsk.host");
    return *category;
}

const QLoggingCategory& extensionLog() {
    static const auto* category = new QLoggingCategory("vorsk.extension", QtCriticalMsg);
    return *category;
}

} // namespace VorskHost
