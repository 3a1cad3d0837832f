// Prints how long the page takes, in milliseconds, for the default look at 1920 x 1080:
//
//   STREAKFALL_PROGRAM=build/release/streakfall STREAKFALL_CHROMIUM=/usr/bin/chromium \
//       node tests/panel/browser/measure.mjs [INPUT]
//
// A slider is dragged by the mouse, a move each 16 ms. Each input event counts from its time stamp
// to the moment when the first picture that holds its change is on the canvas; "full" counts from
// the release of the button. "Start" is from the page's address to its first picture.
import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join, resolve } from 'node:path';
import { chromium } from 'playwright-core';
import { startPanel } from './support/program.mjs';

const drags = 12;
const moves = 60; // a drag
const starts = 7;

function line(name, values) {
  const sorted = values.toSorted((a, b) => a - b);
  const at = (share) => sorted[Math.min(sorted.length - 1, Math.floor(sorted.length * share))].toFixed(1);
  console.log(`${name.padEnd(28)} median ${at(0.5)}, 95 % ${at(0.95)}, of ${sorted.length}`);
}

const settled = (page) => page.waitForSelector('#stage[aria-busy="false"]');

async function dragOnce(page, slider) {
  const box = await slider.boundingBox();
  const y = box.y + box.height / 2;
  await page.mouse.move(box.x + 12, y);
  await page.mouse.down();
  for (let move = 0; move < moves; ++move) {
    const share = 0.5 - 0.5 * Math.cos((move / moves) * Math.PI * 2);
    await page.mouse.move(box.x + 12 + share * (box.width - 30), y);
    await new Promise((next) => setTimeout(next, 16));
  }
  await page.mouse.up();
  await settled(page);
}

async function firstPicture(page) {
  await settled(page);
  return page.evaluate(() => performance.getEntriesByName('picture drawn')[0].startTime);
}

async function measure(browser, url) {
  const first = [];
  let page;
  for (let start = 0; start < starts; ++start) {
    await page?.close();
    page = await browser.newPage({ viewport: { width: 1920, height: 1080 } });
    await page.goto(url);
    first.push(await firstPicture(page));
  }
  const slider = page.locator('.row', { hasText: 'Thickness' }).first().locator('[type=range]');
  await dragOnce(page, slider); // the size for dragging finds itself
  await page.evaluate(() => performance.clearMeasures());
  for (let drag = 0; drag < drags; ++drag) await dragOnce(page, slider);
  const made = await page.evaluate(() => performance.getEntriesByName('event to drawn')
    .map(({ duration, detail }) => ({ duration, ...detail })));
  const durations = (draft) => made.filter((each) => each.draft === draft)
    .map(({ duration }) => duration);

  line('event to drawn, dragging', durations(true));
  line('event to drawn, full', durations(false));
  line('start to first picture', first);
  const sizes = {};
  for (const { width } of made) sizes[width] = (sizes[width] ?? 0) + 1;
  const told = Object.entries(sizes).map(([width, count]) => `${width} for ${count} events`);
  console.log(`widths drawn: ${told.join(', ')}`);
}

const folder = mkdtempSync(join(tmpdir(), 'streakfall-measure-'));
const input = process.argv[2] ? ['-i', resolve(process.argv[2])] : [];
const panel = await startPanel(folder, input);
const browser = await chromium.launch({ executablePath: process.env.STREAKFALL_CHROMIUM,
  args: ['--no-sandbox'] });
try {
  await measure(browser, panel.url);
} finally {
  await browser.close();
  await panel.stop();
  rmSync(folder, { recursive: true, force: true });
}
