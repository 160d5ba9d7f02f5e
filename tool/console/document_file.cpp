// SPDX-License-Identifier: Apache-2.0
#include "console/document_file.h"

#include <brackwell/platform.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "system/descriptors.h"
#include "text/characters.h"

namespace tool {
namespace {

using namespace std::string_view_literals;

// ---------------------------------------------------------------------------------------------
// What a file begins like

/// The beginnings of documents, without regard to case.
constexpr std::string_view kBeginnings[] = {"<?XML", "<?OFX", "OFXHEADER:", "<OFX>"};
constexpr std::size_t kLongestBeginning = "OFXHEADER:"sv.size();

/// How the characters of a text stand in its bytes.
struct Form {
    std::size_t width;  ///< bytes of a character; 1: any encoding that has ASCII in it
    bool isBigEndian;
};
constexpr Form kForms[] = {{1, true}, {2, true}, {2, false}, {4, true}, {4, false}};

/// The bytes after a mark of any encoding, or all of them.
std::string_view withoutMark(std::string_view bytes) noexcept {
    for (const std::string_view mark :
         {"\xEF\xBB\xBF"sv, "\xBF\xBB\xBF"sv, "\x00\x00\xFE\xFF"sv, "\xFE\xFF"sv, "\xFF\xFE"sv})
        if (bytes.starts_with(mark)) return bytes.substr(mark.size());
    return bytes;
}

/// The character that bytes begin with; none when they end before it does.
Character characterOf(std::string_view bytes, const Form& form) noexcept {
    if (bytes.size() < form.width) return {};
    const auto byteAt = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (form.width == 1) {
        const Character character = firstCharacter(bytes);
        // Where it is no UTF-8 it may be a blank of a code page.
        return character.code == kReplacementCharacter ? Character{byteAt(0), 1} : character;
    }
    char32_t code = 0;
    for (std::size_t i = 0; i < form.width; ++i)
        code = code << 8 | byteAt(form.isBigEndian ? i : form.width - 1 - i);
    return {code, form.width};
}

/// The first characters after white space, as far as they are ASCII, in capitals.
struct Beginning {
    std::string text;
    bool isCut = false;  ///< the bytes end before it does
};

Beginning beginningOf(std::string_view bytes, const Form& form) {
    constexpr char32_t mark = 0xFEFF;
    Beginning beginning;
    while (beginning.text.size() < kLongestBeginning) {
        const auto [code, size] = characterOf(bytes, form);
        beginning.isCut = size == 0;
        const bool isBefore = beginning.text.empty() && (brackwell::isWhiteSpace(code) || code == mark);
        if (beginning.isCut || (code >= 0x80 && !isBefore)) break;
        const bool isSmall = code >= 'a' && code <= 'z';
        if (!isBefore) beginning.text += static_cast<char>(isSmall ? code - 'a' + 'A' : code);
        bytes.remove_prefix(size);
    }
    return beginning;
}

/// False for what is no document, whatever may follow these bytes.
bool mayBeginDocument(const Beginning& beginning, bool goesOn) noexcept {
    if (beginning.isCut && goesOn) return true;
    return std::ranges::any_of(kBeginnings,
                               [&](std::string_view wanted) { return beginning.text.starts_with(wanted); });
}

// ---------------------------------------------------------------------------------------------
// A document after other text

constexpr std::string_view kBlanks = " \t\r\n";

/// A text of wide characters in one byte each, those beyond ASCII as one that no tag has.
std::string narrowed(std::string_view bytes, const Form& form) {
    std::string text(bytes.size() / form.width, '\x80');
    const std::size_t low = form.isBigEndian ? form.width - 1 : 0;
    for (std::size_t i = 0; i < text.size(); ++i, bytes.remove_prefix(form.width)) {
        const std::string_view character = bytes.substr(0, form.width);
        const auto zeros = static_cast<std::size_t>(std::ranges::count(character, '\0'));
        const char byte = character[low];
        if (static_cast<unsigned char>(byte) < 0x80 && zeros + (byte != '\0') == form.width) text[i] = byte;
    }
    return text;
}

/// True for what `json` and `tree` write: it quotes documents, and is none.
bool isOwnResult(std::string_view text) noexcept {
    if (!text.starts_with('{')) return false;
    const std::string_view key = text.substr(std::min(text.find_first_not_of(kBlanks, 1), text.size()));
    return key.starts_with("\"file\":") || key.starts_with("\"encoding\":");
}

/// True for a text with a line that only the header of a document has.
bool hasHeaderLine(std::string_view text) noexcept {
    for (const std::string_view begin : {"OFXHEADER:"sv, "DATA:OFXSGML"sv})
        for (std::size_t at = text.find(begin); at != text.npos; at = text.find(begin, at + 1)) {
            const std::size_t before = text.substr(0, at).find_last_not_of(" \t");
            if (before == text.npos || text[before] == '\r' || text[before] == '\n') return true;
        }
    return false;
}

/// True for an open tag that a document begins with: the root of OFX or of its forerunner in any case and
/// with any prefix, or in capitals an element that stands for its root where that is missing.
bool beginsDocument(std::string_view name) noexcept {
    constexpr std::string_view ends[] = {"RS", "RSV1", "RSV2", "LIST", "STMTTRN"};
    const std::size_t colon = name.rfind(':');
    const std::string_view local = colon == name.npos ? name : name.substr(colon + 1);
    const bool isRoot = local.size() == 3 && (local[0] | 0x20) == 'o' && (local[1] | 0x20) == 'f' &&
                        ((local[2] | 0x20) == 'x' || (local[2] | 0x20) == 'c');
    const bool isName =
        std::ranges::all_of(name, [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); });
    return isRoot || (isName && std::ranges::any_of(
                                    ends, [name](std::string_view end) { return name.ends_with(end); }));
}

/// True when a tag begins here that begins a document: one that is only mentioned has no tag after it.
bool isFirstTag(std::string_view text, bool goesOn) noexcept {
    const auto isBracket = [](char c) { return c == '<' || c == '>'; };
    const auto end = static_cast<std::size_t>(std::ranges::find_if(text.substr(1), isBracket) - text.begin());
    if (end == text.size()) return false;
    const std::string_view tag = text.substr(1, end - 1);
    const std::string_view name = tag.substr(0, tag.find_first_of(kBlanks));
    if (name == "?OFX") return true;
    if (text[end] == '<' || !beginsDocument(name)) return false;
    const std::size_t next = text.find_first_not_of(kBlanks, end + 1);
    return next == text.npos ? goesOn : text[next] == '<';
}

/// True for a text with a document in it that the reading commands would find, wherever it begins.
bool hasDocument(std::string_view text, bool goesOn) {
    if (isOwnResult(text)) return false;
    if (hasHeaderLine(text)) return true;
    for (std::size_t at = text.find('<'); at != text.npos; at = text.find('<', at + 1))
        if (isFirstTag(text.substr(at), goesOn)) return true;
    return false;
}

/// What people compress a download with: gzip, ZIP.
constexpr std::string_view kCompressed[] = {"\x1F\x8B", "PK\x03\x04"};

/// The first bytes of a file; false when they cannot be read.
bool readBeginning(const std::string& path, std::string& bytes) {
    const int file = system::openForReading(path);
    if (file < 0) return false;
    bytes.resize(kLookedThrough);
    std::size_t size = 0;
    std::ptrdiff_t count = 1;
    while (count > 0 && size < bytes.size()) {
        count = system::readFrom(file, bytes.data() + size, bytes.size() - size);
        if (count > 0) size += static_cast<std::size_t>(count);
    }
    system::closeDescriptor(file);
    bytes.resize(size);
    return count >= 0;
}

bool isCompressed(std::string_view bytes) noexcept {
    return std::ranges::any_of(kCompressed,
                               [bytes](std::string_view begin) { return bytes.starts_with(begin); });
}

}  // namespace

bool isDocument(std::string_view bytes) {
    const bool goesOn = bytes.size() == kLookedThrough;
    return std::ranges::any_of(kForms, [&](const Form& form) {
        const std::string_view begin = form.width == 1 ? withoutMark(bytes) : bytes;
        return mayBeginDocument(beginningOf(begin, form), goesOn) ||
               hasDocument(form.width == 1 ? std::string(begin) : narrowed(begin, form), goesOn);
    });
}

bool mayBeDocument(const std::string& path) {
    std::string bytes;
    return !readBeginning(path, bytes) || isCompressed(bytes) || isDocument(bytes);
}

bool holdsDocument(const std::string& path) {
    std::string bytes;
    return !readBeginning(path, bytes) || isDocument(bytes);
}

bool hasNameOfDocument(std::string_view path) noexcept {
    constexpr std::string_view ends[] = {".OFX", ".QFX", ".QBO", ".OFC", ".ASO"};
    if (path.size() < ends[0].size()) return false;
    std::array<char, 4> end{};
    std::ranges::transform(path.substr(path.size() - end.size()), end.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return std::ranges::find(ends, std::string_view(end.data(), end.size())) != std::end(ends);
}

}  // namespace tool
