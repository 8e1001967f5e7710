// The levels: which one is shown, the switch, and which labels there is room for.

class Levels {
  constructor(viewport) {
    this.groups = new Map();
    this.labels = new Map();
    this.buttons = new Map();
    this.listeners = [];
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
    for (const { level, name, title } of highestFirst) {
      const button = element('button', { type: 'button', title, 'aria-label': title, 'data-level': level }, shortName(level, name));
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
    this.current = level;
    for (const [number, group] of this.groups) group.classList.toggle('shown', number === level);
    for (const [number, button] of this.buttons) {
      if (number === level) button.setAttribute('aria-current', 'true');
      else button.removeAttribute('aria-current');
    }
    this.buttons.get(level)?.scrollIntoView({ block: 'nearest' });
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

  chooseLabels(scale) {
    this.scale = scale;
    for (const label of this.labels.get(this.current) ?? []) {
      const shown = label.zoom <= scale + 1e-6;
      if (shown === label.shown) continue;
      label.shown = shown;
      label.element.style.display = shown ? '' : 'none';
    }
  }
}

/** The badges that say where the route goes on are worth their place at every scale. */
function labelsOf(group) {
  return [...group.querySelectorAll('[data-zoom]:not(.badge)')].map((label) => ({
    element: label, zoom: Number(label.dataset.zoom), shown: true,
  }));
}

/** What a button has room for: a short name, or the number. */
function shortName(level, name) {
  return name && [...name].length <= 3 ? name : String(level);
}
