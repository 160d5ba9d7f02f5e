// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/convert.h>

#include <optional>
#include <string>
#include <vector>

#include "filter/filter.h"

namespace tool {

/// What `brackwell request` asks for.
struct RequestOptions {
    bool isProfile = false;  ///< else the accounts
    std::uint64_t version = 0;
    std::optional<std::string> since;
    std::int32_t routing = 0;
};

/// The command line.
struct Options {
    std::string command;
    std::vector<std::string> files;
    std::optional<std::string> outputFile;  ///< none: standard output
    bool replacesDocuments = false;         ///< let the output take the place of an OFX document
    brackwell::TextEncoding encoding = brackwell::TextEncodingNone;
    std::shared_ptr<const brackwell::NumberFormatter> numberFormatter;  ///< null: the built-in formats only
    std::shared_ptr<const brackwell::DateFormatter> dateFormatter;
    Filter filter;
    bool showsFullNumbers = false;
    bool showsOriginals = false;  ///< the source texts of transactions
    bool repairs = false;         ///< repair documents that do not read
    bool asDiff = false;          ///< show what was repaired as a diff
    RequestOptions request;
};

/// What became of the command line: options, or an exit status with what is to be said instead of
/// doing anything.
struct CommandLine {
    Options options;
    std::optional<int> exitStatus;
    std::string text;   ///< for standard output
    std::string error;  ///< for standard error
};

CommandLine readCommandLine(int count, const char* const* arguments);

}  // namespace tool
