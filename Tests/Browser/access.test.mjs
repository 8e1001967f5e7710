import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launch, open, quit, screenshot, setSlider } from './browser.mjs';

before(launch);
after(quit);

const PAGES = ['plain', 'route', 'walk', 'denied', 'hostile', 'empty'];

/** What a screen reader is told: role and name of everything that is not hidden from it. */
async function accessible(page) {
  const session = await page.context().newCDPSession(page);
  const { nodes } = await session.send('Accessibility.getFullAXTree');
  return nodes.filter((node) => !node.ignored).map((node) => ({ role: node.role?.value, name: node.name?.value ?? '' }));
}

test('Whatever can be operated has a name', async () => {
  const roles = ['button', 'slider', 'searchbox', 'tab', 'combobox', 'link', 'application'];
  for (const name of PAGES) {
    const found = (await accessible(await open(name))).filter(({ role }) => roles.includes(role));
    assert.ok(found.length >= 5, name);
    assert.deepEqual(found.filter((each) => each.name.trim() === ''), [], name);
  }
});

test('The page has its landmarks and one heading of the first rank', async () => {
  const page = await open('walk');
  for (const role of ['banner', 'main', 'complementary', 'navigation']) {
    assert.equal(await page.getByRole(role).count(), 1, role);
  }
  assert.equal(await page.getByRole('heading', { level: 1 }).textContent(), 'Korvani Harbour Terminal');
  assert.equal(await page.getByRole('region', { name: 'Instruction' }).count(), 1);
  assert.equal(await page.getByRole('region', { name: 'Walk', exact: true }).count(), 1);
  const snapshot = await page.getByRole('complementary').ariaSnapshot();
  assert.match(snapshot, /tab "Route" \[selected\]/);
  assert.match(snapshot, /list "Route instructions"/);
});

test('The map says what it is and how it is operated', async () => {
  const page = await open('plain');
  const map = page.getByRole('application', { name: 'Map of Korvani Harbour Terminal' });
  assert.equal(await map.getAttribute('aria-roledescription'), 'map');
  const keys = await page.locator(`#${await map.getAttribute('aria-describedby')}`).textContent();
  assert.match(keys, /Arrow keys move the map/);
});

test('No two elements share an id, and every id that is named exists', async () => {
  for (const name of PAGES) {
    const page = await open(name);
    const problems = await page.evaluate(() => {
      const ids = [...document.querySelectorAll('[id]')].map((each) => each.id);
      const twice = ids.filter((id, index) => ids.indexOf(id) !== index);
      const named = [...document.querySelectorAll('*')].flatMap((each) =>
        ['for', 'aria-controls', 'aria-describedby', 'aria-labelledby'].map((key) => each.getAttribute(key)).filter(Boolean));
      const uses = [...document.querySelectorAll('use')].map((use) => use.getAttribute('href').slice(1));
      return [...twice, ...[...named, ...uses].filter((id) => !ids.includes(id))];
    });
    assert.deepEqual(problems, [], name);
  }
});

test('Tab reaches everything, in the order of the page, and the focus is seen', async () => {
  const page = await open('walk');
  const seen = [];
  for (let i = 0; i < 60; i += 1) {
    await page.keyboard.press('Tab');
    const focus = await page.evaluate(() => {
      const each = document.activeElement;
      const style = getComputedStyle(each);
      return { id: each.id, name: each.className, outline: `${style.outlineStyle} ${style.outlineWidth}` };
    });
    if (focus.id === '' && focus.name === '' && i > 50) break;
    seen.push(focus);
  }
  const order = ['show-help', 'theme', 'tab-route', 'map', 'zoom-in', 'follow', 'play', 'slider', 'speed'];
  const places = order.map((id) => seen.findIndex((each) => each.id === id));
  assert.ok(places.every((place) => place >= 0), JSON.stringify(places));
  assert.deepEqual([...places].sort((a, b) => a - b), places);
  for (const each of seen.filter(({ id }) => order.includes(id))) assert.match(each.outline, /^solid [2-9]/, each.id);
});

test('The tabs are operated with arrow keys', async () => {
  const page = await open('route');
  await page.getByRole('tab', { name: 'Route' }).focus();
  await page.keyboard.press('ArrowLeft');
  assert.equal(await page.getByRole('tab', { name: 'Places' }).getAttribute('aria-selected'), 'true');
  assert.ok(await page.getByRole('searchbox').isVisible());
  assert.ok(await page.locator('#instructions').isHidden());
  await page.keyboard.press('ArrowLeft');
  assert.equal(await page.getByRole('tab', { name: 'Legend' }).getAttribute('aria-selected'), 'true');
  await page.keyboard.press('ArrowRight');
  await page.keyboard.press('ArrowRight');
  assert.equal(await page.getByRole('tab', { name: 'Route' }).getAttribute('aria-selected'), 'true');
});

test('Help opens with a question mark, and closes with Escape', async () => {
  const page = await open('walk');
  await page.keyboard.press('?');
  const help = page.getByRole('dialog', { name: 'Keyboard and mouse' });
  assert.ok(await help.isVisible());
  assert.match(await help.textContent(), /Play the walk, or pause/);
  await page.keyboard.press('Escape');
  assert.ok(await help.isHidden());
});

/** Contrast ratios of the texts, each with what stands there. */
async function contrasts(page) {
  return page.evaluate(() => {
    const canvas = document.createElement('canvas').getContext('2d', { willReadFrequently: true });
    const rgba = (colour) => {
      canvas.clearRect(0, 0, 1, 1);
      canvas.fillStyle = colour;
      canvas.fillRect(0, 0, 1, 1);
      const [r, g, b, a] = canvas.getImageData(0, 0, 1, 1).data;
      return [r, g, b, a / 255];
    };
    const over = (front, back) => front.slice(0, 3).map((value, i) => value * front[3] + back[i] * (1 - front[3]));
    const behind = (each) => {
      if (!each) return [255, 255, 255];
      const colour = rgba(getComputedStyle(each).backgroundColor);
      return colour[3] === 1 ? colour.slice(0, 3) : over(colour, behind(each.parentElement));
    };
    const light = (colour) => colour.map((value) => value / 255)
      .map((value) => (value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4))
      .reduce((sum, value, i) => sum + value * [0.2126, 0.7152, 0.0722][i], 0);
    const ratio = (a, b) => (Math.max(light(a), light(b)) + 0.05) / (Math.min(light(a), light(b)) + 0.05);
    const texts = [...document.querySelectorAll('body *')].filter((each) => !each.closest('svg, script, style, noscript, .unseen, option') &&
      each.checkVisibility() && [...each.childNodes].some((child) => child.nodeType === 3 && child.textContent.trim() !== ''));
    return texts.map((each) => {
      const back = behind(each);
      return { text: each.textContent.trim().slice(0, 40), ratio: ratio(over(rgba(getComputedStyle(each).color), back), back) };
    });
  });
}

for (const colorScheme of ['light', 'dark']) {
  test(`Every text of the page stands out from what is behind it (${colorScheme})`, async () => {
    for (const name of ['plain', 'walk', 'denied']) {
      const page = await open(name, { colorScheme });
      if (name === 'walk') await setSlider(page, 40);
      const found = await contrasts(page);
      assert.ok(found.length > 10);
      assert.deepEqual(found.filter(({ ratio }) => !(ratio >= 4.5)), [], name);
    }
  });

  test(`Labels of the plan stand out from their outline (${colorScheme})`, async () => {
    const page = await open('plain', { colorScheme });
    const colours = await page.locator('.level.shown .label text').first().evaluate((text) => {
      const style = getComputedStyle(text);
      return [style.fill, style.stroke].map((colour) => /(\d+), (\d+), (\d+)/.exec(colour).slice(1).map(Number));
    });
    const light = (colour) => colour.map((value) => value / 255)
      .map((value) => (value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4))
      .reduce((sum, value, i) => sum + value * [0.2126, 0.7152, 0.0722][i], 0);
    const [dark, bright] = colours.map(light).sort((a, b) => a - b);
    assert.ok((bright + 0.05) / (dark + 0.05) >= 4.5);
  });
}

test('Dark follows the system, and the button changes it', async () => {
  const page = await open('walk', { colorScheme: 'dark' });
  const background = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  const dark = await background();
  await setSlider(page, 40);
  await screenshot(page, 'walk-dark');
  await page.getByRole('button', { name: 'Light or dark' }).click();
  const light = await background();
  assert.notEqual(light, dark);
  assert.equal(light, await (await open('walk')).evaluate(() => getComputedStyle(document.body).backgroundColor));
  await page.getByRole('button', { name: 'Light or dark' }).click();
  assert.equal(await background(), dark);
});

test('On paper there is the plan with its source, and nothing to operate', async () => {
  const page = await open('route');
  await page.emulateMedia({ media: 'print' });
  for (const hidden of ['.controls', '.tabs', '#theme']) assert.ok(await page.locator(hidden).isHidden(), hidden);
  assert.ok(await page.locator('#attribution').isVisible());
  assert.ok(await page.locator('.level.shown').isVisible());
  assert.ok(await page.getByText('To Gate B4').isVisible());
  const [plan, steps] = [await page.locator('.stage').boundingBox(), await page.locator('#instructions').boundingBox()];
  assert.ok(plan.y + plan.height <= steps.y);
  await screenshot(page, 'print', { fullPage: true });
});
