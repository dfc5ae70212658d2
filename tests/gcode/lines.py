"""Reads lines of G-code: words, parameters, expressions. Numbers are rational as long as they can be."""

import math
import re
from dataclasses import dataclass, field
from fractions import Fraction


class ProgramError(Exception):
    """A program that is refused. `column` is the first of what is wrong; `firm`: nobody would point
    anywhere else."""

    def __init__(self, kind, column, firm=True):
        super().__init__(kind)
        self.kind, self.column, self.firm, self.line = kind, column, firm, 0


@dataclass
class Word:
    letter: str
    value: Fraction
    column: int


@dataclass
class Block:
    """A line, read: its words by letter, the values that parameters take after it."""

    words: dict = field(default_factory=dict)
    codes: list = field(default_factory=list)  # G words
    machine: list = field(default_factory=list)  # M words
    settings: list = field(default_factory=list)
    skipped: int = 0

    def has(self, letters):
        return any(letter in self.words for letter in letters)

    def column(self, letters):
        return min(self.words[letter].column for letter in letters if letter in self.words)


def as_fraction(number):
    if isinstance(number, Fraction):
        return number
    if math.isinf(number) or math.isnan(number):
        raise OverflowError
    return Fraction(number)


def degrees_of(function):
    return lambda value: math.degrees(function(float(value)))


def of_degrees(function):
    return lambda value: function(math.radians(float(value)))


def rounded(value):
    return Fraction(math.floor(abs(value) + Fraction(1, 2))) * (1 if value >= 0 else -1)


def root(value):
    if value < 0:
        raise ValueError
    above, below = math.isqrt(value.numerator), math.isqrt(value.denominator)
    exact = above * above == value.numerator and below * below == value.denominator
    return Fraction(above, below) if exact else math.sqrt(value)


FUNCTIONS = {
    "abs": abs,
    "acos": degrees_of(math.acos),
    "asin": degrees_of(math.asin),
    "cos": of_degrees(math.cos),
    "exp": lambda value: math.exp(value),
    "fix": lambda value: Fraction(math.floor(value)),
    "fup": lambda value: Fraction(math.ceil(value)),
    "ln": lambda value: math.log(value),
    "round": rounded,
    "sin": of_degrees(math.sin),
    "sqrt": root,
    "tan": of_degrees(math.tan),
}


def power(base, exponent):
    if exponent.denominator == 1:
        if abs(exponent) > 4096:
            return float(base) ** float(exponent)
        return base ** int(exponent)
    if base < 0:
        raise ValueError
    return float(base) ** float(exponent)


def modulo(value, divisor):
    return value - abs(divisor) * math.floor(value / abs(divisor))


OPERATORS = [  # those of a line bind alike, each line less than the one above
    {"**": power},
    {"*": lambda a, b: a * b, "/": lambda a, b: a / b, "mod": modulo},
    {"+": lambda a, b: a + b, "-": lambda a, b: a - b},
    {
        "and": lambda a, b: Fraction(a != 0 and b != 0),
        "or": lambda a, b: Fraction(a != 0 or b != 0),
        "xor": lambda a, b: Fraction((a != 0) != (b != 0)),
    },
]
OPERATOR_TEXTS = sorted((text for group in OPERATORS for text in group), key=len, reverse=True)


class LineReader:
    """Reads one line: blanks count nothing, capitals neither, comments are left out."""

    def __init__(self, text, parameters, skip_unknown):
        self.parameters, self.skip_unknown = parameters, skip_unknown
        self.characters, self.columns = [], []
        self.end = len(text) + 1
        self.at = 0
        comment = 0
        for column, character in enumerate(text, 1):
            if comment:
                if character == ")":
                    comment = 0
            elif character == "(":
                comment = column
            elif character == ";":
                break
            elif character not in " \t\r":
                self.characters.append(character.lower())
                self.columns.append(column)
        if comment:
            raise ProgramError("syntax", comment)
        self.text = "".join(self.characters)

    def column(self):
        return self.columns[self.at] if self.at < len(self.columns) else self.end

    def next_is(self, text):
        return self.text.startswith(text, self.at)

    def take(self, text):
        if self.next_is(text):
            self.at += len(text)
            return True
        return False

    def value(self):
        """A number, a parameter, an expression or a function of one."""
        at = self.column()
        if self.next_is("["):
            return self.expression()
        if self.take("#"):
            return self.parameters.get(self.index(), Fraction(0))
        if self.take("atan"):
            y = self.expression()
            if not self.take("/"):
                raise ProgramError("syntax", self.column())
            return as_fraction(math.degrees(math.atan2(y, self.expression())))
        for name, function in FUNCTIONS.items():
            if self.take(name):
                return self.computed(lambda: function(self.expression()), at)
        match = re.compile(r"[+-]?(\d+\.?\d*|\.\d+)").match(self.text, self.at)
        if not match:
            raise ProgramError("syntax", at, False)
        self.at = match.end()
        if self.next_is("."):
            raise ProgramError("syntax", at, False)
        return Fraction(match[0])

    @staticmethod
    def computed(function, column):
        try:
            return as_fraction(function())
        except (ArithmeticError, ValueError):
            raise ProgramError("value", column, False) from None

    def index(self):
        at = self.column()
        number = self.value()
        if abs(number - rounded(number)) > Fraction(1, 10000) or not 1 <= rounded(number) <= 5399:
            raise ProgramError("parameter", at, False)
        return int(rounded(number))

    def operator(self):
        for text in OPERATOR_TEXTS:
            if self.take(text):
                return text
        raise ProgramError("syntax", self.column())

    def expression(self):
        at = self.column()
        if not self.take("["):
            raise ProgramError("syntax", at, False)
        values, operators = [self.value()], []
        while not self.take("]"):
            operators.append((self.operator(), at))
            values.append(self.value())
        for group in OPERATORS:
            i = 0
            while i < len(operators):
                text, column = operators[i]
                if text in group:
                    a, b = values[i], values[i + 1]
                    values[i : i + 2] = [self.computed(lambda: group[text](a, b), column)]
                    del operators[i]
                else:
                    i += 1
        return values[0]

    def block(self):
        block = Block()
        while self.at < len(self.text):
            at, letter = self.column(), self.text[self.at]
            self.at += 1
            if letter == "#":
                index = self.index()
                if not self.take("="):
                    raise ProgramError("syntax", self.column())
                block.settings.append((index, self.value()))
            elif not "a" <= letter <= "z":
                raise ProgramError("syntax", at)
            elif letter == "o":
                raise ProgramError("refused", at)
            else:
                self.add_word(block, Word(letter, self.value(), at), at == self.columns[0])
        return block

    def add_word(self, block, word, first):
        if word.letter in "abc":
            raise ProgramError("refused", word.column)
        if word.letter == "n":
            if not first or word.value < 0 or word.value.denominator != 1:
                raise ProgramError("syntax", word.column)
        elif word.letter in "euvw":
            if not self.skip_unknown:
                raise ProgramError("unknown", word.column)
            block.skipped += 1
        elif word.letter == "g":
            block.codes.append(word)
        elif word.letter == "m":
            block.machine.append(word)
        elif word.letter in block.words:
            raise ProgramError("twice", word.column)
        else:
            block.words[word.letter] = word
