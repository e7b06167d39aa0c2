<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

/** An agent that may be asked. */
final class Target
{
    private function __construct(
        /** A dotted IPv4 address: what was looked at is what is connected to, whatever a name stands for later. */
        public readonly string $address,
        public readonly int $port,
    ) {
    }

    /**
     * @param string $text HOST[:PORT]
     * @throws Refusal when it isn't one of those that the configuration permits
     */
    public static function of(string $text, Configuration $configuration): self
    {
        if (!preg_match('/^([A-Za-z0-9][A-Za-z0-9.-]{0,252})(?::(\d{1,5}))?$/D', $text, $parts)) {
            throw new Refusal(400, 'target is the address of an agent, HOST or HOST:PORT.');
        }
        $port = isset($parts[2]) ? (int) $parts[2] : $configuration->usualPort();
        if (!$configuration->permitsPort($port)) {
            throw new Refusal(403, 'The configuration permits no target on that port.');
        }
        $address = $parts[1];
        if (filter_var($address, FILTER_VALIDATE_IP, FILTER_FLAG_IPV4) === false) {
            if (!$configuration->names) {
                throw new Refusal(403, 'The configuration permits IPv4 addresses alone as targets, no names.');
            }
            $address = gethostbyname($address);
        }
        if (!$configuration->networks->hold($address)) {
            throw new Refusal(403, 'The configuration permits no target in that network.');
        }
        return new self($address, $port);
    }
}
