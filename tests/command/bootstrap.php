<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * For the command's tests: the agents of the library's tests, the command's classes, and the command as a process.
 */

require_once __DIR__ . '/../library/bootstrap.php';
require_once __DIR__ . '/../process.inc';
require_once __DIR__ . '/../../command/autoload.php';
require_once __DIR__ . '/Run.php';
require_once __DIR__ . '/CommandTestCase.php';
