// SPDX-License-Identifier: MIT
/*
 * The procedures of the program and their client stubs.
 *
 * A procedure's number, argument record and result record stand in one line
 * below. The line is the stub itself: etherstats_get_1(&key, client) makes the
 * call. The agent's dispatcher pairs its handlers with the same lines.
 */
#pragma once

#include "rmon/rpc/rmonrpc_admin.h"
#include "rmon/rpc/rmonrpc_dsmon.h"
#include "rmon/rpc/rmonrpc_nde.h"
#include "rmon/rpc/rmonrpc_rmon1.h"
#include "rmon/rpc/rmonrpc_rmon2.h"
#include "rmon/rpc/rmonrpc_smon_art.h"
#include "rmon/rpc/rmonrpc_voice.h"
#include "rmon/rpc/rmonrpc_xdr.h"

#include <sys/time.h>

#include <rpc/auth.h>
#include <rpc/clnt.h>

/** How long a call waits for its reply. */
inline constexpr timeval TIMEOUT{25, 0};
/** How long a capture save waits: writing a large buffer to a file can take longer. */
inline constexpr timeval CAPTURE_SAVE_TIMEOUT{60, 0};

/** A procedure's only reply. It stays valid until the procedure is called again. */
struct reply_buffer {
    void *reply;
    const wire::layout *layout;
    reply_buffer *next; // the next one that was ever used
    bool listed;
};

/**
 * Calls a procedure; the reply is decoded into buffer. False on any failure
 * (lost connection, time-out, an argument or a reply outside the rules, a
 * procedure that the agent doesn't know); clnt_sperror tells which.
 */
bool call_procedure(
    CLIENT *client,
    uint32_t number,
    const void *argument,
    const wire::layout &argument_layout,
    reply_buffer &buffer,
    timeval timeout);

/**
 * Releases the replies whose conversion was broken off (a script error ends a
 * request without unwinding). For the start of a request.
 */
void release_abandoned_replies();

template <uint32_t Number, class Argument, class Result, timeval Timeout = TIMEOUT> struct procedure {
    using argument = Argument;
    using result = Result;
    static constexpr uint32_t number = Number;

    /** The reply, or null on any failure. The caller releases it (see release()). */
    Result *operator()(const Argument *request, CLIENT *client) const
    {
        static constinit Result reply{};
        static constinit reply_buffer buffer{&reply, &wire::layout_of<Result>, nullptr, false};
        return call_procedure(client, Number, request, wire::layout_of<Argument>, buffer, Timeout) ? &reply
                                                                                                   : nullptr;
    }
};

/* ---- liveness, system group and interface table ------------------------------ */

inline constexpr procedure<0, wire::none, int32_t> rmonrpc_test_1;
inline constexpr procedure<1, wire::none, rmonrpc_system_t> system_get_1;
inline constexpr procedure<2, rmonrpc_system_t, int32_t> system_set_1;
inline constexpr procedure<3, rmonrpc_row_key2_t, rmonrpc_ifentry_t> ifentry_get_1;

/* ---- RMON --------------------------------------------------------------------- */

inline constexpr procedure<4, rmonrpc_row_key2_t, rmonrpc_etherstats_t> etherstats_get_1;
inline constexpr procedure<5, rmonrpc_etherstats_t, int32_t> etherstats_set_1;
inline constexpr procedure<6, rmonrpc_row_key2_t, rmonrpc_history_ctl_t> history_ctl_get_1;
inline constexpr procedure<7, rmonrpc_history_ctl_t, int32_t> history_ctl_set_1;
inline constexpr procedure<8, rmonrpc_row_key4_t, rmonrpc_etherhistory_arr_t> etherhistory_get_1;
inline constexpr procedure<9, rmonrpc_row_key2_t, rmonrpc_host_ctl_t> host_ctl_get_1;
inline constexpr procedure<10, rmonrpc_host_ctl_t, int32_t> host_ctl_set_1;
inline constexpr procedure<11, rmonrpc_host_key_t, rmonrpc_host_arr_t> host_get_1;
inline constexpr procedure<12, rmonrpc_row_key4_t, rmonrpc_hosttime_arr_t> hosttime_get_1;
inline constexpr procedure<13, rmonrpc_row_key2_t, rmonrpc_hosttopn_ctl_t> hosttopn_ctl_get_1;
inline constexpr procedure<14, rmonrpc_hosttopn_ctl_t, int32_t> hosttopn_ctl_set_1;
inline constexpr procedure<15, rmonrpc_row_key4_t, rmonrpc_hosttopn_arr_t> hosttopn_get_1;
inline constexpr procedure<16, rmonrpc_row_key2_t, rmonrpc_matrix_ctl_t> matrix_ctl_get_1;
inline constexpr procedure<17, rmonrpc_matrix_ctl_t, int32_t> matrix_ctl_set_1;
inline constexpr procedure<18, rmonrpc_matrix_key_t, rmonrpc_matrix_arr_t> matrix_get_1;
inline constexpr procedure<38, rmonrpc_row_key2_t, rmonrpc_alarm_t> alarm_get_1;
inline constexpr procedure<39, rmonrpc_alarm_t, int32_t> alarm_set_1;
inline constexpr procedure<40, rmonrpc_row_key2_t, rmonrpc_event_t> event_get_1;
inline constexpr procedure<41, rmonrpc_event_t, int32_t> event_set_1;
inline constexpr procedure<42, rmonrpc_row_key3_t, rmonrpc_log_t> log_get_1;
inline constexpr procedure<43, rmonrpc_row_key2_t, rmonrpc_filter_t> filter_get_1;
inline constexpr procedure<44, rmonrpc_filter_t, int32_t> filter_set_1;
inline constexpr procedure<45, rmonrpc_row_key2_t, rmonrpc_channel_t> channel_get_1;
inline constexpr procedure<46, rmonrpc_channel_t, int32_t> channel_set_1;
inline constexpr procedure<47, rmonrpc_row_key2_t, rmonrpc_buffer_ctl_t> buffer_ctl_get_1;
inline constexpr procedure<48, rmonrpc_buffer_ctl_t, int32_t> buffer_ctl_set_1;
inline constexpr procedure<49, rmonrpc_row_key3_t, rmonrpc_capturebuf_t> capture_buf_get_1;
inline constexpr procedure<50, rmonrpc_capture_save_key_t, rmonrpc_capture_save_result_t> capture_save_file_1;
/** The same call with more patience and a reply of its own: the one that scripts make. */
inline constexpr procedure<
    50,
    rmonrpc_capture_save_key_t,
    rmonrpc_capture_save_result_t,
    CAPTURE_SAVE_TIMEOUT>
    capture_save_file_2;

/* ---- RMON2 -------------------------------------------------------------------- */

inline constexpr procedure<19, rmonrpc_pdir_key_t, rmonrpc_pdir_arr_t> pdir_get_1;
inline constexpr procedure<20, rmonrpc_row_key2_t, rmonrpc_pdir_t> pdir_byidx_get_1;
inline constexpr procedure<21, rmonrpc_pdir_key_t, rmonrpc_pdir_t> pdir_getnext_modified_1;
inline constexpr procedure<22, rmonrpc_pdir_t, int32_t> pdir_set_1;
inline constexpr procedure<23, wire::none, int32_t> pdir_lastchange_get_1;
inline constexpr procedure<24, rmonrpc_row_key2_t, rmonrpc_pdist_ctl_t> pdist_ctl_get_1;
inline constexpr procedure<25, rmonrpc_pdist_ctl_t, int32_t> pdist_ctl_set_1;
inline constexpr procedure<26, rmonrpc_row_key4_t, rmonrpc_pdist_stats_arr_t> pdist_stats_get_1;
inline constexpr procedure<27, wire::none, rmonrpc_addrmap_scalars_t> addrmap_scalars_get_1;
inline constexpr procedure<28, rmonrpc_addrmap_scalars_t, int32_t> addrmap_scalars_set_1;
inline constexpr procedure<29, rmonrpc_row_key2_t, rmonrpc_addrmap_ctl_t> addrmap_ctl_get_1;
inline constexpr procedure<30, rmonrpc_addrmap_ctl_t, int32_t> addrmap_ctl_set_1;
inline constexpr procedure<31, rmonrpc_addrmap_key_t, rmonrpc_addrmap_arr_t> addrmap_entry_get_1;
inline constexpr procedure<32, rmonrpc_row_key2_t, rmonrpc_hlhost_ctl_t> hlhost_ctl_get_1;
inline constexpr procedure<33, rmonrpc_hlhost_ctl_t, int32_t> hlhost_ctl_set_1;
inline constexpr procedure<34, rmonrpc_hlhost_key_t, rmonrpc_hlhost_arr_t> hlhost_get_1;
inline constexpr procedure<35, rmonrpc_row_key2_t, rmonrpc_hlmatrix_ctl_t> hlmatrix_ctl_get_1;
inline constexpr procedure<36, rmonrpc_hlmatrix_ctl_t, int32_t> hlmatrix_ctl_set_1;
inline constexpr procedure<37, rmonrpc_hlmatrix_key_t, rmonrpc_hlmatrix_arr_t> hlmatrix_get_1;
inline constexpr procedure<169, wire::none, int32_t> pdir_destroy_all_autolearned_1;
inline constexpr procedure<171, rmonrpc_hlhost_key_t, int32_t> nlhost_make_persistent_1;
inline constexpr procedure<172, rmonrpc_hlhost_key_t, int32_t> nlhost_make_nonpersistent_1;
inline constexpr procedure<173, rmonrpc_hlmatrix_key_t, int32_t> nlmatrix_make_persistent_1;
inline constexpr procedure<174, rmonrpc_hlmatrix_key_t, int32_t> nlmatrix_make_nonpersistent_1;
inline constexpr procedure<175, rmonrpc_row_key4_t, int32_t> pdist_make_persistent_1;
inline constexpr procedure<176, rmonrpc_row_key4_t, int32_t> pdist_make_nonpersistent_1;
inline constexpr procedure<184, rmonrpc_row_key1_t, rmonrpc_others_counters_t> pdist_get_others_1;

/* ---- DSMON -------------------------------------------------------------------- */

inline constexpr procedure<72, rmonrpc_row_key2_t, rmonrpc_dsmon_stats_ctl_t> dsmon_stats_ctl_get_1;
inline constexpr procedure<73, rmonrpc_row_key2_t, rmonrpc_dsmon_aggctl_t> dsmon_aggctl_get_1;
inline constexpr procedure<74, rmonrpc_row_key3_t, rmonrpc_dsmon_stats_t> dsmon_stats_get_1;
inline constexpr procedure<75, rmonrpc_row_key3_t, rmonrpc_dsmon_agggrp_t> dsmon_agggrp_get_1;
inline constexpr procedure<103, rmonrpc_row_key3_t, rmonrpc_dsmon_aggprof_t> dsmon_aggprofile_get_1;
inline constexpr procedure<104, rmonrpc_dsmon_aggctl_t, int32_t> dsmon_aggctl_set_1;
inline constexpr procedure<105, rmonrpc_dsmon_agggrp_t, int32_t> dsmon_agggrp_set_1;
inline constexpr procedure<106, rmonrpc_dsmon_aggprof_t, int32_t> dsmon_aggprofile_set_1;
inline constexpr procedure<107, wire::none, int32_t> dsmon_aggctl_locked_1;
inline constexpr procedure<108, int32_t, int32_t> dsmon_aggctl_set_lock_1;
inline constexpr procedure<109, rmonrpc_dsmon_stats_ctl_t, int32_t> dsmon_stats_ctl_set_1;
inline constexpr procedure<133, rmonrpc_row_key2_t, rmonrpc_dsmon_pdctl_t> dsmon_pdistctl_get_1;
inline constexpr procedure<134, rmonrpc_dsmon_pdctl_t, int32_t> dsmon_pdistctl_set_1;
inline constexpr procedure<135, rmonrpc_row_key2_t, rmonrpc_dsmon_hostctl_t> dsmon_hostctl_get_1;
inline constexpr procedure<136, rmonrpc_dsmon_hostctl_t, int32_t> dsmon_hostctl_set_1;
inline constexpr procedure<137, rmonrpc_dsmon_pdist_key_t, rmonrpc_dsmon_pdstats_t> dsmon_pdstats_get_1;
inline constexpr procedure<138, rmonrpc_dsmon_host_key_t, rmonrpc_dsmon_hoststats_t> dsmon_hoststats_get_1;
inline constexpr procedure<139, rmonrpc_row_key2_t, rmonrpc_dsmon_matrixctl_t> dsmon_matrixctl_get_1;
inline constexpr procedure<140, rmonrpc_dsmon_matrixctl_t, int32_t> dsmon_matrixctl_set_1;
inline constexpr procedure<141, rmonrpc_dsmon_matrix_key_t, rmonrpc_dsmon_matrixstats_t>
    dsmon_matrixsdstats_get_1;
inline constexpr procedure<142, rmonrpc_dsmon_matrix_key_t, rmonrpc_dsmon_matrixstats_t>
    dsmon_matrixdsstats_get_1;
inline constexpr procedure<177, rmonrpc_dsmon_host_key_t, int32_t> dshost_make_persistent_1;
inline constexpr procedure<178, rmonrpc_dsmon_host_key_t, int32_t> dshost_make_nonpersistent_1;
inline constexpr procedure<179, rmonrpc_dsmon_matrix_key_t, int32_t> dsmatrix_make_persistent_1;
inline constexpr procedure<180, rmonrpc_dsmon_matrix_key_t, int32_t> dsmatrix_make_nonpersistent_1;
inline constexpr procedure<181, rmonrpc_dsmon_pdist_key_t, int32_t> dspdist_make_persistent_1;
inline constexpr procedure<182, rmonrpc_dsmon_pdist_key_t, int32_t> dspdist_make_nonpersistent_1;

/* ---- SMON and application response time --------------------------------------- */

inline constexpr procedure<76, rmonrpc_row_key2_t, rmonrpc_smon_vlan_ctl_t> smon_vlan_ctl_get_1;
inline constexpr procedure<77, rmonrpc_smon_vlan_ctl_t, int32_t> smon_vlan_ctl_set_1;
inline constexpr procedure<78, rmonrpc_row_key3_t, rmonrpc_smon_vlan_t> smon_vlan_get_1;
inline constexpr procedure<79, rmonrpc_row_key2_t, rmonrpc_smon_prio_ctl_t> smon_prio_ctl_get_1;
inline constexpr procedure<80, rmonrpc_smon_prio_ctl_t, int32_t> smon_prio_ctl_set_1;
inline constexpr procedure<81, rmonrpc_row_key3_t, rmonrpc_smon_prio_t> smon_prio_get_1;
inline constexpr procedure<99, rmonrpc_row_key2_t, rmonrpc_art_ctl_t> art_ctl_get_1;
inline constexpr procedure<100, rmonrpc_art_ctl_t, int32_t> art_ctl_set_1;
inline constexpr procedure<101, rmonrpc_art_rpt_key_t, rmonrpc_art_rpt_arr_t> art_rpt_get_1;
inline constexpr procedure<102, rmonrpc_art_sum_key_t, rmonrpc_art_sum_arr_t> art_sum_get_1;

/* ---- voice -------------------------------------------------------------------- */

inline constexpr procedure<82, rmonrpc_row_key3_t, rmonrpc_sccp_call_row_arr_t> call_rec_get_1;
inline constexpr procedure<83, rmonrpc_row_key3_t, rmonrpc_sccp_phone_row_arr_t> phone_rec_get_1;
inline constexpr procedure<84, rmonrpc_row_key3_t, rmonrpc_sccp_top_row_arr_t> top_jitter_rec_get_1;
inline constexpr procedure<85, rmonrpc_row_key3_t, rmonrpc_sccp_top_row_arr_t> top_pkt_lost_rec_get_1;
inline constexpr procedure<86, rmonrpc_row_key3_t, rmonrpc_sccp_top_row_arr_t> top_latency_rec_get_1;
inline constexpr procedure<87, wire::none, voice_config_params_t> get_sccp_voice_coll_params_1;
inline constexpr procedure<88, rmonrpc_voice_table_sizes_t, int32_t> set_sccp_voice_coll_table_sizes_1;
inline constexpr procedure<89, wire::none, int32_t> enable_sccp_voice_coll_1;
inline constexpr procedure<90, wire::none, int32_t> disable_sccp_voice_coll_1;
inline constexpr procedure<91, wire::none, rmonrpc_sccp_aggregate_t> get_sccp_aggregate_1;
inline constexpr procedure<92, rmonrpc_voice_thresholds_t, int32_t> set_sccp_voice_coll_thresholds_1;
inline constexpr procedure<93, wire::none, int32_t> enable_sccp_voice_coll_jitter_alarm_1;
inline constexpr procedure<94, wire::none, int32_t> disable_sccp_voice_coll_jitter_alarm_1;
inline constexpr procedure<95, wire::none, int32_t> enable_sccp_voice_coll_pkt_lost_alarm_1;
inline constexpr procedure<96, wire::none, int32_t> disable_sccp_voice_coll_pkt_lost_alarm_1;
inline constexpr procedure<97, wire::none, int32_t> enable_sccp_voice_coll_latency_alarm_1;
inline constexpr procedure<98, wire::none, int32_t> disable_sccp_voice_coll_latency_alarm_1;
inline constexpr procedure<110, wire::none, int32_t> clear_sccp_phone_table_1;
inline constexpr procedure<111, wire::none, int32_t> clear_sccp_call_table_1;
inline constexpr procedure<112, wire::none, int32_t> clear_sccp_top_jitter_table_1;
inline constexpr procedure<113, wire::none, int32_t> clear_sccp_top_pkt_lost_table_1;
inline constexpr procedure<114, wire::none, int32_t> clear_sccp_top_latency_table_1;
inline constexpr procedure<115, rmonrpc_row_key3_t, rmonrpc_h323_call_row_arr_t> h323_call_rec_get_1;
inline constexpr procedure<116, rmonrpc_row_key3_t, rmonrpc_h323_phone_row_arr_t> h323_phone_rec_get_1;
inline constexpr procedure<117, rmonrpc_row_key3_t, rmonrpc_h323_call_row_arr_t> h323_top_jitter_rec_get_1;
inline constexpr procedure<118, rmonrpc_row_key3_t, rmonrpc_h323_call_row_arr_t> h323_top_pkt_lost_rec_get_1;
inline constexpr procedure<119, wire::none, rmonrpc_h323_config_params_t> get_h323_voice_coll_params_1;
inline constexpr procedure<120, rmonrpc_h323_config_table_sizes_t, int32_t> set_h323_voice_coll_table_sizes_1;
inline constexpr procedure<121, wire::none, int32_t> enable_h323_voice_coll_1;
inline constexpr procedure<122, wire::none, int32_t> disable_h323_voice_coll_1;
inline constexpr procedure<123, wire::none, rmonrpc_h323_aggregate_t> get_h323_aggregate_1;
inline constexpr procedure<124, rmonrpc_h323_threshold_params_t, int32_t> set_h323_voice_coll_thresholds_1;
inline constexpr procedure<125, wire::none, int32_t> enable_h323_voice_coll_jitter_alarm_1;
inline constexpr procedure<126, wire::none, int32_t> disable_h323_voice_coll_jitter_alarm_1;
inline constexpr procedure<127, wire::none, int32_t> enable_h323_voice_coll_pkt_lost_alarm_1;
inline constexpr procedure<128, wire::none, int32_t> disable_h323_voice_coll_pkt_lost_alarm_1;
inline constexpr procedure<129, wire::none, int32_t> clear_h323_phone_table_1;
inline constexpr procedure<130, wire::none, int32_t> clear_h323_call_table_1;
inline constexpr procedure<131, wire::none, int32_t> clear_h323_top_jitter_table_1;
inline constexpr procedure<132, wire::none, int32_t> clear_h323_top_pkt_lost_table_1;
inline constexpr procedure<185, rmonrpc_row_key3_t, rmonrpc_mgcp_call_arr_t> mgcp_call_rec_get_1;
inline constexpr procedure<186, rmonrpc_row_key3_t, rmonrpc_mgcp_phone_arr_t> mgcp_phone_rec_get_1;
inline constexpr procedure<187, rmonrpc_row_key3_t, rmonrpc_mgcp_call_arr_t> mgcp_top_jitter_rec_get_1;
inline constexpr procedure<188, rmonrpc_row_key3_t, rmonrpc_mgcp_call_arr_t> mgcp_top_pkt_lost_rec_get_1;
inline constexpr procedure<189, wire::none, rmonrpc_mgcp_config_params_t> get_mgcp_voice_coll_params_1;
inline constexpr procedure<190, rmonrpc_mgcp_config_table_sizes_t, int32_t> set_mgcp_voice_coll_table_sizes_1;
inline constexpr procedure<191, wire::none, int32_t> enable_mgcp_voice_coll_1;
inline constexpr procedure<192, wire::none, int32_t> disable_mgcp_voice_coll_1;
inline constexpr procedure<193, wire::none, rmonrpc_mgcp_aggregate_t> get_mgcp_aggregate_1;
inline constexpr procedure<194, rmonrpc_mgcp_threshold_params_t, int32_t> set_mgcp_voice_coll_thresholds_1;
inline constexpr procedure<195, wire::none, int32_t> enable_mgcp_voice_coll_jitter_alarm_1;
inline constexpr procedure<196, wire::none, int32_t> disable_mgcp_voice_coll_jitter_alarm_1;
inline constexpr procedure<197, wire::none, int32_t> enable_mgcp_voice_coll_pkt_lost_alarm_1;
inline constexpr procedure<198, wire::none, int32_t> disable_mgcp_voice_coll_pkt_lost_alarm_1;
inline constexpr procedure<199, wire::none, int32_t> clear_mgcp_phone_table_1;
inline constexpr procedure<200, wire::none, int32_t> clear_mgcp_call_table_1;
inline constexpr procedure<201, wire::none, int32_t> clear_mgcp_top_jitter_table_1;
inline constexpr procedure<202, wire::none, int32_t> clear_mgcp_top_pkt_lost_table_1;

/* ---- NetFlow ------------------------------------------------------------------ */

inline constexpr procedure<158, rmonrpc_row_key2_t, int32_t> data_port_config_1;
inline constexpr procedure<159, rmonrpc_nde_device_t, rmonrpc_nde_device_arr_t> nde_device_get_1;
inline constexpr procedure<160, rmonrpc_nde_device_t, int32_t> nde_device_set_1;
inline constexpr procedure<161, rmonrpc_nde_datasrc_t, rmonrpc_nde_datasrc_arr_t> nde_datasrc_get_1;
inline constexpr procedure<162, rmonrpc_nde_datasrc_t, int32_t> nde_datasrc_set_1;
inline constexpr procedure<163, rmonrpc_nde_flow_path_t, rmonrpc_nde_flow_path_arr_t> nde_flow_path_get_1;
inline constexpr procedure<164, rmonrpc_nde_flow_path_t, int32_t> nde_flow_path_set_1;
inline constexpr procedure<165, rmonrpc_nde_learned_dev_t, rmonrpc_nde_learned_dev_arr_t>
    nde_learned_dev_get_1;
inline constexpr procedure<166, wire::none, int32_t> nde_auto_learned_enable_1;
inline constexpr procedure<167, wire::none, int32_t> nde_auto_learned_disable_1;
inline constexpr procedure<168, wire::none, rmonrpc_nde_learned_dev_status_t> nde_learned_dev_status_1;
inline constexpr procedure<170, rmonrpc_nde_learned_dev_intf_t, rmonrpc_nde_learned_dev_intf_arr_t>
    nde_learned_dev_intf_get_1;

/* ---- appliance administration -------------------------------------------------- */

inline constexpr procedure<61, rmonrpc_mibvar_name, rmonrpc_mibvar_t> mibvar_get_1;
inline constexpr procedure<62, int32_t, rmonrpc_ipconfig_t> sys_ipconf_get_1;
inline constexpr procedure<63, rmonrpc_ipconfig_t, int32_t> sys_ipconf_set_1;
inline constexpr procedure<64, wire::none, rmonrpc_sys_hostname_t> sys_hostname_get_1;
inline constexpr procedure<65, rmonrpc_sys_hostname_t, int32_t> sys_hostname_set_1;
inline constexpr procedure<66, wire::none, rmonrpc_sys_resolvers_t> sys_resolvers_get_1;
inline constexpr procedure<67, rmonrpc_sys_resolvers_t, int32_t> sys_resolvers_set_1;
inline constexpr procedure<68, rmonrpc_row_key2_t, rmonrpc_snmp_trapdest_t> trapdest_get_1;
inline constexpr procedure<69, rmonrpc_snmp_trapdest_t, int32_t> trapdest_set_1;
inline constexpr procedure<70, rmonrpc_snmp_community_key_t, rmonrpc_snmp_community_arr_t> community_get_1;
inline constexpr procedure<71, rmonrpc_snmp_community_t, int32_t> community_set_1;
inline constexpr procedure<183, wire::none, int32_t> rmon_data_sync_completed_1;
inline constexpr procedure<203, wire::none, int32_t> tambo_send_ip_change_1;
inline constexpr procedure<204, wire::none, int32_t> tambo_send_time_poll_1;
