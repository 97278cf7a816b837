// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Any file as a data file: it is read or refused by name, and left as it was.

#include "acceptance.h"
#include "coverage/configuration.h"
#include "coverage/coverageresult.h"
#include "fuzzcheck.h"
#include "scratchfile.h"
#include "store/datafile.h"

#include <QCoreApplication>

using Uicov::Runs::Run;
using Uicov::Store::DataFile;
using Uicov::Store::Sql;

namespace {

void readAll(const QString& path) {
    DataFile file;
    if (const auto problem = file.open(path, Sql::Access::Read)) {
        FUZZ_CHECK(problem->text.startsWith(path));
        return;
    }
    const Uicov::Coverage::Configuration configuration;
    Uicov::Coverage::CoverageResult coverage(configuration);
    const QStringList uuids = file.runs();
    for (const QString& uuid : uuids) {
        Run run;
        if (const auto problem = file.read(uuid, DataFile::Pictures::Load, run)) {
            FUZZ_CHECK(problem->text.startsWith(path));
            return;
        }
        coverage.add(run);
    }
    coverage.finish();
    Fuzz::Acceptance::note();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Qt's database drivers are plugins, which only an application object can load.
    static int count = 0;
    static QCoreApplication application(count, nullptr);
    static Fuzz::ScratchFile file;
    file.setContents(data, size);
    readAll(file.path());
    FUZZ_CHECK(file.contents() == QByteArray::fromRawData(reinterpret_cast<const char*>(data),
                                                          static_cast<int>(size)));
    return 0;
}
