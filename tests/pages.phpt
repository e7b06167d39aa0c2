--TEST--
Every function's page: what it says of the result is what scripts get, down to the order of the keys
--CONFLICTS--
appliance
--FILE--
<?php
require __DIR__ . '/exchange.inc';

// ---- the types in which pages describe results

/** @return list<mixed> the alternatives of a type: a word, a number, ['list', type], ['keys', key => type] */
function parse(string &$text): array
{
    $alternatives = [];
    do {
        $alternatives[] = match (true) {
            taken($text, 'array\{') !== null => ['keys', parse_keys($text)],
            taken($text, 'array<int, ') !== null, taken($text, 'list<') !== null => parse_elements($text),
            default => taken($text, '[\w-]+') ?? throw new ValueError("no type: $text"),
        };
    } while (taken($text, '\|') !== null);
    return $alternatives;
}

/** What of the text's beginning matches the pattern, which is taken off with the space around it. */
function taken(string &$text, string $pattern): ?string
{
    if (!preg_match("~^\\s*($pattern)\\s*~", $text, $found)) {
        return null;
    }
    $text = substr($text, strlen($found[0]));
    return $found[1];
}

function parse_elements(string &$text): array
{
    $type = parse($text);
    taken($text, '>') ?? throw new ValueError("no > at: $text");
    return ['list', $type];
}

/** @return array<array> types by key; a key that may be absent has a ? behind it */
function parse_keys(string &$text): array
{
    $keys = [];
    while (taken($text, '\}') === null) {
        $key = taken($text, '\w+\??(?=:)') ?? throw new ValueError("no key: $text");
        taken($text, ':');
        $keys[$key] = parse($text);
        taken($text, ',');
    }
    return $keys;
}

/** @return list<string> why the value is of none of these alternatives; empty when it is of one */
function mismatches(array $alternatives, mixed $value, string $path): array
{
    $reasons = array_map(fn(mixed $type) => match (true) {
        is_array($type) && !is_array($value) => ["$path is no array"],
        is_array($type) && $type[0] === 'list' => element_mismatches($type[1], $value, $path),
        is_array($type) => key_mismatches($type[1], $value, $path),
        in_array($type, [get_debug_type($value), var_export($value, true)], true) => [],
        default => ["$path is " . describe($value) . ", not $type"],
    }, $alternatives);
    return in_array([], $reasons, true) ? [] : $reasons[0];
}

function element_mismatches(array $type, array $value, string $path): array
{
    $found = [];
    foreach ($value as $key => $element) {
        array_push($found, ...(is_int($key) ? [] : ["$path has the key $key"]), ...mismatches($type, $element, "{$path}[$key]"));
    }
    return $found;
}

function key_mismatches(array $keys, array $value, string $path): array
{
    $expected = [];
    $found = [];
    foreach ($keys as $key => $type) {
        $name = rtrim((string) $key, '?');
        if ($name !== (string) $key && !array_key_exists($name, $value)) {
            continue;
        }
        $expected[] = $name;
        if (array_key_exists($name, $value)) {
            array_push($found, ...mismatches($type, $value[$name], "{$path}[$name]"));
        }
    }
    $got = array_map(strval(...), array_keys($value));
    return $got === $expected ? $found : ["$path has the keys " . implode(', ', $got) . ', not ' . implode(', ', $expected)];
}

// ---- the pages

$stub = file_get_contents(dirname(__DIR__) . '/rmon/rmon.stub.php');
preg_match_all('~^/\*\*\n((?: \*[^\n]*\n)+?) \*/\nfunction (\w+)\(([^)]*)\)~m', $stub, $pages, PREG_SET_ORDER);
$texts = [];
foreach ($pages as [, $page, $name]) {
    $texts[$name] = preg_replace('/\s+/', ' ', preg_replace('/^ \* ?/m', '', $page));
}
expect_same(get_extension_funcs('rmon'), array_keys($texts));

/** The type of a result; that of a row is often told by another function's page. */
function result_of(array $texts, string $name): array
{
    $type = strstr($texts[$name], '@return ');
    taken($type, '@return');
    $alternatives = parse($type);
    if (!preg_match('/(?:See|a row of|the keys of) (\w+)\(\)/', $texts[$name], $other)) {
        return $alternatives;
    }
    $rows = array_values(array_filter(result_of($texts, $other[1]), is_array(...)));
    return array_merge(...array_map(fn(mixed $type) => match ($type) {
        'array' => $rows,
        ['list', ['array']] => [['list', array_slice($rows, 0, 1)]],
        default => [$type],
    }, $alternatives));
}

// ---- what scripts get: without a link, without an answer, and of replies whose units are all 0 or all 1

$ones = str_repeat(u32(1), 9000);
$zeros = str_repeat(u32(0), 9000);
$answers = [
    'no answer' => proc_unavail(),
    // Each count and each length is 1, and so is a status, which many take for a refusal.
    'ones' => reply($ones),
    'ones but the status' => reply(u32(0) . $ones),
    // Each list and each text is empty, and so are the rows of those that have any.
    'zeros' => reply($zeros),
    'a row of zeros' => reply(u32(1) . $zeros),
];
// Links to one host are one link; it has other names for those to further agents.
$hosts = ['127.0.0.1', '127.0.1', '127.1', '0x7f000001', '2130706433'];
$links = [];
foreach ($answers as $case => $answer) {
    scripted_agent(always($answer));
    $links[$case] = rmon_connect(array_shift($hosts));
}

foreach ($pages as [, , $name, $declared]) {
    if (!preg_match('/^\s*\$connid\b/', $declared)) {
        continue;
    }
    $alternatives = result_of($texts, $name);
    $count = preg_match_all('/\$\w+(?! = UNKNOWN)\b/', $declared);
    $shown = false;
    $check = function (string $case, mixed ...$arguments) use ($name, $alternatives, &$shown): void {
        [$value] = warnings(fn() => $name(...$arguments));
        $reasons = mismatches($alternatives, $value, $name);
        if ($reasons !== []) {
            fail("with $case the result is not as its page says", ...$reasons);
        }
        // Neither [], nor an empty list under a key, nor [0 => -1, "status" => -1].
        $shown = $shown || (is_array($value) && !in_array($value ? end($value) : [], [[], -1], true));
    };
    $check('no arguments');
    foreach (['no link' => NO_LINK] + $links as $case => $link) {
        // Arguments are numbers, texts that are addresses too, or lists.
        foreach ([1, '1', ['1']] as $other) {
            $check($case, $link, ...array_fill(0, $count - 1, $other));
        }
    }
    $shows = array_filter($alternatives, is_array(...)) !== [];
    expect_same($shows, $shown, "whether $name was seen to return anything in an array");
}
done();
--EXPECT--
OK
