// SPDX-License-Identifier: MIT
/*
 * The routines on record streams, where a run may meet the end of a read or of
 * a fragment at any byte, and on encoding the end of a small buffer.
 */

#include "tests/native/sample.h"

#include <algorithm>

namespace {

/** What a stream reads from or writes to: a connection's bytes, `step` of them at a time. */
struct connection {
    std::vector<uint8_t> bytes;
    size_t at;
    size_t step;
};

int read_some(void *handle, void *to, int size)
{
    auto *from = static_cast<connection *>(handle);
    const size_t count = std::min({from->bytes.size() - from->at, from->step, static_cast<size_t>(size)});
    if (count == 0)
        return -1;
    memcpy(to, from->bytes.data() + from->at, count);
    from->at += count;
    return static_cast<int>(count);
}

int write_all(void *handle, void *from, int size)
{
    auto *to = static_cast<connection *>(handle);
    to->bytes.insert(to->bytes.end(), static_cast<uint8_t *>(from), static_cast<uint8_t *>(from) + size);
    return size;
}

/** A message in fragments of so many bytes. */
std::vector<uint8_t> fragments_of(const std::vector<uint8_t> &message, size_t size)
{
    std::vector<uint8_t> out;
    for (size_t sent = 0; sent < message.size(); sent += size) {
        const size_t piece = std::min(size, message.size() - sent);
        const auto mark = static_cast<uint32_t>(piece) | (sent + piece == message.size() ? 0x80000000u : 0);
        const auto header = bytes{}.unit(mark).all;
        out.insert(out.end(), header.begin(), header.end());
        out.insert(
            out.end(), message.begin() + static_cast<long>(sent),
            message.begin() + static_cast<long>(sent + piece));
    }
    return out;
}

std::vector<uint8_t> joined(const std::vector<uint8_t> &fragments)
{
    std::vector<uint8_t> out;
    for (size_t at = 0; at + 4 <= fragments.size();) {
        const size_t size = (static_cast<size_t>(fragments[at] & 0x7f) << 24)
                            | (static_cast<size_t>(fragments[at + 1]) << 16)
                            | (static_cast<size_t>(fragments[at + 2]) << 8) | fragments[at + 3];
        out.insert(
            out.end(), fragments.begin() + static_cast<long>(at + 4),
            fragments.begin() + static_cast<long>(at + 4 + size));
        at += 4 + size;
    }
    return out;
}

bool decodes(const sample &made, size_t fragment, size_t step, u_int buffer)
{
    connection from{fragments_of(made.encoded.all, fragment), 0, step};
    XDR xdrs;
    xdrrec_create(&xdrs, buffer, buffer, &from, read_some, write_all);
    xdrs.x_op = XDR_DECODE;
    sample_record decoded{};
    const bool same =
        xdrrec_skiprecord(&xdrs) && xdr_record(&xdrs, &decoded) && encode(decoded) == made.encoded.all;
    release(&decoded);
    xdr_destroy(&xdrs);
    return same;
}

void test_fragments()
{
    const sample made = make_sample(5, 30, 40);
    for (size_t size = 1; size <= 300; size++)
        check(decodes(made, size, 1 << 20, 4096), "fragments of " + std::to_string(size));
    check(decodes(made, 1 << 20, 1 << 20, 65536), "one fragment");
}

void test_reads()
{
    const sample made = make_sample(5, 30, 40);
    for (size_t step = 1; step <= 300; step++)
        check(decodes(made, 1 << 20, step, 4096), "reads of " + std::to_string(step));
    for (u_int buffer = 100; buffer <= 400; buffer += 4)
        check(decodes(made, 1 << 20, 1 << 20, buffer), "a buffer of " + std::to_string(buffer));
}

void test_large()
{
    const sample made = make_sample(3000, 5000, 70000);
    for (const size_t fragment : {1000u, 4093u, 8999u, 65532u})
        for (const size_t step : {1459u, 4096u, 65536u})
            check(
                decodes(made, fragment, step, 9000), "a large record in fragments of "
                                                         + std::to_string(fragment) + ", reads of "
                                                         + std::to_string(step));
}

/** A stream that ends too soon fails at each length; what was decoded is released. */
void test_ends()
{
    const sample made = make_sample(3, 20, 10);
    int decoded_short = 0;
    for (size_t length = 4; length + 4 < made.encoded.all.size(); length += 3) {
        connection from{
            fragments_of(
                {made.encoded.all.begin(), made.encoded.all.begin() + static_cast<long>(length)}, 97),
            0, 61};
        XDR xdrs;
        xdrrec_create(&xdrs, 100, 100, &from, read_some, write_all);
        xdrs.x_op = XDR_DECODE;
        sample_record decoded{};
        decoded_short += xdrrec_skiprecord(&xdrs) && xdr_record(&xdrs, &decoded);
        release(&decoded);
        xdr_destroy(&xdrs);
    }
    check(decoded_short == 0, "no stream that ends too soon is taken for a record");
}

void test_encoding()
{
    sample made = make_sample(5, 30, 40);
    for (u_int buffer = 100; buffer <= 9000; buffer += buffer < 400 ? 4 : 500) {
        connection to{{}, 0, 0};
        XDR xdrs;
        xdrrec_create(&xdrs, buffer, buffer, &to, read_some, write_all);
        xdrs.x_op = XDR_ENCODE;
        const bool sent = xdr_record(&xdrs, &made.record) && xdrrec_endofrecord(&xdrs, TRUE);
        check(
            sent && joined(to.bytes) == made.encoded.all,
            "encoded through a buffer of " + std::to_string(buffer));
        xdr_destroy(&xdrs);
    }
}

} // namespace

void test_streams()
{
    test_fragments();
    test_reads();
    test_large();
    test_ends();
    test_encoding();
}
