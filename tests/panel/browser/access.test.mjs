// Both languages, a screen reader's view of the page, and the keyboard alone.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { test } from 'node:test';
import { openPage, openPanel, settled, shows } from './support/browser.mjs';
import { params, rendered } from './support/program.mjs';

const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

async function violations(page) {
  await page.evaluate(axe);
  const { violations: found } = await page.evaluate(() => window.axe.run());
  return found.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html).join(' ')}`);
}

// All that the page can show: the start, all groups open with keys, each sheet, each dialog.
async function inspect(page) {
  const steps = [
    async () => {},
    async () => {
      for (const summary of await page.locator('summary').all()) await summary.click();
      await page.locator('.row .diamond').nth(3).click();
      await settled(page);
      await page.locator('#strip .key').click();
    },
    () => page.locator('#looks').click(),
    () => page.locator('#roll').click(),
    async () => {
      await page.keyboard.press('Escape');
      await page.locator('#copy').click();
      await page.locator('#copy-dialog').waitFor();
    },
    async () => {
      await page.keyboard.press('Escape');
      await page.locator('#render').click();
    },
    async () => {
      await page.keyboard.press('Escape');
      await page.locator('#more').click();
    },
  ];
  for (const step of steps) {
    await step();
    assert.deepEqual(await violations(page), []);
  }
  await page.keyboard.press('Escape');
}

test('axe finds nothing, in English and in Japanese', async (context) => {
  const { page, browser, panel } = await openPanel(context);
  await inspect(page);
  await inspect(await openPage(browser, panel.url, { locale: 'ja-JP' }));
});

test('the browser chooses the language, the switch changes it, the words are the program\'s', async (context) => {
  const { folder, page, browser, panel, hand } = await openPanel(context);
  const { words } = params(folder).find(({ name }) => name === 'Attraction');
  const hint = async () => {
    await (await hand.number('Attraction')).focus();
    return page.locator('#hint').innerText();
  };
  const withoutWords = (from) => from.locator('body').evaluate((body) =>
    [...body.querySelectorAll('button, [role], input, select')]
      .filter((element) => !(element.ariaLabel || element.textContent.trim() || element.labels?.length ||
        element.getAttribute('aria-labelledby') || element.hidden || element.role === 'status'))
      .map(({ outerHTML }) => outerHTML));
  assert.equal(await page.locator('html').getAttribute('lang'), 'en');
  assert.ok((await hint()).includes(words.en.what));
  assert.deepEqual(await withoutWords(page), []);
  await page.locator('#language').click();
  assert.equal(await page.locator('html').getAttribute('lang'), 'ja');
  assert.ok((await hint()).includes(words.ja.what));
  assert.equal(await page.locator('#render').textContent(), '書き出す…');
  await page.reload();
  assert.equal(await page.locator('html').getAttribute('lang'), 'ja', 'remembered');

  const japanese = await openPage(browser, panel.url, { locale: 'ja-JP' });
  assert.equal(await japanese.locator('html').getAttribute('lang'), 'ja');
  const { texts } = await japanese.evaluate(() => import('./core/texts.js').then(({ texts: all }) => ({ texts: all })));
  const places = (text) => [...text.matchAll(/\{\w+\}/g)].map(String).sort().join();
  for (const [key, both] of Object.entries(texts)) {
    assert.ok(both.en && both.ja, key);
    assert.equal(places(both.en), places(both.ja), key);
  }
});

test('by the keyboard alone, from the start to a saved look', async (context) => {
  const { folder, page } = await openPanel(context, { reducedMotion: 'reduce' });
  const focused = () => page.evaluate(() => {
    const { activeElement: at } = document;
    const { outlineStyle, outlineWidth } = getComputedStyle(at);
    return { name: at.ariaLabel || at.textContent.trim(), id: at.id,
      visible: outlineStyle !== 'none' && parseFloat(outlineWidth) >= 2 };
  });
  const tabTo = async (wanted, key = 'Tab') => {
    for (let tabs = 0; tabs < 150; ++tabs) {
      await page.keyboard.press(key);
      const at = await focused();
      assert.ok(at.visible, `the focus shows on ${at.name}`);
      if (wanted(at)) return;
    }
    assert.fail('not reached');
  };
  await tabTo(({ name }) => name === 'Color, as hex');
  await page.keyboard.press('Control+a');
  await page.keyboard.type('#ff4000');
  await page.keyboard.press('Enter');
  await tabTo(({ name }) => name === 'Thickness');
  await page.keyboard.type('14');
  await page.keyboard.press('Enter');
  await tabTo(({ name }) => name === 'Taper');
  await page.keyboard.press('Enter'); // the group
  await tabTo(({ name }) => name === 'Taper, slider');
  for (let press = 0; press < 3; ++press) await page.keyboard.press('Shift+ArrowRight');
  await settled(page);
  await tabTo(({ id }) => id === 'start-handle', 'Shift+Tab');
  await page.keyboard.press('Shift+ArrowLeft');
  await settled(page);
  await tabTo(({ id }) => id === 'save', 'Shift+Tab');
  const [download] = await Promise.all([page.waitForEvent('download'), page.keyboard.press('Enter')]);
  await download.saveAs(`${folder}/mine.json`);
  const args = ['--set', 'Color=#ff4000', '--set', 'Thickness=14', '--set', 'Taper=30',
    '--set', 'Start Point=134,135'];
  assert.ok(await shows(page, rendered(folder, 1, ...args)));
  assert.deepEqual(rendered(folder, 1, '--look', 'mine.json'), rendered(folder, 1, ...args));
});
