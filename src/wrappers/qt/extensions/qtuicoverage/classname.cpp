// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/classname.h"

#include <QHash>
#include <QObject>

namespace Vorsk {
namespace UICoverage {

namespace {

/** More classes than an application has, other than one that makes them up as it runs. */
constexpr int most = 1000;

struct Name {
    QByteArray characters;
    QString text;
};

} // namespace

QString className(const QObject* object) {
    // By the characters and not by where they stand: a plugin's class goes with the plugin.
    static QHash<QLatin1String, Name> names;
    const QLatin1String given(object->metaObject()->className());
    const auto known = names.constFind(given);
    if (known != names.cend()) {
        return known->text;
    }
    if (names.size() >= most) {
        names.clear();
    }
    const Name name{QByteArray(given.data(), given.size()),
                    QString::fromUtf8(given.data(), given.size())};
    names.insert(QLatin1String(name.characters), name);
    return name.text;
}

} // namespace UICoverage
} // namespace Vorsk
