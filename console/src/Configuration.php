<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** What the one configuration file says: probes, users, and how the console is reached. */
final class Configuration
{
    /** Seconds that connecting to a probe may take. */
    private const PATIENCE = 0.8;

    private const PORT = 9911;

    /** The names of this machine for itself. */
    private const LOCAL = ['localhost', '127.0.0.1', '[::1]'];

    private const SETTINGS = ['state', 'names', 'sign_in', 'secure', 'patience'];

    /**
     * @param array<string, ConfiguredProbe> $probes by name
     * @param array<string, User> $users             by name
     * @param string $state                          the directory for what the console keeps
     * @param list<string> $names                    the host names under which browsers reach it
     * @param bool $signIn                           whether people sign in
     * @param bool $secure                           whether browsers reach it by https alone
     * @param float $patience                        seconds that connecting to a probe may take
     */
    public function __construct(
        public readonly array $probes,
        public readonly array $users,
        public readonly string $state,
        public readonly array $names = self::LOCAL,
        public readonly bool $signIn = true,
        public readonly bool $secure = false,
        public readonly float $patience = self::PATIENCE,
    ) {
    }

    /** @throws ConfigurationError */
    public static function read(string $file): self
    {
        $sections = is_readable($file) ? @parse_ini_file($file, true, INI_SCANNER_RAW) : false;
        if ($sections === false) {
            throw new ConfigurationError("The console's configuration $file can't be read, or is no INI file.");
        }
        $probes = [];
        $users = [];
        $settings = [];
        foreach ($sections as $title => $section) {
            if (!is_array($section)) {
                throw new ConfigurationError("$file: \"$title\" stands in no section.");
            }
            [$kind, $name] = explode(' ', trim((string) $title), 2) + [1 => ''];
            match ($kind) {
                'console' => $settings = self::settings($file, $section),
                'probe' => $probes[$name] = self::probe($file, $name, $section),
                'user' => $users[$name] = self::user($file, $name, $section),
                default => throw new ConfigurationError("$file: [$title] is no section that is known."),
            };
        }
        if ($probes === []) {
            throw new ConfigurationError("$file names no probe: it takes a section such as [probe core1].");
        }
        $signIn = self::flag($settings['sign_in'] ?? 'on');
        if ($signIn && $users === []) {
            throw new ConfigurationError("$file names no user who could sign in.");
        }
        $state = $settings['state'] ?? throw new ConfigurationError("$file: [console] needs state, a directory.");
        return new self(
            $probes,
            $users,
            $state,
            [...self::LOCAL, ...preg_split('/[\s,]+/', $settings['names'] ?? '', -1, PREG_SPLIT_NO_EMPTY)],
            $signIn,
            self::flag($settings['secure'] ?? 'off'),
            isset($settings['patience']) ? (float) $settings['patience'] : self::PATIENCE,
        );
    }

    /**
     * @param array<string, string> $section
     * @return array<string, string>
     */
    private static function settings(string $file, array $section): array
    {
        foreach (array_keys($section) as $name) {
            if (!in_array($name, self::SETTINGS, true)) {
                throw new ConfigurationError("$file: [console] knows no $name.");
            }
        }
        return $section;
    }

    /** @param array<string, string> $section */
    private static function probe(string $file, string $name, array $section): ConfiguredProbe
    {
        if (!preg_match('/^[A-Za-z0-9][\w.-]{0,62}$/D', $name)) {
            throw new ConfigurationError("$file: a probe's name is letters, digits, \".\", \"_\" and \"-\".");
        }
        $host = $section['host'] ?? throw new ConfigurationError("$file: [probe $name] needs a host.");
        $port = $section['port'] ?? null;
        if ($port !== null && (!ctype_digit($port) || (int) $port < 1 || (int) $port > 65535)) {
            throw new ConfigurationError("$file: the port of [probe $name] is a number from 1 to 65535.");
        }
        return new ConfiguredProbe($name, $host, (int) ($port ?? self::PORT), $section['title'] ?? '');
    }

    /** @param array<string, string> $section */
    private static function user(string $file, string $name, array $section): User
    {
        $role = Role::tryFrom($section['role'] ?? Role::Reader->value)
            ?? throw new ConfigurationError("$file: the role of [user $name] is \"read-only\" or \"operator\".");
        $hash = $section['password_hash'] ?? '';
        if ($name === '' || password_get_info($hash)['algo'] === null) {
            throw new ConfigurationError("$file: [user $name] needs a name and a password_hash of password_hash().");
        }
        return new User($name, $hash, $role);
    }

    private static function flag(string $word): bool
    {
        return filter_var($word, FILTER_VALIDATE_BOOLEAN, FILTER_NULL_ON_FAILURE)
            ?? throw new ConfigurationError("\"$word\" is neither on nor off.");
    }
}
