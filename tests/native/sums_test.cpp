// SPDX-License-Identifier: MIT
/*
 * Frames that are counted together: all tables are as if each frame had been
 * counted by itself. Two agents get the same frames; one gives each to its
 * tables at once, the other adds up like ones.
 */
#include "tests/native/check.h"

#include "agent/capture/counting.h"
#include "agent/capture/family.h"
#include "agent/dsmon/hosts.h"
#include "agent/dsmon/matrix.h"
#include "agent/dsmon/pdist.h"
#include "agent/rmon1/hosts.h"
#include "agent/rmon1/matrix.h"
#include "agent/rmon2/addrmap.h"
#include "agent/rmon2/hlhost.h"
#include "agent/rmon2/hlmatrix.h"
#include "tests/fuzz/agent.h"
#include "tests/native/shown_tables.h"
#include "tests/native/some_frames.h"

#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

/** Milliseconds of all clocks while a test has them stand still; -1: they go on. */
int64_t standing_clock = -1;

} // namespace

/** In the place of the library's. */
extern "C" int clock_gettime(clockid_t clock, timespec *now) noexcept
{
    if (standing_clock < 0)
        return static_cast<int>(syscall(SYS_clock_gettime, clock, now));
    now->tv_sec = standing_clock / 1000;
    now->tv_nsec = standing_clock % 1000 * 1000000;
    return 0;
}

namespace {

/* ---- two agents ---------------------------------------------------------------------------- */

struct two_agents {
    memory_file file;
    started_agent singly; // counts each frame by itself
    started_agent summed;
    int64_t time = 1000000000;

    explicit two_agents(int32_t rows)
    {
        fill(file, empty_capture());
        for (started_agent *one : {&singly, &summed}) {
            check(start_agent(*one, file.path).empty(), "an agent starts");
            start_groups(one->agent, rows);
        }
        both([](probe &agent) {
            dsmon_aggregation &aggregation = storage<dsmon_aggregation>(agent);
            for (std::size_t i = 0; i < dscp_values; i++)
                aggregation.profiles.at(1).group_of[i] = static_cast<uint8_t>(i % 16);
        });
        lock_anew();
    }
    ~two_agents()
    {
        stop_agent(singly);
        stop_agent(summed);
        close(file.descriptor);
    }
    two_agents(const two_agents &) = delete;
    two_agents &operator=(const two_agents &) = delete;

    template <class Do> void both(Do what)
    {
        what(singly.agent);
        what(summed.agent);
    }

    void lock_anew()
    {
        both([](probe &agent) {
            for (const bool locked : {false, true})
                for (const lock_listener hear : storage<dsmon_aggregation>(agent).listeners)
                    hear(agent, locked);
        });
    }

    void take(const octets &bytes)
    {
        time += 100;
        const auto size = static_cast<uint32_t>(bytes.size());
        for (frame_sums &kind : singly.agent.sources.late.of)
            kind.alone = 2;
        for (probe *agent : {&singly.agent, &summed.agent}) {
            const octets gone = bytes; // its memory is another frame's afterwards
            take_frame(agent->sources.rows.at(1), gone.data(), size, std::max(size, 14u), time);
        }
    }

    void check_same(const std::string &when)
    {
        const std::string one = tables_of(singly.agent), other = tables_of(summed.agent);
        check(one == other, when + ": " + (one == other ? "" : difference(one, other)));
    }
};

/** Sums that wait. */
std::size_t waiting(const probe &agent)
{
    std::size_t number = 0;
    for (const frame_sums &kind : agent.sources.late.of)
        for (const frame_sum &sum : kind.sums)
            number += sum.pkts > 0;
    return number;
}

/* ---- what happens between frames --------------------------------------------------------------- */

/** Whether a group counts a protocol changes, as by a set. */
void change_protocol(probe &agent, int32_t index, protocol_config protocol::*config)
{
    settle_all(agent);
    protocol *which = find_protocol(agent.protocols, index);
    if (!which || which->*config == protocol_config::not_supported)
        return;
    which->*config = which->*config == protocol_config::on ? protocol_config::off : protocol_config::on;
    for (const family *one : families())
        if (one->protocols_changed)
            one->protocols_changed(agent);
}

/** Every so many rows of a table never give way, and the others do. */
template <class Table> void keep_some(Table &rows, uint32_t every)
{
    for (uint32_t i = 0; i < rows.entries.size(); i++)
        keep_learned(rows, i, i % every == 0);
}

/** Something happens to both agents, or nothing. */
void disturb(two_agents &agents, chances &by, int32_t rows)
{
    const auto protocols = static_cast<uint32_t>(local_index_end(agents.singly.agent.protocols));
    const auto index = static_cast<int32_t>(by.below(protocols));
    const uint32_t every = 1 + by.below(5);
    switch (by.below(40)) {
    case 0:
        agents.both([&](probe &agent) { start_groups(agent, rows); });
        break;
    case 1:
        agents.lock_anew();
        break;
    case 2:
        agents.both([&](probe &agent) { change_protocol(agent, index, &protocol::host); });
        break;
    case 3:
        agents.both([&](probe &agent) { change_protocol(agent, index, &protocol::matrix); });
        break;
    case 4:
        agents.both([&](probe &agent) { change_protocol(agent, index, &protocol::address_map); });
        break;
    case 5:
        agents.both([](probe &agent) { tick_loop(agent.loop); });
        break;
    case 6:
        agents.both([&](probe &agent) {
            if (const auto &work = storage<hl_host_table>(agent).at(1).work)
                keep_some(work->network.rows, every);
        });
        break;
    case 7:
        agents.both([&](probe &agent) {
            if (const auto &work = storage<hl_matrix_table>(agent).at(1).work)
                keep_some(work->application.rows, every);
        });
        break;
    case 8:
        agents.both([&](probe &agent) {
            keep_some(storage<dsmon_host_table>(agent).at(1).counts->learned, every + 1);
        });
        break;
    case 9:
        catch_up_all(agents.summed.agent); // somebody looks, whom nobody sees
        break;
    default:
        break;
    }
}

/** Tables of which the size is no setting get one. */
void set_size(probe &agent, uint32_t rows)
{
    storage<host_table>(agent).at(1).work->learned.max_rows = rows;
    storage<matrix_table>(agent).at(1).work->learned.max_rows = rows;
    storage<address_map>(agent).rows.max_rows = rows;
}

/* ---- tests --------------------------------------------------------------------------------- */

/** Frames of all kinds, looked at now and then, with changes in between; rows give way where there are few.
 */
void test_equality(int32_t rows, const traffic &of)
{
    chances by;
    two_agents agents(rows);
    std::size_t most = 0;
    uint32_t gave_way = 0;
    const std::string name = std::to_string(rows) + " rows, " + std::to_string(of.hosts) + " hosts, turn ";
    for (int turn = 0; turn < 300; turn++) {
        if (rows > 0 && turn % 20 == 0)
            agents.both([&](probe &agent) { set_size(agent, static_cast<uint32_t>(rows)); });
        octets last = some_frame(by, of);
        for (uint32_t frames = by.below(by.one_in(10) ? 700 : 90); frames > 0; frames--) {
            if (by.one_in(2))
                last = some_frame(by, of);
            agents.take(last);
        }
        most = std::max(most, waiting(agents.summed.agent));
        gave_way = std::max(gave_way, storage<host_table>(agents.summed.agent).at(1).work->learned.deletes);
        if (by.one_in(2))
            agents.check_same(name + std::to_string(turn));
        standing_clock += by.below(2000);
        disturb(agents, by, rows);
    }
    agents.check_same(name + "end");
    check(waiting(agents.singly.agent) == 0, "one agent counts each frame at once");
    check(most >= 4, name + "frames are added up");
    check(agents.summed.agent.sources.rows.at(1).total.pkts > 10000, "the agents had frames to count");
    if (rows > 0 && rows < static_cast<int32_t>(of.hosts))
        check(gave_way > 20, name + "hosts gave way");
}

/** A frame of good length and one that is too long, from one host to another. */
octets plain_frame(uint32_t from, uint32_t to, bool too_long)
{
    octets made;
    put_mac(made, to);
    put_mac(made, from);
    put(made, 0x88cc, 2);
    made.resize(too_long ? 1600 : 100);
    return made;
}

/** Frames of bad length count from the moment on at which a good one made the host known, or the pair. */
void test_bad_lengths()
{
    chances by;
    std::size_t most = 0;
    for (int i = 0; i < 20; i++) {
        two_agents agents(-1);
        for (int frames = 0; frames < 60; frames++)
            agents.take(plain_frame(1 + by.below(3), 1 + by.below(3), !by.one_in(8)));
        most = std::max(most, waiting(agents.summed.agent));
        agents.check_same("frames of bad length");
    }
    check(most > 4, "frames of bad length are added up");
}

/** An address that two hosts use in turn has changed with each frame. */
void test_moving_address()
{
    two_agents agents(-1);
    for (int i = 0; i < 12; i++) {
        octets made = plain_frame(1 + i / 2 % 2, 9, false);
        made.resize(12);
        put(made, ethertype_ip, 2);
        put(made, 0x45000014, 4);
        put(made, 0, 4);
        put(made, 64 << 24, 4);
        put_ip4(made, 7);
        put_ip4(made, 9);
        made.resize(60);
        standing_clock += 1000;
        agents.time += 1000000;
        agents.take(made);
        if (i % 5 == 4)
            agents.check_same("an address that moves, frame " + std::to_string(i));
    }
    agents.check_same("an address that moves");
}

/** All tables have room for many rows. */
void give_room(probe &agent)
{
    constexpr uint32_t many = 1 << 20;
    set_size(agent, many);
    auto &hosts = *storage<hl_host_table>(agent).at(1).work;
    auto &pairs = *storage<hl_matrix_table>(agent).at(1).work;
    hosts.network.rows.max_rows = hosts.application.rows.max_rows = many;
    pairs.network.rows.max_rows = pairs.application.rows.max_rows = many;
    storage<dsmon_pdist_table>(agent).at(1).counts->learned.max_rows = many;
    storage<dsmon_host_table>(agent).at(1).counts->learned.max_rows = many;
    storage<dsmon_matrix_table>(agent).at(1).counts->learned.max_rows = many;
}

/** More sums than there may be, more of them that wait, and frames of which no two are alike. */
void test_many_sums()
{
    chances by;
    two_agents agents(-1);
    agents.both(give_room);
    const traffic few{.hosts = 60, .odd = false}, many{.hosts = 100000, .odd = false};
    std::vector<octets> again;
    for (int i = 0; i < 6000; i++)
        again.push_back(some_frame(by, {.hosts = 300, .odd = false}));
    for (int round = 0; round < 4; round++)
        for (const octets &one : again)
            for (int times = 0; times < 8; times++)
                agents.take(one);
    check(waiting(agents.summed.agent) > 4096, "many sums wait");
    check(agents.summed.agent.sources.late.of[0].used <= 4096, "but not more than may");
    agents.check_same("many sums that wait");

    for (frame_sums &kind : agents.summed.agent.sources.late.of)
        kind.looked_up = kind.added = 0;
    for (int i = 0; i < 30000; i++)
        agents.take(some_frame(by, many));
    check(agents.summed.agent.sources.late.of[0].alone > 0, "frames that have no like are not looked up");
    agents.check_same("frames among 100000 hosts");

    for (frame_sums &kind : agents.summed.agent.sources.late.of)
        kind.alone = 0;
    for (int i = 0; i < 1000; i++) {
        const octets one = some_frame(by, few);
        for (int times = 0; times < 3; times++)
            agents.take(one);
    }
    check(waiting(agents.summed.agent) > 100, "frames are looked up again");
    agents.check_same("frames among 60 hosts");
}

/** Frames that find a table full of rows that stay are dropped, each once in a table. */
void test_dropped()
{
    chances by;
    two_agents agents(20);
    const auto feed = [&](uint32_t frames) {
        for (octets last; frames > 0; frames--) {
            if (last.empty() || by.one_in(3))
                last = some_frame(by, {.hosts = 40});
            agents.take(last);
        }
        standing_clock += 10;
    };
    feed(500);
    agents.both([](probe &agent) {
        keep_some(storage<hl_host_table>(agent).at(1).work->network.rows, 1);
        keep_some(storage<hl_host_table>(agent).at(1).work->application.rows, 1);
        keep_some(storage<hl_matrix_table>(agent).at(1).work->network.rows, 1);
        keep_some(storage<hl_matrix_table>(agent).at(1).work->application.rows, 1);
    });
    feed(3000);
    agents.check_same("dropped frames");
    check(
        storage<hl_host_table>(agents.summed.agent).at(1).work->network.dropped_frames > 100,
        "some are dropped");
}

} // namespace

void test_sums()
{
    standing_clock = 100000000;
    test_equality(-1, {.hosts = 40});
    test_equality(50, {.hosts = 30});
    test_equality(60, {.hosts = 90, .odd = false});
    test_equality(7, {.hosts = 12});
    test_bad_lengths();
    test_moving_address();
    test_many_sums();
    test_dropped();
    standing_clock = -1;
}
