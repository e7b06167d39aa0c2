/*
 * Calls over a connected TCP handle of the RPC library.
 *
 * The library makes the connection; the calls on it are made here, because an
 * agent is not trusted: the library's own client loses the block that it
 * allocates for the verifier of every reply that it skips or refuses, and
 * begins its time-out anew with every byte that arrives. Here a verifier is
 * read into the frame of the call, and the time-out is that of the whole call.
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
