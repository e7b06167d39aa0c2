<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

/**
 * Which agents answer, asked of all of them at the same time and within a time of the caller's choice: the module's own
 * calls wait for each agent in turn, and much longer for one that takes calls and never answers.
 *
 * What is asked is the call that every program of ONC RPC answers with nothing, procedure 0.
 */
final class Presence
{
    private const PROGRAM = 99999;
    private const VERSION = 1;

    /** A record of one fragment has the highest bit of its length set. */
    private const LAST_FRAGMENT = 0x80000000;

    private const CALL = 0;
    private const REPLY = 1;
    private const RPC_VERSION = 2;

    /** Octets of an answer that tell whose it is: the record's mark, the call's number, and that it is a reply. */
    private const HEAD = 12;

    /**
     * The agents that don't answer, and why.
     *
     * @param array<array-key, array{string, int}> $agents hosts and ports, by any names
     * @param float $seconds how long to wait, for all of them together; name look-ups apart
     * @return array<array-key, string> by the same names; who answers isn't in it
     */
    public static function missing(array $agents, float $seconds): array
    {
        $missing = [];
        $calling = [];
        foreach ($agents as $name => [$host, $port]) {
            $socket = self::connect($host, $port, $seconds, $missing[$name]);
            if ($socket !== null) {
                $calling[$name] = $socket;
            }
        }
        $missing = array_filter($missing, is_string(...));
        $number = random_int(0, 0x7fffffff);
        $heard = [];
        $end = hrtime(true) / 1e9 + $seconds;
        while ($calling !== [] && ($left = $end - hrtime(true) / 1e9) > 0) {
            $read = array_intersect_key($calling, $heard);
            $write = array_diff_key($calling, $heard);
            $except = null;
            if (!self::select($read, $write, $except, $left)) {
                break;
            }
            foreach (array_keys($write) as $name) {
                if (stream_socket_get_name($calling[$name], true) === false) {
                    $missing[$name] = 'Connection refused';
                } elseif (@fwrite($calling[$name], self::call($number)) === false) {
                    $missing[$name] = 'The connection was closed';
                }
                $heard[$name] = '';
            }
            foreach (array_keys($read) as $name) {
                $bytes = @fread($calling[$name], self::HEAD - strlen($heard[$name]));
                $heard[$name] .= (string) $bytes;
                if ($bytes === '' || $bytes === false) {
                    $missing[$name] = 'The connection was closed';
                } elseif (strlen($heard[$name]) === self::HEAD) {
                    $isReply = array_slice(array_values(unpack('N3', $heard[$name])), 1) === [$number, self::REPLY];
                    $missing[$name] = $isReply ? '' : 'What answers there is no agent';
                }
            }
            $calling = array_diff_key($calling, $missing);
        }
        foreach ($calling as $name => $socket) {
            $missing[$name] = isset($heard[$name]) ? 'It takes calls and does not answer' : 'No answer';
        }
        return array_filter($missing, static fn(string $reason) => $reason !== '');
    }

    /** @return resource|null a socket on its way; null with a reason when it can't be one */
    private static function connect(string $host, int $port, float $seconds, ?string &$reason): mixed
    {
        $address = gethostbyname($host);
        if (filter_var($address, FILTER_VALIDATE_IP, FILTER_FLAG_IPV4) === false) {
            $reason = "\"$host\" has no IPv4 address";
            return null;
        }
        $flags = STREAM_CLIENT_CONNECT | STREAM_CLIENT_ASYNC_CONNECT;
        $socket = @stream_socket_client("tcp://$address:$port", $code, $text, $seconds, $flags);
        if ($socket === false) {
            $reason = (string) $text === '' ? 'No connection' : $text;
            return null;
        }
        stream_set_blocking($socket, false);
        return $socket;
    }

    /**
     * @param array<array-key, resource> $read
     * @param array<array-key, resource> $write
     */
    private static function select(array &$read, array &$write, ?array &$except, float $seconds): bool
    {
        $whole = (int) $seconds;
        return @stream_select($read, $write, $except, $whole, (int) (($seconds - $whole) * 1e6)) > 0;
    }

    private static function call(int $number): string
    {
        // Without credentials and verifier: each a kind, none, and a length of 0.
        $body = pack('N10', $number, self::CALL, self::RPC_VERSION, self::PROGRAM, self::VERSION, 0, 0, 0, 0, 0);
        return pack('N', self::LAST_FRAGMENT | strlen($body)) . $body;
    }
}
