// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <doctest/doctest.h>

#include <nlohmann/json.hpp>

#include "support/process.h"
#include "support/temporary_folder.h"

/// \file
/// The command-line tool as a process, and documents for it.

namespace brackwell::tests {

/// Keeps the order of keys.
using Json = nlohmann::ordered_json;

/// The tool with these arguments.
Command toolCommand(std::vector<std::string> arguments);

/// Runs the tool.
Finished tool(std::vector<std::string> arguments, const std::string& input = {},
              std::map<std::string, std::string> environment = {});

/// Runs the tool in a folder.
Finished toolIn(const std::string& folder, std::vector<std::string> arguments, const std::string& input = {});

/// Runs a shell's command line in a folder; $TOOL in it is the tool.
Finished shell(const TemporaryFolder& folder, const std::string& line);

/// Runs the tool on a document that must be read, and gives its output. What is odd about the document is not
/// asked for: tests make documents of which most is left out.
std::string outputOf(std::vector<std::string> arguments, const std::string& document);

/// What a command writes of a document, which must be JSON.
Json jsonOf(const std::string& command, const std::string& document);
/// The same of the document as it is, without a repair.
Json jsonAsIs(const std::string& command, const std::string& document);

/// What the tool says of a file that is not there, with its name before it.
inline std::string notFound(const std::string& name) {
    return name + ": The file at " + name +
           " was not found.\n  Check the path; a relative path starts in the current folder.\n";
}

inline bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

inline std::string examplePath(const std::string& name) {
    return std::string(BRACKWELL_EXAMPLES_DIR) + "/" + name;
}

/// A version 1 document around a body.
inline std::string version1(const std::string& body, const std::string& charset = "1252") {
    return "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\nSECURITY:NONE\nENCODING:USASCII\nCHARSET:" + charset +
           "\nCOMPRESSION:NONE\nOLDFILEUID:NONE\nNEWFILEUID:NONE\n\n<OFX>" + body + "</OFX>\n";
}

/// A document of statements of bank accounts.
inline std::string bankDocument(const std::string& statements) {
    return version1("<BANKMSGSRSV1>" + statements + "</BANKMSGSRSV1>");
}

/// A document of one checking-account statement with these elements after the account.
inline std::string statementWith(const std::string& elements) {
    return bankDocument(
        "<STMTTRNRS><TRNUID>1<STMTRS><CURDEF>USD<BANKACCTFROM><BANKID>121000248<ACCTID>"
        "0012345678<ACCTTYPE>CHECKING</BANKACCTFROM>" +
        elements + "</STMTRS></STMTTRNRS>");
}

/// The same with these elements in the list of transactions.
inline std::string transactionsWith(const std::string& transactions) {
    return statementWith("<BANKTRANLIST>" + transactions + "</BANKTRANLIST>");
}

/// A document of one transaction.
inline const std::string kDocument =
    transactionsWith("<STMTTRN><DTPOSTED>20240102<TRNAMT>1<NAME>Shop</STMTTRN>");

/// The lines of a text, without their ends.
inline std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

/// The first line that has a part; empty when none has.
inline std::string lineWith(const std::string& text, std::string_view part) {
    for (const std::string& line : linesOf(text))
        if (contains(line, part)) return line;
    return "";
}

}  // namespace brackwell::tests
