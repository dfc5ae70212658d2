#!/usr/bin/env python3
"""Says what G-code programs do: an interpreter that shares nothing with src/gcode.

Simple and exact rather than fast. Places are rational numbers as long as a program does not leave
them (roots, sines); what is not rational is a double, as exact as one can be. It answers with the
motions in millimetres of the machine, their lengths and seconds, or with the error's line and column.

    witness.py              checks the answers computed by hand in programs.txt and compares
                            answers.txt with what comes out now
    witness.py --write      writes answers.txt
    witness.py --show FILE  interprets one program
"""

import math
import pathlib
import re
import sys
from dataclasses import dataclass, field
from fractions import Fraction

RAPID, FEED, PLUNGE, RETRACT, ARC = range(5)
RAPID_SPEED = 5000  # millimetres a minute
BACK_OFF = Fraction(254, 1000)  # of a chip-breaking or pecking drill, millimetres
INCH = Fraction(254, 10)
AXES = "xyz"
NORMAL = {17: 2, 18: 1, 19: 0}  # the axis that is perpendicular to a plane
CENTRE_WORDS = "ijk"


class ProgramError(Exception):
    """A program that is refused. `column` is the first of what is wrong; `firm`: nobody would point
    anywhere else."""

    def __init__(self, kind, column, firm=True):
        super().__init__(kind)
        self.kind, self.column, self.firm, self.line = kind, column, firm, 0


@dataclass
class Motion:
    type: int
    line: int
    start: list
    end: list
    length: float
    seconds: float
    centre: list = None
    axis: int = None
    sweep: float = None


@dataclass
class Dwell:
    line: int
    seconds: float


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


# --- numbers, expressions ----------------------------------------------------------------------


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
    {
        "+": lambda a, b: a + b,
        "-": lambda a, b: a - b,
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
            raise ProgramError("syntax", comment, False)
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
                raise ProgramError("syntax", self.column(), False)
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
        raise ProgramError("syntax", self.column(), False)

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
                    raise ProgramError("syntax", self.column(), False)
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


# --- lengths -----------------------------------------------------------------------------------


def distance(start, end):
    return math.hypot(*(float(b - a) for a, b in zip(start, end)))


# Nodes and weights of a Gauss-Legendre quadrature of ten points on -1 to 1.
GAUSS = [
    (0.14887433898163122, 0.29552422471475287),
    (0.43339539412924719, 0.26926671930999635),
    (0.67940956829902441, 0.21908636251598204),
    (0.86506336668898451, 0.14945134915058059),
    (0.97390652851717172, 0.06667134430868814),
]


def spiral_length(first, last, sweep, rise):
    """Of an arc whose radius and height go evenly with the angle: by quadrature in 64 parts."""
    if first == last:
        return math.hypot(first * sweep, rise)
    parts = 64
    terms = []
    for part in range(parts):
        for node, weight in GAUSS:
            for sign in (-1, 1):
                t = (part + 0.5 + sign * node / 2) / parts
                radius = first + (last - first) * t
                terms.append(weight / 2 / parts * math.hypot(radius * sweep, last - first, rise))
    return math.fsum(terms)


# --- the machine -------------------------------------------------------------------------------

GROUPS = {  # codes of which a line may have one
    "motion": [0, 1, 2, 3, 73, 80, 81, 82, 83],
    "plane": [17, 18, 19],
    "units": [20, 21],
    "distance": [90, 91],
    "centres": [Fraction(901, 10), Fraction(911, 10)],
    "feed": [93, 94, 95],
    "system": [54, 55, 56, 57, 58, 59],
    "level": [98, 99],
    "once": [4, 10, 28, 30, 53, 92, Fraction(921, 10), Fraction(922, 10), Fraction(923, 10)],
    "radius": [40],
    "tool": [43, 49],
    "path": [61, 64],
    "polar": [15],
    "rotation": [69],
    "spindle": [97],
}
GROUP_OF = {Fraction(code): group for group, codes in GROUPS.items() for code in codes}
REFUSED = [41, 42, 84, 85, 86, 87, 88, 89]
CYCLES = [73, 81, 82, 83]
TAKES_AXES = [10, 28, 30, 92]  # codes that leave none of the axis words to the motion


class Machine:
    def __init__(self, skip_blocks=True, skip_unknown=False):
        self.skip_blocks, self.skip_unknown = skip_blocks, skip_unknown
        self.parameters = {}
        self.place = [Fraction(0)] * 3
        self.origins = [[Fraction(0)] * 3 for _ in range(6)]
        self.shift = [Fraction(0)] * 3  # of G92
        self.mode = {
            "motion": None,
            "plane": 17,
            "units": 21,
            "distance": 90,
            "feed": 94,
            "system": 54,
            "level": 98,
        }
        self.mode["centres"] = Fraction(911, 10)
        self.speed = Fraction(0)  # millimetres a minute, or a turn in G95
        self.spindle = Fraction(0)
        self.sticky = {}  # words that one canned cycle takes from the one before
        self.level = None  # of the drill's axis before the first of the cycles that follow each other
        self.steps = []
        self.ignored = 0
        self.line = 0

    # A program

    def run(self, text):
        lines = text.split("\n")
        percent = False
        for number, line in enumerate(lines, 1):
            self.line = number
            bare = line.strip()
            if bare.startswith("%"):
                if percent:
                    break
                percent = True
                continue
            try:
                if self.run_line(line):
                    break
            except ProgramError as error:
                error.line = number
                raise

    def run_line(self, line):
        """Whether the program ends with this line."""
        bare = line.lstrip()
        if bare.startswith("/"):
            if self.skip_blocks:
                return False
            line = line.replace("/", " ", 1)
        block = LineReader(line, self.parameters, self.skip_unknown).block()
        ends = self.execute(block)
        for index, value in block.settings:
            self.parameters[index] = value
        return ends

    # One line, in the order in which a machine does it

    def execute(self, block):
        now = self.codes(block)
        ends = self.machine_codes(block)
        self.ignored += block.skipped
        if "units" in now:
            self.mode["units"] = now["units"]
        self.feed_words(block, now)
        self.dwell(block, now)
        for group in ("plane", "distance", "centres", "level"):
            self.mode[group] = now.get(group, self.mode[group])
        self.mode["system"] = now.get("system", self.mode["system"])
        once = now.get("once")
        if once == 10:
            self.set_origin(block)
        elif once in (28, 30):
            self.go_home(block, 5161 if once == 28 else 5181)
        elif once is not None and math.floor(once) == 92:
            self.shift_origin(block, once)
        self.motion(block, now)
        return ends

    def codes(self, block):
        now = {}
        for word in block.codes:
            if word.value in REFUSED:
                raise ProgramError("refused", word.column)
            group = GROUP_OF.get(word.value)
            if group is None:
                if not self.skip_unknown:
                    raise ProgramError("unknown", word.column)
                block.skipped += 1
            elif group in now:
                raise ProgramError("group", word.column, False)
            else:
                now[group] = word.value if word.value.denominator > 1 else int(word.value)
        takes = [word for word in block.codes if word.value in TAKES_AXES]
        moves = [word for word in block.codes if GROUP_OF.get(word.value) == "motion" and word.value != 80]
        if takes and moves and block.has(AXES):
            raise ProgramError("group", max(takes[0].column, moves[0].column), False)
        return now

    def machine_codes(self, block):
        ends = False
        for word in block.machine:
            if word.value == 98:
                raise ProgramError("refused", word.column)
            if word.value < 0 or word.value.denominator != 1:
                raise ProgramError("unknown", word.column)
            ends = ends or word.value in (2, 30)
        return ends

    def scaled(self, number):
        return number * INCH if self.mode["units"] == 20 else number

    def word(self, block, letter):
        return self.scaled(block.words[letter].value)

    def feed_words(self, block, now):
        if "feed" in now and now["feed"] != self.mode["feed"]:
            self.mode["feed"], self.speed = now["feed"], Fraction(0)
        if "s" in block.words:
            self.spindle = block.words["s"].value
        if "f" in block.words:
            if block.words["f"].value < 0:
                raise ProgramError("value", block.words["f"].column, False)
            inverse = self.mode["feed"] == 93
            self.speed = block.words["f"].value if inverse else self.word(block, "f")

    def dwell(self, block, now):
        if now.get("once") != 4:
            return
        if "p" not in block.words:
            raise ProgramError("missing", self.code_column(block, 4), False)
        seconds = block.words["p"].value
        if seconds < 0:
            raise ProgramError("value", block.words["p"].column, False)
        if seconds:
            self.steps.append(Dwell(self.line, float(seconds)))

    @staticmethod
    def code_column(block, code):
        return next(word.column for word in block.codes if word.value == code)

    # Origins

    def offset(self, axis):
        return self.origins[self.mode["system"] - 54][axis] + self.shift[axis]

    def set_origin(self, block):
        which = block.words.get("l")
        if which is None or which.value not in (2, 20):
            raise ProgramError("value", which.column if which else self.code_column(block, 10), False)
        system = block.words.get("p")
        if system is None or system.value not in range(1, 7):
            raise ProgramError("value", system.column if system else self.code_column(block, 10), False)
        origin = self.origins[int(system.value) - 1]
        for axis, letter in enumerate(AXES):
            if letter in block.words:
                value = self.word(block, letter)
                if which.value == 20:
                    value = self.place[axis] - self.shift[axis] - value
                origin[axis] = value

    def shift_origin(self, block, code):
        if code == 92:
            if not block.has(AXES) and not block.skipped:
                raise ProgramError("missing", self.code_column(block, 92), False)
            for axis, letter in enumerate(AXES):
                if letter in block.words:
                    origin = self.origins[self.mode["system"] - 54][axis]
                    self.shift[axis] = self.place[axis] - origin - self.word(block, letter)
                    self.parameters[5211 + axis] = self.shift[axis]
        elif code == Fraction(923, 10):
            self.shift = [self.parameters.get(5211 + axis, Fraction(0)) for axis in range(3)]
        else:
            self.shift = [Fraction(0)] * 3
            if code == Fraction(921, 10):
                for axis in range(3):
                    self.parameters[5211 + axis] = Fraction(0)

    def go_home(self, block, first):
        named = [axis for axis, letter in enumerate(AXES) if letter in block.words]
        if named:
            self.rapid(self.target(block))
        home = list(self.place)
        for axis in named or range(3):
            home[axis] = self.parameters.get(first + axis, Fraction(0))
        self.rapid(home)

    # Motion

    def target(self, block, machine=False):
        """Where the axis words lead to."""
        place = list(self.place)
        for axis, letter in enumerate(AXES):
            if letter in block.words:
                value = self.word(block, letter)
                if machine:
                    place[axis] = value
                elif self.mode["distance"] == 91:
                    place[axis] += value
                else:
                    place[axis] = value + self.offset(axis)
        return place

    def motion(self, block, now):
        axes = block.has(AXES)
        if "motion" in now:
            if now["motion"] != self.mode["motion"]:
                self.sticky = {}
            if self.mode["motion"] not in CYCLES:
                self.level = None
            self.mode["motion"] = now["motion"]
        mode = self.mode["motion"]
        once = now.get("once")
        if once in TAKES_AXES:
            return
        if once == 53 and (mode not in (0, 1) or not axes):
            raise ProgramError("missing", self.code_column(block, 53), False)
        if mode in (None, 80):
            if axes:
                raise ProgramError("mode", block.column(AXES), False)
        elif mode in CYCLES:
            if axes or "motion" in now:
                self.cycle(block, mode)
        elif mode in (0, 1):
            if axes:
                end = self.target(block, once == 53)
                if mode == 0:
                    self.rapid(end)
                else:
                    self.feed(block, end, self.line_type(end))
        elif axes or block.has(CENTRE_WORDS + "r"):
            self.arc(block, mode)

    def line_type(self, end):
        if end[0] != self.place[0] or end[1] != self.place[1] or end[2] == self.place[2]:
            return FEED
        return PLUNGE if end[2] < self.place[2] else RETRACT

    def rapid(self, end):
        self.add(RAPID, end, distance(self.place, end), RAPID_SPEED)

    def feed(self, block, end, kind):
        length = distance(self.place, end)
        self.add(kind, end, length, self.feed_speed(block, length))

    def feed_speed(self, block, length):
        """In millimetres a minute."""
        column = min([word.column for word in block.codes] + [word.column for word in block.words.values()])
        if self.mode["feed"] == 93:
            if "f" not in block.words or not self.speed:
                raise ProgramError("feed", column, False)
            return length * float(self.speed)
        speed = self.speed * (self.spindle if self.mode["feed"] == 95 else 1)
        if speed <= 0:
            raise ProgramError("feed", column, False)
        return float(speed)

    def add(self, kind, end, length, speed, **arc):
        if length > 0:
            self.steps.append(Motion(kind, self.line, self.place, end, length, 60 * length / speed, **arc))
        self.place = list(end)

    def arc(self, block, mode):
        axis = NORMAL[self.mode["plane"]]
        u, v = (axis + 1) % 3, (axis + 2) % 3
        start, end = self.place, self.target(block)
        turns_left = mode == 3
        if "r" in block.words:
            centre = self.centre_by_radius(block, start, end, u, v, turns_left)
        else:
            centre = self.centre_by_words(block, start, u, v)
        radii = [
            math.hypot(float(place[u] - centre[0]), float(place[v] - centre[1])) for place in (start, end)
        ]
        if "r" not in block.words and (
            not min(radii) or abs(radii[1] - radii[0]) > max(0.01, 0.001 * max(radii))
        ):
            raise ProgramError("radii", block.column(CENTRE_WORDS), False)
        sweep = self.sweep(start, end, centre, u, v, turns_left)
        length = spiral_length(radii[0], radii[1], sweep, float(end[axis] - start[axis]))
        full = [None, None, None]
        full[u], full[v], full[axis] = float(centre[0]), float(centre[1]), float(start[axis])
        self.add(ARC, end, length, self.feed_speed(block, length), centre=full, axis=axis, sweep=sweep)

    @staticmethod
    def sweep(start, end, centre, u, v, turns_left):
        if start[u] == end[u] and start[v] == end[v]:
            return 2 * math.pi if turns_left else -2 * math.pi
        a = [float(start[u] - centre[0]), float(start[v] - centre[1])]
        b = [float(end[u] - centre[0]), float(end[v] - centre[1])]
        angle = math.atan2(a[0] * b[1] - a[1] * b[0], a[0] * b[0] + a[1] * b[1])
        if turns_left:
            return angle if angle > 0 else angle + 2 * math.pi
        return angle if angle < 0 else angle - 2 * math.pi

    def centre_by_words(self, block, start, u, v):
        if not block.has([CENTRE_WORDS[u], CENTRE_WORDS[v]]):
            column = min(word.column for word in list(block.words.values()) + block.codes)
            raise ProgramError("missing", column, False)
        centre = []
        for axis in (u, v):
            letter = CENTRE_WORDS[axis]
            value = self.word(block, letter) if letter in block.words else Fraction(0)
            absolute = self.mode["centres"] == Fraction(901, 10)
            centre.append(value + (self.offset(axis) if absolute else start[axis]))
        return centre

    def centre_by_radius(self, block, start, end, u, v, turns_left):
        column = block.words["r"].column
        if block.has(CENTRE_WORDS):
            raise ProgramError("group", column, False)
        if start[u] == end[u] and start[v] == end[v]:
            raise ProgramError("same end", column, False)
        radius = self.word(block, "r")
        du, dv = end[u] - start[u], end[v] - start[v]
        chord = math.hypot(float(du), float(dv))
        rest = float(radius * radius - (du * du + dv * dv) / 4)
        if rest < 0:
            if chord / 2 - abs(float(radius)) > max(0.01, 0.001 * abs(float(radius))):
                raise ProgramError("radius", column, False)
            rest = 0.0
        # The centre lies left of the chord where the shorter arc turns left, and right of it else.
        side = math.sqrt(rest) / chord * (1 if turns_left == (radius > 0) else -1)
        middle_u, middle_v = (start[u] + end[u]) / 2, (start[v] + end[v]) / 2
        return [middle_u - Fraction(side) * dv, middle_v + Fraction(side) * du]

    # Canned cycles

    def cycle(self, block, mode):
        axis = NORMAL[self.mode["plane"]]
        deep = AXES[axis]
        column = min(word.column for word in list(block.words.values()) + block.codes)
        if self.mode["feed"] == 93:
            raise ProgramError("feed", column, False)
        if self.level is None:
            self.level = self.place[axis]
        for letter in {"r", "p", "q", deep} & set(block.words):
            word = block.words[letter]
            self.sticky[letter] = word.value if letter == "p" else self.word(block, letter)
        needed = {"r", deep} | {73: {"q"}, 83: {"q"}, 82: {"p"}, 81: set()}[mode]
        if not needed <= set(self.sticky):
            raise ProgramError("missing", column, False)
        if mode in (73, 83) and self.sticky["q"] <= 0:
            raise ProgramError("value", block.words["q"].column, False)
        repeats = block.words["l"].value if "l" in block.words else 1
        if repeats <= 0 or int(repeats) != repeats:
            raise ProgramError("value", block.words["l"].column, False)
        incremental = self.mode["distance"] == 91
        origin = self.place[axis] if incremental else self.offset(axis)
        clear = self.sticky["r"] + origin
        bottom = self.sticky[deep] + (clear if incremental else origin)
        if clear < bottom:
            raise ProgramError("value", column, False)
        speed = self.feed_speed(block, 1)

        def to(height, kind=RAPID):
            end = list(self.place)
            end[axis] = height
            self.add(kind, end, distance(self.place, end), RAPID_SPEED if kind == RAPID else speed)

        if self.place[axis] < clear:
            to(clear)
        back = self.level if self.mode["level"] == 98 and self.level > clear else clear
        for _ in range(int(repeats)):
            above = self.target(block)
            above[axis] = self.place[axis]
            self.rapid(above)
            to(clear)
            if mode in (73, 83):
                depth = clear - self.sticky["q"]
                while depth > bottom:
                    to(depth, PLUNGE)
                    if mode == 83:
                        to(clear)
                    to(depth + BACK_OFF)
                    depth -= self.sticky["q"]
            to(bottom, PLUNGE)
            if mode == 82 and self.sticky["p"]:
                self.steps.append(Dwell(self.line, float(self.sticky["p"])))
            to(back)


# --- programs and answers ----------------------------------------------------------------------


@dataclass
class Program:
    name: str
    text: str = ""
    skip_blocks: bool = True
    skip_unknown: bool = False
    hand: str = ""  # what must come out, computed by hand


def read_programs(text):
    """`=== name` begins a program; lines with `---` after it say how it is read and what it must give:
    `--- blocks` does not skip blocks, `--- unknown` skips codes,
    `--- by hand: end=(x, y, z), length=…, time=…`. Lines of programs may hold <CR> and <TAB>. A line
    of more signs, `====== title`, belongs to none."""
    programs = []
    for line in text.splitlines():
        if line.startswith("=== "):
            programs.append(Program(line[4:].strip()))
        elif line.startswith("--- "):
            words = line[4:].strip()
            program = programs[-1]
            if words.startswith("by hand: "):
                program.hand = words[9:]
            else:
                program.skip_blocks &= words != "blocks"
                program.skip_unknown |= words == "unknown"
                if words not in ("blocks", "unknown"):
                    raise ValueError(line)
        elif programs and not line.startswith("==="):
            programs[-1].text += unescaped(line) + "\n"
    return programs


def unescaped(line):
    return line.replace("<CR>", "\r").replace("<TAB>", "\t")


def number(value):
    return format(float(value) + 0.0, ".17g")


def answer(program):
    """As lines of words."""
    machine = Machine(program.skip_blocks, program.skip_unknown)
    lines = [f"program {program.name} {int(program.skip_blocks)} {int(program.skip_unknown)}"]
    try:
        machine.run(program.text)
    except ProgramError as error:
        return lines + [
            f"error {error.line} {error.column if error.firm else 0} {error.kind.replace(' ', '-')}"
        ]
    for step in machine.steps:
        if isinstance(step, Dwell):
            lines.append(f"dwell {step.line} {number(step.seconds)}")
        else:
            where = " ".join(number(x) for x in step.end)
            lines.append(
                f"motion {step.type} {step.line} {where} {number(step.length)} {number(step.seconds)}"
            )
    return lines + ["end " + " ".join(map(number, totals(machine))) + f" {machine.ignored}"]


def totals(machine):
    lengths = [step.length for step in machine.steps if isinstance(step, Motion)]
    return [*machine.place, math.fsum(lengths), math.fsum(step.seconds for step in machine.steps)]


HAND_NAMES = {name: value for name, value in vars(math).items() if not name.startswith("_")}


def check_hand(program):
    """Complains where an answer is not the one computed by hand."""
    wanted = eval(f"dict({program.hand})", {**HAND_NAMES, "dict": dict})
    machine = Machine(program.skip_blocks, program.skip_unknown)
    try:
        machine.run(program.text)
    except ProgramError as error:
        found = {"error": (error.line, error.column, error.kind)}
    else:
        *end, length, seconds = totals(machine)
        found = {"end": tuple(map(float, end)), "length": length, "time": seconds}
    complaints = []
    for key, value in wanted.items():
        if key not in found:
            complaints.append(f"{program.name}: {key} should be {value}, but there is {found}")
        elif key == "error":
            if found[key][: len(value)] != value:
                complaints.append(f"{program.name}: error should be {value}, is {found[key]}")
        else:
            pairs = zip(value, found[key]) if key == "end" else [(value, found[key])]
            if any(abs(a - b) > 1e-12 * max(1, abs(a)) for a, b in pairs):
                complaints.append(f"{program.name}: {key} should be {value}, is {found[key]}")
    return complaints


def main(arguments):
    folder = pathlib.Path(__file__).parent
    if arguments[:1] == ["--show"]:
        program = Program(pathlib.Path(arguments[1]).stem, pathlib.Path(arguments[1]).read_text())
        program.skip_unknown = "--unknown" in arguments
        print("\n".join(answer(program)))
        return 0
    programs = read_programs((folder / "programs.txt").read_text())
    names = [program.name for program in programs]
    complaints = [f"{name}: twice" for name in set(names) if names.count(name) > 1]
    for program in programs:
        if program.hand:
            complaints += check_hand(program)
    answers = "\n".join("\n".join(answer(program)) for program in programs) + "\n"
    if arguments == ["--write"]:
        (folder / "answers.txt").write_text(answers)
    elif (folder / "answers.txt").read_text() != answers:
        complaints.append("answers.txt is not what comes out")
    print("\n".join(complaints) or f"{len(programs)} programs, {sum(bool(p.hand) for p in programs)} by hand")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
