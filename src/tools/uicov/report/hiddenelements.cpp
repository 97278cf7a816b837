// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/hiddenelements.h"

#include "base/displaytext.h"
#include "run/keywalk.h"
#include "run/run.h"

#include <QSet>

namespace Uicov::Report {

using Base::escaped;
using Runs::KeyWalk;
using Runs::RunElement;

namespace {

constexpr int uuidStart = 8;

/** By index of the element: its key; null for those that are no step of keys. */
std::vector<QString> keysOf(const Runs::Run& run) {
    std::vector<QString> keys(run.elements.size());
    const std::vector<KeyWalk::Place> places = KeyWalk(run).places();
    for (const KeyWalk::Place& place : places) {
        keys[static_cast<std::size_t>(place.element)] = place.key;
    }
    return keys;
}

} // namespace

HiddenElements::HiddenElements(const QString& part)
    : m_part(part)
    , m_pattern(part) {}

bool HiddenElements::isMeant(const RunElement& element) const {
    for (const QString& text : {element.text, element.className, element.type}) {
        if (!text.isEmpty() && (text.contains(m_part) || m_pattern.matches(text))) {
            return true;
        }
    }
    return false;
}

void HiddenElements::look(const Runs::Run& run) {
    const std::vector<QString> keys = keysOf(run);
    const int count = static_cast<int>(run.elements.size());
    for (int i = 0; i < count; ++i) {
        const RunElement& element = run.element(i);
        if (!keys[static_cast<std::size_t>(i)].isNull() || !isMeant(element)) {
            continue;
        }
        const QString name =
            (element.type.isEmpty() ? QStringLiteral("no type") : escaped(element.type)) +
            QStringLiteral(", class ") + escaped(element.className) +
            (element.text.isNull()
                 ? QString()
                 : QStringLiteral(", text \"") + escaped(element.text) + QLatin1Char('"'));
        QStringList& runs =
            m_elements[name + QStringLiteral("\n  not counted  ") + reasonOf(run, i, keys)];
        runs.append(run.uuid.left(uuidStart));
        runs.removeDuplicates();
    }
}

QString HiddenElements::reasonOf(const Runs::Run& run, int index,
                                 const std::vector<QString>& keys) {
    QSet<int> seen{index};
    // Elements can stand below themselves.
    for (int above = run.element(index).parent; above >= 0 && !seen.contains(above);
         above = run.element(above).parent) {
        seen.insert(above);
        if (run.element(above).isSubgraphTransparent) {
            const QString key = keys[static_cast<std::size_t>(above)];
            return QStringLiteral("it is a part of ") +
                   (key.isNull() ? QStringLiteral("something") : key) +
                   QStringLiteral(", which counts as one thing");
        }
    }
    return QStringLiteral("it is structure that people neither see nor operate; what is in it "
                          "counts");
}

QString HiddenElements::toString() const {
    QString text;
    for (auto it = m_elements.cbegin(); it != m_elements.cend(); ++it) {
        text += (text.isEmpty() ? QString() : QStringLiteral("\n")) + it.key() +
                QStringLiteral("\n  in           run ") + it->join(QStringLiteral(", ")) +
                QLatin1Char('\n');
    }
    return text;
}

} // namespace Uicov::Report
