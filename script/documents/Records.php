<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

use RuntimeException;

/** The records and procedures of the program, as rmon/rpc declares them. */
final class Records
{
    /** @var array<string, WireRecord> */
    public readonly array $records;

    /** @var array<int, Procedure> by number */
    public readonly array $procedures;

    /** @var array<string, string> other names of a type */
    public readonly array $aliases;

    public function __construct(string $folder)
    {
        $records = $aliases = [];
        foreach (['', '_rmon1', '_rmon2', '_dsmon', '_smon_art', '_voice', '_nde', '_admin'] as $group) {
            $text = (string) file_get_contents("$folder/rmonrpc$group.h");
            $records += self::recordsOf($text, "rmonrpc$group.h");
            preg_match_all('/^using (\w+) = ([^;]+);/m', $text, $found);
            $aliases += array_combine($found[1], $found[2]);
        }
        $this->records = $records;
        $this->aliases = $aliases;
        $this->procedures = self::proceduresOf((string) file_get_contents("$folder/rmonrpc_clnt.h"));
        foreach ($this->procedures as $procedure) {
            $this->words($procedure->argument);
            $this->words($procedure->result);
        }
    }

    /** What a type is on the wire, in the words of RFC 4506 where it has some. */
    public function words(string $type): string
    {
        $type = $this->aliases[$type] ?? $type;
        return match (true) {
            $type === 'wire::none' => 'void',
            $type === 'int32_t' => 'int',
            $type === 'uint32_t' => 'unsigned int',
            $type === 'uint64_t' => 'unsigned hyper',
            $type === 'wire::text<>' => 'string<>',
            $type === 'wire::byte_list' => 'bytes<>',
            preg_match('/^wire::text<(\d+)>$/D', $type, $found) === 1 => "string<$found[1]>",
            preg_match('/^wire::uchars<(\d+)>$/D', $type, $found) === 1 => "bytes[$found[1]]",
            preg_match('/^wire::chars<(\d+)>$/D', $type, $found) === 1 => "chars[$found[1]]",
            preg_match('/^wire::rows<(\w+)>$/D', $type, $found) === 1 => "{$this->words($found[1])}<>",
            preg_match('/^wire::repeated<(\w+), (\d+)>$/D', $type, $found) === 1 =>
                "{$this->words($found[1])}[$found[2]]",
            isset($this->records[$type]) => $type,
            default => throw new RuntimeException("what is $type on the wire?"),
        };
    }

    /** What a name is on the wire, where all records agree about it. */
    public function typeOf(string $name): ?string
    {
        $types = [];
        foreach ($this->records as $record) {
            foreach ($record->fields as $field) {
                if ($field->name === $name) {
                    $types[$this->words($field->type)] = true;
                }
            }
        }
        return count($types) === 1 ? (string) array_key_first($types) : null;
    }

    /** @return array<string, WireRecord> */
    private static function recordsOf(string $text, string $header): array
    {
        $part = '/\* ---- (?<section>[^\n]*?) -+ \*/'
            . '|(?:/\*\*(?<note>(?:(?!\*/).)*)\*/\n)?struct (?<name>\w+) \{\n(?<fields>(?:(?!^\};).)*)^\};';
        preg_match_all("~^(?:$part)~ms", $text, $found, PREG_SET_ORDER | PREG_UNMATCHED_AS_NULL);
        $section = '';
        $records = [];
        foreach ($found as $each) {
            $section = $each['section'] ?? $section;
            if (isset($each['name'])) {
                $note = self::oneLine($each['note'] ?? '');
                $fields = self::fieldsOf($each['fields']);
                $records[$each['name']] = new WireRecord($each['name'], $header, $section, $note, $fields);
            }
        }
        return $records;
    }

    /** @return list<WireField> */
    private static function fieldsOf(string $text): array
    {
        preg_match_all('~^    ((?:[\w:]+)(?:<[^>]*>)?) (\w+);[ ]*(?:// ?(.*))?$~m', $text, $found, PREG_SET_ORDER);
        // Every line with an end is a field.
        if (count($found) !== preg_match_all('/;/', (string) preg_replace('~//[^\n]*~', '', $text))) {
            throw new RuntimeException("not all fields were understood: $text");
        }
        return array_map(static fn(array $each) => new WireField($each[2], $each[1], $each[3] ?? ''), $found);
    }

    /** @return array<int, Procedure> */
    private static function proceduresOf(string $text): array
    {
        preg_match_all(
            '/^inline constexpr procedure<\s*(\d+),\s*([\w:]+),\s*([\w:]+)(?:,\s*\w+)?>\s+(\w+)_\d;/m',
            $text,
            $found,
            PREG_SET_ORDER,
        );
        $procedures = [];
        foreach ($found as [, $number, $argument, $result, $name]) {
            $procedures[(int) $number] ??= new Procedure((int) $number, $name, $argument, $result);
        }
        ksort($procedures);
        return $procedures;
    }

    private static function oneLine(string $text): string
    {
        return trim((string) preg_replace('/\s+/', ' ', (string) preg_replace('/^\s*\* ?/m', '', $text)));
    }
}
