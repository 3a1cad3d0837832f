// A browser on the panel, and the moves of a hand on its controls.
import assert from 'node:assert/strict';
import { chromium } from 'playwright-core';
import { mkdirSync } from 'node:fs';
import { join } from 'node:path';
import { makeFolder, params, startPanel, withInput } from './program.mjs';

const executablePath = process.env.STREAKFALL_CHROMIUM;

export async function openBrowser(context) {
  // Chromium's own sandbox wants rights that a container may not give; the page is ours.
  const browser = await chromium.launch({ executablePath, args: ['--no-sandbox'] });
  context.after(() => browser.close());
  return browser;
}

/** A panel over the tests' sequence, open in a page of its own: what most tests begin with. */
export async function openPanel(context, { args = withInput, ...options } = {}) {
  const folder = makeFolder(context);
  mkdirSync(join(folder, 'out'));
  const panel = await startPanel(folder, args);
  context.after(() => panel.stop());
  const browser = await openBrowser(context);
  const page = await openPage(browser, panel.url, options);
  return { folder, panel, browser, page, hand: handOn(page, params(folder)) };
}

/** A page that fails its test when a script of it fails. */
export async function openPage(browser, url, options = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 800 },
    locale: 'en-US', ...options });
  await context.grantPermissions(['clipboard-read', 'clipboard-write']);
  const page = await context.newPage();
  page.setDefaultTimeout(15000);
  page.faults = [];
  page.on('pageerror', (error) => page.faults.push(error.message));
  await page.goto(url);
  await settled(page);
  return page;
}

/** Waits until the full picture of the state shown is drawn. */
export async function settled(page) {
  await page.waitForSelector('#stage[aria-busy="false"]');
  assert.deepEqual(page.faults, []);
}

/**
 * Whether the picture shown is the one of these bytes, straight RGBA. A canvas keeps premultiplied
 * colours, so the bytes go through one of their own; where alpha is 255 that changes nothing.
 */
export async function shows(page, bytes) {
  await settled(page);
  return page.evaluate((base64) => {
    const shown = document.querySelector('#effect');
    const pixels = Uint8ClampedArray.from(atob(base64), (letter) => letter.charCodeAt(0));
    if (pixels.length !== shown.width * shown.height * 4) return false;
    const other = Object.assign(document.createElement('canvas'),
      { width: shown.width, height: shown.height });
    const options = { willReadFrequently: true };
    other.getContext('2d', options).putImageData(
      new ImageData(pixels, shown.width, shown.height), 0, 0);
    const read = (canvas) => canvas.getContext('2d', options)
      .getImageData(0, 0, shown.width, shown.height).data;
    const [a, b] = [read(shown), read(other)];
    return a.every((value, at) => value === b[at]);
  }, Buffer.from(bytes).toString('base64'));
}

/** A short name of the picture shown: equal for equal pixels. */
export async function pictureName(page) {
  await settled(page);
  return page.evaluate(async () => {
    const canvas = document.querySelector('#effect');
    const { data } = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
    const digest = await crypto.subtle.digest('SHA-256', data);
    return `${canvas.width}x${canvas.height} ${new Uint8Array(digest).join('.')}`;
  });
}

/** Drags the mouse from the middle of an element by some pixels, in steps. */
export async function dragBy(page, locator, dx, dy = 0, steps = 6) {
  const box = await locator.boundingBox();
  await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2);
  await page.mouse.down();
  await page.mouse.move(box.x + box.width / 2 + dx, box.y + box.height / 2 + dy, { steps });
  await page.mouse.up();
}

/** Controls by their names. A group is opened when a control in it is asked for. */
export function handOn(page, list) {
  const paramOf = (name) => list.find((param) => param.name === name && param.default !== null);
  const row = async (name) => {
    const found = page.locator(`.row[data-index="${paramOf(name).index}"]`);
    const group = found.locator('xpath=ancestor::details');
    if (await group.count() && !(await group.evaluate((details) => details.open))) {
      await group.locator('summary').click();
    }
    return found;
  };
  const hand = {
    row,
    index: (name) => paramOf(name).index,
    slider: async (name) => (await row(name)).locator('input[type="range"]'),
    number: async (name) => (await row(name)).locator('input.number').first(),
    box: async (name) => (await row(name)).locator('input[type="checkbox"]'),
    value: async (name) => (await hand.number(name)).inputValue(),
    async type(name, value) {
      const field = await hand.number(name);
      await field.fill(String(value));
      await field.press('Enter');
      await field.blur();
      await settled(page);
    },
    async turn(name, on) {
      await (await hand.box(name)).setChecked(on);
      await settled(page);
    },
    diamond: async (name) => (await row(name)).locator('.diamond'),
  };
  return hand;
}
