// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/parseproblem.h"

#include "base/spelling.h"
#include "help/vocabulary.h"

#include <QStringList>

#include <algorithm>
#include <cstdlib>

namespace Uicov::Commands {

using Base::Message;
using Base::Problem;

namespace {

QString textOf(const std::string& text) {
    return QString::fromLocal8Bit(text.c_str());
}

/** The verb that was read, else the command itself. */
const CLI::App& readBy(const CLI::App& app) {
    const std::vector<CLI::App*> verbs = app.get_subcommands();
    return verbs.empty() ? app : *verbs.front();
}

QString nameOf(const CLI::App& app) {
    return &readBy(app) == &app ? QStringLiteral("uicov") : textOf(readBy(app).get_name());
}

bool isFlag(const CLI::Option& option) {
    return option.get_expected_max() == 0;
}

/** Where to look for what there is. */
QString help(const CLI::App& app) {
    return &readBy(app) == &app ? QStringLiteral("; see uicov --help")
                                : QStringLiteral("; see uicov %1 --help").arg(nameOf(app));
}

QStringList optionNames(const CLI::App& app) {
    QStringList names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.append(QStringLiteral("--") + textOf(name));
        }
    }
    return names;
}

/** The option that the parser's message is about: the longest name that stands in it. */
const CLI::Option* optionIn(const QString& message, const CLI::App& app) {
    const CLI::Option* found = nullptr;
    int longest = 0;
    for (const CLI::App* each : {&app, &readBy(app)}) {
        for (const CLI::Option* option : each->get_options()) {
            const QString name = textOf(option->get_name());
            if (name.size() > longest && message.contains(name)) {
                found = option;
                longest = name.size();
            }
        }
    }
    return found;
}

/** The option's name, and the variable that stands for it where that is what was read. */
QString subject(const CLI::Option& option) {
    const QString name = textOf(option.get_name());
    const std::string variable = option.get_envname();
    return !variable.empty() && std::getenv(variable.c_str()) != nullptr
               ? QStringLiteral("%1 (%2)").arg(name, textOf(variable))
               : name;
}

QString nearest(const QString& word, const QStringList& choices) {
    const QString best = Base::nearestSpelling(word, choices);
    // What shares less than half is no help.
    return best.isEmpty() || Base::editDistance(word, best) * 2 > word.size()
               ? QString()
               : QStringLiteral("; the nearest is ") + best;
}

QString listed(const QStringList& words) {
    return words.size() < 2
               ? words.join(QString())
               : QStringList(words.mid(0, words.size() - 1)).join(QStringLiteral(", ")) +
                     QStringLiteral(" or ") + words.last();
}

QString unexpected(const CLI::App& app) {
    // What stands before the verb is the command's own.
    const bool isOwn = !app.remaining(false).empty();
    const CLI::App& reader = isOwn ? app : readBy(app);
    const QString readerName = isOwn ? QStringLiteral("uicov") : nameOf(app);
    const std::vector<std::string> words = reader.remaining(false);
    const auto option = std::find_if(words.cbegin(), words.cend(), [](const std::string& word) {
        return word.size() > 1 && word.front() == '-';
    });
    if (option == words.cend()) {
        return readerName + QStringLiteral(": ") +
               textOf(words.empty() ? std::string() : words.front()) +
               QStringLiteral(" is one argument too many");
    }
    const QString name = textOf(*option).section(QLatin1Char('='), 0, 0);
    return QStringLiteral("%1 knows no option %2").arg(readerName, name) +
           nearest(name, optionNames(reader));
}

QString refused(const CLI::Option& option, const QString& message) {
    // "NAME: what the validator says".
    const QString answer = message.section(QStringLiteral(": "), 1);
    const QStringList choices = Help::choicesIn(answer);
    if (choices.isEmpty()) {
        return subject(option) + QLatin1Char(' ') + answer;
    }
    const QString value = answer.section(QStringLiteral(" not in {"), 0, 0);
    return QStringLiteral("%1 takes %2, not %3").arg(subject(option), listed(choices), value) +
           nearest(value, choices);
}

QString wrongNumberOfValues(const CLI::Option& option) {
    if (isFlag(option)) {
        return subject(option) + QStringLiteral(" takes no value");
    }
    if (option.results().size() > 1) {
        return subject(option) + QStringLiteral(" is given more than once; give it once");
    }
    const QString type = textOf(option.get_type_name()).section(QLatin1Char(':'), 0, 0);
    return subject(option) + QStringLiteral(" needs a %1 behind it").arg(type);
}

QString whatIsWrong(const CLI::ParseError& error, const CLI::App& app) {
    const QString message = QString::fromLocal8Bit(error.what()).simplified();
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
        return unexpected(app);
    }
    const CLI::Option* const option = optionIn(message, app);
    if (option == nullptr) {
        return dynamic_cast<const CLI::RequiredError*>(&error) != nullptr
                   ? QStringLiteral("no verb given")
                   : QStringLiteral("the command line cannot be read");
    }
    if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr) {
        return refused(*option, message);
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        return wrongNumberOfValues(*option);
    }
    return subject(*option) + (isFlag(*option)
                                   ? QStringLiteral(" is on or off: 1 or 0 as its variable")
                                   : QStringLiteral(" has a value that it does not take"));
}

} // namespace

Problem parseProblem(const CLI::ParseError& error, const CLI::App& app) {
    return {Message::WrongUse, whatIsWrong(error, app) + help(app)};
}

Problem unknownVerb(const QString& verb, const CLI::App& app) {
    QStringList verbs;
    for (const CLI::App* each : app.get_subcommands([](const CLI::App*) { return true; })) {
        verbs.append(textOf(each->get_name()));
    }
    return {Message::WrongUse, QStringLiteral("there is no verb ") + verb + nearest(verb, verbs) +
                                   QStringLiteral("; see uicov --help")};
}

} // namespace Uicov::Commands
