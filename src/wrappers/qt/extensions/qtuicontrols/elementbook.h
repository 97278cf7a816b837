// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementtype.h"

#include <QImage>
#include <QObject>
#include <QPair>
#include <QRect>
#include <QString>
#include <QVector>

namespace Vorsk {

namespace UIAbstraction {
class UIElement;
}

namespace UIControls {

using UIAbstraction::UIElement;

/** What is known of an element when it is made. A value. */
struct Description {
    ElementType type = ElementType::Area;
    /** The class of what it stands for, as its meta-object has it. */
    QString className;
    /** Its caption, without mnemonics; null when it has none. */
    QString text;
    /** The events that it announces. */
    Uses uses;
    /** Those that differ from what their absence means. */
    QVector<QPair<Attribute, QString>> attributes;
};

/**
 * All elements of the extension, and the one way in which both toolkits' halves make and change
 * them. An interface of virtual operations only, because the Qt Quick half is a library of its own
 * that does not link the model: to it an element is an address. Elements live until the process
 * ends, objects may die at any time; an object that died has no element any more, and a new object
 * at its address does not inherit one. GUI thread only.
 */
class ElementBook {
public:
    /** The object's element; null when it has none or the object is dead. The object is not
     * touched. */
    virtual UIElement* elementOf(const QObject* object) = 0;
    /** A living object that the element stands for; null when there is none. */
    virtual QObject* objectOf(const UIElement* element) = 0;

    /**
     * A new element as the last child of the parent. It is announced at once, or with its root
     * while a batch is open.
     * @param object what it stands for from now on; null for what has no object of its own, as a
     * tab
     * @param parent null for a view that stands by itself
     */
    virtual UIElement* add(QObject* object, const Description& what, UIElement* parent) = 0;
    /** Has a further object stand for the element: uses and changes of it are the element's. */
    virtual void addObject(QObject* object, UIElement* element) = 0;

    // Each tells the stream only what is new.
    virtual void setText(UIElement* element, const QString& text) = 0;
    /** A null value takes the attribute away. */
    virtual void setAttribute(UIElement* element, Attribute attribute, const QString& value) = 0;
    virtual QString attribute(const UIElement* element, Attribute attribute) const = 0;
    /** Pixels, in the coordinates of its top-level window or Quick scene. */
    virtual void setPlace(UIElement* element, const QRect& place) = 0;
    /** Of a view: what it looks like, one pixel of the image for one of its place, or a multiple by
     * the image's device pixel ratio. */
    virtual void setPicture(UIElement* element, const QImage& picture) = 0;
    /** Makes an event known that the element did not announce when it was made. */
    virtual void announceUse(UIElement* element, Use use) = 0;

    /** Counts one use. Whether a person did it, the caller has asked Attribution before. */
    virtual void countUse(UIElement* element, Use use) = 0;

    virtual ElementType typeOf(const UIElement* element) const = 0;
    /** As the attribute Opens has it. */
    virtual QString idOf(const UIElement* element) const = 0;
    virtual UIElement* parentOf(const UIElement* element) const = 0;
    /** The element itself when it is a view, else the nearest view above it; null when there is
     * none. */
    virtual UIElement* viewOf(UIElement* element) const = 0;

    // What is added between the two is announced with its root at the end, by one record for each
    // subtree. They nest.
    virtual void beginBatch() = 0;
    virtual void endBatch() = 0;

    class Batch {
    public:
        explicit Batch(ElementBook& book)
            : m_book(book) {
            m_book.beginBatch();
        }
        ~Batch() { m_book.endBatch(); }
        Q_DISABLE_COPY(Batch)

    private:
        ElementBook& m_book;
    };

protected:
    ElementBook() = default;
    virtual ~ElementBook() = default;
    Q_DISABLE_COPY(ElementBook)
};

} // namespace UIControls
} // namespace Vorsk
