// SPDX-License-Identifier: Apache-2.0
#include "documents.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace brackwell::benchmarks {
namespace {

constexpr std::array<std::string_view, 8> kPayees{
    "Harbour Bakery",    "Northwind Power & Light", "City Transport",  "Alder Street Grocer",
    "Blue Door Theatre", "Miller's Hardware",       "Greenfield Rent", "Payroll Quarry Ltd"};
constexpr std::array<std::string_view, 8> kAccented{
    "B\xC3\xA4"
    "ckerei M\xC3\xBCller",
    "Caf\xC3\xA9 Ol\xC3\xA9",
    "\xC3\x84rztehaus",
    "Gar\xC3\xA7"
    "on",
    "Se\xC3\xB1or L\xC3\xB3pez",
    "\xC3\x98rsted",
    "Fjord\xC3\xA5s",
    "\xC3\x89picerie"};
constexpr std::array<std::string_view, 5> kTypes{"DEBIT", "CREDIT", "POS", "CHECK", "DIRECTDEBIT"};

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
    std::string take() { return std::move(text_); }

private:
    static std::string digits(std::uint32_t value, std::size_t count) {
        std::string text = std::to_string(value);
        return std::string(count > text.size() ? count - text.size() : 0, '0') + text;
    }
    std::string date() {
        return "2024" + digits(1 + random_.below(12), 2) + digits(1 + random_.below(28), 2) +
               digits(random_.below(24), 2) + digits(random_.below(60), 2) + digits(random_.below(60), 2);
    }
    std::string amount() {
        return (random_.below(4) == 0 ? "" : "-") + std::to_string(random_.below(5000)) + "." +
               digits(random_.below(100), 2);
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

void writeHead(Writer& writer, bool version2) {
    if (version2) {
        writer.line(R"(<?xml version="1.0" encoding="UTF-8" standalone="no"?>)");
        writer.line(
            R"(<?OFX OFXHEADER="200" VERSION="211" SECURITY="NONE" OLDFILEUID="NONE" NEWFILEUID="NONE"?>)");
    } else {
        for (const char* line :
             {"OFXHEADER:100", "DATA:OFXSGML", "VERSION:102", "SECURITY:NONE", "ENCODING:UTF-8",
              "CHARSET:NONE", "COMPRESSION:NONE", "OLDFILEUID:NONE", "NEWFILEUID:NONE", ""})
            writer.line(line);
    }
    writer.line("<OFX>");
    writer.line("<SIGNONMSGSRSV1><SONRS>");
    writer.line("<STATUS>");
    writer.leaf("CODE", "0");
    writer.leaf("SEVERITY", "INFO");
    writer.line("</STATUS>");
    writer.leaf("DTSERVER", "20240201120000");
    writer.leaf("LANGUAGE", "ENG");
    writer.line("</SONRS></SIGNONMSGSRSV1>");
}

void writeStatement(Writer& writer, const Shape& shape, std::size_t number) {
    writer.line("<STMTTRNRS>");
    writer.leaf("TRNUID", std::to_string(1 + number));
    writer.line("<STATUS>");
    writer.leaf("CODE", "0");
    writer.leaf("SEVERITY", "INFO");
    writer.line("</STATUS>");
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

}  // namespace

std::string makeDocument(const Shape& shape) {
    Writer writer(shape);
    writeHead(writer, shape.version2);
    writer.line("<BANKMSGSRSV1>");
    for (std::size_t i = 0; i < shape.statements; ++i) writeStatement(writer, shape, i);
    writer.line("</BANKMSGSRSV1>");
    writer.line("</OFX>");
    return writer.take();
}

std::string makeProfile(std::size_t realms) {
    Writer writer(Shape{});
    writeHead(writer, true);
    writer.line("<PROFMSGSRSV1><PROFTRNRS><TRNUID>1</TRNUID>");
    writer.line("<STATUS><CODE>0</CODE><SEVERITY>INFO</SEVERITY></STATUS><PROFRS><MSGSETLIST>");
    for (const char* set : {"SIGNON", "SIGNUP", "BANK", "CREDITCARD"}) {
        const std::string name(set);
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
    writer.line("</MSGSETLIST><SIGNONINFOLIST>");
    for (std::size_t i = 0; i < realms; ++i) {
        writer.line("<SIGNONINFO>");
        writer.leaf("SIGNONREALM", "Realm " + std::to_string(i));
        writer.leaf("MIN", "4");
        writer.leaf("MAX", "32");
        writer.leaf("CHARTYPE", "ALPHAANDNUMERIC");
        writer.leaf("CASESEN", "Y");
        writer.line("</SIGNONINFO>");
    }
    writer.line("</SIGNONINFOLIST>");
    writer.leaf("DTPROFUP", "20240101");
    writer.leaf("FINAME", "Harbour Bank");
    writer.leaf("ADDR1", "1 Quay Street");
    writer.leaf("CITY", "Brackwell");
    writer.line("</PROFRS></PROFTRNRS></PROFMSGSRSV1>");
    writer.line("</OFX>");
    return writer.take();
}

}  // namespace brackwell::benchmarks
