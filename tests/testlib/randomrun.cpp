// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/randomrun.h"

#include <QCryptographicHash>

#include <algorithm>
#include <limits>

namespace TestLib {

using Uicov::Runs::Hit;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;

namespace {

QString pick(QRandomGenerator& random, const QStringList& from) {
    return from.at(random.bounded(from.size()));
}

QString randomText(QRandomGenerator& random) {
    static const QStringList texts{QString(),
                                   QStringLiteral(""),
                                   QStringLiteral("Open…"),
                                   QStringLiteral("Quit\tCtrl+Q"),
                                   QStringLiteral("a \"quoted\" > name"),
                                   QStringLiteral("'; DROP TABLE run; --"),
                                   QString(QChar(0)) + QStringLiteral("behind zero"),
                                   QString::fromUtf8("\xf0\x9f\x98\x80 \xd7\xa9\xd7\x9c"),
                                   QStringLiteral("OK")};
    return pick(random, texts);
}

std::optional<QRect> randomPlace(QRandomGenerator& random) {
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    switch (random.bounded(4)) {
    case 0:
        return std::nullopt;
    case 1:
        return QRect();
    case 2:
        return QRect(QPoint(lowest, lowest), QPoint(highest, highest));
    default:
        return QRect(random.bounded(-50, 50), random.bounded(-50, 50), random.bounded(100),
                     random.bounded(100));
    }
}

void addHits(QRandomGenerator& random, RunElement& element, int contexts) {
    static const QStringList events{QStringLiteral("checked"), QStringLiteral("clicked"),
                                    QStringLiteral("shown"), QStringLiteral("\"odd\" name")};
    for (const QString& event : events) {
        if (random.bounded(2) == 0) {
            element.events.append(event);
        }
        for (int context = 0; context < contexts; ++context) {
            if (random.bounded(3) == 0) {
                const qint64 first = random.bounded(-1, 5000);
                const qint64 last = first < 0 ? -1 : first + random.bounded(5000);
                element.hits.append(Hit{event, context, 1 + random.bounded(1000), first, last});
            }
        }
    }
    element.events.sort();
    std::sort(element.hits.begin(), element.hits.end(), [](const Hit& a, const Hit& b) {
        return std::tie(a.event, a.context) < std::tie(b.event, b.context);
    });
}

void addPicture(QRandomGenerator& random, Run& run, RunElement& element) {
    const QByteArray png = "picture " + QByteArray::number(random.bounded(5));
    element.picture = QCryptographicHash::hash(png, QCryptographicHash::Sha256);
    run.pictures.insert(element.picture, png);
}

void addElement(QRandomGenerator& random, Run& run) {
    static const QStringList types{QString(), QStringLiteral("Window"), QStringLiteral("Menu"),
                                   QStringLiteral("Button"), QStringLiteral("CheckBox")};
    static const QStringList classes{QStringLiteral("QWidget"), QStringLiteral("Panel_QMLTYPE_3"),
                                     QStringLiteral("QPushButton")};
    const int number = static_cast<int>(run.elements.size());
    RunElement element;
    element.id = QStringLiteral("{%1}").arg(number);
    element.className = pick(random, classes);
    element.type = pick(random, types);
    element.text = randomText(random);
    element.isTransparentNode = random.bounded(3) == 0;
    element.isSubgraphTransparent = random.bounded(8) == 0;
    element.isWindowNode = random.bounded(6) == 0;
    element.parent = number == 0 || random.bounded(6) == 0 ? -1 : random.bounded(number);
    element.place = randomPlace(random);
    for (const char* name : {"enabled", "label", "\"odd\" name"}) {
        if (random.bounded(4) == 0) {
            element.attributes.insert(QLatin1String(name), randomText(random));
        }
    }
    element.wasEnabled = random.bounded(4) != 0;
    element.wasSeen = random.bounded(2) == 0;
    addHits(random, element, run.contexts.size());
    if (random.bounded(3) == 0) {
        addPicture(random, run, element);
    }
    if (element.parent >= 0) {
        run.elements[static_cast<std::size_t>(element.parent)].children.append(number);
    }
    run.elements.push_back(element);
}

QString quoted(const QString& text) {
    return text.isNull() ? QStringLiteral("null") : QLatin1Char('"') + text + QLatin1Char('"');
}

QString printedElement(const RunElement& element) {
    QString line =
        QStringLiteral("%1 %2 %3 %4 flags=%5%6%7 parent=%8 children=")
            .arg(element.id, quoted(element.className), quoted(element.type), quoted(element.text))
            .arg(element.isTransparentNode)
            .arg(element.isSubgraphTransparent)
            .arg(element.isWindowNode)
            .arg(element.parent);
    for (const int child : element.children) {
        line += QString::number(child) + QLatin1Char(',');
    }
    line += QStringLiteral(" events=") + element.events.join(QLatin1Char(','));
    for (const Hit& hit : element.hits) {
        line += QStringLiteral(" %1@%2=%3 from %4 to %5")
                    .arg(hit.event)
                    .arg(hit.context)
                    .arg(hit.count)
                    .arg(hit.first)
                    .arg(hit.last);
    }
    if (element.place) {
        line += QStringLiteral(" place=%1,%2..%3,%4")
                    .arg(element.place->left())
                    .arg(element.place->top())
                    .arg(element.place->right())
                    .arg(element.place->bottom());
    }
    for (auto it = element.attributes.cbegin(); it != element.attributes.cend(); ++it) {
        line += QStringLiteral(" %1=\"%2\"").arg(it.key(), it.value());
    }
    line += QStringLiteral(" enabled=%1 seen=%2").arg(element.wasEnabled).arg(element.wasSeen);
    return line + QStringLiteral(" picture=") + QString::fromLatin1(element.picture.toHex());
}

} // namespace

QString uuid(int number) {
    return QStringLiteral("00000000-0000-4000-8000-%1").arg(number, 12, 10, QLatin1Char('0'));
}

Run randomRun(QRandomGenerator& random, int maximumElements) {
    Run run;
    run.uuid = uuid(random.bounded(12));
    run.session = uuid(random.bounded(3));
    run.application = pick(random, {QStringLiteral("panel"), QStringLiteral("other")});
    run.executable = QStringLiteral("/usr/bin/") + run.application;
    run.qtVersion = QStringLiteral("5.15.8");
    run.platform = QStringLiteral("offscreen");
    run.locale = pick(random, {QStringLiteral("C"), QStringLiteral("de_DE")});
    run.architecture = QStringLiteral("arm-little_endian-ilp32-eabi-hardfloat");
    run.started = QStringLiteral("2024-01-0%1T00:00:00Z").arg(1 + random.bounded(9));
    if (random.bounded(2) == 0) {
        run.labels.insert(QStringLiteral("branch"), randomText(random) + QLatin1Char('x'));
    }
    run.isComplete = random.bounded(3) != 0;
    if (!run.isComplete) {
        run.partialReason = QStringLiteral("ended abnormally");
        run.bytesLost = random.bounded(3);
    }
    run.messages = random.bounded(4);
    run.contexts = QStringList{QString(), QStringLiteral("first test"), QStringLiteral("b|c")}.mid(
        0, 1 + random.bounded(3));
    run.warnings.insert(QStringLiteral("No action at (3,4)"), 1 + random.bounded(5));
    const int elements = random.bounded(maximumElements + 1);
    for (int i = 0; i < elements; ++i) {
        addElement(random, run);
    }
    for (int i = 0; elements > 0 && i < 3; ++i) {
        // Listed once more, by an element that may well stand below it.
        RunElement& parent = run.elements[static_cast<std::size_t>(random.bounded(elements))];
        const int child = random.bounded(elements);
        if (!parent.children.contains(child)) {
            parent.children.append(child);
        }
    }
    return run;
}

QStringList printed(const Run& run) {
    QStringList lines{run.uuid,
                      QStringList{run.session, run.application, run.executable, run.qtVersion,
                                  run.platform, run.locale, run.architecture, run.started}
                          .join(QLatin1Char('|')),
                      QStringLiteral("complete=%1 %2 lost=%3 messages=%4 lost=%5")
                          .arg(run.isComplete)
                          .arg(run.partialReason)
                          .arg(run.bytesLost)
                          .arg(run.messages)
                          .arg(run.messagesLost),
                      QStringLiteral("contexts=") + run.contexts.join(QLatin1Char(','))};
    for (auto it = run.labels.cbegin(); it != run.labels.cend(); ++it) {
        lines.append(QStringLiteral("label %1=%2").arg(it.key(), it.value()));
    }
    for (auto it = run.warnings.cbegin(); it != run.warnings.cend(); ++it) {
        lines.append(QStringLiteral("warning %1 x %2").arg(it.value()).arg(it.key()));
    }
    for (const RunElement& element : run.elements) {
        lines.append(printedElement(element));
    }
    QList<QByteArray> hashes = run.pictures.keys();
    std::sort(hashes.begin(), hashes.end());
    for (const QByteArray& hash : hashes) {
        lines.append(QString::fromLatin1(hash.toHex()) + QLatin1Char(' ') +
                     QString::fromLatin1(run.pictures.value(hash)));
    }
    return lines;
}

} // namespace TestLib
