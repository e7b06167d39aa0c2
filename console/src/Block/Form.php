<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Closure;
use Rmon\Console\Form\Input;
use Rmon\Console\Visit;

/** A form by which an operator changes something; see Form\Changes for what becomes of it. */
final class Form implements Block
{
    private bool $folded = true;

    /**
     * @param string $do  its name among the page's forms
     * @param Closure(): list<Input> $inputs
     */
    public function __construct(
        private readonly string $title,
        private readonly string $do,
        private readonly string $button,
        private readonly Closure $inputs,
        private readonly string $note = '',
    ) {
    }

    /** Open from the start, as what the page was asked for. */
    public function open(bool $open = true): self
    {
        $this->folded = !$open;
        return $this;
    }

    public function template(): string
    {
        return 'form';
    }

    public function shown(Visit $visit, string $id): array
    {
        $may = $visit->mayChange();
        return [
            'title' => $this->title,
            'do' => $this->do,
            'button' => $this->button,
            'note' => $this->note,
            'folded' => $this->folded,
            'may' => $may,
            'inputs' => $may ? ($this->inputs)() : [],
        ];
    }

    public function isLive(): bool
    {
        // What somebody types stays.
        return false;
    }
}
