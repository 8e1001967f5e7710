import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launch, open, quit, screenshot, setSlider, urlOf } from './browser.mjs';
import { hostileNames, hostileTitle } from './hostile.mjs';

before(launch);
after(quit);

const PAGES = ['plain', 'graph', 'route', 'walk', 'denied', 'hostile', 'empty'];

test('A page asks the network for nothing, and complains of nothing', async () => {
  for (const name of PAGES) {
    const page = await open(name);
    for (const key of ['PageUp', 'PageDown', '+', '-', '0', 'g', 'Shift+ArrowLeft', '/', 'Escape']) await page.keyboard.press(key);
    if (name === 'walk') await setSlider(page, 50);
    await page.waitForTimeout(200);
    const elsewhere = page.seen.requests.filter((url) => url !== urlOf(name) && !url.startsWith('data:'));
    assert.deepEqual(elsewhere, [], name);
    assert.deepEqual(page.seen.complaints, [], name);
  }
});

test('The policy of the page forbids further scripts and all connections', async () => {
  const page = await open('plain');
  const outcome = await page.evaluate(async () => {
    const script = document.createElement('script');
    script.textContent = 'window.added = true';
    document.body.append(script);
    const fetched = await fetch('https://korvani.invalid/').then(() => 'came', () => 'refused');
    return { added: window.added ?? false, fetched };
  });
  assert.deepEqual(outcome, { added: false, fetched: 'refused' });
  assert.ok(page.seen.complaints.some((text) => text.includes('Content Security Policy')));
});

test('Names that are markup or script are shown as they are', async () => {
  const page = await open('hostile');
  assert.deepEqual((await page.locator('#place-list .what').allTextContents()).sort(), [...hostileNames].sort());
  assert.equal(await page.title(), hostileTitle);
  assert.equal(await page.getByRole('heading', { level: 1 }).textContent(), hostileTitle);
  assert.match(await page.locator('#attribution').textContent(), /<b onmouseover="window.hacked = 7">somebody<\/b>/);
  assert.deepEqual((await page.locator('.level .place').evaluateAll((all) => all.map((each) => each.dataset.place))).sort(), [...hostileNames].sort());
  await page.mouse.move(700, 400);
  await page.keyboard.press('g');
  await page.waitForTimeout(200);
  assert.equal(await page.evaluate(() => window.hacked), undefined);
  assert.equal(await page.locator('img, script:not(#data):not(:last-of-type), b[onmouseover]').count(), 0);
  await screenshot(page, 'hostile');
});

test('Each of those names can be found, chosen and described', async () => {
  const page = await open('hostile');
  for (const name of hostileNames) {
    await page.getByRole('searchbox').fill(name);
    assert.equal(await page.locator('#place-list li:visible').count(), 1, name);
    await page.keyboard.press('Enter');
    assert.equal(await page.locator('#details-title').textContent(), name);
  }
  assert.equal(await page.evaluate(() => window.hacked), undefined);
});

test('Names from right to left are set so, and stay within their lines', async () => {
  const page = await open('hostile');
  const rows = await page.locator('#place-list .what').evaluateAll((all) => all.map((each) => ({
    text: each.textContent, direction: getComputedStyle(each).direction,
    inside: each.getBoundingClientRect().right <= each.closest('button').getBoundingClientRect().right,
  })));
  const directionOf = (name) => rows.find(({ text }) => text === name).direction;
  assert.equal(directionOf('محطة القطار الرئيسية'), 'rtl');
  assert.equal(directionOf('בית קפה 24'), 'rtl');
  assert.equal(directionOf('Tom & Jerry &amp; &lt;b&gt; \\u003c'), 'ltr');
  assert.ok(rows.every(({ inside }) => inside));
});

test('An empty building gives a page that says so', async () => {
  const page = await open('empty');
  assert.ok(await page.getByText('This building has no levels to show.').isVisible());
  assert.equal(await page.locator('.level').count(), 0);
  assert.ok(await page.getByRole('slider').isHidden());
});

test('Without a walk there is no player, and without a route no tab for one', async () => {
  const page = await open('plain');
  assert.ok(await page.locator('#player').isHidden());
  assert.ok(await page.locator('#follow').isHidden());
  assert.ok(await page.getByRole('tab', { name: 'Route' }).isHidden());
  assert.ok(await page.getByRole('searchbox').isVisible());
});
