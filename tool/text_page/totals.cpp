// SPDX-License-Identifier: Apache-2.0
#include "text_page/totals.h"

#include "text/counted.h"
#include "text/shown_values.h"
#include "text_page/text_page.h"

namespace tool {

std::string shownSum(const Sum& sum, brackwell::OptionalText currency) {
    const auto shown = sum.shown();
    return shown ? shownAmount(*shown, currency) : "not representable";
}

void Totals::add(const std::optional<brackwell::Decimal>& written, const std::optional<Amount>& amount) {
    ++count_;
    if (!amount) {
        ++(written ? foreign_ : withoutAmount_);
        return;
    }
    (amount->isNegative() ? out_ : in_).add(*amount);
    all_.add(*amount);
}

void Totals::show(TextPage& page, brackwell::OptionalText currency) const {
    std::string text = counted(count_, "transaction: in ", "transactions: in ");
    text +=
        shownSum(in_, currency) + ", out " + shownSum(out_, currency) + ", sum " + shownSum(all_, currency);
    if (currency && !currency->empty()) text.append(" ").append(*currency);
    if (withoutAmount_ > 0)
        text.append(" (").append(std::to_string(withoutAmount_)).append(" without an amount)");
    if (foreign_ > 0) text.append(" (").append(std::to_string(foreign_)).append(" in another currency)");
    page.fact("Total", text);
}

}  // namespace tool
