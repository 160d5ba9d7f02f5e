// SPDX-License-Identifier: Apache-2.0
#include "documents.h"

namespace brackwell::benchmarks {
namespace {

constexpr std::array<std::string_view, 8> kPayees{
    "Harbour Bakery",    "Northwind Power & Light", "City Transport",  "Alder Street Grocer",
    "Blue Door Theatre", "Miller's Hardware",       "Greenfield Rent", "Payroll Quarry Ltd"};
constexpr std::array<std::string_view, 8> kAccented{
    "B\u00E4ckerei M\u00FCller", "Caf\u00E9 Ol\u00E9", "\u00C4rztehaus", "Gar\u00E7on",
    "Se\u00F1or L\u00F3pez",     "\u00D8rsted",        "Fjord\u00E5s",   "\u00C9picerie"};
constexpr std::array<std::string_view, 5> kTypes{"DEBIT", "CREDIT", "POS", "CHECK", "DIRECTDEBIT"};

/// How the two kinds of header name an encoding.
struct EncodingName {
    TextEncoding encoding;
    std::string_view xml;
    std::string_view sgml;  ///< the lines ENCODING and CHARSET
};
constexpr std::array<EncodingName, 3> kEncodingNames{
    {{TextEncodingUTF8, "UTF-8", "ENCODING:UTF-8\nCHARSET:NONE"},
     {TextEncodingWindows1252, "windows-1252", "ENCODING:USASCII\nCHARSET:1252"},
     {TextEncodingUTF16LittleEndian, "UTF-16", "ENCODING:UNICODE\nCHARSET:NONE"}}};

const EncodingName& namesOf(TextEncoding encoding) {
    for (const EncodingName& row : kEncodingNames)
        if (row.encoding == encoding) return row;
    return kEncodingNames.front();
}

/// A sequence of numbers that look random; the same on every machine.
class Sequence {
public:
    std::uint32_t below(std::uint32_t end) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::uint32_t>(state_ >> 33) % end;
    }

private:
    std::uint64_t state_ = 20240131;
};

class Writer {
public:
    explicit Writer(const Shape& shape) : shape_(shape) {}

    void line(std::string_view text) { text_.append(text).append("\n"); }
    void leaf(std::string_view name, std::string_view value) {
        text_.append("<").append(name).append(">").append(value);
        if (shape_.version2) text_.append("</").append(name).append(">");
        text_.append("\n");
    }
    void transaction(std::size_t number) {
        line("<STMTTRN>");
        leaf("TRNTYPE", kTypes[random_.below(kTypes.size())]);
        leaf("DTPOSTED", date());
        leaf("TRNAMT", amount());
        leaf("FITID", "2024" + std::to_string(1000000 + number));
        leaf("NAME", payee());
        leaf("MEMO", memo());
        line("</STMTTRN>");
    }
    void investmentTransaction(std::size_t number) {
        const bool isPurchase = random_.below(2) == 0;
        line(isPurchase ? "<BUYSTOCK>\n<INVBUY>" : "<SELLSTOCK>\n<INVSELL>");
        line("<INVTRAN>");
        leaf("FITID", "2024" + std::to_string(1000000 + number));
        leaf("DTTRADE", date());
        leaf("DTSETTLE", date());
        leaf("MEMO", memo());
        line("</INVTRAN>");
        securityID(random_.below(10000));
        const std::uint32_t value = unitsAndPrice();
        leaf("COMMISSION", "4.95");
        leaf("TOTAL", isPurchase ? "-" + cents(value + 495) : cents(value - 495));
        leaf("SUBACCTSEC", "CASH");
        leaf("SUBACCTFUND", "CASH");
        line(isPurchase ? "</INVBUY>" : "</INVSELL>");
        leaf(isPurchase ? "BUYTYPE" : "SELLTYPE", isPurchase ? "BUY" : "SELL");
        line(isPurchase ? "</BUYSTOCK>" : "</SELLSTOCK>");
    }
    void position(std::size_t number) {
        line("<POSSTOCK>\n<INVPOS>");
        securityID(number);
        leaf("HELDINACCT", "CASH");
        leaf("POSTYPE", "LONG");
        leaf("MKTVAL", cents(unitsAndPrice()));
        leaf("DTPRICEASOF", date());
        line("</INVPOS>\n</POSSTOCK>");
    }
    void security(std::size_t number) {
        line("<STOCKINFO>\n<SECINFO>");
        securityID(number);
        leaf("SECNAME", payee());
        leaf("TICKER", "T" + std::to_string(number));
        leaf("UNITPRICE", amount());
        leaf("DTASOF", date());
        line("</SECINFO>");
        leaf("STOCKTYPE", "COMMON");
        line("</STOCKINFO>");
    }
    std::string take() { return std::move(text_); }

private:
    void securityID(std::size_t number) {
        line("<SECID>");
        leaf("UNIQUEID", std::to_string(900000000 + number));
        leaf("UNIQUEIDTYPE", "CUSIP");
        line("</SECID>");
    }
    static std::string cents(std::uint32_t amount) {
        const std::string fraction = std::to_string(100 + amount % 100);
        return std::to_string(amount / 100) + "." + fraction.substr(1);
    }
    /// Returns what they make in cents: documents whose sums are wrong have findings.
    std::uint32_t unitsAndPrice() {
        const std::uint32_t units = 10 + random_.below(90);
        const std::uint32_t price = 100 + random_.below(50000);
        leaf("UNITS", std::to_string(units));
        leaf("UNITPRICE", cents(price));
        return units * price;
    }
    void appendNumber(std::string& text, std::uint32_t value, std::size_t width) {
        const std::string digits = std::to_string(value);
        if (digits.size() < width) text.append(width - digits.size(), '0');
        text.append(digits);
    }
    std::string date() {
        std::string text = "2024";
        for (const std::uint32_t end : {12U, 28U}) appendNumber(text, 1 + random_.below(end), 2);
        for (const std::uint32_t end : {24U, 60U, 60U}) appendNumber(text, random_.below(end), 2);
        return text;
    }
    std::string amount() {
        std::string text = random_.below(4) == 0 ? "" : "-";
        appendNumber(text, random_.below(5000), 1);
        text += '.';
        appendNumber(text, random_.below(100), 2);
        return text;
    }
    std::string payee() {
        std::string name(shape_.accents ? kAccented[random_.below(kAccented.size())]
                                        : kPayees[random_.below(kPayees.size())]);
        if (const std::size_t ampersand = name.find('&'); ampersand != std::string::npos)
            name.replace(ampersand, 1, "and");
        return shape_.entities ? name + " &amp; Sons" : name;
    }
    std::string memo() {
        std::string memo = "Card 4711 ref " + std::to_string(random_.below(1000000));
        if (shape_.entities) memo += " &lt;booked&gt;";
        if (shape_.longMemos)
            for (int i = 0; i < 12; ++i) memo += " and some more words to fill the line";
        return memo;
    }

    Shape shape_;
    Sequence random_;
    std::string text_;
};

void writeStatus(Writer& writer) {
    writer.line("<STATUS>");
    writer.leaf("CODE", "0");
    writer.leaf("SEVERITY", "INFO");
    writer.line("</STATUS>");
}

void writeHead(Writer& writer, const Shape& shape) {
    const EncodingName& names = namesOf(shape.encoding);
    if (shape.version2) {
        writer.line("<?xml version=\"1.0\" encoding=\"" + std::string(names.xml) + "\" standalone=\"no\"?>");
        writer.line(
            R"(<?OFX OFXHEADER="200" VERSION="211" SECURITY="NONE" OLDFILEUID="NONE" NEWFILEUID="NONE"?>)");
    } else {
        writer.line("OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\nSECURITY:NONE");
        writer.line(names.sgml);
        writer.line("COMPRESSION:NONE\nOLDFILEUID:NONE\nNEWFILEUID:NONE\n");
    }
    writer.line("<OFX>\n<SIGNONMSGSRSV1><SONRS>");
    writeStatus(writer);
    writer.leaf("DTSERVER", "20240201120000");
    writer.leaf("LANGUAGE", "ENG");
    writer.line("</SONRS></SIGNONMSGSRSV1>");
}

void writeStatement(Writer& writer, const Shape& shape, std::size_t number) {
    writer.line("<STMTTRNRS>");
    writer.leaf("TRNUID", std::to_string(1 + number));
    writeStatus(writer);
    writer.line("<STMTRS>");
    writer.leaf("CURDEF", "EUR");
    writer.line("<BANKACCTFROM>");
    writer.leaf("BANKID", "121000248");
    writer.leaf("ACCTID", std::to_string(100000 + number));
    writer.leaf("ACCTTYPE", "CHECKING");
    writer.line("</BANKACCTFROM>");
    writer.line("<BANKTRANLIST>");
    writer.leaf("DTSTART", "20240101");
    writer.leaf("DTEND", "20241231");
    for (std::size_t i = 0; i < shape.transactions; ++i) writer.transaction(number * shape.transactions + i);
    writer.line("</BANKTRANLIST>");
    writer.line("<LEDGERBAL>");
    writer.leaf("BALAMT", "4321.09");
    writer.leaf("DTASOF", "20241231120000");
    writer.line("</LEDGERBAL>");
    writer.line("</STMTRS>");
    writer.line("</STMTTRNRS>");
}

void writeInvestments(Writer& writer, const Shape& shape) {
    writer.line("<INVSTMTMSGSRSV1>\n<INVSTMTTRNRS>");
    writer.leaf("TRNUID", "1");
    writeStatus(writer);
    writer.line("<INVSTMTRS>");
    writer.leaf("DTASOF", "20241231120000");
    writer.leaf("CURDEF", "EUR");
    writer.line("<INVACCTFROM>");
    writer.leaf("BROKERID", "broker.example");
    writer.leaf("ACCTID", "100000");
    writer.line("</INVACCTFROM>");
    writer.line("<INVTRANLIST>");
    writer.leaf("DTSTART", "20240101");
    writer.leaf("DTEND", "20241231");
    for (std::size_t i = 0; i < shape.transactions; ++i) writer.investmentTransaction(i);
    writer.line("</INVTRANLIST>\n<INVPOSLIST>");
    for (std::size_t i = 0; i < shape.positions; ++i) writer.position(i);
    writer.line("</INVPOSLIST>\n</INVSTMTRS>\n</INVSTMTTRNRS>\n</INVSTMTMSGSRSV1>");
    writer.line("<SECLISTMSGSRSV1>\n<SECLIST>");
    for (std::size_t i = 0; i < shape.positions; ++i) writer.security(i);
    writer.line("</SECLIST>\n</SECLISTMSGSRSV1>");
}

void writeMessageSet(Writer& writer, const std::string& name) {
    writer.line("<" + name + "MSGSET><" + name + "MSGSETV1><MSGSETCORE>");
    writer.leaf("VER", "1");
    writer.leaf("URL", "https://ofx.bank.example/" + name);
    writer.leaf("OFXSEC", "NONE");
    writer.leaf("TRANSPSEC", "Y");
    writer.leaf("SIGNONREALM", "Realm 0");
    writer.leaf("LANGUAGE", "ENG");
    writer.leaf("SYNCMODE", "LITE");
    writer.line("</MSGSETCORE></" + name + "MSGSETV1></" + name + "MSGSET>");
}

void writeRealm(Writer& writer, std::size_t number) {
    writer.line("<SIGNONINFO>");
    writer.leaf("SIGNONREALM", "Realm " + std::to_string(number));
    writer.leaf("MIN", "4");
    writer.leaf("MAX", "32");
    writer.leaf("CHARTYPE", "ALPHAANDNUMERIC");
    writer.leaf("CASESEN", "Y");
    writer.line("</SIGNONINFO>");
}

void writeProfile(Writer& writer, std::size_t realms) {
    writer.line("<PROFMSGSRSV1><PROFTRNRS>");
    writer.leaf("TRNUID", "1");
    writeStatus(writer);
    writer.line("<PROFRS><MSGSETLIST>");
    for (const char* set : {"SIGNON", "SIGNUP", "BANK", "CREDITCARD"}) writeMessageSet(writer, set);
    writer.line("</MSGSETLIST><SIGNONINFOLIST>");
    for (std::size_t i = 0; i < realms; ++i) writeRealm(writer, i);
    writer.line("</SIGNONINFOLIST>");
    writer.leaf("DTPROFUP", "20240101");
    writer.leaf("FINAME", "Harbour Bank");
    writer.leaf("ADDR1", "1 Quay Street");
    writer.leaf("CITY", "Brackwell");
    writer.line("</PROFRS></PROFTRNRS></PROFMSGSRSV1>");
}

std::string encoded(std::string text, TextEncoding encoding) {
    if (encoding == TextEncodingUTF8) return text;
    const std::string_view mark = encoding == TextEncodingUTF16LittleEndian ? "\xFF\xFE" : "";
    // Every generated character exists in every encoding above.
    return std::string(mark).append(encodeText(text, encoding).value().bytes());
}

}  // namespace

std::string makeDocument(const Shape& shape) {
    Writer writer(shape);
    writeHead(writer, shape);
    if (shape.realms > 0) {
        writeProfile(writer, shape.realms);
    } else if (shape.positions > 0) {
        writeInvestments(writer, shape);
    } else {
        writer.line("<BANKMSGSRSV1>");
        for (std::size_t i = 0; i < shape.statements; ++i) writeStatement(writer, shape, i);
        writer.line("</BANKMSGSRSV1>");
    }
    writer.line("</OFX>");
    return encoded(writer.take(), shape.encoding);
}

}  // namespace brackwell::benchmarks
