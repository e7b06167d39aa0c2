/*
 * Calls over a connected TCP handle of the RPC library.
 *
 * The library makes the connection; the calls on it are made here, because an
 * agent is not trusted. The library's own client
 *
 * - loses the block that it allocates for the verifier of every reply that it
 *   skips or refuses: here a verifier is read into the frame of the call;
 * - begins its time-out anew with every byte that arrives: here it is the
 *   whole call's;
 * - takes two empty fragments for a success without a result, and loses its
 *   place in the stream when a call gives up, so that the reply to the next
 *   one is skipped: here records are taken apart anew, and a call may give up
 *   between any two bytes;
 * - reads a result for as long as it goes on: here 256 MB are the most.
 *
 * Its words for a failure are the same.
 */
#pragma once

#include <cstdint>

#include <rpc/auth.h>
#include <rpc/clnt.h>

/**
 * A handle for calls of this program on connection, which it owns from now on:
 * clnt_destroy ends both. Null when there is no memory; the connection is
 * destroyed then. Errors, clnt_sperror's words included, are the library's.
 */
CLIENT *client_over(CLIENT *connection, uint32_t program, uint32_t version);
