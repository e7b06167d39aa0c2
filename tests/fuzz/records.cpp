// SPDX-License-Identifier: MIT
/*
 * Any bytes as any record: decoded, encoded and released, from memory and from
 * a record stream that arrives in pieces.
 *
 * An input: which procedure (two bytes), argument or result and how it arrives
 * (one byte: in pieces of which size, in small fragments or in one that is said
 * to have 2 GB), the record's bytes.
 */
#include "tests/fuzz/common.h"
#include "tests/window_stream.h"

#include <algorithm>
#include <cstring>

#include <sanitizer/allocator_interface.h>

namespace {

/* ---- memory ------------------------------------------------------------------ */

long held, max_held;

void count_allocated(const volatile void *, size_t size)
{
    held += static_cast<long>(size);
    max_held = std::max(max_held, held);
}

void count_freed(const volatile void *block)
{
    held -= static_cast<long>(__sanitizer_get_allocated_size(const_cast<const void *>(block)));
}

/** What decoding may hold at most: a block for each level of rows, then a multiple of what arrived. */
constexpr long fixed_allowance = 128 << 10;
constexpr long allowance_per_byte = 24;

/* ---- a stream in pieces --------------------------------------------------------- */

struct arriving {
    std::span<const uint8_t> bytes;
    size_t piece;
};

int read_piece(void *handle, void *to, int size)
{
    auto *from = static_cast<arriving *>(handle);
    const size_t count = std::min({from->bytes.size(), from->piece, static_cast<size_t>(size)});
    if (count == 0)
        return -1;
    std::memcpy(to, from->bytes.data(), count);
    from->bytes = from->bytes.subspan(count);
    return static_cast<int>(count);
}

int write_nothing(void *, void *, int)
{
    return -1;
}

std::vector<uint8_t> as_fragments(std::span<const uint8_t> message, size_t size, bool promising)
{
    std::vector<uint8_t> out;
    do {
        const auto piece = message.first(promising ? message.size() : std::min(size, message.size()));
        message = message.subspan(piece.size());
        const auto length = promising ? 0x7fffffffu : static_cast<uint32_t>(piece.size());
        const auto mark = length | (message.empty() ? 0x80000000u : 0);
        for (int shift = 24; shift >= 0; shift -= 8)
            out.push_back(static_cast<uint8_t>(mark >> shift));
        out.insert(out.end(), piece.begin(), piece.end());
    } while (!message.empty());
    return out;
}

/** Notes what is allocated from here on. */
void watch_memory()
{
    held = max_held = 0;
}

void check_memory(std::span<const uint8_t> arrived)
{
    if (max_held > fixed_allowance + allowance_per_byte * static_cast<long>(arrived.size()))
        broken("memory grows with the bytes that arrive");
}

bool decode_stream(std::span<const uint8_t> message, any_record &to, size_t piece, bool promising)
{
    const std::vector<uint8_t> bytes = as_fragments(message, 3 * piece + 1, promising);
    arriving from{bytes, piece};
    XDR xdrs;
    xdrrec_create(&xdrs, 100, 4000, &from, read_piece, write_nothing);
    xdrs.x_op = XDR_DECODE;
    watch_memory();
    const bool decoded = xdrrec_skiprecord(&xdrs) && wire::xdr_layout(&xdrs, to.bytes, to.layout);
    check_memory(message);
    xdr_destroy(&xdrs);
    return decoded;
}

/** In pieces whose rest the stream tells of, as the module's connections do. */
bool decode_pieces(std::span<const uint8_t> message, any_record &to, size_t piece)
{
    // A copy of that size alone, so that a byte read behind it is one too many for the sanitizer.
    const std::vector<uint8_t> copy(message.begin(), message.end());
    pieces from{copy, piece};
    XDR xdrs = stream_over(from);
    watch_memory();
    const bool decoded = wire::xdr_layout(&xdrs, to.bytes, to.layout);
    check_memory(message);
    return decoded;
}

bool all_zero(const any_record &record)
{
    const auto *bytes = static_cast<const uint8_t *>(record.bytes);
    return std::all_of(bytes, bytes + record.layout.size, [](uint8_t byte) { return byte == 0; });
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    __sanitizer_install_malloc_and_free_hooks(count_allocated, count_freed);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3)
        return 0;
    const auto all = procedures();
    const any_procedure &procedure = all[(data[0] << 8 | data[1]) % all.size()];
    const wire::layout &layout = data[2] & 1 ? *procedure.argument : *procedure.result;
    const size_t piece = 1 + data[2] / 4u * 31u;
    const std::span bytes{data + 3, size - 3};

    any_record record(layout);
    watch_memory();
    const long used = decode(bytes, record);
    check_memory(bytes);
    if (used < 0 && !all_zero(record))
        broken("a failed decode leaves a zeroed record");

    any_record streamed(layout);
    if (decode_stream(bytes, streamed, piece, data[2] & 2) != (used >= 0))
        broken("a stream in pieces is decoded like memory");
    any_record in_windows(layout);
    if (decode_pieces(bytes, in_windows, piece) != (used >= 0))
        broken("a stream that tells of its pieces is decoded like memory");
    if (used < 0)
        return 0;
    const std::vector<uint8_t> encoded = encode(record);
    if (encode(streamed) != encoded)
        broken("a stream in pieces yields what memory yields");
    if (encode(in_windows) != encoded)
        broken("a stream that tells of its pieces yields what memory yields");

    any_record again(layout);
    if (decode(encoded, again) != static_cast<long>(encoded.size()) || encode(again) != encoded)
        broken("what was encoded is decoded again");
    return 0;
}
