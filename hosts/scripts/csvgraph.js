// Plots a table: the first column of a CSV file to the right, every other one as a series with a name in the legend.
// Cells stand between semicolons, tabs or commas; numbers have points or, but between commas, decimal commas; the
// first column may hold dates (2024-01-31). Texts are UTF-8. Empty cells are gaps, lines that begin with # comments.
//
//   cscript //nologo csvgraph.js TABLE.csv PICTURE.png    (or .svg, .pdf)
//
// The last line printed is "done: 1 picture"; without it, something failed.

var BOTTOM = 0, LEFT = 1; // sides of axes
var DATE = 2; // TypeEchelle
var DATES = /^(\d{4})-(\d\d)-(\d\d)$/;

var files = new ActiveXObject("Scripting.FileSystemObject");

try {
  main();
} catch (error) {
  WScript.Echo("csvgraph.js: " + (error.message || "error " + (error.number >>> 0).toString(16)));
  WScript.Quit(1);
}

function main() {
  if (WScript.Arguments.length != 2) {
    throw new Error("usage: cscript //nologo csvgraph.js TABLE.csv PICTURE.png");
  }
  var table = readTable(WScript.Arguments(0));
  var file = files.GetAbsolutePathName(WScript.Arguments(1));
  plot(table, file);
  WScript.Echo(file + ": " + (table.names.length - 1) + " series of " + table.columns[0].length + " points");
  WScript.Echo("done: 1 picture");
}

// The names of the columns and, for each of them, its numbers; a date is days since 1899-12-30.
function readTable(file) {
  if (!files.FileExists(file)) {
    throw new Error(file + ": no such file");
  }
  var stream = files.OpenTextFile(file);
  var lines = stream.AtEndOfStream ? [] : fromUtf8(stream.ReadAll()).split(/\r\n|\n|\r/);
  stream.Close();
  var table = { names: null, columns: [], hasDates: false };
  var separator;
  for (var i = 0; i < lines.length; i++) {
    if (lines[i] == "" || lines[i].charAt(0) == "#") {
      continue;
    }
    separator = separator || separatorOf(lines[i]);
    var cells = lines[i].replace(/"/g, "").split(separator);
    var place = file + ", line " + (i + 1);
    if (!table.names) {
      takeNames(table, cells, place);
    } else {
      takeRow(table, cells, separator, place);
    }
  }
  if (!table.names || table.columns[0].length == 0) {
    throw new Error(file + ": no rows of numbers below a row of names");
  }
  return table;
}

function separatorOf(line) {
  return line.indexOf(";") >= 0 ? ";" : line.indexOf("\t") >= 0 ? "\t" : ",";
}

function takeNames(table, cells, place) {
  if (cells.length < 2) {
    throw new Error(place + ": one column only; cells stand between semicolons, tabs or commas");
  }
  table.names = cells;
  for (var i = 0; i < cells.length; i++) {
    table.columns.push([]);
  }
}

function takeRow(table, cells, separator, place) {
  if (cells.length > table.names.length) {
    throw new Error(place + ": " + cells.length + " cells, there are " + table.names.length + " names");
  }
  for (var i = 0; i < table.names.length; i++) {
    var date = i == 0 ? DATES.exec(cells[0]) : null;
    table.hasDates = table.hasDates || date != null;
    table.columns[i].push(date ? Date.UTC(date[1], date[2] - 1, date[3]) / 86400000 + 25569
                               : numberIn(cells[i] || "", separator, place + ", column " + (i + 1)));
  }
}

function numberIn(cell, separator, place) {
  var text = cell.replace(/^\s+|\s+$/g, "");
  if (text == "") {
    return NaN; // a gap
  }
  var number = Number(separator == "," ? text : text.replace(",", "."));
  if (isNaN(number)) {
    throw new Error(place + ": \"" + text + "\" is no number");
  }
  return number;
}

// Characters as Windows reads the bytes of UTF-8 (code page 1252); texts that are none stay as they are.
function fromUtf8(text) {
  var high = "\u20ac\x81\u201a\u0192\u201e\u2026\u2020\u2021\u02c6\u2030\u0160\u2039\u0152\x8d\u017d\x8f" +
             "\x90\u2018\u2019\u201c\u201d\u2022\u2013\u2014\u02dc\u2122\u0161\u203a\u0153\x9d\u017e\u0178";
  var bytes = text.replace(/[\u0152-\uffff]/g, function (letter) {
    var index = high.indexOf(letter);
    return index < 0 ? letter : String.fromCharCode(0x80 + index);
  });
  try {
    return decodeURIComponent(escape(bytes)).replace(/^\ufeff/, "");
  } catch (error) {
    return text;
  }
}

function plot(table, file) {
  var context = new ActiveXObject("ZYNVue.ZYN2DGLBitmapContext");
  context.CreateContexte(1200, 700);
  var graph = context.Graphe;
  graph.Actif = true;
  graph.Axe(BOTTOM).Titre = table.names[0];
  if (table.hasDates) {
    graph.Axe(BOTTOM).TypeEchelle = DATE;
  }
  for (var i = 1; i < table.names.length; i++) {
    var series = new ActiveXObject("ZYNVue.ZYNSerie");
    series.Nom = table.names[i];
    series.setPoints(table.columns[0], table.columns[i]);
    series.Epaisseur = 2;
    graph.Ajouter(series, BOTTOM, LEFT);
  }
  context.Exporter(file);
}
