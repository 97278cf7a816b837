// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Any frames as a run, from the records to the report. Checksums are not looked at.

#include "acceptance.h"
#include "coverage/configuration.h"
#include "coverage/coverageresult.h"
#include "framewalk.h"
#include "fuzzcheck.h"
#include "recording/bytecursor.h"
#include "recording/frame.h"
#include "report/jsonreport.h"
#include "run/runbuilder.h"

#include <vector>

using Uicov::Recording::ByteCursor;
using Uicov::Recording::Ending;
using Uicov::Recording::Frame;
using Uicov::Runs::Run;
using Uicov::Runs::RunBuilder;

namespace {

Run runOf(std::vector<std::uint8_t> bytes) {
    RunBuilder builder;
    builder.setTakesPictures(true);
    Fuzz::FrameWalk walk(bytes.data(), bytes.size());
    while (walk.next()) {
        ByteCursor cursor(QByteArray(reinterpret_cast<const char*>(walk.payload()),
                                     static_cast<int>(walk.payloadSize())));
        Frame frame;
        frame.type = static_cast<RecordingFormat::FrameType>(cursor.readUInt8());
        frame.time = cursor.readUInt64();
        frame.body = cursor.readRest();
        builder.add(frame);
    }
    return builder.build(Ending());
}

void checkIndices(const Run& run) {
    const int elements = static_cast<int>(run.elements.size());
    for (const Uicov::Runs::RunElement& element : run.elements) {
        FUZZ_CHECK(element.parent >= -1 && element.parent < elements);
        for (const int child : element.children) {
            FUZZ_CHECK(child >= 0 && child < elements);
        }
        for (const Uicov::Runs::Hit& hit : element.hits) {
            FUZZ_CHECK(hit.context >= 0 && hit.context < run.contexts.size());
            FUZZ_CHECK(hit.count > 0);
        }
        FUZZ_CHECK(element.picture.isEmpty() || run.pictures.contains(element.picture));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run = runOf(std::vector<std::uint8_t>(data, data + size));
    checkIndices(run);
    const Uicov::Coverage::Configuration configuration;
    Uicov::Coverage::CoverageResult coverage(configuration);
    coverage.add(run);
    coverage.finish();
    if (!run.elements.empty()) {
        Fuzz::Acceptance::note();
    }
    FUZZ_CHECK(!Uicov::Report::JsonReport(coverage).toBytes().isEmpty());
    return 0;
}
