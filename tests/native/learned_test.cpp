// SPDX-License-Identifier: MIT
/* Learned tables, and the memory that they share. */
#include "tests/native/check.h"

#include "agent/core/learned_sift.h"
#include "agent/core/memory.h"
#include "agent/options.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <list>
#include <map>
#include <random>
#include <utility>

namespace {

using table = learned_table<uint64_t, uint64_t>;

constexpr std::size_t bound = smallest_memory;
constexpr std::size_t part = bound / 2 / 4096;

/** Sets the bound as long as it is there; all was given back at its end. */
struct bounded {
    explicit bounded(std::size_t limit) { learned_memory.limit = limit; }
    ~bounded()
    {
        check(learned_memory.taken == 0 && learned_memory.beyond == 0, "memory was given back");
        learned_memory = {};
    }
};

/** What the lists of a table take. */
std::size_t held(const table &of, const ordered_view &view)
{
    return of.entries.capacity() * sizeof of.entries[0] + of.slots.capacity() * sizeof of.slots[0]
           + (of.by_use.capacity() + of.fresh.capacity()) * sizeof of.fresh[0]
           + view.order.capacity() * sizeof view.order[0];
}

/** Learns numbers of a range, each once. */
void learn_range(table &of, uint64_t first, uint64_t count)
{
    for (uint64_t key = first; key < first + count; key++)
        *learn(of, key) = key;
}

table huge()
{
    table made;
    made.max_rows = 1 << 20;
    return made;
}

void test_one_table()
{
    const bounded limit(bound);
    table one = huge();
    check(one.memory.octets == 0, "a table without rows has no memory");
    learn_range(one, 0, 1);
    check(
        one.entries.capacity() == 8 && one.memory.octets == octets_of<uint64_t, uint64_t>(8),
        "its first rows");

    // Half of the half that is not kept for parts, and its own part.
    const std::size_t most = bound / 4 + part;
    const uint32_t promised = rows_within_reach(one);
    check(promised < one.max_rows, "it will get fewer rows than it asked for");
    learn_range(one, 1, 2 * promised);
    const std::size_t rows = one.entries.size();
    check(rows == promised, "it gets as many rows as it was told");
    check(rows_within_reach(one) == promised, "and is told the same then");
    check(one.memory.octets == learned_memory.taken, "no other has memory");
    check(learned_memory.taken <= most, "no more than its part of the bound");
    const std::size_t entries = rows * sizeof one.entries[0];
    check(
        octets_of<uint64_t, uint64_t>(rows + rows / 8 + 1) > most || learned_memory.taken + entries > bound,
        "another step has no room");
    check(one.deletes == promised + 1 && one.inserts == 2 * promised + 1, "the others gave way");
    check(find_learned(one, uint64_t{promised}) == no_entry, "those of them that were used first");
    check(find_learned(one, uint64_t{promised} + 1) != no_entry, "and no more");

    ordered_view view;
    in_order(one, view, std::less{});
    learn_range(one, 0, 3 * promised);
    check(held(one, view) <= one.memory.octets, "its lists take no more than it has");
    check(!has_room(one), "it has no room");
    const uint32_t index = find_learned(one, uint64_t{3} * promised - 1);
    check(index != no_entry && one.entries[index].row == 3 * promised - 1, "the last row has its value");
}

/** With any memory, a table gets no more rows than it may have: replies tell of them in 32 bits. */
void test_much_memory()
{
    check(granted_rows(INT32_MAX) == 1 << 20 && granted_rows((1 << 20) + 1) == 1 << 20, "rows at most");
    check(
        granted_rows(1 << 20) == 1 << 20 && granted_rows(1) == 1 && granted_rows(0) == 0, "rows as desired");
    check(granted_rows(-1) == 10000 && granted_rows(INT32_MIN) == 10000, "rows when nobody says how many");
    for (const uint64_t octets : {uint64_t{16} << 30, uint64_t{1} << 46, uint64_t{SIZE_MAX / 2}}) {
        const bounded limit(static_cast<std::size_t>(std::min<uint64_t>(octets, SIZE_MAX / 2)));
        const std::string name = "of " + std::to_string(octets) + " octets: ";
        table one;
        check(rows_within_reach(one) == 10000, name + "rows of a table for which nobody asked for a size");
        one.max_rows = granted_rows(INT32_MAX);
        check(rows_within_reach(one) == 1 << 20, name + "rows of one that wants the most");
        learn_range(one, 0, 100);
        one.max_rows = granted_rows(50);
        check(rows_within_reach(one) == 50, name + "rows of one that has room for more than it may have now");
    }
}

void test_later_tables()
{
    const bounded limit(bound);
    std::list<table> greedy;
    std::size_t before = SIZE_MAX;
    for (int i = 0; i < 12; i++) {
        greedy.push_back(huge());
        learn_range(greedy.back(), 0, 100000);
        const std::size_t octets = greedy.back().memory.octets;
        check(octets <= before && octets > part / 2, "of greedy tables a later one gets less, but its part");
        before = octets;
    }
    // Each still gets 16 rows: 84 octets for each, and 32 slots of 8; for 19 rows they would be 64 slots.
    // Where addresses have 32 bits, rows are smaller, and some more fit.
    std::list<table> later;
    for (int i = 0; i < 2900; i++) {
        later.push_back(huge());
        learn_range(later.back(), 0, 100);
    }
    check(
        std::ranges::all_of(later, [](const table &of) { return of.entries.size() >= 16; })
            && (later.back().entries.size() == 16 || sizeof(void *) < 8),
        "the tables that come last have the rows of their part");
    check(learned_memory.taken <= bound, "all of them have no more than the bound");
}

void test_giving_back()
{
    const bounded limit(bound);
    table one = huge();
    learn_range(one, 0, 100000);
    const std::size_t alone = one.memory.octets;
    std::size_t beside = 0;
    {
        table other = huge();
        learn_range(other, 0, 100000);
        beside = other.entries.size();
        check(other.memory.octets < alone, "beside another one, a table gets less");
        check(learned_memory.taken == alone + other.memory.octets, "what both have");
    }
    check(learned_memory.taken == alone, "a table that is gone has nothing");

    // A moved table takes its memory along, and its place has room for rows anew.
    table moved = std::move(one);
    check(learned_memory.taken == alone && moved.memory.octets == alone, "what moves stays the same");
    table second = huge();
    std::swap(moved, second);
    check(second.memory.octets == alone && moved.memory.octets == 0, "what is swapped, too");
    learn_range(moved, 0, 100000);
    check(moved.entries.size() == beside, "the other one gets what was left");
    second = huge();
    check(learned_memory.taken == moved.memory.octets, "what is assigned anew gives back");
    check(rows_within_reach(moved) > beside, "then another one can grow");
    learn_range(moved, 100000, 100000);
    check(moved.entries.size() == rows_within_reach(moved) && moved.entries.size() > beside, "and grows");
}

void test_sifting()
{
    const bounded limit(bound);
    table one;
    one.max_rows = 1000;
    learn_range(one, 0, 1000);
    for (uint64_t key = 0; key < 10; key++)
        learn(one, key); // used last now
    keep_learned(one, find_learned(one, uint64_t{500}), true);
    const std::size_t before = one.memory.octets;
    const uint64_t version = one.version;

    sift_learned(one, 1000, [](uint64_t key) { return key != 3 && key != 700; });
    check(one.entries.size() == 998 && one.deletes == 2 && one.version > version, "two rows went");
    check(one.memory.octets == before, "which is no reason to move all others");
    check(
        find_learned(one, uint64_t{3}) == no_entry && find_learned(one, uint64_t{700}) == no_entry,
        "those two");

    // Of 998, the 20 that stay are the kept one, the nine that were used last, and 990 to 999.
    sift_learned(one, 20, [](uint64_t) { return true; });
    std::vector<uint64_t> keys;
    for (const auto &entry : one.entries)
        keys.push_back(entry.key);
    std::ranges::sort(keys);
    const std::vector<uint64_t> expected{0,   1,   2,   4,   5,   6,   7,   8,   9,   500,
                                         990, 991, 992, 993, 994, 995, 996, 997, 998, 999};
    check(keys == expected, "the rows that were used last stay");
    check(one.entries.size() == 20 && one.kept == 1 && one.deletes == 980, "counts of rows");
    check(one.memory.octets == octets_of<uint64_t, uint64_t>(20), "the memory of the others was given back");
    for (uint64_t key = 0; key < 1000; key++) {
        const uint32_t index = find_learned(one, key);
        check((index != no_entry) == std::ranges::binary_search(expected, key), "each is found");
        check(index == no_entry || one.entries[index].row == key, "with its value");
    }

    // In their order: 990 to 999, then the nine.
    for (uint64_t i = 0; i < 19; i++) {
        const uint64_t next = i < 10 ? 990 + i : expected[i - 10];
        check(find_learned(one, next) != no_entry, "the next one is there");
        learn(one, 2000 + i);
        check(find_learned(one, next) == no_entry, "and gives way");
    }
    check(find_learned(one, uint64_t{500}) != no_entry, "the kept one doesn't");
    sift_learned(one, 20, [](uint64_t) { return false; });
    check(
        one.entries.empty() && one.kept == 0 && one.memory.octets == 0, "a table without rows has no memory");
    check(*learn(one, uint64_t{1}) == 0 && one.entries.size() == 1, "and learns again");
}

/** The same as a table, made of lists. */
struct plain_table {
    std::size_t max_rows;
    std::list<std::pair<uint64_t, uint64_t>> rows; // the one that was used last stands first

    void use(uint64_t key)
    {
        auto found = std::ranges::find(rows, key, [](const auto &row) { return row.first; });
        if (found == rows.end()) {
            if (rows.size() == max_rows)
                rows.pop_back();
            found = rows.insert(rows.begin(), {key, 0});
        }
        found->second++;
        rows.splice(rows.begin(), rows, found);
    }
};

/** Which rows give way, and what the others count, whatever the order of use. */
void test_order_of_use()
{
    std::mt19937_64 random(5);
    for (const uint32_t rows : {1U, 2U, 7U, 64U}) {
        const bounded limit(bound);
        table one;
        one.max_rows = rows;
        plain_table plain{rows, {}};
        for (int i = 0; i < 20000; i++) {
            const uint64_t key = random() % (rows + 1 + random() % (2 * rows));
            ++*learn(one, key);
            plain.use(key);
            if (i % 997 == 0)
                sift_learned(one, rows, [](uint64_t) { return true; });
        }
        std::map<uint64_t, uint64_t> counted;
        for (const auto &entry : one.entries)
            counted[entry.key] = entry.row;
        check(
            counted == std::map<uint64_t, uint64_t>(plain.rows.begin(), plain.rows.end()),
            "rows of a table of " + std::to_string(rows));
    }
}

/** A file in a directory that is made. */
void put_file(const std::filesystem::path &path, const std::string &text)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

void test_machine_memory()
{
    char name[] = "/tmp/rmon-groups-XXXXXX";
    const std::filesystem::path groups = mkdtemp(name);
    const std::string own = groups / "own";
    const auto memory = [&](const std::string &membership) {
        put_file(own, membership);
        return machine_memory(own, groups);
    };
    const uint64_t machine = memory("");
    check(machine > 64 << 20 && machine == machine_memory("/nowhere", "/nowhere"), "the machine's memory");

    put_file(groups / "a/memory.max", "50331648\n");
    put_file(groups / "a/b/memory.max", "max\n");
    put_file(groups / "a/b/c/memory.max", "60000000\n");
    check(memory("0::/a/b/c\n") == 50331648, "the lowest limit of a group and of those above it");
    check(memory("0::/a/b\n") == 50331648, "that of one above");
    check(memory("0::/other\n") == machine, "a group without a limit");
    put_file(groups / "memory/d/memory.limit_in_bytes", "33554432\n");
    put_file(groups / "memory/memory.limit_in_bytes", "9223372036854771712\n");
    check(memory("4:cpu,memory:/d\n0::/a\n") == 33554432, "a group of a hierarchy of its own");
    check(memory("4:memory:/e\n") == machine, "which has none");
    check(memory("nonsense\n:\n4:cpu:/d\n") == machine, "groups of other controllers, and no lines");
    std::filesystem::remove_all(groups);
}

void test_option()
{
    const std::pair<std::string, uint64_t> good[] = {
        {"16M", 16 << 20},
        {"16777216", 16777216},
        {"16384K", 16 << 20},
        {"3G", uint64_t{3} << 30},
        {"65536G", uint64_t{1} << 46}};
    for (const auto &[text, octets] : good) {
        options chosen;
        check(
            read_options(chosen, {"--memory", text}).empty() && chosen.memory == octets, "--memory " + text);
    }
    for (const std::string text :
         {"", "M", "15M", "16777215", "16m", "16MB", "-1", "1.5G", "65537G", "17179869185G",
          "18446744073709551615G", "99999999999999999999", " 16M"}) {
        options chosen;
        check(
            read_options(chosen, {"--memory", text}) == "no size of the memory (16M to 65536G): " + text,
            "--memory " + text);
    }
}

} // namespace

void test_learned()
{
    test_one_table();
    test_much_memory();
    test_later_tables();
    test_giving_back();
    test_sifting();
    test_order_of_use();
    test_machine_memory();
    test_option();
}
