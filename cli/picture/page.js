// Tells the cut-off nearest to the pointer, and hides the curves whose names are clicked. Without it the page is whole.
'use strict';

const side = 440; // of the axes, in their own pixels
const tip = document.getElementById('tip');
const rate = (value) => value.toFixed(4);

/** A point of a curve: its place, and what to tell of it. */
function pointOf({name, positive, negative}, isRoc, text) {
  const parts = text.split(' ');
  const place = (x, y) => ({x: x * side, y: (1 - y) * side});
  if (parts.length === 2) // interpolated: it stands for no cut-off and has no counts
    return {...place(...parts), lines: [['curve', name], ['cut-off', 'no cut-off: interpolated'], ['recall', parts[0]],
      ['precision', parts[1]]]};
  const [fp, tp] = parts.map(Number);
  const [tn, fn, sensitivity, precision] = [negative - fp, positive - tp, tp / positive, tp / (tp + fp)];
  const counts = [['true positives', tp], ['false positives', fp], ['true negatives', tn], ['false negatives', fn]];
  return {...place(...(isRoc ? [fp / negative, sensitivity] : [sensitivity, precision])), lines: [['curve', name],
    ['cut-off', parts[2]], ...(isRoc ? [['sensitivity', rate(sensitivity)], ['specificity', rate(tn / negative)]]
      : [['recall', rate(sensitivity)], ['precision', rate(precision)]]), ...counts]};
}

/** Names reach the page as text only, never as markup. */
function showTip(lines, x, y) {
  tip.replaceChildren(...lines.map(([title, text]) => {
    const [line, value] = [document.createElement('div'), document.createElement('bdi')];
    value.textContent = text;
    line.append(`${title}: `, value);
    return line;
  }));
  tip.hidden = false;
  const {clientWidth, clientHeight} = document.documentElement;
  tip.style.left = `${Math.max(8, Math.min(x + 14, clientWidth - tip.offsetWidth - 8))}px`;
  tip.style.top = `${y + 14 + tip.offsetHeight > clientHeight ? Math.max(8, y - tip.offsetHeight - 8) : y + 14}px`;
}

document.querySelectorAll('#curves > svg').forEach((svg, panel) => {
  const axes = svg.querySelector('.axes');
  const mark = document.createElementNS('http://www.w3.org/2000/svg', 'circle');
  let all; // curves, read when first needed
  let [curve, index] = [0, -1]; // where the keys are

  function shown() {
    const pointsOf = ({dataset}) => dataset.points.split(';').filter(Boolean)
      .map((text) => pointOf(dataset, panel === 0, text));
    all ??= [...axes.querySelectorAll('[data-points]')].map((group) => ({group, points: pointsOf(group)}));
    return all.filter(({group, points}) => points.length > 0 && !group.classList.contains('hidden'));
  }
  function forget() {
    mark.remove();
    tip.hidden = true;
  }
  function tell(group, point) {
    for (const [name, value] of [['cx', point.x], ['cy', point.y], ['r', 4.5], ['class', group.getAttribute('class')],
      ['color', group.getAttribute('color')], ['fill', 'currentColor']])
      mark.setAttribute(name, value);
    axes.append(mark);
    const {x, y} = new DOMPoint(point.x, point.y).matrixTransform(axes.getScreenCTM());
    showTip(point.lines, x, y);
  }
  svg.addEventListener('pointermove', (event) => {
    const {x, y} = new DOMPoint(event.clientX, event.clientY).matrixTransform(axes.getScreenCTM().inverse());
    let best = {distance: 60};
    for (const {group, points} of shown()) {
      for (const point of points) {
        const distance = Math.hypot(point.x - x, point.y - y);
        if (distance < best.distance)
          best = {distance, point, group};
      }
    }
    if (best.point)
      tell(best.group, best.point);
    else
      forget();
  });
  svg.addEventListener('keydown', (event) => {
    const arrows = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]};
    const [across, down] = arrows[event.key] ?? [];
    const curves = shown();
    if (across === undefined || curves.length === 0)
      return;
    event.preventDefault();
    curve = Math.min(Math.max(curve + down, 0), curves.length - 1);
    const {group, points} = curves[curve];
    const onward = points.at(-1).x < points[0].x ? -across : across; // some curves run from right to left
    index = index < 0 ? points.length >> 1 : Math.min(Math.max(index + onward, 0), points.length - 1);
    tell(group, points[index]);
  });
  svg.setAttribute('tabindex', 0);
  svg.setAttribute('aria-label', `${svg.getAttribute('aria-label')}. Arrow keys tell the cut-offs`);
  for (const end of ['pointerleave', 'blur'])
    svg.addEventListener(end, forget);
});

document.querySelectorAll('#legend tbody tr').forEach((row, curve) => {
  const button = document.createElement('button');
  const name = row.querySelector('.name');
  button.type = 'button';
  button.title = 'hide or show this curve';
  button.setAttribute('aria-pressed', true);
  button.append(...name.childNodes);
  name.append(button);
  button.addEventListener('click', () => {
    const hidden = row.classList.toggle('hidden');
    button.setAttribute('aria-pressed', !hidden);
    document.querySelectorAll(`[data-curve="${curve}"]`).forEach((part) => part.classList.toggle('hidden', hidden));
  });
});
document.querySelector('#legend caption')?.append(': click a name to hide its curve, and again to show it');
