// SPDX-License-Identifier: MIT
#include "rmon/rpc/rmonrpc_xdr.h"

#include "rmon/rpc/row_blocks.h"
#include "rmon/rpc/units.h"

#include <algorithm>
#include <cstdlib>
#include <cstddef>

namespace wire {
namespace {

/* ---- units in a buffer: the stream's own, or the one on the stack; see units.h --- */

/** A unit for each byte: zero-extended, or sign-extended for characters. */
void spread_bytes(uint8_t *to, const uint8_t *from, uint32_t count, bool sign)
{
    for (uint32_t i = 0; i < count; i++) {
        const uint8_t fill = sign && (from[i] & 0x80) ? 0xff : 0;
        to[4 * i] = to[4 * i + 1] = to[4 * i + 2] = fill;
        to[4 * i + 3] = from[i];
    }
}

/* ---- the stream ---------------------------------------------------------- */

/**
 * Takes the next size bytes: in place where the stream allows, else copied
 * into spare. A record stream refuses at the end of what one read brought and
 * at the end of a fragment, so both ways are taken in every large reply.
 */
inline const uint8_t *take(XDR *xdrs, uint8_t *spare, uint32_t size)
{
    if (const int32_t *in = XDR_INLINE(xdrs, size))
        return reinterpret_cast<const uint8_t *>(in);
    return XDR_GETBYTES(xdrs, reinterpret_cast<char *>(spare), size) ? spare : nullptr;
}

/** Room for the next size bytes, in the stream or in spare; put() ends what room() began. */
uint8_t *room(XDR *xdrs, uint8_t *spare, uint32_t size)
{
    int32_t *out = XDR_INLINE(xdrs, size);
    // cppcheck-suppress uninitvar ; the caller fills what it gets
    return out ? reinterpret_cast<uint8_t *>(out) : spare;
}

bool put(XDR *xdrs, const uint8_t *filled, const uint8_t *spare, uint32_t size)
{
    return filled != spare || XDR_PUTBYTES(xdrs, reinterpret_cast<const char *>(spare), size);
}

/* ---- runs of fields of fixed size ---------------------------------------- */

/** Unpacks the fields of a run; what stands behind them, an open field's count if anything. */
const uint8_t *decode_fields(uint8_t *record, const step &run, const uint8_t *in)
{
    for (const step *s = &run + 1; s <= &run + run.count; s++) {
        uint8_t *field = record + s->offset;
        switch (s->kind) {
        case kind::word:
            swap_words<uint32_t>(field, in, s->count);
            break;
        case kind::hyper:
            swap_words<uint64_t>(field, in, s->count);
            break;
        default:
            gather_bytes(field, in, s->count);
            break;
        }
        in += s->count * unit_size(s->kind);
    }
    return in;
}

uint8_t *encode_fields(const uint8_t *record, const step &run, uint8_t *out)
{
    for (const step *s = &run + 1; s <= &run + run.count; s++) {
        const uint8_t *field = record + s->offset;
        switch (s->kind) {
        case kind::word:
            swap_words<uint32_t>(out, field, s->count);
            break;
        case kind::hyper:
            swap_words<uint64_t>(out, field, s->count);
            break;
        default:
            spread_bytes(out, field, s->count, s->kind == kind::chars);
            break;
        }
        out += s->count * unit_size(s->kind);
    }
    return out;
}

/*
 * The open fields: texts, byte lists and rows. Their count has travelled with
 * the run in front of them.
 */

/* ---- texts --------------------------------------------------------------- */

/** Every text has this form, whatever its bound. */
using any_text = text<unbounded>;

/** All empty texts. */
constexpr char empty_text[] = "";

void free_text(any_text &field)
{
    if (field.value != empty_text)
        std::free(const_cast<char *>(field.value));
    field.value = nullptr;
}

/** A text of a row, which is at most first_piece bytes long. */
bool decode_row_text(XDR *xdrs, any_text &field, uint32_t length, text_piece *&pieces)
{
    const uint32_t padded = (length + 3) / 4 * 4;
    char *value = text_room(pieces, padded + 1);
    if (!value || !XDR_GETBYTES(xdrs, value, padded))
        return false;
    value[length] = '\0';
    field.value = value;
    return true;
}

bool decode_text(XDR *xdrs, any_text &field, uint32_t length, uint32_t bound, text_piece **pieces)
{
    if (length > bound)
        return false;
    if (length == 0) {
        field.value = empty_text;
        return true;
    }
    if (pieces)
        return decode_row_text(xdrs, field, length, *pieces);
    // The padding to a whole unit comes along into the block, behind the text.
    const uint64_t padded = (uint64_t{length} + 3) / 4 * 4;
    uint64_t have = 0;
    uint64_t piece = std::min<uint64_t>(padded, first_piece);
    char *value = nullptr;
    do {
        auto *larger = static_cast<char *>(std::realloc(value, have + piece + 1));
        if (!larger || !XDR_GETBYTES(xdrs, larger + have, static_cast<u_int>(piece))) {
            std::free(larger ? larger : value);
            return false;
        }
        value = larger;
        have += piece;
        piece = std::min(padded - have, have);
    } while (have < padded);
    value[length] = '\0';
    field.value = value;
    return true;
}

uint64_t length_of(const any_text &field)
{
    return field.value ? std::strlen(field.value) : 0;
}

bool encode_text(XDR *xdrs, const any_text &field, uint32_t length)
{
    static const char padding[3] = {};
    return (length == 0 || XDR_PUTBYTES(xdrs, field.value, length))
           && (length % 4 == 0 || XDR_PUTBYTES(xdrs, padding, 4 - length % 4));
}

/* ---- byte lists ---------------------------------------------------------- */

constexpr uint32_t units_in_spare = max_run / 4;

void free_bytes(byte_list &list)
{
    if (list.length > byte_list::inside)
        std::free(list.large);
    list.length = 0;
}

bool take_bytes(XDR *xdrs, uint8_t *to, uint32_t count)
{
    uint8_t spare[max_run];
    const uint8_t *in = take(xdrs, spare, 4 * count);
    if (in)
        gather_bytes(to, in, count);
    return in != nullptr;
}

bool decode_bytes(XDR *xdrs, byte_list &list, uint32_t length)
{
    if (length <= byte_list::inside) {
        if (length && !take_bytes(xdrs, list.small, length))
            return false;
        list.length = length;
        return true;
    }

    uint8_t *bytes = nullptr;
    uint64_t room = 0;
    for (uint64_t have = 0; have < length;) {
        const auto piece = static_cast<uint32_t>(std::min<uint64_t>(length - have, units_in_spare));
        if (have + piece > room) {
            room = std::min<uint64_t>(length, std::max<uint64_t>(2 * room, piece));
            auto *larger = static_cast<uint8_t *>(std::realloc(bytes, room));
            if (!larger) {
                std::free(bytes);
                return false;
            }
            bytes = larger;
        }
        if (!take_bytes(xdrs, bytes + have, piece)) {
            std::free(bytes);
            return false;
        }
        have += piece;
    }
    list.length = length;
    list.large = bytes;
    return true;
}

bool encode_bytes(XDR *xdrs, const byte_list &list)
{
    const uint8_t *bytes = bytes_of(list);
    for (uint32_t have = 0; have < list.length;) {
        const uint32_t piece = std::min(list.length - have, units_in_spare);
        uint8_t spare[max_run];
        uint8_t *out = room(xdrs, spare, 4 * piece);
        spread_bytes(out, bytes + have, piece, false);
        if (!put(xdrs, out, spare, 4 * piece))
            return false;
        have += piece;
    }
    return true;
}

/* ---- rows ---------------------------------------------------------------- */

using any_rows = rows<uint8_t>;

bool has_own_blocks(uint8_t *record, const layout &plan);
void release_records(uint8_t *records, uint32_t length, const layout &plan, bool with_texts);
bool decode_record(XDR *xdrs, uint8_t *record, const layout &plan, text_piece **pieces);
bool encode_record(XDR *xdrs, uint8_t *record, const layout &plan);

void free_rows(any_rows &field, const layout &row)
{
    if (row.owns && (!field.block || field.block->owned))
        release_records(field.value, field.length, row, !field.block);
    if (field.block)
        keep_block(field.block);
    else
        std::free(field.value);
    field = {};
}

/** As many rows as the stream has in one piece, at most so many; their number. */
uint32_t decode_straight_from(XDR *xdrs, straight_decoder decode, uint8_t *rows, uint32_t most)
{
    window seen{};
    if (!decode || !xdrs->x_ops->x_control || !xdrs->x_ops->x_control(xdrs, get_window, &seen))
        return 0;
    const uint8_t *in = seen.at;
    const uint32_t decoded = decode(rows, most, in, seen.at + seen.size);
    return decoded && XDR_INLINE(xdrs, static_cast<u_int>(in - seen.at)) ? decoded : 0;
}

/** Rows of the layout that the step names. */
bool decode_rows(XDR *xdrs, any_rows &field, uint32_t length, const step &s)
{
    const layout &row = *s.element;
    field = {};
    if (length == 0)
        return true;
    field.block = take_block();
    while (field.length < length) {
        const uint64_t end = sizeof(row_block) + uint64_t{field.length} * row.size;
        if (!field.block || end + row.size > field.block->size) {
            const uint64_t size = field.block ? field.block->size : 0;
            const uint64_t wanted = std::max<uint64_t>({2 * size, first_piece, sizeof(row_block) + row.size});
            const uint64_t max_size = sizeof(row_block) + uint64_t{length} * row.size;
            row_block *larger = larger_block(field.block, std::min(wanted, max_size));
            if (!larger)
                break;
            field.block = larger;
        }
        uint8_t *next = rows_of(field.block) + uint64_t{field.length} * row.size;
        const uint64_t room = (field.block->size - sizeof(row_block)) / row.size - field.length;
        const auto most = static_cast<uint32_t>(std::min<uint64_t>(room, length - field.length));
        uint32_t decoded = decode_straight_from(xdrs, s.straight, next, most);
        if (decoded == 0 && decode_record(xdrs, next, row, &field.block->texts)) {
            decoded = 1;
            field.block->owned |= has_own_blocks(next, row);
        }
        if (decoded == 0)
            break;
        field.length += decoded;
    }
    if (field.block)
        field.value = rows_of(field.block);
    if (field.length == length)
        return true;
    free_rows(field, row);
    return false;
}

bool encode_rows(XDR *xdrs, const any_rows &field, const layout &row)
{
    for (uint32_t i = 0; i < field.length; i++)
        if (!encode_record(xdrs, field.value + std::size_t{i} * row.size, row))
            return false;
    return true;
}

/* ---- whole records --------------------------------------------------------- */

template <class Field> Field &at(uint8_t *record, const step &s)
{
    return *reinterpret_cast<Field *>(record + s.offset);
}

bool is_open(const step &s)
{
    return s.kind >= kind::text;
}

bool decode_open(XDR *xdrs, uint8_t *record, const step &s, uint32_t count, text_piece **pieces)
{
    switch (s.kind) {
    case kind::text:
        return decode_text(xdrs, at<any_text>(record, s), count, s.count, pieces);
    case kind::bytes:
        return decode_bytes(xdrs, at<byte_list>(record, s), count);
    default:
        return decode_rows(xdrs, at<any_rows>(record, s), count, s);
    }
}

/** The count of an open field, more than its bound when it is not to be sent. */
uint64_t count_of(uint8_t *record, const step &s)
{
    switch (s.kind) {
    case kind::text:
        return length_of(at<any_text>(record, s));
    case kind::bytes:
        return at<byte_list>(record, s).length;
    default:
        return at<any_rows>(record, s).length;
    }
}

bool encode_open(XDR *xdrs, uint8_t *record, const step &s, uint32_t count)
{
    switch (s.kind) {
    case kind::text:
        return encode_text(xdrs, at<any_text>(record, s), count);
    case kind::bytes:
        return encode_bytes(xdrs, at<byte_list>(record, s));
    default:
        return encode_rows(xdrs, at<any_rows>(record, s), *s.element);
    }
}

/** Releases the open fields in steps up to end, of length records one behind the other. */
void release_fields(uint8_t *records, uint32_t length, const layout &plan, const step *end, bool with_texts)
{
    for (const step *s = plan.steps; s < end; s++) {
        uint8_t *record = records;
        const bool owned = is_open(*s) && (with_texts || s->kind != kind::text);
        for (uint32_t i = 0; owned && i < length; i++, record += plan.size) {
            if (s->kind == kind::text)
                free_text(at<any_text>(record, *s));
            else if (s->kind == kind::bytes)
                free_bytes(at<byte_list>(record, *s));
            else
                free_rows(at<any_rows>(record, *s), *s->element);
        }
    }
}

void release_records(uint8_t *records, uint32_t length, const layout &plan, bool with_texts)
{
    release_fields(records, length, plan, plan.steps + plan.count, with_texts);
}

/** Whether a decoded row owns more than its texts: a list that does not stay inside, or rows. */
bool has_own_blocks(uint8_t *record, const layout &plan)
{
    for (const step *s = plan.steps; s < plan.steps + plan.count; s++)
        if ((s->kind == kind::bytes && at<byte_list>(record, *s).length > byte_list::inside)
            || s->kind == kind::rows)
            return true;
    return false;
}

/** Whether a byte list is short and a run follows it: its units come along with the run then. */
bool comes_along(const step &open, uint32_t count, const step *end)
{
    return open.kind == kind::bytes && count <= byte_list::inside && &open + 1 < end
           && (&open + 1)->kind == kind::run;
}

/** All of a record, or nothing: what a failure leaves holds no pointers. A row's texts go into the pieces. */
bool decode_record(XDR *xdrs, uint8_t *record, const layout &plan, text_piece **pieces)
{
    const step *const end = plan.steps + plan.count;
    const step *list = nullptr; // whose units come along with the next run
    uint32_t count = 0;
    for (const step *run = plan.steps; run < end;) {
        uint8_t spare[4 * byte_list::inside + max_run];
        const uint32_t ahead = list ? 4 * count : 0;
        const uint8_t *in = take(xdrs, spare, ahead + run->wire);
        bool decoded = in != nullptr;
        const step *next = run + 1 + run->count;
        if (decoded) {
            if (list) {
                byte_list &bytes = at<byte_list>(record, *list);
                gather_bytes(bytes.small, in, count);
                bytes.length = count;
                list = nullptr;
            }
            in = decode_fields(record, *run, in + ahead);
            if (next < end && is_open(*next)) {
                const step &open = *next++;
                swap_words<uint32_t>(&count, in, 1);
                if (comes_along(open, count, end)) {
                    at<byte_list>(record, open).length = 0;
                    list = &open;
                } else {
                    decoded = decode_open(xdrs, record, open, count, pieces);
                }
            }
        }
        if (!decoded) {
            release_fields(record, 1, plan, run, !pieces);
            std::memset(record, 0, plan.size);
            return false;
        }
        run = next;
    }
    return true;
}

bool encode_record(XDR *xdrs, uint8_t *record, const layout &plan)
{
    const step *const end = plan.steps + plan.count;
    for (const step *run = plan.steps; run < end;) {
        uint8_t spare[max_run];
        const step *next = run + 1 + run->count;
        const step *open = next < end && is_open(*next) ? next++ : nullptr;
        const uint64_t count = open ? count_of(record, *open) : 0;
        if (open && count > open->count)
            return false;
        uint8_t *const start = room(xdrs, spare, run->wire);
        uint8_t *out = encode_fields(record, *run, start);
        const auto word = static_cast<uint32_t>(count);
        if (open)
            swap_words<uint32_t>(out, &word, 1);
        if (!put(xdrs, start, spare, run->wire) || (open && !encode_open(xdrs, record, *open, word)))
            return false;
        run = next;
    }
    return true;
}

} // namespace

void release_layout(void *record, const layout &plan)
{
    release_records(static_cast<uint8_t *>(record), 1, plan, true);
}

bool_t xdr_layout(XDR *xdrs, void *record, const layout &plan)
{
    auto *bytes = static_cast<uint8_t *>(record);
    switch (xdrs->x_op) {
    case XDR_ENCODE:
        return encode_record(xdrs, bytes, plan);
    case XDR_DECODE:
        return decode_record(xdrs, bytes, plan, nullptr);
    default:
        release_layout(record, plan);
        return TRUE;
    }
}

} // namespace wire
