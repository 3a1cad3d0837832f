// The controls: what can be typed, dragged and stepped, and what the module greys.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { dragBy, openPanel, settled, shows } from './support/browser.mjs';
import { paramsLater, rendered } from './support/program.mjs';

const fix = 'Fix Band Form';
const switches = ['Repeat', 'Enable In/Out', 'Use Start/End Opacity', 'Enable Taper', 'Enable Wave', fix];

// A switch that is greyed itself is turned while what greys it is out of its way.
async function turnAll(page, boxes, wanted) {
  const isOn = (name) => boxes[name].isChecked();
  const turn = async (name, on) => (await isOn(name)) === on || boxes[name].setChecked(on);
  if ((await isOn(fix)) !== wanted[fix]) await turn('Enable Taper', true);
  for (const name of [fix, ...switches.filter((each) => each !== fix)]) {
    await turn(name, wanted[name]);
  }
  await settled(page);
}

test('all 64 settings of the switches grey what the module says', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  const boxes = {};
  for (const name of switches) boxes[name] = await hand.box(name);
  for (let setting = 0; setting < 64; ++setting) {
    const gray = setting ^ (setting >> 1); // one switch at a time
    const wanted = Object.fromEntries(switches.map((name, bit) => [name, (gray & (1 << bit)) !== 0]));
    const sets = switches.flatMap((name) => ['--set', `${name}=${wanted[name] ? 'on' : 'off'}`]);
    const listed = paramsLater(folder, ...sets);
    await turnAll(page, boxes, wanted);
    const expected = (await listed)
      .filter(({ live, default: value }) => live === false && value !== null)
      .map(({ index }) => index);
    const greyed = await page.evaluate(() => [...document.querySelectorAll('.row')]
      .filter((row) => [...row.querySelectorAll('input')].every((field) => field.disabled))
      .map((row) => Number(row.dataset.index)));
    assert.deepEqual(greyed, expected, JSON.stringify(wanted));
  }
});

test('numbers take more than their sliders, and only what the host takes', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  assert.equal(await hand.value('Length'), '500', 'opens beyond its slider');
  await hand.type('Length', '1234.5');
  assert.ok(await shows(page, rendered(folder, 1, '--set', 'Length=1234.5')));
  assert.equal(await (await hand.slider('Length')).inputValue(), '200', 'rests at its end');
  await hand.type('Length', '99999');
  assert.equal(await hand.value('Length'), '2000', 'the valid range ends it');
  await hand.type('Length', '－７５０，２５'); // as a Japanese keyboard types it
  assert.equal(await hand.value('Length'), '-750.25');
  await hand.type('Length', 'long');
  assert.equal(await hand.value('Length'), '-750.25');
  assert.match(await page.locator('#notice').textContent(), /long/);
});

test('steps, sideways drags, resets, and a wheel that changes nothing', async (context) => {
  const { page, hand } = await openPanel(context);
  const thickness = await hand.number('Thickness');
  const press = async (keys) => {
    await thickness.press(keys);
    await settled(page);
    return Number(await hand.value('Thickness'));
  };
  const one = (await press('ArrowUp')) - 5;
  assert.ok(one > 0);
  assert.ok(Math.abs((await press('Shift+ArrowUp')) - 5 - 11 * one) < 1e-6);
  assert.ok(Math.abs((await press('Alt+ArrowDown')) - 5 - 10.9 * one) < 1e-6);
  await thickness.blur();
  const before = Number(await hand.value('Thickness'));
  await dragBy(page, thickness, 40);
  await settled(page);
  assert.ok(Number(await hand.value('Thickness')) > before + 10 * one, 'dragged sideways');

  const all = () => page.locator('#rows input').evaluateAll((fields) =>
    fields.map(({ value, checked }) => `${value} ${checked}`));
  const shown = await all();
  await thickness.focus();
  for (const part of [thickness, await hand.slider('Density of Lines')]) {
    await part.hover();
    await page.mouse.wheel(0, 120);
  }
  assert.deepEqual(await all(), shown, 'the wheel');

  await (await hand.row('Thickness')).locator('.name').dblclick();
  await settled(page);
  assert.equal(await hand.value('Thickness'), '5');
  await (await hand.slider('Density of Lines')).press('End');
  await settled(page);
  assert.equal(await hand.value('Density of Lines'), '200');
  await (await hand.slider('Density of Lines')).press('r');
  await settled(page);
  assert.equal(await hand.value('Density of Lines'), '40');
});

test('the dial counts turns; colours go by swatch and hex', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  const dial = (await hand.row('H')).locator('.dial');
  await dial.scrollIntoViewIfNeeded();
  const box = await dial.boundingBox();
  const at = (degrees) => [box.x + box.width / 2 + 40 * Math.sin((degrees * Math.PI) / 180),
    box.y + box.height / 2 - 40 * Math.cos((degrees * Math.PI) / 180)];
  await page.mouse.move(box.x + box.width / 2, box.y + 2);
  await page.mouse.down();
  for (let degrees = 15; degrees <= 405; degrees += 15) await page.mouse.move(...at(degrees));
  await page.mouse.up();
  await settled(page);
  const angle = Number(await dial.getAttribute('aria-valuenow'));
  assert.ok(Math.abs(angle - 405) <= 3, String(angle));
  const [turns, degrees] = await (await hand.row('H')).locator('input.number')
    .evaluateAll((fields) => fields.map(({ value }) => Number(value)));
  assert.deepEqual([turns, degrees], [1, angle - 360]);

  const color = await hand.row('Color');
  await color.locator('.hex').fill('f80');
  await color.locator('.hex').press('Enter');
  await settled(page);
  assert.equal(await color.locator('[type=color]').inputValue(), '#ff8800');
  const args = ['--set', 'Color=#ff8800', '--set', `H=${angle}`];
  assert.ok(await shows(page, rendered(folder, 1, ...args)));
  await color.locator('[type=color]').fill('#00ff00');
  await settled(page);
  assert.equal(await color.locator('.hex').inputValue(), '#00ff00');
});
