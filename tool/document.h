// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>
#include <brackwell/repair.h>

#include <string>

namespace tool {

/// How the text of a document was repaired.
struct Repair {
    std::string mark;    ///< bytes before the text that are no part of it
    std::string before;  ///< the text as UTF-8
    brackwell::RepairedText after;
};

/// One file of the command line, read and parsed as far as possible.
struct Document {
    enum class Outcome {
        read,        ///< content.ofxData is there
        notOFX,      ///< decoded, but its text does not begin like OFX
        malformed,   ///< no text, or a body that does not parse; the header is kept where there is one
        unreadable,  ///< there are no bytes
    };

    std::string name;  ///< as on the command line
    Outcome outcome = Outcome::unreadable;
    std::string complaint;    ///< why the document was not read
    std::string explanation;  ///< more of that, in lines of their own; usually empty
    std::string note;         ///< what a reader should know of how it was read; usually empty
    brackwell::TextEncoding encoding = brackwell::TextEncodingNone;  ///< the one that was used
    brackwell::TvOFXParserResult content;
    brackwell::Data bytes;         ///< of the file
    std::optional<Repair> repair;  ///< what was changed so that the document could be read
};

/// Reads a file, or standard input for "-". Without an encoding, the encoding that the document itself
/// names and windows-1252 are tried where the library finds none of its own. A document that is not read,
/// or in which nothing is found because its tags are in lower case, is repaired first when that is wished
/// for.
Document readDocument(const std::string& name, brackwell::TextEncoding encoding, bool repairs);

}  // namespace tool
