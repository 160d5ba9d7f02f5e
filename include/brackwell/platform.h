// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The value types and services that the library stands on, and that an application hands in
/// and gets back: bytes, text encodings, exact decimal numbers, dates, their formatters, keyed
/// archives and a few helpers on texts. Nothing here knows of OFX.
///
///     auto amount = brackwell::Decimal::fromString("-12.50");         // -12.5, exactly
///     brackwell::PatternDateFormatter german("dd.MM.yyyy");
///     auto day = german.dateFromString("31.12.2024");                 // 2024-12-31T00:00Z
///
/// Conventions of all headers:
/// - Text is UTF-8. A text that may be absent is a `std::optional<std::string_view>`; absent and
///   empty are different. A view that a getter returns is valid until the object that it came
///   from is changed or destroyed.
/// - "Nothing" is `std::nullopt` for values and a null pointer for objects. Some lists may be absent, which
///   is not the same as empty. Such a list is a `std::optional` where the object that is asked has a field
///   for it (TvOFXMessage::allRequests), and a pointer where it belongs to another object or stands in a
///   table (TvOFXResult::transactions, TvOFXInterpreter::responsesForKey), since a `std::optional` could
///   only be handed out with a copy of the list there. Both are tested with `if (list)` and walked with
///   `*list`. All other lists are empty when there is nothing in them.
/// - An operation that takes a text which may be absent (TextArgument) takes a null `const char*` as nothing;
///   a text that must be there is a `std::string_view`, and by the rules of the standard library a null
///   pointer is none.
/// - An object of a class that was moved from may be used again. It is empty, as new; where a class says that
///   its move is a copy, it is unchanged; a TvOFXParser keeps its encoding. The members of a struct without
///   operations are as the standard library leaves them. Classes that can be copied or moved can be assigned
///   as well.
/// - The library throws nothing of its own; `std::bad_alloc` passes through when memory is
///   exhausted, leaves no object half made and leaks nothing.
/// - Distinct objects may be used by distinct threads, and any number of threads may read one object
///   through `const` operations; brackwell.h says it in full.

#include <brackwell/internal/emptied_by_move.h>

#include <array>
#include <chrono>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#if defined(_WIN32)
#define BRACKWELL_EXPORT
#define BRACKWELL_INTERNAL
#else
/// Marks what a shared library exports; everything else stays hidden. On Windows the library is static.
#define BRACKWELL_EXPORT __attribute__((visibility("default")))
/// Marks a part of an exported class that only the library itself uses, and so keeps hidden.
#define BRACKWELL_INTERNAL __attribute__((visibility("hidden")))
#endif

namespace brackwell {

/// A text that may be absent; see the conventions above for how long it is valid.
using OptionalText = std::optional<std::string_view>;

/// A text that an operation takes and that may be absent: any text, an OptionalText, `std::nullopt`, or a
/// null pointer, which is nothing. The number 0 is no text, and does not compile. Parameters alone have this
/// type; it refers to the caller's text like a view.
class TextArgument : public OptionalText {
public:
    /// @{
    /// Nothing.
    TextArgument() noexcept = default;
    TextArgument(std::nullptr_t) noexcept {}  // NOLINT(google-explicit-constructor): as below
    /// @}
    /// The text that ends before the zero byte; nothing when the pointer is null.
    TextArgument(const char* text) noexcept  // NOLINT(google-explicit-constructor): for literals
        : OptionalText(text != nullptr ? OptionalText(text) : std::nullopt) {}
    /// Whatever else an OptionalText can be made of.
    template <class Text>
    requires(std::is_convertible_v<const Text&, OptionalText> && !std::is_pointer_v<Text> &&
             !std::is_array_v<Text> && !std::is_null_pointer_v<Text>)
        TextArgument(const Text& text)  // NOLINT(google-explicit-constructor): for strings
        : OptionalText(text) {}
};

// ---------------------------------------------------------------------------------------------
// Errors

/// What went wrong, as a value. An operation that can fail takes `Error* error = nullptr` as its
/// last argument; the place is written only on failure.
struct Error {
    std::string domain{};         ///< "Brackwell" for every error of the library
    int code = 0;                 ///< 1 for every error of the library
    std::string description{};    ///< one or two sentences for a person
    std::string failureReason{};  ///< the kind of failure, the same text for every error of a kind

    bool operator==(const Error&) const = default;  ///< all four are the same
};

// ---------------------------------------------------------------------------------------------
// Bytes

/// An immutable buffer of bytes. Copies share the bytes and cost a reference count.
class BRACKWELL_EXPORT Data {
public:
    /// No bytes.
    Data() noexcept = default;
    /// The bytes of a std::string, which can so be given wherever bytes are taken. One that is moved in is
    /// taken over like adopt() does, any other copied. A template, so that no literal, which may be meant for
    /// a path, is taken for bytes.
    template <std::same_as<std::string> String>
    Data(String bytes) : Data(adopt(std::move(bytes))) {}  // NOLINT(google-explicit-constructor)

    /// Takes the bytes over without copying them.
    static Data adopt(std::string bytes);

    /// Copies the bytes.
    static Data copy(std::string_view bytes);

    /// Refers to bytes that the caller keeps alive and unchanged for as long as this object and
    /// its copies and slices are used. The import operations copy what they keep, so for them the
    /// length of the call is enough.
    static Data view(std::string_view bytes) noexcept;

    /// @{
    /// Reads a whole file in one go; a name that is not a readable file gives nothing, and so does a null
    /// pointer. Pipes and other files without a size are read to their end.
    static std::optional<Data> fromFile(const std::string& path);
    static std::optional<Data> fromFile(const char* path) {
        return path != nullptr ? fromFile(std::string(path)) : std::nullopt;
    }
    /// @}

    /// The bytes; valid as long as this object or a copy of it.
    std::string_view bytes() const noexcept { return bytes_; }
    std::size_t size() const noexcept { return bytes().size(); }  ///< how many bytes
    bool isEmpty() const noexcept { return bytes().empty(); }     ///< true when there are none

    /// True when the bytes belong to the caller (made by view()).
    bool isView() const noexcept { return owner_ == nullptr && !isEmpty(); }

    /// The bytes from `offset` on (none when that is past the end); shares them.
    Data from(std::size_t offset) const noexcept;

    /// The bytes from `offset` on, `size` of them or as many as there are; shares them.
    Data slice(std::size_t offset, std::size_t size) const noexcept;

    /// This object, or a copy of the bytes when they belong to the caller.
    Data owned() const;

    /// Equal bytes, wherever they are kept.
    friend bool operator==(const Data& a, const Data& b) noexcept { return a.bytes() == b.bytes(); }

private:
    Data(std::shared_ptr<const void> owner, std::string_view bytes) noexcept
        : owner_(std::move(owner)), bytes_(bytes) {}

    std::shared_ptr<const void> owner_;
    internal::EmptiedByMove<std::string_view> bytes_;
};

// ---------------------------------------------------------------------------------------------
// Text encodings

/// The number of a text encoding; 0 is none. The numbers are those that applications of the
/// original platform pass.
using TextEncoding = std::uint32_t;

inline constexpr TextEncoding TextEncodingNone = 0;       ///< not an encoding: find it out, or none was found
inline constexpr TextEncoding TextEncodingASCII = 1;      ///< fails on any byte from 0x80
inline constexpr TextEncoding TextEncodingUTF8 = 4;       ///< strict; a leading EF BB BF is dropped
inline constexpr TextEncoding TextEncodingISOLatin1 = 5;  ///< ISO 8859-1; every byte is a character
inline constexpr TextEncoding TextEncodingUTF16 = 10;     ///< as its mark says, else host byte order
inline constexpr TextEncoding TextEncodingWindows1252 = 12;                ///< fails on 81, 8D, 8F, 90 and 9D
inline constexpr TextEncoding TextEncodingUTF16BigEndian = 0x90000100;     ///< a mark is kept
inline constexpr TextEncoding TextEncodingUTF16LittleEndian = 0x94000100;  ///< a mark is kept
inline constexpr TextEncoding TextEncodingUTF32BigEndian = 0x98000100;     ///< a mark is kept

/// Decodes bytes to UTF-8. Bytes that already are the text's UTF-8 form are shared, not copied; those
/// of a view stay the caller's then (Data::owned() makes the text independent). Any invalid byte fails
/// the whole, as does an encoding that is not known: nothing.
BRACKWELL_EXPORT std::optional<Data> decodeText(const Data& data, TextEncoding encoding);

/// Encodes UTF-8 text; nothing when the text is not valid UTF-8, the encoding is not known, or it
/// cannot hold one of the characters. No mark is written, but a text may begin with one: U+FEFF (in
/// marked encodings U+FFFE as well) is what decoding takes for a mark and drops.
BRACKWELL_EXPORT std::optional<Data> encodeText(std::string_view text, TextEncoding encoding);

/// The usual name ("UTF-8", "windows-1252"); nothing when the encoding is not known.
BRACKWELL_EXPORT OptionalText nameOfTextEncoding(TextEncoding encoding) noexcept;

/// The encoding with this name or one of its usual other names, compared without case, "-", "_", blanks and a
/// year after ":" ("1252", "CP1252", "windows-1252", "Win 1252", "ISO_8859-1:1987"); TextEncodingNone when no
/// known encoding is called so.
BRACKWELL_EXPORT TextEncoding textEncodingNamed(std::string_view name) noexcept;

/// Every encoding that the library decodes, in a fixed order.
BRACKWELL_EXPORT std::vector<TextEncoding> knownTextEncodings();

/// True when the bytes are well-formed UTF-8 (no overlong forms, no surrogates, at most U+10FFFF).
BRACKWELL_EXPORT bool isValidUTF8(std::string_view bytes) noexcept;

// ---------------------------------------------------------------------------------------------
// Characters and texts

/// White space as it is trimmed: U+0009-000D, 0020, 0085, 00A0, 1680, 2000-200A, 2028, 2029, 202F,
/// 205F and 3000.
BRACKWELL_EXPORT bool isWhiteSpace(char32_t character) noexcept;

/// Line breaks: U+000A-000D, 0085, 2028 and 2029.
BRACKWELL_EXPORT bool isLineBreak(char32_t character) noexcept;

/// The text without white space at both ends.
BRACKWELL_EXPORT std::string_view trimWhiteSpace(std::string_view text) noexcept;

/// The lines between line-break characters; a carriage return and a line feed make two breaks.
BRACKWELL_EXPORT std::vector<std::string_view> splitLines(std::string_view text);

/// The integer that the text begins with: optional white space, an optional sign, then digits up
/// to the first other character. 0 when there are none; a value beyond the range saturates.
BRACKWELL_EXPORT std::int64_t leadingInteger(std::string_view text) noexcept;

/// A new random UUID (version 4, from the operating system's generator) in its 36-character
/// upper-case form.
BRACKWELL_EXPORT std::string newUUID();

// ---------------------------------------------------------------------------------------------
// Decimal numbers

/// An exact decimal number: up to 38 significant digits and an exponent of ten from -128 to 127,
/// both counted after zeros at the ends are stripped. There is one zero, without sign or
/// exponent. Equality and order go by value.
class BRACKWELL_EXPORT Decimal {
public:
    static constexpr int maximumDigits = 38;      ///< of the coefficient
    static constexpr int minimumExponent = -128;  ///< of ten
    static constexpr int maximumExponent = 127;   ///< of ten

    /// Zero.
    constexpr Decimal() noexcept = default;

    /// A whole number.
    static Decimal fromInteger(std::int64_t value) noexcept;

    /// Reads plain or scientific notation ("-12.50", "1e3"), the whole text, with ".", ASCII digits
    /// and at most one "+" or "-". Nothing when it is not such a number or does not fit exactly.
    static std::optional<Decimal> fromString(std::string_view text) noexcept;

    /// (-1)^negative x coefficient x 10^exponent, the coefficient as `high` x 2^64 + `low`. Nothing
    /// when that does not fit exactly.
    static std::optional<Decimal> fromParts(bool negative, std::uint64_t high, std::uint64_t low,
                                            std::int64_t exponent) noexcept;

    bool isZero() const noexcept { return high_ == 0 && low_ == 0; }  ///< true for zero
    bool isNegative() const noexcept { return negative_; }            ///< false for zero
    /// @{
    /// The coefficient's upper and lower 64 bits; it never ends in a zero digit.
    std::uint64_t coefficientHigh() const noexcept { return high_; }
    std::uint64_t coefficientLow() const noexcept { return low_; }
    /// @}
    /// The power of ten that the coefficient is multiplied with.
    int exponent() const noexcept { return exponent_; }

    /// Plain notation without exponent, without trailing zeros after the point and without a bare
    /// point: "-12.5", "1234.56", "0".
    std::string toString() const;

    /// The exact sum; nothing when it does not fit.
    std::optional<Decimal> plus(const Decimal& other) const noexcept;
    /// The exact difference; nothing when it does not fit.
    std::optional<Decimal> minus(const Decimal& other) const noexcept;
    /// The exact product; nothing when it does not fit.
    std::optional<Decimal> times(const Decimal& other) const noexcept;
    /// The same magnitude with the other sign; zero stays zero.
    Decimal negated() const noexcept;
    /// The number with at most so many digits after the point, rounded half to even. Fewer than 0 are
    /// taken for 0.
    Decimal rounded(int fractionDigits) const noexcept;

    /// @{
    /// Amounts as applications keep them that count in cents: a whole number of the currency's smallest unit,
    /// of which 10^fractionDigits make one (2 for EUR, 0 for JPY, 3 for KWD; OFX does not say). From units,
    /// nothing when the number does not fit. To units, nothing when it is not whole, as 0.005 with 2, or
    /// beyond 64 bits: nothing is rounded unless rounded() is asked for it first.
    static std::optional<Decimal> fromMinorUnits(std::int64_t units, int fractionDigits) noexcept;
    std::optional<std::int64_t> toMinorUnits(int fractionDigits) const noexcept;
    /// @}

    /// The nearest binary number, for charts and statistics. Hardly any decimal fraction has an exact one, so
    /// sums of them drift, equality is by chance, and from 16 digits on the last ones are lost: never keep,
    /// add or compare money as this.
    double toDouble() const noexcept;
    /// The shortest number that has this nearest binary one: 0.1 for 0.1, but 0.30000000000000004 for 0.1 +
    /// 0.2, so round what was computed. Nothing for infinities, for what is no number, and for what does not
    /// fit.
    static std::optional<Decimal> fromDouble(double value) noexcept;

    bool operator==(const Decimal&) const noexcept = default;  ///< by value
    /// By value, whatever the digits and exponents.
    friend BRACKWELL_EXPORT std::strong_ordering operator<=>(const Decimal& a, const Decimal& b) noexcept;

private:
    std::uint64_t high_ = 0;
    std::uint64_t low_ = 0;
    std::int16_t exponent_ = 0;
    bool negative_ = false;
};

/// Reads and writes numbers as people write them. Implement it, or use DecimalNumberFormatter. Several
/// threads may ask one at the same time when its users are in several threads.
class BRACKWELL_EXPORT NumberFormatter {
public:
    virtual ~NumberFormatter();

    /// The number that the whole text stands for, or nothing.
    virtual std::optional<Decimal> numberFromString(std::string_view text) const = 0;
    /// The number as text, or nothing when this formatter cannot write it.
    virtual std::optional<std::string> stringFromNumber(const Decimal& number) const = 0;
};

/// The settings of a DecimalNumberFormatter.
struct NumberFormat {
    std::string decimalSeparator = ".";   ///< between integer and fraction digits
    std::string groupingSeparator = ",";  ///< between groups of integer digits
    bool usesGroupingSeparator = true;    ///< write the separator between groups of three digits
    int minimumFractionDigits = 2;        ///< written, with zeros if need be
    int maximumFractionDigits = 2;        ///< written; more are rounded half to even
    int minimumIntegerDigits = 1;         ///< written, with zeros if need be
    int maximumIntegerDigits = 309;       ///< written; digits above are left out
};

/// The standard formatter: decimal style, lenient. It reads, over the whole text: optional white
/// space; at most one sign (+, -, U+2212), then optional white space; integer digits, between which
/// a grouping mark (its own, or space, U+00A0, U+202F, ' or U+2019) may stand when at least two
/// digits follow it; optionally the decimal separator and fraction digits; at least one digit in
/// all; optionally e or E with an optional sign and digits; optional white space. So "1,234.56" is
/// 1234.56 and "-12,50" is -1250, while "12,5", "(5.00)", "$5" and "" are nothing. The limits on
/// digits hold for writing only.
class BRACKWELL_EXPORT DecimalNumberFormatter final : public NumberFormatter {
public:
    explicit DecimalNumberFormatter(NumberFormat format = {});  ///< keeps the settings
    /// @{
    /// A move is a copy, so that no formatter is ever without its settings.
    DecimalNumberFormatter(const DecimalNumberFormatter&) = default;
    DecimalNumberFormatter& operator=(const DecimalNumberFormatter&) = default;
    ~DecimalNumberFormatter() override = default;
    /// @}
    const NumberFormat& format() const noexcept { return format_; }  ///< the settings
    std::optional<Decimal> numberFromString(std::string_view text) const override;
    std::optional<std::string> stringFromNumber(const Decimal& number) const override;

private:
    NumberFormat format_;
};

// ---------------------------------------------------------------------------------------------
// Dates

/// A point in time in whole milliseconds of UTC.
using Date = std::chrono::sys_time<std::chrono::milliseconds>;

/// The moment of the call.
BRACKWELL_EXPORT Date currentDate();

/// The default text of a date: year-month-day, time and offset in UTC, "2024-01-31 17:05:00 +0000".
BRACKWELL_EXPORT std::string dateDescription(Date date);

/// The offset from UTC at each moment. A value; copies share the zone's rules. One that was moved from is
/// UTC.
class BRACKWELL_EXPORT TimeZone {
public:
    /// UTC.
    TimeZone() noexcept = default;
    static TimeZone utc() noexcept { return {}; }  ///< no offset at any time
    /// A fixed offset east of UTC, less than 24 hours either way; more is cut to that.
    static TimeZone fixed(std::chrono::seconds offset) noexcept;
    /// The zone that the process has at each use: TZ, or the system's own.
    static TimeZone system() noexcept;
    /// A zone of the system's zone files ("Europe/Berlin"); nothing when there is none of this name.
    static std::optional<TimeZone> named(std::string_view name);

    /// The offset east of UTC and the abbreviation ("CET") in force at a moment.
    struct Offset {
        std::chrono::seconds fromUTC{0};   ///< positive in the east
        std::string abbreviation = "UTC";  ///< as the zone's rules call it
    };
    /// What is in force at a moment.
    Offset offsetAt(Date date) const;
    /// The moment at which clocks of the zone show `local`: the earlier one when they show it twice,
    /// and the moment just as long after the gap when they skip it.
    Date fromLocal(std::chrono::local_time<std::chrono::milliseconds> local) const;

private:
    struct Rules;
    enum class Kind : std::uint8_t { fixed, system, file };
    internal::EmptiedByMove<Kind> kind_;  ///< at first fixed, as it is without rules
    internal::EmptiedByMove<std::chrono::seconds> offset_;
    std::shared_ptr<const Rules> rules_;
};

/// Reads and writes dates as people write them. Implement it, or use PatternDateFormatter. Several
/// threads may ask one at the same time when its users are in several threads.
class BRACKWELL_EXPORT DateFormatter {
public:
    virtual ~DateFormatter();

    /// The date that the whole text stands for, or nothing.
    virtual std::optional<Date> dateFromString(std::string_view text) const = 0;
    /// The date as text.
    virtual std::string stringFromDate(Date date) const = 0;
};

/// The standard formatter: a pattern of Unicode Technical Standard 35, a time zone and a locale.
///
/// Letters: y (year; "yy" is the year in 1950 to 2049 when read, two digits when written), M and L
/// (month), d (day), D (day of the year), E (weekday), a (AM or PM), h (1 to 12), H (0 to 23), K (0 to
/// 11), k (1 to 24), m, s, S (fraction of the second, cut to what is written), z and Z and X and x (zone).
/// 'quoted text' and every other character that is no letter stand for themselves; '' is one quote.
/// A pattern with another letter, or with more of one than the standard has a form for, reads nothing and
/// writes these letters as they stand.
///
/// A text is read only as a whole. The case of ASCII letters in names does not matter, a weekday need not be
/// the date's, and a zone in the text goes before the formatter's own. Fields that a pattern does not name
/// are those of 2000-01-01T00:00. Fields of digits beside each other, and S, take as many digits as
/// letters; the others as many as there are. Every digit is an ASCII digit; the calendar is the proleptic
/// Gregorian one, years 1 to 9999.
class BRACKWELL_EXPORT PatternDateFormatter final : public DateFormatter {
public:
    /// `locale` names one of the C library's locales ("de_DE") for the names of months and weekdays;
    /// English is used when the system has none of this name. Empty is the process's own.
    explicit PatternDateFormatter(std::string pattern, TimeZone zone = {}, std::string locale = {});
    /// @{
    /// Copies share what was made of the pattern and cost a reference count. A move is a copy, so that no
    /// formatter is ever without a pattern.
    PatternDateFormatter(const PatternDateFormatter&);
    PatternDateFormatter& operator=(const PatternDateFormatter&);
    PatternDateFormatter(PatternDateFormatter&&) noexcept;
    PatternDateFormatter& operator=(PatternDateFormatter&&) noexcept;
    ~PatternDateFormatter() override;
    /// @}

    /// @{
    /// What the formatter was made with.
    const std::string& pattern() const noexcept;
    const std::string& locale() const noexcept;
    const TimeZone& timeZone() const noexcept;
    /// @}
    std::optional<Date> dateFromString(std::string_view text) const override;
    std::string stringFromDate(Date date) const override;

private:
    struct Program;
    std::shared_ptr<const Program> program_;
};

// ---------------------------------------------------------------------------------------------
// Keyed archives

/// One entry of an archived list: a text, or the beginning or the end of a list inside the list.
/// A list so is a flat sequence, however deep it is, and can be written and read without recursion.
struct ArchiveListItem {
    /// What the entry is.
    enum class Kind : std::uint8_t {
        text,       ///< a text of the list
        beginList,  ///< what follows stands in a list inside the list
        endList,    ///< the end of the innermost such list
    };
    Kind kind = Kind::text;   ///< what the entry is
    std::string_view text{};  ///< of a text; empty otherwise
    std::size_t count = 0;    ///< of a list that begins: how many entries stand directly in it

    bool operator==(const ArchiveListItem&) const = default;  ///< equal kinds, texts and counts
};

/// Writes values under keys. The bytes are CBOR (RFC 8949) in its deterministic form: a map with text
/// keys in the order of that form, definite lengths, shortest heads. Dates are tag 1 (whole seconds) or,
/// when they have milliseconds, tag 1001 of RFC 9581 (seconds and milliseconds); decimals are tag 4
/// (decimal fraction). All of these are integers, so every value is kept exactly.
///
/// Keys and texts must be UTF-8: an archive with others is written, but cannot be opened.
class BRACKWELL_EXPORT KeyedArchiver {
public:
    /// @{
    /// Writes a value. One under a key that was written before replaces it.
    void encodeText(std::string_view key, std::string_view text);
    void encodeUnsigned(std::string_view key, std::uint64_t value);
    void encodeDate(std::string_view key, Date date);
    void encodeDecimal(std::string_view key, const Decimal& number);
    /// @}
    /// The items of one list, without the outermost begin and end; begins and ends must match, and the
    /// counts be right.
    void encodeList(std::string_view key, const std::vector<ArchiveListItem>& items);
    /// All that another archiver holds, as one value.
    void encodeObject(std::string_view key, const KeyedArchiver& object);

    /// The archive so far.
    Data archivedData() const;

private:
    BRACKWELL_INTERNAL std::string encodedMap() const;
    BRACKWELL_INTERNAL void store(std::string_view key, std::string encoded);
    std::map<std::string, std::string> entries_;  // both encoded; the order so is that of the archive
};

/// Reads what KeyedArchiver wrote. A missing key, or a value of another kind under it, is nothing.
class BRACKWELL_EXPORT KeyedUnarchiver {
public:
    /// Checks the whole archive once, without recursion and without trusting any length in it;
    /// nothing when the bytes are not, byte for byte, what KeyedArchiver writes. The texts are the
    /// caller's bytes when the data is a view.
    static std::optional<KeyedUnarchiver> open(Data data);

    /// True when there is a value under the key, of any kind.
    bool contains(std::string_view key) const;
    /// @{
    /// The value under the key when it is of this kind. A text is valid as long as this object.
    OptionalText decodeText(std::string_view key) const;
    std::optional<std::uint64_t> decodeUnsigned(std::string_view key) const;
    std::optional<Date> decodeDate(std::string_view key) const;
    std::optional<Decimal> decodeDecimal(std::string_view key) const;
    /// @}
    /// The items as encodeList takes them; their texts are valid as long as this object.
    std::optional<std::vector<ArchiveListItem>> decodeList(std::string_view key) const;
    /// An object written by encodeObject; shares the bytes.
    std::optional<KeyedUnarchiver> decodeObject(std::string_view key) const;

private:
    struct Entry {
        std::string_view key;
        std::string_view value;  // encoded
    };
    BRACKWELL_INTERNAL KeyedUnarchiver(Data data, std::string_view map);
    /// No bytes when there is no such key; no value has none.
    BRACKWELL_INTERNAL std::string_view valueOf(std::string_view key) const noexcept;
    Data data_;
    std::vector<Entry> entries_;  // in the order of the archive
};

}  // namespace brackwell
