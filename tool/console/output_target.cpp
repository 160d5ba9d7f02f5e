// SPDX-License-Identifier: Apache-2.0
#include "console/output_target.h"

#include <algorithm>
#include <cstddef>

#include "console/document_file.h"
#include "system/output_files.h"

namespace tool {

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of(system::kSeparators);
    return slash == path.npos ? std::string() : path.substr(0, slash + 1);
}

std::string objectionTo(const std::string& name, const std::vector<std::string>& inputs,
                        const OutputRules& rules) {
    if (name == kStandardOutput) return {};
    const bool isInput = std::ranges::any_of(
        inputs, [&name](const std::string& input) { return system::isSameFile(input, name); });
    if (isInput && !rules.mayReplaceInput) return "is also an input file; choose another name";
    if (rules.replacesDocuments) return {};
    if (isInput) return "is also an input file; choose another name, or replace the document with --force";
    const OutputTarget target = outputTarget(name);
    if (target.kind != OutputTarget::Kind::file) return {};
    const bool isNamedLikeOne = hasNameOfDocument(name) || hasNameOfDocument(target.path);
    if (!isNamedLikeOne && !mayBeDocument(target.path)) return {};
    return std::string(isNamedLikeOne ? "has the name of an OFX document" : "may be an OFX document") +
           ", which would be lost; choose another name, or replace the document with --force";
}

}  // namespace tool
