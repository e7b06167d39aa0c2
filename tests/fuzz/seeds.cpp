/*
 * Writes inputs for the fuzzers to begin with: for each procedure's records,
 * replies that repeat one unit, read as a count where a count stands.
 *
 * usage: fuzz-seeds DIR-FOR-RECORDS DIR-FOR-SESSIONS
 */
#include "tests/fuzz/common.h"

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
            write_file(argv[1] + name + "-result", joined({high, low, uint8_t(2 * unit)}, result));
            if (unit < 2)
                write_file(
                    argv[1] + name + "-argument",
                    joined({high, low, uint8_t(2 * unit + 1)}, repeating(*all[i].argument, unit)));
            // One good reply: see sessions.cpp.
            const auto size = static_cast<uint32_t>(result.size());
            write_file(
                argv[2] + name,
                joined({high, low, 0, static_cast<uint8_t>(size >> 8), static_cast<uint8_t>(size)}, result));
        }
    }
    return 0;
}
