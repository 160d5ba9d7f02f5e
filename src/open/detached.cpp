// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>

#include "tree/tree_copy.h"

namespace brackwell {
namespace {

/// A copy of a node that is a tree of its own.
std::optional<ParseDictionary> copied(const std::optional<ParseDictionary>& node) {
    if (!node) return std::nullopt;
    return reading::copyOf(*node);
}

/// The same through an archive, for an object that was not read from a document.
std::shared_ptr<TvOFXStatementTransaction> copiedThroughArchive(
    const TvOFXStatementTransaction& transaction) {
    KeyedArchiver archiver;
    transaction.encodeWithCoder(archiver);
    const auto archive = KeyedUnarchiver::open(archiver.archivedData());
    return archive ? TvOFXStatementTransaction::initWithCoder(*archive)
                   : std::make_shared<TvOFXStatementTransaction>();
}

}  // namespace

std::shared_ptr<TvOFXStatementTransaction> detached(
    const std::shared_ptr<const TvOFXStatementTransaction>& transaction) {
    if (!transaction) return nullptr;
    if (!transaction->originalParseData()) return copiedThroughArchive(*transaction);
    auto copy = std::make_shared<TvOFXStatementTransaction>();
    copy->setHelperObject(transaction->helperObject());
    copy->parseDictionary(copied(transaction->originalParseData()));
    // What the caller may have set since it was read.
    copy->setOfxVersion(transaction->ofxVersion());
    copy->setDatePosted(transaction->datePosted());
    copy->setFiTransactionID(transaction->fiTransactionID());
    return copy;
}

std::shared_ptr<TvOFXAccountStatement> detached(
    const std::shared_ptr<const TvOFXAccountStatement>& statement) {
    if (!statement) return nullptr;
    std::shared_ptr<TvOFXAccountStatement> copy;
    if (dynamic_cast<const TvOFXCCStatementResponse*>(statement.get()) != nullptr)
        copy = std::make_shared<TvOFXCCStatementResponse>();
    else
        copy = std::make_shared<TvOFXStatementResponse>();
    copy->setHelperObject(statement->helperObject());
    if (statement->originalParseData()) copy->parseDictionary(copied(statement->originalParseData()));
    copy->setOfxVersion(statement->ofxVersion());
    if (const auto& status = statement->status())
        copy->setStatus(TvOFXStatus::initWithParseDict(copied(status->originalParseData())));
    copy->setTransactionUID(statement->transactionUID());
    copy->setTransactionWrapperName(statement->transactionWrapperName());
    return copy;
}

}  // namespace brackwell
