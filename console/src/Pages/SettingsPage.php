<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Address;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Facts;
use Rmon\Console\Block\Form;
use Rmon\Console\Block\Panels;
use Rmon\Console\Form\Changes;
use Rmon\Console\Form\Input;
use Rmon\Console\Form\Plan;
use Rmon\Console\Page;
use Rmon\Console\Response;
use Rmon\Exception\BadArgument;
use Rmon\Format;
use Rmon\Table;

/** The agent's own settings: its system group, network, name servers, trap receivers and communities. */
final class SettingsPage extends Page
{
    public const PATH = '/probe/{probe}/settings';
    public const TITLE = 'Settings';
    public const GROUP = 'Probe';

    private const SYSTEM = ['sysName' => 'Name', 'sysLocation' => 'Location', 'sysContact' => 'Contact'];

    private const NETWORK = [
        'ipAddress' => 'Address',
        'ipNetmask' => 'Netmask',
        'ipBroadcast' => 'Broadcast address',
        'ipGateway' => 'Gateway',
    ];

    private const PRIVILEGES = [1 => 'read', 2 => 'read and write'];

    /** Whose rows are that people set here: they stay, also when nobody looks. */
    private const OWNER = 'console';

    public function blocks(): iterable
    {
        yield 'facts' => new Panels([
            'system' => new Facts($this->system(...), 'System'),
            'network' => new Facts($this->network(...), 'Network'),
        ]);
        yield 'communities' => DataTable::of($this->visit, fn() => $this->table('communityTable'), [
            'communityString', 'privs',
        ], static fn(array $fields): array => [
            'communityString' => $fields['communityString']->titled('Community'),
            'privs' => $fields['privs']->titled('May'),
        ])->titled('SNMP communities')->emptyBecause(static fn(): string => 'No community is set.');
        yield 'traps' => DataTable::of($this->visit, fn() => $this->table('trapDestTable'), [
            'trapDestIndex', 'trapDestAddress', 'trapDestCommunity', 'trapDestProtocol', 'trapDestOwner',
        ], static fn(array $fields): array => [
            'trapDestIndex' => $fields['trapDestIndex']->titled('Receiver'),
            'trapDestAddress' => $fields['trapDestAddress']->titled('Address'),
            'trapDestCommunity' => $fields['trapDestCommunity']->titled('Community'),
        ])->titled('Trap receivers')->beside('traps')
            ->emptyBecause(static fn(): string => 'Traps go nowhere: no receiver is set.');
        yield 'set-system' => new Form('Change the system group', 'system', 'Change it', function (): array {
            $system = $this->visit->probe()->system();
            return array_map(
                static fn(string $name) => Input::text($name, self::SYSTEM[$name], $system[$name]),
                array_keys(self::SYSTEM),
            );
        });
        yield 'set-network' => new Form('Change the network', 'network', 'Change it', fn(): array => [
            ...array_map(
                fn(string $name) => Input::text($name, self::NETWORK[$name], $this->ipConfig()[$name]),
                array_keys(self::NETWORK),
            ),
            Input::text(
                'resolvers',
                'Name servers',
                implode(' ', $this->visit->probe()->settings()->resolvers()),
                'addresses, the first one first',
            ),
        ]);
        yield 'set-community' => new Form('Add or change a community', 'community', 'Set it', static fn(): array => [
            Input::text('community', 'Community')->required(),
            Input::choice('privs', 'May', self::PRIVILEGES),
        ]);
        yield 'remove-community' => new Form('Remove a community', 'remove-community', 'Remove it', fn(): array => [
            Input::choice('community', 'Community', $this->communities()),
        ]);
        yield 'set-trap' => new Form('Add a trap receiver', 'trap', 'Add it', static fn(): array => [
            Input::text('address', 'Address', '', 'IPv4')->required(),
            Input::text('community', 'Community')->required(),
        ]);
        yield 'remove-trap' => new Form('Remove a trap receiver', 'remove-trap', 'Remove it', fn(): array => [
            Input::choice('receiver', 'Receiver', $this->receivers()),
        ]);
    }

    public function post(): Response
    {
        return Changes::answer($this->visit, [
            'system' => $this->planSystem(...),
            'network' => $this->planNetwork(...),
            'community' => $this->planCommunity(...),
            'remove-community' => $this->planCommunityRemoval(...),
            'trap' => $this->planTrap(...),
            'remove-trap' => $this->planTrapRemoval(...),
        ]);
    }

    private function table(string $name): Table
    {
        return $this->visit->probe()->table($name);
    }

    /** @return array<string, string> */
    private function system(): array
    {
        $system = $this->visit->probe()->system();
        return [
            'Name' => $system['sysName'] ?: '-',
            'Location' => $system['sysLocation'] ?: '-',
            'Contact' => $system['sysContact'] ?: '-',
            'Description' => $system['sysDescr'],
            'Object identifier' => $system['sysObjectID'],
            'Up for' => Format::ticks($system['sysUpTime']),
        ];
    }

    /** @return array<string, string> */
    private function network(): array
    {
        $config = $this->ipConfig();
        $facts = [];
        foreach (self::NETWORK as $name => $label) {
            $facts[$label] = $config[$name] ?: '-';
        }
        $interface = $config['ipInterface'];
        return $facts + [
            'Interface' => $interface === 0
                ? 'that of the default route'
                : $this->visit->probe()->interfaces()->name($interface) ?? (string) $interface,
            'Name servers' => implode(', ', $this->visit->probe()->settings()->resolvers()) ?: '-',
        ];
    }

    /** @return array<string, mixed> */
    private function ipConfig(): array
    {
        return $this->table('ipConfig')->get() ?? [];
    }

    /** @return array<string, string> */
    private function communities(): array
    {
        return array_column($this->table('communityTable')->page(1000), 'communityString', 'communityString');
    }

    /** @return array<int, string> */
    private function receivers(): array
    {
        $receivers = [];
        foreach ($this->table('trapDestTable') as $row) {
            $receivers[$row['trapDestIndex']] = "$row[trapDestIndex]: " . Address::text($row['trapDestAddress'])
                . ($row['trapDestOwner'] === '' ? '' : ", of $row[trapDestOwner]");
        }
        return $receivers;
    }

    /** @param array<string, string> $given */
    private function planSystem(array $given): Plan
    {
        $system = $this->visit->probe()->system();
        $before = [];
        $after = [];
        $wanted = [];
        foreach (self::SYSTEM as $name => $label) {
            $before[$label] = $system[$name];
            $after[$label] = trim($given[$name] ?? $system[$name]);
            $wanted[$name] = $after[$label];
        }
        return new Plan('The system group changes', Plan::differences($before, $after), fn() => $this->table('system')
            ->set(...$wanted));
    }

    /** @param array<string, string> $given */
    private function planNetwork(array $given): Plan
    {
        $config = $this->ipConfig();
        $settings = $this->visit->probe()->settings();
        $before = ['Name servers' => implode(' ', $settings->resolvers())];
        $after = ['Name servers' => implode(' ', self::words($given['resolvers'] ?? $before['Name servers']))];
        $wanted = ['ipInterface' => $config['ipInterface']];
        foreach (self::NETWORK as $name => $label) {
            $before[$label] = $config[$name];
            $after[$label] = $wanted[$name] = trim($given[$name] ?? $config[$name]);
        }
        foreach (self::words(implode(' ', $after)) as $address) {
            Address::parse($address);
        }
        $lines = Plan::differences($before, $after);
        return new Plan('The network changes', $lines, function () use (
            $settings,
            $wanted,
            $after,
            $before,
            $lines,
        ): void {
            if ($after['Name servers'] !== $before['Name servers']) {
                $settings->setResolvers(...self::words($after['Name servers']));
            }
            if (array_diff(array_column($lines, 0), ['Name servers']) !== []) {
                $this->table('ipConfig')->set(...$wanted);
            }
        }, true);
    }

    /** @return list<string> */
    private static function words(string $text): array
    {
        return preg_split('/[\s,]+/', $text, -1, PREG_SPLIT_NO_EMPTY);
    }

    /** @param array<string, string> $given */
    private function planCommunity(array $given): Plan
    {
        $community = trim($given['community'] ?? '');
        $may = (int) ($given['privs'] ?? 1);
        if ($community === '' || !isset(self::PRIVILEGES[$may])) {
            throw new BadArgument('A community has a name, and may read, or read and write.');
        }
        $row = $this->table('communityTable')->get(communityString: $community);
        return new Plan("Community $community is set", Plan::differences(
            $row === null ? [] : [$community => self::PRIVILEGES[$row['privs']] ?? ''],
            [$community => self::PRIVILEGES[$may]],
        ), fn() => $this->table('communityTable')->set(communityString: $community, privs: $may));
    }

    /** @param array<string, string> $given */
    private function planCommunityRemoval(array $given): Plan
    {
        $community = $given['community'] ?? '';
        return new Plan(
            "Community $community is removed",
            [['Community', $community, '']],
            fn() => $this->table('communityTable')->delete(communityString: $community),
            true,
        );
    }

    /** @param array<string, string> $given */
    private function planTrap(array $given): Plan
    {
        $address = Address::parse(trim($given['address'] ?? ''));
        $community = trim($given['community'] ?? '');
        $table = $this->table('trapDestTable');
        $index = $table->unusedIndex();
        return new Plan(
            "Trap receiver $index is added",
            Plan::differences([], ['Address' => Address::text($address), 'Community' => $community]),
            fn() => $table->create(
                trapDestIndex: $index,
                trapDestAddress: $address,
                trapDestCommunity: $community,
                trapDestProtocol: count($address) === 4 ? 'ip.udp.snmptrap' : 'ip6.udp.snmptrap',
                trapDestOwner: self::OWNER,
            ),
        );
    }

    /** @param array<string, string> $given */
    private function planTrapRemoval(array $given): Plan
    {
        $index = (int) ($given['receiver'] ?? 0);
        $receiver = $this->receivers()[$index] ?? throw new BadArgument('There is no such receiver any more.');
        return new Plan(
            "Trap receiver $index is removed",
            [['Receiver', $receiver, '']],
            fn() => $this->table('trapDestTable')->delete(trapDestIndex: $index),
            true,
        );
    }
}
