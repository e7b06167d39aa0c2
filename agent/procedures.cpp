#include "agent/rpc/procedures.h"

#include "agent/admin/administration.h"
#include "agent/rmon1/alarms.h"
#include "agent/smon_art/art.h"
#include "agent/rmon1/capture_buffers.h"
#include "agent/rmon1/capture_save.h"
#include "agent/rmon1/channels.h"
#include "agent/dsmon/aggregation.h"
#include "agent/dsmon/hosts.h"
#include "agent/dsmon/matrix.h"
#include "agent/dsmon/pdist.h"
#include "agent/dsmon/stats.h"
#include "agent/rmon1/etherstats.h"
#include "agent/rmon1/events.h"
#include "agent/rmon1/filters.h"
#include "agent/rmon1/history.h"
#include "agent/rmon1/hosts.h"
#include "agent/rmon1/hosttopn.h"
#include "agent/rmon1/interface_rows.h"
#include "agent/rmon1/matrix.h"
#include "agent/rmon2/pdir.h"
#include "agent/nde/nde.h"
#include "agent/nde/netflow.h"
#include "agent/capture/probe.h"
#include "agent/smon_art/smon.h"
#include "agent/admin/snmp_settings.h"
#include "agent/rmon1/system_group.h"
#include "agent/voice/rows.h"

#include <algorithm>
#include <iterator>

namespace {

/** Does nothing, and so tells that the agent is there. */
int32_t test(probe &)
{
    return 0;
}

constexpr auto sccp = &voice_monitors::sccp;
constexpr auto h323 = &voice_monitors::h323;
constexpr auto mgcp = &voice_monitors::mgcp;

constexpr served_procedure procedures[] = {
    serve<test>(rmonrpc_test_1),
    serve<system_get>(system_get_1),
    serve<system_set>(system_set_1),
    serve<ifentry_get>(ifentry_get_1),
    serve<etherstats_get>(etherstats_get_1),
    serve<etherstats_set>(etherstats_set_1),
    serve<history_ctl_get>(history_ctl_get_1),
    serve<history_ctl_set>(history_ctl_set_1),
    serve<etherhistory_get>(etherhistory_get_1),
    serve<host_ctl_get>(host_ctl_get_1),
    serve<host_ctl_set>(host_ctl_set_1),
    serve<host_get>(host_get_1),
    serve<hosttime_get>(hosttime_get_1),
    serve<hosttopn_ctl_get>(hosttopn_ctl_get_1),
    serve<hosttopn_ctl_set>(hosttopn_ctl_set_1),
    serve<hosttopn_get>(hosttopn_get_1),
    serve<matrix_ctl_get>(matrix_ctl_get_1),
    serve<matrix_ctl_set>(matrix_ctl_set_1),
    serve<matrix_get>(matrix_get_1),
    serve<pdir_get>(pdir_get_1),
    serve<pdir_byidx_get>(pdir_byidx_get_1),
    serve<pdir_getnext_modified>(pdir_getnext_modified_1),
    serve<pdir_set>(pdir_set_1),
    serve<pdir_lastchange_get>(pdir_lastchange_get_1),
    serve<pdist_ctl_get>(pdist_ctl_get_1),
    serve<pdist_ctl_set>(pdist_ctl_set_1),
    serve<pdist_stats_get>(pdist_stats_get_1),
    serve<addrmap_scalars_get>(addrmap_scalars_get_1),
    serve<addrmap_scalars_set>(addrmap_scalars_set_1),
    serve<addrmap_ctl_get>(addrmap_ctl_get_1),
    serve<addrmap_ctl_set>(addrmap_ctl_set_1),
    serve<addrmap_entry_get>(addrmap_entry_get_1),
    serve<hlhost_ctl_get>(hlhost_ctl_get_1),
    serve<hlhost_ctl_set>(hlhost_ctl_set_1),
    serve<hlhost_get>(hlhost_get_1),
    serve<hlmatrix_ctl_get>(hlmatrix_ctl_get_1),
    serve<hlmatrix_ctl_set>(hlmatrix_ctl_set_1),
    serve<hlmatrix_get>(hlmatrix_get_1),
    serve<alarm_get>(alarm_get_1),
    serve<alarm_set>(alarm_set_1),
    serve<event_get>(event_get_1),
    serve<event_set>(event_set_1),
    serve<log_get>(log_get_1),
    serve<filter_get>(filter_get_1),
    serve<filter_set>(filter_set_1),
    serve<channel_get>(channel_get_1),
    serve<channel_set>(channel_set_1),
    serve<buffer_ctl_get>(buffer_ctl_get_1),
    serve<buffer_ctl_set>(buffer_ctl_set_1),
    serve<capture_buf_get>(capture_buf_get_1),
    serve<capture_save_file>(capture_save_file_1),
    serve<mibvar_get>(mibvar_get_1),
    serve<sys_ipconf_get>(sys_ipconf_get_1),
    serve<sys_ipconf_set>(sys_ipconf_set_1),
    serve<sys_hostname_get>(sys_hostname_get_1),
    serve<sys_hostname_set>(sys_hostname_set_1),
    serve<sys_resolvers_get>(sys_resolvers_get_1),
    serve<sys_resolvers_set>(sys_resolvers_set_1),
    serve<trapdest_get>(trapdest_get_1),
    serve<trapdest_set>(trapdest_set_1),
    serve<community_get>(community_get_1),
    serve<community_set>(community_set_1),
    serve<dsmon_stats_ctl_get>(dsmon_stats_ctl_get_1),
    serve<dsmon_aggctl_get>(dsmon_aggctl_get_1),
    serve<dsmon_stats_get>(dsmon_stats_get_1),
    serve<dsmon_agggrp_get>(dsmon_agggrp_get_1),
    serve<smon_vlan_ctl_get>(smon_vlan_ctl_get_1),
    serve<smon_vlan_ctl_set>(smon_vlan_ctl_set_1),
    serve<smon_vlan_get>(smon_vlan_get_1),
    serve<smon_prio_ctl_get>(smon_prio_ctl_get_1),
    serve<smon_prio_ctl_set>(smon_prio_ctl_set_1),
    serve<smon_prio_get>(smon_prio_get_1),
    serve<voice_get<sccp, &sccp_monitor::calls, rmonrpc_sccp_call_row_t>>(call_rec_get_1),
    serve<voice_get<sccp, &sccp_monitor::phones, rmonrpc_sccp_phone_row_t>>(phone_rec_get_1),
    serve<voice_get<sccp, &sccp_monitor::top_jitter, rmonrpc_sccp_top_row_t>>(top_jitter_rec_get_1),
    serve<voice_get<sccp, &sccp_monitor::top_lost, rmonrpc_sccp_top_row_t>>(top_pkt_lost_rec_get_1),
    serve<voice_get<sccp, &sccp_monitor::top_latency, rmonrpc_sccp_top_row_t>>(top_latency_rec_get_1),
    serve<get_sccp_voice_coll_params>(get_sccp_voice_coll_params_1),
    serve<set_sccp_voice_coll_table_sizes>(set_sccp_voice_coll_table_sizes_1),
    serve<voice_switch<sccp, &voice_config_params_t::enable, 1>>(enable_sccp_voice_coll_1),
    serve<voice_switch<sccp, &voice_config_params_t::enable, 0>>(disable_sccp_voice_coll_1),
    serve<get_sccp_aggregate>(get_sccp_aggregate_1),
    serve<set_sccp_voice_coll_thresholds>(set_sccp_voice_coll_thresholds_1),
    serve<voice_switch<sccp, &voice_config_params_t::jitter_alarm_enable, 1>>(
        enable_sccp_voice_coll_jitter_alarm_1),
    serve<voice_switch<sccp, &voice_config_params_t::jitter_alarm_enable, 0>>(
        disable_sccp_voice_coll_jitter_alarm_1),
    serve<voice_switch<sccp, &voice_config_params_t::pkt_lost_alarm_enable, 1>>(
        enable_sccp_voice_coll_pkt_lost_alarm_1),
    serve<voice_switch<sccp, &voice_config_params_t::pkt_lost_alarm_enable, 0>>(
        disable_sccp_voice_coll_pkt_lost_alarm_1),
    serve<voice_switch<sccp, &voice_config_params_t::latency_alarm_enable, 1>>(
        enable_sccp_voice_coll_latency_alarm_1),
    serve<voice_switch<sccp, &voice_config_params_t::latency_alarm_enable, 0>>(
        disable_sccp_voice_coll_latency_alarm_1),
    serve<art_ctl_get>(art_ctl_get_1),
    serve<art_ctl_set>(art_ctl_set_1),
    serve<art_rpt_get>(art_rpt_get_1),
    serve<art_sum_get>(art_sum_get_1),
    serve<dsmon_aggprofile_get>(dsmon_aggprofile_get_1),
    serve<dsmon_aggctl_set>(dsmon_aggctl_set_1),
    serve<dsmon_agggrp_set>(dsmon_agggrp_set_1),
    serve<dsmon_aggprofile_set>(dsmon_aggprofile_set_1),
    serve<dsmon_aggctl_locked>(dsmon_aggctl_locked_1),
    serve<dsmon_aggctl_set_lock>(dsmon_aggctl_set_lock_1),
    serve<dsmon_stats_ctl_set>(dsmon_stats_ctl_set_1),
    serve<voice_clear<sccp, &sccp_monitor::phones>>(clear_sccp_phone_table_1),
    serve<voice_clear<sccp, &sccp_monitor::calls>>(clear_sccp_call_table_1),
    serve<voice_clear<sccp, &sccp_monitor::top_jitter>>(clear_sccp_top_jitter_table_1),
    serve<voice_clear<sccp, &sccp_monitor::top_lost>>(clear_sccp_top_pkt_lost_table_1),
    serve<voice_clear<sccp, &sccp_monitor::top_latency>>(clear_sccp_top_latency_table_1),
    serve<voice_get<h323, &h323_monitor::calls, rmonrpc_h323_call_row_t>>(h323_call_rec_get_1),
    serve<voice_get<h323, &h323_monitor::phones, rmonrpc_h323_phone_row_t>>(h323_phone_rec_get_1),
    serve<voice_get<h323, &h323_monitor::top_jitter, rmonrpc_h323_call_row_t>>(h323_top_jitter_rec_get_1),
    serve<voice_get<h323, &h323_monitor::top_lost, rmonrpc_h323_call_row_t>>(h323_top_pkt_lost_rec_get_1),
    serve<get_h323_voice_coll_params>(get_h323_voice_coll_params_1),
    serve<set_h323_voice_coll_table_sizes>(set_h323_voice_coll_table_sizes_1),
    serve<voice_switch<h323, &voice_config_params_t::enable, 1>>(enable_h323_voice_coll_1),
    serve<voice_switch<h323, &voice_config_params_t::enable, 0>>(disable_h323_voice_coll_1),
    serve<get_h323_aggregate>(get_h323_aggregate_1),
    serve<set_h323_voice_coll_thresholds>(set_h323_voice_coll_thresholds_1),
    serve<voice_switch<h323, &voice_config_params_t::jitter_alarm_enable, 1>>(
        enable_h323_voice_coll_jitter_alarm_1),
    serve<voice_switch<h323, &voice_config_params_t::jitter_alarm_enable, 0>>(
        disable_h323_voice_coll_jitter_alarm_1),
    serve<voice_switch<h323, &voice_config_params_t::pkt_lost_alarm_enable, 1>>(
        enable_h323_voice_coll_pkt_lost_alarm_1),
    serve<voice_switch<h323, &voice_config_params_t::pkt_lost_alarm_enable, 0>>(
        disable_h323_voice_coll_pkt_lost_alarm_1),
    serve<voice_clear<h323, &h323_monitor::phones>>(clear_h323_phone_table_1),
    serve<voice_clear<h323, &h323_monitor::calls>>(clear_h323_call_table_1),
    serve<voice_clear<h323, &h323_monitor::top_jitter>>(clear_h323_top_jitter_table_1),
    serve<voice_clear<h323, &h323_monitor::top_lost>>(clear_h323_top_pkt_lost_table_1),
    serve<dsmon_pdistctl_get>(dsmon_pdistctl_get_1),
    serve<dsmon_pdistctl_set>(dsmon_pdistctl_set_1),
    serve<dsmon_hostctl_get>(dsmon_hostctl_get_1),
    serve<dsmon_hostctl_set>(dsmon_hostctl_set_1),
    serve<dsmon_pdstats_get>(dsmon_pdstats_get_1),
    serve<dsmon_hoststats_get>(dsmon_hoststats_get_1),
    serve<dsmon_matrixctl_get>(dsmon_matrixctl_get_1),
    serve<dsmon_matrixctl_set>(dsmon_matrixctl_set_1),
    serve<dsmon_matrixsdstats_get>(dsmon_matrixsdstats_get_1),
    serve<dsmon_matrixdsstats_get>(dsmon_matrixdsstats_get_1),
    serve<data_port_config>(data_port_config_1),
    serve<nde_device_get>(nde_device_get_1),
    serve<nde_device_set>(nde_device_set_1),
    serve<nde_datasrc_get>(nde_datasrc_get_1),
    serve<nde_datasrc_set>(nde_datasrc_set_1),
    serve<nde_flow_path_get>(nde_flow_path_get_1),
    serve<nde_flow_path_set>(nde_flow_path_set_1),
    serve<nde_learned_dev_get>(nde_learned_dev_get_1),
    serve<nde_auto_learned_enable>(nde_auto_learned_enable_1),
    serve<nde_auto_learned_disable>(nde_auto_learned_disable_1),
    serve<nde_learned_dev_status>(nde_learned_dev_status_1),
    serve<pdir_destroy_all_autolearned>(pdir_destroy_all_autolearned_1),
    serve<nde_learned_dev_intf_get>(nde_learned_dev_intf_get_1),
    serve<nlhost_make_persistent>(nlhost_make_persistent_1),
    serve<nlhost_make_nonpersistent>(nlhost_make_nonpersistent_1),
    serve<nlmatrix_make_persistent>(nlmatrix_make_persistent_1),
    serve<nlmatrix_make_nonpersistent>(nlmatrix_make_nonpersistent_1),
    serve<pdist_make_persistent>(pdist_make_persistent_1),
    serve<pdist_make_nonpersistent>(pdist_make_nonpersistent_1),
    serve<dshost_make_persistent>(dshost_make_persistent_1),
    serve<dshost_make_nonpersistent>(dshost_make_nonpersistent_1),
    serve<dsmatrix_make_persistent>(dsmatrix_make_persistent_1),
    serve<dsmatrix_make_nonpersistent>(dsmatrix_make_nonpersistent_1),
    serve<dspdist_make_persistent>(dspdist_make_persistent_1),
    serve<dspdist_make_nonpersistent>(dspdist_make_nonpersistent_1),
    serve<rmon_data_sync_completed>(rmon_data_sync_completed_1),
    serve<pdist_get_others>(pdist_get_others_1),
    serve<voice_get<mgcp, &mgcp_monitor::calls, rmonrpc_mgcp_call_t>>(mgcp_call_rec_get_1),
    serve<voice_get<mgcp, &mgcp_monitor::phones, rmonrpc_mgcp_phone_t>>(mgcp_phone_rec_get_1),
    serve<voice_get<mgcp, &mgcp_monitor::top_jitter, rmonrpc_mgcp_call_t>>(mgcp_top_jitter_rec_get_1),
    serve<voice_get<mgcp, &mgcp_monitor::top_lost, rmonrpc_mgcp_call_t>>(mgcp_top_pkt_lost_rec_get_1),
    serve<get_mgcp_voice_coll_params>(get_mgcp_voice_coll_params_1),
    serve<set_mgcp_voice_coll_table_sizes>(set_mgcp_voice_coll_table_sizes_1),
    serve<voice_switch<mgcp, &voice_config_params_t::enable, 1>>(enable_mgcp_voice_coll_1),
    serve<voice_switch<mgcp, &voice_config_params_t::enable, 0>>(disable_mgcp_voice_coll_1),
    serve<get_mgcp_aggregate>(get_mgcp_aggregate_1),
    serve<set_mgcp_voice_coll_thresholds>(set_mgcp_voice_coll_thresholds_1),
    serve<voice_switch<mgcp, &voice_config_params_t::jitter_alarm_enable, 1>>(
        enable_mgcp_voice_coll_jitter_alarm_1),
    serve<voice_switch<mgcp, &voice_config_params_t::jitter_alarm_enable, 0>>(
        disable_mgcp_voice_coll_jitter_alarm_1),
    serve<voice_switch<mgcp, &voice_config_params_t::pkt_lost_alarm_enable, 1>>(
        enable_mgcp_voice_coll_pkt_lost_alarm_1),
    serve<voice_switch<mgcp, &voice_config_params_t::pkt_lost_alarm_enable, 0>>(
        disable_mgcp_voice_coll_pkt_lost_alarm_1),
    serve<voice_clear<mgcp, &mgcp_monitor::phones>>(clear_mgcp_phone_table_1),
    serve<voice_clear<mgcp, &mgcp_monitor::calls>>(clear_mgcp_call_table_1),
    serve<voice_clear<mgcp, &mgcp_monitor::top_jitter>>(clear_mgcp_top_jitter_table_1),
    serve<voice_clear<mgcp, &mgcp_monitor::top_lost>>(clear_mgcp_top_pkt_lost_table_1),
    serve<tambo_send_ip_change>(tambo_send_ip_change_1),
    serve<tambo_send_time_poll>(tambo_send_time_poll_1),
};

static_assert(std::ranges::is_sorted(procedures, std::ranges::less_equal{}, &served_procedure::number));

} // namespace

void note_change(probe &agent)
{
    agent.state.changed = true;
}

std::span<const served_procedure> served_procedures()
{
    return procedures;
}
