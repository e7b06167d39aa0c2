<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

use RuntimeException;

/** Makes the calls. */
final class Calls
{
    public const FAILED = 'the call fails';

    private const NO_LINK = 987654321;

    /** What texts say in a row that isn't there. */
    private const WORDS_OF_0 = ['OTHER', 'NONE', '0.0.0.0'];

    public function __construct(private readonly World $world, private readonly Examples $examples)
    {
    }

    /** @return array<string, Outcome> by function */
    public function outcomes(Stub $stub): array
    {
        $examples = $reports = [];
        foreach ($this->inOrder($stub) as $page) {
            $examples[$page->name] = $this->example($page);
            $reports[$page->name] = $this->missing($page);
        }
        scripted_agent(always(proc_unavail()));
        $silent = rmon_connect('127.0.1');
        $outcomes = [];
        foreach ($stub->pages as $name => $page) {
            $all = [...$this->refusals($page, $silent), ...$reports[$name]];
            $outcomes[$name] = new Outcome(...$examples[$name], reports: $all);
        }
        return $outcomes;
    }

    /**
     * Reads, then sets, then what takes something away, and what the lock forbids behind its end.
     *
     * @return list<Page>
     */
    private function inOrder(Stub $stub): array
    {
        $places = array_map(static fn(Page $page) => match (1) {
            preg_match('/_get(next|bulk)?$|_get_/D', $page->name) => 0,
            preg_match('/_set_lock$/D', $page->name) => 2,
            preg_match('/_(clear|del|delete|disable)$|^dsmon_agg(ctl|grp|prof)_set$/D', $page->name) => 3,
            preg_match('/^rmon_close$/D', $page->name) => 4,
            default => 1,
        }, $stub->pages);
        asort($places); // it keeps the order of equals
        return array_map(static fn(string $name) => $stub->pages[$name], array_keys($places));
    }

    /** @return array{code: string, output: string} */
    private function example(Page $page): array
    {
        $code = $this->examples->code($page);
        [$value, $messages] = warnings(function () use ($code): mixed {
            $link = $this->world->link(); // the code's
            return eval("return $code;");
        });
        if ($messages !== []) {
            throw new RuntimeException("$code reports: " . implode(' ', self::texts($messages)));
        }
        ob_start();
        show($value);
        return ['code' => "show($code);", 'output' => (string) ob_get_clean()];
    }

    /** @return list<array{string, list<string>, string}> */
    private function missing(Page $page): array
    {
        $arguments = $this->examples->missing($page);
        if ($arguments === null) {
            return [];
        }
        [$value, $messages] = warnings(fn() => ($page->name)($this->world->link(), ...$arguments));
        $behind = preg_match('/_get(next|bulk)$/D', $page->name) === 1;
        $when = $behind ? 'there is no row behind that one' : 'there is no such row';
        return [[$when, self::texts($messages), self::value($value)]];
    }

    /** @return list<array{string, list<string>, string}> */
    private function refusals(Page $page, mixed $silent): array
    {
        $reports = [];
        [$value, $messages] = warnings(fn() => ($page->name)(...array_fill(0, 20, 1)));
        if ($messages !== []) {
            $reports[] = ['the number of arguments is another', self::texts($messages), self::value($value)];
        }
        if (($page->parameters[0] ?? null)?->name !== 'connid') {
            return $reports;
        }
        $arguments = $this->examples->arguments($page);
        [$value, $messages] = warnings(fn() => ($page->name)(self::NO_LINK, ...$arguments));
        $texts = str_replace((string) self::NO_LINK, '7', self::texts($messages));
        $reports[] = ['the link, here 7, is not open', $texts, self::value($value)];
        [$value, $messages] = warnings(fn() => ($page->name)($silent, ...$arguments));
        $texts = str_replace('Procedure unavailable', '...', self::texts($messages));
        $reports[] = [self::FAILED, $texts, self::value($value)];
        return $reports;
    }

    /** @return list<string> */
    private static function texts(array $messages): array
    {
        return array_map(
            static fn(array|string $message) => str_replace("\n", '\n', is_array($message) ? $message[1] : $message),
            $messages,
        );
    }

    /** A result in some words. */
    private static function value(mixed $value): string
    {
        $rest = is_array($value) ? array_diff_key($value, [0 => 0, 'status' => 0]) : [];
        $nothing = [0, 0.0, '', [], ...self::WORDS_OF_0];
        $empty = array_filter($rest, static fn(mixed $each) => !in_array($each, $nothing, true)) === [];
        return match (true) {
            $value === null, is_bool($value) => shown($value),
            $value === [] => '`[]`, an empty list',
            is_array($value) && isset($value['status']) && $rest !== [] && $empty && count($value) > 2 =>
                "a row whose status is $value[status], and whose other values are 0, empty or what 0 stands for",
            is_array($value) && ($value['status'] ?? null) === -1 => '`[0 => -1, \'status\' => -1]`',
            is_array($value) && count($value) === 1 && reset($value) === [] => '`[\'' . key($value) . '\' => []]`',
            is_int($value) => "$value",
            default => throw new RuntimeException('no words for ' . json_encode($value)),
        };
    }
}
