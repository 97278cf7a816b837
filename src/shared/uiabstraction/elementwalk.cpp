// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/elementwalk.h"

#include "uiabstraction/uielement.h"

#include <algorithm>
#include <utility>

namespace Vorsk {
namespace UIAbstraction {

namespace {

/** Up to this depth looking through the path is cheaper than keeping a set of what is on it. */
constexpr std::size_t shallow = 32;

} // namespace

ElementWalk::ElementWalk(const UIElement* root)
    : m_root(root) {}

const UIElement* ElementWalk::next() {
    if (m_root != nullptr) {
        return enter(std::exchange(m_root, nullptr));
    }
    while (!m_path.empty()) {
        Level& level = m_path.back();
        if (level.next < level.children.size()) {
            return enter(level.children.at(level.next++));
        }
        if (m_path.size() > shallow) {
            m_deepOnPath.remove(level.element);
        }
        m_path.pop_back();
    }
    return nullptr;
}

const UIElement* ElementWalk::enter(const UIElement* element) {
    m_depth = static_cast<int>(m_path.size());
    QList<UIElement*> children = element->children();
    if (children.isEmpty()) {
        // Nothing to enter, so nothing below can lead back here: leaves stay off the path.
        m_childCount = 0;
        return element;
    }
    const auto isEntered = [this, element](const UIElement* child) {
        return child == element || isOnPath(child);
    };
    if (std::any_of(children.cbegin(), children.cend(), isEntered)) {
        children.erase(std::remove_if(children.begin(), children.end(), isEntered), children.end());
    }
    m_childCount = children.size();
    m_path.push_back({element, std::move(children), 0});
    if (m_path.size() > shallow) {
        m_deepOnPath.insert(element);
    }
    return element;
}

bool ElementWalk::isOnPath(const UIElement* element) const {
    const auto end =
        m_path.cbegin() + static_cast<std::ptrdiff_t>(std::min(m_path.size(), shallow));
    const auto isElement = [element](const Level& level) { return level.element == element; };
    return std::any_of(m_path.cbegin(), end, isElement) ||
           (m_path.size() > shallow && m_deepOnPath.contains(element));
}

} // namespace UIAbstraction
} // namespace Vorsk
