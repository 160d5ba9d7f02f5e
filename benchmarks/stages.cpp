// SPDX-License-Identifier: Apache-2.0
// The stages of an import, each alone; together they are the import. Memory that was released is kept, so
// that no stage pays for what another left. Beside them the floors, what the machine takes for things that
// no reader can do without: reading the bytes once, copying them, and taking as much memory anew.
#include <benchmark/benchmark.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "allocator.h"
#include "cpu_time.h"
#include "readers.h"

namespace {

using namespace brackwell;
using namespace brackwell::benchmarks;

/// A document as the stages take it.
struct Subject {
    explicit Subject(const Case& from) : document(from), bytes(makeDocument(from.shape)) {}

    Case document;
    std::string bytes;

    Data data() const { return Data::view(bytes); }
    std::string_view body() const { return std::string_view(bytes).substr(bytes.find("<OFX>")); }
};

/// Runs `work` and returns its seconds.
template <class Function>
double timed(Function&& work) {
    const double start = cpuSeconds();
    work();
    return cpuSeconds() - start;
}

double decode(const Subject& subject) {
    return timed(
        [&] { benchmark::DoNotOptimize(decodeText(subject.data(), subject.document.shape.encoding)); });
}

/// With the copy of the text that the tree keeps.
double tree(const Subject& subject) {
    const std::string_view body = subject.body();
    std::optional<ParseDictionary> made;
    return timed([&] { made = TvOFXParser::parseOFXDataString(body); });
}

double interpretation(const Subject& subject) {
    const auto result = TvOFXParser(subject.data()).parseWithError();
    TvOFXMessage message;
    return timed([&] { message.processParserResult(*result); });
}

double release(const Subject& subject) {
    auto message = importDocument(Data::view(subject.bytes), subject.document.shape);
    return timed([&] { message.reset(); });
}

double together(const Subject& subject) {
    return timed([&] { importDocument(Data::view(subject.bytes), subject.document.shape); });
}

double readBytes(const Subject& subject) {
    return timed([&] {
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i + sizeof sum <= subject.bytes.size(); i += sizeof sum) {
            std::uint64_t word = 0;
            std::memcpy(&word, subject.bytes.data() + i, sizeof word);
            sum += word;
        }
        benchmark::DoNotOptimize(sum);
    });
}

double copyBytes(const Subject& subject) {
    return timed([&] {
        const std::unique_ptr<char[]> copy(new char[subject.bytes.size()]);
        std::memcpy(copy.get(), subject.bytes.data(), subject.bytes.size());
        benchmark::DoNotOptimize(copy.get());
        benchmark::ClobberMemory();
    });
}

/// One byte in each page is enough to make the system find it and clear it.
double freshPages(const Subject& subject) {
    constexpr std::size_t kPage = 4096;
    const std::size_t size = subject.bytes.size();
    return timed([&] {
        void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) std::abort();
        for (std::size_t i = 0; i < size; i += kPage) static_cast<volatile char*>(memory)[i] = 1;
        munmap(memory, size);
    });
}

struct Stage {
    const char* name;
    double (*run)(const Subject& subject);
    bool forAnyEncoding;  ///< the others only for UTF-8: their input is that text
};
constexpr std::array<Stage, 8> kStages{{{"decode", decode, true},
                                        {"tree", tree, false},
                                        {"interpretation", interpretation, false},
                                        {"release", release, true},
                                        {"together", together, true},
                                        {"floor-read", readBytes, false},
                                        {"floor-copy", copyBytes, false},
                                        {"floor-pages", freshPages, false}}};

/// What asking for the time costs, which is much beside a stage of a small document.
double clockCost() {
    std::vector<double> costs(1001);
    for (double& cost : costs) cost = timed([] {});
    std::nth_element(costs.begin(), costs.begin() + 500, costs.end());
    return costs[500];
}

void runStage(benchmark::State& state, const Stage& stage, const std::string& name) {
    static const double kClockCost = clockCost();
    const Subject subject(caseNamed(name));
    checkReaders(subject.document, subject.bytes);
    stage.run(subject);
    for (auto _ : state) state.SetIterationTime(std::max(stage.run(subject) - kClockCost, 1e-9));
    state.SetBytesProcessed(static_cast<std::int64_t>(subject.bytes.size()) * state.iterations());
    using benchmark::Counter;
    state.counters["per_item"] = Counter(static_cast<double>(subject.document.items()),
                                         Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void registerStages(const Case& document) {
    for (const Stage& stage : kStages) {
        if (document.shape.encoding != TextEncodingUTF8 && !stage.forAnyEncoding) continue;
        benchmark::RegisterBenchmark(
            (document.name + "/" + stage.name).c_str(),
            [&stage, name = document.name](benchmark::State& state) { runStage(state, stage, name); })
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
}

}  // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
    keepMemory();
    for (const int version : {2, 1})
        for (const Case& document : casesOfVersion(version)) registerStages(document);
    benchmark::RunSpecifiedBenchmarks();
}
