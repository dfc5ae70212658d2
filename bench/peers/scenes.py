"""What is drawn: arrays that every product is handed alike, the same ones at each run."""

from types import SimpleNamespace

import numpy

WIDTH, HEIGHT = 800, 600  # of every picture
APPENDED = 1000  # points, where the change is that a line grows
SPEECH = "Changed"  # what a label says after the change


def _torus(around, across):
    """Points, faces (two for each field of a grid) and normals."""
    i, j = numpy.meshgrid(numpy.arange(around), numpy.arange(across), indexing="ij")
    u, v = 2 * numpy.pi * i / around, 2 * numpy.pi * j / across
    normals = numpy.stack([numpy.cos(u) * numpy.cos(v), numpy.sin(u) * numpy.cos(v), numpy.sin(v)], -1)
    points = 30 * numpy.stack([numpy.cos(u), numpy.sin(u), 0 * u], -1) + 12 * normals
    a, b = i * across + j, (i + 1) % around * across + j
    c, d = (i + 1) % around * across + (j + 1) % across, i * across + (j + 1) % across
    faces = numpy.stack([a, b, c, a, c, d], -1).reshape(-1, 3).astype("int32")
    return points.reshape(-1, 3), faces, normals.reshape(-1, 3)


def objects(scale):
    points, faces, _ = _torus(500, 100 // scale)
    corners = points[faces]
    colours = numpy.random.default_rng(1).uniform(0.2, 1, (len(faces), 3))
    return SimpleNamespace(corners=corners, colours=colours)


def few(_):
    return objects(10)


def mesh(scale):
    points, faces, normals = _torus(1000, 500 // scale)
    return SimpleNamespace(points=points, faces=faces, normals=normals)


def path(scale):
    """Layers of a part, there and back, each way in many chords as finishing paths have them."""
    count, chords, rows = 1_000_000 // scale + 1, 20, 200
    line, chord = numpy.divmod(numpy.arange(count), chords)
    layer, row = numpy.divmod(line, rows)
    along = chord / (chords - 1)
    x = 90 * numpy.where(row % 2 == 0, along, 1 - along)
    points = numpy.stack([x, row * 0.45, layer * 60.0 / (layer[-1] + 1) + 2 * numpy.sin(x * 0.1)], -1)
    more = numpy.arange(APPENDED)
    appended = numpy.stack([more * 0.05, 20.0 + more % 7, 0 * more + 65.0], -1)
    return SimpleNamespace(points=points, appended=appended)


def trace(scale):
    count = 1_000_000 // scale
    x = numpy.arange(count + APPENDED) / count
    noise = numpy.random.default_rng(1).normal(0, 0.002, len(x))
    y = 0.5 + 0.3 * numpy.sin(20 * x) + 0.1 * numpy.sin(300 * x) + noise
    return SimpleNamespace(x=x[:count], y=y[:count], more_x=x[count:], more_y=y[count:])


def labels(scale):
    count = 1000 // scale
    points = numpy.random.default_rng(1).uniform(-50, 50, (count, 3))
    return SimpleNamespace(points=points, texts=[f"Label {i:06}" for i in range(count)])


ALL = {"objects": objects, "few": few, "mesh": mesh, "path": path, "trace": trace, "labels": labels}

TITLES = {
    "objects": "100,000 objects of one triangle",
    "few": "10,000 objects of one triangle",
    "mesh": "mesh of 1,000,000 triangles",
    "path": "tool path of 1,000,000 segments",
    "trace": "trace of 1,000,000 points in the plane",
    "labels": "1,000 labels in space",
}
