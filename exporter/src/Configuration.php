<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

/** What the configuration file says: who may be asked, how long, and which modules there are besides the usual ones. */
final class Configuration
{
    /** Which ports targets may have when nothing says so. */
    public const USUAL_PORTS = '9911';

    private const PORT = 9911;

    private const SETTINGS = ['networks', 'ports', 'names', 'seconds', 'patience', 'keep_links'];

    /**
     * @param Networks $networks where targets may be
     * @param non-empty-list<array{int, int}> $ports which ports they may have: the first and the last one of each range
     * @param bool $names        whether a target may be a host name
     * @param float $seconds     how long a scrape may take
     * @param float $patience    how long a target may take to say that it is there
     * @param bool $keepLinks    whether each process keeps its links to the targets for the next scrape
     */
    public function __construct(
        public readonly Modules $modules,
        public readonly Networks $networks,
        private readonly array $ports = [[self::PORT, self::PORT]],
        public readonly bool $names = false,
        public readonly float $seconds = 10.0,
        public readonly float $patience = 1.0,
        public readonly bool $keepLinks = true,
    ) {
    }

    /**
     * @param string|null $file null: this machine's own agents and the usual modules alone
     * @param string $networks  where targets may be when no file is given
     * @param string $ports     which ports they may have then
     * @throws ConfigurationError
     */
    public static function read(
        ?string $file,
        string $networks = '127.0.0.0/8',
        string $ports = self::USUAL_PORTS,
    ): self {
        $modules = Modules::usual();
        if ($file === null) {
            return new self($modules, Networks::of($networks), self::ports($ports));
        }
        $settings = [];
        $rest = [];
        foreach (self::sections($file) as $title => $section) {
            if ($title === 'exporter') {
                $settings = $section;
            } else {
                $rest[$title] = $section;
            }
        }
        foreach (array_keys($settings) as $name) {
            if (!in_array($name, self::SETTINGS, true)) {
                throw new ConfigurationError("[exporter] knows no $name.");
            }
        }
        $networks = $settings['networks'] ?? throw new ConfigurationError(
            '[exporter] needs networks, which say where targets may be, such as 10.0.0.0/8.',
        );
        return new self(
            $modules->with($rest),
            Networks::of($networks),
            self::ports($settings['ports'] ?? self::USUAL_PORTS),
            self::flag($settings['names'] ?? 'off'),
            self::seconds($settings, 'seconds', 10.0),
            self::seconds($settings, 'patience', 1.0),
            self::flag($settings['keep_links'] ?? 'on'),
        );
    }

    /**
     * @return array<string, array<string, string>> by title
     * @throws ConfigurationError
     */
    public static function sections(string $file): array
    {
        $sections = is_file($file) && is_readable($file) ? @parse_ini_file($file, true, INI_SCANNER_RAW) : false;
        if ($sections === false) {
            throw new ConfigurationError("$file can't be read, or is no INI file.");
        }
        $texts = [];
        foreach ($sections as $title => $section) {
            if (!is_array($section)) {
                throw new ConfigurationError("$file: \"$title\" stands in no section.");
            }
            foreach ($section as $name => $value) {
                if (!is_string($value)) {
                    throw new ConfigurationError("$file: $name of [$title] is no text.");
                }
            }
            $texts[preg_replace('/\s+/', ' ', trim((string) $title))] = $section;
        }
        return $texts;
    }

    /** The port of a target that names none. */
    public function usualPort(): int
    {
        return $this->permitsPort(self::PORT) ? self::PORT : $this->ports[0][0];
    }

    public function permitsPort(int $port): bool
    {
        foreach ($this->ports as [$first, $last]) {
            if ($port >= $first && $port <= $last) {
                return true;
            }
        }
        return false;
    }

    /** @return non-empty-list<array{int, int}> */
    private static function ports(string $text): array
    {
        $ports = [];
        foreach (preg_split('/[\s,]+/', $text, -1, PREG_SPLIT_NO_EMPTY) as $word) {
            [$first, $last] = explode('-', $word, 2) + [1 => $word];
            $digits = preg_match('/^\d{1,5}(-\d{1,5})?$/D', $word) === 1;
            if (!$digits || $first < 1 || $last > 65535 || (int) $first > (int) $last) {
                throw new ConfigurationError("\"$word\" is no TCP port and no range of them, such as 9911-9920.");
            }
            $ports[] = [(int) $first, (int) $last];
        }
        return $ports === [] ? throw new ConfigurationError('[exporter] permits no port.') : $ports;
    }

    private static function flag(string $word): bool
    {
        return filter_var($word, FILTER_VALIDATE_BOOLEAN, FILTER_NULL_ON_FAILURE)
            ?? throw new ConfigurationError("\"$word\" is neither on nor off.");
    }

    /** @param array<string, string> $settings */
    private static function seconds(array $settings, string $name, float $usual): float
    {
        $value = $settings[$name] ?? $usual;
        if (!is_numeric($value) || $value < 0.05 || $value > 300) {
            throw new ConfigurationError("$name of [exporter] is a number of seconds from 0.05 to 300.");
        }
        return (float) $value;
    }
}
