// A picture from JavaScript under Node.js.
//
//   node picture.js PICTURE.png

const fs = require('fs');
const path = require('path');
const { interfaceType, create, withString, initialise, CoUninitialize } = require('./com.js');

const SHADED = 0;
const CENTRE = 9;

const Triangle = interfaceType('{97810519-95F7-4047-A493-E371B8896169}', {
  setPoint: [0, 'int', 'double', 'double', 'double'],
  setColor: [1, 'double', 'double', 'double', 'double'],
  setNormale: [2, 'int', 'double', 'double', 'double'],
});
const Text = interfaceType('{D132811C-5504-47BB-8B70-3E567E404724}', {
  setPosition: [1, 'double', 'double', 'double', 'int'],
  setTexte: [5, 'void *'],
  setHauteurPixels: [7, 'int'],
});
const Context = interfaceType('{F5496B5D-E80F-45B4-A590-4E7A4DA2B2F4}', {
  Add: [0, 'void *', 'int'],
  CreateContext: [2, 'int', 'int', 'void *'],
  CreatePNG: [6, 'void *', 'void *'],
  setGradientBackground: [24, 'int16_t'],
  setGradientColor: [25, 'float', 'float', 'float'],
});

function addTriangle(context, corners, colour) {
  const triangle = create('ZYNVue.ZYNGLTriangle', Triangle);
  corners.forEach(([x, y], index) => {
    triangle.setPoint(index, x, y, 0);
    triangle.setNormale(index, 0, 0, 1);
  });
  triangle.setColor(...colour, 1);
  context.Add(triangle.self, SHADED);
  triangle.release();
}

function addText(context, words, x, y) {
  const text = create('ZYNVue.ZYNGLTexte', Text);
  withString(words, (string) => text.setTexte(string));
  text.setHauteurPixels(40);
  text.setPosition(x, y, 1, CENTRE);
  context.Add(text.self, SHADED);
  text.release();
}

function draw(file) {
  const context = create('ZYNVue.ZYN3dGLBitmapContext', Context);
  context.CreateContext(640, 480, Buffer.alloc(4));
  context.setGradientBackground(-1); // VARIANT_TRUE
  context.setGradientColor(0.5, 0.6, 0.8);
  addTriangle(context, [[0, 0], [10, 0], [5, 8]], [0.7, 0.3, 0.1]);
  addTriangle(context, [[10, 0], [15, 8], [5, 8]], [0.1, 0.3, 0.6]);
  addText(context, 'JavaScript', 7.5, 4);
  fs.rmSync(file, { force: true });
  withString(file, (string) => context.CreatePNG(null, string));
  context.release();
  // The member answers no error: the file tells.
  if (!fs.existsSync(file)) {
    throw new Error(`${file} could not be written`);
  }
  console.log(`${file}: ${fs.statSync(file).size} bytes`);
}

if (process.argv.length !== 3) {
  console.error('usage: node picture.js PICTURE.png');
  process.exit(2);
}
initialise();
draw(path.resolve(process.argv[2]));
CoUninitialize();
console.log('done');
