#pragma once

#include <QHash>
#include <QString>

QT_BEGIN_NAMESPACE
class QWidget;
struct QMetaObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * Tells which controls an interface makes again and again, once for each row of its data: those on
 * the items of an item view, and those in rows of the application's own class of which a scroll
 * area is full. Only where that is certain, since what is one group counts as one control. Keeps
 * what it found for the next widget, so it lives no longer than one walk over widgets. GUI thread
 * only.
 */
class WidgetGroups {
public:
    /** In a scroll area; two may be two different things that happen to be alike. */
    static constexpr int fewestRows = 3;

    /** The same text for what is the same in each row, from run to run; null for what is not made
     * again and again. The view is the widget in whose view the control lies. */
    QString groupOf(const QWidget* control, const QWidget* view);

    /** The row of a group that the widget lies in; null when it lies in none. */
    const QWidget* rowOf(const QWidget* widget, const QWidget* view);

private:
    bool isRow(const QWidget* widget);

    /** By parent, the class of all the rows in it; null where there are none. */
    QHash<const QWidget*, const QMetaObject*> m_rowClasses;
};

} // namespace UIControls
} // namespace Vorsk
