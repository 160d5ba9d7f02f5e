// SPDX-License-Identifier: Apache-2.0
#include "tool/json_schema.h"

#include <algorithm>
#include <map>
#include <regex>

namespace brackwell::tests {
namespace {

/// The value, and what it is held against.
class Check {
public:
    explicit Check(const Json& root) : root_(root) {}

    std::string difference(const Json& schema, const Json& value, const std::string& place) const {
        for (const auto& [keyword, wanted] : schema.items()) {
            const auto rule = rules().find(keyword);
            if (rule == rules().end()) return place + ": the schema has the keyword " + keyword;
            const std::string found = (this->*rule->second)(schema, wanted, value, place);
            if (!found.empty()) return found;
        }
        return {};
    }

private:
    using Rule = std::string (Check::*)(const Json&, const Json&, const Json&, const std::string&) const;

    static const std::map<std::string, Rule>& rules() {
        static const std::map<std::string, Rule> rules{{"$schema", &Check::nothing},
                                                       {"$defs", &Check::nothing},
                                                       {"title", &Check::nothing},
                                                       {"description", &Check::nothing},
                                                       {"$ref", &Check::reference},
                                                       {"type", &Check::type},
                                                       {"const", &Check::constant},
                                                       {"enum", &Check::enumeration},
                                                       {"pattern", &Check::pattern},
                                                       {"minimum", &Check::minimum},
                                                       {"required", &Check::required},
                                                       {"properties", &Check::properties},
                                                       {"additionalProperties", &Check::others},
                                                       {"items", &Check::items},
                                                       {"anyOf", &Check::anyOf}};
        return rules;
    }

    std::string nothing(const Json&, const Json&, const Json&, const std::string&) const { return {}; }

    std::string reference(const Json&, const Json& wanted, const Json& value,
                          const std::string& place) const {
        const std::string pointer = wanted.get<std::string>().substr(1);
        return difference(root_.at(Json::json_pointer(pointer)), value, place);
    }
    std::string type(const Json&, const Json& wanted, const Json& value, const std::string& place) const {
        const std::string name = value.is_number_integer() ? "integer" : value.type_name();
        const bool isOne =
            wanted.is_array() ? std::ranges::find(wanted, Json(name)) != wanted.end() : wanted == name;
        return isOne ? "" : place + ": is of type " + name;
    }
    std::string constant(const Json&, const Json& wanted, const Json& value, const std::string& place) const {
        return value == wanted ? "" : place + ": is not " + wanted.dump();
    }
    std::string enumeration(const Json&, const Json& wanted, const Json& value,
                            const std::string& place) const {
        return std::ranges::find(wanted, value) != wanted.end() ? "" : place + ": is not among the values";
    }
    std::string pattern(const Json&, const Json& wanted, const Json& value, const std::string& place) const {
        if (!value.is_string()) return {};
        return std::regex_search(value.get<std::string>(), std::regex(wanted.get<std::string>()))
                   ? ""
                   : place + ": does not match " + wanted.dump();
    }
    std::string minimum(const Json&, const Json& wanted, const Json& value, const std::string& place) const {
        return !value.is_number() || value >= wanted ? "" : place + ": is too small";
    }
    std::string required(const Json&, const Json& wanted, const Json& value, const std::string& place) const {
        for (const Json& name : wanted)
            if (!value.contains(name.get<std::string>())) return place + ": lacks " + name.dump();
        return {};
    }
    std::string properties(const Json&, const Json& wanted, const Json& value,
                           const std::string& place) const {
        for (const auto& [name, schema] : wanted.items()) {
            if (!value.is_object() || !value.contains(name)) continue;
            const std::string found = difference(schema, value.at(name), place + "/" + name);
            if (!found.empty()) return found;
        }
        return {};
    }
    std::string others(const Json& schema, const Json& wanted, const Json& value,
                       const std::string& place) const {
        if (!value.is_object()) return {};
        for (const auto& [name, element] : value.items()) {
            if (schema.contains("properties") && schema["properties"].contains(name)) continue;
            if (wanted == Json(false)) return place + "/" + name + ": is not in the schema";
            const std::string found = difference(wanted, element, place + "/" + name);
            if (!found.empty()) return found;
        }
        return {};
    }
    std::string items(const Json&, const Json& wanted, const Json& value, const std::string& place) const {
        for (std::size_t i = 0; value.is_array() && i < value.size(); ++i) {
            const std::string found = difference(wanted, value[i], place + "/" + std::to_string(i));
            if (!found.empty()) return found;
        }
        return {};
    }
    /// Of those that do not fit, the one that fits furthest is told of.
    std::string anyOf(const Json&, const Json& wanted, const Json& value, const std::string& place) const {
        std::string deepest;
        for (const Json& schema : wanted) {
            const std::string found = difference(schema, value, place);
            if (found.empty()) return {};
            if (deepest.empty() || std::ranges::count(found, '/') > std::ranges::count(deepest, '/'))
                deepest = found;
        }
        return deepest;
    }

    const Json& root_;
};

}  // namespace

std::string differenceFrom(const Json& schema, const Json& value) {
    return Check(schema).difference(schema, value, "");
}

}  // namespace brackwell::tests
