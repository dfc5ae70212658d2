"""Measures this library and others with the same scenes, in turns, and prints a table.

python main.py FOLDER [--quick] [SCENE...]     FOLDER: where the pictures go

Each product with each scene is a process of its own; those of a scene live at the same time, and each step is done by one
after the other, as often as the step is repeated.
"""

import argparse
import multiprocessing
import os
import platform
import statistics
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))  # an embeddable Python does not look there

import scenes
from worker import serve

# For each scene: name, module and class. The first one is what the others are compared with.
PRODUCTS = {
    "objects": [
        ("ZYNVue, an object each", "ours", "Objects"),
        ("VTK, a block each", "vtk_scenes", "Blocks"),
        ("VTK, one actor, coloured cells", "vtk_scenes", "Cells"),
        ("OCCT, a shape each", "occt", "Objects"),
        ("pyqtgraph, one item, coloured faces", "pyqtgraph_scenes", "Objects"),
    ],
    "few": [
        ("ZYNVue, an object each", "ours", "Objects"),
        ("VTK, an actor each", "vtk_scenes", "Actors"),
        ("OCCT, a shape each", "occt", "Objects"),
    ],
    "mesh": [
        ("ZYNVue", "ours", "Mesh"),
        ("VTK", "vtk_scenes", "Mesh"),
        ("OCCT", "occt", "Mesh"),
        ("pyqtgraph", "pyqtgraph_scenes", "Mesh"),
    ],
    "path": [
        ("ZYNVue", "ours", "Path"),
        ("VTK", "vtk_scenes", "Path"),
        ("OCCT", "occt", "Path"),
        ("pyqtgraph", "pyqtgraph_scenes", "Path"),
    ],
    "trace": [
        ("ZYNVue", "ours", "Trace"),
        ("VTK, a chart", "vtk_scenes", "Trace"),
        ("pyqtgraph", "pyqtgraph_scenes", "Trace"),
        ("Matplotlib", "matplotlib_scenes", "Trace"),
    ],
    "labels": [
        ("ZYNVue", "ours", "Labels"),
        ("VTK, billboards", "vtk_scenes", "Labels"),
        ("OCCT", "occt", "Labels"),
        ("pyqtgraph", "pyqtgraph_scenes", "Labels"),
        ("Matplotlib", "matplotlib_scenes", "Labels"),
    ],
}

# Name, heading, how often.
STEPS = [
    ("build", "build", 1),
    ("first", "first frame", 1),
    ("frame", "frame", 7),
    ("first_pick", "first pick", 1),
    ("pick", "pick", 9),
    ("change", "change, frame", 3),
    ("png", "PNG", 3),
]
PATIENCE = 4  # seconds for the repetitions of one step by one product
LIMIT = 120  # seconds for one step
VITAL = ("start", "build", "first")  # without these there is nothing to measure


class Worker:
    """A process, the times of its steps, and why it did not do what it was told."""

    def __init__(self, title, module, product, scene, scale, folder):
        self.title, self.times, self.failures, self.alive = title, {}, [], True
        self.pipe, end = multiprocessing.Pipe()
        picture = os.path.join(folder, f"{scene}-{module}-{product}.png")
        self.process = multiprocessing.Process(
            target=serve, args=(end, module, scene, product, scale, picture)
        )
        self.process.start()
        end.close()
        self.version = self._answer("start")
        self.memory = None

    def _answer(self, step):
        try:
            answered = self.pipe.poll(LIMIT)
            value, failure = self.pipe.recv() if answered else (None, f"more than {LIMIT} s")
        except (EOFError, OSError):
            answered, value, failure = False, None, "its process ended"
        if failure:
            self.failures.append(f"{step}: {failure}")
            if step in VITAL or not answered:
                self.process.kill()
                self.alive = False
        return value

    def ask(self, step):
        if not self.alive:
            return None
        self.pipe.send(step)
        return self._answer(step)

    def do(self, step):
        """A step once more, unless it failed or took long enough."""
        times = self.times.setdefault(step, [])
        if None in times or sum(times) > 1000 * PATIENCE:
            return
        times.append(self.ask(step))

    def find(self):
        """Places to pick; without any there are no further picks."""
        if self.alive and self.ask("find") is None:
            self.times["pick"] = [None]

    def finish(self):
        if self.alive:
            self.pipe.send(None)
        self.process.join(30)
        self.process.kill()

    def median(self, step):
        times = self.times[step]
        return None if None in times else statistics.median(times)


def measure(scene, scale, folder):
    workers = [Worker(*product, scene, scale, folder) for product in PRODUCTS[scene]]
    for step, _, count in STEPS:
        for _ in range(count):
            for worker in workers:
                worker.do(step)
        if step == "first_pick":
            for worker in workers:
                worker.find()
        if step == "change":  # what encoding a picture needs does not count
            for worker in workers:
                worker.memory = worker.ask("memory")
    for worker in workers:
        worker.finish()
    return workers


def number(value):
    return f"{value:,.0f}" if value >= 100 else f"{value:.1f}" if value >= 1 else f"{value:.2f}"


def cell(value, ours):
    if value is None:
        return "-"
    if ours is None:
        return number(value)
    ratio = value / ours
    return f"{number(value)} ({ratio:.0f}x)" if ratio >= 10 else f"{number(value)} ({ratio:.2g}x)"


def print_table(title, workers):
    print(f"\n{title}, milliseconds\n")
    print(f"| | {' | '.join(heading for _, heading, _ in STEPS)} | MB |")
    print(f"|---|{'---|' * (len(STEPS) + 1)}")
    ours = workers[0]
    for worker in workers:
        limits = {step: None if worker is ours else ours.median(step) for step, _, _ in STEPS}
        cells = [cell(worker.median(step), limits[step]) for step, _, _ in STEPS]
        cells.append("-" if worker.memory is None else number(worker.memory / 2**20))
        print(f"| {worker.title} | {' | '.join(cells)} |")
    for worker in workers:
        for failure in worker.failures:
            print(f"- {worker.title}, {failure}")
    sys.stdout.flush()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder")
    parser.add_argument("--quick", action="store_true", help="a tenth of everything")
    parser.add_argument("scenes", nargs="*", metavar="SCENE", help=" ".join(PRODUCTS))
    arguments = parser.parse_intermixed_args()
    part, versions = (" (a tenth of it)", set()) if arguments.quick else ("", set())
    for scene in arguments.scenes or PRODUCTS:
        workers = measure(scene, 10 if arguments.quick else 1, arguments.folder)
        versions.update(worker.version for worker in workers if worker.version)
        print_table(scenes.TITLES[scene] + part, workers)
    print(f"\nPython {platform.python_version()}; " + "; ".join(sorted(versions)))
    print("done")


if __name__ == "__main__":
    main()
