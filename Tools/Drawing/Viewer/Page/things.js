// The things on a level that can be pointed at: places, ways to other levels, nodes, edges, rooms.

/** How near one must point, in pixels; marks count before nodes, and these before edges. */
const REACH = { mark: 14, node: 9, edge: 7 };

class Things {
  constructor(levels) {
    this.levels = levels;
    this.known = new Map();
  }

  /** The things of a level; looked up in the drawing when first asked for. */
  on(level) {
    if (!this.known.has(level)) {
      const group = this.levels.groups.get(level);
      this.known.set(level, group ? thingsIn(group, level) : []);
    }
    return this.known.get(level);
  }

  /** What is at that place of the view; null when there is nothing. */
  at(viewport, left, top, target) {
    const [x, y] = viewport.toPlan(left, top);
    const things = this.on(this.levels.current);
    for (const [rank, reach] of Object.entries(REACH)) {
      const found = nearest(things.filter((thing) => thing.rank === rank), x, y, reach / viewport.scale);
      if (found) return found;
    }
    return roomOf(target, x, y, this.levels.current);
  }

  /** The nearest thing from the point in that direction, within 60 degrees to either side. */
  beyond(x, y, [right, down], withGraph, except) {
    let best = null;
    let least = Infinity;
    for (const thing of this.named(withGraph)) {
      if (isSameThing(thing, except)) continue;
      const along = (thing.x - x) * right + (thing.y - y) * down;
      const aside = Math.abs((thing.x - x) * down - (thing.y - y) * right);
      const cost = along + 2 * aside;
      if (along > 0.01 && aside <= along * 1.8 && cost < least) [best, least] = [thing, cost];
    }
    return best;
  }

  /** What the keyboard goes through on the current level. */
  named(withGraph) {
    const things = this.on(this.levels.current);
    return withGraph ? things : things.filter(({ kind }) => kind !== 'node' && kind !== 'edge');
  }

  /** The next thing (1) or the one before (-1), from west to east; of none, the first or the last. */
  following(thing, step, withGraph) {
    const row = [...this.named(withGraph)].sort((a, b) => a.x - b.x || a.y - b.y);
    const index = row.findIndex((each) => isSameThing(each, thing));
    if (index < 0) return row.at(step > 0 ? 0 : -1) ?? null;
    return row[index + step] ?? null;
  }

  place(name, [x, y, level]) {
    return this.on(level).find((thing) => thing.kind === 'place' && thing.name === name &&
      Math.hypot(thing.x - x, thing.y - y) < 0.1);
  }

  edgesOf(id, level) {
    return this.on(level).filter((thing) => thing.kind === 'edge' && (thing.from === id || thing.to === id));
  }
}

function thingsIn(group, level) {
  const all = (selector, make) => [...group.querySelectorAll(selector)].map((found) => ({ level, element: found, ...make(found) }));
  const places = all('.place[data-place]', placeOf);
  return [
    ...places,
    ...all('.connection[data-node]', connectionOf),
    ...all('.node[data-node]', nodeOf),
    ...all('.edge[data-edge]', edgeOf),
    ...all('.room', roomWithMiddle).filter((room) => !isTold(room, places)),
  ];
}

function positionOf(mark) {
  const [, x, y] = /translate\(\s*([-\d.e]+)[ ,]+([-\d.e]+)/.exec(mark.getAttribute('transform')) ?? [0, 0, 0];
  return { x: Number(x), y: Number(y) };
}

function placeOf(mark) {
  return { rank: 'mark', kind: 'place', name: mark.dataset.place, category: mark.dataset.kind, ...positionOf(mark) };
}

function connectionOf(mark) {
  const levels = (mark.dataset.levels ?? '').split(',').filter((each) => each !== '').map(Number);
  return { rank: 'mark', kind: 'connection', id: mark.dataset.node, type: mark.dataset.kind, levels, ...positionOf(mark) };
}

function nodeOf(mark) {
  return { rank: 'node', kind: 'node', id: mark.dataset.node, ...positionOf(mark) };
}

function edgeOf(line) {
  const [x1, y1, x2, y2] = ['x1', 'y1', 'x2', 'y2'].map((each) => Number(line.getAttribute(each)));
  const [, from, to] = /^(-?\d+)-(-?\d+)$/.exec(line.dataset.edge) ?? [];
  return {
    rank: 'edge', kind: 'edge', from, to, distance: Number(line.dataset.distance), type: line.dataset.kind,
    oneway: 'oneway' in line.dataset, barrierFree: line.dataset.barrierFree !== 'no',
    x: (x1 + x2) / 2, y: (y1 + y2) / 2, line: [x1, y1, x2, y2],
  };
}

function roomOf(target, x, y, level) {
  const room = target?.closest?.('.room');
  if (!room || !(room.dataset.name || room.dataset.category)) return null;
  return { ...roomAt(room, x, y), level, element: room };
}

function roomAt(room, x, y) {
  return { rank: 'room', kind: 'room', name: room.dataset.name ?? '', category: room.dataset.category ?? '', x, y };
}

function roomWithMiddle(room) {
  const rings = ringsOf(room);
  return { ...roomAt(room, ...middleOfRings(rings)), rings };
}

/** Whether a place says all about the room already: one in it of its name, or any when it has none. */
function isTold({ name, category, rings }, places) {
  if (name === '' && category === '') return true;
  return places.some((place) => (name === '' || place.name === name) && isInRings(rings, place.x, place.y));
}

/** A room's outline and holes, each a list of points. */
function ringsOf(room) {
  const rings = (room.getAttribute('d') ?? '').split('M').slice(1);
  return rings.map((ring) => ring.replace('Z', '').split('L').map((point) => point.trim().split(/[ ,]+/).map(Number)));
}

/** Where the outlines cross the horizontal at `y`, from left to right. */
function crossings(rings, y) {
  return rings.flatMap((ring) => ring.flatMap(([x1, y1], i) => {
    const [x2, y2] = ring[(i + 1) % ring.length];
    return (y1 > y) === (y2 > y) ? [] : [x1 + ((y - y1) / (y2 - y1)) * (x2 - x1)];
  })).sort((a, b) => a - b);
}

function isInRings(rings, x, y) {
  return crossings(rings, y).filter((crossing) => crossing < x).length % 2 === 1;
}

/** A point well inside: the middle of the widest stretch at half the height. */
function middleOfRings(rings) {
  const heights = (rings[0] ?? [[0, 0]]).map(([, y]) => y);
  const y = (Math.min(...heights) + Math.max(...heights)) / 2;
  const along = crossings(rings, y);
  let [widest, x] = [0, (rings[0] ?? [[0, 0]])[0][0]];
  for (let i = 0; i + 1 < along.length; i += 2) {
    if (along[i + 1] - along[i] > widest) [widest, x] = [along[i + 1] - along[i], (along[i] + along[i + 1]) / 2];
  }
  return [x, y];
}

function nearest(things, x, y, reach) {
  let best = null;
  let least = reach;
  for (const thing of things) {
    const distance = thing.line ? distanceToLine(x, y, thing.line) : Math.hypot(thing.x - x, thing.y - y);
    if (distance <= least) [best, least] = [thing, distance];
  }
  return best;
}

function distanceToLine(x, y, [x1, y1, x2, y2]) {
  const [right, down] = [x2 - x1, y2 - y1];
  const squared = right * right + down * down;
  const part = squared > 0 ? clamp(((x - x1) * right + (y - y1) * down) / squared, 0, 1) : 0;
  return Math.hypot(x - x1 - part * right, y - y1 - part * down);
}
