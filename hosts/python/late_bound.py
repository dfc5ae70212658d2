"""A graph as a picture, late bound through pywin32: nothing is generated, every member is looked up by its name.

python late_bound.py GRAPH.png
"""

import math
import os
import sys

from win32com.client import Dispatch

context = Dispatch("ZYNVue.ZYN2DGLBitmapContext")
context.CreateContexte(800, 500)
graph = context.Graphe
graph.Actif = True
graph.Titre = "A spring that is let go"
for side, title, unit in ((0, "Time", "s"), (1, "Deflection", "mm")):
    graph.Axe(side).Titre = title
    graph.Axe(side).Unite = unit

t = [i / 20 for i in range(201)]
envelope = [5 * math.exp(-time / 4) for time in t]
swing = [most * math.cos(4 * time) for time, most in zip(t, envelope)]
for name, values in (("measured", swing), ("envelope", envelope)):
    series = Dispatch("ZYNVue.ZYNSerie")
    series.Nom = name
    series.setPoints(t, values)
    series.Epaisseur = 2
    graph.Ajouter(series)

context.Exporter(os.path.abspath(sys.argv[1]))  # fails with the cause where it cannot be written
print("done")
