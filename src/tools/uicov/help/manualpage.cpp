// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "help/manualpage.h"

#include "help/vocabulary.h"

namespace Uicov::Help {

namespace {

/** A text as it stands: no character of it has a meaning. */
QString literal(const QString& text) {
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\e"));
    escaped.replace(QLatin1Char('-'), QLatin1String("\\-"));
    QStringList lines = escaped.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        if (line.startsWith(QLatin1Char('.')) || line.startsWith(QLatin1Char('\''))) {
            line.prepend(QLatin1String("\\&"));
        }
    }
    return lines.join(QLatin1Char('\n'));
}

QString bold(const QString& text) {
    return QStringLiteral("\\fB") + literal(text) + QStringLiteral("\\fR");
}

QString italic(const QString& text) {
    return QStringLiteral("\\fI") + literal(text) + QStringLiteral("\\fR");
}

QString section(const QString& name, const QString& text) {
    return text.isEmpty()
               ? QString()
               : QStringLiteral(".SH %1\n").arg(name) + text +
                     (text.endsWith(QLatin1Char('\n')) ? QString() : QStringLiteral("\n"));
}

/** Lines that stay lines, further in. */
QString verbatim(const QString& text) {
    return text.isEmpty() ? QString()
                          : QStringLiteral(".nf\n.RS 4\n%1\n.RE\n.fi\n").arg(literal(text));
}

QString paragraphs(const QString& text) {
    return literal(text).replace(QLatin1String("\n\n"), QLatin1String("\n.PP\n"));
}

QString headOf(const QString& page, const QString& description) {
    return QStringLiteral(".TH %1 1 \"%2\" \"uicov %3\" \"GUI coverage\"\n")
               .arg(page.toUpper(), QStringLiteral(UICOV_DATE), QStringLiteral(UICOV_VERSION)) +
           section(QStringLiteral("NAME"),
                   literal(page) + QStringLiteral(" \\- ") + literal(description));
}

QString synopsis(const QString& usage) {
    const int end = usage.indexOf(QLatin1Char(' '));
    return section(QStringLiteral("SYNOPSIS"), bold(usage.left(end)) + literal(usage.mid(end)));
}

QString entry(const Word& word) {
    QStringList names;
    for (const QString& name : word.names) {
        const bool isOption = name.startsWith(QLatin1Char('-'));
        names.append(isOption ? bold(name) : italic(name));
        if (isOption && !word.valueName.isEmpty()) {
            names.last() += QLatin1Char(' ') + italic(word.valueName);
        }
    }
    QString text = QStringLiteral(".TP\n%1\n%2")
                       .arg(names.join(QStringLiteral(", ")), literal(word.description));
    if (!word.defaultValue.isEmpty()) {
        text += QStringLiteral(" (default: ") + literal(word.defaultValue) + QLatin1Char(')');
    }
    return text + QLatin1Char('\n');
}

QString entries(const QVector<Word>& words) {
    QString text;
    for (const Word& word : words) {
        text += entry(word);
    }
    return text;
}

QString environment(const Verb& verb) {
    QString text;
    for (const Word& option : verb.options) {
        if (!option.variable.isEmpty()) {
            text += QStringLiteral(".TP\n%1\nStands for %2 where that is not given.\n")
                        .arg(bold(option.variable), bold(option.names.last()));
        }
    }
    return text;
}

QString references(const QStringList& pages) {
    QStringList texts;
    for (const QString& page : pages) {
        texts.append(QStringLiteral(".BR %1 (1)").arg(literal(page)));
    }
    return section(QStringLiteral("SEE ALSO"), texts.join(QStringLiteral(" ,\n")));
}

} // namespace

QString manualOfProgram(const Vocabulary& vocabulary) {
    const Verb& program = vocabulary.program();
    QString description = literal(program.description) + QLatin1Char('\n');
    QString group;
    QStringList pages;
    for (const Verb& verb : vocabulary.verbs()) {
        if (verb.group != group) {
            group = verb.group;
            description += QStringLiteral(".SS %1\n").arg(literal(group));
        }
        description += QStringLiteral(".TP\n.BR uicov\\-%1 (1)\n%2\n")
                           .arg(literal(verb.name), literal(verb.description));
        pages.append(QStringLiteral("uicov-") + verb.name);
    }
    return headOf(QStringLiteral("uicov"), program.description) + synopsis(program.usage) +
           section(QStringLiteral("DESCRIPTION"), description) +
           section(QStringLiteral("OPTIONS"), entries(program.options)) +
           section(QStringLiteral("ENVIRONMENT"), environment(program)) +
           section(QStringLiteral("EXIT STATUS"), paragraphs(program.closing)) +
           section(QStringLiteral("EXAMPLES"), verbatim(program.examples)) + references(pages);
}

QString manualOfVerb(const Verb& verb, const Vocabulary& vocabulary) {
    QStringList pages{QStringLiteral("uicov")};
    for (const Verb& other : vocabulary.verbs()) {
        if (other.group == verb.group && other.name != verb.name) {
            pages.append(QStringLiteral("uicov-") + other.name);
        }
    }
    QString description = literal(verb.description) + QStringLiteral(".\n");
    if (!verb.remarks.isEmpty()) {
        description += QStringLiteral(".PP\n") + paragraphs(verb.remarks) + QLatin1Char('\n');
    }
    if (!verb.closing.isEmpty()) {
        description += QStringLiteral(".PP\n") + paragraphs(verb.closing) + QLatin1Char('\n');
    }
    return headOf(QStringLiteral("uicov-") + verb.name, verb.description) + synopsis(verb.usage) +
           section(QStringLiteral("DESCRIPTION"), description) +
           section(QStringLiteral("ARGUMENTS"), entries(verb.arguments)) +
           section(QStringLiteral("OPTIONS"), entries(verb.options)) +
           section(QStringLiteral("ENVIRONMENT"), environment(verb)) +
           section(QStringLiteral("EXAMPLES"), verbatim(verb.examples)) + references(pages);
}

} // namespace Uicov::Help
