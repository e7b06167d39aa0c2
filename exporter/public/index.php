<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Every address of the exporter leads here: by the web server's rules, and as the router script of PHP's own server.
 */

require __DIR__ . '/../autoload.php';

Rmon\Exporter\Exporter::serve();
