// SPDX-License-Identifier: MIT
/* The MGCP monitor's phones and calls, and its worst calls by jitter and by packet loss. */

#include "rmon/groups/voice/voice.h"

using namespace rmon;

namespace {

using C = rmonrpc_mgcp_call_t;
using M = rmonrpc_mgcp_media_session_t;

/** Columns of a call's one media session. */
template <class... Column> struct in_media {
    static constexpr auto keys = columns<Column...>::keys;
    static void put(Bucket *slot, const C &call) { columns<Column...>::put(slot, call.media.value[0]); }
    static void put(Bucket *slot, const C &call, const Bucket *slot_before, const C &before)
    {
        columns<Column...>::put(slot, call.media.value[0], slot_before, before.media.value[0]);
    }
    static constexpr void tell(field_list &fields, uint32_t base)
    {
        columns<Column...>::tell(fields, base + wire::member_offset<&C::media>);
    }
};

/** The larger of the two legs' figures, signed. */
int32_t larger_of(int32_t one, int32_t two) { return std::max(one, two); }

template <key_text Key, auto One, auto Two> using larger =
    column<text_key<Key>, shown_made_by<larger_of>, One, Two>;

/** An address, or "-" where its length, which is a field of its own, is 0. */
void show_address(zval *slot, const wire::uchars<16> &address, uint32_t length)
{
    if (length)
        show(slot, address);
    else
        set(slot, "-");
}

template <auto Address, auto Length> using address_or_dash =
    column<member_key<Address>, set_by<show_address>, Address, Length>;

/** The flags of the call and of its media session. */
struct joined_flags {
    static constexpr std::array keys{text_key<"flag">::key};
    static void put(Bucket *slot, const C &call)
    {
        show(&slot->val, static_cast<uint32_t>(call.media.value[0].media_flag) | call.call_flag);
    }
    static constexpr void tell(field_list &fields, uint32_t base)
    {
        in_media<shown<&M::media_flag>>::tell(fields, base);
        fields.add<&C::call_flag>(base);
    }
};

using call_row = row_shape<
    shown<&C::index>,
    shown<&C::caller_phone_num>,
    shown<&C::callee_phone_num>,
    shown<&C::caller_endpoint_id>,
    shown<&C::callee_endpoint_id>,
    shown<&C::caller_alias>,
    shown<&C::callee_alias>,
    in_media<
        shown<&M::caller_ip_addr>,
        shown<&M::callee_ip_addr>,
        larger<"pkt_loss", &M::pkt_loss_1, &M::pkt_loss_2>,
        larger<"jitter", &M::jitter_1, &M::jitter_2>>,
    shown<&C::start_time>,
    shown<&C::end_time>,
    address_or_dash<&C::ca_address_1, &C::ca_address_1_length>,
    address_or_dash<&C::ca_address_2, &C::ca_address_2_length>,
    address_or_dash<&C::gw_address_1, &C::gw_address_1_length>,
    address_or_dash<&C::gw_address_2, &C::gw_address_2_length>,
    shown<&C::call_state>,
    shown<&C::call_id_1>,
    shown<&C::call_id_2>,
    in_media<
        shown<&M::conns_id_1>,
        shown<&M::conns_id_2>,
        shown<&M::rtp_port_1>,
        shown<&M::rtp_port_2>,
        shown<&M::audio_codec>,
        shown<&M::sampling_period>,
        shown<&M::silence_sup>,
        shown<&M::pkt_sent_1>,
        shown<&M::pkt_sent_2>,
        shown<&M::oct_sent_1>,
        shown<&M::oct_sent_2>,
        shown<&M::pkt_recv_1>,
        shown<&M::pkt_recv_2>,
        shown<&M::oct_recv_1>,
        shown<&M::oct_recv_2>,
        shown<&M::pkt_loss_1>,
        shown<&M::pkt_loss_2>,
        shown<&M::jitter_1>,
        shown<&M::jitter_2>,
        shown<&M::latency_1>,
        shown<&M::latency_2>,
        left_out<
            &M::media_reserved_1,
            &M::media_reserved_2,
            &M::media_reserved_3,
            &M::media_reserved_4,
            &M::media_reserved_5>>,
    joined_flags>;

using P = rmonrpc_mgcp_phone_t;

/** The aggregate figures stand in the record itself here, the flag at its end. */
using phone_row = row_shape<
    shown<&P::index>,
    shown<&P::phone_ipAddr>,
    shown<&P::phone_num>,
    shown<&P::phone_owner>,
    shown<&P::phone_alias>,
    aggregate_columns<P>,
    shown<&P::num_hist_row>,
    only_if<has_history<P>, history<P, call_row>>>;

using phone_rec = row_shape<listed<"phone_rec", phone_row>>;

void mgcp_phone_rec_data_get(script_call call, int32_t getType)
{
    voice_rec_get<phone_rec>(call, getType, mgcp_phone_rec_get_1);
}

/** Of the top tables too. */
using call_rec = row_shape<listed<"call_rec", call_row>>;

/** Reads the call table or one of the top tables, by the table's procedure. */
template <class Procedure>
void mgcp_call_rec_data_get(script_call call, int32_t getType, const Procedure &procedure)
{
    voice_rec_get<call_rec>(call, getType, procedure);
}

/** The agent has no top table by latency: nothing is asked. */
void mgcp_top_latency_get(script_call call, int32_t getType)
{
    link_id link;
    int32_t index, count;
    if (take_rows(call, getType, count, link, index) && connected(call, link))
        ZVAL_FALSE(call.return_value);
}

} // namespace

PHP_FUNCTION(mgcp_phone_rec_get) { mgcp_phone_rec_data_get(CALL, GET); }
PHP_FUNCTION(mgcp_phone_rec_getnext) { mgcp_phone_rec_data_get(CALL, GETNEXT); }
PHP_FUNCTION(mgcp_phone_rec_getbulk) { mgcp_phone_rec_data_get(CALL, GETBULK); }
PHP_FUNCTION(mgcp_call_rec_get) { mgcp_call_rec_data_get(CALL, GET, mgcp_call_rec_get_1); }
PHP_FUNCTION(mgcp_call_rec_getnext) { mgcp_call_rec_data_get(CALL, GETNEXT, mgcp_call_rec_get_1); }
PHP_FUNCTION(mgcp_call_rec_getbulk) { mgcp_call_rec_data_get(CALL, GETBULK, mgcp_call_rec_get_1); }
PHP_FUNCTION(mgcp_top_jitter_rec_get) { mgcp_call_rec_data_get(CALL, GET, mgcp_top_jitter_rec_get_1); }

PHP_FUNCTION(mgcp_top_jitter_rec_getnext)
{
    mgcp_call_rec_data_get(CALL, GETNEXT, mgcp_top_jitter_rec_get_1);
}

PHP_FUNCTION(mgcp_top_jitter_rec_getbulk)
{
    mgcp_call_rec_data_get(CALL, GETBULK, mgcp_top_jitter_rec_get_1);
}

PHP_FUNCTION(mgcp_top_pkt_lost_rec_get) { mgcp_call_rec_data_get(CALL, GET, mgcp_top_pkt_lost_rec_get_1); }

PHP_FUNCTION(mgcp_top_pkt_lost_rec_getnext)
{
    mgcp_call_rec_data_get(CALL, GETNEXT, mgcp_top_pkt_lost_rec_get_1);
}

PHP_FUNCTION(mgcp_top_pkt_lost_rec_getbulk)
{
    mgcp_call_rec_data_get(CALL, GETBULK, mgcp_top_pkt_lost_rec_get_1);
}

PHP_FUNCTION(mgcp_top_latency_rec_get) { mgcp_top_latency_get(CALL, GET); }
PHP_FUNCTION(mgcp_top_latency_rec_getnext) { mgcp_top_latency_get(CALL, GETNEXT); }
PHP_FUNCTION(mgcp_top_latency_rec_getbulk) { mgcp_top_latency_get(CALL, GETBULK); }
