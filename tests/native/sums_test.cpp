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
#include "agent/dsmon/stats.h"
#include "agent/rmon1/capture_ring.h"
#include "agent/rmon1/channels.h"
#include "agent/rmon1/hosts.h"
#include "agent/rmon1/matrix.h"
#include "agent/rmon2/addrmap.h"
#include "agent/rmon2/hlhost.h"
#include "agent/rmon2/hlmatrix.h"
#include "agent/rmon2/pdist.h"
#include "agent/smon_art/art.h"
#include "agent/smon_art/smon.h"
#include "tests/fuzz/agent.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <random>
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

using octets = std::vector<uint8_t>;

/* ---- frames ---------------------------------------------------------------------------- */

/** Numbers from 0 to below an end, the same in each run. */
struct chances {
    std::mt19937_64 random{20261};

    uint32_t below(uint32_t end) { return static_cast<uint32_t>(random() % end); }
    bool one_in(uint32_t number) { return below(number) == 0; }
};

void put(octets &to, uint64_t value, uint32_t bytes)
{
    for (uint32_t i = bytes; i-- > 0;)
        to.push_back(static_cast<uint8_t>(value >> 8 * i));
}

void put_mac(octets &to, uint32_t host)
{
    put(to, 0x020000000000 + host, mac_octets);
}

void put_ip4(octets &to, uint32_t host)
{
    put(to, 0x0a000000 + host, 4);
}

void put_ip6(octets &to, uint32_t host)
{
    put(to, 0x20010db8, 4);
    put(to, 0, 8);
    put(to, host, 4);
}

/** What frames differ in. */
struct traffic {
    uint32_t hosts;
    bool odd = true; // also frames of bad length, ARP, neighbour discovery, addresses that move
};

/** A transport header with its payload. */
octets some_transport(chances &by, uint32_t protocol)
{
    static constexpr uint32_t ports[] = {80, 443, 53, 25, 5060, 12345, 40000};
    octets made;
    const bool back = by.one_in(3);
    const uint32_t port = ports[by.below(std::size(ports))], own = 50000 + by.below(4);
    put(made, back ? port : own, 2);
    put(made, back ? own : port, 2);
    if (protocol == ip_udp) {
        put(made, 12, 2);
        put(made, 0, 2);
        put(made, by.below(4), 2); // of DNS the number and the flags
        put(made, back ? 0x8000 : 0, 2);
    } else {
        put(made, by.below(50), 4);
        put(made, by.below(50), 4);
        put(made, 0x5000 | (by.one_in(5) ? 0x02 : 0x18), 2);
        put(made, 0, 6);
        put(made, 0, by.below(3) * 4);
    }
    return made;
}

octets some_frame(chances &by, const traffic &of)
{
    octets made;
    const uint32_t from = by.below(of.hosts), to = by.below(of.hosts);
    if (of.odd && by.one_in(12))
        put(made, by.one_in(2) ? 0xffffffffffff : 0x01005e0000fb, mac_octets);
    else
        put_mac(made, to);
    put_mac(made, from);
    for (uint32_t tags = by.one_in(3) + by.one_in(9); tags > 0; tags--)
        put(made, 0x81000000 | by.below(8) << 13 | (100 + by.below(5)), 4);
    const uint32_t kind = by.below(of.odd ? 20 : 16);
    const uint32_t protocol = by.one_in(2) ? ip_tcp : ip_udp;
    const uint32_t speaker = of.odd && by.one_in(40) ? 7 : from; // an address that moves
    if (kind < 10) {
        put(made, ethertype_ip, 2);
        const octets carried = some_transport(by, protocol);
        put(made, 0x4500 | by.below(20) << 2, 2);
        put(made, 20 + carried.size(), 2);
        put(made, of.odd && by.one_in(20) ? 100 : 0, 4); // a later fragment
        put(made, 64 << 8 | protocol, 2);
        put(made, 0, 2);
        put_ip4(made, speaker);
        put_ip4(made, to);
        made.insert(made.end(), carried.begin(), carried.end());
    } else if (kind < 16) {
        put(made, ethertype_ip6, 2);
        const octets carried = some_transport(by, protocol);
        put(made, 0x60000000 | by.below(20) << 22, 4);
        put(made, carried.size(), 2);
        put(made, protocol << 8 | 64, 2);
        put_ip6(made, speaker);
        put_ip6(made, to);
        made.insert(made.end(), carried.begin(), carried.end());
    } else if (kind == 16) {
        put(made, ethertype_arp, 2);
        put(made, 0x000108000604, 6);
        put(made, 1 + by.below(2), 2);
        put_mac(made, from);
        put_ip4(made, speaker);
        put_mac(made, to);
        put_ip4(made, to);
    } else if (kind == 17) { // a neighbour advertisement
        put(made, ethertype_ip6, 2);
        put(made, 0x60000000, 4);
        put(made, 32, 2);
        put(made, ip_icmp6 << 8 | 255, 2);
        put_ip6(made, from);
        put_ip6(made, to);
        put(made, 0x88000000, 4);
        put(made, 0, 4);
        put_ip6(made, by.below(of.hosts));
        put(made, 0x0201, 2);
        put_mac(made, from);
    } else if (kind == 18) {
        put(made, 20, 2); // 802.3
        put(made, by.one_in(2) ? 0x424203 : 0xe0e003, 3);
    } else {
        put(made, 0x88cc, 2);
    }
    if (made.size() < 60 && !(of.odd && by.one_in(8)))
        made.resize(60);
    if (of.odd && by.one_in(10))
        made.resize(1515 + by.below(2)); // too long
    if (of.odd && by.one_in(50))
        made.resize(by.below(16)); // hardly captured
    return made;
}

/* ---- what the tables hold ------------------------------------------------------------------- */

void show(std::string &to, const void *bytes, std::size_t size)
{
    static constexpr char digits[] = "0123456789abcdef";
    for (std::size_t i = 0; i < size; i++) {
        const uint8_t byte = static_cast<const uint8_t *>(bytes)[i];
        to += digits[byte >> 4];
        to += digits[byte & 15];
    }
    to += ' ';
}

void show(std::string &to, std::initializer_list<uint64_t> numbers)
{
    for (const uint64_t number : numbers)
        to += std::to_string(number) + ' ';
    to += '\n';
}

void show_row(std::string &to, const host_counts &row)
{
    show(
        to, {row.serial, row.in_pkts, row.out_pkts, row.in_octets, row.out_octets, row.out_errors,
             row.out_broadcast_pkts, row.out_multicast_pkts});
}

void show_row(std::string &to, const matrix_counts &row)
{
    show(to, {row.pkts, row.octets, row.errors});
}

void show_row(std::string &to, const mapped_address &row)
{
    show(to, row.physical, sizeof row.physical);
    show(to, {row.changed});
}

void show_row(std::string &to, const hl_host &row)
{
    show(
        to, {row.in_pkts, row.out_pkts, row.in_octets, row.out_octets, row.out_mac_nonunicast_pkts,
             row.create_time, row.changed});
}

void show_row(std::string &to, const hl_pair &row)
{
    show(to, {row.pkts, row.octets, row.create_time, row.changed});
}

void show_row(std::string &to, const dsmon_counters &row)
{
    show(to, {row.pkts, row.octets, row.changed});
}

void show_row(std::string &to, const dsmon_host_counters &row)
{
    show(to, {row.in_pkts, row.in_octets, row.out_pkts, row.out_octets, row.changed});
}

void show_row(std::string &to, const exchange_counters &row)
{
    for (const uint32_t number : row.in_range)
        to += std::to_string(number) + ' ';
    show(
        to, {row.responses, row.retries, row.timeouts, row.sum, static_cast<uint64_t>(row.min_time),
             static_cast<uint64_t>(row.max_time), row.client_octets, row.server_octets});
}

template <class Key, class Row>
void show_table(std::string &to, const char *name, const learned_table<Key, Row> &table)
{
    std::vector<std::string> lines;
    for (const auto &entry : table.entries) {
        std::string &line = lines.emplace_back();
        show(line, &entry.key, sizeof entry.key);
        for (const uint64_t number : {entry.used, entry.first, uint64_t{entry.kept}})
            line += std::to_string(number) + ' ';
        show_row(line, entry.row);
    }
    std::ranges::sort(lines);
    to += std::string(name) + ":\n";
    show(to, {table.entries.size(), table.inserts, table.deletes, table.kept, table.version});
    for (const std::string &line : lines)
        to += line;
}

void show_learned(std::string &to, probe &agent)
{
    if (const auto &work = storage<host_table>(agent).at(1).work)
        show_table(to, "hosts", work->learned);
    if (const auto &work = storage<matrix_table>(agent).at(1).work)
        show_table(to, "matrix", work->learned);
    if (const auto &work = storage<hl_host_table>(agent).at(1).work) {
        show_table(to, "nlHost", work->network.rows);
        show_table(to, "alHost", work->application.rows);
        show(to, {work->network.dropped_frames, work->application.dropped_frames});
    }
    if (const auto &work = storage<hl_matrix_table>(agent).at(1).work) {
        show_table(to, "nlMatrix", work->network.rows);
        show_table(to, "alMatrix", work->application.rows);
        show(to, {work->network.dropped_frames, work->application.dropped_frames});
    }
    show_table(to, "dsmonPdist", storage<dsmon_pdist_table>(agent).at(1).counts->learned);
    show_table(to, "dsmonHost", storage<dsmon_host_table>(agent).at(1).counts->learned);
    show_table(to, "dsmonMatrix", storage<dsmon_matrix_table>(agent).at(1).counts->learned);
}

void show_others(std::string &to, probe &agent)
{
    show_table(to, "addressMap", storage<address_map>(agent).rows);
    show(to, {storage<address_watch_table>(agent).at(1).work->dropped_frames});
    to += "protocolDist:\n";
    for (const protocol_counter &counter : storage<distribution_table>(agent).at(1).work->counted)
        show(to, {counter.pkts, counter.octets});
    to += "dsmonStats:\n";
    const dsmon_stats_counts &stats = *storage<dsmon_stats_table>(agent).at(1).counts;
    for (std::size_t i = 0; i < stats.in.size(); i++)
        show(to, {stats.in[i].pkts, stats.in[i].octets, stats.out[i].pkts, stats.out[i].octets});
    to += "VLANs:\n";
    for (const vlan_counters &row : storage<vlan_table>(agent).at(1).work->seen)
        show(to, {row.pkts, row.octets, row.nucast_pkts, row.nucast_octets, row.create_time});
    to += "priorities:\n";
    const priority_counts &by_priority = *storage<priority_table>(agent).at(1).work;
    for (std::size_t i = 0; i < by_priority.pkts.size(); i++)
        show(to, {by_priority.pkts[i], by_priority.octets[i]});
    to += "channel:\n";
    show(to, {storage<channel_table>(agent).at(1).work->matches});
    for (const captured_packet &packet : storage<buffer_table>(agent).at(1).work->packets)
        show(
            to, {packet.id, packet.length, packet.stored, packet.status, static_cast<uint64_t>(packet.time)});
    show_table(to, "response times", storage<art_table>(agent).at(1).work->meter.exchanges);
    const ether_counters &total = agent.sources.rows.at(1).total;
    show(to, {total.pkts, total.octets, total.undersize_pkts, total.oversize_pkts});
}

/** Everything, as a read would show it now. */
std::string tables_of(probe &agent)
{
    catch_up_all(agent);
    std::string all;
    show_learned(all, agent);
    show_others(all, agent);
    return all;
}

/** The first lines that differ. */
std::string difference(const std::string &one, const std::string &other)
{
    const auto at = std::ranges::mismatch(one, other);
    const auto line = [](const std::string &text, std::string::const_iterator place) {
        const auto offset = static_cast<std::size_t>(place - text.begin());
        const std::size_t begin = text.rfind('\n', offset ? offset - 1 : 0) + 1;
        return text.substr(begin, text.find('\n', begin) - begin);
    };
    const std::size_t table = one.substr(0, static_cast<std::size_t>(at.in1 - one.begin())).rfind(":\n");
    const std::size_t name = one.rfind('\n', table) + 1;
    return one.substr(name, table - name) + ": " + line(one, at.in1) + " | " + line(other, at.in2);
}

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
