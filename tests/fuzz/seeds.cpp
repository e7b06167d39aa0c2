// SPDX-License-Identifier: MIT
/*
 * Writes inputs for the fuzzers to begin with: for each procedure's records,
 * replies that repeat one unit, read as a count where a count stands, and for
 * each count in a result one that promises as much as it can; for each
 * function, what is a valid result whatever its record.
 *
 * usage: fuzz-seeds DIR-FOR-RECORDS DIR-FOR-SESSIONS DIR-FOR-CALLS
 */
#include "tests/fuzz/common.h"

namespace {

/** Bytes of the longest row. */
constexpr size_t max_row = 16384;
/** More than there are functions; numbers beyond begin anew. */
constexpr uint32_t functions = 320;

/** Where the counts stand in a record all of whose units are 1; its end. */
size_t find_counts(const wire::layout &layout, size_t at, std::vector<size_t> &counts)
{
    for (const wire::step *step = layout.steps; step < layout.steps + layout.count; step++) {
        at += step->wire; // of a run, the count behind it included
        if (step->kind < wire::kind::text)
            continue;
        counts.push_back(at - 4);
        at = step->element ? find_counts(*step->element, at, counts) : at + 4;
    }
    return at;
}

/** Replies whose counts promise far more than arrives, each count of a result in turn. */
void write_promises(const std::string &path, const any_procedure &which, uint8_t high, uint8_t low)
{
    std::vector<size_t> counts;
    const auto result = repeating(*which.result, 1);
    if (find_counts(*which.result, 0, counts) != result.size())
        broken("a result ends where its fields do");
    for (const size_t count : counts) {
        std::vector<uint8_t> promising{result.begin(), result.begin() + static_cast<long>(count)};
        promising = joined(joined(promising, {0xff, 0xff, 0xff, 0xff}), units(1, max_seed));
        for (const uint8_t arrival : {0, 2})
            write_file(
                path + std::to_string(count) + "-promise" + std::to_string(arrival),
                joined({high, low, arrival}, promising));
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4)
        return 1;
    const auto all = procedures();
    for (size_t i = 0; i < all.size(); i++) {
        const auto high = static_cast<uint8_t>(i >> 8), low = static_cast<uint8_t>(i);
        const std::string number = '/' + std::to_string(i) + '-';
        for (const uint8_t unit : {0, 1, 2, 17}) {
            const std::string name = number + std::to_string(unit);
            const auto result = cut_off(repeating(*all[i].result, unit));
            write_file(argv[1] + name + "-result", joined({high, low, uint8_t(2 * unit)}, result));
            if (unit < 2)
                write_file(
                    argv[1] + name + "-argument",
                    joined({high, low, uint8_t(2 * unit + 1)}, cut_off(repeating(*all[i].argument, unit))));
            // One good reply: see sessions.cpp.
            const auto size = static_cast<uint32_t>(result.size());
            write_file(
                argv[2] + name,
                joined({high, low, 0, static_cast<uint8_t>(size >> 8), static_cast<uint8_t>(size)}, result));
        }

        write_promises(argv[1] + number, all[i], high, low);
    }
    for (uint32_t i = 0; i < functions; i++)
        for (const uint8_t unit : {0, 1, 2})
            write_file(
                argv[3] + ('/' + std::to_string(i) + '-' + std::to_string(unit)),
                joined(
                    {static_cast<uint8_t>(i >> 8), static_cast<uint8_t>(i)},
                    units(unit, unit == 1 ? max_row : max_seed / 4)));
    return 0;
}
