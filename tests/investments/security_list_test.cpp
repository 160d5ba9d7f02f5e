// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "investments/documents.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::string stock(const std::string& id, const std::string& type, const std::string& name) {
    return "<STOCKINFO><SECINFO><SECID><UNIQUEID>" + id + (type.empty() ? "" : "<UNIQUEIDTYPE>" + type) +
           "</SECID><SECNAME>" + name + "</SECINFO></STOCKINFO>";
}

std::string nameOf(const std::optional<Security>& security) {
    return security ? std::string(security->name().value_or("?")) : "none";
}

struct SecurityRow {
    OptionalText id;
    OptionalText idType;
    std::string name;
};

}  // namespace

TEST_CASE("a security is found by its identifier and the type of it") {
    const SecurityList list(securitiesWith(
        stock("2", "ISIN", "two") + stock("1", "ISIN", "one as ISIN") + stock("1", "CUSIP", "one as CUSIP") +
        stock("1", "CUSIP", "again") + stock("3", "", "three") + "<STOCKINFO></STOCKINFO>"));
    CHECK(list.all().size() == 6);
    const std::vector<SecurityRow> rows{
        {"1", "CUSIP", "one as CUSIP"}, {"1", "ISIN", "one as ISIN"},
        {"1", "SEDOL", "none"},         {"1", "isin", "one as ISIN"},
        {"1", "Cusip", "one as CUSIP"}, {"1", "CUSIPS", "none"},
        {"2", "ISIN", "two"},           {"2", std::nullopt, "two"},
        {"3", "CUSIP", "three"},        {"3", std::nullopt, "three"},
        {"4", "CUSIP", "none"},         {"0", std::nullopt, "none"},
        {std::nullopt, "ISIN", "none"}, {std::nullopt, std::nullopt, "none"},
    };
    for (const SecurityRow& row : rows) {
        CAPTURE(std::string(row.id.value_or("nothing")));
        CAPTURE(std::string(row.idType.value_or("nothing")));
        CHECK(nameOf(list.find(row.id, row.idType)) == row.name);
    }
    CHECK_FALSE(SecurityList().find("1", std::nullopt));
}

TEST_CASE("positions and transactions find their security, in the list of another document too") {
    const SecurityList list(securitiesWith(stock("1", "CUSIP", "one")));
    const std::string id = "<SECID><UNIQUEID>1<UNIQUEIDTYPE>CUSIP</SECID>";
    CHECK(nameOf(list.find(positionWith("<POSSTOCK><INVPOS>" + id + "</INVPOS></POSSTOCK>"))) == "one");
    CHECK(nameOf(list.find(transactionWith("<INCOME>" + id + "</INCOME>"))) == "one");
    CHECK(nameOf(list.find(transactionWith("<MARGININTEREST></MARGININTEREST>"))) == "none");
}
