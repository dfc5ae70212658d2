// Plots measured tables as a paper would show them: carbon dioxide by date with gaps, the weather of
// Seattle on two axes, neutrons over six decades with their errors, the months of the sea as a heat map.
// How a graph is drawn line by line with the first interfaces alone shows graphs.js.
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
var LINEAR = 0, LOGARITHMIC = 1, DATE = 2; // TypeEchelle
var POINTS = 2, BARS = 3; // TypeTrace
var CIRCLE = 1, SQUARE = 2; // Marqueur
var INSIDE = 0, BOTTOM_LEFT = 1, TOP_LEFT = 4, BELOW = 6; // Position of a legend

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
  var context = newPlot("Carbon dioxide in the air", "Mauna Loa Observatory, Hawaii: weekly means",
                        [DATE, "", ""], [LINEAR, "CO\u2082", "ppm"], TOP_LEFT);
  addSeries(context.Graphe, "Week", GREY, table.DATE, table.CO2);
  addSeries(context.Graphe, "Mean of a year", ORANGE, table.DATE, runningMean(table.CO2, 26)).Epaisseur = 2;
  return context;
}

// Two axes side by side: temperatures to the left, the rain of each month to the right.
function weather(table) {
  var context = newPlot("The weather of Seattle", "", [DATE, "", ""], [LINEAR, "Temperature", "\u00b0C"], BELOW);
  var graph = context.Graphe;
  graph.Axe(LEFT).setPlage(-20, 40);
  var rain = setAxis(graph, RIGHT, [LINEAR, "Rain in a month", "mm"]);
  rain.setPlage(0, 900);
  rain.setColor(BLUE[0], BLUE[1], BLUE[2]);

  var months = monthlySums(table.DATE, table.PRECIPITATION);
  addSeries(graph, "Rain", BLUE, months.middles, months.sums, RIGHT).TypeTrace = BARS;
  addSeries(graph, "Highest of the day", ORANGE, table.DATE, table.HIGHEST);
  addSeries(graph, "Lowest of the day", GREY, table.DATE, table.LOWEST);
  return context;
}

// Both axes logarithmic, points with the standard deviation of each.
function scattering(table) {
  var context = newPlot("Neutrons scattered by latex spheres", "Diameter 0.5 \u00b5m, in heavy water",
                        [LOGARITHMIC, "q", "\u00c5\u207b\u00b9"], [LOGARITHMIC, "Intensity", "cm\u207b\u00b9"],
                        BOTTOM_LEFT);
  var graph = context.Graphe;
  var q = graph.Axe(BOTTOM);
  var intensity = graph.Axe(LEFT);
  intensity.setPlage(0.01, 10000);
  q.GrilleVisible = intensity.GrilleVisible = true;
  q.SousGrilleVisible = intensity.SousGrilleVisible = true;

  var instruments = { USANS: [ORANGE, SQUARE], SANS: [BLUE, CIRCLE] };
  for (var name in instruments) {
    var rows = rowsWhere(table.INSTRUMENT, name);
    var points = addSeries(graph, name, instruments[name][0], pick(table.Q, rows), pick(table.INTENSITY, rows));
    points.TypeTrace = POINTS;
    points.Marqueur = instruments[name][1];
    points.TailleMarqueur = 4;
    points.setErreurs(pick(table.DEVIATION, rows));
  }
  return context;
}

// A map of colours: a row of the map is a month, a column a year. Its colour bar stands beside it.
function seaSurface(table) {
  var context = newPlot("The sea off Peru and Ecuador", "Monthly means of the surface temperature",
                        [LINEAR, "", ""], [LINEAR, "Month", ""], INSIDE);
  var graph = context.Graphe;
  var first = table.YEAR[0];
  var last = table.YEAR[table.YEAR.length - 1];
  graph.Axe(BOTTOM).setPlage(first, last + 1);
  graph.Axe(LEFT).setPlage(0.5, 12.5);
  graph.Axe(LEFT).Inverse = true;

  var colours = new ActiveXObject("ZYNVue.ZYNEchelleCouleurs");
  colours.Titre = "\u00b0C";
  graph.Ajouter(colours);

  var map = new ActiveXObject("ZYNVue.ZYNCarte");
  map.setValeurs([table.JAN, table.FEB, table.MAR, table.APR, table.MAY, table.JUN,
                  table.JUL, table.AUG, table.SEP, table.OCT, table.NOV, table.DEC]);
  map.setEtendue(first, last + 1, 0.5, 12.5);
  map.EchelleCouleurs = colours;
  graph.Ajouter(map);
  return context;
}

// A picture without a window that is a plot. An axis is told by its scale, title and unit.
function newPlot(title, subtitle, bottom, left, legend) {
  var context = new ActiveXObject("ZYNVue.ZYN2DGLBitmapContext");
  context.DPIResolution *= FINER;
  context.CreateContexte(WIDTH * FINER, HEIGHT * FINER);
  var graph = context.Graphe;
  graph.Actif = true;
  graph.Titre = title;
  graph.SousTitre = subtitle;
  graph.Legende.Position = legend;
  setAxis(graph, BOTTOM, bottom);
  setAxis(graph, LEFT, left);
  return context;
}

function setAxis(graph, side, told) {
  var axis = graph.Axe(side);
  axis.TypeEchelle = told[0];
  axis.Titre = told[1];
  axis.Unite = told[2];
  return axis;
}

// A line by the left axis unless another is given.
function addSeries(graph, name, colour, x, y, side) {
  var series = new ActiveXObject("ZYNVue.ZYNSerie");
  series.Nom = name;
  series.setColor(colour[0], colour[1], colour[2]);
  series.setPoints(x, y);
  graph.Ajouter(series, BOTTOM, side || LEFT);
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
