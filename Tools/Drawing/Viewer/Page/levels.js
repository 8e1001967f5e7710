// The levels: which one is shown, the switch, and which labels there is room for.

class Levels {
  constructor(viewport) {
    this.groups = new Map();
    this.labels = new Map();
    this.buttons = new Map();
    this.listeners = [];
    this.covers = [];
    for (const group of document.querySelectorAll('#levels > .level')) {
      const level = Number(group.dataset.level);
      this.groups.set(level, group);
      this.labels.set(level, labelsOf(group));
    }
    this.fillSwitch();
    viewport.onChange(() => this.chooseLabels(viewport.scale));
    this.scale = 1;
  }

  /** Calls `listener(level, byPerson)` when another level is shown. */
  onChange(listener) {
    this.listeners.push(listener);
  }

  fillSwitch() {
    const highestFirst = [...data.levels].reverse();
    for (const { level, number, name, title } of highestFirst) {
      const button = element('button', { type: 'button', title, 'aria-label': title, 'data-level': level }, shortName(number, name));
      button.addEventListener('click', () => this.show(level, true));
      this.buttons.set(level, button);
      byId('level-switch').append(button);
    }
    byId('level-switch').hidden = data.levels.length === 0;
  }

  has(level) {
    return this.groups.has(level);
  }

  /** @param byPerson whether somebody asked for this level rather than for what is on it */
  show(level, byPerson = false) {
    if (!this.has(level)) return;
    const same = level === this.current;
    if (!same) this.covers = [];
    this.current = level;
    for (const [number, group] of this.groups) group.classList.toggle('shown', number === level);
    for (const [number, button] of this.buttons) {
      if (number === level) button.setAttribute('aria-current', 'true');
      else button.removeAttribute('aria-current');
    }
    scrollWithin(byId('level-switch'), this.buttons.get(level));
    byId('level-title').textContent = levelTitle(level);
    this.chooseLabels(this.scale);
    if (!same && byPerson) announce(levelTitle(level), 'spoken');
    for (const listener of this.listeners) listener(level, byPerson);
  }

  /** The next level above (1) or below (-1). */
  step(direction) {
    const numbers = data.levels.map((each) => each.level);
    const next = numbers[numbers.indexOf(this.current) + direction];
    if (next !== undefined) this.show(next, true);
  }

  /** Marks the levels that the route touches. */
  markRoute(levels) {
    for (const [number, button] of this.buttons) {
      const marked = levels.has(number);
      button.querySelector('.way')?.remove();
      if (marked) button.append(element('span', { class: 'way' }));
      button.setAttribute('aria-label', levelTitle(number) + (marked ? ', on the route' : ''));
    }
  }

  /** Puts what is drawn on the floor below the marks and labels of the level. */
  putUnderMarks(drawing) {
    const group = this.groups.get(this.current);
    if (!group || drawing.parentNode === group) return;
    group.insertBefore(drawing, group.querySelector(':scope > .connection, :scope > .place, :scope > .label'));
  }

  /** Hides the labels under these marks of the current level: `{x, y, left, top, right, bottom}`. */
  cover(covers) {
    this.covers = covers;
    this.chooseLabels(this.scale);
  }

  chooseLabels(scale) {
    this.scale = scale;
    for (const label of this.labels.get(this.current) ?? []) {
      const shown = label.zoom <= scale + 1e-6 && !this.isCovered(label, scale);
      if (shown === label.shown) continue;
      label.shown = shown;
      label.element.style.display = shown ? '' : 'none';
    }
  }

  /** Both have their place on the plan, and around it a box that is as large at every scale. */
  isCovered(label, scale) {
    if (this.covers.length === 0 || !label.isText) return false;
    return this.covers.some(({ x, y, left, top, right, bottom }) => {
      const [across, down] = [(label.x - x) * scale, (label.y - y) * scale];
      // Measuring takes time, and far labels need none.
      if (Math.abs(across) > 500 || Math.abs(down) > 150) return false;
      const box = boxOf(label);
      return across + box.x < right && across + box.x + box.width > left &&
        down + box.y < bottom && down + box.y + box.height > top;
    });
  }
}

/** What is shown from some scale on, or unless other marks lie upon it. The badges that say where
 *  the route goes on, and the names of its ends, are worth their place at every scale. */
function labelsOf(group) {
  return [...group.querySelectorAll(':scope > .label:not(.end), :scope > [data-zoom]:not(.badge)')].map((label) => ({
    element: label, zoom: Number(label.dataset.zoom ?? 1), shown: true, isText: label.classList.contains('label'), ...positionOf(label),
  }));
}

/** The box of a label's text around its place, in pixels; only what is drawn can be measured. */
function boxOf(label) {
  if (!label.box) {
    label.element.style.display = '';
    const box = label.element.querySelector('.fixed').getBBox();
    label.element.style.display = label.shown ? '' : 'none';
    if (box.width === 0) return box;
    label.box = box;
  }
  return label.box;
}

/** What a button has room for: a short name, or the number. */
function shortName(number, name) {
  return name && [...name].length <= 3 ? name : number;
}
