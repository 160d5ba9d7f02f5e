// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// From bytes to a parse tree: the import operations, the parser with its header recognition, and
/// the parse dictionaries of which a tree is made.
///
///     brackwell::Error error;
///     auto message = brackwell::TovanaOFXController::importOFXFileFromURL("july.ofx", &error);
///     if (!message) std::cerr << error.description << '\n';
///
/// The road: TovanaOFXController hands the bytes to a TvOFXParser, which finds the text encoding,
/// reads the header and parses the body into a TvOFXParserResult; a TvOFXMessage (model.h) makes
/// objects of it.
///
/// Memory: the decoded text of a document is kept once. A tree, and all that is read from it,
/// refers to it and shares its ownership, so any part of a tree keeps the whole text alive.
/// Documents whose decoded body reaches 2 GiB are treated like exhausted memory (std::bad_alloc).

#include <brackwell/platform.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brackwell {

class ParseDictionary;
class TvOFXMessage;

namespace reading {
class Document;
struct NodeRef;
}  // namespace reading

// ---------------------------------------------------------------------------------------------
// The parse tree

/// One value of a parse tree: a text (leaf element), a dictionary (aggregate or empty element), an
/// array (a name that is repeated among the children of one aggregate) or nothing. Asking a value
/// for what it is not answers nothing, so a path can be followed without testing each step:
///
///     auto code = tree["OFX"]["SIGNONMSGSRSV1"]["SONRS"]["STATUS"]["CODE"].text();
class BRACKWELL_EXPORT ParseValue {
public:
    /// What a value is.
    enum class Kind : std::uint8_t {
        nothing,     ///< no value
        text,        ///< a leaf element
        dictionary,  ///< an aggregate, or an element without content
        array,       ///< a name that occurs several times in one aggregate
    };

    ParseValue() noexcept = default;
    /// @{
    /// A text, which is copied, or a dictionary, which is shared.
    ParseValue(std::string_view text);  // NOLINT(google-explicit-constructor): for literals
    ParseValue(const char* text) : ParseValue() {
        if (text != nullptr) *this = ParseValue(std::string_view(text));
    }
    ParseValue(const std::string& text) : ParseValue(std::string_view(text)) {}
    ParseValue(const ParseDictionary& dictionary);
    /// @}
    /// Nothing, as any null `const char*` is. The number 0 is no value, and does not compile.
    ParseValue(std::nullptr_t) noexcept {}  // NOLINT(google-explicit-constructor): like a literal

    /// @{
    /// An array of texts and dictionaries. One value stays itself, since a name that occurs once is never
    /// wrapped in an array, and no value is nothing.
    static ParseValue array(std::initializer_list<ParseValue> elements);
    static ParseValue array(const std::vector<ParseValue>& elements);
    /// @}

    Kind kind() const noexcept;                                          ///< what the value is
    bool isNothing() const noexcept { return kind() == Kind::nothing; }  ///< true for no value

    /// The text, valid as long as any value of the same tree; nothing when this is no text.
    OptionalText text() const noexcept;
    /// The dictionary; nothing when this is none.
    std::optional<ParseDictionary> dictionary() const;
    /// The elements in document order; empty when this is no array.
    std::vector<ParseValue> elements() const;

    /// The value under a name when this is a dictionary; otherwise nothing.
    ParseValue operator[](std::string_view name) const;

    /// Equal kinds with equal contents; for dictionaries see there.
    friend BRACKWELL_EXPORT bool operator==(const ParseValue& a, const ParseValue& b);

private:
    friend class ParseDictionary;
    friend struct reading::NodeRef;
    ParseValue(std::shared_ptr<const reading::Document> document, std::uint32_t node, bool single) noexcept
        : document_(std::move(document)), node_(node), single_(single) {}

    std::shared_ptr<const reading::Document> document_;  ///< null: nothing
    std::uint32_t node_ = 0;
    bool single_ = false;  ///< one element of a repeated name, not all of them
};

/// An aggregate of a parse tree: element names with their values, in the order in which each name
/// first appeared. A value type: a copy costs a reference count and shares the document. It cannot
/// be changed; code builds one in an expression, or step by step with a ParseDictionaryBuilder:
///
///     ParseDictionary status{{"CODE", "0"}, {"SEVERITY", "INFO"}};
///     ParseDictionary node{{"STATUS", status}, {"NAME", ParseValue::array({"A", "B"})}};
///
/// The order in which unlike elements alternate is not that of its entries, since a repeated name is one
/// entry: BUYSTOCK, SELLSTOCK, BUYSTOCK are an array and a dictionary. inDocumentOrder() has it.
class BRACKWELL_EXPORT ParseDictionary {
public:
    using Entry = std::pair<std::string_view, ParseValue>;  ///< a name and its value

    /// No entries.
    ParseDictionary() noexcept = default;
    /// The entries in their order; copies them. A name given twice becomes an array, as in a
    /// document; entries whose value is nothing are left out.
    ParseDictionary(std::initializer_list<Entry> entries);

    /// How many names it holds.
    std::size_t size() const noexcept;
    bool isEmpty() const noexcept { return size() == 0; }  ///< true when it holds no name
    /// The value under a name, compared exactly; nothing when there is none. Takes time in
    /// proportion to the number of entries; to read many names, walk.
    ParseValue operator[](std::string_view name) const noexcept;

    /// Walks the entries: `for (auto [name, value] : dictionary)`. Names are valid as long as any
    /// value of the tree.
    class BRACKWELL_EXPORT Iterator {
    public:
        /// @{
        /// An input iterator: what it points at is made when asked for.
        using iterator_category = std::input_iterator_tag;
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Entry;

        Iterator() noexcept = default;
        Entry operator*() const;
        Iterator& operator++() noexcept;
        Iterator operator++(int) noexcept;
        bool operator==(const Iterator& other) const noexcept { return node_ == other.node_; }
        /// @}

    private:
        friend class ParseDictionary;
        Iterator(std::shared_ptr<const reading::Document> document, std::uint32_t node,
                 std::uint32_t end) noexcept
            : document_(std::move(document)), node_(node), end_(end) {}
        std::shared_ptr<const reading::Document> document_;  ///< shared: the dictionary may be a temporary
        std::uint32_t node_ = 0;
        std::uint32_t end_ = 0;
    };
    /// @{
    /// The entries, in the order in which each name first appeared.
    Iterator begin() const noexcept;
    Iterator end() const noexcept;
    /// @}

    class DocumentOrder;
    /// Walks the elements one by one, as they stand in the document, or as they were added in code. A
    /// repeated name comes as often as it stands there, each time with one text or dictionary, never an
    /// array:
    ///
    ///     for (auto [name, value] : tree.inDocumentOrder()) std::cout << name << '\n';
    ///
    /// What it hands out is valid as long as that of begin(); nothing is copied or allocated.
    DocumentOrder inDocumentOrder() const noexcept;

    /// Equal names with equal values, whatever their order.
    friend BRACKWELL_EXPORT bool operator==(const ParseDictionary& a, const ParseDictionary& b);

private:
    friend class ParseValue;
    friend struct reading::NodeRef;
    ParseDictionary(std::shared_ptr<const reading::Document> document, std::uint32_t node) noexcept
        : document_(std::move(document)), node_(node) {}

    std::shared_ptr<const reading::Document> document_;  ///< null: no entries
    std::uint32_t node_ = 0;
};

/// The elements of a parse dictionary in document order, one entry for each of them. It shares the tree,
/// so the dictionary that it came from may be a temporary.
class BRACKWELL_EXPORT ParseDictionary::DocumentOrder {
public:
    /// Walks the elements.
    class BRACKWELL_EXPORT Iterator {
    public:
        /// @{
        /// An input iterator: what it points at is made when asked for.
        using iterator_category = std::input_iterator_tag;
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Entry;

        Iterator() noexcept = default;
        Entry operator*() const;
        Iterator& operator++() noexcept;
        Iterator operator++(int) noexcept;
        bool operator==(const Iterator& other) const noexcept { return node_ == other.node_; }
        /// @}

    private:
        friend class DocumentOrder;
        Iterator(std::shared_ptr<const reading::Document> document, std::uint32_t node) noexcept
            : document_(std::move(document)), node_(node) {}
        std::shared_ptr<const reading::Document> document_;  ///< shared: the walk may be a temporary
        std::uint32_t node_ = 0;
    };
    /// @{
    /// The elements as they stand in the document.
    Iterator begin() const noexcept;
    Iterator end() const noexcept;
    /// @}

private:
    friend class ParseDictionary;
    DocumentOrder(std::shared_ptr<const reading::Document> document, std::uint32_t node) noexcept
        : document_(std::move(document)), node_(node) {}

    std::shared_ptr<const reading::Document> document_;  ///< null: no elements
    std::uint32_t node_ = 0;
};

/// Builds a parse dictionary of any size and depth in linear time. When memory is exhausted, what has been
/// added is lost: the builder is empty then.
class BRACKWELL_EXPORT ParseDictionaryBuilder {
public:
    /// @{
    /// Begins with an empty dictionary; so does one that was moved from.
    ParseDictionaryBuilder();
    ParseDictionaryBuilder(ParseDictionaryBuilder&&) noexcept;
    ParseDictionaryBuilder& operator=(ParseDictionaryBuilder&&) noexcept;
    ~ParseDictionaryBuilder();
    /// @}

    /// Adds a leaf to the aggregate that is open; its texts are copied.
    void leaf(std::string_view name, std::string_view text);
    /// Opens an aggregate inside the one that is open.
    void open(std::string_view name);
    /// Closes the innermost open aggregate; does nothing when none is open.
    void close();
    /// Adds a copy of a value under a name.
    void value(std::string_view name, const ParseValue& value);
    /// Closes what is open and returns the dictionary; the builder is empty again.
    ParseDictionary finish();

private:
    struct State;
    template <class Step>
    void add(Step step);
    std::unique_ptr<State> state_;  ///< null: nothing has been added
};

// ---------------------------------------------------------------------------------------------
// The parser

/// What the parser makes of a document.
struct TvOFXParserResult {
    /// Header names and their values, all texts; absent when the document has no header.
    std::optional<ParseDictionary> ofxHeader{};
    /// The root of the parse tree; absent when the document is not OFX.
    std::optional<ParseDictionary> ofxData{};
};

/// Turns the bytes of one document into a header and a parse tree: removes a byte order mark, finds
/// the text encoding, recognises the kind of header and parses the body.
class BRACKWELL_EXPORT TvOFXParser {
public:
    /// @{
    /// A parser of one document; nothing is read yet. Bytes of a view must outlive the parser.
    static std::shared_ptr<TvOFXParser> initWithData(std::optional<Data> data);
    explicit TvOFXParser(std::optional<Data> data) noexcept : data_(std::move(data)) {}
    /// @}

    /// The document; without its byte order mark once parseWithError has recognised one.
    const std::optional<Data>& data() const noexcept { return data_; }

    /// The encoding that the caller preset, or that parsing chose; 0 before, and after a failure to
    /// decode.
    TextEncoding stringEncoding() const noexcept { return stringEncoding_; }
    /// Presets the encoding; 0 lets the parser try UTF-8, UTF-16 and ASCII.
    void setStringEncoding(TextEncoding encoding) noexcept { stringEncoding_ = encoding; }

    /// Parses the document. Text that does not begin like OFX gives a result without header and data.
    /// Null with an error when there is no data, the text cannot be decoded, or the body has a close
    /// tag that matches nothing open. Without an error place, a body error gives a result without
    /// data instead.
    std::shared_ptr<TvOFXParserResult> parseWithError(Error* error = nullptr);

    /// True when the text, white space at its ends aside, begins with "<?xml", "<?XML", "OFXHEADER:",
    /// "<OFX>" or "<?OFX".
    static bool stringHasValidOfxHeaderPrefix(std::string_view text) noexcept;

    /// Reads the declaration and the "<?OFX" instruction of a version 2 document into `header` and
    /// returns where the body begins: the end of the text when there is no such instruction, 0 when
    /// the text is empty or `header` is null.
    static std::size_t parseXmlHeader(std::string_view text, ParseDictionary* header);

    /// Reads the colon lines before "<OFX>" of a version 1 document. Lines with another number of
    /// colons than one are ignored; a later line replaces an earlier one of the same name.
    static ParseDictionary parseSGMLHeader(std::string_view text);

    /// The tree of data that has no header and is UTF-8; nothing when it is empty or does not parse.
    std::optional<ParseDictionary> parseDataAndIgnoreOfxHeader() const;

    /// The tree of a body; nothing with an error when a close tag matches nothing open.
    static std::optional<ParseDictionary> parseOFXDataString(std::string_view body, Error* error = nullptr);

    /// The text with "&lt;", "&gt;" and "&amp;" replaced; no other entity is known. Nothing for nothing.
    static std::optional<std::string> unescapeCharactersInOFXSGMLFormattedString(TextArgument text);

private:
    BRACKWELL_INTERNAL std::shared_ptr<TvOFXParserResult> parse(Error* error);
    BRACKWELL_INTERNAL std::optional<Data> decode();

    std::optional<Data> data_;
    TextEncoding stringEncoding_ = TextEncodingNone;
};

// ---------------------------------------------------------------------------------------------
// Import

/// A std::filesystem::path, told by what it has, as its header takes long to compile. Whatever its own
/// characters are, it has a name of bytes: in UTF-8 where they are wide, the same bytes elsewhere.
template <class Path>
concept FilePath = requires(const Path& path) {
    path.native();
    { path.u8string() } -> std::same_as<std::u8string>;
};

/// The front door: a document's bytes in, a message out. Holds no state; every call is independent.
class BRACKWELL_EXPORT TovanaOFXController {
public:
    /// Reads the whole file and imports it. A URL is a path or a "file:" URL. Null without an error
    /// when there is no URL; null with an error when the file cannot be read or does not import.
    static std::shared_ptr<TvOFXMessage> importOFXFileFromURL(TextArgument url, Error* error = nullptr);

    /// The same with a preset text encoding (TextEncodingNone: find it out) and the caller's formatters
    /// (null: none), which are tried before the built-in formats in statements and their transactions. A bare
    /// 0 after the URL could also be an error place, and does not compile.
    static std::shared_ptr<TvOFXMessage> importOFXFileFromURL(
        TextArgument url, TextEncoding encoding,
        std::shared_ptr<const NumberFormatter> numberFormatter = nullptr,
        std::shared_ptr<const DateFormatter> dateFormatter = nullptr, Error* error = nullptr);

    /// @{
    /// The same two for a std::filesystem::path, which is never taken for a URL.
    template <FilePath Path>
    static std::shared_ptr<TvOFXMessage> importOFXFileFromURL(const Path& path, Error* error = nullptr) {
        return importFile(bytesOf(path), TextEncodingNone, nullptr, nullptr, error);
    }
    template <FilePath Path>
    static std::shared_ptr<TvOFXMessage> importOFXFileFromURL(
        const Path& path, TextEncoding encoding,
        const std::shared_ptr<const NumberFormatter>& numberFormatter = nullptr,
        const std::shared_ptr<const DateFormatter>& dateFormatter = nullptr, Error* error = nullptr) {
        return importFile(bytesOf(path), encoding, numberFormatter, dateFormatter, error);
    }
    /// @}

    /// Imports the bytes of a document. Null without an error when there is no data; null with an
    /// error when it is empty, cannot be decoded or has a close tag that matches nothing open. Text
    /// that is not OFX gives a message without responses, and TvOFXMessage::content says so. The message
    /// refers to the bytes of `data` when they are UTF-8, and copies them when they are a view of the
    /// caller's.
    static std::shared_ptr<TvOFXMessage> importOFXFileFromData(const std::optional<Data>& data,
                                                               Error* error = nullptr);

    /// The same with a preset text encoding and the caller's formatters.
    static std::shared_ptr<TvOFXMessage> importOFXFileFromData(
        const std::optional<Data>& data, TextEncoding encoding,
        std::shared_ptr<const NumberFormatter> numberFormatter = nullptr,
        std::shared_ptr<const DateFormatter> dateFormatter = nullptr, Error* error = nullptr);

private:
    template <FilePath Path>
    static std::string bytesOf(const Path& path) {
        const std::u8string name = path.u8string();
        return {name.begin(), name.end()};
    }
    static std::shared_ptr<TvOFXMessage> importFile(const std::string& path, TextEncoding encoding,
                                                    std::shared_ptr<const NumberFormatter> numberFormatter,
                                                    std::shared_ptr<const DateFormatter> dateFormatter,
                                                    Error* error);
};

}  // namespace brackwell
