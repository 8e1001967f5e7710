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

test('The parts of the page do not cover each other on a phone', async () => {
  const page = await open('walk', PHONE);
  await setSlider(page, 60);
  const boxes = await page.evaluate(() => ['#banner', '.levels', '.buttons', '#player', '#attribution', '#scale']
    .map((selector) => [selector, document.querySelector(selector).getBoundingClientRect().toJSON()]));
  for (const [i, [one, a]] of boxes.entries()) {
    for (const [other, b] of boxes.slice(i + 1)) {
      const apart = a.right <= b.left || b.right <= a.left || a.bottom <= b.top || b.bottom <= a.top;
      assert.ok(apart, `${one} covers ${other}`);
    }
  }
});

test('The list opens as a sheet, and a place chosen closes it', async () => {
  const page = await open('plain', PHONE);
  const button = page.getByRole('button', { name: 'Places and route' });
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
