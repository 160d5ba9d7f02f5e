// SPDX-License-Identifier: Apache-2.0
#include "text/diff.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tool {
namespace {

using Changes = std::vector<brackwell::RepairChange>;
using Lines = std::vector<std::string_view>;

constexpr std::size_t kContext = 3;

/// The lines of a text with their line feeds.
Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

/// Lines that are replaced by others.
struct Block {
    std::size_t first;
    std::size_t end;  ///< after the last
    std::string now;
    std::size_t lineCount;  ///< of `now`
};

/// Groups the changes to blocks of whole lines.
class BlockMaker {
public:
    BlockMaker(std::string_view before, const Lines& lines) : before_(before), lines_(lines) {}

    std::vector<Block> make(const Changes& changes) {
        for (auto change = changes.begin(); change != changes.end();) {
            const std::size_t first = lineAt(change->offset);
            std::size_t copied = lineBegin_;
            std::string now;
            do {
                now.append(before_, copied, change->offset - copied).append(change->now);
                copied = change->offset + change->was.size();
                lineAt(copied);
                ++change;
            } while (change != changes.end() && isInLine(change->offset));
            now.append(before_, copied, lineBegin_ + lines_[line_].size() - copied);
            add({first, line_ + 1, std::move(now), 0});
        }
        return std::move(blocks_);
    }

private:
    /// Blocks without a line between them become one.
    void add(Block block) {
        block.lineCount = linesOf(block.now).size();
        if (blocks_.empty() || blocks_.back().end != block.first) return blocks_.push_back(std::move(block));
        blocks_.back().end = block.end;
        blocks_.back().now += block.now;
        blocks_.back().lineCount += block.lineCount;
    }

    /// True when a place, not before the last line asked for, is in that one.
    bool isInLine(std::size_t offset) const noexcept {
        return line_ + 1 == lines_.size() || offset < lineBegin_ + lines_[line_].size();
    }

    /// The line that a place, not before that of the last question, is in; the last at the end.
    std::size_t lineAt(std::size_t offset) noexcept {
        while (!isInLine(offset)) lineBegin_ += lines_[line_++].size();
        return line_;
    }

    std::string_view before_;
    const Lines& lines_;
    std::size_t line_ = 0;
    std::size_t lineBegin_ = 0;
    std::vector<Block> blocks_;
};

void addLine(std::string& diff, char sign, std::string_view line) {
    diff.append(1, sign).append(line);
    if (!line.ends_with('\n')) diff += "\n\\ No newline at end of file\n";
}

/// "LINE,COUNT", in which an empty range has the line before it.
std::string range(std::size_t first, std::size_t count) {
    return std::to_string(count == 0 ? first : first + 1) + "," + std::to_string(count);
}

}  // namespace

std::string unifiedDiff(std::string_view nameBefore, std::string_view nameAfter, std::string_view before,
                        const Changes& changes) {
    const Lines lines = linesOf(before);
    const std::vector<Block> blocks = BlockMaker(before, lines).make(changes);
    std::string diff;
    diff.append("--- ").append(nameBefore).append("\n+++ ").append(nameAfter).append("\n");
    std::size_t dropped = 0;  // lines of the blocks so far
    std::size_t added = 0;    // lines in their place
    for (auto block = blocks.begin(); block != blocks.end();) {
        std::size_t droppedHere = 0;
        std::size_t addedHere = 0;
        auto after = block;  // the blocks whose contexts touch
        do {
            droppedHere += after->end - after->first;
            addedHere += after->lineCount;
            ++after;
        } while (after != blocks.end() && after->first <= (after - 1)->end + 2 * kContext);
        std::size_t line = block->first - std::min(block->first, kContext);
        const std::size_t end = std::min((after - 1)->end + kContext, lines.size());
        diff.append("@@ -").append(range(line, end - line));
        diff.append(" +")
            .append(range(line + added - dropped, end - line + addedHere - droppedHere))
            .append(" @@\n");
        for (; block != after; ++block) {
            for (; line < block->first; ++line) addLine(diff, ' ', lines[line]);
            for (; line < block->end; ++line) addLine(diff, '-', lines[line]);
            for (const std::string_view now : linesOf(block->now)) addLine(diff, '+', now);
        }
        for (; line < end; ++line) addLine(diff, ' ', lines[line]);
        dropped += droppedHere;
        added += addedHere;
    }
    return diff;
}

}  // namespace tool
