/* What survives a restart, one line each, in the order in which it is taken back. */

#include "agent/rmon2/pdir.h"
#include "agent/capture/probe.h"
#include "agent/core/state.h"

namespace {

constexpr state_part parts[] = {
    keep<save_system_texts, load_system_texts>("system"),
    keep_rows<
        &probe::etherstats,
        etherstats_describe,
        etherstats_set,
        &rmonrpc_etherstats_t::etherStatsStatus>("etherStats"),
    keep_rows<
        &probe::history,
        history_ctl_describe,
        history_ctl_set,
        &rmonrpc_history_ctl_t::historyControlStatus>("history"),
    keep_rows<&probe::hosts, host_ctl_describe, host_ctl_set, &rmonrpc_host_ctl_t::hostControlStatus>("host"),
    keep_rows<
        &probe::hosttopn,
        hosttopn_ctl_describe,
        hosttopn_ctl_set,
        &rmonrpc_hosttopn_ctl_t::hostTopNStatus>("hostTopN"),
    keep_rows<
        &probe::matrix,
        matrix_ctl_describe,
        matrix_ctl_set,
        &rmonrpc_matrix_ctl_t::matrixControlStatus>("matrix"),
    keep_rows<&probe::events, event_describe, event_set, &rmonrpc_event_t::eventStatus>("event"),
    keep_rows<&probe::channels, channel_describe, channel_set, &rmonrpc_channel_t::channelStatus>("channel"),
    keep_rows<&probe::filters, filter_describe, filter_set, &rmonrpc_filter_t::filterStatus>("filter"),
    keep_rows<
        &probe::buffers,
        buffer_ctl_describe,
        buffer_ctl_set,
        &rmonrpc_buffer_ctl_t::bufferControlStatus>("buffer"),
    keep_rows<&probe::alarms, alarm_describe, alarm_set, &rmonrpc_alarm_t::alarmStatus>("alarm"),
    keep<save_addresses, load_addresses>("addresses"),
    keep<save_host_name, load_host_name>("hostName"),
    keep<save_resolvers, load_resolvers>("resolvers"),
    keep_rows<&probe::trapdests, trapdest_describe, trapdest_set, &rmonrpc_snmp_trapdest_t::trapDestStatus>(
        "trapDest"),
    keep<save_communities, load_community>("communities"),
    keep<save_protocols, load_protocol>("protocols"),
    keep<save_address_map, load_address_map>("addressMap"),
    keep_rows<
        &probe::address_watches,
        addrmap_describe,
        addrmap_ctl_set,
        &rmonrpc_addrmap_ctl_t::addressMapControlStatus>("addressMapControl"),
    keep_rows<
        &probe::distributions,
        pdist_describe,
        pdist_ctl_set,
        &rmonrpc_pdist_ctl_t::protocolDistControlStatus>("protocolDist"),
    keep_rows<&probe::hl_hosts, hlhost_describe, hlhost_ctl_set, &rmonrpc_hlhost_ctl_t::hlHostControlStatus>(
        "hlHost"),
    keep_rows<
        &probe::hl_matrices,
        hlmatrix_describe,
        hlmatrix_ctl_set,
        &rmonrpc_hlmatrix_ctl_t::hlMatrixControlStatus>("hlMatrix"),
    keep<save_profiles, load_profile>("dsmonAggControl"),
    keep<save_groups, load_group>("dsmonAggGroup"),
    keep<save_dscp_maps, load_dscp>("dsmonAggProfile"),
    keep_rows<
        &probe::dsmon_stats,
        describe_dsmon_stats_row,
        dsmon_stats_ctl_set,
        &rmonrpc_dsmon_stats_ctl_t::dsmonStatsControlStatus>("dsmonStatsControl"),
    keep_rows<
        &probe::dsmon_pdist,
        describe_dsmon_pdist_row,
        dsmon_pdistctl_set,
        &rmonrpc_dsmon_pdctl_t::dsmonPdistCtlStatus>("dsmonPdistCtl"),
    keep_rows<
        &probe::dsmon_hosts,
        describe_dsmon_host_row,
        dsmon_hostctl_set,
        &rmonrpc_dsmon_hostctl_t::dsmonHostCtlStatus>("dsmonHostCtl"),
    keep_rows<
        &probe::dsmon_matrix,
        describe_dsmon_matrix_row,
        dsmon_matrixctl_set,
        &rmonrpc_dsmon_matrixctl_t::dsmonMatrixCtlStatus>("dsmonMatrixCtl"),
    keep<save_lock, load_lock>("dsmonAggControlLocked"),
    keep_rows<
        &probe::vlan_stats,
        describe_vlan_row,
        smon_vlan_ctl_set,
        &rmonrpc_smon_vlan_ctl_t::smonVlanStatsControlStatus>("smonVlanStatsControl"),
    keep_rows<
        &probe::priority_stats,
        describe_priority_row,
        smon_prio_ctl_set,
        &rmonrpc_smon_prio_ctl_t::smonPrioStatsControlStatus>("smonPrioStatsControl"),
    keep_rows<&probe::art, describe_art_row, art_ctl_set, &rmonrpc_art_ctl_t::artControlStatus>("artControl"),
    keep<save_nde_devices, nde_device_set>("ndeDevice"),
    keep<save_nde_datasrcs, load_nde_datasrc>("ndeDatasrc"),
    keep<save_nde_paths, nde_flow_path_set>("ndeFlowPath"),
    keep<save_learning, load_learning>("ndeLearning"),
    keep<save_sccp_settings, load_sccp_settings>("sccp"),
    keep<save_h323_settings, load_h323_settings>("h323"),
    keep<save_mgcp_settings, load_mgcp_settings>("mgcp"),
};

} // namespace

std::span<const state_part> state_parts()
{
    return parts;
}
