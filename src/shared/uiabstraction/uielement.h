// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "uiabstraction/elementgeometry.h"
#include "uiabstraction/hitindex.h"
#include "uiabstraction/standardtype.h"
#include "uiabstraction/uievent.h"
#include "uiabstraction/usagecounts.h"

#include <QHash>
#include <QImage>
#include <QList>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QVarLengthArray>

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QPoint;
QT_END_NAMESPACE

namespace Vorsk {

namespace RecordStream {
template <class Stream>
class ElementReader;
}

namespace UIAbstraction {

class ElementListener;

/**
 * One node of the toolkit-neutral tree: a control, window or other object that usage is counted
 * for.
 *
 * An element owns the elements in its children list; a root belongs to whoever made it. The QObject
 * parent is not used. Every setter announces its value by a signal, also a value that is not new;
 * setAttribute() alone keeps silent then. The same element may be listed by several elements and
 * even below itself: destruction deletes each element once, and no walk enters an element that it
 * is already inside of. GUI thread only.
 */
class UIElement : public QObject {
    Q_OBJECT

public:
    /**
     * A root without children, events, text, image and geometry.
     * @param concreteType toolkit class name of what the element stands for
     * @param id           stable identifier; when empty, a new braced UUID is made
     */
    UIElement(const QString& concreteType, const StandardType& standardType, const QString& id);
    ~UIElement() override;

    QString id() const { return m_id; }
    bool isTransparentNode() const { return m_isTransparentNode; }
    bool isSubgraphTransparent() const { return m_isSubgraphTransparent; }
    bool isWindowNode() const { return m_isWindowNode; }
    QImage image() const { return m_image; }
    /** The listed elements in the order in which they were added. */
    QList<UIElement*> children() const { return m_children; }
    /** The element that listed this one first; null for a root. */
    UIElement* parent() const { return m_parent; }
    bool isRoot() const { return m_parent == nullptr; }
    /** Every registered event with its count, in the order of the events' names. */
    QMap<UIEvent, int> usage() const { return m_usage.toMap(); }
    /** Whether the event is known, used or not. */
    bool hasEvent(const UIEvent& event) const { return m_usage.find(event) != nullptr; }
    StandardType standardType() const { return m_standardType; }
    QString text() const { return m_text; }
    ElementGeometry geometry() const { return m_geometry; }
    QString concreteType() const { return m_concreteType; }

    // Carried in the stream form only; nothing in this system gives them a meaning.
    QString extraString1() const { return extras().string1; }
    QString extraString2() const { return extras().string2; }
    QString extraString3() const { return extras().string3; }
    QString extraString4() const { return extras().string4; }
    QStringList extraStrings() const { return extras().strings; }
    /** The attributes. */
    QHash<QString, QString> extraAttributes1() const { return extras().attributes1; }
    QHash<QString, QString> extraAttributes2() const { return extras().attributes2; }

    void setText(const QString& text);
    void setStandardType(const StandardType& standardType);
    void setGeometry(const ElementGeometry& geometry);
    void setImage(const QImage& image);
    void setWindowNode(bool isWindowNode);
    void setTransparentNode(bool isTransparentNode);
    void setSubgraphTransparent(bool isSubgraphTransparent);
    /**
     * Sets one of the attributes, which hold what no other field has a place for. A null value
     * removes the attribute; an empty one does not. Announced only when it changes something.
     * @param name not copied: the characters of a literal have to outlive the element
     */
    void setAttribute(const QString& name, const QString& value);
    /** Null when there is none of that name. */
    QString attribute(const QString& name) const { return extras().attributes1.value(name); }
    QHash<QString, QString> attributes() const { return extras().attributes1; }

    /** Announces nothing. */
    void setExtraStrings(const QStringList& extraStrings);

    /**
     * Lists child as the last child and owns it from then on; a child that is listed here already
     * changes nothing. A child that has a parent already keeps it.
     */
    void addChild(UIElement* child);

    /** Makes the event known with count 0; an event that is known already keeps its count. */
    void registerEvent(const UIEvent& event);

    /**
     * Stores the count as given. An unregistered event is reported with a warning and becomes
     * known. Announced only when the count grew.
     */
    void setUsage(const UIEvent& event, int usage);

    /** One use more, up to the largest int. An unregistered event becomes known without a word. */
    void increaseUsage(const UIEvent& event);

    /** One use more for each direct child, in order; not for this element, not deeper. */
    void increaseUsageOfChildren(const UIEvent& event);

    /**
     * One use more for this element and every element below it whose rectangle contains the point,
     * edges included, parents before children. All rectangles are compared with the point as given.
     */
    void increaseUsageAt(const UIEvent& event, const QPoint& point);

    /**
     * Has the listener called for every change from now on, before whatever is connected to the
     * signals. A listener that is added twice is called twice. Kept until the element dies.
     */
    void addListener(const std::shared_ptr<ElementListener>& listener) const;
    bool hasListener(const std::shared_ptr<ElementListener>& listener) const;

    /** The first direct child with this text and, unless its name is null, this type; null when
     * none. */
    UIElement* findChild(const QString& text, const StandardType& standardType) const;

    /** The first of the parent's children, this one included, of that concrete type; null when
     * none. */
    UIElement* findSibling(const QString& concreteType) const;

    /**
     * True when both are the same control in the same state: types, extraString3 and 4, flags,
     * text, geometry and all children pairwise. Ids, images, usage and the other extras do not
     * count.
     */
    bool isEqualTo(const UIElement& other) const;

Q_SIGNALS:
    void childAdded(const Vorsk::UIAbstraction::UIElement* element,
                    const Vorsk::UIAbstraction::UIElement* child);
    void eventRegistered(const Vorsk::UIAbstraction::UIElement* element,
                         Vorsk::UIAbstraction::UIEvent event);
    void geometryChanged(const Vorsk::UIAbstraction::UIElement* element,
                         Vorsk::UIAbstraction::ElementGeometry geometry);
    void imageChanged(const Vorsk::UIAbstraction::UIElement* element, QImage image);
    void standardTypeChanged(const Vorsk::UIAbstraction::UIElement* element,
                             Vorsk::UIAbstraction::StandardType standardType);
    void subgraphTransparentChanged(const Vorsk::UIAbstraction::UIElement* element,
                                    bool isSubgraphTransparent);
    void textChanged(const Vorsk::UIAbstraction::UIElement* element, QString text);
    void transparentNodeChanged(const Vorsk::UIAbstraction::UIElement* element,
                                bool isTransparentNode);
    void usageIncreased(const Vorsk::UIAbstraction::UIElement* element,
                        Vorsk::UIAbstraction::UIEvent event, int usage);
    void windowNodeChanged(const Vorsk::UIAbstraction::UIElement* element, bool isWindowNode);
    void attributeChanged(const Vorsk::UIAbstraction::UIElement* element, QString name,
                          QString value);

private:
    template <class Stream>
    friend class RecordStream::ElementReader;
    friend class HitIndex;

    struct Extras {
        QString string1;
        QString string2;
        QString string3;
        QString string4;
        QStringList strings;
        QHash<QString, QString> attributes1;
        QHash<QString, QString> attributes2;

        bool areNull() const;
    };

    static void removeFromSurvivors(const std::vector<UIElement*>& dying,
                                    const QSet<const UIElement*>& isDying);
    bool hasChild(const UIElement* child) const;
    template <class... Parameters, class... Values>
    void tell(void (ElementListener::*change)(const UIElement*, Parameters...),
              const Values&... values) const;
    void storeUsage(const UIEvent& event, int& stored, int usage);
    const Extras& extras() const;
    void setExtras(Extras&& extras);
    bool hasEqualFields(const UIElement& other) const;

    QString m_id;
    bool m_isTransparentNode = false;
    bool m_isSubgraphTransparent = false;
    bool m_isWindowNode = false;
    /** Of the hit index, here where they take no room: set while its walk is inside of this
     * element, and the element's place among the parent's children. */
    bool m_isEntered = false;
    int m_place = 0;
    QImage m_image;
    QList<UIElement*> m_children;
    UIElement* m_parent = nullptr;
    /** Elements other than the parent that list this one, so that it can leave their lists when it
     * dies. */
    std::vector<UIElement*> m_furtherParents;
    /** Not part of what the element says: those who watch a const element are not its business.
     * Hardly ever more than one, which takes no memory of its own. */
    mutable QVarLengthArray<std::shared_ptr<ElementListener>, 1> m_listeners;
    HitIndex m_hitIndex;
    UsageCounts m_usage;
    StandardType m_standardType;
    QString m_text;
    ElementGeometry m_geometry;
    QString m_concreteType;
    /** Null as long as all of them are. */
    std::unique_ptr<Extras> m_extras;
};

bool operator==(const UIElement& a, const UIElement& b);
bool operator!=(const UIElement& a, const UIElement& b);

} // namespace UIAbstraction
} // namespace Vorsk

Q_DECLARE_METATYPE(Vorsk::UIAbstraction::UIElement*)
Q_DECLARE_METATYPE(const Vorsk::UIAbstraction::UIElement*)
