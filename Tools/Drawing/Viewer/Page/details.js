// What is said about a thing, in the panel and beside the pointer.

const KINDS = { connection: 'Way to another level', node: 'Node', edge: 'Edge', place: 'Place', room: 'Room' };

/** A thing in words: a title, and pairs of a heading and what stands under it. */
function describe(thing, things) {
  const rows = { place: placeRows, connection: connectionRows, node: nodeRows, edge: edgeRows, room: roomRows }[thing.kind](thing, things);
  return { title: titleOf(thing), rows: [...rows, ['Level', levelTitle(thing.level)]] };
}

function titleOf(thing) {
  if (thing.kind === 'node') return `Node ${thing.id}`;
  if (thing.kind === 'edge') return `Edge ${thing.from} – ${thing.to}`;
  if (thing.kind === 'connection') return capital(words(thing.type) || KINDS.connection);
  return thing.name || capital(words(thing.category)) || KINDS[thing.kind];
}

function placeRows(thing, things) {
  const node = nearest(things.on(thing.level).filter((each) => each.kind === 'node'), thing.x, thing.y, Infinity);
  const rows = thing.category ? [['Kind', capital(words(thing.category))]] : [];
  if (!node) return rows;
  const apart = Math.hypot(node.x - thing.x, node.y - thing.y) / data.pixelsPerMetre;
  return [...rows, ['Nearest node', `${node.id}, ${metres(apart)} away`]];
}

function connectionRows(thing, things) {
  return [
    ['Leads to', thing.levels.map(levelTitle).join(', ') || 'nowhere'],
    ['Node', thing.id],
    ...neighbourRows(thing.id, thing.level, things),
  ];
}

function nodeRows(thing, things) {
  return neighbourRows(thing.id, thing.level, things);
}

function neighbourRows(id, level, things) {
  const edges = things.edgesOf(id, level);
  const list = edges.slice(0, 8).map((edge) => `${edge.from === id ? edge.to : edge.from} (${metres(edge.distance)})`);
  if (edges.length > list.length) list.push(`and ${edges.length - list.length} more`);
  return [['Edges to', list.join(', ') || 'nothing on this level']];
}

function edgeRows(thing) {
  const rows = [['Distance', metres(thing.distance)]];
  if (thing.type) rows.push(['Kind', capital(words(thing.type))]);
  if (thing.oneway) rows.push(['One way', `from ${thing.from} to ${thing.to}`]);
  if (!thing.barrierFree) rows.push(['Step-free', 'no']);
  return rows;
}

function roomRows(thing) {
  return thing.name && thing.category ? [['Kind', capital(words(thing.category))]] : [];
}

function words(name) {
  return (name ?? '').replace(/[._]+/g, ' ').trim();
}

function capital(text) {
  return text.charAt(0).toUpperCase() + text.slice(1);
}

class Details {
  constructor(things, viewport) {
    this.things = things;
    this.viewport = viewport;
    this.selected = null;
    this.hovered = null;
    this.marks = byId('marks').appendChild(drawn('g', { id: 'pointed' }));
    this.render();
  }

  hover(thing, left, top) {
    this.moveTip(thing, left, top);
    if (isSameThing(thing, this.hovered)) return;
    this.hovered = thing;
    this.render();
  }

  select(thing, { say = true } = {}) {
    this.selected = thing;
    this.hovered = null;
    this.render();
    if (thing && say) announce(this.sentence(thing), 'spoken');
  }

  /** Forgets what is not on the level any more. */
  levelChanged(level) {
    this.hovered = null;
    byId('tip').hidden = true;
    if (this.selected && this.selected.level !== level) this.selected = null;
    this.render();
  }

  sentence(thing) {
    const { title, rows } = describe(thing, this.things);
    return `${title}. ${rows.map(([heading, text]) => `${heading}: ${text}`).join('. ')}`;
  }

  render() {
    const thing = this.hovered ?? this.selected;
    const panel = byId('details');
    panel.classList.toggle('named', thing !== null);
    panel.hidden = narrow.matches && thing === null;
    const body = byId('details-body');
    if (thing) {
      const { title, rows } = describe(thing, this.things);
      byId('details-title').textContent = title;
      body.replaceChildren(element('dl', {}, ...rows.flatMap(([heading, text]) => [
        element('dt', {}, heading), element('dd', { dir: 'auto' }, text)])));
    } else {
      byId('details-title').textContent = 'Details';
      body.replaceChildren(element('p', { class: 'hint' }, 'Point at something on the map, or select a place.'));
    }
    this.highlight();
  }

  highlight() {
    this.room?.classList.remove('hot-room');
    this.room = null;
    this.marks.replaceChildren();
    for (const thing of new Set([this.selected, this.hovered])) if (thing) this.mark(thing);
  }

  mark(thing) {
    if (thing.kind === 'room') {
      this.room = thing.element;
      this.room.classList.add('hot-room');
    } else if (thing.line) {
      const [x1, y1, x2, y2] = thing.line;
      this.marks.append(drawn('line', { class: 'hot', x1, y1, x2, y2 }));
    } else {
      const radius = thing.kind === 'node' ? 7 : 12;
      this.marks.append(fixedMark('spot', thing.x, thing.y,
        drawn('circle', { class: 'halo', r: radius }), drawn('circle', { r: radius })));
    }
  }

  moveTip(thing, left, top) {
    const tip = byId('tip');
    tip.hidden = thing === null;
    if (!thing) return;
    const { title, rows } = describe(thing, this.things);
    const [heading, text] = rows[0];
    tip.replaceChildren(element('b', { dir: 'auto' }, title),
      heading === 'Level' ? '' : element('span', {}, `${heading}: ${text}`));
    const x = clamp(left + 16, 8, this.viewport.width - tip.offsetWidth - 8);
    const below = top + 20 + tip.offsetHeight < this.viewport.height;
    tip.style.transform = `translate(${x}px, ${below ? top + 18 : top - tip.offsetHeight - 12}px)`;
  }
}

function isSameThing(a, b) {
  return a === b || (a !== null && b !== null && a.element === b.element);
}

/** A mark that keeps its size at every scale. */
function fixedMark(className, x, y, ...children) {
  return drawn('g', { class: className, transform: `translate(${x} ${y})` }, drawn('g', { class: 'fixed' }, ...children));
}
