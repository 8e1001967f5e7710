// What the marks of a route and of a walk mean; symbols and rooms are in the page already.

/** An item of the legend: words, and shapes drawn around the middle of 32 by 24 pixels. */
function legendItem(words, ...shapes) {
  return element('li', {},
    drawn('svg', { class: 'plan', width: 32, height: 24, viewBox: '-16 -12 32 24', 'aria-hidden': 'true' }, ...shapes), words);
}

function walkItems() {
  const mark = (className, ...shapes) => drawn('g', { class: className }, ...shapes);
  return [
    legendItem('Position, on the route if there is one', mark('person', drawn('circle', { class: 'body', r: 8 }))),
    legendItem('Position on the map, if it is elsewhere', mark('snapped-place', drawn('circle', { r: 6 }))),
    legendItem('Position as measured', mark('measured', drawn('circle', { r: 5.5 }))),
    legendItem('Way that was walked', drawn('path', { class: 'trail', d: 'M-14 0H14' })),
    legendItem('Jump that was denied', mark('denied', drawn('circle', { r: 9 }), drawn('path', { d: 'M-4 -4L4 4M4 -4L-4 4' }))),
  ];
}

function routeItems() {
  const small = (mark, transform) => drawn('g', { transform }, mark);
  return [
    legendItem('Route', drawn('path', { class: 'route line', d: 'M-12 0H12' })),
    legendItem('Start', small(startMark([0, 0]), 'scale(.85)')),
    legendItem('Destination', small(destinationMark([0, 0]), 'translate(0 10) scale(.7)')),
    legendItem('Instruction', small(dartMark({ at: [0, 0], kind: 'forward', heading: 90 }), 'translate(8 0)')),
    legendItem('Change of level on the route', discMark('change', [0, 0], 'stairs', 11)),
  ];
}
