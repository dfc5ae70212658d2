// Every member that hands something back, from JScript; "script ok" at the end only if all held.
var failures = 0;

function expect(what, actual, wanted) {
  if (actual === wanted) return;
  ++failures;
  WScript.Echo(what + ": " + actual + " instead of " + wanted);
}

function expectArray(what, actual, wanted) {
  var values = new VBArray(actual).toArray();
  expect(what + " length", values.length, wanted.length);
  for (var i = 0; i < wanted.length; ++i) {
    if (Math.abs(values[i] - wanted[i]) < 1e-6) continue;
    ++failures;
    WScript.Echo(what + "[" + i + "]: " + values[i] + " instead of " + wanted[i]);
  }
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

context.BackColor = safeArray([0.25, 0.5, 1]);
expectArray("BackColor", context.BackColor, [0.25, 0.5, 1, 0]);
context.BackColor = context.AmbientLightProperty;
expectArray("BackColor after five values", context.BackColor, [0.25, 0.5, 1, 0]);
context.BackColor = [1, 1, 1];
expectArray("BackColor after an object", context.BackColor, [0.25, 0.5, 1, 0]);

expectArray("AmbientLightProperty", context.AmbientLightProperty, [1, 1, 1, 1, 0.7]);
context.AmbientLightProperty = safeArray([1, 1, 0, 0, 1]);
expectArray("AmbientLightProperty", context.AmbientLightProperty, [1, 1, 0, 0, 1]);
context.DirectionLight2Property = context.DirectionLight1Property;
expectArray("DirectionLight2Property", context.DirectionLight2Property,
            [1, 1, 1, 1, 0.2, 0.45, 0.69, 0, 0]);

var box = new ActiveXObject("ZYNModeleGeom.Box3D");
box.XMax = 2;
expect("DX", box.DX, 2);
context.ViewParams(box, 0.1, safeArray([-1, 0, 0, 0, 1, 0, 0, 0, -1, 0, 0, 0, 1, 0, 0, 0]));
context.ViewParams(null, 0, null);

context.Add(triangle, 0);
var picture = context.GetPictureDisp();
expect("type of the picture", picture.Type, 1);
picture = null;
CollectGarbage();
expect("CreateContext again", context.CreateContext(10, 10), 1);

// --- files ---------------------------------------------------------------------------------------

var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.GetSpecialFolder(2) + "\\" + files.GetTempName();
files.CreateFolder(folder);
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
