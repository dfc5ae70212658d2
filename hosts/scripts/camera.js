// Draws how the camera of a 3D view looks at its scene: eye, target, up, the rectangle that the view
// shows and the depth that it reaches.
//
//   cscript //nologo camera.js FOLDER
//
// The last line printed is "done: N pictures"; without it, something failed.

var NORMAL = 0; // drawing mode of Add

// The camera shown: its distance D, and the size of its view rectangle.
var DISTANCE = 10;
var WIDTH = 6;
var HEIGHT = 4;
var NEAR = 0.45 * DISTANCE; // from the eye
var FAR = 1.55 * DISTANCE;

var INK = [0.13, 0.17, 0.23];
var GREY = [0.55, 0.6, 0.66];
var BLUE = [0.1, 0.35, 0.75];
var RED = [0.8, 0.2, 0.15];
var GREEN = [0.1, 0.55, 0.2];

// Points of a text that setPosition can put somewhere.
var BOTTOM_LEFT = 1;
var TOP_LEFT = 4;
var BOTTOM_CENTRE = 5;
var MIDDLE_RIGHT = 6;
var TOP_CENTRE = 7;

var files = new ActiveXObject("Scripting.FileSystemObject");

try {
  main();
} catch (error) {
  WScript.Echo("camera.js: " + (error.message || "error"));
  WScript.Quit(1);
}

function main() {
  if (WScript.Arguments.length != 1) {
    throw new Error("usage: cscript //nologo camera.js FOLDER");
  }
  var context = new ActiveXObject("ZYNVue.ZYN3dGLBitmapContext");
  context.LineAntialiasing = true;
  context.MultiSampleAntialiasing = true;
  context.CreateContext(900, 480);
  addScene(context);
  addCamera(context);
  context.Camera = sideView();
  var folder = WScript.Arguments(0);
  if (!files.FolderExists(folder)) {
    files.CreateFolder(folder);
  }
  var file = files.BuildPath(folder, "camera.png");
  context.CreatePNG("", file);
  // Nothing tells a script of a failure but the file itself.
  if (!files.FileExists(file)) {
    throw new Error(file + ": the picture could not be written");
  }
  WScript.Echo("done: 1 pictures");
}

// All of it, seen from the side and from above.
function sideView() {
  var camera = new ActiveXObject("ZYNVue.ZYNCamera");
  camera.setOeil(7, -7.5, 4);
  camera.setCible(1.5, 0, 0);
  camera.setHaut(0, 0, 1);
  camera.Largeur = 23.6;
  camera.Hauteur = 12.6;
  return camera;
}

// What the camera looks at: a pyramid around the target.
function addScene(context) {
  var base = [[1.2, 1.2, -1], [-1.2, 1.2, -1], [-1.2, -1.2, -1], [1.2, -1.2, -1]];
  for (var i = 0; i < 4; i++) {
    addTriangle(context, [base[i], base[(i + 1) % 4], [0, 0, 0.8]], [0.9, 0.65, 0.3]);
  }
}

function addCamera(context) {
  var planes = [rectangle(DISTANCE - NEAR), rectangle(0), rectangle(DISTANCE - FAR)];
  for (var corner = 0; corner < 4; corner++) {
    line(context, [planes[0][corner], planes[2][corner]], GREY, 1);
  }
  outline(context, planes[0], GREY, 1);
  outline(context, planes[2], GREY, 1);
  outline(context, planes[1], BLUE, 2.5);

  var eye = [DISTANCE, 0, 0];
  line(context, [eye, [0, 0, 0]], RED, 1.5);
  line(context, [eye, [DISTANCE, 0, 1.6]], GREEN, 2.5);
  text(context, "eye", eye, TOP_CENTRE, RED);
  text(context, "up", [DISTANCE, 0, 1.7], BOTTOM_CENTRE, GREEN);
  text(context, "D", [0.82 * DISTANCE, 0, 0.1], BOTTOM_CENTRE, RED);
  text(context, "target", [0, 0.7, 0.95], BOTTOM_CENTRE, RED);
  text(context, "width", [0, 0.1, -HEIGHT / 2 - 0.1], TOP_LEFT, BLUE);
  text(context, "height", [-0.2, -WIDTH / 2, 0], MIDDLE_RIGHT, BLUE);
  text(context, "zNear = 0.45 D", [DISTANCE - NEAR, WIDTH / 2, HEIGHT / 2 + 0.1], BOTTOM_LEFT, INK);
  text(context, "zFar = 1.55 D", [DISTANCE - FAR, WIDTH / 2, HEIGHT / 2 + 0.1], BOTTOM_CENTRE, INK);
}

// The corners of the view rectangle in a plane across the line of sight.
function rectangle(x) {
  return [[x, -WIDTH / 2, -HEIGHT / 2], [x, WIDTH / 2, -HEIGHT / 2],
          [x, WIDTH / 2, HEIGHT / 2], [x, -WIDTH / 2, HEIGHT / 2]];
}

// --- scene objects -------------------------------------------------------------------------------

function outline(context, corners, colour, width) {
  line(context, corners.concat([corners[0]]), colour, width);
}

function line(context, points, colour, width) {
  var x = [], y = [], z = [];
  for (var i = 0; i < points.length; i++) {
    x.push(points[i][0]);
    y.push(points[i][1]);
    z.push(points[i][2]);
  }
  var trace = new ActiveXObject("ZYNModeleGeom.Polyligne");
  trace.setPoints3D(x, y, z);
  trace.setColor(colour[0], colour[1], colour[2], 1);
  trace.Epaisseur = width;
  context.Add(trace, NORMAL);
}

function text(context, content, place, anchor, colour) {
  var label = new ActiveXObject("ZYNVue.ZYNGLTexte");
  label.Texte = content;
  label.setPosition(place[0], place[1], place[2], anchor);
  label.HauteurPixels = 22;
  label.setColor(colour[0], colour[1], colour[2], 1);
  context.Add(label, NORMAL);
}

function addTriangle(context, corners, colour) {
  var normal = unit(cross(difference(corners[1], corners[0]), difference(corners[2], corners[0])));
  var triangle = new ActiveXObject("ZYNVue.ZYNGLTriangle");
  for (var i = 0; i < 3; i++) {
    triangle.setPoint(i, corners[i][0], corners[i][1], corners[i][2]);
    triangle.setNormale(i, normal[0], normal[1], normal[2]);
  }
  triangle.setColor(colour[0], colour[1], colour[2], 1);
  context.Add(triangle, NORMAL);
}

// --- numbers -------------------------------------------------------------------------------------

function cross(a, b) {
  return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
}

function difference(a, b) {
  return [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
}

// The vector made one long; one without length stays as it is.
function unit(v) {
  var length = Math.sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]) || 1;
  return [v[0] / length, v[1] / length, v[2] / length];
}
