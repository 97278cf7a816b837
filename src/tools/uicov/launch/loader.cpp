// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/loader.h"

#include "launch/programoutput.h"

#include <QFile>
#include <QRegularExpression>

#include <string>
#include <vector>

#include <unistd.h>

namespace Uicov::Launch {

namespace {

constexpr int loaderTimeout = 20000; // milliseconds; a loader needs a few

/** The environment, with the libraries that others want to have loaded left out. */
std::vector<std::string> environmentWith(const QString& preloaded) {
    const std::string name = "LD_PRELOAD=";
    std::vector<std::string> variables;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (preloaded.isEmpty() || std::string(*entry).compare(0, name.size(), name) != 0) {
            variables.emplace_back(*entry);
        }
    }
    if (!preloaded.isEmpty()) {
        variables.push_back(name + QFile::encodeName(preloaded).toStdString());
    }
    return variables;
}

} // namespace

QStringList listLibraries(const QByteArray& interpreter, const QString& program,
                          const QString& preloaded) {
    if (interpreter.isEmpty()) {
        return {};
    }
    const QByteArray output =
        outputOf({interpreter.toStdString(), "--list", QFile::encodeName(program).toStdString()},
                 environmentWith(preloaded), ErrorStream::Merged, loaderTimeout)
            .text;
    return QString::fromLocal8Bit(output).split(QLatin1Char('\n'));
}

QStringList loaderComplaints(const QStringList& lines) {
    static const QRegularExpression missing(
        QStringLiteral("^(?:.*: error while loading shared libraries: )?(\\S+)"
                       "(?: => not found|: cannot open shared object file: .*)$"));
    static const QRegularExpression other(
        QStringLiteral("^.*: (?:error while loading shared libraries: )?"
                       "(.* (?:not found \\(required by .*|cannot be preloaded .*))$"));
    static const QRegularExpression error(
        QStringLiteral("^.*: error while loading shared libraries: (.*)$"));
    QStringList result;
    const auto add = [&result](const QString& text) {
        if (!result.contains(text)) {
            result.append(text);
        }
    };
    for (const QString& line : lines) {
        const QString text = line.trimmed();
        if (const auto match = missing.match(text); match.hasMatch()) {
            add(match.captured(1) + QStringLiteral(" is not found"));
        } else if (const auto otherMatch = other.match(text); otherMatch.hasMatch()) {
            add(otherMatch.captured(1));
        } else if (const auto errorMatch = error.match(text); errorMatch.hasMatch()) {
            add(errorMatch.captured(1));
        }
    }
    return result;
}

} // namespace Uicov::Launch
