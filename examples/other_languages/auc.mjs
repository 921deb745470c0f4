// Node.js: an area and a curve through koffi (npm install koffi).
//   LD_LIBRARY_PATH=<folder of the libraries> node auc.mjs
import koffi from "koffi";

const library = koffi.load("libvexrocproc920r.so.0");
const AucRes = koffi.struct("auc_res", {
  posCount: "double", negCount: "double", area: "double", stdError: "double", asymptoticSig: "double",
  ciLower: "double", ciUpper: "double",
});
const CurveRes = koffi.struct("roccurve_res", { rows: "void *", count: "int" });
const auc = library.func("auc", AucRes, ["double *", "double *", "int", "double *", "str", "str", "str", "double"]);
const roccurve = library.func("roccurve", CurveRes, ["double *", "double *", "int", "double *", "str", "str"]);
const release = library.func("release_roccurve_res", "void", [CurveRes]);

const sick = Float64Array.of(1, 1, 1, 1, 1, 0, 0, 0, 0, 0);
const marker = Float64Array.of(7.1, 6.4, 8.0, 5.2, 6.9, 4.8, 5.9, 5.2, 3.3, 4.1);

const area = auc(sick, marker, sick.length, null, "include", "larger", "nonparam", 0.95);
console.log(`area ${area.area.toFixed(3)}, standard error ${area.stdError.toFixed(3)}`);

// The rows are ours until we give them back; null rows mean that memory ran out.
const curve = roccurve(sick, marker, sick.length, null, "include", "larger");
if (curve.rows === null) throw new Error("not enough memory");
const rows = koffi.decode(curve.rows, "double", 3 * curve.count);
release(curve);
console.log(`${curve.count} points, the first at cut-off ${rows[0].toFixed(2)}`);
