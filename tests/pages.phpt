--TEST--
Every function's page: what it says of the result is what scripts get, down to the order of the keys
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/exchange.inc';

use PHPStan\PhpDocParser\Ast\Type\ArrayShapeNode;
use PHPStan\PhpDocParser\Ast\Type\ConstTypeNode;
use PHPStan\PhpDocParser\Ast\Type\GenericTypeNode;
use PHPStan\PhpDocParser\Ast\Type\IdentifierTypeNode;
use PHPStan\PhpDocParser\Ast\Type\TypeNode;
use PHPStan\PhpDocParser\Ast\Type\UnionTypeNode;
use PHPStan\PhpDocParser\Lexer\Lexer;
use PHPStan\PhpDocParser\Parser\ConstExprParser;
use PHPStan\PhpDocParser\Parser\PhpDocParser;
use PHPStan\PhpDocParser\Parser\TokenIterator;
use PHPStan\PhpDocParser\Parser\TypeParser;
use PHPStan\PhpDocParser\ParserConfig;

// ---- the types of results, as static analysers read them

/** Types by the names of the functions. */
function result_types(string $stub): array
{
    // The library of Debian 12 is older than the engines that deprecate some of what it does.
    error_reporting(E_ALL & ~E_DEPRECATED);
    require 'PHPStan/PhpDocParser/autoload.php';
    $settings = class_exists(ParserConfig::class) ? [new ParserConfig([])] : [];
    $lexer = new Lexer(...$settings);
    $constants = new ConstExprParser(...$settings);
    $parser = new PhpDocParser(...[...$settings, new TypeParser(...[...$settings, $constants]), $constants]);

    $types = [];
    preg_match_all('~^(/\*\*\n(?: \*[^\n]*\n)+? \*/)\nfunction (\w+)\(~m', $stub, $pages, PREG_SET_ORDER);
    foreach ($pages as [, $page, $name]) {
        $results = $parser->parse(new TokenIterator($lexer->tokenize($page)))->getReturnTagValues();
        expect_same(1, count($results), "number of results on the page of $name that can be read");
        $types[$name] = $results[0]->type;
    }
    error_reporting(E_ALL);
    return $types;
}

/** @return list<TypeNode> */
function alternatives(TypeNode $type): array
{
    return $type instanceof UnionTypeNode ? $type->types : [$type];
}

/** @return list<string> why the value is not of the type; empty when it is */
function mismatches(TypeNode $type, mixed $value, string $path): array
{
    return match (true) {
        $type instanceof UnionTypeNode => union_mismatches($type, $value, $path),
        $type instanceof ArrayShapeNode => shape_mismatches($type, $value, $path),
        $type instanceof GenericTypeNode => element_mismatches($type, $value, $path),
        $type instanceof ConstTypeNode && $value === (int) (string) $type => [],
        // A bare array fits nothing: it says too little.
        $type instanceof IdentifierTypeNode && in_array($type->name, scalar_types($value), true) => [],
        default => ["$path is " . describe($value) . ", not $type"],
    };
}

/** @return list<string> the names of types that hold a value that is no array */
function scalar_types(mixed $value): array
{
    return match (true) {
        is_bool($value) => [$value ? 'true' : 'false'],
        is_resource($value) => ['resource'],
        is_array($value) => [],
        default => [get_debug_type($value)],
    };
}

function union_mismatches(UnionTypeNode $type, mixed $value, string $path): array
{
    $reasons = array_map(fn(TypeNode $each) => mismatches($each, $value, $path), $type->types);
    return in_array([], $reasons, true) ? [] : $reasons[0];
}

/** Of list<Element> and array<int, Element>. */
function element_mismatches(GenericTypeNode $type, mixed $value, string $path): array
{
    $keys = is_array($value) ? array_keys($value) : [null];
    $fits = $type->type->name === 'list' ? $keys === array_keys($keys) : array_filter($keys, is_int(...)) === $keys;
    if (!$fits) {
        return ["$path is " . describe($value) . ", not $type"];
    }
    $found = [];
    foreach ($value as $i => $element) {
        array_push($found, ...mismatches(array_slice($type->genericTypes, -1)[0], $element, "{$path}[$i]"));
    }
    return $found;
}

/** The keys must stand in the order of the type. */
function shape_mismatches(ArrayShapeNode $type, mixed $value, string $path): array
{
    if (!is_array($value)) {
        return ["$path is no array"];
    }
    $expected = [];
    $found = [];
    foreach ($type->items as $item) {
        $key = (string) $item->keyName;
        if ($item->optional && !array_key_exists($key, $value)) {
            continue;
        }
        $expected[] = $key;
        if (array_key_exists($key, $value)) {
            array_push($found, ...mismatches($item->valueType, $value[$key], "{$path}[$key]"));
        }
    }
    $got = array_map(strval(...), array_keys($value));
    return $got === $expected ? $found : ["$path has the keys " . implode(', ', $got) . ', not ' . implode(
        ', ',
        $expected,
    )];
}

$stub = file_get_contents(dirname(__DIR__) . '/rmon/rmon.stub.php');
$types = result_types($stub);
expect_same(get_extension_funcs('rmon'), array_keys($types), 'functions with a type of their result');

// ---- the constants

preg_match_all('/^const (\w+) = (\d+);$/m', $stub, $constants);
$declared = array_combine($constants[1], array_map(intval(...), $constants[2]));
expect_same(get_defined_constants(true)['rmon'], $declared, 'constants of the stub');

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

foreach ($types as $name => $type) {
    $function = new ReflectionFunction($name);
    if (($function->getParameters()[0] ?? null)?->getName() !== 'connid') {
        continue;
    }
    $count = $function->getNumberOfRequiredParameters();
    $shown = false;
    $check = function (string $case, mixed ...$arguments) use ($name, $type, &$shown): void {
        [$value] = warnings(fn() => $name(...$arguments));
        $reasons = mismatches($type, $value, $name);
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
    $shows = array_filter(
        alternatives($type),
        fn(TypeNode $each) => $each instanceof ArrayShapeNode || $each instanceof GenericTypeNode,
    ) !== [];
    expect_same($shows, $shown, "whether $name was seen to return anything in an array");
}
done();
--EXPECT--
OK
