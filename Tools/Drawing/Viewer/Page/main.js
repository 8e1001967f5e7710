// Puts the page together.

const viewport = new Viewport(byId('map'), byId('view'));
const levels = new Levels(viewport);
const things = new Things(levels);
const details = new Details(things, viewport);
const places = new Places((place) => showPlace(place));
const instructions = new Instructions((at) => showPosition(at));
const walk = data.walk && data.walk.moments.length > 0 ? new Walk(data.walk) : null;
const walkDrawing = walk ? new WalkDrawing(walk, levels) : null;
const chevrons = new Chevrons(viewport, levels);
const banner = new Banner();
const player = walk ? new Player(walk, (index) => showSecond(index)) : null;
let following = walk !== null;

/** Shows the position, on its level and near enough to make it out. */
function showPosition([x, y, level]) {
  stopFollowing();
  if (levels.has(level)) levels.show(level);
  viewport.centreOn(x, y, { leastPixelsPerMetre: 6 });
  closeSheet();
}

function showPlace(place) {
  showPosition(place.at);
  details.select(things.place(place.name, place.at) ?? null);
}

function showSecond(index) {
  const second = walk.at(index);
  banner.show(second);
  instructions.show(second.guide ?? null);
  instructions.mark(second.arrived ? Infinity : second.instruction);
  levels.markRoute(new Set(second.ahead.map(([, , level]) => level)));
  measureInsets();
  if (following) followPerson(second);
  walkDrawing.show(index, levels.current);
  showChevrons();
}

function showChevrons() {
  const direct = walk ? walk.at(player.index).route?.direct : data.route?.direct;
  const way = walk ? walk.at(player.index).ahead : data.route?.points ?? [];
  chevrons.show(direct ? [] : way, levels.current);
}

function followPerson(second) {
  const person = personAt(second);
  if (!person) return;
  if (levels.has(person[2]) && person[2] !== levels.current) levels.show(person[2]);
  if (viewport.touched && !viewport.sees(person[0], person[1], 60)) viewport.centreOn(person[0], person[1]);
}

function stopFollowing() {
  setFollowing(false);
}

/** Who has zoomed on something else wants to look at that. */
function letGoOfHidden() {
  const person = following ? personAt(walk.at(player.index)) : null;
  if (person && !viewport.sees(person[0], person[1], 0)) stopFollowing();
}

/** Moves the view as somebody wishes, and so away from the walk. */
function pan(right, down) {
  stopFollowing();
  viewport.panBy(right, down, true);
}

function setFollowing(on) {
  following = on && walk !== null;
  byId('follow').setAttribute('aria-pressed', String(following));
}

function follow() {
  setFollowing(!following);
  if (!following) return;
  const person = personAt(walk.at(player.index));
  if (person) viewport.centreOn(person[0], person[1], { leastPixelsPerMetre: 6 });
  player.show(player.index);
}

function setGraph(shown) {
  byId('view').classList.toggle('graph', shown);
  byId('graph').setAttribute('aria-pressed', String(shown));
}

function toggleGraph() {
  setGraph(!isGraphShown());
}

function toggleTheme() {
  const root = document.documentElement;
  const dark = root.dataset.theme ? root.dataset.theme === 'dark' : window.matchMedia('(prefers-color-scheme: dark)').matches;
  root.dataset.theme = dark ? 'light' : 'dark';
  announce(dark ? 'Light' : 'Dark', 'spoken');
}

/** Zooms about the person who is followed, or else the middle. */
function zoomBy(factor) {
  const person = following ? personAt(walk.at(player.index)) : null;
  const [left, top] = person && viewport.sees(person[0], person[1], 0) ? viewport.toScreen(...person) : viewport.middle();
  viewport.zoomAt(factor, left, top, true);
}

/** Which parts of the view are covered, so that what is shown is not under them. */
function measureInsets() {
  const [stage, player] = [byId('stage'), byId('player')];
  const note = byId('foot').offsetHeight;
  stage.style.setProperty('--note', `${note}px`);
  const foot = player.hidden ? note + 12 : stage.offsetHeight - player.offsetTop + 4;
  const head = byId('head').offsetHeight;
  stage.style.setProperty('--foot', `${foot}px`);
  stage.style.setProperty('--head', `${head}px`);
  const side = stage.offsetWidth - document.querySelector('.buttons').offsetLeft - document.querySelector('.controls').offsetLeft;
  viewport.insets = { top: byId('head').offsetTop + head, right: Math.min(side, stage.offsetWidth / 3), bottom: foot, left: 0 };
}

const TABS = ['places', 'route', 'legend'];

function selectTab(name) {
  for (const each of TABS) {
    const chosen = each === name;
    byId(each).hidden = !chosen;
    byId(`tab-${each}`).setAttribute('aria-selected', String(chosen));
    byId(`tab-${each}`).tabIndex = chosen ? 0 : -1;
  }
}

function setSheet(open) {
  document.documentElement.dataset.panel = open ? 'open' : 'closed';
  byId('show-panel').setAttribute('aria-expanded', String(open));
}

function closeSheet() {
  if (narrow.matches) setSheet(false);
}

function isGraphShown() {
  return byId('graph').getAttribute('aria-pressed') === 'true';
}

function moveSelection(direction) {
  const { selected } = details;
  const [x, y] = selected ? [selected.x, selected.y] : viewport.centre();
  selectNext(things.beyond(x, y, direction, isGraphShown(), selected));
}

function selectNext(next) {
  if (!next) return announce('Nothing further in that direction', 'spoken');
  if (!viewport.sees(next.x, next.y, 40)) {
    stopFollowing();
    viewport.centreOn(next.x, next.y);
  }
  return details.select(next);
}

const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

/** The keys of the map while it has the focus; whether this was one. */
function mapKey(event) {
  const arrow = ARROWS[event.key];
  if (arrow && event.shiftKey) moveSelection(arrow);
  else if (arrow) pan(-arrow[0] * 80, -arrow[1] * 80);
  else if (event.key === '+' || event.key === '=') zoomBy(1.5);
  else if (event.key === '-') zoomBy(1 / 1.5);
  else if (event.key === '0') viewport.fit();
  else if (event.key === ' ' && player) player.toggle();
  else if (event.key === 'n') selectNext(things.following(details.selected, 1, isGraphShown()));
  else if (event.key === 'p') selectNext(things.following(details.selected, -1, isGraphShown()));
  else if (event.key.toLowerCase() === 'g') toggleGraph();
  else if (event.key.toLowerCase() === 'f' && walk) follow();
  else return false;
  return true;
}

/** The keys that work everywhere but in fields; whether this was one. */
function pageKey(event) {
  if (event.key === 'PageUp') levels.step(1);
  else if (event.key === 'PageDown') levels.step(-1);
  else if (event.key === 'Escape') letGo();
  else if (event.key === '/') openSearch();
  else if (event.key === '?') byId('help').showModal();
  else return false;
  return true;
}

function letGo() {
  details.select(null);
  closeSheet();
}

function openSearch() {
  setSheet(true);
  selectTab('places');
  byId('search').focus();
}

function listenToKeys() {
  document.addEventListener('keydown', (event) => {
    if (event.ctrlKey || event.metaKey || event.altKey || isTyping(event)) return;
    const onMap = event.target === byId('map') || event.target === document.body;
    if ((onMap && mapKey(event)) || pageKey(event)) event.preventDefault();
  });
}

function listenToPointing() {
  const map = byId('map');
  const pointed = (event) => things.at(viewport, ...viewport.placeOf(event), event.target);
  map.addEventListener('pointermove', (event) => {
    if (event.pointerType === 'touch' || map.classList.contains('dragging')) return;
    const thing = pointed(event);
    map.classList.toggle('pointing', thing !== null);
    details.hover(thing, ...viewport.placeOf(event));
  });
  map.addEventListener('pointerleave', () => details.hover(null));
  viewport.onTap = (event) => details.select(pointed(event));
  viewport.onMoved = () => {
    stopFollowing();
    details.hover(null);
    closeSheet();
  };
  viewport.onWheel = letGoOfHidden;
}

function listenToButtons() {
  const clicks = {
    'zoom-in': () => zoomBy(1.5),
    'zoom-out': () => zoomBy(1 / 1.5),
    'zoom-fit': () => viewport.fit(),
    graph: toggleGraph,
    follow,
    theme: toggleTheme,
    'show-help': () => byId('help').showModal(),
    'close-help': () => byId('help').close(),
    'show-panel': () => setSheet(document.documentElement.dataset.panel !== 'open'),
    ...Object.fromEntries(TABS.map((name) => [`tab-${name}`, () => selectTab(name)])),
  };
  for (const [id, action] of Object.entries(clicks)) byId(id).addEventListener('click', action);
  document.querySelector('[role="tablist"]').addEventListener('keydown', tabKey);
}

function tabKey(event) {
  if (event.key !== 'ArrowLeft' && event.key !== 'ArrowRight') return;
  const tabs = TABS.filter((name) => !byId(`tab-${name}`).hidden);
  const now = tabs.findIndex((name) => byId(`tab-${name}`).getAttribute('aria-selected') === 'true');
  const other = tabs[(now + (event.key === 'ArrowRight' ? 1 : tabs.length - 1)) % tabs.length];
  selectTab(other);
  byId(`tab-${other}`).focus();
  event.preventDefault();
  event.stopPropagation();
}

function levelChanged(level, byPerson) {
  if (byPerson) stopFollowing();
  measureInsets();
  details.levelChanged(level);
  if (walk) walkDrawing.show(player.index, level);
  showChevrons();
}

/** The level to begin with: where the route starts, or the one with anything on it that is nearest to the ground. */
function firstLevel() {
  if (data.route && levels.has(data.route.from[2])) return data.route.from[2];
  const furnished = data.levels.filter(({ home }) => home !== null);
  const numbers = (furnished.length > 0 ? furnished : data.levels).map((each) => each.level);
  return numbers.sort((a, b) => Math.abs(a) - Math.abs(b) || b - a)[0];
}

/** Most rooms of the level, if they lie in a part of a campus; else all of the plan. */
function worthSeeing(level) {
  const home = levelsByNumber.get(level)?.home;
  if (!home) return viewport.home;
  const [left, top, right, bottom] = home;
  const longer = Math.max(right - left, bottom - top);
  if (Math.max((right - left) / data.width, (bottom - top) / data.height) > 0.6) return viewport.home;
  // What is around a small room belongs to the view.
  const edge = Math.max(longer * 0.1, (60 * data.pixelsPerMetre - longer) / 2);
  return [left - edge, top - edge, right + edge, bottom + edge];
}

function start() {
  const guided = walk !== null || data.route !== null;
  byId('tab-route').hidden = !guided;
  selectTab(guided ? 'route' : 'places');
  setSheet(!narrow.matches);
  setGraph(data.graph);
  byId('follow').hidden = walk === null;
  byId('nothing').hidden = data.levels.length > 0;
  for (const part of document.querySelectorAll('.walk-only')) part.hidden = walk === null;
  byId('legend-list').prepend(...(walk ? walkItems() : []), ...(guided ? routeItems() : []));
  levels.show(firstLevel());
  levels.onChange(levelChanged);
  viewport.onChange(() => updateScaleBar(viewport));
  const sizes = new ResizeObserver(measureInsets);
  for (const part of ['stage', 'head', 'foot']) sizes.observe(byId(part));
  narrow.addEventListener('change', () => setSheet(!narrow.matches));
  listenToKeys();
  listenToPointing();
  listenToButtons();
  if (walk) player.show(0);
  else if (data.route) showRoute(data.route);
  if (!guided) viewport.home = worthSeeing(levels.current);
  measureInsets();
  viewport.open();
  comeNear(walk ? personAt(walk.at(0)) : data.route?.from);
}

/** On small screens the whole building says little; the beginning of the way says more. */
function comeNear(position) {
  if (!position || viewport.scale * data.pixelsPerMetre >= 2) return;
  viewport.centreOn(position[0], position[1], { leastPixelsPerMetre: 5, animate: false });
}

function showRoute(route) {
  instructions.show(route);
  levels.markRoute(new Set(route.levels));
  showChevrons();
}

start();
