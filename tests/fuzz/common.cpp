// SPDX-License-Identifier: MIT
#include "tests/fuzz/common.h"

#include <cstdio>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <tuple>

#include <signal.h>

namespace {

constexpr std::tuple all_procedures{
#include "procedures.inc"
    0};

template <class Procedure> constexpr any_procedure untyped(const Procedure &)
{
    return {
        __PRETTY_FUNCTION__, Procedure::number, &wire::layout_of<typename Procedure::argument>,
        &wire::layout_of<typename Procedure::result>};
}

} // namespace

std::span<const any_procedure> procedures()
{
    static const auto all = [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        return std::array{untyped(std::get<I>(all_procedures))...};
    }
    (std::make_index_sequence<std::tuple_size_v<decltype(all_procedures)> - 1>{});
    return all;
}

any_record::any_record(const wire::layout &plan) : layout(plan), bytes(std::calloc(1, plan.size)) {}

any_record::~any_record()
{
    wire::release_layout(bytes, layout);
    std::free(bytes);
}

long decode(std::span<const uint8_t> from, any_record &to)
{
    XDR xdrs;
    // The library's memory stream takes a pointer it may write to; decoding doesn't.
    xdrmem_create(
        &xdrs, const_cast<char *>(reinterpret_cast<const char *>(from.data())),
        static_cast<u_int>(from.size()), XDR_DECODE);
    return wire::xdr_layout(&xdrs, to.bytes, to.layout) ? static_cast<long>(xdr_getpos(&xdrs)) : -1;
}

std::vector<uint8_t> encode(any_record &record)
{
    static std::vector<uint8_t> room(4 << 20);
    XDR xdrs;
    xdrmem_create(&xdrs, reinterpret_cast<char *>(room.data()), static_cast<u_int>(room.size()), XDR_ENCODE);
    if (!wire::xdr_layout(&xdrs, record.bytes, record.layout))
        broken("what was decoded can be encoded");
    return {room.begin(), room.begin() + xdr_getpos(&xdrs)};
}

void write_file(const std::string &file, const std::vector<uint8_t> &bytes)
{
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush())
        broken("seeds can be written");
}

std::vector<uint8_t> units(uint8_t unit, size_t size)
{
    std::vector<uint8_t> bytes(size);
    for (size_t i = 3; i < size; i += 4)
        bytes[i] = unit;
    return bytes;
}

std::vector<uint8_t> repeating(const wire::layout &layout, uint8_t unit)
{
    std::vector<uint8_t> bytes = units(unit, 1 << 20);
    any_record record(layout);
    const long used = decode(bytes, record);
    if (used < 0)
        broken("a record of equal units is valid");
    bytes.resize(static_cast<size_t>(used));
    return bytes;
}

std::vector<uint8_t> cut_off(std::vector<uint8_t> bytes)
{
    bytes.resize(std::min(bytes.size(), max_seed));
    return bytes;
}

std::vector<uint8_t> joined(std::vector<uint8_t> first, const std::vector<uint8_t> &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

void go_on_after_alarms()
{
    struct sigaction alarm;
    sigaction(SIGALRM, nullptr, &alarm);
    alarm.sa_flags |= SA_RESTART;
    sigaction(SIGALRM, &alarm, nullptr);
}

void broken(const char *rule)
{
    fprintf(stderr, "broken: %s\n", rule);
    abort();
}
