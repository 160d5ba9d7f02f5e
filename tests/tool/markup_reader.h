// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

/// \file
/// Reads pages that are to be well-formed XML, strictly.

namespace brackwell::tests {

struct MarkupElement {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::string text;           ///< all that is inside, that of inner elements too
    std::size_t parent = npos;  ///< its place in the page

    static constexpr std::size_t npos = std::string::npos;
    /// The attribute, or "".
    std::string attribute(const std::string& key) const {
        const auto found = attributes.find(key);
        return found == attributes.end() ? "" : found->second;
    }
};

/// The elements of a page in document order.
class MarkupPage {
public:
    /// Throws std::runtime_error, which says where and why, for a page that is not well-formed.
    explicit MarkupPage(const std::string& page);

    const std::vector<MarkupElement>& elements() const noexcept { return elements_; }
    /// Those of a name, and of a class unless that is "".
    std::vector<MarkupElement> all(const std::string& name, const std::string& ofClass = "") const;
    /// The texts of these.
    std::vector<std::string> texts(const std::string& name, const std::string& ofClass = "") const;
    /// The texts of the cells of each row in a table's body.
    std::vector<std::vector<std::string>> rows(const std::string& classOfTable) const;

private:
    std::vector<MarkupElement> elements_;
};

}  // namespace brackwell::tests
