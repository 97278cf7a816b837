// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "help/completion.h"
#include "help/vocabulary.h"

namespace Uicov::Help {

namespace {

/** Fit to stand in single quotes, and where _arguments gives colons and brackets a meaning. */
QString described(const QString& text) {
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    for (const char character : {':', '[', ']'}) {
        escaped.replace(QLatin1Char(character), QLatin1Char('\\') + QLatin1String(&character, 1));
    }
    return escaped.replace(QLatin1Char('\''), QLatin1String("'\\''"));
}

QString actionFor(const Word& word) {
    switch (word.kind) {
    case ValueKind::Choice:
        return QLatin1Char('(') + word.choices.join(QLatin1Char(' ')) + QLatin1Char(')');
    case ValueKind::File:
        return QStringLiteral("_files");
    case ValueKind::Folder:
        return QStringLiteral("_files -/");
    case ValueKind::Program:
        return QStringLiteral("_command_names -e");
    case ValueKind::None:
    case ValueKind::Text:
        break;
    }
    return QStringLiteral(" "); // a value that cannot be guessed
}

/** One line of _arguments for each name of the option; "*" because several may be given twice. */
QString optionLines(const Word& option, const QString& indent) {
    QString text;
    for (const QString& name : option.names) {
        const bool isLong = name.startsWith(QLatin1String("--"));
        const QString sign = option.kind == ValueKind::None ? QString()
                             : isLong                       ? QStringLiteral("=")
                                                            : QStringLiteral("+");
        const QString value =
            option.kind == ValueKind::None
                ? QString()
                : QStringLiteral(":%1:%2").arg(described(option.valueName), actionFor(option));
        text += QStringLiteral("%1'*%2%3[%4]%5' \\\n")
                    .arg(indent, name, sign, described(option.description), value);
    }
    return text;
}

QString argumentLines(const Verb& verb, const QString& indent) {
    if (verb.startsProgram) {
        return indent + QStringLiteral("'*::APP:_normal' \\\n");
    }
    QString text;
    for (int i = 0; i < verb.arguments.size(); ++i) {
        const bool isLast = i == verb.arguments.size() - 1; // it may come several times
        text +=
            QStringLiteral("%1'%2:%3:%4' \\\n")
                .arg(indent, isLast ? QStringLiteral("*") : QString::number(i + 1),
                     described(verb.arguments.at(i).valueName), actionFor(verb.arguments.at(i)));
    }
    return text;
}

} // namespace

QString zshCompletion(const Vocabulary& vocabulary) {
    const QString indent(4, QLatin1Char(' '));
    const QString deepIndent(8, QLatin1Char(' '));
    QString verbs;
    QString cases;
    for (const Verb& verb : vocabulary.verbs()) {
        verbs +=
            QStringLiteral("%1'%2:%3'\n").arg(deepIndent, verb.name, described(verb.description));
        cases += QStringLiteral("    %1)\n        _arguments -S \\\n").arg(verb.name);
        for (const Word& option : verb.options) {
            cases += optionLines(option, deepIndent + indent);
        }
        cases += argumentLines(verb, deepIndent + indent);
        cases += QStringLiteral("            && return 0\n        ;;\n");
    }
    QString options;
    for (const Word& option : vocabulary.program().options) {
        options += optionLines(option, deepIndent);
    }
    return QStringLiteral("#compdef uicov\n\n_uicov() {\n"
                          "    local curcontext=$curcontext state line\n"
                          "    typeset -A opt_args\n    local -a verbs\n    verbs=(\n") +
           verbs + QStringLiteral("    )\n    _arguments -C \\\n") + options +
           QStringLiteral(
               "        '1:verb:->verb' \\\n        '*::argument:->argument' && return 0\n"
               "    if [[ $state == verb ]]; then\n"
               "        _describe -t verbs verb verbs && return 0\n"
               "        return 1\n    fi\n"
               "    case $line[1] in\n") +
           cases +
           QStringLiteral("    esac\n    return 1\n}\n\n"
                          "if [[ $zsh_eval_context[-1] == loadautofunc ]]; then\n"
                          "    _uicov \"$@\"\nelse\n    compdef _uicov uicov\nfi\n");
}

} // namespace Uicov::Help
