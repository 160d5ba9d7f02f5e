// SPDX-License-Identifier: Apache-2.0
#include "repair/arrangement.h"

#include <utility>

#include "repair/placing.h"
#include "repair/uniting.h"
#include "repair/work_tree.h"

namespace brackwell::repair {

Arrangement arranged(Tree tree) {
    WorkTree work(std::move(tree));
    placeElements(work);
    uniteRepeated(work);
    return std::move(work).finish();
}

}  // namespace brackwell::repair
