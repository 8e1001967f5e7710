import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launch, open, quit, viewOf } from './browser.mjs';

before(launch);
after(quit);

const near = (a, b, most) => assert.ok(Math.abs(a - b) <= most, `${a} is not ${b}`);
const planAt = (view, [x, y]) => [(x - view.x) / view.scale, (y - view.y) / view.scale];

/** What lies under that place of the window, in the units of the plan. */
async function under(page, place) {
  const map = await page.locator('#map').boundingBox();
  return planAt(await viewOf(page), [place[0] - map.x, place[1] - map.y]);
}

test('The wheel zooms, and what is under the pointer stays there', async () => {
  const page = await open('plain');
  const place = [700, 300];
  const [before, spot] = [await viewOf(page), await under(page, place)];
  await page.mouse.move(...place);
  await page.mouse.wheel(0, -300);
  await page.waitForFunction((scale) => !document.getElementById('view').getAttribute('transform').includes(`scale(${scale.toFixed(5)})`), before.scale);
  const after = await viewOf(page);
  assert.ok(after.scale > before.scale * 1.3);
  const still = await under(page, place);
  near(still[0], spot[0], 0.05);
  near(still[1], spot[1], 0.05);
});

test('Dragging moves the plan with the pointer', async () => {
  const page = await open('plain');
  const before = await viewOf(page);
  await page.mouse.move(800, 600);
  await page.mouse.down();
  await page.mouse.move(760, 570, { steps: 4 });
  await page.mouse.up();
  const after = await viewOf(page);
  near(after.x - before.x, -40, 6);
  near(after.y - before.y, -30, 6);
  assert.equal(after.scale, before.scale);
});

test('A drag that is let go outside the map is over', async () => {
  const page = await open('plain');
  const before = await viewOf(page);
  await page.mouse.move(360, 300);
  await page.mouse.down();
  await page.mouse.move(200, 300);
  await page.mouse.up();
  await page.mouse.move(500, 350, { steps: 4 });
  assert.deepEqual(await viewOf(page), before);
});

test('Arrow keys move the view, plus and minus zoom, 0 shows all', async () => {
  const page = await open('plain');
  const start = await viewOf(page);
  await page.locator('#map').focus();
  await page.keyboard.press('ArrowRight');
  near((await viewOf(page)).x, start.x - 80, 1);
  await page.keyboard.press('ArrowUp');
  near((await viewOf(page)).y, start.y + 80, 1);
  await page.keyboard.press('+');
  const near1 = await viewOf(page);
  near(near1.scale / start.scale, 1.5, 0.01);
  await page.keyboard.press('-');
  near((await viewOf(page)).scale, start.scale, 0.01);
  await page.keyboard.press('0');
  assert.deepEqual(await viewOf(page), start);
});

test('A campus opens on its building; showing all shows the rest', async () => {
  const page = await open('campus');
  const house = () => page.locator('.level.shown .room').evaluateAll((rooms) => {
    const boxes = rooms.map((room) => room.getBoundingClientRect());
    return Math.max(...boxes.map(({ right }) => right)) - Math.min(...boxes.map(({ left }) => left));
  });
  const { width } = await page.locator('#map').boundingBox();
  await viewOf(page);
  assert.ok(await house() > width / 2);
  await page.setViewportSize({ width: 1000, height: 700 });
  await page.waitForFunction(() => document.getElementById('map').clientWidth < 700);
  assert.ok(await house() > (await page.locator('#map').boundingBox()).width / 2, 'still, in another window');
  await page.getByRole('button', { name: 'Show all' }).click();
  await viewOf(page);
  assert.ok(await house() < width / 10);
});

test('The buttons zoom and show all', async () => {
  const page = await open('plain');
  const start = await viewOf(page);
  await page.getByRole('button', { name: 'Zoom in' }).click();
  assert.ok((await viewOf(page)).scale > start.scale * 1.4);
  await page.getByRole('button', { name: 'Zoom out' }).click();
  await viewOf(page);
  await page.getByRole('button', { name: 'Zoom out' }).click();
  assert.ok((await viewOf(page)).scale < start.scale);
  await page.getByRole('button', { name: 'Show all' }).click();
  assert.deepEqual(await viewOf(page), start);
});

test('Two fingers that part zoom in', async () => {
  const page = await open('plain', { hasTouch: true });
  const before = await viewOf(page);
  const touches = await page.context().newCDPSession(page);
  const fingers = (apart) => [{ x: 760 - apart, y: 400, id: 1 }, { x: 760 + apart, y: 400, id: 2 }];
  const touch = (type, touchPoints) => touches.send('Input.dispatchTouchEvent', { type, touchPoints });
  await touch('touchStart', fingers(40));
  for (const apart of [60, 80, 100, 120]) await touch('touchMove', fingers(apart));
  await touch('touchEnd', []);
  const after = await viewOf(page);
  near(after.scale / before.scale, 3, 0.4);
});

test('There is an end to zooming, and the plan cannot be lost', async () => {
  const page = await open('plain');
  await page.locator('#map').focus();
  for (let i = 0; i < 25; i += 1) await page.keyboard.press('-');
  const far = await viewOf(page);
  for (let i = 0; i < 60; i += 1) await page.keyboard.press('ArrowRight');
  const [left] = await page.locator('.level.shown').evaluate((level) => [level.getBoundingClientRect().right]);
  assert.ok(left > 352, 'some of the plan is right of the panel');
  for (let i = 0; i < 40; i += 1) await page.keyboard.press('+');
  const close = await viewOf(page);
  assert.ok(far.scale > 0.1 && close.scale < 500, `${far.scale} ${close.scale}`);
});

test('Labels keep their size when the plan is magnified, and more of them find room', async () => {
  const page = await open('plain');
  const label = page.locator('.level.shown .label', { hasText: 'Police' }).first();
  const shown = () => page.locator('.level.shown .label:visible').count();
  const [before, few] = [await label.boundingBox(), await shown()];
  for (let i = 0; i < 3; i += 1) {
    await page.getByRole('button', { name: 'Zoom in' }).click();
    await viewOf(page);
  }
  const after = await label.boundingBox();
  near(after.height, before.height, 1);
  near(after.width, before.width, 2);
  assert.ok(await shown() > few + 5);
});

test('The scale bar tells lengths as they are on the plan', async () => {
  const page = await open('plain');
  const pixelsPerMetre = await page.evaluate(() => JSON.parse(document.getElementById('data').textContent).pixelsPerMetre);
  for (const key of ['0', '+', '+', '-', '-', '-']) {
    await page.locator('#map').focus();
    await page.keyboard.press(key);
    const view = await viewOf(page);
    const words = await page.locator('#scale-words').textContent();
    const width = (await page.locator('#scale-bar').boundingBox()).width;
    near(width, Number(/^(\d+) m$/.exec(words)[1]) * pixelsPerMetre * view.scale, 1);
  }
});

test('Without wish for motion the view changes at once', async () => {
  const page = await open('plain', { reducedMotion: 'reduce' });
  const scales = await page.evaluate(() => {
    const scale = () => document.getElementById('view').getAttribute('transform');
    const before = scale();
    document.getElementById('zoom-in').click();
    return [before, scale()];
  });
  assert.notEqual(scales[0], scales[1]);
});
