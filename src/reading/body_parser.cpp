// SPDX-License-Identifier: Apache-2.0
#include "reading/body_parser.h"

#include <cstring>

#include "reading/entities.h"
#include "reading/node_ref.h"
#include "reading/tag_scanner.h"
#include "reading/tree_writer.h"

namespace brackwell::reading {
namespace {

constexpr NameID kTransaction = element("STMTTRN");
constexpr NameID kOriginalString = element("TVOFX_ORIGINAL_STRING");
constexpr std::string_view kTransactionEnd = "</STMTTRN>";

/// The extension prefix that a close tag may leave out.
constexpr std::string_view kExtensionPrefix = "INTU.";

/// A name that is open or pending, and its key.
struct Name {
    std::string_view text;
    NameKey key;

    /// True when a close tag of this name closes an element that was opened with that one.
    bool closes(const Name& open) const noexcept {
        if (sameName(key, text, open.key, open.text)) return true;
        return open.text.size() == kExtensionPrefix.size() + text.size() &&
               open.text.starts_with(kExtensionPrefix) && open.text.ends_with(text);
    }
};

/// trimWhiteSpace, with the usual case, nothing to trim, inline.
std::string_view trimmed(std::string_view text) noexcept {
    const auto isPlain = [](char c) { return c > ' ' && c < '\x7F'; };
    if (!text.empty() && isPlain(text.front()) && isPlain(text.back())) return text;
    return trimWhiteSpace(text);
}

/// One pass over a body. An element is a leaf when text follows its open tag, and an aggregate when
/// nothing does; its name stays pending until then, so leaves need no close tag.
class BodyParser {
public:
    BodyParser(Document& document, std::string_view body)
        : body_(body), scanner_(body), writer_(document, body.size() / kBytesPerNode + 16) {}

    /// False when a close tag matches nothing open; failure() then says which.
    bool parse() {
        std::size_t textBegin = 0;
        for (;;) {
            bool sawAmpersand = false;
            const std::size_t open = scanner_.nextOpen(sawAmpersand);
            readText(textBegin, open, sawAmpersand);
            if (open + 1 >= body_.size()) break;  // a "<" that is the last character ends the body, too
            std::size_t close = open + 2 + pending_.text.size();
            if (isCloseOfPending(open)) {
                scanner_.skipTo(close);
                pending_ = {};
            } else {
                close = scanner_.nextClose();
                if (!readTag(trimmed(body_.substr(open + 1, close - open - 1)))) return false;
                if (close == body_.size()) break;
            }
            endOriginalStrings(close);
            // A ">" that is the last character stays, and is read as text: intended.
            textBegin = close + 1 < body_.size() ? close + 1 : close;
        }
        writer_.finish();
        return true;
    }

    std::string& failure() noexcept { return failure_; }

private:
    static constexpr std::size_t kBytesPerNode = 24;

    void readText(std::size_t begin, std::size_t end, bool sawAmpersand) {
        if (pending_.text.empty()) return;
        const std::string_view text = trimmed(body_.substr(begin, end - begin));
        const NameID name = writer_.names().number(pending_.text, pending_.key);
        if (text.empty())
            openAggregate(name, end);
        else if (sawAmpersand)
            writer_.setOwnTextSize(unescape(text, writer_.ownLeaf(name, text.size())));
        else
            writer_.leaf(name, text);
    }

    void openAggregate(NameID name, std::size_t position) {
        writer_.open(name);
        innermost_ = pending_;
        if (name != kTransaction) return;
        // The source text of a transaction runs to the next end of one, wherever that stands, or to the
        // end of the body; the end is filled in when the scanner comes by.
        const std::string_view rest = body_.substr(position);
        if (rest.empty() || rest.starts_with(kTransactionEnd)) return;
        originalStrings_.push({writer_.leaf(kOriginalString, rest), position});
    }

    void endOriginalStrings(std::size_t close) noexcept {
        if (originalStrings_.empty() || !body_.substr(0, close + 1).ends_with(kTransactionEnd)) return;
        const std::size_t end = close + 1 - kTransactionEnd.size();
        for (; !originalStrings_.empty(); originalStrings_.pop())
            writer_.setSliceSize(originalStrings_.back().leaf, end - originalStrings_.back().begin);
    }

    /// True when exactly the close tag of the pending element stands at a position. That is how a leaf
    /// with a close tag ends, and saves looking for the tag's end and at its name.
    bool isCloseOfPending(std::size_t open) const noexcept {
        const std::size_t size = pending_.key.size;
        if (size == 0 || size > kKeyedBytes || body_.size() - open < kKeyedBytes + 3) return false;
        const char* tag = body_.data() + open;
        return tag[1] == '/' && tag[2 + size] == '>' && nameKeyOfReadable(tag + 2, size) == pending_.key &&
               !(writer_.hasOpen() && pending_.key == innermost_.key);
    }

    Name nameInBody(std::string_view name) const noexcept {
        const auto readable = static_cast<std::size_t>(body_.data() + body_.size() - name.data());
        return {name, readable >= kKeyedBytes ? nameKeyOfReadable(name.data(), name.size()) : nameKey(name)};
    }

    bool readTag(std::string_view name) {
        if (name.empty()) return true;
        if (name.front() != '/') {
            pending_ = nameInBody(name);
            return true;
        }
        const Name closed = nameInBody(name.substr(1));
        if (writer_.hasOpen() && closed.closes(innermost_)) {
            writer_.close();
            const std::string_view outer = writer_.names().name(writer_.innermostName());
            innermost_ = {outer, nameKey(outer)};
        } else if (!closed.closes(pending_)) {
            fail(name);
            return false;
        }
        pending_ = {};
        return true;
    }

    void fail(std::string_view closeTag) {
        failure_.append("Found close tag <").append(closeTag).append("> without opening tag.");
        if (writer_.hasOpen())
            failure_.append("\nMaybe there is a close tag missing for <").append(innermost_.text).append(">");
    }

    struct OriginalString {
        std::uint32_t leaf;
        std::size_t begin;
    };

    std::string_view body_;
    TagScanner scanner_;
    TreeWriter writer_;
    Name pending_;                               ///< opened, leaf or aggregate not yet known; empty: none
    Name innermost_;                             ///< of the innermost open aggregate, if one is open
    PodVector<OriginalString> originalStrings_;  ///< those whose end has not come by
    std::string failure_;
};

}  // namespace

std::optional<ParseDictionary> parseBody(const Data& source, std::string_view body, std::string* failure) {
    auto document = std::make_shared<Document>(source, body);
    BodyParser parser(*document, body);
    if (parser.parse()) return NodeRef::root(std::move(document));
    if (failure != nullptr) *failure = std::move(parser.failure());
    return std::nullopt;
}

}  // namespace brackwell::reading
