// A part, coloured by its height with a colour bar, its base hidden.
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using ZYNVue.Interop;

internal static class Part {
  public static void Draw(string source, string folder) {
    IZYNGLMaillage part = ZYNGLMaillage.Create();
    part.Charger(Path.GetFullPath(source));
    double[] points = (double[])part.getSommets();
    part.setValeurs(points.Where((number, place) => place % 3 == 2).ToArray());
    IZYNEchelleCouleurs colours = ZYNEchelleCouleurs.Create();
    colours.Titre = "height, mm";
    part.EchelleCouleurs = colours;

    IZYN3DGLBitmapContext2 context = (IZYN3DGLBitmapContext2)ZYN3dGLBitmapContext.Create();
    context.BackColor = new double[] { 1, 1, 1 };
    context.MultiSampleAntialiasing = true;
    context.CreateContext(800, 600);
    foreach (IGrouping<string, int> faces in Enumerable.Range(0, part.NbFaces).GroupBy(face => part.NomGroupe(face))) {
      IZYNGroupe group = ZYNGroupe.Create();
      group.Nom = faces.Key;
      group.Add(part.Extraire(faces.ToArray()), 0);
      group.Visible = faces.Key != "base";
      context.Add(group, 0);
    }
    context.Add(colours, 0);

    IZYNCamera camera = ZYNCamera.Create();
    camera.setOeil(60, -110, 90);
    camera.setCible(0, 0, 22);
    camera.setHaut(0, 0, 1);
    camera.largeur = 100;
    camera.hauteur = 75;
    camera.Perspective = true;
    context.Camera = camera;
    context.Exporter(Path.GetFullPath(Path.Combine(folder, "part.png")));
    File.WriteAllText(Path.Combine(folder, "part.camera"), camera.Texte + "\n");
  }
}
