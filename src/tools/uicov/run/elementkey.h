// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVector>

namespace Uicov::Runs {

struct RunElement;

/**
 * What an element is called across runs, where its id is another each time: the steps from its
 * window down to it. docs/element-identity.md has the rule and its limits.
 */
class ElementKey {
public:
    /** One step: what kind of thing, how it is labelled, and which of several that are alike. */
    struct Step {
        /** The standard type, or the class name where there is none. */
        QString kind;
        /** The normalised label; empty for things that carry no name. */
        QString label;
        /** The class name of a window that has no label to tell it from others; else empty. */
        QString className;
        /** 1 for the first, or only, one of its kind and label among its siblings. */
        int ordinal = 1;
        /** What people read where the label is a name of the program's authors; no part of what the
         * step is. */
        QString caption = {};

        /** For people: kind "label" #2. */
        QString toString() const;
        /** As it stands in keys: as toString(), with everything escaped that is not plain text. */
        QString toKey() const;
    };

    /** The step of an element, with ordinal 1: what ordinal it has only its siblings can tell. */
    static Step stepOf(const RunElement& element);
    /** The same for an element that stands for a window. */
    static Step windowStepOf(const RunElement& element);

    /** The same step without its label, for captions that change: a window that loses its label is
     * called by its class. The ordinal is 1. */
    static Step structureOf(const Step& step, const RunElement& element, bool isWindow);

    /** A caption as it is compared: one line, without shortcut and without the marks that programs
     * put in while something is unsaved or opens a dialog. */
    static QString normalisedLabel(const QString& text);
    /** A class name without the numbers that the QML engine hands out anew in every run. */
    static QString normalisedClass(const QString& className);

    void append(const Step& step) { m_steps.append(step); }
    const QVector<Step>& steps() const { return m_steps; }

    /** The steps joined by " > ", for people. */
    QString toString() const;
    /** The steps joined by " > ", as they stand in keys: no two different paths give one text. */
    QString toKey() const;

    /** What stands between two steps of a key. */
    static QString separator() { return QStringLiteral(" > "); }

private:
    QVector<Step> m_steps;
};

bool operator==(const ElementKey::Step& a, const ElementKey::Step& b);
bool operator<(const ElementKey::Step& a, const ElementKey::Step& b);
uint qHash(const ElementKey::Step& step, uint seed = 0);

} // namespace Uicov::Runs
