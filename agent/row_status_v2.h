/*
 * RowStatus (RFC 2579), by which scripts set the rows of RFC 2021 and of the
 * later MIBs, in terms of the agent's own row-status rules (row_status.h):
 *
 *   active          valid
 *   notInService    underCreation
 *   createAndGo     createRequest, then valid; a row that cannot start is not made
 *   createAndWait   createRequest
 *   destroy         invalid
 *
 * The tables' handlers know the agent's own rules only; the procedures' lines
 * put these adapters around them.
 */
#pragma once

#include "agent/row_status.h"

#include <cstdint>

enum class row_status_v2 : int32_t {
    active = 1,
    not_in_service = 2,
    not_ready = 3, // never shown: a row always has a value in each field
    create_and_go = 4,
    create_and_wait = 5,
    destroy = 6,
};

/** What a read shows of a row's state; 0 where there is no row. */
inline int32_t shown_v2(int32_t status)
{
    if (status == 0)
        return 0;
    const bool valid = static_cast<row_status>(status) == row_status::valid;
    return static_cast<int32_t>(valid ? row_status_v2::active : row_status_v2::not_in_service);
}

template <auto Handler, auto Status> struct with_row_status;

/** Read is a table's read of one control row, Status the field of the row's state. */
template <class Record, class Key, Record (*Read)(probe &, const Key &), int32_t Record::*Status>
struct with_row_status<Read, Status> {
    static Record read(probe &agent, const Key &key)
    {
        Record reply = Read(agent, key);
        reply.*Status = shown_v2(reply.*Status);
        return reply;
    }
};

/** Set is a table's set, Status the field of the wanted state. */
template <class Record, int32_t (*Set)(probe &, const Record &), int32_t Record::*Status>
struct with_row_status<Set, Status> {
    static int32_t set(probe &agent, const Record &request)
    {
        Record own = request; // borrows the request's texts
        const auto ask = [&](row_status wanted) {
            own.*Status = static_cast<int32_t>(wanted);
            return Set(agent, own);
        };
        switch (static_cast<row_status_v2>(request.*Status)) {
        case row_status_v2::active:
            return ask(row_status::valid);
        case row_status_v2::not_in_service:
            return ask(row_status::under_creation);
        case row_status_v2::create_and_wait:
            return ask(row_status::create_request);
        case row_status_v2::destroy:
            return ask(row_status::invalid);
        case row_status_v2::create_and_go: {
            int32_t error = ask(row_status::create_request);
            if (error != no_error)
                return error;
            error = ask(row_status::valid);
            if (error != no_error)
                ask(row_status::invalid);
            return error;
        }
        case row_status_v2::not_ready:
            break;
        }
        return bad_value;
    }
};
