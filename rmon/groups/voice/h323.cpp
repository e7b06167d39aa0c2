// SPDX-License-Identifier: MIT
/* The H.323 monitor's phones and calls, and its worst calls by jitter and by packet loss. */

#include "rmon/groups/voice/voice.h"

using namespace rmon;

namespace {

using C = rmonrpc_h323_common_row_t;
using Q = rmonrpc_h323_qual_row_t;

/** An identifier of sixteen bytes as "0a1b 2c3d 4e5f 6071 8293 a4b5 c6d7 e8f9". */
void show_identifier(zval *slot, const wire::uchars<16> &bytes)
{
    constexpr const char *digits = "0123456789abcdef";
    zend_string *text = zend_string_alloc(2 * bytes.size + bytes.size / 2 - 1, 0);
    char *to = ZSTR_VAL(text);
    for (uint32_t i = 0; i < bytes.size; i++) {
        if (i && i % 2 == 0)
            *to++ = ' ';
        *to++ = digits[bytes.value[i] >> 4];
        *to++ = digits[bytes.value[i] & 15];
    }
    *to = '\0';
    ZVAL_NEW_STR(slot, text);
}

template <auto Member> using identifier = column<member_key<Member>, set_by<show_identifier>, Member>;

/** A synchronisation source, any 32-bit number: a float, since it is never negative. */
double ssrc(uint32_t number) { return number; }

/* Keys stand in another order than on the wire: lengths and ports before addresses, products before versions.
 */

/** Each field behind a prefix that tells the side. */
template <key_text Side, class E = rmonrpc_h323_endpoint_t> using endpoint_columns = columns<
    shown_with<Side, &E::q931_ipAddr_length>,
    shown_with<Side, &E::q931_port>,
    shown_with<Side, &E::q931_ipAddr>,
    shown_with<Side, &E::num>,
    shown_with<Side, &E::alias>>;

using caller_columns =
    columns<shown<&C::vers>, shown<&C::index>, within<&C::forward, endpoint_columns<"forward_">>>;

template <key_text Side, class M = rmonrpc_h323_media_t> using media_columns = columns<
    shown_with<Side, &M::h245_ipAddr_length>,
    shown_with<Side, &M::h245_port>,
    shown_with<Side, &M::h245_ipAddr>,
    shown_with<Side, &M::rtp_ipAddr_length>,
    shown_with<Side, &M::rtp_port>,
    shown_with<Side, &M::rtp_ipAddr>,
    shown_with<Side, &M::codec>,
    shown_with<Side, &M::rtcp_sr_ipAddr_length>,
    shown_with<Side, &M::rtcp_sr_port>,
    shown_with<Side, &M::rtcp_sr_ipAddr>,
    shown_with<Side, &M::rtcp_rr_ipAddr_length>,
    shown_with<Side, &M::rtcp_rr_port>,
    shown_with<Side, &M::rtcp_rr_ipAddr>>;

/** The mean of one side's samples. Their sum is a field of Quality, their number one of the call's record. */
template <key_text Side, auto Quality, auto Sum, auto Samples, uint32_t Unit = 1> struct mean_of_side {
    static constexpr std::array keys{prefixed_key<Side, Sum>::key};
    static void put(Bucket *slot, const Q &call)
    {
        show(&slot->val, mean<Unit>(call.*Quality.*Sum, call.*Samples));
    }
    static constexpr void tell(field_list &fields, uint32_t base)
    {
        within<Quality, shown<Sum>>::tell(fields, base);
        fields.add<Samples>(base);
    }
};

template <key_text Side, auto Quality, auto Samples, class S = rmonrpc_h323_quality_t> using quality_columns =
    columns<
        within<
            Quality,
            column<prefixed_key<Side, &S::ssrc>, made_by<ssrc>, &S::ssrc>,
            shown_with<Side, &S::sr_pkt_sent>,
            shown_with<Side, &S::sr_oct_sent>,
            shown_with<Side, &S::sr_pkt_lost>,
            left_out<&S::reserved_1, &S::reserved_2, &S::reserved_3>>,
        mean_of_side<Side, Quality, &S::sr_fraction_lost, Samples>,
        mean_of_side<Side, Quality, &S::sr_jitter, Samples, hundredths>>;

using call_columns = columns<
    within<&Q::f, endpoint_columns<"f_">>,
    within<&Q::reverse, endpoint_columns<"reverse_">>,
    shown<&Q::call_state>,
    shown<&Q::call_status>,
    shown<&Q::call_reference>,
    identifier<&Q::call_id>,
    identifier<&Q::conference_id>,
    shown<&Q::conference_goal>,
    shown<&Q::faststart>,
    shown<&Q::tunneling>,
    shown<&Q::call_type>,
    shown<&Q::forward_product_id>,
    shown<&Q::reverse_product_id>,
    shown<&Q::forward_version_id>,
    shown<&Q::reverse_version_id>,
    shown<&Q::forward_session_id>,
    shown<&Q::forward_logical_channel_num>,
    shown<&Q::reverse_session_id>,
    shown<&Q::reverse_logical_channel_num>,
    within<&Q::forward_media, media_columns<"forward_">>,
    within<&Q::reverse_media, media_columns<"reverse_">>,
    shown<&Q::start_time>,
    shown<&Q::end_time>,
    quality_columns<"forward_", &Q::forward_quality, &Q::forward_num_samples>,
    quality_columns<"reverse_", &Q::reverse_quality, &Q::reverse_num_samples>,
    shown<&Q::flag>>;

using P = rmonrpc_h323_phone_row_t;

using phone_row = row_shape<
    within<&P::common, caller_columns>,
    within<&P::aggregate, summed_aggregate_columns<rmonrpc_h323_aggregate_t>>,
    shown<&P::num_hist_row>,
    only_if<has_history<P>, history<P, row_shape<call_columns>>>>;

using phone_rec = row_shape<listed<"phone_rec", phone_row>>;

void h323_phone_rec_data_get(script_call call, int32_t getType)
{
    voice_rec_get<phone_rec>(call, getType, h323_phone_rec_get_1);
}

using L = rmonrpc_h323_call_row_t;

using call_row = row_shape<within<&L::common, caller_columns>, within<&L::qual, call_columns>>;

/** Of the top tables too. */
using call_rec = row_shape<listed<"call_rec", call_row>>;

/** Reads the call table or one of the top tables, by the table's procedure. */
template <class Procedure>
void h323_call_rec_data_get(script_call call, int32_t getType, const Procedure &procedure)
{
    voice_rec_get<call_rec>(call, getType, procedure);
}

} // namespace

PHP_FUNCTION(h323_phone_rec_get) { h323_phone_rec_data_get(CALL, GET); }
PHP_FUNCTION(h323_phone_rec_getnext) { h323_phone_rec_data_get(CALL, GETNEXT); }
PHP_FUNCTION(h323_phone_rec_getbulk) { h323_phone_rec_data_get(CALL, GETBULK); }
PHP_FUNCTION(h323_call_rec_get) { h323_call_rec_data_get(CALL, GET, h323_call_rec_get_1); }
PHP_FUNCTION(h323_call_rec_getnext) { h323_call_rec_data_get(CALL, GETNEXT, h323_call_rec_get_1); }
PHP_FUNCTION(h323_call_rec_getbulk) { h323_call_rec_data_get(CALL, GETBULK, h323_call_rec_get_1); }
PHP_FUNCTION(h323_top_jitter_rec_get) { h323_call_rec_data_get(CALL, GET, h323_top_jitter_rec_get_1); }

PHP_FUNCTION(h323_top_jitter_rec_getnext)
{
    h323_call_rec_data_get(CALL, GETNEXT, h323_top_jitter_rec_get_1);
}

PHP_FUNCTION(h323_top_jitter_rec_getbulk)
{
    h323_call_rec_data_get(CALL, GETBULK, h323_top_jitter_rec_get_1);
}

PHP_FUNCTION(h323_top_pkt_lost_rec_get) { h323_call_rec_data_get(CALL, GET, h323_top_pkt_lost_rec_get_1); }

PHP_FUNCTION(h323_top_pkt_lost_rec_getnext)
{
    h323_call_rec_data_get(CALL, GETNEXT, h323_top_pkt_lost_rec_get_1);
}

PHP_FUNCTION(h323_top_pkt_lost_rec_getbulk)
{
    h323_call_rec_data_get(CALL, GETBULK, h323_top_pkt_lost_rec_get_1);
}
