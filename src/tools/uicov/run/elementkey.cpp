// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/elementkey.h"

#include "base/displaytext.h"
#include "run/runelement.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <tuple>

namespace Uicov::Runs {

namespace {

/** Types whose text is a caption; what stands in an input is a value and would change the key. */
bool isNamedByText(const QString& type) {
    static const QStringList types{QStringLiteral("Window"), QStringLiteral("Dialog"),
                                   QStringLiteral("Menu"),   QStringLiteral("MenuItem"),
                                   QStringLiteral("Button"), QStringLiteral("CheckBox")};
    return types.contains(type);
}

auto tied(const ElementKey::Step& step) {
    return std::tie(step.kind, step.label, step.className, step.ordinal);
}

} // namespace

QString ElementKey::normalisedLabel(const QString& text) {
    QString label = text.section(QLatin1Char('\t'), 0, 0); // behind a tab stands the shortcut
    label.remove(QStringLiteral("[*]")); // where a title shows that there is something to save
    label = label.normalized(QString::NormalizationForm_C).simplified();
    while (label.endsWith(QChar(0x2026)) || label.endsWith(QLatin1String("..."))) {
        label.chop(label.endsWith(QChar(0x2026)) ? 1 : 3);
    }
    return label.trimmed();
}

QString ElementKey::normalisedClass(const QString& className) {
    static const QRegularExpression engineNumber(QStringLiteral("_QML(TYPE)?_\\d+"));
    QString name = className;
    return name.remove(engineNumber);
}

ElementKey::Step ElementKey::stepOf(const RunElement& element) {
    Step step;
    step.kind = element.type;
    if (isNamedByText(step.kind)) {
        step.label = normalisedLabel(element.text);
    }
    if (step.kind.isEmpty()) {
        step.kind = normalisedClass(element.className);
    }
    return step;
}

ElementKey::Step ElementKey::windowStepOf(const RunElement& element) {
    Step step = stepOf(element);
    if (element.type.isEmpty()) {
        step.kind = QStringLiteral("Window"); // what it is to a person, whatever its class
    }
    if (step.label.isEmpty()) {
        step.className = normalisedClass(element.className);
    }
    return step;
}

ElementKey::Step ElementKey::structureOf(const Step& step, const RunElement& element,
                                         bool isWindow) {
    Step structure;
    structure.kind = step.kind;
    if (isWindow) {
        structure.className = normalisedClass(element.className);
    }
    return structure;
}

namespace {

QString joined(const ElementKey::Step& step, const QString& kind, const QString& label,
               const QString& className) {
    QString text = kind;
    if (!label.isEmpty()) {
        text += QStringLiteral(" \"") + label + QLatin1Char('"');
    }
    if (!className.isEmpty()) {
        text += QStringLiteral(" (") + className + QLatin1Char(')');
    }
    if (step.ordinal > 1) {
        text += QStringLiteral(" #%1").arg(step.ordinal);
    }
    return text;
}

QString escaped(const QString& text) {
    // Without quotes inside, no label can look like the end of one step and the start of another.
    return Base::escaped(text).replace(QLatin1Char('"'), QLatin1String("\\\""));
}

} // namespace

QString ElementKey::Step::toString() const {
    return joined(*this, kind, caption.isEmpty() ? label : caption, className);
}

QString ElementKey::Step::toKey() const {
    return joined(*this, escaped(kind), escaped(label), escaped(className));
}

QString ElementKey::toString() const {
    QStringList texts;
    for (const Step& step : m_steps) {
        texts.append(step.toString());
    }
    return texts.join(separator());
}

QString ElementKey::toKey() const {
    QStringList texts;
    for (const Step& step : m_steps) {
        texts.append(step.toKey());
    }
    return texts.join(separator());
}

bool operator==(const ElementKey::Step& a, const ElementKey::Step& b) {
    return tied(a) == tied(b);
}

bool operator<(const ElementKey::Step& a, const ElementKey::Step& b) {
    return tied(a) < tied(b);
}

uint qHash(const ElementKey::Step& step, uint seed) {
    return ::qHash(step.kind, seed) ^ (::qHash(step.label, seed) * 31U) ^
           (::qHash(step.className, seed) * 17U) ^ static_cast<uint>(step.ordinal);
}

} // namespace Uicov::Runs
