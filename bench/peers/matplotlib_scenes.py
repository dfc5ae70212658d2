"""Matplotlib, drawn by Agg into a canvas of Qt, with the settings of its page on speed (style "fast")."""

import matplotlib
import numpy
from matplotlib.backend_bases import MouseEvent
from PyQt5.QtCore import Qt

matplotlib.use("QtAgg")
import matplotlib.style
from matplotlib import pyplot

import scenes

VERSION = f"Matplotlib {matplotlib.__version__}"
matplotlib.style.use("fast")


class View:
    PROJECTION = None

    def __init__(self):
        self.figure = pyplot.figure(figsize=(scenes.WIDTH / 100, scenes.HEIGHT / 100), dpi=100)
        self.axes = self.figure.add_subplot(projection=self.PROJECTION)
        self.canvas = self.figure.canvas
        window = self.canvas.manager.window
        window.setWindowFlags(Qt.FramelessWindowHint)
        window.show()
        self.canvas.flush_events()
        self.draw()

    def draw(self):
        self.canvas.draw()
        self.canvas.repaint()

    def pick(self, x, y):
        event = MouseEvent("button_press_event", self.canvas, x, scenes.HEIGHT - 1 - y)
        return any(artist.contains(event)[0] for artist in self.artists)

    def save(self, path):
        self.figure.savefig(path)


class Trace(View):
    def build(self, data):
        self.data = data
        self.artists = self.axes.plot(data.x, data.y, linewidth=1)
        self.artists[0].set_pickradius(20)

    def look(self):
        self.start = 0.0
        self.axes.set_xlim(0, 1)

    def turn(self):
        self.start = (self.start + 0.02) % 0.5
        self.axes.set_xlim(self.start, self.start + 0.5)

    def change(self):
        line = self.artists[0]
        line.set_data(
            numpy.concatenate([line.get_xdata(), self.data.more_x]),
            numpy.concatenate([line.get_ydata(), self.data.more_y]),
        )


class Labels(View):
    PROJECTION = "3d"

    def build(self, data):
        self.artists = [
            self.axes.text(x, y, z, text, fontsize=14 * 72 / 100)
            for text, (x, y, z) in zip(data.texts, data.points.tolist())
        ]

    def look(self):
        self.axes.set(xlim=(-50, 50), ylim=(-50, 50), zlim=(-50, 50))

    def turn(self):
        self.axes.view_init(azim=self.axes.azim + 3)

    def change(self):
        self.artists[0].set_text(scenes.SPEECH)
