#include "store/run.h"

namespace Uicov::Store {

QString Run::picturesLeftOutLine() {
    return QStringLiteral("Picture left out: the recording reached its size limit");
}

qint64 Run::picturesLeftOut() const {
    return warnings.value(picturesLeftOutLine());
}

} // namespace Uicov::Store
