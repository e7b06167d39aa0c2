<?php

// SPDX-License-Identifier: MIT

/*
 * What the module's reads may cost, as ratios of times within one run. A gate
 * is what script/bench fails for, a goal what is still to be reached.
 */

declare(strict_types=1);

/** Rows of 13 keys or fewer, with addresses. */
const ADDRESSED = [1 => [0.95, 0.90], 10 => [0.85, 0.80], 100 => [0.60, 0.50], 1000 => [0.45, 0.37]];
/** Rows of more keys, for which the engine has memory for 32. */
const LONG = [1 => [1.05], 10 => [1.00], 100 => [0.80], 1000 => [0.50, 0.42]];

/** Of the plain C client that only decodes and frees: table => rows => [gate, goal]. */
const OF_RAW = [
    'nlhost' => ADDRESSED,
    'etherhistory' => LONG,
    'host' => ADDRESSED,
    'matrix_sd' => ADDRESSED,
    'almatrix_sd' => ADDRESSED,
    'art_rpt' => LONG,
    'h323_phone_rec' => [1 => [0.33], 10 => [0.16], 100 => [0.12, 0.10]],
    'sccp_phone_rec' => [1 => [0.33], 10 => [0.16], 100 => [0.17]],
    'mgcp_call_rec' => [1 => [0.33], 10 => [0.16], 100 => [0.12, 0.10]],
    'aggprofs' => [64 => [1.05]],
    'pconnect' => [1 => [1.05]],
];

/** Of the same client with the engine's add_assoc calls behind it, where it converts the rows: rows => gate. */
const OF_NAIVE = [1 => 1.00, 10 => 0.85, 100 => 0.45, 1000 => 0.25];

/** What the narrow rows of one reply may take of the engine's memory, bytes a row. */
const MOST_BYTES_A_ROW = 1000;

/** A page with one call over a persistent link through php-fpm, of an empty page. */
const GOAL_OF_PAGE = 1.67;

/** The processor time of PHP's own snmp extension for as many values, of the module's: at least. */
const LEAST_OF_SNMP = 100;
