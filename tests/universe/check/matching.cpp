// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "matching.h"

#include "names.h"

#include <algorithm>

namespace {

/** What so much extends that it tells nothing. */
bool isGeneral(const QString& className) {
    static const QSet<QString> general{
        QStringLiteral("QObject"),          QStringLiteral("QWidget"),
        QStringLiteral("QFrame"),           QStringLiteral("QQuickItem"),
        QStringLiteral("QQuickFocusScope"), QStringLiteral("QQuickControl")};
    return general.contains(className);
}

} // namespace

Matching::Matching(const JournalFile& journal, const ControlsRecording& recording)
    : m_journal(journal)
    , m_recording(recording) {
    for (int i = 0; i < recording.elements.size(); ++i) {
        const auto& element = recording.elements.at(i);
        if (element.isControl()) {
            m_byClass[element.className].append(i);
        }
        for (const QString& name : element.names) {
            m_byName[name].append(i);
        }
    }
    QVector<int> order = journal.objects.keys().toVector();
    std::sort(order.begin(), order.end());
    for (const int number : order) {
        const JournalFile::Object object = journal.objects.value(number);
        for (const QString& name : object.names) {
            ++m_namesOfClass[object.className][name];
        }
    }
    for (const int number : order) {
        m_candidates.insert(number, candidatesOf(*journal.objects.constFind(number)));
    }
    // What is no part of another first: a field in a spin box needs no element of its own.
    std::stable_partition(order.begin(), order.end(), [&](int number) {
        return journal.objects.constFind(number)->chain.size() <= 1;
    });
    give(order, true);
    give(order, false);
}

QVector<int> Matching::candidatesOf(const JournalFile::Object& object) const {
    QVector<int> candidates = m_byClass.value(object.className);
    for (const QString& base : object.bases) {
        if (!isGeneral(base)) {
            candidates += m_byClass.value(base);
        }
    }
    const bool hasCaption = object.className == QLatin1String("QAction") ||
                            object.bases.contains(QLatin1String("QAction")) ||
                            object.bases.contains(QLatin1String("QAbstractButton"));
    const bool isNamed = hasCaption && !object.names.isEmpty();
    // Those that have most names in common: a tool tip may be that of many.
    int most = 0;
    for (const int element : qAsConst(candidates)) {
        most = std::max(most, Names::common(m_recording.elements.at(element).names, object.names));
    }
    candidates.erase(std::remove_if(candidates.begin(), candidates.end(),
                                    [&](int element) {
                                        const auto& names = m_recording.elements.at(element).names;
                                        return Names::common(names, object.names) < most ||
                                               (most == 0 &&
                                                (isNamed || isForeignName(element, object)));
                                    }),
                     candidates.end());
    // The element that is called otherwise as well is rather that of another object.
    const auto otherNames = [&](int element) {
        const QStringList& names = m_recording.elements.at(element).names;
        return names.size() - Names::common(names, object.names);
    };
    std::stable_sort(candidates.begin(), candidates.end(),
                     [&](int a, int b) { return otherNames(a) < otherNames(b); });
    return candidates;
}

/** Whether others of the object's class are called as the element is: then it is one of theirs. */
bool Matching::isForeignName(int element, const JournalFile::Object& object) const {
    const auto names = m_namesOfClass.constFind(object.className);
    const QStringList& called = m_recording.elements.at(element).names;
    return names != m_namesOfClass.cend() &&
           std::any_of(called.cbegin(), called.cend(),
                       [&](const QString& name) { return names->contains(name); });
}

/** Whether nothing else that the element stands for was there together with the object. */
bool Matching::isFree(int element, int object) const {
    const QVector<int> others = m_objectsOf.value(element);
    const auto isTogether = [&](int one, int later) {
        const int successor = m_journal.objects.constFind(one)->successor;
        return successor == 0 || successor > later;
    };
    return m_recording.elements.at(element).isGroup ||
           std::none_of(others.cbegin(), others.cend(), [&](int other) {
               return isTogether(std::min(other, object), std::max(other, object));
           });
}

void Matching::give(const QVector<int>& order, bool byName) {
    for (const int number : order) {
        if (m_given.contains(number)) {
            continue;
        }
        const QStringList names = m_journal.objects.constFind(number)->names;
        for (const int candidate : m_candidates.value(number)) {
            const auto& element = m_recording.elements.at(candidate);
            if (isFree(candidate, number) && (!byName || Names::common(element.names, names) > 0)) {
                m_given.insert(number, candidate);
                m_objectsOf[candidate].append(number);
                break;
            }
        }
    }
}

const QVector<int>& Matching::elementsOf(int object) const {
    static const QVector<int> none;
    const auto it = m_candidates.constFind(object);
    return it == m_candidates.cend() ? none : *it;
}

QVector<int> Matching::named(const QString& name, const QSet<QString>& types) const {
    QVector<int> found;
    const QVector<int> candidates = m_byName.value(name);
    for (const int index : candidates) {
        if (types.contains(m_recording.elements.at(index).type)) {
            found.append(index);
        }
    }
    return found;
}
