// SPDX-License-Identifier: Apache-2.0
#include "support/archive_copy.h"
#include "support/documents.h"
#include "support/transcript.h"
#include "target.h"

/// \file
/// Bytes as an archive, and every class that is restored from one.

namespace brackwell::fuzz {
namespace {

Data archiveOf(const TvOFXAggregate& object) {
    KeyedArchiver coder;
    object.encodeWithCoder(coder);
    return coder.archivedData();
}

template <class Object>
void requireRestored(const KeyedUnarchiver& archive) {
    const std::shared_ptr<Object> object = Object::initWithCoder(archive);
    require(object != nullptr, "an object is made of any archive");
    const std::shared_ptr<Object> again = tests::restored(*object);
    require(again != nullptr, "the archive of an object opens");
    require(archiveOf(*object) == archiveOf(*again), "an object comes back from its archive");
    if (object->originalParseData())
        require(object->originalParseData() == again->originalParseData(), "and with its tree");
    tests::transcriptOf(*object);
}

void requireEqual(const TvOFXStatementTransaction& a, const TvOFXStatementTransaction& b) {
    require(a.isEqualOFXStatementTransaction(&b) && b.isEqualOFXStatementTransaction(&a),
            "a restored transaction is equal to the first one");
}

}  // namespace

void tryBytes(std::string_view bytes) {
    const std::optional<KeyedUnarchiver> archive = KeyedUnarchiver::open(Data::view(bytes));
    if (!archive) return;
    const std::optional<KeyedArchiver> copy = tests::copyOf(*archive, bytes);
    require(copy.has_value(), "every value of an archive is of one kind");
    require(copy->archivedData().bytes() == bytes, "an archive is, byte for byte, what is written");
    requireRestored<TvOFXAggregate>(*archive);
    requireRestored<TvOFXBankAccount>(*archive);
    requireRestored<TvOFXCreditCardAccount>(*archive);
    requireRestored<TvOFXPayee>(*archive);
    requireRestored<TvOFXStatementTransaction>(*archive);
    const auto transaction = TvOFXStatementTransaction::initWithCoder(*archive);
    requireEqual(*transaction, *tests::restored(*transaction));
}

}  // namespace brackwell::fuzz
