// SPDX-License-Identifier: MIT
/*
 * The members of a plain struct, in their order of declaration.
 *
 * The wire routines follow from the records themselves: a record's members
 * stand once, in wire order, and everything that walks them asks here. The
 * language (C++20) offers no such list, but it can count the values that
 * initialise an aggregate and it can bind that many names at once; the two
 * together give the types of all members, and a pointer to a member is spelled
 * with its name. All of this happens while the compiler runs.
 */
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

namespace wire {

template <class... T> struct type_list {
};

/** Stands for a value of any type while the members of a struct are counted. */
struct any_value {
    template <class T> constexpr operator T() const;
};

template <class Record, std::size_t... I> consteval bool takes_values(std::index_sequence<I...>)
{
    return requires
    {
        Record{((void)I, any_value{})...};
    };
}

/** The number of members of an aggregate whose members are scalars and structs (no bare arrays). */
template <class Record, std::size_t N = 0> consteval std::size_t member_count()
{
    if constexpr (takes_values<Record>(std::make_index_sequence<N + 1>{}))
        return member_count<Record, N + 1>();
    else
        return N;
}

/** Calls visit with a reference to each member of record, in order of declaration: a line for each number. */
// clang-format off
template <class Record, class Visit> constexpr decltype(auto) with_members(Record &record, Visit &&visit)
{
    constexpr std::size_t n = member_count<Record>();
    static_assert(n <= 29, "a record of more members needs longer lines below");
    if constexpr (n == 0) return visit();
    else if constexpr (n == 1) { auto &[m0] = record; return visit(m0); }
    else if constexpr (n == 2) { auto &[m0, m1] = record; return visit(m0, m1); }
    else if constexpr (n == 3) { auto &[m0, m1, m2] = record; return visit(m0, m1, m2); }
    else if constexpr (n == 4) { auto &[m0, m1, m2, m3] = record; return visit(m0, m1, m2, m3); }
    else if constexpr (n == 5) { auto &[m0, m1, m2, m3, m4] = record; return visit(m0, m1, m2, m3, m4); }
    else if constexpr (n == 6) { auto &[m0, m1, m2, m3, m4, m5] = record; return visit(m0, m1, m2, m3, m4, m5); }
    else if constexpr (n == 7) { auto &[m0, m1, m2, m3, m4, m5, m6] = record; return visit(m0, m1, m2, m3, m4, m5, m6); }
    else if constexpr (n == 8) { auto &[m0, m1, m2, m3, m4, m5, m6, m7] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7); }
    else if constexpr (n == 9) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8); }
    else if constexpr (n == 10) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9); }
    else if constexpr (n == 11) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10); }
    else if constexpr (n == 12) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11); }
    else if constexpr (n == 13) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12); }
    else if constexpr (n == 14) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13); }
    else if constexpr (n == 15) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14); }
    else if constexpr (n == 16) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15); }
    else if constexpr (n == 17) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16); }
    else if constexpr (n == 18) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17); }
    else if constexpr (n == 19) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18); }
    else if constexpr (n == 20) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19); }
    else if constexpr (n == 21) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20); }
    else if constexpr (n == 22) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21); }
    else if constexpr (n == 23) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22); }
    else if constexpr (n == 24) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23); }
    else if constexpr (n == 25) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24); }
    else if constexpr (n == 26) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24, m25] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24, m25); }
    else if constexpr (n == 27) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24, m25, m26] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24, m25, m26); }
    else if constexpr (n == 28) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24, m25, m26, m27] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24, m25, m26, m27); }
    else if constexpr (n == 29) { auto &[m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24, m25, m26, m27, m28] = record; return visit(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20, m21, m22, m23, m24, m25, m26, m27, m28); }
}
// clang-format on

struct list_types {
    template <class... M> type_list<M...> operator()(M &...) const;
};

/** type_list of the member types of Record, in order of declaration. */
template <class Record> using member_types =
    decltype(with_members(std::declval<Record &>(), std::declval<list_types>()));

constexpr uint32_t aligned(uint32_t offset, uint32_t alignment)
{
    return (offset + alignment - 1) / alignment * alignment;
}

template <class... Member> consteval auto offsets_in(type_list<Member...>)
{
    std::array<uint32_t, sizeof...(Member) + 1> offsets{};
    uint32_t end = 0;
    auto next = offsets.begin();
    ((*next++ = aligned(end, alignof(Member)), end = next[-1] + sizeof(Member)), ...);
    *next = end;
    return offsets;
}

/** Where the members of a record lie, by the rule of the ABI; last, where they end. */
template <class Record> inline constexpr auto member_offsets = offsets_in(member_types<Record>{});

template <class Record> inline constexpr Record example{};

/** A pointer to a member doesn't tell where the member lies, but it leads to its address in an object. */
template <class Record, class Field> consteval uint32_t offset_of(Field Record::*member)
{
    const void *wanted = &(example<Record>.*member);
    return with_members(example<Record>, [wanted](const auto &...each) {
        const std::array<const void *, sizeof...(each)> places{&each...};
        const auto &offsets = member_offsets<Record>;
        return offsets[std::find(places.begin(), places.end(), wanted) - places.begin()];
    });
}

template <auto Member> inline constexpr uint32_t member_offset = offset_of(Member);

/** The compiler's spelling of a pointer to a member, "Member = &record::member", without all but the name. */
template <auto Member> consteval std::string_view spelled_name()
{
    std::string_view name = __PRETTY_FUNCTION__;
    name = name.substr(name.find("Member = "));
    name = name.substr(0, name.find_first_of(";])"));
    return name.substr(name.rfind(':') + 1);
}

/** The name of a record's member, with a zero behind it. */
template <auto Member> inline constexpr auto member_name = [] {
    constexpr std::string_view name = spelled_name<Member>();
    std::array<char, name.size() + 1> copy{};
    std::copy(name.begin(), name.end(), copy.begin());
    return copy;
}();

} // namespace wire
