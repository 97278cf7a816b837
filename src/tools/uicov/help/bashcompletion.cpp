// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "help/completion.h"
#include "help/vocabulary.h"

namespace Uicov::Help {

namespace {

constexpr char head[] =
    R"(# bash completion for uicov                                -*- shell-script -*-

# What fits the word that is being typed: given words, or the names of files, folders or programs.
_uicov_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

_uicov_paths() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen "$@" -- "$current")
}

_uicov() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local verb='' state=options argument=0 index word
    COMPREPLY=()
    # "--option=value" comes as three words.
    if [[ $current == = ]]; then
        current=''
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((index = 1; index < COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        if [[ $state == program ]]; then
            state=foreign
            break
        elif [[ $word == -- ]]; then
            state=literal
            _uicov_starts_program "$verb" && state=program
        elif [[ $state == options && $word == -* ]]; then
            if _uicov_takes_value "$verb" "$word"; then
                [[ ${COMP_WORDS[index + 1]} == = ]] && ((++index))
                ((++index))
            fi
        elif [[ -z $verb ]]; then
            verb=$word
        elif _uicov_starts_program "$verb"; then
            state=foreign
            break
        else
            ((++argument))
        fi
    done
    case $state in
    program)
        _uicov_paths -c -f
        return
        ;;
    foreign)
        _uicov_paths -f
        return
        ;;
    options)
        _uicov_value "$verb" "$previous" && return
        if [[ $current == -* ]]; then
            _uicov_option "$verb"
            return
        fi
        ;;
    esac
    _uicov_argument "$verb" "$argument"
}

)";

QString quoted(const QString& value) {
    QString escaped = value;
    return QLatin1Char('\'') + escaped.replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

/** "verb --name" for each name, as patterns of one case. */
QString patterns(const QString& verb, const Word& word) {
    QStringList result;
    for (const QString& name : word.names) {
        result.append(quoted(verb + QLatin1Char(' ') + name));
    }
    return result.join(QStringLiteral(" | "));
}

QString actionFor(const Word& word) {
    switch (word.kind) {
    case ValueKind::Choice:
        return QStringLiteral("_uicov_words ") + quoted(word.choices.join(QLatin1Char(' ')));
    case ValueKind::File:
        return QStringLiteral("_uicov_paths -f");
    case ValueKind::Folder:
        return QStringLiteral("_uicov_paths -d");
    case ValueKind::Program:
        return QStringLiteral("_uicov_paths -c -f");
    case ValueKind::None:
    case ValueKind::Text:
        break;
    }
    return QStringLiteral(":");
}

QStringList namesOf(const Verb& verb) {
    QStringList names;
    for (const Word& option : verb.options) {
        names += option.names;
    }
    return names;
}

/** A shell function that is true for what one of the patterns matches. */
QString predicate(const char* name, const char* subject, const QStringList& all) {
    return QStringLiteral(
               "%1() {\n    case %2 in\n    %3) return 0 ;;\n    esac\n    return 1\n}\n\n")
        .arg(QLatin1String(name), QLatin1String(subject),
             all.isEmpty() ? QStringLiteral("''") : all.join(QStringLiteral(" | \\\n        ")));
}

/** A shell function that does what stands behind the pattern that matches. */
QString choice(const char* name, const char* subject, const QStringList& cases) {
    return QStringLiteral("%1() {\n    case %2 in\n%3    *) return 1 ;;\n    esac\n}\n\n")
        .arg(QLatin1String(name), QLatin1String(subject), cases.join(QString()));
}

QString caseOf(const QString& pattern, const QString& action) {
    return QStringLiteral("    %1) %2 ;;\n").arg(pattern, action);
}

QStringList argumentCases(const Verb& verb) {
    if (verb.startsProgram) {
        return {caseOf(quoted(verb.name + QLatin1Char(' ')) + QLatin1Char('*'),
                       QStringLiteral("_uicov_paths -c -f"))};
    }
    QStringList cases;
    for (int i = 0; i < verb.arguments.size(); ++i) {
        const bool isLast = i == verb.arguments.size() - 1; // it may come several times
        cases.append(caseOf(isLast ? quoted(verb.name + QLatin1Char(' ')) + QLatin1Char('*')
                                   : quoted(verb.name + QLatin1Char(' ') + QString::number(i)),
                            actionFor(verb.arguments.at(i))));
    }
    return cases;
}

} // namespace

QString bashCompletion(const Vocabulary& vocabulary) {
    Verb top = vocabulary.program();
    top.name.clear(); // what stands before a verb
    QStringList verbs;
    QStringList starters;
    QStringList withValue;
    QStringList values;
    QStringList options;
    QStringList arguments;
    const QVector<Verb> all = QVector<Verb>{top} + vocabulary.verbs();
    for (const Verb& verb : all) {
        for (const Word& option : verb.options) {
            if (option.kind != ValueKind::None) {
                withValue.append(patterns(verb.name, option));
                values.append(caseOf(patterns(verb.name, option), actionFor(option)));
            }
        }
        options.append(caseOf(quoted(verb.name), QStringLiteral("_uicov_words ") +
                                                     quoted(namesOf(verb).join(QLatin1Char(' ')))));
        if (!verb.name.isEmpty()) {
            verbs.append(verb.name);
            arguments += argumentCases(verb);
        }
        if (verb.startsProgram) {
            starters.append(verb.name);
        }
    }
    arguments.append(caseOf(QStringLiteral("' '*"), QStringLiteral("_uicov_words ") +
                                                        quoted(verbs.join(QLatin1Char(' ')))));
    return QString::fromLatin1(head) + predicate("_uicov_starts_program", "$1", starters) +
           predicate("_uicov_takes_value", "\"$1 $2\"", withValue) +
           choice("_uicov_value", "\"$1 $2\"", values) + choice("_uicov_option", "$1", options) +
           choice("_uicov_argument", "\"$1 $2\"", arguments) +
           QStringLiteral("complete -F _uicov uicov\n");
}

} // namespace Uicov::Help
