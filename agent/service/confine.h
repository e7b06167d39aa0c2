// SPDX-License-Identifier: MIT
/* What the agent gives up once all is open that it needs. */
#pragma once

#include <string>

struct confinement {
    std::string user; // whom to become; empty: nobody else
    bool may_capture; // keeps CAP_NET_RAW: interfaces that come later are opened then
};

/**
 * Becomes the user, drops every capability but the one to capture, rules out new
 * privileges and all system calls that the agent has no use for. What this
 * machine does not let it give up it keeps. One line tells what is left. An empty
 * text, or why it can't become the user, in one line; it must not run then.
 */
std::string confine(const confinement &wanted);
