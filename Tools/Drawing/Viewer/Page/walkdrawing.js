// The walk on the plan.

class WalkDrawing {
  constructor(walk, levels) {
    this.walk = walk;
    this.levels = levels;
    // What lies on the floor; marks and labels stay readable above it.
    this.floor = drawn('g', { id: 'floor-of-walk' });
    const path = (className) => this.floor.appendChild(drawn('path', { class: className }));
    this.measuredTrail = path('measured-trail');
    this.trail = path('trail');
    this.casing = path('route casing');
    this.line = path('route line');
    const marks = byId('marks');
    this.ends = marks.appendChild(drawn('g'));
    this.offset = marks.appendChild(drawn('path', { class: 'offset' }));
    this.measured = marks.appendChild(measuredMark());
    this.jumps = marks.appendChild(drawn('g'));
    this.person = marks.appendChild(personMark());
  }

  /** Draws what is on the level at that second. */
  show(index, level) {
    const second = this.walk.at(index);
    this.levels.putUnderMarks(this.floor);
    this.showTrails(index, level);
    this.showRoute(second, level);
    this.showJumps(index, level);
    const person = onLevel(personAt(second), level);
    const raw = second.denials.length === 0 ? onLevel(second.raw, level) : null;
    this.offset.setAttribute('d', person && raw ? `M${raw[0]} ${raw[1]}L${person[0]} ${person[1]}` : '');
    placeMark(this.measured, raw);
    placeMark(this.person, person);
    this.turnPerson(second.ahead, level);
  }

  showTrails(index, level) {
    let text = '';
    for (const trail of this.walk.trails) {
      const walked = trail.level === level ? trail.points.filter(([at]) => at <= index) : [];
      text += walked.map(([, x, y], i) => `${i === 0 ? 'M' : 'L'}${x} ${y}`).join('');
    }
    this.trail.setAttribute('d', text);
    const measured = this.walk.seconds.slice(0, index + 1).map(({ raw }) => onLevel(raw, level));
    // Lines without length are dots.
    this.measuredTrail.setAttribute('d', measured.map((raw) => (raw ? `M${raw[0]} ${raw[1]}h0` : '')).join(''));
  }

  showRoute(second, level) {
    const way = pathOn(second.ahead, level);
    this.casing.setAttribute('d', way);
    this.line.setAttribute('d', way);
    this.line.classList.toggle('direct', second.route?.direct ?? false);
    this.ends.replaceChildren(...changesOn(second.ahead, level).map(changeMark));
    const end = onLevel(second.ahead.at(-1), level);
    if (end) this.ends.append(destinationMark(end));
  }

  showJumps(index, level) {
    this.jumps.replaceChildren();
    for (let i = 0; i <= index; i += 1) {
      for (const { from, to } of this.walk.at(i).denials) {
        if (onLevel(to, level)) this.jumps.append(...jumpMarks(from, to, i < index));
      }
    }
  }

  turnPerson(ahead, level) {
    const next = ahead.find(([x, y, on]) => on === level && Math.hypot(x - ahead[0][0], y - ahead[0][1]) > 0.3 * data.pixelsPerMetre);
    const nose = this.person.querySelector('.nose');
    nose.style.display = next ? '' : 'none';
    if (!next) return;
    const degrees = (Math.atan2(next[1] - ahead[0][1], next[0] - ahead[0][0]) * 180) / Math.PI + 90;
    nose.setAttribute('transform', `rotate(${degrees.toFixed(1)})`);
  }
}

function onLevel(position, level) {
  return position && position[2] === level ? position : null;
}

/** Moves a mark there; its way is smooth while the walk is played. */
function placeMark(mark, position) {
  const hidden = mark.style.display === 'none';
  mark.style.display = position ? '' : 'none';
  if (!position) return;
  // What appears does not come gliding from where it was last seen.
  if (hidden) mark.style.transition = 'none';
  mark.style.transform = `translate(${position[0]}px, ${position[1]}px)`;
  if (hidden) {
    mark.getBoundingClientRect();
    mark.style.transition = '';
  }
}

function personMark() {
  return drawn('g', { class: 'person', id: 'person', style: 'display:none' }, drawn('g', { class: 'fixed' },
    drawn('circle', { class: 'halo', r: 17 }),
    drawn('path', { class: 'nose', d: 'M0 -17L7 -7A10 10 0 0 0 -7 -7Z' }),
    drawn('circle', { class: 'body', r: 9 })));
}

function measuredMark() {
  return drawn('g', { class: 'measured', id: 'measured', style: 'display:none' },
    drawn('g', { class: 'fixed' }, drawn('circle', { r: 5.5 })));
}

function destinationMark([x, y]) {
  return fixedMark('destination', x, y,
    drawn('path', { d: 'M0 0C-2.5 -7 -11 -11 -11 -19A11 11 0 1 1 11 -19C11 -11 2.5 -7 0 0Z' }),
    drawn('circle', { cy: -19, r: 4.2 }));
}

/** The badge where the way goes on on another level. */
function changeMark({ at: [x, y], level }, index, changes) {
  const up = level > changes[index].at[2];
  const text = `${up ? '↑' : '↓'} Level ${level}`;
  const width = 20 + 7.2 * text.length;
  return fixedMark('change', x, y,
    drawn('circle', { class: 'disc', r: 11 }),
    drawn('path', { class: 'glyph', d: up ? 'M0 5V-5M-4.5 -1L0 -5.5L4.5 -1' : 'M0 -5V5M-4.5 1L0 5.5L4.5 1' }),
    drawn('g', { class: 'badge', transform: 'translate(16 -11)' },
      drawn('rect', { width, height: 22, rx: 11 }),
      drawn('text', { x: width / 2, y: 15, 'text-anchor': 'middle' }, text)));
}

/** A jump that was denied: where the position was held, and the place that it came from. */
function jumpMarks(from, to, past) {
  const marks = [];
  if (from && from[2] === to[2] && !past) {
    marks.push(drawn('path', { class: 'jump', d: `M${from[0]} ${from[1]}L${to[0]} ${to[1]}` }));
  }
  marks.push(fixedMark(past ? 'denied past' : 'denied', to[0], to[1],
    drawn('circle', { r: 9 }), drawn('path', { d: 'M-4 -4L4 4M4 -4L-4 4' })));
  return marks;
}

/** What the marks of a walk mean, line by line. */
function legend() {
  const line = (words, className, ...shapes) => element('p', {},
    drawn('svg', { class: 'plan', width: 32, height: 24, viewBox: '-16 -12 32 24', 'aria-hidden': 'true' },
      drawn('g', { class: className }, ...shapes)), words);
  return [
    line('Position on the map', 'person', drawn('circle', { class: 'body', r: 8 })),
    line('Position as measured', 'measured', drawn('circle', { r: 5.5 })),
    line('Way that was walked', '', drawn('path', { class: 'trail', d: 'M-14 0H14' })),
    line('Way ahead', '', drawn('path', { class: 'route line', d: 'M-12 0H12' })),
    line('Jump that was denied', 'denied', drawn('circle', { r: 9 }), drawn('path', { d: 'M-4 -4L4 4M4 -4L-4 4' })),
  ];
}
