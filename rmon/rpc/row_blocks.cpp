// SPDX-License-Identifier: MIT
#include "rmon/rpc/row_blocks.h"

#include <cstring>
#include <utility>

#include <sys/mman.h>

namespace wire {
namespace {

/**
 * The block of the rows that were freed last. The next reply's rows grow into
 * it: a page asks for one table after another, and what one reply needed is a
 * good guess for the next.
 */
constinit row_block *kept_block = nullptr;

/**
 * From this size on a block is mapped: it grows without being copied, and never
 * takes its memory twice. Where the sanitizer is to see stale rows, none is
 * mapped and none is kept.
 */
#ifdef __SANITIZE_ADDRESS__
constexpr uint64_t min_mapped = UINT64_MAX, max_kept = 0;
#else
constexpr uint64_t min_mapped = 1 << 18, max_kept = 1 << 20;
#endif

void free_texts(text_piece *pieces)
{
    while (pieces)
        std::free(std::exchange(pieces, pieces->next));
}

void free_block(row_block *block)
{
    if (block && block->size >= min_mapped)
        munmap(block, block->size);
    else
        std::free(block);
}

void *map(uint64_t size)
{
    void *memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : memory;
}

void *remap(row_block *block, uint64_t size)
{
    void *memory = mremap(block, block->size, size, MREMAP_MAYMOVE);
    return memory == MAP_FAILED ? nullptr : memory;
}

/** A mapped block in the place of one that was not. */
void *move_to_map(row_block *block, uint64_t size)
{
    void *memory = map(size);
    if (memory) {
        std::memcpy(memory, block, block->size);
        std::free(block);
    }
    return memory;
}

} // namespace

row_block *larger_block(row_block *block, uint64_t size)
{
    const bool is_new = !block;
    void *memory = nullptr;
    if (size < min_mapped)
        memory = std::realloc(static_cast<void *>(block), size);
    else if (is_new)
        memory = map(size);
    else
        memory = block->size >= min_mapped ? remap(block, size) : move_to_map(block, size);
    if (!memory)
        return nullptr;
    auto *larger = static_cast<row_block *>(memory);
    if (is_new) {
        larger->texts = nullptr;
        larger->owned = false;
    }
    larger->size = size;
    return larger;
}

row_block *take_block()
{
    return std::exchange(kept_block, nullptr);
}

void keep_block(row_block *block)
{
    if (!block)
        return;
    free_texts(std::exchange(block->texts, nullptr));
    block->owned = false;
    if (block->size <= max_kept && (!kept_block || block->size > kept_block->size))
        std::swap(block, kept_block);
    free_block(block);
}

} // namespace wire
