#!/usr/bin/python3
"""Runs clang-tidy over every translation unit of src/ and hosts/, with the flags of its own build.

usage: check_tidy.py BUILD-FOLDER (which holds native/ and windows/)

Most of the time goes into the headers of Windows and of C++, not into our files. So several files are looked at as one;
where that does not compile, since they use a name for different things, each is looked at alone.
"""
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TOGETHER = 6
# Paths through a function that are followed: with the default, ten times as many, most of the time goes into a few.
PATHS = ["-Xclang", "-analyzer-config", "-Xclang", "max-nodes=20000"]


def mingw_headers():
    """MinGW's headers in the order in which GCC searches them, which clang has to be told."""
    answer = subprocess.run(["x86_64-w64-mingw32-g++-posix", "-E", "-x", "c++", "-v", os.devnull],
                            capture_output=True, text=True, check=True).stderr
    folders = answer.split("#include <...>")[1].split("End of search")[0].split("\n")[1:]
    return [f"-isystem{folder.strip()}" for folder in folders
            if folder.strip() and not re.search("/lib/gcc/.*/include$", folder)]


def flags_of(command):
    """What matters to clang: definitions, folders of headers, the language and our warnings."""
    words = iter(shlex.split(command)[1:])
    flags = []
    for word in words:
        if word == "-isystem":
            flags += [word, next(words)]
        elif word.startswith(("-D", "-I", "-W", "-std=", "-municode")) and not word.endswith(("_EXPORTS", "-Winvalid-pch")):
            flags.append(word)
    return tuple(flags)


def is_windows(source):
    return source.name.endswith(("_win.cpp", "_com.cpp")) or source.name == "main.cpp"


def groups(build, windows, more_flags):
    """(flags, files) of all files of one build."""
    files = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = pathlib.Path(entry["file"])
        if source.suffix == ".cpp" and source.is_relative_to(ROOT) and is_windows(source) == windows \
                and source.relative_to(ROOT).parts[0] in ("src", "hosts"):
            files.setdefault(source, flags_of(entry["command"]))
    by_flags = {}
    for source in sorted(files):
        by_flags.setdefault(files[source], []).append(source)
    for flags, sources in by_flags.items():
        count = -(-len(sources) // TOGETHER)
        for first in range(count):  # neighbours apart: they are likelier to use a name for different things
            yield [*more_flags, *flags], sources[first::count]


def look_at(sources, flags, folder):
    """clang-tidy's exit code and what it says of the files, looked at as one."""
    folder.mkdir(parents=True, exist_ok=True)
    whole = folder / "files.cpp"
    texts = [source.read_text() for source in sources]
    whole.write_text("".join(texts))
    config = f"--config-file={ROOT / '.clang-tidy'}"
    answer = subprocess.run(["clang-tidy", "--quiet", config, whole, "--", *flags, *PATHS], capture_output=True, text=True)
    places = [f"{source}:{line + 1}" for source, text in zip(sources, texts) for line in range(text.count("\n"))]
    said = re.sub(rf"{re.escape(str(whole))}:(\d+)", lambda place: places[int(place[1]) - 1], answer.stdout)
    return answer.returncode, said + (answer.stderr if answer.returncode else "")


def unused_names(source):
    """What another file's use of the name hides from clang-tidy."""
    text = source.read_text()
    return "".join(f"{source}: using {name} is not used\n" for name in re.findall(r"^ *using ([\w:]+);", text, re.M)
                   if len(re.findall(rf"\b{name.split('::')[-1]}\b", text)) == 1)


def complaints(task):
    flags, sources, folder = task
    status, said = look_at(sources, flags, folder)
    if status and len(sources) > 1 and "clang-diagnostic-error" in said:
        return "".join(complaints((flags, [source], folder)) for source in sources)
    return (said if status else "") + "".join(unused_names(source) for source in sources)


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    windows = ["--target=x86_64-w64-mingw32", *mingw_headers()]
    all_groups = [*groups(build / "windows", True, windows), *groups(build / "native", False, [])]
    tasks = [(flags, sources, build / "tidy" / str(number)) for number, (flags, sources) in enumerate(all_groups)]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        found = [text for text in pool.map(complaints, tasks) if text]
    print("".join(found), end="")
    print(f"clang-tidy: {sum(len(sources) for _, sources in all_groups)} files, {len(all_groups)} groups")
    return 1 if found or not tasks else 0


if __name__ == "__main__":
    sys.exit(main())
