// SPDX-License-Identifier: Apache-2.0
#include "open/placement.h"

#include <string>

#include "open/shown_text.h"

namespace brackwell::opening {

void addMisplaced(FindingList& findings, const reading::Document& document, const Misplaced& misplaced,
                  const TreePlaces& places) {
    if (misplaced.count != 0)
        findings.add(
            FindingKind::notDelivered, FindingSeverity::warning,
            counted(misplaced.count, "element is where the OFX standard does not allow it, so it is not read",
                    "elements are where the OFX standard does not allow them, so they are not read") +
                (misplaced.count == 1 ? ": " : "; the first is ") + tagOfNode(document, misplaced.first) +
                " in " + tagOfNode(document, misplaced.firstParent) + ".",
            misplaced.count, places.offsetOf(misplaced.first));
    if (misplaced.repeated != 0)
        findings.add(FindingKind::notDelivered, FindingSeverity::warning,
                     counted(misplaced.repeated, "element is", "elements are") +
                         " repeated although only one is allowed, so only the first or none is read" +
                         (misplaced.repeated == 1 ? ": " : "; the first is ") +
                         tagOfNode(document, misplaced.firstRepeated) + ".",
                     misplaced.repeated, places.offsetOf(misplaced.firstRepeated));
    if (misplaced.further != 0)
        findings.add(FindingKind::notDelivered, FindingSeverity::note,
                     counted(misplaced.further, "list is", "lists are") +
                         " repeated although only one is allowed; the content of all is read, but only the "
                         "period of the first" +
                         (misplaced.further == 1 ? ": " : "; the first is ") +
                         tagOfNode(document, misplaced.firstFurther) + ".",
                     misplaced.further, places.offsetOf(misplaced.firstFurther));
}

}  // namespace brackwell::opening
