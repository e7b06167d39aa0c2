// SPDX-License-Identifier: MIT
/*
 * Arguments: counted first, then converted one after another in the order that
 * a family states.
 *
 *     link_id link;
 *     rmonrpc_row_key2_t key{0, getType};
 *     if (!take(call, link, key.index))
 *         return;
 *
 * The kind of a conversion follows from the type of the variable that takes the
 * value, so that arguments go straight into the fields of a request record.
 * Texts and longer byte lists stay in the call's frame and are valid until the
 * handler returns.
 *
 * Every conversion may run user code (an object's __toString, an error handler)
 * that calls back into the module: keep no handle, reply or pointer into an
 * array across one. When a take function returns false the return value is set
 * and the handler must return at once.
 */
#pragma once

#include "rmon/connections.h"
#include "rmon/rmon.h"

#include <string_view>

namespace rmon {

/** The engine's type number, as messages show it: 0 null, 1 int, 2 float, 3 string, 4 array, 5 object, 6
 * bool, 7 resource. */
int type_number(const zval *value);

/** Warns "Wrong parameter count for NAME()", NAME being the function that runs. */
void wrong_parameter_count();

/** The most elements of an address or identifier that are sent. */
inline constexpr uint32_t max_address_bytes = 255;

/** An address that a script passed: an array of integers, one for each byte. */
struct address {
    uint32_t length;
    uint8_t bytes[max_address_bytes];
};

/**
 * An address in one of the functions that convert an argument that is no array
 * to an integer before they take it as empty (an object reports that it has
 * none); elsewhere such an argument is not looked at.
 */
struct integer_or_address : address {};

/** The request's view of an address; valid as long as it. */
inline wire::byte_list list_of(const address &from)
{
    return wire::list_of(from.bytes, from.length);
}

/* Conversions of one argument. False means that the handler must return. */

bool convert(script_call call, zval *argument, zend_long &integer);
bool convert(script_call call, zval *argument, const char *&text);

/** A text at its whole length: a zero byte in it is a character like others. */
bool convert(script_call call, zval *argument, std::string_view &text);

/**
 * An address. Anything but an array is an empty one. An array of more than 255
 * elements is refused with "too many (%d) elements in addr!" and FALSE, before
 * any element is converted. Elements are visited in the array's internal order
 * and converted to integers in place: the caller's variable shows them, where
 * the parameter is declared to prefer a reference.
 */
bool convert(script_call call, zval *argument, address &to);
bool convert(script_call call, zval *argument, integer_or_address &to);

/**
 * Two addresses of one call: both are counted before an element of either is
 * converted. Where a family converts the first one whole before it looks at
 * the second, they are two arguments like others.
 */
bool convert(script_call call, zval *first, address &one, zval *second, address &two);

/** The argument as it stands, for conversion later. */
inline bool convert(script_call, zval *argument, zval *&later)
{
    later = argument;
    return true;
}

inline bool convert(script_call call, zval *argument, link_id &link)
{
    return convert(call, argument, link.number);
}

/** The low 32 bits travel. */
inline bool convert(script_call call, zval *argument, int32_t &integer)
{
    zend_long value;
    const bool converted = convert(call, argument, value);
    if (converted)
        integer = static_cast<int32_t>(value);
    return converted;
}

inline bool convert(script_call call, zval *argument, uint32_t &integer)
{
    zend_long value;
    const bool converted = convert(call, argument, value);
    if (converted)
        integer = static_cast<uint32_t>(value);
    return converted;
}

template <uint32_t Bound> bool convert(script_call call, zval *argument, wire::text<Bound> &text)
{
    return convert(call, argument, text.value);
}

/** Converts the arguments from number `first` (1 is the first one) on. */
template <class... To> bool convert_from(script_call call, uint32_t first, To &...to)
{
    zend_execute_data *execute_data = call.execute_data;
    zval *argument = ZEND_CALL_ARG(execute_data, first);
    return (convert(call, argument++, to) && ...);
}

/** Whether the script passed exactly count arguments; warns otherwise. */
inline bool counted(script_call call, uint32_t count)
{
    if (EXPECTED(ZEND_CALL_NUM_ARGS(call.execute_data) == count))
        return true;
    wrong_parameter_count();
    return false;
}

/** Whether link is open; otherwise the warning is given and the return value is FALSE. */
inline bool connected(script_call call, link_id link)
{
    if (EXPECTED(client_of(link) != nullptr))
        return true;
    ZVAL_FALSE(call.return_value);
    return false;
}

/** All arguments, in order; the link is looked up when the call is made. */
template <class... To> bool take(script_call call, To &...to)
{
    return counted(call, sizeof...(To)) && convert_from(call, 1, to...);
}

/** Like take, but the link is checked before the arguments behind it are converted. */
template <class... To> bool take_linked(script_call call, link_id &link, To &...to)
{
    return counted(call, 1 + sizeof...(To)) && convert_from(call, 1, link) && connected(call, link)
           && convert_from(call, 2, to...);
}

/** Counts and converts what stands behind the others in a getbulk call: the number of rows wanted. */
inline bool take_row_count(script_call call, int32_t getType, int32_t &rows, uint32_t others)
{
    rows = 1;
    if (getType != GETBULK)
        return counted(call, others);
    return counted(call, others + 1) && convert_from(call, others + 1, rows);
}

/** take for a reader that also has a getbulk form, whose count is converted before all others; it is 1
 * elsewhere. */
template <class... To> bool take_rows(script_call call, int32_t getType, int32_t &rows, To &...to)
{
    return take_row_count(call, getType, rows, sizeof...(To)) && convert_from(call, 1, to...);
}

/** take_rows with the link checked before the arguments behind it are converted. */
template <class... To>
bool take_rows_linked(script_call call, int32_t getType, int32_t &rows, link_id &link, To &...to)
{
    return take_row_count(call, getType, rows, 1 + sizeof...(To)) && convert_from(call, 1, link)
           && connected(call, link) && convert_from(call, 2, to...);
}

} // namespace rmon
