// SPDX-License-Identifier: MIT
/*
 * Rows that are decoded straight from the bytes that are there: the same rows as
 * by the routine that takes any record, wherever a read or the reply ends.
 */

#include "rmon/rpc/rmonrpc_clnt.h"
#include "tests/native/sample.h"
#include "tests/window_stream.h"

namespace {

/** Every kind of field that such a row may have, lists in front, between and behind. */
struct flat_row {
    wire::byte_list first;
    int32_t status;
    uint64_t counter;
    wire::uchars<3> octets;
    wire::byte_list second;
    uint32_t ticks;
    wire::chars<33> letters;
    uint64_t in;
    uint64_t out;
    wire::byte_list last;
};

std::vector<uint8_t> some_bytes(uint32_t length, uint32_t seed)
{
    std::vector<uint8_t> made(length);
    for (uint32_t i = 0; i < length; i++)
        made[i] = static_cast<uint8_t>(seed + 41 * i);
    return made;
}

bool is(const wire::byte_list &list, const std::vector<uint8_t> &expected)
{
    return list.length == expected.size()
           && std::equal(expected.begin(), expected.end(), wire::bytes_of(list));
}

bytes flat_row_bytes(uint32_t number, uint32_t longest)
{
    return bytes{}
        .list(some_bytes(number % (longest + 1), number))
        .unit(0u - number)
        .hyper(0xfedcba9876543210 + number)
        .units(some_bytes(3, number + 200))
        .list(some_bytes(number * 7 % (longest + 1), number + 1))
        .unit(4000000000 + number)
        .signed_units(some_bytes(33, number + 100))
        .hyper(number)
        .hyper(1ull << 63)
        .list(some_bytes(number * 3 % (longest + 1), number + 2));
}

bool is_flat_row(const flat_row &row, uint32_t number, uint32_t longest)
{
    const auto letters = some_bytes(33, number + 100);
    return is(row.first, some_bytes(number % (longest + 1), number))
           && row.status == -static_cast<int32_t>(number) && row.counter == 0xfedcba9876543210 + number
           && std::memcmp(row.octets.value, some_bytes(3, number + 200).data(), 3) == 0
           && is(row.second, some_bytes(number * 7 % (longest + 1), number + 1))
           && row.ticks == 4000000000 + number && std::memcmp(row.letters.value, letters.data(), 33) == 0
           && row.in == number && row.out == 1ull << 63
           && is(row.last, some_bytes(number * 3 % (longest + 1), number + 2));
}

/** A reply of so many rows, whose lists have at most longest bytes. */
bytes flat_reply(uint32_t rows, uint32_t longest)
{
    bytes reply = bytes{}.unit(rows);
    for (uint32_t number = 0; number < rows; number++)
        reply.add(flat_row_bytes(number, longest));
    return reply;
}

template <class Record> bool decode_pieces(pieces &from, Record &to)
{
    XDR stream = stream_over(from);
    to = {};
    return xdr_record(&stream, &to);
}

void test_rows_in_pieces()
{
    constexpr uint32_t rows = 40;
    for (const uint32_t longest : {0u, 4u, 16u, 20u}) {
        const bytes reply = flat_reply(rows, longest);
        for (size_t size = 1; size <= reply.all.size(); size += size < 700 ? 1 : 977) {
            pieces from{reply.all, size};
            wire::rows<flat_row> decoded;
            bool same = decode_pieces(from, decoded) && decoded.length == rows && from.rest.empty();
            for (uint32_t number = 0; same && number < rows; number++)
                same = is_flat_row(decoded.value[number], number, longest);
            check(
                same, "rows in pieces of " + std::to_string(size) + ", lists of " + std::to_string(longest));
            release(&decoded);
        }
    }
}

/** What this file is about is at work: the rows are taken in place by one request for each growth of their
 * block. */
void test_taken_at_once()
{
    constexpr uint32_t rows = 1000;
    const bytes reply = flat_reply(rows, 16);
    for (const bool has_window : {true, false}) {
        pieces from{reply.all, reply.all.size()};
        from.has_window = has_window;
        wire::rows<flat_row> decoded;
        check(decode_pieces(from, decoded) && decoded.length == rows, "a reply in one piece");
        release(&decoded);
        check(
            has_window ? from.in_place < 30 : from.in_place > rows,
            std::to_string(from.in_place) + " requests for " + std::to_string(rows) + " rows");
    }
}

void test_short_replies()
{
    const bytes reply = flat_reply(5, 18);
    int decoded_short = 0;
    for (size_t length = 0; length < reply.all.size(); length++) {
        // A copy of that size alone, so that a byte read behind it is one too many for the sanitizer.
        const std::vector<uint8_t> part(reply.all.begin(), reply.all.begin() + static_cast<long>(length));
        pieces from{part, 1 << 20};
        wire::rows<flat_row> decoded;
        decoded_short += decode_pieces(from, decoded);
        check(!decoded.value && decoded.length == 0, "a reply that ends too soon leaves nothing");
        release(&decoded);
    }
    check(decoded_short == 0, "no truncation is taken for a reply");
}

void test_false_counts()
{
    for (const uint32_t count :
         {17u, 1000u, 0x40000000u, 0x40000001u, 0x7fffffffu, 0x80000000u, 0xffffffffu}) {
        const std::string what = std::to_string(count);
        for (int list = 0; list < 3; list++) {
            bytes reply = flat_reply(3, 0);
            const size_t row = (reply.all.size() - 4) / 3;
            // The counts of the second row's lists: its first unit, behind six units, and its last one.
            const size_t at = 4 + row + (list == 0 ? 0 : list == 1 ? 4 * (1 + 1 + 2 + 3) : row - 4);
            const auto unit = bytes{}.unit(count).all;
            std::copy(unit.begin(), unit.end(), reply.all.begin() + static_cast<long>(at));
            pieces from{reply.all, 1 << 20};
            wire::rows<flat_row> decoded;
            // Seventeen units may be there: then the rows behind are what is missing.
            check(!decode_pieces(from, decoded), "a list of " + what + " bytes that are not there");
            check(!decoded.value, "and nothing is left");
            release(&decoded);
        }
        bytes reply = flat_reply(3, 4);
        const auto unit = bytes{}.unit(count).all;
        std::copy(unit.begin(), unit.end(), reply.all.begin());
        pieces from{reply.all, 1 << 20};
        wire::rows<flat_row> decoded;
        check(!decode_pieces(from, decoded) && !decoded.value, what + " rows in the space of three");
        release(&decoded);
    }
}

/** A reply of a table's rows: lists of the given length, other units of all values. */
bytes table_reply(const wire::layout &row, uint32_t rows, uint32_t length)
{
    bytes reply = bytes{}.unit(rows);
    uint32_t seed = 0;
    for (uint32_t number = 0; number < rows; number++)
        for (uint32_t i = 0; i < row.count; i++) {
            const wire::step &step = row.steps[i];
            if (step.kind == wire::kind::run) {
                for (uint32_t unit = 0; unit < step.wire; unit += 4)
                    reply.unit(0x9e3779b9 * ++seed);
            } else if (step.kind == wire::kind::bytes) {
                reply.all.resize(reply.all.size() - 4); // the count, which came with the run
                reply.list(some_bytes(length, ++seed));
            }
        }
    return reply;
}

template <class Row> void test_table(const char *name)
{
    check(wire::straight_decoder_of<Row>() != nullptr, std::string{name} + " are decoded straight");
    for (const uint32_t length : {0u, 1u, 4u, 6u, 15u, 16u, 17u, 40u}) {
        const bytes reply = table_reply(wire::layout_of<Row>, 9, length);
        wire::rows<Row> expected;
        check(decode(reply.all, expected, reply.all.size()), std::string{name} + " from memory");
        const std::vector<uint8_t> encoded = encode(expected);
        for (size_t size = 1; size <= reply.all.size(); size += 1 + size / 8) {
            pieces from{reply.all, size};
            wire::rows<Row> decoded;
            check(
                decode_pieces(from, decoded) && encode(decoded) == encoded,
                std::string{name} + " in pieces of " + std::to_string(size));
            release(&decoded);
        }
        release(&expected);
    }
}

} // namespace

void test_straight()
{
    test_rows_in_pieces();
    test_taken_at_once();
    test_short_replies();
    test_false_counts();
    test_table<rmonrpc_etherhistory_t>("history");
    test_table<rmonrpc_host_t>("hosts");
    test_table<rmonrpc_hosttime_t>("host times");
    test_table<rmonrpc_hosttopn_t>("host Top-N");
    test_table<rmonrpc_matrix_t>("matrix");
    test_table<rmonrpc_addrmap_entry_t>("address map");
    test_table<rmonrpc_hlhost_t>("higher-layer hosts");
    test_table<rmonrpc_hlmatrix_t>("higher-layer matrix");
    test_table<rmonrpc_nlmatrix_topn_t>("matrix Top-N");
    test_table<rmonrpc_art_rpt_t>("response time reports");
    test_table<rmonrpc_art_sum_t>("response time summaries");
    test_table<rmonrpc_pdist_stats_t>("protocol distribution");
    test_table<rmonrpc_smon_vlan_t>("VLANs");
    test_table<rmonrpc_smon_prio_t>("priorities");
    test_table<rmonrpc_sccp_call_row_t>("SCCP calls");
    test_table<rmonrpc_sccp_phone_row_t>("SCCP phones");
    test_table<rmonrpc_mgcp_call_t>("MGCP calls");
}
