// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "help/completion.h"
#include "help/vocabulary.h"

namespace Uicov::Help {

namespace {

constexpr char head[] = R"(# fish completion for uicov

# Prints the verb that was typed, and how many words that are no options came behind it.
function __uicov_typed
    set -l words (commandline -opc)
    set -l verb
    set -l count 0
    set -l skip 0
    set -l literal 0
    for word in $words[2..-1]
        if test $skip = 1
            set skip 0
        else if test $literal = 0; and test "$word" = --
            set literal 1
        else if test $literal = 0; and contains -- $word $__uicov_with_value
            set skip 1
        else if test $literal = 0; and string match -q -- '-*' $word
            continue
        else if test -z "$verb"
            set verb $word
        else
            set count (math $count + 1)
        end
    end
    echo "$verb "$count
end

function __uicov_before_verb
    string match -q -- ' *' (__uicov_typed)
end

# Behind "--" nothing is an option.
function __uicov_option_of
    string match -q -- "$argv[1] *" (__uicov_typed); and not contains -- -- (commandline -opc)
end

# At the argument of that number, or a later one.
function __uicov_at
    set -l typed (string split ' ' (__uicov_typed))
    test "$typed[1]" = $argv[1]; and test $typed[2] -ge $argv[2]; and test $typed[2] -le $argv[3]
end

complete -c uicov -f
)";

constexpr int endless = 9999;

QString quoted(const QString& value) {
    QString escaped = value;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    return QLatin1Char('\'') + escaped.replace(QLatin1Char('\''), QLatin1String("\\'")) +
           QLatin1Char('\'');
}

/** What complete is told of values of that kind, with the space in front of it. */
QString sourceFor(const Word& word) {
    switch (word.kind) {
    case ValueKind::Choice:
        return QStringLiteral(" -a ") + quoted(word.choices.join(QLatin1Char(' ')));
    case ValueKind::File:
        return QStringLiteral(" -F");
    case ValueKind::Folder:
        return QStringLiteral(" -a '(__fish_complete_directories)'");
    case ValueKind::Program:
        return QStringLiteral(" -F -a '(__fish_complete_command)'");
    case ValueKind::None:
    case ValueKind::Text:
        break;
    }
    return {};
}

QString line(const QString& condition, const QString& rest, const QString& description) {
    return QStringLiteral("complete -c uicov -n %1%2").arg(quoted(condition), rest) +
           (description.isEmpty() ? QString() : QStringLiteral(" -d ") + quoted(description)) +
           QLatin1Char('\n');
}

QString optionLine(const QString& condition, const Word& option) {
    QString rest;
    for (const QString& name : option.names) {
        rest += name.startsWith(QLatin1String("--")) ? QStringLiteral(" -l ") + name.mid(2)
                                                     : QStringLiteral(" -s ") + name.mid(1);
    }
    if (option.kind != ValueKind::None) {
        // Files only where they are meant: fish offers them for every value otherwise.
        rest += QLatin1String(option.kind == ValueKind::File ? " -r" : " -x") + sourceFor(option);
    }
    return line(condition, rest, option.description);
}

QString argumentLines(const Verb& verb) {
    if (verb.startsProgram) {
        return line(QStringLiteral("__uicov_at %1 0 0").arg(verb.name),
                    QStringLiteral(" -F -a '(__fish_complete_command)'"), QString()) +
               line(QStringLiteral("__uicov_at %1 1 %2").arg(verb.name).arg(endless),
                    QStringLiteral(" -F"), QString());
    }
    QString text;
    for (int i = 0; i < verb.arguments.size(); ++i) {
        const QString source = sourceFor(verb.arguments.at(i));
        const int last = i == verb.arguments.size() - 1 ? endless : i; // it may come several times
        if (!source.isEmpty()) {
            text += line(QStringLiteral("__uicov_at %1 %2 %3").arg(verb.name).arg(i).arg(last),
                         source, QString());
        }
    }
    return text;
}

} // namespace

QString fishCompletion(const Vocabulary& vocabulary) {
    QStringList withValue;
    QString lines;
    const auto addOptions = [&](const QString& condition, const Verb& verb) {
        for (const Word& option : verb.options) {
            lines += optionLine(condition, option);
            if (option.kind != ValueKind::None) {
                withValue += option.names;
            }
        }
    };
    addOptions(QStringLiteral("__uicov_before_verb"), vocabulary.program());
    for (const Verb& verb : vocabulary.verbs()) {
        lines += line(QStringLiteral("__uicov_before_verb"), QStringLiteral(" -a ") + verb.name,
                      verb.description);
    }
    for (const Verb& verb : vocabulary.verbs()) {
        addOptions(QStringLiteral("__uicov_option_of ") + verb.name, verb);
        lines += argumentLines(verb);
    }
    withValue.removeDuplicates();
    return QString::fromLatin1(head) + QStringLiteral("set -g __uicov_with_value ") +
           withValue.join(QLatin1Char(' ')) + QLatin1Char('\n') + lines;
}

} // namespace Uicov::Help
