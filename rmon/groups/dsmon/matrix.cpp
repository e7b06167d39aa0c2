// SPDX-License-Identifier: MIT
/*
 * Traffic of each aggregation group between pairs of hosts (RFC 3287,
 * dsmonMatrixCtlTable, dsmonMatrixSDTable and dsmonMatrixDSTable).
 */

#include "rmon/groups/dsmon/dsmon.h"

using namespace rmon;

namespace {

using C = rmonrpc_dsmon_matrixctl_t;

using matrixctl_row = row_shape<
    status<&C::status>,
    field<&C::dsmonMatrixCtlIndex>,
    field<&C::dsmonMatrixCtlDataSource_ifIndex>,
    field<&C::dsmonMatrixAggProfile>,
    field<&C::dsmonMatrixDroppedFrames>,
    field<&C::dsmonMatrixCtlInserts>,
    field<&C::dsmonMatrixCtlDeletes>,
    field<&C::dsmonMatrixCtlOwner>,
    field<&C::dsmonMatrixCtlStatus>,
    field<&C::dsmonMatrixCtlMaxDesiredEntries>>;

void php_dsmon_matrixctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        read_row<matrixctl_row>(call, dsmon_matrixctl_get_1, link, key);
}

void php_dsmon_matrixctl_set(script_call call)
{
    link_id link;
    C row{};
    if (take(
            call, link, row.dsmonMatrixCtlIndex, row.dsmonMatrixCtlDataSource_ifIndex,
            row.dsmonMatrixAggProfile, row.dsmonMatrixCtlOwner, row.dsmonMatrixCtlStatus,
            row.dsmonMatrixCtlMaxDesiredEntries))
        return_integer(call, ask(call, dsmon_matrixctl_set_1, link, row, unreported));
}

using M = rmonrpc_dsmon_matrixstats_t;

/** Scripts read both views, by source and by destination, with one set of keys. */
using matrixstats_row = row_shape<
    status<&M::status>,
    field<&M::dsmonMatrixCtlIndex>,
    field<&M::dsmonAggGroupIndex>,
    field<&M::dsmonMatrixTimeMark>,
    field<&M::dsmonMatrixNLIndex>,
    field<&M::dsmonMatrixALIndex>,
    named<"dsmonMatrixSDHCPkts", &M::hcPkts>,
    named<"dsmonMatrixSDHCOctets", &M::hcOctets>,
    counted_address<&M::dsmonMatrixSourceAddress, &M::dsmonMatrixSourceAddressLength>,
    counted_address<&M::dsmonMatrixDestAddress, &M::dsmonMatrixDestAddressLength>>;

template <class Procedure> void matrixstats_get(script_call call, const Procedure &procedure, int32_t getType)
{
    link_id link;
    rmonrpc_dsmon_matrix_key_t key{};
    key.getType = getType;
    zval *from, *to;
    address source, destination;
    if (!take(
            call, link, key.dsmonMatrixCtlIndex, key.dsmonMatrixTimeMark, key.dsmonAggGroupIndex,
            key.dsmonMatrixNLIndex, key.dsmonMatrixALIndex, from, to)
        || !connected(call, link) || !convert(call, from, source, to, destination))
        return;
    put_address(source, key.dsmonMatrixSourceAddress, key.dsmonMatrixSourceAddressLength);
    put_address(destination, key.dsmonMatrixDestAddress, key.dsmonMatrixDestAddressLength);
    read_row<matrixstats_row>(call, procedure, link, key);
}

void php_dsmon_matrixsdstats_get(script_call call, int32_t getType)
{
    matrixstats_get(call, dsmon_matrixsdstats_get_1, getType);
}

void php_dsmon_matrixdsstats_get(script_call call, int32_t getType)
{
    matrixstats_get(call, dsmon_matrixdsstats_get_1, getType);
}

} // namespace

PHP_FUNCTION(dsmon_matrixctl_get) { php_dsmon_matrixctl_get(CALL, GET); }
PHP_FUNCTION(dsmon_matrixctl_getnext) { php_dsmon_matrixctl_get(CALL, GETNEXT); }
PHP_FUNCTION(dsmon_matrixctl_set) { php_dsmon_matrixctl_set(CALL); }
PHP_FUNCTION(dsmon_matrixsdstats_get) { php_dsmon_matrixsdstats_get(CALL, GET); }
PHP_FUNCTION(dsmon_matrixsdstats_getnext) { php_dsmon_matrixsdstats_get(CALL, GETNEXT); }
PHP_FUNCTION(dsmon_matrixdsstats_get) { php_dsmon_matrixdsstats_get(CALL, GET); }
PHP_FUNCTION(dsmon_matrixdsstats_getnext) { php_dsmon_matrixdsstats_get(CALL, GETNEXT); }
