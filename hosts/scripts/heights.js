// Renders a model from a text STL file coloured by height, blue at the bottom to red at the top,
// once in each picture format.
//
//   cscript //nologo heights.js MODEL.stl FOLDER
//
// The last line printed is "done: N pictures"; without it, something failed.

var SHADED = 0; // drawing mode of Add; 1 would draw outlines
var WIDTH = 800;
var HEIGHT = 600;

var files = new ActiveXObject("Scripting.FileSystemObject");

try {
  main();
} catch (error) {
  WScript.Echo("heights.js: " + (error.message || "error " + hex(error.number)));
  WScript.Quit(1);
}

function main() {
  if (WScript.Arguments.length != 2) {
    throw new Error("usage: cscript //nologo heights.js MODEL.stl FOLDER");
  }
  var facets = readFacets(WScript.Arguments(0));
  var folder = WScript.Arguments(1);
  if (!files.FolderExists(folder)) {
    files.CreateFolder(folder);
  }
  var context = new ActiveXObject("ZYNVue.ZYN3dGLBitmapContext");
  prepare(context);
  var box = boxAround(facets);
  addTriangles(context, facets, box);
  context.ViewParams(box, 0.1, viewFrame([-0.6, 0.6, -0.5], [0, 0, 1]));

  var writers = {
    png: function (file) { context.CreatePNG("", file); },
    jpg: function (file) { context.CreateJPG("", file, 90); },
    gif: function (file) { context.CreateGIF("", file); },
    bmp: function (file) { context.CreateBitmap(file); }
  };
  var pictures = 0;
  for (var extension in writers) {
    write(files.BuildPath(folder, "heights." + extension), writers[extension]);
    pictures++;
  }
  WScript.Echo("done: " + pictures + " pictures");
}

// Makes the drawing surface, its background and its lights.
function prepare(context) {
  context.BackColor = numbers([1, 1, 1]);
  context.MultiSampleAntialiasing = true;
  context.CreateContext(WIDTH, HEIGHT);
  context.GradientBackground = true;
  context.setGradientColor(0.8, 0.82, 0.85);
  // Ambient light: on, colour, intensity. Directional light: on, colour, ambient, diffuse and
  // specular factors, azimuth and elevation as the viewer sees them.
  context.AmbientLightProperty = numbers([1, 1, 1, 1, 0.6]);
  context.DirectionLight1Property =
      numbers([1, 1, 1, 1, 0, 0.8, 0.1, radians(-30), radians(30)]);
}

// Reads the facets: arrays of three vertices, each an array of three numbers.
function readFacets(file) {
  if (!files.FileExists(file)) {
    throw new Error(file + ": no such file");
  }
  var stream = files.OpenTextFile(file);
  var text = stream.AtEndOfStream ? "" : stream.ReadAll();
  stream.Close();

  var lines = text.match(/\bvertex\s+\S+\s+\S+\s+\S+/gi) || [];
  var ends = text.match(/\bendfacet\b/gi) || [];
  if (lines.length == 0 || lines.length != 3 * ends.length || !/\bendsolid\b/i.test(text)) {
    throw new Error(file + ": not a whole text STL file");
  }
  var facets = [];
  for (var i = 0; i < lines.length; i++) {
    var words = lines[i].split(/\s+/);
    var vertex = [parseFloat(words[1]), parseFloat(words[2]), parseFloat(words[3])];
    if (!isFinite(vertex[0] + vertex[1] + vertex[2])) {
      throw new Error(file + ": not a vertex: " + lines[i]);
    }
    if (i % 3 == 0) {
      facets.push([]);
    }
    facets[facets.length - 1].push(vertex);
  }
  WScript.Echo(file + ": " + facets.length + " triangles");
  return facets;
}

function boxAround(facets) {
  var least = facets[0][0].slice(0);
  var most = facets[0][0].slice(0);
  for (var i = 0; i < 3 * facets.length; i++) {
    var vertex = facets[Math.floor(i / 3)][i % 3];
    for (var axis = 0; axis < 3; axis++) {
      least[axis] = Math.min(least[axis], vertex[axis]);
      most[axis] = Math.max(most[axis], vertex[axis]);
    }
  }
  var box = new ActiveXObject("ZYNModeleGeom.Box3D");
  box.XMin = least[0];
  box.XMax = most[0];
  box.YMin = least[1];
  box.YMax = most[1];
  box.ZMin = least[2];
  box.ZMax = most[2];
  return box;
}

function addTriangles(context, facets, box) {
  for (var i = 0; i < facets.length; i++) {
    var corners = facets[i];
    var normal = unit(cross(difference(corners[1], corners[0]), difference(corners[2], corners[0])));
    var triangle = new ActiveXObject("ZYNVue.ZYNGLTriangle");
    for (var k = 0; k < 3; k++) {
      triangle.setPoint(k, corners[k][0], corners[k][1], corners[k][2]);
      triangle.setNormale(k, normal[0], normal[1], normal[2]);
    }
    var height = ((corners[0][2] + corners[1][2] + corners[2][2]) / 3 - box.ZMin) / (box.DZ || 1);
    triangle.setColor(ramp(height - 0.75), ramp(height - 0.5), ramp(height - 0.25), 1);
    context.Add(triangle, SHADED);
  }
}

// One of the three overlapping bumps of a rainbow.
function ramp(x) {
  return Math.max(0, Math.min(1, 1.5 - 4 * Math.abs(x)));
}

// Writes one picture.
function write(file, writer) {
  if (files.FileExists(file)) {
    files.DeleteFile(file);
  }
  writer(file);
  // Nothing tells a script of a failure but the file itself.
  if (!files.FileExists(file)) {
    throw new Error(file + ": the picture could not be written");
  }
  WScript.Echo(file + ": " + files.GetFile(file).Size + " bytes");
}

// The 16 numbers of a view: left, up, direction from the eye to the model, then what the context
// works out itself.
function viewFrame(direction, upwards) {
  var d = unit(direction);
  var left = unit(cross(upwards, d));
  return numbers(left.concat(cross(d, left), d, [0, 0, 0, 0, 0, 0, 0]));
}

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

// Backgrounds, lights and frames of views take no arrays of JScript; the items of a dictionary are
// an array that they do take.
function numbers(values) {
  var dictionary = new ActiveXObject("Scripting.Dictionary");
  for (var i = 0; i < values.length; i++) {
    dictionary.Add(i, values[i]);
  }
  return dictionary.Items();
}

function radians(degrees) {
  return degrees * Math.PI / 180;
}

function hex(number) {
  return (number < 0 ? number + 0x100000000 : number).toString(16);
}
