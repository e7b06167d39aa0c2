--TEST--
Scripts that close the link, or call the module again, while an argument is converted
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../tables.inc';

/** Does something when it is made a text or, through the error handler, an integer. */
final class Intruder
{
    public static ?Closure $deed = null;

    public static function act(): void
    {
        [$deed, self::$deed] = [self::$deed, null];
        $deed && $deed();
    }

    public function __toString(): string
    {
        self::act();
        return 'text';
    }
}

/** Runs a call while $deed waits for the first conversion of an intruder; returns its result and the messages. */
function intruded(Closure $deed, Closure $call): array
{
    Intruder::$deed = $deed;
    $messages = [];
    set_error_handler(function (int $level, string $text) use (&$messages): bool {
        $messages[] = $text;
        if ($text === 'Object of class Intruder could not be converted to int') {
            Intruder::act();
        }
        return true;
    });
    $result = $call();
    restore_error_handler();
    return [$result, array_values(array_diff($messages, ['Object of class Intruder could not be converted to int']))];
}

$agent = the_agent();
the_link();
$bad = new Intruder;
$calls = [
    'rmon_pdir_getbulk' => [[], [], $bad],
    'rmon_pdir_byidx_get' => [$bad],
    'rmon_pdir_set' => [[1], [2], $bad, 1, 2, 3, 4, 'owner', 5],
    'rmon_pdist_ctl_get' => [$bad],
    'rmon_pdist_ctl_set' => [1, 2, $bad, 3],
    'rmon_pdist_stats_getbulk' => [1, 2, $bad],
    'rmon_pdist_stats_getothers' => [$bad],
    'rmon_addrmap_scalars_set' => [$bad],
    'rmon_addrmap_ctl_get' => [$bad],
    'rmon_addrmap_ctl_set' => [1, 2, $bad, 3],
    'rmon_addrmap_entry_get' => [1, 2, [$bad, 4], 3],
    'rmon_addrmap_entry_getbulk' => [1, $bad, [4], 3, 5],
    'rmon_hlhost_ctl_get' => [$bad],
    'rmon_hlhost_ctl_set' => [1, 2, 3, 4, $bad, 5],
    'rmon_nlhost_get' => [1, 2, 3, [$bad, 4]],
    'rmon_alhost_getnext' => [1, 2, 3, [4, $bad], 5],
    'rmon_hlmatrix_ctl_get' => [$bad],
    'rmon_hlmatrix_ctl_set' => [1, 2, 3, 4, $bad, 5],
    'rmon_nlmatrix_sd_get' => [1, 2, 3, [$bad], [4]],
    'rmon_almatrix_ds_getbulk' => [1, 2, 3, [4], [$bad], 5, 6],
];
foreach ($calls as $name => $arguments) {
    of("$name on a link closed meanwhile", function () use ($name, $arguments, $agent) {
        $link = rmon_connect("127.0.0.1");
        $id = (int) $link;
        $before = count($agent->calls());
        $close = function () use (&$link) {
            while (is_resource($link)) {
                rmon_close($link);
            }
        };
        expect_same(
            [false, ["$id is not a RMON/RPC conn id!"]],
            intruded($close, fn() => $name($link, ...$arguments)),
            'result and messages',
        );
        expect_same($before, count($agent->calls()), 'number of calls at the agent');
    });
}

// A call within a call, and a script that takes the array away that is being converted.
$link = rmon_connect('127.0.0.1');
$row = fn(int $address) => record(
    status: i32(0), timeMark: u32(1), nlHostAddress: byte_list([$address]), inPkts: u64(2), outPkts: u64(3),
    inOctets: u64(4), outOctets: u64(5), outMacNonUnicastPkts: u64(6), createTime: u32(7), hlHostControlIndex: i32(8),
    protocolDirLocalIndex: i32(9), protocolDirLocalIndex2: i32(10),
);
$request = fn(int $index, array $address) => record(
    hlHostControlIndex: i32($index), timeMark: u32(2), protocolDirLocalIndex: i32(3), protocolDirLocalIndex2: i32(0),
    nlHostAddress: byte_list($address), getType: i32(1), applicationLayer: i32(0), count: i32(1),
);
$before = count($agent->calls());
$agent->add(reply(rows($row(44))), reply(rows($row(55))));
$address = ['4', new Intruder, '6'];
$inner = null;
[$outer, $messages] = intruded(
    function () use (&$inner, &$address, $link) {
        $address = null;
        $inner = rmon_nlhost_get($link, 10, 2, 3, [9]);
    },
    function () use (&$address, $link) {
        return rmon_nlhost_get($link, 11, 2, 3, $address);
    },
);
expect_same([[44], [55], []], [$inner['nlHostAddress'], $outer['nlHostAddress'], $messages], 'both rows');
expect_call($agent, $before + 1, 34, $request(10, [9]));
expect_call($agent, $before + 2, 34, $request(11, [4, 1, 6]));
done();
?>
--EXPECT--
OK
