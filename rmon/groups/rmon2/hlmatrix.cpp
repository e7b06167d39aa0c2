// SPDX-License-Identifier: MIT
/*
 * Higher-layer matrix (RFC 2021, hlMatrixControlTable, nlMatrixSDTable,
 * nlMatrixDSTable, alMatrixSDTable and alMatrixDSTable).
 */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using C = rmonrpc_hlmatrix_ctl_t;

using hlmatrix_ctl_row = row_shape<
    status<&C::status>,
    field<&C::hlMatrixControlIndex>,
    field<&C::hlMatrixControlDataSource>,
    field<&C::hlMatrixControlNlDroppedFrames>,
    field<&C::hlMatrixControlNlInserts>,
    field<&C::hlMatrixControlNlDeletes>,
    field<&C::hlMatrixControlNlMaxDesiredEntries>,
    field<&C::hlMatrixControlAlDroppedFrames>,
    field<&C::hlMatrixControlAlInserts>,
    field<&C::hlMatrixControlAlDeletes>,
    field<&C::hlMatrixControlAlMaxDesiredEntries>,
    field<&C::hlMatrixControlOwner>,
    field<&C::hlMatrixControlStatus>>;

void hlmatrix_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<hlmatrix_ctl_row>(call, ask(call, hlmatrix_ctl_get_1, link, key, "hlmatrix_ctl_get"));
}

using M = rmonrpc_hlmatrix_t;

/** Scripts read a pair's create time as a float, where a host's is an integer. */
double create_time(uint32_t ticks) { return ticks; }

/** A pair of hosts under the names of one view. */
template <
    key_text TimeMark,
    key_text Source,
    key_text Dest,
    key_text Pkts,
    key_text Octets,
    key_text CreateTime,
    class ApplicationLayer>
using matrix_row = row_shape<
    status<&M::status>,
    named<TimeMark, &M::timeMark>,
    named_address_or_zero<Source, &M::sourceAddress>,
    named_address_or_zero<Dest, &M::destAddress>,
    named<Pkts, &M::pkts>,
    named<Octets, &M::octets>,
    computed<CreateTime, create_time, &M::createTime>,
    field<&M::hlMatrixControlIndex>,
    field<&M::protocolDirLocalIndex>,
    ApplicationLayer>;

using nlmatrix_sd_row = matrix_row<
    "nlMatrixSDTimeMark",
    "nlMatrixSDSourceAddress",
    "nlMatrixSDDestAddress",
    "nlMatrixSDPkts",
    "nlMatrixSDOctets",
    "nlMatrixSDCreateTime",
    left_out<&M::protocolDirLocalIndex2>>;

using nlmatrix_ds_row = matrix_row<
    "nlMatrixDSTimeMark",
    "nlMatrixDSSourceAddress",
    "nlMatrixDSDestAddress",
    "nlMatrixDSPkts",
    "nlMatrixDSOctets",
    "nlMatrixDSCreateTime",
    left_out<&M::protocolDirLocalIndex2>>;

/* The addresses keep their network-layer names in the application-layer views. */

using almatrix_sd_row = matrix_row<
    "alMatrixSDTimeMark",
    "nlMatrixSDSourceAddress",
    "nlMatrixSDDestAddress",
    "alMatrixSDPkts",
    "alMatrixSDOctets",
    "alMatrixSDCreateTime",
    field<&M::protocolDirLocalIndex2>>;

using almatrix_ds_row = matrix_row<
    "alMatrixDSTimeMark",
    "nlMatrixDSSourceAddress",
    "nlMatrixDSDestAddress",
    "alMatrixDSPkts",
    "alMatrixDSOctets",
    "alMatrixDSCreateTime",
    field<&M::protocolDirLocalIndex2>>;

/** Asks for pairs in one of the four views; null when the return value is set already. */
rmonrpc_hlmatrix_arr_t *
nlmatrix_get(script_call call, int32_t getType, int32_t direction, int32_t applicationLayer)
{
    link_id link;
    rmonrpc_hlmatrix_key_t key{};
    key.getType = getType;
    key.applicationLayer = applicationLayer;
    key.direction = direction;
    zval *source, *dest;
    address sourceAddress, destAddress;
    const bool taken = applicationLayer == APPLICATION_LAYER
                           ? take_rows(
                               call, getType, key.count, link, key.hlMatrixControlIndex, key.timeMark,
                               key.protocolDirLocalIndex, source, dest, key.protocolDirLocalIndex2)
                           : take_rows(
                               call, getType, key.count, link, key.hlMatrixControlIndex, key.timeMark,
                               key.protocolDirLocalIndex, source, dest);
    if (!taken || !connected(call, link) || !convert(call, source, sourceAddress, dest, destAddress))
        return nullptr;
    key.sourceAddress = list_of(sourceAddress);
    key.destAddress = list_of(destAddress);
    return ask(call, hlmatrix_get_1, link, key, "nlmatrix_get");
}

void nlmatrix_sd_get(script_call call, int32_t getType)
{
    return_rows<nlmatrix_sd_row>(call, nlmatrix_get(call, getType, MATRIX_SD, NETWORK_LAYER), getType);
}

void nlmatrix_ds_get(script_call call, int32_t getType)
{
    return_rows<nlmatrix_ds_row>(call, nlmatrix_get(call, getType, MATRIX_DS, NETWORK_LAYER), getType);
}

void almatrix_sd_get(script_call call, int32_t getType)
{
    return_rows<almatrix_sd_row>(call, nlmatrix_get(call, getType, MATRIX_SD, APPLICATION_LAYER), getType);
}

void almatrix_ds_get(script_call call, int32_t getType)
{
    return_rows<almatrix_ds_row>(call, nlmatrix_get(call, getType, MATRIX_DS, APPLICATION_LAYER), getType);
}

} // namespace

PHP_FUNCTION(rmon_hlmatrix_ctl_get) { hlmatrix_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_hlmatrix_ctl_getnext) { hlmatrix_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_hlmatrix_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take(
            call, link, row.hlMatrixControlIndex, row.hlMatrixControlDataSource,
            row.hlMatrixControlNlMaxDesiredEntries, row.hlMatrixControlAlMaxDesiredEntries,
            row.hlMatrixControlOwner, row.hlMatrixControlStatus))
        return_integer(call, ask(call, hlmatrix_ctl_set_1, link, row, "rmon_hlmatrix_ctl_set"));
}

PHP_FUNCTION(rmon_nlmatrix_sd_get) { nlmatrix_sd_get(CALL, GET); }
PHP_FUNCTION(rmon_nlmatrix_sd_getnext) { nlmatrix_sd_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_nlmatrix_sd_getbulk) { nlmatrix_sd_get(CALL, GETBULK); }
PHP_FUNCTION(rmon_nlmatrix_ds_get) { nlmatrix_ds_get(CALL, GET); }
PHP_FUNCTION(rmon_nlmatrix_ds_getnext) { nlmatrix_ds_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_nlmatrix_ds_getbulk) { nlmatrix_ds_get(CALL, GETBULK); }
PHP_FUNCTION(rmon_almatrix_sd_get) { almatrix_sd_get(CALL, GET); }
PHP_FUNCTION(rmon_almatrix_sd_getnext) { almatrix_sd_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_almatrix_sd_getbulk) { almatrix_sd_get(CALL, GETBULK); }
PHP_FUNCTION(rmon_almatrix_ds_get) { almatrix_ds_get(CALL, GET); }
PHP_FUNCTION(rmon_almatrix_ds_getnext) { almatrix_ds_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_almatrix_ds_getbulk) { almatrix_ds_get(CALL, GETBULK); }
