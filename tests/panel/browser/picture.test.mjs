// The picture: drawn while dragged, and the very pixels of a render afterwards.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { dragBy, openPanel, settled, shows } from './support/browser.mjs';
import { rendered, run } from './support/program.mjs';

// The fields show two decimals; a screen reader hears all of them.
const points = async (hand, name) => (await hand.row(name)).locator('input.number')
  .evaluateAll((fields) => fields.map(({ ariaValueNow }) => Number(ariaValueNow)));

test('dragging a slider shows the pixels that render writes', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  assert.ok(await shows(page, rendered(folder, 1)), 'the picture at the start');

  await page.evaluate(() => {
    window.widths = new Set();
    new PerformanceObserver((list) => {
      for (const { detail } of list.getEntriesByName('picture drawn')) window.widths.add(detail.width);
    }).observe({ entryTypes: ['mark'] });
  });
  await dragBy(page, await hand.slider('Thickness'), 30, 0, 20);
  await settled(page);
  const thickness = await hand.value('Thickness');
  assert.ok(Number(thickness) > 10 && Number(thickness) < 50, thickness);
  assert.ok(await shows(page, rendered(folder, 1, '--set', `Thickness=${thickness}`)));
  const widths = await page.evaluate(() => [...window.widths].sort((a, b) => b - a));
  assert.equal(widths[0], 480, 'ends in full');
  assert.ok(widths.length > 1, 'a reduced size while dragging');

  await hand.turn('Clear Background', false);
  const over = ['--set', `Thickness=${thickness}`, '--set', 'Clear Background=off'];
  assert.ok(await shows(page, rendered(folder, 1, ...over)), 'over the input');
});

test('a picture whose place a late, older request took is asked for again', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  let refused = 0;
  await page.route('**/picture', (route) => {
    const { divisor } = route.request().postDataJSON();
    if (divisor !== 1 || refused > 0) return route.continue();
    refused += 1;
    return route.fulfill({ status: 409, json: { error: 'a newer request took its place' } });
  });
  await dragBy(page, await hand.slider('Density of Lines'), 40);
  await settled(page);
  assert.equal(refused, 1);
  const density = await hand.value('Density of Lines');
  assert.ok(await shows(page, rendered(folder, 1, '--set', `Density of Lines=${density}`)));
});

test('over a checkerboard or black the lines leave the input\'s matte', async (context) => {
  const { folder, page } = await openPanel(context);
  assert.ok(await shows(page, rendered(folder, 1)));
  for (const background of ['checker', 'black']) {
    await page.locator('#background').selectOption(background);
    assert.ok(await shows(page, run(folder, 'render', '--size', '480x270', '-f', '1', '-o', '-',
      '--format', 'rgba', '-q')), background);
  }
});

test('a handle takes its point off the frame, and the linked one along', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  await dragBy(page, page.locator('#start-handle'), 0, -40);
  await settled(page);
  const zoom = await page.locator('#frame').evaluate((frame) => frame.getBoundingClientRect().width / 480);
  const moved = await points(hand, 'Start Point');
  assert.equal(moved[0], 144);
  assert.ok(Math.abs(moved[1] - (135 - 40 / zoom)) < 0.02, `${moved}`);
  assert.deepEqual(await points(hand, 'End Point'), [336, 135], 'not linked yet');

  await hand.turn('Link End Point', true);
  await page.locator('#zoom-out').click();
  await page.locator('#zoom-out').click();
  const from = await points(hand, 'Start Point');
  await dragBy(page, page.locator('#start-handle'), -250, 30, 12);
  await settled(page);
  const start = await points(hand, 'Start Point');
  const end = await points(hand, 'End Point');
  assert.ok(start[0] < 0, 'off the frame');
  for (const axis of [0, 1]) {
    assert.ok(Math.abs(end[axis] - [336, 135][axis] - (start[axis] - from[axis])) < 0.02, end);
  }
  const args = ['--set', `Start Point=${start}`, '--set', `End Point=${end}`];
  assert.ok(await shows(page, rendered(folder, 1, ...args)));

  await page.locator('#end-handle').focus();
  await page.keyboard.press('Shift+ArrowDown');
  await settled(page);
  assert.ok(Math.abs((await points(hand, 'End Point'))[1] - end[1] - 10) < 0.02, 'by keys');
  assert.deepEqual(await points(hand, 'Start Point'), start, 'the end moves alone');
});

test('a held key shows the input alone; zoom, pan and fit', async (context) => {
  const { page } = await openPanel(context);
  const visible = () => page.locator('#effect').evaluate((canvas) => getComputedStyle(canvas).visibility);
  await page.locator('#stage').focus();
  await page.keyboard.down('i');
  assert.equal(await visible(), 'hidden');
  await page.keyboard.up('i');
  assert.equal(await visible(), 'visible');

  const place = () => page.locator('#frame').boundingBox();
  const fitted = await place();
  await page.mouse.move(fitted.x + 100, fitted.y + 100);
  await page.mouse.wheel(0, -400);
  const near = await place();
  assert.ok(near.width > fitted.width * 2);
  assert.ok(Math.abs((100 / fitted.width) * near.width + near.x - fitted.x - 100) < 2,
    'zooms about the pointer');
  await page.keyboard.press('ArrowRight');
  assert.ok((await place()).x < near.x);
  await page.keyboard.press('0');
  assert.deepEqual(await place(), fitted);
});
