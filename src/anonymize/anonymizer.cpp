// SPDX-License-Identifier: Apache-2.0
#include <brackwell/anonymize.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "anonymize/date_mover.h"
#include "anonymize/document_walk.h"
#include "anonymize/replacement.h"
#include "anonymize/value_kind.h"
#include "elements/header_fields.h"
#include "text/ascii_case.h"
#include "text/ascii_digit.h"
#include "text/byte_order_marks.h"
#include "text/utf8.h"

namespace brackwell {
namespace {

using namespace anonymizing;
using elements::Element;

// ---------------------------------------------------------------------------------------------
// Names

/// What an XML declaration has.
constexpr std::string_view kXMLFields[] = {"version", "encoding", "standalone"};

class UnknownNames {
public:
    void add(std::string_view name) {
        if (const auto found = positions_.find(name); found != positions_.end()) {
            ++names_[found->second].count;
        } else if (names_.size() < kMost) {
            positions_.emplace(name, names_.size());
            names_.push_back({std::string(name), 1});
        }
    }
    std::vector<UnknownElements> take() && noexcept { return std::move(names_); }

private:
    static constexpr std::size_t kMost = 20;
    std::unordered_map<std::string_view, std::size_t> positions_;  ///< of texts of the document
    std::vector<UnknownElements> names_;
};

// ---------------------------------------------------------------------------------------------
// Documents

/// Shows the dates of a text to a mover.
class DateCollector final : public PartVisitor {
public:
    explicit DateCollector(DateMover& mover) : mover_(mover) {}
    void onMarkup(std::string_view) override {}
    void onName(std::string_view, Element, bool) override {}
    void onValue(std::string_view text, Element element) override {
        if (kindOf(element) == ValueKind::date) mover_.add(trimWhiteSpace(text));
    }
    void onHeaderValue(std::string_view, std::string_view) override {}
    void onOtherText(std::string_view) override {}

private:
    DateMover& mover_;
};

/// Writes the anonymous form of a text.
class Writer final : public PartVisitor {
public:
    Writer(const Replacement& replacement, const DateMover& mover, bool replacesInstitution, std::size_t size)
        : replacement_(replacement), mover_(mover), replacesInstitution_(replacesInstitution) {
        text_.reserve(size);
    }

    void onMarkup(std::string_view text) override { text_ += text; }
    void onName(std::string_view name, Element element, bool isClose) override {
        if (element == elements::kUnknown && !looksLikeElement(name)) return writeWords(name);
        text_ += name;
        if (element == elements::kUnknown && !isClose) unknown_.add(name);
    }
    void onValue(std::string_view text, Element element) override {
        const std::string_view value = trimWhiteSpace(text);
        if (value.empty()) return onMarkup(text);
        switch (kindOf(element)) {
            case ValueKind::institution:
                return replacesInstitution_ ? writeWords(text) : onMarkup(text);
            case ValueKind::code:
                return looksLikeCode(value) ? onMarkup(text) : writeWords(text);
            case ValueKind::date:
                return looksLikeDate(value) ? writeDate(text, value) : writeWords(text);
            case ValueKind::time:
                return looksLikeDate(value) ? onMarkup(text) : writeWords(text);
            case ValueKind::amount:
                return replace(text, &Replacement::appendAmount);
            case ValueKind::text:
                return writeWords(text);
        }
    }
    void onHeaderValue(std::string_view field, std::string_view text) override {
        const bool isIdentifier = field.ends_with("FILEUID") && text != "NONE";
        const auto isField = [field](std::string_view name) { return equalsIgnoringCase(field, name); };
        const bool isKnown =
            std::ranges::any_of(elements::kHeaderFields, isField) || std::ranges::any_of(kXMLFields, isField);
        return isIdentifier || !isKnown ? writeWords(text) : onMarkup(text);
    }
    void onOtherText(std::string_view text) override { writeWords(text); }

    /// The document with its text in place of its bytes.
    AnonymizedDocument finish() && {
        return {Data::adopt(std::move(text_)), replaced_, std::move(unknown_).take(), unmovedDates_};
    }

private:
    void writeWords(std::string_view text) { replace(text, &Replacement::appendWords); }
    void replace(std::string_view text, void (Replacement::*append)(std::string&, std::string_view) const) {
        const std::size_t before = text_.size();
        (replacement_.*append)(text_, text);
        if (std::string_view(text_).substr(before) != text) ++replaced_;
    }
    void writeDate(std::string_view text, std::string_view value) {
        if (!mover_.moves()) return onMarkup(text);
        const std::optional<std::string> moved = mover_.moved(value);
        if (!moved) {
            const bool isDate = value.find_first_of("123456789") != value.npos;
            if (isDate) ++unmovedDates_;
            return onMarkup(text);
        }
        const auto begin = static_cast<std::size_t>(value.data() - text.data());
        text_.append(text.substr(0, begin)).append(*moved).append(text.substr(begin + moved->size()));
        ++replaced_;
    }

    const Replacement& replacement_;
    const DateMover& mover_;
    bool replacesInstitution_;
    std::string text_;
    std::size_t replaced_ = 0;
    std::size_t unmovedDates_ = 0;
    UnknownNames unknown_;
};

/// The bytes that the characters of an encoding consist of at least, and in multiples of.
std::size_t unitOf(TextEncoding encoding) noexcept {
    for (const WideEncoding& wide : kWideEncodings)
        if (textEncodingNamed(wide.name) == encoding) return wide.unit;
    return 1;
}

/// The mark that a document begins with; "" when it has none.
std::string_view markOf(std::string_view bytes) noexcept {
    for (const WideEncoding& wide : kWideEncodings)
        if (bytes.starts_with(wide.mark)) return wide.mark;
    return bytes.starts_with(kUTF8Mark) ? kUTF8Mark : std::string_view();
}

/// The encodings that a document may be in, the most likely one first. Every byte is a character of the last.
std::vector<TextEncoding> candidatesFor(std::string_view bytes, TextEncoding given) {
    std::vector<TextEncoding> candidates;
    for (const WideEncoding& wide : kWideEncodings)
        if (bytes.starts_with(wide.mark)) candidates.push_back(textEncodingNamed(wide.name));
    if (given != TextEncodingNone) candidates.push_back(given);
    const bool isWide = bytes.substr(0, 64).find('\0') != bytes.npos;
    if (!isWide) candidates.push_back(TextEncodingUTF8);
    if (isWide)
        for (const WideEncoding& wide : kWideEncodings) candidates.push_back(textEncodingNamed(wide.name));
    candidates.push_back(TextEncodingISOLatin1);
    return candidates;
}

/// True for the encodings that bytes are in, or are taken for, whatever their text is.
bool takesAnything(TextEncoding encoding) noexcept {
    return encoding == TextEncodingUTF8 || encoding == TextEncodingISOLatin1;
}

/// True when the text gives these very bytes in the encoding.
bool encodesTo(std::string_view text, TextEncoding encoding, std::string_view bytes) {
    const std::optional<Data> encoded = encodeText(text, encoding);
    return encoded && encoded->bytes() == bytes;
}

/// False for bytes of another encoding, which nearly always give zero characters, or none of ASCII.
bool isPlausible(std::string_view text) noexcept {
    return text.find('\0') == text.npos && (text.empty() || asciiPrefix(text.substr(0, 1)) == 1);
}

}  // namespace

struct Anonymizer::State {
    AnonymizeOptions options;
    ShapeCipher cipher;

    /// Nothing when the encoding does not make these bytes of their text, or the result is not as long.
    std::optional<AnonymizedDocument> anonymize(const Data& bytes, std::string_view mark,
                                                TextEncoding encoding) const {
        const std::size_t size = bytes.size() - mark.size();
        const std::size_t tail = size % unitOf(encoding);  // of a document that is cut off
        const Data body = bytes.slice(mark.size(), size - tail);
        // A document may be large: each of its forms is given back as soon as the next one is made.
        std::optional<Data> text = decodeText(body, encoding);
        if (!text || (!takesAnything(encoding) && !isPlausible(text->bytes()))) return std::nullopt;
        if (!encodesTo(text->bytes(), encoding, body.bytes())) return std::nullopt;
        AnonymizedDocument document = anonymizeText(text->bytes());
        text.reset();
        std::optional<Data> encoded = encodeText(document.bytes.bytes(), encoding);
        document.bytes = {};
        if (!encoded || encoded->size() != body.size()) return std::nullopt;
        const std::string_view end = bytes.bytes().substr(bytes.size() - tail);
        document.bytes = mark.empty() && end.empty()
                             ? std::move(*encoded)
                             : Data::adopt(std::string(mark).append(encoded->bytes()).append(end));
        return document;
    }

private:
    /// The anonymous form in UTF-8.
    AnonymizedDocument anonymizeText(std::string_view text) const {
        const Letters letters(text);
        const Replacement replacement(cipher, letters);
        DateMover mover(options.shiftDays);
        DateCollector collector(mover);
        if (mover.moves()) walkThrough(text, collector);
        Writer writer(replacement, mover, options.institution, text.size());
        walkThrough(text, writer);
        return std::move(writer).finish();
    }
};

Anonymizer::Anonymizer(AnonymizeOptions options)
    : state_(std::make_shared<const State>(State{options, {}})) {}

AnonymizedDocument Anonymizer::anonymize(const Data& bytes, TextEncoding encoding) const {
    const std::string_view mark = markOf(bytes.bytes());
    for (const TextEncoding candidate : candidatesFor(bytes.bytes(), encoding))
        if (auto document = state_->anonymize(bytes, mark, candidate)) return *std::move(document);
    return {};
}

}  // namespace brackwell
