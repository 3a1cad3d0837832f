// Sheets: throws of the seed, one control from low to high, the looks.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { openPanel, settled, shows } from './support/browser.mjs';
import { rendered, run } from './support/program.mjs';

const tiles = (page) => page.locator('.sheet:not([hidden]) .tile');

async function drawn(page) {
  await page.locator('.sheet:not([hidden])[aria-busy="false"]').waitFor();
  return tiles(page).evaluateAll((buttons) => buttons.map((button) => {
    const canvas = button.querySelector('canvas:not(.under)');
    const { data } = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
    return data.join(' ');
  }));
}

const captions = (page) => tiles(page).locator('.caption').allTextContents();

test('a roll throws twelve seeds far apart, again and again, and a click takes one', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  await page.locator('#roll').click();
  assert.equal(new Set(await drawn(page)).size, 1, 'nothing is random yet');
  assert.match(await page.locator('#roll-note').textContent(), /alike/);
  await page.keyboard.press('Escape');

  await hand.type('Length Random', 80);
  await page.locator('#roll').click();
  assert.equal(new Set(await drawn(page)).size, 12);
  const first = await captions(page);
  const place = await page.locator('#throw-again').boundingBox();
  for (let click = 0; click < 3; ++click) await page.locator('#throw-again').click();
  assert.equal(new Set(await drawn(page)).size, 12);
  assert.deepEqual(await page.locator('#throw-again').boundingBox(), place, 'the button stays');
  const seeds = await captions(page);
  assert.ok(seeds.every((seed) => !first.includes(seed)), 'others than before');
  const gaps = seeds.map(Number).sort((a, b) => a - b).map((seed, at, all) => seed - (all[at - 1] ?? -1e9));
  assert.ok(Math.min(...gaps) > 100, `far apart: ${seeds}`);

  await tiles(page).nth(4).click();
  await page.locator('#roll-sheet').waitFor({ state: 'hidden' });
  await settled(page);
  assert.equal(await hand.value('Random Seed'), seeds[4]);
  const args = ['--set', 'Length Random=80', '--set', `Random Seed=${seeds[4]}`];
  assert.ok(await shows(page, rendered(folder, 1, ...args)));
});

test('any other control goes from low to high', async (context) => {
  const { page, hand } = await openPanel(context);
  await page.locator('#roll').click();
  await page.locator('#roll-of').selectOption(String(hand.index('Taper')));
  assert.equal(new Set(await drawn(page)).size, 12);
  const values = (await captions(page)).map(Number);
  assert.deepEqual([values[0], values.at(-1)], [-100, 100]);
  await page.locator('#roll-ends input').first().fill('45');
  await page.locator('#roll-ends input').first().press('Enter');
  await drawn(page);
  assert.equal((await captions(page))[0], '45');
  await tiles(page).nth(0).click();
  await page.locator('#roll-sheet').waitFor({ state: 'hidden' });
  await settled(page);
  assert.equal(await hand.value('Taper'), '45');
});

test('the looks are drawn over the input, and a click takes one', async (context) => {
  const { folder, page } = await openPanel(context);
  const known = run(folder, 'looks').toString();
  await page.locator('#looks').click();
  assert.equal(new Set(await drawn(page)).size, await tiles(page).count());
  assert.ok(await tiles(page).count() >= 14);
  assert.match(known, /impact-fan/);
  await tiles(page).filter({ hasText: 'Impact fan' }).click();
  await page.locator('#looks-sheet').waitFor({ state: 'hidden' });
  assert.ok(await shows(page, rendered(folder, 1, '--look', 'impact-fan')));
});
