// Plots a table of monthly temperatures, one row a year: the course of every year, and how far each
// month was from its mean. Years are told apart from their warm and cold events by colour.
//
//   cscript //nologo graphs.js TABLE.csv FOLDER
//
// The last line printed is "done: N pictures"; without it, something failed.

// The plane of the graphs: one unit is one pixel of a picture in screen resolution.
var WIDTH = 1600;
var HEIGHT = 1000;
var PLOT = { left: 110, right: 1530, bottom: 110, top: 830 };

var INK = [0.13, 0.17, 0.23];
var GREY = [0.45, 0.5, 0.56];
var FAINT = [0.86, 0.88, 0.91];
var YEARS = [0.5, 0.62, 0.76];
var WARM = [0.84, 0.19, 0.15];
var ORANGE = [0.95, 0.55, 0.1];
var COLD = [0.17, 0.44, 0.72];
var MONTHS = ["Jan", "Feb", "Mar", "Apr", "May", "Jun",
              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"];

// Points of a text that setPosition can put somewhere.
var BOTTOM_LEFT = 1;
var BOTTOM_CENTRE = 5;
var MIDDLE_RIGHT = 6;
var TOP_CENTRE = 7;
var MIDDLE_LEFT = 8;

var NORMAL = 0; // drawing mode of Add

var files = new ActiveXObject("Scripting.FileSystemObject");

try {
  main();
} catch (error) {
  WScript.Echo("graphs.js: " + (error.message || "error " + hex(error.number)));
  WScript.Quit(1);
}

function main() {
  if (WScript.Arguments.length != 2) {
    throw new Error("usage: cscript //nologo graphs.js TABLE.csv FOLDER");
  }
  var years = readYears(WScript.Arguments(0));
  var folder = WScript.Arguments(1);
  if (!files.FolderExists(folder)) {
    files.CreateFolder(folder);
  }
  var graphs = { seasons: seasons(years), anomalies: anomalies(years) };
  var pictures = 0;
  for (var name in graphs) {
    write(graphs[name], 1, files.BuildPath(folder, name + ".png"));
    write(graphs[name], 2, files.BuildPath(folder, name + "-print.png"));
    pictures += 2;
  }
  WScript.Echo("done: " + pictures + " pictures");
}

// The rows of the table: year and twelve values.
function readYears(file) {
  if (!files.FileExists(file)) {
    throw new Error(file + ": no such file");
  }
  var stream = files.OpenTextFile(file);
  var years = [];
  for (var number = 1; !stream.AtEndOfStream; number++) {
    var line = stream.ReadLine();
    if (!/^\d/.test(line)) {
      continue; // comments and the names of the columns
    }
    var cells = line.split(",");
    var year = { year: parseFloat(cells[0]), values: [] };
    for (var i = 1; i < cells.length; i++) {
      year.values.push(parseFloat(cells[i]));
    }
    if (year.values.length != 12 || !isFinite(sum(year.values))) {
      throw new Error(file + ", line " + number + ": not a year and twelve values");
    }
    years.push(year);
  }
  stream.Close();
  if (years.length == 0) {
    throw new Error(file + ": there are no years in it");
  }
  WScript.Echo(file + ": " + years[0].year + " to " + years[years.length - 1].year);
  return years;
}

// --- the two graphs: lists of scene objects ------------------------------------------------------

// Every year from January to December, the mean of all, and two pairs of years that stand out.
function seasons(years) {
  var scene = [];
  var x = scale(0, 11, PLOT.left + 40, PLOT.right - 90);
  var y = scale(18, 30, PLOT.bottom, PLOT.top);
  title(scene, "The sea off Peru and Ecuador, month by month",
        "Surface temperature in \u00b0C, every year from " + years[0].year + " to " +
        years[years.length - 1].year + " \u2013 NOAA, ERSST.V3B, Ni\u00f1o 1+2");
  for (var t = 18; t <= 30; t += 2) {
    line(scene, [PLOT.left, PLOT.right], [y(t), y(t)], FAINT, 1, 1.5);
    text(scene, String(t), PLOT.left - 16, y(t), MIDDLE_RIGHT, 24, GREY);
  }
  for (var month = 0; month < 12; month++) {
    text(scene, MONTHS[month], x(month), PLOT.bottom - 22, TOP_CENTRE, 24, GREY);
  }
  for (var i = 0; i < years.length; i++) {
    course(scene, years[i].values, x, y, YEARS, 0.4, 1.4);
  }
  course(scene, means(years), x, y, INK, 1, 4.4);
  marked(scene, years, 1982, ORANGE, x, y, 11);
  marked(scene, years, 1983, ORANGE, x, y, 4);
  marked(scene, years, 1997, WARM, x, y, 11);
  marked(scene, years, 1998, WARM, x, y, 2);
  text(scene, "mean", x(11) + 14, y(means(years)[11]), MIDDLE_LEFT, 24, INK);
  return scene;
}

// Each month's distance from the mean of that month in all years, as bars.
function anomalies(years) {
  var scene = [];
  var first = years[0].year;
  var last = years[years.length - 1].year + 1;
  var x = scale(first, last, PLOT.left, PLOT.right);
  var y = scale(-3, 5, PLOT.bottom, PLOT.top);
  title(scene, "El Ni\u00f1o and La Ni\u00f1a",
        "Difference of each month's sea surface temperature from that month's mean, in \u00b0C " +
        "\u2013 NOAA, ERSST.V3B, Ni\u00f1o 1+2");
  for (var t = -3; t <= 5; t++) {
    line(scene, [PLOT.left, PLOT.right], [y(t), y(t)], FAINT, 1, 1.5);
    text(scene, (t > 0 ? "+" : t < 0 ? "\u2013" : "") + Math.abs(t), PLOT.left - 16, y(t),
         MIDDLE_RIGHT, 24, GREY);
  }
  for (var decade = Math.ceil(first / 10) * 10; decade <= last; decade += 10) {
    line(scene, [x(decade), x(decade)], [PLOT.bottom, PLOT.bottom - 12], GREY, 1, 1.5);
    text(scene, String(decade), x(decade), PLOT.bottom - 22, TOP_CENTRE, 24, GREY);
  }
  var mean = means(years);
  var warm = { x: [], y: [] };
  var cold = { x: [], y: [] };
  for (var i = 0; i < years.length; i++) {
    for (var month = 0; month < 12; month++) {
      var difference = years[i].values[month] - mean[month];
      bar(difference > 0 ? warm : cold, x(years[i].year + (month + 0.5) / 12), y(0),
          y(difference));
    }
  }
  var width = (x(1) - x(0)) / 12;
  line(scene, warm.x, warm.y, WARM, 1, width);
  line(scene, cold.x, cold.y, COLD, 1, width);
  line(scene, [PLOT.left, PLOT.right], [y(0), y(0)], INK, 1, 2.5);
  event(scene, warm, x(1972), x(1974), "1972\u201373");
  event(scene, warm, x(1982), x(1984), "1982\u201383");
  event(scene, warm, x(1997), x(1999), "1997\u201398");
  return scene;
}

function title(scene, headline, below) {
  text(scene, headline, PLOT.left, 920, BOTTOM_LEFT, 46, INK);
  text(scene, below, PLOT.left, 872, BOTTOM_LEFT, 25, GREY);
}

// A year's twelve values as a curve.
function course(scene, values, x, y, colour, alpha, width) {
  var points = { x: [], y: [] };
  for (var month = 0; month < 12; month++) {
    points.x.push(x(month));
    points.y.push(y(values[month]));
  }
  line(scene, points.x, points.y, colour, alpha, width);
}

// A year that stands out, with its number above one of its months.
function marked(scene, years, number, colour, x, y, month) {
  for (var i = 0; i < years.length; i++) {
    if (years[i].year == number) {
      var values = years[i].values;
      course(scene, values, x, y, colour, 1, 3.4);
      text(scene, String(number), x(month), y(values[month]) + 10, BOTTOM_CENTRE, 26, colour);
    }
  }
}

// Writes a name above the highest bar between two places.
function event(scene, bars, from, to, name) {
  var top = null;
  for (var i = 1; i < bars.x.length; i += 3) {
    if (bars.x[i] >= from && bars.x[i] < to && (top == null || bars.y[i] > bars.y[top])) {
      top = i;
    }
  }
  if (top != null) {
    text(scene, name, bars.x[top], bars.y[top] + 10, BOTTOM_CENTRE, 26, WARM);
  }
}

// Appends an upright stroke to a line, with a gap behind it.
function bar(points, x, from, to) {
  points.x.push(x, x, x);
  points.y.push(from, to, NaN);
}

// --- scene objects -------------------------------------------------------------------------------

function line(scene, xs, ys, colour, alpha, width) {
  var trace = new ActiveXObject("ZYNModeleGeom.Polyligne");
  trace.setPoints(xs, ys);
  trace.setColor(colour[0], colour[1], colour[2], alpha);
  trace.Epaisseur = width;
  scene.push(trace);
}

function text(scene, content, x, y, anchor, height, colour) {
  var label = new ActiveXObject("ZYNVue.ZYNGLTexte");
  label.Texte = content;
  label.setPosition(x, y, 0, anchor);
  label.HauteurPixels = height;
  label.setColor(colour[0], colour[1], colour[2], 1);
  scene.push(label);
}

// --- pictures ------------------------------------------------------------------------------------

// Writes a graph with `fineness` pixels for each pixel of a screen.
function write(scene, fineness, file) {
  var context = new ActiveXObject("ZYNVue.ZYN2DGLBitmapContext");
  context.DPIResolution = context.DPIResolution * fineness;
  context.CreateContexte(WIDTH * fineness, HEIGHT * fineness);
  var all = new ActiveXObject("ZYNModeleGeom.Rectangle");
  all.setBornes(0, WIDTH, 0, HEIGHT);
  context.ViewRect(all, 0);
  for (var i = 0; i < scene.length; i++) {
    context.Add(scene[i], NORMAL);
  }
  if (files.FileExists(file)) {
    files.DeleteFile(file);
  }
  context.CreatePNG(file + ".bmp", file);
  // Nothing tells a script of a failure but the file itself.
  if (!files.FileExists(file)) {
    throw new Error(file + ": the picture could not be written");
  }
  WScript.Echo(file + ": " + files.GetFile(file).Size + " bytes");
}

// --- numbers -------------------------------------------------------------------------------------

// The function that takes `from`..`to` to `start`..`end`.
function scale(from, to, start, end) {
  return function (value) {
    return start + (value - from) / (to - from) * (end - start);
  };
}

// The mean of each month over all years.
function means(years) {
  var result = [];
  for (var month = 0; month < 12; month++) {
    var total = 0;
    for (var i = 0; i < years.length; i++) {
      total += years[i].values[month];
    }
    result.push(total / years.length);
  }
  return result;
}

function sum(values) {
  var total = 0;
  for (var i = 0; i < values.length; i++) {
    total += values[i];
  }
  return total;
}

function hex(number) {
  return (number < 0 ? number + 0x100000000 : number).toString(16);
}
