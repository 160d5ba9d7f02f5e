// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// \file
/// The body parser a second time, as plainly as it can be put: step by step, with copies of every text
/// and a search wherever one is needed. It shares nothing with the library; it is what the library's
/// parser is compared with.

namespace brackwell::tests {

struct NaiveNode {
    enum class Kind { text, dictionary, array };
    using Pointer = std::shared_ptr<NaiveNode>;

    Kind kind = Kind::dictionary;
    std::string text;
    std::vector<std::pair<std::string, Pointer>> entries;
    std::vector<Pointer> elements;
};

struct NaiveResult {
    NaiveNode::Pointer root;  ///< null: failed
    std::string failure;
};

NaiveResult parseNaively(const std::string& body);

/// In the form of treeText (tree_text.h).
std::string treeText(const NaiveNode& node);

}  // namespace brackwell::tests
