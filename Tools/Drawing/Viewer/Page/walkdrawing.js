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
    this.arrows = this.floor.appendChild(drawn('g'));
    const marks = byId('marks');
    this.routeMarks = new RouteMarks(levels, marks.appendChild(drawn('g')), this.arrows);
    this.offset = marks.appendChild(drawn('path', { class: 'offset' }));
    this.measured = marks.appendChild(measuredMark());
    this.snapped = marks.appendChild(snappedMark());
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
    const snapped = onLevel(snappedBeside(second), level);
    const shown = snapped ?? person;
    this.offset.setAttribute('d', shown && raw ? `M${raw[0]} ${raw[1]}L${shown[0]} ${shown[1]}` : '');
    placeMark(this.measured, raw);
    placeMark(this.snapped, snapped);
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
    this.routeMarks.show(second, level);
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

function snappedMark() {
  return drawn('g', { class: 'snapped-place', id: 'snapped', style: 'display:none' },
    drawn('g', { class: 'fixed' }, drawn('circle', { r: 6 })));
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
