<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\ErrorStatus;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\UnknownName;
use Rmon\Probe;
use Rmon\RowStatus;

/** Rows that are made, changed and removed. */
final class SetTest extends AgentTestCase
{
    private Probe $probe;

    protected function setUp(): void
    {
        $frame = \ethernet(\mac(1), \mac(2), 0x0800, \ip4('10.0.0.1', '10.0.0.2', 17, \udp(1000, 53)));
        $this->probe = $this->probe($this->playing([[0.0, $frame]], '--voice', __DIR__ . '/../../agent/voice.ini'));
    }

    public function testANewRowWorksAtOnce(): void
    {
        $alarms = $this->probe->table('alarmTable');
        $alarms->set(alarmIndex: 7, alarmVariable: 'etherStatsPkts.1', alarmRisingThreshold: 100, alarmOwner: 'test');
        $row = $alarms->get(alarmIndex: 7);
        self::assertSame(
            [100, 'etherStatsPkts.1', 10, 2, 'test', RowStatus::valid->value],
            [$row['alarmRisingThreshold'], $row['alarmVariable'], $row['alarmInterval'], $row['alarmSampleType'],
                $row['alarmOwner'], $row['alarmStatus']],
        );
    }

    public function testAChangeKeepsTheRest(): void
    {
        $alarms = $this->probe->table('alarmTable');
        $alarms->set(alarmIndex: 7, alarmVariable: 'sysUpTime.0', alarmRisingThreshold: 100, alarmOwner: 'test');
        $alarms->set(alarmIndex: 7, alarmStatus: RowStatus::underCreation);
        self::assertSame(RowStatus::underCreation->value, $alarms->get(alarmIndex: 7)['alarmStatus']);
        $alarms->set(alarmIndex: 7, alarmRisingThreshold: 200);
        $row = $alarms->get(alarmIndex: 7);
        self::assertSame(
            [200, 'sysUpTime.0', 'test', RowStatus::underCreation->value],
            [$row['alarmRisingThreshold'], $row['alarmVariable'], $row['alarmOwner'], $row['alarmStatus']],
        );
    }

    public function testARefusedRowLeavesNothing(): void
    {
        $alarms = $this->probe->table('alarmTable');
        $refused = $this->thrown(fn() => $alarms->set(
            alarmIndex: 7,
            alarmVariable: 'noSuchVariable.1',
            alarmRisingThreshold: 1,
        ));
        self::assertInstanceOf(AgentRefused::class, $refused);
        self::assertSame(ErrorStatus::badValue, $refused->error());
        self::assertSame('rmon_alarm_set', $refused->function);
        self::assertNull($alarms->get(alarmIndex: 7));
    }

    public function testWhatIsMissingIsNamed(): void
    {
        $bad = $this->thrown(fn() => $this->probe->table('alarmTable')->set(alarmIndex: 7));
        self::assertInstanceOf(BadArgument::class, $bad);
        self::assertSame('alarmTable needs alarmVariable, alarmRisingThreshold.', $bad->text);
        $bad = $this->thrown(fn() => $this->probe->table('alarmTable')->get());
        self::assertSame('alarmTable needs alarmIndex to find a row.', $bad->text);
    }

    public function testWhatCannotBeSet(): void
    {
        $unknown = $this->thrown(fn() => $this->probe->table('alarmTable')->set(alarmIndex: 7, alarmValue: 1));
        self::assertInstanceOf(UnknownName::class, $unknown);
        $unset = $this->thrown(fn() => $this->probe->table('hostTable')->set(hostIndex: 1));
        self::assertInstanceOf(BadArgument::class, $unset);
        self::assertInstanceOf(BadArgument::class, $this->thrown(fn() => $this->probe->table('system')->delete()));
    }

    public function testARowIsRemoved(): void
    {
        $hosts = $this->probe->table('hostControlTable');
        $hosts->set(hostControlIndex: 4, hostControlDataSource: 1);
        self::assertNotNull($hosts->get(hostControlIndex: 4));
        $hosts->delete(hostControlIndex: 4);
        self::assertNull($hosts->get(hostControlIndex: 4));
        $refused = $this->thrown(fn() => $hosts->delete(hostControlIndex: 4));
        self::assertSame(ErrorStatus::noSuchName, $refused->error());
    }

    public function testAnInterfaceByItsName(): void
    {
        $name = $this->probe->interfaces()->name(1);
        $this->probe->table('matrixControlTable')->set(matrixControlIndex: 2, matrixControlDataSource: $name);
        $row = $this->probe->table('matrixControlTable')->get(matrixControlIndex: 2);
        self::assertSame(1, $row['matrixControlDataSource']);
        $unknown = $this->thrown(fn() => $this->probe->table('matrixControlTable')
            ->set(matrixControlIndex: 3, matrixControlDataSource: 'eth99'));
        self::assertInstanceOf(UnknownName::class, $unknown);
    }

    public function testSingleValues(): void
    {
        $system = $this->probe->table('system');
        $system->set(sysContact: 'the operator');
        $system->set(sysLocation: 'rack 7');
        $row = $system->get();
        self::assertSame(['the operator', 'rack 7'], [$row['sysContact'], $row['sysLocation']]);
        $this->probe->table('addressMap')->set(addressMapMaxDesiredEntries: 500);
        self::assertSame(500, $this->probe->table('addressMap')->get()['addressMapMaxDesiredEntries']);
        $this->probe->table('dsmonAggControlLocked')->set(dsmonAggControlLocked: 'true');
        self::assertSame(1, $this->probe->table('dsmonAggControlLocked')->get()['dsmonAggControlLocked']);
    }

    public function testNamesOfGroups(): void
    {
        $profiles = $this->probe->table('dsmonAggControlTable');
        $profiles->set(dsmonAggControlIndex: 3, dsmonAggControlStatus: RowStatus::createRequest);
        $groups = $this->probe->table('dsmonAggGroupTable', control: 3);
        $groups->set(dsmonAggGroupIndex: 0, dsmonAggGroupDescr: 'rest');
        self::assertSame('rest', $groups->get(dsmonAggGroupIndex: 0)['dsmonAggGroupDescr']);
        $groups->set(dsmonAggGroupIndex: 0, dsmonAggGroupDescr: 'all');
        self::assertSame('all', $groups->get(dsmonAggGroupIndex: 0)['dsmonAggGroupDescr']);
        $groups->delete(dsmonAggGroupIndex: 0);
        self::assertNull($groups->get(dsmonAggGroupIndex: 0));
    }

    public function testCommunities(): void
    {
        $communities = $this->probe->table('communityTable');
        foreach (['public', '10', '9', '1e1'] as $name) {
            $communities->set(communityString: $name, privs: 'readOnly');
        }
        $communities->set(communityString: 'public', privs: 'readWrite');
        $rows = self::listOf($communities);
        self::assertSame(['9', '10', '1e1', 'public'], array_column($rows, 'communityString'));
        self::assertSame([1, 1, 1, 2], array_column($rows, 'privs'));
        $communities->delete(communityString: '10');
        self::assertNull($communities->get(communityString: '10'));
    }

    public function testNetFlowDevices(): void
    {
        $devices = $this->probe->table('ndeDeviceTable');
        $devices->set(address: '10.8.0.1', commString: 'public', deviceName: 'router');
        $devices->set(address: '10.8.0.1', deviceName: 'core');
        self::assertSame('core', $devices->get(address: '10.8.0.1')['deviceName']);
        $sources = $this->probe->table('ndeDataSourceTable', address: '10.8.0.1');
        $sources->set(datasrcName: 'one');
        $index = $sources->first()['datasrcIndex'];
        $sources->set(datasrcIndex: $index, datasrcName: 'two');
        self::assertSame('two', $sources->get(datasrcIndex: $index)['datasrcName']);
        $paths = $this->probe->table('ndeFlowPathTable', address: '10.8.0.1', datasrcIndex: $index);
        $paths->set(inputIndex: 1, outputIndex: 2);
        self::assertCount(1, self::listOf($paths));
        $paths->delete(inputIndex: 1, outputIndex: 2);
        self::assertCount(0, self::listOf($paths));
        $sources->delete(datasrcIndex: $index);
        self::assertNull($sources->first());
        $devices->delete(address: '10.8.0.1');
        self::assertNull($devices->first());
    }

    public function testSettings(): void
    {
        $settings = $this->probe->settings();
        $settings->setResolvers('10.0.0.53', 'fd00::53');
        self::assertSame(['10.0.0.53', 'fd00::53'], $settings->resolvers());
        $settings->setResolvers();
        self::assertSame([], $settings->resolvers());
        // This machine is no appliance: the module says that it can't write the settings out, which the agent took.
        self::assertContains('unable to read norv_settings file!', $this->probe->link->notices);
        self::assertInstanceOf(BadArgument::class, $this->thrown(fn() => $settings->setResolvers('resolver')));
        $refused = $this->thrown(fn() => $settings->setHostName('not a name'));
        self::assertSame(ErrorStatus::badValue, $refused->error());
        // Without --netflow there is nothing to learn from.
        self::assertInstanceOf(AgentRefused::class, $this->thrown(fn() => $settings->learnDevices()));
        $settings->learnDevices(false);
    }

    public function testVoiceMonitors(): void
    {
        $monitor = $this->probe->voice('sccp');
        $monitor->setTableSizes(10, 20, 5, 6);
        $monitor->setThresholds(40, 7);
        $monitor->alarm('latency');
        $monitor->enable(false);
        $config = $monitor->config();
        self::assertSame(
            [0, 10, 20, 5, 6, 6, 40, 7, 1000, 0, 0, 1],
            array_map(static fn(int $value) => $value > 1 ? $value : (int) (bool) $value, array_values($config)),
        );
        self::assertNotNull($this->probe->table('sccpPhoneTable')->first());
        $monitor->clear('phones');
        self::assertNull($this->probe->table('sccpPhoneTable')->first());
        self::assertArrayHasKey('num_call_mon', $monitor->aggregate());
        foreach (['h323', 'mgcp'] as $other) {
            $this->probe->voice($other)->setThresholds(11, 12);
            self::assertSame(11, $this->probe->voice($other)->config()['jitter_threshold']);
        }
        $bad = $this->thrown(fn() => $this->probe->voice('h323')->alarm('latency'));
        self::assertInstanceOf(BadArgument::class, $bad);
        self::assertInstanceOf(UnknownName::class, $this->thrown(fn() => $this->probe->voice('sip')));
        self::assertInstanceOf(BadArgument::class, $this->thrown(fn() => $monitor->setThresholds(-1, 0)));
    }

    public function testTextsThatAreTooLongAreNotSent(): void
    {
        $bad = $this->thrown(fn() => $this->probe->table('dsmonAggControlTable')
            ->set(dsmonAggControlIndex: 1, dsmonAggControlDescr: str_repeat('x', 65)));
        self::assertSame('dsmonAggControlDescr has at most 64 octets.', $bad->text);
    }

    public function testARowThatWorksIsMadeAnew(): void
    {
        $probe = $this->probe($this->bundled());
        $table = $probe->table('alarmTable');
        $table->set(alarmIndex: 1, alarmVariable: 'sysUpTime.0', alarmRisingThreshold: 100, alarmInterval: 30);
        $table->set(alarmIndex: 2, alarmVariable: 'sysUpTime.0', alarmRisingThreshold: 100);
        $table->set(alarmIndex: 4, alarmVariable: 'sysUpTime.0', alarmRisingThreshold: 100);
        self::assertSame(3, $table->unusedIndex());
        self::assertSame(1, $probe->table('eventTable')->unusedIndex());
        $table->replace(alarmIndex: 1, alarmRisingThreshold: 250);
        $row = $table->get(alarmIndex: 1);
        self::assertSame([250, 30, 'sysUpTime.0', 1], [
            $row['alarmRisingThreshold'], $row['alarmInterval'], $row['alarmVariable'], $row['alarmStatus'],
        ]);
        $refused = $this->thrown(static fn() => $table->replace(alarmIndex: 1, alarmVariable: 'noSuchVariable.0'));
        self::assertInstanceOf(AgentRefused::class, $refused);
        $again = $table->get(alarmIndex: 1);
        self::assertSame([250, 'sysUpTime.0', 1], [
            $again['alarmRisingThreshold'], $again['alarmVariable'], $again['alarmStatus'],
        ], 'it is there as it was');
        $no = $this->thrown(static fn() => $table->replace(alarmIndex: 9));
        self::assertSame('alarmTable has no such row.', $no->text);
        $this->expectException(BadArgument::class);
        $probe->table('logTable')->unusedIndex();
    }
}
