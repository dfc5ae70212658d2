// Two texts in the view; a click makes the one that it hit red.
//
//   scripthost pick.js

var SHADED = 0;
var PICK = -1;
var CENTRE = 9;

var texts = [addText("one", -1, 0), addText("two", 1, 1)];
View.MouseMode = PICK;
View.initView(1);

function addText(words, y, name) {
  var text = new ActiveXObject("ZYNVue.ZYNGLTexte");
  text.Texte = words;
  text.HauteurPixels = 60;
  text.setPosition(0, y, 0, CENTRE);
  text.NomSelection = name;
  View.Add(text, SHADED);
  View.AddSelection(text);
  return text;
}

function View_MouseSelection(key, x, y, selection) {
  if (selection === undefined) {
    Host.Print("picked nothing");
    return;
  }
  var names = new VBArray(selection).toArray();
  if (names.length === 0) {
    Host.Print("picked what has no name");
    return;
  }
  var text = texts[names[0]];
  text.setColor(0.9, 0.1, 0.1, 1);
  View.Repaint();
  Host.Print("picked " + text.Texte);
}
