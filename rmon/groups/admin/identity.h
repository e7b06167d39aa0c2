/* The appliance's identity, as its settings file tells. */
#pragma once

#include <cstdint>

/* The kinds of appliance that have a network configuration of their own. */
inline constexpr int32_t NORV_TARGET_NORV2_AP = 3;
inline constexpr int32_t NORV_TARGET_NORV1_AP = 4;
inline constexpr int32_t NORV_TARGET_VELDRIN = 7;

/**
 * The platform code, -1 when there is none. The settings file is read once, and
 * again at each call until a code was found; that it can't be read is reported.
 */
int32_t target_identity();
