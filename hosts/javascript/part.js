// A part from JavaScript under Node.js: coloured by its height with a colour bar, its base hidden.
//
//   node part.js PART.obj FOLDER

const fs = require('fs');
const path = require('path');
const {
  interfaceType, create, withString, withArray, arrayFrom, stringFrom, objectFrom, initialise, CoUninitialize,
} = require('./com.js');

const SHADED = 0;

const Mesh = interfaceType('{7316654D-4D84-4D2F-8494-F5F91D2D732F}', {
  Charger: [33, 'void *'],
  setValeurs: [10, 'VARIANT'],
  setEchelleCouleurs: [13, 'void *'],
  getSommets: [22, '_Out_ VARIANT *'],
  getNomsFaces: [26, '_Out_ VARIANT *'],
  NomGroupe: [27, 'int', '_Out_ void **'],
  Extraire: [42, 'VARIANT', '_Out_ void **'],
});
const Group = interfaceType('{9FF98435-A4D3-4B9D-8E5A-8164F3B1AFC3}', {
  Add: [0, 'void *', 'int'],
  setVisible: [7, 'int16_t'],
});
const Colours = interfaceType('{1EAA58FA-DDA5-47CB-B093-ECB1FC8EA83F}', {
  setTitre: [16, 'void *'],
});
const Camera = interfaceType('{D5F9B969-0446-4C48-A2D6-9A163B5CEF72}', {
  setOeil: [0, 'double', 'double', 'double'],
  setCible: [1, 'double', 'double', 'double'],
  setHaut: [2, 'double', 'double', 'double'],
  setLargeur: [16, 'double'],
  setHauteur: [18, 'double'],
  setPerspective: [20, 'int16_t'],
  getTexte: [25, '_Out_ void **'],
});
const Context = interfaceType('{7655D1E7-B7EA-4C02-AF68-F7976FC5E9EE}', {
  Add: [0, 'void *', 'int'],
  CreateContext: [2, 'int', 'int', 'void *'],
  setCamera: [32, 'void *'],
  Exporter: [33, 'void *'],
});

function loadPart(file, colours) {
  const part = create('ZYNVue.ZYNGLMaillage', Mesh);
  withString(file, (name) => part.Charger(name));
  const points = arrayFrom('double', (out) => part.getSommets(out));
  const heights = Float64Array.from({ length: points.length / 3 }, (_, i) => points[3 * i + 2]);
  withArray(heights, (values) => part.setValeurs(values));
  part.setEchelleCouleurs(colours.self);
  return part;
}

// A group for each group of the file, that of the base hidden.
function addGroups(context, part) {
  const faces = new Map();
  const count = arrayFrom('int', (out) => part.getNomsFaces(out)).length;
  for (let face = 0; face < count; ++face) {
    const name = stringFrom((out) => part.NomGroupe(face, out));
    faces.set(name, [...(faces.get(name) ?? []), face]);
  }
  for (const [name, numbers] of faces) {
    const group = create('ZYNVue.ZYNGroupe', Group);
    const mesh = withArray(Int32Array.from(numbers), (list) => objectFrom(Mesh, (out) => part.Extraire(list, out)));
    group.Add(mesh.self, SHADED);
    group.setVisible(name === 'base' ? 0 : -1);
    context.Add(group.self, SHADED);
    mesh.release();
    group.release();
  }
}

function newCamera() {
  const camera = create('ZYNVue.ZYNCamera', Camera);
  camera.setOeil(60, -110, 90);
  camera.setCible(0, 0, 22);
  camera.setHaut(0, 0, 1);
  camera.setLargeur(100);
  camera.setHauteur(75);
  camera.setPerspective(-1); // VARIANT_TRUE
  return camera;
}

function draw(source, folder) {
  const colours = create('ZYNVue.ZYNEchelleCouleurs', Colours);
  withString('height, mm', (title) => colours.setTitre(title));
  const part = loadPart(source, colours);
  const context = create('ZYNVue.ZYN3dGLBitmapContext', Context);
  context.CreateContext(800, 600, Buffer.alloc(4));
  addGroups(context, part);
  context.Add(colours.self, SHADED);
  const camera = newCamera();
  context.setCamera(camera.self);
  withString(path.join(folder, 'part.png'), (file) => context.Exporter(file));
  fs.writeFileSync(path.join(folder, 'part.camera'), `${stringFrom((out) => camera.getTexte(out))}\n`);
  for (const object of [camera, context, part, colours]) {
    object.release();
  }
}

if (process.argv.length !== 4) {
  console.error('usage: node part.js PART.obj FOLDER');
  process.exit(2);
}
initialise();
draw(path.resolve(process.argv[2]), path.resolve(process.argv[3]));
CoUninitialize();
console.log('done');
