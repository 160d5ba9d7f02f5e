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
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

// What is seldom needed must not make larger what is called for every text of a document.
#if defined(__GNUC__)
#define BRACKWELL_APART __attribute__((noinline))
#else
#define BRACKWELL_APART
#endif

namespace brackwell::reading {
class Document;
}

namespace brackwell::internal {

/// The text of a leaf; valid as long as the document.
BRACKWELL_EXPORT std::string_view leafText(const reading::Document& document, std::uint32_t node) noexcept;

/// Where the texts of an object come from: leaves of the tree that it was read from, which is shared
/// and not copied, or texts of the object's own. Used by the classes of the model for their fields.
///
/// A large document is mostly objects of a few texts, whose leaves stand close together in the tree. So a
/// field takes one byte, which says how far its leaf is from where the object's leaves begin; what does not
/// fit in that is kept apart.
template <std::size_t Count>
class TextFields {
public:
    /// No texts.
    TextFields() noexcept = default;
    /// Shares the tree and copies the texts that are not in it.
    TextFields(const TextFields& other)
        : document_(other.document_),
          apart_(other.apart_ ? std::make_unique<Apart>(*other.apart_) : nullptr),
          begin_(other.begin_),
          near_(other.near_) {}
    // NOLINTNEXTLINE(misc-unconventional-assign-operator): it returns *this, which the template hides
    TextFields& operator=(const TextFields& other) { return *this = TextFields(other); }
    /// @{
    /// Takes everything over; the other has no texts then.
    TextFields(TextFields&&) noexcept = default;
    TextFields& operator=(TextFields&&) noexcept = default;
    /// @}
    ~TextFields() = default;

    /// Valid until this field is set again or the object is destroyed.
    OptionalText get(std::size_t field) const noexcept {
        const std::uint32_t distance = near_.get()[field];
        if (distance != 0) return leafText(*document_, begin_ + distance);
        return apart_ ? getApart(field) : std::nullopt;
    }
    /// Takes a copy of the text.
    void set(std::size_t field, OptionalText text);
    /// Refers to a leaf of a tree.
    void setLeaf(std::size_t field, const std::shared_ptr<const reading::Document>& document,
                 std::uint32_t node) {
        const std::int64_t distance = std::int64_t{node} - std::int64_t{begin_.get()};
        if (document_ == document && static_cast<std::uint64_t>(distance - 1) < kFarthest)
            near_.get()[field] = static_cast<std::uint8_t>(distance);
        else
            setOtherLeaf(field, document, node);
    }

private:
    static constexpr std::uint32_t kFarthest = std::numeric_limits<std::uint8_t>::max();
    /// What may stand before the leaf that is set first.
    static constexpr std::uint32_t kBefore = 64;

    /// What few objects have.
    struct Apart {
        std::array<std::optional<std::string>, Count> texts;
        std::array<std::uint32_t, Count> leaves{};  ///< that are far from the others; 0: none
    };
    Apart& apart() {
        if (!apart_) apart_ = std::make_unique<Apart>();
        return *apart_;
    }
    BRACKWELL_APART OptionalText getApart(std::size_t field) const noexcept;
    BRACKWELL_APART void setOtherLeaf(std::size_t field,
                                      const std::shared_ptr<const reading::Document>& document,
                                      std::uint32_t node);

    std::shared_ptr<const reading::Document> document_;
    std::unique_ptr<Apart> apart_;
    EmptiedByMove<std::uint32_t> begin_;                   ///< a node before the object's leaves
    EmptiedByMove<std::array<std::uint8_t, Count>> near_;  ///< leaves, by their distance from it; 0: none
};

template <std::size_t Count>
OptionalText TextFields<Count>::getApart(std::size_t field) const noexcept {
    if (apart_->leaves[field] != 0) return leafText(*document_, apart_->leaves[field]);
    if (apart_->texts[field]) return *apart_->texts[field];
    return std::nullopt;
}

template <std::size_t Count>
void TextFields<Count>::set(std::size_t field, OptionalText text) {
    if (text)
        apart().texts[field] = std::string(*text);
    else if (apart_)
        apart_->texts[field].reset();
    if (apart_) apart_->leaves[field] = 0;
    near_.get()[field] = 0;
}

template <std::size_t Count>
void TextFields<Count>::setOtherLeaf(std::size_t field,
                                     const std::shared_ptr<const reading::Document>& document,
                                     std::uint32_t node) {
    if (!document_) {
        document_ = document;
        begin_ = node > kBefore ? node - kBefore : 0;
        near_.get()[field] = static_cast<std::uint8_t>(node - begin_);
    } else if (document_ == document) {
        apart().leaves[field] = node;
        near_.get()[field] = 0;
    } else {  // a second tree, which is not kept alive for one text
        set(field, leafText(*document, node));
    }
}

}  // namespace brackwell::internal

#undef BRACKWELL_APART
