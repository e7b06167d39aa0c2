// SPDX-License-Identifier: MIT
/* The SCCP monitor's phones and calls, and its worst calls by jitter, by packet loss and by latency. */

#include "rmon/groups/voice/voice.h"

using namespace rmon;

namespace {

using C = rmonrpc_sccp_common_row_t;
using Q = rmonrpc_sccp_qual_row_t;

using address_columns =
    columns<shown<&C::vers>, shown<&C::index>, shown<&C::phone_ipAddr_length>, shown<&C::phone_ipAddr>>;

using owner_columns =
    columns<shown<&C::phone_num>, shown<&C::phone_model>, shown<&C::phone_owner>, shown<&C::if_name>>;

template <template <auto> class Column> using traffic_columns = columns<
    Column<&Q::pkt_sent>,
    Column<&Q::oct_sent>,
    Column<&Q::pkt_recv>,
    Column<&Q::oct_recv>,
    Column<&Q::pkt_lost>,
    Column<&Q::jitter>,
    Column<&Q::latency>,
    Column<&Q::flag>>;

/** What history entries and top rows show of a call alike. */
using figures_columns = columns<
    shown<&Q::call_reference>,
    shown<&Q::line_instance>,
    shown<&Q::conference_id>,
    shown<&Q::pass_thru_party_id>,
    shown<&Q::local_rtp_port>,
    shown<&Q::remote_rtp_port>,
    shown<&Q::rtp_sampling_period>,
    shown<&Q::payload_type>,
    shown<&Q::rtp_pre_value>,
    shown<&Q::silence_sup>,
    shown<&Q::max_frames_per_pkt>,
    shown<&Q::g723_bit_rate>,
    shown<&Q::start_time>,
    shown<&Q::end_time>,
    traffic_columns<shown>,
    left_out<&Q::spare>>;

/* ---- phones ------------------------------------------------------------------------ */

using history_row = row_shape<
    shown<&Q::call_state>,
    shown<&Q::call_status>,
    shown<&Q::call_direction>,
    shown<&Q::peer_ipAddr>,
    shown<&Q::peer_num>,
    shown<&Q::peer_owner>,
    figures_columns>;

using P = rmonrpc_sccp_phone_row_t;

using phone_row = row_shape<
    within<&P::common, address_columns, owner_columns>,
    within<&P::aggregate, aggregate_columns<rmonrpc_sccp_aggregate_t>>,
    shown<&P::num_hist_row>,
    only_if<has_history<P>, history<P, history_row>>>;

using phone_rec = row_shape<listed<"phone_rec", phone_row>>;

void sccp_phone_rec_data_get(script_call call, int32_t getType)
{
    voice_rec_get<phone_rec>(call, getType, phone_rec_get_1);
}

/* ---- worst calls --------------------------------------------------------------------- */

using T = rmonrpc_sccp_top_row_t;

using top_row = row_shape<
    within<&T::common, address_columns>,
    within<&T::qual, shown<&Q::peer_ipAddr>>,
    within<&T::common, owner_columns>,
    within<
        &T::qual,
        shown<&Q::call_state>,
        shown<&Q::call_status>,
        shown<&Q::call_direction>,
        shown<&Q::peer_num>,
        shown<&Q::peer_owner>,
        figures_columns>>;

using top_rec = row_shape<listed<"top_rec", top_row>>;

/** Reads one of the three top tables, by its procedure. */
template <class Procedure>
void sccp_top_rec_data_get(script_call call, int32_t getType, const Procedure &procedure)
{
    voice_rec_get<top_rec>(call, getType, procedure);
}

/* ---- calls --------------------------------------------------------------------------- */

using L = rmonrpc_sccp_call_row_t;

/** A field of the called party, "callee_" before its name. */
template <auto Member> using callee = shown_with<"callee_", Member>;

/** A field of both parties, the caller's first. */
template <auto Member> using phone_pair =
    columns<within<&L::common, shown<Member>>, within<&L::callee_common, callee<Member>>>;

template <auto Member> using call_pair =
    columns<within<&L::qual, shown<Member>>, within<&L::callee_qual, callee<Member>>>;

/** A call's row has both parties, so that neither's view of its peer is shown. */
using peer_left_out = left_out<&Q::peer_ipAddr, &Q::peer_num, &Q::peer_owner, &Q::spare>;

/** Two keys of the called party lack "call_", and both ports are the caller's: its own and the far end's. */
using call_row = row_shape<
    within<&L::common, address_columns, shown<&C::phone_num>>,
    within<
        &L::callee_common,
        callee<&C::phone_ipAddr_length>,
        callee<&C::phone_ipAddr>,
        callee<&C::phone_num>>,
    phone_pair<&C::phone_model>,
    phone_pair<&C::phone_owner>,
    phone_pair<&C::if_name>,
    call_pair<&Q::call_state>,
    call_pair<&Q::call_status>,
    within<&L::qual, shown<&Q::call_direction>>,
    within<&L::callee_qual, shown_as<"callee_direction", &Q::call_direction>>,
    within<&L::qual, shown<&Q::call_reference>>,
    within<&L::callee_qual, shown_as<"callee_reference", &Q::call_reference>>,
    call_pair<&Q::line_instance>,
    call_pair<&Q::conference_id>,
    call_pair<&Q::pass_thru_party_id>,
    within<
        &L::qual,
        shown_as<"rtp_port", &Q::local_rtp_port>,
        shown_as<"callee_rtp_port", &Q::remote_rtp_port>>,
    call_pair<&Q::rtp_sampling_period>,
    call_pair<&Q::payload_type>,
    call_pair<&Q::rtp_pre_value>,
    call_pair<&Q::silence_sup>,
    call_pair<&Q::max_frames_per_pkt>,
    call_pair<&Q::g723_bit_rate>,
    call_pair<&Q::start_time>,
    call_pair<&Q::end_time>,
    within<&L::qual, traffic_columns<shown>>,
    within<&L::callee_qual, traffic_columns<callee>>,
    within<&L::callee_common, left_out<&C::vers, &C::index>>,
    within<&L::qual, peer_left_out>,
    within<&L::callee_qual, peer_left_out, left_out<&Q::local_rtp_port, &Q::remote_rtp_port>>>;

using call_rec = row_shape<listed<"call_rec", call_row>>;

void sccp_call_rec_data_get(script_call call, int32_t getType)
{
    voice_rec_get<call_rec>(call, getType, call_rec_get_1);
}

} // namespace

PHP_FUNCTION(sccp_phone_rec_get) { sccp_phone_rec_data_get(CALL, GET); }
PHP_FUNCTION(sccp_phone_rec_getnext) { sccp_phone_rec_data_get(CALL, GETNEXT); }
PHP_FUNCTION(sccp_phone_rec_getbulk) { sccp_phone_rec_data_get(CALL, GETBULK); }
PHP_FUNCTION(sccp_call_rec_get) { sccp_call_rec_data_get(CALL, GET); }
PHP_FUNCTION(sccp_call_rec_getnext) { sccp_call_rec_data_get(CALL, GETNEXT); }
PHP_FUNCTION(sccp_call_rec_getbulk) { sccp_call_rec_data_get(CALL, GETBULK); }
PHP_FUNCTION(sccp_top_jitter_rec_get) { sccp_top_rec_data_get(CALL, GET, top_jitter_rec_get_1); }
PHP_FUNCTION(sccp_top_jitter_rec_getnext) { sccp_top_rec_data_get(CALL, GETNEXT, top_jitter_rec_get_1); }
PHP_FUNCTION(sccp_top_jitter_rec_getbulk) { sccp_top_rec_data_get(CALL, GETBULK, top_jitter_rec_get_1); }
PHP_FUNCTION(sccp_top_pkt_lost_rec_get) { sccp_top_rec_data_get(CALL, GET, top_pkt_lost_rec_get_1); }
PHP_FUNCTION(sccp_top_pkt_lost_rec_getnext) { sccp_top_rec_data_get(CALL, GETNEXT, top_pkt_lost_rec_get_1); }
PHP_FUNCTION(sccp_top_pkt_lost_rec_getbulk) { sccp_top_rec_data_get(CALL, GETBULK, top_pkt_lost_rec_get_1); }
PHP_FUNCTION(sccp_top_latency_rec_get) { sccp_top_rec_data_get(CALL, GET, top_latency_rec_get_1); }
PHP_FUNCTION(sccp_top_latency_rec_getnext) { sccp_top_rec_data_get(CALL, GETNEXT, top_latency_rec_get_1); }
PHP_FUNCTION(sccp_top_latency_rec_getbulk) { sccp_top_rec_data_get(CALL, GETBULK, top_latency_rec_get_1); }
