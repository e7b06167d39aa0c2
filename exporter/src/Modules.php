<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

/**
 * Modules by name, as sections of INI files describe them: the exporter's own, modules.ini, and the configuration,
 * which adds some or puts others in their place.
 */
final class Modules
{
    private const SETTINGS = ['title', 'include', 'series', 'voice_calls', 'created'];

    private const SERIES = 20000;

    private const NAME = '/^[A-Za-z0-9][\w-]{0,62}$/D';

    /** @param array<string, array<string, string>> $sections by title */
    private function __construct(private readonly array $sections)
    {
    }

    public static function usual(): self
    {
        return new self(Configuration::sections(dirname(__DIR__) . '/modules.ini'));
    }

    /**
     * @param array<string, array<string, string>> $sections by title
     * @throws ConfigurationError
     */
    public function with(array $sections): self
    {
        $mine = $this->sections;
        foreach (array_keys($sections) as $title) {
            $words = explode(' ', $title);
            $known = match ($words[0]) {
                'module' => count($words) === 2,
                'table' => count($words) === 3,
                default => false,
            };
            if (!$known || !preg_match(self::NAME, $words[1])) {
                throw new ConfigurationError("[$title] is no section that is known.");
            }
            if ($words[0] === 'module') {
                // A module that is described anew has nothing of the old one.
                $tables = "table $words[1] ";
                $mine = array_filter(
                    $mine,
                    static fn(string $old) => !str_starts_with($old, $tables),
                    ARRAY_FILTER_USE_KEY,
                );
            }
        }
        return new self($sections + $mine);
    }

    /** @return array<string, string> titles by name */
    public function titles(): array
    {
        $titles = [];
        foreach ($this->sections as $section => $settings) {
            if (str_starts_with($section, 'module ')) {
                $titles[substr($section, 7)] = $settings['title'] ?? '';
            }
        }
        ksort($titles);
        return $titles;
    }

    /**
     * @return Module|null null when there is none of this name
     * @throws ConfigurationError
     */
    public function find(string $name): ?Module
    {
        return isset($this->sections["module $name"]) ? $this->module($name, []) : null;
    }

    /**
     * Looks at all of them, where a scrape looks at one.
     *
     * @throws ConfigurationError
     */
    public function check(): void
    {
        foreach (array_keys($this->sections) as $title) {
            [$kind, $name] = explode(' ', $title);
            if ($kind === 'table' && !isset($this->sections["module $name"])) {
                throw new ConfigurationError("[$title] belongs to no module: [module $name] is missing.");
            }
        }
        foreach (array_keys($this->titles()) as $name) {
            $families = new Families(0);
            foreach ($this->find((string) $name)->tables as $choice) {
                array_map($families->add(...), array_column($choice->families(), 0));
            }
        }
    }

    /** @param list<string> $including those that include this one */
    private function module(string $name, array $including): Module
    {
        $title = "module $name";
        if (in_array($name, $including, true)) {
            throw new ConfigurationError("[$title] includes itself.");
        }
        $settings = $this->sections[$title] ?? throw new ConfigurationError("There is no module $name to include.");
        foreach (array_keys($settings) as $setting) {
            if (!in_array($setting, self::SETTINGS, true)) {
                throw new ConfigurationError("[$title] knows no $setting.");
            }
        }
        $tables = [];
        $calls = self::whole($title, $settings, 'voice_calls', 0);
        foreach (preg_split('/[\s,]+/', $settings['include'] ?? '', -1, PREG_SPLIT_NO_EMPTY) as $other) {
            $included = $this->module($other, [...$including, $name]);
            $tables = [...$tables, ...$included->tables];
            $calls = max($calls, $included->calls);
        }
        foreach ($this->sections as $section => $choice) {
            if (str_starts_with($section, "table $name ")) {
                $read = TableChoice::of($section, substr($section, strlen("table $name ")), $choice);
                $tables[$read->schema->name] = $read;
            }
        }
        return new Module(
            $name,
            $settings['title'] ?? '',
            $tables,
            self::whole($title, $settings, 'series', self::SERIES),
            $calls,
            !in_array(strtolower($settings['created'] ?? 'on'), ['off', 'no', 'false', '0'], true),
        );
    }

    /** @param array<string, string> $settings */
    private static function whole(string $title, array $settings, string $name, int $usual): int
    {
        $value = $settings[$name] ?? (string) $usual;
        if (!preg_match('/^\d{1,7}$/D', $value)) {
            throw new ConfigurationError("$name of [$title] is a whole number.");
        }
        return (int) $value;
    }
}
