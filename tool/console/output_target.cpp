// SPDX-License-Identifier: Apache-2.0
#include "console/output_target.h"

#include <cstddef>
#include <optional>

#include "console/document_file.h"

namespace tool {

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of(system::kSeparators);
    return slash == path.npos ? std::string() : path.substr(0, slash + 1);
}

InputFiles::InputFiles(const std::vector<std::string>& names) {
    for (const std::string& name : names)
        if (const auto file = system::identityOf(name)) files_.insert(*file);
}

bool InputFiles::has(const std::string& name) const {
    const auto file = files_.empty() ? std::nullopt : system::identityOf(name);
    return file && files_.contains(*file);
}

std::string objectionTo(const std::string& name, const InputFiles& inputs, const OutputRules& rules) {
    if (name == kStandardOutput) return {};
    const std::string advice = "choose another " + std::string(rules.choice);
    const bool isInput = inputs.has(name);
    if (isInput && !rules.mayReplaceInput) return "is also an input file; " + advice;
    if (rules.replacesDocuments) return {};
    const std::string withForce = advice + ", or replace the document with --force";
    if (isInput) return "is also an input file; " + withForce;
    const OutputTarget target = outputTarget(name);
    if (target.kind != OutputTarget::Kind::file) return {};
    const bool isNamedLikeOne = hasNameOfDocument(name) || hasNameOfDocument(target.path);
    if (!isNamedLikeOne && !mayBeDocument(target.path)) return {};
    return std::string(isNamedLikeOne ? "has the name of an OFX document" : "may be an OFX document") +
           ", which would be lost; " + withForce;
}

}  // namespace tool
