// SPDX-License-Identifier: MIT
// usage: fault none|leak|heap|signed

#include "tests/native/fault/fault.h"

int main(int argc, char **argv)
{
    return argc == 2 && commit_fault(argv[1]) ? 0 : 2;
}
