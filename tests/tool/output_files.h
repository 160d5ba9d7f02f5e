// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <set>
#include <thread>

#include "tool/tool.h"

/// \file
/// Folders that the tool writes to, for the tests of its output files.

namespace brackwell::tests {

inline const std::string kOld = "what was there before\n";
inline const std::string kBrokenDocument = "<OFX></B></OFX>";

using FileNames = std::set<std::string>;

inline FileNames namesIn(const TemporaryFolder& folder) {
    FileNames names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.insert(entry.path().filename());
    return names;
}

/// Waits until something is so; false when it is not within ten seconds.
inline bool becomesTrue(const std::function<bool()>& isSo) {
    using namespace std::chrono_literals;
    for (int i = 0; i < 1000; ++i) {
        if (isSo()) return true;
        std::this_thread::sleep_for(10ms);
    }
    return false;
}

/// How many bytes the unfinished output in a folder has; nothing when there is none.
inline std::optional<std::uintmax_t> unfinishedSize(const TemporaryFolder& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        if (entry.path().filename().string().starts_with(".brackwell-")) return entry.file_size();
    return std::nullopt;
}

/// A document whose rows do not fit into what is written at once.
inline std::string largeDocument() {
    std::string transactions;
    for (int i = 0; i < 3000; ++i)
        transactions +=
            "<STMTTRN><DTPOSTED>20240101<TRNAMT>1<NAME>A name of some length that fills the buffer</STMTTRN>";
    return transactionsWith(transactions);
}

}  // namespace brackwell::tests
