// SPDX-License-Identifier: Apache-2.0
#include "input/excerpt.h"

#include <algorithm>

#include "text/characters.h"
#include "text/display_width.h"
#include "text/mask.h"
#include "text/visible_text.h"

namespace tool {
namespace {

using brackwell::TextRange;

constexpr std::string_view kLineEnds = "\r\n";

bool isLeadByte(char c) noexcept { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

std::size_t lineBegin(std::string_view text, std::size_t place) noexcept {
    const std::size_t end = place == 0 ? text.npos : text.find_last_of(kLineEnds, place - 1);
    return end == text.npos ? 0 : end + 1;
}

std::size_t lineEnd(std::string_view text, std::size_t place) noexcept {
    return std::min(text.find_first_of(kLineEnds, place), text.size());
}

/// Where the line before one begins.
std::size_t previousLine(std::string_view text, std::size_t begin) noexcept {
    const bool endsInTwo = begin >= 2 && text.substr(begin - 2, 2) == "\r\n";
    return lineBegin(text, begin - (endsInTwo ? 2 : 1));
}

/// Where the line after an end begins.
std::size_t nextLine(std::string_view text, std::size_t end) noexcept {
    return std::min(end + (text.substr(end).starts_with("\r\n") ? 2 : 1), text.size());
}

/// One line as it is shown, no longer than it must be: what is far from the place is never looked at.
class ShownLine {
public:
    ShownLine(const ExcerptSource& source, TextRange line, std::size_t place, std::size_t width)
        : source_(source), line_(line), place_(place) {
        // The mark stands in the right half at most, so that what follows the place is seen as well.
        std::size_t begin = place;
        while (begin > line.begin && place - begin < width / 2) --begin;
        while (begin > line.begin && !isLeadByte(source.text[begin])) --begin;
        if (begin > line.begin) text_ = kEllipsis;
        addFrom(begin, 4 * width);
        mark_ = std::min(mark_, width - 1);
        text_ = clipped(text_, width);
    }

    const std::string& text() const noexcept { return text_; }
    /// The column under which the mark goes.
    std::size_t mark() const noexcept { return mark_; }

private:
    void addFrom(std::size_t begin, std::size_t longest) {
        const std::size_t end = std::min(line_.end, place_ + longest);
        for (std::size_t at = begin; at < end;) {
            const auto secret = std::ranges::upper_bound(source_.secrets, at, {}, &TextRange::end);
            const bool isSecret = secret != source_.secrets.end() && secret->begin <= at;
            const std::size_t pieceEnd = isSecret                          ? secret->end
                                         : secret == source_.secrets.end() ? end
                                                                           : secret->begin;
            addPiece({at, std::min(pieceEnd, end)}, isSecret);
            at = std::min(pieceEnd, end);
        }
        if (place_ >= end) mark_ = displayWidth(text_);
    }

    void addPiece(TextRange piece, bool isSecret) {
        const std::string_view bytes = source_.text.substr(piece.begin, piece.end - piece.begin);
        const bool hasPlace = place_ >= piece.begin && place_ < piece.end;
        if (hasPlace)
            mark_ = displayWidth(text_) +
                    (isSecret ? 0 : displayWidth(shown(bytes.substr(0, place_ - piece.begin))));
        text_ += isSecret ? std::string(kMask) : shown(bytes);
    }

    static std::string shown(std::string_view bytes) {
        std::string text = visibleLines(bytes);
        std::ranges::replace(text, '\t', ' ');
        return text;
    }

    const ExcerptSource& source_;
    TextRange line_;
    std::size_t place_;
    std::string text_;
    std::size_t mark_ = 0;
};

/// The number of a line, or nothing, in front of what is shown of it.
std::string margin(std::size_t number, std::size_t digits) {
    const std::string text = number == 0 ? "" : std::to_string(number);
    return "  " + std::string(digits - text.size(), ' ') + text + " | ";
}

}  // namespace

std::string excerpt(const ExcerptSource& source, std::size_t place, std::size_t linesBefore,
                    std::size_t linesAfter) {
    const std::size_t placeLine = brackwell::placeInText(source.text, place).line;
    const std::size_t digits = std::to_string(placeLine + linesAfter).size();
    const std::size_t width = std::max<std::size_t>(source.width, 20) - margin(0, digits).size();
    std::size_t begin = lineBegin(source.text, place);
    std::size_t line = placeLine;
    for (; linesBefore > 0 && begin > 0; --linesBefore, --line) begin = previousLine(source.text, begin);
    std::string lines;
    for (; line <= placeLine + linesAfter; ++line) {
        const std::size_t end = lineEnd(source.text, begin);
        const bool hasPlace = line == placeLine;
        const ShownLine shown(source, {begin, end}, hasPlace ? place : begin, width);
        lines += margin(line, digits) + shown.text() + "\n";
        if (hasPlace) lines += margin(0, digits) + std::string(shown.mark(), ' ') + "^\n";
        begin = nextLine(source.text, end);
        if (begin == source.text.size()) break;
    }
    return lines;
}

}  // namespace tool
