<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;
use RuntimeException;

/** The pages of docs/reference about functions, constants and directives. */
final class Reference
{
    /** What numbers without a unit are counted in, or that they are in none. */
    private const NO_UNIT = [
        'sysServices' => 'a sum of the layers\' bits',
        'hostTopNRate' => 'packets or octets, as hostTopNRateBase says',
        'alarmValue' => 'as the variable',
        'alarmRisingThreshold' => 'as the variable',
        'alarmFallingThreshold' => 'as the variable',
        'forward_sr_fraction_lost' => '1/256',
        'reverse_sr_fraction_lost' => '1/256',
    ];

    /** Keys that are no column of a table: what it is, unit. */
    private const OWN_KEYS = [
        'rmon_pdist_stats_get' => ['1' => ['protocolDistControlIndex once more', '']],
        'rmon_capture_save_file' => [
            '0' => ['the same as totalPktsSaved', 'packets'],
            'totalPktsSaved' => ['packets saved', 'packets'],
            '1' => ['the same as lastPktIndex', ''],
            'lastPktIndex' => ['captureBufferIndex of the last of them', ''],
        ],
    ];

    /** Default and meaning; the module has no words for them. */
    private const DIRECTIVES = [
        'rmon.allow_persistent' => ['1', '0 makes `rmon_pconnect` work as `rmon_connect`'],
        'rmon.default_port' => [
            'none',
            'TCP port of the agent; without a value the environment variable `RMONRPC_PORT`, then the service '
                . '`rmonrpc`, then 9911',
        ],
        'rmon.max_links' => ['-1', 'most open links, persistent ones included; -1 for no limit'],
        'rmon.max_persistent' => ['-1', 'anything but -1 forbids new persistent links'],
    ];

    /** What the rows of all tables begin with. */
    private const RESULT_CODE = ['0' => 'the agent\'s result code', 'status' => 'the agent\'s result code, again'];

    /** @param array<string, Outcome> $outcomes by function */
    public function __construct(
        private readonly Stub $stub,
        private readonly Records $records,
        private readonly Examples $examples,
        private readonly array $outcomes,
    ) {
    }

    /** @return array<string, string> texts by file name */
    public function pages(): array
    {
        $pages = [
            'functions.md' => $this->overview(),
            'constants.md' => $this->constants(),
            'directives.md' => $this->directives(),
            'warnings.md' => $this->warnings(),
        ];
        foreach ($this->stub->sections() as $section => $functions) {
            $pages[self::fileOf($section)] = $this->section($section, $functions);
        }
        return $pages;
    }

    public static function fileOf(string $section): string
    {
        return trim((string) preg_replace('/[^a-z0-9]+/', '-', strtolower($section)), '-') . '.md';
    }

    public static function titleOf(string $section): string
    {
        return ucfirst($section);
    }

    private function overview(): string
    {
        $text = Markdown::title('All functions') . "\n" . count($this->stub->pages)
            . " functions, in the order of their groups. "
            . "[How to read a page](index.md) tells what all have in common.\n";
        foreach ($this->stub->sections() as $section => $functions) {
            $title = '[' . self::titleOf($section) . '](' . self::fileOf($section) . ')';
            $text .= "\n## $title\n\n" . Markdown::head('Function', '');
            foreach ($functions as $page) {
                $first = Markdown::cell(self::firstSentence($page->summary));
                $text .= Markdown::row($this->link($page->name), $first);
            }
        }
        return $text;
    }

    private function constants(): string
    {
        $text = Markdown::title('Constants') . "\nThe module registers these. The stub, `rmon/rmon.stub.php`, declares "
            . "them for editors.\n\n" . Markdown::head('Constant', 'Value', '');
        foreach ($this->stub->constants as $name => [$value, $summary]) {
            if ($summary === '') {
                throw new RuntimeException("the stub says nothing of $name");
            }
            $text .= "| `$name` | $value | " . Markdown::cell($this->linked($summary)) . " |\n";
        }
        return $text;
    }

    /** What failed calls report, and who says so. */
    private function warnings(): string
    {
        $functions = [];
        foreach ($this->outcomes as $name => $outcome) {
            foreach ($outcome->reports as [$when, $reports]) {
                if ($when === Calls::FAILED) {
                    $functions[implode(' ', $reports)][] = $this->link($name);
                }
            }
        }
        ksort($functions);
        $silent = $functions[''] ?? [];
        unset($functions['']);
        $text = Markdown::title('Warnings of failed calls') . "\nWhat stands before `RPC:` is a fixed text of each "
            . "function, and not always its own name. "
            . "Behind it stand the RPC library's words: see [Troubleshooting](../troubleshooting.md).\n\n"
            . Markdown::head('Warning', 'Functions');
        foreach ($functions as $warning => $names) {
            $text .= "| `$warning` | " . implode(', ', $names) . " |\n";
        }
        return $text . "\nThese say nothing: " . implode(', ', $silent) . ".\n";
    }

    private function directives(): string
    {
        $known = ini_get_all('rmon');
        if (array_diff_key($known, self::DIRECTIVES) !== [] || array_diff_key(self::DIRECTIVES, $known) !== []) {
            throw new RuntimeException('the module has other directives than are described');
        }
        $text = Markdown::title('Directives') . "\nSettings of php.ini.\n\n"
            . Markdown::head('Directive', 'Default', 'Can be changed', 'Meaning');
        foreach (self::DIRECTIVES as $name => [$default, $meaning]) {
            $where = match ($known[$name]['access']) {
                INI_ALL => 'everywhere',
                INI_SYSTEM => 'in php.ini',
                default => throw new RuntimeException("where can $name be changed?"),
            };
            $text .= "| `$name` | $default | $where | $meaning |\n";
        }
        return $text . "\n[Links](../concepts/links.md) tells what persistent links are, "
            . "[Production](../production/index.md) which values suit a server.\n";
    }

    /** @param list<Page> $functions */
    private function section(string $section, array $functions): string
    {
        $text = Markdown::title(self::titleOf($section));
        $tables = [];
        foreach ($functions as $page) {
            $schema = $this->examples->tableOf($page->name);
            if ($schema !== null && !isset($tables[$schema->name])) {
                $where = $schema->rfc ?? 'the agent\'s own';
                $tables[$schema->name] = Markdown::row("`$schema->name`", $schema->title, $where);
            }
        }
        if ($tables !== []) {
            $text .= "\n" . Markdown::head('Table of the library', '', 'Where it is described') . implode('', $tables);
        }
        foreach ($functions as $page) {
            $text .= "\n" . $this->page($page);
        }
        return $text;
    }

    private function page(Page $page): string
    {
        if ($page->summary === '') {
            throw new RuntimeException("the stub says nothing of $page->name()");
        }
        $text = "## $page->name\n\n" . $this->linked($page->summary)
            . "\n\n```text\n" . self::signature($page) . "\n```\n";
        if ($page->parameters !== []) {
            $text .= "\n| Parameter | Type | Takes |\n| --- | --- | --- |\n";
            foreach ($page->parameters as $place => $parameter) {
                $text .= '| `$' . $parameter->name . '` | ' . Markdown::cell($parameter->type) . ' | '
                    . Markdown::cell($this->linked($this->takes($page, $place, $parameter))) . " |\n";
            }
        }
        $text .= $page->result === '' ? '' : "\nReturns: " . $this->linked($page->result) . ".\n";
        return $text . $this->row($page) . $this->reports($page) . $this->example($page);
    }

    private static function signature(Page $page): string
    {
        $parameters = array_map(
            static fn(Parameter $each) => "$each->type \$$each->name" . ($each->optional ? ' = (left out)' : ''),
            $page->parameters,
        );
        $line = "$page->name(" . implode(', ', $parameters) . "): $page->returns";
        return strlen($line) <= 100 ? $line
            : "$page->name(\n    " . implode(",\n    ", $parameters) . "\n): $page->returns";
    }

    /** What may be given, from what the stub says, the table's column and the field that carries it. */
    private function takes(Page $page, int $place, Parameter $parameter): string
    {
        if ($parameter->name === 'connid') {
            return 'a link, or its number';
        }
        $schema = $this->examples->tableOf($page->name);
        $column = $schema === null ? null : self::columnAt($schema, $page->name, $place - 1);
        $parts = [$parameter->text];
        if ($parameter->text === '' && $column !== null) {
            $parts[] = self::what($column);
        }
        if (!preg_match('/\bat most\b|\bany length\b|\bAF_INET\b/', $parameter->text)) {
            $type = $this->records->typeOf($column?->name ?? '') ?? $this->records->typeOf($parameter->name);
            $own = $column?->type === Type::Index && $schema->status !== null && $place === 1;
            $parts[] = match (true) {
                $own => 'rows have 1 to 65535',
                $parameter->type === 'array' => 'at most 255 integers, 0 to 255',
                $type === 'int' => '-2147483648 to 2147483647',
                $type === 'unsigned int' => '0 to 4294967295',
                $type === 'string<>' => 'of any length',
                $type !== null && preg_match('/^string<(\d+)>$/D', $type, $found) === 1 => "at most $found[1] bytes",
                $parameter->type === 'int' => '-2147483648 to 4294967295: the low 32 bits are sent',
                default => '',
            };
        }
        return implode('; ', array_filter($parts))
            ?: throw new RuntimeException("what does \$$parameter->name of $page->name() take?");
    }

    private static function columnAt(TableSchema $schema, string $function, int $place): ?Column
    {
        foreach ($schema->writer?->setters() ?? [] as $setter) {
            if ($setter->function === $function) {
                $name = $setter->columns[$place] ?? '';
                return $schema->columns[$name] ?? $schema->hidden[$name] ?? null;
            }
        }
        return $schema->columns[array_keys($schema->keys)[$place] ?? ''] ?? null;
    }

    private function row(Page $page): string
    {
        if ($page->model !== null && $page->keys !== []) {
            $around = match (true) {
                $page->envelope !== '' => "Under the key `$page->envelope`, a list of rows as",
                $page->list => 'A list of rows as',
                default => 'The row is that of',
            };
            return "\n$around {$this->link($this->stub->model($page)->name)}.\n";
        }
        if ($page->keys === []) {
            return '';
        }
        $schema = $this->examples->tableOf($page->name);
        $own = self::OWN_KEYS[$page->name] ?? [];
        $rfc = $schema?->rfc;
        $text = ($page->envelope === '' ? '' : "\nUnder the key `$page->envelope`, a list of such rows:\n")
            . "\n| Key | Type | What it is | Unit |" . ($rfc === null ? '' : " Object of $rfc |")
            . "\n| --- | --- | --- | --- |" . ($rfc === null ? '' : ' --- |') . "\n";
        foreach ($page->keys as $key) {
            $column = $schema?->columns[$key->name] ?? null;
            [$what, $unit, $object] = match (true) {
                isset($own[$key->name]) => [...$own[$key->name], ''],
                isset(self::RESULT_CODE[$key->name]) => [self::RESULT_CODE[$key->name], '', ''],
                $column !== null => [self::what($column), self::unit($column), (string) $column->object],
                default => throw new RuntimeException("nothing is known of the key $key->name of $page->name()"),
            };
            if ($key->optional) {
                $what .= '; not in every row';
            }
            if ($key->rows !== []) {
                $what .= ': ' . implode(', ', array_map(static fn(Key $each) => "`$each->name`", $key->rows));
            }
            $text .= "| `$key->name` | " . Markdown::cell($key->type) . ' | ' . Markdown::cell($what) . " | $unit |"
                . ($rfc === null ? '' : " $object |") . "\n";
        }
        return $text;
    }

    /** A column in words. */
    private static function what(Column $column): string
    {
        $words = [];
        foreach ($column->values as $number => $word) {
            $words[] = "$number $word";
        }
        return match ($column->type) {
            Type::Index => 'index',
            Type::Integer => 'number',
            Type::Gauge => 'gauge',
            Type::Counter32 => 'counter of 32 bits',
            Type::Counter64 => 'counter of 64 bits',
            Type::Ticks => 'time on the agent\'s clock (sysUpTime)',
            Type::Utilization => 'share of what the interface can carry',
            Type::NetInterface => 'interface (ifIndex)',
            Type::Protocol => 'protocol (protocolDirLocalIndex)',
            Type::Named => implode(', ', $words),
            Type::Flags => 'sum of ' . implode(', ', $words),
            Type::Status => 'row status: 1 valid, 2 createRequest, 3 underCreation, 4 invalid',
            Type::Text => 'text',
            Type::AddressText => 'address as a text',
            Type::MacText => 'MAC address as a text',
            Type::Mac => 'MAC address, an integer for each octet; 0 for none',
            Type::Address => 'network address, an integer for each octet; 0 for none',
            Type::Octets => 'octets, an integer for each',
            Type::Rows => 'rows',
        };
    }

    private static function unit(Column $column): string
    {
        return match (true) {
            $column->unit !== '' => $column->unit,
            $column->type === Type::Ticks => '1/100 s',
            $column->type === Type::Utilization => '1/100 %',
            isset(self::NO_UNIT[$column->name]) => self::NO_UNIT[$column->name],
            in_array($column->type, [Type::Integer, Type::Gauge, Type::Counter32, Type::Counter64], true) =>
                throw new RuntimeException("$column->name has no unit"),
            default => '',
        };
    }

    private function reports(Page $page): string
    {
        $text = '';
        foreach ($this->outcomes[$page->name]->reports as [$when, $reports, $value]) {
            $shown = array_map(static fn(string $each) => '`' . Markdown::cell($each) . '`', $reports);
            $text .= Markdown::row($when, implode('<br>', $shown) ?: 'nothing', $value);
        }
        return $text === '' ? '' : "\n| When | Is reported | Is returned |\n| --- | --- | --- |\n$text";
    }

    private function example(Page $page): string
    {
        $outcome = $this->outcomes[$page->name];
        return "\n```php\n$outcome->code\n```\n\n```text\n$outcome->output```\n";
    }

    private function link(string $function): string
    {
        return "[`$function`](" . self::fileOf($this->stub->pages[$function]->section) . "#$function)";
    }

    /** A text of the stub, whose functions are links. */
    private function linked(string $text): string
    {
        $text = (string) preg_replace_callback(
            '/\b(\w+)\(\)/',
            fn(array $found) => isset($this->stub->pages[$found[1]]) ? $this->link($found[1]) : $found[0],
            strtr($text, ['*' => '\\*', '_' => '\\_', '<' => '&lt;']),
        );
        $text = (string) preg_replace_callback(
            '/\b([a-z]\w*(?:\\\\_\w+)+)\(\)/',
            function (array $found): string {
                $name = str_replace('\\', '', $found[1]);
                return isset($this->stub->pages[$name]) ? $this->link($name) : $found[0];
            },
            $text,
        );
        $text = str_replace('the agent\'s answer', '[the agent\'s answer](index.md#what-the-agent-answers)', $text);
        return rtrim($text, '.') === $text ? $text : rtrim($text, '.') . '.';
    }

    private static function firstSentence(string $text): string
    {
        return preg_match('/^(.*?\.)(?:\s+[A-Z]|$)/s', $text, $found) ? $found[1] : $text;
    }
}
