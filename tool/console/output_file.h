// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace tool {

/// A file that is whole or not there. What is written goes into a temporary file in the same folder, which
/// takes the place of the file with the name once all is written. Until then, or if that never happens, what
/// was there before stays. The temporary file, ".brackwell-" and six random characters, goes with this
/// object, or when a signal ends the program; only a crash or SIGKILL can leave it.
///
/// The file can be read by its owner only, since it holds account data, also when it replaces one that others
/// could read. Keeping the permissions of that one would not be enough (owner, group and access lists decide
/// as well), and in a shared folder somebody else may have put it there in order to read what comes.
///
/// Terminals, pipes, devices and open descriptors (/dev/stdout) are written directly.
class OutputFile {
public:
    /// Opens what is to be written. Without `replacesDocuments` an OFX document is not replaced even when it
    /// came into being after the command line was checked.
    OutputFile(const std::string& name, bool replacesDocuments);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// Where to write; -1 when it could not be opened, and `problem` says why.
    int descriptor() const noexcept { return descriptor_; }
    /// True when what is written arrives at once and cannot be taken back.
    bool isDirect() const noexcept { return temporary_.empty(); }
    const std::string& problem() const noexcept { return problem_; }

    /// Closes the file and puts it in its place; false when `problem` says why not.
    bool finish();

private:
    void openBeside(const std::string& path);
    bool isStored();
    bool close();
    bool failed(std::string_view before = "");

    std::string name_;
    std::string target_;     ///< what is replaced
    std::string temporary_;  ///< empty: none, or in its place already
    std::string problem_;
    int descriptor_ = -1;
    bool replacesDocuments_;
};

}  // namespace tool
