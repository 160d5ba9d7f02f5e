// SPDX-License-Identifier: Apache-2.0
#include "open/named_encoding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "open/parsing.h"
#include "open/shown_text.h"
#include "text/ascii_case.h"
#include "text/utf8.h"
#include "tree/node_ref.h"

namespace brackwell::opening {
namespace {

constexpr auto kWide = std::to_array<TextEncoding>(
    {TextEncodingUTF16, TextEncodingUTF16BigEndian, TextEncodingUTF16LittleEndian});

bool isWide(TextEncoding encoding) noexcept { return std::ranges::find(kWide, encoding) != kWide.end(); }

/// The names of encodings in a header, the first one first; the others are empty. OFX 1 has two fields for
/// them.
using NamesInHeader = std::array<std::string_view, 2>;

NamesInHeader namesIn(const std::optional<ParseDictionary>& header, std::string_view text) noexcept {
    const std::string_view begin = trimWhiteSpace(text);
    if (begin.starts_with('<')) return {encodingNameInXML(begin)};
    NamesInHeader names;
    if (!header) return names;
    std::size_t count = 0;
    for (const reading::NameID field : {reading::element("CHARSET"), reading::element("ENCODING")}) {
        const reading::NodeRef value = reading::NodeRef::of(*header)[field];
        const std::string_view name = value.isText() ? value.text() : std::string_view();
        if (!name.empty() && !equalsIgnoringCase(name, "NONE")) names[count++] = name;
    }
    return names;
}

/// True for what headers call the encodings of Unicode, without saying which.
bool isUnicode(std::string_view name) noexcept {
    return equalsIgnoringCase(name, "UNICODE") || equalsIgnoringCase(name, "CSUNICODE");
}

/// True when a name is one of the encoding that a text was read in.
bool isNameOf(std::string_view name, TextEncoding used) noexcept {
    const TextEncoding named = textEncodingNamed(name);
    if (named == used || (isWide(named) && isWide(used))) return true;
    return isUnicode(name) && (used == TextEncodingUTF8 || isWide(used));
}

}  // namespace

void findEncodingDoubts(FindingList& findings, TextEncoding used,
                        const std::optional<ParseDictionary>& header, std::string_view text,
                        EncodingOrigin origin) {
    if (origin == EncodingOrigin::mark) return;
    const NamesInHeader names = namesIn(header, text);
    const auto isThisOne = [used](std::string_view name) { return !name.empty() && isNameOf(name, used); };
    if (std::ranges::any_of(names, isThisOne)) return;
    const bool isNamed = !names.front().empty();
    // Bytes that are valid UTF-8 by chance are hardly more than ASCII, which every encoding has.
    const bool isGuess = origin == EncodingOrigin::guess && used != TextEncodingUTF8;
    if (!isGuess && (!isNamed || asciiPrefix(text) == text.size())) return;
    const std::string reading = "it is read as " + std::string(nameOfTextEncoding(used).value_or(""));
    if (!isNamed)
        return findings.add(FindingKind::encodingGuessed, FindingSeverity::note,
                            "The document does not name its text encoding; " + reading + ".");
    const bool isKnown = isUnicode(names.front()) || textEncodingNamed(names.front()) != TextEncodingNone;
    const bool mayBeWrong = isGuess && !isKnown;
    findings.add(FindingKind::encodingGuessed, mayBeWrong ? FindingSeverity::warning : FindingSeverity::note,
                 "The document names the text encoding " + opening::quoted(names.front()) +
                     (isKnown ? ", but its bytes are not in that encoding; " : ", which is not supported; ") +
                     reading + (mayBeWrong ? ", so letters beyond ASCII may be wrong." : "."));
}

}  // namespace brackwell::opening
