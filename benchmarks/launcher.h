// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonObject>
#include <QString>

/** How much of the tool is there while a program is measured. */
struct Mode {
    QString name;
    /** Folder of the host's libraries and the extension; empty: none of it is there. */
    QString libraries;
    /** Path of the extension that the host loads. */
    QString extension;
    /** Library that is loaded ahead of all others; may be empty. */
    QString preload;
    bool takesScreenshots = false;
};

/** A program to be measured: "widgets" or "quick", and how many leaves it shows. */
struct Program {
    QString kind;
    int leaves = 0;
};

/**
 * Starts the measured program in a process of its own, in one of the modes, and waits for it. The
 * recording goes to a temporary folder and is deleted again.
 */
class Launcher {
public:
    /** @param subject path of the measured programs, to which the kind is added */
    explicit Launcher(const QString& subject);

    /** What the program measured of itself, with the recording's size in bytes; empty, with a
     * message on stderr, when it failed. */
    QJsonObject run(const Program& program, const Mode& mode) const;

private:
    QString m_subject;
};
