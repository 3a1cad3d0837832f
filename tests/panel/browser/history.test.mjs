// Undo, redo, the two slots, and a program that goes away and comes back.
import assert from 'node:assert/strict';
import { mkdirSync } from 'node:fs';
import { test } from 'node:test';
import { dragBy, handOn, openBrowser, openPage, openPanel, pictureName, settled, shows }
  from './support/browser.mjs';
import { makeFolder, params, rendered, startPanel, withInput } from './support/program.mjs';

test('undo goes back to the first picture, redo to the last, also over a throw', async (context) => {
  const { page, hand } = await openPanel(context);
  const pictures = [await pictureName(page)];
  const step = async (what) => {
    await what();
    pictures.push(await pictureName(page));
  };
  await step(() => hand.type('Length Random', 70));
  await step(() => dragBy(page, page.locator('#end-handle'), 10, 60));
  await step(async () => {
    await page.locator('#roll').click();
    await page.locator('#roll-sheet[aria-busy="false"]').waitFor();
    await page.locator('#roll-sheet .tile').nth(6).click();
    await page.locator('#roll-sheet').waitFor({ state: 'hidden' });
  });
  await step(() => hand.turn('Enable In/Out', false));
  await step(async () => {
    await page.locator('#looks').click();
    await page.locator('#looks-sheet .tile').nth(3).click();
    await page.locator('#looks-sheet').waitFor({ state: 'hidden' });
  });
  assert.equal(new Set(pictures).size, pictures.length, 'every step changed the picture');

  const steps = [];
  for (let at = pictures.length - 2; at >= 0; --at) {
    await page.keyboard.press('Control+z');
    await page.waitForTimeout(50);
    steps.push(await pictureName(page));
  }
  assert.deepEqual(steps, pictures.slice(0, -1).reverse());
  assert.ok(await page.locator('#undo').isDisabled(), 'one drag is one step');
  while (await page.locator('#redo').isEnabled()) {
    await page.locator('#redo').click();
    await settled(page);
  }
  assert.equal(await pictureName(page), pictures.at(-1));
});

test('two slots hold a state each', async (context) => {
  const { page, hand } = await openPanel(context);
  await hand.type('Thickness', 9);
  await page.locator('#slot-b').click();
  await settled(page);
  assert.equal(await hand.value('Thickness'), '9', 'the second begins as a copy');
  await hand.type('Thickness', 21);
  const seen = [];
  for (const slot of ['#slot-a', '#slot-b', '#slot-a']) {
    await page.locator(slot).click();
    await page.locator(`${slot}[aria-pressed="true"]`).waitFor();
    await settled(page);
    seen.push(await hand.value('Thickness'));
  }
  assert.deepEqual(seen, ['9', '21', '9']);
});

test('the page tells that the program is gone, and goes on when it is back', async (context) => {
  const folder = makeFolder(context);
  mkdirSync(`${folder}/out`);
  const token = { STREAKFALL_PANEL_TOKEN: 'a-token-that-stays-the-same' };
  const first = await startPanel(folder, withInput, token);
  context.after(() => first.stop('SIGKILL'));
  const page = await openPage(await openBrowser(context), first.url);
  const hand = handOn(page, params(folder));
  await hand.type('Thickness', 17);
  await first.stop('SIGKILL');
  await page.locator('#gone').waitFor({ state: 'visible' });
  const field = await hand.number('Length');
  await field.fill('150');
  await field.press('Enter');

  const second = await startPanel(folder, [...withInput, '--port', first.port], token);
  context.after(() => second.stop());
  await page.locator('#gone').waitFor({ state: 'hidden' });
  const args = ['--set', 'Thickness=17', '--set', 'Length=150'];
  assert.ok(await shows(page, rendered(folder, 1, ...args)));
});
