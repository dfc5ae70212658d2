// The sprite in JScript, which puts objects without Set: picture, sizes, key, copy.
function fail(message) {
  throw new Error(message);
}

function expect(value, wanted, what) {
  if (value !== wanted) fail(what + " is " + value + " instead of " + wanted);
}

var context = new ActiveXObject("ZYNVue.ZYN3dGLBitmapContext");
context.CreateContext(60, 40);
var picture = context.GetPictureDisp();

var sprite = new ActiveXObject("ZYNVue.ZYNGLBitmap");
expect(sprite.Picture, null, "the picture of a new sprite");
sprite.Picture = picture;
expect(sprite.largeur, 60, "largeur");
expect(sprite.hauteur, 40, "hauteur");
expect(sprite.Picture.Width, picture.Width, "the width of the picture held");
sprite.setPosition(1.5, 2.5, 3.5);
sprite.setOrigine(30, 20);
sprite.setTransparentColor(511, 255, 255);
sprite.Transparent = true;
sprite.Priorite = -3;

var copy = sprite.Copie();
context.CreateContext(10, 20);
sprite.Picture = context.GetPictureDisp();
expect(sprite.largeur, 10, "largeur of another picture");
expect(copy.largeur, 60, "the copy's largeur");
expect(copy.Transparent, true, "the copy's Transparent");
expect(copy.Priorite, -3, "the copy's Priorite");

WScript.Echo("script ok");
