// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "uiabstraction/elementstore.h"
#include "uiabstraction/pointertable.h"
#include "uiabstraction/uielement.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>
#include <utility>

namespace Vorsk {
namespace UICoverage {

/**
 * An element store that also knows which toolkit object each element stands for. It forgets an
 * object that dies; the object's element stays where it is in the tree. Owns neither objects nor
 * elements.
 *
 * Applications cut other people's connections with wildcard disconnects, so each mapping is backed
 * by a guard: an object that died unnoticed counts as destroyed when it is next asked for, and a
 * new object at its address does not inherit its element. GUI thread only.
 */
class MappingElementStore : public UIAbstraction::ElementStore {
    Q_OBJECT

public:
    MappingElementStore();
    ~MappingElementStore() override;

    /**
     * Maps the object to the element, then adds the element to the list, which announces it. An
     * element that the object was mapped to before stays listed.
     */
    void addMapping(QObject* object, UIAbstraction::UIElement* element);

    /** The object's element; null when it has none or is dead. The object is not touched. */
    UIAbstraction::UIElement* elementForObject(QObject* object);

    /** A living object that is mapped to the element; null when there is none. */
    QObject* objectForElement(const UIAbstraction::UIElement* element);

    /** Called once the store has forgotten an object that died, with its address. */
    using DeathListener = std::function<void(QObject*)>;

    /**
     * Has the one listener told of each death from now on, but not of those that go unnoticed; an
     * empty one ends that. Costs a fraction of a connection of its own to each object.
     */
    void setDeathListener(DeathListener listener) { m_deathListener = std::move(listener); }

private Q_SLOTS:
    void objectDestroyed(QObject* object);

private:
    struct Mapping {
        UIAbstraction::UIElement* element = nullptr;
        QPointer<QObject> guard;
    };

    void forget(QObject* object);
    QList<QObject*> objectsOf(const UIAbstraction::UIElement* element) const;
    void forgetObject(const UIAbstraction::UIElement* element, QObject* object);

    UIAbstraction::PointerTable<Mapping> m_mapping;
    /** By element, the one that was mapped last. */
    UIAbstraction::PointerTable<QObject*> m_lastObject;
    /** The others, of the few elements that stand for several. */
    QMultiHash<const UIAbstraction::UIElement*, QObject*> m_earlierObjects;
    DeathListener m_deathListener;
};

} // namespace UICoverage
} // namespace Vorsk
