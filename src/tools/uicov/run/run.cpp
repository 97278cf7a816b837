// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/run.h"

#include "run/elementkinds.h"

namespace Uicov::Runs {

QString Run::picturesLeftOutLine() {
    return QStringLiteral("Picture left out: the recording reached its size limit");
}

bool Run::isOfControls() const {
    return extension.split(QLatin1Char(',')).contains(controlsExtension());
}

qint64 Run::picturesLeftOut() const {
    return warnings.value(picturesLeftOutLine());
}

} // namespace Uicov::Runs
