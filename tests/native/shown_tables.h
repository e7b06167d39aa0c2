// SPDX-License-Identifier: MIT
/* What an agent's tables hold, as text that can be compared. */
#pragma once

#include <string>

struct probe;

/** Everything, as a read would show it now; each control table has to have a row 1. */
std::string tables_of(probe &agent);

/** The first lines in which two such texts differ, behind the name of their table. */
std::string difference(const std::string &one, const std::string &other);
