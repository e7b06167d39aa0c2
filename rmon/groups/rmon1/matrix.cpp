// SPDX-License-Identifier: MIT
/* Matrix (RFC 2819, matrixControlTable, matrixSDTable and matrixDSTable). */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using C = rmonrpc_matrix_ctl_t;

using matrix_ctl_row = row_shape<
    status<&C::status>,
    field<&C::matrixControlIndex>,
    field<&C::matrixControlDataSource>,
    field<&C::matrixControlTableSize>,
    field<&C::matrixControlLastDeleteTime>,
    field<&C::matrixControlOwner>,
    field<&C::matrixControlStatus>>;

void matrix_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<matrix_ctl_row>(call, ask(call, matrix_ctl_get_1, link, key, "matrix_ctl_get"));
}

using M = rmonrpc_matrix_t;

/** A conversation under the names of one view. */
template <key_text Source, key_text Dest, key_text Index, key_text Pkts, key_text Octets, key_text Errors>
using matrix_row = row_shape<
    status<&M::status>,
    named_address_or_zero<Source, &M::sourceAddress>,
    named_address_or_zero<Dest, &M::destAddress>,
    named<Index, &M::index>,
    named<Pkts, &M::pkts>,
    named<Octets, &M::octets>,
    named<Errors, &M::errors>>;

using matrix_sd_row = matrix_row<
    "matrixSDSourceAddress",
    "matrixSDDestAddress",
    "matrixSDIndex",
    "matrixSDPkts",
    "matrixSDOctets",
    "matrixSDErrors">;

using matrix_ds_row = matrix_row<
    "matrixDSSourceAddress",
    "matrixDSDestAddress",
    "matrixDSIndex",
    "matrixDSPkts",
    "matrixDSOctets",
    "matrixDSErrors">;

/** The source is converted before the destination is counted: it stays converted where that one is refused.
 */
void matrix_get(script_call call, int32_t getType, int32_t direction)
{
    link_id link;
    int32_t index, count;
    zval *source, *dest;
    address sourceAddress, destAddress;
    if (!take_rows(call, getType, count, link, index, source, dest) || !connected(call, link)
        || !convert(call, source, sourceAddress) || !convert(call, dest, destAddress))
        return;
    const rmonrpc_matrix_key_t key{index,    list_of(sourceAddress), list_of(destAddress), count, getType,
                                   direction};
    rmonrpc_matrix_arr_t *reply = ask(call, matrix_get_1, link, key, "matrix_getbulk");
    if (direction == MATRIX_SD)
        return_rows<matrix_sd_row>(call, reply, getType);
    else
        return_rows<matrix_ds_row>(call, reply, getType);
}

} // namespace

PHP_FUNCTION(rmon_matrix_ctl_get) { matrix_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_matrix_ctl_getnext) { matrix_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_matrix_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take(
            call, link, row.matrixControlIndex, row.matrixControlDataSource, row.matrixControlOwner,
            row.matrixControlStatus))
        return_integer(call, ask(call, matrix_ctl_set_1, link, row, "rmon_matrix_ctl_set"));
}

PHP_FUNCTION(rmon_matrix_sd_get) { matrix_get(CALL, GET, MATRIX_SD); }
PHP_FUNCTION(rmon_matrix_sd_getnext) { matrix_get(CALL, GETNEXT, MATRIX_SD); }
PHP_FUNCTION(rmon_matrix_sd_getbulk) { matrix_get(CALL, GETBULK, MATRIX_SD); }
PHP_FUNCTION(rmon_matrix_ds_get) { matrix_get(CALL, GET, MATRIX_DS); }
PHP_FUNCTION(rmon_matrix_ds_getnext) { matrix_get(CALL, GETNEXT, MATRIX_DS); }
PHP_FUNCTION(rmon_matrix_ds_getbulk) { matrix_get(CALL, GETBULK, MATRIX_DS); }
