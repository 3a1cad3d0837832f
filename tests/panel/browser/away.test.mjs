// What leaves the page: looks as files, the command, a render.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { test } from 'node:test';
import { openPanel, pictureName, settled, shows } from './support/browser.mjs';
import { frames, program, rendered, run } from './support/program.mjs';

test('a look is saved, dropped in again, and makes the same picture', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  await hand.type('Taper', 35);
  await hand.type('Thickness', 3.25);
  await page.locator('#end-handle').press('ArrowDown');
  const picture = await pictureName(page);
  const [download] = await Promise.all([page.waitForEvent('download'), page.locator('#save').click()]);
  const file = join(folder, download.suggestedFilename());
  await download.saveAs(file);
  assert.ok(await shows(page, rendered(folder, 1, '--look', file)), 'the command line reads it');

  await page.keyboard.press('Escape');
  await hand.type('Taper', -80);
  assert.notEqual(await pictureName(page), picture);
  const drop = async (name, content) => {
    const data = await page.evaluateHandle(([title, letters]) => {
      const transfer = new DataTransfer();
      transfer.items.add(new File([letters], title, { type: 'application/json' }));
      return transfer;
    }, [name, content]);
    for (const type of ['dragenter', 'dragover', 'drop']) {
      await page.dispatchEvent('#stage', type, { dataTransfer: data });
    }
  };
  await drop('mine.json', readFileSync(file, 'utf8'));
  await page.getByText('Loaded mine.json').waitFor();
  assert.equal(await pictureName(page), picture);
  await drop('broken.json', '{"values": {"Thicknes": 1}}');
  await page.locator('#notice', { hasText: 'broken.json' }).waitFor();
  assert.equal(await pictureName(page), picture, 'a file that is none changes nothing');

  writeFileSync(file, run(folder, 'looks', 'rain'));
  await page.locator('#file').setInputFiles(file);
  await page.getByText('Loaded', { exact: false }).waitFor();
  assert.ok(await shows(page, rendered(folder, 1, '--look', 'rain')), 'by the button');
});

test('the copied command makes these bytes', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  await hand.type('Taper', 42.5);
  await hand.type('Length Random', 33);
  await (await hand.diamond('Offset')).click();
  await settled(page);
  await page.locator('#frame-slider').fill('7');
  await settled(page);
  await hand.type('Offset', 88);
  await page.locator('#copy').click();
  await page.locator('#copy-dialog').waitFor();
  const command = await page.evaluate(() => navigator.clipboard.readText());
  assert.equal(await page.locator('#command').inputValue(), command);
  assert.match(command, /^streakfall render /);
  execFileSync('sh', ['-c', command], { cwd: folder, stdio: 'ignore',
    env: { ...process.env, PATH: `${dirname(program)}:${process.env.PATH}` } });
  const made = readdirSync(join(folder, 'out'));
  assert.equal(made.length, 1, String(made));
  const [frame] = made[0].match(/\d+/);
  assert.equal(Number(frame), 7);
  const bytes = run(folder, 'render', '-i', join('out', made[0]), '-o', '-', '--format', 'rgba', '-q',
    '--set', 'Clear Background=off', '--set', 'Opacity=0'); // the file as it is
  await page.keyboard.press('Escape');
  assert.ok(await shows(page, bytes));
});

test('a render writes its frames, and stops when told', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  const files = () => readdirSync(join(folder, 'out')).sort();
  await page.locator('#out-field input').fill('5');
  await page.locator('#out-field input').press('Enter');
  await page.locator('#render').click();
  await page.locator('#render-start').click();
  await page.getByText('5 of 5 frames written').waitFor();
  assert.equal(files().length, 5);
  await page.locator('#render-dialog .done').click();

  // Slow frames: as thick, long and dense as they go, under a wave.
  for (const [name, value] of [['Thickness', 500], ['Length', 2000], ['Density of Lines', 1000],
    ['Opacity', 50]]) {
    const field = await hand.number(name);
    await field.fill(String(value));
    await field.press('Enter');
  }
  await page.locator('#render').click();
  await page.locator('#render-first').fill('1');
  await page.locator('#render-last').fill(String(frames));
  await page.locator('#render-start').click();
  await page.locator('#render-stop:enabled').click();
  await page.getByText('Stopped:').waitFor();
  const told = await page.locator('#render-told').textContent();
  assert.ok(Number(/(\d+) of/.exec(told)[1]) < frames, told);
  assert.ok(files().every((name) => /^[^.].*\.png$/.test(name)), `no half file: ${files()}`);
  assert.ok(existsSync(join(folder, 'out', files()[0])));
});

test('defaults are stored and restored in the dialog\'s own words', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  await hand.type('Thickness', 12);
  await page.locator('#more').click();
  await page.getByRole('button', { name: 'Set current parameter values to default' }).click();
  await page.locator('#defaults-told', { hasText: /./ }).waitFor();
  assert.match(run(folder, 'defaults', 'show').toString(), /Thickness\W+12/);
  await page.getByRole('button', { name: 'Restore initial default parameter values' }).click();
  await page.waitForTimeout(300);
  assert.doesNotMatch(run(folder, 'defaults', 'show').toString(), /Thickness\W+12/);
});
