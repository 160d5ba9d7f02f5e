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
inline const std::string kDocument =
    transactionsWith("<STMTTRN><DTPOSTED>20240102<TRNAMT>1<NAME>Shop</STMTTRN>");
inline const std::string kBroken = "<OFX></B></OFX>";

using Names = std::set<std::string>;

inline Names namesIn(const TemporaryFolder& folder) {
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.insert(entry.path().filename());
    return names;
}

inline Finished toolIn(const TemporaryFolder& folder, std::vector<std::string> arguments,
                       const std::string& input = {}) {
    Command command = toolCommand(std::move(arguments));
    command.directory = folder.path();
    command.input = input;
    return run(command);
}

/// Runs a shell's command line in a folder; $TOOL in it is the tool.
inline Finished shell(const TemporaryFolder& folder, const std::string& line) {
    return run({{"/bin/sh", "-c", line}, "", {{"TOOL", BRACKWELL_TOOL}}, folder.path()});
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
