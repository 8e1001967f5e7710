import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launch, open, quit, screenshot, setSlider, shownLevel } from './browser.mjs';

before(launch);
after(quit);

test('One level is shown at a time, and its button is the current one', async () => {
  const page = await open('plain');
  assert.equal(await page.locator('.level').count(), 4);
  assert.equal(await page.locator('.level.shown').count(), 1);
  assert.equal(await shownLevel(page), 0);
  await page.getByRole('navigation', { name: 'Levels' }).getByRole('button', { name: 'Level 2 · Upper deck' }).click();
  assert.equal(await shownLevel(page), 2);
  assert.equal(await page.locator('.level.shown').count(), 1);
  assert.equal(await page.locator('.levels [aria-current]').getAttribute('data-level'), '2');
  assert.equal(await page.locator('#level-title').textContent(), 'Level 2 · Upper deck');
});

test('The highest level has the uppermost button', async () => {
  const page = await open('plain');
  assert.deepEqual(await page.locator('.levels button').allTextContents(), ['2', '1', '0', '-1']);
});

test('Page Up and Page Down go to the level above and below, and stop at the ends', async () => {
  const page = await open('plain');
  await page.locator('#map').focus();
  await page.keyboard.press('PageUp');
  assert.equal(await shownLevel(page), 1);
  for (let i = 0; i < 5; i += 1) await page.keyboard.press('PageDown');
  assert.equal(await shownLevel(page), -1);
});

test('A level chosen is said to those who cannot see it', async () => {
  const page = await open('plain');
  await page.keyboard.press('PageUp');
  assert.equal(await page.locator('#spoken').textContent(), 'Level 1 · Departures');
});

test('The levels that the route touches are marked, and the plan says where it goes on', async () => {
  const page = await open('route');
  const levels = page.getByRole('navigation', { name: 'Levels' });
  assert.equal(await levels.getByRole('button', { name: 'on the route' }).count(), 3);
  assert.equal(await levels.getByRole('button', { name: 'Level -1 · Underground station', exact: true }).count(), 1);
  assert.equal(await shownLevel(page), 0);
  const badge = page.locator('.level.shown .badge', { hasText: 'level 1' });
  assert.ok(await badge.isVisible());
  await screenshot(page, 'route');
});

test('A route that begins with a change of level opens where it starts', async () => {
  const page = await open('upstairs');
  assert.equal(await shownLevel(page), 0);
  assert.equal(await page.getByRole('navigation', { name: 'Levels' }).getByRole('button', { name: 'on the route' }).count(), 3);
  for (const mark of ['.start', '.change', '.badge', '.label.end']) {
    assert.ok(await page.locator(`.level.shown ${mark}`).isVisible(), mark);
  }
  await screenshot(page, 'upstairs');
});

test('The names of the ends and the badges stay when the view is far away', async () => {
  const page = await open('upstairs');
  for (let i = 0; i < 12; i += 1) await page.keyboard.press('-');
  for (const mark of ['.badge', '.label.end']) {
    assert.ok(await page.locator(`.level.shown ${mark}`).isVisible(), mark);
  }
});

test('In a walk the badge says on which level the way goes on', async () => {
  const page = await open('walk');
  assert.ok(await page.locator('.change .badge', { hasText: 'Level 1' }).isVisible());
  await setSlider(page, await page.getByRole('slider').getAttribute('max'));
  assert.equal(await page.locator('.change .badge').count(), 0);
});
