// SPDX-License-Identifier: MIT
/*
 * What the agent says on standard error: one line each, of what, where and why.
 *
 * A terminal or a file gets "rmon-agent: " before each line. The journal names
 * the program itself; it gets the level as a number in angle brackets instead.
 */
#pragma once

#include <string>

/** As syslog numbers them. */
enum class log_level {
    error = 3,   // something is lost, or the agent ends
    warning = 4, // something counts nothing, or not all
    notice = 5,  // what an administrator wants to know of a start
    info = 6,
};

void say(log_level level, const std::string &line);
