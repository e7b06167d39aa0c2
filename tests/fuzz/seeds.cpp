/*
 * Writes inputs for the fuzzers to begin with: for each procedure's records,
 * replies that repeat one unit, read as a count where a count stands.
 *
 * usage: fuzz-seeds DIR-FOR-RECORDS DIR-FOR-SESSIONS
 */
#include "tests/fuzz/common.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

/** Larger seeds slow the fuzzer down more than they help it. */
constexpr size_t longest = 8192;

void write(const std::string &file, const std::vector<uint8_t> &bytes)
{
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush())
        broken("seeds can be written");
}

/** The bytes of a record all of whose units are the same; cut off when there are too many. */
std::vector<uint8_t> repeating(const wire::layout &layout, uint8_t unit)
{
    std::vector<uint8_t> bytes(1 << 20);
    for (size_t i = 3; i < bytes.size(); i += 4)
        bytes[i] = unit;
    any_record record(layout);
    const long used = decode(bytes, record);
    if (used < 0)
        broken("a record of equal units is valid");
    bytes.resize(std::min(static_cast<size_t>(used), longest));
    return bytes;
}

std::vector<uint8_t> joined(std::vector<uint8_t> first, const std::vector<uint8_t> &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return 1;
    const auto all = procedures();
    for (size_t i = 0; i < all.size(); i++) {
        const auto high = static_cast<uint8_t>(i >> 8), low = static_cast<uint8_t>(i);
        for (const uint8_t unit : {0, 1, 2, 17}) {
            const std::string name = '/' + std::to_string(i) + '-' + std::to_string(unit);
            const auto result = repeating(*all[i].result, unit);
            write(argv[1] + name + "-result", joined({high, low, uint8_t(2 * unit)}, result));
            if (unit < 2)
                write(
                    argv[1] + name + "-argument",
                    joined({high, low, uint8_t(2 * unit + 1)}, repeating(*all[i].argument, unit)));
            // One good reply: see sessions.cpp.
            const auto size = static_cast<uint32_t>(result.size());
            write(
                argv[2] + name,
                joined({high, low, 0, static_cast<uint8_t>(size >> 8), static_cast<uint8_t>(size)}, result));
        }
    }
    return 0;
}
