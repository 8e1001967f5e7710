import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launch, middleOf, open, quit, screenshot, setSlider, shownLevel, viewOf } from './browser.mjs';

before(launch);
after(quit);

const slider = (page) => page.getByRole('slider', { name: 'Time of the walk' });
const told = (page) => page.locator('#told').textContent();
const second = (page) => slider(page).inputValue().then(Number);
const last = (page) => slider(page).getAttribute('max').then(Number);

test('The slider moves the person and changes the instruction', async () => {
  const page = await open('walk');
  const [before, first] = [await middleOf(page.locator('#person .body')), await told(page)];
  await setSlider(page, 12);
  await viewOf(page);
  const after = await middleOf(page.locator('#person .body'));
  assert.ok(Math.hypot(after[0] - before[0], after[1] - before[1]) > 10);
  assert.notEqual(await told(page), first);
  assert.match(await page.locator('#left').textContent(), /^\d+ m to Gate B4/);
});

test('What is left of the way gets less, and the route on the plan shorter', async () => {
  const page = await open('walk');
  const left = async () => Number(/^(\d+) m/.exec(await page.locator('#left').textContent())[1]);
  const start = await left();
  await setSlider(page, 12);
  assert.ok(await left() < start - 5);
});

test('Arrows, start, destination and changes of level with their kind mark the way that is ahead', async () => {
  const page = await open('walk');
  const marks = page.locator('#view');
  assert.ok(await marks.locator('.start').isVisible());
  assert.ok(await marks.locator('.change.escalator .glyph').first().isVisible());
  await setSlider(page, 30);
  assert.equal(await shownLevel(page), 1);
  const before = await marks.locator('.arrow .dart').count();
  assert.ok(before > 5, `${before}`);
  assert.equal(await marks.locator('.start').count(), 0);
  await setSlider(page, 60);
  const after = await marks.locator('.arrow .dart').count();
  assert.ok(after > 0 && after < before, 'what was passed is gone');
  await setSlider(page, await last(page) - 3);
  assert.ok(await marks.locator('.destination').isVisible());
});

test('Where snapping and the route disagree, both positions are shown', async () => {
  const page = await open('walk');
  const data = await page.evaluate(() => JSON.parse(document.getElementById('data').textContent));
  const apart = data.walk.moments.find(({ operation, snapped, here }) => operation === 'position' && snapped && here && snapped[2] === here[2] &&
    Math.hypot(snapped[0] - here[0], snapped[1] - here[1]) > 3 * data.pixelsPerMetre);
  await setSlider(page, apart.second);
  await viewOf(page);
  const [person, snapped] = [await middleOf(page.locator('#person .body')), await middleOf(page.locator('#snapped circle'))];
  const { scale } = await viewOf(page);
  const shown = Math.hypot(person[0] - snapped[0], person[1] - snapped[1]) / scale;
  assert.ok(Math.abs(shown - Math.hypot(apart.snapped[0] - apart.here[0], apart.snapped[1] - apart.here[1])) < 0.3);
  await screenshot(page, 'snapped');
});

test('No name is written under the marks of the route', async () => {
  const page = await open('walk');
  for (const second of [0, 12, 30, 60, 100]) {
    await setSlider(page, second);
    for (const zoom of ['0', '+', '+', '+']) {
      await page.locator('#map').focus();
      await page.keyboard.press(zoom);
      await viewOf(page);
      const hidden = await page.evaluate(() => {
        const boxes = (selector) => [...document.querySelectorAll(selector)].map((each) => [each.textContent, each.getBoundingClientRect()]);
        const names = boxes('.level.shown .label text').filter(([, box]) => box.width > 0);
        const marks = boxes('#marks .badge, #marks .disc, #marks .destination, #marks .start');
        return names.filter(([, a]) => marks.some(([, b]) => a.right > b.left + 2 && b.right > a.left + 2 && a.bottom > b.top + 2 && b.bottom > a.top + 2))
          .map(([name]) => name);
      });
      assert.deepEqual(hidden, [], `${second} ${zoom}`);
    }
  }
});

test('The trail of a walk does not join guidances that begin elsewhere', async () => {
  const page = await open('anew');
  await setSlider(page, await last(page));
  await page.getByRole('button', { name: 'Level 0' }).click();
  const longest = await page.evaluate(() => {
    const trails = document.querySelector('#view path.trail').getAttribute('d').split('M').slice(1);
    const { pixelsPerMetre } = JSON.parse(document.getElementById('data').textContent);
    const steps = trails.flatMap((trail) => {
      const points = trail.split('L').map((point) => point.split(' ').map(Number));
      return points.slice(1).map(([x, y], i) => Math.hypot(x - points[i][0], y - points[i][1]) / pixelsPerMetre);
    });
    return [trails.length, Math.max(0, ...steps)];
  });
  assert.ok(longest[0] > 1 && longest[1] <= 8, `${longest}`);
});

test('Who drags the map while the walk is played keeps what they look at', async () => {
  const page = await open('walk');
  for (let i = 0; i < 3; i += 1) await page.getByRole('button', { name: 'Zoom in' }).click();
  await viewOf(page);
  await page.getByLabel('Speed').selectOption('8');
  await page.getByRole('button', { name: 'Play', exact: true }).click();
  await page.mouse.move(700, 500);
  await page.mouse.down();
  await page.mouse.move(1100, 300, { steps: 3 });
  await page.mouse.up();
  const [view, second0] = [await viewOf(page), await second(page)];
  await page.waitForFunction((from) => Number(document.getElementById('slider').value) > from + 5, second0);
  assert.deepEqual(await viewOf(page), view);
  assert.equal(await page.getByRole('button', { name: 'Follow the walk' }).getAttribute('aria-pressed'), 'false');
});

test('Arrow keys that move the map stop following', async () => {
  const page = await open('walk');
  await page.locator('#map').focus();
  await page.keyboard.press('ArrowLeft');
  assert.equal(await page.getByRole('button', { name: 'Follow the walk' }).getAttribute('aria-pressed'), 'false');
});

test('Raw position, snapped position, trail and route are drawn', async () => {
  const page = await open('walk');
  await setSlider(page, Math.round(await last(page) * 0.4));
  for (const part of ['#person .body', '#measured circle', '#view path.trail', 'path.measured-trail', '#view path.route.line']) {
    assert.ok(await page.locator(part).isVisible(), part);
  }
  const dots = await page.locator('path.measured-trail').getAttribute('d');
  assert.ok(dots.split('M').length > 20);
  await screenshot(page, 'walk-light');
});

test('Arrow keys on the slider go by a second, and what it says is for people', async () => {
  const page = await open('walk');
  await slider(page).focus();
  await page.keyboard.press('ArrowRight');
  await page.keyboard.press('ArrowRight');
  assert.equal(await second(page), 2);
  assert.match(await slider(page).getAttribute('aria-valuetext'), /^2 s: .+/);
  await page.keyboard.press('ArrowLeft');
  assert.equal(await second(page), 1);
  await page.getByRole('button', { name: 'One second on' }).click();
  assert.equal(await second(page), 2);
  assert.match(await page.locator('#clock').textContent(), /^0:02 \/ \d+:\d\d$/);
});

test('Space on the slider plays the walk and pauses it', async () => {
  const page = await open('walk');
  await page.getByLabel('Speed').selectOption('8');
  await slider(page).focus();
  await page.keyboard.press('Space');
  await page.waitForFunction(() => Number(document.getElementById('slider').value) >= 3);
  assert.ok(await page.getByRole('button', { name: 'Pause' }).isVisible());
  await page.keyboard.press('Space');
  const stopped = await second(page);
  await page.waitForTimeout(400);
  assert.equal(await second(page), stopped);
  assert.ok(await page.getByRole('button', { name: 'Play', exact: true }).isVisible());
});

test('Playing ends at the end, and begins anew from there', async () => {
  const page = await open('walk');
  await page.getByLabel('Speed').selectOption('8');
  await setSlider(page, await last(page) - 2);
  await page.getByRole('button', { name: 'Play', exact: true }).click();
  await page.waitForFunction(() => document.getElementById('slider').value === document.getElementById('slider').max);
  await page.getByRole('button', { name: 'Play', exact: true }).click();
  await page.waitForFunction(() => Number(document.getElementById('slider').value) < 5);
});

test('The level follows the walk unless somebody has chosen one, until they follow again', async () => {
  const page = await open('walk');
  assert.equal(await shownLevel(page), 0);
  const end = await last(page);
  await setSlider(page, end - 3);
  assert.equal(await shownLevel(page), 2);
  await page.getByRole('button', { name: /^Level 0/ }).click();
  await setSlider(page, end - 2);
  assert.equal(await shownLevel(page), 0);
  const follow = page.getByRole('button', { name: 'Follow the walk' });
  assert.equal(await follow.getAttribute('aria-pressed'), 'false');
  await follow.click();
  assert.equal(await shownLevel(page), 2);
});

test('Arrival is shown and said', async () => {
  const page = await open('walk');
  await setSlider(page, await last(page));
  assert.equal(await told(page), 'you have reached Gate B4');
  assert.equal(await page.locator('#announcer').textContent(), 'you have reached Gate B4');
  assert.equal(await page.locator('#announcer').getAttribute('aria-live'), 'polite');
  assert.equal(await page.locator('#instructions .past').count(), await page.locator('#instructions button').count());
});

test('An instruction is said once, not again for every metre', async () => {
  const page = await open('walk');
  const said = await page.evaluate(() => {
    const heard = [];
    const region = document.getElementById('announcer');
    const slider = document.getElementById('slider');
    let before = region.textContent;
    for (let i = 0; i < Number(slider.max); i += 1) {
      slider.value = i;
      slider.dispatchEvent(new Event('input'));
      if (region.textContent !== before) heard.push(region.textContent);
      before = region.textContent;
    }
    return { heard, seconds: Number(slider.max) };
  });
  assert.ok(said.heard.length > 5, `${said.heard.length}`);
  assert.ok(said.heard.length < said.seconds / 2, `${said.heard.length} of ${said.seconds}`);
});

test('The instructions are an ordered list; each leads to its place', async () => {
  const page = await open('walk');
  const list = page.getByRole('list', { name: 'Route instructions' });
  assert.ok(await list.getByRole('button').count() > 5);
  assert.equal(await list.locator('[aria-current="step"]').count(), 1);
  const before = await viewOf(page);
  await list.getByRole('button', { name: /you reach Gate B4/ }).click();
  assert.equal(await shownLevel(page), 2);
  assert.notDeepEqual(await viewOf(page), before);
});

test('What happened is listed, and each line leads to its second', async () => {
  const page = await open('walk');
  const events = page.getByRole('list', { name: 'What happened on the walk' });
  await events.getByRole('button', { name: 'Arrived at Gate B4' }).click();
  assert.equal(await second(page), await last(page));
});

test('A denied jump is marked where it came from, and the person stays', async () => {
  const page = await open('denied');
  const events = page.getByRole('list', { name: 'What happened on the walk' });
  assert.equal(await events.getByRole('button', { name: 'Jump denied' }).count(), 3);
  assert.equal(await page.locator('#ticks .denied').count(), 3);
  await setSlider(page, 6);
  const held = await middleOf(page.locator('#person .body'));
  await events.getByRole('button', { name: 'Jump denied' }).first().click();
  assert.equal(await second(page), 7);
  assert.equal(await told(page), 'jump denied');
  assert.equal(await page.locator('#announcer').textContent(), 'Jump denied.');
  const mark = page.locator('#marks .denied circle');
  assert.equal(await mark.count(), 1);
  const [person, jump] = [await middleOf(page.locator('#person .body')), await middleOf(mark)];
  assert.ok(Math.hypot(person[0] - held[0], person[1] - held[1]) < 12);
  assert.ok(Math.hypot(person[0] - jump[0], person[1] - jump[1]) > 30);
  assert.ok(await page.locator('#marks .jump').isVisible());
  await screenshot(page, 'denied');
});

test('Zooming while the walk is followed keeps the person in view', async () => {
  const page = await open('denied');
  for (let i = 0; i < 3; i += 1) await page.getByRole('button', { name: 'Zoom in' }).click();
  await viewOf(page);
  const [x, y] = await middleOf(page.locator('#person .body'));
  const map = await page.locator('#map').boundingBox();
  assert.ok(x > map.x && x < map.x + map.width && y > map.y && y < map.y + map.height);
});
