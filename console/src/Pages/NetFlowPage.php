<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Address;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Form;
use Rmon\Console\Block\Words;
use Rmon\Console\Form\Changes;
use Rmon\Console\Form\Input;
use Rmon\Console\Form\Plan;
use Rmon\Console\Page;
use Rmon\Console\Response;
use Rmon\Console\Table\Field;
use Rmon\Exception\BadArgument;
use Rmon\Format;

/** Devices that export NetFlow to the probe: those that were learned, those that were set, their sources and paths. */
final class NetFlowPage extends Page
{
    public const PATH = '/probe/{probe}/netflow';
    public const TITLE = 'NetFlow';
    public const GROUP = 'Applications';

    /** Seconds without a packet after which a device counts as silent. */
    private const SILENT = 300;

    public function blocks(): iterable
    {
        $probe = fn() => $this->visit->probe();
        yield 'answer' => new Words(fn(): array => $this->answer());
        yield 'learned' => DataTable::of($this->visit, fn() => $probe()->table('ndeLearnedDeviceTable'), [
            'address', 'numNdePkts', 'timeLastNdePkt', 'interfaces',
        ], fn(array $fields): array => [
            'address' => $fields['address']->titled('Device'),
            'numNdePkts' => $fields['numNdePkts']->titled('Packets'),
            'timeLastNdePkt' => $fields['timeLastNdePkt']->titled('Last packet'),
            'interfaces' => Field::text('interfaces', 'Interfaces of its flows', $this->interfaces(...)),
        ])->titled('Learned devices');
        yield 'devices' => DataTable::of($this->visit, fn() => $probe()->table('ndeDeviceTable'), [
            'address', 'deviceName', 'flag', 'commString',
        ], static fn(array $fields): array => [
            'address' => $fields['address']->titled('Device'),
            'deviceName' => $fields['deviceName']->titled('Name'),
            'commString' => $fields['commString']->titled('Community'),
            'flag' => Field::text('flag', 'Heard of', static fn(array $row) => ($row['flag'] & 1) !== 0 ? 'yes' : 'no'),
        ])->titled('Devices that were set')->beside('devices')
            ->emptyBecause(static fn(): string => 'No device was set: what is learned needs none.');
        yield 'sources' => DataTable::of($this->visit, fn() => $probe()->table('ndeDataSourceTable'), [
            'address', 'deviceName', 'datasrcIndex', 'datasrcName',
        ], static fn(array $fields): array => [
            'address' => $fields['address']->titled('Device'),
            'deviceName' => $fields['deviceName']->titled('Name'),
            'datasrcIndex' => $fields['datasrcIndex']->titled('Source'),
            'datasrcName' => $fields['datasrcName']->titled('Name of the source'),
        ])->titled('Data sources')->beside('sources')
            ->emptyBecause(static fn(): string => 'No data source was set on a device.');
        yield 'paths' => DataTable::of($this->visit, fn() => $probe()->table('ndeFlowPathTable'), [
            'address', 'deviceName', 'datasrcIndex', 'inputIndex', 'outputIndex',
        ], static fn(array $fields): array => [
            'address' => $fields['address']->titled('Device'),
            'deviceName' => $fields['deviceName']->titled('Name'),
            'datasrcIndex' => $fields['datasrcIndex']->titled('Source'),
            'inputIndex' => $fields['inputIndex']->titled('From interface'),
            'outputIndex' => $fields['outputIndex']->titled('To interface'),
        ])->titled('Flow paths')->beside('paths')
            ->emptyBecause(static fn(): string => 'No path was set on a data source.');
        yield 'learn' => new Form('Switch learning', 'learn', 'Change it', fn(): array => [
            Input::choice('on', 'Devices are learned', ['no', 'yes'], (int) $this->learns()),
        ], 'Switched on anew, the agent forgets what it learned before.');
        yield 'set-device' => new Form('Add or change a device', 'device', 'Set it', static fn(): array => [
            Input::text('address', 'Address', '', 'of the device, IPv4 or IPv6')->required(),
            Input::text('name', 'Name'),
            Input::text('community', 'Community', '', 'of the device\'s SNMP agent'),
        ]);
        yield 'set-source' => new Form('Add a data source', 'source', 'Add it', fn(): array => [
            Input::choice('device', 'Device', $this->devices()),
            Input::text('name', 'Name of the source')->required(),
        ]);
        yield 'set-path' => new Form('Add a flow path', 'path', 'Add it', fn(): array => [
            Input::choice('source', 'Source', $this->sources()),
            Input::number('input', 'From interface', '', 'its number on the device', 0, 0x7fffffff),
            Input::number('output', 'To interface', '', 'its number on the device', 0, 0x7fffffff),
        ]);
        yield 'remove' => new Form('Remove a device', 'remove', 'Remove it', fn(): array => [
            Input::choice('device', 'Device', $this->devices()),
        ], 'Its sources and paths go with it.');
    }

    public function post(): Response
    {
        return Changes::answer($this->visit, [
            'learn' => $this->planLearning(...),
            'device' => $this->planDevice(...),
            'source' => $this->planSource(...),
            'path' => $this->planPath(...),
            'remove' => $this->planRemoval(...),
        ]);
    }

    /** @return list<array{string, string}> */
    private function answer(): array
    {
        $devices = iterator_to_array($this->visit->probe()->table('ndeLearnedDeviceTable'), false);
        if ($devices === []) {
            return [[$this->learns() ? 'No device has sent NetFlow packets to this probe yet.'
                : 'Devices are not learned: that is switched off, or the agent takes no NetFlow packets.', 'answer']];
        }
        $now = $this->visit->probe()->uptime();
        $silent = array_filter(
            $devices,
            static fn(array $device) => $now - $device['timeLastNdePkt'] > 100 * self::SILENT,
        );
        $packets = number_format(array_sum(array_column($devices, 'numNdePkts')));
        $count = count($devices) === 1 ? '1 device has' : number_format(count($devices)) . ' devices have';
        $sentences = [["$count sent $packets NetFlow packets.", 'answer']];
        if ($silent !== []) {
            $names = array_map(
                static fn(array $device) => Address::text($device['address']),
                array_slice($silent, 0, 5),
            );
            $sentences[] = ['Silent for more than ' . Format::duration(self::SILENT) . ': ' . implode(', ', $names)
                . (count($silent) > 5 ? ' and others' : '') . '.', 'warning'];
        }
        return $sentences;
    }

    /**
     * "1 in and out, 2 out"
     *
     * @param array<string, mixed> $device
     */
    private function interfaces(array $device): string
    {
        $names = [];
        $table = $this->visit->probe()->table('ndeLearnedInterfaceTable', address: $device['address']);
        foreach ($table->page(12) as $row) {
            $names[] = $row['ifIndex'] . match ($row['dirFlag']) {
                1 => ' in',
                2 => ' out',
                3 => ' in and out',
                default => '',
            };
        }
        return implode(', ', array_slice($names, 0, 11)) . (count($names) > 11 ? ", \u{2026}" : '');
    }

    private function learns(): bool
    {
        return $this->visit->probe()->table('ndeLearning')->get()['state'] === 1;
    }

    /** @return array<string, string> */
    private function devices(): array
    {
        $devices = [];
        foreach ($this->visit->probe()->table('ndeDeviceTable')->page(1000) as $row) {
            $address = Address::text($row['address']);
            $devices[$address] = trim("$address $row[deviceName]");
        }
        return $devices;
    }

    /** @return array<string, string> by "address index" */
    private function sources(): array
    {
        $sources = [];
        foreach ($this->visit->probe()->table('ndeDataSourceTable')->page(1000) as $row) {
            $address = Address::text($row['address']);
            $sources["$address $row[datasrcIndex]"] = trim("$address: $row[datasrcIndex] $row[datasrcName]");
        }
        return $sources;
    }

    /** @param array<string, string> $given */
    private function planLearning(array $given): Plan
    {
        $on = ($given['on'] ?? '') === '1';
        $now = $this->learns();
        return new Plan(
            $on ? 'Devices are learned' : 'Devices are learned no more',
            $on === $now ? [] : [['Devices are learned', $now ? 'yes' : 'no', $on ? 'yes' : 'no']],
            fn() => $this->visit->probe()->settings()->learnDevices($on),
        );
    }

    /** @param array<string, string> $given */
    private function planDevice(array $given): Plan
    {
        $address = Address::parse(trim($given['address'] ?? ''));
        $table = $this->visit->probe()->table('ndeDeviceTable');
        $row = $table->get(address: $address);
        $text = Address::text($address);
        $wanted = ['deviceName' => trim($given['name'] ?? ''), 'commString' => trim($given['community'] ?? '')];
        return new Plan($row === null ? "Device $text is added" : "Device $text changes", Plan::differences(
            $row === null ? [] : ['Address' => $text, 'Name' => $row['deviceName'], 'Community' => $row['commString']],
            ['Address' => $text, 'Name' => $wanted['deviceName'], 'Community' => $wanted['commString']],
        ), static fn() => $table->set(...['address' => $address] + $wanted));
    }

    /** @param array<string, string> $given */
    private function planSource(array $given): Plan
    {
        $address = Address::parse($given['device'] ?? '');
        $name = trim($given['name'] ?? '');
        if ($name === '') {
            throw new BadArgument('A data source has a name.');
        }
        return new Plan(
            "Source $name is added",
            [['Source of ' . Address::text($address), '', $name]],
            fn() => $this->visit->probe()->table('ndeDataSourceTable')
                ->set(address: $address, datasrcIndex: 0, datasrcName: $name),
        );
    }

    /** @param array<string, string> $given */
    private function planPath(array $given): Plan
    {
        [$device, $source] = explode(' ', $given['source'] ?? '', 2) + [1 => ''];
        $address = Address::parse($device);
        $ends = array_map('intval', [$given['input'] ?? '', $given['output'] ?? '']);
        return new Plan(
            'A flow path is added',
            [["Path of source $source of $device", '', "from interface $ends[0] to $ends[1]"]],
            fn() => $this->visit->probe()->table('ndeFlowPathTable')->set(
                address: $address,
                datasrcIndex: (int) $source,
                inputIndex: $ends[0],
                outputIndex: $ends[1],
            ),
        );
    }

    /** @param array<string, string> $given */
    private function planRemoval(array $given): Plan
    {
        $address = Address::parse($given['device'] ?? '');
        $table = $this->visit->probe()->table('ndeDeviceTable');
        $row = $table->get(address: $address) ?? throw new BadArgument('There is no such device any more.');
        $text = Address::text($address);
        return new Plan(
            "Device $text is removed",
            [['Device', trim("$text $row[deviceName]"), ''], ['Its sources and paths', 'as they are', '']],
            static fn() => $table->delete(address: $address),
            true,
        );
    }
}
