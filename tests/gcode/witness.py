#!/usr/bin/env -S python3 -B
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
import sys
from dataclasses import dataclass

from lines import ProgramError
from machine import Dwell, Machine, Motion

FOLDER = pathlib.Path(__file__).resolve().parent
PATHS = FOLDER.parent.parent / "hosts" / "data" / "paths"  # real programs


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
    return lines + [end_line(machine)]


def file_answer(path):
    """Of a real program, its sums only. What printers alone understand is skipped."""
    prints = path.suffix == ".gcode"
    machine = Machine(skip_unknown=prints)
    machine.run(path.read_text())
    return [f"file {path.name} {int(prints)} {len(machine.steps)}", end_line(machine)]


def end_line(machine):
    return "end " + " ".join(map(number, totals(machine))) + f" {machine.ignored}"


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
    if arguments[:1] == ["--show"]:
        program = Program(pathlib.Path(arguments[1]).stem, pathlib.Path(arguments[1]).read_text())
        program.skip_unknown = "--unknown" in arguments
        print("\n".join(answer(program)))
        return 0
    programs = read_programs((FOLDER / "programs.txt").read_text())
    names = [program.name for program in programs]
    complaints = [f"{name}: twice" for name in set(names) if names.count(name) > 1]
    for program in programs:
        if program.hand:
            complaints += check_hand(program)
    answers = [line for program in programs for line in answer(program)]
    answers += [line for path in sorted(PATHS.glob("*.[gn]c*")) for line in file_answer(path)]
    answers = "\n".join(answers) + "\n"
    if arguments == ["--write"]:
        (FOLDER / "answers.txt").write_text(answers)
    elif (FOLDER / "answers.txt").read_text() != answers:
        complaints.append("answers.txt is not what comes out")
    print("\n".join(complaints) or f"{len(programs)} programs, {sum(bool(p.hand) for p in programs)} by hand")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
