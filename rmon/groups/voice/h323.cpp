/* The H.323 monitor's phones and calls, and its worst calls by jitter and by packet loss. */

#include "rmon/groups/voice/voice.h"

namespace {

using C = rmonrpc_h323_common_row_t;
using Q = rmonrpc_h323_qual_row_t;

/** An identifier of sixteen bytes as "0a1b 2c3d 4e5f 6071 8293 a4b5 c6d7 e8f9". */
template <auto Member> struct identifier {
    static constexpr std::array keys{member_key<Member>::key};
    static void put(Bucket *slot, const Q &call)
    {
        constexpr const char *digits = "0123456789abcdef";
        const wire::uchars<16> &bytes = call.*Member;
        zend_string *text = zend_string_alloc(2 * bytes.size + bytes.size / 2 - 1, 0);
        char *to = ZSTR_VAL(text);
        for (uint32_t i = 0; i < bytes.size; i++) {
            if (i && i % 2 == 0)
                *to++ = ' ';
            *to++ = digits[bytes.value[i] >> 4];
            *to++ = digits[bytes.value[i] & 15];
        }
        *to = '\0';
        ZVAL_NEW_STR(&slot->val, text);
    }
};

/** A synchronisation source, any 32-bit number: a float, since it is never negative. */
template <auto Member> struct ssrc {
    static constexpr std::array keys{member_key<Member>::key};
    static void put(Bucket *slot, const Q &call) { ZVAL_DOUBLE(&slot->val, call.*Member); }
};

using caller_columns = columns<
    shown<&C::vers>,
    shown<&C::index>,
    shown<&C::forward_q931_ipAddr_length>,
    shown<&C::forward_q931_port>,
    shown<&C::forward_q931_ipAddr>,
    shown<&C::forward_num>,
    shown<&C::forward_alias>>;

/** Keys stand in another order than on the wire: lengths and ports before addresses, products before
 * versions. */
using call_columns = columns<
    shown<&Q::f_q931_ipAddr_length>,
    shown<&Q::f_q931_port>,
    shown<&Q::f_q931_ipAddr>,
    shown<&Q::f_num>,
    shown<&Q::f_alias>,
    shown<&Q::reverse_q931_ipAddr_length>,
    shown<&Q::reverse_q931_port>,
    shown<&Q::reverse_q931_ipAddr>,
    shown<&Q::reverse_num>,
    shown<&Q::reverse_alias>,
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
    shown<&Q::forward_h245_ipAddr_length>,
    shown<&Q::forward_h245_port>,
    shown<&Q::forward_h245_ipAddr>,
    shown<&Q::forward_rtp_ipAddr_length>,
    shown<&Q::forward_rtp_port>,
    shown<&Q::forward_rtp_ipAddr>,
    shown<&Q::forward_codec>,
    shown<&Q::forward_rtcp_sr_ipAddr_length>,
    shown<&Q::forward_rtcp_sr_port>,
    shown<&Q::forward_rtcp_sr_ipAddr>,
    shown<&Q::forward_rtcp_rr_ipAddr_length>,
    shown<&Q::forward_rtcp_rr_port>,
    shown<&Q::forward_rtcp_rr_ipAddr>,
    shown<&Q::reverse_h245_ipAddr_length>,
    shown<&Q::reverse_h245_port>,
    shown<&Q::reverse_h245_ipAddr>,
    shown<&Q::reverse_rtp_ipAddr_length>,
    shown<&Q::reverse_rtp_port>,
    shown<&Q::reverse_rtp_ipAddr>,
    shown<&Q::reverse_codec>,
    shown<&Q::reverse_rtcp_sr_ipAddr_length>,
    shown<&Q::reverse_rtcp_sr_port>,
    shown<&Q::reverse_rtcp_sr_ipAddr>,
    shown<&Q::reverse_rtcp_rr_ipAddr_length>,
    shown<&Q::reverse_rtcp_rr_port>,
    shown<&Q::reverse_rtcp_rr_ipAddr>,
    shown<&Q::start_time>,
    shown<&Q::end_time>,
    ssrc<&Q::forward_ssrc>,
    shown<&Q::forward_sr_pkt_sent>,
    shown<&Q::forward_sr_oct_sent>,
    shown<&Q::forward_sr_pkt_lost>,
    mean<"forward_sr_fraction_lost", &Q::forward_sr_fraction_lost, &Q::forward_num_samples>,
    mean<"forward_sr_jitter", &Q::forward_sr_jitter, &Q::forward_num_samples, hundredths>,
    ssrc<&Q::reverse_ssrc>,
    shown<&Q::reverse_sr_pkt_sent>,
    shown<&Q::reverse_sr_oct_sent>,
    shown<&Q::reverse_sr_pkt_lost>,
    mean<"reverse_sr_fraction_lost", &Q::reverse_sr_fraction_lost, &Q::reverse_num_samples>,
    mean<"reverse_sr_jitter", &Q::reverse_sr_jitter, &Q::reverse_num_samples, hundredths>,
    shown<&Q::flag>>;

using P = rmonrpc_h323_phone_row_t;

using phone_row = row_shape<
    within<&P::common, caller_columns>,
    within<&P::aggregate, summed_aggregate_columns<rmonrpc_h323_aggregate_t>>,
    shown<&P::num_hist_row>,
    only_if<has_history<P>, history<row_shape<call_columns>>>>;

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
