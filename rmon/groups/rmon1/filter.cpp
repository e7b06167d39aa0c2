// SPDX-License-Identifier: MIT
/* Filters and channels (RFC 2819, filterTable and channelTable, with RFC 2021's protocol indexes). */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using F = rmonrpc_filter_t;

/** Shows the three byte lists last, unlike the record. */
using filter_row = row_shape<
    status<&F::status>,
    field<&F::filterIndex>,
    field<&F::filterChannelIndex>,
    field<&F::filterPktDataOffset>,
    field<&F::filterPktStatus>,
    field<&F::filterPktStatusMask>,
    field<&F::filterPktStatusNotMask>,
    field<&F::filterOwner>,
    field<&F::filterStatus>,
    field<&F::filterProtocolDirDataLocalIndex>,
    field<&F::filterProtocolDirLocalIndex>,
    field<&F::filterPktData>,
    field<&F::filterPktDataMask>,
    field<&F::filterPktDataNotMask>>;

void filter_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<filter_row>(call, ask(call, filter_get_1, link, key, "filter_get"));
}

/** Takes a byte list of a filter into a request's field; name is what a message calls its elements. */
struct filter_bytes {
    wire::byte_list &field;
    const char *name;
};

/**
 * Anything but an array is an empty list. Elements are integers already, or the
 * call is refused with the type number of the first that is not one. The bytes
 * take the array's place in the call's frame, which frees them when it ends.
 */
bool convert(script_call call, zval *argument, filter_bytes &to)
{
    if (Z_TYPE_P(argument) != IS_ARRAY)
        return true;
    HashTable *elements = Z_ARRVAL_P(argument);
    const uint32_t count = zend_hash_num_elements(elements);
    zend_string *bytes = zend_string_alloc(count, 0);
    char *next = ZSTR_VAL(bytes);
    zval *element;
    ZEND_HASH_FOREACH_VAL(elements, element) {
        ZVAL_DEREF(element);
        if (Z_TYPE_P(element) != IS_LONG) {
            const int type = type_number(element);
            zend_string_efree(bytes);
            zend_error(E_WARNING, "%s element not a LONG (%d)!", to.name, type);
            ZVAL_FALSE(call.return_value);
            return false;
        }
        *next++ = static_cast<char>(Z_LVAL_P(element));
    }
    ZEND_HASH_FOREACH_END();
    *next = '\0';
    zval array;
    ZVAL_COPY_VALUE(&array, argument);
    ZVAL_STR(argument, bytes);
    zval_ptr_dtor(&array);
    to.field = wire::list_of(reinterpret_cast<const uint8_t *>(ZSTR_VAL(bytes)), count);
    return true;
}

using C = rmonrpc_channel_t;

using channel_row = row_shape<
    status<&C::status>,
    field<&C::channelIndex>,
    field<&C::channelIfIndex>,
    field<&C::channelAcceptType>,
    field<&C::channelDataControl>,
    field<&C::channelTurnOnEventIndex>,
    field<&C::channelTurnOffEventIndex>,
    field<&C::channelEventIndex>,
    field<&C::channelEventStatus>,
    field<&C::channelMatches>,
    field<&C::channelDescription>,
    field<&C::channelOwner>,
    field<&C::channelStatus>,
    field<&C::channelCreateTime>,
    field<&C::channelDroppedFrames>>;

void channel_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<channel_row>(call, ask(call, channel_get_1, link, key, "channel_get"));
}

} // namespace

PHP_FUNCTION(rmon_filter_get) { filter_get(CALL, GET); }
PHP_FUNCTION(rmon_filter_getnext) { filter_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_filter_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    F row{};
    // The data's elements are called by the name that messages about addresses use.
    filter_bytes data{row.filterPktData, "addr"};
    filter_bytes mask{row.filterPktDataMask, "dataMask"};
    filter_bytes notMask{row.filterPktDataNotMask, "dataNotMask"};
    if (take_linked(
            call, link, row.filterIndex, row.filterChannelIndex, row.filterPktDataOffset, data, mask, notMask,
            row.filterPktStatus, row.filterPktStatusMask, row.filterPktStatusNotMask, row.filterOwner,
            row.filterStatus, row.filterProtocolDirDataLocalIndex, row.filterProtocolDirLocalIndex))
        return_integer(call, ask(call, filter_set_1, link, row, "rmon_filter_set"));
}

PHP_FUNCTION(rmon_channel_get) { channel_get(CALL, GET); }
PHP_FUNCTION(rmon_channel_getnext) { channel_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_channel_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take_linked(
            call, link, row.channelIndex, row.channelIfIndex, row.channelAcceptType, row.channelDataControl,
            row.channelTurnOnEventIndex, row.channelTurnOffEventIndex, row.channelEventIndex,
            row.channelEventStatus, row.channelDescription, row.channelOwner, row.channelStatus))
        return_integer(call, ask(call, channel_set_1, link, row, "rmon_channel_set"));
}
