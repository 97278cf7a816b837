// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "comparison.h"

#include "names.h"

#include <algorithm>

namespace {

/** What a press starts and an application finishes later, in microseconds. */
constexpr qint64 afterwards = 1500000;

/** A press whose slot runs an event loop of its own ends when that does. */
constexpr qint64 longAfterwards = 15000000;
/** Between what Qt tells and what is recorded of it. */
constexpr qint64 atOnce = 5000;

bool isPress(const QString& what) {
    return what == QLatin1String("press") || what == QLatin1String("touch") ||
           what == QLatin1String("doubleClick");
}

bool isAction(const JournalFile::Object& object) {
    static const QStringList classes{QStringLiteral("QAction"), QStringLiteral("QQuickAction"),
                                     QStringLiteral("QQuickMenuItem1")};
    return classes.contains(object.className) ||
           std::any_of(object.bases.cbegin(), object.bases.cend(),
                       [](const QString& base) { return classes.contains(base); });
}

/** Documented as not counted: what moves and sizes others. */
bool isLeftOut(const JournalFile::Object& object) {
    static const QStringList classes{
        QStringLiteral("QScrollBar"),     QStringLiteral("QSplitterHandle"),
        QStringLiteral("QSizeGrip"),      QStringLiteral("QDockWidgetTitleButton"),
        QStringLiteral("QHeaderView"),    QStringLiteral("QTableCornerButton"),
        QStringLiteral("QQuickScrollBar")};
    static const QStringList tabScrollers{QStringLiteral("ScrollLeftButton"),
                                          QStringLiteral("ScrollRightButton")};
    return classes.contains(object.className) || Names::common(object.names, tabScrollers) > 0 ||
           std::any_of(object.bases.cbegin(), object.bases.cend(),
                       [](const QString& base) { return classes.contains(base); });
}

/** Links in a text are no objects of their own. */
bool mayShowLinks(const JournalFile::Object& object) {
    static const QStringList classes{QStringLiteral("QTextBrowser"), QStringLiteral("QLabel"),
                                     QStringLiteral("QQuickText"),
                                     QStringLiteral("QQuickTextEdit")};
    return classes.contains(object.className) ||
           std::any_of(object.bases.cbegin(), object.bases.cend(),
                       [](const QString& base) { return classes.contains(base); });
}

/** Return in a dialog presses its default button, Escape in a message the one that refuses. */
bool pressesButtonOf(const JournalFile::Happening& input, const JournalFile::Object& object) {
    return (input.key == Qt::Key_Return || input.key == Qt::Key_Enter ||
            input.key == Qt::Key_Escape) &&
           (object.className == QLatin1String("QDialog") ||
            object.bases.contains(QLatin1String("QDialog")));
}

/** An arrow key on one of several radio buttons chooses its neighbour. */
bool choosesNeighbour(const JournalFile::Happening& input, const JournalFile::Object& object) {
    return input.key >= Qt::Key_Left && input.key <= Qt::Key_Down &&
           (object.className == QLatin1String("QRadioButton") ||
            object.bases.contains(QLatin1String("QRadioButton")));
}

bool isIn(const ControlsRecording::Use& use, qint64 from, qint64 to) {
    return use.time >= from && use.time <= to;
}

/** What belongs together is one: a field and the spin box that it is in react both. */
void addTo(QVector<QSet<int>>& groups, const QSet<int>& objects) {
    const auto group = std::find_if(groups.begin(), groups.end(),
                                    [&](const QSet<int>& one) { return one.intersects(objects); });
    if (group == groups.end()) {
        groups.append(objects);
    } else {
        group->unite(objects);
    }
}

} // namespace

double Comparison::Figure::share() const {
    return total == 0 ? 100.0 : 100.0 * good() / total;
}

Comparison::Comparison(const JournalFile& journal, const ControlsRecording& recording)
    : m_journal(journal)
    , m_recording(recording)
    , m_matching(journal, recording) {
    compareUniverse();
    compareRecall();
    comparePrecision();
}

QString Comparison::describe(int object) const {
    const auto found = m_journal.objects.constFind(object);
    if (found == m_journal.objects.cend()) {
        return QString::number(object);
    }
    return QStringLiteral("%1 #%2 [%3]")
        .arg(found->className)
        .arg(object)
        .arg(found->names.mid(0, 3).join(QLatin1String(" | ")).left(80));
}

void Comparison::compareUniverse() {
    for (const JournalFile::Node& node : m_journal.nodes) {
        const JournalFile::Object object = m_journal.objects.value(node.object);
        if (isLeftOut(object)) {
            ++m_leftOut;
            continue;
        }
        ++m_universe.total;
        if (!isKnown(node)) {
            m_universe.misses.append(
                {object.className,
                 QStringLiteral("%1 \"%2\"%3 of %4")
                     .arg(node.role, node.name,
                          node.isInvisible ? QStringLiteral(" (not visible)") : QString(),
                          describe(node.object))});
        }
    }
}

bool Comparison::isKnown(const JournalFile::Node& node) const {
    static const QSet<QString> tabs{QStringLiteral("Tab")};
    static const QSet<QString> commands{QStringLiteral("Command"), QStringLiteral("Menu")};
    const JournalFile::Object object = m_journal.objects.value(node.object);
    if (!node.hasObject && node.role == QLatin1String("PageTab")) {
        return !m_matching.named(node.name, tabs).isEmpty();
    }
    if (m_matching.elementOf(node.object) >= 0) {
        return true;
    }
    if (node.role == QLatin1String("MenuItem") &&
        !m_matching.named(node.name, commands).isEmpty()) {
        return true;
    }
    const auto isKnownObject = [&](int one) {
        return m_matching.elementOf(one) >= 0 ||
               (isAction(m_journal.objects.value(one)) && !m_matching.elementsOf(one).isEmpty());
    };
    return std::any_of(object.chain.cbegin(), object.chain.cend(), isKnownObject) ||
           std::any_of(node.inner.cbegin(), node.inner.cend(), isKnownObject);
}

void Comparison::compareRecall() {
    for (int i = 0; i < m_journal.steps.size(); ++i) {
        const bool isLast = i + 1 == m_journal.steps.size();
        const qint64 end =
            isLast ? m_journal.steps.at(i).time + afterwards : m_journal.steps.at(i + 1).time;
        compareStep(m_journal.steps.at(i), end);
    }
}

void Comparison::compareStep(const JournalFile::Step& step, qint64 end) {
    QSet<int> receivers;
    for (; m_input < m_journal.inputs.size() && m_journal.inputs.at(m_input).time < end;
         ++m_input) {
        const auto& input = m_journal.inputs.at(m_input);
        if (input.time >= step.time) {
            const QVector<int> chain = m_journal.objects.value(input.object).chain;
            receivers.unite(QSet<int>(chain.cbegin(), chain.cend()));
        }
    }
    const bool isAtMenu = std::any_of(receivers.cbegin(), receivers.cend(), [this](int receiver) {
        const auto& object = *m_journal.objects.constFind(receiver);
        return object.className == QLatin1String("QMenu") ||
               object.className == QLatin1String("MenuContentItem") ||
               object.bases.contains(QLatin1String("QMenu"));
    });
    QVector<QSet<int>> reacted;
    for (; m_reaction < m_journal.reactions.size() && m_journal.reactions.at(m_reaction).time < end;
         ++m_reaction) {
        const auto& reaction = m_journal.reactions.at(m_reaction);
        const JournalFile::Object object = m_journal.objects.value(reaction.object);
        const bool isOwn = receivers.contains(reaction.object) || (isAtMenu && isAction(object));
        if (reaction.time >= step.time && reaction.isInDelivery && isOwn && !isLeftOut(object)) {
            addTo(reacted, QSet<int>(object.chain.cbegin(), object.chain.cend()));
        }
    }
    if (!isPress(step.what)) {
        return;
    }
    for (const QSet<int>& objects : qAsConst(reacted)) {
        ++m_recall.total;
        if (!takeUse(objects, step.time, end)) {
            const int first = *std::min_element(objects.cbegin(), objects.cend());
            m_recall.misses.append(
                {m_journal.objects.value(first).className, QStringLiteral("%1 at %2: %3")
                                                               .arg(step.what)
                                                               .arg(step.time)
                                                               .arg(describe(first))});
        }
    }
}

/** Whether a press between these times was counted; a use is that of one press only. */
bool Comparison::takeUse(const QSet<int>& objects, qint64 from, qint64 end) {
    for (const int object : objects) {
        const QVector<int>& elements = m_matching.elementsOf(object);
        if (std::any_of(elements.cbegin(), elements.cend(),
                        [&](int element) { return takeUseOf(element, from, end); })) {
            return true;
        }
    }
    const bool mayFollow = std::any_of(objects.cbegin(), objects.cend(), [this](int object) {
        return mayShowLinks(m_journal.objects.value(object));
    });
    for (int i = 0; mayFollow && i < m_recording.elements.size(); ++i) {
        if (m_recording.elements.at(i).type == QLatin1String("Link") && takeUseOf(i, from, end)) {
            return true;
        }
    }
    return std::any_of(objects.cbegin(), objects.cend(), [&](int object) {
        const int element = m_matching.elementOf(object);
        return element >= 0 && takeUseOf(element, end, end + afterwards);
    });
}

bool Comparison::takeUseOf(int element, qint64 from, qint64 to) {
    const auto& uses = m_recording.elements.at(element).uses;
    const qint64 start = std::max(from, m_taken.value(element));
    const auto use = std::find_if(uses.cbegin(), uses.cend(),
                                  [&](const auto& one) { return isIn(one, start, to); });
    if (use != uses.cend()) {
        m_taken.insert(element, use->time + 1);
    }
    return use != uses.cend();
}

void Comparison::comparePrecision() {
    for (int i = 0; i < m_recording.elements.size(); ++i) {
        const auto& element = m_recording.elements.at(i);
        if (!element.isControl()) {
            continue;
        }
        ++m_controls;
        if (element.uses.isEmpty()) {
            continue;
        }
        ++m_precision.total;
        const auto wrong = std::find_if(element.uses.cbegin(), element.uses.cend(),
                                        [&](const auto& use) { return !isGiven(i, use.time); });
        if (wrong != element.uses.cend()) {
            m_precision.misses.append(
                {element.className,
                 QStringLiteral("%1 %2 [%3] %4 at %5")
                     .arg(element.type, element.className,
                          element.names.mid(0, 3).join(QLatin1String(" | ")).left(80), wrong->event)
                     .arg(wrong->time)});
        }
    }
}

/** Whether the element, or what is a part of it, was given input shortly before. */
bool Comparison::isGiven(int element, qint64 time) const {
    const qint64 start = isToldBetween(element, time - atOnce, time + atOnce)
                             ? time - longAfterwards
                             : reachOf(time);
    const auto& inputs = m_journal.inputs;
    auto it = std::upper_bound(inputs.cbegin(), inputs.cend(), time,
                               [](qint64 value, const auto& input) { return value < input.time; });
    // An entry or a tab is no object of its own: what it belongs to has the input.
    static const QStringList parts{QStringLiteral("Option"), QStringLiteral("Tab"),
                                   QStringLiteral("Link")};
    const auto& used = m_recording.elements.at(element);
    const int parent = parts.contains(used.type) ? m_recording.parentOf(element) : -1;
    const bool isButton = used.type == QLatin1String("Button");
    const bool isRadioButton = used.type == QLatin1String("RadioButton");
    const bool isLink = used.type == QLatin1String("Link");
    QSet<int> tried;
    while (it != inputs.cbegin() && (--it)->time >= start) {
        const JournalFile::Object object = m_journal.objects.value(it->object);
        if (it->entry != 0 && m_matching.mayBe(element, it->entry)) {
            return true;
        }
        if ((isButton && pressesButtonOf(*it, object)) ||
            (isRadioButton && choosesNeighbour(*it, object))) {
            return true;
        }
        if (!tried.contains(it->object) &&
            std::any_of(object.chain.cbegin(), object.chain.cend(), [&](int owner) {
                return m_matching.mayBe(element, owner) ||
                       (isLink && mayShowLinks(m_journal.objects.value(owner))) ||
                       (parent >= 0 && m_matching.mayBe(parent, owner));
            })) {
            return true;
        }
        tried.insert(it->object);
    }
    return used.type == QLatin1String("Command") && isTriggered(element, time);
}

/** How long before that time input may have led to something: also if the application was busy. */
qint64 Comparison::reachOf(qint64 time) const {
    const auto& steps = m_journal.steps;
    const auto next = std::upper_bound(
        steps.cbegin(), steps.cend(), time,
        [](qint64 value, const JournalFile::Step& step) { return value < step.time; });
    const auto back = std::min<qint64>(2, std::distance(steps.cbegin(), next));
    return back == 0
               ? time - afterwards
               : std::min(
                     time - afterwards,
                     steps.at(static_cast<int>(std::distance(steps.cbegin(), next) - back)).time);
}

bool Comparison::isTriggered(int element, qint64 time) const {
    return isToldBetween(element, time - afterwards, time + afterwards);
}

/** Whether an object that the element may stand for told of a reaction then. */
bool Comparison::isToldBetween(int element, qint64 from, qint64 to) const {
    return std::any_of(m_journal.reactions.cbegin(), m_journal.reactions.cend(),
                       [&](const auto& reaction) {
                           return reaction.time >= from && reaction.time <= to &&
                                  m_matching.mayBe(element, reaction.object);
                       });
}
