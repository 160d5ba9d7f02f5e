// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/model.h>

#include <vector>

/// \file
/// Documents and trees for tests.

namespace brackwell::tests {

/// The tree of a body that must parse.
ParseDictionary parsed(std::string_view body);

/// The value at the end of a path of names, which must be a dictionary.
ParseDictionary at(const ParseDictionary& tree, std::initializer_list<std::string_view> path);

/// The message of a document that must import.
std::shared_ptr<TvOFXMessage> imported(std::string_view document, TextEncoding encoding = TextEncodingNone);

/// A document of the examples folder, with the encoding that an import has to be told; none: it finds it out.
struct Example {
    std::string name;
    TextEncoding encoding = TextEncodingNone;
};
/// All of them, by name.
std::vector<Example> examples();

/// The bytes of a document of the examples folder.
Data exampleData(const std::string& name);

/// The same document with small letters in all of its tags.
std::string withTagsInLowerCase(std::string_view document);

/// The message of a document of the examples folder.
std::shared_ptr<TvOFXMessage> importedExample(const std::string& name,
                                              TextEncoding encoding = TextEncodingNone);

/// The interpreter's view of a document, which holds what a message keeps to itself.
std::shared_ptr<TvOFXInterpreter> interpreted(std::string_view document,
                                              TextEncoding encoding = TextEncodingNone);

/// What an archive brings back of an object, through the archive's bytes.
template <class Object>
std::shared_ptr<Object> restored(const Object& object) {
    KeyedArchiver coder;
    object.encodeWithCoder(coder);
    const std::optional<KeyedUnarchiver> archive = KeyedUnarchiver::open(coder.archivedData());
    return archive ? Object::initWithCoder(*archive) : nullptr;
}

/// The archive of an object, to look into.
template <class Object>
std::optional<KeyedUnarchiver> archived(const Object& object) {
    KeyedArchiver coder;
    object.encodeWithCoder(coder);
    return KeyedUnarchiver::open(coder.archivedData());
}

}  // namespace brackwell::tests
