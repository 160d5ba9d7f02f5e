// SPDX-License-Identifier: Apache-2.0
#include "cell.h"

#include <array>
#include <cstddef>

namespace brackwell::python {
namespace {

/// An object that is made when it is first asked for, and stays for the rest of the process.
class Kept {
public:
    explicit constexpr Kept(nb::object (*make)()) : make_(make) {}
    nb::handle operator*() {
        // Not by the initialization of a static variable: others would wait for that with the lock of Python,
        // which making the object may let go of.
        if (!object_.is_valid()) object_ = make_().release();
        return object_;
    }

private:
    nb::object (*make_)();
    nb::handle object_;
};

nb::object dateClass() { return nb::module_::import_("datetime").attr("date"); }
nb::object datetimeClass() { return nb::module_::import_("datetime").attr("datetime"); }
nb::object utc() { return nb::module_::import_("datetime").attr("timezone").attr("utc"); }
/// What makes a Decimal of a text without rounding it, which is less work than a call of the class.
nb::object decimalMaker() {
    const nb::module_ decimal = nb::module_::import_("decimal");
    return decimal
        .attr("Context")(nb::arg("prec") = decimal.attr("MAX_PREC"),
                         nb::arg("Emax") = decimal.attr("MAX_EMAX"),
                         nb::arg("Emin") = decimal.attr("MIN_EMIN"))
        .attr("create_decimal");
}

/// A day is asked for again and again, by many transactions, and an object is made for it once, as long as no
/// other day takes its place. Needs the lock of Python, like all that makes objects.
class KnownDays {
public:
    nb::object operator[](std::chrono::year_month_day day) {
        const std::chrono::sys_days number(day);
        Known& known = known_[static_cast<std::size_t>(number.time_since_epoch().count()) % known_.size()];
        if (!known.object.is_valid() || known.day != number) {
            nb::object made = (*date_)(static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                                       static_cast<unsigned>(day.day()));
            known.object.dec_ref();
            known = {number, made.release()};
        }
        return nb::borrow(known.object);
    }

private:
    struct Known {
        std::chrono::sys_days day;
        nb::handle object;
    };
    Kept date_{dateClass};
    std::array<Known, 1024> known_;  // some years of days
};

nb::object dayToPython(std::chrono::year_month_day day) {
    static KnownDays days;
    return days[day];
}

nb::object momentToPython(Date moment) {
    static Kept datetime(datetimeClass);
    static Kept zone(utc);
    const auto days = std::chrono::floor<std::chrono::days>(moment);
    const auto day = dayOf(moment);
    if (!day) return nb::none();
    const std::chrono::hh_mm_ss time(moment - days);
    return (*datetime)(static_cast<int>(day->year()), static_cast<unsigned>(day->month()),
                       static_cast<unsigned>(day->day()), time.hours().count(), time.minutes().count(),
                       time.seconds().count(), time.subseconds().count() * 1000, *zone);
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
    static Kept decimal(decimalMaker);
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
