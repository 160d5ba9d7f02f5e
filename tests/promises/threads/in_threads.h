// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <barrier>
#include <thread>
#include <vector>

namespace brackwell::tests {

/// Calls a function with 0, 1, 2, ... in as many threads, all at the same time as far as can be had, and
/// gives what the calls returned.
template <class Function>
auto inThreads(std::size_t count, const Function& function) {
    std::vector<decltype(function(count))> results(count);
    std::barrier start(static_cast<std::ptrdiff_t>(count));
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < count; ++i)
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            results[i] = function(i);
        });
    threads.clear();  // waits for them
    return results;
}

}  // namespace brackwell::tests
