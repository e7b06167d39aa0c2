<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * For the exporter's tests: the agents of the library's tests, the exporter's classes, and a reader of what it writes.
 */

require_once __DIR__ . '/../library/bootstrap.php';
require_once __DIR__ . '/../../exporter/autoload.php';
require_once __DIR__ . '/OpenText.php';
require_once __DIR__ . '/ExporterTestCase.php';
