#include "qtuicontrols/widgets/widgetgroups.h"

#include "qtuicontrols/widgets/ownclass.h"
#include "qtuicontrols/widgets/widgetnames.h"
#include "tracking/classname.h"

#include <QAbstractItemView>
#include <QScrollArea>

namespace Vorsk {
namespace UIControls {

namespace {

/** Whether the widget lies on an item of a list, tree or table. */
bool isOnItem(const QWidget* widget) {
    const QWidget* const viewport = widget->parentWidget();
    const auto* const view = viewport == nullptr
                                 ? nullptr
                                 : qobject_cast<const QAbstractItemView*>(viewport->parentWidget());
    return view != nullptr && view->viewport() == viewport;
}

bool isFilledArea(const QWidget* content) {
    const QWidget* const viewport = content->parentWidget();
    const auto* const area =
        viewport == nullptr ? nullptr : qobject_cast<const QScrollArea*>(viewport->parentWidget());
    return area != nullptr && area->widget() == content;
}

/** The class of all the widgets in the parent, if it is the application's and they have no names.
 */
const QMetaObject* rowClassIn(const QWidget* parent) {
    const QMetaObject* common = nullptr;
    int count = 0;
    for (const QObject* child : parent->children()) {
        if (!child->isWidgetType()) {
            continue;
        }
        const auto* const row = static_cast<const QWidget*>(child);
        if ((common != nullptr && row->metaObject() != common) || !row->objectName().isEmpty() ||
            !isOwnClass(row)) {
            return nullptr;
        }
        common = row->metaObject();
        ++count;
    }
    return count < WidgetGroups::fewestRows ? nullptr : common;
}

/** What the widget is called among its siblings: by its name, or by its class and which of them it
 * is. */
QString stepTo(const QWidget* widget) {
    const QString name = objectNameOf(widget);
    if (!name.isNull()) {
        return name;
    }
    int ordinal = 0;
    for (const QObject* sibling : widget->parentWidget()->children()) {
        if (sibling == widget) {
            break;
        }
        ordinal += sibling->metaObject() == widget->metaObject() ? 1 : 0;
    }
    const QString cls = UICoverage::className(widget);
    return ordinal == 0 ? cls : cls + QLatin1Char('#') + QString::number(ordinal + 1);
}

} // namespace

const QWidget* WidgetGroups::rowOf(const QWidget* widget, const QWidget* view) {
    for (const QWidget* at = widget; at != nullptr && at != view && !at->isWindow();
         at = at->parentWidget()) {
        if (isOnItem(at) || isRow(at)) {
            return at;
        }
    }
    return nullptr;
}

QString WidgetGroups::groupOf(const QWidget* control, const QWidget* view) {
    const QWidget* const row = rowOf(control, view);
    if (row == nullptr) {
        return {};
    }
    QString path;
    for (const QWidget* at = control; at != row; at = at->parentWidget()) {
        path = QLatin1Char('/') + stepTo(at) + path;
    }
    const QWidget* const holder = row->parentWidget()->parentWidget();
    const QString name = isOnItem(row) ? objectNameOf(holder) : QString();
    return (name.isNull() ? QString() : name + QLatin1Char('/')) + UICoverage::className(row) +
           path;
}

bool WidgetGroups::isRow(const QWidget* widget) {
    const QWidget* const parent = widget->parentWidget();
    if (parent == nullptr) {
        return false;
    }
    if (!m_rowClasses.contains(parent)) {
        m_rowClasses.insert(parent, isFilledArea(parent) ? rowClassIn(parent) : nullptr);
    }
    return m_rowClasses.value(parent) == widget->metaObject();
}

} // namespace UIControls
} // namespace Vorsk
