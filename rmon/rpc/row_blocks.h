// SPDX-License-Identifier: MIT
/*
 * The memory of decoded rows: a block that grows with the rows that arrive, and
 * pieces for their texts.
 */
#pragma once

#include "rmon/rpc/wire.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace wire {

/** Texts of rows, one behind the other: this, then the texts. */
struct text_piece {
    text_piece *next;
    uint32_t used, size; // bytes behind this
};

/** Each piece is twice the one before. Where the sanitizer is to see stale texts, each text has its own. */
#ifdef __SANITIZE_ADDRESS__
inline constexpr uint32_t first_text_piece = 1, max_text_piece = 1;
#else
inline constexpr uint32_t first_text_piece = 256, max_text_piece = 1 << 16;
#endif

/** Room for size bytes in the first of the pieces, before which a new one is put when it is full. */
inline char *text_room(text_piece *&pieces, uint32_t size)
{
    if (!pieces || size > pieces->size - pieces->used) {
        const uint32_t usual = pieces ? std::min(2 * pieces->size, max_text_piece) : first_text_piece;
        const uint32_t room = std::max(usual, size);
        void *memory = std::malloc(sizeof(text_piece) + room);
        if (!memory)
            return nullptr;
        pieces = new (memory) text_piece{pieces, 0, room};
    }
    char *place = reinterpret_cast<char *>(pieces + 1) + pieces->used;
    pieces->used += size;
    return place;
}

/** Decoded rows: this, then the rows. Their texts lie in pieces of their own. */
struct alignas(std::max_align_t) row_block {
    uint64_t size; // in bytes, this included
    text_piece *texts;
    bool owned; // a row has a list or rows in a block of their own
};

inline uint8_t *rows_of(row_block *block)
{
    return reinterpret_cast<uint8_t *>(block + 1);
}

/** The block of rows that were freed, which belongs to the caller then; null when there is none. */
row_block *take_block();

/** Gives a block more room, or makes one of null. Null when there is no memory; the block stands then. */
row_block *larger_block(row_block *block, uint64_t size);

/** Frees a block with its texts, or keeps it for the next reply. */
void keep_block(row_block *block);

} // namespace wire
