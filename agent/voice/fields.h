// SPDX-License-Identifier: MIT
/*
 * The fields of voice records that a scenario may give, by name: where they
 * stand in the record, and how their values are written.
 */
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

enum class field_kind : uint8_t {
    number,  // decimal, 32 bits
    text,    // as it stands; shorter than its vector, which it does not fill
    address, // of IPv4 or IPv6, with a word that tells its octets
    octets,  // hexadecimal, exactly as many as the vector has
};

struct voice_field {
    const char *name;
    field_kind kind;
    uint32_t offset;
    uint32_t size;          // of the vector
    uint32_t length_offset; // of an address
};

/** Finds a field by name; null when there is none. */
const voice_field *find_field(std::span<const voice_field> fields, std::string_view name);

/** Gives a field of a record its value. False when the value does not fit the field. */
bool put_field(void *record, const voice_field &field, std::string_view value);

std::span<const voice_field> sccp_phone_fields();
std::span<const voice_field> sccp_call_fields(); // of a quality record, either party's
std::span<const voice_field> h323_phone_fields();
std::span<const voice_field> h323_call_fields();
std::span<const voice_field> mgcp_phone_fields();
std::span<const voice_field> mgcp_call_fields();
