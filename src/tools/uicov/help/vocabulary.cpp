// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "help/vocabulary.h"

#include <CLI/CLI.hpp>

namespace Uicov::Help {

namespace {

QString text(const std::string& value) {
    return QString::fromStdString(value);
}

/**
 * What the option can be set to. The parser keeps that to itself, but says it when it is given
 * something else: "x not in {widgets,quick,both}".
 */
QStringList choicesOf(CLI::Option& option) {
    for (int i = 0;; ++i) {
        const CLI::Validator* validator = nullptr;
        try {
            validator = option.get_validator(i);
        } catch (const CLI::OptionNotFound&) {
            return {};
        }
        const QStringList choices = choicesIn(text((*validator)(std::string("\x01"))));
        if (!choices.isEmpty()) {
            return choices;
        }
    }
}

ValueKind kindOf(const QString& valueName) {
    if (valueName == QLatin1String("FILE") || valueName == QLatin1String("BASE") ||
        valueName == QLatin1String("NEW")) {
        return ValueKind::File;
    }
    if (valueName == QLatin1String("DIR")) {
        return ValueKind::Folder;
    }
    return valueName == QLatin1String("APP") ? ValueKind::Program : ValueKind::Text;
}

Word wordOf(CLI::Option& option) {
    Word word;
    word.description = text(option.get_description());
    word.variable = text(option.get_envname());
    if (option.get_positional()) {
        word.names.append(text(option.get_name(true)));
        word.valueName = word.names.first();
    } else {
        for (const std::string& name : option.get_snames()) {
            word.names.append(QLatin1Char('-') + text(name));
        }
        for (const std::string& name : option.get_lnames()) {
            word.names.append(QStringLiteral("--") + text(name));
        }
        const bool isFlag = option.get_type_size() == 0;
        word.valueName =
            isFlag ? QString() : text(option.get_type_name()).section(QLatin1Char(':'), 0, 0);
        word.defaultValue = isFlag ? QString() : text(option.get_default_str());
    }
    word.choices = choicesOf(option);
    if (!word.choices.isEmpty()) {
        word.kind = ValueKind::Choice;
    } else if (!word.valueName.isEmpty()) {
        word.kind = kindOf(word.valueName);
    }
    return word;
}

/** Takes the text below the options apart: remarks, "Examples:" with indented lines, the rest. */
void takeFooter(const QString& footer, Verb& verb) {
    enum class Part { Remarks, Examples, Closing };
    Part part = Part::Remarks;
    const QStringList lines = footer.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        if (part == Part::Remarks && line == QLatin1String("Examples:")) {
            part = Part::Examples;
            continue;
        }
        if (part == Part::Examples && line.isEmpty()) {
            part = Part::Closing;
            continue;
        }
        QString& target = part == Part::Remarks    ? verb.remarks
                          : part == Part::Examples ? verb.examples
                                                   : verb.closing;
        target += line + QLatin1Char('\n');
    }
    for (QString* target : {&verb.remarks, &verb.examples, &verb.closing}) {
        while (target->endsWith(QLatin1Char('\n'))) {
            target->chop(1);
        }
    }
}

Verb verbOf(CLI::App& app) {
    Verb verb;
    verb.name = text(app.get_name());
    verb.group = text(app.get_group());
    verb.description = text(app.get_description());
    const auto formatter = std::dynamic_pointer_cast<CLI::Formatter>(app.get_formatter());
    if (formatter) {
        verb.usage = text(formatter->make_usage(&app, std::string()))
                         .section(QStringLiteral("Usage: "), 1)
                         .trimmed();
    }
    takeFooter(text(app.get_footer()), verb);
    verb.startsProgram = app.get_prefix_command();
    for (CLI::Option* option : app.get_options()) {
        if (!option->get_group().empty()) { // one without a group is not to be seen
            (option->get_positional() ? verb.arguments : verb.options).append(wordOf(*option));
        }
    }
    return verb;
}

} // namespace

QStringList choicesIn(const QString& refusal) {
    const QString begin = QStringLiteral(" not in {");
    const int first = refusal.indexOf(begin);
    if (first < 0 || !refusal.endsWith(QLatin1Char('}'))) {
        return {};
    }
    const int start = first + begin.size();
    return refusal.mid(start, refusal.size() - start - 1).split(QLatin1Char(','));
}

Vocabulary::Vocabulary(CLI::App& app)
    : m_program(verbOf(app)) {
    for (CLI::App* verb :
         app.get_subcommands([](CLI::App* each) { return !each->get_group().empty(); })) {
        m_verbs.append(verbOf(*verb));
    }
}

} // namespace Uicov::Help
