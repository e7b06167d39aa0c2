--TEST--
rmon_connect: a host by its name, which is a link beside the one by its address
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_localhost();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

$agent = scripted_agent();
$link = rmon_connect('127.0.0.1');
$named = rmon_connect('localhost');
expect_same('RMON RPC link', get_resource_type($named), 'a name that resolves');
expect_same(false, get_resource_id($link) === get_resource_id($named), 'another link');
expect_same(2, $agent->connections(), 'a connection for each');
expect_same(get_resource_id($named), get_resource_id(rmon_connect('localhost')), 'the same name, the same link');
done();
--EXPECT--
OK
