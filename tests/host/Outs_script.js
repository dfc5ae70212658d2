// Every member that hands something back, from JScript; "script ok" at the end only if all held.
var failures = 0;

function expect(what, actual, wanted) {
  if (actual === wanted) return;
  ++failures;
  WScript.Echo(what + ": " + actual + " instead of " + wanted);
}

// An array of VARIANTs, as other hosts pass one: a JScript array is an object of its own.
function safeArray(values) {
  var dictionary = new ActiveXObject("Scripting.Dictionary");
  for (var i = 0; i < values.length; ++i) dictionary.add(i, values[i]);
  return dictionary.Items();
}

// --- triangle ------------------------------------------------------------------------------------

var triangle = new ActiveXObject("ZYNVue.ZYNGLTriangle");
triangle.setPoint(1, 1.5, -2, 1e6);
triangle.setNormale(2, 0, 0.5, 1);

// JScript hands over values, never variables: such a call succeeds and its results are dropped.
var x = 7, y = 8, z = 9;
triangle.getPoint(1, x, y, z);
triangle.getNormale(2, x, y, z);
expect("x", x, 7);

triangle.Priority = 25;
expect("Priority", triangle.Priority, 19);
triangle.Priority = -5;
expect("Priority", triangle.Priority, 19);
triangle.setColor(1, 0, 0, 1);
triangle.setMaterial(1, 0, 0, 1, 0.8, 0.7, 0.8, 0.5, 0);

var raised = null;
try {
  triangle.setPoint(3, 0, 0, 0);
} catch (error) {
  raised = error;
}
expect("error of a wrong index", raised !== null && raised.number, 0x80004005 - 0x100000000);

// --- bitmap context ------------------------------------------------------------------------------

var context = new ActiveXObject("ZYNVue.ZYN3dGLBitmapContext");
expect("CreateContext", context.CreateContext(40, 30), 1);

var switches = ["LineAntialiasing", "PointAntialiasing", "MultiSampleAntialiasing",
                "GradientBackground"];
for (var i = 0; i < switches.length; ++i) {
  expect(switches[i], context[switches[i]], false);
  context[switches[i]] = true;
  expect(switches[i], context[switches[i]], true);
}
context.setGradientColor(255, 128, 0);
context.DPIResolution = 300;
expect("DPIResolution", context.DPIResolution, 300);

// --- arrays --------------------------------------------------------------------------------------

// What an array property holds shows in the picture: three letters are the blue, green and red of
// its only pixel.
var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.GetSpecialFolder(2) + "\\" + files.GetTempName();
files.CreateFolder(folder);

function pixel(context) {
  context.CreateContext(1, 1);
  context.CreateBitmap(folder + "\\pixel.bmp");
  var stream = files.OpenTextFile(folder + "\\pixel.bmp");
  var letters = stream.Read(57).substr(54);
  stream.Close();
  return letters;
}

function part(letter) {
  return letter.charCodeAt(0) / 255;
}

var plain = new ActiveXObject("ZYNVue.ZYN3dGLBitmapContext");
plain.BackColor = safeArray([part("R"), part("G"), part("B")]);
expect("BackColor", pixel(plain), "BGR");
plain.BackColor = plain.AmbientLightProperty;
expect("BackColor after five values", pixel(plain), "BGR");
plain.BackColor = [1, 1, 1];
expect("BackColor after an object", pixel(plain), "BGR");
var other = new ActiveXObject("ZYNVue.ZYN3dGLBitmapContext");
other.BackColor = plain.BackColor;
expect("BackColor of another context", pixel(other), "BGR");

// Traces take the script's own arrays.
var trace = new ActiveXObject("ZYNModeleGeom.Polyligne");
trace.setPoints([0, 1.5, NaN, 3], [0, 1, 2, 3]);
expect("Count of a trace", trace.Count, 4);
trace.setPoints3D([0, 1], [0, 1], safeArray([0, 1]));
expect("Count of a trace in space", trace.Count, 2);
function refused(x, y) {
  try {
    trace.setPoints(x, y);
    return false;
  } catch (error) {
    return error.number === 0x80070057 - 0x100000000;
  }
}
expect("arrays of different length", refused([0, 1], [0]), true);
expect("an element that is no number", refused([0, "1"], [0, 1]), true);
expect("an object that is no array", refused(trace, [0]), true);
expect("Count after refusals", trace.Count, 2);
trace.setPoints([], []);
expect("Count of nothing", trace.Count, 0);

// A white triangle over the whole picture that answers ambient light only, as it is.
var box = new ActiveXObject("ZYNModeleGeom.Box3D");
box.XMax = 1;
box.YMax = 1;
box.ZMax = 1;
expect("DX", box.DX, 1);
triangle.setPoint(0, -9, -9, 0.5);
triangle.setPoint(1, 9, -9, 0.5);
triangle.setPoint(2, 0, 9, 0.5);
triangle.setMaterial(1, 1, 1, 1, 1, 0, 0, 0, 0);
plain.Add(triangle, 0);
plain.ViewParams(box, 0, null);
plain.DirectionLight1Property = safeArray([0, 1, 1, 1, 1, 0, 0, 0, 0]);
plain.AmbientLightProperty = safeArray([1, part("A"), part("B"), part("C"), 1]);
expect("AmbientLightProperty", pixel(plain), "CBA");
plain.AmbientLightProperty = safeArray([0, 1, 1, 1, 1]);
plain.DirectionLight1Property =
    safeArray([1, part("D"), part("E"), part("F"), 1, 0, 0, 0, 0]);
plain.DirectionLight2Property = plain.DirectionLight1Property;
plain.DirectionLight1Property = safeArray([0, 1, 1, 1, 1, 0, 0, 0, 0]);
expect("DirectionLight2Property", pixel(plain), "FED");

// From behind, the triangle shows its back, which is not drawn.
plain.ViewParams(box, 0, safeArray([1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0]));
expect("view from behind", pixel(plain), "BGR");
plain.ViewParams(null, 0, null);
expect("view without a frame", pixel(plain), "FED");

// --- picture object ------------------------------------------------------------------------------

context.Add(triangle, 0);
var picture = context.GetPictureDisp();
expect("type of the picture", picture.Type, 1);
picture = null;
CollectGarbage();
expect("CreateContext again", context.CreateContext(10, 10), 1);

// --- files ---------------------------------------------------------------------------------------

context.CreateBitmap(folder + "\\a.bmp");
context.CreatePNG("", folder + "\\a.png");
context.CreateGIF("", folder + "\\a.gif");
context.CreateJPG("", folder + "\\a.jpg", 90);
var names = ["a.bmp", "a.png", "a.gif", "a.jpg"];
for (var n = 0; n < names.length; ++n) {
  expect(names[n], files.FileExists(folder + "\\" + names[n]), true);
}
files.DeleteFolder(folder, true);
context.RemoveAll();

if (failures === 0) WScript.Echo("script ok");
