// Draws the curves of the report page from the data that the program put into it.
import vegaEmbed from 'vega-embed';
import {expressionInterpreter} from 'vega-interpreter';

const data = JSON.parse(document.getElementById('data').textContent);
const curves = data.curves;

// Okabe and Ito's colours, then the same with dashes.
const colours = ['#0072B2', '#D55E00', '#009E73', '#CC79A7', '#E69F00', '#56B4E9', '#000000', '#F0E442'];
const dashes = [[1, 0], [7, 3], [2, 2], [8, 3, 2, 3], [8, 3, 2, 3, 2, 3]];
const grey = '#606060';
const colourOf = (curve) => curve === null ? grey : colours[curve % colours.length];
const dashOf = (curve) => dashes[Math.floor(curve / colours.length) % dashes.length];

const counts = (curve, fp, tp) => [['true positives', tp], ['false positives', fp],
  ['true negatives', curve.negative - fp], ['false negatives', curve.positive - tp]];
const rocPoint = (curve, [fp, tp, cutOff]) => ({x: fp / curve.negative, y: tp / curve.positive, tip: () => [
  ['curve', curve.name], ['cut-off', cutOff], ['sensitivity', (tp / curve.positive).toFixed(4)],
  ['specificity', ((curve.negative - fp) / curve.negative).toFixed(4)], ...counts(curve, fp, tp)]});
/** An interpolated point stands for no cut-off and has no counts. */
const precisionRecallPoint = (curve, [recall, precision, measured]) => ({x: recall, y: precision,
  interpolated: !measured, tip: () => [['curve', curve.name], ['cut-off', measured?.[2] ?? 'none: interpolated'],
    ['recall', recall.toFixed(4)], ['precision', precision.toFixed(4)],
    ...(measured ? counts(curve, measured[0], measured[1]) : [])]});

const panels = [
  {title: 'ROC curve', x: '1 - specificity', y: 'sensitivity',
    points: curves.map((curve) => curve.roc.map((point) => rocPoint(curve, point))),
    dots: curves.flatMap((curve, c) => curve.best ? [{...rocPoint(curve, curve.best), curve: c}] : []),
    lines: [{x: 0, y: 0, x2: 1, y2: 1, curve: null}], labels: data.cutOffLabels},
  {title: 'Precision-recall curve', x: 'recall', y: 'precision',
    points: curves.map((curve) => curve.precisionRecall.map((point) => precisionRecallPoint(curve, point))),
    dots: [], lines: data.prevalences.map(({y, curve}) => ({x: 0, y, x2: 1, y2: y, curve})),
    labels: data.prevalenceLabels},
].filter(({points}) => points.some((ofCurve) => ofCurve.length > 0));

const place = document.getElementById('curves');
const sideOfLabels = 440; // of the panel in which the widths of labels are measured
const frame = 75; // axes and their words
const side = Math.max(220, Math.min(sideOfLabels, place.clientWidth - frame));
const axis = (field, title) => ({field, type: 'quantitative', title, scale: {domain: [0, 1]},
  axis: {values: [0, 0.2, 0.4, 0.6, 0.8, 1], format: '.1f', labelFlush: false}});
const byCurve = (range) => ({field: 'curve', type: 'nominal', legend: null,
  scale: {domain: [...curves.keys()], range: [...curves.keys()].map(range)}});
const ownColour = {field: 'colour', type: 'nominal', scale: null};
const shown = [{filter: 'indexof(hidden, datum.curve) < 0'}];
const row = (point, curve, order) => ({x: point.x, y: point.y, curve, order, colour: colourOf(curve)});

/** A panel as Vega-Lite takes it. */
function chartOf({title, x, y, points, dots, lines, labels}) {
  const position = {x: axis('x', x), y: axis('y', y)};
  const path = points.flatMap((ofCurve, c) => ofCurve.map((point, i) => row(point, c, i)));
  // A missing value parts lines; a line of one point is a dot.
  const measured = points.flatMap((ofCurve, c) => ofCurve.map((point, i) =>
    ({...row(point, c, i), y: point.interpolated ? null : point.y})));
  const line = (values, width, invalid) => ({data: {values}, transform: shown,
    mark: {type: 'line', strokeWidth: width, strokeCap: 'round', strokeJoin: 'round', invalid},
    encoding: {...position, order: {field: 'order', type: 'quantitative'}, color: byCurve(colourOf),
      strokeDash: byCurve(dashOf)}});
  // Dashes and parts of two widths do not go together.
  const twoWidths = curves.length <= colours.length
    && points.some((ofCurve) => ofCurve.some(({interpolated}) => interpolated));
  return {
    $schema: 'https://vega.github.io/schema/vega-lite/v6.json',
    title, width: side, height: side,
    params: [{name: 'hidden', value: []}],
    layer: [
      {data: {values: lines.map((each) => ({...each, colour: colourOf(each.curve)}))}, transform: shown,
        mark: {type: 'rule', strokeDash: [5, 4], strokeWidth: 1},
        encoding: {...position, x2: {field: 'x2'}, y2: {field: 'y2'}, color: ownColour}},
      line(path, twoWidths ? 1.2 : curves.length <= colours.length ? 2 : 1.5),
      ...(twoWidths ? [line(measured, 2, 'break-paths-show-domains')] : []),
      {data: {values: dots.map((dot) => row(dot, dot.curve, 0))}, transform: shown,
        mark: {type: 'point', filled: true, size: 75, opacity: 1, stroke: '#ffffff', strokeWidth: 1},
        encoding: {...position, fill: ownColour}},
      {data: {values: labels.map((each) => ({...each, colour: colourOf(each.curve),
        x2: each.x + each.width * sideOfLabels / side, top: each.y + 8 / side, bottom: each.y - 8 / side}))},
      transform: shown, layer: [
        {mark: {type: 'rect', color: '#ffffff', opacity: 1},
          encoding: {x: axis('x', x), x2: {field: 'x2'}, y: axis('bottom', y), y2: {field: 'top'}}},
        {mark: {type: 'text', align: 'left', baseline: 'middle', fontSize: 11},
          encoding: {...position, text: {field: 'text'}, color: ownColour}}]},
      {data: {name: 'pointed', values: []}, mark: {type: 'point', filled: true, size: 70, opacity: 1},
        encoding: {...position, color: ownColour}},
    ],
    config: {font: 'system-ui, sans-serif', view: {stroke: grey},
      axis: {gridColor: '#eeeeee', titleFontWeight: 'normal', titleFontSize: 12, labelFontSize: 11}},
  };
}

const hidden = new Set();
const tip = document.getElementById('tip');

const setAttributes = (made, attributes) =>
  Object.entries(attributes).forEach(([name, value]) => made.setAttribute(name, value));

/** An element with text; names reach the page as text only, never as markup. */
function element(tag, content, attributes = {}) {
  const made = document.createElement(tag);
  made.append(...[content].flat());
  setAttributes(made, attributes);
  return made;
}

function showTip(event, lines) {
  tip.replaceChildren(...lines.filter(([, text]) => text !== '').map(([title, text]) =>
    element('div', [`${title}: `, element('bdi', String(text))])));
  tip.hidden = false;
  tip.style.left = `${Math.max(8, Math.min(event.pageX + 14,
    document.documentElement.clientWidth + window.scrollX - tip.offsetWidth - 8))}px`;
  tip.style.top = `${event.pageY + 14}px`;
}

/** The visible point nearest to a place in pixels of the panel, if it is near. */
function nearest(points, x, y) {
  let best = {distance: 60 ** 2};
  points.forEach((ofCurve, curve) => hidden.has(curve) || ofCurve.forEach((point) => {
    const distance = (point.x * side - x) ** 2 + ((1 - point.y) * side - y) ** 2;
    if (distance < best.distance)
      best = {distance, point, curve};
  }));
  return best.point ? best : null;
}

function followPointer(view, {points}) {
  const point = (found) => view.data('pointed', found ? [row(found.point, found.curve, 0)] : []).runAsync();
  view.container().addEventListener('pointermove', (event) => {
    const box = view.container().querySelector('svg').getBoundingClientRect();
    const scale = view.container().querySelector('svg').viewBox.baseVal.width / box.width;
    const [left, top] = view.origin();
    const found = nearest(points, (event.clientX - box.left) * scale - left, (event.clientY - box.top) * scale - top);
    point(found);
    if (found)
      showTip(event, found.point.tip());
    else
      tip.hidden = true;
  });
  view.container().addEventListener('pointerleave', () => {
    point(null);
    tip.hidden = true;
  });
}

function sample(curve) {
  const svg = document.createElementNS('http://www.w3.org/2000/svg', 'svg');
  const line = document.createElementNS('http://www.w3.org/2000/svg', 'line');
  setAttributes(svg, {width: 60, height: 12, 'aria-hidden': true});
  setAttributes(line, {x1: 1, x2: 59, y1: 6, y2: 6, stroke: colourOf(curve), 'stroke-width': 3,
    'stroke-dasharray': dashOf(curve)[1] ? dashOf(curve).join() : 'none'});
  svg.append(line);
  return svg;
}

/** The legend: a row per curve, whose button hides the curve and greys the row, and back. */
function makeLegend(views) {
  const withPrevalence = panels.length > 1 && data.prevalences.length > 1;
  const cells = (tag, texts) => texts.map((text) => element(tag, text));
  const rows = curves.map((curve, c) => {
    const button = element('button', [sample(c), element('bdi', curve.legend)],
      {type: 'button', 'aria-pressed': true, title: 'hide or show this curve'});
    const made = element('tr', [element('th', button, {scope: 'row', class: 'name'}),
      ...cells('td', [curve.area, curve.cutOff, ...(withPrevalence ? [curve.prevalence] : [])])]);
    button.addEventListener('click', () => {
      const hide = !hidden.delete(c);
      if (hide)
        hidden.add(c);
      made.classList.toggle('hidden', hide);
      button.setAttribute('aria-pressed', !hide);
      views.forEach((view) => view.signal('hidden', [...hidden]).runAsync());
    });
    return made;
  });
  const heads = cells('th', [data.areaHeading, data.cutOffHeading, ...(withPrevalence ? ['prevalence'] : [])]);
  const table = element('table', [element('caption', 'Legend: click a name to hide its curve, and again to show it'),
    element('thead', element('tr', [element('th', 'curve', {class: 'name'}), ...heads])), element('tbody', rows)]);
  document.getElementById('legend').replaceChildren(element('div', table, {class: 'wide'}));
}

const draw = async (panel) => {
  // What cannot be seen is in the tables.
  const box = element('div', [], {class: 'panel', role: 'img', 'aria-label': `${panel.title}: ${panel.y} against `
    + `${panel.x}, one line per curve of the legend; the tables below tell the numbers`});
  place.append(box);
  const {view} = await vegaEmbed(box, chartOf(panel), {mode: 'vega-lite', ast: true,
    expr: expressionInterpreter, renderer: 'svg', actions: false, defaultStyle: false, tooltip: false});
  followPointer(view, panel);
  return view;
};
if (curves.length > 0)
  Promise.all(panels.map(draw)).then((views) => {
    makeLegend(views);
    place.dataset.drawn = views.length;
  }).catch((error) => {
    place.textContent = `The curves cannot be drawn: ${error.message}`;
    console.error(error);
  });
