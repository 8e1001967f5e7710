// Which part of the plan is in view, and the gestures and keys that change it.

/** Kept free around the plan when all of it is shown, in pixels. */
const EDGE = 24;
const MOST_PIXELS_PER_METRE = 160;
/** Pixels for a metre from which on marks have their full size; below, they would hide the plan. */
const ROOMY = 3;
/** Pointers that move less have tapped, in pixels. */
const TAP = 5;

class Viewport {
  constructor(host, view) {
    this.host = host;
    this.view = view;
    this.x = 0;
    this.y = 0;
    this.scale = 1;
    this.listeners = [];
    this.insets = { top: 0, right: 0, bottom: 0, left: 0 };
    this.pointers = new Map();
    // What is in view at the beginning: left, top, right, bottom.
    this.home = [0, 0, data.width, data.height];
    this.onTap = () => {};
    this.onMoved = () => {};
    this.onWheel = () => {};
    this.listenToPointers();
    host.addEventListener('wheel', (event) => this.wheel(event), { passive: false });
    host.addEventListener('dblclick', (event) => this.zoomAt(2, ...this.placeOf(event), true));
    this.measure();
    new ResizeObserver(() => this.resized()).observe(host);
  }

  /** Calls `listener` after every change. */
  onChange(listener) {
    this.listeners.push(listener);
  }

  measure() {
    this.width = this.host.clientWidth;
    this.height = this.host.clientHeight;
  }

  resized() {
    const [x, y] = this.centre();
    const before = this.width * this.height;
    this.measure();
    if (this.atHome) this.open();
    else if (before === 0 || !this.touched) this.fit(false);
    else this.centreOn(x, y, { animate: false });
  }

  /** The plan's point in the middle of what is not covered. */
  centre() {
    const [left, top] = this.middle();
    return this.toPlan(left, top);
  }

  middle() {
    const { top, right, bottom, left } = this.insets;
    return [(left + this.width - right) / 2, (top + this.height - bottom) / 2];
  }

  toPlan(left, top) {
    return [(left - this.x) / this.scale, (top - this.y) / this.scale];
  }

  toScreen(x, y) {
    return [x * this.scale + this.x, y * this.scale + this.y];
  }

  placeOf(event) {
    const box = this.host.getBoundingClientRect();
    return [event.clientX - box.left, event.clientY - box.top];
  }

  /** The scale at which a part of that size, or all of the plan, is in view. */
  fittingScale(across = data.width, down = data.height) {
    const { top, right, bottom, left } = this.insets;
    const width = Math.max(this.width - left - right - 2 * EDGE, 80);
    const height = Math.max(this.height - top - bottom - 2 * EDGE, 80);
    return Math.min(width / across, height / down, MOST_PIXELS_PER_METRE / data.pixelsPerMetre);
  }

  limited(scale) {
    const least = this.fittingScale() / 2;
    return clamp(scale, least, Math.max(MOST_PIXELS_PER_METRE / data.pixelsPerMetre, least));
  }

  /** Shows what is worth seeing first. */
  open() {
    const [left, top, right, bottom] = this.home;
    this.show((left + right) / 2, (top + bottom) / 2, this.fittingScale(right - left, bottom - top), false);
    this.touched = false;
    this.atHome = true;
  }

  fit(animate = true) {
    this.touched = false;
    this.show(data.width / 2, data.height / 2, this.fittingScale(), animate);
  }

  /** Brings the plan's point to the middle, at that scale. */
  show(x, y, scale, animate) {
    const [left, top] = this.middle();
    this.moveTo({ x: left - x * scale, y: top - y * scale, scale }, animate);
  }

  centreOn(x, y, { leastPixelsPerMetre = 0, animate = true } = {}) {
    this.touched = true;
    const scale = this.limited(Math.max(this.scale, leastPixelsPerMetre / data.pixelsPerMetre));
    this.show(x, y, scale, animate);
  }

  /** Whether the point is in the part of the view that is not covered, `margin` pixels inside. */
  sees(x, y, margin) {
    const [left, top] = this.toScreen(x, y);
    const free = this.insets;
    return left > free.left + margin && left < this.width - free.right - margin &&
      top > free.top + margin && top < this.height - free.bottom - margin;
  }

  panBy(right, down, animate = false) {
    this.touched = true;
    const from = animate && this.target ? this.target : this;
    this.moveTo({ x: from.x + right, y: from.y + down, scale: from.scale }, animate);
  }

  /** Zooms so that what is at that place of the view stays there. */
  zoomAt(factor, left, top, animate = false) {
    this.touched = true;
    const from = animate && this.target ? this.target : this;
    const scale = this.limited(from.scale * factor);
    const grown = scale / from.scale;
    this.moveTo({ x: left - (left - from.x) * grown, y: top - (top - from.y) * grown, scale }, animate);
  }

  moveTo(target, animate) {
    cancelAnimationFrame(this.frame);
    this.atHome = false;
    this.target = this.kept(target);
    if (!animate || calm.matches) {
      this.apply(this.target);
      this.rest();
      return;
    }
    this.host.dataset.moving = '';
    const start = { x: this.x, y: this.y, scale: this.scale, time: performance.now() };
    const advance = (now) => {
      const part = clamp((now - start.time) / 220, 0, 1);
      this.apply(between(start, this.target, 1 - (1 - part) ** 3));
      if (part < 1) this.frame = requestAnimationFrame(advance);
      else this.rest();
    };
    this.frame = requestAnimationFrame(advance);
  }

  /** The view is where it should be. Whoever waits for that sees it at the host's `data-moving`. */
  rest() {
    this.target = null;
    delete this.host.dataset.moving;
  }

  /** The target, moved so that some of the plan stays in view. */
  kept({ x, y, scale }) {
    const reach = 60;
    return {
      x: clamp(x, reach - data.width * scale, Math.max(this.width - reach, reach)),
      y: clamp(y, reach - data.height * scale, Math.max(this.height - reach, reach)),
      scale,
    };
  }

  apply({ x, y, scale }) {
    this.x = x;
    this.y = y;
    this.scale = scale;
    this.view.setAttribute('transform', `translate(${x.toFixed(2)} ${y.toFixed(2)}) scale(${scale.toFixed(5)})`);
    this.view.style.setProperty('--k', (1 / scale).toFixed(6));
    this.view.style.setProperty('--mark', clamp((scale * data.pixelsPerMetre) / ROOMY, 0.55, 1).toFixed(3));
    for (const listener of this.listeners) listener();
  }

  wheel(event) {
    event.preventDefault();
    const lines = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 30 : 1;
    const speed = event.ctrlKey ? 0.01 : 0.0022;
    this.zoomAt(Math.exp(clamp(-event.deltaY * lines * speed, -0.6, 0.6)), ...this.placeOf(event));
    this.onWheel();
  }

  listenToPointers() {
    const { host } = this;
    host.addEventListener('pointerdown', (event) => this.pressed(event));
    host.addEventListener('pointermove', (event) => this.moved(event));
    for (const end of ['pointerup', 'pointercancel']) host.addEventListener(end, (event) => this.lifted(event));
  }

  pressed(event) {
    if (event.pointerType === 'mouse' && event.button !== 0) return;
    this.pointers.set(event.pointerId, this.placeOf(event));
    if (this.pointers.size === 1) this.pressedAt = this.placeOf(event);
    else this.pressedAt = null;
  }

  moved(event) {
    const before = this.pointers.get(event.pointerId);
    if (!before) return;
    // The button was let go where nobody told this view of it.
    if (event.pointerType === 'mouse' && event.buttons === 0) {
      this.lifted(event);
      return;
    }
    const now = this.placeOf(event);
    if (this.pressedAt && Math.hypot(now[0] - this.pressedAt[0], now[1] - this.pressedAt[1]) < TAP) return;
    if (this.pressedAt) this.startDragging(event);
    const others = [...this.pointers].filter(([id]) => id !== event.pointerId).map(([, place]) => place);
    if (others.length === 0) this.panBy(now[0] - before[0], now[1] - before[1]);
    else this.pinch(others[0], before, now);
    this.pointers.set(event.pointerId, now);
  }

  startDragging(event) {
    this.pressedAt = null;
    this.host.setPointerCapture(event.pointerId);
    this.host.classList.add('dragging');
    this.onMoved();
  }

  pinch(held, before, now) {
    const spread = Math.hypot(before[0] - held[0], before[1] - held[1]);
    if (spread < 1) return;
    const middle = [(held[0] + now[0]) / 2, (held[1] + now[1]) / 2];
    this.panBy((now[0] - before[0]) / 2, (now[1] - before[1]) / 2);
    this.zoomAt(Math.hypot(now[0] - held[0], now[1] - held[1]) / spread, ...middle);
  }

  lifted(event) {
    if (!this.pointers.delete(event.pointerId)) return;
    if (this.pressedAt && event.type === 'pointerup') this.onTap(event);
    this.pressedAt = null;
    if (this.pointers.size === 0) this.host.classList.remove('dragging');
  }
}

function between(start, end, part) {
  const mix = (a, b) => a + (b - a) * part;
  return { x: mix(start.x, end.x), y: mix(start.y, end.y), scale: mix(start.scale, end.scale) };
}

/** The bar that says how long things are. */
function updateScaleBar(viewport) {
  const pixelsPerMetre = viewport.scale * data.pixelsPerMetre;
  const most = (narrow.matches ? 70 : 120) / pixelsPerMetre;
  const power = 10 ** Math.floor(Math.log10(most));
  const length = [5, 2, 1].map((digit) => digit * power).find((each) => each <= most) ?? power;
  const words = length >= 1000 ? `${length / 1000} km` : length >= 1 ? `${length} m` : `${Math.round(length * 100)} cm`;
  byId('scale-words').textContent = words;
  byId('scale-bar').style.width = `${length * pixelsPerMetre}px`;
}
