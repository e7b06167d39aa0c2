<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use DOMElement;
use DOMNode;

/** What operators change: alarms, voice monitors, NetFlow, settings; shown before it is done, and refused to others. */
final class FormsTest extends ConsoleTestCase
{
    /** What a form of a page brings when it is sent from that page. */
    private static function sent(Served $console, string $path, array $fields): array
    {
        $token = $console->get($path)->attribute('//input[@name="token"]', 'value');
        self::assertNotNull($token, "$path has a form");
        return ['token' => $token] + $fields;
    }

    /**
     * Sends a form, and once more what the page then shows.
     *
     * @return array{list<list<string>>, string} what would change, and the message when it was done
     */
    private static function change(Served $console, string $path, array $fields): array
    {
        $shown = $console->post($path, self::sent($console, $path, $fields));
        self::assertSame(200, $shown->status, $shown->body);
        $lines = array_map(
            static fn(DOMElement $row) => array_map(
                static fn(DOMNode $cell) => trim($cell->textContent),
                iterator_to_array($shown->page()->query('th|td', $row)),
            ),
            iterator_to_array($shown->page()->query('//main//tbody/tr')),
        );
        $again = [];
        foreach ($shown->page()->query('//form[contains(@class, "sure")]/input') as $input) {
            $again[$input->getAttribute('name')] = $input->getAttribute('value');
        }
        self::assertSame('1', $again['sure'] ?? null);
        $done = $console->post($path, $again);
        self::assertSame(303, $done->status, $done->body);
        $to = preg_replace('#^https?://[^/]+#', '', $done->headers['location']);
        return [$lines, implode($console->get($to)->texts('//p[@class="message"]'))];
    }

    private static function alarm(array $other = []): array
    {
        return $other + [
            'do' => 'alarm', 'alarm' => '0', 'alarmVariable' => 'sysUpTime.0', 'alarmSampleType' => '1',
            'alarmInterval' => '60', 'alarmRisingThreshold' => '150', 'alarmFallingThreshold' => '50',
            'alarmRisingEventIndex' => '1', 'alarmFallingEventIndex' => '0',
        ];
    }

    public function testAnAlarmIsSetChangedAndRemoved(): void
    {
        $agent = $this->bundled();
        $probe = $this->probe($agent);
        $probe->table('alarmTable')->set(alarmIndex: 1, alarmVariable: 'sysUpTime.0', alarmRisingThreshold: 7);
        $console = $this->console(['core1' => $agent]);
        $path = '/probe/core1/alarms';
        [$lines, $said] = self::change($console, $path, [
            'do' => 'event', 'eventDescription' => 'busy <b>', 'eventType' => '2', 'eventCommunity' => '',
        ]);
        self::assertSame([['Description', '-', 'busy <b>'], ['What it does', '-', 'log']], $lines);
        self::assertSame('Done: Event 1 is added.', $said);

        [$lines, $said] = self::change($console, $path, self::alarm());
        self::assertSame(['Variable', '-', 'sysUpTime.0'], $lines[0]);
        self::assertSame(['Event when it rises', '-', '1: busy <b>'], $lines[5]);
        self::assertSame('Done: Alarm 2 is set.', $said);
        $row = $probe->table('alarmTable')->get(alarmIndex: 2);
        self::assertSame(['sysUpTime.0', 60, 150, 50, 1, 1], [
            $row['alarmVariable'], $row['alarmInterval'], $row['alarmRisingThreshold'], $row['alarmFallingThreshold'],
            $row['alarmSampleType'], $row['alarmRisingEventIndex'],
        ]);

        $asked = $console->get("$path?alarm=2");
        self::assertSame('150', $asked->attribute('//input[@name="alarmRisingThreshold"]', 'value'));
        [$lines, $said] = self::change($console, "$path?alarm=2", self::alarm([
            'alarm' => '2', 'alarmRisingThreshold' => '170',
        ]));
        self::assertSame([['High from', '150', '170']], $lines);
        self::assertSame(170, $probe->table('alarmTable')->get(alarmIndex: 2)['alarmRisingThreshold']);

        [, $said] = self::change($console, $path, ['do' => 'remove', 'alarm' => '2']);
        self::assertSame('Done: Alarm 2 is removed.', $said);
        self::assertNull($probe->table('alarmTable')->get(alarmIndex: 2));
        self::assertSame(7, $probe->table('alarmTable')->get(alarmIndex: 1)['alarmRisingThreshold'], 'others stay');
        self::assertSame('', $console->log());
    }

    public function testWhatIsShownIsNotDoneYet(): void
    {
        $agent = $this->bundled();
        $console = $this->console(['core1' => $agent]);
        $shown = $console->post('/probe/core1/alarms', self::sent($console, '/probe/core1/alarms', self::alarm()));
        self::assertSame(['Alarm 1 is set'], $shown->texts('//h1'));
        self::assertSame([], self::listOf($this->probe($agent)->table('alarmTable')));
    }

    public function testWhatCantBe(): void
    {
        $agent = $this->bundled();
        $console = $this->console(['core1' => $agent]);
        $path = '/probe/core1/alarms';
        $mistakes = [
            'An alarm watches a variable' => self::alarm(['alarmVariable' => ' ']),
            'The lower threshold can\'t be above' => self::alarm(['alarmFallingThreshold' => '151']),
            'alarmInterval is' => self::alarm(['alarmInterval' => 'often']),
            'alarmRisingThreshold is a number from' => self::alarm(['alarmRisingThreshold' => '9999999999']),
            'There is no alarm 9 any more' => self::alarm(['alarm' => '9']),
        ];
        foreach ($mistakes as $text => $fields) {
            $answer = $console->post($path, self::sent($console, $path, $fields));
            self::assertSame(400, $answer->status, $text);
            self::assertStringContainsString($text, implode($answer->texts('//main')));
        }
        $unknown = $console->post($path, self::sent($console, $path, ['do' => 'everything']));
        self::assertSame(404, $unknown->status);
        $refused = $console->post($path, self::sent($console, $path, self::alarm([
            'alarmVariable' => 'noSuchVariable.0', 'sure' => '1',
        ])));
        self::assertSame(502, $refused->status);
        self::assertStringContainsString('The agent refused', implode($refused->texts('//main')));
        self::assertSame([], self::listOf($this->probe($agent)->table('alarmTable')));
        self::assertSame('', $console->log());
    }

    /** Sections of the configuration: anna is an operator, ben reads. */
    private static function users(): string
    {
        $hash = password_hash('secret word', PASSWORD_BCRYPT, ['cost' => 4]);
        $users = '';
        foreach (['anna' => 'operator', 'ben' => 'read-only'] as $name => $role) {
            $users .= "[user $name]\npassword_hash = \"$hash\"\nrole = $role\n";
        }
        return $users;
    }

    private static function signIn(Served $console, string $name): void
    {
        $console->cookies = [];
        $form = self::sent($console, '/sign-in', ['name' => $name, 'password' => 'secret word']);
        self::assertSame(303, $console->post('/sign-in', $form)->status);
    }

    public function testOnlyOperatorsAndOnlyFormsOfThisBrowser(): void
    {
        $agent = $this->bundled();
        $console = $this->console(['core1' => $agent], self::users(), 'sign_in = on');
        $path = '/probe/core1/alarms';
        self::signIn($console, 'ben');
        $page = $console->get($path);
        self::assertSame(200, $page->status);
        self::assertNull($page->attribute('//input[@name="alarmVariable"]', 'value'), 'no form for who may not');
        $token = $page->attribute('//input[@name="token"]', 'value');
        $answer = $console->post($path, ['token' => $token, 'sure' => '1'] + self::alarm());
        self::assertSame(403, $answer->status);
        self::signIn($console, 'anna');
        foreach (['', 'x', (string) $token] as $wrong) {
            $answer = $console->post($path, ['token' => $wrong, 'sure' => '1'] + self::alarm());
            self::assertSame(403, $answer->status, 'a token of another session');
        }
        self::assertSame([], self::listOf($this->probe($agent)->table('alarmTable')));
        self::assertStringContainsString('Alarm 1 is set', self::change($console, $path, self::alarm())[1]);
    }

    public function testCommunitiesAreForOperators(): void
    {
        $agent = $this->bundled();
        $probe = $this->probe($agent);
        $community = 'community of nobody';
        $probe->table('communityTable')->set(communityString: $community, privs: 'readWrite');
        $probe->table('eventTable')->set(eventIndex: 1, eventType: 'snmpTrap', eventCommunity: $community);
        $probe->table('trapDestTable')
            ->set(trapDestIndex: 1, trapDestCommunity: $community, trapDestProtocol: 1, trapDestAddress: '10.9.9.9');
        $probe->table('ndeDeviceTable')->set(address: '10.8.0.1', commString: $community);
        $console = $this->console(['core1' => $agent], self::users(), 'sign_in = on');
        $pages = array_map(static fn(string $page) => "/probe/core1/$page", [
            'settings', 'alarms', 'netflow', 'table/communityTable', 'table/eventTable', 'table/trapDestTable',
            'table/ndeDeviceTable',
        ]);
        foreach (['anna' => true, 'ben' => false] as $name => $shown) {
            self::signIn($console, $name);
            foreach ($pages as $page) {
                $answer = $console->get($page);
                self::assertSame(200, $answer->status, $page);
                self::assertSame($shown, str_contains($answer->body, $community), "$page as $name sees it");
            }
            foreach (['csv', 'json'] as $format) {
                $file = $console->get("/probe/core1/table/communityTable?format=$format&all=1");
                self::assertSame([200, $shown], [$file->status, str_contains($file->body, $community)], $format);
            }
        }
        // Not by a filter or an order that tells them apart, and not in the address of the next rows.
        for ($i = 0; $i < 30; $i++) {
            $probe->table('communityTable')->set(communityString: "other $i", privs: 'readOnly');
        }
        foreach (['filter=communityString~nobody', 'filter=nobody', 'sort=communityString', 'rows=25'] as $query) {
            $body = $console->get("/probe/core1/table/communityTable?$query")->body;
            self::assertStringNotContainsString($community, $body, $query);
            self::assertStringNotContainsString('behind=', $body, $query);
        }
        self::assertSame('', $console->log());
    }

    public function testAVoiceMonitorIsSet(): void
    {
        $agent = $this->bundled('--voice', dirname(__DIR__, 2) . '/agent/voice.ini');
        $voice = $this->probe($agent)->voice('h323');
        $console = $this->console(['core1' => $agent]);
        $before = $voice->config();
        [$lines] = self::change($console, '/probe/core1/voice', [
            'do' => 'set-h323', 'enable' => '0', 'jitter_threshold' => '17',
            'loss_threshold' => (string) $before['pkt_lost_threshold'], 'jitter_alarm' => '1', 'loss_alarm' => '0',
        ]);
        self::assertSame([
            ['Collects calls', 'on', 'off'],
            ['Jitter threshold', "$before[jitter_threshold] ms", '17 ms'],
            ['Jitter alarm', 'off', 'on'],
        ], $lines);
        $after = $voice->config();
        self::assertSame([0, 17, $before['pkt_lost_threshold'], true], [
            $after['enable'], $after['jitter_threshold'], $after['pkt_lost_threshold'],
            $after['jitter_alarm_enable'] !== 0,
        ]);
        \expect_soon(2, fn() => count(self::listOf($this->probe($agent)->voice('mgcp')->phones())), 'the scenario');
        self::change($console, '/probe/core1/voice', ['do' => 'clear', 'monitor' => 'mgcp', 'table' => 'phones']);
        self::assertSame([], self::listOf($this->probe($agent)->voice('mgcp')->phones()));
        self::assertSame('', $console->log());
    }

    public function testNetFlowIsSet(): void
    {
        $agent = $this->bundled('--netflow', '0');
        $probe = $this->probe($agent);
        $console = $this->console(['core1' => $agent]);
        $path = '/probe/core1/netflow';
        $device = ['do' => 'device', 'address' => '10.1.1.5', 'name' => 'router', 'community' => 'c'];
        [$lines] = self::change($console, $path, $device);
        self::assertSame([['Address', '-', '10.1.1.5'], ['Name', '-', 'router'], ['Community', '-', 'c']], $lines);
        [$lines] = self::change($console, $path, ['name' => 'core'] + $device);
        self::assertSame([['Name', 'router', 'core']], $lines);
        self::change($console, $path, ['do' => 'source', 'device' => '10.1.1.5', 'name' => 'uplink']);
        self::change($console, $path, ['do' => 'path', 'source' => '10.1.1.5 1', 'input' => '3', 'output' => '4']);
        $page = $console->get($path);
        self::assertSame([['10.1.1.5', 'core', 'no', 'c']], $page->table('devices'));
        self::assertSame([['10.1.1.5', 'core', '1', 'uplink']], $page->table('sources'));
        self::assertSame([['10.1.1.5', 'core', '1', '3', '4']], $page->table('paths'));
        self::change($console, $path, ['do' => 'learn', 'on' => '0']);
        self::assertSame(0, $probe->table('ndeLearning')->get()['state']);
        [, $said] = self::change($console, $path, ['do' => 'remove', 'device' => '10.1.1.5']);
        self::assertSame('Done: Device 10.1.1.5 is removed.', $said);
        self::assertSame([], self::listOf($probe->table('ndeFlowPathTable')));
        self::assertSame('', $console->log());
    }

    public function testSettings(): void
    {
        $agent = $this->bundled();
        $probe = $this->probe($agent);
        $console = $this->console(['core1' => $agent]);
        $path = '/probe/core1/settings';
        $before = $probe->system();
        [$lines] = self::change($console, $path, [
            'do' => 'system', 'sysName' => 'probe 7', 'sysLocation' => $before['sysLocation'], 'sysContact' => 'noc',
        ]);
        self::assertSame([
            ['Name', $before['sysName'], 'probe 7'], ['Contact', $before['sysContact'] ?: '-', 'noc'],
        ], $lines);
        self::assertSame(['probe 7', 'noc'], [$probe->system()['sysName'], $probe->system()['sysContact']]);
        self::change($console, $path, [
            'do' => 'network', 'ipAddress' => '10.1.1.1', 'ipNetmask' => '255.255.255.0',
            'ipBroadcast' => '10.1.1.255', 'ipGateway' => '10.1.1.254', 'resolvers' => '10.9.9.9, 10.8.8.8',
        ]);
        self::assertSame(['10.9.9.9', '10.8.8.8'], $probe->settings()->resolvers());
        self::assertSame('10.1.1.254', $probe->table('ipConfig')->get()['ipGateway']);
        self::change($console, $path, ['do' => 'community', 'community' => 'public', 'privs' => '1']);
        [$lines] = self::change($console, $path, ['do' => 'community', 'community' => 'public', 'privs' => '2']);
        self::assertSame([['public', 'read', 'read and write']], $lines);
        self::change($console, $path, ['do' => 'trap', 'address' => '10.7.7.7', 'community' => 'public']);
        $page = $console->get($path);
        self::assertSame([['public', 'readWrite']], $page->table('communities'));
        self::assertSame([['1', '10.7.7.7', 'public', 'ip.udp.snmptrap', 'console']], $page->table('traps'));
        self::change($console, $path, ['do' => 'remove-trap', 'receiver' => '1']);
        self::change($console, $path, ['do' => 'remove-community', 'community' => 'public']);
        self::assertSame([], self::listOf($probe->table('communityTable')));
        self::assertSame([], self::listOf($probe->table('trapDestTable')));
        $wrong = $console->post($path, self::sent($console, $path, ['do' => 'network', 'resolvers' => 'nowhere']));
        self::assertSame(400, $wrong->status);
        self::assertSame('', $console->log());
    }
}
