// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// How long each operation takes, by Google Benchmark. The number of items stands behind the name;
// the times are those of all items, and "each" is the processor time of one. Recordings and data
// files have programs of their own: replay, combining.
#include "discardinghook.h"
#include "operations.h"

#include <QApplication>

#include <cstring>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

void measure(benchmark::State& state, const Operation& operation) {
    const auto items = static_cast<int>(state.range(0));
    while (state.KeepRunning()) {
        state.PauseTiming();
        Operation::Work work = operation.prepare(items);
        state.ResumeTiming();
        work();
        state.PauseTiming();
        work = nullptr;
        state.ResumeTiming();
    }
    state.counters["each"] = benchmark::Counter(
        items, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/** "--json FILE", as all benchmarks here take it, in Google Benchmark's own words. */
std::vector<std::string> translated(int argc, char* argv[]) {
    std::vector<std::string> arguments(argv, argv + argc);
    for (std::size_t i = 1; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == "--json") {
            arguments[i] = "--benchmark_out=" + arguments[i + 1];
            arguments[i + 1] = "--benchmark_out_format=json";
        }
    }
    return arguments;
}

} // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    const DiscardingHook hook;
    std::vector<Operation> all = operations();
    all.insert(all.end(), controlsOperations().cbegin(), controlsOperations().cend());
    for (const Operation& operation : all) {
        // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the library keeps it
        benchmark::RegisterBenchmark(operation.name, measure, operation)
            ->Arg(1000)
            ->Arg(8000)
            ->Unit(benchmark::kMicrosecond);
    }
    std::vector<std::string> arguments = translated(argc, argv);
    std::vector<char*> pointers;
    pointers.reserve(arguments.size());
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    auto count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
