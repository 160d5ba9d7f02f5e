// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "open/accounting.h"
#include "open/delivery.h"
#include "open/parsing.h"
#include "open/response_kind.h"
#include "open/survey.h"
#include "tree/node_ref.h"

namespace brackwell::opening {

/// A document that was parsed, with the objects made of it.
struct Interpreted {
    Parsed parsed;
    std::shared_ptr<TvOFXInterpreter> interpreter;
    KnownResponses known;  ///< among the interpreter's responses
    std::vector<InvestmentStatement> investmentStatements;
    std::vector<Security> securities;
    Survey survey;
    Accounting accounting;
    std::size_t missing = 0;       ///< what the tree holds and no object delivers
    std::size_t repairable = 0;    ///< that of it which may be delivered after a repair
    std::size_t headerFaults = 0;  ///< places of the header that hide fields of it

    bool isRead() const noexcept { return interpreter != nullptr; }
    /// True when there is nothing to repair.
    bool isWhole() const noexcept {
        return isRead() && parsed.hasRoot() && repairable + furtherLists() + doubtful() + headerFaults == 0;
    }
    /// How many parts of the tree do not, or may not, say what the document means.
    std::size_t doubtful() const noexcept {
        return survey.misplaced.count + survey.misplaced.repeated + accounting.mendable();
    }
    /// Repeated lists. A repair merges them, which may leave a period outside; so they weigh more than what
    /// is doubtful.
    std::size_t furtherLists() const noexcept { return survey.misplaced.further; }
    const reading::Document& document() const noexcept {
        return reading::NodeRef::of(*parsed.content.ofxData).document();
    }
    const TvOFXResponseList& responses() const noexcept { return interpreter->allResponses(); }
    Delivery delivery() const { return Delivery({known, investmentStatements, securities}, survey.found); }
    std::size_t found(Content content_) const noexcept {
        return survey.found[static_cast<std::size_t>(content_)];
    }
};

/// Makes the objects of a parsed document, if it was read, and counts what they deliver. `datesOfFile` are
/// the dates of all documents of the file, where they are known; otherwise null.
Interpreted interpreted(Parsed parsed, const OpenOptions& options, const WrittenDates* datesOfFile);

/// How much of a document its objects say.
struct Worth {
    explicit Worth(const Interpreted& content) noexcept;

    bool isRead;
    bool hasRoot;
    std::size_t repairable;
    std::size_t furtherLists;
    std::size_t doubtful;
    std::size_t headerFaults;
};

/// True when a repair has improved the content. The first difference decides, the most important one first.
bool isBetter(const Worth& repaired, const Worth& before) noexcept;

/// Gives back the memory of a document's tree and objects; what is known of its text stays.
void setAside(Interpreted& content);

/// Makes the tree and the objects again that were set aside. Does nothing when they are there.
void readAgain(Interpreted& content, const OpenOptions& options, const WrittenDates* datesOfFile);

/// The accounts of account lists, with the blocks that a record leaves out.
std::vector<ListedAccount> accountsOf(const std::vector<const TvOFXAccountInfoResponse*>& lists);

}  // namespace brackwell::opening
