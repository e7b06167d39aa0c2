<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\CallFailed;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\ConnectionLost;
use Rmon\Exception\ExtensionMissing;

/**
 * The way to one agent: makes the module's link, calls its functions over it, and turns what they report into
 * exceptions. A link that is lost is given up, and the next call makes a new one.
 *
 * Pages have no need of it: see Probe.
 */
final class Link
{
    private const KEPT_NOTICES = 20;

    /** What the module asks the environment for: the longest that it waits, in milliseconds. */
    private const LIMIT = 'RMONRPC_TIMEOUT';

    /** @var list<string> reports that came with a result, the latest last: a link made anew, a row without an owner */
    public array $notices = [];

    /** How often the link was made: whoever keeps what an agent said asks again when it is another one. */
    public int $made = 0;

    /** @var resource|null */
    private mixed $resource = null;

    private string $address = '';

    /**
     * @param string $host    a name or a dotted IPv4 address
     * @param int $port       1 to 65535
     * @param bool $persistent whether the link outlives the request
     * @param float $timeout  seconds that connecting may take
     * @param float|null $end the time of hrtime(), in seconds, up to which calls wait; null: as long as the module does
     */
    public function __construct(
        public readonly string $host,
        public readonly int $port,
        public readonly bool $persistent,
        public readonly float $timeout,
        public readonly ?float $end = null,
    ) {
        if (!function_exists('rmon_connect')) {
            throw new ExtensionMissing('The PHP module rmon is not loaded: extension=rmon in php.ini loads it.');
        }
        if ($host === '' || strlen($host) > 255 || preg_match('/[\s\0:\/]/', $host)) {
            throw new BadArgument("\"$host\" is no host name and no IPv4 address.");
        }
        if ($port < 1 || $port > 65535) {
            throw new BadArgument("$port is no TCP port.", $host);
        }
    }

    /**
     * Reads: what is lost on the way is asked for once more over a new link.
     *
     * @param list<mixed> $arguments what the function takes behind the link
     * @param bool $quiet            whether the function keeps silent when the call fails, so that "nothing" has to be
     *                               told apart from a dead link by a call that speaks
     * @throws ConnectionFailed|CallFailed|BadArgument
     */
    public function read(string $function, array $arguments, bool $quiet = false): mixed
    {
        try {
            return $this->ask($function, $arguments, $quiet);
        } catch (ConnectionLost $lost) {
            if (str_contains($lost->text, 'Timed out')) {
                throw $lost;
            }
            return $this->ask($function, $arguments, $quiet);
        }
    }

    /**
     * Calls a function of the module, once.
     *
     * @param list<mixed> $arguments what the function takes behind the link
     * @throws ConnectionFailed|CallFailed|BadArgument
     */
    public function call(string $function, array $arguments): mixed
    {
        $resource = $this->resource ?? $this->open();
        $reports = [];
        set_error_handler(static function (int $level, string $text) use (&$reports): bool {
            $reports[] = [$level, $text];
            return true;
        });
        try {
            $result = $this->invoke($function, $resource, ...$arguments);
        } finally {
            restore_error_handler();
        }
        if ($reports !== []) {
            $this->consider($function, $reports, $result !== false && $result !== null);
        }
        return $result;
    }

    /**
     * Calls a function that changes something, once.
     *
     * @param list<mixed> $arguments what the function takes behind the link
     * @throws AgentRefused|ConnectionFailed|CallFailed|BadArgument
     */
    public function set(string $function, array $arguments): void
    {
        $answer = $this->call($function, $arguments);
        if (!is_int($answer)) {
            // Functions that keep silent when a call fails: a dead link says so in this call.
            $this->call('rmon_system_get', []);
            throw $this->unanswered($function);
        }
        if ($answer !== ErrorStatus::noError->value) {
            throw AgentRefused::with($answer, $this->host, $this->port, $function);
        }
    }

    /** What a call has failed with that the module says nothing about, over a link that carries calls. */
    public function unanswered(string $function): CallFailed
    {
        return new CallFailed('The agent gave no usable answer.', $this->host, $this->port, $function);
    }

    /** The link itself, for the module's own functions. */
    public function resource(): mixed
    {
        return $this->resource ?? $this->open();
    }

    /**
     * Gives the link up, as often as it was opened: until then the functions hand out the same one again, dead or
     * alive. A persistent one stays with the process.
     */
    public function close(): void
    {
        while (is_resource($this->resource)) {
            set_error_handler(static fn(): bool => true);
            try {
                $closed = rmon_close($this->resource);
            } finally {
                restore_error_handler();
            }
            if ($closed !== true) {
                break;
            }
        }
        $this->resource = null;
    }

    /** @param list<mixed> $arguments */
    private function ask(string $function, array $arguments, bool $quiet): mixed
    {
        $result = $this->call($function, $arguments);
        if ($quiet && ($result === false || (is_array($result) && ($result[0] ?? 0) === -1))) {
            $this->call('rmon_system_get', []);
        }
        return $result;
    }

    /**
     * Makes the link. The module's connect has no time-out of a caller's choice, so a plain TCP connect is tried
     * first. The module tells links apart by the host's text alone: the text names the port as well.
     *
     * @return resource
     */
    private function open(): mixed
    {
        $this->address = gethostbyname($this->host);
        if (filter_var($this->address, FILTER_VALIDATE_IP, FILTER_FLAG_IPV4) === false) {
            throw new ConnectionFailed("\"$this->host\" has no IPv4 address.", $this->host, $this->port);
        }
        $this->knock();
        $before = ini_set('rmon.default_port', (string) $this->port);
        if ($before === false) {
            throw new ConnectionFailed('rmon.default_port can\'t be set.', $this->host, $this->port);
        }
        $connect = $this->persistent ? 'rmon_pconnect' : 'rmon_connect';
        $reports = [];
        set_error_handler(static function (int $level, string $text) use (&$reports): bool {
            $reports[] = $text;
            return true;
        });
        try {
            $resource = $this->invoke($connect, self::spelled($this->address, $this->port));
        } finally {
            restore_error_handler();
            ini_set('rmon.default_port', $before);
        }
        if (!is_resource($resource)) {
            $text = $reports === [] ? 'The connection failed.' : implode(' ', $reports);
            throw new ConnectionFailed($text, $this->host, $this->port, $connect);
        }
        array_walk($reports, $this->note(...));
        $this->made++;
        return $this->resource = $resource;
    }

    /** Calls a function of the module, which waits for no more than the time that is left. */
    private function invoke(string $function, mixed ...$arguments): mixed
    {
        if ($this->end === null) {
            return $function(...$arguments);
        }
        $before = getenv(self::LIMIT);
        $left = max(1, (int) ceil(1000 * ($this->end - hrtime(true) / 1e9)));
        putenv(self::LIMIT . '=' . (is_numeric($before) && $before > 0 ? min($left, (int) $before) : $left));
        try {
            return $function(...$arguments);
        } finally {
            putenv($before === false ? self::LIMIT : self::LIMIT . "=$before");
        }
    }

    private function knock(): void
    {
        $reason = '';
        set_error_handler(static fn(): bool => true);
        try {
            $socket = stream_socket_client("tcp://$this->address:$this->port", $code, $reason, $this->timeout);
        } finally {
            restore_error_handler();
        }
        if ($socket === false) {
            $reason = $reason === '' ? 'no answer' : $reason;
            throw new ConnectionFailed("No agent can be reached: $reason.", $this->host, $this->port);
        }
        fclose($socket);
    }

    /**
     * An address that reads the same to inet_aton() for every port and is another text for each: an octet is written
     * in decimal, or in hexadecimal behind 0 to 14 zeros, which makes 16 ways for each four bits of the port.
     */
    private static function spelled(string $address, int $port): string
    {
        $octets = [];
        foreach (explode('.', $address) as $place => $octet) {
            $way = $port >> 4 * $place & 15;
            $octets[] = $way === 0 ? $octet : '0x' . str_repeat('0', $way - 1) . dechex((int) $octet);
        }
        return implode('.', $octets);
    }

    /**
     * What reports mean: a call that failed, also where the function makes a result of it, or something that came with
     * a result, as that settings were set but can't be written out.
     *
     * @param list<array{int, string}> $reports
     */
    private function consider(string $function, array $reports, bool $done): void
    {
        foreach ($reports as [$level, $text]) {
            $text = trim($text);
            $reason = strstr($text, 'RPC: ');
            if ($level !== E_WARNING || ($done && $reason === false)) {
                $this->note($text);
                continue;
            }
            if (str_ends_with($text, 'is not a RMON/RPC conn id!')) {
                $this->resource = null;
                throw new ConnectionLost('The link was closed.', $this->host, $this->port, $function);
            }
            if ($reason === false) {
                throw new BadArgument($text, $this->host, $this->port, $function);
            }
            if (preg_match('/Unable to (send|receive)|Timed out/', $reason)) {
                $this->close();
                throw new ConnectionLost($reason, $this->host, $this->port, $function);
            }
            throw new CallFailed($reason, $this->host, $this->port, $function);
        }
    }

    private function note(string $text): void
    {
        $this->notices[] = $text;
        if (count($this->notices) > self::KEPT_NOTICES) {
            array_shift($this->notices);
        }
    }
}
