// SPDX-License-Identifier: MIT
#include "agent/voice/fields.h"

#include "agent/core/reply.h"
#include "agent/voice/calls.h"

#include <charconv>
#include <cstddef>
#include <cstring>

#include <arpa/inet.h>

// One line for a field: its name in the scenario and in the record.
#define NUMBER(name, member)                                                                                 \
    {                                                                                                        \
        name, field_kind::number, offsetof(record, member), 4, 0                                             \
    }
#define TEXT(name, member)                                                                                   \
    {                                                                                                        \
        name, field_kind::text, offsetof(record, member), sizeof(record::member), 0                          \
    }
#define OCTETS(name, member)                                                                                 \
    {                                                                                                        \
        name, field_kind::octets, offsetof(record, member), sizeof(record::member), 0                        \
    }
#define ADDRESS(name, member, length)                                                                        \
    {                                                                                                        \
        name, field_kind::address, offsetof(record, member), sizeof(record::member),                         \
            offsetof(record, length)                                                                         \
    }

namespace {

bool put_number(char *at, std::string_view value)
{
    uint32_t number = 0;
    const char *end = value.data() + value.size();
    const auto [rest, error] = std::from_chars(value.data(), end, number);
    if (error != std::errc{} || rest != end)
        return false;
    std::memcpy(at, &number, sizeof number);
    return true;
}

bool put_octets(char *at, uint32_t size, std::string_view value)
{
    if (value.size() != size * std::size_t{2})
        return false;
    for (uint32_t i = 0; i < size; i++) {
        const char *digits = value.data() + i * std::size_t{2};
        uint8_t octet = 0;
        const auto [rest, error] = std::from_chars(digits, digits + 2, octet, 16);
        if (error != std::errc{} || rest != digits + 2)
            return false;
        at[i] = static_cast<char>(octet);
    }
    return true;
}

/** IPv4 or IPv6. The octets, 0 when it is neither. */
uint32_t put_address(char *at, std::string_view value)
{
    const std::string text(value);
    if (inet_pton(AF_INET, text.c_str(), at) == 1)
        return 4;
    return inet_pton(AF_INET6, text.c_str(), at) == 1 ? 16 : 0;
}

} // namespace

const voice_field *find_field(std::span<const voice_field> fields, std::string_view name)
{
    for (const voice_field &field : fields)
        if (field.name == name)
            return &field;
    return nullptr;
}

bool put_field(void *record, const voice_field &field, std::string_view value)
{
    char *at = static_cast<char *>(record) + field.offset;
    switch (field.kind) {
    case field_kind::number:
        return put_number(at, value);
    case field_kind::text:
        if (value.size() >= field.size || !is_printable(value))
            return false;
        std::memset(at, 0, field.size);
        value.copy(at, field.size);
        return true;
    case field_kind::octets:
        return put_octets(at, field.size, value);
    case field_kind::address: {
        const uint32_t length = put_address(at, value);
        std::memcpy(static_cast<char *>(record) + field.length_offset, &length, sizeof length);
        return length != 0;
    }
    }
    return false;
}

/* The lists: however long, each is one line a field. */

std::span<const voice_field> sccp_phone_fields()
{
    using record = rmonrpc_sccp_common_row_t;
    static constexpr voice_field fields[] = {
        ADDRESS("address", phone_ipAddr, phone_ipAddr_length),
        TEXT("number", phone_num),
        TEXT("model", phone_model),
        TEXT("owner", phone_owner),
        TEXT("interface", if_name),
        NUMBER("version", vers),
    };
    return fields;
}

std::span<const voice_field> sccp_call_fields()
{
    using record = rmonrpc_sccp_qual_row_t;
    static constexpr voice_field fields[] = {
        NUMBER("call_state", call_state),
        NUMBER("call_status", call_status),
        NUMBER("call_direction", call_direction),
        NUMBER("call_reference", call_reference),
        NUMBER("line_instance", line_instance),
        NUMBER("conference_id", conference_id),
        NUMBER("pass_thru_party_id", pass_thru_party_id),
        NUMBER("local_rtp_port", local_rtp_port),
        NUMBER("remote_rtp_port", remote_rtp_port),
        NUMBER("rtp_sampling_period", rtp_sampling_period),
        NUMBER("payload_type", payload_type),
        NUMBER("rtp_pre_value", rtp_pre_value),
        NUMBER("silence_sup", silence_sup),
        NUMBER("max_frames_per_pkt", max_frames_per_pkt),
        NUMBER("g723_bit_rate", g723_bit_rate),
        NUMBER("pkt_sent", pkt_sent),
        NUMBER("oct_sent", oct_sent),
        NUMBER("pkt_recv", pkt_recv),
        NUMBER("oct_recv", oct_recv),
        NUMBER("pkt_lost", pkt_lost),
        NUMBER("jitter", jitter),
        NUMBER("latency", latency),
    };
    return fields;
}

std::span<const voice_field> h323_phone_fields()
{
    using record = rmonrpc_h323_common_row_t;
    static constexpr voice_field fields[] = {
        ADDRESS("address", forward.q931_ipAddr, forward.q931_ipAddr_length),
        NUMBER("port", forward.q931_port),
        TEXT("number", forward.num),
        TEXT("alias", forward.alias),
        NUMBER("version", vers),
    };
    return fields;
}

std::span<const voice_field> h323_call_fields()
{
    using record = rmonrpc_h323_qual_row_t;
    static constexpr voice_field fields[] = {
        NUMBER("call_state", call_state),
        NUMBER("call_status", call_status),
        NUMBER("call_reference", call_reference),
        OCTETS("call_id", call_id),
        OCTETS("conference_id", conference_id),
        NUMBER("conference_goal", conference_goal),
        NUMBER("faststart", faststart),
        NUMBER("tunneling", tunneling),
        NUMBER("call_type", call_type),
        TEXT("forward_product_id", forward_product_id),
        TEXT("forward_version_id", forward_version_id),
        TEXT("reverse_product_id", reverse_product_id),
        TEXT("reverse_version_id", reverse_version_id),
        NUMBER("forward_session_id", forward_session_id),
        NUMBER("forward_logical_channel_num", forward_logical_channel_num),
        NUMBER("reverse_session_id", reverse_session_id),
        NUMBER("reverse_logical_channel_num", reverse_logical_channel_num),
        ADDRESS("forward_h245_ipAddr", forward_media.h245_ipAddr, forward_media.h245_ipAddr_length),
        NUMBER("forward_h245_port", forward_media.h245_port),
        ADDRESS("forward_rtp_ipAddr", forward_media.rtp_ipAddr, forward_media.rtp_ipAddr_length),
        NUMBER("forward_rtp_port", forward_media.rtp_port),
        NUMBER("forward_codec", forward_media.codec),
        ADDRESS("forward_rtcp_sr_ipAddr", forward_media.rtcp_sr_ipAddr, forward_media.rtcp_sr_ipAddr_length),
        NUMBER("forward_rtcp_sr_port", forward_media.rtcp_sr_port),
        ADDRESS("forward_rtcp_rr_ipAddr", forward_media.rtcp_rr_ipAddr, forward_media.rtcp_rr_ipAddr_length),
        NUMBER("forward_rtcp_rr_port", forward_media.rtcp_rr_port),
        ADDRESS("reverse_h245_ipAddr", reverse_media.h245_ipAddr, reverse_media.h245_ipAddr_length),
        NUMBER("reverse_h245_port", reverse_media.h245_port),
        ADDRESS("reverse_rtp_ipAddr", reverse_media.rtp_ipAddr, reverse_media.rtp_ipAddr_length),
        NUMBER("reverse_rtp_port", reverse_media.rtp_port),
        NUMBER("reverse_codec", reverse_media.codec),
        ADDRESS("reverse_rtcp_sr_ipAddr", reverse_media.rtcp_sr_ipAddr, reverse_media.rtcp_sr_ipAddr_length),
        NUMBER("reverse_rtcp_sr_port", reverse_media.rtcp_sr_port),
        ADDRESS("reverse_rtcp_rr_ipAddr", reverse_media.rtcp_rr_ipAddr, reverse_media.rtcp_rr_ipAddr_length),
        NUMBER("reverse_rtcp_rr_port", reverse_media.rtcp_rr_port),
        NUMBER("forward_ssrc", forward_quality.ssrc),
        NUMBER("forward_sr_pkt_sent", forward_quality.sr_pkt_sent),
        NUMBER("forward_sr_oct_sent", forward_quality.sr_oct_sent),
        NUMBER("forward_sr_pkt_lost", forward_quality.sr_pkt_lost),
        NUMBER("forward_sr_fraction_lost", forward_quality.sr_fraction_lost),
        NUMBER("forward_sr_jitter", forward_quality.sr_jitter),
        NUMBER("forward_num_samples", forward_num_samples),
        NUMBER("reverse_ssrc", reverse_quality.ssrc),
        NUMBER("reverse_sr_pkt_sent", reverse_quality.sr_pkt_sent),
        NUMBER("reverse_sr_oct_sent", reverse_quality.sr_oct_sent),
        NUMBER("reverse_sr_pkt_lost", reverse_quality.sr_pkt_lost),
        NUMBER("reverse_sr_fraction_lost", reverse_quality.sr_fraction_lost),
        NUMBER("reverse_sr_jitter", reverse_quality.sr_jitter),
        NUMBER("reverse_num_samples", reverse_num_samples),
    };
    return fields;
}

std::span<const voice_field> mgcp_phone_fields()
{
    using record = mgcp_identity;
    static constexpr voice_field fields[] = {
        TEXT("address", address),
        TEXT("number", number),
        TEXT("owner", owner),
        TEXT("alias", alias),
        TEXT("endpoint", endpoint),
        ADDRESS("call_agent", call_agent, call_agent_length),
        ADDRESS("gateway", gateway, gateway_length),
    };
    return fields;
}

std::span<const voice_field> mgcp_call_fields()
{
    using record = rmonrpc_mgcp_call_t;
    static constexpr voice_field fields[] = {
        NUMBER("call_state", call_state),
        TEXT("call_id_1", call_id_1),
        TEXT("call_id_2", call_id_2),
        TEXT("conns_id_1", media.value[0].conns_id_1),
        TEXT("conns_id_2", media.value[0].conns_id_2),
        NUMBER("rtp_port_1", media.value[0].rtp_port_1),
        NUMBER("rtp_port_2", media.value[0].rtp_port_2),
        TEXT("audio_codec", media.value[0].audio_codec),
        NUMBER("sampling_period", media.value[0].sampling_period),
        NUMBER("silence_sup", media.value[0].silence_sup),
        NUMBER("pkt_sent_1", media.value[0].pkt_sent_1),
        NUMBER("pkt_sent_2", media.value[0].pkt_sent_2),
        NUMBER("oct_sent_1", media.value[0].oct_sent_1),
        NUMBER("oct_sent_2", media.value[0].oct_sent_2),
        NUMBER("pkt_recv_1", media.value[0].pkt_recv_1),
        NUMBER("pkt_recv_2", media.value[0].pkt_recv_2),
        NUMBER("oct_recv_1", media.value[0].oct_recv_1),
        NUMBER("oct_recv_2", media.value[0].oct_recv_2),
        NUMBER("pkt_loss_1", media.value[0].pkt_loss_1),
        NUMBER("pkt_loss_2", media.value[0].pkt_loss_2),
        NUMBER("jitter_1", media.value[0].jitter_1),
        NUMBER("jitter_2", media.value[0].jitter_2),
        NUMBER("latency_1", media.value[0].latency_1),
        NUMBER("latency_2", media.value[0].latency_2),
    };
    return fields;
}
