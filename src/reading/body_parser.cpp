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

/// trimWhiteSpace, with the usual cases inline: nothing to trim, or a line break behind the text.
std::string_view trimmed(std::string_view text) noexcept {
    const auto isPlain = [](char c) { return c > ' ' && c < '\x7F'; };
    while (!text.empty() && text.back() == '\n') text.remove_suffix(1);
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
            if (readClosedLeaf(open, textBegin)) continue;
            const std::size_t close = scanner_.nextClose();
            if (!readTag(trimmed(body_.substr(open + 1, close - open - 1)))) return false;
            if (close == body_.size()) break;
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
        setInnermost(pending_);
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

    /// Reads a whole leaf of the plainest kind, a known name, a text without entity, the close tag, at
    /// once, which saves half of the work; nearly all of an OFX 2 document is such leaves. It gives what
    /// the steps would give one by one; whatever is not so plain is left to them.
    bool readClosedLeaf(std::size_t open, std::size_t& textBegin) {
        const std::uint32_t* markup = scanner_.ahead(3);
        if (markup == nullptr) return false;
        const std::size_t nameEnd = markup[0];
        const std::size_t textEnd = markup[1];
        const std::size_t end = markup[2];
        const std::size_t size = nameEnd - open - 1;
        if (size > kKeyedBytes || end - textEnd != size + 2) return false;
        if (body_.size() - textEnd < kKeyedBytes + 3) return false;
        const char* body = body_.data();
        if (body[nameEnd] != '>' || body[textEnd] != '<' || body[textEnd + 1] != '/' || body[end] != '>')
            return false;
        const NameKey key = nameKeyOfReadable(body + open + 1, size);
        if (nameKeyOfReadable(body + textEnd + 2, size) != key) return false;
        const NameID name = findKnownElement(key, {});
        if (name == kKnownElementCount || name == kTransaction) return false;
        if (key == innermost_.key || innermostIsExtension_) return false;  // it may close the aggregate
        const std::string_view text = trimmed(body_.substr(nameEnd + 1, textEnd - nameEnd - 1));
        if (text.empty()) return false;
        writer_.leaf(name, text);
        pending_ = {};
        scanner_.skip(3);
        textBegin = end + 1;
        return true;
    }

    Name nameInBody(std::string_view name) const noexcept {
        const auto readable = static_cast<std::size_t>(body_.data() + body_.size() - name.data());
        return {name, readable >= kKeyedBytes ? nameKeyOfReadable(name.data(), name.size()) : nameKey(name)};
    }

    void setInnermost(const Name& name) noexcept {
        innermost_ = name;
        innermostIsExtension_ = name.text.starts_with(kExtensionPrefix);
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
            setInnermost({outer, nameKey(outer)});
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
    Name pending_;    ///< opened, leaf or aggregate not yet known; empty: none
    Name innermost_;  ///< of the innermost open aggregate, if one is open
    bool innermostIsExtension_ = false;
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
