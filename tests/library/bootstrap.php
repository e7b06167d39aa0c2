<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * For the library's tests: the library, the scripted agent and the bundled one with its capture files.
 */

require_once __DIR__ . '/../../library/autoload.php';
require_once __DIR__ . '/../agent.inc';
require_once __DIR__ . '/../agent/client.inc';
require_once __DIR__ . '/../agent/captures.inc';
require_once __DIR__ . '/../process.inc';
require_once __DIR__ . '/AgentTestCase.php';
require_once __DIR__ . '/Demo.php';
