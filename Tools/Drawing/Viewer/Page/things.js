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
    for (const thing of this.on(this.levels.current)) {
      if (thing === except || (thing.rank !== 'mark' && !withGraph)) continue;
      const along = (thing.x - x) * right + (thing.y - y) * down;
      const aside = Math.abs((thing.x - x) * down - (thing.y - y) * right);
      const cost = along + 2 * aside;
      if (along > 0.01 && aside <= along * 1.8 && cost < least) [best, least] = [thing, cost];
    }
    return best;
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
  return [
    ...all('.place[data-place]', placeOf),
    ...all('.connection[data-node]', connectionOf),
    ...all('.node[data-node]', nodeOf),
    ...all('.edge[data-edge]', edgeOf),
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
  return { rank: 'room', kind: 'room', name: room.dataset.name ?? '', category: room.dataset.category ?? '', level, x, y, element: room };
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
