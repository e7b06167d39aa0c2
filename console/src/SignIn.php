<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** Passwords, of which nobody can try many. */
final class SignIn
{
    /** Wrong passwords that one name, and one address, may send before it has to wait. */
    private const TRIES = ['user' => 5, 'address' => 20];

    /** Seconds that it then has to wait. */
    private const WAIT = 900;

    /** The hash that a password for a name that isn't there is held against, so that both take the same time. */
    private const NOBODY = '$2y$10$usesomesillystringfore2uDLvp1Ii2e./U9C8sBjqp8I90dH6hi';

    public function __construct(private readonly Configuration $configuration, private readonly State $state)
    {
    }

    /** @throws Refusal when there were too many tries */
    public function user(string $name, string $password, string $address): ?User
    {
        $keys = ['user' => "user $name", 'address' => "address $address"];
        $keys = array_map(static fn(string $key) => hash('sha256', $key), $keys);
        // A try counts before it is looked at, so that many at once are no way around.
        $refused = $this->state->change('tries', static function (array $tries) use ($keys): array {
            $now = time();
            $tries = array_filter($tries, static fn(array $try) => $try[1] > $now - self::WAIT);
            $refused = false;
            foreach ($keys as $kind => $key) {
                $refused = $refused || ($tries[$key][0] ?? 0) >= self::TRIES[$kind];
            }
            foreach ($refused ? [] : $keys as $key) {
                $tries[$key] = [($tries[$key][0] ?? 0) + 1, $now];
            }
            return [$tries, $refused];
        });
        if ($refused) {
            throw new Refusal(429, 'Too many wrong passwords. Try again in a quarter of an hour.');
        }
        $user = $this->configuration->users[$name] ?? null;
        if (!password_verify($password, $user->hash ?? self::NOBODY) || $user === null) {
            return null;
        }
        $this->state->change('tries', static function (array $tries) use ($keys): array {
            unset($tries[$keys['user']]);
            $tries[$keys['address']][0] = max(0, ($tries[$keys['address']][0] ?? 0) - 1);
            $tries[$keys['address']][1] ??= time();
            return [$tries, null];
        });
        return $user;
    }
}
