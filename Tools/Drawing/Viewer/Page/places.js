// The list of places, and the field that searches it.

class Places {
  /** @param choose called with the place that somebody wants to see */
  constructor(choose) {
    this.list = byId('place-list');
    this.field = byId('search');
    this.rows = sortedPlaces().map((place) => this.row(place, choose));
    this.list.append(...this.rows.map(({ item }) => item));
    this.field.addEventListener('input', () => this.filter());
    this.field.addEventListener('keydown', (event) => this.fieldKey(event));
    this.list.addEventListener('keydown', (event) => moveThroughList(event, this.list, this.field));
  }

  row(place, choose) {
    const button = element('button', { type: 'button' },
      element('span', { class: `kind ${place.kind}`, 'aria-hidden': 'true' }),
      element('span', { class: 'what', dir: 'auto' }, place.name),
      element('span', { class: 'where', dir: 'auto' }, levelTitle(place.at[2])));
    button.addEventListener('click', () => {
      this.mark(button);
      choose(place);
    });
    return { item: element('li', {}, button), button, text: folded(place.name), place };
  }

  mark(chosen) {
    for (const { button } of this.rows) {
      if (button === chosen) button.setAttribute('aria-current', 'true');
      else button.removeAttribute('aria-current');
    }
  }

  filter() {
    const wanted = folded(this.field.value).trim();
    let count = 0;
    for (const { item, text } of this.rows) {
      item.hidden = !text.includes(wanted);
      if (!item.hidden) count += 1;
    }
    byId('no-place').hidden = count > 0 || wanted === '';
    announce(wanted === '' ? '' : `${count} ${count === 1 ? 'place' : 'places'}`, 'place-count');
  }

  fieldKey(event) {
    const first = this.rows.find(({ item }) => !item.hidden);
    if (event.key === 'Enter' && first) first.button.click();
    else if (event.key === 'ArrowDown' && first) first.button.focus();
    else if (event.key === 'Escape' && this.field.value !== '') {
      this.field.value = '';
      this.filter();
    } else return;
    event.preventDefault();
    event.stopPropagation();
  }
}

function sortedPlaces() {
  const order = new Intl.Collator(undefined, { numeric: true, sensitivity: 'base' });
  return [...data.places].sort((a, b) => order.compare(a.name, b.name) || a.at[2] - b.at[2]);
}

/** Arrow keys from one button of a list to the next; above the first lies `above`. */
function moveThroughList(event, list, above) {
  const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
  if (!step) return;
  const buttons = [...list.querySelectorAll('li:not([hidden]) button')];
  const next = buttons.indexOf(document.activeElement) + step;
  if (next < 0) above?.focus();
  else buttons[next]?.focus();
  event.preventDefault();
  event.stopPropagation();
}
