// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/uielement.h"

#include "uiabstraction/elementid.h"
#include "uiabstraction/elementlistener.h"
#include "uiabstraction/elementwalk.h"

#include <QMessageLogger>

#include <algorithm>
#include <limits>
#include <utility>

namespace Vorsk {
namespace UIAbstraction {

namespace {

void registerPointerTypes() {
    static const int id = [] {
        qRegisterMetaType<const UIElement*>("const Vorsk::UIAbstraction::UIElement*");
        return qRegisterMetaType<UIElement*>("Vorsk::UIAbstraction::UIElement*");
    }();
    Q_UNUSED(id);
}

/**
 * The same text; but of a literal, whose characters are gone when the plugin that it stands in is
 * unloaded, and of characters that somebody lent, a copy.
 */
QString withOwnCharacters(QString text) {
    const QString::DataPtr data = text.data_ptr();
    if (!data->ref.isStatic() && data->offset == sizeof(QStringData)) {
        return text;
    }
    if (text.isEmpty()) {
        return text.isNull() ? QString() : QString(QLatin1String(""));
    }
    return QString(text.constData(), text.size()); // NOLINT(modernize-return-braced-init-list)
}

} // namespace

UIElement::UIElement(const QString& concreteType, const StandardType& standardType,
                     const QString& id)
    : m_id(id.isEmpty() ? newElementId() : id)
    , m_standardType(standardType)
    , m_concreteType(concreteType) {
    registerPointerTypes();
}

UIElement::~UIElement() {
    if (m_children.isEmpty() && m_parent == nullptr) {
        return;
    }
    // All below dies here in one loop: elements can be listed twice or below themselves, and a
    // chain of them can be longer than the stack is deep.
    std::vector<UIElement*> dying{this};
    QSet<const UIElement*> isDying{this};
    for (std::size_t i = 0; i < dying.size(); ++i) {
        for (UIElement* child : std::as_const(dying[i]->m_children)) {
            if (!isDying.contains(child)) {
                isDying.insert(child);
                dying.push_back(child);
            }
        }
    }
    removeFromSurvivors(dying, isDying);
    for (UIElement* element : dying) {
        element->m_children.clear();
        element->m_parent = nullptr;
        element->m_furtherParents.clear();
    }
    std::for_each(dying.begin() + 1, dying.end(), [](UIElement* element) { delete element; });
}

void UIElement::removeFromSurvivors(const std::vector<UIElement*>& dying,
                                    const QSet<const UIElement*>& isDying) {
    QSet<UIElement*> survivors;
    for (const UIElement* element : dying) {
        if (element->m_parent != nullptr && !isDying.contains(element->m_parent)) {
            survivors.insert(element->m_parent);
        }
        for (UIElement* parent : element->m_furtherParents) {
            if (!isDying.contains(parent)) {
                survivors.insert(parent);
            }
        }
    }
    for (UIElement* survivor : std::as_const(survivors)) {
        QList<UIElement*>& children = survivor->m_children;
        const auto isGone = [&isDying](const UIElement* child) { return isDying.contains(child); };
        children.erase(std::remove_if(children.begin(), children.end(), isGone), children.end());
        survivor->m_hitIndex.childrenChanged();
        for (int i = 0; i < children.size(); ++i) {
            if (children.at(i)->m_parent == survivor) {
                children.at(i)->m_place = i;
            }
        }
    }
}

void UIElement::addListener(const std::shared_ptr<ElementListener>& listener) const {
    m_listeners.append(listener);
}

bool UIElement::hasListener(const std::shared_ptr<ElementListener>& listener) const {
    return m_listeners.contains(listener);
}

template <class... Parameters, class... Values>
void UIElement::tell(void (ElementListener::*change)(const UIElement*, Parameters...),
                     const Values&... values) const {
    // By index, and up to what was there at first: a listener may add further ones.
    const int count = m_listeners.size();
    for (int i = 0; i < count; ++i) {
        (m_listeners.at(i).get()->*change)(this, values...);
    }
}

void UIElement::setText(const QString& text) {
    const QString kept = withOwnCharacters(text);
    m_text = kept;
    tell(&ElementListener::textChanged, kept);
    Q_EMIT textChanged(this, kept);
}

void UIElement::setStandardType(const StandardType& standardType) {
    m_standardType = standardType;
    tell(&ElementListener::standardTypeChanged, standardType);
    Q_EMIT standardTypeChanged(this, standardType);
}

void UIElement::setGeometry(const ElementGeometry& geometry) {
    m_geometry = geometry;
    HitIndex::cover(*this, Extent(geometry.rect()));
    tell(&ElementListener::geometryChanged, geometry);
    Q_EMIT geometryChanged(this, geometry);
}

void UIElement::setImage(const QImage& image) {
    m_image = image;
    tell(&ElementListener::imageChanged, image);
    Q_EMIT imageChanged(this, image);
}

void UIElement::setWindowNode(bool isWindowNode) {
    m_isWindowNode = isWindowNode;
    tell(&ElementListener::windowNodeChanged, isWindowNode);
    Q_EMIT windowNodeChanged(this, isWindowNode);
}

void UIElement::setTransparentNode(bool isTransparentNode) {
    m_isTransparentNode = isTransparentNode;
    tell(&ElementListener::transparentNodeChanged, isTransparentNode);
    Q_EMIT transparentNodeChanged(this, isTransparentNode);
}

void UIElement::setSubgraphTransparent(bool isSubgraphTransparent) {
    m_isSubgraphTransparent = isSubgraphTransparent;
    tell(&ElementListener::subgraphTransparentChanged, isSubgraphTransparent);
    Q_EMIT subgraphTransparentChanged(this, isSubgraphTransparent);
}

void UIElement::setAttribute(const QString& name, const QString& value) {
    const QString old = attribute(name);
    if (old == value && old.isNull() == value.isNull()) {
        return;
    }
    const QString kept = withOwnCharacters(value);
    if (!m_extras) {
        m_extras = std::make_unique<Extras>();
    }
    if (value.isNull()) {
        m_extras->attributes1.remove(name);
    } else {
        m_extras->attributes1.insert(name, kept);
    }
    if (m_extras->areNull()) {
        m_extras.reset();
    }
    tell(&ElementListener::attributeChanged, name, kept);
    Q_EMIT attributeChanged(this, name, kept);
}

void UIElement::setExtraStrings(const QStringList& extraStrings) {
    Extras changed = extras();
    changed.strings = extraStrings;
    setExtras(std::move(changed));
}

const UIElement::Extras& UIElement::extras() const {
    static const Extras none;
    return m_extras ? *m_extras : none;
}

void UIElement::setExtras(Extras&& extras) {
    m_extras = extras.areNull() ? nullptr : std::make_unique<Extras>(std::move(extras));
}

bool UIElement::Extras::areNull() const {
    // An empty text is not a null one.
    return string1.isNull() && string2.isNull() && string3.isNull() && string4.isNull() &&
           strings.isEmpty() && attributes1.isEmpty() && attributes2.isEmpty();
}

bool UIElement::hasChild(const UIElement* child) const {
    // The child knows who lists it, and few do, so that a long children list is never searched.
    return child->m_parent == this ||
           std::find(child->m_furtherParents.cbegin(), child->m_furtherParents.cend(), this) !=
               child->m_furtherParents.cend();
}

void UIElement::addChild(UIElement* child) {
    if (hasChild(child)) {
        return;
    }
    m_children.append(child);
    m_hitIndex.childrenChanged();
    HitIndex::cover(*this, child->m_hitIndex.extent());
    if (child->m_parent == nullptr) {
        child->m_parent = this;
        child->m_place = m_children.size() - 1;
    } else {
        child->m_furtherParents.push_back(this);
    }
    tell(&ElementListener::childAdded, child);
    Q_EMIT childAdded(this, child);
}

void UIElement::registerEvent(const UIEvent& event) {
    if (hasEvent(event)) {
        return;
    }
    m_usage[event] = 0;
    tell(&ElementListener::eventRegistered, event);
    Q_EMIT eventRegistered(this, event);
}

void UIElement::setUsage(const UIEvent& event, int usage) {
    if (!hasEvent(event)) {
        QMessageLogger("uielement.cpp", __LINE__,
                       "void Vorsk::UIAbstraction::UIElement::setUsage("
                       "const Vorsk::UIAbstraction::UIEvent&, int)")
            .warning("Unregistered event occured on { standardType='%s', concreteType='%s', "
                     "text='%s' }: "
                     "'%s'",
                     m_standardType.toString().toLocal8Bit().constData(),
                     m_concreteType.toLocal8Bit().constData(), m_text.toLocal8Bit().constData(),
                     event.name().toLocal8Bit().constData());
    }
    storeUsage(event, m_usage[event], usage);
}

void UIElement::increaseUsage(const UIEvent& event) {
    // No warning for an event that nobody registered, unlike in setUsage(): a click counts for
    // every element at its point, whatever events these have registered.
    int& stored = m_usage[event];
    // A count that was read from a stream can be as large as there is.
    storeUsage(event, stored, stored < std::numeric_limits<int>::max() ? stored + 1 : stored);
}

void UIElement::storeUsage(const UIEvent& event, int& stored, int usage) {
    const int old = std::exchange(stored, usage);
    if (usage > old) {
        tell(&ElementListener::usageIncreased, event, usage);
        Q_EMIT usageIncreased(this, event, usage);
    }
}

void UIElement::increaseUsageOfChildren(const UIEvent& event) {
    const QList<UIElement*> children = m_children;
    for (UIElement* child : children) {
        child->increaseUsage(event);
    }
}

void UIElement::increaseUsageAt(const UIEvent& event, const QPoint& point) {
    // First found, then counted: what is called for a count cannot disturb the walk.
    const std::vector<UIElement*> elements = HitIndex::elementsAt(*this, point);
    for (UIElement* element : elements) {
        element->increaseUsage(event);
    }
}

UIElement* UIElement::findChild(const QString& text, const StandardType& standardType) const {
    const bool anyType = standardType.name().isNull();
    const auto it =
        std::find_if(m_children.cbegin(), m_children.cend(), [&](const UIElement* child) {
            return child->m_text == text && (anyType || child->m_standardType == standardType);
        });
    return it == m_children.cend() ? nullptr : *it;
}

UIElement* UIElement::findSibling(const QString& concreteType) const {
    if (m_parent == nullptr) {
        return nullptr;
    }
    const QList<UIElement*>& siblings = m_parent->m_children;
    const auto it = std::find_if(siblings.cbegin(), siblings.cend(), [&](const UIElement* sibling) {
        return sibling->m_concreteType == concreteType;
    });
    return it == siblings.cend() ? nullptr : *it;
}

bool UIElement::hasEqualFields(const UIElement& other) const {
    return m_standardType == other.m_standardType && m_concreteType == other.m_concreteType &&
           extras().string3 == other.extras().string3 &&
           extras().string4 == other.extras().string4 &&
           m_isTransparentNode == other.m_isTransparentNode &&
           m_isSubgraphTransparent == other.m_isSubgraphTransparent &&
           m_isWindowNode == other.m_isWindowNode && m_text == other.m_text &&
           m_geometry == other.m_geometry;
}

bool UIElement::isEqualTo(const UIElement& other) const {
    if (this == &other) {
        return true;
    }
    ElementWalk ours(this);
    ElementWalk theirs(&other);
    while (const UIElement* element = ours.next()) {
        // Equal numbers of children so far mean that the other walk is at the same place.
        const UIElement* counterpart = theirs.next();
        if (!element->hasEqualFields(*counterpart) || ours.childCount() != theirs.childCount()) {
            return false;
        }
    }
    return true;
}

bool operator==(const UIElement& a, const UIElement& b) {
    return a.isEqualTo(b);
}

bool operator!=(const UIElement& a, const UIElement& b) {
    return !a.isEqualTo(b);
}

} // namespace UIAbstraction
} // namespace Vorsk
