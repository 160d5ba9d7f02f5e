// SPDX-License-Identifier: Apache-2.0
#include "cell.h"

namespace brackwell::python {
namespace {

/// An attribute of a module, looked up once; it stays for the rest of the process.
class Imported {
public:
    Imported(const char* module, const char* name) : module_(module), name_(name) {}
    nb::handle operator*() {
        if (!object_.is_valid()) object_ = nb::getattr(nb::module_::import_(module_), name_).release();
        return object_;
    }

private:
    const char* module_;
    const char* name_;
    nb::handle object_;
};

nb::object dayToPython(std::chrono::year_month_day day) {
    static Imported date("datetime", "date");
    return (*date)(static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                   static_cast<unsigned>(day.day()));
}

nb::object momentToPython(Date moment) {
    static Imported datetime("datetime", "datetime");
    static Imported timezone("datetime", "timezone");
    static nb::handle utc = nb::getattr(*timezone, "utc").release();
    const auto days = std::chrono::floor<std::chrono::days>(moment);
    const auto day = dayOf(moment);
    if (!day) return nb::none();
    const std::chrono::hh_mm_ss time(moment - days);
    return (*datetime)(static_cast<int>(day->year()), static_cast<unsigned>(day->month()),
                       static_cast<unsigned>(day->day()), time.hours().count(), time.minutes().count(),
                       time.seconds().count(), time.subseconds().count() * 1000, utc);
}

struct ToPython {
    nb::object operator()(std::monostate) const { return nb::none(); }
    nb::object operator()(std::string_view text) const { return nb::str(text.data(), text.size()); }
    nb::object operator()(const std::string& text) const { return nb::str(text.data(), text.size()); }
    nb::object operator()(const Decimal& number) const { return toPython(number); }
    nb::object operator()(std::chrono::year_month_day day) const { return dayToPython(day); }
    nb::object operator()(Date moment) const { return momentToPython(moment); }
    nb::object operator()(bool flag) const { return nb::bool_(flag); }
    nb::object operator()(std::int64_t number) const { return nb::int_(number); }
    nb::object operator()(const Word& word) const { return word.member(word.value); }
};

}  // namespace

std::optional<std::chrono::year_month_day> dayOf(std::optional<Date> moment) {
    if (!moment) return std::nullopt;
    const std::chrono::year_month_day day(std::chrono::floor<std::chrono::days>(*moment));
    if (!day.ok() || day.year() < std::chrono::year(1) || day.year() > std::chrono::year(9999))
        return std::nullopt;
    return day;
}

nb::object toPython(const Cell& cell) { return std::visit(ToPython(), cell); }

nb::object toPython(const Decimal& number) {
    static Imported decimal("decimal", "Decimal");
    return (*decimal)(number.toString());
}

std::string_view typeOf(Kind kind) {
    switch (kind) {
        case Kind::text:
            return "str";
        case Kind::amount:
            return "decimal.Decimal";
        case Kind::day:
            return "datetime.date";
        case Kind::moment:
            return "datetime.datetime";
        case Kind::flag:
            return "bool";
        case Kind::integer:
            return "int";
        case Kind::word:
        case Kind::object:
            return {};
    }
    return {};
}

}  // namespace brackwell::python
