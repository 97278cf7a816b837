#include "textmenus.h"

#include <QAction>
#include <QCalendarWidget>
#include <QCoreApplication>
#include <QMenu>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace Vorsk {
namespace UIControls {

namespace {

/** As Qt translates it, for menus whose actions have no names. */
struct Caption {
    const char* context;
    const char* text;
};

constexpr Caption captions[] = {
    {"QLineEdit", "&Undo"},
    {"QLineEdit", "&Redo"},
    {"QLineEdit", "Cu&t"},
    {"QLineEdit", "&Copy"},
    {"QLineEdit", "&Paste"},
    {"QLineEdit", "Delete"},
    {"QLineEdit", "Select All"},
    {"QAbstractSpinBox", "&Select All"},
    {"QAbstractSpinBox", "&Step up"},
    {"QAbstractSpinBox", "Step &down"},
};

constexpr const char* names[] = {"edit-undo",  "edit-redo",   "edit-cut",   "edit-copy",
                                 "edit-paste", "edit-delete", "select-all", "link-copy"};

bool hasCaptionOfLineEdit(const QAction* action) {
    const QString text = action->text().section(QLatin1Char('\t'), 0, 0);
    return std::any_of(std::begin(captions), std::end(captions), [&](const Caption& caption) {
        return text == QCoreApplication::translate(caption.context, caption.text);
    });
}

bool hasNameOfTextEdit(const QAction* action) {
    const QString name = action->objectName();
    return std::any_of(std::begin(names), std::end(names),
                       [&](const char* known) { return name == QLatin1String(known); });
}

} // namespace

bool isTextAction(const QAction* action) {
    if (action->objectName() == QLatin1String("_q_qlineeditclearaction")) {
        return true;
    }
    // Each menu makes its own.
    const auto* const menu = qobject_cast<const QMenu*>(action->parent());
    if (menu == nullptr) {
        return false;
    }
    return std::strcmp(menu->metaObject()->className(), "QUnicodeControlCharacterMenu") == 0 ||
           hasNameOfTextEdit(action) ||
           (menu->objectName() == QLatin1String("qt_edit_menu") && hasCaptionOfLineEdit(action));
}

bool isOwnAction(const QAction* action, const QWidget* control) {
    return action != nullptr &&
           (qobject_cast<const QCalendarWidget*>(control) != nullptr || isTextAction(action));
}

} // namespace UIControls
} // namespace Vorsk
