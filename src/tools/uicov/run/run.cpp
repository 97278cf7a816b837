#include "run/run.h"

namespace Uicov::Runs {

QString Run::picturesLeftOutLine() {
    return QStringLiteral("Picture left out: the recording reached its size limit");
}

qint64 Run::picturesLeftOut() const {
    return warnings.value(picturesLeftOutLine());
}

} // namespace Uicov::Runs
