// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QHash>
#include <QPair>
#include <QRegularExpression>
#include <QString>
#include <QVector>

#include <functional>

QT_BEGIN_NAMESPACE
class QQuickItem;
class QQuickWindow;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class QuickClass;
class QuickParts;
class QuickPictures;
class QuickStates;
class QuickViews;
struct TrackerServices;

/** Where in the interface the survey is. A value. */
struct Surroundings {
    /** The nearest view; null above the window. */
    UIElement* view = nullptr;
    /** Of what the item lies in; null outside of anything that is made again and again. */
    QString group;
    /** Whether it lies in one of many rows. */
    bool isInRow = false;
    /** Within a button that may hold further controls: no areas, no texts. */
    bool isInControl = false;
    /** The title of what the item lies in, and whether that is a page, which names less well what
     * is on it than a group box does. */
    QString title;
    bool isTitleOfPage = false;
    /** The text before it; null when there is none. */
    const QQuickItem* textBefore = nullptr;
};

/** Makes the elements of what the survey has found and says what is known of them at first sight.
 * GUI thread only. */
class QuickElements {
public:
    /** Is told of each object that a control has, so that its uses are counted. */
    using Watch = std::function<void(QObject* object, ElementType type, UIElement* element)>;

    /** What is told of new elements; all of it outlives this object. */
    struct Followers {
        QuickViews& views;
        QuickStates& states;
        QuickPictures& pictures;
        QuickParts& parts;
    };

    QuickElements(const TrackerServices& services, const Followers& followers, Watch watch);

    UIElement* addControl(QObject* object, const QuickClass& cls, ElementType type,
                          const Surroundings& where);
    UIElement* addWindow(QQuickWindow* window);
    /** @param object a popup, or an item that is a page */
    UIElement* addView(QObject* object, const QuickClass& cls, ElementType type,
                       const Surroundings& where, const QString& title);
    /** The tab by which a person reaches a page that has none of its own: by swiping. */
    void addTab(QObject* page, UIElement* pageElement, const Surroundings& where,
                const QString& title);
    /** The same tab as one that has an element: what reaches the page chooses that one. */
    void joinTab(QObject* page, UIElement* pageElement, UIElement* tab);

private:
    UIElement* sharedRow(const Surroundings& where) const;
    void addRow(UIElement* element, const Surroundings& where);
    UIElement* addForAction(QObject* button, const QuickClass& cls, const Surroundings& where);
    bool isRedacted(const Description& what) const;
    void tellWhatOpens(const QObject* control, UIElement* element);
    void addWay(UIElement* command, const QString& way);
    static QString labelOf(const QObject* object, const QuickClass& cls, ElementType type,
                           const Surroundings& where);
    static Uses usesOf(const QObject* object, const QuickClass& cls, ElementType type);
    static QString waysOf(const QObject* object, const QuickClass& cls);

    ElementBook& m_book;
    QuickViews& m_views;
    QuickStates& m_states;
    QuickPictures& m_pictures;
    QuickParts& m_parts;
    /** Of what is blacked out of pictures. */
    QVector<QRegularExpression> m_redacted;
    Watch m_watch;
    /** What was made of each group in each view. */
    QHash<QPair<UIElement*, QString>, QVector<UIElement*>> m_rows;
};

} // namespace UIControls
} // namespace Vorsk
