// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "session.h"

#include <QStringList>
#include <QTest>

#include <initializer_list>

// What a person does in the session, kind by kind; each leaves no menu, popup or dialog open. They
// build on one another in this order, since they go by what the ones before have left.
void pushButtonSteps(Session& s);
void pushButtonSlotSteps(Session& s);
void choiceButtonSteps(Session& s);
void lineEditSteps(Session& s);
void textEditSteps(Session& s);
void textMenuSteps(Session& s);
void comboBoxSteps(Session& s);
void editableComboBoxSteps(Session& s);
void spinBoxSteps(Session& s);
void sliderSteps(Session& s);
void tabSteps(Session& s);
void listSteps(Session& s);
void treeSteps(Session& s);
void menuSteps(Session& s);
void actionSteps(Session& s);
void shortcutSteps(Session& s);
void linkAndAreaSteps(Session& s);
void actionWithDialogSteps(Session& s);
void dialogSteps(Session& s);
void programSteps(Session& s);

inline QString text(const char* literal) {
    return QString::fromLatin1(literal);
}

/** The lines that a step has to count. */
inline QStringList uses(std::initializer_list<const char*> lines) {
    QStringList list;
    for (const char* const line : lines) {
        list.append(QString::fromLatin1(line));
    }
    return list;
}

/** Handles events until the condition holds. */
template <class Condition>
void waitUntil(const Condition& condition) {
    if (!QTest::qWaitFor(condition)) {
        qWarning("a condition that a step waits for never held");
    }
}
