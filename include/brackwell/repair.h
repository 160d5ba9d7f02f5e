// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Mends the text of a document that the import refuses, in which it finds nothing, or of which it would
/// leave something behind. The import never does this by itself: whoever wants it asks for it, and gets the
/// list of what was changed, with reasons.
///
///     #include <brackwell/reading.h>
///     brackwell::RepairedText repaired = brackwell::repairOFXText(text, brackwell::RepairScope::structure);
///     for (const auto& change : repaired.changes)
///         std::cerr << change.line << ':' << change.column << ' ' << describe(change.kind) << ": "
///                   << change.reason << '\n';
///     auto message = brackwell::TovanaOFXController::importOFXFileFromData(
///         brackwell::Data::view(repaired.text), brackwell::TextEncodingUTF8, nullptr, nullptr);
///
/// What is done about the front of a document:
/// - Text before it is dropped. A header gets the line that it begins with, a line for each of its fields,
///   and loses the marks of comments. A document that begins with "<?xml" gets the instruction that it needs.
///
/// About its markup:
/// - Comments, instructions and declarations inside the body are dropped; a character-data section is
///   unwrapped, with "&" and "<" in it written as entities.
/// - Of "<", what does not begin a tag belongs to the text around it and is written as "&lt;": a tag is
///   "<", a name of letters, digits and ". _ - :" (or "/" and anything), and ">" before the next "<".
///   With a blank after the "<" the name must be in capitals. Tags with small letters inside of a leaf
///   in capitals that has its close tag are text as well, and so is an unknown name in the middle of a leaf's
///   line: "see <REF> 123".
/// - A tag that has lost its "<" at the beginning of a line or directly after a value
/// ("20240105TRNAMT>-5.00"),
///   one that has lost its ">" and begins with the name of a leaf ("<TRNAMT-5.00"), and one with a "<" in its
///   name ("<TRN<AMT>") are completed. Elements in a character-data section become elements.
/// - In a document without "<OFX>" but with "<ofx>", all names are put into capitals, and tags with small
/// letters
///   are not taken for text. In a document with "<OFX>", only names that the standard knows are put into
///   capitals, and only when one of them is at a place without text.
/// - Blanks and attributes are taken out of tags, "<NAME/>" becomes "<NAME></NAME>". A tag that the end
///   of the document cuts off is dropped. Two neighbouring tags that have changed places change them back.
///   Of two equal open tags in a row, of which only one is closed, the first is dropped. An open tag of the
///   aggregate that is open, after which nothing comes that belongs in another, is its close tag.
///
/// About close tags:
/// - Each first looks for its open tag, the innermost of the same name. Whatever was opened after that one
/// and is
///   still open has no close tag of its own. An aggregate among these ends before the first element that
///   cannot stand in it but can in an aggregate around it; otherwise where the aggregate around it ends,
///   where a second of its name begins, or at the end of the document.
/// - A close tag of an aggregate that finds no open tag gets one, before the preceding elements that belong
/// in that
///   aggregate and cannot stand where they are. An empty unknown tag of a similar name before these becomes
///   the open tag.
/// - Any other close tag that finds none, and has a value after it, becomes an open tag, unless it has the
/// name of
///   the element before it or of an aggregate. Without a value it closes the leaf before it under a wrong
///   name; or the innermost aggregate, when that has no close tag of its own and has a similar name or is
///   inside one that has. Otherwise it gets an open tag before the preceding text when that text belongs to
///   nothing, and is dropped when there is no such text.
///
/// About elements that cannot stand where they are, by the standard:
/// - What is missing around them is put in: a STMTTRN in a STMTRS gets a BANKTRANLIST, or goes into the one
///   that is there; a document without its root gets it, with the aggregates down to what it begins with.
/// - An aggregate whose children all belong in another gets the name of that one: the BANKMSGSRSV1 and
///   STMTTRNRS around a CCSTMTRS.
/// - Others go to the end of the aggregate around them that they belong in.
/// - Aggregates that stand twice where one may become one; two responses in one wrapper get one each.
/// Elements that the standard does not know never move, but with those around them, and end nothing.
///
/// Leaf or aggregate: an element with text after its tag is a leaf. One without is what the standard says;
/// when that does not know it, an aggregate when it has a close tag of its own, or when the document
/// elsewhere has one and no leaf of this name. Otherwise it is an empty leaf, and is closed at once.
///
/// What cannot be mended stays, and is told in RepairedText::remaining.

#include <brackwell/platform.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brackwell {

/// Which documents are repaired. Any other is returned as it is, byte for byte.
enum class RepairScope : std::uint8_t {
    unread,     ///< those that the import refuses, or in which it finds nothing
    structure,  ///< also those with an element that the standard has no place for where it stands
};

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
    wrongClose,          ///< a misspelt close tag, or one in place of an open tag or the reverse
    strayClose,          ///< a close tag that matches nothing open, dropped
    missingOpen,         ///< a text or aggregate with a close tag only, or what is missing around it, opened
    crossedTags,         ///< two neighbouring tags in the wrong order, put right
    header,              ///< a header that was not recognised, or not whole, completed
    misplaced,           ///< an element or close tag where it cannot stand: dropped here, put in elsewhere
    repeated,            ///< an aggregate that stands, or is opened, twice where one may: tags dropped
    wrongName,           ///< an aggregate under the name of another, or misspelt, renamed
};

/// The kind in a few words for a person ("close tag missing"); never destroyed.
BRACKWELL_EXPORT std::string_view describe(RepairKind kind) noexcept;

/// One change of a text. Something that is moved is two: it is dropped in one place and put in at another.
struct RepairChange {
    RepairKind kind = RepairKind::comment;  ///< what was wrong
    std::size_t offset = 0;                 ///< of the first byte of `was` in the text before the repair
    std::size_t line = 1;                   ///< of that byte; lines end with LF, CR, or both
    std::size_t column = 1;                 ///< in characters, not bytes
    std::string was;                        ///< what stood there; empty where something was put in
    std::string now;                        ///< what stands there now; empty where something was dropped
    /// Why, as a sentence without its full stop ("<LEDGERBAL> cannot stand in <BANKTRANLIST>, so that ends
    /// before it"); empty where the kind says it all.
    std::string reason{};

    bool operator==(const RepairChange&) const = default;  ///< the same change at the same place
};

/// Something that a repair has left, because no change that the standard allows would mend it: a known
/// element that cannot stand where it does, or that stands there once more than it may; an aggregate with a
/// text; a name that is known in capitals only.
struct RepairRemark {
    std::size_t offset = 0;  ///< of the tag in the text after the repair
    std::size_t line = 1;    ///< of that byte; lines end with LF, CR, or both
    std::size_t column = 1;  ///< in characters, not bytes
    std::string reason;      ///< like that of a change

    bool operator==(const RepairRemark&) const = default;  ///< the same remark about the same place
};

/// A repaired text and the way to it.
struct RepairedText {
    std::string text;  ///< the whole document after the repair, UTF-8
    /// In the order of their places; no two overlap. Replacing `was` by `now` at each place of the text
    /// before makes the text after it.
    std::vector<RepairChange> changes;
    /// All that is still not as the standard has it, in the order of the text; empty for a text that is out
    /// of the scope of the repair. What the standard does not know, and what it misses, is not told.
    std::vector<RepairRemark> remaining{};
};

/// Repairs the text of a document, header included, in linear time. A text that is out of scope, no OFX
/// document or not UTF-8 is returned as it is. One in which the import refused something or found nothing
/// reads afterwards; of any other, fewer elements stand where they cannot. A second repair changes nothing.
/// Values are never changed, moved to another name or dropped. By names in lower case the import finds
/// nothing, so a text with these does not count as one that it reads.
BRACKWELL_EXPORT RepairedText repairOFXText(std::string_view text, RepairScope scope = RepairScope::unread);

/// Changes that are alike, as one line for a person.
struct RepairGroup {
    RepairKind kind = RepairKind::comment;  ///< of all of them
    std::size_t count = 0;                  ///< of changes
    std::size_t first = 0;                  ///< the first one's position in the list
    std::string text;                       ///< "126 comments dropped"; what was moved counts once
    std::string reason{};                   ///< of all of them; may be empty, like that of a change
};

/// The changes of a repair, those of one kind and one reason together: those of the structure first, as they
/// say most about what is read, then those of tags, then the rest. Groups of one kind come in the order of
/// their first changes.
BRACKWELL_EXPORT std::vector<RepairGroup> summaryOf(const std::vector<RepairChange>& changes);

/// True for a document of OFC, the forerunner of OFX: its first element is "<OFC>". Nothing in this library
/// reads or repairs it; the institution may offer OFX as well.
BRACKWELL_EXPORT bool isOFCText(std::string_view text) noexcept;

}  // namespace brackwell
