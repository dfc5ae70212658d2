"""A graph as a picture, late bound through pywin32: nothing is generated, every member is looked up by its name.

python late_bound.py GRAPH.png
"""

import math
import os
import sys

from win32com.client import Dispatch

trace = Dispatch("ZYNModeleGeom.Polyligne")
x = [i / 10 for i in range(101)]
trace.setPoints(x, [math.sin(value) for value in x])
trace.setColor(0.1, 0.3, 0.8, 1)
trace.Epaisseur = 2

graph = Dispatch("ZYNVue.ZYN2DGLBitmapContext")
graph.BackColor = [1.0, 1.0, 1.0]
graph.CreateContexte(1200, 400)
area = Dispatch("ZYNModeleGeom.Rectangle")
area.setBornes(-0.2, 10.2, -1.6, 1.6)
graph.ViewRect(area, 0)
graph.Add(trace, 0)

# The member answers no error: the file tells.
path = os.path.abspath(sys.argv[1])
if os.path.exists(path):
    os.remove(path)
graph.CreatePNG(path + ".tmp", path)
if not os.path.exists(path):
    raise OSError(path + " could not be written")
print("done")
