// A browser with one of the pages open, and what happened in it.

import { mkdirSync } from 'node:fs';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';
import { chromium } from 'playwright-core';

const pages = process.env.KORVANI_PAGES;
const screenshots = process.env.KORVANI_SCREENSHOTS;

let browser;

export async function launch() {
  browser = await chromium.launch({
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    args: ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
      '--disable-component-update', '--disable-sync'],
  });
}

export async function quit() {
  await browser?.close();
}

/** Opens the page of that name in a window of its own. `page.seen` has its requests and complaints. */
export async function open(name, options = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, ...options });
  const page = await context.newPage();
  page.setDefaultTimeout(10_000);
  page.seen = { requests: [], complaints: [] };
  page.on('request', (request) => page.seen.requests.push(request.url()));
  page.on('console', (message) => {
    if (['error', 'warning'].includes(message.type())) page.seen.complaints.push(message.text());
  });
  page.on('pageerror', (error) => page.seen.complaints.push(error.stack));
  await page.goto(urlOf(name));
  return page;
}

export function urlOf(name) {
  return pathToFileURL(join(pages, `${name}.html`)).href;
}

export async function screenshot(page, name, options = {}) {
  mkdirSync(screenshots, { recursive: true });
  await page.screenshot({ path: join(screenshots, `${name}.png`), ...options });
}

/** Waits until the view has come to rest. */
export async function settled(page) {
  await page.waitForFunction(() => !('moving' in document.getElementById('map').dataset));
}

/** Where the view is: `{x, y, scale}`, with a point of the plan at x + scale * point. */
export async function viewOf(page) {
  await settled(page);
  const text = await page.locator('#view').getAttribute('transform');
  const [, x, y, scale] = /translate\(([-\d.]+) ([-\d.]+)\) scale\(([\d.]+)\)/.exec(text);
  return { x: Number(x), y: Number(y), scale: Number(scale) };
}

/** The middle of the element on the screen. */
export async function middleOf(locator) {
  const box = await locator.boundingBox();
  return [box.x + box.width / 2, box.y + box.height / 2];
}

export async function setSlider(page, value) {
  await page.getByRole('slider').evaluate((slider, wanted) => {
    slider.value = wanted;
    slider.dispatchEvent(new Event('input', { bubbles: true }));
  }, value);
}

export function shownLevel(page) {
  return page.locator('.level.shown').getAttribute('data-level').then(Number);
}
