// Plays the walk: the slider, the clock, the instruction of the moment.

class Player {
  /** @param onShow called with the index of the second that is shown */
  constructor(walk, onShow) {
    this.walk = walk;
    this.onShow = onShow;
    this.slider = byId('slider');
    this.last = walk.seconds.length - 1;
    this.slider.max = this.last;
    this.fillEvents();
    this.slider.addEventListener('input', () => this.show(Number(this.slider.value)));
    this.slider.addEventListener('keydown', (event) => this.sliderKey(event));
    byId('play').addEventListener('click', () => this.toggle());
    byId('step-back').addEventListener('click', () => this.step(-1));
    byId('step-forward').addEventListener('click', () => this.step(1));
    byId('speed').addEventListener('change', () => this.playing && this.play());
    byId('player').hidden = false;
  }

  get index() {
    return Number(this.slider.value);
  }

  get playing() {
    return this.timer !== undefined;
  }

  show(index) {
    const shown = clamp(index, 0, this.last);
    this.slider.value = shown;
    const second = this.walk.at(shown);
    this.slider.setAttribute('aria-valuetext', [spokenTime(second.second), second.told].filter(Boolean).join(': '));
    byId('clock').replaceChildren(clockTime(second.second), element('span', { class: 'of' }, ` / ${clockTime(this.walk.at(this.last).second)}`));
    byId('step-back').disabled = shown === 0;
    byId('step-forward').disabled = shown === this.last;
    this.onShow(shown);
  }

  step(direction) {
    this.pause();
    this.show(this.index + direction);
  }

  toggle() {
    if (this.playing) this.pause();
    else this.play();
  }

  play() {
    this.pause();
    if (this.index === this.last) this.show(0);
    const pause = 1000 / Number(byId('speed').value);
    this.timer = setInterval(() => this.advance(), pause);
    document.documentElement.style.setProperty('--glide', `${pause}ms`);
    this.sayPlaying(true);
  }

  pause() {
    clearInterval(this.timer);
    this.timer = undefined;
    document.documentElement.style.removeProperty('--glide');
    this.sayPlaying(false);
  }

  advance() {
    this.show(this.index + 1);
    if (this.index === this.last) this.pause();
  }

  sayPlaying(playing) {
    const name = playing ? 'Pause' : 'Play';
    byId('play').setAttribute('aria-label', name);
    byId('play').title = `${name} (space)`;
    byId('play-icon').setAttribute('href', playing ? '#icon-pause' : '#icon-play');
  }

  sliderKey(event) {
    if (event.key === ' ') {
      this.toggle();
      event.preventDefault();
      event.stopPropagation();
    } else if (event.key.startsWith('Arrow') || ['Home', 'End', 'PageUp', 'PageDown'].includes(event.key)) {
      this.pause();
      event.stopPropagation();
    }
  }

  fillEvents() {
    const events = this.walk.events();
    const pictures = { begun: 'straight', rerouted: 'turn-back', denied: 'blocked', arrived: 'destination', error: 'warning' };
    byId('ticks').append(...events.filter(({ kind }) => kind !== 'begun').map(({ index, kind }) => {
      const tick = element('i', { class: kind });
      tick.style.left = `${(100 * index) / Math.max(this.last, 1)}%`;
      return tick;
    }));
    byId('events').append(...events.map(({ index, kind, text }) => {
      const button = element('button', { type: 'button' },
        element('span', { class: 'when' }, clockTime(this.walk.at(index).second)), icon(pictures[kind]),
        element('span', { class: 'what', dir: 'auto' }, text));
      button.addEventListener('click', () => {
        this.pause();
        this.show(index);
      });
      return element('li', { class: kind }, button);
    }));
    byId('events').addEventListener('keydown', (event) => moveThroughList(event, byId('events')));
    byId('events-part').hidden = events.length === 0;
  }
}

/** The banner over the map, and what of it is read out. */
class Banner {
  constructor() {
    this.heard = '';
  }

  show(second) {
    const banner = byId('banner');
    const denied = second.denials.length > 0;
    const told = second.told || (denied ? 'jump denied' : '');
    banner.hidden = told === '';
    byId('told').textContent = told;
    const left = leftWords(second, denied && second.told !== '');
    byId('left').textContent = left;
    byId('left').hidden = left === '';
    banner.classList.toggle('arrived', second.arrived);
    banner.classList.toggle('blocked', denied && !second.arrived);
    const picture = second.arrived ? 'destination' : denied ? 'blocked' : pictureOf(told);
    byId('banner-icon').setAttribute('href', `#icon-${picture}`);
    this.announce(second, denied);
  }

  /** Distances change every second; only what is new about an instruction is worth hearing. */
  announce(second, denied) {
    const sense = `${second.arrived}|${denied}|${second.told.replace(/\d+ m\b/g, '')}`;
    if (sense === this.heard) return;
    this.heard = sense;
    announce([denied ? 'Jump denied.' : '', second.told].filter(Boolean).join(' '));
  }
}

function leftWords(second, denied) {
  const parts = [];
  if (denied) parts.push('Jump denied');
  if (second.route) parts.push(`${metres(second.remaining)} to ${second.route.destination}`);
  if (second.route?.direct) parts.push('straight line, no mapped way');
  return parts.join(' · ');
}
