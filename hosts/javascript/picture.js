// A picture from JavaScript under Node.js, without an add-on for COM: koffi calls the members of the
// interfaces by their place in the tables of functions.
//
//   node picture.js PICTURE.png

const fs = require('fs');
const path = require('path');
const koffi = require('koffi');

const ole32 = koffi.load('ole32.dll');
const oleaut32 = koffi.load('oleaut32.dll');
const GUID = koffi.struct('GUID', { a: 'uint32_t', b: 'uint16_t', c: 'uint16_t', d: koffi.array('uint8_t', 8) });
const CoInitializeEx = ole32.func('int __stdcall CoInitializeEx(void *reserved, uint32_t model)');
const CoUninitialize = ole32.func('void __stdcall CoUninitialize()');
const CLSIDFromProgID = ole32.func('int __stdcall CLSIDFromProgID(str16 progId, _Out_ GUID *id)');
const IIDFromString = ole32.func('int __stdcall IIDFromString(str16 text, _Out_ GUID *id)');
const CoCreateInstance = ole32.func(
  'int __stdcall CoCreateInstance(GUID *id, void *outer, uint32_t context, GUID *iid, _Out_ void **object)');
const SysAllocString = oleaut32.func('void * __stdcall SysAllocString(str16 text)');
const SysFreeString = oleaut32.func('void __stdcall SysFreeString(void *text)');

let prototypeCount = 0; // makes their names unique
const SINGLE_THREADED = 2;
const IN_PROCESS = 1;
const SHADED = 0;
const CENTRE = 9;

const Release = koffi.proto('uint32_t __stdcall Release(void *self)');

function check(result, what) {
  if (result < 0) {
    throw new Error(`${what}: 0x${(result >>> 0).toString(16)}`);
  }
}

// An interface: its identifier, and for each member its place behind the seven of IDispatch and the
// types of its arguments.
function interfaceType(iid, members) {
  const id = {};
  check(IIDFromString(iid, id), iid);
  const prototypes = new Map();
  for (const [name, [place, ...types]] of Object.entries(members)) {
    const call = koffi.proto('__stdcall', `${name}${++prototypeCount}`, 'int', ['void *', ...types]);
    prototypes.set(name, [7 + place, call]);
  }
  return { id, prototypes };
}

// An object with the members of an interface as functions; release() lets go of it.
function create(progId, type) {
  const id = {};
  const out = [null];
  check(CLSIDFromProgID(progId, id), progId);
  check(CoCreateInstance(id, null, IN_PROCESS, type.id, out), progId);
  const self = out[0];
  const table = koffi.decode(self, 'void *');
  const at = (place) => koffi.decode(table, place * koffi.sizeof('void *'), 'void *');
  const object = { self, release: () => koffi.call(at(2), Release, self) };
  for (const [name, [place, prototype]] of type.prototypes) {
    const member = at(place);
    object[name] = (...values) => check(koffi.call(member, prototype, self, ...values), `${progId}.${name}`);
  }
  return object;
}

function withString(text, use) {
  const string = SysAllocString(text);
  try {
    use(string);
  } finally {
    SysFreeString(string);
  }
}

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
check(CoInitializeEx(null, SINGLE_THREADED), 'CoInitializeEx');
draw(path.resolve(process.argv[2]));
CoUninitialize();
console.log('done');
