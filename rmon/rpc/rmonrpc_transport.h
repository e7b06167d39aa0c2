// SPDX-License-Identifier: MIT
/*
 * Calls over TCP, by handles of the RPC library.
 *
 * The library's own client is not used, because an agent is not trusted. That
 * client
 *
 * - loses the block that it allocates for the verifier of every reply that it
 *   skips or refuses: here a verifier is read into the frame of the call;
 * - begins its time-out anew with every byte that arrives: here it is the
 *   whole call's;
 * - takes two empty fragments for a success without a result, and loses its
 *   place in the stream when a call gives up, so that the reply to the next
 *   one is skipped: here records are taken apart anew, and a call may give up
 *   between any two bytes;
 * - waits on after an answer of a kind that it doesn't know: here the call
 *   fails;
 * - reads a result for as long as it goes on: here 256 MB are the most;
 * - binds one of the few reserved ports to its socket, and connects for as
 *   long as the kernel tries;
 * - has buffers of 128 KB for each handle: here all handles share theirs.
 *
 * Its words for a failure are the same.
 *
 * A handle belongs to the process that connected it: two processes on one
 * connection would take each other's replies. Where processes fork,
 * leave_links_to_parent() is to be called in the child.
 */
#pragma once

#include <cstdint>

#include <netinet/in.h>
#include <sys/time.h>

#include <rpc/auth.h>
#include <rpc/clnt.h>

/**
 * Connects to address and makes a handle for calls of this program, all of it
 * before the time is up. A port of 0 is the one that the port mapper there
 * knows. Null on failure; clnt_spcreateerror tells why.
 *
 * Connecting and each call end after RMONRPC_TIMEOUT milliseconds, where the
 * environment has that and their own time-out is longer.
 */
CLIENT *connect_client(sockaddr_in address, uint32_t program, uint32_t version, timeval timeout);

/**
 * A handle over a connected socket, which it owns from now on: clnt_destroy
 * ends both. Null when there is no memory; the socket is closed then.
 */
CLIENT *client_over(int socket, uint32_t program, uint32_t version);

/** False for a handle that a parent process connected: calls on it fail. */
bool of_this_process(CLIENT *client);

/**
 * Closes the sockets of all handles, of which the parent has its own: nothing
 * is sent. For the child of a fork.
 */
void leave_links_to_parent();
