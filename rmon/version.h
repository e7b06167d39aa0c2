// SPDX-License-Identifier: MIT
/* The version of all that this tree yields. */
#pragma once

#define RMON_VERSION "0.1.0"
