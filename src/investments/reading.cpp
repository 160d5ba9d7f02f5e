// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <cstddef>

#include "investments/field_tables.h"
#include "investments/record_names.h"
#include "investments/records.h"

namespace brackwell {
namespace investments {
namespace {

using reading::element;
using reading::Node;

constexpr NameID kWrapper = element("INVSTMTTRNRS");
constexpr NameID kStatement = element("INVSTMTRS");
constexpr NameID kStatus = element("STATUS");
constexpr NameID kAccount = element("INVACCTFROM");
constexpr NameID kBankTransaction = element("STMTTRN");
constexpr NameID kBankTransactions = element("BANKTRANLIST");
constexpr NameID kTransactions = element("INVTRANLIST");
constexpr NameID kPositions = element("INVPOSLIST");

/// What the two walks through the nodes of a document share.
class Reader {
public:
    Reader(Records& records, const std::shared_ptr<TvOFXHelper>& helper) noexcept
        : records_(records), ownHelper_(helper), helper_(helper ? *helper : *TvOFXHelper::defaultHelper()) {}

protected:
    const Node& node(std::uint32_t index) const noexcept { return records_.node(index); }
    std::uint32_t endOf(std::uint32_t index) const noexcept { return records_.document->endOf(index); }

    Records& records_;
    const std::shared_ptr<TvOFXHelper>& ownHelper_;
    const TvOFXHelper& helper_;
};

/// Walks through the nodes in document order, from aggregate to aggregate. The inside of an object is walked
/// through again only when it has aggregates that do not belong to it: where close tags are missing, nothing
/// is lost, and the time is still in proportion to the size.
class StatementsReader : Reader {
public:
    using Reader::Reader;

    void read(std::uint32_t first) {
        const std::uint32_t end = endOf(first);
        for (std::uint32_t at = first; at < end;) {
            if (at >= endOfWrapper_) closeWrapper();
            at = next(at);
        }
        closeWrapper();
    }

private:
    /// Reads what begins here, if it is a statement; returns where to go on.
    std::uint32_t next(std::uint32_t at) {
        if (!node(at).isAggregate()) return at + 1;
        const NameID name = node(at).name();
        if (name == kBankTransactions) return endOf(at);
        if (name == kWrapper) openWrapper(at);
        if (name != kStatement) return at + 1;
        return readStatement(at) ? at + 1 : endOf(at);
    }

    void openWrapper(std::uint32_t at) {
        closeWrapper();
        wrapper_ = at;
        endOfWrapper_ = endOf(at);
        hasStatement_ = false;
        inWrapper_ = RecordReader(records_, RecordType::statement);
        inWrapper_->read(at);
    }
    /// A wrapper without a statement says why there is none, and stands for it.
    void closeWrapper() {
        if (endOfWrapper_ == 0) return;
        if (!hasStatement_) addStatement(*inWrapper_, wrapper_);
        endOfWrapper_ = 0;
        inWrapper_.reset();
    }

    /// Reads a statement. True when there is another one inside, which has still to be read.
    bool readStatement(std::uint32_t at) {
        // What the wrapper says (TRNUID, STATUS) belongs to each statement in it.
        RecordReader reader = inWrapper_ ? *inWrapper_ : RecordReader(records_, RecordType::statement);
        reader.read(at);
        hasStatement_ = true;
        hasInnerStatement_ = false;
        const std::size_t index = addStatement(reader, at);
        auto& ranges = records_.statements[index].ranges;
        for (std::size_t i = 0; i < kRecordTypes; ++i) ranges[i].first = records_.numbers[i].size();
        const std::uint32_t end = endOf(at);
        for (std::uint32_t content = at + 1; content < end;) content = readContent(content);
        for (std::size_t i = 0; i < kRecordTypes; ++i) ranges[i].second = records_.numbers[i].size();
        return hasInnerStatement_;
    }

    std::size_t addStatement(RecordReader& reader, std::uint32_t at) {
        const std::size_t index = records_.statements.size();
        StatementParts& parts = records_.statements.emplace_back();
        if (const std::uint32_t found = reader.nodeOf(kStatus))
            parts.status = TvOFXStatus::initWithParseDict(records_.dictionaryAt(found));
        if (const std::uint32_t found = reader.nodeOf(kAccount))
            parts.account = TvOFXInvestmentAccount::initWithParseDict(records_.dictionaryAt(found));
        reader.add(at, 0, helper_, static_cast<std::uint32_t>(index));
        return index;
    }

    /// Reads what begins here in a statement; returns where to go on.
    std::uint32_t readContent(std::uint32_t at) {
        if (!node(at).isAggregate()) return at + 1;
        const NameID name = node(at).name();
        if (name == kStatement) {
            hasInnerStatement_ = true;
            return endOf(at);
        }
        if (name == kBankTransaction) return readLoneBankTransaction(at);
        const RecordName* row = recordNamed(name);
        if (row == nullptr) return at + 1;
        RecordReader reader(records_, row->type);
        const bool hasOthers = reader.read(at);
        const std::uint32_t bank = row->type == RecordType::transaction ? reader.nodeOf(kBankTransaction) : 0;
        reader.add(at, row->kind, helper_, bank != 0 ? addBankTransaction(bank) : 0);
        return hasOthers ? at + 1 : endOf(at);
    }

    /// Reads a STMTTRN outside INVBANKTRAN, which then is a transaction of its own.
    std::uint32_t readLoneBankTransaction(std::uint32_t at) {
        if (at != lastBankTransaction_) {
            RecordReader reader(records_, RecordType::transaction);
            reader.add(at, static_cast<std::uint8_t>(InvestmentTransactionKind::bankTransaction), helper_,
                       addBankTransaction(at));
        }
        return endOf(at);
    }

    /// Returns its number, from 1 on.
    std::uint32_t addBankTransaction(std::uint32_t at) {
        auto transaction = std::make_shared<TvOFXStatementTransaction>();
        transaction->setHelperObject(ownHelper_);
        transaction->parseDictionary(records_.dictionaryAt(at));
        records_.bankTransactions.push_back(std::move(transaction));
        lastBankTransaction_ = at;
        return static_cast<std::uint32_t>(records_.bankTransactions.size());
    }

    std::uint32_t wrapper_ = 0;
    std::uint32_t endOfWrapper_ = 0;         ///< 0: none is open
    std::optional<RecordReader> inWrapper_;  ///< what the open wrapper says of its statements
    bool hasStatement_ = false;              ///< in the wrapper
    bool hasInnerStatement_ = false;         ///< in the statement that is read
    std::uint32_t lastBankTransaction_ = 0;
};

class SecuritiesReader : Reader {
public:
    using Reader::Reader;

    void read(std::uint32_t first) {
        const std::uint32_t end = endOf(first);
        for (std::uint32_t at = first; at < end;) at = next(at);
    }

private:
    std::uint32_t next(std::uint32_t at) {
        if (!node(at).isAggregate()) return at + 1;
        const NameID name = node(at).name();
        if (name == kBankTransactions || name == kTransactions || name == kPositions) return endOf(at);
        const RecordName* row = recordNamed(name);
        if (row == nullptr || (row->type != RecordType::security && row->type != RecordType::portion))
            return at + 1;
        RecordReader reader(records_, row->type);
        const bool hasOthers = reader.read(at);
        reader.add(at, row->kind, helper_);
        return hasOthers ? at + 1 : endOf(at);
    }
};

/// All objects of a class that a reader finds.
template <class Walk, class Object>
std::vector<Object> readAll(const std::optional<ParseDictionary>& document,
                            const std::shared_ptr<TvOFXHelper>& given, RecordType type) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a formatter may replace it
    const std::shared_ptr<TvOFXHelper> helper = given;
    const reading::NodeRef root = document ? reading::NodeRef::of(*document) : reading::NodeRef();
    if (!root) return {};
    const auto records = std::make_shared<Records>();
    records->document = *root.owner;
    Walk(*records, helper).read(root.index());
    const auto& numbers = records->numbers[static_cast<std::size_t>(type)];
    std::vector<Object> objects;
    objects.reserve(numbers.size());
    for (std::uint32_t i = 0; i < numbers.size(); ++i) objects.emplace_back(records, numbers[i]);
    return objects;
}

}  // namespace
}  // namespace investments

using namespace investments;

std::vector<InvestmentStatement> investmentStatements(const std::optional<ParseDictionary>& document,
                                                      const std::shared_ptr<TvOFXHelper>& helper) {
    return readAll<StatementsReader, InvestmentStatement>(document, helper, RecordType::statement);
}

std::vector<Security> securities(const std::optional<ParseDictionary>& document,
                                 const std::shared_ptr<TvOFXHelper>& helper) {
    return readAll<SecuritiesReader, Security>(document, helper, RecordType::security);
}

}  // namespace brackwell
