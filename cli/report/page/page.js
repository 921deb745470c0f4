// Draws the curves of the report page from the data that the program put into it.
import vegaEmbed from 'vega-embed';
import {expressionInterpreter} from 'vega-interpreter';

const curves = JSON.parse(document.getElementById('data').textContent);
const legends = curves.map((curve) => curve.legend);

// Okabe and Ito's colours, then the same with dashes.
const colours = ['#0072B2', '#D55E00', '#009E73', '#CC79A7', '#E69F00', '#56B4E9', '#000000', '#F0E442'];
const dashes = [[1, 0], [7, 3], [2, 2], [8, 3, 2, 3]];

const rates = (curve, [fp, tp, cutOff], order) => ({
  order, fp, tp,
  legend: curve.legend,
  name: curve.name,
  x: fp / curve.negative,
  y: tp / curve.positive,
  cutOff,
  specificity: (curve.negative - fp) / curve.negative,
  tn: curve.negative - fp,
  fn: curve.positive - tp,
});
const roc = curves.flatMap((curve) => curve.roc.map((point, i) => rates(curve, point, i)));
const best = curves.flatMap((curve) => curve.best ? [rates(curve, curve.best, 0)] : []);
// Cut-offs stand beside their dots, lower where one would cover another.
const labels = best.map(({legend, cutOff, x, y}) => ({legend, cutOff, x: x + 0.02, y: y - 0.025}))
  .sort((a, b) => b.y - a.y);
labels.forEach((label, i) => labels.slice(0, i).filter((above) => Math.abs(above.x - label.x) < 0.16)
  .forEach((above) => { label.y = Math.min(label.y, above.y - 0.035); }));
const precisionRecall = curves.flatMap((curve) => curve.precisionRecall.map(
  ([x, y, interpolated, cutOff], order) =>
    ({order, x, y, cutOff, kind: interpolated ? 'interpolated' : 'measured', legend: curve.legend, name: curve.name})));
const prevalence = curves.map((curve) =>
  ({legend: curve.legend, y: curve.positive / (curve.positive + curve.negative)}));
const onePrevalence = prevalence.every(({y}) => y === prevalence[0].y);

const side = 440;
const mostLabels = 4; // beside the dots; with more curves the legend says the cut-offs
const share = (field, title, scale = {domain: [0, 1]}) =>
  ({field, type: 'quantitative', title, scale, axis: {values: [0, 0.2, 0.4, 0.6, 0.8, 1], format: '.1f'}});
const shown = [{filter: {not: {param: 'hidden', empty: false}}}];
const legend = {orient: 'bottom', columns: 1, labelLimit: 2 * side, title: null, symbolType: 'stroke',
  symbolStrokeWidth: 3, symbolSize: 300, labelFontSize: 12};
const byCurve = (range) => ({field: 'legend', type: 'nominal', sort: null, scale: {domain: legends, range}, legend});
const colour = byCurve(legends.map((_, i) => colours[i % colours.length]));
const dash = byCurve(legends.map((_, i) => dashes[Math.floor(i / colours.length) % dashes.length]));
const number = (field, title, format) => ({field, title, type: 'quantitative', format});
const word = (field, title) => ({field, title, type: 'nominal'});

function lines(name, x, y) {
  return {
    data: {name},
    transform: shown,
    mark: {type: 'line', clip: true, strokeWidth: 2},
    encoding: {x: share('x', x), y: share('y', y), order: {field: 'order', type: 'quantitative'},
      color: colour, strokeDash: dash},
  };
}

// The point nearest to the pointer, with what it stands for.
function hover(name, param, tooltip) {
  return {
    data: {name},
    transform: shown,
    params: [{name: param, select: {type: 'point', on: 'pointerover', clear: 'pointerout', nearest: true,
      toggle: false}}],
    mark: {type: 'point', filled: true, size: 60},
    encoding: {x: share('x'), y: share('y'), color: colour, tooltip,
      opacity: {condition: {param, empty: false, value: 1}, value: 0}},
  };
}

const rocLines = lines('roc', '1 - specificity', 'sensitivity');
rocLines.params = [{name: 'hidden', select: {type: 'point', fields: ['legend'], toggle: 'true'}, bind: 'legend'}];
const rocPanel = {
  title: 'ROC curve', width: side, height: side,
  layer: [
    {data: {values: [{x: 0, y: 0}, {x: 1, y: 1}]}, mark: {type: 'line', color: '#909090', strokeDash: [5, 4],
      strokeWidth: 1}, encoding: {x: share('x', '1 - specificity'), y: share('y', 'sensitivity')}},
    rocLines,
    {data: {name: 'best'}, transform: shown, mark: {type: 'point', filled: true, size: 70, opacity: 1},
      encoding: {x: share('x'), y: share('y'), color: colour}},
    ...(curves.length > mostLabels ? [] : [
      {data: {name: 'labels'}, transform: shown, mark: {type: 'text', align: 'left', fontSize: 11},
        encoding: {x: share('x'), y: share('y'), color: colour, text: {field: 'cutOff'}}}]),
    hover('roc', 'overRoc', [word('name', 'curve'), word('cutOff', 'cut-off'),
      number('y', 'sensitivity', '.4f'), number('specificity', 'specificity', '.4f'),
      number('tp', 'true positives', 'd'), number('fp', 'false positives', 'd'),
      number('tn', 'true negatives', 'd'), number('fn', 'false negatives', 'd')]),
  ],
};

const thin = lines('precisionRecall', 'recall', 'precision');
thin.mark.strokeWidth = 1;
const thick = {
  data: {name: 'precisionRecall'},
  transform: [...shown, {filter: {field: 'kind', equal: 'measured'}}],
  mark: {type: 'circle', size: 10, opacity: 1, clip: true},
  encoding: {x: share('x'), y: share('y'), color: colour},
};
const precisionRecallPanel = {
  title: 'Precision-recall curve', width: side, height: side,
  layer: [
    {data: {name: 'prevalence'}, transform: onePrevalence ? [] : shown,
      mark: {type: 'rule', color: '#909090', strokeDash: [5, 4], strokeWidth: 1},
      encoding: onePrevalence ? {y: share('y', 'precision')} : {y: share('y', 'precision'), color: colour}},
    thin,
    thick,
    hover('precisionRecall', 'overPrecisionRecall', [word('name', 'curve'), word('cutOff', 'cut-off'),
      number('x', 'recall', '.4f'), number('y', 'precision', '.4f'), word('kind', 'point')]),
  ],
};

// Names reach the page as text only, never as markup.
const tip = document.getElementById('tip');
function showTip(handler, event, item, value) {
  tip.hidden = !value;
  if (!value)
    return;
  tip.replaceChildren(...Object.entries(value).filter(([, text]) => text !== '').map(([title, text]) => {
    const row = tip.ownerDocument.createElement('div');
    row.textContent = `${title}: ${text}`;
    return row;
  }));
  tip.style.left = `${Math.min(event.pageX + 14, window.innerWidth + window.scrollX - tip.offsetWidth - 8)}px`;
  tip.style.top = `${event.pageY + 14}px`;
}

const spec = {
  $schema: 'https://vega.github.io/schema/vega-lite/v6.json',
  datasets: {roc, best, labels, precisionRecall, prevalence},
  hconcat: precisionRecall.length > 0 ? [rocPanel, precisionRecallPanel] : [rocPanel],
  config: {font: 'system-ui, sans-serif', view: {stroke: '#606060'}, axis: {gridColor: '#eeeeee'}},
};
if (curves.length > 0)
  vegaEmbed('#curves', spec, {mode: 'vega-lite', ast: true, expr: expressionInterpreter, renderer: 'canvas',
    actions: false, defaultStyle: false, tooltip: showTip})
    .then(({view}) => { document.getElementById('curves').view = view; })
    .catch((error) => {
      document.getElementById('curves').textContent = `The curves cannot be drawn: ${error.message}`;
      console.error(error);
    });
