<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use PHPUnit\Framework\Attributes\DataProvider;
use PHPUnit\Framework\TestCase;
use ReflectionFunction;
use Rmon\Exception\UnknownName;
use Rmon\Schema\Catalog;
use Rmon\Schema\Column;
use Rmon\Schema\Shape;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

/** The descriptions of the tables against the module's functions and what their stub says of them. */
final class SchemaTest extends TestCase
{
    /** @return iterable<string, array{TableSchema}> */
    public static function tables(): iterable
    {
        foreach (Catalog::all() as $name => $schema) {
            yield $name => [$schema];
        }
    }

    /** @dataProvider tables */
    #[DataProvider('tables')]
    public function testKeysAndOrderAreColumns(TableSchema $schema): void
    {
        foreach ($schema->keys as $name => $key) {
            self::assertArrayHasKey($name, $schema->columns);
            self::assertSame($key->type, $schema->columns[$name]->type, "type of $name");
            if ($key->of !== null) {
                self::assertArrayHasKey($key->of, Catalog::all());
            }
        }
        $inRow = array_keys(array_filter($schema->keys, static fn($key) => $key->inRow && !$key->mark));
        self::assertEqualsCanonicalizing($inRow, $schema->order);
    }

    /** @dataProvider tables */
    #[DataProvider('tables')]
    public function testReadersTakeTheKeys(TableSchema $schema): void
    {
        $reader = $schema->reader;
        $keys = count($schema->keys) - (int) ($reader->shape === Shape::Map);
        foreach ([[$reader->get, 0], [$reader->getNext, 0], [$reader->getBulk, 1]] as [$function, $more]) {
            if ($function !== null) {
                self::assertSame(1 + $keys + $more, (new ReflectionFunction($function))->getNumberOfParameters());
            }
        }
        $family = preg_grep('/^' . preg_quote($reader->get, '/') . '(next|bulk)?$/D', get_extension_funcs('rmon'));
        $named = $reader->functions();
        self::assertEqualsCanonicalizing(array_values($family), $named, 'every reader of the family is named');
    }

    /** @dataProvider tables */
    #[DataProvider('tables')]
    public function testSettersTakeTheColumns(TableSchema $schema): void
    {
        $setters = $schema->writer?->setters() ?? [];
        $columns = $schema->columns + $schema->hidden;
        foreach ($setters as $setter) {
            $parameters = (new ReflectionFunction($setter->function))->getParameters();
            self::assertCount(count($setter->columns) + 1, $parameters, $setter->function);
            foreach ($setter->columns as $place => $name) {
                self::assertArrayHasKey($name, $columns);
                self::assertTrue(self::means($name, $parameters[$place + 1]->name), "$setter->function: $name");
            }
        }
        $settable = array_merge([], ...array_column($setters, 'columns'));
        self::assertSame([], array_diff(array_keys($schema->defaults), $settable), 'defaults of what can be set');
    }

    /** @dataProvider tables */
    #[DataProvider('tables')]
    public function testColumnsAreThoseOfTheStub(TableSchema $schema): void
    {
        $shapes = self::shapes();
        $shape = $shapes[$schema->reader->get] ?? [];
        if ($shape === []) {
            self::assertContains(
                $schema->name,
                // Single numbers, lists of texts, the map, and the table that the agent never has.
                ['protocolDirLastChange', 'dsmonAggControlLocked', 'resolvers', 'dsmonAggProfileTable',
                    'mgcpTopLatencyTable'],
            );
            return;
        }
        $hidden = array_filter($schema->keys, static fn($key) => !$key->inRow);
        $columns = array_diff_key($schema->columns, $hidden);
        self::assertSame(array_keys($shape), array_keys($columns), 'columns in the order of a row');
        foreach ($columns as $name => $column) {
            [$type, $optional] = $shape[$name];
            self::assertSame($optional, $column->optional, "$name can be missing");
            self::assertContains($type, self::typesOf($column), "type of $name");
        }
    }

    public function testEveryFunctionIsUsed(): void
    {
        $used = array_merge(...array_map(
            static fn(TableSchema $schema) => $schema->functions(),
            array_values(Catalog::all()),
        ));
        foreach (glob(__DIR__ . '/../../library/src/*.php') as $file) {
            foreach (token_get_all(file_get_contents($file)) as $token) {
                if (is_array($token) && in_array($token[0], [T_STRING, T_CONSTANT_ENCAPSED_STRING], true)) {
                    $used[] = trim($token[1], "'");
                }
            }
        }
        $functions = get_extension_funcs('rmon');
        self::assertCount(295, $functions);
        self::assertSame([], array_values(array_diff($functions, $used)));
    }

    public function testNamesAreFoundInAnyCaseAndWithoutTable(): void
    {
        self::assertSame('nlHostTable', Catalog::find('nlhost')->name);
        self::assertSame('etherStatsTable', Catalog::find('ETHERSTATSTABLE')->name);
        self::assertSame('system', Catalog::find('system')->name);
    }

    public function testAnUnknownNameHasNearestOnes(): void
    {
        try {
            Catalog::find('nlHosstTable');
            self::fail();
        } catch (UnknownName $unknown) {
            self::assertSame('nlHostTable', $unknown->nearest[0]);
            self::assertStringContainsString('There is no table "nlHosstTable". Is it nlHostTable', $unknown->text);
        }
    }

    public function testNamesOfTablesAndTitlesAreTheirOwn(): void
    {
        $all = Catalog::all();
        self::assertSame(array_keys($all), array_column($all, 'name'));
        self::assertSame(count($all), count(array_unique(array_column($all, 'title'))));
    }

    /** A parameter of a setter has the column's name, or its end: "owner" for dsmonAggControlOwner. */
    private static function means(string $column, string $parameter): bool
    {
        $aliases = ['ctlIndex' => 'Index', 'rowStatus' => 'Status', 'lock' => 'Locked'];
        $end = $aliases[$parameter] ?? $parameter;
        return $column === $parameter || str_ends_with(strtolower($column), strtolower($end));
    }

    /** @return list<string> what the stub calls the values of a column */
    private static function typesOf(Column $column): array
    {
        return match (true) {
            $column->type->isText() => ['string'],
            $column->type->isOctets() => ['list<int>', 'list<int>|int'],
            $column->type === Type::Rows => ['list'],
            $column->type === Type::Counter64 => ['float'],
            $column->type === Type::Gauge, $column->type === Type::Ticks => ['int', 'float'],
            $column->type === Type::Index => str_ends_with($column->name, '_ssrc') ? ['float'] : ['int'],
            default => ['int'],
        };
    }

    /**
     * @return array<string, array<string, array{string, bool}>> the keys of each function's rows: type and whether
     *                                                           they can be missing
     */
    private static function shapes(): array
    {
        static $shapes = null;
        if ($shapes !== null) {
            return $shapes;
        }
        $stub = file_get_contents(__DIR__ . '/../../rmon/rmon.stub.php');
        preg_match_all('~/\*\*((?:(?!\*/).)*)\*/\s*function (\w+)\(~s', $stub, $functions, PREG_SET_ORDER);
        $shapes = [];
        foreach ($functions as [, $page, $name]) {
            $page = preg_replace('~\s*\n\s*\* ?~', ' ', $page);
            if (!preg_match('~@return .*?array\{(.*)~', $page, $return)) {
                continue;
            }
            // Rows inside a row are one column; a list around the row is none.
            $row = preg_replace('~history\?: list<array(\{[^{}]*\})?>~', 'history?: list', $return[1]);
            $row = preg_replace('~^\s*\w+: list<array\{~', '', $row);
            $row = substr($row, 0, strpos("$row}", '}'));
            $type = 'list<int>\|int|list<int>|list|int|float|string';
            preg_match_all("~(\\w+)(\\??): ($type)~", $row, $keys, PREG_SET_ORDER);
            foreach ($keys as [, $key, $optional, $type]) {
                if (!in_array($key, ['0', '1', 'status'], true)) {
                    $shapes[$name][$key] = [$type, $optional === '?'];
                }
            }
        }
        return $shapes;
    }
}
