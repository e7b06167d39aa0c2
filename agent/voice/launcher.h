// SPDX-License-Identifier: MIT
/*
 * The launcher: a small process that starts the decoder of voice signalling
 * (decoder.h) when the agent asks for it.
 *
 * It is forked at the agent's very start, before a thread, a socket or a frame
 * is there, and gives up all rights, so that what takes apart packets of
 * strangers never had any: no file of the agent's, no capability, no way to
 * get one, and nobody's user where the agent is root's. The agent itself needs
 * neither fork nor exec from then on. It ends, with the decoder, when the
 * agent does.
 */
#pragma once

#include <sys/types.h>

#include <string>

struct voice_launcher {
    int socket = -1; // to the process; -1: there is none
    pid_t process = -1;
};

/** The ends of a decoder's pipes. */
struct decoder_pipes {
    int input = -1;  // of the decoder: what the agent writes to
    int output = -1; // of the decoder: what the agent reads
};

/** The path of the program that decodes, searched as a shell does; empty: it is not installed. */
std::string find_decoder();

/** Forks the launcher. False, with errno, when the kernel refuses. */
bool open_launcher(voice_launcher &launcher, const std::string &decoder);

/** Asks for a new decoder; the one before it is killed. The answer makes the socket readable. False when
 * the launcher is gone. */
bool ask_for_decoder(voice_launcher &launcher);

/** Takes the answer: no pipes when there is none, or the launcher could not make them. Gone: there is no
 * launcher any more. */
decoder_pipes take_decoder(voice_launcher &launcher, bool &gone);

/** Ends the launcher and its decoder. */
void close_launcher(voice_launcher &launcher);
