// Keys, the frame shown, and playing.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { dragBy, openPanel, settled, shows } from './support/browser.mjs';
import { frames, rendered } from './support/program.mjs';

async function goTo(page, frame) {
  const field = page.locator('#frame-field input');
  await field.fill(String(frame));
  await field.press('Enter');
  await field.blur();
  await settled(page);
}

test('keys are set, changed by editing, shaped, moved and removed', async (context) => {
  const { folder, page, hand } = await openPanel(context);
  const shownAs = async (frame, key) => {
    await goTo(page, frame);
    return shows(page, rendered(folder, frame, '--key', key));
  };
  await hand.type('Offset', -100);
  await (await hand.diamond('Offset')).click();
  await settled(page);
  await goTo(page, 9);
  await hand.type('Offset', 300);
  assert.equal(await page.locator('#strip .key').count(), 2);
  assert.ok(await shownAs(5, 'Offset@1=-100,@9=300'));
  assert.equal(await hand.value('Offset'), '100', 'the control shows the value between');

  const key = (frame) => page.locator(`#strip [data-key="${hand.index('Offset')}@${frame}"]`);
  await key(1).focus();
  await page.keyboard.press('e');
  await settled(page);
  assert.ok(await shownAs(4, 'Offset@1=-100:ease,@9=300'));
  await key(1).click();
  await settled(page);
  await page.locator('#way').selectOption('hold');
  await settled(page);
  assert.ok(await shownAs(8, 'Offset@1=-100:hold,@9=300'));
  await key(1).focus();
  await page.keyboard.press('l');
  await settled(page);

  const track = await page.locator('#strip .track').boundingBox();
  await dragBy(page, key(9), track.width * (3 / (frames - 1)));
  await settled(page);
  assert.ok(await shownAs(6, 'Offset@1=-100,@12=300'));
  await key(12).focus();
  await page.keyboard.press('ArrowLeft');
  await settled(page);
  assert.ok(await shownAs(6, 'Offset@1=-100,@11=300'));
  await page.locator('#undo').click();
  await settled(page);
  assert.ok(await shownAs(6, 'Offset@1=-100,@12=300'));

  await key(12).focus();
  await page.keyboard.press('Delete');
  await settled(page);
  await goTo(page, 1);
  await (await hand.slider('Offset')).press('k');
  await settled(page);
  assert.equal(await page.locator('#strip .key').count(), 0);
  assert.ok(await page.locator('#keys').isHidden());
});

test('it plays between in and out at the rate, and stops', async (context) => {
  const { page } = await openPanel(context);
  await page.locator('#in-field input').fill('4');
  await page.locator('#in-field input').press('Enter');
  await page.locator('#out-field input').fill('9');
  await page.locator('#out-field input').press('Enter');
  await page.locator('#stage').focus();
  await page.evaluate(() => {
    window.seen = []; // frames, and when the page turned to them
    const slider = document.querySelector('#frame-slider');
    const look = (time) => {
      setTimeout(() => {
        const frame = slider.valueAsNumber;
        if (frame !== 1 && frame !== window.seen.at(-1)?.frame) window.seen.push({ frame, time });
      });
      requestAnimationFrame(look);
    };
    requestAnimationFrame(look);
  });
  await page.keyboard.press(' ');
  await page.waitForTimeout(1500);
  await page.keyboard.press(' ');
  await settled(page);
  const shown = Number(await page.locator('#frame-slider').inputValue());
  await page.waitForTimeout(200);
  assert.equal(Number(await page.locator('#frame-slider').inputValue()), shown, 'stopped');
  const seen = await page.evaluate(() => window.seen);
  assert.ok(seen.length > 4, `it plays: ${JSON.stringify(seen)}`);
  for (const { frame, time } of seen) {
    const due = ((time - seen[0].time) / 1000) * 24;
    const off = (frame - seen[0].frame - Math.round(due)) % 6; // frames that come late are passed over
    assert.ok(frame >= 4 && frame <= 9 && [0, 1, 5].includes(Math.abs(off)), `${frame} at ${due}`);
  }
});
