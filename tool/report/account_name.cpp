// SPDX-License-Identifier: Apache-2.0
#include "report/account_name.h"

#include <algorithm>
#include <cstddef>
#include <map>

#include "accounts/account_titles.h"
#include "report/html_writer.h"

namespace tool {
namespace {

/// A number in full may be wider than the page, and so has to be parted somewhere.
constexpr std::size_t kLongestWhole = 16;

using Group = std::vector<NamedAccount*>;

void addDistinction(AccountName& name, const std::string& text) {
    name.distinction.append(name.distinction.empty() ? "" : ", ").append(text);
}

/// The accounts that share a name, by name.
std::vector<Group> namesakes(std::vector<NamedAccount>& accounts) {
    std::map<std::string, Group> byName;
    for (NamedAccount& account : accounts) byName[account.name->text()].push_back(&account);
    std::vector<Group> groups;
    for (auto& [name, group] : byName)
        if (group.size() > 1) groups.push_back(std::move(group));
    return groups;
}

/// Adds what they have in a member, where that tells some of them apart.
void distinguishBy(std::vector<NamedAccount>& accounts, std::string NamedAccount::*member) {
    for (const Group& group : namesakes(accounts)) {
        const bool isSame = std::ranges::all_of(
            group, [&](const NamedAccount* account) { return account->*member == group.front()->*member; });
        for (NamedAccount* account : group)
            if (!isSame && !(account->*member).empty()) addDistinction(*account->name, account->*member);
    }
}

}  // namespace

std::string AccountName::text() const {
    return title + (number.empty() ? "" : " " + number) + (distinction.empty() ? "" : ", " + distinction);
}

void AccountName::take(std::string_view listed, std::string_view wholeNumber) {
    if (listed.empty()) return;
    title = withoutNumber(listed, wholeNumber, number);
    if (title != listed) number.clear();
}

void distinguish(std::vector<NamedAccount>& accounts) {
    distinguishBy(accounts, &NamedAccount::institution);
    distinguishBy(accounts, &NamedAccount::currency);
    for (const Group& group : namesakes(accounts))
        for (std::size_t i = 0; i < group.size(); ++i)
            addDistinction(*group[i]->name, "no. " + std::to_string(i + 1));
}

void writeName(HtmlWriter& html, const AccountName& name) {
    if (name.number.empty() || name.number.size() > kLongestWhole)
        return html.write("<bdi>{}</bdi>", name.text());
    html.write("<bdi>{} <span class=\"digits\">{}</span>", name.title, name.number);
    if (!name.distinction.empty()) html.write(", {}", name.distinction);
    html.write("</bdi>");
}

}  // namespace tool
