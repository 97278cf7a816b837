// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/controlnames.h"

#include "run/elementkinds.h"
#include "run/run.h"

namespace Uicov::Runs {

namespace {

/** Null for names that Qt gives to what it makes itself, and for groups, whose members all have the
 * same. */
QString givenName(const RunElement& element) {
    if (element.attributes.contains(AttributeName::group())) {
        return {};
    }
    const QString objectName = element.attributes.value(AttributeName::objectName());
    const bool isQts =
        objectName.startsWith(QLatin1String("qt_")) || objectName.startsWith(QLatin1String("_q_"));
    return objectName.isEmpty() || isQts ? element.attributes.value(AttributeName::qmlId())
                                         : objectName;
}

} // namespace

ControlNames::ControlNames(const Run& run)
    : m_run(run) {
    for (const RunElement& element : run.elements) {
        const QString name = givenName(element);
        if (!name.isEmpty()) {
            ++m_count[qMakePair(element.parent, element.type)][name];
        }
    }
}

QStringList ControlNames::kinds() {
    return {QStringLiteral("text"),       AttributeName::page(),           AttributeName::label(),
            AttributeName::placeholder(), AttributeName::accessibleName(), AttributeName::toolTip(),
            AttributeName::objectName(),  AttributeName::qmlId()};
}

QString ControlNames::captionOf(const RunElement& element, const QStringList& preferred) {
    static const QStringList usual = kinds();
    for (const QStringList* order : {&preferred, &usual}) {
        for (const QString& kind : *order) {
            const QString name =
                kind == QLatin1String("text") ? element.text : element.attributes.value(kind);
            if (!name.trimmed().isEmpty()) {
                return name;
            }
        }
    }
    return {};
}

bool ControlNames::isOfGroup(const RunElement& element) {
    return !element.attributes.value(AttributeName::group()).isEmpty();
}

QString ControlNames::groupNameOf(const RunElement& element) {
    const QString group = element.attributes.value(AttributeName::group());
    const int slash = group.lastIndexOf(QLatin1Char('/'));
    return group.mid(qMax(slash, group.lastIndexOf(QLatin1Char(':'))) + 1);
}

QString ControlNames::authorsName(int element) const {
    const RunElement& named = m_run.element(element);
    const QString name = givenName(named);
    if (name.isEmpty()) {
        return {};
    }
    const int count = m_count.value(qMakePair(named.parent, named.type)).value(name);
    return count == 1 ? name : QString();
}

QString ControlNames::keyLabelOf(int element) const {
    const RunElement& named = m_run.element(element);
    const QString group = named.attributes.value(AttributeName::group());
    if (!group.isEmpty()) {
        return group;
    }
    const QString name = authorsName(element);
    return name.isEmpty() ? captionOf(named) : name;
}

} // namespace Uicov::Runs
