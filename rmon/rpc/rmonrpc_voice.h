// SPDX-License-Identifier: MIT
/*
 * Records of the voice monitors: SCCP, H.323 and MGCP.
 *
 * Addresses and texts are vectors of one unit a byte. An address of four bytes
 * stands in the first four; a text ends at its first zero byte, or at the
 * vector's end.
 */
#pragma once

#include "rmon/rpc/rmonrpc.h"

/* ---- collection control ---------------------------------------------------- */

struct voice_config_params_t {
    int32_t enable;
    uint32_t num_phone_tbl_row;
    uint32_t num_call_tbl_row;
    uint32_t num_top_jitter_row;
    uint32_t num_top_pkt_lost_row;
    uint32_t num_top_latency_row;
    uint32_t jitter_threshold;
    uint32_t pkt_lost_threshold;
    uint32_t latency_threshold;
    int32_t jitter_alarm_enable;
    int32_t pkt_lost_alarm_enable;
    int32_t latency_alarm_enable;
};
static_assert(wire::wire_size<voice_config_params_t> == 48);

struct rmonrpc_h323_config_params_t {
    int32_t enable;
    uint32_t num_phone_tbl_row;
    uint32_t num_call_tbl_row;
    uint32_t num_top_jitter_row;
    uint32_t num_top_pkt_lost_row;
    uint32_t jitter_threshold;
    uint32_t pkt_lost_threshold;
    int32_t jitter_alarm_enable;
    int32_t pkt_lost_alarm_enable;
};
static_assert(wire::wire_size<rmonrpc_h323_config_params_t> == 36);

using rmonrpc_mgcp_config_params_t = rmonrpc_h323_config_params_t;

struct rmonrpc_voice_table_sizes_t {
    uint32_t num_phone_tbl_row;
    uint32_t num_call_tbl_row;
    uint32_t num_top_jitter_row;
    uint32_t num_top_pkt_lost_row;
    uint32_t num_top_latency_row;
};
static_assert(wire::wire_size<rmonrpc_voice_table_sizes_t> == 20);

struct rmonrpc_h323_config_table_sizes_t {
    uint32_t num_phone_tbl_row;
    uint32_t num_call_tbl_row;
    uint32_t num_top_jitter_row;
    uint32_t num_top_pkt_lost_row;
};
static_assert(wire::wire_size<rmonrpc_h323_config_table_sizes_t> == 16);

using rmonrpc_mgcp_config_table_sizes_t = rmonrpc_h323_config_table_sizes_t;

struct rmonrpc_voice_thresholds_t {
    uint32_t jitter_threshold;
    uint32_t pkt_lost_threshold;
    uint32_t latency_threshold;
};
static_assert(wire::wire_size<rmonrpc_voice_thresholds_t> == 12);

struct rmonrpc_h323_threshold_params_t {
    uint32_t jitter_threshold;
    uint32_t pkt_lost_threshold;
};
static_assert(wire::wire_size<rmonrpc_h323_threshold_params_t> == 8);

using rmonrpc_mgcp_threshold_params_t = rmonrpc_h323_threshold_params_t;

struct rmonrpc_sccp_aggregate_t {
    uint32_t flag;
    uint32_t num_call_mon;
    uint32_t avg_pkt_lost;
    uint32_t avg_jitter;
    uint32_t worst_pkt_lost;
    uint32_t worst_jitter;
};
static_assert(wire::wire_size<rmonrpc_sccp_aggregate_t> == 24);

using rmonrpc_mgcp_aggregate_t = rmonrpc_sccp_aggregate_t;

/** Sums over num_samples samples, where the others carry averages; jitter in hundredths. */
struct rmonrpc_h323_aggregate_t {
    uint32_t flag;
    uint32_t num_call_mon;
    uint32_t sum_pkt_lost;
    uint32_t sum_jitter;
    uint32_t worst_pkt_lost;
    uint32_t worst_jitter;
    uint32_t num_samples;
};
static_assert(wire::wire_size<rmonrpc_h323_aggregate_t> == 28);

/* ---- SCCP -------------------------------------------------------------------- */

/** The identity of one phone. */
struct rmonrpc_sccp_common_row_t {
    int32_t vers;
    uint32_t index;
    int32_t phone_ipAddr_length;
    wire::uchars<16> phone_ipAddr;
    wire::chars<24> phone_num;
    wire::chars<40> phone_model;
    wire::chars<40> phone_owner;
    wire::chars<10> if_name;
};
static_assert(wire::wire_size<rmonrpc_sccp_common_row_t> == 532);

/** State and voice quality of one call as one party saw it. */
struct rmonrpc_sccp_qual_row_t {
    uint32_t call_state;
    uint32_t call_status;
    uint32_t call_direction;
    wire::chars<16> peer_ipAddr;
    wire::chars<24> peer_num;
    wire::chars<40> peer_owner;
    uint32_t call_reference;
    uint32_t line_instance;
    uint32_t conference_id;
    uint32_t pass_thru_party_id;
    uint32_t local_rtp_port;
    uint32_t remote_rtp_port;
    uint32_t rtp_sampling_period;
    uint32_t payload_type;
    uint32_t rtp_pre_value;
    uint32_t silence_sup;
    uint32_t max_frames_per_pkt;
    uint32_t g723_bit_rate;
    uint32_t start_time;
    uint32_t end_time;
    uint32_t pkt_sent;
    uint32_t oct_sent;
    uint32_t pkt_recv;
    uint32_t oct_recv;
    uint32_t pkt_lost;
    uint32_t jitter;
    uint32_t latency;
    uint32_t spare;
    uint32_t flag;
};
static_assert(wire::wire_size<rmonrpc_sccp_qual_row_t> == 424);

struct rmonrpc_sccp_call_row_t {
    rmonrpc_sccp_common_row_t common;
    rmonrpc_sccp_qual_row_t qual;
    rmonrpc_sccp_common_row_t callee_common;
    rmonrpc_sccp_qual_row_t callee_qual;
};
static_assert(wire::wire_size<rmonrpc_sccp_call_row_t> == 1912);

using rmonrpc_sccp_call_row_arr_t = wire::rows<rmonrpc_sccp_call_row_t>;

struct rmonrpc_sccp_top_row_t {
    rmonrpc_sccp_common_row_t common;
    rmonrpc_sccp_qual_row_t qual;
};
static_assert(wire::wire_size<rmonrpc_sccp_top_row_t> == 956);

using rmonrpc_sccp_top_row_arr_t = wire::rows<rmonrpc_sccp_top_row_t>;

struct rmonrpc_sccp_phone_row_t {
    rmonrpc_sccp_common_row_t common;
    rmonrpc_sccp_aggregate_t aggregate;
    int32_t num_hist_row; // entries of history in use, as the agent claims
    wire::repeated<rmonrpc_sccp_qual_row_t, 5> history;
};
static_assert(wire::wire_size<rmonrpc_sccp_phone_row_t> == 2680);

using rmonrpc_sccp_phone_row_arr_t = wire::rows<rmonrpc_sccp_phone_row_t>;

/* ---- H.323 ------------------------------------------------------------------- *
 *
 * "forward" is the direction from the calling endpoint, "reverse" the one back.
 */

struct rmonrpc_h323_endpoint_t {
    wire::uchars<16> q931_ipAddr;
    uint32_t q931_ipAddr_length;
    uint32_t q931_port;
    wire::chars<132> num;
    wire::chars<81> alias;
};

/** The calling endpoint. */
struct rmonrpc_h323_common_row_t {
    int32_t vers;
    uint32_t index;
    rmonrpc_h323_endpoint_t forward;
};
static_assert(wire::wire_size<rmonrpc_h323_common_row_t> == 932);

/** Where the media of one direction and their control go. */
struct rmonrpc_h323_media_t {
    wire::uchars<16> h245_ipAddr;
    uint32_t h245_ipAddr_length;
    uint32_t h245_port;
    wire::uchars<16> rtp_ipAddr;
    uint32_t rtp_ipAddr_length;
    uint32_t rtp_port;
    uint32_t codec;
    wire::uchars<16> rtcp_sr_ipAddr;
    uint32_t rtcp_sr_ipAddr_length;
    uint32_t rtcp_sr_port;
    wire::uchars<16> rtcp_rr_ipAddr;
    uint32_t rtcp_rr_ipAddr_length;
    uint32_t rtcp_rr_port;
};

/** The quality of one direction; the call's record has the number of its samples. */
struct rmonrpc_h323_quality_t {
    uint32_t ssrc;
    uint32_t sr_pkt_sent;
    uint32_t sr_oct_sent;
    uint32_t sr_pkt_lost;
    uint32_t sr_fraction_lost; // sum over the samples
    uint32_t sr_jitter;        // sum over the samples, in hundredths
    uint32_t reserved_1;
    uint32_t reserved_2;
    uint32_t reserved_3;
};

/** Signalling, media and quality of one call. */
struct rmonrpc_h323_qual_row_t {
    rmonrpc_h323_endpoint_t f; // the calling endpoint, which "forward_" names in the common row
    rmonrpc_h323_endpoint_t reverse;
    uint32_t call_state;
    uint32_t call_status;
    uint32_t call_reference;
    wire::uchars<16> call_id;
    wire::uchars<16> conference_id;
    uint32_t conference_goal;
    int32_t faststart;
    int32_t tunneling;
    uint32_t call_type;
    wire::uchars<257> forward_product_id;
    wire::uchars<257> forward_version_id;
    wire::uchars<257> reverse_product_id;
    wire::uchars<257> reverse_version_id;
    uint32_t forward_session_id;
    uint32_t forward_logical_channel_num;
    uint32_t reverse_session_id;
    uint32_t reverse_logical_channel_num;
    rmonrpc_h323_media_t forward_media;
    rmonrpc_h323_media_t reverse_media;
    uint32_t start_time;
    uint32_t end_time;
    rmonrpc_h323_quality_t forward_quality;
    rmonrpc_h323_quality_t reverse_quality;
    uint32_t flag;
    uint32_t forward_num_samples;
    uint32_t reverse_num_samples;
};
static_assert(wire::wire_size<rmonrpc_h323_qual_row_t> == 6808);

struct rmonrpc_h323_call_row_t {
    rmonrpc_h323_common_row_t common;
    rmonrpc_h323_qual_row_t qual;
};
static_assert(wire::wire_size<rmonrpc_h323_call_row_t> == 7740);

using rmonrpc_h323_call_row_arr_t = wire::rows<rmonrpc_h323_call_row_t>;

struct rmonrpc_h323_phone_row_t {
    rmonrpc_h323_common_row_t common;
    rmonrpc_h323_aggregate_t aggregate;
    int32_t num_hist_row; // entries of history in use, as the agent claims
    wire::repeated<rmonrpc_h323_qual_row_t, 5> history;
};
static_assert(wire::wire_size<rmonrpc_h323_phone_row_t> == 35004);

using rmonrpc_h323_phone_row_arr_t = wire::rows<rmonrpc_h323_phone_row_t>;

/* ---- MGCP -------------------------------------------------------------------- *
 *
 * A call has two legs, 1 the calling and 2 the called endpoint, each with its
 * call agent ("ca") and gateway ("gw").
 */

struct rmonrpc_mgcp_media_session_t {
    wire::chars<33> conns_id_1;
    wire::chars<33> conns_id_2;
    int32_t media_reserved_1;
    wire::chars<32> caller_ip_addr; // as text
    wire::chars<32> callee_ip_addr;
    int32_t media_reserved_2;
    int32_t media_reserved_3;
    int32_t rtp_port_1;
    int32_t rtp_port_2;
    wire::chars<10> audio_codec;
    int32_t sampling_period;
    int32_t silence_sup;
    int32_t media_reserved_4;
    int32_t media_reserved_5;
    int32_t pkt_sent_1;
    int32_t pkt_sent_2;
    int32_t oct_sent_1;
    int32_t oct_sent_2;
    int32_t pkt_recv_1;
    int32_t pkt_recv_2;
    int32_t oct_recv_1;
    int32_t oct_recv_2;
    int32_t pkt_loss_1;
    int32_t pkt_loss_2;
    int32_t jitter_1;
    int32_t jitter_2;
    int32_t latency_1;
    int32_t latency_2;
    int32_t media_flag;
};
static_assert(wire::wire_size<rmonrpc_mgcp_media_session_t> == 656);

struct rmonrpc_mgcp_call_t {
    int32_t index;
    uint32_t ca_address_1_length;
    uint32_t ca_address_2_length;
    wire::uchars<16> ca_address_1;
    wire::uchars<16> ca_address_2;
    uint32_t gw_address_1_length;
    uint32_t gw_address_2_length;
    wire::uchars<16> gw_address_1;
    wire::uchars<16> gw_address_2;
    wire::chars<33> call_id_1;
    wire::chars<33> call_id_2;
    wire::chars<256> caller_endpoint_id;
    wire::chars<256> callee_endpoint_id;
    wire::chars<256> caller_alias;
    wire::chars<256> callee_alias;
    wire::chars<24> caller_phone_num;
    wire::chars<24> callee_phone_num;
    uint32_t start_time;
    uint32_t end_time;
    int32_t call_state;
    wire::repeated<rmonrpc_mgcp_media_session_t, 1> media;
    uint32_t call_flag;
};
static_assert(wire::wire_size<rmonrpc_mgcp_call_t> == 5500);

using rmonrpc_mgcp_call_arr_t = wire::rows<rmonrpc_mgcp_call_t>;

struct rmonrpc_mgcp_phone_t {
    int32_t index;
    wire::chars<32> phone_ipAddr; // as text
    wire::chars<256> phone_owner;
    wire::chars<256> phone_alias;
    wire::chars<24> phone_num;
    uint32_t num_call_mon;
    uint32_t avg_pkt_lost;
    uint32_t avg_jitter;
    uint32_t worst_pkt_lost;
    uint32_t worst_jitter;
    int32_t num_hist_row; // entries of history in use, as the agent claims
    wire::repeated<rmonrpc_mgcp_call_t, 5> history;
    uint32_t flag;
};
static_assert(wire::wire_size<rmonrpc_mgcp_phone_t> == 29804);

using rmonrpc_mgcp_phone_arr_t = wire::rows<rmonrpc_mgcp_phone_t>;
