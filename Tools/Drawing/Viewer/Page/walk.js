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
    begun: second.begun || moment.operation === 'route',
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

/** Metres that nobody walks in a second; and between the end of one guidance and the next. */
const LEAP = 8;
const ANEW = 3;

/** The stretches that were walked, each on one level: the seconds, and where the person was. */
function trailsOf(seconds) {
  const trails = [];
  seconds.forEach((second, index) => {
    const person = personAt(second);
    if (!person) return;
    const [x, y, level] = person;
    const last = trails.at(-1);
    const [, fromX, fromY] = last?.points.at(-1) ?? [];
    const most = (second.begun ? ANEW : LEAP) * data.pixelsPerMetre;
    if (last?.level === level && Math.hypot(x - fromX, y - fromY) <= most) last.points.push([index, x, y]);
    else trails.push({ level, points: [[index, x, y]] });
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

/** Where snapping put the person, if that is not where they are on the route. */
function snappedBeside(second) {
  const [person, snapped] = [personAt(second), second.snapped];
  if (!person || !snapped) return null;
  const apart = Math.hypot(person[0] - snapped[0], person[1] - snapped[1]);
  return person[2] !== snapped[2] || apart > 0.5 * data.pixelsPerMetre ? snapped : null;
}

/** Whether the way that is left leads over that place. */
function leadsOver(ahead, [x, y, level]) {
  const near = 0.7 * data.pixelsPerMetre;
  return ahead.some((point, index) => {
    const before = ahead[index - 1] ?? point;
    // Changes of level end where the way goes on.
    if (point[2] !== level || before[2] !== level) return point[2] === level && Math.hypot(point[0] - x, point[1] - y) < near;
    return distanceToLine(x, y, [before[0], before[1], point[0], point[1]]) < near;
  });
}
