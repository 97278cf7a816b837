// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// subject-KIND LEAVES FILE [PART]: one program of that kind ("widgets", "quick", "areas") and size,
// from its first window to the last; what each phase cost goes into the file as JSON. With PART all
// that is repeated happens that many times less often, as suits a slow instrument. A process
// measures once.
#include "phases.h"

#if defined(SUBJECT_widgets)
#include "widgetssubject.h"

#include <QApplication>
using Application = QApplication;
using MeasuredSubject = WidgetsSubject;
#else
#include "quicksubject.h"

#include <QGuiApplication>
using Application = QGuiApplication;
using MeasuredSubject = QuickSubject;
#endif

#include <QFile>
#include <QJsonDocument>

namespace {

constexpr int events = 200000;
constexpr int disturbances = 2000;
constexpr int clicks = 5000;

QJsonObject measure(Subject& subject, int leaves, int part) {
    Phases phases;
    const double before = Phases::heapInUse();
    phases.run(QStringLiteral("build"), [&] { subject.buildAndShow(leaves); });
    const double built = Phases::heapInUse();
    phases.run(QStringLiteral("events"), [&] { subject.sendEvents(events / part); });
    phases.run(QStringLiteral("disturb"), [&] { subject.disturb(disturbances / part); });
    phases.run(QStringLiteral("clicks"), [&] { subject.click(clicks / part); });
    phases.run(QStringLiteral("destroy"), [&] { subject.destroy(); });
    if (subject.clicks() != clicks / part) {
        qFatal("%d clicks arrived of %d", subject.clicks(), clicks / part);
    }
    QJsonObject result = phases.results();
    result.insert(QStringLiteral("heapPerLeaf"), (built - before) / leaves);
    return result;
}

bool write(const QJsonObject& result, const QString& path) {
    QFile file(path);
    const QByteArray json = QJsonDocument(result).toJson();
    return file.open(QIODevice::WriteOnly) && file.write(json) == json.size() && file.flush();
}

} // namespace

int main(int argc, char* argv[]) {
    const Application application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int part = arguments.size() == 4 ? arguments.at(3).toInt() : 1;
    if (arguments.size() < 3 || arguments.size() > 4 || arguments.at(1).toInt() < 4 || part < 1 ||
        part > disturbances) {
        qCritical("use: %s LEAVES FILE [PART], with four leaves or more", argv[0]);
        return 1;
    }
    MeasuredSubject subject;
    const QJsonObject result = measure(subject, arguments.at(1).toInt(), part);
    return write(result, arguments.at(2)) ? 0 : 1;
}
