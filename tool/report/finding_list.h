// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "report/finding_owners.h"

namespace tool {

class HtmlWriter;
struct InputFile;

/// What is to be said of a file.
struct FileFinding {
    std::string file;  ///< as on the command line
    brackwell::Finding finding;
    FindingOwner owner;
};

/// Adds the findings of a file, in their order.
void addFindings(std::vector<FileFinding>& findings, const InputFile& input);

/// The findings of a report by what they are about.
class FindingList {
public:
    /// The findings have to live as long as this.
    explicit FindingList(const std::vector<FileFinding>& findings);

    const std::vector<FileFinding>& all() const noexcept { return all_; }
    std::size_t count(brackwell::FindingSeverity severity) const noexcept;
    /// Those about a statement or a transaction, by its identity; null has none.
    const std::vector<const FileFinding*>& about(const void* identity) const;

private:
    const std::vector<FileFinding>& all_;
    std::unordered_map<const void*, std::vector<const FileFinding*>> byOwner_;
};

/// Where all findings stand, for who looks for them, and how many there are; nothing when there is none.
void writeFindingSummary(HtmlWriter& html, const FindingList& findings);
/// Those about an account, in its section; nothing when there is none.
void writeFindingNotes(HtmlWriter& html, const std::vector<const FileFinding*>& found);
/// All of them in one place.
void writeAllFindings(HtmlWriter& html, const FindingList& findings);

}  // namespace tool
