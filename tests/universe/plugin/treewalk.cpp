// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "treewalk.h"

#include "journal.h"
#include "kinship.h"

#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QMetaEnum>
#include <QRegularExpression>
#include <QSet>
#include <QWidget>
#include <QWindow>

namespace {

/** Trees are not deeper; a tree that contains itself is. */
constexpr int deepest = 200;

bool isOperable(QAccessibleInterface& node) {
    switch (node.role()) {
    case QAccessible::Button:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::ButtonDropDown:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropGrid:
    case QAccessible::EditableText:
    case QAccessible::HotkeyField:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::Dial:
    case QAccessible::MenuItem:
    case QAccessible::Link:
    case QAccessible::List:
    case QAccessible::Tree:
    case QAccessible::Table:
        return true;
    case QAccessible::PageTab: // Qt Quick says it of pages too
        return node.object() == nullptr || !node.object()->inherits("QQuickPage");
    case QAccessible::ListItem: // a row of data, unless it is a button of its own
        return node.object() != nullptr && node.object()->inherits("QQuickAbstractButton");
    default:
        return false;
    }
}

QString nameOf(QAccessible::Role role) {
    const char* const name = QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
    return name != nullptr ? QString::fromLatin1(name) : QString::number(role);
}

QJsonArray statesOf(const QAccessible::State& state) {
    QJsonArray states;
    const auto add = [&states](bool isSo, const char* name) {
        if (isSo) {
            states.append(QLatin1String(name));
        }
    };
    add(state.disabled, "disabled");
    add(state.invisible, "invisible");
    add(state.offscreen, "offscreen");
    add(state.readOnly, "readOnly");
    add(state.checkable, "checkable");
    add(state.invalid, "invalid");
    return states;
}

bool beginsWith(const QString& name, const char* words) {
    const QRegularExpression pattern(QStringLiteral("^(%1)\\b").arg(QLatin1String(words)),
                                     QRegularExpression::CaseInsensitiveOption);
    return pattern.match(name).hasMatch();
}

/** Rows and cells, of which there are as many as the data has. */
bool holdsData(QAccessibleInterface& node) {
    return node.tableInterface() != nullptr || node.role() == QAccessible::List ||
           node.role() == QAccessible::Tree || node.role() == QAccessible::Table;
}

} // namespace

TreeWalk::TreeWalk(Journal& journal)
    : m_journal(journal) {}

void TreeWalk::walk() {
    m_targets.clear();
    // Qt Quick Controls make what they tell an accessibility client once there is one.
    QAccessible::setActive(true);
    const QWindowList windows = QGuiApplication::allWindows();
    QSet<QObject*> roots;
    for (QWindow* window : windows) {
        QAccessibleInterface* const root = window->accessibleRoot();
        if (root != nullptr && root->isValid() && !roots.contains(root->object())) {
            roots.insert(root->object());
            visit(*root, {root->object(), window, 0, true});
        }
    }
    m_journal.flush();
}

void TreeWalk::visit(QAccessibleInterface& node, Path path) {
    if (++path.depth > deepest || !node.isValid()) {
        return;
    }
    const bool isOwn = node.object() != nullptr;
    path.object = isOwn ? node.object() : path.object;
    // Entries of a closed menu say that they can be seen.
    const auto* const widget = qobject_cast<const QWidget*>(node.object());
    path.isShown = path.isShown && (widget == nullptr || widget->isVisible());
    const QAccessible::Role role = node.role();
    const QAccessible::State state = node.state();
    const bool isReadOnly = role == QAccessible::EditableText && state.readOnly;
    if (isOperable(node) && !isReadOnly && path.object != nullptr) {
        const int number = note(node, path.object, isOwn);
        const QRect place = node.rect();
        const QString name = node.text(QAccessible::Name).remove(QLatin1Char('&'));
        const QRect window(path.window->mapToGlobal(QPoint()), path.window->size());
        if (path.isShown && !state.invisible && !state.disabled && path.window->isVisible() &&
            !place.isEmpty() && !beginsWith(name, "quit|exit") && window.contains(place.center())) {
            m_targets.append(
                {number, place, path.window, beginsWith(name, "close|ok|cancel|done|finish")});
        }
    }
    const bool isForeignData = holdsData(node) && (widget != nullptr || !isOwn);
    if (isForeignData) {
        return;
    }
    for (int i = 0; i < node.childCount(); ++i) {
        if (QAccessibleInterface* const child = node.child(i)) {
            // Windows are roots themselves.
            const auto* const below = qobject_cast<const QWidget*>(child->object());
            if (below == nullptr || !below->isWindow() || below->windowHandle() == nullptr) {
                visit(*child, path);
            }
        }
    }
}

int TreeWalk::note(QAccessibleInterface& node, QObject* object, bool isOwn) {
    const QString role = nameOf(node.role());
    const QString name = node.text(QAccessible::Name);
    const QPair<int, QString> key(m_journal.object(object),
                                  isOwn ? QString() : role + QLatin1Char(' ') + name);
    const auto known = m_numbers.constFind(key);
    if (known != m_numbers.cend()) {
        return *known;
    }
    const int number = ++m_lastNumber;
    m_numbers.insert(key, number);
    const QRect place = node.rect();
    QStringList actions;
    if (QAccessibleActionInterface* const action = node.actionInterface()) {
        actions = action->actionNames();
    }
    QJsonArray inner;
    for (QObject* one : isOwn ? Kinship::innerOf(object) : std::vector<QObject*>()) {
        inner.append(m_journal.object(one));
    }
    m_journal.write(
        {{QStringLiteral("k"), QStringLiteral("node")},
         {QStringLiteral("inner"), inner},
         {QStringLiteral("t"), Journal::now()},
         {QStringLiteral("n"), number},
         {QStringLiteral("o"), key.first},
         {QStringLiteral("own"), isOwn},
         {QStringLiteral("role"), role},
         {QStringLiteral("name"), name},
         {QStringLiteral("states"), statesOf(node.state())},
         {QStringLiteral("rect"), QJsonArray{place.x(), place.y(), place.width(), place.height()}},
         {QStringLiteral("actions"), QJsonArray::fromStringList(actions)}});
    return number;
}
