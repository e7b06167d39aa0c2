<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * For the console's tests: the agents of the library's tests, the console's classes, and the console as it is served.
 */

require_once __DIR__ . '/../library/bootstrap.php';
require_once __DIR__ . '/../process.inc';
require_once __DIR__ . '/../../console/autoload.php';
require_once __DIR__ . '/Answer.php';
require_once __DIR__ . '/Served.php';
require_once __DIR__ . '/ConsoleTestCase.php';
