// What marks the route of a walk: instructions, changes of level, start and destination.

/** Pixels from the middle of a disc to the point of an arrow beside it. */
const BESIDE_DISC = 29;
const LONGEST_BADGE = 30;

class RouteMarks {
  /** @param above where marks go that hide the names under them; `arrows` lies below the names */
  constructor(levels, above, arrows) {
    this.levels = levels;
    this.above = above;
    this.arrows = arrows;
  }

  /** Shows the marks that are still ahead, and the start. */
  show({ route, ahead }, level) {
    const ours = ([, , on]) => on === level;
    const arrows = route ? route.arrows.filter(({ at }) => ours(at) && leadsOver(ahead, at)) : [];
    const changes = route ? route.changes : [];
    const leaving = changes.filter(({ leaves }) => ours(leaves) && leadsOver(ahead, leaves));
    const arriving = changes.filter(({ arrives }) => ours(arrives) && leadsOver(ahead, arrives));
    this.draw({
      level,
      start: route ? onLevel(route.from, level) : null,
      arrows, leaving, arriving,
      end: onLevel(ahead.at(-1), level),
    });
  }

  /** Most seconds show what the one before has shown. */
  draw(marks) {
    const text = JSON.stringify(marks);
    if (text === this.shown) return;
    this.shown = text;
    const { start, arrows, leaving, arriving, end } = marks;
    const isAroundDisc = start !== null && leaving.some(({ leaves }) => Math.hypot(leaves[0] - start[0], leaves[1] - start[1]) < 0.5 * data.pixelsPerMetre);
    this.arrows.replaceChildren(...arrows.filter(({ symbol }) => !symbol).map(dartMark));
    this.above.replaceChildren(
      ...(start ? [startMark(start, isAroundDisc)] : []),
      ...arriving.map(({ arrives, symbol }) => discMark('change arrival', arrives, symbol, 9)),
      ...arrows.filter(({ symbol }) => symbol).map(({ at, symbol, text }) => discMark('arrow', at, symbol, 9, text)),
      ...leaving.map(({ leaves, symbol }) => discMark('change', leaves, symbol, 11)),
      ...(end ? [destinationMark(end)] : []));
    const badges = leaving.map(({ leaves, words }) => this.addBadge(leaves, words));
    this.levels.cover([
      ...badges,
      ...leaving.map(({ leaves }) => coverOf(leaves, -12, -12, 12, 12)),
      ...arriving.map(({ arrives }) => coverOf(arrives, -10, -10, 10, 10)),
      ...(start ? [coverOf(start, ...(isAroundDisc ? [-18, -18, 18, 18] : [-10, -10, 10, 10]))] : []),
      ...(end ? [coverOf(end, -12, -31, 12, 2)] : []),
    ]);
  }

  /** The badge that says where a change of level leads; gives what it covers. */
  addBadge(at, words) {
    const short = [...words].length > LONGEST_BADGE ? `${[...words].slice(0, LONGEST_BADGE - 1).join('')}…` : words;
    const text = drawn('text', { y: 15, 'text-anchor': 'middle' }, short);
    const rect = drawn('rect', { height: 22, rx: 11 });
    this.above.append(fixedMark('change', ...at.slice(0, 2), drawn('g', { class: 'badge', transform: 'translate(16 -11)' }, rect, text)));
    const width = Math.ceil(text.getComputedTextLength()) + 20;
    rect.setAttribute('width', width);
    text.setAttribute('x', width / 2);
    return coverOf(at, 14, -12, 18 + width, 12);
  }
}

/** What a mark at that place of the plan hides, in pixels from it. */
function coverOf([x, y], left, top, right, bottom) {
  return { x, y, left, top, right, bottom };
}

function dartMark({ at: [x, y], kind, heading, text, beside }) {
  const away = beside ? ` translate(0 ${-BESIDE_DISC})` : '';
  const mark = fixedMark(`arrow ${kind}`, x, y, drawn('path', { class: 'dart', d: 'M0 0L8 16L0 12L-8 16Z', transform: `rotate(${heading})${away}` }));
  if (text) mark.dataset.text = text;
  return mark;
}

/** A disc with the kind of a change of level. */
function discMark(className, [x, y], symbol, radius, text) {
  const glyph = [...byId(`glyph-${symbol}`).children].map((part) => part.cloneNode(true));
  const mark = fixedMark(`${className} ${symbol}`, x, y, drawn('circle', { class: 'disc', r: radius }), ...glyph);
  if (text) mark.dataset.text = text;
  return mark;
}

/** @param isAroundDisc whether a disc that stands there is to show within the ring */
function startMark([x, y], isAroundDisc = false) {
  const beside = isAroundDisc ? 8 : 0;
  return fixedMark('start', x, y, drawn('circle', { class: 'ring', r: 7 + beside }), drawn('circle', { r: 6.5 + beside }));
}

function destinationMark([x, y]) {
  return fixedMark('destination', x, y,
    drawn('path', { d: 'M0 0C-2.5 -7 -11 -11 -11 -19A11 11 0 1 1 11 -19C11 -11 2.5 -7 0 0Z' }),
    drawn('circle', { cy: -19, r: 4.2 }));
}
