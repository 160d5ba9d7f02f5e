// SPDX-License-Identifier: Apache-2.0
#include "open/file_findings.h"

#include <optional>
#include <string>
#include <utility>

namespace brackwell::opening {

void FileFindings::add(Finding finding) {
    std::size_t& kept = keptOfKind_[static_cast<std::size_t>(finding.kind)];
    if (finding.text.empty() || kept == FindingList::kMostOfAKind)
        return rest_.add(finding.kind, finding.severity, finding.count);
    ++kept;
    kept_.push_back(std::move(finding));
}

std::vector<Finding> FileFindings::finish() && {
    std::vector<Finding> findings;
    for (Finding& finding : kept_) {
        const FindingKind kind = finding.kind;
        findings.push_back(std::move(finding));
        if (--keptOfKind_[static_cast<std::size_t>(kind)] != 0) continue;
        std::optional<Finding> rest = rest_.of(kind);
        if (!rest) continue;
        rest->text = "There are " + std::to_string(rest->count) + " more of the same kind.";
        findings.push_back(std::move(*rest));
    }
    return findings;
}

}  // namespace brackwell::opening
