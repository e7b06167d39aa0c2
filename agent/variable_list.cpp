#include "agent/variable_list.h"

#include "agent/rmon2/addrmap.h"
#include "agent/rmon1/alarms.h"
#include "agent/smon_art/art.h"
#include "agent/rmon1/capture_buffers.h"
#include "agent/rmon1/channels.h"
#include "agent/dsmon/hosts.h"
#include "agent/dsmon/matrix.h"
#include "agent/dsmon/pdist.h"
#include "agent/dsmon/stats.h"
#include "agent/rmon1/etherstats.h"
#include "agent/rmon1/events.h"
#include "agent/rmon1/history.h"
#include "agent/rmon2/hlhost.h"
#include "agent/rmon2/hlmatrix.h"
#include "agent/rmon1/hosts.h"
#include "agent/rmon1/hosttopn.h"
#include "agent/rmon1/interface_rows.h"
#include "agent/rmon1/matrix.h"
#include "agent/rmon2/pdir.h"
#include "agent/rmon2/pdist.h"
#include "agent/core/reply.h"
#include "agent/smon_art/smon.h"
#include "agent/rmon1/system_group.h"

#include "rmon/rpc/rmonrpc_xdr.h"

#include <algorithm>
#include <array>

namespace {

/* ---- instances -------------------------------------------------------------------------- */

/** The numbers of an instance, taken one after the other. */
struct instance_reader {
    variable_instance rest;
    bool good = true; // as far as it was taken
};

uint32_t take_number(instance_reader &from, uint32_t most)
{
    if (from.rest.empty() || from.rest[0] > most) {
        from.good = false;
        return 0;
    }
    const uint32_t number = from.rest[0];
    from.rest = from.rest.subspan(1);
    return number;
}

int32_t take_index(instance_reader &from)
{
    return static_cast<int32_t>(take_number(from, INT32_MAX));
}

uint32_t take_time(instance_reader &from)
{
    return take_number(from, UINT32_MAX);
}

/** Octets of an address: their number, then each. Addresses have fewer than most names have numbers. */
void take_octets(instance_reader &from, wire::byte_list &list)
{
    std::array<uint8_t, 20> octets;
    const uint32_t size = take_number(from, octets.size());
    for (uint32_t i = 0; i < size; i++)
        octets[i] = static_cast<uint8_t>(take_number(from, UINT8_MAX));
    set_bytes(list, std::span(octets).first(size));
}

int32_t take_octets(instance_reader &from, rmonrpc_dsmon_address_t &address)
{
    const uint32_t size = take_number(from, rmonrpc_dsmon_address_t::size);
    for (uint32_t i = 0; i < size; i++)
        address.value[i] = static_cast<uint8_t>(take_number(from, UINT8_MAX));
    return static_cast<int32_t>(size);
}

/* Each makes the key of a read of an instance, in the order of the MIB's index. */

rmonrpc_row_key2_t one_index(instance_reader &from)
{
    return {take_index(from), GET};
}

rmonrpc_row_key4_t two_indexes(instance_reader &from)
{
    const int32_t first = take_index(from);
    return {first, take_index(from), GET, 1};
}

rmonrpc_row_key3_t two_short_indexes(instance_reader &from)
{
    const int32_t first = take_index(from);
    return {first, take_index(from), GET};
}

rmonrpc_host_key_t host_index(instance_reader &from)
{
    rmonrpc_host_key_t key{};
    key.hostIndex = take_index(from);
    take_octets(from, key.hostAddress);
    key.getType = GET;
    return key;
}

/** The addresses of a pair, the one by which the view is ordered first. */
template <int32_t Direction, class Key> void take_pair(instance_reader &from, Key &key)
{
    take_octets(from, Direction == MATRIX_SD ? key.sourceAddress : key.destAddress);
    take_octets(from, Direction == MATRIX_SD ? key.destAddress : key.sourceAddress);
    key.direction = Direction;
}

template <int32_t Direction> rmonrpc_matrix_key_t matrix_index(instance_reader &from)
{
    rmonrpc_matrix_key_t key{};
    key.index = take_index(from);
    take_pair<Direction>(from, key);
    key.getType = GET;
    return key;
}

rmonrpc_hlhost_key_t nl_host_index(instance_reader &from)
{
    rmonrpc_hlhost_key_t key{};
    key.hlHostControlIndex = take_index(from);
    key.timeMark = take_time(from);
    key.protocolDirLocalIndex = take_index(from);
    take_octets(from, key.nlHostAddress);
    key.getType = GET;
    return key;
}

rmonrpc_hlhost_key_t al_host_index(instance_reader &from)
{
    rmonrpc_hlhost_key_t key = nl_host_index(from);
    key.protocolDirLocalIndex2 = take_index(from);
    key.applicationLayer = APPLICATION_LAYER;
    return key;
}

template <int32_t Direction> rmonrpc_hlmatrix_key_t nl_matrix_index(instance_reader &from)
{
    rmonrpc_hlmatrix_key_t key{};
    key.hlMatrixControlIndex = take_index(from);
    key.timeMark = take_time(from);
    key.protocolDirLocalIndex = take_index(from);
    take_pair<Direction>(from, key);
    key.getType = GET;
    return key;
}

template <int32_t Direction> rmonrpc_hlmatrix_key_t al_matrix_index(instance_reader &from)
{
    rmonrpc_hlmatrix_key_t key = nl_matrix_index<Direction>(from);
    key.protocolDirLocalIndex2 = take_index(from);
    key.applicationLayer = APPLICATION_LAYER;
    return key;
}

rmonrpc_dsmon_pdist_key_t dsmon_pdist_index(instance_reader &from)
{
    rmonrpc_dsmon_pdist_key_t key{};
    key.dsmonPdistCtlIndex = take_index(from);
    key.dsmonPdistTimeMark = take_time(from);
    key.dsmonAggGroupIndex = take_number(from, UINT32_MAX);
    key.protocolDirLocalIndex = take_index(from);
    key.getType = GET;
    return key;
}

rmonrpc_dsmon_host_key_t dsmon_host_index(instance_reader &from)
{
    rmonrpc_dsmon_host_key_t key{};
    key.dsmonHostCtlIndex = take_index(from);
    key.dsmonHostTimeMark = take_time(from);
    key.dsmonAggGroupIndex = take_number(from, UINT32_MAX);
    key.protocolDirLocalIndex = take_index(from);
    key.dsmonHostAddressLength = take_octets(from, key.dsmonHostAddress);
    key.getType = GET;
    return key;
}

template <int32_t Direction> rmonrpc_dsmon_matrix_key_t dsmon_matrix_index(instance_reader &from)
{
    rmonrpc_dsmon_matrix_key_t key{};
    const auto take_source = [&] {
        key.dsmonMatrixSourceAddressLength = take_octets(from, key.dsmonMatrixSourceAddress);
    };
    key.dsmonMatrixCtlIndex = take_index(from);
    key.dsmonMatrixTimeMark = take_time(from);
    key.dsmonAggGroupIndex = take_number(from, UINT32_MAX);
    key.dsmonMatrixNLIndex = take_index(from);
    if (Direction == MATRIX_SD)
        take_source();
    key.dsmonMatrixDestAddressLength = take_octets(from, key.dsmonMatrixDestAddress);
    if (Direction == MATRIX_DS)
        take_source();
    key.dsmonMatrixALIndex = take_index(from);
    key.getType = GET;
    return key;
}

rmonrpc_art_rpt_key_t art_report_index(instance_reader &from)
{
    rmonrpc_art_rpt_key_t key{};
    key.artControlIndex = take_index(from);
    key.protocolDirLocalIndex = take_index(from);
    take_octets(from, key.artServerAddress);
    take_octets(from, key.artClientAddress);
    key.getType = GET;
    return key;
}

rmonrpc_art_sum_key_t art_summary_index(instance_reader &from)
{
    rmonrpc_art_sum_key_t key{};
    key.artControlIndex = take_index(from);
    key.protocolDirLocalIndex = take_index(from);
    take_octets(from, key.artSummaryServerAddress);
    key.getType = GET;
    return key;
}

/* ---- columns ---------------------------------------------------------------------------- */

/** The row of a reply; null when it has none. */
template <class Row> const Row *row_of(const Row &reply)
{
    return reply.status == no_error ? &reply : nullptr;
}

template <class Row> const Row *row_of(const wire::rows<Row> &reply)
{
    return reply.length > 0 ? reply.value : nullptr;
}

/** A record's field as a number. An INTEGER is taken as its 32 bits, so that a negative one stays one in
 * them. */
template <class Number> uint64_t number_of(Number value)
{
    return std::make_unsigned_t<Number>(value);
}

/** The field's name, which most variables share with it. */
template <auto Field> inline constexpr const char *name_of = wire::member_name<Field>.data();

/** A column of a table: Get is the table's read, Index makes its key, Field is the record's field. */
template <auto Get, auto Index, auto Field>
constexpr known_variable column(const char *identifier, const char *name, bool counter)
{
    return {name, identifier, counter, [](probe &agent, variable_instance instance, uint64_t &value) {
                instance_reader from{instance};
                auto key = Index(from);
                bool there = false;
                if (from.good && from.rest.empty()) {
                    auto reply = Get(agent, key);
                    if (const auto *row = row_of(reply)) {
                        value = number_of(row->*Field);
                        there = true;
                    }
                    release(&reply);
                }
                release(&key);
                return there;
            }};
}

template <auto Get, auto Index, auto Field>
constexpr known_variable counter(const char *identifier, const char *name = name_of<Field>)
{
    return column<Get, Index, Field>(identifier, name, true);
}

template <auto Get, auto Index, auto Field>
constexpr known_variable gauge(const char *identifier, const char *name = name_of<Field>)
{
    return column<Get, Index, Field>(identifier, name, false);
}

/** Whether an instance is that of a variable with one only. */
bool is_scalar(variable_instance instance)
{
    return instance.size() == 1 && instance[0] == 0;
}

template <auto Get, auto Field, bool Counter> constexpr known_variable scalar(const char *identifier)
{
    return {
        name_of<Field>, identifier, Counter, [](probe &agent, variable_instance instance, uint64_t &value) {
            auto group = Get(agent);
            value = number_of(group.*Field);
            release(&group);
            return is_scalar(instance);
        }};
}

/** A number that is read as such. */
template <auto Get> constexpr known_variable plain_scalar(const char *identifier, const char *name)
{
    return {name, identifier, false, [](probe &agent, variable_instance instance, uint64_t &value) {
                value = number_of(Get(agent));
                return is_scalar(instance);
            }};
}

// clang-format off
constexpr known_variable variables[] = {
    // system
    scalar<system_get, &rmonrpc_system_t::sysUpTime, false>("1.3.6.1.2.1.1.3"),
    scalar<system_get, &rmonrpc_system_t::sysServices, false>("1.3.6.1.2.1.1.7"),

    // interfaces
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifIndex>("1.3.6.1.2.1.2.2.1.1"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifType>("1.3.6.1.2.1.2.2.1.3"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifMtu>("1.3.6.1.2.1.2.2.1.4"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifSpeed>("1.3.6.1.2.1.2.2.1.5"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifAdminStatus>("1.3.6.1.2.1.2.2.1.7"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOperStatus>("1.3.6.1.2.1.2.2.1.8"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifLastChange>("1.3.6.1.2.1.2.2.1.9"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInOctets>("1.3.6.1.2.1.2.2.1.10"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInUcastPkts>("1.3.6.1.2.1.2.2.1.11"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInNUcastPkts>("1.3.6.1.2.1.2.2.1.12"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInDiscards>("1.3.6.1.2.1.2.2.1.13"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInErrors>("1.3.6.1.2.1.2.2.1.14"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInUnknownProtos>("1.3.6.1.2.1.2.2.1.15"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutOctets>("1.3.6.1.2.1.2.2.1.16"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutUcastPkts>("1.3.6.1.2.1.2.2.1.17"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutNUcastPkts>("1.3.6.1.2.1.2.2.1.18"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutDiscards>("1.3.6.1.2.1.2.2.1.19"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutErrors>("1.3.6.1.2.1.2.2.1.20"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutQLen>("1.3.6.1.2.1.2.2.1.21"),

    // statistics, history
    gauge<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsIndex>("1.3.6.1.2.1.16.1.1.1.1"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsDropEvents>("1.3.6.1.2.1.16.1.1.1.3"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsOctets>("1.3.6.1.2.1.16.1.1.1.4"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts>("1.3.6.1.2.1.16.1.1.1.5"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsBroadcastPkts>("1.3.6.1.2.1.16.1.1.1.6"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsMulticastPkts>("1.3.6.1.2.1.16.1.1.1.7"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsCRCAlignErrors>("1.3.6.1.2.1.16.1.1.1.8"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsUndersizePkts>("1.3.6.1.2.1.16.1.1.1.9"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsOversizePkts>("1.3.6.1.2.1.16.1.1.1.10"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsFragments>("1.3.6.1.2.1.16.1.1.1.11"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsJabbers>("1.3.6.1.2.1.16.1.1.1.12"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsCollisions>("1.3.6.1.2.1.16.1.1.1.13"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts64Octets>("1.3.6.1.2.1.16.1.1.1.14"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts65to127Octets>("1.3.6.1.2.1.16.1.1.1.15"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts128to255Octets>("1.3.6.1.2.1.16.1.1.1.16"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts256to511Octets>("1.3.6.1.2.1.16.1.1.1.17"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts512to1023Octets>("1.3.6.1.2.1.16.1.1.1.18"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts1024to1518Octets>("1.3.6.1.2.1.16.1.1.1.19"),
    gauge<history_ctl_get, one_index, &rmonrpc_history_ctl_t::historyControlBucketsGranted>("1.3.6.1.2.1.16.2.1.1.4"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryIntervalStart>("1.3.6.1.2.1.16.2.2.1.3"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryDropEvents>("1.3.6.1.2.1.16.2.2.1.4"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryOctets>("1.3.6.1.2.1.16.2.2.1.5"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryPkts>("1.3.6.1.2.1.16.2.2.1.6"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryBroadcastPkts>("1.3.6.1.2.1.16.2.2.1.7"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryMulticastPkts>("1.3.6.1.2.1.16.2.2.1.8"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryCRCAlignErrors>("1.3.6.1.2.1.16.2.2.1.9"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryUndersizePkts>("1.3.6.1.2.1.16.2.2.1.10"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryOversizePkts>("1.3.6.1.2.1.16.2.2.1.11"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryFragments>("1.3.6.1.2.1.16.2.2.1.12"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryJabbers>("1.3.6.1.2.1.16.2.2.1.13"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryCollisions>("1.3.6.1.2.1.16.2.2.1.14"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryUtilization>("1.3.6.1.2.1.16.2.2.1.15"),

    // alarms, events
    gauge<alarm_get, one_index, &rmonrpc_alarm_t::alarmValue>("1.3.6.1.2.1.16.3.1.1.5"),
    gauge<event_get, one_index, &rmonrpc_event_t::eventLastTimeSent>("1.3.6.1.2.1.16.9.1.1.5"),
    gauge<log_get, two_short_indexes, &rmonrpc_log_t::logTime>("1.3.6.1.2.1.16.9.2.1.3"),

    // hosts
    gauge<host_ctl_get, one_index, &rmonrpc_host_ctl_t::hostControlTableSize>("1.3.6.1.2.1.16.4.1.1.3"),
    gauge<host_ctl_get, one_index, &rmonrpc_host_ctl_t::hostControlLastDeleteTime>("1.3.6.1.2.1.16.4.1.1.4"),
    gauge<host_get, host_index, &rmonrpc_host_t::hostCreationOrder>("1.3.6.1.2.1.16.4.2.1.2"),
    counter<host_get, host_index, &rmonrpc_host_t::hostInPkts>("1.3.6.1.2.1.16.4.2.1.4"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutPkts>("1.3.6.1.2.1.16.4.2.1.5"),
    counter<host_get, host_index, &rmonrpc_host_t::hostInOctets>("1.3.6.1.2.1.16.4.2.1.6"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutOctets>("1.3.6.1.2.1.16.4.2.1.7"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutErrors>("1.3.6.1.2.1.16.4.2.1.8"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutBroadcastPkts>("1.3.6.1.2.1.16.4.2.1.9"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutMulticastPkts>("1.3.6.1.2.1.16.4.2.1.10"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeInPkts>("1.3.6.1.2.1.16.4.3.1.4"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutPkts>("1.3.6.1.2.1.16.4.3.1.5"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeInOctets>("1.3.6.1.2.1.16.4.3.1.6"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutOctets>("1.3.6.1.2.1.16.4.3.1.7"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutErrors>("1.3.6.1.2.1.16.4.3.1.8"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutBroadcastPkts>("1.3.6.1.2.1.16.4.3.1.9"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutMulticastPkts>("1.3.6.1.2.1.16.4.3.1.10"),
    gauge<hosttopn_ctl_get, one_index, &rmonrpc_hosttopn_ctl_t::hostTopNTimeRemaining>("1.3.6.1.2.1.16.5.1.1.4"),
    gauge<hosttopn_ctl_get, one_index, &rmonrpc_hosttopn_ctl_t::hostTopNDuration>("1.3.6.1.2.1.16.5.1.1.5"),
    gauge<hosttopn_ctl_get, one_index, &rmonrpc_hosttopn_ctl_t::hostTopNGrantedSize>("1.3.6.1.2.1.16.5.1.1.7"),
    gauge<hosttopn_ctl_get, one_index, &rmonrpc_hosttopn_ctl_t::hostTopNStartTime>("1.3.6.1.2.1.16.5.1.1.8"),
    gauge<hosttopn_get, two_indexes, &rmonrpc_hosttopn_t::hostTopNRate>("1.3.6.1.2.1.16.5.2.1.4"),

    // matrix
    gauge<matrix_ctl_get, one_index, &rmonrpc_matrix_ctl_t::matrixControlTableSize>("1.3.6.1.2.1.16.6.1.1.3"),
    gauge<matrix_ctl_get, one_index, &rmonrpc_matrix_ctl_t::matrixControlLastDeleteTime>("1.3.6.1.2.1.16.6.1.1.4"),
    counter<matrix_get, matrix_index<MATRIX_SD>, &rmonrpc_matrix_t::pkts>("1.3.6.1.2.1.16.6.2.1.4", "matrixSDPkts"),
    counter<matrix_get, matrix_index<MATRIX_SD>, &rmonrpc_matrix_t::octets>("1.3.6.1.2.1.16.6.2.1.5", "matrixSDOctets"),
    counter<matrix_get, matrix_index<MATRIX_SD>, &rmonrpc_matrix_t::errors>("1.3.6.1.2.1.16.6.2.1.6", "matrixSDErrors"),
    counter<matrix_get, matrix_index<MATRIX_DS>, &rmonrpc_matrix_t::pkts>("1.3.6.1.2.1.16.6.3.1.4", "matrixDSPkts"),
    counter<matrix_get, matrix_index<MATRIX_DS>, &rmonrpc_matrix_t::octets>("1.3.6.1.2.1.16.6.3.1.5", "matrixDSOctets"),
    counter<matrix_get, matrix_index<MATRIX_DS>, &rmonrpc_matrix_t::errors>("1.3.6.1.2.1.16.6.3.1.6", "matrixDSErrors"),

    // channels, capture
    counter<channel_get, one_index, &rmonrpc_channel_t::channelMatches>("1.3.6.1.2.1.16.7.2.1.9"),
    gauge<buffer_ctl_get, one_index, &rmonrpc_buffer_ctl_t::bufferControlFullStatus>("1.3.6.1.2.1.16.8.1.1.3"),
    gauge<buffer_ctl_get, one_index, &rmonrpc_buffer_ctl_t::bufferControlMaxOctetsGranted>("1.3.6.1.2.1.16.8.1.1.9"),
    gauge<buffer_ctl_get, one_index, &rmonrpc_buffer_ctl_t::bufferControlCapturedPackets>("1.3.6.1.2.1.16.8.1.1.10"),
    gauge<buffer_ctl_get, one_index, &rmonrpc_buffer_ctl_t::bufferControlTurnOnTime>("1.3.6.1.2.1.16.8.1.1.11"),

    // protocol directory, protocol distribution, address map
    plain_scalar<pdir_lastchange_get>("1.3.6.1.2.1.16.11.1", "protocolDirLastChange"),
    counter<pdist_ctl_get, one_index, &rmonrpc_pdist_ctl_t::protocolDistControlDroppedFrames>("1.3.6.1.2.1.16.12.1.1.3"),
    gauge<pdist_ctl_get, one_index, &rmonrpc_pdist_ctl_t::protocolDistControlCreateTime>("1.3.6.1.2.1.16.12.1.1.4"),
    counter<pdist_stats_get, two_indexes, &rmonrpc_pdist_stats_t::protocolDistStatsPkts>("1.3.6.1.2.1.16.12.2.1.1"),
    counter<pdist_stats_get, two_indexes, &rmonrpc_pdist_stats_t::protocolDistStatsOctets>("1.3.6.1.2.1.16.12.2.1.2"),
    scalar<addrmap_scalars_get, &rmonrpc_addrmap_scalars_t::addressMapInserts, true>("1.3.6.1.2.1.16.13.1"),
    scalar<addrmap_scalars_get, &rmonrpc_addrmap_scalars_t::addressMapDeletes, true>("1.3.6.1.2.1.16.13.2"),
    scalar<addrmap_scalars_get, &rmonrpc_addrmap_scalars_t::addressMapMaxDesiredEntries, false>("1.3.6.1.2.1.16.13.3"),
    counter<addrmap_ctl_get, one_index, &rmonrpc_addrmap_ctl_t::addressMapControlDroppedFrames>("1.3.6.1.2.1.16.13.4.1.3"),

    // higher-layer hosts
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlNlDroppedFrames>("1.3.6.1.2.1.16.14.1.1.3"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlNlInserts>("1.3.6.1.2.1.16.14.1.1.4"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlNlDeletes>("1.3.6.1.2.1.16.14.1.1.5"),
    gauge<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlNlMaxDesiredEntries>("1.3.6.1.2.1.16.14.1.1.6"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlAlDroppedFrames>("1.3.6.1.2.1.16.14.1.1.7"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlAlInserts>("1.3.6.1.2.1.16.14.1.1.8"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlAlDeletes>("1.3.6.1.2.1.16.14.1.1.9"),
    gauge<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlAlMaxDesiredEntries>("1.3.6.1.2.1.16.14.1.1.10"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::inPkts>("1.3.6.1.2.1.16.14.2.1.3", "nlHostInPkts"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::outPkts>("1.3.6.1.2.1.16.14.2.1.4", "nlHostOutPkts"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::inOctets>("1.3.6.1.2.1.16.14.2.1.5", "nlHostInOctets"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::outOctets>("1.3.6.1.2.1.16.14.2.1.6", "nlHostOutOctets"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::outMacNonUnicastPkts>("1.3.6.1.2.1.16.14.2.1.7", "nlHostOutMacNonUnicastPkts"),
    gauge<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::createTime>("1.3.6.1.2.1.16.14.2.1.8", "nlHostCreateTime"),
    counter<hlhost_get, al_host_index, &rmonrpc_hlhost_t::inPkts>("1.3.6.1.2.1.16.16.1.1.2", "alHostInPkts"),
    counter<hlhost_get, al_host_index, &rmonrpc_hlhost_t::outPkts>("1.3.6.1.2.1.16.16.1.1.3", "alHostOutPkts"),
    counter<hlhost_get, al_host_index, &rmonrpc_hlhost_t::inOctets>("1.3.6.1.2.1.16.16.1.1.4", "alHostInOctets"),
    counter<hlhost_get, al_host_index, &rmonrpc_hlhost_t::outOctets>("1.3.6.1.2.1.16.16.1.1.5", "alHostOutOctets"),
    gauge<hlhost_get, al_host_index, &rmonrpc_hlhost_t::createTime>("1.3.6.1.2.1.16.16.1.1.6", "alHostCreateTime"),

    // higher-layer matrix
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlNlDroppedFrames>("1.3.6.1.2.1.16.15.1.1.3"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlNlInserts>("1.3.6.1.2.1.16.15.1.1.4"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlNlDeletes>("1.3.6.1.2.1.16.15.1.1.5"),
    gauge<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlNlMaxDesiredEntries>("1.3.6.1.2.1.16.15.1.1.6"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlAlDroppedFrames>("1.3.6.1.2.1.16.15.1.1.7"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlAlInserts>("1.3.6.1.2.1.16.15.1.1.8"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlAlDeletes>("1.3.6.1.2.1.16.15.1.1.9"),
    gauge<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlAlMaxDesiredEntries>("1.3.6.1.2.1.16.15.1.1.10"),
    counter<hlmatrix_get, nl_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::pkts>("1.3.6.1.2.1.16.15.2.1.4", "nlMatrixSDPkts"),
    counter<hlmatrix_get, nl_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::octets>("1.3.6.1.2.1.16.15.2.1.5", "nlMatrixSDOctets"),
    gauge<hlmatrix_get, nl_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::createTime>("1.3.6.1.2.1.16.15.2.1.6", "nlMatrixSDCreateTime"),
    counter<hlmatrix_get, nl_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::pkts>("1.3.6.1.2.1.16.15.3.1.4", "nlMatrixDSPkts"),
    counter<hlmatrix_get, nl_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::octets>("1.3.6.1.2.1.16.15.3.1.5", "nlMatrixDSOctets"),
    gauge<hlmatrix_get, nl_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::createTime>("1.3.6.1.2.1.16.15.3.1.6", "nlMatrixDSCreateTime"),
    counter<hlmatrix_get, al_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::pkts>("1.3.6.1.2.1.16.17.1.1.2", "alMatrixSDPkts"),
    counter<hlmatrix_get, al_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::octets>("1.3.6.1.2.1.16.17.1.1.3", "alMatrixSDOctets"),
    gauge<hlmatrix_get, al_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::createTime>("1.3.6.1.2.1.16.17.1.1.4", "alMatrixSDCreateTime"),
    counter<hlmatrix_get, al_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::pkts>("1.3.6.1.2.1.16.17.2.1.2", "alMatrixDSPkts"),
    counter<hlmatrix_get, al_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::octets>("1.3.6.1.2.1.16.17.2.1.3", "alMatrixDSOctets"),
    gauge<hlmatrix_get, al_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::createTime>("1.3.6.1.2.1.16.17.2.1.4", "alMatrixDSCreateTime"),

    // VLANs and priorities
    counter<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsTotalPkts>("1.3.6.1.2.1.16.22.1.2.2.1.2"),
    counter<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsTotalOctets>("1.3.6.1.2.1.16.22.1.2.2.1.5"),
    counter<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsNUcastPkts>("1.3.6.1.2.1.16.22.1.2.2.1.8"),
    counter<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsNUcastOctets>("1.3.6.1.2.1.16.22.1.2.2.1.11"),
    gauge<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsCreateTime>("1.3.6.1.2.1.16.22.1.2.2.1.14"),
    counter<smon_prio_get, two_short_indexes, &rmonrpc_smon_prio_t::smonPrioStatsPkts>("1.3.6.1.2.1.16.22.1.2.4.1.2"),
    counter<smon_prio_get, two_short_indexes, &rmonrpc_smon_prio_t::smonPrioStatsOctets>("1.3.6.1.2.1.16.22.1.2.4.1.5"),
    gauge<smon_vlan_ctl_get, one_index, &rmonrpc_smon_vlan_ctl_t::smonVlanStatsControlCreateTime>("1.3.6.1.2.1.16.22.1.2.1.1.3"),
    gauge<smon_prio_ctl_get, one_index, &rmonrpc_smon_prio_ctl_t::smonPrioStatsControlCreateTime>("1.3.6.1.2.1.16.22.1.2.3.1.3"),

    // differentiated services
    counter<dsmon_stats_ctl_get, one_index, &rmonrpc_dsmon_stats_ctl_t::dsmonStatsControlDroppedFrames>("1.3.6.1.2.1.16.26.1.2.1.1.4"),
    counter<dsmon_stats_get, two_short_indexes, &rmonrpc_dsmon_stats_t::dsmonStatsInHCPkts>("1.3.6.1.2.1.16.26.1.2.2.1.5"),
    counter<dsmon_stats_get, two_short_indexes, &rmonrpc_dsmon_stats_t::dsmonStatsInHCOctets>("1.3.6.1.2.1.16.26.1.2.2.1.6"),
    counter<dsmon_stats_get, two_short_indexes, &rmonrpc_dsmon_stats_t::dsmonStatsOutHCPkts>("1.3.6.1.2.1.16.26.1.2.2.1.11"),
    counter<dsmon_stats_get, two_short_indexes, &rmonrpc_dsmon_stats_t::dsmonStatsOutHCOctets>("1.3.6.1.2.1.16.26.1.2.2.1.12"),
    counter<dsmon_pdistctl_get, one_index, &rmonrpc_dsmon_pdctl_t::dsmonPdistDroppedFrames>("1.3.6.1.2.1.16.26.1.3.1.1.5", "dsmonPdistCtlDroppedFrames"),
    counter<dsmon_pdistctl_get, one_index, &rmonrpc_dsmon_pdctl_t::dsmonPdistCtlInserts>("1.3.6.1.2.1.16.26.1.3.1.1.6"),
    counter<dsmon_pdistctl_get, one_index, &rmonrpc_dsmon_pdctl_t::dsmonPdistCtlDeletes>("1.3.6.1.2.1.16.26.1.3.1.1.7"),
    counter<dsmon_hostctl_get, one_index, &rmonrpc_dsmon_hostctl_t::dsmonHostDroppedFrames>("1.3.6.1.2.1.16.26.1.4.1.1.7", "dsmonHostCtlDroppedFrames"),
    counter<dsmon_hostctl_get, one_index, &rmonrpc_dsmon_hostctl_t::dsmonHostCtlInserts>("1.3.6.1.2.1.16.26.1.4.1.1.8"),
    counter<dsmon_hostctl_get, one_index, &rmonrpc_dsmon_hostctl_t::dsmonHostCtlDeletes>("1.3.6.1.2.1.16.26.1.4.1.1.9"),
    counter<dsmon_matrixctl_get, one_index, &rmonrpc_dsmon_matrixctl_t::dsmonMatrixDroppedFrames>("1.3.6.1.2.1.16.26.1.6.1.1.5", "dsmonMatrixCtlDroppedFrames"),
    counter<dsmon_matrixctl_get, one_index, &rmonrpc_dsmon_matrixctl_t::dsmonMatrixCtlInserts>("1.3.6.1.2.1.16.26.1.6.1.1.6"),
    counter<dsmon_matrixctl_get, one_index, &rmonrpc_dsmon_matrixctl_t::dsmonMatrixCtlDeletes>("1.3.6.1.2.1.16.26.1.6.1.1.7"),
    counter<dsmon_pdstats_get, dsmon_pdist_index, &rmonrpc_dsmon_pdstats_t::dsmonPdistStatsHCPkts>("1.3.6.1.2.1.16.26.1.3.2.1.6"),
    counter<dsmon_pdstats_get, dsmon_pdist_index, &rmonrpc_dsmon_pdstats_t::dsmonPdistStatsHCOctets>("1.3.6.1.2.1.16.26.1.3.2.1.7"),
    counter<dsmon_hoststats_get, dsmon_host_index, &rmonrpc_dsmon_hoststats_t::dsmonHostInHCPkts>("1.3.6.1.2.1.16.26.1.4.2.1.7"),
    counter<dsmon_hoststats_get, dsmon_host_index, &rmonrpc_dsmon_hoststats_t::dsmonHostInHCOctets>("1.3.6.1.2.1.16.26.1.4.2.1.8"),
    counter<dsmon_hoststats_get, dsmon_host_index, &rmonrpc_dsmon_hoststats_t::dsmonHostOutHCPkts>("1.3.6.1.2.1.16.26.1.4.2.1.13"),
    counter<dsmon_hoststats_get, dsmon_host_index, &rmonrpc_dsmon_hoststats_t::dsmonHostOutHCOctets>("1.3.6.1.2.1.16.26.1.4.2.1.14"),
    counter<dsmon_matrixsdstats_get, dsmon_matrix_index<MATRIX_SD>, &rmonrpc_dsmon_matrixstats_t::hcPkts>("1.3.6.1.2.1.16.26.1.6.2.1.8", "dsmonMatrixSDHCPkts"),
    counter<dsmon_matrixsdstats_get, dsmon_matrix_index<MATRIX_SD>, &rmonrpc_dsmon_matrixstats_t::hcOctets>("1.3.6.1.2.1.16.26.1.6.2.1.11", "dsmonMatrixSDHCOctets"),
    counter<dsmon_matrixdsstats_get, dsmon_matrix_index<MATRIX_DS>, &rmonrpc_dsmon_matrixstats_t::hcPkts>("1.3.6.1.2.1.16.26.1.6.3.1.3", "dsmonMatrixDSHCPkts"),
    counter<dsmon_matrixdsstats_get, dsmon_matrix_index<MATRIX_DS>, &rmonrpc_dsmon_matrixstats_t::hcOctets>("1.3.6.1.2.1.16.26.1.6.3.1.6", "dsmonMatrixDSHCOctets"),

    // response times, which have no MIB
    gauge<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlTimeRemaining>(nullptr),
    gauge<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlDuration>(nullptr),
    gauge<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlRptStartTime>(nullptr),
    gauge<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlGrantedSize>(nullptr),
    counter<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlGeneratedRpts>(nullptr),
    gauge<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artAvgRspTime>(nullptr),
    gauge<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artMinRspTime>(nullptr),
    gauge<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artMaxRspTime>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artTotalResponses>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps1>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps2>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps3>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps4>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps5>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps6>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps7>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artClientOctets>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artServerOctets>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRetries>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artTimeouts>(nullptr),
    gauge<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryClients>(nullptr),
    gauge<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryAvgRspTime>(nullptr),
    gauge<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryMinRspTime>(nullptr),
    gauge<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryMaxRspTime>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryTotalResponses>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps1>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps2>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps3>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps4>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps5>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps6>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps7>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryClientOctets>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryServerOctets>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRetries>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryTimeouts>(nullptr),
};
// clang-format on

} // namespace

std::span<const known_variable> known_variables()
{
    return variables;
}
