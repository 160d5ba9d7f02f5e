// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "system/output_files.h"

/// \file
/// Where an output goes, and what it must not take the place of: the only place for these rules.

namespace tool {

/// What the name of an output file leads to.
struct OutputTarget {
    enum class Kind {
        unreachable,  ///< nothing can be written there; `error` says why
        missing,      ///< there is no file yet
        file,         ///< there is one, which is replaced
        device,       ///< a terminal, a pipe, /dev/null: what is written goes straight into it
        descriptor,   ///< an open descriptor by its name, as /dev/stdout or /dev/fd/3
    };

    Kind kind = Kind::unreachable;
    int error = 0;     ///< an errno
    std::string path;  ///< after the last symbolic link: a link stays, and what it leads to is replaced
};

OutputTarget outputTarget(const std::string& name);

/// What a path begins with, up to the last slash; "" for a file of the working folder.
std::string folderOf(const std::string& path);

/// The name that stands for standard output.
inline constexpr std::string_view kStandardOutput = "-";

/// What an output may take the place of besides files of no interest.
struct OutputRules {
    bool replacesDocuments = false;    ///< OFX documents, since the user says so
    bool mayReplaceInput = false;      ///< then also its own input: the output is that document, repaired
    std::string_view choice = "name";  ///< what the user can choose another of, where there is an objection
};

/// The files that a command reads. Each is looked up once, so that many outputs can be held against them.
class InputFiles {
public:
    InputFiles() = default;
    InputFiles(const std::vector<std::string>& names);
    /// True for a name of one of them, whatever it is called there.
    bool has(const std::string& name) const;

private:
    std::set<system::FileIdentity> files_;
};

/// What is wrong with this name for an output, and what to do instead ("is also an input file; ..."); ""
/// when nothing is. Whether it can be written at all is another question.
std::string objectionTo(const std::string& name, const InputFiles& inputs, const OutputRules& rules);

}  // namespace tool
