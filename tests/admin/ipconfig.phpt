--TEST--
The appliance's IPv4 configuration
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/appliance.inc';

put_plain_settings();

/** An address as it travels: the word that its bytes are in memory, here on a little-endian machine. */
function in_addr(string $address): string
{
    return strrev(inet_pton($address));
}

function ipconfig(
    int $status,
    string $address,
    string $netmask,
    string $broadcast,
    string $gateway,
    int $interface,
): string {
    return record(
        status: i32($status),
        ipAddress: in_addr($address),
        ipNetmask: in_addr($netmask),
        ipBroadcast: in_addr($broadcast),
        ipGateway: in_addr($gateway),
        ipInterface: u32($interface),
    );
}

expect_same("\x03\x02\x01\x0a", in_addr('10.1.2.3'));

// ---- rmon_get_ipconfig

$function = 'rmon_get_ipconfig';
$cases = [
    [0, '10.1.2.3', '255.255.255.0', '10.1.2.255', '10.1.2.1', 7],
    [-5, '0.0.0.0', '255.0.0.99', '127.100.10.9', '192.168.200.254', 0x80000007],
];
foreach ($cases as [$status, $address, $netmask, $broadcast, $gateway, $interface]) {
    $step = reply(ipconfig($status, $address, $netmask, $broadcast, $gateway, $interface));
    expect_exchange(
        function: $function,
        arguments: [],
        procedure: 62,
        request: i32(0),
        step: $step,
        value: [
            0 => $status,
            'status' => $status,
            'ipAddress' => $address,
            'ipNetmask' => $netmask,
            'ipBroadcast' => $broadcast,
            'ipGateway' => $gateway,
            'ipInterface' => $interface,
        ],
    );
}
expect_failures(function: $function, arguments: [], procedure: 62, request: i32(0), label: $function);
expect_counts($function, 1, 1);
expect_links_only($function, []);
expect_order($function, ['Link'], ['Link']);

// ---- rmon_set_ipconfig

$function = 'rmon_set_ipconfig';
$four = ['10.1.2.3', '255.255.255.0', '10.1.2.255', '10.1.2.1'];
expect_answers(
    function: $function,
    arguments: $four,
    procedure: 63,
    request: ipconfig(0, ...$four, interface: 0),
    label: $function,
);
expect_answers(
    function: $function,
    arguments: [...$four, 7],
    procedure: 63,
    request: ipconfig(0, ...$four, interface: 7),
    label: $function,
);
foreach (['7' => 7, -1 => 0xffffffff, 0x100000005 => 5] as $interface => $sent) {
    expect_exchange(
        function: $function,
        arguments: [...$four, $interface],
        procedure: 63,
        request: ipconfig(0, ...$four, interface: $sent),
        step: reply(i32(0)),
        value: 0,
    );
}
// Texts as inet_aton takes them, from any type.
$texts = [
    ['10.1', '0xffffff00', '167838207', '012.1.2.1'],
    [10.5, 255, "10.1.2.255\0x", true],
];
$addresses = [
    ['10.0.0.1', '255.255.255.0', '10.1.1.255', '10.1.2.1'],
    ['10.0.0.5', '0.0.0.255', '10.1.2.255', '0.0.0.1'],
];
foreach ($texts as $i => $four_texts) {
    expect_exchange(
        function: $function,
        arguments: $four_texts,
        procedure: 63,
        request: ipconfig(0, ...$addresses[$i], interface: 0),
        step: reply(i32(0)),
        value: 0,
    );
}

// The first text that is not an address stops the call.
$names = ['address', 'netmask', 'broadcast', 'gateway'];
foreach ($names as $i => $name) {
    foreach (['', 'x', '256.1.1.1', '1.2.3.4.5', '10.1.2.3x', null] as $wrong) {
        $arguments = $four;
        for ($j = $i; $j < 4; $j++) {
            $arguments[$j] = $wrong;
        }
        $messages = ["rmon_set_ipconfig: invalid IP $name!\n"];
        expect_no_call($function, [the_link(), ...$arguments], false, $messages);
        expect_no_call($function, [the_link(), ...$arguments, 5], false, $messages);
        expect_no_call($function, [the_link(), ...array_replace($four, [$i => $wrong])], false, $messages);
    }
}

expect_counts($function, 5, 6);
expect_links_only($function, ['x', 'x', 'x', 'x']);
expect_links_only($function, [...$four, 5]);
expect_order($function, ['Link', 'TextA', 'TextB', 'TextC', 'TextD'], ['Link']);
expect_order($function, ['Link', 'TextA', 'TextB', 'TextC', 'TextD', 'Number'], ['Number', 'Link']);
// All four are texts before the first is looked at.
$conversions = array_map(fn(string $name) => [E_USER_NOTICE, "Text$name as text"], ['A', 'B', 'C', 'D']);
$objects = array_map(observed(...), ['TextA', 'TextB', 'TextC', 'TextD']);
$messages = [...$conversions, "rmon_set_ipconfig: invalid IP address!\n"];
expect_no_call($function, [the_link(), ...$objects], false, $messages);
clear_appliance();
done();
--EXPECT--
OK
