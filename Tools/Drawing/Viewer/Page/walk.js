// The walk, second by second: what came in, what the engine made of it, what was told.

class Walk {
  constructor({ routes, moments }) {
    this.routes = routes;
    this.seconds = [];
    for (const moment of moments) this.add(moment);
    this.trails = trailsOf(this.seconds);
  }

  add(moment) {
    const before = this.seconds.at(-1);
    if (before?.second === moment.second) {
      this.seconds[this.seconds.length - 1] = joined(before, moment, this.routes);
    } else {
      const carried = { guide: before?.guide, arrived: before?.arrived ?? false };
      this.seconds.push(joined({ second: moment.second, events: [], denials: [], ...carried }, moment, this.routes));
    }
  }

  /** Everything worth a mark on the slider: `{index, kind, text}`. */
  events() {
    return this.seconds.flatMap(({ events }, index) => events.map((event) => ({ index, ...event })));
  }

  at(index) {
    return this.seconds[index];
  }
}

/** A second after one more line of the trace. */
function joined(second, moment, routes) {
  const ahead = aheadOf(moment, routes);
  const guided = moment.route !== undefined;
  return {
    second: second.second,
    raw: moment.raw,
    snapped: moment.snapped,
    checked: moment.checked,
    ahead,
    told: moment.told ?? '',
    route: guided ? routes[moment.route] : null,
    // The list stays that of the last route when it has been walked.
    guide: guided ? routes[moment.route] : second.guide,
    instruction: moment.instruction,
    remaining: moment.remaining,
    arrived: moment.arrived || (second.arrived && !guided),
    denials: moment.denied ? [...second.denials, { from: moment.checked, to: moment.raw }] : second.denials,
    events: [...second.events, ...eventsOf(moment, second, routes)],
  };
}

/** The way that is left: from where the person is along the route's points. */
function aheadOf(moment, routes) {
  if (moment.ahead) return moment.ahead;
  return moment.here ? [moment.here, ...routes[moment.route].points.slice(moment.next)] : [];
}

function eventsOf(moment, before, routes) {
  const events = [];
  const route = routes[moment.route];
  const begun = moment.operation === 'route' && route !== undefined && !moment.error;
  if (begun) events.push({ kind: 'begun', text: `Route to ${route.destination}, ${metres(route.distance)}` });
  if (moment.rerouted) events.push({ kind: 'rerouted', text: `New route to ${route.destination}, ${metres(route.distance)}` });
  if (moment.denied) events.push({ kind: 'denied', text: 'Jump denied' });
  if (moment.arrived) events.push({ kind: 'arrived', text: `Arrived at ${before.guide?.destination ?? 'the destination'}` });
  if (moment.error) events.push({ kind: 'error', text: `Line ${moment.line}: ${moment.error}` });
  return events;
}

/** Where the person is shown: on the map, or where the check let them be, or as measured. */
function personAt(second) {
  const denied = second.denials.length > 0 ? second.checked : null;
  return second.ahead[0] ?? denied ?? second.snapped ?? second.checked ?? second.raw ?? null;
}

/** By level, the stretches that were walked on it: the seconds at which each begins and ends. */
function trailsOf(seconds) {
  const trails = [];
  seconds.forEach((second, index) => {
    const person = personAt(second);
    if (!person) return;
    const last = trails.at(-1);
    if (last && last.level === person[2]) last.points.push([index, person[0], person[1]]);
    else trails.push({ level: person[2], points: [[index, person[0], person[1]]] });
  });
  return trails;
}

/** The way on one level, as the data of a path. */
function pathOn(points, level) {
  let text = '';
  points.forEach(([x, y, on], index) => {
    if (on !== level) return;
    text += `${text !== '' && points[index - 1]?.[2] === level ? 'L' : 'M'}${x} ${y}`;
  });
  return text;
}

/** Where the way leaves a level, and for which. */
function changesOn(points, level) {
  const changes = [];
  for (let i = 1; i < points.length; i += 1) {
    const [before, after] = [points[i - 1], points[i]];
    if (before[2] === after[2]) continue;
    if (before[2] === level) changes.push({ at: before, level: endOfChange(points, i) });
  }
  return changes;
}

/** The level on which a change that begins before point `index` ends: the next one walked on. */
function endOfChange(points, index) {
  const rising = Math.sign(points[index][2] - points[index - 1][2]);
  let end = index;
  while (end + 1 < points.length && Math.sign(points[end + 1][2] - points[end][2]) === rising) end += 1;
  return points[end][2];
}
