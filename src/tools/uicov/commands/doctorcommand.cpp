// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/doctorcommand.h"

#include "base/displaytext.h"
#include "base/jsontext.h"
#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "console/terminal.h"
#include "doctor/diagnosis.h"
#include "launch/application.h"
#include "launch/installation.h"
#include "store/datafilepath.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <unistd.h>

namespace Uicov::Commands {

using Base::escaped;
using Base::Message;
using Base::padded;
using Cli::Done;
using Cli::Failed;
using Cli::setUsage;
using Doctor::Finding;
using Doctor::Findings;
using Result = Doctor::Finding::Result;

namespace {

constexpr char examples[] =
    R"(Looks at the installation, at this machine and, when it is named, at the application; nothing of
the application is run. Ends with 0 when there is no problem, warnings or not, else with 1.

Examples:
  uicov doctor
  uicov doctor ./panel
  uicov doctor --json ./panel)";

constexpr int jsonFormat = 1;

/** What was found about one thing. */
struct Section {
    QString name;
    Findings findings;
};

QString nameOf(Result result) {
    switch (result) {
    case Result::Ok:
        return QStringLiteral("ok");
    case Result::Warning:
        return QStringLiteral("warning");
    case Result::Problem:
        break;
    }
    return QStringLiteral("problem");
}

QString coloured(Result result, const QString& text) {
    if (!Console::Terminal::mayUseColour(STDOUT_FILENO)) {
        return text;
    }
    const int colour = result == Result::Ok ? 32 : result == Result::Warning ? 33 : 31;
    return QStringLiteral("\x1b[%1m%2\x1b[0m").arg(colour).arg(text);
}

int count(const QVector<Section>& sections, Result result) {
    int found = 0;
    for (const Section& section : sections) {
        for (const Finding& finding : section.findings) {
            found += finding.result == result ? 1 : 0;
        }
    }
    return found;
}

QString counted(int number, const QString& noun) {
    return QString::number(number) + QLatin1Char(' ') + noun +
           (number == 1 ? QString() : QStringLiteral("s"));
}

QString textOf(const QVector<Section>& sections) {
    constexpr int resultColumns = 9;
    constexpr int checkColumns = 21;
    QString text;
    for (const Section& section : sections) {
        text += section.name + QLatin1Char('\n');
        for (const Finding& finding : section.findings) {
            text += QStringLiteral("  ") +
                    coloured(finding.result, padded(nameOf(finding.result), resultColumns)) +
                    padded(finding.check, checkColumns) + escaped(finding.seen) + QLatin1Char('\n');
            if (!finding.advice.isEmpty()) {
                text += QString(2 + resultColumns + checkColumns, QLatin1Char(' ')) +
                        QStringLiteral("do: ") + escaped(finding.advice) + QLatin1Char('\n');
            }
        }
    }
    return text + counted(count(sections, Result::Problem), QStringLiteral("problem")) +
           QStringLiteral(", ") +
           counted(count(sections, Result::Warning), QStringLiteral("warning")) + QLatin1Char('\n');
}

QString jsonOf(const QVector<Section>& sections) {
    QJsonArray checks;
    for (const Section& section : sections) {
        for (const Finding& finding : section.findings) {
            checks.append(QJsonObject{{QStringLiteral("about"), section.name},
                                      {QStringLiteral("check"), finding.check},
                                      {QStringLiteral("result"), nameOf(finding.result)},
                                      {QStringLiteral("seen"), finding.seen},
                                      {QStringLiteral("advice"), finding.advice}});
        }
    }
    const QJsonObject document{
        {QStringLiteral("format"), jsonFormat},
        {QStringLiteral("problems"), count(sections, Result::Problem)},
        {QStringLiteral("warnings"), count(sections, Result::Warning)},
        {QStringLiteral("checks"), checks},
    };
    return QString::fromUtf8(Base::jsonText(QJsonDocument(document)));
}

} // namespace

CLI::App* DoctorCommand::declare(CLI::App& commands) {
    CLI::App* const app = commands.add_subcommand(
        "doctor", "Find out whether an application can be recorded here, and if not, why");
    setUsage(*app, "uicov doctor [OPTIONS] [APP]");
    app->add_flag("--json", m_isForTools, "Print one JSON object");
    app->add_option("-o,--output", m_output,
                    "The data file that would be written (default: .uicov)")
        ->type_name("FILE")
        ->envname("UICOV_FILE");
    app->add_option("--libdir", m_libraryFolder, "Where the extension is, if not beside uicov")
        ->type_name("DIR")
        ->envname("UICOV_LIBDIR");
    app->add_option("APP", m_applications, "The application")->type_name("")->expected(0, 1);
    app->footer(examples);
    return app;
}

void DoctorCommand::setArguments(const std::vector<std::string>& unread,
                                 const std::vector<std::string>* literal) {
    m_applications.insert(m_applications.end(), unread.begin(), unread.end());
    if (literal != nullptr) {
        m_applications.insert(m_applications.end(), literal->begin(), literal->end());
    }
}

int DoctorCommand::run(Console::Terminal& terminal) {
    if (m_applications.size() > 1) {
        terminal.error({Message::WrongUse,
                        QStringLiteral("doctor looks at one application, without its arguments; "
                                       "see uicov doctor --help")});
        return Failed;
    }
    const Launch::Installation installation(QFile::decodeName(m_libraryFolder.c_str()));
    const QString output = Store::dataFilePath(m_output);
    const Doctor::Diagnosis doctor(installation, output);
    QVector<Section> sections{{QStringLiteral("installation"), doctor.examineInstallation()},
                              {QStringLiteral("machine"), doctor.examineMachine()}};
    if (!m_applications.empty()) {
        Launch::Application application(QFile::decodeName(m_applications.front().c_str()));
        sections.append({QStringLiteral("application"), doctor.examineApplication(application)});
    }
    if (!terminal.write(m_isForTools ? jsonOf(sections) : textOf(sections))) {
        terminal.error({Message::OutputNotWritable,
                        QStringLiteral("standard output: not everything could be written")});
        return Failed;
    }
    if (count(sections, Result::Problem) > 0) {
        return Failed;
    }
    if (!m_isForTools) {
        const QString application = m_applications.empty()
                                        ? QStringLiteral("APP")
                                        : QFile::decodeName(m_applications.front().c_str());
        terminal.note(QStringLiteral("next: uicov run -- ") + Store::shellQuoted(application));
    }
    return Done;
}

} // namespace Uicov::Commands
