// SPDX-License-Identifier: Apache-2.0
#include "json/investments.h"

#include <optional>
#include <string_view>
#include <vector>

#include "filter/filter.h"
#include "json/accounts.h"
#include "json/fields.h"
#include "json/responses.h"
#include "json/statements.h"
#include "json/writer.h"

namespace tool {
namespace {

using brackwell::InvestmentField;

/// What a field's text stands for. An amount, date or flag whose text is none is left out, like every field
/// that is absent.
void writeValue(JsonWriter& json, const InvestmentField& field) {
    switch (field.kind) {
        case InvestmentField::Kind::text:
        case InvestmentField::Kind::word:
            return writeField(json, field.name, brackwell::OptionalText(field.text));
        case InvestmentField::Kind::amount:
            return writeField(json, field.name, field.amount);
        case InvestmentField::Kind::date:
            return writeField(json, field.name, field.date);
        case InvestmentField::Kind::flag:
            if (field.text == "Y" || field.text == "N") writeField(json, field.name, field.text == "Y");
    }
}

/// The fields that are one text; adding one to the library adds it here.
void writeFields(JsonWriter& json, const brackwell::InvestmentRecord& object) {
    for (const InvestmentField& field : object.fields()) writeValue(json, field);
}

/// The kind of an object, first of its fields.
void writeKind(JsonWriter& json, std::string_view kind) {
    writeField(json, "kind", brackwell::OptionalText(kind));
}

void writeListedBalance(JsonWriter& json, const brackwell::ListedBalance& balance) {
    json.beginObject();
    writeFields(json, balance);
    writeCurrency(json, "currency", balance.currency());
    json.endObject();
}

/// A list of objects; left out when it is empty.
template <class Object>
void writeObjects(JsonWriter& json, std::string_view name, const std::vector<Object>& objects,
                  void (*write)(JsonWriter&, const Object&)) {
    if (objects.empty()) return;
    json.field(name);
    json.beginArray();
    for (const Object& object : objects) write(json, object);
    json.endArray();
}

/// A list of a statement; written when it is empty, too.
template <class Object>
void writeAll(JsonWriter& json, std::string_view name, const std::vector<Object>& objects,
              void (*write)(JsonWriter&, const Object&)) {
    json.field(name);
    json.beginArray();
    for (const Object& object : objects) {
        if (!json.isGood()) break;
        write(json, object);
    }
    json.endArray();
}

template <class Object>
void writeObject(JsonWriter& json, std::string_view name, const std::optional<Object>& object,
                 void (*write)(JsonWriter&, const Object&)) {
    if (!object) return;
    json.field(name);
    write(json, *object);
}

void writeBalance(JsonWriter& json, const brackwell::InvestmentBalance& balance) {
    json.beginObject();
    writeFields(json, balance);
    writeObjects(json, "listed", balance.listed(), writeListedBalance);
    json.endObject();
}

void writeAmounts(JsonWriter& json, const brackwell::Amounts401k& amounts) {
    json.beginObject();
    writeFields(json, amounts);
    writeObjects(json, "listed", amounts.listed(), writeListedBalance);
    json.endObject();
}

void writeLoan(JsonWriter& json, const brackwell::Loan401k& loan) {
    json.beginObject();
    writeFields(json, loan);
    json.endObject();
}

void writePeriod(JsonWriter& json, const brackwell::Period401k& period) {
    json.beginObject();
    writeKind(json, period.elementName());
    writeFields(json, period);
    writeObject(json, "contributions", period.contributions(), writeAmounts);
    writeObject(json, "withdrawals", period.withdrawals(), writeAmounts);
    writeObject(json, "earnings", period.earnings(), writeAmounts);
    json.endObject();
}

void writePlan(JsonWriter& json, const brackwell::Plan401k& plan) {
    json.beginObject();
    writeFields(json, plan);
    writeObjects(json, "loans", plan.loans(), writeLoan);
    writeObjects(json, "periods", plan.periods(), writePeriod);
    json.endObject();
}

void writePortion(JsonWriter& json, const brackwell::AssetPortion& portion) {
    json.beginObject();
    writeFields(json, portion);
    json.endObject();
}

}  // namespace

void writeInvestmentStatement(JsonWriter& json, const brackwell::InvestmentStatement& statement,
                              const Filter& filter, const SecurityLookup& securities) {
    json.beginObject();
    writeField(json, "status", statement.status(), writeStatus);
    writeField(json, "account", statement.account(), writeInvestmentAccount);
    writeFields(json, statement);
    writeAll(json, "transactions", filter.transactionsOf(statement, securities), writeInvestmentTransaction);
    writeAll(json, "positions", filter.positionsOf(statement, securities), writePosition);
    writeObject(json, "balance", statement.balance(), writeBalance);
    writeObject(json, "balance401k", statement.balance401k(), writeAmounts);
    writeObject(json, "plan401k", statement.plan401k(), writePlan);
    json.endObject();
}

void writeInvestmentTransaction(JsonWriter& json, const brackwell::InvestmentTransaction& transaction) {
    const bool isBank = transaction.kind() == brackwell::InvestmentTransactionKind::bankTransaction;
    json.beginObject();
    // One that stands without its INVBANKTRAN is called like the others.
    writeKind(json, isBank ? "INVBANKTRAN" : transaction.elementName());
    writeFields(json, transaction);
    writeCurrency(json, "currency", transaction.currency());
    writeField(json, "transferAccount", transaction.transferAccount(), writeInvestmentAccount);
    writeField(json, "transaction", transaction.bankTransaction(), writeTransaction);
    json.endObject();
}

void writePosition(JsonWriter& json, const brackwell::Position& position) {
    json.beginObject();
    writeKind(json, position.elementName());
    writeFields(json, position);
    writeCurrency(json, "currency", position.currency());
    json.endObject();
}

void writeSecurity(JsonWriter& json, const brackwell::Security& security) {
    json.beginObject();
    writeKind(json, security.elementName());
    writeFields(json, security);
    writeCurrency(json, "currency", security.currency());
    if (const brackwell::SecurityIdentifier underlying = security.underlying(); underlying.id) {
        json.field("underlying");
        json.beginObject();
        writeField(json, "id", underlying.id);
        writeField(json, "idType", underlying.idType);
        json.endObject();
    }
    writeObjects(json, "assetPortions", security.assetPortions(), writePortion);
    json.endObject();
}

}  // namespace tool
