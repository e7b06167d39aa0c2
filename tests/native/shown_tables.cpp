// SPDX-License-Identifier: MIT
#include "tests/native/shown_tables.h"

#include "agent/capture/counting.h"
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

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace {

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

} // namespace

std::string tables_of(probe &agent)
{
    catch_up_all(agent);
    std::string all;
    show_learned(all, agent);
    show_others(all, agent);
    return all;
}

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
