// SPDX-License-Identifier: MIT
/* Control of the three voice monitors: settings, table sizes, thresholds, switches, and the aggregate
 * figures. */

#include "rmon/groups/voice/voice.h"

using namespace rmon;

namespace {

/* ---- settings and aggregate figures --------------------------------------------------- */

/** Reads a monitor's one record; FALSE, without a message, when the call fails. */
template <class Row, class Procedure> void read_record(script_call call, const Procedure &procedure)
{
    link_id link;
    if (take(call, link))
        return_row<Row>(call, ask(call, procedure, link, {}, unreported));
}

using S = voice_config_params_t;

using sccp_config_row = row_shape<
    shown<&S::enable>,
    shown<&S::num_phone_tbl_row>,
    shown<&S::num_call_tbl_row>,
    shown<&S::num_top_jitter_row>,
    shown<&S::num_top_pkt_lost_row>,
    shown<&S::num_top_latency_row>,
    shown<&S::jitter_threshold>,
    shown<&S::pkt_lost_threshold>,
    shown<&S::latency_threshold>,
    shown<&S::jitter_alarm_enable>,
    shown<&S::pkt_lost_alarm_enable>,
    shown<&S::latency_alarm_enable>>;

using H = rmonrpc_h323_config_params_t;

/** Of MGCP too: neither has a table, a threshold or an alarm of latency. */
using config_row = row_shape<
    shown<&H::enable>,
    shown<&H::num_phone_tbl_row>,
    shown<&H::num_call_tbl_row>,
    shown<&H::num_top_jitter_row>,
    shown<&H::num_top_pkt_lost_row>,
    shown<&H::jitter_threshold>,
    shown<&H::pkt_lost_threshold>,
    shown<&H::jitter_alarm_enable>,
    shown<&H::pkt_lost_alarm_enable>>;

using aggregate_row = row_shape<aggregate_columns<rmonrpc_sccp_aggregate_t>>;
using h323_aggregate_row = row_shape<summed_aggregate_columns<rmonrpc_h323_aggregate_t>>;

/* ---- what changes a monitor ------------------------------------------------------------ */

/**
 * Asks for a change and returns the agent's answer. Failed calls are reported
 * under the name of the function that runs.
 */
template <class Procedure> void change(
    script_call call,
    const Procedure &procedure,
    link_id link,
    const typename Procedure::argument &request = {})
{
    return_integer(call, ask(call, procedure, link, request, get_active_function_name()));
}

/** MGCP scripts always get 0: the agent's answer is not looked at, and a failed call is only reported. */
template <class Procedure> void change_mgcp(
    script_call call,
    const Procedure &procedure,
    link_id link,
    const typename Procedure::argument &request = {})
{
    if (!connected(call, link))
        return;
    ask(call, procedure, link, request, get_active_function_name());
    ZVAL_LONG(call.return_value, 0);
}

/** A switch, or the clearing of a table. */
template <class Procedure> void turn(script_call call, const Procedure &procedure)
{
    link_id link;
    if (take(call, link))
        change(call, procedure, link);
}

template <class Procedure> void turn_mgcp(script_call call, const Procedure &procedure)
{
    link_id link;
    if (take(call, link))
        change_mgcp(call, procedure, link);
}

/** The protocol has no procedures for MGCP's functions of latency: no call is made. */
void turn_nothing(script_call call)
{
    link_id link;
    if (take(call, link) && connected(call, link))
        ZVAL_LONG(call.return_value, 0);
}

template <class Sizes> bool take_table_sizes(script_call call, link_id &link, Sizes &sizes)
{
    return take(
        call, link, sizes.num_phone_tbl_row, sizes.num_call_tbl_row, sizes.num_top_jitter_row,
        sizes.num_top_pkt_lost_row);
}

template <class Thresholds> bool take_thresholds(script_call call, link_id &link, Thresholds &thresholds)
{
    return take(call, link, thresholds.jitter_threshold, thresholds.pkt_lost_threshold);
}

/** SCCP's alarm of latency has this threshold, which scripts can't change. */
constexpr uint32_t sccp_latency_threshold = 1000;

} // namespace

/* ---- SCCP --------------------------------------------------------------------------------- */

PHP_FUNCTION(sccp_config_params_get) { read_record<sccp_config_row>(CALL, get_sccp_voice_coll_params_1); }
PHP_FUNCTION(sccp_aggregate_data_get) { read_record<aggregate_row>(CALL, get_sccp_aggregate_1); }

PHP_FUNCTION(sccp_voice_coll_table_sizes_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_voice_table_sizes_t sizes{};
    if (!take_table_sizes(call, link, sizes))
        return;
    // The table by latency is as long as the one by packet loss.
    sizes.num_top_latency_row = sizes.num_top_pkt_lost_row;
    change(call, set_sccp_voice_coll_table_sizes_1, link, sizes);
}

PHP_FUNCTION(sccp_voice_coll_thresholds_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_voice_thresholds_t thresholds{};
    if (!take_thresholds(call, link, thresholds))
        return;
    thresholds.latency_threshold = sccp_latency_threshold;
    change(call, set_sccp_voice_coll_thresholds_1, link, thresholds);
}

PHP_FUNCTION(sccp_voice_coll_enable) { turn(CALL, enable_sccp_voice_coll_1); }
PHP_FUNCTION(sccp_voice_coll_disable) { turn(CALL, disable_sccp_voice_coll_1); }
PHP_FUNCTION(sccp_voice_jitter_alarm_enable) { turn(CALL, enable_sccp_voice_coll_jitter_alarm_1); }
PHP_FUNCTION(sccp_voice_jitter_alarm_disable) { turn(CALL, disable_sccp_voice_coll_jitter_alarm_1); }
PHP_FUNCTION(sccp_voice_pkt_lost_alarm_enable) { turn(CALL, enable_sccp_voice_coll_pkt_lost_alarm_1); }
PHP_FUNCTION(sccp_voice_pkt_lost_alarm_disable) { turn(CALL, disable_sccp_voice_coll_pkt_lost_alarm_1); }
PHP_FUNCTION(sccp_voice_latency_alarm_enable) { turn(CALL, enable_sccp_voice_coll_latency_alarm_1); }
PHP_FUNCTION(sccp_voice_latency_alarm_disable) { turn(CALL, disable_sccp_voice_coll_latency_alarm_1); }
PHP_FUNCTION(sccp_voice_phone_table_clear) { turn(CALL, clear_sccp_phone_table_1); }
PHP_FUNCTION(sccp_voice_call_table_clear) { turn(CALL, clear_sccp_call_table_1); }
PHP_FUNCTION(sccp_voice_top_jitter_table_clear) { turn(CALL, clear_sccp_top_jitter_table_1); }
PHP_FUNCTION(sccp_voice_top_pkt_lost_table_clear) { turn(CALL, clear_sccp_top_pkt_lost_table_1); }
PHP_FUNCTION(sccp_voice_top_latency_table_clear) { turn(CALL, clear_sccp_top_latency_table_1); }

/* ---- H.323 -------------------------------------------------------------------------------- */

PHP_FUNCTION(h323_config_params_get) { read_record<config_row>(CALL, get_h323_voice_coll_params_1); }
PHP_FUNCTION(h323_aggregate_data_get) { read_record<h323_aggregate_row>(CALL, get_h323_aggregate_1); }

PHP_FUNCTION(h323_voice_coll_table_sizes_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_h323_config_table_sizes_t sizes{};
    if (take_table_sizes(call, link, sizes))
        change(call, set_h323_voice_coll_table_sizes_1, link, sizes);
}

PHP_FUNCTION(h323_voice_coll_thresholds_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_h323_threshold_params_t thresholds{};
    if (take_thresholds(call, link, thresholds))
        change(call, set_h323_voice_coll_thresholds_1, link, thresholds);
}

PHP_FUNCTION(h323_voice_coll_enable) { turn(CALL, enable_h323_voice_coll_1); }
PHP_FUNCTION(h323_voice_coll_disable) { turn(CALL, disable_h323_voice_coll_1); }
PHP_FUNCTION(h323_voice_jitter_alarm_enable) { turn(CALL, enable_h323_voice_coll_jitter_alarm_1); }
PHP_FUNCTION(h323_voice_jitter_alarm_disable) { turn(CALL, disable_h323_voice_coll_jitter_alarm_1); }
PHP_FUNCTION(h323_voice_pkt_lost_alarm_enable) { turn(CALL, enable_h323_voice_coll_pkt_lost_alarm_1); }
PHP_FUNCTION(h323_voice_pkt_lost_alarm_disable) { turn(CALL, disable_h323_voice_coll_pkt_lost_alarm_1); }
PHP_FUNCTION(h323_voice_phone_table_clear) { turn(CALL, clear_h323_phone_table_1); }
PHP_FUNCTION(h323_voice_call_table_clear) { turn(CALL, clear_h323_call_table_1); }
PHP_FUNCTION(h323_voice_top_jitter_table_clear) { turn(CALL, clear_h323_top_jitter_table_1); }
PHP_FUNCTION(h323_voice_top_pkt_lost_table_clear) { turn(CALL, clear_h323_top_pkt_lost_table_1); }

/* ---- MGCP --------------------------------------------------------------------------------- */

PHP_FUNCTION(mgcp_config_params_get) { read_record<config_row>(CALL, get_mgcp_voice_coll_params_1); }
PHP_FUNCTION(mgcp_aggregate_data_get) { read_record<aggregate_row>(CALL, get_mgcp_aggregate_1); }

PHP_FUNCTION(mgcp_voice_coll_table_sizes_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_mgcp_config_table_sizes_t sizes{};
    if (take_table_sizes(call, link, sizes))
        change_mgcp(call, set_mgcp_voice_coll_table_sizes_1, link, sizes);
}

PHP_FUNCTION(mgcp_voice_coll_thresholds_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_mgcp_threshold_params_t thresholds{};
    if (take_thresholds(call, link, thresholds))
        change_mgcp(call, set_mgcp_voice_coll_thresholds_1, link, thresholds);
}

PHP_FUNCTION(mgcp_voice_coll_enable) { turn_mgcp(CALL, enable_mgcp_voice_coll_1); }
PHP_FUNCTION(mgcp_voice_coll_disable) { turn_mgcp(CALL, disable_mgcp_voice_coll_1); }
PHP_FUNCTION(mgcp_voice_jitter_alarm_enable) { turn_mgcp(CALL, enable_mgcp_voice_coll_jitter_alarm_1); }
PHP_FUNCTION(mgcp_voice_jitter_alarm_disable) { turn_mgcp(CALL, disable_mgcp_voice_coll_jitter_alarm_1); }
PHP_FUNCTION(mgcp_voice_pkt_lost_alarm_enable) { turn_mgcp(CALL, enable_mgcp_voice_coll_pkt_lost_alarm_1); }
PHP_FUNCTION(mgcp_voice_pkt_lost_alarm_disable) { turn_mgcp(CALL, disable_mgcp_voice_coll_pkt_lost_alarm_1); }
PHP_FUNCTION(mgcp_voice_latency_alarm_enable) { turn_nothing(CALL); }
PHP_FUNCTION(mgcp_voice_latency_alarm_disable) { turn_nothing(CALL); }
PHP_FUNCTION(mgcp_voice_phone_table_clear) { turn_mgcp(CALL, clear_mgcp_phone_table_1); }
PHP_FUNCTION(mgcp_voice_call_table_clear) { turn_mgcp(CALL, clear_mgcp_call_table_1); }
PHP_FUNCTION(mgcp_voice_top_jitter_table_clear) { turn_mgcp(CALL, clear_mgcp_top_jitter_table_1); }
PHP_FUNCTION(mgcp_voice_top_pkt_lost_table_clear) { turn_mgcp(CALL, clear_mgcp_top_pkt_lost_table_1); }
PHP_FUNCTION(mgcp_voice_top_latency_table_clear) { turn_nothing(CALL); }
