// Plots measured tables as a paper would show them: carbon dioxide by date with gaps, the weather of
// Seattle on two axes, neutrons over six decades with their errors, the months of the sea as a heat map.
// How a graph is drawn line by line with the first interfaces alone shows csvgraph.js.
//
//   cscript //nologo measurement.js TABLES FOLDER
//
// TABLES: the folder of the tables (hosts/data). Each graph is written as PNG of double resolution, as
// SVG and as PDF.
// The last line printed is "done: N pictures"; without it, something failed.

var WIDTH = 800; // pixels of a screen
var HEIGHT = 500;
var FINER = 2; // how many pixels of the PNG are one of a screen

// Numbers of the published enumerations.
var BOTTOM = 0, LEFT = 1, RIGHT = 3; // sides of axes
var LOGARITHMIC = 1, DATE = 2; // TypeEchelle
var POINTS = 2, BARS = 3; // TypeTrace
var CIRCLE = 1, SQUARE = 2; // Marqueur
var TOP_LEFT = 4, BOTTOM_LEFT = 1, BELOW = 6; // Position of a legend
var MIDDLE_LEFT = 8; // of a colour bar, where setPosition puts it

var BLUE = [0.0, 0.45, 0.7];
var ORANGE = [0.84, 0.37, 0.0];
var GREY = [0.55, 0.6, 0.66];

var files = new ActiveXObject("Scripting.FileSystemObject");

try {
  main();
} catch (error) {
  WScript.Echo("measurement.js: " + (error.message || "error " + (error.number >>> 0).toString(16)));
  WScript.Quit(1);
}

function main() {
  if (WScript.Arguments.length != 2) {
    throw new Error("usage: cscript //nologo measurement.js TABLES FOLDER");
  }
  var tables = WScript.Arguments(0);
  var folder = files.GetAbsolutePathName(WScript.Arguments(1));
  if (!files.FolderExists(folder)) {
    files.CreateFolder(folder);
  }
  function table(name) {
    return readTable(files.BuildPath(tables, name));
  }
  var pictures = write(carbonDioxide(table("carbon_dioxide.csv")), folder, "carbon-dioxide") +
                 write(weather(table("seattle_weather.csv")), folder, "weather") +
                 write(scattering(table("latex_scattering.csv")), folder, "scattering") +
                 write(seaSurface(table("sea_surface_temperature.csv")), folder, "sea-surface");
  WScript.Echo("done: " + pictures + " pictures");
}

// --- the graphs ----------------------------------------------------------------------------------

// Every week and the mean of a year around it; weeks without a value are gaps.
function carbonDioxide(table) {
  var context = newGraph("Carbon dioxide in the air", "Mauna Loa Observatory, Hawaii: weekly means");
  var graph = context.Graphe;
  axis(graph, BOTTOM, DATE, "", "");
  axis(graph, LEFT, 0, "CO\u2082", "ppm").GrilleVisible = true;

  var weeks = series("Week", GREY, 1);
  weeks.setPoints(table.DATE, table.CO2);
  graph.Ajouter(weeks);

  var years = series("Mean of a year", ORANGE, 2);
  years.setPoints(table.DATE, runningMean(table.CO2, 26));
  graph.Ajouter(years);
  graph.Legende.Position = TOP_LEFT;
  return context;
}

// Two axes side by side: temperatures to the left, the rain of each month to the right.
function weather(table) {
  var context = newGraph("The weather of Seattle", "");
  var graph = context.Graphe;
  axis(graph, BOTTOM, DATE, "", "");
  axis(graph, LEFT, 0, "Temperature", "\u00b0C").setPlage(-20, 40);
  var rain = axis(graph, RIGHT, 0, "Rain in a month", "mm");
  rain.setPlage(0, 900);
  rain.setColor(BLUE[0], BLUE[1], BLUE[2]);

  var months = monthlySums(table.DATE, table.PRECIPITATION);
  var bars = series("Rain", BLUE, 1);
  bars.TypeTrace = BARS;
  bars.setPoints(months.middles, months.sums);
  graph.Ajouter(bars, BOTTOM, RIGHT);

  var highest = series("Highest of the day", ORANGE, 1);
  highest.setPoints(table.DATE, table.HIGHEST);
  graph.Ajouter(highest);
  var lowest = series("Lowest of the day", GREY, 1);
  lowest.setPoints(table.DATE, table.LOWEST);
  graph.Ajouter(lowest);
  graph.Legende.Position = BELOW;
  return context;
}

// Both axes logarithmic, points with the standard deviation of each.
function scattering(table) {
  var context = newGraph("Neutrons scattered by latex spheres", "Diameter 0.5 \u00b5m, in heavy water");
  var graph = context.Graphe;
  var q = axis(graph, BOTTOM, LOGARITHMIC, "q", "\u00c5\u207b\u00b9");
  var intensity = axis(graph, LEFT, LOGARITHMIC, "Intensity", "cm\u207b\u00b9");
  intensity.setPlage(0.01, 10000);
  q.GrilleVisible = intensity.GrilleVisible = true;
  q.SousGrilleVisible = intensity.SousGrilleVisible = true;

  var instruments = { USANS: [ORANGE, SQUARE], SANS: [BLUE, CIRCLE] };
  for (var name in instruments) {
    var rows = rowsWhere(table.INSTRUMENT, name);
    var points = series(name, instruments[name][0], 1);
    points.TypeTrace = POINTS;
    points.Marqueur = instruments[name][1];
    points.TailleMarqueur = 4;
    points.setPoints(pick(table.Q, rows), pick(table.INTENSITY, rows));
    points.setErreurs(pick(table.DEVIATION, rows));
    graph.Ajouter(points);
  }
  graph.Legende.Position = BOTTOM_LEFT;
  return context;
}

// A map of colours: a row of the map is a month, a column a year. Its colour bar stands in the margin.
function seaSurface(table) {
  var context = newGraph("The sea off Peru and Ecuador", "Monthly means of the surface temperature");
  var graph = context.Graphe;
  var first = table.YEAR[0];
  var last = table.YEAR[table.YEAR.length - 1];
  axis(graph, BOTTOM, 0, "", "").setPlage(first, last + 1);
  var months = axis(graph, LEFT, 0, "Month", "");
  months.setPlage(0.5, 12.5);
  months.Inverse = true;
  graph.setMarges(0, 0, 100, 0);

  var colours = new ActiveXObject("ZYNVue.ZYNEchelleCouleurs");
  colours.Titre = "\u00b0C";
  colours.setPosition(0.9, 0.5, MIDDLE_LEFT);
  colours.setTaille(16, 300);
  context.Add(colours, 0);

  var map = new ActiveXObject("ZYNVue.ZYNCarte");
  map.setValeurs([table.JAN, table.FEB, table.MAR, table.APR, table.MAY, table.JUN,
                  table.JUL, table.AUG, table.SEP, table.OCT, table.NOV, table.DEC]);
  map.setEtendue(first, last + 1, 0.5, 12.5);
  map.EchelleCouleurs = colours;
  graph.Ajouter(map);
  return context;
}

// A picture without a window that is a plot.
function newGraph(title, subtitle) {
  var context = new ActiveXObject("ZYNVue.ZYN2DGLBitmapContext");
  context.DPIResolution *= FINER;
  context.CreateContexte(WIDTH * FINER, HEIGHT * FINER);
  context.Graphe.Actif = true;
  context.Graphe.Titre = title;
  context.Graphe.SousTitre = subtitle;
  return context;
}

function axis(graph, side, kind, title, unit) {
  var axis = graph.Axe(side);
  axis.TypeEchelle = kind;
  axis.Titre = title;
  axis.Unite = unit;
  return axis;
}

function series(name, colour, width) {
  var series = new ActiveXObject("ZYNVue.ZYNSerie");
  series.Nom = name;
  series.setColor(colour[0], colour[1], colour[2]);
  series.Epaisseur = width;
  return series;
}

// Pictures and vectors from one context; any failure is an error that says why.
function write(context, folder, name) {
  var formats = ["png", "svg", "pdf"];
  for (var i = 0; i < formats.length; i++) {
    var file = files.BuildPath(folder, name + "." + formats[i]);
    context.Exporter(file);
    WScript.Echo(file);
  }
  return formats.length;
}

// --- tables --------------------------------------------------------------------------------------

// The columns by name: numbers, dates as days since 1899-12-30, texts as they are. What is missing is
// not a number.
function readTable(file) {
  if (!files.FileExists(file)) {
    throw new Error(file + ": no such file");
  }
  var stream = files.OpenTextFile(file);
  var names = null;
  var table = {};
  while (!stream.AtEndOfStream) {
    var line = stream.ReadLine();
    if (line == "" || line.charAt(0) == "#") {
      continue;
    }
    var cells = line.replace(/"/g, "").split(",");
    for (var i = 0; i < cells.length; i++) {
      if (names) {
        table[names[i]].push(valueOf(cells[i]));
      } else {
        table[cells[i]] = [];
      }
    }
    names = names || cells;
  }
  stream.Close();
  return table;
}

function valueOf(cell) {
  var date = /^(\d+)-(\d+)-(\d+)$/.exec(cell);
  if (date) {
    return Date.UTC(date[1], date[2] - 1, date[3]) / 86400000 + 25569;
  }
  var number = parseFloat(cell);
  return isNaN(number) && cell != "" ? cell : number;
}

// The mean of what there is around each value, none where it would reach beyond the table.
function runningMean(values, half) {
  var means = [];
  for (var i = 0; i < values.length; i++) {
    var sum = 0;
    var count = 0;
    for (var j = Math.max(0, i - half); j <= i + half && j < values.length; j++) {
      if (!isNaN(values[j])) {
        sum += values[j];
        count++;
      }
    }
    means.push(i >= half && i + half < values.length ? sum / count : NaN);
  }
  return means;
}

// Of days in order: the middle of each month, and the sum of its values.
function monthlySums(days, values) {
  var months = { middles: [], sums: [] };
  var last = -1;
  for (var i = 0; i < days.length; i++) {
    var date = new Date((days[i] - 25569) * 86400000);
    if (date.getUTCMonth() != last) {
      last = date.getUTCMonth();
      months.middles.push(days[i] + 15);
      months.sums.push(0);
    }
    months.sums[months.sums.length - 1] += values[i];
  }
  return months;
}

function rowsWhere(column, value) {
  var rows = [];
  for (var i = 0; i < column.length; i++) {
    if (column[i] == value) {
      rows.push(i);
    }
  }
  return rows;
}

function pick(column, rows) {
  var values = [];
  for (var i = 0; i < rows.length; i++) {
    values.push(column[rows[i]]);
  }
  return values;
}
