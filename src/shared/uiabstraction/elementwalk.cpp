#include "uiabstraction/elementwalk.h"

#include "uiabstraction/uielement.h"

#include <algorithm>
#include <utility>

namespace Vorsk {
namespace UIAbstraction {

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
        m_onPath.remove(level.element);
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
    m_onPath.insert(element);
    const auto isOnPath = [this](const UIElement* child) { return m_onPath.contains(child); };
    if (std::any_of(children.cbegin(), children.cend(), isOnPath)) {
        children.erase(std::remove_if(children.begin(), children.end(), isOnPath), children.end());
    }
    m_childCount = children.size();
    m_path.push_back({element, std::move(children), 0});
    return element;
}

} // namespace UIAbstraction
} // namespace Vorsk
