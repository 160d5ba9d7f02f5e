// SPDX-License-Identifier: Apache-2.0
// A whole import, bytes to message and released again, beside a general XML parser that builds and
// releases its plain DOM of the same bytes.
#include <benchmark/benchmark.h>
#include <brackwell/statements.h>

#include <cstdlib>
#include <iostream>
#include <pugixml.hpp>

#include "documents.h"

namespace {

using brackwell::benchmarks::Shape;

Shape shapeOf(const benchmark::State& state, bool version2) {
    Shape shape;
    shape.version2 = version2;
    shape.transactions = static_cast<std::size_t>(state.range(0));
    return shape;
}

void reportRates(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
    state.SetItemsProcessed(state.range(0) * state.iterations());
}

std::size_t countTransactions(const brackwell::TvOFXMessage& message) {
    std::size_t count = 0;
    for (const auto& account : message.bankAccountsFound())
        count += message.statementsForBankAccount(account)->statementTransactions().size();
    return count;
}

std::size_t countTransactions(const pugi::xml_document& document) {
    return document.select_nodes("//STMTTRN").size();
}

void fail(const char* what) {
    std::cerr << what << " did not read what was written\n";
    std::exit(1);
}

void import(benchmark::State& state, bool version2) {
    const Shape shape = shapeOf(state, version2);
    const std::string bytes = brackwell::benchmarks::makeDocument(shape);
    const auto data = brackwell::Data::view(bytes);
    if (countTransactions(*brackwell::TovanaOFXController::importOFXFileFromData(data)) != shape.transactions)
        fail("import");
    for (auto _ : state)
        benchmark::DoNotOptimize(brackwell::TovanaOFXController::importOFXFileFromData(data));
    reportRates(state, bytes.size());
}

void importOFX2(benchmark::State& state) { import(state, true); }
void importOFX1(benchmark::State& state) { import(state, false); }

void pugixmlDOM(benchmark::State& state) {
    const Shape shape = shapeOf(state, true);
    const std::string bytes = brackwell::benchmarks::makeDocument(shape);
    pugi::xml_document first;
    if (!first.load_buffer(bytes.data(), bytes.size()) || countTransactions(first) != shape.transactions)
        fail("pugixml");
    first.reset();
    for (auto _ : state) {
        pugi::xml_document document;
        benchmark::DoNotOptimize(document.load_buffer(bytes.data(), bytes.size()));
    }
    reportRates(state, bytes.size());
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(20)->Arg(2000)->Arg(200000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(importOFX2)->Apply(sizes);
BENCHMARK(importOFX1)->Apply(sizes);
BENCHMARK(pugixmlDOM)->Apply(sizes);

}  // namespace

BENCHMARK_MAIN();
