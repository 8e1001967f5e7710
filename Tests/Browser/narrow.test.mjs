import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launch, middleOf, open, quit, screenshot, setSlider, shownLevel, viewOf } from './browser.mjs';

before(launch);
after(quit);

const PHONE = { viewport: { width: 360, height: 640 }, hasTouch: true, isMobile: true };

async function isInside(page, selector) {
  const box = await page.locator(selector).boundingBox();
  return box.x >= 0 && box.y >= 0 && box.x + box.width <= 360.5 && box.y + box.height <= 640.5;
}

test('On a phone nothing is wider than the screen, and everything is on it', async () => {
  for (const name of ['plain', 'walk', 'hostile']) {
    const page = await open(name, PHONE);
    assert.equal(await page.evaluate(() => document.scrollingElement.scrollWidth), 360, name);
    for (const part of ['.bar', '.levels', '.buttons', '#attribution', '#scale']) assert.ok(await isInside(page, part), `${name} ${part}`);
  }
});

test('On a phone the walk has its player and its instruction', async () => {
  const page = await open('walk', PHONE);
  await setSlider(page, 60);
  for (const part of ['#player', '#slider', '#play', '#speed', '#banner']) assert.ok(await isInside(page, part), part);
  const [x, y] = await middleOf(page.locator('#person .body'));
  assert.ok(x > 0 && x < 360 && y > 0 && y < 640);
  await screenshot(page, 'walk-phone');
});

/** Pairs of parts of the page that lie upon each other. */
function covered(page) {
  return page.evaluate(() => {
    const parts = ['.bar', '#banner', '.here', '.levels', '.buttons', '#player', '#attribution', '#scale'];
    const boxes = parts.map((part) => [part, document.querySelector(part).getBoundingClientRect()]);
    const pairs = boxes.flatMap(([one, a], i) => boxes.slice(i + 1).map(([other, b]) => [one, a, other, b]));
    return pairs.filter(([, a, , b]) => a.width > 0 && b.width > 0 && a.right > b.left + 0.5 && b.right > a.left + 0.5 &&
      a.bottom > b.top + 0.5 && b.bottom > a.top + 0.5).map(([one, , other]) => `${one} and ${other}`);
  });
}

for (const [width, height] of [[1500, 900], [1280, 800], [1024, 768], [900, 700], [800, 600], [360, 640], [640, 360], [320, 256]]) {
  test(`The parts of the page do not cover each other in a window of ${width} by ${height}`, async () => {
    const page = await open('walk', { viewport: { width, height } });
    const last = Number(await page.getByRole('slider').getAttribute('max'));
    const found = new Set();
    for (let second = 0; second <= last; second += 3) {
      await setSlider(page, second);
      for (const pair of await covered(page)) found.add(`${pair} at ${second}`);
    }
    assert.deepEqual([...found], []);
    await setSlider(page, 20);
    await viewOf(page);
    await screenshot(page, `walk-${width}`);
  });
}

test('In a small window all of the page can be reached by scrolling', async () => {
  const page = await open('walk', { viewport: { width: 320, height: 256 } });
  for (const part of ['#banner', '#zoom-in', '#follow', '#play', '#speed', '#attribution']) {
    await page.locator(part).scrollIntoViewIfNeeded();
    const box = await page.locator(part).boundingBox();
    assert.ok(box.x >= 0 && box.y >= 0 && box.x + box.width <= 320.5 && box.y + box.height <= 256.5, `${part} ${JSON.stringify(box)}`);
  }
});

test('However long an instruction is, it leaves room for the map', async () => {
  for (const viewport of [{ width: 1280, height: 800 }, { width: 360, height: 640 }, { width: 640, height: 360 }]) {
    const page = await open('walk', { viewport });
    await page.evaluate(() => { document.getElementById('told').textContent = 'go over the very long bridge '.repeat(60); });
    const [banner, stage] = [await page.locator('#banner').boundingBox(), await page.locator('#stage').boundingBox()];
    assert.ok(banner.height < stage.height / 3, `${viewport.width}: ${banner.height} of ${stage.height}`);
  }
});

test('On a phone one can look up what the marks mean', async () => {
  const page = await open('walk', PHONE);
  await page.getByRole('button', { name: 'Places, route and legend' }).tap();
  await page.getByRole('tab', { name: 'Legend' }).tap();
  const legend = page.getByRole('list', { name: 'Legend' });
  for (const words of ['Position as measured', 'Lift', 'Toilets']) assert.ok(await legend.getByText(words, { exact: true }).isVisible(), words);
  await page.waitForTimeout(300);
  await screenshot(page, 'legend-phone');
});

test('The list opens as a sheet, and a place chosen closes it', async () => {
  const page = await open('plain', PHONE);
  const button = page.getByRole('button', { name: 'Places, route and legend' });
  assert.equal(await button.getAttribute('aria-expanded'), 'false');
  assert.ok(await page.locator('#search').isHidden());
  await button.tap();
  assert.equal(await button.getAttribute('aria-expanded'), 'true');
  await page.getByRole('searchbox').fill('gate b4');
  await page.waitForTimeout(300);
  await screenshot(page, 'sheet-phone');
  await page.getByRole('button', { name: /^Gate B4/ }).tap();
  await page.locator('#search').waitFor({ state: 'hidden' });
  assert.equal(await shownLevel(page), 2);
  await viewOf(page);
  assert.ok(await isInside(page, '.level.shown .place[data-place="Gate B4"]'));
});

test('A tap on the plan names what is there', async () => {
  const page = await open('plain', PHONE);
  await page.getByRole('button', { name: 'Zoom in' }).tap();
  await viewOf(page);
  await page.touchscreen.tap(...await middleOf(page.locator('.level.shown .place[data-place="Information"]')));
  assert.equal(await page.locator('#pointed .spot').count(), 1);
  assert.match(await page.locator('#spoken').textContent(), /^Information\./);
});
