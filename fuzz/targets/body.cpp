// SPDX-License-Identifier: Apache-2.0
#include "parser/body_parser.h"
#include "support/naive_body_parser.h"
#include "support/tree_text.h"
#include "target.h"
#include "trees.h"

/// \file
/// The body parser beside the plain one of the tests, on bytes that need not be UTF-8.

namespace brackwell::fuzz {
namespace {

void requireLikePlain(const std::optional<ParseDictionary>& tree, std::string_view failure,
                      std::string_view body) {
    const tests::NaiveResult wanted = tests::parseNaively(std::string(body));
    require(tree.has_value() == (wanted.root != nullptr), "both parsers accept, or both refuse");
    if (!tree) return require(failure == wanted.failure, "both parsers refuse for the same reason");
    const std::string text = tests::treeText(*tree);
    const bool isCut = text.find("...") != std::string::npos;  // as that of a very deep tree is
    require(isCut || text == tests::treeText(*wanted.root), "both parsers make the same tree");
}

}  // namespace

void tryBytes(std::string_view bytes) {
    const Data source = Data::copy(bytes);
    reading::BodyFailure failure;
    const std::optional<ParseDictionary> tree = reading::parseBody(source, source.bytes(), &failure);
    requireLikePlain(tree, failure.text, bytes);
    require(tree == TvOFXParser::parseOFXDataString(bytes), "two parses agree");
    const auto unescaped = TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(bytes);
    require(unescaped && unescaped->size() <= bytes.size(), "unescaping never adds");
    if (!tree) return;
    requireSlices(*tree, source.bytes());
    requireReadable(*tree);
    if (isValidUTF8(bytes)) requireSound(*tree);
}

}  // namespace brackwell::fuzz
