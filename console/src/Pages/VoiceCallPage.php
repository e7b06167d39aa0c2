<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\Choices;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Facts;
use Rmon\Console\Block\Notice;
use Rmon\Console\Block\Panels;
use Rmon\Console\Page;
use Rmon\Console\Refusal;
use Rmon\Console\Table\Field;
use Rmon\Format;
use Rmon\Voice\Call;
use Rmon\Voice\Codec;
use Rmon\Voice\EModel;
use Rmon\Voice\Leg;

/** One call: who, when, and what each party got to hear. */
final class VoiceCallPage extends Page
{
    public const PATH = '/probe/{probe}/voice/{monitor}/{call}';
    public const TITLE = 'Call';

    /** @var array<string, mixed>|null */
    private ?array $row = null;

    public function title(): string
    {
        $call = $this->call();
        return 'Call ' . VoicePage::who($call->caller) . " \u{2192} " . VoicePage::who($call->callee);
    }

    public function blocks(): iterable
    {
        yield 'back' => new Choices(fn(): array => [
            'To' => [['all calls', $this->visit->to(VoicePage::class), false]],
        ]);
        yield 'call' => new Facts(fn(): array => $this->about());
        yield 'legs' => new Panels([
            'caller' => new Facts(fn(): array => self::heard($this->call()->heardByCaller), 'What the caller heard'),
            'callee' => new Facts(
                fn(): array => self::heard($this->call()->heardByCallee),
                'What the one who was called heard',
            ),
        ]);
        yield 'how' => new Notice(
            'The rating is that of ITU-T G.107: how good speech can be after this loss and this delay with this codec. '
                . 'The delay is the latency, taken as one way, where it is measured, and twice the jitter, which a '
                . 'receiver holds packets back for.',
        );
        yield 'fields' => DataTable::ofRows([
            Field::text('field', 'Field', static fn(array $row) => $row['field']),
            Field::text('value', 'Value', static fn(array $row) => $row['value']),
        ], function (): array {
            $cells = $this->visit->probe()->table("{$this->monitor()}CallTable")->readable($this->row());
            $fields = [];
            foreach ($cells as $field => $value) {
                $fields[] = ['field' => $field, 'value' => $value];
            }
            return $fields;
        })->titled('All that the agent tells');
    }

    /** @return array<string, string> */
    private function about(): array
    {
        $call = $this->call();
        $now = $this->visit->probe()->uptime();
        return [
            'From' => VoicePage::who($call->caller) . ", {$call->caller->address}",
            'To' => VoicePage::who($call->callee) . ", {$call->callee->address}",
            'State' => $call->isRunning() ? 'running' : 'over',
            'Began' => date('Y-m-d H:i:s', (int) $this->visit->timeOf($call->start)),
            'Took' => Format::ticks($call->duration($now)),
            'Opinion' => VoicePage::quality($call->rating()),
            'Above its threshold' => VoicePage::flags($call->flags()) ?: 'nothing',
            'Monitor' => VoicePage::NAMES[$call->monitor],
        ];
    }

    /** @return array<string, string> */
    private static function heard(Leg $leg): array
    {
        $rating = $leg->rating();
        $loss = $leg->loss();
        return [
            'Rating' => $rating === null ? 'not known: no media were seen' : number_format($rating, 1)
                . ' of 93.2, ' . EModel::word($rating),
            'Opinion score' => $rating === null ? '-' : number_format(EModel::opinion($rating), 2) . ' of 4.5',
            'Lost' => number_format($leg->lost) . ' packets'
                . ($loss === null ? '' : ', ' . number_format(100 * $loss, 2) . ' %'),
            'Packets' => number_format($leg->packets) . ', ' . Format::octets($leg->octets),
            'Jitter' => "$leg->jitter ms",
            'Latency' => $leg->latency === null ? 'not measured' : "$leg->latency ms",
            'Delay to the ear' => number_format($leg->delay()) . ' ms',
            'Codec' => $leg->codec?->value ?? 'not known, rated as ' . Codec::G711->value,
        ];
    }

    private function call(): Call
    {
        return Call::of($this->monitor(), $this->row());
    }

    private function monitor(): string
    {
        $monitor = $this->visit->parameters['monitor'];
        return isset(VoicePage::NAMES[$monitor])
            ? $monitor
            : throw Refusal::notFound("No monitor is named \"$monitor\".");
    }

    /** @return array<string, mixed> */
    private function row(): array
    {
        if ($this->row === null) {
            $index = $this->visit->parameters['call'];
            $table = $this->visit->probe()->table("{$this->monitor()}CallTable");
            $this->row = (preg_match('/^\d{1,9}$/D', $index) ? $table->get(index: (int) $index) : null)
                ?? throw Refusal::notFound("Call $index is not in the agent's table, or not any more.");
        }
        return $this->row;
    }
}
