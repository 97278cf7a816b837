// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementtype.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/** What a widget is by the classes that it extends, wherever it stands. */
enum class WidgetClass : quint8 {
    Plain, ///< a container, a display, or the application's own: no control until it takes a press
    Part,  ///< belongs to the control around it, or to what is no control, as a scroll bar; so does
           ///< all in it
    GraphicsView, ///< shows the widgets of its scene
    MainWindow,
    Dialog,
    Wizard,
    WizardPage,
    Dock,
    MdiWindow,
    Menu,
    MenuBar,
    ToolBar,
    Button,
    ToolButton,
    RadioButton,
    CheckBox,
    GroupBox, ///< a control where it is checkable, a container always
    ComboBox,
    LineEdit,
    TextEdit,    ///< a control where it is not read-only
    TextBrowser, ///< shows links
    OwnEditor,   ///< a text editor that is not one of Qt's
    KeySequence,
    SpinBox,
    Slider,
    Dial,
    TabBar,
    ToolBox,
    ToolBoxButton, ///< what brings up a page of a tool box
    List,
    Tree,
    Table,
    Calendar,
    Label
};

/** The class of a widget that has been constructed. */
WidgetClass classOf(const QWidget* widget);

/** Whether a widget of that class is a control wherever it stands. What is one in some places only,
 * as a group box or a tool button, is not. */
bool isControlClass(WidgetClass cls);

/** Whether controls are looked for below a widget of that class: the outermost control wins, other
 * than a group box and what scrolls the widgets that the application has put into it. */
bool isEntered(WidgetClass cls);

} // namespace UIControls
} // namespace Vorsk
