// SPDX-License-Identifier: MIT
#include "tests/native/sample.h"

#include <deque>

/** Texts and lists that records point to; they live as long as the program. */
static std::deque<std::string> texts;
static std::deque<std::vector<uint8_t>> lists;
static std::deque<std::vector<sample_row>> row_blocks;

static const char *keep(std::string text)
{
    return texts.emplace_back(std::move(text)).c_str();
}

static std::vector<uint8_t> &some_bytes(uint32_t length, uint32_t seed)
{
    std::vector<uint8_t> &made = lists.emplace_back(length);
    for (uint32_t i = 0; i < length; i++)
        made[i] = static_cast<uint8_t>(seed + 37 * i);
    return made;
}

static std::string some_text(uint32_t length, char first)
{
    std::string text(length, first);
    for (uint32_t i = 0; i < length; i++)
        text[i] = static_cast<char>('A' + (static_cast<uint32_t>(first) + i) % 26);
    return text;
}

static void add_inner(sample_inner &record, bytes &encoded, uint32_t seed)
{
    record.first = -static_cast<int32_t>(seed);
    encoded.unit(0u - seed);
    const auto &octets = some_bytes(3, seed + 250);
    memcpy(record.octets.value, octets.data(), 3);
    encoded.units(octets);
    record.counter = 0xfedcba9876543210 + seed;
    encoded.hyper(0xfedcba9876543210 + seed);
    const auto &letters = some_bytes(33, seed + 100);
    memcpy(record.letters.value, letters.data(), 33);
    encoded.signed_units(letters);
}

/** One piece although it is long: each field is set beside its bytes, in wire order. */
sample make_sample(uint32_t rows, uint32_t address_length, uint32_t text_length)
{
    sample made{};
    sample_record &r = made.record;
    bytes &b = made.encoded;

    r.status = -5;
    r.ticks = 4000000000;
    const auto &address = some_bytes(address_length, 11);
    r.address = wire::list_of(address.data(), address_length);
    r.in = 1;
    r.out = 0xffffffffffffffff;
    r.odd = 77;
    r.last = 1ull << 63;
    const std::string owner = some_text(text_length < 255 ? text_length : 255, 'o');
    r.owner.value = keep(owner);
    b.unit(0xfffffffb).unit(4000000000).list(address).hyper(1).hyper(0xffffffffffffffff).unit(77);
    b.hyper(1ull << 63).text(owner);

    add_inner(r.nested, b, 1);
    add_inner(r.history.value[0], b, 2);
    add_inner(r.history.value[1], b, 3);

    std::vector<sample_row> &block = row_blocks.emplace_back(rows);
    r.rows = {rows, block.data()};
    b.unit(rows);
    for (uint32_t i = 0; i < rows; i++) {
        const auto &row_address = some_bytes(i % 21, i);
        const std::string name = some_text(i % 20, 'n');
        block[i] = {
            static_cast<int32_t>(i), wire::list_of(row_address.data(), i % 21), i * 1000ull, {keep(name)}};
        b.unit(i).list(row_address).hyper(i * 1000ull).text(name);
    }

    const std::string any = some_text(text_length, 'a');
    r.any.value = keep(any);
    b.text(any);
    const auto &wide = some_bytes(1500, 9);
    memcpy(r.wide.value, wide.data(), wide.size());
    r.end = 1234567;
    b.units(wide).unit(1234567);
    return made;
}
