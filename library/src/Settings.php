<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\BadArgument;

/** Settings of an agent's machine that are no tables. */
final class Settings
{
    private const MOST_RESOLVERS = 32;

    public function __construct(private readonly Probe $probe)
    {
    }

    /** Changes the agent's host name. */
    public function setHostName(string $name): void
    {
        if ($name === '' || strlen($name) > 255) {
            throw new BadArgument('A host name has 1 to 255 octets.');
        }
        $this->probe->link->set('rmon_set_hostname', [$name]);
    }

    /** @return list<string> the addresses of the agent's name servers, the first one first */
    public function resolvers(): array
    {
        return array_column($this->probe->table('resolvers')->page(PHP_INT_MAX), 'resolver');
    }

    /** Changes the agent's name servers. */
    public function setResolvers(string ...$addresses): void
    {
        if (count($addresses) > self::MOST_RESOLVERS) {
            throw new BadArgument('There can be at most ' . self::MOST_RESOLVERS . ' resolvers.');
        }
        foreach ($addresses as $address) {
            Address::parse($address);
        }
        $this->probe->link->set('rmon_set_resolvers', [array_values($addresses)]);
    }

    /** Switches on or off that devices which send NetFlow are learned. What was learned before is forgotten by that. */
    public function learnDevices(bool $on = true): void
    {
        $this->probe->link->set($on ? 'rmon_nde_learned_dev_enable' : 'rmon_nde_learned_dev_disable', []);
    }
}
