#include "mnemonics.h"

#include <QStringList>

namespace Vorsk {
namespace UICoverage {

QString stripMnemonics(const QString& text) {
    const QLatin1Char mark('&');
    static const QString separator =
        QStringLiteral("%1%2").arg(QLatin1Char('&')).arg(QLatin1Char('&'));
    QStringList parts = text.split(separator);
    for (QString& part : parts) {
        part.remove(mark);
    }
    return parts.join(mark);
}

} // namespace UICoverage
} // namespace Vorsk
