import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launch, middleOf, open, quit, screenshot, settled, shownLevel, viewOf } from './browser.mjs';

before(launch);
after(quit);

const details = (page) => page.getByRole('region', { name: 'Details' }).or(page.locator('#details'));
const tip = (page) => page.locator('#tip');

/** Magnifies around an edge until there is room about its middle, and gives that place. */
async function zoomOnto(page, edge) {
  for (let i = 0; i < 8; i += 1) {
    await page.mouse.move(...await middleOf(edge));
    await page.mouse.wheel(0, -150);
    await settled(page);
  }
  return middleOf(edge);
}

/** An edge whose ends are not marked places, so that nothing else lies about its middle. */
async function freeEdge(page) {
  const name = await page.evaluate(() => {
    const level = document.querySelector('.level.shown');
    const marks = [...level.querySelectorAll('.place, .connection')].map((mark) => mark.getBoundingClientRect());
    const middle = (box) => [box.x + box.width / 2, box.y + box.height / 2];
    const apart = (a, b) => Math.hypot(a[0] - b[0], a[1] - b[1]);
    const edges = [...level.querySelectorAll('.edge')].filter((edge) => Number(edge.dataset.distance) > 12 && Number(edge.dataset.distance) < 20);
    const room = (edge) => Math.min(...marks.map((mark) => apart(middle(mark), middle(edge.getBoundingClientRect()))));
    return edges.sort((a, b) => room(b) - room(a))[0].dataset.edge;
  });
  return page.locator(`.level.shown .edge[data-edge="${name}"]`);
}

test('Pointing at an edge names its ends and its length', async () => {
  const page = await open('graph');
  const edge = await freeEdge(page);
  await page.mouse.move(...await zoomOnto(page, edge));
  const [from, to] = (await edge.getAttribute('data-edge')).split('-');
  const metres = `${Math.round(Number(await edge.getAttribute('data-distance')))} m`;
  assert.equal(await tip(page).locator('b').textContent(), `Edge ${from} – ${to}`);
  assert.equal(await tip(page).locator('span').textContent(), `Distance: ${metres}`);
  assert.match(await details(page).textContent(), new RegExp(`Edge ${from} – ${to}\\s*Distance${metres}`));
  assert.equal(await page.locator('#pointed .hot').count(), 1);
  await screenshot(page, 'edge');
});

test('An edge can be pointed at while the graph is not shown', async () => {
  const page = await open('plain');
  const edge = await freeEdge(page);
  assert.equal(await edge.evaluate((each) => getComputedStyle(each).visibility), 'hidden');
  await page.mouse.move(...await zoomOnto(page, edge));
  assert.match(await tip(page).textContent(), /^Edge \d+ – \d+Distance: \d+ m$/);
});

test('Pointing at a node names it, and the lengths of its edges', async () => {
  const page = await open('graph');
  const edge = await freeEdge(page);
  const [from, to] = (await edge.getAttribute('data-edge')).split('-');
  const node = page.locator(`.level.shown .node[data-node="${from}"]`);
  await zoomOnto(page, node);
  await page.mouse.move(...await middleOf(node));
  assert.equal(await tip(page).locator('b').textContent(), `Node ${from}`);
  const metres = Math.round(Number(await edge.getAttribute('data-distance')));
  assert.ok((await details(page).textContent()).includes(`${to} (${metres} m)`));
});

test('Pointing at a place names it, and nothing is named when the pointer has left', async () => {
  const page = await open('plain');
  const place = page.locator('.level.shown .place[data-place="Police"]');
  await page.mouse.move(...await middleOf(place));
  assert.match(await tip(page).textContent(), /^Police/);
  assert.match(await details(page).textContent(), /Police\s*Kind.*Nearest node\d+, [\d.]+ m away.*Level 0 · Arrivals/);
  await page.mouse.move(20, 300);
  assert.ok(await tip(page).isHidden());
  assert.match(await details(page).textContent(), /^\s*Details/);
});

test('A way to other levels says where it leads', async () => {
  const page = await open('plain');
  await page.mouse.move(...await middleOf(page.locator('.level.shown .connection.elevator').first()));
  assert.match(await details(page).textContent(), /Leads toLevel .*Edges to\d+ \(/);
});

test('Shift and an arrow key go from thing to thing, and say what is there', async () => {
  const page = await open('plain');
  await page.locator('#map').focus();
  const said = page.locator('#spoken');
  await page.keyboard.press('Shift+ArrowRight');
  const first = await said.textContent();
  assert.match(first, /\. Level: Level 0 · Arrivals$/);
  await page.keyboard.press('Shift+ArrowRight');
  assert.notEqual(await said.textContent(), first);
  const marked = page.locator('#pointed .spot, .hot-room');
  assert.equal(await marked.count(), 1);
  await page.keyboard.press('Escape');
  assert.equal(await marked.count(), 0);
});

test('N and P go through everything on the level, rooms without a place as well', async () => {
  const page = await open('plain');
  await page.keyboard.press('PageUp');
  await page.locator('#map').focus();
  const said = page.locator('#spoken');
  const heard = [];
  for (let i = 0; i < 200; i += 1) {
    await page.keyboard.press('n');
    const words = await said.textContent();
    if (words === 'Nothing further in that direction') break;
    heard.push(words);
  }
  const drawn = await page.locator('.level.shown').evaluate((level) => level.querySelectorAll('.place, .connection').length);
  assert.ok(heard.length > drawn && heard.length < 200, `${heard.length} of ${drawn}`);
  for (const name of ['Departures hall. Kind: Hall', 'Pier A. ', 'Gate A8. ']) assert.ok(heard.some((words) => words.startsWith(name)), name);
  assert.equal(new Set(heard.filter((words) => words.startsWith('Gate A8. '))).size, 1);
  await page.keyboard.press('p');
  assert.equal(await said.textContent(), heard.at(-2));
});

test('From a room the arrow keys go on to what lies beside it', async () => {
  const page = await open('plain');
  await page.keyboard.press('PageUp');
  await page.locator('#map').focus();
  for (let i = 0; i < 200 && !/^Departures hall/.test(await page.locator('#spoken').textContent()); i += 1) await page.keyboard.press('n');
  await page.keyboard.press('Shift+ArrowRight');
  assert.doesNotMatch(await page.locator('#spoken').textContent(), /^Departures hall/);
  assert.equal(await page.locator('#pointed .spot, .hot-room').count(), 1);
});

test('With the graph shown the keyboard reaches nodes and edges with their ids and distances', async () => {
  const page = await open('plain');
  await page.locator('#map').focus();
  await page.keyboard.press('g');
  assert.equal(await page.getByRole('button', { name: 'Nodes and edges' }).getAttribute('aria-pressed'), 'true');
  const heard = new Set();
  for (let i = 0; i < 12; i += 1) {
    await page.keyboard.press('Shift+ArrowRight');
    heard.add(await page.locator('#spoken').textContent());
  }
  const all = [...heard].join('\n');
  assert.match(all, /^Node \d+\. Edges to: \d+ \([\d.]+ m\)/m);
  assert.match(all, /^Edge \d+ – \d+\. Distance: [\d.]+ m/m);
});

test('The search leaves the places whose names have the letters, whatever accents and capitals', async () => {
  const page = await open('plain');
  await page.keyboard.press('/');
  await page.keyboard.type('CAFE');
  const names = await page.locator('#place-list li:visible .what').allTextContents();
  assert.deepEqual([...new Set(names)].sort(), ['Café Beacon', 'Café Windrose', 'Gull Café']);
  assert.equal(await page.locator('#place-count').textContent(), `${names.length} places`);
  await page.getByRole('searchbox').fill('no such place');
  assert.equal(await page.locator('#place-list li:visible').count(), 0);
  assert.ok(await page.getByText('No place has that name.').isVisible());
});

test('A place chosen from the list comes to the middle, on its level, and is described', async () => {
  const page = await open('plain');
  await page.getByRole('searchbox', { name: 'Find a place' }).fill('gate b4');
  await page.keyboard.press('Enter');
  assert.equal(await shownLevel(page), 2);
  await viewOf(page);
  const map = await page.locator('#map').boundingBox();
  const [x, y] = await middleOf(page.locator('.level.shown .place[data-place="Gate B4"]'));
  assert.ok(Math.abs(x - (map.x + map.width / 2)) < 60 && Math.abs(y - (map.y + map.height / 2)) < 60, `${x} ${y}`);
  assert.match(await details(page).textContent(), /^\s*Gate B4/);
  assert.equal(await page.locator('#place-list [aria-current]').textContent(), 'Gate B4Level 2 · Upper deck');
  await screenshot(page, 'place');
});

test('Arrow keys lead from the search into the list and through it', async () => {
  const page = await open('plain');
  await page.getByRole('searchbox').fill('gate a');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('ArrowDown');
  assert.match(await page.evaluate(() => document.activeElement.textContent), /^Gate A2/);
  await page.keyboard.press('ArrowUp');
  await page.keyboard.press('ArrowUp');
  assert.equal(await page.evaluate(() => document.activeElement.id), 'search');
});
