// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/revision.h"

#include "launch/programoutput.h"

#include <QRegularExpression>

#include <cstdlib>

#include <unistd.h>

namespace Uicov::Launch {

namespace {

/** Where the services of continuous integration say what they have checked out. */
constexpr const char* commitVariables[] = {
    "GITHUB_SHA",       "CI_COMMIT_SHA",       "BUILD_SOURCEVERSION", "GIT_COMMIT",
    "BITBUCKET_COMMIT", "CIRCLE_SHA1",         "BUILDKITE_COMMIT",    "TRAVIS_COMMIT",
    "DRONE_COMMIT_SHA", "APPVEYOR_REPO_COMMIT"};

bool isHash(const QString& text) {
    static const QRegularExpression hash(QStringLiteral("^[0-9a-f]{7,64}$"));
    return hash.match(text).hasMatch();
}

ProgramOutput git(const std::vector<std::string>& arguments) {
    constexpr int timeout = 3000; // milliseconds; it takes a few, and nobody wants to wait for it
    std::vector<std::string> command{"git", "-c", "core.fsmonitor=false"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::vector<std::string> environment{"GIT_OPTIONAL_LOCKS=0", "GIT_TERMINAL_PROMPT=0"};
    for (char** entry = environ; *entry != nullptr; ++entry) {
        environment.emplace_back(*entry);
    }
    return outputOf(command, environment, ErrorStream::Dropped, timeout);
}

/** From the commit itself: a shallow clone hides its parents from everything else. */
QStringList parentsOf(const QByteArray& commitObject) {
    QStringList parents;
    const QList<QByteArray> lines = commitObject.split('\n');
    for (const QByteArray& line : lines) {
        if (line.isEmpty()) {
            break; // the message begins
        }
        const QByteArray start = "parent ";
        if (line.startsWith(start)) {
            parents.append(QString::fromLatin1(line.mid(start.size())));
        }
    }
    return parents;
}

Revision ofVariables() {
    Revision revision;
    for (const char* name : commitVariables) {
        const QString value = QString::fromLocal8Bit(std::getenv(name)).trimmed().toLower();
        if (revision.commit.isEmpty() && isHash(value)) {
            revision.commit = value;
        }
    }
    return revision;
}

} // namespace

QString Revision::commitLabel() {
    return QStringLiteral("vcs.commit");
}

QString Revision::parentsLabel() {
    return QStringLiteral("vcs.parents");
}

QString Revision::changedLabel() {
    return QStringLiteral("vcs.changed");
}

Revision Revision::ofWorkingFolder() {
    const ProgramOutput head = git({"rev-parse", "--verify", "--quiet", "HEAD"});
    const QString commit = QString::fromLatin1(head.text).trimmed();
    if (!head.isSuccess || !isHash(commit)) {
        return ofVariables();
    }
    Revision revision;
    revision.commit = commit;
    revision.parents = parentsOf(git({"cat-file", "commit", commit.toStdString()}).text);
    revision.isChanged =
        !git({"status", "--porcelain", "--untracked-files=no", "--ignore-submodules=dirty"})
             .text.isEmpty();
    return revision;
}

QStringList Revision::firstParents(const QString& commit, int most) {
    if (!isHash(commit)) {
        return {};
    }
    const ProgramOutput list = git({"rev-list", "--first-parent",
                                    "--max-count=" + std::to_string(most), commit.toStdString()});
    return list.isSuccess
               ? QString::fromLatin1(list.text).split(QLatin1Char('\n'), Qt::SkipEmptyParts)
               : QStringList();
}

QStringList Revision::toLabels() const {
    if (commit.isEmpty()) {
        return {};
    }
    QStringList labels{commitLabel() + QLatin1Char('=') + commit};
    if (!parents.isEmpty()) {
        labels.append(parentsLabel() + QLatin1Char('=') + parents.join(QLatin1Char(' ')));
    }
    if (isChanged) {
        labels.append(changedLabel() + QStringLiteral("=yes"));
    }
    return labels;
}

} // namespace Uicov::Launch
