// Groups in JScript, whose arrays are objects: matrices, frames, holes and strings in them. What a
// matrix does shows in a picture of one pixel, which the triangle of the group covers or not.
function fail(message) {
  WScript.Echo(message);
  WScript.Quit();
}

function expect(value, wanted, what) {
  if (value !== wanted) fail(what + " is " + value + " instead of " + wanted);
}

function refused(action, wanted) {
  try {
    action();
  } catch (error) {
    expect(error.description, wanted, "the error");
    return;
  }
  fail("not refused: " + wanted);
}

var triangle = new ActiveXObject("ZYNVue.ZYNGLTriangle");
triangle.setPoint(0, 100, -50, 0);
triangle.setPoint(1, 108, -50, 0);
triangle.setPoint(2, 100, -42, 0);
triangle.setColor(65 / 255, 66 / 255, 67 / 255, 1);

var group = new ActiveXObject("ZYNVue.ZYNGroupe");
group.Add(triangle, 0);
expect(group.Count, 1, "Count");
expect(group.Item(0) === null, false, "Item(0) without an object");

var rectangle = new ActiveXObject("ZYNModeleGeom.Rectangle");
rectangle.setBornes(0, 1, 0, 1);
var context = new ActiveXObject("ZYNVue.ZYN2DGLBitmapContext");
context.ViewRect(rectangle, 0);
context.Add(group, 0);
context.CreateContexte(1, 1);
var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.GetSpecialFolder(2) + "\\" + files.GetTempName();
files.CreateFolder(folder);

function isCovered() {
  context.CreateBitmap(folder + "\\pixel.bmp");
  var stream = files.OpenTextFile(folder + "\\pixel.bmp");
  var letters = stream.Read(57).substr(54);
  stream.Close();
  return letters === "CBA";
}

expect(isCovered(), false, "the pixel at first");
group.Transformation = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -102, 49.5, 0, 1];
expect(isCovered(), true, "the pixel under the moved triangle");
group.Transformation = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -102, 61.5, 0, 1];
expect(isCovered(), false, "the pixel beside the triangle");
group.setRepere([-48, -102, 0], [0, 7, 0], [-3, 1, 0]);
expect(isCovered(), true, "the pixel under the turned triangle");

refused(function () { group.Transformation = [1, 2, 3]; },
        "Transformation: 16 numbers are wanted, these are 3");
refused(function () { group.Transformation = { length: 16 }; },
        "Transformation: element 0 is no number");
refused(function () { group.Transformation = {}; },
        "Transformation: an array of numbers is wanted, this is another object");
refused(function () { group.setRepere([0, 0, 0], [1, "2", 0], [0, 1, 0]); },
        "X: element 1 is no number");
refused(function () { group.setRepere([0, 0, 0], [1, 0, 0], [2, 0, 0]); },
        "Y: it is parallel to X");
refused(function () { group.Add(group, 0); }, "Objet: the group would hold itself");
expect(isCovered(), true, "the pixel after refusals");

var walked = 0;
for (var items = new Enumerator(group); !items.atEnd(); items.moveNext()) {
  walked++;
}
expect(walked, group.Count, "what an Enumerator walks");

files.DeleteFolder(folder);
WScript.Echo("script ok");
