<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/**
 * What the console knows of one browser: who signed in, the token that its forms carry, and a message for its next
 * page. The session's file is locked only while it is read or changed, so that a page that waits for a probe holds up
 * no other page of the same browser.
 */
final class Session
{
    private const NAME = 'rmon_session';

    /** Seconds after which a browser that asks for nothing is forgotten. */
    private const IDLE = 8 * 3600;

    /** @var array<string, mixed>|null null: not read yet */
    private ?array $data = null;

    public function __construct(
        private readonly string $directory,
        private readonly Request $request,
        private readonly bool $secure,
    ) {
    }

    /** The name of the user who signed in; null for nobody. */
    public function user(): ?string
    {
        $user = $this->data()['user'] ?? null;
        return is_string($user) ? $user : null;
    }

    /** What every form of this browser carries. */
    public function token(): string
    {
        $token = $this->data()['token'] ?? null;
        if (!is_string($token)) {
            $token = bin2hex(random_bytes(32));
            $this->change(static fn(array $data) => ['token' => $token] + $data);
        }
        return $token;
    }

    /** Whether a form came from a page that this browser was given. */
    public function isOwn(string $token): bool
    {
        $own = $this->data()['token'] ?? null;
        return is_string($own) && hash_equals($own, $token);
    }

    /** Another session from here on: what somebody knew of the one before is worth nothing. */
    public function signIn(User $user): void
    {
        $token = bin2hex(random_bytes(32));
        $this->change(static fn(array $data) => ['user' => $user->name, 'token' => $token], true);
    }

    public function signOut(): void
    {
        $this->change(static fn(array $data) => [], true);
    }

    /** A message for the next page. */
    public function say(string $message): void
    {
        $this->change(static fn(array $data) => ['message' => $message] + $data);
    }

    /** The message that was left for this page; null for none. */
    public function said(): ?string
    {
        $message = $this->data()['message'] ?? null;
        if (!is_string($message)) {
            return null;
        }
        $this->change(static fn(array $data) => array_diff_key($data, ['message' => true]));
        return $message;
    }

    /** @return array<string, mixed> */
    private function data(): array
    {
        if ($this->data === null) {
            // Who has no cookie has no session; none is made before there is something to remember.
            $this->data = isset($this->request->cookies[self::NAME]) ? $this->start(true) : [];
        }
        return $this->data;
    }

    /** @param callable(array<string, mixed>): array<string, mixed> $change */
    private function change(callable $change, bool $renew = false): void
    {
        $data = $this->start(false);
        if ($renew) {
            session_regenerate_id(true);
        }
        $_SESSION = $change($data);
        $this->data = $_SESSION;
        session_write_close();
    }

    /** @return array<string, mixed> */
    private function start(bool $readOnly): array
    {
        session_start([
            'name' => self::NAME,
            'save_path' => $this->directory,
            'use_strict_mode' => '1',
            'use_only_cookies' => '1',
            'cookie_httponly' => '1',
            'cookie_samesite' => 'Lax',
            'cookie_secure' => $this->secure ? '1' : '0',
            'cookie_lifetime' => '0',
            'cache_limiter' => '',
            'gc_maxlifetime' => (string) self::IDLE,
            'gc_probability' => '1',
            'gc_divisor' => '100',
            'read_and_close' => $readOnly,
        ]);
        return $_SESSION;
    }
}
