// The route in words.

/** The first of these that an instruction says gives its picture. */
const PICTURES = [
  [/\byou (have )?reach/, 'destination'],
  [/\b(lift|elevator)\b/, 'lift'],
  [/\b(up|climb)\b/, 'up'],
  [/\bdown\b/, 'down'],
  [/\bturn left\b/, 'left'],
  [/\bturn right\b/, 'right'],
  [/\bbear left\b/, 'bear-left'],
  [/\bbear right\b/, 'bear-right'],
  [/\bturn back\b/, 'turn-back'],
];

function pictureOf(instruction) {
  return PICTURES.find(([words]) => words.test(instruction))?.[1] ?? 'straight';
}

class Instructions {
  /** @param choose called with the position that an instruction is for */
  constructor(choose) {
    this.choose = choose;
    this.list = byId('instructions');
    this.list.addEventListener('keydown', (event) => moveThroughList(event, this.list));
  }

  /** Lists the instructions of a route; null: of none. */
  show(route) {
    if (route === this.route) return;
    this.route = route;
    this.current = undefined;
    this.buttons = (route?.instructions ?? []).map((instruction) => this.button(instruction));
    this.list.replaceChildren(...this.buttons.map((button) => element('li', {}, button)));
    byId('trip').replaceChildren(...(route ? tripOf(route) : [element('p', { class: 'sum' }, 'No route at the moment.')]));
  }

  button({ text, at }) {
    const button = element('button', { type: 'button' }, icon(pictureOf(text)), element('span', { class: 'what', dir: 'auto' }, capital(text)));
    button.addEventListener('click', () => this.choose(at));
    return button;
  }

  /** Marks the instruction that applies now; past the last one, all have been followed. */
  mark(index) {
    if (index === this.current) return;
    this.current = index;
    this.buttons.forEach((button, i) => {
      button.classList.toggle('past', i < index);
      if (i === index) button.setAttribute('aria-current', 'step');
      else button.removeAttribute('aria-current');
    });
    if (!byId('route').hidden) scrollWithin(byId('route'), this.buttons[index]);
  }
}

function tripOf(route) {
  const time = route.time === undefined ? '' : ` · ${minutes(route.time)}`;
  const from = route.start ? [element('p', { class: 'sum', dir: 'auto' }, `From ${route.start}`)] : [];
  const note = route.direct ? [element('p', { class: 'note' }, 'No mapped way leads there: this is the straight line.')] : [];
  return [
    ...from,
    element('p', { class: 'to', dir: 'auto' }, `To ${route.destination}`),
    element('p', { class: 'sum' }, metres(route.distance) + time),
    ...note,
  ];
}

function minutes(seconds) {
  return seconds < 60 ? `${Math.round(seconds)} s` : `${Math.round(seconds / 60)} min`;
}

/** Scrolls so that `inner` is in view, and nothing but `outer`. */
function scrollWithin(outer, inner) {
  if (!inner) return;
  const [frame, box] = [outer.getBoundingClientRect(), inner.getBoundingClientRect()];
  if (box.top < frame.top) outer.scrollTop -= frame.top - box.top + 40;
  else if (box.bottom > frame.bottom) outer.scrollTop += box.bottom - frame.bottom + 40;
}
