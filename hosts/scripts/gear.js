// Makes a gear from arrays, writes it as a binary STL file and takes a picture of it.
//
//   cscript //nologo gear.js FOLDER
//
// The last line printed is "done: N faces"; without it, something failed.

var TEETH = 18;
var POINTS = 4 * TEETH; // of each ring

var files = new ActiveXObject("Scripting.FileSystemObject");

try {
  main();
} catch (error) {
  WScript.Echo("gear.js: " + (error.message || "error " + (error.number >>> 0).toString(16)));
  WScript.Quit(1);
}

function main() {
  if (WScript.Arguments.length != 1) {
    throw new Error("usage: cscript //nologo gear.js FOLDER");
  }
  var folder = files.GetAbsolutePathName(WScript.Arguments(0));
  var gear = makeGear();
  gear.Enregistrer(files.BuildPath(folder, "gear.stl"));
  takePicture(gear, files.BuildPath(folder, "gear.png"));
  WScript.Echo("done: " + gear.NbFaces + " faces");
}

// Rings of points, each joined to the next by faces of four corners, the last to the first.
function makeGear() {
  var rings = [[teeth, 0], [teeth, 10], [round(22), 10], [round(21), 9], [round(19), 6], [round(12), 6], [round(11), 15],
               [round(7), 16], [round(6), 15], [round(6), 1], [round(7), 0]];
  var points = [], sizes = [], corners = [];
  for (var ring = 0; ring < rings.length; ring++) {
    var next = (ring + 1) % rings.length;
    for (var i = 0; i < POINTS; i++) {
      var place = rings[ring][0](i);
      var right = (i + 1) % POINTS;
      points.push(place.radius * Math.cos(place.angle), place.radius * Math.sin(place.angle), rings[ring][1]);
      sizes.push(4);
      corners.push(ring * POINTS + i, ring * POINTS + right, next * POINTS + right, next * POINTS + i);
    }
  }
  var gear = new ActiveXObject("ZYNVue.ZYNGLMaillage");
  gear.setSommets(points);
  gear.setPolygones(sizes, corners);
  return gear;
}

// Four points of each tooth: its foot, its head, its head, its foot.
function teeth(i) {
  var within = [0.08, 0.32, 0.6, 0.84][i % 4];
  return { radius: i % 4 == 0 || i % 4 == 3 ? 25 : 30, angle: 2 * Math.PI * (Math.floor(i / 4) + within) / TEETH };
}

function round(radius) {
  return function (i) {
    return { radius: radius, angle: 2 * Math.PI * (i + 0.4) / POINTS };
  };
}

function takePicture(gear, file) {
  gear.setMaterial(0.95, 0.72, 0.3, 1, 0.6, 0.8, 0.3, 0.3, 0);
  gear.StyleRendu = 2; // surfaces and the edges of their form
  gear.setCouleurAretes(0.3, 0.2, 0.1, 1);
  var context = new ActiveXObject("ZYNVue.ZYN3dGLBitmapContext");
  context.LineAntialiasing = true; // before CreateContext
  context.CreateContext(800, 600);
  context.GradientBackground = true;
  context.setGradientColor(0.6, 0.7, 0.85);
  context.Add(gear, 0);
  var camera = new ActiveXObject("ZYNVue.ZYNCamera");
  camera.setOeil(60, -90, 100);
  camera.setCible(0, 0, 6);
  camera.setHaut(0, 0, 1);
  camera.Largeur = 84;
  camera.Hauteur = 63;
  context.Camera = camera;
  context.Exporter(file);
}
