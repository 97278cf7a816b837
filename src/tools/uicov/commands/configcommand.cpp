// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/configcommand.h"

#include "base/displaytext.h"
#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "console/terminal.h"
#include "coverage/configurationfile.h"

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <cstdlib>

namespace Uicov::Commands {

using Base::Message;
using Cli::Done;
using Cli::Failed;
using Cli::setUsage;
using Coverage::Setting;

namespace {

constexpr char examples[] =
    R"(An option on the command line comes before its variable, the variable before uicov.toml, and
that before the default.

Examples:
  uicov config
  uicov config --config ci/uicov.toml)";

/** What the option of a variable is besides: what sets it in uicov.toml, and what it is when
 * nothing does and the parser does not know; empty for neither. */
struct Counterpart {
    const char* variable;
    const char* setting;
    const char* otherwise;
};

constexpr Counterpart counterparts[] = {{"UICOV_FAIL_UNDER", "gates.fail-under", ""},
                                        {"UICOV_FILE", "", ".uicov"},
                                        {"UICOV_PRECISION", "report.precision", "0"},
                                        {"UICOV_SORT", "report.sort", ""}};

/** What uicov.toml can set, no variable can, and has a default. */
struct Default {
    const char* setting;
    const char* value;
};

constexpr Default defaults[] = {{"report.skip-covered", "false"}, {"report.missed", "false"}};

const Counterpart* counterpartOf(const std::string& variable) {
    const auto* const found =
        std::find_if(std::begin(counterparts), std::end(counterparts),
                     [&](const Counterpart& each) { return each.variable == variable; });
    return found == std::end(counterparts) ? nullptr : found;
}

/** What holds where nothing is set. */
QString defaultOf(const CLI::Option& option) {
    const Counterpart* const counterpart = counterpartOf(option.get_envname());
    QString text = QString::fromStdString(option.get_default_str());
    if (text.isEmpty() && counterpart != nullptr) {
        text = QString::fromLatin1(counterpart->otherwise);
    }
    return option.get_expected_max() == 0 ? QStringLiteral("off")
           : text.isEmpty()               ? QStringLiteral("-")
                                          : text;
}

const Setting* find(const QVector<Setting>& settings, const QString& name) {
    const auto found = std::find_if(settings.cbegin(), settings.cend(),
                                    [&](const Setting& each) { return each.name == name; });
    return found == settings.cend() ? nullptr : &*found;
}

QString place(const QString& file, int line) {
    return QStringLiteral("%1:%2").arg(Base::escaped(file)).arg(line);
}

} // namespace

CLI::App* ConfigCommand::declare(CLI::App& commands) {
    m_app = &commands;
    CLI::App* const app =
        commands.add_subcommand("config", "Print what holds here, and where each value comes from");
    setUsage(*app, "uicov config [OPTIONS]");
    app->add_option("--config", m_configFile,
                    "Rules and gates (default: uicov.toml, if it is here)")
        ->type_name("FILE")
        ->envname("UICOV_CONFIG");
    app->add_flag("--no-config", m_ignoresConfig, "Read no uicov.toml");
    app->footer(examples);
    return app;
}

void ConfigCommand::setArguments(const std::vector<std::string>& unread,
                                 const std::vector<std::string>* literal) {
    m_hasMore = !unread.empty() || (literal != nullptr && !literal->empty());
}

QString ConfigCommand::configurationFile() const {
    const QString path = m_configFile.empty() ? Coverage::defaultConfigurationFile()
                                              : QFile::decodeName(m_configFile.c_str());
    return m_ignoresConfig || (m_configFile.empty() && !QFile::exists(path)) ? QString() : path;
}

QVector<ConfigCommand::Row> ConfigCommand::optionRows(const QVector<Setting>& settings,
                                                      const QString& file) const {
    QVector<Row> rows;
    QStringList known;
    std::vector<const CLI::App*> apps{m_app};
    for (const CLI::App* verb : m_app->get_subcommands([](CLI::App*) { return true; })) {
        apps.push_back(verb);
    }
    for (const CLI::App* app : apps) {
        for (const CLI::Option* option : app->get_options()) {
            const std::string variable = option->get_envname();
            const QString name = QString::fromStdString(option->get_name());
            if (variable.empty() || known.contains(name)) {
                continue;
            }
            known.append(name);
            const char* const value = std::getenv(variable.c_str());
            const Counterpart* const counterpart = counterpartOf(variable);
            const Setting* const setting =
                counterpart == nullptr ? nullptr
                                       : find(settings, QString::fromLatin1(counterpart->setting));
            rows.append(value != nullptr ? Row{name, Base::escaped(QString::fromLocal8Bit(value)),
                                               QString::fromStdString(variable)}
                        : setting != nullptr
                            ? Row{name, Base::escaped(setting->value), place(file, setting->line)}
                            : Row{name, defaultOf(*option), QStringLiteral("default")});
        }
    }
    return rows;
}

int ConfigCommand::run(Console::Terminal& terminal) {
    if (m_hasMore) {
        terminal.error({Message::WrongUse,
                        QStringLiteral("config takes options only; see uicov config --help")});
        return Failed;
    }
    const QString file = configurationFile();
    QVector<Setting> settings;
    if (!file.isEmpty()) {
        if (const auto problem = Coverage::readSettings(file, settings)) {
            terminal.error(*problem);
            return Failed;
        }
    }
    QVector<Row> rows = optionRows(settings, file);
    for (const Default& each : defaults) {
        const QString name = QString::fromLatin1(each.setting);
        if (find(settings, name) == nullptr) {
            rows.append({name, QString::fromLatin1(each.value), QStringLiteral("default")});
        }
    }
    for (const Setting& setting : qAsConst(settings)) {
        const bool isListed = std::any_of(
            std::begin(counterparts), std::end(counterparts),
            [&](const Counterpart& each) { return setting.name == QLatin1String(each.setting); });
        if (!isListed) {
            rows.append({Base::escaped(setting.name), Base::escaped(setting.value),
                         place(file, setting.line)});
        }
    }
    int nameWidth = 0;
    int valueWidth = 0;
    for (const Row& row : qAsConst(rows)) {
        nameWidth = std::max(nameWidth, Base::displayWidth(row.setting));
        valueWidth = std::max(valueWidth, Base::displayWidth(row.value));
    }
    QString text = QStringLiteral("Configuration: ") +
                   (file.isEmpty() ? QStringLiteral("none") : Base::escaped(file)) +
                   QStringLiteral("\n\n");
    for (const Row& row : qAsConst(rows)) {
        text += Base::padded(row.setting, nameWidth) + QStringLiteral("  ") +
                Base::padded(row.value, valueWidth) + QStringLiteral("  ") + row.source +
                QLatin1Char('\n');
    }
    if (!terminal.write(text)) {
        terminal.error({Message::OutputNotWritable,
                        QStringLiteral("standard output: not everything could be written")});
        return Failed;
    }
    return Done;
}

} // namespace Uicov::Commands
