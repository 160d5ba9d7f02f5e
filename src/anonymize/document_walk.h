// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "elements/structure.h"

namespace brackwell::anonymizing {

/// Gets the parts of a document, which together are the whole text.
class PartVisitor {
public:
    virtual ~PartVisitor() = default;
    /// What everybody may see: the marks of tags and comments, the names of header fields.
    virtual void onMarkup(std::string_view text) = 0;
    /// The name in a tag.
    virtual void onName(std::string_view name, elements::Element element, bool isClose) = 0;
    /// The text that follows an open tag, up to the next tag.
    virtual void onValue(std::string_view text, elements::Element element) = 0;
    /// The value of a field of the header, or of another attribute of an instruction.
    virtual void onHeaderValue(std::string_view field, std::string_view text) = 0;
    /// Text where none should be: before the document, in comments, in tags after the name.
    virtual void onOtherText(std::string_view text) = 0;
};

/// Goes through a text from tag to tag. It need not be a document that reads: a tag that has lost its ">" is
/// known by the name of an element, and a "<" that begins no tag belongs to the value around it.
void walkThrough(std::string_view text, PartVisitor& visitor);

}  // namespace brackwell::anonymizing
