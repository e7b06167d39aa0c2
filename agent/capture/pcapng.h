// SPDX-License-Identifier: MIT
/*
 * Reads pcapng files block by block (draft-ietf-opsawg-pcapng). libpcap reads
 * such a file only if its interfaces are all of one link type and one snapshot
 * length; here each interface stands for itself, and its frames come with its
 * number.
 *
 * Sections may follow each other, of either byte order, and interfaces come
 * when they come. Lengths are claims: nothing is read beyond what the file has,
 * nor beyond the block.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct pcapng_interface {
    uint32_t number = 0;      // in the file, from 0 on; sections do not begin again
    uint16_t link_type = 0;   // 1: Ethernet
    uint32_t max_octets = 0;  // that are captured of a frame, 0: no bound
    uint64_t ticks = 1000000; // of the frames' times, in a second
    int64_t offset = 0;       // seconds to be added to them
    uint64_t speed = 0;       // bits per second, 0: not told
    std::string name;
};

struct pcapng_frame {
    const pcapng_interface *from = nullptr; // until the next block is read, as are the bytes
    const uint8_t *bytes = nullptr;
    uint32_t captured = 0;
    uint32_t length = 0;
    int64_t time = 0; // microseconds since 1970, at least 0
};

enum class pcapng_block { interface, frame, other, end, damaged };

struct pcapng_file {
    int descriptor = -1;
    std::vector<uint8_t> buffer; // what was read of the file and not used up
    std::size_t begin = 0;       // in the buffer
    std::size_t end = 0;
    bool swapped = false; // the section's numbers are of the other byte order
    bool in_section = false;
    uint32_t interfaces = 0;                  // in the file, up to now
    std::vector<pcapng_interface> of_section; // by the number that the section's frames have
    pcapng_frame frame;                       // the last one
    std::string wrong;                        // why the file is damaged
};

/** Whether a file that can be read again from its beginning has the form. */
bool is_pcapng(const std::string &path);

/** False, with errno, when the file cannot be opened. */
bool open_pcapng(pcapng_file &file, const std::string &path);

/** Reads the next block: of an interface, which is then the section's last one, or of a frame. */
pcapng_block read_block(pcapng_file &file);

/** From the beginning again. */
void rewind_pcapng(pcapng_file &file);

void close_pcapng(pcapng_file &file);
