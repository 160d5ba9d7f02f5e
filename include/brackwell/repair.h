// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Mends the text of a document that the import refuses for its close tags, or in which it finds nothing.
/// The import never does this by itself: whoever wants it asks for it, and gets the list of what was
/// changed.
///
///     brackwell::RepairedText repaired = brackwell::repairOFXText(text);
///     for (const auto& change : repaired.changes)
///         std::cerr << change.line << ':' << change.column << ' ' << describe(change.kind) << '\n';
///     auto message = brackwell::TovanaOFXController::importOFXFileFromData(
///         brackwell::Data::view(repaired.text), brackwell::TextEncodingUTF8, nullptr, nullptr);
///
/// What is done about it:
/// - Comments, instructions and declarations inside the body are dropped; a character-data section is
///   unwrapped, with "&" and "<" in it written as entities.
/// - Of "<", what does not begin a tag belongs to the text around it and is written as "&lt;": a tag is
///   "<", a name of letters, digits and ". _ - :" (or "/" and anything), and ">" before the next "<".
///   With a blank behind the "<" the name must be in capitals. Tags with small letters inside of a leaf
///   in capitals that has its close tag are text as well.
/// - In a document without "<OFX>" but with "<ofx>", all names are put into capitals, and small letters
///   make no tag text.
/// - Blanks and attributes are taken out of tags, "<NAME/>" becomes "<NAME></NAME>". A tag that the end
///   of the document cuts off is dropped.
/// - Close tags first find their open tags, the innermost of the same name; all that was opened in
///   between and is still open then has no close tag of its own. An aggregate among these is closed
///   where the one around it closes, where a second of its name opens, or at the end of the document.
/// - A close tag that found nothing, of an aggregate that has been closed just before, gets an open tag
///   behind that one when the elements there begin like those in it. One that has a value behind it becomes
///   an open tag, unless it is called like the element before it or like an aggregate. Any other closes the
///   leaf before it under a wrong name, or the innermost aggregate when that has no close tag of its own, and
///   is called alike or stands in one that has; else it gets an open tag before the text in front of it when
///   that text belongs to nothing, and is dropped otherwise.
///
/// Leaf or aggregate: an element with text behind its tag is a leaf. One without is an aggregate when
/// it has a close tag of its own, when the OFX standard has an aggregate of this name, or when the
/// document elsewhere has one and no leaf of this name. Otherwise it is an empty leaf, and is closed at
/// once.
///
/// What cannot be known stays: where the close tag of an aggregate is missing, the elements behind the
/// place where it should stand are in that aggregate, because nothing says that they are not.

#include <brackwell/platform.h>

namespace brackwell {

/// What was wrong at a place of a document.
enum class RepairKind : std::uint8_t {
    textBeforeDocument,  ///< dropped, so that the document is recognised
    comment,             ///< dropped
    instruction,         ///< "<?...>" or "<!...>" inside the body, dropped
    characterData,       ///< "<![CDATA[...]]>", unwrapped
    lessThan,            ///< a "<" that is text, escaped
    tagForm,             ///< blanks or attributes in a tag, taken out
    lowerCaseTag,        ///< put into capitals, because a name counts in no other case
    unfinishedTag,       ///< a tag without ">": completed, or dropped at the end of the document
    selfClosedTag,       ///< "<NAME/>", written as open and close tag
    emptyLeaf,           ///< a leaf without text and close tag, closed
    missingClose,        ///< an aggregate without close tag, closed
    wrongClose,          ///< a misspelt close tag, or one in place of an open tag, corrected
    strayClose,          ///< a close tag that matches nothing open, dropped
    missingOpen,         ///< a text with a close tag only, opened
};

/// The kind in a few words for a person ("close tag missing"); never destroyed.
BRACKWELL_EXPORT std::string_view describe(RepairKind kind) noexcept;

/// One change of a text.
struct RepairChange {
    RepairKind kind = RepairKind::comment;  ///< what was wrong
    std::size_t offset = 0;                 ///< of the first byte of `was` in the text before the repair
    std::size_t line = 1;                   ///< of that byte; lines end with LF, CR, or both
    std::size_t column = 1;                 ///< in characters, not bytes
    std::string was;                        ///< what stood there; empty where something was put in
    std::string now;                        ///< what stands there now; empty where something was dropped

    bool operator==(const RepairChange&) const = default;  ///< the same change at the same place
};

/// A repaired text and the way to it.
struct RepairedText {
    std::string text;  ///< the whole document after the repair, UTF-8
    /// In the order of their places; no two overlap. Replacing `was` by `now` at each place of the text
    /// before makes the text after it.
    std::vector<RepairChange> changes;
};

/// Repairs the text of a document, header included, in linear time. A text that the import reads is
/// returned as it is, and so is one that is no OFX document or not UTF-8. Any other reads afterwards, so
/// a second repair changes nothing. Values are never changed, moved to another name or dropped. By names
/// in lower case the import finds nothing, so a text with these does not count as one that it reads.
BRACKWELL_EXPORT RepairedText repairOFXText(std::string_view text);

}  // namespace brackwell
