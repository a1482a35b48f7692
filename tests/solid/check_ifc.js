// node check_ifc.js MODULES FILE: elements and their volumes as an independent reader sees them, one a line.
const [, , modules, file] = process.argv;
const webIfc = require(require('path').resolve(modules, 'web-ifc'));
const bytes = require('fs').readFileSync(file);

function volumeOf(api, model, placed) {
  const geometry = api.GetGeometry(model, placed.geometryExpressID);
  const vertices = api.GetVertexArray(geometry.GetVertexData(), geometry.GetVertexDataSize());
  const indices = api.GetIndexArray(geometry.GetIndexData(), geometry.GetIndexDataSize());
  const m = placed.flatTransformation;
  const at = (i) => {
    const [x, y, z] = [0, 1, 2].map((k) => vertices[i * 6 + k]);  // normals stand between the points
    return [0, 1, 2].map((r) => m[r] * x + m[4 + r] * y + m[8 + r] * z + m[12 + r]);
  };
  const origin = indices.length ? at(indices[0]) : [0, 0, 0];
  let six = 0;
  for (let i = 0; i < indices.length; i += 3) {
    const [a, b, c] = [0, 1, 2].map((k) => at(indices[i + k]).map((v, axis) => v - origin[axis]));
    six += a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) + a[2] * (b[0] * c[1] - b[1] * c[0]);
  }
  return six / 6;
}

(async () => {
  const api = new webIfc.IfcAPI();
  await api.Init();
  api.SetLogLevel(webIfc.LogLevel ? webIfc.LogLevel.LOG_LEVEL_ERROR : 3);
  const model = api.OpenModel(new Uint8Array(bytes), {COORDINATE_TO_ORIGIN: false});
  api.StreamAllMeshes(model, (mesh) => {
    let volume = 0;
    for (let i = 0; i < mesh.geometries.size(); ++i) volume += volumeOf(api, model, mesh.geometries.get(i));
    const line = api.GetLine(model, mesh.expressID);
    console.log(line.Tag.value, line.constructor.name, volume);
  });
})();
