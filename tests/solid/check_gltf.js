// node check_gltf.js MODULES FILE: what the format's validator complains of; nothing when all is well.
const [, , modules, file] = process.argv;
const validator = require(require('path').resolve(modules, 'gltf-validator'));
validator.validateBytes(new Uint8Array(require('fs').readFileSync(file))).then((report) => {
  for (const each of report.issues.messages) if (each.severity < 2) console.log(each.code, each.message, each.pointer);
});
