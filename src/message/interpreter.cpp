// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>
#include <brackwell/profile.h>
#include <brackwell/statements.h>

#include <type_traits>

#include "elements/roles.h"
#include "fields/wrapper_name.h"
#include "memory/make_room.h"
#include "memory/rollback.h"
#include "message/response_as.h"
#include "tree/node_ref.h"

namespace brackwell {

using reading::element;
using reading::NodeRef;

namespace {

std::optional<ParseDictionary> dictionaryOf(const NodeRef& value) {
    if (!value.isDictionary()) return std::nullopt;
    return value.dictionary();
}

using Helper = std::shared_ptr<TvOFXHelper>;

/// Responses other than statements convert with the shared helper, never with the caller's: intended.
template <class Response>
std::shared_ptr<TvOFXResponse> make(const std::optional<ParseDictionary>& node, const Helper&) {
    return Response::initWithParseDict(node);
}

/// A statement converts with the caller's helper, so it reads its node only once it has the helper.
template <class Statement>
std::shared_ptr<TvOFXResponse> makeStatement(const std::optional<ParseDictionary>& node,
                                             const Helper& helper) {
    auto statement = std::make_shared<Statement>();
    statement->setHelperObject(helper);
    statement->parseDictionary(node);
    return statement;
}

/// The class that stands for an aggregate.
struct ResponseClass {
    std::string_view name;
    std::shared_ptr<TvOFXResponse> (*make)(const std::optional<ParseDictionary>& node, const Helper& helper);
};
constexpr std::array<ResponseClass, 5> kResponseClasses{
    {{"STMTRS", makeStatement<TvOFXStatementResponse>},
     {"CCSTMTRS", makeStatement<TvOFXCCStatementResponse>},
     {"SONRS", make<TvOFXSignOnResponse>},
     {"ACCTINFORS", make<TvOFXAccountInfoResponse>},
     {"PROFRS", make<TvOFXFIProfileResponse>}}};

template <class List>
const typename List::mapped_type* find(const List& lists, std::string_view key) {
    const auto found = lists.find(key);
    return found == lists.end() ? nullptr : &found->second;
}

/// The entry under a key. One that has to be made stays outside of the map until it is kept.
template <class Value>
class PreparedEntry {
public:
    PreparedEntry(TextMap<Value>& map, std::string_view key) : map_(map) {
        const auto found = map.find(key);
        value_ = found != map.end() ? &found->second : &made_[std::string(key)];
    }
    Value& operator*() noexcept { return *value_; }
    void keep() noexcept { map_.merge(made_); }

private:
    TextMap<Value>& map_;
    TextMap<Value> made_;
    Value* value_;
};

/// Reads the message sets of a tree's "OFX" element.
void interpretMessageSets(TvOFXInterpreter& interpreter, const NodeRef& ofx) {
    for (const NodeRef& messageSet : ofx.children()) {
        if (!messageSet.isDictionary()) continue;
        for (const NodeRef& entry : messageSet.children())
            for (const NodeRef& wrapper : entry.elements())
                if (wrapper.isDictionary())
                    interpreter.addResponse(
                        interpreter.interpretResponseDict(wrapper.dictionary(), wrapper.name()),
                        messageSet.name());
    }
}

}  // namespace

std::shared_ptr<TvOFXInterpreter> TvOFXInterpreter::initWithParseResult(
    const TvOFXParserResult& parserResult) {
    return std::make_shared<TvOFXInterpreter>(parserResult);
}

bool TvOFXInterpreter::interpret() {
    // Into another interpreter, so that this one is unchanged when memory runs out.
    TvOFXInterpreter read({std::nullopt, parserDict()});
    const NodeRef ofx = parserDict() ? NodeRef::of(*read.parserDict())[element("OFX")] : NodeRef();
    if (!ofx.isDictionary()) {
        reset();
        return false;
    }
    read.setHelperObject(helperObject_);
    interpretMessageSets(read, ofx);
    const bool hasChildren = ofx.node().size > 0;
    read.setHelperObject(helperObject_);  // again, since a formatter may have replaced it
    static_assert(std::is_nothrow_move_assignable_v<TvOFXInterpreter>);
    *this = std::move(read);
    return hasChildren;
}

void TvOFXInterpreter::reset() noexcept {
    signOnResponse_.reset();
    fiProfileResponse_.reset();
    responseObjects_.clear();
    responseObjectsPerTranUID_.clear();
    responseObjectsPerSGMLKey_.clear();
    statusObjects_.clear();
    for (TvOFXResponseList& list : messageSets_) list.clear();
}

std::shared_ptr<TvOFXResponse> TvOFXInterpreter::interpretResponseDict(
    const std::optional<ParseDictionary>& node, std::string_view withMessageSetKey) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a formatter may replace it
    const std::optional<ParseDictionary> held = node;
    const NodeRef wrapper = held ? NodeRef::of(*held) : NodeRef();
    const NodeRef statusNode = wrapper[element("STATUS")];
    std::string innerName(withMessageSetKey);
    std::optional<ParseDictionary> innerNode = held;
    OptionalText uid;
    if (elements::isWrapper(withMessageSetKey)) {
        innerName = innerResponseName(withMessageSetKey);
        // An inner node that is not a dictionary counts as absent.
        innerNode = held ? (*held)[innerName].dictionary() : std::nullopt;
        if (const NodeRef value = wrapper[element("TRNUID")]; value.isText()) uid = value.text();
    }

    // Making the response sets these two; filing it may still fail.
    Rollback before(signOnResponse_, fiProfileResponse_);
    std::shared_ptr<TvOFXResponse> response = createResponseObjectForKey(innerName, innerNode);
    if (const auto status = dictionaryOf(statusNode))
        response->setStatus(TvOFXStatus::initWithParseDict(status));
    if (uid) response->setTransactionUID(uid);
    response->setTransactionWrapperName(innerName);
    response->setOriginalParseData(innerNode);
    file(response, innerName);
    before.keep();
    return response;
}

/// Files a response in all indexes, or in none when there is no memory for all.
void TvOFXInterpreter::file(const std::shared_ptr<TvOFXResponse>& response, std::string_view name) {
    const OptionalText uid = response->transactionUID();
    // All memory first; after that nothing can fail.
    PreparedEntry named(responseObjectsPerSGMLKey_, name);
    makeRoom(responseObjects_, 1);
    makeRoom(*named, 1);
    if (uid) {
        PreparedEntry identified(responseObjectsPerTranUID_, *uid);
        makeRoom(*identified, 1);
        if (response->status()) {
            PreparedEntry status(statusObjects_, *uid);
            *status = response->status();
            status.keep();
        }
        (*identified).push_back(response);
        identified.keep();
    }
    (*named).push_back(response);
    named.keep();
    responseObjects_.push_back(response);
}

std::shared_ptr<TvOFXResponse> TvOFXInterpreter::createResponseObjectForKey(
    std::string_view name, const std::optional<ParseDictionary>& andResponseDict) {
    for (const ResponseClass& row : kResponseClasses) {
        if (row.name != name) continue;
        std::shared_ptr<TvOFXResponse> response = row.make(andResponseDict, helperObject_);
        if (auto asSignOn = sharedAs<TvOFXSignOnResponse>(response))
            signOnResponse_ = std::move(asSignOn);
        else if (auto asProfile = sharedAs<TvOFXFIProfileResponse>(response))
            fiProfileResponse_ = std::move(asProfile);
        return response;
    }
    return TvOFXResponse::initWithParseDict(andResponseDict);
}

void TvOFXInterpreter::addResponse(const std::shared_ptr<TvOFXResponse>& response,
                                   std::string_view toMessageSet) {
    if (!response) return;
    struct Row {
        std::string_view prefix;  ///< of the name, without the digit of the version
        MessageSet list;
    };
    static constexpr auto kRows = std::to_array<Row>({
        {"SIGNONMSGSRSV", signOn},
        {"SIGNUPMSGSRSV", signUp},
        {"BANKMSGSRSV", banking},
        {"CREDITCARDMSGSRSV", creditCard},
        {"INVSTMTMSGSRSV", investment},
        {"INTERXFERMSGSRSV", interbankTransfers},
        {"WIREXFERMSGSRSV", wireTransfers},
        {"BILLPAYMSGSRSV", billPayment},
        {"EMAILMSGSRSV", email},
        {"SECLISTMSGSRSV", securities},
    });
    static_assert(kRows.size() == messageSetCount);
    // A response of any other message set is in none of these lists, but still among all responses.
    for (const Row& row : kRows)
        if (toMessageSet.starts_with(row.prefix)) return messageSets_[row.list].push_back(response);
}

const TvOFXResponseList* TvOFXInterpreter::responsesForKey(std::string_view name) const {
    return find(responseObjectsPerSGMLKey_, name);
}

const TvOFXResponseList* TvOFXInterpreter::responsesForTransactionUID(std::string_view uid) const {
    return find(responseObjectsPerTranUID_, uid);
}

}  // namespace brackwell
