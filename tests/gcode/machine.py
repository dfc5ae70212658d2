"""Does what lines of G-code say, and keeps the motions in millimetres of the machine."""

import math
from dataclasses import dataclass
from fractions import Fraction

from lengths import distance, spiral_length, turn
from lines import LineReader, ProgramError

RAPID, FEED, PLUNGE, RETRACT, ARC = range(5)
RAPID_SPEED = 5000  # millimetres a minute
BACK_OFF = Fraction(254, 1000)  # of a chip-breaking or pecking drill, millimetres
INCH = Fraction(254, 10)
AXES = "xyz"
NORMAL = {17: 2, 18: 1, 19: 0}  # the axis that is perpendicular to a plane
CENTRE_WORDS = "ijk"


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
                raise ProgramError("group", word.column)
            else:
                now[group] = word.value if word.value.denominator > 1 else int(word.value)
        takes = [word for word in block.codes if word.value in TAKES_AXES]
        moves = [word for word in block.codes if GROUP_OF.get(word.value) == "motion" and word.value != 80]
        if takes and moves and block.has(AXES):
            raise ProgramError("group", max(takes[0].column, moves[0].column))
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
                raise ProgramError("value", block.words["f"].column)
            inverse = self.mode["feed"] == 93
            self.speed = block.words["f"].value if inverse else self.word(block, "f")

    def dwell(self, block, now):
        if now.get("once") != 4:
            return
        if "p" not in block.words:
            raise ProgramError("missing", self.code_column(block, 4))
        seconds = block.words["p"].value
        if seconds < 0:
            raise ProgramError("value", block.words["p"].column)
        if seconds:
            self.steps.append(Dwell(self.line, float(seconds)))

    @staticmethod
    def code_column(block, code):
        return next(word.column for word in block.codes if word.value == code)

    @staticmethod
    def motion_column(block):
        """Of the code of motion or, where that is of an earlier line, of the line's first word."""
        motions = [word.column for word in block.codes if GROUP_OF.get(word.value) == "motion"]
        return min(motions or [word.column for word in [*block.words.values(), *block.codes]])

    # Origins

    def offset(self, axis):
        return self.origins[self.mode["system"] - 54][axis] + self.shift[axis]

    def set_origin(self, block):
        which = block.words.get("l")
        if which is None or which.value not in (2, 20):
            raise ProgramError("value", which.column if which else self.code_column(block, 10), False)
        system = block.words.get("p")
        if system is None or system.value not in range(1, 7):
            raise ProgramError("value", system.column if system else self.code_column(block, 10))
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
                raise ProgramError("missing", self.code_column(block, 92))
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
        if once == 53 and mode not in (0, 1):
            raise ProgramError("missing", self.code_column(block, 53), False)
        if mode in (None, 80):
            if axes:
                raise ProgramError("mode", block.column(AXES))
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
        column = self.motion_column(block)
        if self.mode["feed"] == 93:
            if "f" not in block.words or not self.speed:
                raise ProgramError("feed", column)
            return length * float(self.speed)
        speed = self.speed * (self.spindle if self.mode["feed"] == 95 else 1)
        if speed <= 0:
            raise ProgramError("feed", column)
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
        sweep = turn(start, end, centre, u, v, turns_left)
        length = spiral_length(radii[0], radii[1], sweep, float(end[axis] - start[axis]))
        full = [None, None, None]
        full[u], full[v], full[axis] = float(centre[0]), float(centre[1]), float(start[axis])
        self.add(ARC, end, length, self.feed_speed(block, length), centre=full, axis=axis, sweep=sweep)

    def centre_by_words(self, block, start, u, v):
        if not block.has([CENTRE_WORDS[u], CENTRE_WORDS[v]]):
            column = self.motion_column(block)
            raise ProgramError("missing", column)
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
            raise ProgramError("group", column)
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
        column = self.motion_column(block)
        if self.mode["feed"] == 93:
            raise ProgramError("feed", column)
        if self.level is None:
            self.level = self.place[axis]
        for letter in {"r", "p", "q", deep} & set(block.words):
            word = block.words[letter]
            self.sticky[letter] = word.value if letter == "p" else self.word(block, letter)
        needed = {"r", deep} | {73: {"q"}, 83: {"q"}, 82: {"p"}, 81: set()}[mode]
        if not needed <= set(self.sticky):
            raise ProgramError("missing", column)
        if mode in (73, 83) and self.sticky["q"] <= 0:
            raise ProgramError("value", block.words["q"].column)
        repeats = block.words["l"].value if "l" in block.words else 1
        if repeats <= 0 or int(repeats) != repeats:
            raise ProgramError("value", block.words["l"].column)
        incremental = self.mode["distance"] == 91
        origin = self.place[axis] if incremental else self.offset(axis)
        clear = self.sticky["r"] + origin
        bottom = self.sticky[deep] + (clear if incremental else origin)
        if clear < bottom:
            raise ProgramError("value", column)
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
