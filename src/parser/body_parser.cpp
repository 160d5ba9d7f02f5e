// SPDX-License-Identifier: Apache-2.0
#include "parser/body_parser.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <memory>
#include <utility>

#include "parser/closing.h"
#include "parser/entities.h"
#include "parser/tag_search.h"
#include "tree/node_ref.h"
#include "tree/tree_writer.h"

namespace brackwell::reading {
namespace {

constexpr NameID kTransaction = element("STMTTRN");
constexpr NameID kOriginalString = element("TVOFX_ORIGINAL_STRING");
constexpr std::string_view kTransactionEnd = "</STMTTRN>";

/// A name that is open or pending, and its key.
struct Name {
    std::string_view text;
    NameKey key;

    /// True when a close tag of this name closes an element that was opened with that one.
    bool closes(const Name& open) const noexcept {
        return sameName(key, text, open.key, open.text) || closesWithoutPrefix(text, open.text);
    }
};

/// trimWhiteSpace, with the usual cases inline: nothing to trim, or a line break after the text.
std::string_view trimmed(std::string_view text) noexcept {
    const auto isPlain = [](char c) { return c > ' ' && c < '\x7F'; };
    if (!text.empty() && text.back() == '\n') text.remove_suffix(1);
    if (text.empty() || (isPlain(text.front()) && isPlain(text.back()))) return text;
    return trimWhiteSpace(text);
}

/// Guesses the name of the next tag: the one that followed this tag the last time. In a list of similar
/// aggregates the guess is usually right. A comparison costs less than a lookup, which saves 7 % of an
/// import's instructions, and the processor does not wait until the end of the name is found.
class ExpectedNames {
public:
    /// The known name, of fewer than 16 bytes, that stands here with a ">" after it, otherwise
    /// kKnownElementCount; 16 bytes can be read here.
    NameID find(const char* name) const noexcept {
        const ByteBlock block(name);
        const NameID expected = *expected_;
        if (beginsWithTag(block, expected)) return expected;
        const unsigned closes = block.equal('>');
        if (closes == 0) return kKnownElementCount;
        return findKnownElement(nameKeyOfShort(name, static_cast<unsigned>(std::countr_zero(closes))), {});
    }
    /// Records the tag, or the end of an aggregate, that was just read.
    void found(NameID id) noexcept {
        *expected_ = static_cast<std::uint16_t>(id);
        expected_ = &afterTag_[id];
    }
    void foundEnd(NameID id) noexcept { expected_ = &afterEnd_[id]; }

private:
    std::array<std::uint16_t, kKnownElementCount> afterTag_{};
    std::array<std::uint16_t, kKnownElementCount> afterEnd_{};
    std::uint16_t* expected_ = afterTag_.data();
};

/// One pass over a body. An element is a leaf when text follows its open tag, and an aggregate when
/// nothing does; its name stays pending until then, so leaves need no close tag.
class BodyParser {
public:
    BodyParser(Document& document, std::string_view body)
        : body_(body), writer_(document, body.size() / kBytesPerNode + 16) {}

    /// Where the close tag begins that matches nothing open; nothing when the body was read to its end.
    std::optional<std::size_t> parse() {
        std::size_t open = findOpen(body_, 0).position;
        while (open + 1 < body_.size()) {  // a "<" that is the last character ends the body, too
            if (readPlainTag(open)) continue;
            const std::size_t close = findClose(body_, open + 1);
            if (!readTag(trimmed(body_.substr(open + 1, close - open - 1)))) return open;
            if (close == body_.size()) break;
            endOriginalStrings(close);
            // A ">" that is the last character stays, and is read as text: intended.
            open = readText(close + 1 < body_.size() ? close + 1 : close);
        }
        writer_.finish();
        return std::nullopt;
    }

    /// What is wrong where parsing ended.
    BodyFailure failureAt(std::size_t open) const {
        BodyFailure failure;
        failure.close = placeOfTag(open);
        const std::size_t close = findClose(body_, open + 1);
        failure.text.append("Found close tag <")
            .append(trimmed(body_.substr(open + 1, close - open - 1)))
            .append("> without opening tag.");
        if (!writer_.hasOpen()) return failure;
        // Nothing but white space stands between a "<" and the name after it.
        failure.open = placeOfTag(body_.rfind('<', writer_.innermostNameBegin() - 1));
        failure.text.append("\nMaybe there is a close tag missing for <")
            .append(innermostName().text)
            .append(">");
        return failure;
    }

private:
    static constexpr NameID kNotYet = ~NameID{0};     ///< no name has this number
    static constexpr std::size_t kBytesPerNode = 16;  ///< as in OFX 1; memory that is too much is not touched

    /// Reads the text after a tag, which says what the pending element is; returns where it ends.
    std::size_t readText(std::size_t begin) {
        const TextEnd end = findOpen(body_, begin);
        const std::string_view text = trimmed(body_.substr(begin, end.position - begin));
        if (pending_.text.empty()) {
            if (!text.empty() && text != ">") noteLooseText(text);
            return end.position;
        }
        if (text.find('>') != text.npos) writer_.leftovers().hasOddText = true;
        const NameID name = pendingNumber();
        if (text.empty())
            openAggregate(name, end.position);
        else if (end.hasEntity)
            writer_.setOwnTextSize(unescape(text, writer_.ownLeaf(name, text.size())));
        else
            writer_.leaf(name, text);
        return end.position;
    }

    /// Looked up once for each tag: "<>" repeats the name of the tag before it, and many of them would read a
    /// long name again and again.
    NameID pendingNumber() {
        if (pendingNumber_ == kNotYet) pendingNumber_ = writer_.names().number(pending_.text, pending_.key);
        return pendingNumber_;
    }

    void openAggregate(NameID name, std::size_t position) {
        writer_.open(name, static_cast<std::uint32_t>(pending_.text.data() - body_.data()));
        setInnermost(name);
        if (name != kTransaction) return;
        // The source text of a transaction runs to the next end of one, wherever that stands, or to the
        // end of the body; the end is filled in when the parser gets there.
        const std::string_view rest = body_.substr(position);
        if (rest.empty() || rest.starts_with(kTransactionEnd)) return;
        originalStrings_.push({writer_.leaf(kOriginalString, rest), position});
    }

    /// Ends those that are open when the tag that ends at `close` is the end of a transaction.
    void endOriginalStrings(std::size_t close) noexcept {
        if (!originalStrings_.empty() && body_.substr(0, close + 1).ends_with(kTransactionEnd))
            setEndOfOriginalStrings(close + 1 - kTransactionEnd.size());
    }
    void setEndOfOriginalStrings(std::size_t end) noexcept {
        for (; !originalStrings_.empty(); originalStrings_.pop())
            writer_.setSliceSize(originalStrings_.back().leaf, end - originalStrings_.back().begin);
    }

    /// Reads in one step what nearly all of a document consists of: a tag with a known name of fewer than 16
    /// bytes, the text after it, and the leaf's close tag if that follows; or the close tag of the innermost
    /// aggregate. It does what the steps would do one by one, and saves a fifth of an import's instructions.
    /// Everything else is left to those steps: then it returns false and has changed nothing. Otherwise
    /// `open` is where the next tag begins.
    bool readPlainTag(std::size_t& open) {
        const char* const name = body_.data() + open + 1;
        if (open + 2 + ByteBlock::size > body_.size()) return false;
        if (*name == '/') return closePlainAggregate(open);
        const NameID id = names_.find(name);
        if (id == kKnownElementCount) return false;

        const unsigned size = kTagTexts[id].size;
        const std::size_t begin = open + size + 2;
        const std::size_t end = findMarkup(body_, begin);
        if (end + 2 + ByteBlock::size > body_.size() || body_[end] != '<') return false;
        const std::string_view text = trimmed({body_.data() + begin, end - begin});
        const char* const next = body_.data() + end + 1;
        if (text.empty() || *next != '/') {
            pending_ = {{name, size}, kKnownElements.keys[id]};
            pendingNumber_ = id;
            if (text.empty())
                openAggregate(id, end);
            else
                writer_.leaf(id, text);
            open = end;
        } else {
            const bool mayCloseMore = id == kTransaction || id == innermost_ || innermostIsExtension_;
            if (mayCloseMore || !beginsWithTag(ByteBlock(next + 1), id)) return false;
            writer_.leaf(id, text);
            if (!pending_.text.empty()) pending_ = {};
            open = nextOpen(end + size + 3);
        }
        names_.found(id);
        return true;
    }

    bool closePlainAggregate(std::size_t& open) noexcept {
        const NameID id = innermost_;
        if (id >= kKnownElementCount || !writer_.hasOpen()) return false;
        if (!beginsWithTag(ByteBlock(body_.data() + open + 2), id)) return false;
        if (id == kTransaction) setEndOfOriginalStrings(open);
        closeAggregate();
        names_.foundEnd(id);
        open = nextOpen(open + kTagTexts[id].size + 3);
        return true;
    }

    /// The next "<" after a close tag: usually there is only a line break before it.
    std::size_t nextOpen(std::size_t from) noexcept {
        if (from + 1 < body_.size() && body_[from] == '\n' && body_[from + 1] == '<') return from + 1;
        const std::size_t ink = findInk(body_, from);
        if (ink == body_.size() || body_[ink] == '<') return ink;
        const std::size_t open = findOpen(body_, ink).position;
        if (const std::string_view text = trimmed(body_.substr(ink, open - ink)); !text.empty())
            noteLooseText(text);
        return open;
    }

    /// Text that no element takes. What is before and after all elements is not part of the document.
    void noteLooseText(std::string_view text) noexcept {
        if (!writer_.hasOpen()) return;
        Leftovers& leftovers = writer_.leftovers();
        if (leftovers.looseTexts++ == 0)
            leftovers.firstLooseText = static_cast<std::uint32_t>(text.data() - body_.data());
    }

    Name nameInBody(std::string_view name) const noexcept {
        const auto readable = static_cast<std::size_t>(body_.data() + body_.size() - name.data());
        return {name, readable >= kKeyedBytes ? nameKeyOfReadable(name.data(), name.size()) : nameKey(name)};
    }

    Name innermostName() const noexcept {
        return {writer_.names().name(innermost_), writer_.names().key(innermost_)};
    }

    void setInnermost(NameID id) noexcept {
        innermost_ = id;
        innermostIsExtension_ = writer_.names().name(id).starts_with(kExtensionPrefix);
    }

    /// False for a close tag that matches nothing open.
    bool readTag(std::string_view name) {
        if (name.empty()) return true;
        if (name.front() != '/') {
            pending_ = nameInBody(name);
            pendingNumber_ = kNotYet;
            return true;
        }
        const Name closed = nameInBody(name.substr(1));
        if (writer_.hasOpen() && closed.closes(innermostName())) {
            closeAggregate();
            return true;
        }
        if (!closed.closes(pending_)) return false;
        pending_ = {};
        return true;
    }

    void closeAggregate() noexcept {
        writer_.close();
        setInnermost(writer_.innermostName());
        pending_ = {};
    }

    TagPlace placeOfTag(std::size_t open) const noexcept {
        return {open, std::min(findClose(body_, open + 1) + 1, body_.size())};
    }

    struct OriginalString {
        std::uint32_t leaf;
        std::size_t begin;
    };

    std::string_view body_;
    TreeWriter writer_;
    ExpectedNames names_;
    Name pending_;  ///< opened, leaf or aggregate not yet known; empty: none
    NameID pendingNumber_ = kNotYet;
    NameID innermost_ = 0;  ///< of the innermost open aggregate, if one is open
    bool innermostIsExtension_ = false;
    PodVector<OriginalString> originalStrings_;  ///< those whose end has not been reached
};

}  // namespace

std::optional<ParseDictionary> parseBody(const Data& source, std::string_view body, BodyFailure* failure) {
    auto document = std::make_shared<Document>(source, body);
    BodyParser parser(*document, body);
    const std::optional<std::size_t> end = parser.parse();
    if (!end) return NodeRef::root(std::move(document));
    if (failure != nullptr) *failure = parser.failureAt(*end);
    return std::nullopt;
}

}  // namespace brackwell::reading
