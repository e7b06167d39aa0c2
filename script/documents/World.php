<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

use BundledAgent;
use Rmon\Probe;
use RuntimeException;

/**
 * The agent that examples talk to: the demo's office, read to its end, with a row in every table. Each one answers the
 * same, but for times.
 */
final class World
{
    private const SETTINGS = [
        'norv_settings' => <<<'END'
            NORV_TARGET_ID=5
            NORV_PROD_NO="A-1"
            NORV_PROD_DESCR="desk probe"

            END,
        'pdstruct.txt' => <<<'END'
            ip PROTOCOL-IDENTIFIER
                PARAMETERS { }
                DESCRIPTION
                    "The Internet Protocol,
                     version 4."
                REFERENCE "RFC 791"

            END,
    ];

    public readonly string $folder;

    public int $port;

    public Probe $probe;

    private ?BundledAgent $agent = null;

    public function __construct(string $root)
    {
        self::putSettings();
        $this->folder = sys_get_temp_dir() . '/rmon-documents-' . getmypid();
        mkdir($this->folder);
        register_shutdown_function($this->tidyUp(...));
        self::runScript("$root/script/demo/make_capture.php", $this->folder);
        // Calls that are over after a second.
        $scenario = (string) file_get_contents("$root/agent/voice.ini");
        $scenario = preg_replace(['/^after = .*$/m', '/^duration = .*$/m'], ['', 'duration = 1'], $scenario);
        file_put_contents("$this->folder/voice.ini", $scenario);
        // A report has what was counted in an interval: on a slow machine, none may be read by its end.
        foreach ([3, 9, 27] as $seconds) {
            $this->begin($root, $seconds);
            if ($this->probe->table('hostTopNTable')->first() !== null) {
                return;
            }
            end_agent($this->agent, 9);
        }
        throw new RuntimeException('no row of hostTopNTable came');
    }

    private function begin(string $root, int $seconds): void
    {
        $here = (string) getcwd();
        chdir($this->folder);
        $this->agent = bundled_agent(
            ...['--read', 'office', '--read', 'wan', '--hold', '--voice', 'voice.ini'],
            ...['--netflow', '0', '--captures', $this->folder],
        );
        chdir($here);
        $this->port = $this->agent->port;
        self::runScript("$root/script/demo/rows.php", (string) $this->port);
        $this->probe = Probe::connect('127.0.0.1', $this->port);
        $this->makeRows($seconds);
        read_files($this->agent, 2);
        $this->makeAlarm();
        $this->sendFlows();
        $this->awaitReports();
    }

    /** The files of an appliance, where the module of a test build looks for them. Its tests want none. */
    private static function putSettings(): void
    {
        foreach (self::SETTINGS as $name => $text) {
            $file = self::setting($name);
            if (!is_dir(dirname($file))) {
                mkdir(dirname($file), 0777, true);
            }
            file_put_contents($file, $text);
        }
    }

    private static function setting(string $name): string
    {
        return getenv('RMON_TEST_ROOT') . "/usr/local/norv/etc/$name";
    }

    /** What the demo lacks. */
    private function makeRows(int $seconds): void
    {
        $office = 1;
        // Those of the demo don't go off while examples run.
        foreach ($this->probe->table('alarmTable') as $row) {
            $this->probe->table('alarmTable')->replace(alarmIndex: $row['alarmIndex'], alarmInterval: 3600);
        }
        $this->probe->table('historyControlTable')->create(
            historyControlIndex: 9,
            historyControlDataSource: $office,
            historyControlInterval: 1,
            historyControlBucketsRequested: 1000,
            historyControlOwner: 'examples',
        );
        $this->probe->table('channelTable')->create(
            channelIndex: 1,
            channelIfIndex: $office,
            channelDescription: 'names',
        );
        $this->probe->table('filterTable')->create(
            filterIndex: 1,
            filterChannelIndex: 1,
            filterProtocolDirDataLocalIndex: 'ip.udp.domain',
        );
        $this->probe->table('bufferControlTable')->create(
            bufferControlIndex: 1,
            bufferControlChannelIndex: 1,
            bufferControlCaptureSliceSize: 48,
            bufferControlMaxOctetsRequested: 4096,
        );
        $this->probe->table('communityTable')->set(communityString: 'public', privs: 'readOnly');
        rmon_set_resolvers($this->link(), ['10.0.30.53']);
        rmon_set_ipconfig($this->link(), '10.0.30.2', '255.255.255.0', '10.0.30.255', '10.0.30.1');
        $this->probe->table('hostTopNControlTable')->create(
            hostTopNControlIndex: 1,
            hostTopNHostIndex: 1,
            hostTopNRateBase: 'hostTopNOutOctets',
            hostTopNTimeRemaining: $seconds,
            hostTopNRequestedSize: 3,
            hostTopNOwner: 'examples',
        );
    }

    /** Once all is counted, so that its first sample is the last one that differs. */
    private function makeAlarm(): void
    {
        $this->probe->table('eventTable')->create(
            eventIndex: 9,
            eventDescription: 'frames were counted',
            eventType: 'log',
        );
        $this->probe->table('alarmTable')->create(
            alarmIndex: 9,
            alarmVariable: 'etherStatsPkts.1',
            alarmInterval: 1,
            alarmSampleType: 'absoluteValue',
            alarmStartupAlarm: 'risingAlarm',
            alarmRisingThreshold: 1,
            alarmFallingThreshold: 0,
            alarmRisingEventIndex: 9,
        );
    }

    /** @return resource */
    public function link(): mixed
    {
        ini_set('rmon.default_port', (string) $this->port);
        return rmon_connect('127.0.0.1');
    }

    private function sendFlows(): void
    {
        if (!preg_match('/NetFlow packets are taken on port (\d+)/', $this->agent->said(), $found)) {
            throw new RuntimeException('the agent takes no NetFlow packets');
        }
        $socket = stream_socket_client("udp://127.0.0.1:$found[1]");
        $flow = inet_pton('10.0.10.11') . inet_pton('203.0.113.10') . inet_pton('0.0.0.0')
            . pack('nnNNNNnnCCCCnnCCn', 1, 2, 12, 9000, 0, 1000, 50000, 443, 0, 0x1b, 6, 0, 0, 0, 24, 24, 0);
        fwrite($socket, pack('nnNNNNCCn', 5, 1, 1000, 1_770_000_000, 0, 1, 0, 0, 0) . $flow);
    }

    private function awaitReports(): void
    {
        $wanted = [
            'ndeLearnedDeviceTable', 'logTable', 'etherHistoryTable', 'sccpCallTable', 'h323CallTable',
            'mgcpCallTable', 'captureBufferTable', 'artReportTable', 'artSummaryTable',
        ];
        $topN = fn() => $this->probe->table('hostTopNControlTable')->first()['hostTopNTimeRemaining'] === 0;
        wait_until($topN);
        foreach ($wanted as $table) {
            $there = fn() => $this->probe->table($table)->first() !== null;
            if (!wait_until($there)) {
                throw new RuntimeException("no row of $table came");
            }
        }
    }

    private static function runScript(string $script, string $argument): void
    {
        [$code, $output, $errors] = run(...php_command(), ...[$script, $argument]);
        if ($code !== 0) {
            throw new RuntimeException("$script: $output$errors");
        }
    }

    private function tidyUp(): void
    {
        if ($this->agent !== null && is_resource($this->agent->process)) {
            end_agent($this->agent, 9);
        }
        foreach (array_keys(self::SETTINGS) as $name) {
            @unlink(self::setting($name));
        }
        array_map(unlink(...), glob("$this->folder/*") ?: []);
        @rmdir($this->folder);
    }
}
