// SPDX-License-Identifier: MIT
/* Packet capture (RFC 2819, bufferControlTable and captureBufferTable), and saving what was captured. */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using C = rmonrpc_buffer_ctl_t;

using buffer_ctl_row = row_shape<
    status<&C::status>,
    field<&C::bufferControlIndex>,
    field<&C::bufferControlChannelIndex>,
    field<&C::bufferControlFullStatus>,
    field<&C::bufferControlFullAction>,
    field<&C::bufferControlCaptureSliceSize>,
    field<&C::bufferControlDownloadSliceSize>,
    field<&C::bufferControlDownloadOffset>,
    field<&C::bufferControlMaxOctetsRequested>,
    field<&C::bufferControlMaxOctetsGranted>,
    field<&C::bufferControlCapturedPackets>,
    field<&C::bufferControlTurnOnTime>,
    field<&C::bufferControlOwner>,
    field<&C::bufferControlStatus>>;

void buffer_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<buffer_ctl_row>(call, ask(call, buffer_ctl_get_1, link, key, "buffer_ctl_get"));
}

using P = rmonrpc_capturebuf_t;

/** Shows the time before the length and the data last, unlike the record. */
using capture_buf_row = row_shape<
    status<&P::status>,
    field<&P::captureBufferControlIndex>,
    field<&P::captureBufferIndex>,
    field<&P::captureBufferPacketID>,
    field<&P::captureBufferPacketTime>,
    field<&P::captureBufferPacketLength>,
    field<&P::captureBufferPacketStatus>,
    field<&P::captureBufferPacketHighCapacityTime>,
    field<&P::captureBufferPacketData>>;

void capture_buf_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key3_t key{0, 0, getType};
    if (take(call, link, key.index1, key.index2))
        return_row<capture_buf_row>(call, ask(call, capture_buf_get_1, link, key, "capture_buf_get"));
}

using S = rmonrpc_capture_save_result_t;

/** Shows the number of packets first, unlike the record. */
using capture_save_row = row_shape<
    indexed<0, &S::totalPktsSaved>,
    field<&S::totalPktsSaved>,
    indexed<1, &S::lastPktIndex>,
    field<&S::lastPktIndex>>;

} // namespace

PHP_FUNCTION(rmon_buffer_ctl_get) { buffer_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_buffer_ctl_getnext) { buffer_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_buffer_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take_linked(
            call, link, row.bufferControlIndex, row.bufferControlChannelIndex, row.bufferControlFullAction,
            row.bufferControlCaptureSliceSize, row.bufferControlDownloadSliceSize,
            row.bufferControlDownloadOffset, row.bufferControlMaxOctetsRequested, row.bufferControlOwner,
            row.bufferControlStatus))
        return_integer(call, ask(call, buffer_ctl_set_1, link, row, "rmon_buffer_ctl_set"));
}

PHP_FUNCTION(rmon_capture_buf_get) { capture_buf_get(CALL, GET); }
PHP_FUNCTION(rmon_capture_buf_getnext) { capture_buf_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_capture_save_file)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_capture_save_key_t key;
    // The first value is converted before the name in front of it.
    if (counted(call, 6) && convert_from(call, 1, link) && convert_from(call, 3, key.saveValue1)
        && convert_from(call, 2, key.fileName)
        && convert_from(call, 4, key.saveValue2, key.saveValue3, key.saveOption))
        return_row<capture_save_row>(
            call, ask(call, capture_save_file_2, link, key, "rmon_capture_save_file"));
}
