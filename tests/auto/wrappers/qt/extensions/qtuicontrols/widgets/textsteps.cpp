// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "sessionsteps.h"
#include "testlib/widgetdriver.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>

using namespace TestLib;

void lineEditSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    s.step(
        text("type into a line"), [&] { typeInto(own.line, text("ab")); }, uses({"line edited 2"}));
    s.step(
        text("return in a line"), [&] { keyOn(own.line, Qt::Key_Return); },
        uses({"line confirmed"}));
    s.step(
        text("backspace"), [&] { keyOn(own.line, Qt::Key_Backspace); }, uses({"line edited"}));
    s.nothing(text("move the cursor"), [&] { keyOn(own.line, Qt::Key_Home); });
    s.nothing(text("a click into a line"), [&] { click(own.line); });
    s.nothing(text("the focus goes elsewhere"), [&] {
        own.line->setFocus();
        own.push->setFocus();
    });
    s.step(
        text("paste"),
        [&] {
            QGuiApplication::clipboard()->setText(text("pasted"));
            keyOn(own.line, Qt::Key_V, Qt::ControlModifier);
        },
        uses({"line edited"}));
    s.step(
        text("undo"), [&] { keyOn(own.line, Qt::Key_Z, Qt::ControlModifier); },
        uses({"line edited"}));
    s.step(
        text("an input method commits"),
        [&] {
            own.line->setFocus();
            compose(own.line, text("é"));
        },
        uses({"line edited"}));
    s.nothing(text("an input method composes"), [&] { preedit(own.line, text("x")); });
    s.step(
        text("and commits it"), [&] { compose(own.line, text("x")); }, uses({"line edited"}));
    s.step(
        text("drop a text on a line"), [&] { drop(own.line, text("dropped")); },
        uses({"line edited"}));
    s.step(
        text("a slot that clears the line"),
        [&] {
            const auto clearing =
                QObject::connect(own.line, &QLineEdit::returnPressed, own.line, &QLineEdit::clear);
            keyOn(own.line, Qt::Key_Return);
            QObject::disconnect(clearing);
        },
        uses({"line confirmed"}));
    s.nothing(text("type into a line that is read-only"), [&] {
        own.line->setReadOnly(true);
        typeInto(own.line, text("a"));
        own.line->setReadOnly(false);
    });
}

void textEditSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    for (QWidget* const edit :
         {static_cast<QWidget*>(own.plain), static_cast<QWidget*>(own.rich)}) {
        const QString edited = edit->objectName() + text(" edited");
        s.step(text("type into a text"), [&] { typeInto(edit, text("x")); }, {edited});
        s.step(text("return in a text"), [&] { keyOn(edit, Qt::Key_Return); }, {edited});
        s.nothing(text("select all"), [&] { keyOn(edit, Qt::Key_A, Qt::ControlModifier); });
        s.step(text("cut"), [&] { keyOn(edit, Qt::Key_X, Qt::ControlModifier); }, {edited});
        s.nothing(text("compose in a text"), [&] { preedit(edit, text("x")); });
        s.step(text("commit in a text"), [&] { compose(edit, text("x")); }, {edited});
        s.nothing(text("click into a text"), [&] {
            auto* const area = static_cast<QAbstractScrollArea*>(edit);
            click(area->viewport(), QPoint(5, 5));
        });
        s.step(text("drop on a text"),
               [&] { drop(static_cast<QAbstractScrollArea*>(edit)->viewport(), text("dropped")); },
               {edited});
    }
    s.step(
        text("a key sequence"),
        [&] {
            bool isFinished = false;
            const auto finishing = QObject::connect(own.keys, &QKeySequenceEdit::editingFinished,
                                                    [&] { isFinished = true; });
            keyOn(own.keys, Qt::Key_F5, Qt::ShiftModifier);
            waitUntil([&] { return isFinished; });
            QObject::disconnect(finishing);
        },
        uses({"keys edited"}));
    s.nothing(text("the program sets a key sequence while a person types one"),
              [&] { stage.victims->keys->setKeySequence(QKeySequence(Qt::Key_F9)); });
}

void textMenuSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    const auto choose = [&](const char* name) {
        QMenu* const menu = openMenu();
        if (menu == nullptr) {
            qWarning("no context menu");
            return;
        }
        const QList<QAction*> actions = menu->actions();
        for (QAction* const action : actions) {
            if (action->text().startsWith(QLatin1String(name))) {
                clickItem(menu, action);
                return;
            }
        }
        qWarning("no %s", name);
    };
    s.nothing(text("the context menu of a line"), [&] {
        own.line->setText(text("some text"));
        own.line->setFocus();
        own.line->selectAll();
        askForMenu(own.line, middleOf(own.line));
    });
    s.step(
        text("cut by the context menu"), [&] { choose("Cu&t"); }, uses({"line edited"}));
    s.step(
        text("paste by the context menu of a text"),
        [&] {
            own.plain->setFocus();
            askForMenu(own.plain->viewport(), QPoint(10, 10));
            choose("&Paste");
        },
        uses({"plain edited"}));
    s.nothing(text("select all by a context menu"), [&] {
        askForMenu(own.plain->viewport(), QPoint(10, 10));
        choose("Select All");
    });
    s.nothing(text("escape a context menu"), [&] {
        askForMenu(own.line, middleOf(own.line));
        key(Qt::Key_Escape);
    });
}
