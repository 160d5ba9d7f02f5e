// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// How the objects of the model hold their texts. It is installed because their getters are inline, but it is
/// no part of the interface: what namespace internal has may change with any version.

#include <brackwell/internal/emptied_by_move.h>
#include <brackwell/platform.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace brackwell::reading {
class Document;
}

namespace brackwell::internal {

/// The text of a leaf; valid as long as the document.
BRACKWELL_EXPORT std::string_view leafText(const reading::Document& document, std::uint32_t node) noexcept;

/// Where the texts of an object come from: leaves of the tree that it was read from, which is shared
/// and not copied, or texts of the object's own. Used by the classes of the model for their fields.
template <std::size_t Count>
class TextFields {
public:
    /// No texts.
    TextFields() noexcept = default;
    /// Shares the tree and copies the texts that are not in it.
    TextFields(const TextFields& other)
        : document_(other.document_),
          own_(other.own_ ? std::make_unique<OwnTexts>(*other.own_) : nullptr),
          leaves_(other.leaves_) {}
    // NOLINTNEXTLINE(misc-unconventional-assign-operator): it returns *this, which the template hides
    TextFields& operator=(const TextFields& other) { return *this = TextFields(other); }
    /// @{
    /// Takes everything over; the other has no texts then.
    TextFields(TextFields&&) noexcept = default;
    TextFields& operator=(TextFields&&) noexcept = default;
    /// @}
    ~TextFields() = default;

    /// Valid until this field is set again or the object is destroyed.
    OptionalText get(std::size_t field) const noexcept;
    /// Takes a copy of the text.
    void set(std::size_t field, OptionalText text);
    /// Refers to a leaf of a tree.
    void setLeaf(std::size_t field, const std::shared_ptr<const reading::Document>& document,
                 std::uint32_t node) {
        if (document_ == document)
            leaves_.get()[field] = node;
        else
            setLeafOfOther(field, document, node);
    }

private:
    using OwnTexts = std::array<std::optional<std::string>, Count>;
    void setLeafOfOther(std::size_t field, const std::shared_ptr<const reading::Document>& document,
                        std::uint32_t node);

    std::shared_ptr<const reading::Document> document_;
    std::unique_ptr<OwnTexts> own_;
    EmptiedByMove<std::array<std::uint32_t, Count>> leaves_;  ///< 0: none
};

template <std::size_t Count>
OptionalText TextFields<Count>::get(std::size_t field) const noexcept {
    if (leaves_.get()[field] != 0) return leafText(*document_, leaves_.get()[field]);
    if (own_ && (*own_)[field]) return *(*own_)[field];
    return std::nullopt;
}

template <std::size_t Count>
void TextFields<Count>::set(std::size_t field, OptionalText text) {
    if (text) {
        if (!own_) own_ = std::make_unique<OwnTexts>();
        (*own_)[field] = std::string(*text);
    } else if (own_) {
        (*own_)[field].reset();
    }
    leaves_.get()[field] = 0;
}

template <std::size_t Count>
void TextFields<Count>::setLeafOfOther(std::size_t field,
                                       const std::shared_ptr<const reading::Document>& document,
                                       std::uint32_t node) {
    if (document_) {  // a second tree, which is not kept alive for one text
        set(field, leafText(*document, node));
    } else {
        document_ = document;
        leaves_.get()[field] = node;
    }
}

}  // namespace brackwell::internal
