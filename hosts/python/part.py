"""A part, coloured by its height with a colour bar, its base hidden; late bound through pywin32.

python part.py PART.obj FOLDER
"""

import os
import sys

from win32com.client.dynamic import Dispatch

source, folder = (os.path.abspath(argument) for argument in sys.argv[1:])
part = Dispatch("ZYNVue.ZYNGLMaillage")
part.Charger(source)
part.setValeurs(part.getSommets()[2::3])
colours = Dispatch("ZYNVue.ZYNEchelleCouleurs")
colours.Titre = "height, mm"
part.EchelleCouleurs = colours

context = Dispatch("ZYNVue.ZYN3dGLBitmapContext")
context.BackColor = [1.0, 1.0, 1.0]
context.MultiSampleAntialiasing = True
context.CreateContext(800, 600)

groups: dict = {}
for face in range(part.NbFaces):
    groups.setdefault(part.NomGroupe(face), []).append(face)
for name, faces in groups.items():
    group = Dispatch("ZYNVue.ZYNGroupe")
    group.Add(part.Extraire(faces), 0)
    group.Visible = name != "base"
    context.Add(group, 0)
context.Add(colours, 0)

camera = Dispatch("ZYNVue.ZYNCamera")
camera.setOeil(60, -110, 90)
camera.setCible(0, 0, 22)
camera.setHaut(0, 0, 1)
camera.Largeur = 100
camera.Hauteur = 75
camera.Perspective = True
context.Camera = camera
context.Exporter(os.path.join(folder, "part.png"))
with open(os.path.join(folder, "part.camera"), "w", encoding="utf-8") as file:
    print(camera.Texte, file=file)
print("done")
