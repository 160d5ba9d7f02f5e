// SPDX-License-Identifier: Apache-2.0
#include "repair/tags.h"

#include <utility>

#include "repair/crossed_tags.h"
#include "repair/markup.h"
#include "repair/nesting.h"

namespace brackwell::repair {

Edits tagEdits(std::string_view body) {
    reading::NameTable names;
    // A body that begins with a tag is that of a document found by its root.
    Markup markup = readMarkup(body, body.starts_with('<'), names);
    uncross(markup.tags);
    // What is inserted between a tag and the markup after it comes first.
    return merged(repairNesting(body, markup.tags, names), std::move(markup.edits));
}

}  // namespace brackwell::repair
