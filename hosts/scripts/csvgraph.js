// Plots a table: the first column of a CSV file to the right, every other one as a curve, with axes,
// graduations and the names of the columns.
//
//   cscript //nologo csvgraph.js TABLE.csv PICTURE.png
//
// The last line printed is "done: 1 picture"; without it, something failed.

var WIDTH = 1200;
var HEIGHT = 800;
var AREA = { left: 110, right: 1000, bottom: 80, top: 760 }; // pixels, y upwards
var COLOURS = [[0.12, 0.35, 0.7], [0.85, 0.3, 0.1], [0.2, 0.55, 0.25], [0.55, 0.25, 0.6],
               [0.8, 0.6, 0.1], [0.1, 0.6, 0.65], [0.9, 0.35, 0.6], [0.45, 0.3, 0.15],
               [0.5, 0.65, 0.1], [0.4, 0.6, 0.95], [0.45, 0.45, 0.5], [0.6, 0.05, 0.1]];
var BLACK = [0.1, 0.1, 0.1];
var GREY = [0.85, 0.85, 0.85];
var LEFT_MIDDLE = 8; // points of a text that setPosition places
var RIGHT_MIDDLE = 6;
var TOP_CENTRE = 7;

var files = new ActiveXObject("Scripting.FileSystemObject");
var context = new ActiveXObject("ZYNVue.ZYN2DGLBitmapContext");

if (WScript.Arguments.length != 2) {
  WScript.Echo("usage: cscript //nologo csvgraph.js TABLE.csv PICTURE.png");
  WScript.Quit(2);
}
plot(readTable(WScript.Arguments(0)), files.GetAbsolutePathName(WScript.Arguments(1)));

// The names of the columns and, for each of them, its numbers.
function readTable(file) {
  var stream = files.OpenTextFile(file);
  var table = { names: null, columns: [] };
  while (!stream.AtEndOfStream) {
    var line = stream.ReadLine();
    if (line == "" || line.charAt(0) == "#") {
      continue;
    }
    var cells = line.replace(/"/g, "").split(",");
    for (var i = 0; i < cells.length; i++) {
      if (table.names == null || i >= table.columns.length) {
        table.columns[i] = [];
      } else {
        table.columns[i].push(parseFloat(cells[i])); // an empty cell is no number: a gap in the curve
      }
    }
    table.names = table.names || cells;
  }
  stream.Close();
  return table;
}

function plot(table, file) {
  var curves = table.columns.slice(1);
  var xs = graduations([table.columns[0]]);
  var ys = graduations(curves);
  context.BackColor = numbers([1, 1, 1]);
  context.CreateContexte(WIDTH, HEIGHT);
  var page = new ActiveXObject("ZYNModeleGeom.Rectangle");
  page.setBornes(0, WIDTH, 0, HEIGHT); // one unit of the model is a pixel
  context.ViewRect(page, 0);

  function across(x) {
    return AREA.left + (x - xs.least) / (xs.most - xs.least) * (AREA.right - AREA.left);
  }
  function upwards(y) {
    return AREA.bottom + (y - ys.least) / (ys.most - ys.least) * (AREA.top - AREA.bottom);
  }
  for (var i = 0; i < xs.at.length; i++) {
    addLine([across(xs.at[i]), across(xs.at[i])], [AREA.bottom, AREA.top], GREY, 1);
    addText(String(xs.at[i]), across(xs.at[i]), AREA.bottom - 8, TOP_CENTRE, BLACK);
  }
  for (i = 0; i < ys.at.length; i++) {
    addLine([AREA.left, AREA.right], [upwards(ys.at[i]), upwards(ys.at[i])], GREY, 1);
    addText(String(ys.at[i]), AREA.left - 10, upwards(ys.at[i]), RIGHT_MIDDLE, BLACK);
  }
  addLine([AREA.left, AREA.left, AREA.right], [AREA.top, AREA.bottom, AREA.bottom], BLACK, 2);
  addText(table.names[0], (AREA.left + AREA.right) / 2, AREA.bottom - 42, TOP_CENTRE, BLACK);
  for (i = 0; i < curves.length; i++) {
    var colour = COLOURS[i % COLOURS.length];
    addLine(map(table.columns[0], across), map(curves[i], upwards), colour, 2);
    addText(table.names[i + 1], AREA.right + 20, AREA.top - 28 * i, LEFT_MIDDLE, colour);
  }

  if (files.FileExists(file)) {
    files.DeleteFile(file);
  }
  context.CreatePNG(file + ".tmp", file);
  // Nothing tells a script of a failure but the file itself.
  if (!files.FileExists(file)) {
    WScript.Echo(file + ": the picture could not be written");
    WScript.Quit(1);
  }
  WScript.Echo(file + ": " + curves.length + " curves of " + table.columns[0].length + " points");
  WScript.Echo("done: 1 picture");
}

function addLine(x, y, colour, width) {
  var line = new ActiveXObject("ZYNModeleGeom.Polyligne");
  line.setPoints(numbers(x), numbers(y));
  line.setColor(colour[0], colour[1], colour[2], 1);
  line.Epaisseur = width;
  context.Add(line, 0);
}

function addText(words, x, y, anchor, colour) {
  var text = new ActiveXObject("ZYNVue.ZYNGLTexte");
  text.Texte = words;
  text.HauteurPixels = 22;
  text.setColor(colour[0], colour[1], colour[2], 1);
  text.setPosition(x, y, 0, anchor);
  context.Add(text, 0);
}

// Round numbers, about eight of them, around all numbers of some columns.
function graduations(columns) {
  var least = Infinity;
  var most = -Infinity;
  for (var i = 0; i < columns.length; i++) {
    for (var j = 0; j < columns[i].length; j++) {
      if (isFinite(columns[i][j])) {
        least = Math.min(least, columns[i][j]);
        most = Math.max(most, columns[i][j]);
      }
    }
  }
  var step = Math.pow(10, Math.floor(Math.log((most - least || 1) / 8) / Math.LN10));
  while ((most - least) / step > 10) {
    step *= (most - least) / step > 20 ? 5 : 2;
  }
  var at = [];
  for (i = Math.floor(least / step); i <= Math.ceil(most / step); i++) {
    at.push(parseFloat((i * step).toPrecision(12)));
  }
  return { at: at, least: at[0], most: at[at.length - 1] };
}

function map(values, place) {
  var result = [];
  for (var i = 0; i < values.length; i++) {
    result.push(place(values[i]));
  }
  return result;
}

// COM takes no JScript arrays; the items of a dictionary are an array that it does take.
function numbers(values) {
  var dictionary = new ActiveXObject("Scripting.Dictionary");
  for (var i = 0; i < values.length; i++) {
    dictionary.Add(i, values[i]);
  }
  return dictionary.Items();
}
