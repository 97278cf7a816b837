// subject KIND LEAVES FILE [PART]: one program of that kind ("widgets", "quick") and size, from its
// first window to the last; what each phase cost goes into the file as JSON. With PART all that is
// repeated happens that many times less often, as suits a slow instrument. A process measures once.
#include "phases.h"
#include "quicksubject.h"
#include "widgetssubject.h"

#include <QApplication>
#include <QFile>
#include <QJsonDocument>

#include <memory>

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
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int part = arguments.size() == 5 ? arguments.at(4).toInt() : 1;
    if (arguments.size() < 4 || arguments.size() > 5 || arguments.at(2).toInt() < 4 || part < 1 ||
        part > disturbances) {
        qCritical("use: subject widgets|quick LEAVES FILE [PART], with four leaves or more");
        return 1;
    }
    std::unique_ptr<Subject> subject;
    if (arguments.at(1) == QLatin1String("quick")) {
        subject = std::make_unique<QuickSubject>();
    } else {
        subject = std::make_unique<WidgetsSubject>();
    }
    const QJsonObject result = measure(*subject, arguments.at(2).toInt(), part);
    return write(result, arguments.at(3)) ? 0 : 1;
}
