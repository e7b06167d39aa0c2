// SPDX-License-Identifier: MIT
/*
 * A voice scenario: phones and calls in a text file, in the place of decoded
 * signalling. Its form is described in the file that comes with the agent,
 * voice.ini.
 */
#pragma once

#include "agent/voice/calls.h"

#include <string>

/** Reads a scenario. An empty text, or what is wrong in one line. */
std::string read_scenario(voice_scenario &scenario, const std::string &path);
