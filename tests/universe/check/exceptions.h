// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "comparison.h"

#include <QString>
#include <QVector>

/**
 * What is known not to be as it is to be, each with its reason: lines of a figure's name, a program
 * ("*": any), a class or a class and a text that the miss contains after a slash, and the reason.
 * '#' begins a comment.
 */
class Exceptions {
public:
    /** False, with the reason, when the file cannot be read or a line is none. */
    bool read(const QString& path, QString& problem);
    bool takeLine(const QString& line);

    /** The figure without what is known. */
    Comparison::Figure without(const Comparison::Figure& figure, const QString& program) const;

private:
    struct Known {
        QString figure;
        QString program;
        QString className;
        QString text;
    };

    bool isKnown(const Comparison::Miss& miss, const QString& figure, const QString& program) const;

    QVector<Known> m_known;
};
