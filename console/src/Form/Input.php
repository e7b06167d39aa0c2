<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Form;

/** A field of a form. */
final class Input
{
    /**
     * @param string $kind   "text", "number", "choice" or "hidden"
     * @param array<string|int, string> $choices what can be chosen, by value
     */
    private function __construct(
        public readonly string $kind,
        public readonly string $name,
        public readonly string $label,
        public readonly string $value,
        public readonly string $hint = '',
        public readonly array $choices = [],
        public readonly bool $required = false,
        public readonly ?int $least = null,
        public readonly ?int $most = null,
    ) {
    }

    public static function text(string $name, string $label, string $value = '', string $hint = ''): self
    {
        return new self('text', $name, $label, $value, $hint);
    }

    public static function number(
        string $name,
        string $label,
        int|string $value = '',
        string $hint = '',
        int $least = 0,
        int $most = 0xffffffff,
    ): self {
        return new self('number', $name, $label, (string) $value, $hint, [], true, $least, $most);
    }

    /** @param array<string|int, string> $choices */
    public static function choice(string $name, string $label, array $choices, string|int $value = ''): self
    {
        return new self('choice', $name, $label, (string) $value, '', $choices);
    }

    public static function hidden(string $name, string|int $value): self
    {
        return new self('hidden', $name, '', (string) $value);
    }

    /** The same, which can't be left empty. */
    public function required(): self
    {
        return new self(
            $this->kind,
            $this->name,
            $this->label,
            $this->value,
            $this->hint,
            $this->choices,
            true,
            $this->least,
            $this->most,
        );
    }
}
