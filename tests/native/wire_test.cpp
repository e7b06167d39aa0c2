// SPDX-License-Identifier: MIT
/* The routines on memory streams: equality with an encoder of the tests' own, truncations, lying counts. */

#include "rmon/rpc/rmonrpc_clnt.h"
#include "tests/native/sample.h"

#include <sys/resource.h>

static_assert(wire::wire_size<rmonrpc_row_key1_t> == 4);
static_assert(wire::wire_size<rmonrpc_row_key2_t> == 8);
static_assert(wire::wire_size<rmonrpc_row_key3_t> == 12);
static_assert(wire::wire_size<rmonrpc_row_key4_t> == 16);
static_assert(wire::wire_size<wire::none> == 0);
static_assert(wire::wire_size<sample_inner> == 4 + 12 + 8 + 132);
static_assert(wire::wire_size<wire::repeated<sample_inner, 5>> == 5 * 156);
static_assert(!wire::layout_of<sample_inner>.owns && wire::layout_of<sample_record>.owns);

namespace {

void test_keys()
{
    rmonrpc_row_key2_t key{5, 2};
    check(encode(key) == bytes{}.unit(5).unit(2).all, "a key of two integers is eight bytes");
    rmonrpc_row_key4_t range{-1, 2, 3, 2147483647};
    check(
        encode(range) == bytes{}.unit(0xffffffff).unit(2).unit(3).unit(0x7fffffff).all,
        "a key of four integers");
    int32_t integer = -2;
    check(encode(integer) == bytes{}.unit(0xfffffffe).all, "a bare integer");
    wire::text<> text{"ifInOctets.1"};
    check(encode(text) == bytes{}.text("ifInOctets.1").all, "a bare text");
    wire::none none{};
    check(encode(none).empty(), "no argument, no bytes");
}

void test_both_ways()
{
    for (const uint32_t rows : {0u, 1u, 3u, 40u, 1000u})
        for (const uint32_t address : {0u, 1u, 6u, 16u, 17u, 255u, 1024u, 1025u, 5000u})
            for (const uint32_t text : {0u, 1u, 4u, 255u, 4096u, 4097u, 20000u}) {
                sample made = make_sample(rows, address, text);
                const std::string what = std::to_string(rows) + " rows, address " + std::to_string(address)
                                         + ", text " + std::to_string(text);
                check(encode(made.record) == made.encoded.all, "encoded: " + what);
                sample_record decoded;
                check(decode(made.encoded.all, decoded, made.encoded.all.size()), "decoded: " + what);
                check(encode(decoded) == made.encoded.all, "encoded again: " + what);
                release(&decoded);
            }
}

void test_released()
{
    sample made = make_sample(3, 40, 10);
    sample_record decoded;
    decode(made.encoded.all, decoded, made.encoded.all.size());
    release(&decoded);
    check(
        !decoded.rows.value && !decoded.owner.value && !decoded.any.value && decoded.address.length == 0,
        "a released record holds nothing");
    release(&decoded);
    XDR xdrs{};
    xdrs.x_op = XDR_FREE;
    check(xdr_record(&xdrs, &decoded), "the library's way to release");
}

void test_truncated()
{
    sample made = make_sample(4, 20, 30);
    int decoded_short = 0;
    for (size_t length = 0; length < made.encoded.all.size(); length++) {
        // A copy of that size alone, so that a byte read behind it is one too many for the sanitizer.
        const std::vector<uint8_t> part(
            made.encoded.all.begin(), made.encoded.all.begin() + static_cast<long>(length));
        sample_record decoded;
        decoded_short += decode(part, decoded, length);
        release(&decoded);
    }
    check(decoded_short == 0, "no truncation is taken for a record");
}

void test_bounds()
{
    wire::text<255> text;
    check(decode(bytes{}.text(std::string(255, 'x')).all, text, 260), "255 bytes are within the bound");
    release(&text);
    check(!decode(bytes{}.text(std::string(256, 'x')).all, text, 260), "256 bytes are not");
    release(&text);
    const std::string long_text(256, 'x');
    wire::text<255> too_long{long_text.c_str()};
    check(encode(too_long).empty(), "a text over its bound is not sent");
    wire::text<64> descr{long_text.c_str() + 192};
    check(encode(descr) == bytes{}.text(long_text.substr(192)).all, "64 bytes in a field of 64");
    descr.value--;
    check(encode(descr).empty(), "65 bytes in a field of 64");
    wire::text<255> absent{nullptr};
    check(encode(absent) == bytes{}.text("").all, "an absent text is an empty one");

    check(
        decode(bytes{}.text(std::string("ab\0cd", 5)).all, text, 12) && std::string(text.value) == "ab",
        "a text ends at its first zero byte");
    release(&text);
}

void test_low_bytes()
{
    wire::uchars<3> octets;
    const auto wide = bytes{}.unit(0xffffff80).unit(0x12345678).unit(255).all;
    check(
        decode(wide, octets, 12) && octets.value[0] == 0x80 && octets.value[1] == 0x78
            && octets.value[2] == 255,
        "the low byte of a unit counts");
    wire::chars<2> letters{{static_cast<char>(200), 'a'}};
    check(encode(letters) == bytes{}.unit(0xffffffc8).unit('a').all, "characters are sign-extended");
    wire::uchars<2> same{{200, 'a'}};
    check(encode(same) == bytes{}.unit(200).unit('a').all, "octets are zero-extended");
}

/** Counts that promise more than there is must fail without the memory that they promise. */
void test_lying_counts()
{
    rusage before, after;
    getrusage(RUSAGE_SELF, &before);
    for (const uint32_t count :
         {2u, 1000u, 65536u, 0x10000000u, 0x7fffffffu, 0x80000000u, 0xfffffffdu, 0xffffffffu}) {
        const std::string what = std::to_string(count);
        wire::byte_list list;
        check(!decode(bytes{}.unit(count).unit(1).all, list, 8), "a list of " + what + " bytes in one unit");
        release(&list);
        wire::text<> text;
        check(
            !decode(bytes{}.unit(count > 4 ? count : 5).unit(1).all, text, 8),
            "a text of " + what + " bytes in four");
        release(&text);
        wire::rows<sample_row> rows;
        const bytes row = bytes{}.unit(count).unit(0).list({1, 2, 3}).hyper(5).text("name");
        check(!decode(row.all, rows, row.all.size()), what + " rows in the space of one");
        check(rows.length == 0 && !rows.value, "the row that was there is not kept");
    }
    getrusage(RUSAGE_SELF, &after);
    check(
        after.ru_maxrss - before.ru_maxrss < 16 * 1024, "memory follows what arrives, not what is promised");
}

void test_records()
{
    rmonrpc_system_t system{{"d"}, 5, {"c"}, {"n"}, {"l"}, {"1.3.6"}, 72};
    check(
        encode(system) == bytes{}.text("d").unit(5).text("c").text("n").text("l").text("1.3.6").unit(72).all,
        "the system group");

    rmonrpc_etherstats_t stats{};
    stats.status = 1;
    stats.etherStatsIndex = 2;
    stats.etherStatsDataSource = 3;
    stats.etherStatsDropEvents = 4;
    stats.etherStatsPkts1024to1518Octets = 20;
    stats.etherStatsOwner = {"me"};
    stats.etherStatsStatus = 1;
    stats.etherStatsDroppedFrames = 0xffffffffffffffff;
    stats.etherStatsCreateTime = 9;
    bytes expected = bytes{}.unit(1).unit(2).unit(3).hyper(4);
    for (int zero = 0; zero < 15; zero++)
        expected.hyper(0);
    expected.hyper(20).text("me").unit(1).hyper(0xffffffffffffffff).unit(9);
    check(encode(stats) == expected.all, "Ethernet statistics");

    rmonrpc_host_key_t key{7, wire::list_of(reinterpret_cast<const uint8_t *>("\x0a\x01\x01\xff"), 4), 10, 3};
    check(
        encode(key) == bytes{}.unit(7).list({10, 1, 1, 255}).unit(10).unit(3).all,
        "a host key: count, then getType");
}

} // namespace

void test_wire()
{
    test_keys();
    test_both_ways();
    test_released();
    test_truncated();
    test_bounds();
    test_low_bytes();
    test_lying_counts();
    test_records();
}
