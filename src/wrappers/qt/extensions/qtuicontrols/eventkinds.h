// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>

#include <array>
#include <cstddef>

namespace Vorsk {
namespace UIControls {

/**
 * Whether an event of that type brings what a person, or a robot in a person's place, does. Moves
 * count as input, since a drag is made of them; hovering does not.
 */
constexpr bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonRelease:
    case QEvent::NonClientAreaMouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::NativeGesture:
    case QEvent::Gesture:
    case QEvent::GestureOverride:
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseRelease:
    case QEvent::GraphicsSceneMouseMove:
    case QEvent::GraphicsSceneMouseDoubleClick:
    case QEvent::GraphicsSceneContextMenu:
    case QEvent::GraphicsSceneDragEnter:
    case QEvent::GraphicsSceneDragMove:
    case QEvent::GraphicsSceneDrop:
    case QEvent::GraphicsSceneWheel:
        return true;
    default:
        return false;
    }
}

/** Whether it begins or goes on with something that may end later: not a mere move. */
constexpr bool isDecidedInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::Shortcut:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::InputMethod:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

/** Whether an event of that type may tell a tracker anything, be it input or a change of the
 * interface. Whatever else a tracker is to look at has to be here. */
constexpr bool mayConcernTrackers(QEvent::Type type) {
    switch (type) {
    case QEvent::ActionAdded:
    case QEvent::ActionChanged:
    case QEvent::ActionRemoved:
    case QEvent::Close:
    case QEvent::DeferredDelete:
    case QEvent::EnabledChange:
    case QEvent::Expose:
    case QEvent::Hide:
    case QEvent::HideToParent:
    case QEvent::LanguageChange:
    case QEvent::LayoutRequest:
    case QEvent::MetaCall:
    case QEvent::Move:
    case QEvent::Paint:
    case QEvent::ParentChange:
    case QEvent::PolishRequest:
    case QEvent::ReadOnlyChange:
    case QEvent::Show:
    case QEvent::ShowToParent:
    case QEvent::Timer:
    case QEvent::ToolTipChange:
    case QEvent::TouchCancel:
    case QEvent::UpdateRequest:
    case QEvent::WindowActivate:
    case QEvent::WindowTitleChange:
        return true;
    default:
        return isInput(type);
    }
}

/** The same by one look into a table, since it is asked for every event there is. */
inline bool concernsTrackers(QEvent::Type type) {
    constexpr std::size_t count = 256; // beyond are the types of applications
    static constexpr std::array<bool, count> table = [] {
        std::array<bool, count> all{};
        for (std::size_t i = 0; i < count; ++i) {
            all.at(i) = mayConcernTrackers(static_cast<QEvent::Type>(i));
        }
        return all;
    }();
    const auto number = static_cast<std::size_t>(type);
    return number < count && table[number];
}

} // namespace UIControls
} // namespace Vorsk
