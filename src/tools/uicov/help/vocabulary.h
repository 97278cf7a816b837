// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace CLI {
class App;
}

namespace Uicov::Help {

/** What stands for a value on the command line, as far as a shell can help with it. */
enum class ValueKind { None, Text, Choice, File, Folder, Program };

/** One option, or what a verb takes beside its options. */
struct Word {
    /** "-o", "--output"; the one name in capitals of what is no option. */
    QStringList names;
    QString description;
    /** What help calls the value; empty for a flag. */
    QString valueName;
    ValueKind kind = ValueKind::None;
    /** What the value can be, where that is known. */
    QStringList choices;
    QString defaultValue;
    /** The environment variable that stands for it; empty when none does. */
    QString variable;
};

/** A verb, or the command as a whole. */
struct Verb {
    QString name;
    QString group;
    QString description;
    /** Behind "Usage: ". */
    QString usage;
    /** What its help says below the options, before the examples. */
    QString remarks;
    QString examples;
    /** What its help says behind the examples. */
    QString closing;
    QVector<Word> options;
    QVector<Word> arguments;
    /** Everything from the first argument on belongs to another program. */
    bool startsProgram = false;
};

/**
 * The command line as its definitions have it, in a form that completion scripts and manual pages
 * can be written from, so that nothing about an option is ever typed twice. A value.
 */
class Vocabulary {
public:
    /** @param app with all verbs declared */
    explicit Vocabulary(CLI::App& app);

    /** Options that stand before the verb; its description is that of the whole. */
    const Verb& program() const { return m_program; }
    const QVector<Verb>& verbs() const { return m_verbs; }

private:
    Verb m_program;
    QVector<Verb> m_verbs;
};

/** What an option can be set to, out of what the parser says to a value that it refuses; empty
 * where it is no choice among words. */
QStringList choicesIn(const QString& refusal);

} // namespace Uicov::Help
