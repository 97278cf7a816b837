// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetclass.h"

#include <QAbstractScrollArea>
#include <QHash>
#include <QWidget>

namespace Vorsk {
namespace UIControls {

namespace {

struct NamedClass {
    const char* name;
    WidgetClass cls;
};

// Classes of Qt only, by name since many of them are private. The first one found from the widget's
// own class upwards decides, so what extends one of these is one.
constexpr NamedClass namedClasses[]{{"QComboBoxPrivateContainer", WidgetClass::Part},
                                    {"QComboBoxPrivateScroller", WidgetClass::Part},
                                    {"QCalendarPopup", WidgetClass::Part},
                                    {"QLineEditIconButton", WidgetClass::Part},
                                    {"QDockWidgetTitleButton", WidgetClass::Part},
                                    {"QToolBarExtension", WidgetClass::Part},
                                    {"QToolBarSeparator", WidgetClass::Part},
                                    {"QTableCornerButton", WidgetClass::Part},
                                    {"QHeaderView", WidgetClass::Part},
                                    {"QScrollBar", WidgetClass::Part},
                                    {"QSizeGrip", WidgetClass::Part},
                                    {"QSplitterHandle", WidgetClass::Part},
                                    {"QTipLabel", WidgetClass::Part},
                                    {"QWhatsThat", WidgetClass::Part},
                                    {"QBalloonTip", WidgetClass::Part},
                                    {"QRubberBand", WidgetClass::Part},
                                    {"QFocusFrame", WidgetClass::Part},
                                    {"QDesktopWidget", WidgetClass::Part},
                                    {"QDesktopScreenWidget", WidgetClass::Part},
                                    {"QShapedPixmapWidget", WidgetClass::Part},
                                    {"QAlphaWidget", WidgetClass::Part},
                                    {"QRollEffect", WidgetClass::Part},
                                    {"QMdi::ControlLabel", WidgetClass::Part},
                                    {"QMdi::ControllerWidget", WidgetClass::Part},
                                    {"QGraphicsView", WidgetClass::GraphicsView},
                                    {"QWizard", WidgetClass::Wizard},
                                    {"QWizardPage", WidgetClass::WizardPage},
                                    {"QDialog", WidgetClass::Dialog},
                                    {"QMainWindow", WidgetClass::MainWindow},
                                    {"QDockWidget", WidgetClass::Dock},
                                    {"QMdiSubWindow", WidgetClass::MdiWindow},
                                    {"QMenu", WidgetClass::Menu},
                                    {"QMenuBar", WidgetClass::MenuBar},
                                    {"QToolBar", WidgetClass::ToolBar},
                                    {"QRadioButton", WidgetClass::RadioButton},
                                    {"QCheckBox", WidgetClass::CheckBox},
                                    {"QToolButton", WidgetClass::ToolButton},
                                    {"QToolBoxButton", WidgetClass::ToolBoxButton},
                                    {"QAbstractButton", WidgetClass::Button},
                                    {"QGroupBox", WidgetClass::GroupBox},
                                    {"QComboBox", WidgetClass::ComboBox},
                                    {"QLineEdit", WidgetClass::LineEdit},
                                    {"QTextBrowser", WidgetClass::TextBrowser},
                                    {"QTextEdit", WidgetClass::TextEdit},
                                    {"QPlainTextEdit", WidgetClass::TextEdit},
                                    {"QKeySequenceEdit", WidgetClass::KeySequence},
                                    {"QAbstractSpinBox", WidgetClass::SpinBox},
                                    {"QDial", WidgetClass::Dial},
                                    {"QAbstractSlider", WidgetClass::Slider},
                                    {"QTabBar", WidgetClass::TabBar},
                                    {"QToolBox", WidgetClass::ToolBox},
                                    {"QTreeView", WidgetClass::Tree},
                                    {"QTableView", WidgetClass::Table},
                                    {"QAbstractItemView", WidgetClass::List},
                                    {"QCalendarWidget", WidgetClass::Calendar},
                                    {"QLabel", WidgetClass::Label}};

WidgetClass lookUp(const QMetaObject* meta) {
    static const QHash<QLatin1String, WidgetClass> known = [] {
        QHash<QLatin1String, WidgetClass> made;
        for (const NamedClass& named : namedClasses) {
            made.insert(QLatin1String(named.name), named.cls);
        }
        return made;
    }();
    for (; meta != &QWidget::staticMetaObject && meta != nullptr; meta = meta->superClass()) {
        const auto found = known.constFind(QLatin1String(meta->className()));
        if (found != known.cend()) {
            return *found;
        }
    }
    return WidgetClass::Plain;
}

/** Whether the class scrolls a text, says when it has changed and takes one from the clipboard. */
bool isEditor(const QMetaObject* meta) {
    return meta->inherits(&QAbstractScrollArea::staticMetaObject) &&
           meta->indexOfSignal("textChanged()") >= 0 && meta->indexOfSlot("paste()") >= 0;
}

WidgetClass classify(const QMetaObject* meta) {
    const WidgetClass cls = lookUp(meta);
    return cls == WidgetClass::Plain && isEditor(meta) ? WidgetClass::OwnEditor : cls;
}

/** What was found out about a meta-object, and by what it is told from another one at the same
 * address: a plugin's classes go with the plugin. */
struct Known {
    const QMetaObject* super = nullptr;
    const char* name = nullptr;
    QByteArray characters;
    WidgetClass cls = WidgetClass::Plain;
};

/** More classes than an application has, other than one that makes them up as it runs. */
constexpr int most = 1000;

} // namespace

WidgetClass classOf(const QWidget* widget) {
    static QHash<const QMetaObject*, Known> cache;
    const QMetaObject* const meta = widget->metaObject();
    const auto known = cache.constFind(meta);
    if (known != cache.cend() && known->super == meta->superClass() &&
        known->name == meta->className() && known->characters == known->name) {
        return known->cls;
    }
    if (cache.size() >= most) {
        cache.clear();
    }
    const char* const name = meta->className();
    const WidgetClass cls = classify(meta);
    cache.insert(meta, {meta->superClass(), name, QByteArray(name), cls});
    return cls;
}

bool isControlClass(WidgetClass cls) {
    switch (cls) {
    case WidgetClass::Button:
    case WidgetClass::RadioButton:
    case WidgetClass::CheckBox:
    case WidgetClass::ComboBox:
    case WidgetClass::LineEdit:
    case WidgetClass::TextEdit:
    case WidgetClass::OwnEditor:
    case WidgetClass::KeySequence:
    case WidgetClass::SpinBox:
    case WidgetClass::Slider:
    case WidgetClass::Dial:
    case WidgetClass::ToolBoxButton:
    case WidgetClass::List:
    case WidgetClass::Tree:
    case WidgetClass::Table:
    case WidgetClass::Calendar:
        return true;
    default:
        return false;
    }
}

bool isEntered(WidgetClass cls) {
    switch (cls) {
    case WidgetClass::Part:
    case WidgetClass::Button:
    case WidgetClass::ToolButton:
    case WidgetClass::RadioButton:
    case WidgetClass::CheckBox:
    case WidgetClass::ComboBox:
    case WidgetClass::LineEdit:
    case WidgetClass::OwnEditor:
    case WidgetClass::KeySequence:
    case WidgetClass::SpinBox:
    case WidgetClass::Slider:
    case WidgetClass::Dial:
    case WidgetClass::ToolBoxButton:
    case WidgetClass::Calendar:
        return false;
    default:
        return true;
    }
}

} // namespace UIControls
} // namespace Vorsk
