// Small helpers: elements, words for numbers, and what the page was given to show.

const data = JSON.parse(document.getElementById('data').textContent);

const byId = (id) => document.getElementById(id);

const clamp = (value, low, high) => Math.min(Math.max(value, low), high);

const calm = window.matchMedia('(prefers-reduced-motion: reduce)');
const narrow = window.matchMedia('(max-width: 760px)');

/** An element with those attributes and children; strings become text. */
function element(name, attributes = {}, ...children) {
  return furnished(document.createElement(name), attributes, children);
}

/** The same of SVG. */
function drawn(name, attributes = {}, ...children) {
  return furnished(document.createElementNS('http://www.w3.org/2000/svg', name), attributes, children);
}

function furnished(made, attributes, children) {
  for (const [key, value] of Object.entries(attributes)) {
    if (value !== undefined && value !== null && value !== false) made.setAttribute(key, value === true ? '' : value);
  }
  made.append(...children.filter((child) => child !== null && child !== undefined));
  return made;
}

function icon(name) {
  return drawn('svg', { class: 'icon', 'aria-hidden': 'true' }, drawn('use', { href: `#icon-${name}` }));
}

/** "12 m", "3.4 m" below ten. */
function metres(distance) {
  if (!Number.isFinite(distance)) return 'unknown';
  if (distance >= 1000) return `${(distance / 1000).toFixed(1)} km`;
  return `${distance < 10 ? Number(distance.toFixed(1)) : Math.round(distance)} m`;
}

/** "1:05" */
function clockTime(seconds) {
  const whole = Math.round(seconds);
  return `${Math.floor(whole / 60)}:${String(whole % 60).padStart(2, '0')}`;
}

/** "1 min 5 s", for those who hear it. */
function spokenTime(seconds) {
  const minutes = Math.floor(seconds / 60);
  const rest = Math.round(seconds % 60);
  return minutes > 0 ? `${minutes} min ${rest} s` : `${rest} s`;
}

/** The text in the form in which searching compares it: small letters without accents. */
function folded(text) {
  return text.normalize('NFD').replace(/\p{M}/gu, '').toLowerCase();
}

const levelsByNumber = new Map(data.levels.map((level) => [level.level, level]));

/** "Level 2 · Upper deck"; also for levels that the building does not have. */
function levelTitle(number) {
  return levelsByNumber.get(number)?.title ?? `Level ${number}`;
}

/** Says something to those who cannot see it, once. */
function announce(text, where = 'announcer') {
  const region = byId(where);
  if (region.textContent !== text) region.textContent = text;
}

/** Whether a key press is meant for a field or an open dialog rather than for the map. */
function isTyping(event) {
  return byId('help').open || Boolean(event.target.closest?.('input[type="search"], select'));
}
