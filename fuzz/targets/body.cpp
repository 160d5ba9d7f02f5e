// SPDX-License-Identifier: Apache-2.0
#include "reading/body_parser.h"
#include "support/naive_body_parser.h"
#include "support/tree_text.h"
#include "target.h"
#include "trees.h"

/// \file
/// The body parser beside the plain one of the tests, on bytes that need not be UTF-8.

void brackwell::fuzz::tryBytes(std::string_view bytes) {
    const Data source = Data::copy(bytes);
    std::string failure;
    const std::optional<ParseDictionary> tree = reading::parseBody(source, source.bytes(), &failure);
    const tests::NaiveResult wanted = tests::parseNaively(std::string(bytes));
    require(tree.has_value() == (wanted.root != nullptr), "both parsers accept, or both refuse");
    require(tree == TvOFXParser::parseOFXDataString(bytes), "two parses agree");

    const auto unescaped = TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(bytes);
    require(unescaped && unescaped->size() <= bytes.size(), "unescaping never adds");
    if (!tree) return require(failure == wanted.failure, "both parsers refuse for the same reason");

    require(tests::treeText(*tree) == tests::treeText(*wanted.root), "both parsers make the same tree");
    requireSlices(*tree, source.bytes());
    requireReadable(*tree);
    if (isValidUTF8(bytes)) requireSound(*tree);
}
