// COM from JavaScript under Node.js, without an add-on for COM: koffi calls the members of interfaces by their place in
// the tables of functions.

const koffi = require('koffi');

const ole32 = koffi.load('ole32.dll');
const oleaut32 = koffi.load('oleaut32.dll');
const GUID = koffi.struct('GUID', { a: 'uint32_t', b: 'uint16_t', c: 'uint16_t', d: koffi.array('uint8_t', 8) });
const SAFEARRAY_TYPES = { Float64Array: 5, Int32Array: 3 }; // VT_R8, VT_I4
const VT_ARRAY = 0x2000;
koffi.struct('VARIANT', { type: 'uint16_t', reserved: koffi.array('uint16_t', 3), value: 'void *', more: 'void *' });
const CoInitializeEx = ole32.func('int __stdcall CoInitializeEx(void *reserved, uint32_t model)');
const CoUninitialize = ole32.func('void __stdcall CoUninitialize()');
const CLSIDFromProgID = ole32.func('int __stdcall CLSIDFromProgID(str16 progId, _Out_ GUID *id)');
const IIDFromString = ole32.func('int __stdcall IIDFromString(str16 text, _Out_ GUID *id)');
const CoCreateInstance = ole32.func(
  'int __stdcall CoCreateInstance(GUID *id, void *outer, uint32_t context, GUID *iid, _Out_ void **object)');
const SysAllocString = oleaut32.func('void * __stdcall SysAllocString(str16 text)');
const SysStringLen = oleaut32.func('uint32_t __stdcall SysStringLen(void *text)');
const SafeArrayCreateVector = oleaut32.func('void * __stdcall SafeArrayCreateVector(uint16_t type, int32_t first, uint32_t count)');
const SafeArrayAccessData = oleaut32.func('int __stdcall SafeArrayAccessData(void *array, _Out_ void **data)');
const SafeArrayUnaccessData = oleaut32.func('int __stdcall SafeArrayUnaccessData(void *array)');
const SafeArrayGetUBound = oleaut32.func('int __stdcall SafeArrayGetUBound(void *array, uint32_t dimension, _Out_ int32_t *bound)');
const SafeArrayDestroy = oleaut32.func('int __stdcall SafeArrayDestroy(void *array)');
const SysFreeString = oleaut32.func('void __stdcall SysFreeString(void *text)');

let prototypeCount = 0; // makes their names unique
const SINGLE_THREADED = 2;
const IN_PROCESS = 1;

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

// A new object with the members of an interface as functions; release() lets go of it.
function create(progId, type) {
  const id = {};
  const out = [null];
  check(CLSIDFromProgID(progId, id), progId);
  check(CoCreateInstance(id, null, IN_PROCESS, type.id, out), progId);
  return wrap(out[0], type, progId);
}

function wrap(self, type, className) {
  const table = koffi.decode(self, 'void *');
  const at = (place) => koffi.decode(table, place * koffi.sizeof('void *'), 'void *');
  const object = { self, release: () => koffi.call(at(2), Release, self) };
  for (const [name, [place, prototype]] of type.prototypes) {
    const member = at(place);
    object[name] = (...values) => check(koffi.call(member, prototype, self, ...values), `${className}.${name}`);
  }
  return object;
}

// The object that a member answers with; it must be of this interface, whatever the member is declared to give.
function objectFrom(type, ask) {
  const out = [null];
  ask(out);
  return wrap(out[0], type, 'an object');
}

// The text that a member answers with.
function stringFrom(ask) {
  const out = [null];
  ask(out);
  const text = koffi.decode(out[0], 'char16_t', SysStringLen(out[0]));
  SysFreeString(out[0]);
  return text;
}

function withString(text, use) {
  const string = SysAllocString(text);
  try {
    use(string);
  } finally {
    SysFreeString(string);
  }
}

// Makes a VARIANT with an array of a Float64Array or an Int32Array, for the time of a call.
function withArray(numbers, use) {
  const type = SAFEARRAY_TYPES[numbers.constructor.name];
  const array = SafeArrayCreateVector(type, 0, numbers.length);
  const data = [null];
  check(SafeArrayAccessData(array, data), 'SafeArrayAccessData');
  koffi.encode(data[0], koffi.array(type === 5 ? 'double' : 'int', numbers.length), Array.from(numbers));
  SafeArrayUnaccessData(array);
  try {
    return use({ type: VT_ARRAY | type, reserved: [0, 0, 0], value: array, more: null });
  } finally {
    SafeArrayDestroy(array);
  }
}

// The numbers of an array that a member answers with: `type` "double" or "int".
function arrayFrom(type, ask) {
  const out = {};
  ask(out);
  const bound = [0];
  const data = [null];
  check(SafeArrayGetUBound(out.value, 1, bound), 'SafeArrayGetUBound');
  check(SafeArrayAccessData(out.value, data), 'SafeArrayAccessData');
  const numbers = koffi.decode(data[0], koffi.array(type, bound[0] + 1));
  SafeArrayUnaccessData(out.value);
  SafeArrayDestroy(out.value);
  return numbers;
}

function initialise() {
  check(CoInitializeEx(null, SINGLE_THREADED), 'CoInitializeEx');
}

module.exports = { interfaceType, create, withString, withArray, arrayFrom, stringFrom, objectFrom, initialise, CoUninitialize };
